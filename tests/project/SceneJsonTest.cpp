#include "project/SceneJson.h"

#include "ProjectTestSupport.h"

#include <gtest/gtest.h>

#include <QJsonArray>

#include <limits>

namespace {

Guide3DViewSettings readView(const char *json)
{
    return viewSettingsFromJson(QJsonDocument::fromJson(json).object());
}

GuideObject readObject(const char *json)
{
    return guideObjectFromJson(QJsonDocument::fromJson(json).object());
}

} // namespace

TEST(SceneJson, WrittenViewReadsBackEqualWithPresenceSet)
{
    const ProjectDocument doc = makeRichProject();
    for (const Guide3DViewSettings &view : doc.views) {
        const Guide3DViewSettings back = viewSettingsFromJson(viewSettingsToJson(view));
        EXPECT_TRUE(back.present);
        EXPECT_EQ(back, view);
        EXPECT_EQ(compactJson(viewSettingsToJson(back)), compactJson(viewSettingsToJson(view)));
    }
    // Even a never-created view is present once read.
    const Guide3DViewSettings back = viewSettingsFromJson(viewSettingsToJson(Guide3DViewSettings()));
    EXPECT_TRUE(back.present);
    Guide3DViewSettings expected;
    expected.present = true;
    EXPECT_EQ(back, expected);
}

TEST(SceneJson, EmptyObjectReadsAsDefaults)
{
    const Guide3DViewSettings view = readView("{}");
    EXPECT_TRUE(view.present);
    EXPECT_TRUE(view.show_objects);
    EXPECT_TRUE(view.grid_visible);
    EXPECT_DOUBLE_EQ(view.view_rotation_x, 0.6);
    EXPECT_DOUBLE_EQ(view.focus_distance, 4.0);
    EXPECT_EQ(view.vantreo_view_mesh_server_port, 17779);
    EXPECT_EQ(view.vantreo_view_mesh_server_ip, QStringLiteral("127.0.0.1"));
    EXPECT_EQ(view.projector_camera_view_object_index, -1);
    EXPECT_EQ(readObject("{}"), GuideObject());
}

TEST(SceneJson, CameraModeFromOlderKeyAndCameraObject)
{
    EXPECT_EQ(readView(R"({"camera_view_mode": 2})").view_mode, 2);
    EXPECT_EQ(readView(R"({"camera_view_mode": 2, "camera": {"view_mode": 1}})").view_mode, 1);
    // A camera object without a mode keeps the older key's value.
    EXPECT_EQ(readView(R"({"camera_view_mode": 2, "camera": {"focus_distance": 9}})").view_mode, 2);
    EXPECT_EQ(readView(R"({"camera_view_mode": 9})").view_mode, 3);
    EXPECT_EQ(readView(R"({"camera": {"view_mode": -3}})").view_mode, 0);
    const Guide3DViewSettings view = readView(
        R"({"camera": {"view_rotation_x": "1.5", "view_rotation_y": 2, "focus_distance": 7,
            "target_x": 1, "target_y": 2, "target_z": 3}})");
    EXPECT_DOUBLE_EQ(view.view_rotation_x, 1.5);
    EXPECT_DOUBLE_EQ(view.view_rotation_y, 2.0);
    EXPECT_DOUBLE_EQ(view.focus_distance, 7.0);
    EXPECT_DOUBLE_EQ(view.target_z, 3.0);
    // "camera" that is not an object is ignored.
    EXPECT_DOUBLE_EQ(readView(R"({"camera": [1, 2]})").focus_distance, 4.0);
}

TEST(SceneJson, ViewClamps)
{
    EXPECT_EQ(readView(R"({"vantreo_view_mesh_server_port": 0})").vantreo_view_mesh_server_port, 1);
    EXPECT_EQ(readView(R"({"vantreo_view_mesh_server_port": 70000})").vantreo_view_mesh_server_port, 65535);
    EXPECT_EQ(readView(R"({"vantreo_view_mesh_warp": 12})").vantreo_view_mesh_warp, 8);
    EXPECT_EQ(readView(R"({"vantreo_view_mesh_warp": 0})").vantreo_view_mesh_warp, 1);
    EXPECT_EQ(readView(R"({"transform_mode": 5, "transform_space": 3})").transform_mode, 2);
    EXPECT_EQ(readView(R"({"transform_space": 3})").transform_space, 1);
    EXPECT_EQ(readView(R"({"transform_mode": -1, "transform_space": -1})").transform_space, 0);
    EXPECT_EQ(readView(R"({"title": 5})").title, QString());
    EXPECT_EQ(readView(R"({"vantreo_view_mesh_server_ip": false})").vantreo_view_mesh_server_ip,
              QStringLiteral("127.0.0.1"));
}

TEST(SceneJson, ProjectorCameraViewIndexMustIndexAnObject)
{
    const char *three = R"({"objects": [{}, {}, {}], "projector_camera_view_object_index": %1})";
    auto withIndex = [&](const QString &index) {
        return viewSettingsFromJson(QJsonDocument::fromJson(QString::fromLatin1(three).arg(index).toUtf8()).object())
            .projector_camera_view_object_index;
    };
    EXPECT_EQ(withIndex("5"), -1);
    EXPECT_EQ(withIndex("3"), -1);
    EXPECT_EQ(withIndex("2"), 2);
    EXPECT_EQ(withIndex("\"0\""), 0);
    EXPECT_EQ(withIndex("-2"), -1);
    EXPECT_EQ(withIndex("1.5"), -1);
}

TEST(SceneJson, ArraysSkipNonObjects)
{
    const Guide3DViewSettings view = readView(
        R"({"objects": [1, "x", null, {"name": "A"}, [], {"name": "B"}],
            "camera_views": [{"name": "C", "view_mode": 8, "projector_objects": [3, {"guide_index": 3}]}, true],
            "projector_calibration_settings": [1]})");
    ASSERT_EQ(view.objects.size(), 2);
    EXPECT_EQ(view.objects[1].name, QStringLiteral("B"));
    ASSERT_EQ(view.camera_views.size(), 1);
    EXPECT_EQ(view.camera_views[0].view_mode, 3);
    ASSERT_EQ(view.camera_views[0].projector_objects.size(), 1);
    EXPECT_EQ(view.camera_views[0].projector_objects[0].guide_index, 3);
    EXPECT_EQ(view.projector_calibration_settings, GuideProjectorCalibrationSettings());
    EXPECT_TRUE(readView(R"({"objects": {"a": {}}, "camera_views": "x"})").objects.isEmpty());
}

TEST(SceneJson, ObjectLineCountAndModeClamps)
{
    const GuideObject o = readObject(
        R"({"wall_cylinder_v_lines": 0, "plane_u_lines": 9999, "plane_v_lines": -3, "plane_round_lines": 600,
            "wall_cylinder_u_lines": 513, "box_u_lines": -1, "box_v_lines": 1000, "box_round_lines": 512,
            "horseshoe_u_lines": 9999, "horseshoe_v_lines": -9, "horseshoe_round_u_lines": 700,
            "projector_calibration": {"image_width": -5, "image_height": 20000},
            "projector_calibration_output_mode": 5, "circle_plane_mode": 3,
            "projector_pixel_footprint_metric": 7})");
    EXPECT_EQ(o.wall_cylinder_v_lines, 1);
    EXPECT_EQ(o.plane_u_lines, 512);
    EXPECT_EQ(o.plane_v_lines, 0);
    EXPECT_EQ(o.plane_round_lines, 512);
    EXPECT_EQ(o.wall_cylinder_u_lines, 512);
    EXPECT_EQ(o.box_u_lines, 0);
    EXPECT_EQ(o.box_v_lines, 512);
    EXPECT_EQ(o.box_round_lines, 512);
    EXPECT_EQ(o.horseshoe_u_lines, 512);
    EXPECT_EQ(o.horseshoe_v_lines, 0);
    EXPECT_EQ(o.horseshoe_round_u_lines, 512);
    EXPECT_EQ(o.projector_calibration.image_width, 0);
    EXPECT_EQ(o.projector_calibration.image_height, 16384);
    EXPECT_EQ(o.projector_calibration_output_mode, 2);
    EXPECT_EQ(o.circle_plane_mode, 1);
    EXPECT_EQ(o.projector_pixel_footprint_metric, 3);
    EXPECT_EQ(readObject(R"({"wall_cylinder_v_lines": 600})").wall_cylinder_v_lines, 512);
    EXPECT_EQ(readObject(R"({"projector_pixel_footprint_metric": -1})").projector_pixel_footprint_metric, 0);
    // Ranges left to the lens model are not clamped by the reader.
    EXPECT_EQ(readObject(R"({"projector_view_output_mode": 9})").projector_view_output_mode, 9);
    EXPECT_EQ(readObject(R"({"projector_resolution_width": 0})").projector_resolution_width, 0);
}

TEST(SceneJson, OlderLensShiftKey)
{
    const GuideObject only = readObject(R"({"lens_shift": 0.25})");
    EXPECT_FLOAT_EQ(only.lens_shift_y, 0.25f);
    EXPECT_FLOAT_EQ(only.lens_shift_x, 0.0f);
    const GuideObject both = readObject(R"({"lens_shift": 0.25, "lens_shift_y": 40, "lens_shift_x": 5})");
    EXPECT_FLOAT_EQ(both.lens_shift_y, 40.0f);
    EXPECT_FLOAT_EQ(both.lens_shift_x, 5.0f);
    // Never written back under the older name.
    EXPECT_FALSE(guideObjectToJson(only).contains(QStringLiteral("lens_shift")));
}

TEST(SceneJson, NestedSettingsAreClamped)
{
    const GuideObject o = readObject(
        R"({"vantreo_view_mesh_settings": {"server_ip": "10.0.0.2", "server_port": 0, "warp": 99},
            "projector_calibration_settings": {"circle_size": 0, "vertex_size": 100, "uv_lut_scale": 11,
              "uv_lut_edge_feather_px": -1, "uv_lut_aa_samples": 8, "output_mode": 3, "output_name": "N",
              "vantreo_server_port": 70000, "vantreo_warpeditor_number": 0, "vantreo_server_enabled": "1",
              "projector_update": 0}})");
    EXPECT_EQ(o.vantreo_view_mesh_settings.server_ip, QStringLiteral("10.0.0.2"));
    EXPECT_EQ(o.vantreo_view_mesh_settings.server_port, 1);
    EXPECT_EQ(o.vantreo_view_mesh_settings.warp, 8);
    const GuideProjectorCalibrationSettings &c = o.projector_calibration_settings;
    EXPECT_EQ(c.circle_size, 1);
    EXPECT_EQ(c.vertex_size, 64);
    EXPECT_DOUBLE_EQ(c.uv_lut_scale, 10.0);
    EXPECT_DOUBLE_EQ(c.uv_lut_edge_feather_px, 0.0);
    EXPECT_EQ(c.uv_lut_aa_samples, 4);
    EXPECT_EQ(c.output_mode, 2);
    EXPECT_EQ(c.output_name, QStringLiteral("N"));
    EXPECT_EQ(c.vantreo_server_port, 65535);
    EXPECT_EQ(c.vantreo_warpeditor_number, 1);
    EXPECT_TRUE(c.vantreo_server_enabled);
    EXPECT_FALSE(c.projector_update);
    EXPECT_EQ(c.vantreo_server_ip, QStringLiteral("127.0.0.1"));
    const GuideProjectorCalibrationSettings high = projectorCalibrationSettingsFromJson(
        QJsonDocument::fromJson(R"({"uv_lut_edge_feather_px": 9, "uv_lut_scale": -2, "uv_lut_aa_samples": 0,
                                    "output_mode": -1, "vantreo_warpeditor_number": 9})").object());
    EXPECT_DOUBLE_EQ(high.uv_lut_edge_feather_px, 8.0);
    EXPECT_DOUBLE_EQ(high.uv_lut_scale, 0.0);
    EXPECT_EQ(high.uv_lut_aa_samples, 1);
    EXPECT_EQ(high.output_mode, 0);
    EXPECT_EQ(high.vantreo_warpeditor_number, 8);
}

TEST(SceneJson, MatchesAndCurvePoints)
{
    const GuideObject o = readObject(
        R"({"projector_calibration": {"image_width": "1920", "matches": [
                {"target_index": 2, "target_name": "Wall", "vertex_label": "Wall  #3", "world_x": 1.5,
                 "image_x": "100.25", "enabled": "false"}, 5, {}]},
            "curve_points": [{"anchor_x": 1, "out_handle_z": -2}, "p", {"in_handle_x": "0.5"}]})");
    EXPECT_EQ(o.projector_calibration.image_width, 1920);
    ASSERT_EQ(o.projector_calibration.matches.size(), 2);
    const GuideProjectorCalibrationMatch &m = o.projector_calibration.matches[0];
    EXPECT_EQ(m.target_index, 2);
    EXPECT_EQ(m.vertex_label, QStringLiteral("Wall  #3"));
    EXPECT_DOUBLE_EQ(m.world_x, 1.5);
    EXPECT_DOUBLE_EQ(m.image_x, 100.25);
    EXPECT_FALSE(m.enabled);
    EXPECT_TRUE(o.projector_calibration.matches[1].enabled);
    ASSERT_EQ(o.curve_points.size(), 2);
    EXPECT_DOUBLE_EQ(o.curve_points[0].anchor_x, 1.0);
    EXPECT_DOUBLE_EQ(o.curve_points[0].out_handle_z, -2.0);
    EXPECT_DOUBLE_EQ(o.curve_points[1].in_handle_x, 0.5);
    EXPECT_TRUE(readObject(R"({"projector_calibration": {"matches": {}}, "curve_points": 3})").curve_points.isEmpty());
}

TEST(SceneJson, EveryKeyIsWrittenForEveryKind)
{
    const QJsonObject projector = guideObjectToJson(GuideObject());
    for (const char *key : {"guide_index", "name", "scale_z", "show_distance_dimension", "wireframe_thickness",
                            "projector_pixel_footprint_metric", "lens_shift_x", "lens_shift_y",
                            "projector_calibration_output_name", "vantreo_view_mesh_settings",
                            "projector_calibration_settings", "projector_calibration", "projector_default_color",
                            "texture_movie_hwaccel", "uv_rotation", "plane_v_lines", "people_height",
                            "wall_cylinder_arc_length_lock", "box_floor", "sphere_v_end",
                            "circle_plane_polar_v_flipped", "distance_end_z", "annotation_label_font_scale",
                            "horseshoe_rotation_z", "dxf_extrude", "curve_extrude", "curve_closed",
                            "curve_points", "obj_path"})
        EXPECT_TRUE(projector.contains(QLatin1String(key))) << key;
    GuideObject comment;
    comment.guide_index = KindComment;
    EXPECT_EQ(guideObjectToJson(comment).keys(), projector.keys());
    const QJsonObject calibration = projector.value(QStringLiteral("projector_calibration")).toObject();
    EXPECT_EQ(calibration.keys(), (QStringList{"image_height", "image_width", "matches"}));
    EXPECT_EQ(projector.value(QStringLiteral("vantreo_view_mesh_settings")).toObject().keys(),
              (QStringList{"player_ip", "server_ip", "server_port", "warp"}));
    EXPECT_EQ(projector.value(QStringLiteral("projector_calibration_settings")).toObject().size(), 21);
}

TEST(SceneJson, ColoursAndFloatsAreWrittenPlainly)
{
    GuideObject o;
    o.mesh_color = QColor(0xAB, 0xCD, 0xEF, 10);
    o.scale_x = 0.65f;
    o.translate_y = 1.0f / 3.0f;
    const QJsonObject json = guideObjectToJson(o);
    EXPECT_EQ(json.value(QStringLiteral("mesh_color")).toString(), QStringLiteral("#abcdef"));
    EXPECT_DOUBLE_EQ(json.value(QStringLiteral("scale_x")).toDouble(), 0.65);
    const GuideObject back = guideObjectFromJson(json);
    EXPECT_EQ(back.scale_x, o.scale_x);
    EXPECT_EQ(back.translate_y, o.translate_y);
    EXPECT_EQ(back.mesh_color, QColor(0xab, 0xcd, 0xef));
    // Colour names the parser accepts; invalid ones keep the default.
    EXPECT_EQ(readObject(R"({"mesh_color": "#f00"})").mesh_color, QColor(255, 0, 0));
    EXPECT_EQ(readObject(R"({"mesh_color": "red"})").mesh_color, QColor(255, 0, 0));
    EXPECT_EQ(readObject(R"({"mesh_color": "#zzzzzz"})").mesh_color, GuideObject().mesh_color);
    EXPECT_EQ(readObject(R"({"mesh_color": 5})").mesh_color, GuideObject().mesh_color);
}

TEST(SceneJson, WrongTypesKeepDefaults)
{
    const GuideObject defaults;
    const GuideObject o = readObject(
        R"({"guide_index": "x", "name": 7, "translate_x": "abc", "visible": [], "throw_rate": {},
            "plane_u_lines": 2.5, "texture_file_path": true, "people_height": "1e400",
            "scale_y": 1e300, "rotate_x": "nan", "projector_calibration": "x",
            "vantreo_view_mesh_settings": 3})");
    EXPECT_EQ(o, defaults);
    // Numbers given as strings and booleans in their accepted forms are read.
    const GuideObject p = readObject(
        R"({"guide_index": "3", "translate_x": " 2.5 ", "visible": "FALSE", "show_dimensions": 2,
            "flip_normals": "1", "projection_visible": "yes"})");
    EXPECT_EQ(p.guide_index, 3);
    EXPECT_FLOAT_EQ(p.translate_x, 2.5f);
    EXPECT_FALSE(p.visible);
    EXPECT_TRUE(p.show_dimensions);
    EXPECT_TRUE(p.flip_normals);
    EXPECT_FALSE(p.projection_visible);
}

TEST(SceneJson, ExtremeFloatsRoundTrip)
{
    GuideObject o;
    o.scale_x = std::numeric_limits<float>::max();
    o.scale_y = -std::numeric_limits<float>::max();
    o.scale_z = std::numeric_limits<float>::denorm_min();
    o.translate_x = -0.0f;
    const QJsonObject json = guideObjectToJson(o);
    const GuideObject back = guideObjectFromJson(json);
    EXPECT_EQ(back.scale_x, o.scale_x);
    EXPECT_EQ(back.scale_y, o.scale_y);
    EXPECT_EQ(back.scale_z, o.scale_z);
    EXPECT_EQ(compactJson(guideObjectToJson(back)), compactJson(json));
    // Beyond the float range the default stays.
    EXPECT_FLOAT_EQ(readObject(R"({"scale_x": 3.5e38})").scale_x, 1.0f);
}
