#pragma once

#include <QString>

// Media-server link of a projector's view mesh ("vantreo_view_mesh_settings").
struct MediaServerSettings {
    QString server_ip = QStringLiteral("127.0.0.1");
    int server_port = 17779;                 // 1..65535
    QString player_ip = QStringLiteral("127.0.0.1");
    int warp = 1;                            // 1..8

    bool operator==(const MediaServerSettings &) const = default;
};
