#include "support/LoopbackHttpServer.h"
#include "support/NetTestSupport.h"

#include "net/StartupClient.h"
#include "net/UpdateDownloader.h"
#include "net/UpdateHistory.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkAccessManager>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>

using namespace vg::net;

namespace {

struct Outcome
{
    bool ok = false;
    QString filePath;
    QString message;
};

class UpdateDownloadTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        clearClientEnvironment(m_env);
        ASSERT_TRUE(m_server.listen());
        ASSERT_TRUE(m_folder.isValid());
        m_server.route("/api/updates/history", LoopbackHttpServer::reply(200, "{}"));
        m_history.setBaseUrl(m_server.baseUrl() + QStringLiteral("/"));
        // A payload whose bytes differ everywhere, so a truncated or shifted copy shows.
        for (int i = 0; i < 300000; ++i)
            m_payload.append(char((i * 7 + i / 251) & 0xff));
    }

    UpdateDownloader::Request request(const QString &sha256, const QString &path = QStringLiteral("/files/pkg.zip"))
    {
        UpdateDownloader::Request r;
        r.update.updateAvailable = true;
        r.update.latestBuildNumber = QStringLiteral("41");
        r.update.sha256 = sha256;
        r.url = QUrl(m_server.baseUrl() + path);
        r.fromBuildNumber = QStringLiteral("40");
        r.folder = m_folder.path();
        return r;
    }

    Outcome download(UpdateDownloader &downloader, const UpdateDownloader::Request &r)
    {
        std::optional<Outcome> outcome;
        QObject::connect(&downloader, &UpdateDownloader::finished, &downloader,
                         [&outcome](bool ok, const QString &file, const QString &, const QString &message) {
                             outcome = Outcome{ok, file, message};
                         });
        QObject::connect(&downloader, &UpdateDownloader::logLine, &downloader,
                         [this](const QString &line) { m_logs.append(line); });
        downloader.start(r);
        EXPECT_TRUE(waitUntil([&] { return outcome.has_value(); }, 20000));
        return outcome.value_or(Outcome{});
    }

    // The history records that arrived once `status` is among them; reports travel on
    // connections of their own, so their order of arrival is not fixed.
    QList<QJsonObject> historyWith(const QString &status)
    {
        QList<QJsonObject> records;
        waitUntil([&] {
            records.clear();
            for (const auto &request : m_server.requestsTo("/api/updates/history"))
                records.append(QJsonDocument::fromJson(request.body).object());
            return std::any_of(records.cbegin(), records.cend(),
                               [&](const QJsonObject &r) { return r.value("status").toString() == status; });
        }, 5000);
        return records;
    }

    static QStringList statusesOf(const QList<QJsonObject> &records)
    {
        QStringList statuses;
        for (const QJsonObject &record : records)
            statuses.append(record.value("status").toString());
        return statuses;
    }

    QString sha256Of(const QByteArray &data) const
    {
        return QString::fromLatin1(QCryptographicHash::hash(data, QCryptographicHash::Sha256).toHex());
    }

    ScopedEnvironment m_env;
    LoopbackHttpServer m_server;
    QTemporaryDir m_folder;
    QNetworkAccessManager m_network;
    UpdateHistoryReporter m_history{&m_network};
    QByteArray m_payload;
    QStringList m_logs;
};

TEST_F(UpdateDownloadTest, FileUrlOfferDownloadsAndUpperCaseChecksumMatches)
{
    m_server.route("/files/pkg.zip", LoopbackHttpServer::reply(200, m_payload, "application/zip"));
    const QByteArray offer = QJsonDocument(QJsonObject{
        {"update", QJsonObject{{"updateAvailable", true}, {"latestBuildNumber", 41},
                               {"fileUrl", m_server.baseUrl() + "/files/pkg.zip"},
                               {"sha256", sha256Of(m_payload).toUpper()}}}}).toJson();
    m_server.route("/api/clients/startup", LoopbackHttpServer::reply(200, offer));
    StartupClient client;
    client.setConfiguredBaseUrl(m_server.baseUrl());
    std::optional<StartupClient::Result> offered;
    QObject::connect(&client, &StartupClient::finished, &client, [&](const StartupClient::Result &r) { offered = r; });
    client.send(StartupClient::Origin::Manual);
    ASSERT_TRUE(waitUntil([&] { return offered.has_value(); }));
    ASSERT_EQ(offered->outcome, StartupClient::Outcome::UpdateAvailable);

    UpdateDownloader downloader(&m_network, &m_history);
    UpdateDownloader::Request r = request(offered->update.sha256);
    r.update = offered->update;
    r.url = offered->downloadUrl;
    QList<qint64> progress;
    QObject::connect(&downloader, &UpdateDownloader::progress, &downloader,
                     [&progress](qint64 received, qint64) { progress.append(received); });
    const Outcome outcome = download(downloader, r);

    ASSERT_TRUE(outcome.ok) << outcome.message.toStdString();
    EXPECT_EQ(outcome.message, "Download complete.");
    EXPECT_EQ(QFileInfo(outcome.filePath).fileName(), "VantreoGuide-41-linux-x64.zip");
    QFile file(outcome.filePath);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), m_payload);
    EXPECT_EQ(QDir(m_folder.path()).entryList(QDir::Files), QStringList{"VantreoGuide-41-linux-x64.zip"})
        << "the .download file is renamed, not copied";
    EXPECT_FALSE(progress.isEmpty());
    EXPECT_EQ(progress.last(), m_payload.size());
    const QList<QJsonObject> records = historyWith("downloaded");
    EXPECT_TRUE(statusesOf(records).contains("download_started"));
    EXPECT_FALSE(statusesOf(records).contains("download_failed"));
    const QJsonObject last = *std::find_if(records.cbegin(), records.cend(), [](const QJsonObject &r) {
        return r.value("status").toString() == "downloaded";
    });
    EXPECT_EQ(last.value("fromBuildNumber").toString(), "40");
    EXPECT_EQ(last.value("toBuildNumber").toString(), "41");
    EXPECT_EQ(last.value("downloadedBytes").toInteger(), m_payload.size());
    EXPECT_EQ(last.value("platform").toString(), "linux");
}

TEST_F(UpdateDownloadTest, MismatchedChecksumLeavesNothingToApply)
{
    m_server.route("/files/pkg.zip", LoopbackHttpServer::reply(200, m_payload, "application/zip"));
    QByteArray other = m_payload;
    other[1000] = char(other[1000] ^ 1);
    UpdateDownloader downloader(&m_network, &m_history);
    const Outcome outcome = download(downloader, request(sha256Of(other)));
    EXPECT_FALSE(outcome.ok);
    EXPECT_EQ(outcome.message, "Update checksum mismatch.");
    EXPECT_TRUE(QDir(m_folder.path()).entryList(QDir::Files).isEmpty()) << "the unverified file is gone";
    EXPECT_FALSE(statusesOf(historyWith("download_failed")).contains("downloaded"));
}

TEST_F(UpdateDownloadTest, MissingChecksumIsUsedWithAWarning)
{
    m_server.route("/files/tool", LoopbackHttpServer::reply(200, m_payload, "application/octet-stream"));
    UpdateDownloader downloader(&m_network, &m_history);
    UpdateDownloader::Request r = request(QString(), QStringLiteral("/files/tool"));
    r.update.mandatory = true;
    const Outcome outcome = download(downloader, r);
    ASSERT_TRUE(outcome.ok);
    EXPECT_EQ(outcome.message, "Mandatory update downloaded.");
    EXPECT_EQ(QFileInfo(outcome.filePath).fileName(), "VantreoGuide-41-linux-x64") << "no extension, none added";
    EXPECT_EQ(m_logs.filter("no SHA-256").size(), 1) << m_logs.join('\n').toStdString();
}

TEST_F(UpdateDownloadTest, CancelStopsAndReportsSkipped)
{
    auto stalling = LoopbackHttpServer::reply(200, m_payload.left(65536), "application/zip");
    stalling.announcedLength = 50 * 1024 * 1024;
    m_server.route("/files/pkg.zip", stalling);
    UpdateDownloader downloader(&m_network, &m_history);
    QObject::connect(&downloader, &UpdateDownloader::progress, &downloader, [&downloader](qint64 received, qint64 total) {
        if (received > 0) {
            EXPECT_EQ(total, 50 * 1024 * 1024);
            downloader.cancel();
        }
    });
    const Outcome outcome = download(downloader, request(sha256Of(m_payload)));
    EXPECT_FALSE(outcome.ok);
    EXPECT_EQ(outcome.message, "Update download canceled.");
    EXPECT_TRUE(QDir(m_folder.path()).entryList(QDir::Files).isEmpty()) << "no partial .download is left";
    EXPECT_TRUE(statusesOf(historyWith("skipped")).contains("download_started"));
}

TEST_F(UpdateDownloadTest, StalledOrRefusedDownloadFails)
{
    auto stalling = LoopbackHttpServer::reply(200, m_payload.left(1000), "application/zip");
    stalling.announcedLength = m_payload.size();
    m_server.route("/files/stall.zip", stalling);
    UpdateDownloader stalled(&m_network, &m_history);
    stalled.setStallTimeoutMs(400);
    Outcome outcome = download(stalled, request(QString(), QStringLiteral("/files/stall.zip")));
    EXPECT_FALSE(outcome.ok);
    EXPECT_TRUE(outcome.message.startsWith("Update download failed: ")) << outcome.message.toStdString();

    UpdateDownloader missing(&m_network, &m_history);
    outcome = download(missing, request(QString(), QStringLiteral("/files/absent.zip")));
    EXPECT_EQ(outcome.message, "Update download failed: HTTP 404");
    EXPECT_TRUE(QDir(m_folder.path()).entryList(QDir::Files).isEmpty()) << "an error page is never kept";
    m_server.waitForRequests("/api/updates/history", 4);
    EXPECT_EQ(statusesOf(historyWith("download_failed")).count("download_failed"), 2);
}

} // namespace
