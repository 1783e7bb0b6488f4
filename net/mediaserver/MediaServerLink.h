#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

// The link to the media server ("Vantreo Server"): JSON commands over UDP, and file uploads
// to its file service ("MainService") over a control and a data TCP connection. Everything
// runs on the calling (GUI) thread; every wait is bounded and processes events meanwhile.

namespace vg::mediaserver {

constexpr quint16 kControlPort = 17601;
constexpr quint16 kDataPort = 17602;
constexpr qint64 kUploadChunkBytes = 1048576;
constexpr int kWriteWaitMs = 5000;
constexpr int kReplyWaitMs = 5000;
constexpr int kDisconnectWaitMs = 1000;
constexpr int kConnectWaitMs = 5000;
constexpr int kMaxHeaderBytes = 65535;

// The server address as used: trimmed, 127.0.0.1 when blank.
QString effectiveServerAddress(const QString &address);
int clampedWarpEditorIndex(int index);    // 1..8

// One compact JSON command: "command", "target_ip", "warpeditor_index"[, "enabled"] in order.
QByteArray mediaServerCommandDatagram(const QString &command, const QString &playerAddress, int warpEditorIndex,
                                      std::optional<bool> enabled = std::nullopt);

// Which wording an invalid address is reported in.
enum class LinkCaller { MainWindow, CalibrationDialog };

// Sends one datagram to the server's UDP port.
bool sendMediaServerCommand(const QString &serverAddress, quint16 port, const QByteArray &datagram, LinkCaller caller,
                            QString *error);

// The data connection's header: a 16-bit big-endian byte count, then compact JSON
// {"files": [names], "size": [sizes as decimal strings]}. Refused above 65535 bytes.
bool fileTransferHeader(const QStringList &names, const QList<qint64> &sizes, QByteArray *header, QString *error);

struct UploadOptions {
    QString serverAddress;
    QString command = QStringLiteral("service_upload");
    QString savePath = QStringLiteral("uvlut");
    quint16 controlPort = kControlPort;
    quint16 dataPort = kDataPort;
    int replyWaitMs = kReplyWaitMs;
    int connectWaitMs = kConnectWaitMs;
    int writeWaitMs = kWriteWaitMs;
};

// Uploads the files (paths) and waits for the file service's "allfinish". `reply` receives
// what the service sent.
bool uploadFilesToMediaServer(const QStringList &paths, const UploadOptions &options, QString *reply, QString *error);

// Runs the event loop until `done` holds or `timeoutMs` passes; false on time-out.
bool waitWhileProcessingEvents(const std::function<bool()> &done, int timeoutMs);

} // namespace vg::mediaserver
