#include "exchange/MeshImport.h"

#include "exchange/DxfReader.h"
#include "exchange/ObjReader.h"
#include "scene/SceneMesh.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QHash>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <memory>

namespace vg::exchange {
namespace {

// Geometry normalised to -1..1 on each axis, with the values that undo it.
struct NormalisedGeometry {
    std::shared_ptr<const SceneMesh> mesh;
    double centre[3] = {0, 0, 0};   // metres, scene axes
    double half[3] = {0.001, 0.001, 0.001};
};

struct Bounds {
    double lo[3] = {std::numeric_limits<double>::max(), std::numeric_limits<double>::max(),
                    std::numeric_limits<double>::max()};
    double hi[3] = {std::numeric_limits<double>::lowest(), std::numeric_limits<double>::lowest(),
                    std::numeric_limits<double>::lowest()};

    void add(double x, double y, double z)
    {
        const double p[3] = {x, y, z};
        for (int i = 0; i < 3; ++i) {
            lo[i] = std::min(lo[i], p[i]);
            hi[i] = std::max(hi[i], p[i]);
        }
    }

    // The half extents are at least 1 mm, as the object's sizes are.
    void finish(NormalisedGeometry *g) const
    {
        for (int i = 0; i < 3; ++i) {
            g->centre[i] = (lo[i] + hi[i]) / 2.0;
            g->half[i] = std::max((hi[i] - lo[i]) / 2.0, 0.001);
        }
    }
};

float normalised(double value, const NormalisedGeometry &g, int axis)
{
    return float((value - g.centre[axis]) / g.half[axis]);
}

NormalisedGeometry normaliseObj(ObjMesh &&obj)
{
    NormalisedGeometry g;
    Bounds bounds;
    for (const SceneVertex &v : obj.mesh.vertices)
        bounds.add(v.px, v.py, v.pz);
    bounds.finish(&g);
    auto mesh = std::make_shared<SceneMesh>(std::move(obj.mesh));
    for (SceneVertex &v : mesh->vertices) {
        v.px = normalised(v.px, g, 0);
        v.py = normalised(v.py, g, 1);
        v.pz = normalised(v.pz, g, 2);
    }
    g.mesh = std::move(mesh);
    return g;
}

// Millimetres of the drawing to metres of the scene, plan on the floor.
NormalisedGeometry normaliseDxf(const DxfDrawing &drawing)
{
    NormalisedGeometry g;
    Bounds bounds;
    auto scenePoint = [](const DxfPoint &p) {
        return std::array<double, 3>{p.x / 1000.0, p.z / 1000.0, -p.y / 1000.0};
    };
    for (const DxfPoint &p : drawing.segments) {
        const auto s = scenePoint(p);
        bounds.add(s[0], s[1], s[2]);
    }
    bounds.finish(&g);
    auto mesh = std::make_shared<SceneMesh>();
    mesh->lines.reserve(drawing.segments.size());
    for (const DxfPoint &p : drawing.segments) {
        const auto s = scenePoint(p);
        mesh->lines.emplace_back(normalised(s[0], g, 0), normalised(s[1], g, 1), normalised(s[2], g, 2));
    }
    mesh->gridLineCount = int(mesh->lines.size() / 2);
    g.mesh = std::move(mesh);
    return g;
}

bool readGeometry(const QString &path, MeshFileKind kind, NormalisedGeometry *geometry, QString *texture,
                  QString *error)
{
    if (kind == MeshFileKind::Dxf) {
        DxfDrawing drawing;
        if (!readDxfFile(path, &drawing, error))
            return false;
        *geometry = normaliseDxf(drawing);
        return true;
    }
    if (kind == MeshFileKind::Obj) {
        ObjMesh obj;
        if (!readObjFile(path, &obj, error))
            return false;
        if (texture)
            *texture = obj.texturePath;
        *geometry = normaliseObj(std::move(obj));
        return true;
    }
    if (error)
        *error = QCoreApplication::translate("MeshImport", "%1 is not an OBJ or DXF file.").arg(QFileInfo(path).fileName());
    return false;
}

int objectKindOf(MeshFileKind kind)
{
    return kind == MeshFileKind::Dxf ? KindDxfMesh : KindObjMesh;
}

} // namespace

MeshFileKind meshFileKind(const QString &path)
{
    const QString suffix = QFileInfo(path).suffix().toLower();
    if (suffix == QLatin1String("obj"))
        return MeshFileKind::Obj;
    if (suffix == QLatin1String("dxf"))
        return MeshFileKind::Dxf;
    return MeshFileKind::Unknown;
}

bool importMeshFile(const QString &path, GuideObject *object, QString *error)
{
    const MeshFileKind kind = meshFileKind(path);
    NormalisedGeometry geometry;
    QString texture;
    if (!readGeometry(path, kind, &geometry, &texture, error))
        return false;
    GuideObject o;
    o.guide_index = objectKindOf(kind);
    o.name = QFileInfo(path).completeBaseName();
    o.obj_path = QFileInfo(path).absoluteFilePath();
    o.imported_mesh = geometry.mesh;
    o.scale_x = float(geometry.half[0]);
    o.scale_y = float(geometry.half[1]);
    o.scale_z = float(geometry.half[2]);
    if (kind == MeshFileKind::Obj) {
        o.translate_x = float(geometry.centre[0]);
        o.translate_y = float(geometry.centre[1]);
        o.translate_z = float(geometry.centre[2]);
        o.texture_file_path = texture;
        o.texture_visible = !texture.isEmpty();
    }
    *object = std::move(o);
    return true;
}

int loadImportedGeometry(QVector<GuideObject> &objects, QStringList *problems, const QString &baseFolder)
{
    const QDir base(baseFolder.isEmpty() ? QDir::currentPath() : baseFolder);
    struct Read {
        std::shared_ptr<const SceneMesh> mesh;
        QString error;
    };
    QHash<QString, Read> reads; // by path and kind
    int loaded = 0;
    for (GuideObject &o : objects) {
        if (o.imported_mesh || (o.guide_index != KindObjMesh && o.guide_index != KindDxfMesh))
            continue;
        const MeshFileKind kind = o.guide_index == KindDxfMesh ? MeshFileKind::Dxf : MeshFileKind::Obj;
        const QString key = QString::number(int(kind)) + QLatin1Char('|') + o.obj_path;
        auto it = reads.find(key);
        if (it == reads.end()) {
            Read read;
            NormalisedGeometry geometry;
            if (o.obj_path.trimmed().isEmpty())
                read.error = QCoreApplication::translate("MeshImport", "The object names no mesh file.");
            else if (readGeometry(base.absoluteFilePath(o.obj_path), kind, &geometry, nullptr, &read.error))
                read.mesh = geometry.mesh;
            it = reads.insert(key, read);
        }
        if (it->mesh) {
            o.imported_mesh = it->mesh;
            ++loaded;
        } else if (problems) {
            problems->append(QStringLiteral("%1: %2").arg(o.name, it->error));
        }
    }
    return loaded;
}

int loadImportedGeometry(ProjectDocument *doc, QStringList *problems, const QString &baseFolder)
{
    int loaded = loadImportedGeometry(doc->activeView.objects, problems, baseFolder);
    for (Guide3DViewSettings &view : doc->views)
        loaded += loadImportedGeometry(view.objects, problems, baseFolder);
    return loaded;
}

} // namespace vg::exchange
