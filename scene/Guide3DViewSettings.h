#pragma once

#include "scene/GuideObject.h"
#include "scene/GuideProjectorCalibrationSettings.h"

#include <QString>
#include <QVector>

// A saved camera position of a 3D view, with the projectors stored alongside it.
struct GuideCameraView {
    QString name;
    int view_mode = 0;                       // 0..3
    double view_rotation_x = 0.6;
    double view_rotation_y = 0.0;
    double focus_distance = 4.0;
    double target_x = 0.0;
    double target_y = 0.0;
    double target_z = 0.0;
    QVector<GuideObject> projector_objects;

    bool operator==(const GuideCameraView &) const = default;
};

// Everything a 3D view tab saves. A default-constructed record stands for "no view":
// `present` is set for every view that was created or read from a file, and only
// present views are written to a project.
struct Guide3DViewSettings {
    bool present = false;

    QString title;
    bool show_objects = true;
    bool grid_visible = true;
    bool snap = false;
    bool show_projector_frustum = false;
    bool show_obj_polygon_lines = false;
    int transform_mode = 0;                  // 0..2
    int transform_space = 0;                 // 0..1

    // Orbit camera (written inside the "camera" object).
    int view_mode = 0;                       // 0..3
    double view_rotation_x = 0.6;
    double view_rotation_y = 0.0;
    double focus_distance = 4.0;
    double target_x = 0.0;
    double target_y = 0.0;
    double target_z = 0.0;

    QString vantreo_view_mesh_server_ip = QStringLiteral("127.0.0.1");
    int vantreo_view_mesh_server_port = 17779;   // 1..65535
    QString vantreo_view_mesh_player_ip = QStringLiteral("127.0.0.1");
    int vantreo_view_mesh_warp = 1;              // 1..8

    QVector<GuideCameraView> camera_views;
    GuideProjectorCalibrationSettings projector_calibration_settings;
    QVector<GuideObject> objects;
    int projector_camera_view_object_index = -1; // -1 unless it indexes an object

    bool operator==(const Guide3DViewSettings &) const = default;

    // A fresh view as a new 3D view tab starts it.
    static Guide3DViewSettings created()
    {
        Guide3DViewSettings view;
        view.present = true;
        return view;
    }
};
