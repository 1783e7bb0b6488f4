#pragma once

#include "scene/GuideObject.h"

#include <Eigen/Core>
#include <QVector>

// Where new and pasted objects go, so that a user sees them appear: in front of the
// navigation camera, or beside the selected object; a projector or camera faces the
// nearest flat surface from the distance at which its image covers that surface.
namespace vg::scene {

// The navigation camera as placement needs it.
struct PlacementView {
    Eigen::Vector3d eye = Eigen::Vector3d(0.0, 2.5, 4.0);
    Eigen::Vector3d target = Eigen::Vector3d::Zero();
};

// Gap left between an object and the one it is placed beside (metres).
constexpr double kPlacementGap = 0.25;
// How far each paste moves from objects already at the same place (metres).
constexpr double kPasteOffset = 0.3;

// The created object (still at its creation pose) placed among `others`: beside
// others[besideIndex] when that is valid, else at the camera's target. Sizes, names
// and every non-pose field are kept.
GuideObject placedNewObject(const GuideObject &created, const QVector<GuideObject> &others, int besideIndex,
                            const PlacementView &view);

// The flat surface (plane, circle plane, guide, image) nearest to `point`, or -1.
int nearestFlatSurface(const QVector<GuideObject> &objects, const Eigen::Vector3d &point);

// Moves pasted objects along the camera's right-hand direction until none of them sits
// where an object of the scene already is; pasting into an empty spot keeps positions.
void offsetPastedObjects(QVector<GuideObject> &pasted, const QVector<GuideObject> &existing,
                         const PlacementView &view);

} // namespace vg::scene
