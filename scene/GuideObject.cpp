#include "scene/GuideObject.h"

#include "scene/SceneMesh.h"

#include <cmath>

bool GuideObject::operator==(const GuideObject &o) const
{
    // Spelled out because the imported geometry is compared by identity, not by value.
    return guide_index == o.guide_index && name == o.name
        && translate_x == o.translate_x && translate_y == o.translate_y && translate_z == o.translate_z
        && rotate_x == o.rotate_x && rotate_y == o.rotate_y && rotate_z == o.rotate_z
        && scale_x == o.scale_x && scale_y == o.scale_y && scale_z == o.scale_z
        && visible == o.visible && object_opacity == o.object_opacity
        && show_dimensions == o.show_dimensions && show_width_dimension == o.show_width_dimension
        && show_height_dimension == o.show_height_dimension && show_depth_dimension == o.show_depth_dimension
        && show_radius_dimension == o.show_radius_dimension
        && show_circumference_dimension == o.show_circumference_dimension
        && show_distance_dimension == o.show_distance_dimension
        && show_shading == o.show_shading && flip_normals == o.flip_normals
        && show_wireframe == o.show_wireframe && wireframe_thickness == o.wireframe_thickness
        && throw_rate == o.throw_rate && projection_opacity == o.projection_opacity
        && projection_visible == o.projection_visible && projector_flip_h == o.projector_flip_h
        && projector_flip_v == o.projector_flip_v && projector_rotate_180 == o.projector_rotate_180
        && projector_name_visible == o.projector_name_visible
        && projector_info_text_visible == o.projector_info_text_visible
        && projector_pixel_footprint_heatmap_visible == o.projector_pixel_footprint_heatmap_visible
        && projector_pixel_footprint_grid_visible == o.projector_pixel_footprint_grid_visible
        && projector_pixel_footprint_labels_visible == o.projector_pixel_footprint_labels_visible
        && projector_pixel_footprint_heatmap_auto_range == o.projector_pixel_footprint_heatmap_auto_range
        && projector_pixel_footprint_heatmap_opacity == o.projector_pixel_footprint_heatmap_opacity
        && projector_pixel_footprint_sample_step_pixels == o.projector_pixel_footprint_sample_step_pixels
        && projector_pixel_footprint_metric == o.projector_pixel_footprint_metric
        && lens_shift_x == o.lens_shift_x && lens_shift_y == o.lens_shift_y
        && projector_resolution_width == o.projector_resolution_width
        && projector_resolution_height == o.projector_resolution_height
        && show_projector_frustum == o.show_projector_frustum
        && projector_image_guide_index == o.projector_image_guide_index
        && projector_spout_sender == o.projector_spout_sender
        && projector_spout_adapter == o.projector_spout_adapter
        && projector_ndi_source == o.projector_ndi_source
        && projector_image_file_path == o.projector_image_file_path
        && projector_view_output_mode == o.projector_view_output_mode
        && projector_view_output_name == o.projector_view_output_name
        && projector_calibration_output_mode == o.projector_calibration_output_mode
        && projector_calibration_output_name == o.projector_calibration_output_name
        && vantreo_view_mesh_settings == o.vantreo_view_mesh_settings
        && projector_calibration_settings == o.projector_calibration_settings
        && projector_calibration == o.projector_calibration
        && projector_default_color == o.projector_default_color
        && texture_visible == o.texture_visible && texture_guide_index == o.texture_guide_index
        && texture_file_path == o.texture_file_path && texture_spout_sender == o.texture_spout_sender
        && texture_spout_adapter == o.texture_spout_adapter && texture_ndi_source == o.texture_ndi_source
        && texture_movie_hwaccel == o.texture_movie_hwaccel && mesh_color == o.mesh_color
        && uv_rotation == o.uv_rotation
        && plane_width == o.plane_width && plane_height == o.plane_height
        && plane_corner_radius == o.plane_corner_radius && plane_round_lines == o.plane_round_lines
        && plane_u_lines == o.plane_u_lines && plane_v_lines == o.plane_v_lines
        && people_height == o.people_height
        && wall_cylinder_height == o.wall_cylinder_height && wall_cylinder_angle == o.wall_cylinder_angle
        && wall_cylinder_radius == o.wall_cylinder_radius && wall_cylinder_u_lines == o.wall_cylinder_u_lines
        && wall_cylinder_v_lines == o.wall_cylinder_v_lines && wall_cylinder_wall == o.wall_cylinder_wall
        && wall_cylinder_top == o.wall_cylinder_top && wall_cylinder_floor == o.wall_cylinder_floor
        && wall_cylinder_arc_length_lock == o.wall_cylinder_arc_length_lock
        && box_width == o.box_width && box_height == o.box_height && box_depth == o.box_depth
        && box_corner_radius == o.box_corner_radius && box_u_lines == o.box_u_lines
        && box_v_lines == o.box_v_lines && box_round_lines == o.box_round_lines
        && box_wall == o.box_wall && box_top == o.box_top && box_floor == o.box_floor
        && sphere_u_start == o.sphere_u_start && sphere_u_end == o.sphere_u_end
        && sphere_v_start == o.sphere_v_start && sphere_v_end == o.sphere_v_end
        && circle_plane_mode == o.circle_plane_mode && circle_plane_hole_radius == o.circle_plane_hole_radius
        && circle_plane_angle == o.circle_plane_angle
        && circle_plane_polar_v_flipped == o.circle_plane_polar_v_flipped
        && distance_start_x == o.distance_start_x && distance_start_y == o.distance_start_y
        && distance_start_z == o.distance_start_z && distance_end_x == o.distance_end_x
        && distance_end_y == o.distance_end_y && distance_end_z == o.distance_end_z
        && annotation_text == o.annotation_text
        && annotation_label_offset_x == o.annotation_label_offset_x
        && annotation_label_offset_y == o.annotation_label_offset_y
        && annotation_label_offset_z == o.annotation_label_offset_z
        && annotation_circle_scale == o.annotation_circle_scale
        && annotation_label_scale == o.annotation_label_scale
        && annotation_label_scale_x == o.annotation_label_scale_x
        && annotation_label_scale_y == o.annotation_label_scale_y
        && annotation_label_font_scale == o.annotation_label_font_scale
        && horseshoe_u_lines == o.horseshoe_u_lines && horseshoe_v_lines == o.horseshoe_v_lines
        && horseshoe_round_u_lines == o.horseshoe_round_u_lines && horseshoe_wall == o.horseshoe_wall
        && horseshoe_floor == o.horseshoe_floor && horseshoe_rotation_x == o.horseshoe_rotation_x
        && horseshoe_rotation_y == o.horseshoe_rotation_y && horseshoe_rotation_z == o.horseshoe_rotation_z
        && dxf_line_thickness == o.dxf_line_thickness && dxf_extrude == o.dxf_extrude
        && curve_extrude == o.curve_extrude && curve_closed == o.curve_closed
        && curve_points == o.curve_points && obj_path == o.obj_path
        && imported_mesh == o.imported_mesh;
}

CurvedShape curvedShapeOf(const GuideObject &object)
{
    const bool sphereBlock = object.sphere_u_end > object.sphere_u_start
        && object.sphere_v_end > object.sphere_v_start;
    if (!sphereBlock)
        return CurvedShape::Horseshoe;
    return object.sphere_v_end <= 90.0f ? CurvedShape::Dome : CurvedShape::Sphere;
}

QVector<GuideMatchedPoint> enabledMatchedPoints(const GuideProjectorCalibration &calibration)
{
    QVector<GuideMatchedPoint> points;
    points.reserve(calibration.matches.size());
    for (const GuideProjectorCalibrationMatch &m : calibration.matches) {
        if (!m.enabled)
            continue;
        points.append({float(m.world_x), float(m.world_y), float(m.world_z), float(m.image_x), float(m.image_y)});
    }
    return points;
}
