#include "MainWindowTestSupport.h"

#include "app/MainWindow.h"
#include "guide/ui/GuideTab.h"

#include <QAction>
#include <QSpinBox>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>

namespace {

class GuideTabUndoTest : public ShellSettingsFixture
{
protected:
    void SetUp() override
    {
        ShellSettingsFixture::SetUp();
        window = std::make_unique<MainWindow>();
        window->setProperty("skipStartupSample", true);
        window->resize(1400, 900);
        window->show();
        window->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
        guide = qobject_cast<GuideTab *>(window->addGuideTab());
        ASSERT_NE(guide, nullptr);
        rows = guide->findChild<QSpinBox *>(QStringLiteral("vantreoGuideRows"));
        projectors = guide->findChild<QSpinBox *>(QStringLiteral("vantreoGuideProjectorCount"));
        ASSERT_TRUE(rows && projectors);
    }

    std::unique_ptr<MainWindow> window;
    GuideTab *guide = nullptr;
    QSpinBox *rows = nullptr;
    QSpinBox *projectors = nullptr;
};

} // namespace

TEST_F(GuideTabUndoTest, EditMenuUndoesAndRedoesGuideEditsInOrder)
{
    QAction *undo = window->action(QStringLiteral("actionUndo"));
    QAction *redo = window->action(QStringLiteral("actionRedo"));
    EXPECT_TRUE(undo->isEnabled());
    EXPECT_TRUE(redo->isEnabled());
    EXPECT_FALSE(guide->canUndo()); // a new guide starts with an empty history

    const int rows0 = rows->value();
    const int projectors0 = projectors->value();
    rows->setValue(rows0 + 3);
    projectors->setValue(projectors0 + 2);
    EXPECT_EQ(guide->settings().rows, rows0 + 3);

    undo->trigger();
    EXPECT_EQ(guide->settings().projectorCount, projectors0);
    EXPECT_EQ(projectors->value(), projectors0); // the controls show the restored settings
    EXPECT_EQ(guide->settings().rows, rows0 + 3);
    undo->trigger();
    EXPECT_EQ(guide->settings().rows, rows0);
    EXPECT_EQ(rows->value(), rows0);
    EXPECT_FALSE(guide->canUndo());
    undo->trigger(); // nothing left: nothing changes
    EXPECT_EQ(guide->settings().rows, rows0);

    redo->trigger();
    EXPECT_EQ(guide->settings().rows, rows0 + 3);
    EXPECT_EQ(guide->settings().projectorCount, projectors0);
    redo->trigger();
    EXPECT_EQ(guide->settings().projectorCount, projectors0 + 2);

    // A new edit after an undo drops what could have been redone.
    undo->trigger();
    rows->setValue(rows0 + 1);
    EXPECT_FALSE(guide->canRedo());
}

TEST_F(GuideTabUndoTest, ControlZAndControlShiftZReachTheGuideTab)
{
    const int rows0 = rows->value();
    rows->setValue(rows0 + 2);
    // Focus away from text fields, which keep Ctrl+Z for their own text.
    window->tabWidget()->tabBar()->setFocus();
    QTest::keyClick(window.get(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(guide->settings().rows, rows0);
    QTest::keyClick(window.get(), Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(guide->settings().rows, rows0 + 2);
    QTest::keyClick(window.get(), Qt::Key_Z, Qt::ControlModifier);
    QTest::keyClick(window.get(), Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(guide->settings().rows, rows0 + 2);
}

TEST_F(GuideTabUndoTest, LoadingSettingsStartsANewHistory)
{
    rows->setValue(rows->value() + 1);
    ASSERT_TRUE(guide->canUndo());
    GuideSettings loaded = guide->settings();
    loaded.rows = 7;
    guide->setSettings(loaded);
    EXPECT_FALSE(guide->canUndo());
    EXPECT_FALSE(guide->undo());
    EXPECT_EQ(guide->settings().rows, 7);
}
