#pragma once

#include <QDateTime>
#include <QString>

// Naming and pruning of the automatic project backups kept in "backup" beside the project.
namespace vg::backups {

constexpr int kKeptBackups = 10;

QString backupFolderFor(const QString &projectFile);
// "VantreoGuideSettings" without a file.
QString backupBaseName(const QString &projectFile);
// "%1_backup_%2.vgs", or "%1_backup_%2_%3.vgs" with the first free counter.
QString nextBackupPath(const QString &folder, const QString &baseName, const QDateTime &now);
// Keeps the newest kKeptBackups files matching "*_backup_*.vgs"; returns how many were removed.
int pruneBackups(const QString &folder);

} // namespace vg::backups
