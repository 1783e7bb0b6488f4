#include "support/LoopbackHttpServer.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QTcpSocket>

LoopbackHttpServer::LoopbackHttpServer(QObject *parent)
    : QObject(parent)
{
    connect(&m_server, &QTcpServer::newConnection, this, &LoopbackHttpServer::onNewConnection);
}

bool LoopbackHttpServer::listen()
{
    return m_server.listen(QHostAddress::LocalHost, 0);
}

QString LoopbackHttpServer::baseUrl() const
{
    return QStringLiteral("http://127.0.0.1:%1").arg(m_server.serverPort());
}

void LoopbackHttpServer::route(const QByteArray &path, Handler handler)
{
    m_routes.insert(path, std::move(handler));
}

void LoopbackHttpServer::route(const QByteArray &path, const Response &response)
{
    route(path, [response](const Request &) { return response; });
}

QList<LoopbackHttpServer::Request> LoopbackHttpServer::requestsTo(const QByteArray &path) const
{
    QList<Request> matching;
    for (const Request &request : m_requests) {
        if (request.path == path)
            matching.append(request);
    }
    return matching;
}

bool LoopbackHttpServer::waitForRequests(const QByteArray &path, int count, int timeoutMs) const
{
    QDeadlineTimer deadline(timeoutMs);
    while (requestsTo(path).size() < count) {
        if (deadline.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    }
    return true;
}

void LoopbackHttpServer::onNewConnection()
{
    while (QTcpSocket *socket = m_server.nextPendingConnection()) {
        connect(socket, &QTcpSocket::readyRead, this, [this, socket] { tryServe(socket); });
        connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
    }
}

void LoopbackHttpServer::tryServe(QTcpSocket *socket)
{
    if (socket->property("served").toBool())
        return;
    QByteArray buffer = socket->property("buffer").toByteArray() + socket->readAll();
    socket->setProperty("buffer", buffer);
    const qsizetype headerEnd = buffer.indexOf("\r\n\r\n");
    if (headerEnd < 0)
        return;
    Request request;
    const QList<QByteArray> lines = buffer.left(headerEnd).split('\n');
    const QList<QByteArray> requestLine = lines.value(0).trimmed().split(' ');
    request.method = requestLine.value(0);
    request.path = requestLine.value(1).split('?').value(0);
    for (qsizetype i = 1; i < lines.size(); ++i) {
        const qsizetype colon = lines[i].indexOf(':');
        if (colon > 0)
            request.headers.insert(lines[i].left(colon).trimmed().toLower(), lines[i].mid(colon + 1).trimmed());
    }
    const qsizetype length = request.headers.value("content-length", "0").toLongLong();
    if (buffer.size() - headerEnd - 4 < length)
        return; // the body is still coming
    request.body = buffer.mid(headerEnd + 4, length);
    socket->setProperty("served", true);
    m_requests.append(request);

    const auto handler = m_routes.constFind(request.path);
    Response response;
    if (handler == m_routes.constEnd()) {
        response.status = 404;
        response.body = "not found";
    } else {
        response = (*handler)(request);
    }
    if (response.neverAnswer)
        return;
    QByteArray head = "HTTP/1.1 " + QByteArray::number(response.status) + " Status\r\n";
    head += "Content-Type: " + response.contentType + "\r\n";
    head += "Content-Length: "
            + QByteArray::number(response.announcedLength >= 0 ? response.announcedLength : response.body.size()) + "\r\n";
    for (const auto &[name, value] : response.headers)
        head += name + ": " + value + "\r\n";
    head += "Connection: close\r\n\r\n";
    socket->write(head + response.body);
    socket->flush();
    if (response.announcedLength < 0)
        socket->disconnectFromHost();
}
