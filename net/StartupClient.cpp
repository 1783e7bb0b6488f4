#include "net/StartupClient.h"

#include "net/ApiConfig.h"
#include "net/ClientInfo.h"

#include <QFutureWatcher>
#include <QJsonDocument>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QTimer>
#include <QtConcurrent>

namespace vg::net {
namespace {

// A response body larger than this is not a startup answer.
constexpr qint64 kMaxResponseBytes = 4 * 1024 * 1024;

bool isUsableDownloadUrl(const QUrl &url)
{
    const QString scheme = url.scheme().toLower();
    return url.isValid() && !url.host().isEmpty()
           && (scheme == QLatin1String("https") || scheme == QLatin1String("http"));
}

} // namespace

StartupClient::StartupClient(QObject *parent)
    : QObject(parent)
    , m_network(new QNetworkAccessManager(this))
    , m_build(currentBuildInfo())
    , m_timeoutMs(kApiTimeoutMs)
{
}

StartupClient::~StartupClient()
{
    if (m_reply)
        m_reply->abort();
}

QString StartupClient::baseUrl() const
{
    return resolveApiBaseUrl(m_configuredBaseUrl);
}

void StartupClient::send(Origin origin)
{
    if (isBusy()) {
        // One request at a time; a later, more demanding origin takes over its answer.
        if (origin != Origin::Report)
            m_origin = origin;
        return;
    }
    if (origin == Origin::Automatic && m_hasResult) {
        Result reused = m_lastResult;
        reused.origin = origin;
        QTimer::singleShot(0, this, [this, reused] { publish(reused); });
        return;
    }
    m_origin = origin;
    m_preparing = true;
    Q_EMIT statusChanged(tr("Startup API: Connecting"), tr("Connecting to update server..."));
    Q_EMIT logLine(QStringLiteral("Connecting to update server..."));

    // The host name and the marker file are read off the user-interface thread.
    auto *watcher = new QFutureWatcher<QJsonObject>(this);
    connect(watcher, &QFutureWatcher<QJsonObject>::finished, this, [this, watcher] {
        watcher->deleteLater();
        m_preparing = false;
        post(watcher->result());
    });
    watcher->setFuture(QtConcurrent::run(clientInfoBody, m_build, m_applicationDir));
}

void StartupClient::post(const QJsonObject &body)
{
    const QUrl url = apiEndpoint(baseUrl(), QStringLiteral("api/clients/startup"));
    const QNetworkRequest request = makeApiRequest(url, m_build, clientToken(), m_timeoutMs);
    m_reply = m_network->post(request, QJsonDocument(body).toJson(QJsonDocument::Compact));
    connect(m_reply, &QNetworkReply::downloadProgress, m_reply, [reply = m_reply](qint64 received, qint64) {
        if (received > kMaxResponseBytes)
            reply->abort();
    });
    connect(m_reply, &QNetworkReply::finished, this, &StartupClient::onReplyFinished);
}

void StartupClient::onReplyFinished()
{
    QNetworkReply *reply = m_reply;
    m_reply = nullptr;
    if (!reply)
        return;
    reply->deleteLater();
    Result result = readReply(reply);
    result.origin = m_origin;
    m_hasResult = true;
    m_lastResult = result;
    publish(result);
}

StartupClient::Result StartupClient::readReply(QNetworkReply *reply) const
{
    Result result;
    result.httpStatus = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    if (result.httpStatus >= 400) {
        const bool denied = result.httpStatus == 401 || result.httpStatus == 403;
        result.outcome = denied ? Outcome::Unauthorized : Outcome::Rejected;
        result.label = denied ? tr("Startup API: Unauthorized") : tr("Startup API: Rejected");
        result.detail = QStringLiteral("HTTP %1").arg(result.httpStatus);
        result.message = tr("Update check was rejected.");
        return result;
    }
    if (reply->error() != QNetworkReply::NoError) {
        result.outcome = Outcome::Offline;
        result.label = tr("Startup API: Offline");
        result.detail = reply->errorString();
        result.message = QStringLiteral("Startup client info request failed: %1").arg(reply->errorString());
        return result;
    }
    QString parseError;
    const QByteArray body = reply->readAll();
    if (!parseStartupResponse(body, &result.update, &parseError)) {
        result.outcome = Outcome::InvalidJson;
        result.label = tr("Startup API: Invalid JSON");
        result.detail = parseError;
        result.message = tr("Update check returned invalid JSON.");
        return result;
    }
    result.response = QJsonDocument::fromJson(body).object();
    classifyUpdate(result);
    return result;
}

void StartupClient::classifyUpdate(Result &result) const
{
    const UpdateInfo &update = result.update;
    if (!update.updateAvailable) {
        result.outcome = Outcome::Connected;
        result.label = tr("Startup API: Connected");
        result.detail = statusWordText(update.status);
        return;
    }
    if (update.downloadUrl.isEmpty()) {
        result.outcome = Outcome::UpdateMissingFile;
        result.label = tr("Startup API: Update Missing File");
        result.detail = tr("Update is available, but the server response has no downloadUrl.");
        return;
    }
    // A relative address is taken from the API server itself.
    const QUrl url = QUrl(baseUrl()).resolved(QUrl(update.downloadUrl, QUrl::StrictMode));
    if (!isUsableDownloadUrl(url)) {
        result.outcome = Outcome::InvalidUpdateUrl;
        result.label = tr("Startup API: Invalid Update URL");
        result.detail = update.downloadUrl;
        return;
    }
    result.outcome = Outcome::UpdateAvailable;
    result.downloadUrl = url;
    result.label = tr("Startup API: Update Available");
    result.detail = update.mandatory ? tr("Mandatory update. Latest build: %1").arg(update.latestBuildNumber)
                                     : tr("Latest build: %1").arg(update.latestBuildNumber);
}

void StartupClient::publish(Result result)
{
    Q_EMIT statusChanged(result.label, result.detail);
    switch (result.outcome) {
    case Outcome::Offline:
        Q_EMIT logLine(QStringLiteral("Startup client info request failed: %1").arg(result.detail));
        break;
    case Outcome::Unauthorized:
    case Outcome::Rejected:
        Q_EMIT logLine(QStringLiteral("Startup client info request was rejected: %1").arg(result.detail));
        break;
    case Outcome::InvalidJson:
        Q_EMIT logLine(QStringLiteral("Startup client info response was not valid JSON: %1").arg(result.detail));
        break;
    case Outcome::UpdateMissingFile:
        Q_EMIT logLine(QStringLiteral("Update is available, but the server response has no downloadUrl."));
        break;
    case Outcome::InvalidUpdateUrl:
        Q_EMIT logLine(QStringLiteral("Update is available, but its download URL is not valid: %1").arg(result.detail));
        break;
    case Outcome::Connected:
    case Outcome::UpdateAvailable:
        Q_EMIT logLine(result.label + QStringLiteral(" ") + result.detail);
        break;
    }
    Q_EMIT finished(result);
}

} // namespace vg::net
