#include "scene/Transform.h"

#include "scene/GuideObject.h"

#include <algorithm>
#include <cmath>

namespace vg::scene {

namespace {
constexpr double kDegToRad = M_PI / 180.0;
constexpr double kRadToDeg = 180.0 / M_PI;
}

Eigen::Matrix3d eulerDegreesToMatrix(double rxDeg, double ryDeg, double rzDeg)
{
    const Eigen::AngleAxisd rx(rxDeg * kDegToRad, Eigen::Vector3d::UnitX());
    const Eigen::AngleAxisd ry(ryDeg * kDegToRad, Eigen::Vector3d::UnitY());
    const Eigen::AngleAxisd rz(rzDeg * kDegToRad, Eigen::Vector3d::UnitZ());
    return (rz * ry * rx).toRotationMatrix();
}

Eigen::Vector3d matrixToEulerDegrees(const Eigen::Matrix3d &r)
{
    // R = Rz·Ry·Rx: r(2,0) = -sin(ry).
    const double sy = std::clamp(-r(2, 0), -1.0, 1.0);
    const double ry = std::asin(sy);
    double rx = 0.0;
    double rz = 0.0;
    if (std::abs(sy) < 1.0 - 1e-9) {
        rx = std::atan2(r(2, 1), r(2, 2));
        rz = std::atan2(r(1, 0), r(0, 0));
    } else {
        // Gimbal lock: only rz ∓ rx is defined.
        rz = std::atan2(-r(0, 1), r(1, 1));
    }
    return {rx * kRadToDeg, ry * kRadToDeg, rz * kRadToDeg};
}

Eigen::Vector3d objectTranslation(const GuideObject &o)
{
    return {o.translate_x, o.translate_y, o.translate_z};
}

Eigen::Vector3d objectHalfExtents(const GuideObject &o)
{
    return {o.scale_x, o.scale_y, o.scale_z};
}

Eigen::Matrix3d objectRotation(const GuideObject &o)
{
    return eulerDegreesToMatrix(o.rotate_x, o.rotate_y, o.rotate_z);
}

Eigen::Isometry3d objectToWorld(const GuideObject &o)
{
    Eigen::Isometry3d t = Eigen::Isometry3d::Identity();
    t.linear() = objectRotation(o);
    t.translation() = objectTranslation(o);
    return t;
}

Eigen::Isometry3d worldToObject(const GuideObject &o)
{
    return objectToWorld(o).inverse(Eigen::Isometry);
}

void setObjectPose(GuideObject &o, const Eigen::Vector3d &translation, const Eigen::Matrix3d &rotation)
{
    const Eigen::Vector3d e = matrixToEulerDegrees(rotation);
    o.translate_x = float(translation.x());
    o.translate_y = float(translation.y());
    o.translate_z = float(translation.z());
    o.rotate_x = float(e.x());
    o.rotate_y = float(e.y());
    o.rotate_z = float(e.z());
}

Eigen::Vector3d localToWorld(const GuideObject &o, const Eigen::Vector3d &local)
{
    return objectRotation(o) * local + objectTranslation(o);
}

Eigen::Vector3d worldToLocal(const GuideObject &o, const Eigen::Vector3d &world)
{
    return objectRotation(o).transpose() * (world - objectTranslation(o));
}

QMatrix4x4 toQMatrix(const Eigen::Matrix4d &m)
{
    QMatrix4x4 q;
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c)
            q(r, c) = float(m(r, c));
    return q;
}

QMatrix4x4 toQMatrix(const Eigen::Isometry3d &t)
{
    return toQMatrix(t.matrix());
}

QMatrix4x4 objectWorldMatrix(const GuideObject &o)
{
    return toQMatrix(objectToWorld(o));
}

} // namespace vg::scene
