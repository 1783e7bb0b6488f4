#include "project/RecentProjects.h"

#include <QDir>
#include <QFileInfo>

namespace vg::recent {

QStringList withOpenedFile(const QStringList &recent, const QString &path)
{
    const QString absolute = QDir::cleanPath(QFileInfo(path).absoluteFilePath());
    QStringList result{absolute};
    for (const QString &entry : recent) {
        if (QDir::cleanPath(QFileInfo(entry).absoluteFilePath()) != absolute && !entry.trimmed().isEmpty())
            result.append(entry);
    }
    while (result.size() > kMaxRecentProjects)
        result.removeLast();
    return result;
}

} // namespace vg::recent
