#include "tools/mediaserver-standin/MediaServerStandIn.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkDatagram>
#include <QTcpServer>
#include <QTcpSocket>
#include <QThread>
#include <QUdpSocket>
#include <QtEndian>

namespace {

// Bounds on what a client may announce, so a hostile header cannot exhaust memory.
constexpr int kMaxFiles = 4096;
constexpr qint64 kMaxFileBytes = qint64(4) << 30;
constexpr qint64 kMaxMemoryBytes = qint64(1) << 30;

} // namespace

struct MediaServerStandIn::Upload {
    QPointer<QTcpSocket> socket;
    QByteArray buffer;
    qint64 headerBytes = -1;
    QStringList names;
    QList<qint64> sizes;
    int current = 0;
    qint64 receivedOfCurrent = 0;
    QByteArray bytes;
    std::unique_ptr<QFile> file;
    bool headerDone = false;
    bool failed = false;
};

MediaServerStandIn::MediaServerStandIn(QObject *parent) : QObject(parent) {}
MediaServerStandIn::~MediaServerStandIn() = default;

bool MediaServerStandIn::listen(const QHostAddress &address, quint16 udpPort, quint16 controlPort, quint16 dataPort,
                                QString *error)
{
    m_udp = new QUdpSocket(this);
    m_control = new QTcpServer(this);
    m_data = new QTcpServer(this);
    if (!m_udp->bind(address, udpPort)) {
        *error = QStringLiteral("UDP port %1: %2").arg(udpPort).arg(m_udp->errorString());
        return false;
    }
    if (!m_control->listen(address, controlPort) || !m_data->listen(address, dataPort)) {
        *error = QStringLiteral("TCP ports %1/%2: %3 %4")
                     .arg(controlPort)
                     .arg(dataPort)
                     .arg(m_control->errorString(), m_data->errorString());
        return false;
    }
    connect(m_udp, &QUdpSocket::readyRead, this, &MediaServerStandIn::readDatagrams);
    connect(m_control, &QTcpServer::newConnection, this, &MediaServerStandIn::acceptControl);
    connect(m_data, &QTcpServer::newConnection, this, &MediaServerStandIn::acceptData);
    return true;
}

quint16 MediaServerStandIn::udpPort() const { return m_udp ? m_udp->localPort() : 0; }
quint16 MediaServerStandIn::controlPort() const { return m_control ? m_control->serverPort() : 0; }
quint16 MediaServerStandIn::dataPort() const { return m_data ? m_data->serverPort() : 0; }

void MediaServerStandIn::setReply(Reply reply)
{
    QMutexLocker lock(&m_mutex);
    m_reply = reply;
}

void MediaServerStandIn::setSaveFolder(const QString &folder)
{
    QMutexLocker lock(&m_mutex);
    m_saveFolder = folder;
}

QList<QByteArray> MediaServerStandIn::datagrams() const
{
    QMutexLocker lock(&m_mutex);
    return m_datagrams;
}

QList<QByteArray> MediaServerStandIn::controlRequests() const
{
    QMutexLocker lock(&m_mutex);
    return m_requests;
}

QList<MediaServerStandIn::ReceivedFile> MediaServerStandIn::files() const
{
    QMutexLocker lock(&m_mutex);
    return m_files;
}

QByteArray MediaServerStandIn::lastHeader() const
{
    QMutexLocker lock(&m_mutex);
    return m_lastHeader;
}

int MediaServerStandIn::completedUploads() const
{
    QMutexLocker lock(&m_mutex);
    return m_completed;
}

void MediaServerStandIn::readDatagrams()
{
    while (m_udp->hasPendingDatagrams()) {
        const QByteArray data = m_udp->receiveDatagram().data();
        {
            QMutexLocker lock(&m_mutex);
            m_datagrams.append(data);
        }
        emit datagramReceived(data);
    }
}

void MediaServerStandIn::acceptControl()
{
    while (QTcpSocket *socket = m_control->nextPendingConnection()) {
        m_lastControl = socket;
        connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        connect(socket, &QTcpSocket::readyRead, this, [this, socket] {
            // One request a line; a line is bounded so a client cannot grow it forever.
            while (socket->canReadLine() || socket->bytesAvailable() > 65536) {
                const QByteArray line = socket->readLine(65536).trimmed();
                {
                    QMutexLocker lock(&m_mutex);
                    m_requests.append(line);
                }
                emit controlRequestReceived(line);
            }
        });
    }
}

void MediaServerStandIn::acceptData()
{
    while (QTcpSocket *socket = m_data->nextPendingConnection()) {
        m_upload = std::make_unique<Upload>();
        m_upload->socket = socket;
        connect(socket, &QTcpSocket::readyRead, this, [this, socket] { readData(socket); });
        connect(socket, &QTcpSocket::disconnected, this, [this, socket] {
            readData(socket);
            socket->deleteLater();
        });
    }
}

bool MediaServerStandIn::parseHeader(Upload &upload)
{
    const QJsonObject header = QJsonDocument::fromJson(upload.buffer.left(upload.headerBytes)).object();
    const QJsonArray files = header.value(QStringLiteral("files")).toArray();
    const QJsonArray sizes = header.value(QStringLiteral("size")).toArray();
    if (files.isEmpty() || files.size() != sizes.size() || files.size() > kMaxFiles)
        return false;
    qint64 total = 0;
    for (int i = 0; i < files.size(); ++i) {
        // Only a bare file name is accepted: nothing may land outside the save folder.
        const QString name = QFileInfo(files.at(i).toString()).fileName();
        bool ok = false;
        const qint64 size = sizes.at(i).toString().toLongLong(&ok);
        if (name.isEmpty() || !ok || size < 0 || size > kMaxFileBytes)
            return false;
        total += size;
        upload.names.append(name);
        upload.sizes.append(size);
    }
    QMutexLocker lock(&m_mutex);
    m_lastHeader = upload.buffer.left(upload.headerBytes);
    return !m_saveFolder.isEmpty() || total <= kMaxMemoryBytes;
}

void MediaServerStandIn::readData(QTcpSocket *socket)
{
    if (!m_upload || m_upload->socket != socket || m_upload->failed)
        return;
    Upload &up = *m_upload;
    up.buffer += socket->readAll();
    if (up.headerBytes < 0 && up.buffer.size() >= 2) {
        up.headerBytes = qFromBigEndian<quint16>(up.buffer.constData());
        up.buffer.remove(0, 2);
    }
    if (!up.headerDone) {
        if (up.headerBytes < 0 || up.buffer.size() < up.headerBytes)
            return;
        if (!parseHeader(up)) {
            up.failed = true;
            socket->abort();
            return;
        }
        up.buffer.remove(0, up.headerBytes);
        up.headerDone = true;
    }
    const QString folder = [this] {
        QMutexLocker lock(&m_mutex);
        return m_saveFolder;
    }();
    while (up.current < up.names.size()) {
        const qint64 want = up.sizes.at(up.current) - up.receivedOfCurrent;
        const QByteArray part = up.buffer.left(want);
        up.buffer.remove(0, part.size());
        if (!folder.isEmpty()) {
            if (!up.file) {
                up.file = std::make_unique<QFile>(QDir(folder).filePath(up.names.at(up.current)));
                up.file->open(QIODevice::WriteOnly);
            }
            up.file->write(part);
        } else {
            up.bytes += part;
        }
        up.receivedOfCurrent += part.size();
        if (up.receivedOfCurrent < up.sizes.at(up.current))
            return;
        ReceivedFile file{up.names.at(up.current), up.sizes.at(up.current), up.bytes};
        up.file.reset();
        up.bytes.clear();
        up.receivedOfCurrent = 0;
        ++up.current;
        {
            QMutexLocker lock(&m_mutex);
            m_files.append(file);
        }
    }
    finishUpload(up);
}

void MediaServerStandIn::finishUpload(Upload &upload)
{
    const Reply reply = [this] {
        QMutexLocker lock(&m_mutex);
        ++m_completed;
        return m_reply;
    }();
    const QStringList names = upload.names;
    m_upload.reset();
    if (m_lastControl && reply != Reply::Silent) {
        for (const QString &name : names)
            m_lastControl->write(QJsonDocument(QJsonObject{{QStringLiteral("action"), QStringLiteral("finish")},
                                                           {QStringLiteral("file"), name}})
                                     .toJson(QJsonDocument::Compact)
                                 + '\n');
        if (reply == Reply::Complete)
            m_lastControl->write("{\"action\":\"allfinish\"}\n");
        m_lastControl->flush();
    }
    emit uploadReceived(names);
}

MediaServerStandInThread::MediaServerStandInThread() : m_thread(std::make_unique<QThread>()) {}

MediaServerStandInThread::~MediaServerStandInThread()
{
    if (m_server && m_thread->isRunning()) {
        MediaServerStandIn *server = m_server;
        QMetaObject::invokeMethod(server, [server] { delete server; }, Qt::BlockingQueuedConnection);
    }
    m_thread->quit();
    m_thread->wait(5000);
}

bool MediaServerStandInThread::start(QString *error, quint16 udpPort, quint16 controlPort, quint16 dataPort)
{
    m_server = new MediaServerStandIn;
    m_server->moveToThread(m_thread.get());
    m_thread->start();
    bool ok = false;
    QMetaObject::invokeMethod(
        m_server,
        [&] { ok = m_server->listen(QHostAddress::LocalHost, udpPort, controlPort, dataPort, error); },
        Qt::BlockingQueuedConnection);
    return ok;
}
