#include "scene/SceneRaycast.h"

#include "scene/GuideObject.h"
#include "scene/Transform.h"

#include <cmath>

namespace vg::scene {

SceneRayHit raycastMesh(const SceneMesh &mesh, const Eigen::Matrix4d &toWorld, const Eigen::Vector3d &origin,
                        const Eigen::Vector3d &directionIn, double minDistance, double maxDistance)
{
    SceneRayHit best;
    const double len = directionIn.norm();
    if (!(len > 0.0) || !std::isfinite(len) || mesh.indices.empty())
        return best;
    const Eigen::Vector3d direction = directionIn / len;
    // Into the local frame; the transform is rigid, so distances carry over unchanged.
    const Eigen::Matrix3d r = toWorld.block<3, 3>(0, 0);
    const Eigen::Vector3d t = toWorld.block<3, 1>(0, 3);
    const Eigen::Vector3d o = r.transpose() * (origin - t);
    const Eigen::Vector3d d = r.transpose() * direction;
    double bestT = maxDistance;
    for (size_t i = 0; i + 2 < mesh.indices.size(); i += 3) {
        const SceneVertex &va = mesh.vertices[mesh.indices[i]];
        const SceneVertex &vb = mesh.vertices[mesh.indices[i + 1]];
        const SceneVertex &vc = mesh.vertices[mesh.indices[i + 2]];
        const Eigen::Vector3d a(va.px, va.py, va.pz), b(vb.px, vb.py, vb.pz), c(vc.px, vc.py, vc.pz);
        // Möller–Trumbore, both faces.
        const Eigen::Vector3d e1 = b - a, e2 = c - a;
        const Eigen::Vector3d p = d.cross(e2);
        const double det = e1.dot(p);
        if (std::abs(det) < 1e-14)
            continue;
        const double inv = 1.0 / det;
        const Eigen::Vector3d s = o - a;
        const double u = s.dot(p) * inv;
        if (u < 0.0 || u > 1.0)
            continue;
        const Eigen::Vector3d q = s.cross(e1);
        const double v = d.dot(q) * inv;
        if (v < 0.0 || u + v > 1.0)
            continue;
        const double hitT = e2.dot(q) * inv;
        if (hitT < minDistance || hitT >= bestT)
            continue;
        bestT = hitT;
        best.hit = true;
        best.triangle = int(i / 3);
        best.distance = hitT;
        Eigen::Vector3d n = e1.cross(e2).normalized();
        if (n.dot(d) > 0.0)
            n = -n;
        best.normal = r * n;
    }
    if (best.hit)
        best.point = origin + direction * best.distance;
    return best;
}

SceneRayHit raycastScene(const QVector<GuideObject> &objects, const std::vector<SceneMesh> &meshes,
                         const Eigen::Vector3d &origin, const Eigen::Vector3d &directionIn,
                         const SceneRaycastOptions &options)
{
    SceneRayHit best;
    const double len = directionIn.norm();
    if (!(len > 0.0) || !std::isfinite(len))
        return best;
    const Eigen::Vector3d direction = directionIn / len;
    double limit = options.maxDistance;
    const int count = std::min(int(objects.size()), int(meshes.size()));
    for (int i = 0; i < count; ++i) {
        const GuideObject &object = objects[i];
        if (i == options.skipIndex || (options.visibleOnly && !object.visible)
            || (options.skipLensObjects && object.hasLens()))
            continue;
        const SceneMesh &mesh = meshes[size_t(i)];
        if (mesh.indices.empty())
            continue;
        // Cheap rejection with the mesh's bounding sphere about the object origin.
        double radius = mesh.boundingRadius;
        if (!(radius > 0.0)) {
            for (const SceneVertex &v : mesh.vertices)
                radius = std::max(radius, double(v.px) * v.px + double(v.py) * v.py + double(v.pz) * v.pz);
            radius = std::sqrt(radius);
        }
        radius *= 1.0001;
        const Eigen::Vector3d centre = objectTranslation(object);
        const Eigen::Vector3d oc = centre - origin;
        const double along = oc.dot(direction);
        if ((oc - along * direction).norm() > radius + 1e-9 || along + radius < options.minDistance
            || along - radius > limit)
            continue;
        SceneRayHit hit = raycastMesh(mesh, objectToWorld(object).matrix(), origin, direction, options.minDistance, limit);
        if (hit.hit) {
            hit.objectIndex = i;
            best = hit;
            limit = hit.distance;
        }
    }
    return best;
}

} // namespace vg::scene
