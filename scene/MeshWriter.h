#pragma once

#include "scene/SceneMesh.h"

#include <Eigen/Geometry>

#include <algorithm>
#include <cmath>
#include <functional>
#include <vector>

// Building blocks of the mesh builders: parametric grids, fans and polylines that never
// emit a non-finite vertex or a zero-area triangle.
namespace vg::scene::detail {

using Vec3 = Eigen::Vector3d;

inline double finiteOr(double value, double fallback)
{
    return std::isfinite(value) ? value : fallback;
}

// A length that is finite and at least `floor`.
inline double positiveLength(double value, double floor = 1e-4)
{
    return std::max(floor, finiteOr(value, floor));
}

inline int segmentsOf(int lines, int minimum = 1)
{
    return std::clamp(lines, minimum, 512);
}

class MeshWriter
{
public:
    explicit MeshWriter(SceneMesh &mesh) : m_mesh(mesh) {}

    std::uint32_t vertex(const Vec3 &p, const Vec3 &n, double u, double v)
    {
        SceneVertex sv;
        sv.px = float(finiteOr(p.x(), 0.0));
        sv.py = float(finiteOr(p.y(), 0.0));
        sv.pz = float(finiteOr(p.z(), 0.0));
        Vec3 nn = n;
        const double len = nn.norm();
        nn = (len > 1e-12 && std::isfinite(len)) ? Vec3(nn / len) : Vec3(0.0, 0.0, 1.0);
        sv.nx = float(nn.x());
        sv.ny = float(nn.y());
        sv.nz = float(nn.z());
        sv.u = float(finiteOr(u, 0.0));
        sv.v = float(finiteOr(v, 0.0));
        m_mesh.vertices.push_back(sv);
        return std::uint32_t(m_mesh.vertices.size() - 1);
    }

    // Skips triangles whose area is (nearly) zero, such as those at a collapsed pole, and
    // winds every triangle counter-clockwise seen from the side its vertex normals face.
    void triangle(std::uint32_t a, std::uint32_t b, std::uint32_t c)
    {
        const Vec3 pa = pos(a), pb = pos(b), pc = pos(c);
        const Vec3 cross = (pb - pa).cross(pc - pa);
        const double area2 = cross.norm();
        const double scale = std::max({(pb - pa).squaredNorm(), (pc - pa).squaredNorm(), 1e-30});
        if (!(area2 > 1e-9 * scale) || !(area2 > 1e-18))
            return;
        if (cross.dot(nrm(a) + nrm(b) + nrm(c)) < 0.0)
            std::swap(b, c);
        m_mesh.indices.push_back(a);
        m_mesh.indices.push_back(b);
        m_mesh.indices.push_back(c);
    }

    // A grid over s, t in 0..1 with ns × nt cells; triangles wind counter-clockwise seen from
    // the side of d/ds × d/dt. position and normal are called with (s, t); the texture
    // coordinate is (s, t) unless given.
    void grid(int ns, int nt, const std::function<Vec3(double, double)> &position,
              const std::function<Vec3(double, double)> &normal,
              const std::function<Eigen::Vector2d(double, double)> &uv = {})
    {
        ns = std::max(1, ns);
        nt = std::max(1, nt);
        const std::uint32_t base = std::uint32_t(m_mesh.vertices.size());
        for (int j = 0; j <= nt; ++j) {
            const double t = double(j) / nt;
            for (int i = 0; i <= ns; ++i) {
                const double s = double(i) / ns;
                const Eigen::Vector2d tc = uv ? uv(s, t) : Eigen::Vector2d(s, t);
                vertex(position(s, t), normal(s, t), tc.x(), tc.y());
            }
        }
        const auto at = [&](int i, int j) { return base + std::uint32_t(j * (ns + 1) + i); };
        for (int j = 0; j < nt; ++j) {
            for (int i = 0; i < ns; ++i) {
                triangle(at(i, j), at(i + 1, j), at(i + 1, j + 1));
                triangle(at(i, j), at(i + 1, j + 1), at(i, j + 1));
            }
        }
    }

    // A fan from a centre to a closed outline (convex shapes only).
    void fan(const Vec3 &centre, const std::vector<Vec3> &outline, const Vec3 &n,
             const std::function<Eigen::Vector2d(const Vec3 &)> &uv)
    {
        if (outline.size() < 3)
            return;
        const Eigen::Vector2d cuv = uv(centre);
        const std::uint32_t c = vertex(centre, n, cuv.x(), cuv.y());
        std::vector<std::uint32_t> ring;
        ring.reserve(outline.size());
        for (const Vec3 &p : outline) {
            const Eigen::Vector2d t = uv(p);
            ring.push_back(vertex(p, n, t.x(), t.y()));
        }
        for (size_t i = 0; i < ring.size(); ++i) {
            const std::uint32_t a = ring[i], b = ring[(i + 1) % ring.size()];
            // Keep the winding counter-clockwise about n.
            if ((pos(a) - centre).cross(pos(b) - centre).dot(n) >= 0.0)
                triangle(c, a, b);
            else
                triangle(c, b, a);
        }
    }

    // One wire-grid line made of the segments between consecutive points.
    void polyline(const std::vector<Vec3> &points, bool closed = false)
    {
        bool any = false;
        const size_t n = points.size();
        const size_t count = closed ? n : (n > 0 ? n - 1 : 0);
        for (size_t i = 0; i < count; ++i) {
            const Vec3 &a = points[i];
            const Vec3 &b = points[(i + 1) % n];
            if (!a.allFinite() || !b.allFinite() || (b - a).norm() <= 1e-9)
                continue;
            m_mesh.lines.emplace_back(float(a.x()), float(a.y()), float(a.z()));
            m_mesh.lines.emplace_back(float(b.x()), float(b.y()), float(b.z()));
            any = true;
        }
        if (any)
            ++m_mesh.gridLineCount;
    }

    // Samples a curve f(t), t in 0..1, into `segments` pieces and adds it as one line.
    void curve(int segments, const std::function<Vec3(double)> &f)
    {
        segments = std::max(1, segments);
        std::vector<Vec3> pts;
        pts.reserve(size_t(segments) + 1);
        for (int i = 0; i <= segments; ++i)
            pts.push_back(f(double(i) / segments));
        polyline(pts);
    }

    Vec3 pos(std::uint32_t i) const
    {
        const SceneVertex &v = m_mesh.vertices[i];
        return {v.px, v.py, v.pz};
    }

    Vec3 nrm(std::uint32_t i) const
    {
        const SceneVertex &v = m_mesh.vertices[i];
        return {v.nx, v.ny, v.nz};
    }

    SceneMesh &mesh() { return m_mesh; }

private:
    SceneMesh &m_mesh;
};

// How many shading segments a curved span needs: one per `degreesPerSegment` of the span,
// more to follow a finer wire grid up to a point (wire lines are drawn exactly anyway).
inline int shadingSegments(int wireSegments, double spanDegrees, double degreesPerSegment = 7.5)
{
    const int bySpan = int(std::ceil(std::abs(finiteOr(spanDegrees, 0.0)) / degreesPerSegment));
    return std::clamp(std::max({std::min(wireSegments, 96), bySpan, 1}), 1, 256);
}

} // namespace vg::scene::detail
