#include "MainWindowTestSupport.h"

#include "app/MainWindow.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QTest>

namespace {

class MainWindowCaptureTest : public ShellSettingsFixture
{
protected:
    void SetUp() override
    {
        ShellSettingsFixture::SetUp();
        ASSERT_TRUE(m_dir.isValid());
        m_window = std::make_unique<MainWindow>();
        m_window->setProperty("skipStartupSample", true);
        m_window->resize(1480, 920);
        m_window->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(m_window.get()));
    }

    void TearDown() override
    {
        m_window.reset();
        ShellSettingsFixture::TearDown();
    }

    QString writeScenario(const QByteArray &json)
    {
        const QString path = m_dir.filePath(QStringLiteral("scenario.json"));
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(json);
        return path;
    }

    QTemporaryDir m_dir;
    std::unique_ptr<MainWindow> m_window;
};

} // namespace

TEST_F(MainWindowCaptureTest, ManualScreenshotsWriteStartPageMenusAndEveryTabKind)
{
    const QString out = m_dir.filePath(QStringLiteral("shots/manual"));
    QString error;
    ASSERT_TRUE(m_window->runCaptureMode(CaptureMode::ManualScreenshots, out, &error)) << error.toStdString();
    const QStringList expected{QStringLiteral("01_start_page.png"),  QStringLiteral("02_file_menu.png"),
                               QStringLiteral("03_add_tab_menu.png"), QStringLiteral("04_guide_tab.png"),
                               QStringLiteral("05_canvas_tab.png"),   QStringLiteral("06_3d_view_tab.png"),
                               QStringLiteral("07_settings_menu.png"), QStringLiteral("08_gpu_selection.png")};
    EXPECT_EQ(QDir(out).entryList(QDir::Files, QDir::Name), expected);
    QImage start(QDir(out).filePath(expected.at(0)));
    QImage menu(QDir(out).filePath(expected.at(1)));
    QImage guide(QDir(out).filePath(expected.at(3)));
    ASSERT_FALSE(start.isNull());
    EXPECT_EQ(start.size(), m_window->size());
    EXPECT_NE(start, guide);
    EXPECT_NE(start, menu);
    // The run leaves the window as it found it.
    EXPECT_EQ(m_window->contentTabCount(), 0);
}

TEST_F(MainWindowCaptureTest, TutorialScenarioAddsTabsScalesAndShoots)
{
    const QString scenario = writeScenario(R"({
        "outputDirectory": "tutorial",
        "steps": [
            {"action": "addTab", "kind": "guide"},
            {"action": "setUiScale", "scale": 1.34},
            {"action": "screenshot", "file": "guide_large"},
            {"action": "addTab", "kind": "3dView", "title": "Hall"},
            {"action": "openMenu", "menu": "addTab", "file": "menu.png"},
            {"action": "selectTab", "index": 0},
            {"action": "wait", "ms": 10},
            {"action": "screenshot", "file": "again.png"}
        ]})");
    QString error;
    ASSERT_TRUE(m_window->runTutorialCapture(scenario, &error)) << error.toStdString();
    const QDir out(m_dir.filePath(QStringLiteral("tutorial")));
    EXPECT_EQ(out.entryList(QDir::Files, QDir::Name),
              (QStringList{QStringLiteral("again.png"), QStringLiteral("guide_large.png"), QStringLiteral("menu.png")}));
    EXPECT_DOUBLE_EQ(m_window->uiScale(), 1.34);
    EXPECT_EQ(m_window->contentTabCount(), 2);
    EXPECT_EQ(m_window->displayedTabTitle(1), QStringLiteral("Hall"));
    EXPECT_EQ(m_window->currentContentTab(), m_window->contentTab(0));
}

TEST_F(MainWindowCaptureTest, MissingOrMalformedScenarioFails)
{
    QString error;
    EXPECT_FALSE(m_window->runTutorialCapture(m_dir.filePath(QStringLiteral("nope.json")), &error));
    EXPECT_TRUE(error.contains(QStringLiteral("does not exist"))) << error.toStdString();

    const std::pair<QByteArray, QString> bad[] = {
        {"{ \"steps\": [", QStringLiteral("is not valid JSON")},
        {"{\"name\": 1}", QStringLiteral("has no \"steps\" list")},
        {"[]", QStringLiteral("has no steps")},
        {"[{\"action\": \"fly\"}]", QStringLiteral("step 1: unknown action \"fly\"")},
        {"[{\"action\": \"screenshot\"}, 3]", QStringLiteral("step 1: \"file\"")},
        {"[{\"action\": \"addTab\", \"kind\": \"table\"}]", QStringLiteral("\"kind\" must be")},
        {"[{\"action\": \"setUiScale\", \"scale\": \"big\"}]", QStringLiteral("\"scale\" must be a number")},
    };
    for (const auto &[json, message] : bad) {
        error.clear();
        EXPECT_FALSE(m_window->runTutorialCapture(writeScenario(json), &error)) << json.toStdString();
        EXPECT_TRUE(error.contains(message)) << error.toStdString();
    }
    // Nothing ran: no tabs were added by the broken scenarios.
    EXPECT_EQ(m_window->contentTabCount(), 0);
}
