#include "cli/CliCommand.h"

#include "net/mediaserver/MediaServerLink.h"

#include <QFileInfo>

namespace {

using namespace vg::mediaserver;

const CliCommand &sendLutCommand();

// Uploads a table to the file service's "uvlut" folder, then tells the player to load it.
int runSendLut(const QStringList &args, CliContext &ctx)
{
    CliArgs parsed(args,
                   {QStringLiteral("--server"), QStringLiteral("--player"), QStringLiteral("--port"),
                    QStringLiteral("--warp")},
                   {});
    const CliCommand &command = sendLutCommand();
    if (!parsed.ok())
        return cliUsageError(ctx, command, parsed.error());
    if (parsed.positionals().size() != 1)
        return cliUsageError(ctx, command, QStringLiteral("Give exactly one .uvlut file."));
    if (!parsed.has(QStringLiteral("--server")))
        return cliUsageError(ctx, command, QStringLiteral("Give the media server's address with --server IP."));
    const int port = parsed.intValue(QStringLiteral("--port"), 17779);
    const int warp = parsed.intValue(QStringLiteral("--warp"), 1);
    if (!parsed.ok())
        return cliUsageError(ctx, command, parsed.error());
    if (port < 1 || port > 65535)
        return cliUsageError(ctx, command, QStringLiteral("--port takes 1 to 65535."));

    const QString path = parsed.positionals().first();
    UploadOptions upload;
    upload.serverAddress = effectiveServerAddress(parsed.value(QStringLiteral("--server")));
    QString reply, error;
    if (!uploadFilesToMediaServer({path}, upload, &reply, &error)) {
        ctx.err << "Update LUT failed: " << QStringLiteral("Could not upload LUT to Vantreo Service.") << '\n'
                << error << Qt::endl;
        return CliFailure;
    }
    const QString player = effectiveServerAddress(parsed.value(QStringLiteral("--player")));
    const QByteArray datagram = mediaServerCommandDatagram(QStringLiteral("uvlut_update"), player, warp);
    if (!sendMediaServerCommand(upload.serverAddress, quint16(port), datagram, LinkCaller::MainWindow, &error)) {
        ctx.err << "Update LUT failed: " << error << Qt::endl;
        return CliFailure;
    }
    ctx.out << QStringLiteral("Updated LUT %1 to %2").arg(QFileInfo(path).fileName(), upload.serverAddress) << Qt::endl;
    ctx.out << datagram << Qt::endl;
    return CliOk;
}

const CliCommand &sendLutCommand()
{
    static const CliCommand command{
        QStringLiteral("send-lut"),
        QStringLiteral("send-lut <file.uvlut> --server IP [--player IP] [--port P] [--warp N]"),
        QStringLiteral("Uploads a UV look-up table to the media server's file service and sends uvlut_update."),
        runSendLut};
    return command;
}

const CliRegistration registration(sendLutCommand());

} // namespace
