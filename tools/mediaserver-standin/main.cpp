// vantreo-server-standin: a loopback media server for dry runs of "Update LUT" and the
// UV LUT commands. Prints every command it receives and every file it stores.
#include "tools/mediaserver-standin/MediaServerStandIn.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QTextStream>

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Stand-in for the media server's command port and file service."));
    parser.addHelpOption();
    const QCommandLineOption udp(QStringLiteral("udp-port"), QStringLiteral("UDP command port (default 17779)."),
                                 QStringLiteral("port"), QStringLiteral("17779"));
    const QCommandLineOption control(QStringLiteral("control-port"), QStringLiteral("File service control port."),
                                     QStringLiteral("port"), QStringLiteral("17601"));
    const QCommandLineOption data(QStringLiteral("data-port"), QStringLiteral("File service data port."),
                                  QStringLiteral("port"), QStringLiteral("17602"));
    const QCommandLineOption folder(QStringLiteral("folder"), QStringLiteral("Where uploaded files are stored."),
                                    QStringLiteral("dir"), QDir::currentPath());
    const QCommandLineOption silent(QStringLiteral("silent"), QStringLiteral("Never answer uploads."));
    const QCommandLineOption finishOnly(QStringLiteral("finish-only"), QStringLiteral("Answer \"finish\" but never \"allfinish\"."));
    parser.addOptions({udp, control, data, folder, silent, finishOnly});
    parser.process(app);

    QTextStream out(stdout);
    MediaServerStandIn server;
    server.setSaveFolder(parser.value(folder));
    server.setReply(parser.isSet(silent)       ? MediaServerStandIn::Reply::Silent
                    : parser.isSet(finishOnly) ? MediaServerStandIn::Reply::FinishOnly
                                               : MediaServerStandIn::Reply::Complete);
    QString error;
    if (!server.listen(QHostAddress::LocalHost, quint16(parser.value(udp).toUInt()), quint16(parser.value(control).toUInt()),
                       quint16(parser.value(data).toUInt()), &error)) {
        QTextStream(stderr) << error << Qt::endl;
        return 1;
    }
    out << QStringLiteral("listening on 127.0.0.1: UDP %1, file service %2/%3, storing in %4")
               .arg(server.udpPort())
               .arg(server.controlPort())
               .arg(server.dataPort())
               .arg(QDir::toNativeSeparators(parser.value(folder)))
        << Qt::endl;
    QObject::connect(&server, &MediaServerStandIn::datagramReceived, [&out](const QByteArray &d) {
        out << "udp " << d << Qt::endl;
    });
    QObject::connect(&server, &MediaServerStandIn::controlRequestReceived, [&out](const QByteArray &r) {
        out << "control " << r << Qt::endl;
    });
    QObject::connect(&server, &MediaServerStandIn::uploadReceived, [&out](const QStringList &names) {
        out << "stored " << names.join(QStringLiteral(", ")) << Qt::endl;
    });
    return app.exec();
}
