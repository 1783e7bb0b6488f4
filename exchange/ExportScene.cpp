#include "exchange/ExportScene.h"

#include "exchange/ExportImageSource.h"
#include "exchange/ExportText.h"
#include "guide/PngWriter.h"
#include "scene/MeshBuilders.h"
#include "scene/Transform.h"

#include <QCoreApplication>
#include <QSet>

namespace vg::exchange {

Eigen::Vector3d worldPosition(const ExportSurface &surface, const SceneVertex &v)
{
    return surface.toWorld * Eigen::Vector3d(v.px, v.py, v.pz);
}

Eigen::Vector3d worldNormal(const ExportSurface &surface, const SceneVertex &v)
{
    return surface.toWorld.linear() * Eigen::Vector3d(v.nx, v.ny, v.nz);
}

bool isExportableSurfaceKind(int kind)
{
    switch (kind) {
    case KindPlane:
    case KindCirclePlane:
    case KindCylinderWall:
    case KindPerson:
    case KindCurvedSurface:
    case KindLShape:
    case KindCurve:
    case KindGuide:
    case KindImage:
    case KindObjMesh:
        return true;
    default:
        return false;
    }
}

QString exportDisplayName(const GuideObject &object, int index)
{
    const QString name = singleLineText(object.name);
    return name.isEmpty() ? QStringLiteral("Object %1").arg(index) : name;
}

namespace {

QList<int> validUnique(const QVector<GuideObject> &objects, const QList<int> &indices)
{
    QList<int> out;
    QSet<int> seen;
    for (int i : indices) {
        if (i < 0 || i >= objects.size() || seen.contains(i))
            continue;
        seen.insert(i);
        out.append(i);
    }
    return out;
}

} // namespace

QVector<ExportSurface> collectSurfaces(const QVector<GuideObject> &objects, const QList<int> &indices,
                                       ExportImageSource *images, bool includeHidden)
{
    QVector<ExportSurface> out;
    for (int i : validUnique(objects, indices)) {
        const GuideObject &o = objects.at(i);
        if (!isExportableSurfaceKind(o.guide_index) || (!o.visible && !includeHidden))
            continue;
        ExportSurface s;
        s.mesh = vg::scene::buildObjectMesh(o);
        if (s.mesh.indices.empty())
            continue;
        s.index = i;
        s.name = exportDisplayName(o, i);
        s.identifier = asciiIdentifier(o.name);
        s.toWorld = vg::scene::objectToWorld(o);
        s.color = o.mesh_color.isValid() ? o.mesh_color : QColor(200, 200, 200);
        s.opacity = std::clamp(double(o.object_opacity), 0.0, 1.0);
        if (images)
            s.texture = images->surfaceTexture(o);
        out.append(std::move(s));
    }
    return out;
}

QVector<ExportLens> collectLenses(const QVector<GuideObject> &objects, const QList<int> &indices, bool includeHidden)
{
    QVector<ExportLens> out;
    for (int i : validUnique(objects, indices)) {
        const GuideObject &o = objects.at(i);
        if (!o.hasLens() || (!o.visible && !includeHidden))
            continue;
        ExportLens l;
        l.index = i;
        l.name = exportDisplayName(o, i);
        l.identifier = asciiIdentifier(o.name);
        l.camera = o.isCamera();
        l.lens = vg::scene::LensModel::forObject(objects, i);
        out.append(l);
    }
    return out;
}

QList<int> allIndices(const QVector<GuideObject> &objects)
{
    QList<int> all;
    all.reserve(objects.size());
    for (int i = 0; i < objects.size(); ++i)
        all.append(i);
    return all;
}

bool writeTexturePng(const QImage &image, const QString &path, QString *error)
{
    QString detail;
    if (writeGuidePng(image, path, &detail))
        return true;
    if (error)
        *error = pathMessage(QCoreApplication::translate("ExportScene", "Could not save texture image:"), path);
    return false;
}

} // namespace vg::exchange
