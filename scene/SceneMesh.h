#pragma once

#include <QVector3D>

#include <cstdint>
#include <vector>

// One vertex of a shading mesh: position and normal in the object's local frame
// (metres, see Transform.h), texture coordinate with v running top to bottom.
struct SceneVertex {
    float px = 0.0f, py = 0.0f, pz = 0.0f;
    float nx = 0.0f, ny = 0.0f, nz = 1.0f;
    float u = 0.0f, v = 0.0f;

    QVector3D position() const { return {px, py, pz}; }
    QVector3D normal() const { return {nx, ny, nz}; }
    bool operator==(const SceneVertex &) const = default;
};

// CPU geometry of one scene object, built in its local frame: world = objectToWorld() × local.
// Generated shapes already have their half extents (scale_*) applied, so no scale is
// left for the renderer to apply.
struct SceneMesh {
    std::vector<SceneVertex> vertices;
    std::vector<std::uint32_t> indices;   // triangles, counter-clockwise seen from the normal side
    std::vector<QVector3D> lines;         // wire grid: pairs of end points
    // True when every triangle edge is shared by exactly two triangles (a watertight shape).
    bool closed = false;
    // Radius of a sphere about the local origin holding every vertex (0 when not computed).
    float boundingRadius = 0.0f;
    // Number of wire-grid lines (each a polyline of one or more segments in `lines`).
    int gridLineCount = 0;

    bool isEmpty() const { return indices.empty() && lines.empty(); }
    int triangleCount() const { return int(indices.size() / 3); }
    int lineCount() const { return int(lines.size() / 2); }
    bool operator==(const SceneMesh &) const = default;
};
