#include "exchange/ObjExport.h"

#include "exchange/ExportImageSource.h"
#include "exchange/ExportScene.h"
#include "exchange/ExportText.h"
#include "common/SettingsKeys.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QSet>

namespace vg::exchange {

namespace {

void writeVertexLine(ExportTextFile &f, const Eigen::Vector3d &p)
{
    f.write(std::string_view("v "));
    f.fixed(p.x());
    f.put(' ');
    f.fixed(p.y());
    f.put(' ');
    f.fixed(p.z());
    f.put('\n');
}

void writeUvLine(ExportTextFile &f, double u, double v)
{
    f.write(std::string_view("vt "));
    f.fixed(u);
    f.put(' ');
    f.fixed(v);
    f.put('\n');
}

void writeFace(ExportTextFile &f, long long a, long long b, long long c)
{
    f.write(std::string_view("f "));
    f.integer(a);
    f.put('/');
    f.integer(a);
    f.put(' ');
    f.integer(b);
    f.put('/');
    f.integer(b);
    f.put(' ');
    f.integer(c);
    f.put('/');
    f.integer(c);
    f.put('\n');
}

// A texture or material waiting to be written after the OBJ.
struct PendingMaterial {
    QString name;
    QColor diffuse;
    QString textureFile;   // file name beside the OBJ, empty when flat
    QImage image;
};

struct ObjCounters {
    long long vertices = 0;   // v and vt are written in pairs, so one counter serves both
};

void writeSurfaceGroup(ExportTextFile &f, const ExportSurface &s, const ObjNames &names, const QString &material,
                       ObjCounters &counters)
{
    f.line(QStringLiteral("o ") + s.name);
    f.line(QStringLiteral("g ") + names.group);
    for (const SceneVertex &v : s.mesh.vertices)
        writeVertexLine(f, worldPosition(s, v));
    // The meshes count v from the image's top; OBJ counts it from the bottom.
    for (const SceneVertex &v : s.mesh.vertices)
        writeUvLine(f, v.u, 1.0 - double(v.v));
    f.line(QStringLiteral("usemtl ") + material);
    f.line(std::string_view("s off"));
    const long long base = counters.vertices + 1;
    for (size_t i = 0; i + 2 < s.mesh.indices.size(); i += 3)
        writeFace(f, base + s.mesh.indices[i], base + s.mesh.indices[i + 1], base + s.mesh.indices[i + 2]);
    counters.vertices += static_cast<long long>(s.mesh.vertices.size());
}

// The frustum: four sides from the lens point and the far rectangle. A projector's far
// rectangle carries the picture it casts, mapped corner to corner as the lens model places
// the image (flips included), under a material of its own.
void writeFrustumGroup(ExportTextFile &f, const ExportLens &l, const ObjNames &names, const QString &imageMaterial,
                       ObjCounters &counters)
{
    const auto corners = l.lens.farCorners();  // image top-left, top-right, bottom-right, bottom-left
    const Eigen::Vector3d lens = l.lens.pose().position;
    f.line(QStringLiteral("o ") + l.name + QStringLiteral(" Frustum"));
    f.line(QStringLiteral("g ") + names.frustumGroup);
    writeVertexLine(f, lens);
    for (const Eigen::Vector3d &c : corners)
        writeVertexLine(f, c);
    writeUvLine(f, 0.5, 0.5);
    const double uv[4][2] = {{0.0, 1.0}, {1.0, 1.0}, {1.0, 0.0}, {0.0, 0.0}};
    for (const auto &t : uv)
        writeUvLine(f, t[0], t[1]);
    const long long b = counters.vertices + 1;
    // Sides face outwards, the far rectangle faces the lens: pick each winding from the
    // geometry, since a flipped lens mirrors the corner order.
    const Eigen::Vector3d centre = (corners[0] + corners[1] + corners[2] + corners[3]) / 4.0;
    auto face = [&](int i, int j, int k, const Eigen::Vector3d *pts[3], bool towardLens) {
        const Eigen::Vector3d n = (*pts[1] - *pts[0]).cross(*pts[2] - *pts[0]);
        const Eigen::Vector3d mid = (*pts[0] + *pts[1] + *pts[2]) / 3.0;
        const bool facesLens = n.dot(lens - mid) > 0.0;
        const bool outward = n.dot(mid - (lens + centre) / 2.0) > 0.0;
        const bool keep = towardLens ? facesLens : outward;
        if (keep)
            writeFace(f, b + i, b + j, b + k);
        else
            writeFace(f, b + i, b + k, b + j);
    };
    f.line(QStringLiteral("usemtl ") + names.frustumMaterial);
    f.line(std::string_view("s off"));
    for (int i = 0; i < 4; ++i) {
        const int j = (i + 1) % 4;
        const Eigen::Vector3d *pts[3] = {&lens, &corners[i], &corners[j]};
        face(0, 1 + i, 1 + j, pts, false);
    }
    if (!imageMaterial.isEmpty())
        f.line(QStringLiteral("usemtl ") + imageMaterial);
    const Eigen::Vector3d *far1[3] = {&corners[0], &corners[3], &corners[2]};
    face(1, 4, 3, far1, true);
    const Eigen::Vector3d *far2[3] = {&corners[0], &corners[2], &corners[1]};
    face(1, 3, 2, far2, true);
    counters.vertices += 5;
}

} // namespace

ObjSceneOptions ObjSceneOptions::fromVariantMap(const QVariantMap &options)
{
    ObjSceneOptions o;
    o.selectedOnly = optionBool(options, QStringLiteral("selectedOnly"), o.selectedOnly);
    o.includeFrustums = optionBool(options, QStringLiteral("includeFrustums"), o.includeFrustums);
    return o;
}

ObjNames objNames(const QString &identifier, int index)
{
    ObjNames n;
    if (identifier.isEmpty()) {
        n.group = QStringLiteral("object_%1").arg(index);
        n.material = QStringLiteral("material_%1").arg(index);
        n.flatMaterial = QStringLiteral("flat_material_%1").arg(index);
        n.frustumGroup = QStringLiteral("object_%1_frustum").arg(index);
        n.frustumMaterial = QStringLiteral("frustum_material_%1").arg(index);
    } else {
        n.group = QStringLiteral("%1_%2").arg(identifier).arg(index);
        n.material = QStringLiteral("%1_%2_material").arg(identifier).arg(index);
        n.flatMaterial = QStringLiteral("%1_%2_flat_material").arg(identifier).arg(index);
        n.frustumGroup = identifier + QStringLiteral("_Frustum");
        n.frustumMaterial = QStringLiteral("%1_%2_frustum_material").arg(identifier).arg(index);
    }
    return n;
}

void writeMtlBlock(ExportTextFile &f, const QString &name, const QColor &diffuse, const QString &textureFile,
                   bool opacityLine)
{
    f.line(QStringLiteral("newmtl ") + name);
    f.line(std::string_view("illum 2"));
    f.line(std::string_view("Ka 1.000000 1.000000 1.000000"));
    f.write(std::string_view("Kd "));
    f.fixed(diffuse.redF());
    f.put(' ');
    f.fixed(diffuse.greenF());
    f.put(' ');
    f.fixed(diffuse.blueF());
    f.put('\n');
    f.line(std::string_view("Ks 0.000000 0.000000 0.000000"));
    f.line(std::string_view("Ns 0.000000"));
    if (opacityLine)
        f.line(std::string_view("d 1.000000"));
    if (!textureFile.isEmpty())
        f.line(QStringLiteral("map_Kd ") + textureFile);
    f.put('\n');
}

bool writeSceneObj(const QVector<GuideObject> &objects, const QList<int> &selection, const ObjSceneOptions &options,
                   ExportImageSource &images, const QString &path, QStringList *written, QString *error)
{
    auto fail = [&](const QString &message) {
        if (error)
            *error = message;
        return false;
    };
    if (options.selectedOnly && selection.isEmpty())
        return fail(QCoreApplication::translate("ObjExport", "No 3D object is selected for OBJ export."));
    const QList<int> indices = options.selectedOnly ? selection : allIndices(objects);
    // Hidden objects stay out of a scene export, but a selected one is exported as asked.
    const QVector<ExportSurface> surfaces = collectSurfaces(objects, indices, &images, options.selectedOnly);
    const QVector<ExportLens> lenses =
        options.includeFrustums ? collectLenses(objects, indices, options.selectedOnly) : QVector<ExportLens>();
    if (surfaces.isEmpty() && lenses.isEmpty()) {
        return fail(options.selectedOnly ? QCoreApplication::translate("ObjExport", "No 3D object is selected for OBJ export.")
                                         : QCoreApplication::translate("ObjExport", "No visible mesh objects are available for OBJ export."));
    }

    const QFileInfo info(path);
    const QString folder = info.absolutePath();
    const QString base = info.completeBaseName();
    const QString mtlName = base + QStringLiteral(".mtl");
    const QString mtlPath = QDir(folder).filePath(mtlName);
    if (!ensureFolder(folder))
        return fail(pathMessage(QCoreApplication::translate("ObjExport", "Could not save OBJ file:"), path));

    QVector<PendingMaterial> materials;
    QSet<QString> frustumGroups;
    ExportTextFile obj;
    if (!obj.open(path))
        return fail(pathMessage(QCoreApplication::translate("ObjExport", "Could not save OBJ file:"), path));
    obj.line(std::string_view("# Vantreo Guide 3D View OBJ"));
    obj.line(QStringLiteral("mtllib ") + mtlName);
    ObjCounters counters;
    for (const ExportSurface &s : surfaces) {
        const ObjNames names = objNames(s.identifier, s.index);
        PendingMaterial m;
        if (!s.texture.isNull()) {
            m.name = names.material;
            m.diffuse = Qt::white;
            m.textureFile = base + QLatin1Char('_') + names.group + QStringLiteral(".png");
            m.image = s.texture;
        } else {
            m.name = names.flatMaterial;
            m.diffuse = s.color;
        }
        writeSurfaceGroup(obj, s, names, m.name, counters);
        materials.append(m);
    }
    for (const ExportLens &l : lenses) {
        ObjNames names = objNames(l.identifier, l.index);
        if (frustumGroups.contains(names.frustumGroup))
            names.frustumGroup = objNames(QString(), l.index).frustumGroup;
        frustumGroups.insert(names.frustumGroup);
        PendingMaterial frustum;
        frustum.name = names.frustumMaterial;
        frustum.diffuse = l.camera ? vg::scene::cameraFrustumColor() : vg::scene::projectorFrustumColor();
        materials.append(frustum);
        QString imageMaterial;
        if (!l.camera) {
            const QImage picture = images.projectorImage(objects, l.index);
            if (!picture.isNull()) {
                PendingMaterial m;
                m.name = names.material;
                m.diffuse = Qt::white;
                m.textureFile = base + QLatin1Char('_') + names.frustumGroup + QStringLiteral(".png");
                m.image = picture;
                imageMaterial = m.name;
                materials.append(m);
            }
        }
        writeFrustumGroup(obj, l, names, imageMaterial, counters);
    }
    if (!obj.commit())
        return fail(pathMessage(QCoreApplication::translate("ObjExport", "Could not save OBJ file:"), path));
    if (written)
        written->append(path);

    ExportTextFile mtl;
    if (!mtl.open(mtlPath))
        return fail(pathMessage(QCoreApplication::translate("ObjExport", "Could not save MTL file:"), mtlPath));
    mtl.line(std::string_view("# Vantreo Guide 3D View MTL"));
    for (const PendingMaterial &m : materials)
        writeMtlBlock(mtl, m.name, m.diffuse, m.textureFile, false);
    if (!mtl.commit())
        return fail(pathMessage(QCoreApplication::translate("ObjExport", "Could not save MTL file:"), mtlPath));
    if (written)
        written->append(mtlPath);

    for (const PendingMaterial &m : materials) {
        if (m.textureFile.isEmpty())
            continue;
        const QString texturePath = QDir(folder).filePath(m.textureFile);
        if (!writeTexturePng(m.image, texturePath, error))
            return false;
        if (written)
            written->append(texturePath);
    }
    return true;
}

ExporterEntry objExporterEntry()
{
    return {QStringLiteral("obj"),
            QStringLiteral("obj"),
            QT_TRANSLATE_NOOP("Exporters", "Wavefront OBJ"),
            QT_TRANSLATE_NOOP("Exporters", "Export OBJ..."),
            ExportSubject::SceneView,
            QStringLiteral("3d_view"),
            Settings::objExportDirectory.key(),
            [](const ExportRequest &request, const QString &path, QStringList *written, QString *error) {
                ExportImageSource fallback(request.guides);
                ExportImageSource &images = request.images ? *request.images : fallback;
                return writeSceneObj(request.objects, request.selection, ObjSceneOptions::fromVariantMap(request.options),
                                     images, path, written, error);
            }};
}

} // namespace vg::exchange
