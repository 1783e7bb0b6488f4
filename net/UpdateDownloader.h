#pragma once

#include "net/UpdateHistory.h"
#include "net/UpdateResponse.h"

#include <QFile>
#include <QObject>
#include <QPointer>
#include <QUrl>

#include <QNetworkReply>

class QNetworkAccessManager;

namespace vg::net {

// Downloads an offered update into a folder of its own, names it, and checks its SHA-256
// before anyone may use it. Every step is reported to the update history.
class UpdateDownloader : public QObject
{
    Q_OBJECT

public:
    struct Request
    {
        UpdateInfo update;
        QUrl url;               // resolved download address
        QString fromBuildNumber;
        QString folder;         // where the file goes; empty: a new temporary folder
    };

    // Larger downloads are refused: no release of this program comes near it.
    static constexpr qint64 kMaxDownloadBytes = qint64(4) * 1024 * 1024 * 1024;

    UpdateDownloader(QNetworkAccessManager *network, UpdateHistoryReporter *history, QObject *parent = nullptr);
    ~UpdateDownloader() override;

    void setStallTimeoutMs(int milliseconds) { m_stallTimeoutMs = milliseconds; }
    void start(const Request &request);
    void cancel();
    bool isRunning() const { return m_reply != nullptr; }
    // The last download ended because cancel() was called.
    bool wasCanceled() const { return m_canceled; }

    // The file's SHA-256 matches `expected` (hexadecimal, any case). False with `error`
    // "Could not verify the update checksum." when the file cannot be read.
    static bool verifySha256(const QString &path, const QString &expected, bool *matches, QString *error);

Q_SIGNALS:
    void progress(qint64 received, qint64 total);
    void logLine(const QString &line);
    // ok: `filePath` is the verified file in `folder`. Otherwise `message` says why.
    void finished(bool ok, const QString &filePath, const QString &folder, const QString &message);

private:
    void onReadyRead();
    void onProgress();
    void onFinished();
    void fail(const QString &message, const QString &historyStatus);
    void complete();
    QString finalFileName() const;
    void report(const QString &status, const QString &error = QString());

    QNetworkAccessManager *m_network;
    UpdateHistoryReporter *m_history;
    QPointer<QNetworkReply> m_reply;
    Request m_request;
    QFile m_file;
    QString m_folder;
    qint64 m_received = 0;
    qint64 m_total = 0;
    int m_reportedQuarter = 0;
    bool m_canceled = false;
    QString m_writeError;
    int m_stallTimeoutMs;
};

} // namespace vg::net
