#include "cli/CliCommand.h"

#include "net/ApiConfig.h"
#include "net/StartupClient.h"
#include "net/UpdateResponse.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTimer>

namespace {

const CliCommand &checkUpdateCommand();

// Asks the startup API once, as the window's "Check Now" does, and prints what it answered.
int runCheckUpdate(const QStringList &args, CliContext &ctx)
{
    CliArgs parsed(args, {QStringLiteral("--api")}, {});
    if (!parsed.ok())
        return cliUsageError(ctx, checkUpdateCommand(), parsed.error());
    if (!parsed.positionals().isEmpty())
        return cliUsageError(ctx, checkUpdateCommand(), QStringLiteral("unexpected argument: %1").arg(parsed.positionals().first()));

    vg::net::StartupClient client;
    client.setConfiguredBaseUrl(parsed.value(QStringLiteral("--api")));
    client.setApplicationDir(QCoreApplication::applicationDirPath());
    vg::net::StartupClient::Result result;
    bool done = false;
    QEventLoop loop;
    QObject::connect(&client, &vg::net::StartupClient::finished, &loop, [&](const vg::net::StartupClient::Result &r) {
        result = r;
        done = true;
        loop.quit();
    });
    client.send(vg::net::StartupClient::Origin::Manual);
    // The request has its own time-out; this only guards against a reply that never ends.
    QTimer::singleShot(vg::net::kApiTimeoutMsForCli, &loop, &QEventLoop::quit);
    if (!done)
        loop.exec();
    if (!done) {
        ctx.err << "Startup API: Offline\n";
        return CliFailure;
    }

    using Outcome = vg::net::StartupClient::Outcome;
    const bool answered = result.outcome != Outcome::Offline && result.outcome != Outcome::Unauthorized
                          && result.outcome != Outcome::Rejected && result.outcome != Outcome::InvalidJson;
    if (!answered) {
        ctx.err << result.label << ": " << result.detail << "\n";
        return CliFailure;
    }
    QJsonObject printed{
        {QStringLiteral("apiBaseUrl"), client.baseUrl()},
        {QStringLiteral("status"), result.label},
        {QStringLiteral("detail"), result.detail},
        {QStringLiteral("httpStatus"), result.httpStatus},
        {QStringLiteral("update"), vg::net::toJson(result.update)},
    };
    if (result.downloadUrl.isValid())
        printed.insert(QStringLiteral("resolvedDownloadUrl"), result.downloadUrl.toString());
    ctx.out << QJsonDocument(printed).toJson(QJsonDocument::Indented);
    return CliOk;
}

const CliCommand &checkUpdateCommand()
{
    static const CliCommand command{
        QStringLiteral("check-update"),
        QStringLiteral("check-update [--api URL]"),
        QStringLiteral("Ask the startup API for an update and print its answer as JSON"),
        runCheckUpdate,
    };
    return command;
}

const CliRegistration registration(checkUpdateCommand());

} // namespace
