#pragma once

#include "scene/SceneMesh.h"

#include <Eigen/Geometry>
#include <QVector>

#include <limits>
#include <vector>

struct GuideObject;

// Nearest hit of a world-space ray against the scene's meshes (the meshes of
// buildSceneMeshes(), in each object's local frame).
namespace vg::scene {

struct SceneRayHit {
    bool hit = false;
    int objectIndex = -1;
    int triangle = -1;               // index of the triangle's first entry / 3
    double distance = 0.0;           // along the ray, metres (the direction is normalised)
    Eigen::Vector3d point = Eigen::Vector3d::Zero();
    Eigen::Vector3d normal = Eigen::Vector3d::Zero();   // geometric, unit, facing the ray origin
};

struct SceneRaycastOptions {
    bool visibleOnly = true;
    bool skipLensObjects = true;     // projector and camera bodies do not receive light
    int skipIndex = -1;              // e.g. the projector casting the ray
    double minDistance = 1e-6;
    double maxDistance = std::numeric_limits<double>::infinity();
};

// Ray against one mesh given in local coordinates with its rigid local-to-world transform.
SceneRayHit raycastMesh(const SceneMesh &mesh, const Eigen::Matrix4d &localToWorld, const Eigen::Vector3d &origin,
                        const Eigen::Vector3d &direction, double minDistance = 1e-6,
                        double maxDistance = std::numeric_limits<double>::infinity());

SceneRayHit raycastScene(const QVector<GuideObject> &objects, const std::vector<SceneMesh> &meshes,
                         const Eigen::Vector3d &origin, const Eigen::Vector3d &direction,
                         const SceneRaycastOptions &options = {});

} // namespace vg::scene
