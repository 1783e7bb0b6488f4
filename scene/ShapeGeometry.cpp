#include "scene/ShapeGeometry.h"

#include "scene/GuideObject.h"

#include <algorithm>
#include <cmath>

namespace vg::scene {

double cylinderWallAngleDegrees(const GuideObject &object)
{
    const double a = object.wall_cylinder_angle;
    return std::isfinite(a) ? std::clamp(a, 1.0, 360.0) : 90.0;
}

double cylinderWallRadius(const GuideObject &object)
{
    const double angle = cylinderWallAngleDegrees(object) * M_PI / 180.0;
    return std::max(0.05, 2.0 * double(object.scale_x) / angle);
}

Eigen::Vector3d cylinderWallPoint(double radius, double theta, double y)
{
    return {radius * std::sin(theta), y, radius * (1.0 - std::cos(theta))};
}

double boundingRadius(const GuideObject &object)
{
    // Every generated shape stays inside the box of its half extents (the horseshoe's own
    // rotation turns that box, which the sphere about the origin still holds).
    return Eigen::Vector3d(object.scale_x, object.scale_y, object.scale_z).norm();
}

} // namespace vg::scene
