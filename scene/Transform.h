#pragma once

#include <Eigen/Geometry>
#include <QMatrix4x4>
#include <QVector3D>

struct GuideObject;

// Object transforms.
//
// Euler angles are in degrees and applied in the order X, then Y, then Z about the fixed
// world axes: R = Rz(rotate_z) · Ry(rotate_y) · Rx(rotate_x), acting on column vectors.
// This is the "XYZ" rotation order of the usual interchange formats, so exporters can
// write the three stored values unchanged.
//
// The object frame is rigid: world = T · R · local. The scale fields are not part of it:
// for generated shapes they are half extents that the mesh builders apply themselves, so
// meshes, lens frames and gizmos all share this one matrix.

namespace vg::scene {

Eigen::Matrix3d eulerDegreesToMatrix(double rxDeg, double ryDeg, double rzDeg);
// Inverse of eulerDegreesToMatrix; returns (rx, ry, rz) in degrees, ry in [-90, 90].
// At the gimbal lock (ry = ±90) rx is set to 0 and the whole roll goes to rz.
Eigen::Vector3d matrixToEulerDegrees(const Eigen::Matrix3d &rotation);

Eigen::Vector3d objectTranslation(const GuideObject &object);
Eigen::Vector3d objectHalfExtents(const GuideObject &object);
Eigen::Matrix3d objectRotation(const GuideObject &object);
Eigen::Isometry3d objectToWorld(const GuideObject &object);
Eigen::Isometry3d worldToObject(const GuideObject &object);

// Writes a rigid pose back into the translate and rotate fields.
void setObjectPose(GuideObject &object, const Eigen::Vector3d &translation, const Eigen::Matrix3d &rotation);

Eigen::Vector3d localToWorld(const GuideObject &object, const Eigen::Vector3d &local);
Eigen::Vector3d worldToLocal(const GuideObject &object, const Eigen::Vector3d &world);

QMatrix4x4 toQMatrix(const Eigen::Isometry3d &transform);
QMatrix4x4 toQMatrix(const Eigen::Matrix4d &matrix);
inline QVector3D toQVector(const Eigen::Vector3d &v) { return QVector3D(float(v.x()), float(v.y()), float(v.z())); }
inline Eigen::Vector3d toEigen(const QVector3D &v) { return {v.x(), v.y(), v.z()}; }

// The same matrix as objectToWorld(), in single precision for the renderer.
QMatrix4x4 objectWorldMatrix(const GuideObject &object);

} // namespace vg::scene
