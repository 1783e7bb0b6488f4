#include "scene/MeshBuilders.h"

#include "scene/GuideObject.h"
#include "scene/MeshWriter.h"

#include <cmath>

namespace vg::scene {

using namespace detail;

// ---------------------------------------------------------------- rounded box, ellipsoid

SceneMesh buildRoundedBoxMesh(const Eigen::Vector3d &halfIn, double radius, int roundSegments, int uLines,
                              int vLines)
{
    SceneMesh mesh;
    MeshWriter w(mesh);
    const Vec3 half(positiveLength(halfIn.x()), positiveLength(halfIn.y()), positiveLength(halfIn.z()));
    const double r = std::clamp(finiteOr(radius, 0.0), 0.0, half.minCoeff());
    const Vec3 inner = half - Vec3::Constant(r);
    const int cells = std::clamp(std::max({uLines, vLines, r > 0.0 ? 2 * segmentsOf(roundSegments) + 2 : 1}), 1, 256);
    // Each face is a grid on the cube, pushed out onto the rounded surface.
    struct Face { Vec3 n, a, b; };
    const Face faces[6] = {{{1, 0, 0}, {0, 0, -1}, {0, 1, 0}}, {{-1, 0, 0}, {0, 0, 1}, {0, 1, 0}},
                           {{0, 1, 0}, {1, 0, 0}, {0, 0, -1}}, {{0, -1, 0}, {1, 0, 0}, {0, 0, 1}},
                           {{0, 0, 1}, {1, 0, 0}, {0, 1, 0}},  {{0, 0, -1}, {-1, 0, 0}, {0, 1, 0}}};
    for (const Face &f : faces) {
        auto onCube = [&](double s, double t) {
            const Vec3 q = f.n + f.a * (2.0 * s - 1.0) + f.b * (1.0 - 2.0 * t);
            return Vec3(q.x() * half.x(), q.y() * half.y(), q.z() * half.z());
        };
        auto position = [&](double s, double t) {
            const Vec3 p = onCube(s, t);
            if (r <= 0.0)
                return p;
            const Vec3 core = p.cwiseMax(-inner).cwiseMin(inner);
            const Vec3 d = p - core;
            return Vec3(core + (d.norm() > 1e-12 ? Vec3(d.normalized() * r) : Vec3(f.n * r)));
        };
        auto normal = [&](double s, double t) {
            if (r <= 0.0)
                return f.n;
            const Vec3 p = onCube(s, t);
            const Vec3 core = p.cwiseMax(-inner).cwiseMin(inner);
            const Vec3 d = p - core;
            return d.norm() > 1e-12 ? Vec3(d.normalized()) : f.n;
        };
        const size_t first = mesh.indices.size();
        w.grid(cells, cells, position, normal);
        for (size_t i = first; i + 2 < mesh.indices.size(); i += 3) {
            const Vec3 a = w.pos(mesh.indices[i]), b = w.pos(mesh.indices[i + 1]), c = w.pos(mesh.indices[i + 2]);
            if ((b - a).cross(c - a).dot(f.n) < 0.0)
                std::swap(mesh.indices[i + 1], mesh.indices[i + 2]);
        }
    }
    // Wire: the twelve edges (at the middle of their rounding).
    for (int axis = 0; axis < 3; ++axis) {
        const int a1 = (axis + 1) % 3, a2 = (axis + 2) % 3;
        for (double s1 : {-1.0, 1.0}) {
            for (double s2 : {-1.0, 1.0}) {
                Vec3 p, q;
                p[axis] = -inner[axis];
                q[axis] = inner[axis];
                const double k = r > 0.0 ? r * (1.0 - std::sqrt(0.5)) : 0.0;
                p[a1] = q[a1] = s1 * (half[a1] - k);
                p[a2] = q[a2] = s2 * (half[a2] - k);
                if (r <= 0.0) {
                    p[axis] = -half[axis];
                    q[axis] = half[axis];
                }
                w.polyline({p, q});
            }
        }
    }
    mesh.closed = isMeshClosed(mesh);
    return mesh;
}

void appendEllipsoid(SceneMesh &mesh, const Eigen::Vector3d &centre, const Eigen::Vector3d &radiiIn,
                     int segmentsAround, int segmentsUp, bool wire)
{
    MeshWriter w(mesh);
    const Vec3 radii(positiveLength(radiiIn.x()), positiveLength(radiiIn.y()), positiveLength(radiiIn.z()));
    const int ns = std::clamp(segmentsAround, 3, 512);
    const int nt = std::clamp(segmentsUp, 2, 512);
    auto point = [&](double s, double t) {
        const double phi = 2.0 * M_PI * s, th = M_PI * t;
        return Vec3(centre.x() + radii.x() * std::sin(th) * std::cos(phi), centre.y() + radii.y() * std::cos(th),
                    centre.z() + radii.z() * std::sin(th) * std::sin(phi));
    };
    auto normal = [&](double s, double t) {
        const double phi = 2.0 * M_PI * s, th = M_PI * t;
        return Vec3(std::sin(th) * std::cos(phi) / radii.x(), std::cos(th) / radii.y(),
                    std::sin(th) * std::sin(phi) / radii.z());
    };
    const size_t first = mesh.indices.size();
    w.grid(ns, nt, point, normal);
    for (size_t i = first; i + 2 < mesh.indices.size(); i += 3) {
        const Vec3 a = w.pos(mesh.indices[i]), b = w.pos(mesh.indices[i + 1]), c = w.pos(mesh.indices[i + 2]);
        if ((b - a).cross(c - a).dot((a + b + c) / 3.0 - centre) < 0.0)
            std::swap(mesh.indices[i + 1], mesh.indices[i + 2]);
    }
    if (wire) {
        std::vector<Vec3> equator, meridian, side;
        for (int i = 0; i < ns; ++i)
            equator.push_back(point(double(i) / ns, 0.5));
        for (int j = 0; j <= nt; ++j) {
            meridian.push_back(point(0.0, double(j) / nt));
            side.push_back(point(0.5, 1.0 - double(j) / nt));
        }
        meridian.insert(meridian.end(), side.begin() + 1, side.end() - 1);
        w.polyline(equator, true);
        w.polyline(meridian, true);
    }
}

// ---------------------------------------------------------------- L shape

namespace {

struct ProfileSample {
    double y, z, ny, nz;
};

// A continuous run of the L profile with the positions of its wire lines.
struct ProfileStrip {
    std::vector<ProfileSample> samples;
    std::vector<ProfileSample> wire;
};

void addLine(ProfileStrip &strip, double y0, double z0, double y1, double z1, double ny, double nz, int wireSegments,
             bool includeStart)
{
    if (strip.samples.empty() || includeStart)
        strip.samples.push_back({y0, z0, ny, nz});
    else
        strip.samples.back() = {strip.samples.back().y, strip.samples.back().z, ny, nz};
    strip.samples.push_back({y1, z1, ny, nz});
    for (int k = 0; k <= wireSegments; ++k) {
        if (k == 0 && !strip.wire.empty())
            continue;
        const double t = double(k) / wireSegments;
        strip.wire.push_back({y0 + (y1 - y0) * t, z0 + (z1 - z0) * t, ny, nz});
    }
}

// A quarter bend about (cy, cz) from angle a0 to a1; normals point at the centre.
void addBend(ProfileStrip &strip, double cy, double cz, double r, double a0, double a1, int shading, int wireSegments)
{
    for (int k = 1; k <= shading; ++k) {
        const double a = a0 + (a1 - a0) * k / shading;
        strip.samples.push_back({cy + r * std::cos(a), cz + r * std::sin(a), -std::cos(a), -std::sin(a)});
    }
    for (int k = 1; k < wireSegments; ++k) {
        const double a = a0 + (a1 - a0) * k / wireSegments;
        strip.wire.push_back({cy + r * std::cos(a), cz + r * std::sin(a), -std::cos(a), -std::sin(a)});
    }
}

} // namespace

SceneMesh buildLShapeMesh(const GuideObject &o)
{
    SceneMesh mesh;
    MeshWriter w(mesh);
    const double hx = positiveLength(o.scale_x);
    const double hy = positiveLength(o.scale_y);
    const double hz = positiveLength(o.scale_z);
    const int wireU = segmentsOf(o.box_u_lines);
    const int wireV = segmentsOf(o.box_v_lines);
    const int wireRound = segmentsOf(o.box_round_lines);
    const bool wall = o.box_wall, top = o.box_top, floor = o.box_floor;
    const double rLimit = std::min((wall && top && floor) ? hy : 2.0 * hy, 2.0 * hz) * 0.999;
    const double r = wall ? std::clamp(finiteOr(o.box_corner_radius, 0.0) / 1000.0, 0.0, rLimit) : 0.0;
    const bool round = r > 1e-6;
    const int bendShading = std::max(wireRound, 8);

    std::vector<ProfileStrip> strips;
    // Profile in (y, z): top (front to back), wall (top to bottom), floor (back to front).
    ProfileStrip current;
    auto flush = [&]() {
        if (current.samples.size() >= 2)
            strips.push_back(current);
        current = ProfileStrip();
    };
    const double topBack = (wall && round) ? -hz + r : -hz;
    const double wallTop = (top && round) ? hy - r : hy;
    const double wallBottom = (floor && round) ? -hy + r : -hy;
    const double floorBack = (wall && round) ? -hz + r : -hz;
    if (top) {
        addLine(current, hy, hz, hy, topBack, -1.0, 0.0, wireV, true);
        if (wall && round)
            addBend(current, hy - r, -hz + r, r, 0.0, -M_PI / 2.0, bendShading, wireRound);
        if (!wall)
            flush();
    }
    if (wall) {
        addLine(current, wallTop, -hz, wallBottom, -hz, 0.0, 1.0, wireV, current.samples.empty());
        if (floor && round)
            addBend(current, -hy + r, -hz + r, r, -M_PI / 2.0, -M_PI, bendShading, wireRound);
        if (!floor)
            flush();
    }
    if (floor)
        addLine(current, -hy, floorBack, -hy, hz, 1.0, 0.0, wireV, current.samples.empty());
    flush();

    for (const ProfileStrip &strip : strips) {
        // Texture v follows the profile's length.
        std::vector<double> along(strip.samples.size(), 0.0);
        for (size_t i = 1; i < strip.samples.size(); ++i)
            along[i] = along[i - 1] + std::hypot(strip.samples[i].y - strip.samples[i - 1].y,
                                                 strip.samples[i].z - strip.samples[i - 1].z);
        const double total = std::max(along.back(), 1e-12);
        const std::uint32_t base = std::uint32_t(mesh.vertices.size());
        const size_t n = strip.samples.size();
        for (int side = 0; side <= 1; ++side) {
            const double x = side == 0 ? -hx : hx;
            for (size_t i = 0; i < n; ++i) {
                const ProfileSample &p = strip.samples[i];
                w.vertex({x, p.y, p.z}, {0.0, p.ny, p.nz}, double(side), along[i] / total);
            }
        }
        for (size_t i = 0; i + 1 < n; ++i) {
            const std::uint32_t a = base + std::uint32_t(i), b = a + 1;
            const std::uint32_t c = base + std::uint32_t(n + i), d = c + 1;
            const Vec3 pa = w.pos(a), pb = w.pos(b), pc = w.pos(c);
            const ProfileSample &m = strip.samples[i + 1];
            if ((pc - pa).cross(pb - pa).dot(Vec3(0.0, m.ny, m.nz)) >= 0.0) {
                w.triangle(a, c, d);
                w.triangle(a, d, b);
            } else {
                w.triangle(a, d, c);
                w.triangle(a, b, d);
            }
        }
        // Wire: profile outlines across x, lines along x at the profile's wire stations.
        for (int i = 0; i <= wireU; ++i) {
            const double x = -hx + 2.0 * hx * i / wireU;
            std::vector<Vec3> line;
            for (const ProfileSample &p : strip.samples)
                line.emplace_back(x, p.y, p.z);
            w.polyline(line);
        }
        for (const ProfileSample &p : strip.wire)
            w.polyline({Vec3(-hx, p.y, p.z), Vec3(hx, p.y, p.z)});
    }
    return mesh;
}

// ---------------------------------------------------------------- person

SceneMesh buildPersonMesh(const GuideObject &o)
{
    SceneMesh mesh;
    const double hx = positiveLength(o.scale_x);
    const double hy = positiveLength(o.scale_y);
    const double hz = positiveLength(o.scale_z);
    // Proportions of a standing figure inside ± half extents, feet at -hy, head at +hy.
    appendEllipsoid(mesh, {0.0, 0.88 * hy, 0.0}, {0.22 * hx, 0.12 * hy, std::min(0.22 * hx, hz)}, 24, 12, true);
    appendEllipsoid(mesh, {0.0, 0.36 * hy, 0.0}, {0.55 * hx, 0.40 * hy, 0.6 * hz}, 24, 12, true);
    for (double side : {-1.0, 1.0}) {
        appendEllipsoid(mesh, {side * 0.25 * hx, -0.5 * hy, 0.0}, {0.2 * hx, 0.5 * hy, 0.5 * hz}, 16, 12, true);
        appendEllipsoid(mesh, {side * 0.78 * hx, 0.3 * hy, 0.0}, {0.14 * hx, 0.4 * hy, 0.35 * hz}, 16, 12, true);
    }
    return mesh;
}

// ---------------------------------------------------------------- curve

std::vector<Eigen::Vector3d> curvePathPoints(const GuideObject &o, int samplesPerSegment)
{
    std::vector<Vec3> points;
    const auto &cp = o.curve_points;
    const int n = int(cp.size());
    if (n == 0)
        return points;
    samplesPerSegment = std::clamp(samplesPerSegment, 1, 256);
    auto anchor = [&](int i) { return Vec3(finiteOr(cp[i].anchor_x, 0.0), 0.0, finiteOr(cp[i].anchor_z, 0.0)); };
    auto outHandle = [&](int i) {
        return Vec3(finiteOr(cp[i].out_handle_x, cp[i].anchor_x), 0.0, finiteOr(cp[i].out_handle_z, cp[i].anchor_z));
    };
    auto inHandle = [&](int i) {
        return Vec3(finiteOr(cp[i].in_handle_x, cp[i].anchor_x), 0.0, finiteOr(cp[i].in_handle_z, cp[i].anchor_z));
    };
    auto push = [&](const Vec3 &p) {
        if (!p.allFinite())
            return;
        if (points.empty() || (points.back() - p).norm() > 1e-7)
            points.push_back(p);
    };
    push(anchor(0));
    const int segments = o.curve_closed && n > 2 ? n : n - 1;
    for (int i = 0; i < segments; ++i) {
        const int j = (i + 1) % n;
        const Vec3 p0 = anchor(i), p1 = outHandle(i), p2 = inHandle(j), p3 = anchor(j);
        for (int k = 1; k <= samplesPerSegment; ++k) {
            const double t = double(k) / samplesPerSegment, s = 1.0 - t;
            push(s * s * s * p0 + 3 * s * s * t * p1 + 3 * s * t * t * p2 + t * t * t * p3);
        }
    }
    if (o.curve_closed && points.size() > 2 && (points.front() - points.back()).norm() <= 1e-7)
        points.pop_back();
    return points;
}

SceneMesh buildCurveMesh(const GuideObject &o)
{
    SceneMesh mesh;
    MeshWriter w(mesh);
    const std::vector<Vec3> path = curvePathPoints(o);
    if (path.size() < 2)
        return mesh;
    const bool closed = o.curve_closed && path.size() > 2;
    const double height = std::clamp(finiteOr(o.curve_extrude, 0.0) / 1000.0, 0.0, 100.0);
    const size_t n = path.size();
    const size_t count = closed ? n + 1 : n;   // the closing sample repeats the first point
    std::vector<double> along(count, 0.0);
    for (size_t i = 1; i < count; ++i)
        along[i] = along[i - 1] + (path[i % n] - path[i - 1]).norm();
    const double total = std::max(along.back(), 1e-12);
    auto normalAt = [&](size_t i) {
        const Vec3 prev = (closed || i > 0) ? path[(i + n - 1) % n] : path[i];
        const Vec3 next = (closed || i + 1 < n) ? path[(i + 1) % n] : path[i];
        Vec3 t = next - prev;
        if (t.norm() < 1e-12)
            t = Vec3(1, 0, 0);
        return Vec3(-t.z(), 0.0, t.x());
    };
    if (height > 1e-6) {
        const std::uint32_t base = std::uint32_t(mesh.vertices.size());
        for (int row = 0; row <= 1; ++row) {
            for (size_t i = 0; i < count; ++i) {
                const Vec3 p = path[i % n] + Vec3(0.0, row == 0 ? height : 0.0, 0.0);
                w.vertex(p, normalAt(i % n), along[i] / total, double(row));
            }
        }
        for (size_t i = 0; i + 1 < count; ++i) {
            const std::uint32_t a = base + std::uint32_t(i), b = a + 1;
            const std::uint32_t c = base + std::uint32_t(count + i), d = c + 1;
            const Vec3 pa = w.pos(a), pb = w.pos(b), pc = w.pos(c);
            if ((pb - pa).cross(pc - pa).dot(normalAt(i % n)) >= 0.0) {
                w.triangle(a, b, d);
                w.triangle(a, d, c);
            } else {
                w.triangle(a, d, b);
                w.triangle(a, c, d);
            }
        }
    }
    w.polyline(path, closed);
    if (height > 1e-6) {
        std::vector<Vec3> topLine;
        for (const Vec3 &p : path)
            topLine.push_back(p + Vec3(0.0, height, 0.0));
        w.polyline(topLine, closed);
        for (const GuideCurvePoint &cp : o.curve_points) {
            const Vec3 a(finiteOr(cp.anchor_x, 0.0), 0.0, finiteOr(cp.anchor_z, 0.0));
            w.polyline({a, a + Vec3(0.0, height, 0.0)});
        }
    }
    return mesh;
}

// ---------------------------------------------------------------- distance measure, comment

SceneMesh buildDistanceMeasureMesh(const GuideObject &o)
{
    SceneMesh mesh;
    MeshWriter w(mesh);
    const Vec3 a(finiteOr(o.distance_start_x, 0.0), finiteOr(o.distance_start_y, 0.0), finiteOr(o.distance_start_z, 0.0));
    const Vec3 b(finiteOr(o.distance_end_x, 0.0), finiteOr(o.distance_end_y, 0.0), finiteOr(o.distance_end_z, 0.0));
    const Vec3 d = b - a;
    const double length = d.norm();
    const double tick = 0.05;
    if (length > 1e-9) {
        w.polyline({a, b});
        Vec3 side = Vec3::UnitY().cross(d);
        if (side.norm() < 1e-9 * length)
            side = Vec3::UnitX();
        Vec3 up = d.cross(side).normalized();
        if (up.y() < 0.0)
            up = -up;
        w.polyline({a - up * tick, a + up * tick});
        w.polyline({b - up * tick, b + up * tick});
    }
    // Small closed end markers, so that the ends can be picked.
    const double marker = std::clamp(length * 0.05, 0.002, 0.02);
    appendEllipsoid(mesh, a, Vec3::Constant(marker), 8, 4, false);
    if (length > 1e-9)
        appendEllipsoid(mesh, b, Vec3::Constant(marker), 8, 4, false);
    return mesh;
}

SceneMesh buildCommentMesh(const GuideObject &o)
{
    SceneMesh mesh;
    MeshWriter w(mesh);
    const double radius = std::clamp(0.05 * finiteOr(o.annotation_circle_scale, 1.0), 0.001, 100.0);
    std::vector<Vec3> outline;
    const int segments = 32;
    for (int i = 0; i < segments; ++i) {
        const double a = 2.0 * M_PI * i / segments;
        outline.emplace_back(radius * std::cos(a), radius * std::sin(a), 0.0);
    }
    w.fan(Vec3::Zero(), outline, Vec3(0, 0, 1),
          [radius](const Vec3 &p) { return Eigen::Vector2d(p.x() / (2 * radius) + 0.5, 0.5 - p.y() / (2 * radius)); });
    w.polyline(outline, true);
    const Vec3 label(finiteOr(o.annotation_label_offset_x, 0.0), finiteOr(o.annotation_label_offset_y, 0.0),
                     finiteOr(o.annotation_label_offset_z, 0.0));
    if (label.norm() > radius)
        w.polyline({label.normalized() * radius, label});
    return mesh;
}

// ---------------------------------------------------------------- projector and camera bodies

SceneMesh buildLensBodyMesh(const GuideObject &o)
{
    const Vec3 half(positiveLength(o.scale_x), positiveLength(o.scale_y), positiveLength(o.scale_z));
    SceneMesh mesh = buildRoundedBoxMesh(half, 0.15 * half.minCoeff(), 2);
    // The body sits behind the lens point, which is the object's origin.
    for (SceneVertex &v : mesh.vertices)
        v.pz += float(half.z());
    for (QVector3D &p : mesh.lines)
        p.setZ(p.z() + float(half.z()));
    MeshWriter w(mesh);
    const double lens = 0.35 * std::min(half.x(), half.y());
    std::vector<Vec3> ring;
    for (int i = 0; i < 24; ++i) {
        const double a = 2.0 * M_PI * i / 24;
        ring.emplace_back(lens * std::cos(a), lens * std::sin(a), -0.001);
    }
    w.polyline(ring, true);
    return mesh;
}

// ---------------------------------------------------------------- imported meshes

SceneMesh buildImportedMesh(const GuideObject &o)
{
    SceneMesh mesh;
    if (!o.imported_mesh)
        return mesh;
    const Vec3 s(positiveLength(o.scale_x, 1e-6), positiveLength(o.scale_y, 1e-6), positiveLength(o.scale_z, 1e-6));
    const SceneMesh &src = *o.imported_mesh;
    mesh.vertices = src.vertices;
    for (SceneVertex &v : mesh.vertices) {
        v.px = float(finiteOr(v.px, 0.0) * s.x());
        v.py = float(finiteOr(v.py, 0.0) * s.y());
        v.pz = float(finiteOr(v.pz, 0.0) * s.z());
        // Normals take the inverse scale.
        Vec3 n(finiteOr(v.nx, 0.0) / s.x(), finiteOr(v.ny, 0.0) / s.y(), finiteOr(v.nz, 0.0) / s.z());
        n = n.norm() > 1e-30 ? Vec3(n.normalized()) : Vec3(0, 0, 1);
        v.nx = float(n.x()), v.ny = float(n.y()), v.nz = float(n.z());
    }
    MeshWriter w(mesh);
    for (size_t i = 0; i + 2 < src.indices.size(); i += 3) {
        const std::uint32_t a = src.indices[i], b = src.indices[i + 1], c = src.indices[i + 2];
        if (a < mesh.vertices.size() && b < mesh.vertices.size() && c < mesh.vertices.size())
            w.triangle(a, b, c);
    }
    const double extrude = o.guide_index == KindDxfMesh ? std::clamp(finiteOr(o.dxf_extrude, 0.0) / 1000.0, 0.0, 1000.0) : 0.0;
    for (size_t i = 0; i + 1 < src.lines.size(); i += 2) {
        const Vec3 a(src.lines[i].x() * s.x(), src.lines[i].y() * s.y(), src.lines[i].z() * s.z());
        const Vec3 b(src.lines[i + 1].x() * s.x(), src.lines[i + 1].y() * s.y(), src.lines[i + 1].z() * s.z());
        w.polyline({a, b});
        if (extrude > 1e-6 && (b - a).norm() > 1e-9) {
            // A wall standing on the segment.
            const Vec3 up(0.0, extrude, 0.0);
            Vec3 n = (b - a).cross(up);
            const std::uint32_t v0 = w.vertex(a, n, 0, 1), v1 = w.vertex(b, n, 1, 1);
            const std::uint32_t v2 = w.vertex(b + up, n, 1, 0), v3 = w.vertex(a + up, n, 0, 0);
            w.triangle(v0, v1, v2);
            w.triangle(v0, v2, v3);
        }
    }
    mesh.gridLineCount = std::max(mesh.gridLineCount, src.gridLineCount);
    return mesh;
}

} // namespace vg::scene
