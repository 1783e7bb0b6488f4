#include "common/AtomicFileWrite.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSaveFile>

#include <cerrno>
#include <cstring>

namespace vg {
namespace {

// The file layer reports some failures (a full disk met at commit) without the system's
// reason; errno still holds it.
QString failureText(const QSaveFile &file, int savedErrno)
{
    const QString text = file.errorString();
    if (savedErrno != 0 && (text.isEmpty() || text == QLatin1String("Unknown error")))
        return QString::fromLocal8Bit(std::strerror(savedErrno));
    return text;
}

} // namespace

int removeStaleSaveCopies(const QString &path, int minimumAgeSecs)
{
    const QFileInfo target(path);
    const QDir folder = target.absoluteDir();
    const QRegularExpression pattern(
        QStringLiteral("^%1\\.[A-Za-z0-9]{6}$").arg(QRegularExpression::escape(target.fileName())));
    const QDateTime cutoff = QDateTime::currentDateTimeUtc().addSecs(-minimumAgeSecs);
    int removed = 0;
    const QStringList names = folder.entryList({target.fileName() + QStringLiteral(".??????")},
                                               QDir::Files | QDir::Hidden | QDir::System);
    for (const QString &name : names) {
        if (!pattern.match(name).hasMatch())
            continue;
        const QFileInfo copy(folder.filePath(name));
        if (copy.isSymLink() || !copy.isFile() || copy.lastModified().toUTC() > cutoff)
            continue;
        if (QFile::remove(copy.filePath()))
            ++removed;
    }
    return removed;
}

bool writeFileReplacing(const QString &path, const QByteArray &data, QString *error)
{
    removeStaleSaveCopies(path);
    QSaveFile file(path);
    // Unbuffered: a short write is seen at the write itself, with the system's reason.
    errno = 0;
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered)) {
        if (error)
            *error = failureText(file, errno);
        return false;
    }
    errno = 0;
    if (file.write(data) != data.size()) {
        const int saved = errno;
        if (error)
            *error = failureText(file, saved);
        file.cancelWriting();
        return false;
    }
    errno = 0;
    if (!file.commit()) {
        if (error)
            *error = failureText(file, errno);
        return false;
    }
    return true;
}

} // namespace vg
