#include "project/ProjectBackups.h"

#include <QDir>
#include <QFileInfo>

namespace vg::backups {

QString backupFolderFor(const QString &projectFile)
{
    return QFileInfo(projectFile).absoluteDir().filePath(QStringLiteral("backup"));
}

QString backupBaseName(const QString &projectFile)
{
    const QString base = QFileInfo(projectFile).completeBaseName();
    return projectFile.isEmpty() || base.isEmpty() ? QStringLiteral("VantreoGuideSettings") : base;
}

QString nextBackupPath(const QString &folder, const QString &baseName, const QDateTime &now)
{
    const QDir dir(folder);
    const QString stamp = now.toString(QStringLiteral("yyyyMMdd_HHmmss"));
    QString path = dir.filePath(QStringLiteral("%1_backup_%2.vgs").arg(baseName, stamp));
    for (int counter = 1; QFileInfo::exists(path); ++counter)
        path = dir.filePath(QStringLiteral("%1_backup_%2_%3.vgs").arg(baseName, stamp).arg(counter));
    return path;
}

int pruneBackups(const QString &folder)
{
    const QFileInfoList files = QDir(folder).entryInfoList({QStringLiteral("*_backup_*.vgs")}, QDir::Files,
                                                           QDir::Time); // newest first
    int removed = 0;
    for (int i = kKeptBackups; i < files.size(); ++i) {
        if (QFile::remove(files.at(i).absoluteFilePath()))
            ++removed;
    }
    return removed;
}

} // namespace vg::backups
