#pragma once

#include "net/BuildInfo.h"
#include "net/UpdateResponse.h"

#include <QJsonObject>
#include <QObject>
#include <QPointer>

#include <QNetworkReply>

class QNetworkAccessManager;

namespace vg::net {

// Reports the client to "api/clients/startup" and reads the update the server offers.
// The label texts are those of the main window's "Startup API: " status label.
class StartupClient : public QObject
{
    Q_OBJECT

public:
    // The start-up report, the start-up update check and "Check Now".
    enum class Origin { Report, Automatic, Manual };
    enum class Outcome {
        Offline,
        Unauthorized,
        Rejected,
        InvalidJson,
        Connected,
        UpdateAvailable,
        UpdateMissingFile,
        InvalidUpdateUrl
    };

    struct Result
    {
        Origin origin = Origin::Report;
        Outcome outcome = Outcome::Offline;
        QString label;   // "Startup API: ..."
        QString detail;  // tool tip and status line: "Latest build: 12", the error, ...
        QString message; // what a manual check tells the user, when it differs from detail
        int httpStatus = 0;
        QJsonObject response;
        UpdateInfo update;
        QUrl downloadUrl; // resolved against the base URL, valid for UpdateAvailable
    };

    explicit StartupClient(QObject *parent = nullptr);
    ~StartupClient() override;

    // The configured base URL (empty: environment, then the built-in default).
    void setConfiguredBaseUrl(const QString &url) { m_configuredBaseUrl = url; }
    QString baseUrl() const;
    // Folder of the running executable (for the applied-build marker).
    void setApplicationDir(const QString &dir) { m_applicationDir = dir; }
    void setTimeoutMs(int milliseconds) { m_timeoutMs = milliseconds; }
    void setBuildInfo(const BuildInfo &build) { m_build = build; }
    const BuildInfo &buildInfo() const { return m_build; }

    // Sends the client-info report; the body is built in a thread-pool task. An automatic
    // check while the start-up report is under way or done reuses that report's answer.
    void send(Origin origin);
    bool isBusy() const { return m_reply != nullptr || m_preparing; }
    // The last answer that was read, if any.
    bool hasResult() const { return m_hasResult; }
    const Result &lastResult() const { return m_lastResult; }

    QNetworkAccessManager *network() const { return m_network; }

Q_SIGNALS:
    void statusChanged(const QString &label, const QString &detail);
    void logLine(const QString &line);
    void finished(const vg::net::StartupClient::Result &result);

private:
    void post(const QJsonObject &body);
    void onReplyFinished();
    Result readReply(QNetworkReply *reply) const;
    void classifyUpdate(Result &result) const;
    void publish(Result result);

    QNetworkAccessManager *m_network = nullptr;
    QPointer<QNetworkReply> m_reply;
    QString m_configuredBaseUrl;
    QString m_applicationDir;
    BuildInfo m_build;
    int m_timeoutMs;
    bool m_preparing = false;
    Origin m_origin = Origin::Report;
    bool m_hasResult = false;
    Result m_lastResult;
};

} // namespace vg::net
