#include "net/UpdateDownloader.h"

#include "net/ApiConfig.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QTemporaryDir>

namespace vg::net {
namespace {

// The extension of the offered file, from its name in "latest" or from the URL.
QString offeredExtension(const UpdateInfo &update, const QUrl &url)
{
    QString name = update.latest.fileName.isEmpty() ? url.fileName() : QFileInfo(update.latest.fileName).fileName();
    const QString suffix = QFileInfo(name).suffix().toLower();
    // Only a plain short extension becomes part of our file name.
    for (const QChar c : suffix) {
        if (!c.isLetterOrNumber())
            return {};
    }
    return suffix.size() <= 8 ? suffix : QString();
}

QString safeBuildText(const QString &build)
{
    QString text;
    for (const QChar c : build) {
        if (c.isLetterOrNumber() || c == QLatin1Char('.') || c == QLatin1Char('_'))
            text += c;
    }
    return text.left(32).isEmpty() ? QStringLiteral("unknown") : text.left(32);
}

} // namespace

UpdateDownloader::UpdateDownloader(QNetworkAccessManager *network, UpdateHistoryReporter *history, QObject *parent)
    : QObject(parent)
    , m_network(network)
    , m_history(history)
    , m_stallTimeoutMs(kDownloadStallTimeoutMs)
{
}

UpdateDownloader::~UpdateDownloader()
{
    if (m_reply) {
        m_reply->disconnect(this);
        m_reply->abort();
    }
}

void UpdateDownloader::start(const Request &request)
{
    if (m_reply)
        return;
    m_request = request;
    m_received = 0;
    m_total = request.update.latest.sizeBytes > 0 ? request.update.latest.sizeBytes : 0;
    m_reportedQuarter = 0;
    m_canceled = false;
    m_writeError.clear();

    m_folder = request.folder;
    if (m_folder.isEmpty()) {
        QTemporaryDir dir(QDir(QDir::tempPath()).filePath(QStringLiteral("vantreoguide-update-XXXXXX")));
        if (dir.isValid()) {
            dir.setAutoRemove(false);
            m_folder = dir.path();
        }
    }
    if (m_folder.isEmpty() || !QDir().mkpath(m_folder)) {
        fail(tr("Could not create a temporary directory for the update."), QStringLiteral("download_failed"));
        return;
    }
    m_file.setFileName(QDir(m_folder).filePath(finalFileName() + QStringLiteral(".download")));
    if (!m_file.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        fail(tr("Could not write update file: %1").arg(QDir::toNativeSeparators(m_file.fileName())),
             QStringLiteral("download_failed"));
        return;
    }
    report(QStringLiteral("download_started"));
    Q_EMIT logLine(QStringLiteral("Downloading update from %1").arg(request.url.toString()));

    QNetworkRequest networkRequest(request.url);
    networkRequest.setHeader(QNetworkRequest::UserAgentHeader, userAgent(currentBuildInfo()));
    networkRequest.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::NoLessSafeRedirectPolicy);
    networkRequest.setMaximumRedirectsAllowed(kMaxRedirects);
    // The time-out counts from the last byte received, so a slow link still finishes.
    networkRequest.setTransferTimeout(m_stallTimeoutMs);
    m_reply = m_network->get(networkRequest);
    connect(m_reply, &QNetworkReply::readyRead, this, &UpdateDownloader::onReadyRead);
    // Progress is counted here from the bytes written: the reply's own progress signal is
    // rate-limited and may say nothing before a stall.
    connect(m_reply, &QNetworkReply::metaDataChanged, this, [this] {
        const qint64 length = m_reply->header(QNetworkRequest::ContentLengthHeader).toLongLong();
        if (length > 0)
            m_total = length;
        if (m_total > kMaxDownloadBytes) {
            m_writeError = QStringLiteral("The update file is larger than %1 bytes.").arg(kMaxDownloadBytes);
            m_reply->abort();
        }
    });
    connect(m_reply, &QNetworkReply::finished, this, &UpdateDownloader::onFinished);
}

void UpdateDownloader::cancel()
{
    if (!m_reply)
        return;
    m_canceled = true;
    m_reply->abort(); // finishes the reply, which reports the cancel
}

void UpdateDownloader::onReadyRead()
{
    const int status = m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    if (status >= 300 || !m_writeError.isEmpty())
        return; // an error page is not the update; onFinished reports it
    const QByteArray chunk = m_reply->readAll();
    if (m_received + chunk.size() > kMaxDownloadBytes) {
        m_writeError = QStringLiteral("The update file is larger than %1 bytes.").arg(kMaxDownloadBytes);
        m_reply->abort();
        return;
    }
    if (m_file.write(chunk) != chunk.size()) {
        m_writeError = m_file.errorString();
        m_reply->abort();
        return;
    }
    m_received += chunk.size();
    onProgress();
}

void UpdateDownloader::onProgress()
{
    Q_EMIT progress(m_received, m_total);
    if (m_total > 0) {
        const int quarter = int(qMin<qint64>(4, m_received * 4 / m_total));
        if (quarter > m_reportedQuarter && quarter < 4) {
            m_reportedQuarter = quarter;
            report(QStringLiteral("downloading"));
        }
    }
}

void UpdateDownloader::onFinished()
{
    QNetworkReply *reply = m_reply;
    m_reply = nullptr;
    reply->deleteLater();
    if (reply->isReadable() && reply->bytesAvailable() > 0 && reply->error() == QNetworkReply::NoError) {
        m_reply = reply; // drain the last chunk through the same checks
        onReadyRead();
        m_reply = nullptr;
    }
    const int status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    if (m_canceled) {
        fail(tr("Update download canceled."), QStringLiteral("skipped"));
        return;
    }
    if (!m_writeError.isEmpty()) {
        fail(tr("Could not write update file: %1").arg(m_writeError), QStringLiteral("download_failed"));
        return;
    }
    if (status >= 400 || reply->error() != QNetworkReply::NoError) {
        const QString reason = status >= 400 ? QStringLiteral("HTTP %1").arg(status) : reply->errorString();
        fail(tr("Update download failed: %1").arg(reason), QStringLiteral("download_failed"));
        return;
    }
    complete();
}

void UpdateDownloader::complete()
{
    if (!m_file.flush()) {
        fail(tr("Could not write update file: %1").arg(m_file.errorString()), QStringLiteral("download_failed"));
        return;
    }
    m_file.close();
    const QString finalPath = QDir(m_folder).filePath(finalFileName());
    QFile::remove(finalPath);
    if (!QFile::rename(m_file.fileName(), finalPath)) {
        fail(tr("Could not finalize the update file: %1").arg(QDir::toNativeSeparators(finalPath)),
             QStringLiteral("download_failed"));
        return;
    }
    const QString expected = m_request.update.sha256.trimmed();
    if (expected.isEmpty()) {
        Q_EMIT logLine(QStringLiteral("Warning: the update server sent no SHA-256; the update is used unverified."));
    } else {
        bool matches = false;
        QString error;
        const bool read = verifySha256(finalPath, expected, &matches, &error);
        if (!read || !matches) {
            QFile::remove(finalPath); // never leave an unverified file where it could be applied
            fail(read ? tr("Update checksum mismatch.") : error, QStringLiteral("download_failed"));
            return;
        }
    }
    if (m_total <= 0)
        m_total = m_received;
    report(QStringLiteral("downloaded"));
    const QString message = m_request.update.mandatory ? tr("Mandatory update downloaded.") : tr("Download complete.");
    Q_EMIT logLine(message);
    Q_EMIT finished(true, finalPath, m_folder, message);
}

bool UpdateDownloader::verifySha256(const QString &path, const QString &expected, bool *matches, QString *error)
{
    *matches = false;
    QFile file(path);
    QCryptographicHash hash(QCryptographicHash::Sha256);
    if (!file.open(QIODevice::ReadOnly) || !hash.addData(&file)) {
        if (error)
            *error = tr("Could not verify the update checksum.");
        return false;
    }
    *matches = QString::fromLatin1(hash.result().toHex()).compare(expected.trimmed(), Qt::CaseInsensitive) == 0;
    return true;
}

void UpdateDownloader::fail(const QString &message, const QString &historyStatus)
{
    if (m_file.isOpen())
        m_file.close();
    if (!m_file.fileName().isEmpty())
        QFile::remove(m_file.fileName());
    report(historyStatus, message);
    Q_EMIT logLine(message);
    Q_EMIT finished(false, QString(), m_folder, message);
}

QString UpdateDownloader::finalFileName() const
{
    return updateFileName(safeBuildText(m_request.update.latestBuildNumber),
                          offeredExtension(m_request.update, m_request.url));
}

void UpdateDownloader::report(const QString &status, const QString &error)
{
    if (!m_history)
        return;
    UpdateHistoryRecord record;
    record.status = status;
    record.fromBuildNumber = m_request.fromBuildNumber;
    record.toBuildNumber = m_request.update.latestBuildNumber;
    record.downloadUrl = m_request.url.toString();
    record.downloadedBytes = m_received;
    record.totalBytes = m_total;
    record.errorMessage = error;
    m_history->report(record);
}

} // namespace vg::net
