#include "exchange/UsdExport.h"

#include "exchange/ExportImageSource.h"
#include "exchange/ExportScene.h"
#include "exchange/ExportText.h"
#include "exchange/FbxExport.h"
#include "exchange/FilmBack.h"
#include "common/SettingsKeys.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QSet>

namespace vg::exchange {

namespace {

struct UsdMesh {
    const ExportSurface *surface = nullptr;
    QString name;
    QString material;
    QString textureFile;    // absolute, empty when flat
    QString textureAsset;   // relative to the layer
};

// USD matrices act on row vectors: the rows are the images of the local axes, then the
// translation.
void writeTransform(ExportTextFile &f, const Eigen::Matrix3d &rotation, const Eigen::Vector3d &translation)
{
    const std::string head = "        matrix4d xformOp:transform = ( ";
    f.write(head);
    for (int row = 0; row < 4; ++row) {
        if (row > 0)
            f.write(std::string(head.size(), ' '));
        f.put('(');
        for (int col = 0; col < 3; ++col) {
            f.number(row < 3 ? rotation(col, row) : translation[col]);
            f.write(std::string_view(", "));
        }
        f.write(row < 3 ? std::string_view("0)") : std::string_view("1)"));
        f.write(row < 3 ? std::string_view(",\n") : std::string_view(" )\n"));
    }
    f.line(std::string_view("        uniform token[] xformOpOrder = [\"xformOp:transform\"]"));
}

void writeInterpolation(ExportTextFile &f, const char *value)
{
    f.write(std::string_view(" (\n            interpolation = \""));
    f.write(std::string_view(value));
    f.write(std::string_view("\"\n        )\n"));
}

// The common array writer: "type name = [(a, b, c), ...]" with an optional interpolation.
template<typename Tuple>
void writeTupleArray(ExportTextFile &f, const char *typeAndName, size_t count, int arity, Tuple tuple,
                     const char *interpolation)
{
    f.write(std::string_view("        "));
    f.write(std::string_view(typeAndName));
    f.write(std::string_view(" = ["));
    double values[3];
    for (size_t i = 0; i < count; ++i) {
        tuple(i, values);
        f.write(i ? std::string_view(", (") : std::string_view("("));
        for (int k = 0; k < arity; ++k) {
            if (k)
                f.write(std::string_view(", "));
            f.single(values[k]);
        }
        f.put(')');
    }
    f.put(']');
    if (interpolation)
        writeInterpolation(f, interpolation);
    else
        f.put('\n');
}

void writeMesh(ExportTextFile &f, const UsdMesh &m)
{
    const ExportSurface &s = *m.surface;
    const auto &verts = s.mesh.vertices;
    const auto &idx = s.mesh.indices;
    f.line(QStringLiteral("    def Mesh \"%1\"").arg(m.name));
    f.line(std::string_view("    {"));
    f.line(std::string_view("        uniform token subdivisionScheme = \"none\""));
    f.line(QStringLiteral("        rel material:binding = </Scene/Materials/%1>").arg(m.material));
    f.write(std::string_view("        int[] faceVertexCounts = ["));
    for (size_t i = 0; i < idx.size() / 3; ++i)
        f.write(i ? std::string_view(", 3") : std::string_view("3"));
    f.line(std::string_view("]"));
    f.write(std::string_view("        int[] faceVertexIndices = ["));
    for (size_t i = 0; i < idx.size(); ++i) {
        if (i)
            f.write(std::string_view(", "));
        f.integer(idx[i]);
    }
    f.line(std::string_view("]"));
    writeTupleArray(f, "point3f[] points", verts.size(), 3,
                    [&](size_t i, double *v) { v[0] = verts[i].px; v[1] = verts[i].py; v[2] = verts[i].pz; }, nullptr);
    writeTupleArray(f, "normal3f[] normals", verts.size(), 3,
                    [&](size_t i, double *v) { v[0] = verts[i].nx; v[1] = verts[i].ny; v[2] = verts[i].nz; }, "vertex");
    f.line(std::string_view("        texCoord2f[] primvars:st = ["));
    for (size_t i = 0; i < idx.size(); ++i) {
        const SceneVertex &v = verts[idx[i]];
        f.write(std::string_view("            ("));
        f.single(v.u);
        f.write(std::string_view(", "));
        // USD counts t from the bottom of the picture.
        f.single(1.0 - double(v.v));
        f.line(i + 1 < idx.size() ? std::string_view("),") : std::string_view(")"));
    }
    f.write(std::string_view("        ]"));
    writeInterpolation(f, "faceVarying");
    f.write(std::string_view("        color3f[] primvars:displayColor = [("));
    f.single(s.color.redF());
    f.write(std::string_view(", "));
    f.single(s.color.greenF());
    f.write(std::string_view(", "));
    f.single(s.color.blueF());
    f.write(std::string_view(")]"));
    writeInterpolation(f, "constant");
    f.write(std::string_view("        float[] primvars:displayOpacity = ["));
    f.single(s.opacity);
    f.put(']');
    writeInterpolation(f, "constant");
    writeTransform(f, s.toWorld.linear(), s.toWorld.translation());
    f.line(std::string_view("    }"));
}

void writeMaterial(ExportTextFile &f, const UsdMesh &m)
{
    const ExportSurface &s = *m.surface;
    const QString path = QStringLiteral("/Scene/Materials/") + m.material;
    f.line(QStringLiteral("        def Material \"%1\"").arg(m.material));
    f.line(std::string_view("        {"));
    f.line(QStringLiteral("            token outputs:surface.connect = <%1/PreviewSurface.outputs:surface>").arg(path));
    f.put('\n');
    f.line(std::string_view("            def Shader \"PreviewSurface\""));
    f.line(std::string_view("            {"));
    f.line(std::string_view("                uniform token info:id = \"UsdPreviewSurface\""));
    if (m.textureFile.isEmpty()) {
        f.write(std::string_view("                color3f inputs:diffuseColor = ("));
        f.single(s.color.redF());
        f.write(std::string_view(", "));
        f.single(s.color.greenF());
        f.write(std::string_view(", "));
        f.single(s.color.blueF());
        f.line(std::string_view(")"));
    } else {
        f.line(QStringLiteral("                color3f inputs:diffuseColor.connect = <%1/DiffuseTexture.outputs:rgb>").arg(path));
    }
    f.write(std::string_view("                float inputs:opacity = "));
    f.single(s.opacity);
    f.put('\n');
    f.line(std::string_view("                token outputs:surface"));
    f.line(std::string_view("            }"));
    if (!m.textureFile.isEmpty()) {
        f.put('\n');
        f.line(std::string_view("            def Shader \"DiffuseTexture\""));
        f.line(std::string_view("            {"));
        f.line(std::string_view("                uniform token info:id = \"UsdUVTexture\""));
        f.line(QStringLiteral("                asset inputs:file = @%1@").arg(m.textureAsset));
        f.line(QStringLiteral("                float2 inputs:st.connect = <%1/Primvar_st.outputs:result>").arg(path));
        f.line(std::string_view("                token inputs:wrapS = \"repeat\""));
        f.line(std::string_view("                token inputs:wrapT = \"repeat\""));
        f.line(std::string_view("                float3 outputs:rgb"));
        f.line(std::string_view("                float outputs:a"));
        f.line(std::string_view("            }"));
        f.put('\n');
        f.line(std::string_view("            def Shader \"Primvar_st\""));
        f.line(std::string_view("            {"));
        f.line(std::string_view("                uniform token info:id = \"UsdPrimvarReader_float2\""));
        f.line(std::string_view("                token inputs:varname = \"st\""));
        f.line(std::string_view("                float2 outputs:result"));
        f.line(std::string_view("            }"));
    }
    f.line(std::string_view("        }"));
}

void writeCamera(ExportTextFile &f, const ExportLens &l, const QString &name)
{
    const FilmBack film = filmBackOf(l.lens);
    f.line(QStringLiteral("    def Camera \"%1\"").arg(name));
    f.line(std::string_view("    {"));
    auto value = [&](const char *head, double v) {
        f.write(std::string_view(head));
        f.number(v);
        f.put('\n');
    };
    value("        float focalLength = ", film.focalLengthMm);
    value("        float horizontalAperture = ", film.apertureWidthMm);
    value("        float verticalAperture = ", film.apertureHeightMm);
    value("        float horizontalApertureOffset = ", film.offsetXMm);
    value("        float verticalApertureOffset = ", film.offsetYMm);
    f.write(std::string_view("        float2 clippingRange = ("));
    f.number(film.nearClip);
    f.write(std::string_view(", "));
    f.number(film.farClip);
    f.line(std::string_view(")"));
    writeTransform(f, film.rotation, film.position);
    f.line(std::string_view("    }"));
}

// Makes `name` unique among `used` by appending the scene index.
QString uniqueName(QString name, int index, QSet<QString> &used)
{
    if (used.contains(name))
        name += QStringLiteral("_%1").arg(index);
    for (int n = 2; used.contains(name); ++n)
        name += QStringLiteral("_%1").arg(n);
    used.insert(name);
    return name;
}

} // namespace

QString usdIdentifier(const QString &name, const QString &fallback)
{
    const QString id = asciiIdentifier(name);
    if (id.isEmpty())
        return fallback;
    return id.front().isDigit() ? QLatin1Char('_') + id : id;
}

bool writeSceneUsd(const QVector<GuideObject> &objects, ExportImageSource &images, const QString &path,
                   QStringList *written, QString *error)
{
    auto fail = [&](const QString &message) {
        if (error)
            *error = message;
        return false;
    };
    const QList<int> all = allIndices(objects);
    const QVector<ExportSurface> surfaces = collectSurfaces(objects, all, &images);
    const QVector<ExportLens> lenses = collectLenses(objects, all);
    if (surfaces.isEmpty() && lenses.isEmpty())
        return fail(QCoreApplication::translate("UsdExport", "No visible mesh objects or projectors are available for USD export."));

    const QFileInfo info(path);
    const QString folder = info.absolutePath();
    const QString textureFolderName = info.completeBaseName() + QStringLiteral("_textures");
    const QString textureFolder = QDir(folder).filePath(textureFolderName);
    if (!ensureFolder(folder))
        return fail(pathMessage(QCoreApplication::translate("UsdExport", "Could not create export folder:"), folder));

    // Children of /Scene share one namespace with the "Materials" scope.
    QSet<QString> sceneNames{QStringLiteral("Materials")};
    QSet<QString> materialNames;
    std::vector<UsdMesh> meshes;
    for (const ExportSurface &s : surfaces) {
        UsdMesh m;
        m.surface = &s;
        m.name = uniqueName(usdIdentifier(s.name, QStringLiteral("Object_%1").arg(s.index)), s.index, sceneNames);
        m.material = uniqueName(m.name + QStringLiteral("_Material"), s.index, materialNames);
        if (!s.texture.isNull()) {
            m.textureFile = QDir(textureFolder).filePath(m.name + QStringLiteral(".png"));
            m.textureAsset = textureFolderName + QLatin1Char('/') + m.name + QStringLiteral(".png");
        }
        meshes.push_back(m);
    }
    QStringList cameraNames;
    for (const ExportLens &l : lenses)
        cameraNames.append(uniqueName(usdIdentifier(exportCameraName(l.identifier, l.index, l.camera), QString()),
                                      l.index, sceneNames));

    // Textures first: when one fails, no layer refers to a missing file.
    const bool anyTexture = std::any_of(meshes.begin(), meshes.end(), [](const UsdMesh &m) { return !m.textureFile.isEmpty(); });
    if (anyTexture && !ensureFolder(textureFolder))
        return fail(pathMessage(QCoreApplication::translate("UsdExport", "Could not create export folder:"), textureFolder));
    QStringList textureFiles;
    for (const UsdMesh &m : meshes) {
        if (m.textureFile.isEmpty())
            continue;
        if (!writeTexturePng(m.surface->texture, m.textureFile, error))
            return false;
        textureFiles.append(m.textureFile);
    }

    ExportTextFile f;
    if (!f.open(path))
        return fail(pathMessage(QCoreApplication::translate("UsdExport", "Could not save USD file:"), path));
    f.line(std::string_view("#usda 1.0"));
    f.line(std::string_view("("));
    f.line(std::string_view("    defaultPrim = \"Scene\""));
    f.line(std::string_view("    metersPerUnit = 1"));
    f.line(std::string_view("    upAxis = \"Y\""));
    f.line(std::string_view(")"));
    f.put('\n');
    f.line(std::string_view("def Xform \"Scene\""));
    f.line(std::string_view("{"));
    for (const UsdMesh &m : meshes) {
        writeMesh(f, m);
        f.put('\n');
    }
    f.line(std::string_view("    def Scope \"Materials\""));
    f.line(std::string_view("    {"));
    for (const UsdMesh &m : meshes)
        writeMaterial(f, m);
    f.line(std::string_view("    }"));
    for (int i = 0; i < lenses.size(); ++i) {
        f.put('\n');
        writeCamera(f, lenses.at(i), cameraNames.at(i));
    }
    f.line(std::string_view("}"));
    if (!f.commit())
        return fail(pathMessage(QCoreApplication::translate("UsdExport", "Could not save USD file:"), path));
    if (written) {
        written->append(path);
        written->append(textureFiles);
    }
    return true;
}

ExporterEntry usdExporterEntry()
{
    return {QStringLiteral("usd"),
            QStringLiteral("usda"),
            QT_TRANSLATE_NOOP("Exporters", "USD ASCII"),
            QT_TRANSLATE_NOOP("Exporters", "Export USD..."),
            ExportSubject::SceneView,
            QStringLiteral("vantreo_scene"),
            Settings::usdExportDirectory.key(),
            [](const ExportRequest &request, const QString &path, QStringList *written, QString *error) {
                ExportImageSource fallback(request.guides);
                return writeSceneUsd(request.objects, request.images ? *request.images : fallback, path, written, error);
            }};
}

} // namespace vg::exchange
