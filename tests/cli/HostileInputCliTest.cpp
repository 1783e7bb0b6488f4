#include "cli/CliTestSupport.h"

#include <QFile>
#include <QImage>
#include <QImageReader>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cstdio>
#include <sys/stat.h>
#include <unistd.h>

namespace {

struct ShellRun {
    bool finished = false;
    bool crashed = false;
    int exitCode = -1;
    QString out;
    QString err;
};

// Runs a shell line with the tool as $CLI, for limits (ulimit) and private mounts.
ShellRun runShell(const QString &script, const QProcessEnvironment &base = QProcessEnvironment::systemEnvironment(),
                  int timeoutMs = 120000)
{
    QProcess process;
    QProcessEnvironment env = base;
    env.insert(QStringLiteral("CLI"), QStringLiteral(VG_BIN_DIR "/vantreoguide-cli"));
    env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    process.setProcessEnvironment(env);
    process.start(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), script});
    ShellRun run;
    run.finished = process.waitForFinished(timeoutMs);
    if (!run.finished) {
        process.kill();
        process.waitForFinished();
        return run;
    }
    run.crashed = process.exitStatus() == QProcess::CrashExit;
    run.exitCode = process.exitCode();
    run.out = QString::fromUtf8(process.readAllStandardOutput());
    run.err = QString::fromUtf8(process.readAllStandardError());
    return run;
}

// The shell line that bounds the tool's memory to `megabytes`. The address sanitizer maps
// terabytes of shadow memory, so under it an address-space limit cannot work: its allocator
// refuses single allocations past a third of the bound instead, returning null as malloc
// would.
QString memoryBound(int megabytes, QProcessEnvironment &env)
{
#ifdef VG_SANITIZE_BUILD
    const QString options = env.value(QStringLiteral("ASAN_OPTIONS"));
    env.insert(QStringLiteral("ASAN_OPTIONS"),
               (options.isEmpty() ? QString() : options + QLatin1Char(':'))
                   + QStringLiteral("allocator_may_return_null=1:max_allocation_size_mb=%1").arg(megabytes / 3));
    return QString();
#else
    Q_UNUSED(env);
    return QStringLiteral("ulimit -v %1; ").arg(megabytes * 1000);
#endif
}

// What the tool itself printed: a sanitized build's allocator adds its own warning lines,
// each starting with "==<pid>==".
QString toolError(const QString &err)
{
    QStringList lines = err.split(QLatin1Char('\n'));
    lines.removeIf([](const QString &line) { return line.startsWith(QLatin1String("==")); });
    return lines.join(QLatin1Char('\n'));
}

QString quoted(const QString &path)
{
    return QLatin1Char('\'') + path + QLatin1Char('\'');
}

// A private mount namespace with a tiny tmpfs, where the system allows one.
bool canMountTinyDisk()
{
    if (QStandardPaths::findExecutable(QStringLiteral("unshare")).isEmpty())
        return false;
    return runShell(QStringLiteral("unshare -rm sh -c 'mount -t tmpfs -o size=64k tmpfs /mnt'")).exitCode == 0;
}

} // namespace

TEST(HostileCli, CellCountsAtTheIntegerLimitEndWithAPicture)
{
    QTemporaryDir dir;
    const QString guide = dir.filePath(QStringLiteral("g.json"));
    writeFileBytes(guide, R"({"guides":[{"col":2147483647,"row":2147483647,"auto_col":false}]})");
    const QString png = dir.filePath(QStringLiteral("x.png"));
    const CliRun run = runCli({QStringLiteral("render-guide"), guide, QStringLiteral("-o"), png}, CliDisplay::Offscreen, 60000);
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_EQ(QImage(png).size(), QSize(1920, 1200));
}

TEST(HostileCli, EndlessInputsAreRefusedByEveryGuideCommand)
{
    for (const QString &command : {QStringLiteral("render-guide"), QStringLiteral("guide-info"), QStringLiteral("info")}) {
        QStringList args{command, QStringLiteral("/dev/zero")};
        if (command == QLatin1String("render-guide"))
            args << QStringLiteral("-o") << QStringLiteral("/dev/null");
        const CliRun run = runCli(args, CliDisplay::Offscreen, 60000);
        EXPECT_EQ(run.exitCode, 1) << command.toStdString() << ": " << run.err.toStdString();
        EXPECT_TRUE(run.err.contains(QStringLiteral("too large"), Qt::CaseInsensitive)) << run.err.toStdString();
    }
}

// A shell that asks every Qt program for the X platform (a profile written for the window)
// reaches the tool over ssh or from cron without a display: it draws off screen, as it does
// when nothing is asked, instead of failing to start.
TEST(HostileCli, AskedForADisplayPlatformWithoutADisplayDrawsOffScreen)
{
    QTemporaryDir dir;
    const QString guide = dir.filePath(QStringLiteral("g.json"));
    writeFileBytes(guide, R"({"pixel_width": 64, "pixel_height": 48})");
    const QString png = dir.filePath(QStringLiteral("o.png"));
    for (const char *platform : {"xcb", "wayland"}) {
        const QString line = QStringLiteral("env -u DISPLAY -u WAYLAND_DISPLAY QT_QPA_PLATFORM=%1 \"$CLI\" render-guide %2 -o %3")
                                 .arg(QLatin1String(platform), quoted(guide), quoted(png));
        const ShellRun run = runShell(line);
        ASSERT_TRUE(run.finished);
        EXPECT_FALSE(run.crashed) << platform;
        EXPECT_EQ(run.exitCode, 0) << platform << ": " << run.err.toStdString();
        EXPECT_FALSE(QImageReader(png).size().isEmpty()) << platform;
        QFile::remove(png);
    }
}

TEST(HostileCli, NoRuntimeFolderPrintsNoWarning)
{
    QTemporaryDir dir;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.remove(QStringLiteral("XDG_RUNTIME_DIR"));
    env.insert(QStringLiteral("TMPDIR"), dir.path());
    const QString guide = dir.filePath(QStringLiteral("g.json"));
    writeFileBytes(guide, R"({"pixel_width": 64, "pixel_height": 48})");
    for (const QString &line : {QStringLiteral("\"$CLI\" --version"),
                                QStringLiteral("\"$CLI\" render-guide %1 -o %2").arg(quoted(guide), quoted(dir.filePath(QStringLiteral("o.png"))))}) {
        const ShellRun run = runShell(line, env);
        EXPECT_EQ(run.exitCode, 0) << line.toStdString();
        EXPECT_EQ(run.err, QString()) << line.toStdString();
    }
}

TEST(HostileCli, OutOfMemoryIsARenderFailureNotAnAbort)
{
    QTemporaryDir dir;
    const QString guide = dir.filePath(QStringLiteral("g.json"));
    const QString rotated = dir.filePath(QStringLiteral("r.json"));
    writeFileBytes(guide, R"({"pixel_width": 16384, "pixel_height": 8192, "real_width": 16384, "real_height": 8192,
                          "auto_col": false, "col": 4, "row": 4})");
    writeFileBytes(rotated, R"({"pixel_width": 16384, "pixel_height": 8192, "real_width": 16384, "real_height": 8192,
                            "auto_col": false, "col": 4, "row": 4, "rotate": true})");
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("MALLOC_ARENA_MAX"), QStringLiteral("2"));
    const QString line = memoryBound(1100, env) + QStringLiteral("exec \"$CLI\" render-guide %1 -o %2");

    // A rotated guide is turned whole: room for the program and the picture (512 MB), not
    // for its turned copy as well.
    const ShellRun run = runShell(line.arg(quoted(rotated), quoted(dir.filePath(QStringLiteral("r.png")))), env);
    ASSERT_TRUE(run.finished);
    EXPECT_FALSE(run.crashed) << run.err.toStdString();
    EXPECT_EQ(run.exitCode, 1) << run.err.toStdString();
    EXPECT_TRUE(toolError(run.err).startsWith(QStringLiteral("Render failed"))) << run.err.toStdString();

    // Upright, the same guide is painted and encoded band by band and fits easily.
    const QString png = dir.filePath(QStringLiteral("o.png"));
    const ShellRun banded = runShell(line.arg(quoted(guide), quoted(png)), env);
    ASSERT_TRUE(banded.finished);
    EXPECT_EQ(banded.exitCode, 0) << banded.err.toStdString();
    EXPECT_EQ(QImageReader(png).size(), QSize(16384, 8192));
}

TEST(HostileCli, OneHugeLabelStaysWithinMemory)
{
    QTemporaryDir dir;
    const QString guide = dir.filePath(QStringLiteral("g.json"));
    // A 16K guide of one cell with its label: the glyph is as large as the cell.
    writeFileBytes(guide, R"({"pixel_width": 15360, "pixel_height": 8640, "real_width": 15360, "real_height": 8640,
                          "auto_col": false, "col": 1, "row": 1,
                          "display_number": true, "font_scale": 50})");
    const QString png = dir.filePath(QStringLiteral("o.png"));
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("MALLOC_ARENA_MAX"), QStringLiteral("2"));
    const QString bound = memoryBound(2000, env);
    const ShellRun run =
        runShell(bound + QStringLiteral("exec \"$CLI\" render-guide %1 -o %2").arg(quoted(guide), quoted(png)), env);
    ASSERT_TRUE(run.finished);
    EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_EQ(run.err, QString()); // no glyph image that failed to allocate, no painter on it
    EXPECT_TRUE(QFileInfo::exists(png));
}

TEST(HostileCli, AFullDiskIsReportedInTheSystemsWordsAndTheOldFileKept)
{
    if (!canMountTinyDisk())
        GTEST_SKIP() << "no private mounts here";
    QTemporaryDir dir;
    // A bare JSON project larger than the disk: a guide with many cell colours.
    QJsonArray colors;
    for (int i = 0; i < 20000; ++i)
        colors.append(QStringLiteral("#%1").arg(i * 97 % 0xffffff, 6, 16, QLatin1Char('0')));
    QJsonObject guideObject{{QStringLiteral("col"), 200}, {QStringLiteral("row"), 100}, {QStringLiteral("colors"), colors}};
    QJsonObject root{{QStringLiteral("guides"), QJsonArray{guideObject}}};
    const QString big = dir.filePath(QStringLiteral("big.json"));
    writeFileBytes(big, QJsonDocument(root).toJson());
    const QString mount = dir.filePath(QStringLiteral("disk"));
    QDir().mkpath(mount);
    const QString script = QStringLiteral(
        "unshare -rm sh -c 'mount -t tmpfs -o size=64k tmpfs %1 && printf old > %1/out.json && "
        "\"$CLI\" convert %2 %1/out.json; echo \"exit=$?\"; echo \"kept=$(cat %1/out.json)\"'")
                               .arg(quoted(mount).mid(1).chopped(1), quoted(big).mid(1).chopped(1));
    const ShellRun run = runShell(script);
    ASSERT_TRUE(run.finished);
    EXPECT_TRUE(run.out.contains(QStringLiteral("exit=1"))) << run.out.toStdString() << run.err.toStdString();
    EXPECT_TRUE(run.out.contains(QStringLiteral("kept=old"))) << run.out.toStdString();
    EXPECT_TRUE(run.err.contains(QStringLiteral("No space left on device"))) << run.err.toStdString();
}

// Arguments are handed over byte for byte by a shell: Qt's own process start would
// encode them as UTF-8, which is exactly what such a name is not.
TEST(HostileCli, AFileNameThatIsNotUtf8OpensAndAMissingOneIsRefused)
{
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QByteArray latin1Name = dir.path().toUtf8() + "/\xe9t\xe9.vgs";
    {
        QFile sample(QStringLiteral(VG_SOURCE_DIR "/samples/sample.vgs"));
        ASSERT_TRUE(sample.open(QIODevice::ReadOnly));
        const QByteArray bytes = sample.readAll();
        FILE *file = std::fopen(latin1Name.constData(), "wb");
        ASSERT_NE(file, nullptr);
        ASSERT_EQ(std::fwrite(bytes.constData(), 1, size_t(bytes.size()), file), size_t(bytes.size()));
        std::fclose(file);
    }
    auto runWithRawName = [&](const char *octalName) {
        QProcess shell;
        shell.start(QStringLiteral("/bin/sh"),
                    {QStringLiteral("-c"), QStringLiteral("exec \"$0\" info \"$(printf '%s/") + QString::fromLatin1(octalName)
                                               + QStringLiteral("' \"$1\")\""),
                     QStringLiteral(VG_BIN_DIR "/vantreoguide-cli"), dir.path()});
        EXPECT_TRUE(shell.waitForFinished(60000));
        return std::pair{shell.exitCode(), QString::fromUtf8(shell.readAllStandardOutput() + shell.readAllStandardError())};
    };
    const CliRun reference = runCli({QStringLiteral("info"), QStringLiteral(VG_SOURCE_DIR "/samples/sample.vgs")});
    ASSERT_EQ(reference.exitCode, 0);

    const auto [code, output] = runWithRawName("\\351t\\351.vgs");
    EXPECT_EQ(code, 0) << output.toStdString();
    EXPECT_EQ(output, reference.out) << "the project read through the Latin-1 name is the sample";

    const auto [missingCode, missingOutput] = runWithRawName("\\351missing.vgs");
    EXPECT_EQ(missingCode, 2);
    EXPECT_TRUE(missingOutput.contains(QStringLiteral("is not UTF-8 text and names no existing file"))) << missingOutput.toStdString();
    // The toolkit cannot name the file to remove it either.
    ::unlink(latin1Name.constData());
}

TEST(HostileCli, AFolderNameThatIsNotUtf8TakesOutputsToo)
{
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QByteArray folder = dir.path().toUtf8() + "/show-\xe9t\xe9";
    ASSERT_EQ(::mkdir(folder.constData(), 0700), 0);
    QProcess shell;
    shell.start(QStringLiteral("/bin/sh"),
                {QStringLiteral("-c"), QStringLiteral("exec \"$0\" render-guide \"$1\" -o \"$(printf '%s/show-\\351t\\351/guide.png' \"$2\")\""),
                 QStringLiteral(VG_BIN_DIR "/vantreoguide-cli"), QStringLiteral(VG_SOURCE_DIR "/samples/sample.vgs"), dir.path()});
    ASSERT_TRUE(shell.waitForFinished(60000));
    EXPECT_EQ(shell.exitCode(), 0) << shell.readAllStandardError().toStdString();
    const QByteArray written = folder + "/guide.png";
    struct stat info {};
    EXPECT_EQ(::stat(written.constData(), &info), 0) << "the guide is written into the Latin-1 folder";
    EXPECT_GT(info.st_size, 1000);
    ::unlink(written.constData());
    ::rmdir(folder.constData());
}
