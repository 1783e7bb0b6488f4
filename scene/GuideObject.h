#pragma once

#include "scene/GuideProjectorCalibrationSettings.h"
#include "scene/MediaServerSettings.h"

#include <QColor>
#include <QString>
#include <QVector>

#include <memory>

struct SceneMesh;

// Kind codes, stored in GuideObject::guide_index (the scene file keeps the historical key
// name "guide_index" for them). 2..10 are fixed by the file format; the rest are ours.
enum GuideObjectKind : int {
    KindPlane = 0,
    KindCirclePlane = 1,
    KindCylinderWall = 2,
    KindProjector = 3,
    KindCamera = 4,
    KindPerson = 5,
    KindCurvedSurface = 6,   // dome, sphere and horseshoe; see curvedShapeOf()
    KindLShape = 7,          // uses the box_* fields
    KindCurve = 8,
    KindDistanceMeasure = 9,
    KindComment = 10,
    KindGuide = 11,          // a flat panel showing a guide tab's image (texture_guide_index)
    KindImage = 12,          // a flat panel showing texture_file_path
    KindObjMesh = 13,        // imported Wavefront OBJ (obj_path)
    KindDxfMesh = 14,        // imported DXF line drawing
};

// The members of KindCurvedSurface are told apart by their shape parameters.
enum class CurvedShape { Dome, Sphere, Horseshoe };

// A matched point as the calibration solver takes it: scene x, y, z and projector
// pixel u, v (origin top-left, v downwards).
struct GuideMatchedPoint {
    float x = 0.0f, y = 0.0f, z = 0.0f, u = 0.0f, v = 0.0f;
    bool operator==(const GuideMatchedPoint &) const = default;
};

// One stored row of a projector's calibration matches ("projector_calibration" / "matches").
struct GuideProjectorCalibrationMatch {
    int target_index = -1;        // scene index of the target object
    QString target_name;
    QString vertex_label;
    double world_x = 0.0, world_y = 0.0, world_z = 0.0;
    double image_x = 0.0, image_y = 0.0;
    bool enabled = true;
    bool operator==(const GuideProjectorCalibrationMatch &) const = default;
};

// "projector_calibration": the matched points of one projector.
struct GuideProjectorCalibration {
    int image_width = 0;          // 0..16384
    int image_height = 0;
    QVector<GuideProjectorCalibrationMatch> matches;
    bool operator==(const GuideProjectorCalibration &) const = default;
};

// One anchor of a drawn curve, in the y = 0 plane of the object (metres).
struct GuideCurvePoint {
    double anchor_x = 0.0, anchor_z = 0.0;
    double in_handle_x = 0.0, in_handle_z = 0.0;
    double out_handle_x = 0.0, out_handle_z = 0.0;
    bool operator==(const GuideCurvePoint &) const = default;
};

// The one record of every 3D scene object. Fields that do not apply to a kind keep their
// defaults. Units: positions in metres, rotations in degrees (order: see Transform.h),
// user sizes (plane_width, box_width, ...) in millimetres; scale_* hold half extents in
// metres for generated shapes and are what the meshes and the lens model use.
struct GuideObject {
    // identity
    int guide_index = KindPlane;  // the kind code
    QString name;

    // transform
    float translate_x = 0.0f, translate_y = 0.0f, translate_z = 0.0f;
    float rotate_x = 0.0f, rotate_y = 0.0f, rotate_z = 0.0f;
    float scale_x = 1.0f, scale_y = 1.0f, scale_z = 1.0f;

    // display
    bool visible = true;
    float object_opacity = 1.0f;
    bool show_dimensions = false;
    bool show_width_dimension = true;
    bool show_height_dimension = true;
    bool show_depth_dimension = true;
    bool show_radius_dimension = true;
    bool show_circumference_dimension = true;
    bool show_distance_dimension = true;
    bool show_shading = true;
    bool flip_normals = false;
    bool show_wireframe = true;
    float wireframe_thickness = 1.0f;

    // projector and camera
    float throw_rate = 1.0f;                 // throw ratio, used clamped to 0.1..10
    float projection_opacity = 1.0f;
    bool projection_visible = true;
    bool projector_flip_h = false;
    bool projector_flip_v = false;
    bool projector_rotate_180 = false;
    bool projector_name_visible = true;
    bool projector_info_text_visible = true;
    bool projector_pixel_footprint_heatmap_visible = false;
    bool projector_pixel_footprint_grid_visible = false;
    bool projector_pixel_footprint_labels_visible = false;
    bool projector_pixel_footprint_heatmap_auto_range = true;
    float projector_pixel_footprint_heatmap_opacity = 0.65f;
    int projector_pixel_footprint_sample_step_pixels = 100;
    int projector_pixel_footprint_metric = 0;    // 0 max(U,V), 1 U, 2 V, 3 sqrt(U·V)
    float lens_shift_x = 0.0f;                   // percent of the image width
    float lens_shift_y = 0.0f;                   // percent of the image height; new projectors get 50
    int projector_resolution_width = 1920;
    int projector_resolution_height = 1200;
    bool show_projector_frustum = false;
    int projector_image_guide_index = -1;        // guide (project guide list index) projected, -1 none
    // The column and row of the guide's projector array this projector shows (its slice of
    // the guide); -1 in either shows the whole guide.
    int projector_image_slice_column = -1;
    int projector_image_slice_row = -1;
    QString projector_spout_sender;
    QString projector_spout_adapter;
    QString projector_ndi_source;
    QString projector_image_file_path;
    int projector_view_output_mode = 0;          // 0 none, 1 Spout, 2 NDI
    QString projector_view_output_name;
    int projector_calibration_output_mode = 0;   // 0..2, as above
    QString projector_calibration_output_name;
    MediaServerSettings vantreo_view_mesh_settings;
    GuideProjectorCalibrationSettings projector_calibration_settings;
    GuideProjectorCalibration projector_calibration;

    // colours and texture
    QColor projector_default_color = QColor(0x2f, 0x6f, 0xb5);
    bool texture_visible = true;
    int texture_guide_index = -1;                // guide tab index shown on the surface, -1 none
    QString texture_file_path;
    QString texture_spout_sender;
    QString texture_spout_adapter;
    QString texture_ndi_source;
    bool texture_movie_hwaccel = false;
    QColor mesh_color = QColor(0xc8, 0xc8, 0xc8);
    float uv_rotation = 0.0f;                    // quarter turns of the texture mapping

    // plane (sizes in mm)
    float plane_width = 1000.0f;
    float plane_height = 1000.0f;
    float plane_corner_radius = 0.0f;
    int plane_round_lines = 8;
    int plane_u_lines = 10;
    int plane_v_lines = 10;

    // person (mm)
    float people_height = 1700.0f;

    // cylinder wall
    float wall_cylinder_height = 1000.0f;        // mm
    float wall_cylinder_angle = 90.0f;           // degrees, 1..360
    float wall_cylinder_radius = 1000.0f;        // mm; follows from arc length and angle
    int wall_cylinder_u_lines = 72;
    int wall_cylinder_v_lines = 8;               // 1..512
    bool wall_cylinder_wall = true;
    bool wall_cylinder_top = false;
    bool wall_cylinder_floor = false;
    bool wall_cylinder_arc_length_lock = true;

    // box / L shape (mm)
    float box_width = 1000.0f;
    float box_height = 1000.0f;
    float box_depth = 1000.0f;
    float box_corner_radius = 0.0f;
    int box_u_lines = 10;
    int box_v_lines = 10;
    int box_round_lines = 8;
    bool box_wall = true;
    bool box_top = false;
    bool box_floor = true;

    // sphere family: longitude u and polar angle v from the top, in degrees
    float sphere_u_start = 0.0f;
    float sphere_u_end = 360.0f;
    float sphere_v_start = 0.0f;
    float sphere_v_end = 180.0f;

    // circle plane
    int circle_plane_mode = 0;                   // 0 planar (x/y) mapping, 1 polar mapping
    float circle_plane_hole_radius = 0.0f;       // mm
    float circle_plane_angle = 360.0f;           // degrees of the sector
    bool circle_plane_polar_v_flipped = false;

    // distance measure (metres)
    float distance_start_x = -0.5f, distance_start_y = 0.0f, distance_start_z = 0.0f;
    float distance_end_x = 0.5f, distance_end_y = 0.0f, distance_end_z = 0.0f;

    // comment
    QString annotation_text;
    float annotation_label_offset_x = 0.0f;
    float annotation_label_offset_y = 0.5f;
    float annotation_label_offset_z = 0.0f;
    float annotation_circle_scale = 1.0f;
    float annotation_label_scale = 1.0f;
    float annotation_label_scale_x = 1.0f;
    float annotation_label_scale_y = 1.0f;
    float annotation_label_font_scale = 1.0f;

    // horseshoe (the code-6 family also takes its segment counts from here)
    int horseshoe_u_lines = 0;
    int horseshoe_v_lines = 0;
    int horseshoe_round_u_lines = 0;
    bool horseshoe_wall = false;
    bool horseshoe_floor = false;
    float horseshoe_rotation_x = 0.0f;
    float horseshoe_rotation_y = 0.0f;
    float horseshoe_rotation_z = 0.0f;

    // imported DXF
    float dxf_line_thickness = 1.0f;
    float dxf_extrude = 0.0f;

    // curve
    float curve_extrude = 1000.0f;               // mm, height of the extruded band
    bool curve_closed = false;
    QVector<GuideCurvePoint> curve_points;

    // imported OBJ
    QString obj_path;

    // Not saved: geometry read from an imported file (OBJ triangles or DXF lines), centred
    // and divided by its half extents so that it fits -1..1 on each axis; the mesh builder
    // multiplies it by scale_*, which the importer sets to the half extents in metres.
    // Shared between snapshots; compared by identity.
    std::shared_ptr<const SceneMesh> imported_mesh;

    // Every field by value; the shared imported mesh by identity (shared_ptr's own ==).
    bool operator==(const GuideObject &other) const = default;

    bool isProjector() const { return guide_index == KindProjector; }
    bool isCamera() const { return guide_index == KindCamera; }
    bool hasLens() const { return isProjector() || isCamera(); }
};

// Which member of the curved family an object is: the sphere block is on when its u and v
// ranges are non-empty (dome when the range stays in the upper half, v_end <= 90°);
// a horseshoe switches the sphere block off (empty ranges).
CurvedShape curvedShapeOf(const GuideObject &object);

// The projector's matches as solver input (enabled rows only).
QVector<GuideMatchedPoint> enabledMatchedPoints(const GuideProjectorCalibration &calibration);
