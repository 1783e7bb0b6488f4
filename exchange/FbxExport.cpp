#include "exchange/FbxExport.h"

#include "exchange/ExportImageSource.h"
#include "exchange/ExportScene.h"
#include "exchange/ExportText.h"
#include "exchange/FilmBack.h"
#include "common/SettingsKeys.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace vg::exchange {

namespace {

// Names inside FBX quotes: no quote and no control character can end them early.
QString fbxName(const QString &name)
{
    QString out = singleLineText(name);
    out.replace(QLatin1Char('"'), QLatin1Char('_'));
    return out;
}

struct FbxMesh {
    const ExportSurface *surface = nullptr;
    QString name;
    qint64 geometryId = 0, modelId = 0, materialId = 0, textureId = 0;
    QString textureFile;      // absolute path, empty when flat
    QString textureRelative;  // relative to the FBX file
};

struct FbxCamera {
    const ExportLens *lens = nullptr;
    QString name;
    qint64 modelId = 0, attributeId = 0;
};

class FbxWriter
{
public:
    explicit FbxWriter(ExportTextFile &file) : f(file) {}

    void open(const QString &head) { indent(); f.write(head); f.write(std::string_view("  {\n")); ++depth; }
    void openNode(const QString &head) { indent(); f.write(head); f.write(std::string_view(" {\n")); ++depth; }
    void close() { --depth; indent(); f.write(std::string_view("}\n")); }
    void line(const QString &text) { indent(); f.line(text); }
    void line(std::string_view text) { indent(); f.line(text); }
    void property(const char *name, const char *type, const char *label, const char *flags, double value)
    {
        indent();
        f.write(QStringLiteral("P: \"%1\", \"%2\", \"%3\", \"%4\",").arg(QLatin1String(name), QLatin1String(type),
                                                                          QLatin1String(label), QLatin1String(flags)));
        f.number(value);
        f.put('\n');
    }
    void vectorProperty(const char *name, const char *type, const char *label, const char *flags,
                        const Eigen::Vector3d &v)
    {
        indent();
        f.write(QStringLiteral("P: \"%1\", \"%2\", \"%3\", \"%4\",").arg(QLatin1String(name), QLatin1String(type),
                                                                          QLatin1String(label), QLatin1String(flags)));
        f.number(v.x());
        f.put(',');
        f.number(v.y());
        f.put(',');
        f.number(v.z());
        f.put('\n');
    }
    // "Name: *count {" / "a: ..." / "}" with the values written by `each`.
    template<typename Each>
    void array(const char *name, size_t count, Each each)
    {
        indent();
        f.write(std::string_view(name));
        f.write(std::string_view(": *"));
        f.integer(static_cast<long long>(count));
        f.write(std::string_view(" {\n"));
        ++depth;
        indent();
        f.write(std::string_view("a: "));
        each();
        f.put('\n');
        close();
    }
    void indent()
    {
        for (int i = 0; i < depth; ++i)
            f.put('\t');
    }

    ExportTextFile &f;
    int depth = 0;
};

void writeHeader(FbxWriter &w, const QDateTime &now)
{
    w.line(std::string_view("; FBX 7.4.0 project file exported by VantreoGuide"));
    w.line(std::string_view("; ----------------------------------------------------"));
    w.f.put('\n');
    w.open(QStringLiteral("FBXHeaderExtension:"));
    w.line(std::string_view("FBXHeaderVersion: 1003"));
    w.line(std::string_view("FBXVersion: 7400"));
    w.open(QStringLiteral("CreationTimeStamp:"));
    w.line(std::string_view("Version: 1000"));
    const QDate d = now.date();
    const QTime t = now.time();
    w.line(QStringLiteral("Year: %1").arg(d.year()));
    w.line(QStringLiteral("Month: %1").arg(d.month()));
    w.line(QStringLiteral("Day: %1").arg(d.day()));
    w.line(QStringLiteral("Hour: %1").arg(t.hour()));
    w.line(QStringLiteral("Minute: %1").arg(t.minute()));
    w.line(QStringLiteral("Second: %1").arg(t.second()));
    w.line(QStringLiteral("Millisecond: %1").arg(t.msec()));
    w.close();
    w.line(std::string_view("Creator: \"VantreoGuide\""));
    w.close();

    w.open(QStringLiteral("GlobalSettings:"));
    w.line(std::string_view("Version: 1000"));
    w.open(QStringLiteral("Properties70:"));
    w.property("UpAxis", "int", "Integer", "", 1);
    w.property("UpAxisSign", "int", "Integer", "", 1);
    w.property("FrontAxis", "int", "Integer", "", 2);
    w.property("FrontAxisSign", "int", "Integer", "", 1);
    w.property("CoordAxis", "int", "Integer", "", 0);
    w.property("CoordAxisSign", "int", "Integer", "", 1);
    w.property("UnitScaleFactor", "double", "Number", "", 1);
    w.property("OriginalUnitScaleFactor", "double", "Number", "", 1);
    w.close();
    w.close();

    w.open(QStringLiteral("Documents:"));
    w.line(std::string_view("Count: 1"));
    w.openNode(QStringLiteral("Document: 1000000000, \"\", \"Scene\""));
    w.open(QStringLiteral("Properties70:"));
    w.line(std::string_view("P: \"SourceObject\", \"object\", \"\", \"\""));
    w.line(std::string_view("P: \"Active\", \"bool\", \"\", \"\",1"));
    w.close();
    w.line(std::string_view("RootNode: 0"));
    w.close();
    w.close();

    w.open(QStringLiteral("References:"));
    w.close();
}

void writeDefinitions(FbxWriter &w, int meshes, int cameras, int textures)
{
    const int models = meshes + cameras;
    w.open(QStringLiteral("Definitions:"));
    w.line(std::string_view("Version: 100"));
    w.line(QStringLiteral("Count: %1").arg(1 + models + meshes + meshes + cameras + textures));
    auto type = [&](const char *name, int count) {
        w.openNode(QStringLiteral("ObjectType: \"%1\"").arg(QLatin1String(name)));
        w.line(QStringLiteral("Count: %1").arg(count));
        w.close();
    };
    type("GlobalSettings", 1);
    type("Model", models);
    type("Geometry", meshes);
    type("Material", meshes);
    type("NodeAttribute", cameras);
    if (textures > 0)
        type("Texture", textures);
    w.close();
}

void writeGeometry(FbxWriter &w, const FbxMesh &m)
{
    const ExportSurface &s = *m.surface;
    const auto &verts = s.mesh.vertices;
    const auto &idx = s.mesh.indices;
    w.openNode(QStringLiteral("Geometry: %1, \"Geometry::%2\", \"Mesh\"").arg(m.geometryId).arg(m.name));
    w.line(std::string_view("GeometryVersion: 124"));
    w.array("Vertices", verts.size() * 3, [&] {
        bool first = true;
        for (const SceneVertex &v : verts) {
            const Eigen::Vector3d p = worldPosition(s, v);
            for (int k = 0; k < 3; ++k) {
                if (!first)
                    w.f.put(',');
                first = false;
                w.f.single(p[k]);
            }
        }
    });
    // The last index of each polygon is stored as its bitwise complement.
    auto writeIndices = [&](bool markLast) {
        for (size_t i = 0; i < idx.size(); ++i) {
            if (i)
                w.f.put(',');
            const long long value = idx[i];
            w.f.integer(markLast && i % 3 == 2 ? ~value : value);
        }
    };
    w.array("PolygonVertexIndex", idx.size(), [&] { writeIndices(true); });
    w.openNode(QStringLiteral("LayerElementNormal: 0"));
    w.line(std::string_view("Version: 102"));
    w.line(std::string_view("Name: \"\""));
    w.line(std::string_view("MappingInformationType: \"ByVertice\""));
    w.line(std::string_view("ReferenceInformationType: \"Direct\""));
    w.array("Normals", verts.size() * 3, [&] {
        bool first = true;
        for (const SceneVertex &v : verts) {
            const Eigen::Vector3d n = worldNormal(s, v);
            for (int k = 0; k < 3; ++k) {
                if (!first)
                    w.f.put(',');
                first = false;
                w.f.single(n[k]);
            }
        }
    });
    w.close();
    w.openNode(QStringLiteral("LayerElementUV: 0"));
    w.line(std::string_view("Version: 101"));
    w.line(std::string_view("Name: \"map1\""));
    w.line(std::string_view("MappingInformationType: \"ByPolygonVertex\""));
    w.line(std::string_view("ReferenceInformationType: \"IndexToDirect\""));
    w.array("UV", verts.size() * 2, [&] {
        bool first = true;
        for (const SceneVertex &v : verts) {
            if (!first)
                w.f.put(',');
            first = false;
            // FBX counts v from the bottom of the picture.
            w.f.single(v.u);
            w.f.put(',');
            w.f.single(1.0 - double(v.v));
        }
    });
    w.array("UVIndex", idx.size(), [&] { writeIndices(false); });
    w.close();
    w.openNode(QStringLiteral("LayerElementSmoothing: 0"));
    w.line(std::string_view("Version: 102"));
    w.line(std::string_view("Name: \"\""));
    w.line(std::string_view("MappingInformationType: \"ByPolygon\""));
    w.line(std::string_view("ReferenceInformationType: \"Direct\""));
    w.array("Smoothing", idx.size() / 3, [&] {
        for (size_t i = 0; i < idx.size() / 3; ++i)
            w.f.write(i ? std::string_view(",0") : std::string_view("0"));
    });
    w.close();
    w.openNode(QStringLiteral("LayerElementMaterial: 0"));
    w.line(std::string_view("Version: 101"));
    w.line(std::string_view("Name: \"\""));
    w.line(std::string_view("MappingInformationType: \"AllSame\""));
    w.line(std::string_view("ReferenceInformationType: \"IndexToDirect\""));
    w.array("Materials", 1, [&] { w.f.put('0'); });
    w.close();
    w.openNode(QStringLiteral("Layer: 0"));
    w.line(std::string_view("Version: 100"));
    for (const char *type : {"LayerElementNormal", "LayerElementMaterial", "LayerElementSmoothing", "LayerElementUV"}) {
        w.open(QStringLiteral("LayerElement:"));
        w.line(QStringLiteral("Type: \"%1\"").arg(QLatin1String(type)));
        w.line(std::string_view("TypedIndex: 0"));
        w.close();
    }
    w.close();
    w.close();
}

void writeMeshModel(FbxWriter &w, const FbxMesh &m)
{
    w.openNode(QStringLiteral("Model: %1, \"Model::%2\", \"Mesh\"").arg(m.modelId).arg(m.name));
    w.line(std::string_view("Version: 232"));
    w.open(QStringLiteral("Properties70:"));
    w.property("DefaultAttributeIndex", "int", "Integer", "", 0);
    w.vectorProperty("Lcl Translation", "Lcl Translation", "", "A", Eigen::Vector3d::Zero());
    w.vectorProperty("Lcl Rotation", "Lcl Rotation", "", "A", Eigen::Vector3d::Zero());
    w.vectorProperty("Lcl Scaling", "Lcl Scaling", "", "A", Eigen::Vector3d::Ones());
    w.close();
    w.line(std::string_view("Shading: T"));
    w.line(std::string_view("Culling: \"CullingOff\""));
    w.close();
}

void writeMaterial(FbxWriter &w, const FbxMesh &m)
{
    const ExportSurface &s = *m.surface;
    const QColor c = m.textureFile.isEmpty() ? s.color : QColor(Qt::white);
    w.openNode(QStringLiteral("Material: %1, \"Material::%2_Material\", \"\"").arg(m.materialId).arg(m.name));
    w.line(std::string_view("Version: 102"));
    w.line(std::string_view("ShadingModel: \"phong\""));
    w.line(std::string_view("MultiLayer: 0"));
    w.open(QStringLiteral("Properties70:"));
    w.vectorProperty("DiffuseColor", "Color", "", "A", Eigen::Vector3d(c.redF(), c.greenF(), c.blueF()));
    w.property("Opacity", "double", "Number", "", s.opacity);
    w.property("TransparencyFactor", "double", "Number", "", 1.0 - s.opacity);
    w.close();
    w.close();
    if (m.textureFile.isEmpty())
        return;
    w.openNode(QStringLiteral("Texture: %1, \"Texture::%2_Texture\", \"\"").arg(m.textureId).arg(m.name));
    w.line(std::string_view("Type: \"TextureVideoClip\""));
    w.line(std::string_view("Version: 202"));
    w.line(QStringLiteral("TextureName: \"Texture::%1_Texture\"").arg(m.name));
    w.line(QStringLiteral("FileName: \"%1\"").arg(fbxName(m.textureFile)));
    w.line(QStringLiteral("RelativeFilename: \"%1\"").arg(fbxName(m.textureRelative)));
    w.close();
}

void writeCamera(FbxWriter &w, const FbxCamera &c)
{
    const FilmBack film = filmBackOf(c.lens->lens);
    w.openNode(QStringLiteral("Model: %1, \"Model::%2\", \"Camera\"").arg(c.modelId).arg(c.name));
    w.line(std::string_view("Version: 232"));
    w.open(QStringLiteral("Properties70:"));
    w.property("RotationActive", "bool", "", "", 1);
    w.property("RotationOrder", "enum", "", "", 0);
    w.property("InheritType", "enum", "", "", 1);
    // FBX cameras look along +X; the post-rotation turns that onto the lens axis (-Z).
    w.vectorProperty("PostRotation", "Vector3D", "Vector", "", Eigen::Vector3d(0.0, -90.0, 0.0));
    w.vectorProperty("Lcl Translation", "Lcl Translation", "", "A", film.position);
    w.vectorProperty("Lcl Rotation", "Lcl Rotation", "", "A", film.rotationDegrees());
    w.vectorProperty("Lcl Scaling", "Lcl Scaling", "", "A", Eigen::Vector3d::Ones());
    w.close();
    w.line(std::string_view("Shading: Y"));
    w.line(std::string_view("Culling: \"CullingOff\""));
    w.close();

    const Eigen::Vector3d forward = -film.rotation.col(2);
    w.openNode(QStringLiteral("NodeAttribute: %1, \"NodeAttribute::%2Shape\", \"Camera\"").arg(c.attributeId).arg(c.name));
    w.line(std::string_view("TypeFlags: \"Camera\""));
    w.line(std::string_view("CameraVersion: 202"));
    w.open(QStringLiteral("Properties70:"));
    w.vectorProperty("Position", "Vector", "", "A", film.position);
    w.vectorProperty("UpVector", "Vector", "", "A", film.rotation.col(1));
    w.vectorProperty("InterestPosition", "Vector", "", "A", film.position + forward * film.farClip);
    w.property("CameraProjectionType", "enum", "", "", 0);
    w.property("ProjectionType", "enum", "", "", 0);
    w.property("ApertureMode", "enum", "", "", 3);
    w.property("GateFit", "enum", "", "", 2);
    w.property("NearPlane", "double", "Number", "", film.nearClip);
    w.property("FarPlane", "double", "Number", "", film.farClip);
    w.property("AspectWidth", "double", "Number", "", c.lens->lens.width());
    w.property("AspectHeight", "double", "Number", "", c.lens->lens.height());
    w.property("FilmWidth", "double", "Number", "", film.apertureWidthInches());
    w.property("FilmHeight", "double", "Number", "", film.apertureHeightInches());
    w.property("FilmAspectRatio", "double", "Number", "", film.apertureWidthMm / film.apertureHeightMm);
    w.property("FilmOffsetX", "double", "Number", "", film.offsetXInches());
    w.property("FilmOffsetY", "double", "Number", "", film.offsetYInches());
    w.property("FocalLength", "double", "Number", "", film.focalLengthMm);
    w.property("FieldOfView", "FieldOfView", "", "A", film.horizontalFovDegrees);
    w.property("FieldOfViewX", "FieldOfViewX", "", "A", film.horizontalFovDegrees);
    w.property("FieldOfViewY", "FieldOfViewY", "", "A", film.verticalFovDegrees);
    w.close();
    w.close();
}

} // namespace

QString exportCameraName(const QString &identifier, int index, bool camera)
{
    if (identifier.isEmpty())
        return camera ? QStringLiteral("Camera_%1").arg(index) : QStringLiteral("Projector_%1_Camera").arg(index);
    return QStringLiteral("%1_%2_Camera").arg(identifier).arg(index);
}

bool writeSceneFbx(const QVector<GuideObject> &objects, ExportImageSource &images, const QString &path,
                   const QDateTime &now, QStringList *written, QString *error)
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
        return fail(QCoreApplication::translate("FbxExport", "No visible mesh objects or projectors are available for FBX export."));

    const QFileInfo info(path);
    const QString folder = info.absolutePath();
    const QString textureFolderName = info.completeBaseName() + QStringLiteral("_textures");
    const QString textureFolder = QDir(folder).filePath(textureFolderName);
    if (!ensureFolder(folder))
        return fail(pathMessage(QCoreApplication::translate("FbxExport", "Could not create export folder:"), folder));

    qint64 nextId = 1000001;
    std::vector<FbxMesh> meshes;
    for (const ExportSurface &s : surfaces) {
        FbxMesh m;
        m.surface = &s;
        m.name = fbxName(s.name);
        m.geometryId = nextId++;
        m.modelId = nextId++;
        m.materialId = nextId++;
        if (!s.texture.isNull()) {
            const QString file = (s.identifier.isEmpty() ? QStringLiteral("object") : s.identifier)
                                 + QStringLiteral("_%1.png").arg(s.index);
            m.textureId = nextId++;
            m.textureFile = QDir(textureFolder).filePath(file);
            m.textureRelative = textureFolderName + QLatin1Char('/') + file;
        }
        meshes.push_back(m);
    }
    std::vector<FbxCamera> cameras;
    for (const ExportLens &l : lenses) {
        FbxCamera c;
        c.lens = &l;
        c.name = exportCameraName(l.identifier, l.index, l.camera);
        c.modelId = nextId++;
        c.attributeId = nextId++;
        cameras.push_back(c);
    }
    const int textures = int(std::count_if(meshes.begin(), meshes.end(), [](const FbxMesh &m) { return m.textureId; }));
    if (textures > 0 && !ensureFolder(textureFolder))
        return fail(pathMessage(QCoreApplication::translate("FbxExport", "Could not create export folder:"), textureFolder));

    ExportTextFile file;
    if (!file.open(path))
        return fail(pathMessage(QCoreApplication::translate("FbxExport", "Could not save FBX file:"), path));
    FbxWriter w(file);
    writeHeader(w, now);
    writeDefinitions(w, int(meshes.size()), int(cameras.size()), textures);
    w.open(QStringLiteral("Objects:"));
    for (const FbxMesh &m : meshes) {
        writeGeometry(w, m);
        writeMeshModel(w, m);
        writeMaterial(w, m);
    }
    for (const FbxCamera &c : cameras)
        writeCamera(w, c);
    w.close();

    w.open(QStringLiteral("Connections:"));
    for (const FbxMesh &m : meshes) {
        w.line(QStringLiteral("C: \"OO\",%1,%2").arg(m.geometryId).arg(m.modelId));
        w.line(QStringLiteral("C: \"OO\",%1,%2").arg(m.materialId).arg(m.modelId));
        w.line(QStringLiteral("C: \"OO\",%1,0").arg(m.modelId));
        if (m.textureId)
            w.line(QStringLiteral("C: \"OP\",%1,%2, \"DiffuseColor\"").arg(m.textureId).arg(m.materialId));
    }
    for (const FbxCamera &c : cameras) {
        w.line(QStringLiteral("C: \"OO\",%1,0").arg(c.modelId));
        w.line(QStringLiteral("C: \"OO\",%1,%2").arg(c.attributeId).arg(c.modelId));
    }
    w.close();
    w.open(QStringLiteral("Takes:"));
    w.line(std::string_view("Current: \"\""));
    w.close();
    if (!file.commit())
        return fail(pathMessage(QCoreApplication::translate("FbxExport", "Could not save FBX file:"), path));
    if (written)
        written->append(path);

    for (const FbxMesh &m : meshes) {
        if (m.textureFile.isEmpty())
            continue;
        if (!writeTexturePng(m.surface->texture, m.textureFile, error))
            return false;
        if (written)
            written->append(m.textureFile);
    }
    return true;
}

ExporterEntry fbxExporterEntry()
{
    return {QStringLiteral("fbx"),
            QStringLiteral("fbx"),
            QT_TRANSLATE_NOOP("Exporters", "FBX 7.4 ASCII"),
            QT_TRANSLATE_NOOP("Exporters", "Export FBX..."),
            ExportSubject::SceneView,
            QStringLiteral("vantreo_scene"),
            Settings::fbxExportDirectory.key(),
            [](const ExportRequest &request, const QString &path, QStringList *written, QString *error) {
                ExportImageSource fallback(request.guides);
                return writeSceneFbx(request.objects, request.images ? *request.images : fallback, path,
                                     QDateTime::currentDateTime(), written, error);
            }};
}

} // namespace vg::exchange
