#include "project/ProjectFile.h"

#include "ProjectTestSupport.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#ifdef Q_OS_UNIX
#include <csignal>
#include <sys/resource.h>
#endif

namespace {

QByteArray readAll(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

#ifdef Q_OS_UNIX
// A project whose container is several megabytes, so that a write limit bites part-way.
ProjectDocument largeProject()
{
    ProjectDocument doc = makeRichProject();
    GuideSettings guide = doc.guides.first();
    guide.columns = 64;
    guide.rows = 40;
    guide.colors.clear();
    for (int i = 0; i < 64 * 40; ++i)
        guide.colors.append(QColor(QRgb(0x9e3779b9u * unsigned(i + 1)) & 0xffffff));
    for (int i = 0; i < 20; ++i)
        doc.guides.append(guide);
    return doc;
}

// Caps the size of any file this process writes, as a full disk would; restored on exit.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t bytes)
    {
        getrlimit(RLIMIT_FSIZE, &m_saved);
        m_oldHandler = std::signal(SIGXFSZ, SIG_IGN);
        rlimit limit = m_saved;
        limit.rlim_cur = bytes;
        m_ok = setrlimit(RLIMIT_FSIZE, &limit) == 0;
    }
    ~FileSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &m_saved);
        std::signal(SIGXFSZ, m_oldHandler);
    }
    bool ok() const { return m_ok; }

private:
    rlimit m_saved{};
    void (*m_oldHandler)(int) = nullptr;
    bool m_ok = false;
};
#endif

} // namespace

#ifdef Q_OS_UNIX
TEST(ProjectSaveFailure, WriteFailingPartWayKeepsTheOldFile)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("project.vgs"));
    QString error;
    const ProjectDocument original = makeRichProject();
    ASSERT_TRUE(saveProjectDocument(path, original, &error)) << error.toStdString();
    const QByteArray before = readAll(path);
    ASSERT_FALSE(before.isEmpty());

    const ProjectDocument large = largeProject();
    const qint64 limit = before.size() + 4096;
    ASSERT_GT(projectDocumentToJson(large).size() / 8, limit);
    {
        FileSizeLimit cap(rlim_t(limit + 0));
        ASSERT_TRUE(cap.ok());
        error.clear();
        EXPECT_FALSE(saveProjectDocument(path, large, &error));
    }
    EXPECT_FALSE(error.isEmpty());
    EXPECT_EQ(readAll(path), before);
    ProjectDocument back;
    ASSERT_TRUE(loadProjectDocument(path, &back, &error)) << error.toStdString();
    EXPECT_EQ(back, original);
    // No temporary file is left behind.
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden), QStringList{QStringLiteral("project.vgs")});
    // The same save succeeds without the limit.
    EXPECT_TRUE(saveProjectDocument(path, large, &error)) << error.toStdString();
}
#endif

TEST(ProjectSaveFailure, ReadOnlyFolderKeepsTheOldFile)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("project.vgs"));
    QString error;
    ASSERT_TRUE(saveProjectDocument(path, makeRichProject(), &error));
    const QByteArray before = readAll(path);
    QFile::setPermissions(dir.path(), QFileDevice::ReadOwner | QFileDevice::ExeOwner);
    QFile probe(dir.filePath(QStringLiteral("probe")));
    if (probe.open(QIODevice::WriteOnly)) {
        probe.close();
        probe.remove();
        QFile::setPermissions(dir.path(), QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
        GTEST_SKIP() << "folder permissions are not enforced for this user";
    }
    ProjectDocument changed = makeRichProject();
    changed.guides.removeLast();
    const bool saved = saveProjectDocument(path, changed, &error);
    QFile::setPermissions(dir.path(), QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    EXPECT_FALSE(saved);
    EXPECT_FALSE(error.isEmpty());
    EXPECT_EQ(readAll(path), before);
}

TEST(ProjectSaveFailure, MissingFolderReportsTheFileError)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("no/such/folder/project.vgs"));
    QString error;
    EXPECT_FALSE(saveProjectFile(path, {GuideSettings()}, 0, &error));
    EXPECT_FALSE(error.isEmpty());
    EXPECT_FALSE(QFileInfo::exists(path));
}

TEST(ProjectSaveFailure, TargetThatIsAFolderIsLeftAlone)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("taken.vgs"));
    ASSERT_TRUE(QDir().mkpath(path));
    QString error;
    EXPECT_FALSE(saveProjectFile(path, {GuideSettings()}, 0, &error));
    EXPECT_FALSE(error.isEmpty());
    EXPECT_TRUE(QFileInfo(path).isDir());
}
