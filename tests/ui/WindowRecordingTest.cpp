#include "MainWindowTestSupport.h"

#include "app/MainWindow.h"
#include "app/WindowRecording.h"

#include <QAction>
#include <QFileInfo>
#include <QProcess>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTest>

namespace {

class WindowRecordingTest : public ShellSettingsFixture
{
};

} // namespace

// The File entry starts a recording of the whole window, the same entry stops it, and the
// file is an H.264 video; the folder is remembered and ".mp4" added.
TEST_F(WindowRecordingTest, RecordWindowEntryStartsAndStopsAnMp4)
{
    QTemporaryDir dir;
    MainWindow window;
    window.setProperty("skipStartupSample", true);
    window.resize(640, 480);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    auto *recording = window.findChild<WindowRecording *>();
    ASSERT_NE(recording, nullptr);
    QStringList titles;
    QStringList messages;
    recording->setPreviewQuestion([] { return false; });
    recording->setSaveDialog([&](const QString &title, const QString &path) {
        titles << title + '|' + QFileInfo(path).fileName();
        return dir.filePath(QStringLiteral("walkthrough"));
    });
    recording->setMessageSink([&](const QString &title, const QString &text, bool) { messages << title + '|' + text; });

    QAction *record = window.action(QStringLiteral("actionRecordWindow"));
    ASSERT_TRUE(record->isEnabled());
    EXPECT_EQ(record->shortcut(), QKeySequence(QStringLiteral("Ctrl+Shift+R")));
    record->trigger();
    const QString file = dir.filePath(QStringLiteral("walkthrough.mp4"));
    ASSERT_TRUE(recording->recorder()->isRecording()) << messages.join('\n').toStdString();
    EXPECT_EQ(titles, QStringList{QStringLiteral("Capture program window|VantreoGuideCapture.mp4")});
    EXPECT_EQ(window.statusBar()->currentMessage(), QStringLiteral("Capturing program window at 30 fps: ") + file);
    QTest::qWait(700);
    record->trigger();
    EXPECT_FALSE(recording->recorder()->isRecording());
    EXPECT_EQ(messages, QStringList{QStringLiteral("Capture Complete|Capture saved:\n") + file});
    EXPECT_EQ(window.statusBar()->currentMessage(), QStringLiteral("Capture stopped."));
    EXPECT_EQ(QSettings().value(QStringLiteral("paths/captureDirectory")).toString(), QFileInfo(file).absolutePath());

    QProcess probe;
    probe.start(QStringLiteral("ffprobe"), {QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-show_entries"),
                                           QStringLiteral("stream=codec_name"), QStringLiteral("-of"),
                                           QStringLiteral("csv=p=0"), file});
    ASSERT_TRUE(probe.waitForFinished(30000));
    EXPECT_EQ(probe.readAllStandardOutput().trimmed(), QByteArray("h264"));
}
