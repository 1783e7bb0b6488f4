#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QObject>
#include <QTcpServer>

#include <functional>

// A small HTTP/1.1 server on 127.0.0.1 that plays the startup/update service in tests.
// Each connection carries one request and is closed after the answer.
class LoopbackHttpServer : public QObject
{
    Q_OBJECT

public:
    struct Request
    {
        QByteArray method;
        QByteArray path;
        QHash<QByteArray, QByteArray> headers; // names in lower case
        QByteArray body;
    };

    struct Response
    {
        int status = 200;
        QByteArray body;
        QByteArray contentType = "application/json";
        QList<QPair<QByteArray, QByteArray>> headers;
        bool neverAnswer = false;   // keep the connection open and silent
        qint64 announcedLength = -1; // Content-Length when it differs from the body (stalls after it)
    };

    using Handler = std::function<Response(const Request &)>;

    static Response reply(int status, const QByteArray &body, const QByteArray &contentType = "application/json")
    {
        Response response;
        response.status = status;
        response.body = body;
        response.contentType = contentType;
        return response;
    }

    explicit LoopbackHttpServer(QObject *parent = nullptr);

    bool listen();
    // "http://127.0.0.1:<port>" without a trailing slash.
    QString baseUrl() const;
    // Answers requests for `path` (query ignored); unknown paths get 404.
    void route(const QByteArray &path, Handler handler);
    void route(const QByteArray &path, const Response &response);

    const QList<Request> &requests() const { return m_requests; }
    QList<Request> requestsTo(const QByteArray &path) const;
    // Waits (processing events) until `count` requests to `path` have arrived.
    bool waitForRequests(const QByteArray &path, int count, int timeoutMs = 5000) const;

private:
    void onNewConnection();
    void tryServe(class QTcpSocket *socket);

    QTcpServer m_server;
    QHash<QByteArray, Handler> m_routes;
    QList<Request> m_requests;
};
