#include "support/NetTestSupport.h"

#include "net/UpdateApplier.h"
#include "net/UpdateScripts.h"
#include "project/ZipArchive.h"

#include <QCryptographicHash>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QMap>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <zip.h>

#include <unistd.h>

using namespace vg::net;

namespace {

// A stand-in program: when started it appends its version to "started.txt" beside itself.
QByteArray standIn(const char *version)
{
    return QByteArray("#!/bin/sh\necho ") + version + " >> \"$(dirname \"$0\")/started.txt\"\n";
}

bool writeFile(const QString &path, const QByteArray &data, bool executable = false)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(data) != data.size())
        return false;
    file.close();
    if (executable)
        file.setPermissions(file.permissions() | QFile::ExeOwner | QFile::ExeUser);
    return true;
}

QByteArray readFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<missing>");
}

// Every entry below `folder` with its bytes and permissions, to compare folders exactly.
QMap<QString, QByteArray> snapshot(const QString &folder)
{
    QMap<QString, QByteArray> entries;
    QDirIterator it(folder, QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QFileInfo info(it.next());
        const QString name = QDir(folder).relativeFilePath(info.filePath());
        QByteArray value = QByteArray::number(int(info.permissions()), 16) + (info.isDir() ? " dir" : " file ");
        if (info.isFile())
            value += QCryptographicHash::hash(readFile(info.filePath()), QCryptographicHash::Sha256).toHex();
        entries.insert(name, value);
    }
    return entries;
}

// The process id of a process that has already exited, for scripts that need not wait.
qint64 exitedProcessId()
{
    QProcess process;
    process.start(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), QStringLiteral("exit 0")});
    process.waitForStarted();
    const qint64 pid = process.processId();
    process.waitForFinished();
    return pid;
}

class UpdateScriptTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_root.isValid());
        // Quotes, blanks and a command substitution in the path: every value must reach the
        // script as a literal.
        m_app = m_root.filePath(QStringLiteral("show's app $(touch pwned)"));
        m_updates = m_root.filePath(QStringLiteral("updates"));
        ASSERT_TRUE(QDir().mkpath(m_updates));
        ASSERT_TRUE(writeFile(exe(), standIn("v1"), true));
        ASSERT_TRUE(writeFile(app("old-library.txt"), "old"));
        ASSERT_TRUE(writeFile(app("opening-night.vgs"), "project bytes"));
        ASSERT_TRUE(writeFile(app("VantreoGuideSettings.json"), "{\"ui\":1}"));
        ASSERT_TRUE(writeFile(app("source/show.png"), "source image"));
        ASSERT_TRUE(writeFile(app("backup/opening-night.vgs.bak"), "older project"));
        ASSERT_TRUE(writeFile(app("data/table.bin"), "table"));
    }

    QString app(const QString &name) const { return QDir(m_app).filePath(name); }
    QString exe() const { return app(QStringLiteral("VantreoGuide")); }

    // Zips `files` (name → bytes; names ending in "VantreoGuide" are executable).
    QString makeZip(const QMap<QString, QByteArray> &files)
    {
        const QString staging = m_root.filePath(QStringLiteral("staging-%1").arg(m_zipCount));
        for (auto it = files.cbegin(); it != files.cend(); ++it)
            EXPECT_TRUE(writeFile(QDir(staging).filePath(it.key()), it.value(), it.key().endsWith("VantreoGuide")));
        const QString zipPath = m_root.filePath(QStringLiteral("package-%1.zip").arg(m_zipCount++));
        QString error;
        EXPECT_TRUE(vg::zip::compressFolderContents(staging, zipPath, &error)) << error.toStdString();
        return zipPath;
    }

    ApplyRequest request(const QString &file, UpdateKind kind) const
    {
        ApplyRequest r;
        r.downloadedFile = file;
        r.updateFolder = m_updates;
        r.executablePath = exe();
        r.buildNumber = QStringLiteral("42");
        r.processId = exitedProcessId();
        r.kind = kind;
        return r;
    }

    // Runs the script as the updater would, to its end; `asUser` runs it through setpriv.
    int runScript(const PreparedUpdate &prepared, const QStringList &asUser = {})
    {
        QProcess process;
        if (asUser.isEmpty())
            process.start(QStringLiteral("/bin/sh"), {prepared.scriptPath});
        else
            process.start(asUser.first(), asUser.mid(1) + QStringList{QStringLiteral("/bin/sh"), prepared.scriptPath});
        EXPECT_TRUE(process.waitForFinished(60000));
        m_scriptOutput = process.readAllStandardError();
        return process.exitCode();
    }

    bool waitForStart() const
    {
        return waitUntil([this] { return QFileInfo::exists(app("started.txt")); }, 5000);
    }

    QStringList logLines(const PreparedUpdate &prepared) const
    {
        return QString::fromUtf8(readFile(prepared.logPath)).split('\n', Qt::SkipEmptyParts);
    }

    QTemporaryDir m_root;
    QString m_app;
    QString m_updates;
    int m_zipCount = 0;
    QByteArray m_scriptOutput;
};

TEST_F(UpdateScriptTest, SingleExecutableIsReplacedAndStarted)
{
    const QString download = QDir(m_updates).filePath(QStringLiteral("VantreoGuide-42-linux-x64"));
    ASSERT_TRUE(writeFile(download, standIn("v2")));
    PreparedUpdate prepared;
    QString error;
    ASSERT_TRUE(prepareUpdate(request(download, UpdateKind::Executable), &prepared, &error)) << error.toStdString();
    EXPECT_TRUE(QFileInfo(prepared.scriptPath).fileName().startsWith("apply-update-42-"));
    EXPECT_EQ(QFileInfo(prepared.logPath).fileName(), "apply-update.log");

    ASSERT_EQ(runScript(prepared), 0) << m_scriptOutput.constData() << readFile(prepared.logPath).constData();
    EXPECT_EQ(readFile(exe()), standIn("v2"));
    EXPECT_TRUE(QFileInfo(exe()).isExecutable());
    ASSERT_TRUE(waitForStart());
    EXPECT_EQ(readFile(app("started.txt")), "v2\n");
    EXPECT_FALSE(QFileInfo::exists(prepared.scriptPath)) << "the script removes itself";
    EXPECT_FALSE(QFileInfo::exists(m_root.filePath("pwned")));
    EXPECT_FALSE(QFileInfo::exists(app("pwned")));
    const QRegularExpression stamped(QStringLiteral(R"(^\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d \S)"));
    const QStringList lines = logLines(prepared);
    ASSERT_FALSE(lines.isEmpty());
    for (const QString &line : lines)
        EXPECT_TRUE(stamped.match(line).hasMatch()) << line.toStdString();
}

TEST_F(UpdateScriptTest, PackageInOneFolderReplacesTheFolderAndKeepsProjects)
{
    const QString zip = makeZip({{"VantreoGuide-42/VantreoGuide", standIn("v2")},
                                 {"VantreoGuide-42/lib/new-library.txt", "new"},
                                 {"VantreoGuide-42/data/table.bin", "table v2"}});
    const QMap<QString, QByteArray> before = snapshot(m_app);
    PreparedUpdate prepared;
    QString error;
    ASSERT_TRUE(prepareUpdate(request(zip, UpdateKind::Package), &prepared, &error)) << error.toStdString();
    EXPECT_EQ(prepared.mode, PackageMode::Full);
    EXPECT_EQ(QFileInfo(prepared.packageRoot).fileName(), "VantreoGuide-42");
    EXPECT_TRUE(QFileInfo(prepared.scriptPath).fileName().startsWith("apply-package-update-42-"));
    EXPECT_EQ(snapshot(m_app), before) << "nothing changes before the program exits";

    ASSERT_EQ(runScript(prepared), 0) << readFile(prepared.logPath).constData();
    ASSERT_TRUE(waitForStart());
    EXPECT_EQ(readFile(app("started.txt")), "v2\n");
    EXPECT_EQ(readFile(exe()), standIn("v2"));
    EXPECT_EQ(readFile(app("lib/new-library.txt")), "new");
    EXPECT_EQ(readFile(app("data/table.bin")), "table v2");
    EXPECT_FALSE(QFileInfo::exists(app("old-library.txt"))) << "a full package replaces the folder";
    EXPECT_EQ(readFile(app("opening-night.vgs")), "project bytes");
    EXPECT_EQ(readFile(app("VantreoGuideSettings.json")), "{\"ui\":1}");
    EXPECT_EQ(readFile(app("source/show.png")), "source image");
    EXPECT_EQ(readFile(app("backup/opening-night.vgs.bak")), "older project");
    EXPECT_EQ(readFile(app("VantreoGuideUpdateBuild.txt")).trimmed(), "42");
    EXPECT_FALSE(QFileInfo::exists(QDir(m_updates).filePath("package-42"))) << "the extraction is removed";
    EXPECT_EQ(readFile(QDir(m_updates).filePath("backup-42/old-library.txt")), "old") << "the backup stays";
}

TEST_F(UpdateScriptTest, PatchPackageCopiesOverTheFolder)
{
    const QString zip = makeZip({{"data/table.bin", "patched"}, {"extra/readme.txt", "hello"}});
    PreparedUpdate prepared;
    QString error;
    ASSERT_TRUE(prepareUpdate(request(zip, UpdateKind::Package), &prepared, &error)) << error.toStdString();
    EXPECT_EQ(prepared.mode, PackageMode::Patch);
    ASSERT_EQ(runScript(prepared), 0) << readFile(prepared.logPath).constData();
    ASSERT_TRUE(waitForStart());
    EXPECT_EQ(readFile(app("started.txt")), "v1\n") << "the unchanged program is started again";
    EXPECT_EQ(readFile(app("data/table.bin")), "patched");
    EXPECT_EQ(readFile(app("extra/readme.txt")), "hello");
    EXPECT_EQ(readFile(app("old-library.txt")), "old") << "a patch deletes nothing";
}

// The copy fails half-way: the package's "source" is a file where the folder keeps a directory
// of that name, which no permission bit (even for root) lets a copy overwrite.
TEST_F(UpdateScriptTest, FailedCopyRestoresTheFolderByteForByte)
{
    const QString zip = makeZip({{"VantreoGuide", standIn("v2")},
                                 {"aaa-first.txt", "copied before the failure"},
                                 {"source", "a file where a folder is"},
                                 {"zzz-last.txt", "copied after it"}});
    const QMap<QString, QByteArray> before = snapshot(m_app);
    PreparedUpdate prepared;
    QString error;
    ASSERT_TRUE(prepareUpdate(request(zip, UpdateKind::Package), &prepared, &error)) << error.toStdString();
    EXPECT_EQ(runScript(prepared), 1);
    EXPECT_EQ(snapshot(m_app), before) << readFile(prepared.logPath).constData();
    EXPECT_FALSE(QFileInfo::exists(app("started.txt"))) << "a failed update starts nothing";
    EXPECT_FALSE(logLines(prepared).filter(QStringLiteral(" failed: Could not copy the package.")).isEmpty())
        << readFile(prepared.logPath).constData();
}

// A read-only file in the folder stops a patch half-way: the files copied before it and after
// it are taken back out and the folder is as it was, permissions included. Permissions do not
// stop root, so as root the script runs as "nobody".
TEST_F(UpdateScriptTest, ReadOnlyFileStopsTheCopyAndTheFolderIsRestored)
{
    QStringList asUser;
    if (::geteuid() == 0) {
        const QString setpriv = QStandardPaths::findExecutable(QStringLiteral("setpriv"));
        ASSERT_FALSE(setpriv.isEmpty()) << "setpriv (util-linux) runs the script without root";
        asUser = {setpriv, QStringLiteral("--reuid=65534"), QStringLiteral("--regid=65534"),
                  QStringLiteral("--clear-groups"), QStringLiteral("--")};
    }
    ASSERT_TRUE(writeFile(app("locked.cfg"), "original"));
    ASSERT_TRUE(QFile::setPermissions(app("locked.cfg"), QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther));
    const QString zip = makeZip({{"aaa-first.txt", "copied before the failure"},
                                 {"data/table.bin", "patched"},
                                 {"locked.cfg", "replacement"},
                                 {"zzz-last.txt", "copied after it"}});
    PreparedUpdate prepared;
    QString error;
    ASSERT_TRUE(prepareUpdate(request(zip, UpdateKind::Package), &prepared, &error)) << error.toStdString();
    ASSERT_EQ(prepared.mode, PackageMode::Patch);
    if (!asUser.isEmpty()) {
        QProcess chown;
        chown.start(QStringLiteral("chown"), {QStringLiteral("-R"), QStringLiteral("65534:65534"), m_root.path()});
        ASSERT_TRUE(chown.waitForFinished(30000) && chown.exitCode() == 0);
    }
    const QMap<QString, QByteArray> before = snapshot(m_app);

    EXPECT_EQ(runScript(prepared, asUser), 1) << readFile(prepared.logPath).constData();
    EXPECT_EQ(snapshot(m_app), before) << readFile(prepared.logPath).constData();
    EXPECT_EQ(readFile(app("locked.cfg")), "original");
    EXPECT_FALSE(QFileInfo::exists(app("aaa-first.txt")));
    EXPECT_FALSE(QFileInfo::exists(app("started.txt")));
    const QStringList lines = logLines(prepared);
    EXPECT_FALSE(lines.filter(QStringLiteral("Permission denied")).isEmpty()) << lines.join('\n').toStdString();
    EXPECT_FALSE(lines.filter(QStringLiteral("restoring the backup")).isEmpty());
}

TEST_F(UpdateScriptTest, EscapingEntryRefusesThePackageBeforeAnythingIsTouched)
{
    const QString zipPath = m_root.filePath(QStringLiteral("evil.zip"));
    int code = 0;
    zip_t *archive = zip_open(QFile::encodeName(zipPath).constData(), ZIP_CREATE | ZIP_TRUNCATE, &code);
    ASSERT_NE(archive, nullptr);
    static const char program[] = "#!/bin/sh\n";
    static const char payload[] = "outside";
    zip_file_add(archive, "VantreoGuide", zip_source_buffer(archive, program, sizeof program - 1, 0), 0);
    zip_file_add(archive, "../x", zip_source_buffer(archive, payload, sizeof payload - 1, 0), 0);
    ASSERT_EQ(zip_close(archive), 0);

    const QMap<QString, QByteArray> before = snapshot(m_app);
    PreparedUpdate prepared;
    QString error;
    EXPECT_FALSE(prepareUpdate(request(zipPath, UpdateKind::Package), &prepared, &error));
    EXPECT_FALSE(error.isEmpty());
    EXPECT_EQ(snapshot(m_app), before);
    EXPECT_FALSE(QFileInfo::exists(m_root.filePath("x")));
    EXPECT_FALSE(QFileInfo::exists(QDir(m_updates).filePath("x")));
    EXPECT_TRUE(QDir(m_updates).entryList({"*.sh"}, QDir::Files).isEmpty()) << "no script is written";
}

TEST_F(UpdateScriptTest, RefusedRequests)
{
    const QString download = QDir(m_updates).filePath(QStringLiteral("VantreoGuide-42-linux-x64"));
    ASSERT_TRUE(writeFile(download, standIn("v2")));
    PreparedUpdate prepared;
    QString error;

    ApplyRequest missingFile = request(download + "-gone", UpdateKind::Executable);
    EXPECT_FALSE(prepareUpdate(missingFile, &prepared, &error));
    EXPECT_EQ(error, "Downloaded update file is missing.");

    ApplyRequest noProgram = request(download, UpdateKind::Executable);
    noProgram.executablePath = app("not-there");
    EXPECT_FALSE(prepareUpdate(noProgram, &prepared, &error));
    EXPECT_EQ(error, "Current executable path could not be found.");

    EXPECT_FALSE(prepareUpdate(request(download, UpdateKind::Package), &prepared, &error));
    EXPECT_EQ(error, "Package updates must be ZIP files.");

    QDir().mkpath(m_root.filePath("empty-staging/only-folder"));
    const QString emptyZip = m_root.filePath("empty.zip");
    ASSERT_TRUE(vg::zip::compressFolderContents(m_root.filePath("empty-staging"), emptyZip, &error));
    EXPECT_FALSE(prepareUpdate(request(emptyZip, UpdateKind::Package), &prepared, &error));
    EXPECT_EQ(error, "Package is empty.");
}

TEST(UpdatePackageRoot, ChoosesWhereTheProgramIs)
{
    QTemporaryDir dir;
    const QString root = dir.path();
    const auto touch = [&](const QString &name) { return writeFile(QDir(root).filePath(name), "x"); };
    QString chosen;
    PackageMode mode;
    QString error;

    ASSERT_TRUE(touch("a/readme.txt") && touch("b/bin/VantreoGuide") && touch("b/bin/lib.so"));
    ASSERT_TRUE(choosePackageRoot(root, "VantreoGuide", &chosen, &mode, &error));
    EXPECT_EQ(chosen, QDir::cleanPath(QDir(root).filePath("b/bin"))) << "the folder of the program found below";
    EXPECT_EQ(mode, PackageMode::Full);

    ASSERT_TRUE(touch("VantreoGuide"));
    ASSERT_TRUE(choosePackageRoot(root, "VantreoGuide", &chosen, &mode, &error));
    EXPECT_EQ(chosen, QDir::cleanPath(root)) << "the top level wins when it holds the program";

    QTemporaryDir patch;
    ASSERT_TRUE(writeFile(QDir(patch.path()).filePath("only/config.txt"), "x")
                && writeFile(QDir(patch.path()).filePath("only/more.txt"), "y"));
    ASSERT_TRUE(choosePackageRoot(patch.path(), "VantreoGuide", &chosen, &mode, &error));
    EXPECT_EQ(chosen, QDir::cleanPath(QDir(patch.path()).filePath("only"))) << "the only subfolder, no files beside it";
    EXPECT_EQ(mode, PackageMode::Patch);

    EXPECT_TRUE(isKeptApplicationEntry("show.vgs"));
    EXPECT_TRUE(isKeptApplicationEntry("source"));
    EXPECT_FALSE(isKeptApplicationEntry("show.vgs.tmp"));
    EXPECT_FALSE(isKeptApplicationEntry("backups"));
}

} // namespace

namespace {

// The Windows scripts cannot run here; what can go wrong on any machine is the quoting of the
// values they are given, which would run a path as code.
TEST(PowerShellUpdateScript, ValuesArriveAsLiterals)
{
    EXPECT_EQ(powerShellQuote(QStringLiteral("C:/Show's $(Remove-Item x)")), "'C:/Show''s $(Remove-Item x)'");
    ScriptValues values;
    values.processId = 4242;
    values.executable = QStringLiteral("C:/Apps/O'Neil/VantreoGuide.exe");
    values.applicationFolder = QStringLiteral("C:/Apps/O'Neil");
    values.buildNumber = QStringLiteral("42");
    values.packageRoot = QStringLiteral("C:/Temp/package-42/VantreoGuide-42");
    const QString script = powerShellPackageScript(values, QStringLiteral("full"));
    EXPECT_TRUE(script.contains(QStringLiteral("$ProcessId = 4242\n")));
    EXPECT_TRUE(script.contains(QStringLiteral("$AppDir = '%1'\n").arg(QDir::toNativeSeparators("C:/Apps/O''Neil"))))
        << script.left(600).toStdString();
    EXPECT_TRUE(script.contains(QStringLiteral("$Mode = 'full'\n")));
    EXPECT_EQ(script.count(QStringLiteral("O'Neil")), 0) << "every quote inside a literal is doubled";
    for (const char *kept : {"'VantreoGuideSettings.json'", "'backup'", "'source'", "'*.vgs'"})
        EXPECT_TRUE(script.contains(QLatin1String(kept))) << kept;
}

} // namespace
