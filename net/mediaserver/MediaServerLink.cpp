#include "net/mediaserver/MediaServerLink.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QHostAddress>
#include <QJsonArray>
#include <QJsonDocument>
#include <QRegularExpression>
#include <QTcpSocket>
#include <QTimer>
#include <QUdpSocket>
#include <QtEndian>

#include <algorithm>

namespace vg::mediaserver {

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("MediaServerLink", text);
}

QByteArray jsonString(const QString &text)
{
    const QByteArray array = QJsonDocument(QJsonArray{text}).toJson(QJsonDocument::Compact);
    return array.mid(1, array.size() - 2);
}

// Writes every byte: a write that makes no progress waits for the socket to drain, and
// each write is followed by a wait while bytes are pending.
bool writeAllBytes(QTcpSocket &socket, const char *data, qint64 size, int waitMs, QString *error)
{
    qint64 done = 0;
    while (done < size) {
        const qint64 n = socket.write(data + done, size - done);
        if (n < 0) {
            *error = socket.errorString();
            return false;
        }
        done += n;
        if (n == 0 && !waitWhileProcessingEvents([&] { return socket.bytesToWrite() == 0; }, waitMs)) {
            *error = socket.errorString();
            return false;
        }
        const bool drained = waitWhileProcessingEvents(
            [&] { return socket.bytesToWrite() == 0 || socket.state() != QAbstractSocket::ConnectedState; }, waitMs);
        if (socket.state() != QAbstractSocket::ConnectedState) {
            *error = socket.errorString();
            return false;
        }
        if (!drained) {
            *error = tr("The media server did not accept data within %1 ms.").arg(waitMs);
            return false;
        }
    }
    return true;
}

bool connectSocket(QTcpSocket &socket, const QHostAddress &address, quint16 port, int waitMs, QString *error)
{
    socket.connectToHost(address, port);
    const bool settled = waitWhileProcessingEvents(
        [&] {
            return socket.state() == QAbstractSocket::ConnectedState || socket.state() == QAbstractSocket::UnconnectedState;
        },
        waitMs);
    if (socket.state() == QAbstractSocket::ConnectedState)
        return true;
    *error = settled ? socket.errorString() : tr("Connecting to %1:%2 timed out.").arg(address.toString()).arg(port);
    socket.abort();
    return false;
}

bool holdsAllFinish(const QByteArray &text)
{
    static const QRegularExpression pattern(QStringLiteral("\"action\"\\s*:\\s*\"allfinish\""));
    return pattern.match(QString::fromUtf8(text)).hasMatch();
}

bool sendFiles(QTcpSocket &data, const QStringList &paths, const QByteArray &header, const UploadOptions &options,
               QString *error)
{
    if (!writeAllBytes(data, header.constData(), header.size(), options.writeWaitMs, error))
        return false;
    QByteArray chunk;
    for (const QString &path : paths) {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly)) {
            *error = tr("Could not open file for upload:\n%1").arg(path);
            return false;
        }
        while (!file.atEnd()) {
            chunk = file.read(kUploadChunkBytes);
            if (chunk.isEmpty() && file.error() != QFileDevice::NoError) {
                *error = tr("Could not open file for upload:\n%1").arg(path);
                return false;
            }
            if (!writeAllBytes(data, chunk.constData(), chunk.size(), options.writeWaitMs, error))
                return false;
        }
    }
    return true;
}

} // namespace

QString effectiveServerAddress(const QString &address)
{
    const QString trimmed = address.trimmed();
    return trimmed.isEmpty() ? QStringLiteral("127.0.0.1") : trimmed;
}

int clampedWarpEditorIndex(int index)
{
    return std::clamp(index, 1, 8);
}

QByteArray mediaServerCommandDatagram(const QString &command, const QString &playerAddress, int warpEditorIndex,
                                      std::optional<bool> enabled)
{
    QByteArray json = "{\"command\":" + jsonString(command) + ",\"target_ip\":" + jsonString(playerAddress)
                      + ",\"warpeditor_index\":" + QByteArray::number(clampedWarpEditorIndex(warpEditorIndex));
    if (enabled)
        json += ",\"enabled\":" + QByteArray(*enabled ? "true" : "false");
    return json + '}';
}

bool sendMediaServerCommand(const QString &serverAddress, quint16 port, const QByteArray &datagram, LinkCaller caller,
                            QString *error)
{
    const QString text = effectiveServerAddress(serverAddress);
    QHostAddress address;
    if (!address.setAddress(text)) {
        *error = (caller == LinkCaller::MainWindow ? tr("Invalid Vantreo Server IP: %1") : tr("Vantreo Server invalid IP: %1"))
                     .arg(text);
        return false;
    }
    QUdpSocket socket;
    if (socket.writeDatagram(datagram, address, port) != datagram.size()) {
        *error = tr("Vantreo Server UDP send failed: %1").arg(socket.errorString());
        return false;
    }
    return true;
}

bool fileTransferHeader(const QStringList &names, const QList<qint64> &sizes, QByteArray *header, QString *error)
{
    QByteArray json = "{\"files\":[";
    for (int i = 0; i < names.size(); ++i)
        json += (i ? "," : "") + jsonString(names.at(i));
    json += "],\"size\":[";
    for (int i = 0; i < sizes.size(); ++i)
        json += (i ? ",\"" : "\"") + QByteArray::number(sizes.at(i)) + '"';
    json += "]}";
    if (json.size() > kMaxHeaderBytes) {
        if (error)
            *error = tr("File transfer header is too large.");
        return false;
    }
    header->resize(2);
    qToBigEndian(quint16(json.size()), header->data());
    header->append(json);
    return true;
}

bool uploadFilesToMediaServer(const QStringList &paths, const UploadOptions &options, QString *reply, QString *error)
{
    QStringList names;
    QList<qint64> sizes;
    for (const QString &path : paths) {
        const QFileInfo info(path);
        if (!info.isFile()) {
            *error = tr("File does not exist:\n%1").arg(path);
            return false;
        }
        names.append(info.fileName());
        sizes.append(info.size());
    }
    QByteArray header;
    if (!fileTransferHeader(names, sizes, &header, error))
        return false;
    const QString serverText = effectiveServerAddress(options.serverAddress);
    QHostAddress address;
    if (!address.setAddress(serverText)) {
        *error = tr("Invalid Vantreo Server IP: %1").arg(serverText);
        return false;
    }

    QTcpSocket control;
    if (!connectSocket(control, address, options.controlPort, options.connectWaitMs, error))
        return false;
    const QByteArray request = "{\"command\":" + jsonString(options.command) + ",\"savepath\":"
                               + jsonString(options.savePath) + "}\n";
    if (!writeAllBytes(control, request.constData(), request.size(), options.writeWaitMs, error))
        return false;

    QTcpSocket data;
    if (!connectSocket(data, address, options.dataPort, options.connectWaitMs, error))
        return false;
    const bool sent = sendFiles(data, paths, header, options, error);
    data.disconnectFromHost();
    if (data.state() != QAbstractSocket::UnconnectedState)
        waitWhileProcessingEvents([&] { return data.state() == QAbstractSocket::UnconnectedState; }, kDisconnectWaitMs);
    if (!sent)
        return false;

    QByteArray received;
    waitWhileProcessingEvents(
        [&] {
            received += control.readAll();
            return holdsAllFinish(received) || control.state() != QAbstractSocket::ConnectedState;
        },
        options.replyWaitMs);
    received += control.readAll();
    if (reply)
        *reply = QString::fromUtf8(received);
    if (holdsAllFinish(received))
        return true;
    *error = received.trimmed().isEmpty()
                 ? tr("File upload finished, but MainService did not return an allfinish response.")
                 : tr("MainService response did not confirm completion:\n%1").arg(QString::fromUtf8(received));
    return false;
}

bool waitWhileProcessingEvents(const std::function<bool()> &done, int timeoutMs)
{
    QElapsedTimer timer;
    timer.start();
    while (!done()) {
        if (timer.elapsed() >= timeoutMs)
            return false;
        QEventLoop loop;
        QTimer::singleShot(std::clamp(int(timeoutMs - timer.elapsed()), 1, 5), &loop, &QEventLoop::quit);
        loop.exec();
    }
    return true;
}

} // namespace vg::mediaserver
