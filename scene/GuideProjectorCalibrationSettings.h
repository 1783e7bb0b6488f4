#pragma once

#include <QString>

// Settings of the projector calibration window, kept per view and per projector.
struct GuideProjectorCalibrationSettings {
    bool projector_update = true;
    bool adjust_throw_ratio = true;
    bool adjust_lens_shift = true;
    bool wireframe_show_wireframe = true;
    bool wireframe_show_shading = true;
    bool wireframe_show_candidate_vertex = true;
    bool projector_show_wireframe = true;
    bool projector_show_shading = false;
    bool projector_show_vertex = true;
    int circle_size = 10;                    // 1..64
    int vertex_size = 6;                     // 1..64
    double uv_lut_scale = 1.0;               // 0..10
    double uv_lut_edge_feather_px = 0.0;     // 0..8
    int uv_lut_aa_samples = 1;               // 1..4
    int output_mode = 0;                     // 0 none, 1 Spout, 2 NDI
    QString output_name;
    QString vantreo_server_ip = QStringLiteral("127.0.0.1");
    QString vantreo_player_ip = QStringLiteral("127.0.0.1");
    int vantreo_server_port = 17779;         // 1..65535
    int vantreo_warpeditor_number = 1;       // 1..8
    bool vantreo_server_enabled = false;

    bool operator==(const GuideProjectorCalibrationSettings &) const = default;
};
