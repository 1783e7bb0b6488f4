#pragma once

#include <Eigen/Core>

struct GuideObject;

// Shape rules shared by the mesh builders and the lens model, so that what is drawn and
// what the frustum reaches are the same geometry.
namespace vg::scene {

// Cylinder wall: the arc is centred on the local origin's -Z side of its circle: the
// middle of the arc is at the origin, the circle's centre at (0, 0, radius), so the wall
// faces +Z like a plane. The arc runs from -angle/2 to +angle/2.
double cylinderWallAngleDegrees(const GuideObject &object);     // clamped to 1..360
double cylinderWallRadius(const GuideObject &object);           // max(0.05, 2·half width / angle)
Eigen::Vector3d cylinderWallPoint(double radius, double thetaRadians, double y);

// Radius of a sphere about the object's origin that holds its whole shape.
double boundingRadius(const GuideObject &object);

} // namespace vg::scene
