#include "ProjectTestSupport.h"

ProjectDocument makeRichProject()
{
    ProjectDocument doc;

    GuideSettings first;
    first.realWidth = 4000;
    first.realHeight = 2250;
    first.columns = 16;
    first.rows = 9;
    first.explain = QStringLiteral("Main wall \u00e9\u00e0 \ud55c\uae00");
    for (int i = 0; i < 16 * 9; ++i)
        first.colors.append(QColor(QColor::fromHsv((i * 37) % 360, 200, 220).rgb()));
    GuideLayerObject layer;
    layer.filePath = QStringLiteral("/tmp/logo.png");
    layer.name = QStringLiteral("Logo");
    layer.centerX = 120.5;
    layer.width = 300;
    first.imageObjects.append(layer);
    GuideSettings second;
    second.pixelWidth = 3840;
    second.pixelHeight = 2160;
    doc.guides = {first, second};
    doc.activeGuide = 1;

    Guide3DViewSettings view = Guide3DViewSettings::created();
    view.title = QStringLiteral("Stage");
    view.snap = true;
    view.transform_mode = 2;
    view.transform_space = 1;
    view.view_mode = 3;
    view.view_rotation_x = 0.25;
    view.focus_distance = 12.5;
    view.target_y = 1.5;
    view.vantreo_view_mesh_server_port = 18000;
    view.vantreo_view_mesh_warp = 4;
    view.projector_calibration_settings.circle_size = 20;
    view.projector_calibration_settings.uv_lut_scale = 2.5;
    view.projector_calibration_settings.output_name = QStringLiteral("calib");

    for (int kind = 0; kind <= 14; ++kind) {
        GuideObject object;
        object.guide_index = kind;
        object.name = QStringLiteral("Object %1").arg(kind);
        object.translate_x = 0.1f * float(kind);
        object.rotate_y = 15.0f * float(kind);
        object.scale_z = 0.65f;
        object.mesh_color = QColor(10 * kind, 200, 30);
        object.plane_u_lines = kind;
        object.lens_shift_y = 50.0f;
        view.objects.append(object);
    }
    GuideObject &projector = view.objects[3];
    projector.throw_rate = 1.37f;
    projector.projector_resolution_width = 3840;
    projector.projector_resolution_height = 2160;
    projector.vantreo_view_mesh_settings.warp = 3;
    projector.projector_calibration_settings.vertex_size = 9;
    projector.projector_calibration.image_width = 3840;
    projector.projector_calibration.image_height = 2160;
    GuideProjectorCalibrationMatch match;
    match.target_index = 0;
    match.target_name = QStringLiteral("Object 0");
    match.vertex_label = QStringLiteral("Object 0  #4");
    match.world_x = 1.25;
    match.image_x = 812.5;
    match.enabled = false;
    projector.projector_calibration.matches = {match, GuideProjectorCalibrationMatch()};
    GuideObject &curve = view.objects[8];
    GuideCurvePoint point;
    point.anchor_x = 1.0;
    point.out_handle_z = -0.5;
    curve.curve_points = {point, GuideCurvePoint()};
    curve.curve_closed = true;
    view.projector_camera_view_object_index = 3;

    GuideCameraView saved;
    saved.name = QStringLiteral("Front of house");
    saved.view_mode = 1;
    saved.target_x = -2.0;
    saved.projector_objects = {projector};
    view.camera_views = {saved, GuideCameraView()};

    Guide3DViewSettings second3d = Guide3DViewSettings::created();
    second3d.title = QStringLiteral("Empty");
    doc.activeView = view;
    doc.views = {view, second3d};

    CanvasTabSettings canvas;
    canvas.title = QStringLiteral("Layout");
    canvas.selected_guide_index = 1;
    canvas.grid_visible = true;
    canvas.background_color = QColor(1, 2, 3);
    canvas.transform_mode = 2;
    canvas.view_zoom = 75.5;
    CanvasObjectSettings image;
    image.guide_index = 0;
    image.name = QStringLiteral("Guide 1");
    image.crop_right = 0.5;
    CanvasObjectSettings picture;
    picture.image_file_path = QStringLiteral("/tmp/photo.jpg");
    CanvasObjectSettings comment;
    comment.object_type = QStringLiteral("comment");
    comment.comment_text = QStringLiteral("Check this edge");
    comment.comment_label_offset_x = 1.5;
    CanvasObjectSettings text;
    text.object_type = QStringLiteral("text_box");
    text.text_box_text = QStringLiteral("Hello");
    text.text_box_bold = true;
    text.text_box_color = QColor(255, 0, 0);
    canvas.objects = {image, picture, comment, text};
    doc.canvasTabs = {canvas, CanvasTabSettings()};

    doc.tabs = {{QStringLiteral("guide"), 0}, {QStringLiteral("canvas"), 0}, {QStringLiteral("guide"), 1},
                {QStringLiteral("canvas"), 1}};
    doc.currentTab = 2;
    return doc;
}
