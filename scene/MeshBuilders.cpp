#include "scene/MeshBuilders.h"

#include "scene/GuideObject.h"
#include "scene/MeshWriter.h"

#include <QHash>

#include <cmath>
#include <Eigen/Geometry>
#include <tuple>
#include <unordered_map>

namespace vg::scene {

using namespace detail;

namespace {

// Planar texture coordinate over a rectangle of half extents hx, hy (v top to bottom).
Eigen::Vector2d planarUv(const Vec3 &p, double hx, double hy)
{
    return {p.x() / (2.0 * hx) + 0.5, 0.5 - p.y() / (2.0 * hy)};
}

} // namespace

SceneMesh buildObjectMesh(const GuideObject &o)
{
    SceneMesh mesh;
    switch (o.guide_index) {
    case KindPlane:
    case KindGuide:
    case KindImage: mesh = buildPlaneMesh(o); break;
    case KindCirclePlane: mesh = buildCirclePlaneMesh(o); break;
    case KindCylinderWall: mesh = buildCylinderWallMesh(o); break;
    case KindProjector:
    case KindCamera: mesh = buildLensBodyMesh(o); break;
    case KindPerson: mesh = buildPersonMesh(o); break;
    case KindCurvedSurface:
        mesh = curvedShapeOf(o) == CurvedShape::Horseshoe ? buildHorseshoeMesh(o) : buildSphereMesh(o);
        break;
    case KindLShape: mesh = buildLShapeMesh(o); break;
    case KindCurve: mesh = buildCurveMesh(o); break;
    case KindDistanceMeasure: mesh = buildDistanceMeasureMesh(o); break;
    case KindComment: mesh = buildCommentMesh(o); break;
    case KindObjMesh:
    case KindDxfMesh: mesh = buildImportedMesh(o); break;
    default: break;
    }
    applyUvRotation(mesh, o.uv_rotation);
    if (o.flip_normals)
        flipMeshNormals(mesh);
    mesh.closed = isMeshClosed(mesh);
    double radius2 = 0.0;
    for (const SceneVertex &v : mesh.vertices)
        radius2 = std::max(radius2, double(v.px) * v.px + double(v.py) * v.py + double(v.pz) * v.pz);
    mesh.boundingRadius = float(std::sqrt(radius2));
    return mesh;
}

std::vector<SceneMesh> buildSceneMeshes(const QVector<GuideObject> &objects)
{
    std::vector<SceneMesh> meshes;
    meshes.reserve(size_t(objects.size()));
    for (const GuideObject &o : objects)
        meshes.push_back(buildObjectMesh(o));
    return meshes;
}

void applyUvRotation(SceneMesh &mesh, double quarterTurns)
{
    const int k = ((int(std::lround(finiteOr(quarterTurns, 0.0))) % 4) + 4) % 4;
    if (k == 0)
        return;
    for (SceneVertex &v : mesh.vertices) {
        for (int i = 0; i < k; ++i) {
            // One quarter turn clockwise about the texture centre.
            const float u = v.u;
            v.u = 1.0f - v.v;
            v.v = u;
        }
    }
}

void flipMeshNormals(SceneMesh &mesh)
{
    for (SceneVertex &v : mesh.vertices) {
        v.nx = -v.nx;
        v.ny = -v.ny;
        v.nz = -v.nz;
    }
    for (size_t i = 0; i + 2 < mesh.indices.size(); i += 3)
        std::swap(mesh.indices[i + 1], mesh.indices[i + 2]);
}

bool isMeshClosed(const SceneMesh &mesh)
{
    if (mesh.indices.empty())
        return false;
    // Weld by position (relative to the mesh size) so that texture seams are not open edges.
    Eigen::AlignedBox3d box;
    for (const SceneVertex &v : mesh.vertices)
        box.extend(Eigen::Vector3d(v.px, v.py, v.pz));
    const double tolerance = std::max(box.diagonal().norm() * 1e-6, 1e-12);
    struct KeyHash {
        size_t operator()(const std::tuple<long long, long long, long long> &k) const
        {
            return std::hash<long long>()(std::get<0>(k) * 73856093LL ^ std::get<1>(k) * 19349663LL
                                          ^ std::get<2>(k) * 83492791LL);
        }
    };
    std::unordered_map<std::tuple<long long, long long, long long>, int, KeyHash> ids;
    ids.reserve(mesh.vertices.size());
    std::vector<int> weld(mesh.vertices.size());
    for (size_t i = 0; i < mesh.vertices.size(); ++i) {
        const SceneVertex &v = mesh.vertices[i];
        const auto key = std::make_tuple(std::llround(v.px / tolerance), std::llround(v.py / tolerance),
                                         std::llround(v.pz / tolerance));
        weld[i] = ids.emplace(key, int(ids.size())).first->second;
    }
    struct EdgeHash {
        size_t operator()(const std::pair<int, int> &e) const
        {
            return std::hash<long long>()((long long)e.first * 1000003LL + e.second);
        }
    };
    std::unordered_map<std::pair<int, int>, int, EdgeHash> edges;
    edges.reserve(mesh.indices.size());
    for (size_t t = 0; t + 2 < mesh.indices.size(); t += 3) {
        for (int e = 0; e < 3; ++e) {
            int a = weld[mesh.indices[t + e]];
            int b = weld[mesh.indices[t + (e + 1) % 3]];
            if (a == b)
                continue;
            if (a > b)
                std::swap(a, b);
            ++edges[{a, b}];
        }
    }
    for (const auto &[edge, count] : edges)
        if (count != 2)
            return false;
    return true;
}

// ---------------------------------------------------------------- plane

SceneMesh buildPlaneMesh(const GuideObject &o)
{
    SceneMesh mesh;
    MeshWriter w(mesh);
    const double hx = positiveLength(o.scale_x);
    const double hy = positiveLength(o.scale_y);
    const double r = std::clamp(finiteOr(o.plane_corner_radius, 0.0) / 1000.0, 0.0, std::min(hx, hy));
    const int nu = segmentsOf(o.plane_u_lines);
    const int nv = segmentsOf(o.plane_v_lines);
    const int nr = segmentsOf(o.plane_round_lines);
    const Vec3 n(0, 0, 1);
    auto uv = [hx, hy](const Vec3 &p) { return planarUv(p, hx, hy); };

    if (r <= 1e-6) {
        w.grid(nu, nv, [=](double s, double t) { return Vec3(-hx + 2 * hx * s, hy - 2 * hy * t, 0.0); },
               [=](double, double) { return n; },
               [](double s, double t) { return Eigen::Vector2d(s, t); });
        for (int i = 0; i <= nu; ++i) {
            const double x = -hx + 2 * hx * i / nu;
            w.polyline({Vec3(x, hy, 0), Vec3(x, -hy, 0)});
        }
        for (int j = 0; j <= nv; ++j) {
            const double y = hy - 2 * hy * j / nv;
            w.polyline({Vec3(-hx, y, 0), Vec3(hx, y, 0)});
        }
        return mesh;
    }

    // Rounded corners: the outline (straight sides and corner arcs) filled as a fan.
    const double cx = hx - r, cy = hy - r;
    struct Corner { double sx, sy, start; };
    const Corner corners[4] = {{1, 1, 0.0}, {-1, 1, M_PI / 2}, {-1, -1, M_PI}, {1, -1, 1.5 * M_PI}};
    std::vector<Vec3> outline;
    std::vector<std::vector<Vec3>> arcs;
    for (const Corner &c : corners) {
        std::vector<Vec3> arc;
        for (int k = 0; k <= nr; ++k) {
            const double a = c.start + (M_PI / 2) * k / nr;
            const Vec3 p(c.sx * cx + r * std::cos(a), c.sy * cy + r * std::sin(a), 0.0);
            arc.push_back(p);
            if (outline.empty() || (outline.back() - p).norm() > 1e-9)
                outline.push_back(p);
        }
        arcs.push_back(arc);
    }
    if ((outline.front() - outline.back()).norm() <= 1e-9)
        outline.pop_back();
    w.fan(Vec3::Zero(), outline, n, uv);

    // Half height of the rounded outline at x (and the same for y).
    auto extentAt = [r](double coordinate, double half, double other) {
        const double inner = half - r;
        const double d = std::abs(coordinate) - inner;
        if (d <= 0.0)
            return other;
        return other - r + std::sqrt(std::max(0.0, r * r - d * d));
    };
    for (int i = 0; i <= nu; ++i) {
        const double x = -hx + 2 * hx * i / nu;
        const double e = (i == 0 || i == nu) ? cy : extentAt(x, hx, hy);
        w.polyline({Vec3(x, e, 0), Vec3(x, -e, 0)});
    }
    for (int j = 0; j <= nv; ++j) {
        const double y = hy - 2 * hy * j / nv;
        const double e = (j == 0 || j == nv) ? cx : extentAt(y, hy, hx);
        w.polyline({Vec3(-e, y, 0), Vec3(e, y, 0)});
    }
    for (const auto &arc : arcs)
        w.polyline(arc);
    return mesh;
}

// ---------------------------------------------------------------- circle plane

SceneMesh buildCirclePlaneMesh(const GuideObject &o)
{
    SceneMesh mesh;
    MeshWriter w(mesh);
    const double rx = positiveLength(o.scale_x);
    const double ry = positiveLength(o.scale_y);
    const double angleDeg = std::clamp(finiteOr(o.circle_plane_angle, 360.0), 1.0, 360.0);
    const double angle = angleDeg * M_PI / 180.0;
    // The hole is a smaller copy of the outline, its radius measured on the larger axis.
    const double hole = std::clamp(finiteOr(o.circle_plane_hole_radius, 0.0) / 1000.0 / std::max(rx, ry), 0.0, 0.99);
    const int spokes = segmentsOf(o.plane_u_lines);
    const int rings = segmentsOf(o.plane_v_lines);
    const int ns = shadingSegments(spokes, angleDeg, 5.0);
    // Straight in the radial direction: one shading ring is enough (UVs are linear there).
    const int nt = 1;
    const bool polar = o.circle_plane_mode == 1;
    const bool vFlip = o.circle_plane_polar_v_flipped;
    // The sector is centred on +Y and runs clockwise seen from +Z, so u grows left to right.
    auto at = [=](double s, double t) {
        const double a = angle / 2.0 - angle * s;
        const double k = 1.0 - (1.0 - hole) * t;   // t = 0 at the rim, 1 at the hole
        return Vec3(-rx * k * std::sin(a), ry * k * std::cos(a), 0.0);
    };
    w.grid(ns, nt, at, [](double, double) { return Vec3(0, 0, 1); },
           [=](double s, double t) {
               if (!polar)
                   return planarUv(at(s, t), rx, ry);
               return Eigen::Vector2d(s, vFlip ? 1.0 - t : t);
           });
    for (int i = 0; i <= spokes; ++i) {
        if (angleDeg >= 360.0 && i == spokes)
            break;   // the last spoke of a full circle is the first one again
        const double s = double(i) / spokes;
        w.polyline({at(s, 0.0), at(s, 1.0)});
    }
    for (int j = 0; j <= rings; ++j) {
        const double t = double(j) / rings;
        if (j == rings && hole <= 0.0)
            break;   // no ring at a collapsed centre
        std::vector<Vec3> ring;
        for (int i = 0; i <= ns; ++i)
            ring.push_back(at(double(i) / ns, t));
        if (angleDeg >= 360.0)
            ring.pop_back();
        w.polyline(ring, angleDeg >= 360.0);
    }
    return mesh;
}

} // namespace vg::scene
