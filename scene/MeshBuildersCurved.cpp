#include "scene/MeshBuilders.h"

#include "scene/GuideObject.h"
#include "scene/MeshWriter.h"
#include "scene/ShapeGeometry.h"
#include "scene/Transform.h"

#include <cmath>

namespace vg::scene {

using namespace detail;

// ---------------------------------------------------------------- cylinder wall

SceneMesh buildCylinderWallMesh(const GuideObject &o)
{
    SceneMesh mesh;
    MeshWriter w(mesh);
    const double angleDeg = cylinderWallAngleDegrees(o);
    const double angle = angleDeg * M_PI / 180.0;
    const double radius = cylinderWallRadius(o);
    const double hy = positiveLength(o.scale_y);
    const Vec3 centre(0.0, 0.0, radius);
    const bool full = angleDeg >= 360.0;
    const int wireU = segmentsOf(o.wall_cylinder_u_lines);
    const int wireV = segmentsOf(o.wall_cylinder_v_lines);
    const int ns = shadingSegments(wireU, angleDeg, 5.0);
    auto theta = [=](double s) { return -angle / 2.0 + angle * s; };
    auto wallPoint = [=](double s, double y) { return cylinderWallPoint(radius, theta(s), y); };

    if (o.wall_cylinder_wall) {
        // Normals point at the axis: the wall is seen from inside, like a plane facing +Z.
        w.grid(ns, 1, [=](double s, double t) { return wallPoint(s, hy - 2.0 * hy * t); },
               [=](double s, double t) {
                   const Vec3 p = wallPoint(s, 0.0);
                   (void)t;
                   return Vec3(centre.x() - p.x(), 0.0, centre.z() - p.z());
               });
        for (int i = 0; i <= wireU; ++i) {
            if (full && i == wireU)
                break;
            const double s = double(i) / wireU;
            w.polyline({wallPoint(s, hy), wallPoint(s, -hy)});
        }
        for (int j = 0; j <= wireV; ++j) {
            const double y = hy - 2.0 * hy * j / wireV;
            std::vector<Vec3> ring;
            for (int i = 0; i <= ns; ++i)
                ring.push_back(wallPoint(double(i) / ns, y));
            if (full)
                ring.pop_back();
            w.polyline(ring, full);
        }
    }

    // Top and floor: the sector of the circle under the arc, closed at the axis.
    auto cap = [&](double y, const Vec3 &normal) {
        std::vector<Vec3> outline;
        for (int i = 0; i <= ns; ++i)
            outline.push_back(wallPoint(double(i) / ns, y));
        if (full)
            outline.pop_back();
        const Vec3 axis(centre.x(), y, centre.z());
        std::vector<Vec3> shape = outline;
        if (!full)
            shape.push_back(axis);
        const double r = radius;
        // A fan from the axis covers the sector (convex up to 180°, star-shaped beyond).
        const std::uint32_t c = w.vertex(axis, normal, 0.5, 0.5);
        std::vector<std::uint32_t> ring;
        for (const Vec3 &p : outline)
            ring.push_back(w.vertex(p, normal, (p.x() - axis.x()) / (2 * r) + 0.5, (p.z() - axis.z()) / (2 * r) + 0.5));
        const size_t count = full ? ring.size() : ring.size() - 1;
        for (size_t i = 0; i < count; ++i) {
            const std::uint32_t a = ring[i], b = ring[(i + 1) % ring.size()];
            if ((w.pos(a) - axis).cross(w.pos(b) - axis).dot(normal) >= 0.0)
                w.triangle(c, a, b);
            else
                w.triangle(c, b, a);
        }
        if (!full) {
            w.polyline({outline.front(), axis, outline.back()});
        }
        w.polyline(outline, full);
    };
    if (o.wall_cylinder_floor)
        cap(-hy, Vec3(0, 1, 0));
    if (o.wall_cylinder_top)
        cap(hy, Vec3(0, -1, 0));
    return mesh;
}

// ---------------------------------------------------------------- dome and sphere

SceneMesh buildSphereMesh(const GuideObject &o)
{
    SceneMesh mesh;
    MeshWriter w(mesh);
    const Vec3 radii(positiveLength(o.scale_x), positiveLength(o.scale_y), positiveLength(o.scale_z));
    double u0 = std::clamp(finiteOr(o.sphere_u_start, 0.0), 0.0, 360.0);
    double u1 = std::clamp(finiteOr(o.sphere_u_end, 360.0), 0.0, 360.0);
    double v0 = std::clamp(finiteOr(o.sphere_v_start, 0.0), 0.0, 180.0);
    double v1 = std::clamp(finiteOr(o.sphere_v_end, 180.0), 0.0, 180.0);
    if (u1 < u0)
        std::swap(u0, u1);
    if (v1 < v0)
        std::swap(v0, v1);
    if (u1 - u0 < 0.01)
        u1 = std::min(360.0, u0 + 0.01), u0 = u1 - 0.01;
    if (v1 - v0 < 0.01)
        v1 = std::min(180.0, v0 + 0.01), v0 = v1 - 0.01;
    const bool fullU = u1 - u0 >= 360.0;
    const int wireU = segmentsOf(o.horseshoe_u_lines);
    const int wireV = segmentsOf(o.horseshoe_v_lines);
    const int ns = shadingSegments(wireU, u1 - u0);
    const int nt = shadingSegments(wireV, v1 - v0);
    const double d2r = M_PI / 180.0;
    auto point = [=](double s, double t) {
        const double phi = (u0 + (u1 - u0) * s) * d2r;
        const double th = (v0 + (v1 - v0) * t) * d2r;
        return Vec3(radii.x() * std::sin(th) * std::cos(phi), radii.y() * std::cos(th),
                    radii.z() * std::sin(th) * std::sin(phi));
    };
    auto normal = [=](double s, double t) {
        // The ellipsoid's gradient, taken on the unit sphere to stay defined at the poles.
        const double phi = (u0 + (u1 - u0) * s) * d2r;
        const double th = (v0 + (v1 - v0) * t) * d2r;
        const Vec3 unit(std::sin(th) * std::cos(phi), std::cos(th), std::sin(th) * std::sin(phi));
        return Vec3(unit.x() / radii.x(), unit.y() / radii.y(), unit.z() / radii.z());
    };
    // s runs from +X towards +Z; with t downwards this winds outward-facing.
    w.grid(ns, nt, point, normal);
    for (size_t i = 0; i + 2 < mesh.indices.size(); i += 3) {
        const Vec3 a = w.pos(mesh.indices[i]), b = w.pos(mesh.indices[i + 1]), c = w.pos(mesh.indices[i + 2]);
        const Vec3 centroid = (a + b + c) / 3.0;
        const Vec3 g(centroid.x() / (radii.x() * radii.x()), centroid.y() / (radii.y() * radii.y()),
                     centroid.z() / (radii.z() * radii.z()));
        if ((b - a).cross(c - a).dot(g) < 0.0)
            std::swap(mesh.indices[i + 1], mesh.indices[i + 2]);
    }
    for (int i = 0; i <= wireU; ++i) {
        if (fullU && i == wireU)
            break;
        const double s = double(i) / wireU;
        w.curve(nt, [&](double t) { return point(s, t); });
    }
    for (int j = 0; j <= wireV; ++j) {
        const double t = double(j) / wireV;
        const double th = v0 + (v1 - v0) * t;
        if (th <= 1e-9 || th >= 180.0 - 1e-9)
            continue;   // a pole is a point, not a line
        std::vector<Vec3> ring;
        for (int i = 0; i <= ns; ++i)
            ring.push_back(point(double(i) / ns, t));
        if (fullU)
            ring.pop_back();
        w.polyline(ring, fullU);
    }
    return mesh;
}

// ---------------------------------------------------------------- horseshoe

namespace {

// The U path in plan (x, z): left arm from the open end, the back with two bends, the
// right arm back to the open end. Samples carry their arc-length position.
struct PathSample {
    double x, z;   // position
    double nx, nz; // inward normal
};

struct UPath {
    double hx, hz, r;
    double armLength, backLength, bendLength, total;

    UPath(double hx_, double hz_, double r_) : hx(hx_), hz(hz_), r(r_)
    {
        armLength = 2.0 * hz - r;
        backLength = 2.0 * hx - 2.0 * r;
        bendLength = r * M_PI / 2.0;
        total = 2.0 * armLength + backLength + 2.0 * bendLength;
    }

    PathSample at(double s) const
    {
        s = std::clamp(s, 0.0, total);
        if (s <= armLength)   // left arm, from the open end backwards
            return {-hx, hz - s, 1.0, 0.0};
        s -= armLength;
        if (s <= bendLength) {
            const double a = M_PI - (s / std::max(bendLength, 1e-12)) * (M_PI / 2.0);
            const double cx = -hx + r, cz = -hz + r;
            return {cx + r * std::cos(a), cz - r * std::sin(a), -std::cos(a), std::sin(a)};
        }
        s -= bendLength;
        if (s <= backLength)
            return {-hx + r + s, -hz, 0.0, 1.0};
        s -= backLength;
        if (s <= bendLength) {
            const double a = M_PI / 2.0 - (s / std::max(bendLength, 1e-12)) * (M_PI / 2.0);
            const double cx = hx - r, cz = -hz + r;
            return {cx + r * std::cos(a), cz - r * std::sin(a), -std::cos(a), std::sin(a)};
        }
        s -= bendLength;
        return {hx, -hz + r + s, -1.0, 0.0};
    }
};

} // namespace

SceneMesh buildHorseshoeMesh(const GuideObject &o)
{
    SceneMesh mesh;
    MeshWriter w(mesh);
    const double hx = positiveLength(o.scale_x);
    const double hy = positiveLength(o.scale_y);
    const double hz = positiveLength(o.scale_z);
    // The bend must fit in the shape actually built.
    const double r = std::clamp(finiteOr(o.box_corner_radius, 0.0) / 1000.0, 0.0, std::min(hx, 2.0 * hz) * 0.999);
    const UPath path(hx, hz, r);
    const int wireU = segmentsOf(o.horseshoe_u_lines);
    const int wireV = segmentsOf(o.horseshoe_v_lines);
    const int wireRound = segmentsOf(o.horseshoe_round_u_lines);

    // Shading samples: the straight runs at their ends, each bend finely.
    std::vector<double> stations;
    auto addRun = [&](double from, double length, int pieces) {
        for (int i = 0; i < pieces; ++i)
            stations.push_back(from + length * i / pieces);
    };
    const int bendPieces = r > 1e-6 ? std::max(wireRound, 12) : 1;
    double s0 = 0.0;
    addRun(s0, path.armLength, 1);
    s0 += path.armLength;
    if (r > 1e-6)
        addRun(s0, path.bendLength, bendPieces);
    s0 += path.bendLength;
    addRun(s0, path.backLength, 1);
    s0 += path.backLength;
    if (r > 1e-6)
        addRun(s0, path.bendLength, bendPieces);
    s0 += path.bendLength;
    addRun(s0, path.armLength, 1);
    stations.push_back(path.total);

    const Eigen::Matrix3d turn = eulerDegreesToMatrix(finiteOr(o.horseshoe_rotation_x, 0.0),
                                                      finiteOr(o.horseshoe_rotation_y, 0.0),
                                                      finiteOr(o.horseshoe_rotation_z, 0.0));
    const size_t firstVertex = mesh.vertices.size();

    if (o.horseshoe_wall) {
        const std::uint32_t base = std::uint32_t(mesh.vertices.size());
        const size_t n = stations.size();
        for (int row = 0; row <= 1; ++row) {
            const double y = row == 0 ? hy : -hy;
            for (size_t i = 0; i < n; ++i) {
                const PathSample p = path.at(stations[i]);
                w.vertex({p.x, y, p.z}, {p.nx, 0.0, p.nz}, stations[i] / path.total, double(row));
            }
        }
        for (size_t i = 0; i + 1 < n; ++i) {
            const std::uint32_t a = base + std::uint32_t(i), b = a + 1;
            const std::uint32_t c = base + std::uint32_t(n + i), d = c + 1;
            // Facing the inside of the U.
            const Vec3 pa = w.pos(a), pb = w.pos(b), pc = w.pos(c);
            const PathSample mid = path.at((stations[i] + stations[i + 1]) / 2.0);
            if ((pb - pa).cross(pc - pa).dot(Vec3(mid.nx, 0, mid.nz)) >= 0.0) {
                w.triangle(a, b, d);
                w.triangle(a, d, c);
            } else {
                w.triangle(a, d, b);
                w.triangle(a, c, d);
            }
        }
        // Wire: u lines over the straight runs, round lines in each bend, v lines along.
        const double straight = 2.0 * path.armLength + path.backLength;
        auto straightToPath = [&](double d) {
            if (d <= path.armLength)
                return d;
            d -= path.armLength;
            if (d <= path.backLength)
                return path.armLength + path.bendLength + d;
            d -= path.backLength;
            return path.armLength + 2.0 * path.bendLength + path.backLength + d;
        };
        auto vertical = [&](double s) {
            const PathSample p = path.at(s);
            w.polyline({Vec3(p.x, hy, p.z), Vec3(p.x, -hy, p.z)});
        };
        for (int i = 0; i <= wireU; ++i)
            vertical(straightToPath(straight * i / wireU));
        if (r > 1e-6) {
            for (double start : {path.armLength, path.armLength + path.bendLength + path.backLength})
                for (int k = 1; k < wireRound; ++k)
                    vertical(start + path.bendLength * k / wireRound);
        }
        for (int j = 0; j <= wireV; ++j) {
            const double y = hy - 2.0 * hy * j / wireV;
            std::vector<Vec3> line;
            for (double s : stations) {
                const PathSample p = path.at(s);
                line.emplace_back(p.x, y, p.z);
            }
            w.polyline(line);
        }
    }
    if (o.horseshoe_floor) {
        std::vector<Vec3> outline;
        for (double s : stations) {
            const PathSample p = path.at(s);
            outline.emplace_back(p.x, -hy, p.z);
        }
        // The U closed by its open side is convex: a fan from its middle fills it.
        w.fan(Vec3(0.0, -hy, 0.0), outline, Vec3(0, 1, 0),
              [=](const Vec3 &p) { return Eigen::Vector2d(p.x() / (2 * hx) + 0.5, p.z() / (2 * hz) + 0.5); });
        w.polyline({outline.back(), outline.front()});
        if (!o.horseshoe_wall)
            w.polyline(outline);
    }
    for (size_t i = firstVertex; i < mesh.vertices.size(); ++i) {
        SceneVertex &v = mesh.vertices[i];
        const Vec3 p = turn * Vec3(v.px, v.py, v.pz);
        const Vec3 n = turn * Vec3(v.nx, v.ny, v.nz);
        v.px = float(p.x()), v.py = float(p.y()), v.pz = float(p.z());
        v.nx = float(n.x()), v.ny = float(n.y()), v.nz = float(n.z());
    }
    for (QVector3D &p : mesh.lines) {
        const Vec3 q = turn * Vec3(p.x(), p.y(), p.z());
        p = QVector3D(float(q.x()), float(q.y()), float(q.z()));
    }
    return mesh;
}

} // namespace vg::scene
