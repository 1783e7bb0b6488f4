#include "net/UpdateHistory.h"

#include "net/ApiConfig.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkAccessManager>
#include <QNetworkReply>

namespace vg::net {

UpdateHistoryReporter::UpdateHistoryReporter(QNetworkAccessManager *network, QObject *parent)
    : QObject(parent)
    , m_network(network)
    , m_build(currentBuildInfo())
{
}

void UpdateHistoryReporter::report(const UpdateHistoryRecord &record)
{
    const QJsonObject body{
        {QStringLiteral("status"), record.status},
        {QStringLiteral("fromBuildNumber"), record.fromBuildNumber},
        {QStringLiteral("toBuildNumber"), record.toBuildNumber},
        {QStringLiteral("downloadUrl"), record.downloadUrl},
        {QStringLiteral("product"), QStringLiteral("VantreoGuide")},
        {QStringLiteral("platform"), platformName()},
        {QStringLiteral("arch"), architectureName()},
        {QStringLiteral("channel"), QStringLiteral("stable")},
        {QStringLiteral("downloadedBytes"), record.downloadedBytes},
        {QStringLiteral("totalBytes"), record.totalBytes},
        {QStringLiteral("errorMessage"), record.errorMessage},
    };
    const QUrl url = apiEndpoint(m_baseUrl.isEmpty() ? resolveApiBaseUrl() : m_baseUrl,
                                 QStringLiteral("api/updates/history"));
    QNetworkReply *reply = m_network->post(makeApiRequest(url, m_build, clientToken()),
                                           QJsonDocument(body).toJson(QJsonDocument::Compact));
    connect(reply, &QNetworkReply::finished, this, [this, reply] {
        reply->deleteLater();
        const int status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
        if (reply->error() != QNetworkReply::NoError || status >= 400) {
            const QString reason = status >= 400 ? QStringLiteral("HTTP %1").arg(status) : reply->errorString();
            Q_EMIT logLine(QStringLiteral("Update history report failed: %1").arg(reason));
        }
    });
}

} // namespace vg::net
