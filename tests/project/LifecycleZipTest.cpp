#include "project/ZipArchive.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <list>

#include <zip.h>

namespace {

void writeFile(const QString &path, const QByteArray &bytes)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile f(path);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(bytes);
}

QByteArray readFile(const QString &path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

// Builds a ZIP with raw entry names, as a hostile or foreign tool might.
void writeRawZip(const QString &zipPath, const QList<QPair<QByteArray, QByteArray>> &entries)
{
    int code = 0;
    zip_t *z = zip_open(QFile::encodeName(zipPath).constData(), ZIP_CREATE | ZIP_TRUNCATE, &code);
    ASSERT_NE(z, nullptr);
    // libzip reads the entries' bytes at close, so they are held until then.
    std::list<QByteArray> kept;
    for (const auto &e : entries) {
        const QByteArray &bytes = kept.emplace_back(e.second);
        zip_source_t *src = zip_source_buffer(z, bytes.constData(), zip_uint64_t(bytes.size()), 0);
        ASSERT_GE(zip_file_add(z, e.first.constData(), src, ZIP_FL_ENC_UTF_8), 0);
    }
    ASSERT_EQ(zip_close(z), 0);
}

} // namespace

TEST(LifecycleZip, FolderRoundTripKeepsTreeAndBytes)
{
    QTemporaryDir tmp;
    const QString src = tmp.filePath(QStringLiteral("work"));
    writeFile(src + QStringLiteral("/project.vgs"), QByteArray("VGS\x00\x01", 5));
    writeFile(src + QStringLiteral("/source/logo.png"), QByteArray(70000, 'x'));
    const QString zipPath = tmp.filePath(QStringLiteral("bundle.zip"));
    QString error;
    ASSERT_TRUE(vg::zip::compressFolderContents(src, zipPath, &error)) << error.toStdString();

    QStringList entries;
    ASSERT_TRUE(vg::zip::listProjectEntries(zipPath, &entries, &error));
    EXPECT_EQ(entries, QStringList{QStringLiteral("project.vgs")});

    const QString dest = tmp.filePath(QStringLiteral("import"));
    ASSERT_TRUE(vg::zip::extractArchive(zipPath, dest, false, &error)) << error.toStdString();
    EXPECT_EQ(readFile(dest + QStringLiteral("/project.vgs")), QByteArray("VGS\x00\x01", 5));
    EXPECT_EQ(readFile(dest + QStringLiteral("/source/logo.png")).size(), 70000);
}

TEST(LifecycleZip, EmptyOrMissingFolderIsRefusedWithItsText)
{
    QTemporaryDir tmp;
    QString error;
    EXPECT_FALSE(vg::zip::compressFolderContents(tmp.filePath(QStringLiteral("nope")), tmp.filePath(QStringLiteral("a.zip")), &error));
    EXPECT_TRUE(error.startsWith(QStringLiteral("Package folder does not exist:")));
    EXPECT_FALSE(vg::zip::compressFolderContents(tmp.path(), QString(), &error));
    EXPECT_TRUE(error == QStringLiteral("Package folder is empty.") || error == QStringLiteral("ZIP file path is empty."));
}

TEST(LifecycleZip, EntryClimbingOutIsRefusedAndNothingIsWritten)
{
    QTemporaryDir tmp;
    const QString zipPath = tmp.filePath(QStringLiteral("evil.zip"));
    writeRawZip(zipPath, {{"good.vgs", "ok"}, {"../evil.txt", "pwned"}});
    const QString dest = tmp.filePath(QStringLiteral("inside"));
    QString error;
    EXPECT_FALSE(vg::zip::extractArchive(zipPath, dest, true, &error));
    EXPECT_TRUE(error.contains(QStringLiteral("../evil.txt")));
    EXPECT_FALSE(QFileInfo::exists(tmp.filePath(QStringLiteral("evil.txt"))));
    EXPECT_FALSE(QFileInfo::exists(dest + QStringLiteral("/good.vgs")));
}

TEST(LifecycleZip, SafeEntryNames)
{
    EXPECT_TRUE(vg::zip::isSafeEntryName(QStringLiteral("a/b/c.vgs")));
    EXPECT_TRUE(vg::zip::isSafeEntryName(QStringLiteral("a..b/c")));
    EXPECT_FALSE(vg::zip::isSafeEntryName(QStringLiteral("/etc/passwd")));
    EXPECT_FALSE(vg::zip::isSafeEntryName(QStringLiteral("C:/x.txt")));
    EXPECT_FALSE(vg::zip::isSafeEntryName(QStringLiteral("a\\..\\..\\x")));
    EXPECT_FALSE(vg::zip::isSafeEntryName(QString()));
}

TEST(LifecycleZip, ExistingFilesAreKeptUnlessOverwriteIsConfirmed)
{
    QTemporaryDir tmp;
    const QString zipPath = tmp.filePath(QStringLiteral("b.zip"));
    writeRawZip(zipPath, {{"p.json", "{\"new\":1}"}});
    const QString dest = tmp.filePath(QStringLiteral("d"));
    writeFile(dest + QStringLiteral("/p.json"), "mine");
    QString error;
    EXPECT_EQ(vg::zip::existingFilesFor(zipPath, dest, &error).size(), 1);
    EXPECT_FALSE(vg::zip::extractArchive(zipPath, dest, false, &error));
    EXPECT_EQ(readFile(dest + QStringLiteral("/p.json")), QByteArray("mine"));
    EXPECT_TRUE(vg::zip::extractArchive(zipPath, dest, true, &error));
    EXPECT_EQ(readFile(dest + QStringLiteral("/p.json")), QByteArray("{\"new\":1}"));
}

TEST(LifecycleZip, OnlyJsonProjectIsListed)
{
    QTemporaryDir tmp;
    const QString zipPath = tmp.filePath(QStringLiteral("j.zip"));
    writeRawZip(zipPath, {{"readme.txt", "x"}, {"sub/Project.JSON", "{}"}, {" ", "blank"}});
    QStringList entries;
    QString error;
    ASSERT_TRUE(vg::zip::listProjectEntries(zipPath, &entries, &error));
    EXPECT_EQ(entries, QStringList{QStringLiteral("sub/Project.JSON")});
    EXPECT_FALSE(vg::zip::listProjectEntries(tmp.filePath(QStringLiteral("missing.zip")), &entries, &error));
    EXPECT_EQ(error, QStringLiteral("ZIP inspection failed."));
}
