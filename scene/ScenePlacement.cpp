#include "scene/ScenePlacement.h"

#include "scene/LensModel.h"
#include "scene/Transform.h"

#include <Eigen/Geometry>

#include <algorithm>
#include <cmath>
#include <limits>

namespace vg::scene {

namespace {

const Eigen::Vector3d kUp(0.0, 1.0, 0.0);

bool isFlatSurface(const GuideObject &o)
{
    switch (o.guide_index) {
    case KindPlane:
    case KindCirclePlane:
    case KindGuide:
    case KindImage:
        return true;
    default:
        return false;
    }
}

// The camera's viewing direction along the floor, and its right-hand side.
Eigen::Vector3d floorForward(const PlacementView &view)
{
    Eigen::Vector3d forward = view.target - view.eye;
    forward.y() = 0.0;
    if (forward.norm() < 1e-6)
        return Eigen::Vector3d(0.0, 0.0, -1.0);
    return forward.normalized();
}

Eigen::Vector3d floorRight(const PlacementView &view)
{
    return floorForward(view).cross(kUp).normalized();
}

// Half the footprint of an object across the floor (metres), enough to keep neighbours apart.
double floorRadius(const GuideObject &o)
{
    return std::max({std::abs(double(o.scale_x)), std::abs(double(o.scale_z)), 0.05});
}

// A rotation whose +Z axis is `back` (a lens then looks along -back), kept upright.
Eigen::Matrix3d facingRotation(const Eigen::Vector3d &back)
{
    const Eigen::Vector3d z = back.normalized();
    Eigen::Vector3d x = kUp.cross(z);
    if (x.norm() < 1e-6)
        x = Eigen::Vector3d(1.0, 0.0, 0.0); // looking straight up or down
    x.normalize();
    const Eigen::Vector3d y = z.cross(x).normalized();
    Eigen::Matrix3d rotation;
    rotation.col(0) = x;
    rotation.col(1) = y;
    rotation.col(2) = z;
    return rotation;
}

// Turns a flat surface about the vertical to face the camera, in whole 15° steps.
void faceCamera(GuideObject &o, const PlacementView &view)
{
    const Eigen::Vector3d toEye = view.eye - objectTranslation(o);
    if (std::hypot(toEye.x(), toEye.z()) < 1e-6)
        return;
    const double degrees = std::atan2(toEye.x(), toEye.z()) * 180.0 / M_PI;
    o.rotate_y = float(std::round(degrees / 15.0) * 15.0);
    if (o.rotate_y <= -180.0f)
        o.rotate_y += 360.0f;
}

// A lens in front of a surface: on the surface's normal on the camera's side, at the distance
// where the image is as wide as the surface, moved across its axis so that the image centre
// lands on the surface centre whatever the lens shift.
void aimAtSurface(GuideObject &lens, const GuideObject &surface, const PlacementView &view)
{
    const Eigen::Vector3d centre = objectTranslation(surface);
    Eigen::Vector3d normal = objectRotation(surface).col(2);
    if (normal.dot(view.eye - centre) < 0.0)
        normal = -normal;
    const double widthMetres = std::max(0.1, 2.0 * std::abs(double(surface.scale_x)));
    const double distance = std::clamp(clampedThrowRatio(lens.throw_rate) * widthMetres, 0.5, 50.0);
    const Eigen::Matrix3d rotation = facingRotation(normal);
    const LensIntrinsics intrinsics = lensIntrinsicsOf(lens);
    // Where the centre lands with the lens at a point; moving the lens across its axis
    // moves the image linearly, so one step along each axis gives the correction.
    auto landing = [&](const Eigen::Vector3d &at) {
        return projectWorldPoint(intrinsics, LensPose{at, rotation}, centre, 1.0e6);
    };
    Eigen::Vector3d position = centre + normal * distance;
    const LensProjection here = landing(position);
    const double du = landing(position + rotation.col(0)).u - here.u;
    const double dv = landing(position + rotation.col(1)).v - here.v;
    if (std::abs(du) > 1e-9)
        position += rotation.col(0) * ((0.5 - here.u) / du);
    if (std::abs(dv) > 1e-9)
        position += rotation.col(1) * ((0.5 - here.v) / dv);
    setObjectPose(lens, position, rotation);
}

} // namespace

int nearestFlatSurface(const QVector<GuideObject> &objects, const Eigen::Vector3d &point)
{
    int best = -1;
    double bestDistance = std::numeric_limits<double>::max();
    for (int i = 0; i < objects.size(); ++i) {
        const GuideObject &o = objects.at(i);
        if (!o.visible || !isFlatSurface(o))
            continue;
        const double distance = (objectTranslation(o) - point).norm();
        if (distance < bestDistance) {
            bestDistance = distance;
            best = i;
        }
    }
    return best;
}

GuideObject placedNewObject(const GuideObject &created, const QVector<GuideObject> &others, int besideIndex,
                            const PlacementView &view)
{
    GuideObject o = created;
    const bool beside = besideIndex >= 0 && besideIndex < others.size();
    if (beside) {
        const GuideObject &neighbour = others.at(besideIndex);
        const Eigen::Vector3d at = objectTranslation(neighbour)
                                   + floorRight(view) * (floorRadius(neighbour) + floorRadius(o) + kPlacementGap);
        o.translate_x = float(at.x());
        o.translate_z = float(at.z());
        if (o.hasLens() && neighbour.hasLens()) {
            // The next projector of a row: same height and direction.
            o.translate_y = neighbour.translate_y;
            o.rotate_x = neighbour.rotate_x;
            o.rotate_y = neighbour.rotate_y;
            o.rotate_z = neighbour.rotate_z;
            return o;
        }
    } else {
        o.translate_x = float(view.target.x());
        o.translate_z = float(view.target.z());
    }

    if (isFlatSurface(o)) {
        faceCamera(o, view);
    } else if (o.hasLens()) {
        const int surface = nearestFlatSurface(others, objectTranslation(o));
        if (surface >= 0) {
            aimAtSurface(o, others.at(surface), view);
        } else {
            // Nothing to face: at eye height, looking the way the camera looks.
            o.translate_y = 1.5f;
            setObjectPose(o, objectTranslation(o), facingRotation(-floorForward(view)));
        }
    }
    return o;
}

void offsetPastedObjects(QVector<GuideObject> &pasted, const QVector<GuideObject> &existing,
                         const PlacementView &view)
{
    auto occupied = [&existing](const Eigen::Vector3d &at) {
        for (const GuideObject &o : existing) {
            if ((objectTranslation(o) - at).norm() < 0.001)
                return true;
        }
        return false;
    };
    const Eigen::Vector3d step = floorRight(view) * kPasteOffset;
    // Bounded: a crowded scene still gets its paste, just not necessarily in a free spot.
    for (int attempt = 0; attempt < 100; ++attempt) {
        bool clash = false;
        for (const GuideObject &o : pasted)
            clash = clash || occupied(objectTranslation(o));
        if (!clash)
            return;
        for (GuideObject &o : pasted) {
            o.translate_x += float(step.x());
            o.translate_z += float(step.z());
        }
    }
}

} // namespace vg::scene
