#pragma once

#include "scene/GuideObject.h"

#include <Eigen/Core>

#include <utility>
#include <vector>

// The pickable vertices of a calibration target: the end points of its wire grid (or of
// its triangle edges when it has no grid), merged where they coincide, in world space.
// The vertex numbers are what the matched rows keep ("original wireframe").
struct CalibrationWireframe {
    std::vector<Eigen::Vector3d> vertices;
    std::vector<std::pair<int, int>> edges;
    std::vector<Eigen::Vector3d> triangles;   // shading: three world points each

    bool isEmpty() const { return vertices.empty(); }
};

// At most this many vertices are offered; denser meshes are thinned by their edges' order.
constexpr int kCalibrationWireframeMaxVertices = 20000;

CalibrationWireframe buildCalibrationWireframe(const GuideObject &target);
// Objects that can be calibration targets: visible shapes with geometry, not lenses,
// measures or comments.
bool isCalibrationTargetCandidate(const GuideObject &object);
