#include "support/LoopbackHttpServer.h"
#include "support/NetTestSupport.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

#include <gtest/gtest.h>

namespace {

struct CliResult
{
    int exitCode = -1;
    QByteArray out;
    QByteArray err;
};

// Runs the command-line tool while this thread keeps serving the loopback server.
CliResult runCheckUpdate(const QStringList &args, const QProcessEnvironment &environment)
{
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(VG_BIN_DIR "/vantreoguide-cli"), QStringList{QStringLiteral("check-update")} + args);
    EXPECT_TRUE(waitUntil([&] { return process.state() == QProcess::NotRunning; }, 60000));
    return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1, process.readAllStandardOutput(),
            process.readAllStandardError()};
}

QProcessEnvironment cleanEnvironment()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char *name : {"VANTREOGUIDE_API_BASE_URL", "VANTREOGUIDE_UPDATE_URL", "VANTREOGUIDE_CLIENT_API_KEY",
                             "CLIENT_API_KEY"})
        environment.remove(QLatin1String(name));
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    return environment;
}

TEST(CheckUpdateCli, PrintsTheParsedAnswerAndFailsOnRefusal)
{
    LoopbackHttpServer server;
    ASSERT_TRUE(server.listen());
    server.route("/api/clients/startup",
                 LoopbackHttpServer::reply(200, R"({"update":{"updateAvailable":true,"serverBuildNumber":"77",
                     "fileUrl":"/files/VantreoGuide.zip","checksumSha256":"ABC","packageType":"full"}})"));

    CliResult run = runCheckUpdate({QStringLiteral("--api"), server.baseUrl()}, cleanEnvironment());
    ASSERT_EQ(run.exitCode, 0) << run.err.constData();
    const QJsonObject printed = QJsonDocument::fromJson(run.out).object();
    EXPECT_EQ(printed.value("status").toString(), "Startup API: Update Available");
    const QJsonObject update = printed.value("update").toObject();
    EXPECT_EQ(update.value("latestBuildNumber").toString(), "77");
    EXPECT_EQ(update.value("sha256").toString(), "ABC");
    EXPECT_EQ(update.value("updateType").toString(), "full");
    EXPECT_EQ(printed.value("resolvedDownloadUrl").toString(), server.baseUrl() + "/files/VantreoGuide.zip");

    // Without --api the environment names the server.
    server.route("/api/clients/startup", LoopbackHttpServer::reply(401, "{}"));
    QProcessEnvironment environment = cleanEnvironment();
    environment.insert(QStringLiteral("VANTREOGUIDE_API_BASE_URL"), server.baseUrl());
    run = runCheckUpdate({}, environment);
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(run.err.contains("Startup API: Unauthorized")) << run.err.constData();
    EXPECT_EQ(server.requestsTo("/api/clients/startup").size(), 2);

    run = runCheckUpdate({QStringLiteral("--bogus")}, cleanEnvironment());
    EXPECT_EQ(run.exitCode, 2);
}

} // namespace
