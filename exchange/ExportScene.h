#pragma once

#include "scene/GuideObject.h"
#include "scene/LensModel.h"
#include "scene/SceneMesh.h"

#include <Eigen/Geometry>
#include <QColor>
#include <QImage>
#include <QList>
#include <QString>
#include <QVector>

#include <vector>

namespace vg::exchange {

class ExportImageSource;

// One mesh object of the scene as the scene exporters see it: its shading mesh in its
// own frame, the frame, and what its material shows.
struct ExportSurface {
    int index = -1;                   // scene index
    QString name;                     // the object's name, or "Object %1" when it has none
    QString identifier;               // ASCII identifier of the name; empty when none is left
    SceneMesh mesh;                   // local frame, metres
    Eigen::Isometry3d toWorld = Eigen::Isometry3d::Identity();
    QColor color;                     // flat colour (mesh_color)
    double opacity = 1.0;
    QImage texture;                   // null when the surface shows no picture
};

// A projector or camera with its throw distance in the scene.
struct ExportLens {
    int index = -1;
    QString name;
    QString identifier;
    bool camera = false;
    vg::scene::LensModel lens;
};

// World position and normal of a vertex of an ExportSurface.
Eigen::Vector3d worldPosition(const ExportSurface &surface, const SceneVertex &vertex);
Eigen::Vector3d worldNormal(const ExportSurface &surface, const SceneVertex &vertex);

// Kinds that leave the program as shaded meshes: surfaces, people, extruded curves (a flat
// curve has no triangles) and imported meshes. Lens bodies, measures, comments and DXF
// drawings are drawn as lines or symbols in the view and are not exported as surfaces.
bool isExportableSurfaceKind(int kind);

// The display name used in exports: the object's own, or "Object %1" (its index).
QString exportDisplayName(const GuideObject &object, int index);

// The exportable surfaces among `indices` (in that order, duplicates and invalid indices
// dropped) that have triangles; invisible objects are skipped unless `includeHidden`.
// Textures are resolved through `images` when it is given.
QVector<ExportSurface> collectSurfaces(const QVector<GuideObject> &objects, const QList<int> &indices,
                                       ExportImageSource *images, bool includeHidden = false);
// The projectors and cameras among `indices`.
QVector<ExportLens> collectLenses(const QVector<GuideObject> &objects, const QList<int> &indices,
                                  bool includeHidden = false);

// Every index of the scene, in order.
QList<int> allIndices(const QVector<GuideObject> &objects);

// Writes `image` as PNG; false with "Could not save texture image: <path>".
bool writeTexturePng(const QImage &image, const QString &path, QString *error);

} // namespace vg::exchange
