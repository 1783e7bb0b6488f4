#pragma once

#include <QByteArray>
#include <QHostAddress>
#include <QList>
#include <QMutex>
#include <QObject>
#include <QPointer>
#include <QString>

#include <memory>

class QTcpServer;
class QTcpSocket;
class QThread;
class QUdpSocket;

// Plays the media server: records UDP commands and the file service's control requests,
// receives uploads and answers "finish" per file and "allfinish" (or stays silent, or
// answers only "finish", as told). Recorded data may be read from any thread.
class MediaServerStandIn : public QObject
{
    Q_OBJECT
public:
    enum class Reply { Complete, Silent, FinishOnly };
    struct ReceivedFile {
        QString name;
        qint64 size = 0;
        QByteArray bytes;   // kept in memory unless a save folder is set
    };

    explicit MediaServerStandIn(QObject *parent = nullptr);
    ~MediaServerStandIn() override;

    // Ports of 0 pick free ones. Must run on the stand-in's own thread.
    bool listen(const QHostAddress &address, quint16 udpPort, quint16 controlPort, quint16 dataPort,
                QString *error);
    quint16 udpPort() const;
    quint16 controlPort() const;
    quint16 dataPort() const;

    void setReply(Reply reply);
    void setSaveFolder(const QString &folder);

    QList<QByteArray> datagrams() const;
    QList<QByteArray> controlRequests() const;
    QList<ReceivedFile> files() const;
    QByteArray lastHeader() const;     // the JSON after the 16-bit count
    int completedUploads() const;

signals:
    void datagramReceived(const QByteArray &datagram);
    void controlRequestReceived(const QByteArray &request);
    void uploadReceived(const QStringList &names);

private:
    struct Upload;
    void readDatagrams();
    void acceptControl();
    void acceptData();
    void readData(QTcpSocket *socket);
    bool parseHeader(Upload &upload);
    void finishUpload(Upload &upload);

    QUdpSocket *m_udp = nullptr;
    QTcpServer *m_control = nullptr;
    QTcpServer *m_data = nullptr;
    QPointer<QTcpSocket> m_lastControl;
    std::unique_ptr<Upload> m_upload;

    mutable QMutex m_mutex;
    Reply m_reply = Reply::Complete;
    QString m_saveFolder;
    QList<QByteArray> m_datagrams;
    QList<QByteArray> m_requests;
    QList<ReceivedFile> m_files;
    QByteArray m_lastHeader;
    int m_completed = 0;
};

// The stand-in on a thread of its own, so that a client blocking on the GUI thread is served.
class MediaServerStandInThread
{
public:
    MediaServerStandInThread();
    ~MediaServerStandInThread();
    bool start(QString *error, quint16 udpPort = 0, quint16 controlPort = 0, quint16 dataPort = 0);
    MediaServerStandIn &server() { return *m_server; }

private:
    std::unique_ptr<QThread> m_thread;
    MediaServerStandIn *m_server = nullptr;
};
