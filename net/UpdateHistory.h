#pragma once

#include "net/BuildInfo.h"

#include <QObject>
#include <QString>

class QNetworkAccessManager;

namespace vg::net {

// One line of "api/updates/history".
struct UpdateHistoryRecord
{
    QString status; // "download_started", "downloading", "downloaded", "download_failed",
                    // "skipped", "install_started", "install_failed"
    QString fromBuildNumber;
    QString toBuildNumber;
    QString downloadUrl;
    qint64 downloadedBytes = 0;
    qint64 totalBytes = 0;
    QString errorMessage;
};

// Sends history records without waiting for them; a failed report is only logged.
class UpdateHistoryReporter : public QObject
{
    Q_OBJECT

public:
    UpdateHistoryReporter(QNetworkAccessManager *network, QObject *parent = nullptr);

    void setBaseUrl(const QString &baseUrl) { m_baseUrl = baseUrl; }
    void setBuildInfo(const BuildInfo &build) { m_build = build; }
    void report(const UpdateHistoryRecord &record);

Q_SIGNALS:
    void logLine(const QString &line);

private:
    QNetworkAccessManager *m_network;
    QString m_baseUrl;
    BuildInfo m_build;
};

} // namespace vg::net
