#include "project/ProjectFile.h"
#include "project/ZipArchive.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <zip.h>

namespace {

struct Entry {
    QByteArray name;
    QByteArray data;
    quint32 unixMode = 0; // 0: none recorded
};

void writeZip(const QString &zipPath, const QList<Entry> &entries)
{
    int code = 0;
    zip_t *z = zip_open(QFile::encodeName(zipPath).constData(), ZIP_CREATE | ZIP_TRUNCATE, &code);
    ASSERT_NE(z, nullptr);
    QList<QByteArray> keep; // libzip reads the buffers at close
    keep.reserve(entries.size());
    for (const Entry &e : entries) {
        keep.append(e.data);
        zip_source_t *src = zip_source_buffer(z, keep.last().constData(), zip_uint64_t(keep.last().size()), 0);
        const zip_int64_t index = zip_file_add(z, e.name.constData(), src, ZIP_FL_ENC_UTF_8);
        ASSERT_GE(index, 0) << e.name.constData();
        if (e.unixMode)
            zip_file_set_external_attributes(z, zip_uint64_t(index), 0, ZIP_OPSYS_UNIX, e.unixMode << 16);
    }
    ASSERT_EQ(zip_close(z), 0);
}

QStringList treeOf(const QString &folder)
{
    QStringList names;
    QDir dir(folder);
    for (const QFileInfo &info : dir.entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System)) {
        names.append(info.fileName());
        if (info.isDir() && !info.isSymLink()) {
            for (const QString &below : treeOf(info.filePath()))
                names.append(info.fileName() + QLatin1Char('/') + below);
        }
    }
    names.sort();
    return names;
}

} // namespace

TEST(HostileImport, EntriesThatAreNoFileNameOrLinksAreRefusedBeforeWriting)
{
    QTemporaryDir tmp;
    const QString zipPath = tmp.filePath(QStringLiteral("bundle.zip"));
    const QString dest = tmp.filePath(QStringLiteral("import"));
    // The good entry comes first: a refusal must still leave nothing behind.
    const QList<QList<Entry>> archives = {
        {{"project.vgs", "x"}, {".", "dot"}},
        {{"project.vgs", "x"}, {"a/./b.txt", "dot inside"}},
        {{"project.vgs", "x"}, {"a//b.txt", "empty part"}},
        {{"project.vgs", "x"}, {"escape", "/etc", 0120777}}, // a symbolic link entry
    };
    for (const QList<Entry> &entries : archives) {
        writeZip(zipPath, entries);
        QString error;
        EXPECT_FALSE(vg::zip::extractArchive(zipPath, dest, false, &error)) << entries.last().name.constData();
        EXPECT_TRUE(error.startsWith(QStringLiteral("ZIP extraction failed."))) << error.toStdString();
        EXPECT_FALSE(QFileInfo::exists(dest)) << entries.last().name.constData();
    }
}

TEST(HostileImport, ABombIsRefusedAgainstTheLimitBeforeWriting)
{
    QTemporaryDir tmp;
    const QString zipPath = tmp.filePath(QStringLiteral("bomb.zip"));
    writeZip(zipPath, {{"project.vgs", "x"}, {"zeros.bin", QByteArray(24 << 20, '\0')}});
    ASSERT_LT(QFileInfo(zipPath).size(), 1 << 20);
    const QString dest = tmp.filePath(QStringLiteral("import"));
    QDir().mkpath(dest);
    QString error;
    EXPECT_FALSE(vg::zip::extractArchive(zipPath, dest, false, &error, {}, qint64(8) << 20));
    EXPECT_TRUE(error.contains(QStringLiteral("more than"))) << error.toStdString();
    EXPECT_TRUE(treeOf(dest).isEmpty()) << treeOf(dest).join(QLatin1Char(' ')).toStdString();
    // Under the limit it unpacks.
    EXPECT_TRUE(vg::zip::extractArchive(zipPath, dest, false, &error, {}, qint64(32) << 20)) << error.toStdString();
    EXPECT_EQ(QFileInfo(dest + QStringLiteral("/zeros.bin")).size(), 24 << 20);
}

TEST(HostileImport, ALinkInsideTheImportFolderIsNotFollowedAndPartialOutputGoes)
{
    QTemporaryDir tmp;
    const QString outside = tmp.filePath(QStringLiteral("outside"));
    QDir().mkpath(outside);
    const QString dest = tmp.filePath(QStringLiteral("import"));
    QDir().mkpath(dest);
    ASSERT_TRUE(QFile::link(outside, dest + QStringLiteral("/sub")));
    // A link to a file outside, named like an entry: replaced, never written through.
    QFile victim(outside + QStringLiteral("/victim.txt"));
    ASSERT_TRUE(victim.open(QIODevice::WriteOnly));
    victim.write("untouched");
    victim.close();
    ASSERT_TRUE(QFile::link(victim.fileName(), dest + QStringLiteral("/notes.txt")));

    const QString zipPath = tmp.filePath(QStringLiteral("bundle.zip"));
    writeZip(zipPath, {{"project.vgs", "project"}, {"new/deep/a.txt", "a"}, {"sub/evil.txt", "evil"}});
    QString error;
    EXPECT_FALSE(vg::zip::extractArchive(zipPath, dest, true, &error));
    EXPECT_TRUE(QDir(outside).entryList(QDir::Files) == QStringList{QStringLiteral("victim.txt")});
    // What the failed import wrote is gone; what was there before stays.
    EXPECT_EQ(treeOf(dest), (QStringList{QStringLiteral("notes.txt"), QStringLiteral("sub")}));

    writeZip(zipPath, {{"project.vgs", "project"}, {"notes.txt", "from the bundle"}});
    ASSERT_TRUE(vg::zip::extractArchive(zipPath, dest, true, &error)) << error.toStdString();
    QFile notes(dest + QStringLiteral("/notes.txt"));
    EXPECT_FALSE(QFileInfo(notes.fileName()).isSymLink());
    ASSERT_TRUE(notes.open(QIODevice::ReadOnly));
    EXPECT_EQ(notes.readAll(), QByteArray("from the bundle"));
    ASSERT_TRUE(victim.open(QIODevice::ReadOnly));
    EXPECT_EQ(victim.readAll(), QByteArray("untouched"));
}

TEST(HostileImport, TheChosenFolderMayItselfBeReachedThroughALink)
{
    QTemporaryDir tmp;
    const QString real = tmp.filePath(QStringLiteral("real"));
    QDir().mkpath(real);
    const QString link = tmp.filePath(QStringLiteral("link"));
    ASSERT_TRUE(QFile::link(real, link));
    const QString zipPath = tmp.filePath(QStringLiteral("bundle.zip"));
    writeZip(zipPath, {{"project.vgs", "project"}, {"source/logo.png", "png"}});
    QString error;
    ASSERT_TRUE(vg::zip::extractArchive(zipPath, link, false, &error)) << error.toStdString();
    EXPECT_EQ(treeOf(real), (QStringList{QStringLiteral("project.vgs"), QStringLiteral("source"),
                                         QStringLiteral("source/logo.png")}));
}

TEST(HostileImport, ProgressReachesTheTotalAndCancelRemovesEverything)
{
    QTemporaryDir tmp;
    QList<Entry> entries;
    for (int i = 0; i < 200; ++i)
        entries.append({QStringLiteral("d%1/f%2.txt").arg(i % 7).arg(i).toUtf8(), QByteArray(1000, char('a' + i % 26))});
    const QString zipPath = tmp.filePath(QStringLiteral("many.zip"));
    writeZip(zipPath, entries);
    const QString dest = tmp.filePath(QStringLiteral("import"));
    qint64 lastDone = -1, lastTotal = -1;
    int calls = 0;
    QString error;
    ASSERT_TRUE(vg::zip::extractArchive(zipPath, dest, false, &error, [&](qint64 done, qint64 total) {
        EXPECT_GE(done, lastDone);
        lastDone = done;
        lastTotal = total;
        ++calls;
        return true;
    })) << error.toStdString();
    EXPECT_EQ(lastTotal, 200000);
    EXPECT_EQ(lastDone, 200000);
    EXPECT_GE(calls, 200); // at least once an entry, so many small entries still report

    const QString second = tmp.filePath(QStringLiteral("cancelled"));
    EXPECT_FALSE(vg::zip::extractArchive(zipPath, second, false, &error,
                                         [&](qint64 done, qint64) { return done < 50000; }));
    EXPECT_FALSE(QFileInfo::exists(second));
}

TEST(HostileSave, StaleCopiesOfTheSameTargetAreRemovedOnTheNextSave)
{
    QTemporaryDir tmp;
    const QString target = tmp.filePath(QStringLiteral("target.vgs"));
    auto make = [&](const QString &name, int ageSecs) {
        QFile f(tmp.filePath(name));
        EXPECT_TRUE(f.open(QIODevice::WriteOnly));
        f.write("partial");
        f.close();
        EXPECT_TRUE(f.open(QIODevice::ReadWrite));
        f.setFileTime(QDateTime::currentDateTimeUtc().addSecs(-ageSecs), QFileDevice::FileModificationTime);
    };
    make(QStringLiteral("target.vgs.aB3xY9"), 3600);  // left by a killed save
    make(QStringLiteral("target.vgs.Qq12Zz"), 0);     // a save running right now
    make(QStringLiteral("other.vgs.aB3xY9"), 3600);   // another target's
    make(QStringLiteral("target.vgs.bak"), 3600);     // not a save copy
    make(QStringLiteral("target.vgs.aB3xY"), 3600);   // not a save copy

    QList<GuideSettings> guides{GuideSettings()};
    QString error;
    ASSERT_TRUE(saveProjectFile(target, guides, 0, &error)) << error.toStdString();
    const QStringList left = QDir(tmp.path()).entryList(QDir::Files, QDir::Name);
    EXPECT_EQ(left, (QStringList{QStringLiteral("other.vgs.aB3xY9"), QStringLiteral("target.vgs"),
                                 QStringLiteral("target.vgs.Qq12Zz"), QStringLiteral("target.vgs.aB3xY"),
                                 QStringLiteral("target.vgs.bak")}));
}

TEST(HostileImport, LinksNamedLikeEntriesAreListedAsWhatTheImportReplaces)
{
    QTemporaryDir tmp;
    const QString dest = tmp.filePath(QStringLiteral("import"));
    QDir().mkpath(dest);
    ASSERT_TRUE(QFile::link(tmp.filePath(QStringLiteral("nowhere")), dest + QStringLiteral("/project.vgs")));
    ASSERT_TRUE(QFile::link(tmp.path(), dest + QStringLiteral("/notes.txt")));
    const QString zipPath = tmp.filePath(QStringLiteral("bundle.zip"));
    writeZip(zipPath, {{"project.vgs", "project"}, {"notes.txt", "n"}, {"fresh.txt", "f"}});
    QString error;
    QStringList existing = vg::zip::existingFilesFor(zipPath, dest, &error);
    existing.sort();
    EXPECT_EQ(existing, (QStringList{dest + QStringLiteral("/notes.txt"), dest + QStringLiteral("/project.vgs")}));
}
