#include "app/CommandLine.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

CommandLineOptions parse(const QStringList &arguments, const QString &cwd)
{
    return parseCommandLine(QStringList{QStringLiteral("VantreoGuide")} + arguments, cwd);
}

} // namespace

TEST(CommandLine, ScreenshotModesUseDefaultFoldersUnderCurrentDirectory)
{
    const QString cwd = QStringLiteral("/work/shots");
    CommandLineOptions o = parse({QStringLiteral("--projection-tutorial-screenshots")}, cwd);
    EXPECT_EQ(o.mode, CaptureMode::ProjectionTutorialScreenshots);
    EXPECT_EQ(o.outputDirectory, QStringLiteral("/work/shots/projection_tutorial_screenshots"));
    EXPECT_TRUE(o.error.isEmpty());

    o = parse({QStringLiteral("--manual-screenshots")}, cwd);
    EXPECT_EQ(o.outputDirectory, QStringLiteral("/work/shots/manual_screenshots"));
    o = parse({QStringLiteral("--projection-2pj-tutorial-screenshots")}, cwd);
    EXPECT_EQ(o.mode, CaptureMode::Projection2pjTutorialScreenshots);
    EXPECT_EQ(o.outputDirectory, QStringLiteral("/work/shots/projection_2pj_tutorial_screenshots"));

    // A following option is not a folder; a following word is, relative to the current directory.
    o = parse({QStringLiteral("--manual-screenshots"), QStringLiteral("--verbose")}, cwd);
    EXPECT_EQ(o.outputDirectory, QStringLiteral("/work/shots/manual_screenshots"));
    o = parse({QStringLiteral("--manual-screenshots"), QStringLiteral("out/a")}, cwd);
    EXPECT_EQ(o.outputDirectory, QStringLiteral("/work/shots/out/a"));
    o = parse({QStringLiteral("--manual-screenshots"), QStringLiteral("/abs/dir")}, cwd);
    EXPECT_EQ(o.outputDirectory, QStringLiteral("/abs/dir"));
}

TEST(CommandLine, ModePrecedenceAndExactMatching)
{
    const QString cwd = QStringLiteral("/tmp");
    CommandLineOptions o = parse({QStringLiteral("--tutorial-capture"), QStringLiteral("s.json"),
                                  QStringLiteral("--projection-2pj-tutorial-screenshots"),
                                  QStringLiteral("--projection-tutorial-screenshots"), QStringLiteral("--manual-screenshots")},
                                 cwd);
    EXPECT_EQ(o.mode, CaptureMode::ManualScreenshots);
    o = parse({QStringLiteral("--projection-2pj-tutorial-screenshots"), QStringLiteral("--projection-tutorial-screenshots")},
              cwd);
    EXPECT_EQ(o.mode, CaptureMode::ProjectionTutorialScreenshots);
    o = parse({QStringLiteral("--tutorial-capture"), QStringLiteral("s.json"), QStringLiteral("--projection-2pj-tutorial-screenshots")},
              cwd);
    EXPECT_EQ(o.mode, CaptureMode::Projection2pjTutorialScreenshots);
    o = parse({QStringLiteral("--tutorial-capture"), QStringLiteral("scenario.json")}, cwd);
    EXPECT_EQ(o.mode, CaptureMode::TutorialCapture);
    EXPECT_EQ(o.scenarioPath, QStringLiteral("/tmp/scenario.json"));

    // Case and prefixes do not match.
    o = parse({QStringLiteral("--Manual-Screenshots"), QStringLiteral("--manual-screenshots=x"),
               QStringLiteral("--manual")},
              cwd);
    EXPECT_EQ(o.mode, CaptureMode::None);
}

TEST(CommandLine, TutorialCaptureWithoutPathIsAnError)
{
    for (const QStringList &args : {QStringList{QStringLiteral("--tutorial-capture")},
                                    QStringList{QStringLiteral("--tutorial-capture"), QStringLiteral("--manual-screenshots")}}) {
        const CommandLineOptions o = parse(args, QStringLiteral("/tmp"));
        EXPECT_EQ(o.error, QStringLiteral("--tutorial-capture requires a scenario JSON file path."));
    }
}

TEST(CommandLine, ProjectArgumentIsFirstExistingFileMadeAbsolute)
{
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    QFile project(dir.filePath(QStringLiteral("show.vgs")));
    ASSERT_TRUE(project.open(QIODevice::WriteOnly));
    project.write("{}");
    project.close();
    QFile other(dir.filePath(QStringLiteral("other.vgs")));
    ASSERT_TRUE(other.open(QIODevice::WriteOnly));
    other.close();
    QDir().mkpath(dir.filePath(QStringLiteral("folder")));

    CommandLineOptions o = parse({QStringLiteral("missing.vgs"), QStringLiteral("folder"), QStringLiteral("-x"),
                                  QStringLiteral("show.vgs"), QStringLiteral("other.vgs")},
                                 dir.path());
    EXPECT_EQ(o.mode, CaptureMode::None);
    EXPECT_EQ(o.projectPath, QDir(dir.path()).absoluteFilePath(QStringLiteral("show.vgs")));

    o = parse({QStringLiteral("does-not-exist.vgs")}, dir.path());
    EXPECT_TRUE(o.projectPath.isEmpty());
    EXPECT_TRUE(o.error.isEmpty());

    // With a mode no project is opened.
    o = parse({QStringLiteral("show.vgs"), QStringLiteral("--manual-screenshots")}, dir.path());
    EXPECT_TRUE(o.projectPath.isEmpty());
    EXPECT_EQ(o.outputDirectory, QDir(dir.path()).absoluteFilePath(QStringLiteral("manual_screenshots")));
}

TEST(CommandLine, StartupGeometryIsClampedAndCentred)
{
    EXPECT_EQ(startupWindowGeometry(QRect(0, 0, 1920, 1040)), QRect(220, 60, 1480, 920));
    EXPECT_EQ(startupWindowGeometry(QRect(100, 50, 1280, 720)), QRect(100, 50, 1280, 720));
    EXPECT_EQ(startupWindowGeometry(QRect(0, 0, 1481, 921)), QRect(0, 0, 1480, 920));
    EXPECT_EQ(startupWindowGeometry(QRect()), QRect(220, 80, 1480, 920));
}
