#include "project/SceneJson.h"

#include "project/JsonFieldVisitors.h"
#include "scene/GuideArraySlices.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>
#include <cmath>

namespace {

using namespace vg::json;


template <typename Object, typename Visit>
void visitGuideObjectBeforeLens(Object &o, Visit &&v)
{
    v("guide_index", o.guide_index);
    v("name", o.name);
    v("translate_x", o.translate_x);
    v("translate_y", o.translate_y);
    v("translate_z", o.translate_z);
    v("rotate_x", o.rotate_x);
    v("rotate_y", o.rotate_y);
    v("rotate_z", o.rotate_z);
    v("scale_x", o.scale_x);
    v("scale_y", o.scale_y);
    v("scale_z", o.scale_z);
    v("visible", o.visible);
    v("object_opacity", o.object_opacity);
    v("show_dimensions", o.show_dimensions);
    v("show_width_dimension", o.show_width_dimension);
    v("show_height_dimension", o.show_height_dimension);
    v("show_depth_dimension", o.show_depth_dimension);
    v("show_radius_dimension", o.show_radius_dimension);
    v("show_circumference_dimension", o.show_circumference_dimension);
    v("show_distance_dimension", o.show_distance_dimension);
    v("show_shading", o.show_shading);
    v("flip_normals", o.flip_normals);
    v("show_wireframe", o.show_wireframe);
    v("wireframe_thickness", o.wireframe_thickness);
    v("throw_rate", o.throw_rate);
    v("projection_opacity", o.projection_opacity);
    v("projection_visible", o.projection_visible);
    v("projector_flip_h", o.projector_flip_h);
    v("projector_flip_v", o.projector_flip_v);
    v("projector_rotate_180", o.projector_rotate_180);
    v("projector_name_visible", o.projector_name_visible);
    v("projector_info_text_visible", o.projector_info_text_visible);
    v("projector_pixel_footprint_heatmap_visible", o.projector_pixel_footprint_heatmap_visible);
    v("projector_pixel_footprint_grid_visible", o.projector_pixel_footprint_grid_visible);
    v("projector_pixel_footprint_labels_visible", o.projector_pixel_footprint_labels_visible);
    v("projector_pixel_footprint_heatmap_auto_range", o.projector_pixel_footprint_heatmap_auto_range);
    v("projector_pixel_footprint_heatmap_opacity", o.projector_pixel_footprint_heatmap_opacity);
    v("projector_pixel_footprint_sample_step_pixels", o.projector_pixel_footprint_sample_step_pixels);
    v("projector_pixel_footprint_metric", o.projector_pixel_footprint_metric);
}

template <typename Object, typename Visit>
void visitGuideObjectAfterLens(Object &o, Visit &&v)
{
    v("projector_resolution_width", o.projector_resolution_width);
    v("projector_resolution_height", o.projector_resolution_height);
    v("show_projector_frustum", o.show_projector_frustum);
    v("projector_image_guide_index", o.projector_image_guide_index);
    v("projector_image_slice_column", o.projector_image_slice_column);
    v("projector_image_slice_row", o.projector_image_slice_row);
    v("projector_spout_sender", o.projector_spout_sender);
    v("projector_spout_adapter", o.projector_spout_adapter);
    v("projector_ndi_source", o.projector_ndi_source);
    v("projector_image_file_path", o.projector_image_file_path);
    v("projector_view_output_mode", o.projector_view_output_mode);
    v("projector_view_output_name", o.projector_view_output_name);
    v("projector_calibration_output_mode", o.projector_calibration_output_mode);
    v("projector_calibration_output_name", o.projector_calibration_output_name);
    v("projector_default_color", o.projector_default_color);
    v("texture_visible", o.texture_visible);
    v("texture_guide_index", o.texture_guide_index);
    v("texture_file_path", o.texture_file_path);
    v("texture_spout_sender", o.texture_spout_sender);
    v("texture_spout_adapter", o.texture_spout_adapter);
    v("texture_ndi_source", o.texture_ndi_source);
    v("texture_movie_hwaccel", o.texture_movie_hwaccel);
    v("mesh_color", o.mesh_color);
    v("uv_rotation", o.uv_rotation);
    v("plane_width", o.plane_width);
    v("plane_height", o.plane_height);
    v("plane_corner_radius", o.plane_corner_radius);
    v("plane_round_lines", o.plane_round_lines);
    v("plane_u_lines", o.plane_u_lines);
    v("plane_v_lines", o.plane_v_lines);
    v("people_height", o.people_height);
    v("wall_cylinder_height", o.wall_cylinder_height);
    v("wall_cylinder_angle", o.wall_cylinder_angle);
    v("wall_cylinder_radius", o.wall_cylinder_radius);
    v("wall_cylinder_u_lines", o.wall_cylinder_u_lines);
    v("wall_cylinder_v_lines", o.wall_cylinder_v_lines);
    v("wall_cylinder_wall", o.wall_cylinder_wall);
    v("wall_cylinder_top", o.wall_cylinder_top);
    v("wall_cylinder_floor", o.wall_cylinder_floor);
    v("wall_cylinder_arc_length_lock", o.wall_cylinder_arc_length_lock);
    v("box_width", o.box_width);
    v("box_height", o.box_height);
    v("box_depth", o.box_depth);
    v("box_corner_radius", o.box_corner_radius);
    v("box_u_lines", o.box_u_lines);
    v("box_v_lines", o.box_v_lines);
    v("box_round_lines", o.box_round_lines);
    v("box_wall", o.box_wall);
    v("box_top", o.box_top);
    v("box_floor", o.box_floor);
    v("sphere_u_start", o.sphere_u_start);
    v("sphere_u_end", o.sphere_u_end);
    v("sphere_v_start", o.sphere_v_start);
    v("sphere_v_end", o.sphere_v_end);
    v("circle_plane_mode", o.circle_plane_mode);
    v("circle_plane_hole_radius", o.circle_plane_hole_radius);
    v("circle_plane_angle", o.circle_plane_angle);
    v("circle_plane_polar_v_flipped", o.circle_plane_polar_v_flipped);
    v("distance_start_x", o.distance_start_x);
    v("distance_start_y", o.distance_start_y);
    v("distance_start_z", o.distance_start_z);
    v("distance_end_x", o.distance_end_x);
    v("distance_end_y", o.distance_end_y);
    v("distance_end_z", o.distance_end_z);
    v("annotation_text", o.annotation_text);
    v("annotation_label_offset_x", o.annotation_label_offset_x);
    v("annotation_label_offset_y", o.annotation_label_offset_y);
    v("annotation_label_offset_z", o.annotation_label_offset_z);
    v("annotation_circle_scale", o.annotation_circle_scale);
    v("annotation_label_scale", o.annotation_label_scale);
    v("annotation_label_scale_x", o.annotation_label_scale_x);
    v("annotation_label_scale_y", o.annotation_label_scale_y);
    v("annotation_label_font_scale", o.annotation_label_font_scale);
    v("horseshoe_u_lines", o.horseshoe_u_lines);
    v("horseshoe_v_lines", o.horseshoe_v_lines);
    v("horseshoe_round_u_lines", o.horseshoe_round_u_lines);
    v("horseshoe_wall", o.horseshoe_wall);
    v("horseshoe_floor", o.horseshoe_floor);
    v("horseshoe_rotation_x", o.horseshoe_rotation_x);
    v("horseshoe_rotation_y", o.horseshoe_rotation_y);
    v("horseshoe_rotation_z", o.horseshoe_rotation_z);
    v("dxf_line_thickness", o.dxf_line_thickness);
    v("dxf_extrude", o.dxf_extrude);
    v("curve_extrude", o.curve_extrude);
    v("curve_closed", o.curve_closed);
    v("obj_path", o.obj_path);
}

template <typename Match, typename Visit>
void visitMatch(Match &m, Visit &&v)
{
    v("target_index", m.target_index);
    v("target_name", m.target_name);
    v("vertex_label", m.vertex_label);
    v("world_x", m.world_x);
    v("world_y", m.world_y);
    v("world_z", m.world_z);
    v("image_x", m.image_x);
    v("image_y", m.image_y);
    v("enabled", m.enabled);
}

template <typename Point, typename Visit>
void visitCurvePoint(Point &p, Visit &&v)
{
    v("anchor_x", p.anchor_x);
    v("anchor_z", p.anchor_z);
    v("in_handle_x", p.in_handle_x);
    v("in_handle_z", p.in_handle_z);
    v("out_handle_x", p.out_handle_x);
    v("out_handle_z", p.out_handle_z);
}

template <typename Settings, typename Visit>
void visitCalibrationSettings(Settings &s, Visit &&v)
{
    v("projector_update", s.projector_update);
    v("adjust_throw_ratio", s.adjust_throw_ratio);
    v("adjust_lens_shift", s.adjust_lens_shift);
    v("wireframe_show_wireframe", s.wireframe_show_wireframe);
    v("wireframe_show_shading", s.wireframe_show_shading);
    v("wireframe_show_candidate_vertex", s.wireframe_show_candidate_vertex);
    v("projector_show_wireframe", s.projector_show_wireframe);
    v("projector_show_shading", s.projector_show_shading);
    v("projector_show_vertex", s.projector_show_vertex);
    v("circle_size", s.circle_size);
    v("vertex_size", s.vertex_size);
    v("uv_lut_scale", s.uv_lut_scale);
    v("uv_lut_edge_feather_px", s.uv_lut_edge_feather_px);
    v("uv_lut_aa_samples", s.uv_lut_aa_samples);
    v("output_mode", s.output_mode);
    v("output_name", s.output_name);
    v("vantreo_server_ip", s.vantreo_server_ip);
    v("vantreo_player_ip", s.vantreo_player_ip);
    v("vantreo_server_port", s.vantreo_server_port);
    v("vantreo_warpeditor_number", s.vantreo_warpeditor_number);
    v("vantreo_server_enabled", s.vantreo_server_enabled);
}

template <typename Settings, typename Visit>
void visitMediaServerSettings(Settings &s, Visit &&v)
{
    v("server_ip", s.server_ip);
    v("server_port", s.server_port);
    v("player_ip", s.player_ip);
    v("warp", s.warp);
}

// The camera fields as the "camera" object and every saved camera view carry them.
template <typename Camera, typename Visit>
void visitCamera(Camera &c, Visit &&v)
{
    v("view_mode", c.view_mode);
    v("view_rotation_x", c.view_rotation_x);
    v("view_rotation_y", c.view_rotation_y);
    v("focus_distance", c.focus_distance);
    v("target_x", c.target_x);
    v("target_y", c.target_y);
    v("target_z", c.target_z);
}

template <typename View, typename Visit>
void visitViewPlainKeys(View &view, Visit &&v)
{
    v("title", view.title);
    v("show_objects", view.show_objects);
    v("grid_visible", view.grid_visible);
    v("snap", view.snap);
    v("show_projector_frustum", view.show_projector_frustum);
    v("show_obj_polygon_lines", view.show_obj_polygon_lines);
    v("transform_mode", view.transform_mode);
    v("transform_space", view.transform_space);
    v("vantreo_view_mesh_server_ip", view.vantreo_view_mesh_server_ip);
    v("vantreo_view_mesh_server_port", view.vantreo_view_mesh_server_port);
    v("vantreo_view_mesh_player_ip", view.vantreo_view_mesh_player_ip);
    v("vantreo_view_mesh_warp", view.vantreo_view_mesh_warp);
}

void writeMediaServerSettings(JsonTextWriter &w, const MediaServerSettings &settings)
{
    w.beginObject();
    visitMediaServerSettings(settings, FieldWriter{w});
    w.endObject();
}

void writeCalibrationSettings(JsonTextWriter &w, const GuideProjectorCalibrationSettings &settings)
{
    w.beginObject();
    visitCalibrationSettings(settings, FieldWriter{w});
    w.endObject();
}

template <typename Object>
MediaServerSettings readMediaServerSettings(const Object &json, const MediaServerSettings &base)
{
    MediaServerSettings settings = base;
    visitMediaServerSettings(settings, FieldReader{json});
    settings.server_port = std::clamp(settings.server_port, 1, 65535);
    settings.warp = std::clamp(settings.warp, 1, 8);
    return settings;
}

template <typename Object>
GuideProjectorCalibrationSettings readCalibrationSettings(const Object &json,
                                                          const GuideProjectorCalibrationSettings &base)
{
    GuideProjectorCalibrationSettings settings = base;
    visitCalibrationSettings(settings, FieldReader{json});
    clampProjectorCalibrationSettings(&settings);
    return settings;
}

template <typename Object>
GuideObject readGuideObject(const Object &json)
{
    GuideObject object;
    FieldReader read{json};
    visitGuideObjectBeforeLens(object, read);
    object.projector_pixel_footprint_metric = std::clamp(object.projector_pixel_footprint_metric, 0, 3);
    object.projector_image_slice_column = std::clamp(object.projector_image_slice_column, -1, kMaxGuideArraySide - 1);
    object.projector_image_slice_row = std::clamp(object.projector_image_slice_row, -1, kMaxGuideArraySide - 1);
    // The older single "lens_shift" was vertical; the explicit key wins when both exist.
    read("lens_shift", object.lens_shift_y);
    read("lens_shift_x", object.lens_shift_x);
    read("lens_shift_y", object.lens_shift_y);
    visitGuideObjectAfterLens(object, read);

    const auto mediaServer = json.value(QLatin1String("vantreo_view_mesh_settings"));
    if (mediaServer.isObject())
        object.vantreo_view_mesh_settings = readMediaServerSettings(mediaServer.toObject(), MediaServerSettings());
    const auto calibrationSettings = json.value(QLatin1String("projector_calibration_settings"));
    if (calibrationSettings.isObject())
        object.projector_calibration_settings =
            readCalibrationSettings(calibrationSettings.toObject(), GuideProjectorCalibrationSettings());

    const auto calibrationValue = json.value(QLatin1String("projector_calibration"));
    if (calibrationValue.isObject()) {
        const auto calibration = calibrationValue.toObject();
        GuideProjectorCalibration &target = object.projector_calibration;
        target.image_width = readInt(calibration, QLatin1String("image_width"), target.image_width);
        target.image_height = readInt(calibration, QLatin1String("image_height"), target.image_height);
        const auto matches = calibration.value(QLatin1String("matches"));
        if (matches.isArray()) {
            for (const auto &element : matches.toArray()) {
                if (!element.isObject())
                    continue;
                GuideProjectorCalibrationMatch match;
                visitMatch(match, FieldReader{element.toObject()});
                target.matches.append(match);
            }
        }
    }

    const auto points = json.value(QLatin1String("curve_points"));
    if (points.isArray()) {
        for (const auto &element : points.toArray()) {
            if (!element.isObject())
                continue;
            GuideCurvePoint point;
            visitCurvePoint(point, FieldReader{element.toObject()});
            object.curve_points.append(point);
        }
    }

    object.projector_calibration.image_width = std::clamp(object.projector_calibration.image_width, 0, 16384);
    object.projector_calibration.image_height = std::clamp(object.projector_calibration.image_height, 0, 16384);
    object.projector_calibration_output_mode = std::clamp(object.projector_calibration_output_mode, 0, 2);
    object.circle_plane_mode = std::clamp(object.circle_plane_mode, 0, 1);
    for (int *lines : {&object.plane_round_lines, &object.plane_u_lines, &object.plane_v_lines,
                       &object.wall_cylinder_u_lines, &object.box_u_lines, &object.box_v_lines,
                       &object.box_round_lines, &object.horseshoe_u_lines, &object.horseshoe_v_lines,
                       &object.horseshoe_round_u_lines})
        *lines = std::clamp(*lines, 0, 512);
    object.wall_cylinder_v_lines = std::clamp(object.wall_cylinder_v_lines, 1, 512);
    return object;
}

// Non-object elements are skipped, never fatal.
template <typename Value>
QVector<GuideObject> readObjects(const Value &value)
{
    QVector<GuideObject> objects;
    if (!value.isArray())
        return objects;
    const auto array = value.toArray();
    objects.reserve(array.size());
    for (const auto &element : array) {
        if (element.isObject())
            objects.append(readGuideObject(element.toObject()));
    }
    return objects;
}

void writeObjects(JsonTextWriter &w, const QVector<GuideObject> &objects)
{
    w.beginArray();
    for (const GuideObject &object : objects)
        writeGuideObject(w, object);
    w.endArray();
}

template <typename Object>
GuideCameraView readCameraView(const Object &json)
{
    GuideCameraView cameraView;
    cameraView.name = readString(json, QLatin1String("name"), cameraView.name);
    visitCamera(cameraView, FieldReader{json});
    cameraView.view_mode = std::clamp(cameraView.view_mode, 0, 3);
    cameraView.projector_objects = readObjects(json.value(QLatin1String("projector_objects")));
    return cameraView;
}

void writeCameraView(JsonTextWriter &w, const GuideCameraView &cameraView)
{
    w.beginObject();
    w.field("name", cameraView.name);
    visitCamera(cameraView, FieldWriter{w});
    w.key("projector_objects");
    writeObjects(w, cameraView.projector_objects);
    w.endObject();
}

template <typename Object>
Guide3DViewSettings readView(const Object &json, QVector<GuideObject> objects)
{
    Guide3DViewSettings view;
    view.present = true;
    visitViewPlainKeys(view, FieldReader{json});
    view.transform_mode = std::clamp(view.transform_mode, 0, 2);
    view.transform_space = std::clamp(view.transform_space, 0, 1);
    view.vantreo_view_mesh_server_port = std::clamp(view.vantreo_view_mesh_server_port, 1, 65535);
    view.vantreo_view_mesh_warp = std::clamp(view.vantreo_view_mesh_warp, 1, 8);

    // Older files kept the camera mode at the top level; the "camera" object wins.
    view.view_mode = readInt(json, QLatin1String("camera_view_mode"), view.view_mode);
    const auto camera = json.value(QLatin1String("camera"));
    if (camera.isObject())
        visitCamera(view, FieldReader{camera.toObject()});
    view.view_mode = std::clamp(view.view_mode, 0, 3);

    const auto cameraViews = json.value(QLatin1String("camera_views"));
    if (cameraViews.isArray()) {
        for (const auto &element : cameraViews.toArray()) {
            if (element.isObject())
                view.camera_views.append(readCameraView(element.toObject()));
        }
    }

    const auto calibration = json.value(QLatin1String("projector_calibration_settings"));
    if (calibration.isObject())
        view.projector_calibration_settings =
            readCalibrationSettings(calibration.toObject(), GuideProjectorCalibrationSettings());

    view.objects = std::move(objects);

    const int index = readInt(json, QLatin1String("projector_camera_view_object_index"), -1);
    view.projector_camera_view_object_index = (index >= 0 && index < view.objects.size()) ? index : -1;
    return view;
}

} // namespace

void writeGuideObject(JsonTextWriter &w, const GuideObject &object)
{
    w.beginObject();
    FieldWriter write{w};
    visitGuideObjectBeforeLens(object, write);
    write("lens_shift_x", object.lens_shift_x);
    write("lens_shift_y", object.lens_shift_y);
    visitGuideObjectAfterLens(object, write);
    w.key("vantreo_view_mesh_settings");
    writeMediaServerSettings(w, object.vantreo_view_mesh_settings);
    w.key("projector_calibration_settings");
    writeCalibrationSettings(w, object.projector_calibration_settings);

    w.key("projector_calibration");
    w.beginObject();
    w.field("image_width", object.projector_calibration.image_width);
    w.field("image_height", object.projector_calibration.image_height);
    w.key("matches");
    w.beginArray();
    for (const GuideProjectorCalibrationMatch &match : object.projector_calibration.matches) {
        w.beginObject();
        visitMatch(match, write);
        w.endObject();
    }
    w.endArray();
    w.endObject();

    w.key("curve_points");
    w.beginArray();
    for (const GuideCurvePoint &point : object.curve_points) {
        w.beginObject();
        visitCurvePoint(point, write);
        w.endObject();
    }
    w.endArray();
    w.endObject();
}

void writeViewSettings(JsonTextWriter &w, const Guide3DViewSettings &view)
{
    w.beginObject();
    FieldWriter write{w};
    visitViewPlainKeys(view, write);
    w.key("camera");
    w.beginObject();
    visitCamera(view, write);
    w.endObject();
    w.key("camera_views");
    w.beginArray();
    for (const GuideCameraView &cameraView : view.camera_views)
        writeCameraView(w, cameraView);
    w.endArray();
    w.key("projector_calibration_settings");
    writeCalibrationSettings(w, view.projector_calibration_settings);
    w.field("projector_camera_view_object_index", view.projector_camera_view_object_index);
    w.key("objects");
    writeObjects(w, view.objects);
    w.endObject();
}

QJsonObject mediaServerSettingsToJson(const MediaServerSettings &settings)
{
    return jsonObjectFromWriter([&](JsonTextWriter &w) { writeMediaServerSettings(w, settings); });
}

MediaServerSettings mediaServerSettingsFromJson(const QJsonObject &json, const MediaServerSettings &base)
{
    return readMediaServerSettings(json, base);
}

QJsonObject projectorCalibrationSettingsToJson(const GuideProjectorCalibrationSettings &settings)
{
    return jsonObjectFromWriter([&](JsonTextWriter &w) { writeCalibrationSettings(w, settings); });
}

void clampProjectorCalibrationSettings(GuideProjectorCalibrationSettings *s)
{
    s->circle_size = std::clamp(s->circle_size, 1, 64);
    s->vertex_size = std::clamp(s->vertex_size, 1, 64);
    s->uv_lut_scale = std::clamp(s->uv_lut_scale, 0.0, 10.0);
    s->uv_lut_edge_feather_px = std::clamp(s->uv_lut_edge_feather_px, 0.0, 8.0);
    s->uv_lut_aa_samples = std::clamp(s->uv_lut_aa_samples, 1, 4);
    s->output_mode = std::clamp(s->output_mode, 0, 2);
    s->vantreo_server_port = std::clamp(s->vantreo_server_port, 1, 65535);
    s->vantreo_warpeditor_number = std::clamp(s->vantreo_warpeditor_number, 1, 8);
}

GuideProjectorCalibrationSettings projectorCalibrationSettingsFromJson(
    const QJsonObject &json, const GuideProjectorCalibrationSettings &base)
{
    return readCalibrationSettings(json, base);
}

QJsonObject guideObjectToJson(const GuideObject &object)
{
    return jsonObjectFromWriter([&](JsonTextWriter &w) { writeGuideObject(w, object); });
}

GuideObject guideObjectFromJson(const QJsonObject &json)
{
    return readGuideObject(json);
}

GuideObject guideObjectFromJson(const vg::json::JsonObjectRef &json)
{
    return readGuideObject(json);
}

QJsonObject cameraViewToJson(const GuideCameraView &cameraView)
{
    return jsonObjectFromWriter([&](JsonTextWriter &w) { writeCameraView(w, cameraView); });
}

GuideCameraView cameraViewFromJson(const QJsonObject &json)
{
    return readCameraView(json);
}

QJsonObject viewSettingsToJson(const Guide3DViewSettings &view)
{
    return jsonObjectFromWriter([&](JsonTextWriter &w) { writeViewSettings(w, view); });
}

Guide3DViewSettings viewSettingsFromJson(const QJsonObject &json)
{
    return readView(json, readObjects(json.value(QLatin1String("objects"))));
}

Guide3DViewSettings viewSettingsFromJson(const vg::json::JsonObjectRef &json, QVector<GuideObject> objects)
{
    return readView(json, std::move(objects));
}
