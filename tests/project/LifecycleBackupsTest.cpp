#include "project/ProjectBackups.h"
#include "project/RecentProjects.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace vg;

TEST(LifecycleBackups, NamesUseTimestampThenCounter)
{
    QTemporaryDir tmp;
    const QDateTime t(QDate(2026, 11, 21), QTime(14, 5, 9));
    const QString first = backups::nextBackupPath(tmp.path(), QStringLiteral("show"), t);
    EXPECT_EQ(QFileInfo(first).fileName(), QStringLiteral("show_backup_20261121_140509.vgs"));
    QFile(first).open(QIODevice::WriteOnly);
    const QString second = backups::nextBackupPath(tmp.path(), QStringLiteral("show"), t);
    EXPECT_EQ(QFileInfo(second).fileName(), QStringLiteral("show_backup_20261121_140509_1.vgs"));
    QFile(second).open(QIODevice::WriteOnly);
    EXPECT_EQ(QFileInfo(backups::nextBackupPath(tmp.path(), QStringLiteral("show"), t)).fileName(),
              QStringLiteral("show_backup_20261121_140509_2.vgs"));
}

TEST(LifecycleBackups, BaseNameAndFolder)
{
    EXPECT_EQ(backups::backupBaseName(QString()), QStringLiteral("VantreoGuideSettings"));
    EXPECT_EQ(backups::backupBaseName(QStringLiteral("/a/b/Show.v2.vgs")), QStringLiteral("Show.v2"));
    EXPECT_EQ(backups::backupFolderFor(QStringLiteral("/a/b/Show.vgs")), QStringLiteral("/a/b/backup"));
}

TEST(LifecycleBackups, ElevenBackupsLeaveTheNewestTen)
{
    QTemporaryDir tmp;
    const QDateTime base = QDateTime::currentDateTime().addDays(-1);
    QStringList made;
    for (int i = 0; i < 11; ++i) {
        const QString path = tmp.filePath(QStringLiteral("p_backup_%1.vgs").arg(i));
        QFile f(path);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write("x");
        f.flush(); // a later flush on close would stamp the time again
        f.setFileTime(base.addSecs(60 * i), QFileDevice::FileModificationTime);
        made.append(path);
    }
    QFile other(tmp.filePath(QStringLiteral("notes.vgs")));
    ASSERT_TRUE(other.open(QIODevice::WriteOnly));
    other.close();
    EXPECT_EQ(backups::pruneBackups(tmp.path()), 1);
    EXPECT_FALSE(QFileInfo::exists(made.first())); // the oldest
    for (int i = 1; i < 11; ++i)
        EXPECT_TRUE(QFileInfo::exists(made.at(i)));
    EXPECT_TRUE(QFileInfo::exists(other.fileName()));
}

TEST(LifecycleRecent, NinthFileDropsOldestAndReopenMovesToHead)
{
    QStringList recent;
    for (int i = 1; i <= 9; ++i)
        recent = recent::withOpenedFile(recent, QStringLiteral("/p/%1.vgs").arg(i));
    ASSERT_EQ(recent.size(), 8);
    EXPECT_EQ(recent.first(), QStringLiteral("/p/9.vgs"));
    EXPECT_FALSE(recent.contains(QStringLiteral("/p/1.vgs")));
    recent = recent::withOpenedFile(recent, QStringLiteral("/p/5.vgs"));
    EXPECT_EQ(recent.size(), 8);
    EXPECT_EQ(recent.first(), QStringLiteral("/p/5.vgs"));
    EXPECT_EQ(recent.count(QStringLiteral("/p/5.vgs")), 1);
}
