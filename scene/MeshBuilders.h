#pragma once

#include "scene/SceneMesh.h"

#include <Eigen/Geometry>
#include <QVector>

#include <vector>

struct GuideObject;

// CPU meshes of scene objects, in each object's local frame in metres (world =
// objectToWorld(object) × local, see Transform.h). Every builder honours uv_rotation and
// flip_normals through buildObjectMesh(), clamps its inputs, and never emits a non-finite
// vertex or a zero-area triangle.
//
// Local layouts:
// - plane, guide, image, circle plane: in the XY plane facing +Z, ± half extents;
// - cylinder wall: see cylinderWallPoint() (arc middle at the origin, facing +Z);
// - dome and sphere: the ellipsoid of radii scale_* about the origin over the u range
//   (longitude from +X towards +Z) and v range (polar angle from +Y) in degrees; a dome's
//   base therefore lies at y = 0;
// - horseshoe: a U in plan (x across, its arms along +Z, open at +Z), the walls from
//   -scale_y to +scale_y, the floor at -scale_y; bend radius box_corner_radius (mm); then
//   turned by horseshoe_rotation_* (same Euler order as objects);
// - L shape: back wall at z = -scale_z facing +Z, floor at y = -scale_y facing up, optional
//   top at y = +scale_y facing down, the inner corners rounded by box_corner_radius (mm);
// - person: a figure standing in ± half extents, feet at -scale_y;
// - curve: the Bézier path in the y = 0 plane extruded up by curve_extrude (mm);
// - projector and camera: a body box behind the lens point (z from 0 to 2·scale_z).
//
// Wire grids: a line count N gives N segments, so N + 1 grid lines including the borders
// (0 counts as 1). gridLineCount reports the lines drawn.

namespace vg::scene {

SceneMesh buildObjectMesh(const GuideObject &object);
std::vector<SceneMesh> buildSceneMeshes(const QVector<GuideObject> &objects);

SceneMesh buildPlaneMesh(const GuideObject &object);
SceneMesh buildCirclePlaneMesh(const GuideObject &object);
SceneMesh buildCylinderWallMesh(const GuideObject &object);
SceneMesh buildSphereMesh(const GuideObject &object);        // dome and sphere
SceneMesh buildHorseshoeMesh(const GuideObject &object);
SceneMesh buildLShapeMesh(const GuideObject &object);
SceneMesh buildPersonMesh(const GuideObject &object);
SceneMesh buildCurveMesh(const GuideObject &object);
SceneMesh buildDistanceMeasureMesh(const GuideObject &object);
SceneMesh buildCommentMesh(const GuideObject &object);
SceneMesh buildLensBodyMesh(const GuideObject &object);      // projector and camera
SceneMesh buildImportedMesh(const GuideObject &object);

// A closed box of half extents `half` with rounded edges (radius clamped to fit).
SceneMesh buildRoundedBoxMesh(const Eigen::Vector3d &half, double radius, int roundSegments,
                              int uLines = 1, int vLines = 1);
// A closed ellipsoid about `centre`.
void appendEllipsoid(SceneMesh &mesh, const Eigen::Vector3d &centre, const Eigen::Vector3d &radii,
                     int segmentsAround, int segmentsUp, bool wire);

// Sample points of a curve object's Bézier path in its local frame (y = 0).
std::vector<Eigen::Vector3d> curvePathPoints(const GuideObject &object, int samplesPerSegment = 16);

// Post-processing applied by buildObjectMesh().
void applyUvRotation(SceneMesh &mesh, double quarterTurns);
void flipMeshNormals(SceneMesh &mesh);
// True when every triangle edge, with vertices welded by position, is used exactly twice.
bool isMeshClosed(const SceneMesh &mesh);

} // namespace vg::scene
