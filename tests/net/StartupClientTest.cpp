#include "support/LoopbackHttpServer.h"
#include "support/NetTestSupport.h"

#include "net/ApiConfig.h"
#include "net/StartupClient.h"
#include "net/UpdateResponse.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

#include <gtest/gtest.h>

#include <optional>

using namespace vg::net;

namespace {

LoopbackHttpServer::Response answer(int status, const QByteArray &body)
{
    LoopbackHttpServer::Response response;
    response.status = status;
    response.body = body;
    return response;
}

class StartupClientTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        clearClientEnvironment(m_env);
        ASSERT_TRUE(m_server.listen());
    }

    // Sends one request of `origin` to the loopback server and waits for its answer.
    StartupClient::Result run(StartupClient &client, StartupClient::Origin origin = StartupClient::Origin::Manual)
    {
        std::optional<StartupClient::Result> result;
        QObject::connect(&client, &StartupClient::finished, &client,
                         [&result](const StartupClient::Result &r) { result = r; });
        QObject::connect(&client, &StartupClient::statusChanged, &client,
                         [this](const QString &label, const QString &) { m_labels.append(label); });
        client.send(origin);
        EXPECT_TRUE(waitUntil([&] { return result.has_value(); }, 15000));
        return result.value_or(StartupClient::Result{});
    }

    ScopedEnvironment m_env;
    LoopbackHttpServer m_server;
    QStringList m_labels;
};

TEST_F(StartupClientTest, ReportCarriesHeadersAndClientInfo)
{
    m_server.route("/api/clients/startup", answer(200, R"({"update":{"updateAvailable":false,"status":"up_to_date"}})"));
    StartupClient client;
    client.setConfiguredBaseUrl(m_server.baseUrl()); // no trailing slash: one is added
    const StartupClient::Result result = run(client, StartupClient::Origin::Report);

    EXPECT_EQ(result.outcome, StartupClient::Outcome::Connected);
    EXPECT_EQ(result.label, "Startup API: Connected");
    EXPECT_EQ(result.detail, "Up to date");
    EXPECT_EQ(m_labels.value(0), "Startup API: Connecting");
    ASSERT_EQ(m_server.requestsTo("/api/clients/startup").size(), 1);
    const LoopbackHttpServer::Request request = m_server.requestsTo("/api/clients/startup").first();
    EXPECT_EQ(request.method, "POST");
    EXPECT_EQ(request.headers.value("content-type"), "application/json");
    EXPECT_TRUE(QRegularExpression(QStringLiteral(R"(^VantreoGuide/1\.0\.0 build/\d+$)"))
                    .match(QString::fromLatin1(request.headers.value("user-agent")))
                    .hasMatch())
        << request.headers.value("user-agent").constData();
    EXPECT_FALSE(request.headers.contains("x-client-token")) << "an empty token is not sent";

    const QJsonObject body = QJsonDocument::fromJson(request.body).object();
    EXPECT_EQ(body.value("product").toString(), "VantreoGuide");
    EXPECT_EQ(body.value("platform").toString(), "linux");
#if defined(__x86_64__)
    EXPECT_EQ(body.value("arch").toString(), "x64");
#endif
    EXPECT_EQ(body.value("channel").toString(), "stable");
    EXPECT_EQ(body.value("version").toString(), "1.0.0");
    EXPECT_TRUE(body.value("gitDirty").isBool());
    const QString commit = body.value("gitCommit").toString();
    EXPECT_TRUE(commit.isEmpty() || QRegularExpression(QStringLiteral("^[0-9a-f]{12}$")).match(commit).hasMatch())
        << commit.toStdString();
    EXPECT_TRUE(QRegularExpression(QStringLiteral(R"(^\d{4}-\d\d-\d\d \d\d:\d\d:\d\d$)"))
                    .match(body.value("buildTimeUtc").toString())
                    .hasMatch());
    for (const char *key : {"buildNumber", "executableBuildNumber", "effectiveBuildNumber", "computerName", "cpuArch",
                            "buildAbi"})
        EXPECT_FALSE(body.value(QLatin1String(key)).toString().isEmpty()) << key;
    EXPECT_TRUE(body.value("metadata").isObject());
}

TEST_F(StartupClientTest, BaseUrlFromEnvironmentWithTokenAndPathPrefix)
{
    m_server.route("/prefix/api/clients/startup", answer(200, R"({"update":{}})"));
    m_env.set("VANTREOGUIDE_UPDATE_URL", "http://127.0.0.1:1/unused");
    m_env.set("VANTREOGUIDE_API_BASE_URL", (m_server.baseUrl() + QStringLiteral("/prefix")).toUtf8());
    m_env.set("CLIENT_API_KEY", "fallback-key");
    m_env.set("VANTREOGUIDE_CLIENT_API_KEY", "  primary-key \n");
    StartupClient client;
    EXPECT_EQ(client.baseUrl(), m_server.baseUrl() + QStringLiteral("/prefix/"));
    const StartupClient::Result result = run(client);
    EXPECT_EQ(result.outcome, StartupClient::Outcome::Connected);
    ASSERT_EQ(m_server.requestsTo("/prefix/api/clients/startup").size(), 1);
    EXPECT_EQ(m_server.requestsTo("/prefix/api/clients/startup").first().headers.value("x-client-token"), "primary-key");
}

TEST(ApiConfig, ResolutionOrder)
{
    ScopedEnvironment env;
    clearClientEnvironment(env);
    EXPECT_TRUE(resolveApiBaseUrl().startsWith(QLatin1String("https://"))) << "the built-in server is HTTPS";
    EXPECT_TRUE(resolveApiBaseUrl().endsWith(QLatin1Char('/')));
    env.set("VANTREOGUIDE_UPDATE_URL", "http://update.example");
    EXPECT_EQ(resolveApiBaseUrl(), "http://update.example/");
    env.set("VANTREOGUIDE_API_BASE_URL", "http://api.example/v1/");
    EXPECT_EQ(resolveApiBaseUrl(), "http://api.example/v1/");
    EXPECT_EQ(resolveApiBaseUrl(QStringLiteral(" http://configured.example ")), "http://configured.example/");
    env.set("CLIENT_API_KEY", " second ");
    EXPECT_EQ(clientToken(), "second");
    env.set("VANTREOGUIDE_CLIENT_API_KEY", "   ");
    EXPECT_EQ(clientToken(), "second") << "a blank primary token falls back";
}

TEST_F(StartupClientTest, ServerRefusalsAndBadBodies)
{
    struct Case
    {
        int status;
        QByteArray body;
        StartupClient::Outcome outcome;
        const char *label;
    } cases[] = {
        {401, R"({"error":"no token"})", StartupClient::Outcome::Unauthorized, "Startup API: Unauthorized"},
        {403, "", StartupClient::Outcome::Unauthorized, "Startup API: Unauthorized"},
        {500, "oops", StartupClient::Outcome::Rejected, "Startup API: Rejected"},
        {200, "{not json", StartupClient::Outcome::InvalidJson, "Startup API: Invalid JSON"},
        {200, "[1,2]", StartupClient::Outcome::InvalidJson, "Startup API: Invalid JSON"},
    };
    for (const Case &c : cases) {
        m_server.route("/api/clients/startup", answer(c.status, c.body));
        StartupClient client;
        client.setConfiguredBaseUrl(m_server.baseUrl());
        const StartupClient::Result result = run(client);
        EXPECT_EQ(result.outcome, c.outcome) << c.status << " " << c.body.constData();
        EXPECT_EQ(result.label, QLatin1String(c.label));
        EXPECT_EQ(result.message, c.status >= 400 ? QStringLiteral("Update check was rejected.")
                                                  : QStringLiteral("Update check returned invalid JSON."));
    }
}

TEST_F(StartupClientTest, SilentServerTimesOutAsOffline)
{
    LoopbackHttpServer::Response silent;
    silent.neverAnswer = true;
    m_server.route("/api/clients/startup", silent);
    StartupClient client;
    client.setConfiguredBaseUrl(m_server.baseUrl());
    client.setTimeoutMs(400);
    QStringList logs;
    QObject::connect(&client, &StartupClient::logLine, &client, [&logs](const QString &line) { logs.append(line); });
    const StartupClient::Result result = run(client);
    EXPECT_EQ(result.outcome, StartupClient::Outcome::Offline);
    EXPECT_EQ(result.label, "Startup API: Offline");
    EXPECT_TRUE(logs.filter(QStringLiteral("Startup client info request failed:")).size() == 1) << logs.join('\n').toStdString();
}

TEST_F(StartupClientTest, NothingListeningIsOffline)
{
    StartupClient client;
    client.setConfiguredBaseUrl(QStringLiteral("http://127.0.0.1:1"));
    EXPECT_EQ(run(client).label, "Startup API: Offline");
}

TEST_F(StartupClientTest, UpdateOffersAndTheirAddresses)
{
    struct Case
    {
        QByteArray update;
        StartupClient::Outcome outcome;
        QString label;
        QString detail;
        QString url; // expected download address, "%1" standing for the server
    } cases[] = {
        {R"({"updateAvailable":true,"latestVersion":"41","fileUrl":"http://files.example/a.zip"})",
         StartupClient::Outcome::UpdateAvailable, "Startup API: Update Available", "Latest build: 41",
         "http://files.example/a.zip"},
        {R"({"updateAvailable":"true","mandatory":1,"build":42,"downloadUrl":"/files/b.zip","installerUrl":"http://x/c"})",
         StartupClient::Outcome::UpdateAvailable, "Startup API: Update Available", "Mandatory update. Latest build: 42",
         "%1/files/b.zip"},
        {R"({"updateAvailable":true,"latestBuildNumber":43})", StartupClient::Outcome::UpdateMissingFile,
         "Startup API: Update Missing File", "Update is available, but the server response has no downloadUrl.", ""},
        {R"({"updateAvailable":true,"latestBuildNumber":44,"downloadUrl":"ftp://files.example/d.zip"})",
         StartupClient::Outcome::InvalidUpdateUrl, "Startup API: Invalid Update URL", "ftp://files.example/d.zip", ""},
    };
    for (const Case &c : cases) {
        m_server.route("/api/clients/startup", answer(200, "{\"update\":" + c.update + "}"));
        StartupClient client;
        client.setConfiguredBaseUrl(m_server.baseUrl());
        const StartupClient::Result result = run(client);
        EXPECT_EQ(result.outcome, c.outcome) << c.update.constData();
        EXPECT_EQ(result.label, c.label);
        EXPECT_EQ(result.detail, c.detail);
        if (!c.url.isEmpty()) {
            EXPECT_EQ(result.downloadUrl.toString(), QString(c.url).replace("%1", m_server.baseUrl()));
        }
    }
}

TEST_F(StartupClientTest, StartupCheckReusesTheReportAnswer)
{
    m_server.route("/api/clients/startup", answer(200, R"({"update":{"updateAvailable":false}})"));
    StartupClient client;
    client.setConfiguredBaseUrl(m_server.baseUrl());
    QList<StartupClient::Origin> origins;
    QObject::connect(&client, &StartupClient::finished, &client,
                     [&origins](const StartupClient::Result &r) { origins.append(r.origin); });
    client.send(StartupClient::Origin::Report);
    client.send(StartupClient::Origin::Automatic); // while the report is on its way
    ASSERT_TRUE(waitUntil([&] { return origins.size() == 1; }));
    EXPECT_EQ(origins.first(), StartupClient::Origin::Automatic);
    client.send(StartupClient::Origin::Automatic); // after it: answered from the kept response
    ASSERT_TRUE(waitUntil([&] { return origins.size() == 2; }));
    EXPECT_EQ(m_server.requestsTo("/api/clients/startup").size(), 1);
    client.send(StartupClient::Origin::Manual); // "Check Now" always asks again
    ASSERT_TRUE(waitUntil([&] { return origins.size() == 3; }));
    EXPECT_EQ(m_server.requestsTo("/api/clients/startup").size(), 2);
}

TEST(UpdateResponse, AliasesInTheirOrder)
{
    UpdateInfo info;
    QString error;
    ASSERT_TRUE(parseStartupResponse(R"({"update":{
        "updateAvailable":true, "serverBuild":"7", "latestVersion":"8", "build":"9",
        "clientBuild":"3", "clientBuildNumber":"2",
        "fileUrl":"http://a/1.zip", "installerUrl":"http://a/2.exe",
        "arguments":"/S", "installArgs":"/quiet",
        "fileSha256":"BB", "checksumSha256":"AA",
        "type":"installer", "packageType":"full",
        "latest":{"fileName":"pkg.zip","sizeBytes":"1234","publishedAt":"2026-01-01","releaseNotes":"Fixes","channel":"beta"}}})",
                                     &info, &error));
    EXPECT_EQ(info.latestBuildNumber, "7");
    EXPECT_EQ(info.currentBuildNumber, "2");
    EXPECT_EQ(info.downloadUrl, "http://a/1.zip");
    EXPECT_EQ(info.installerArgs, "/quiet");
    EXPECT_EQ(info.sha256, "AA");
    EXPECT_EQ(info.updateType, "full");
    EXPECT_EQ(info.kind(), UpdateKind::Package);
    EXPECT_EQ(info.latest.sizeBytes, 1234);
    EXPECT_EQ(info.latest.channel, "beta");

    ASSERT_TRUE(parseStartupResponse(R"({"update":{"updateType":"self","downloadUrl":"http://a/x.zip"}})", &info, &error));
    EXPECT_EQ(info.kind(), UpdateKind::Executable) << "the declared type wins over the extension";
    ASSERT_TRUE(parseStartupResponse(R"({"update":{"downloadUrl":"http://a/x.ZIP"}})", &info, &error));
    EXPECT_EQ(info.kind(), UpdateKind::Package);
    EXPECT_FALSE(parseStartupResponse("", &info, &error));
}

} // namespace
