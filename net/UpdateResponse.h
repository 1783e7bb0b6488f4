#pragma once

#include <QJsonObject>
#include <QString>

namespace vg::net {

// How a downloaded update is installed.
enum class UpdateKind { Executable, Package, Installer };

// The "latest" object, shown in the Update dialog.
struct LatestRelease
{
    QString fileName;
    qint64 sizeBytes = -1;
    QString publishedAt;
    QString releaseNotes;
    QString channel;
};

// The "update" object of a startup response, every alias already resolved.
struct UpdateInfo
{
    bool updateAvailable = false;
    bool mandatory = false;
    QString status; // "up_to_date", "update_available", "no_update_published" or the server's word
    QString reason;
    QString latestBuildNumber;
    QString currentBuildNumber;
    QString downloadUrl;
    QString installerArgs;
    QString sha256;
    QString updateType; // as sent: "folder", "full", "package", "installer", "self"
    LatestRelease latest;

    // The type, or the download's extension when the server sent none.
    UpdateKind kind() const;
};

// Reads a startup response. False (and `error`, the parser's words) when the body is not a
// JSON object; a missing "update" object reads as "no update".
bool parseStartupResponse(const QByteArray &body, UpdateInfo *info, QString *error);

// The parsed record as JSON (the command line prints it).
QJsonObject toJson(const UpdateInfo &info);

// "Up to date" and the other status words in plain words; unknown words unchanged.
QString statusWordText(const QString &status);

} // namespace vg::net
