#include "cli/CommandArguments.h"

#include <QByteArray>
#include <QStringDecoder>

#include <cstring>
#include <fcntl.h>

namespace {

bool isUtf8(const char *text)
{
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString decoded = decoder.decode(QByteArrayView(text, qsizetype(std::strlen(text))));
    return !decoder.hasError() && !decoded.contains(QChar::ReplacementCharacter);
}

} // namespace

bool decodeCommandArguments(int argc, char **argv, QStringList *arguments, QString *error)
{
    arguments->clear();
    for (int i = 0; i < argc; ++i) {
        const char *raw = argv[i];
        if (isUtf8(raw)) {
            arguments->append(QString::fromUtf8(raw));
            continue;
        }
        // A folder held open keeps the file's own name, so names beside it (a project's
        // images, an output not written yet) still resolve. Descriptors are held for the
        // life of the process: the paths below stay valid as long as it runs.
        const char *slash = std::strrchr(raw, '/');
        if (slash && slash != raw && isUtf8(slash + 1)) {
            const QByteArray folder(raw, qsizetype(slash - raw));
            const int dir = ::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
            if (dir >= 0) {
                arguments->append(QStringLiteral("/proc/self/fd/%1/%2").arg(dir).arg(QString::fromUtf8(slash + 1)));
                continue;
            }
        }
        const int fd = ::open(raw, O_RDONLY | O_CLOEXEC);
        if (fd < 0) {
            *error = QStringLiteral("The argument \"%1\" is not UTF-8 text and names no existing file; "
                                    "rename the file or give an existing one.")
                         .arg(QString::fromLocal8Bit(raw));
            return false;
        }
        arguments->append(QStringLiteral("/proc/self/fd/%1").arg(fd));
    }
    return true;
}
