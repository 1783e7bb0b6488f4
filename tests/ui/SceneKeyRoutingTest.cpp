#include "MainWindowTestSupport.h"

#include "scene/ui/SceneGizmo.h"
#include "scene/ui/SceneWidget.h"
#include "scene/ui/ThreeDViewTab.h"

#include <QCursor>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>

namespace {

// A window holding a button above a 3D view tab, so that focus can sit outside the tab.
class SceneKeyRoutingTest : public ShellSettingsFixture
{
protected:
    void SetUp() override
    {
        ShellSettingsFixture::SetUp();
        window = std::make_unique<QWidget>();
        auto *layout = new QVBoxLayout(window.get());
        outside = new QPushButton(QStringLiteral("Outside"), window.get());
        tab = new ThreeDViewTab(window.get());
        layout->addWidget(outside);
        layout->addWidget(tab, 1);
        window->resize(1200, 800);
        window->show();
        window->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
        view = tab->sceneWidget();
        tab->addObject(ThreeDViewTab::AddPlane, false);
        tab->addObject(ThreeDViewTab::AddProjector, false); // "Projector 1", selected
        // Somewhere the pointer is not over the view.
        QCursor::setPos(outside->mapToGlobal(outside->rect().center()));
        QApplication::processEvents();
    }

    std::unique_ptr<QWidget> window;
    QPushButton *outside = nullptr;
    ThreeDViewTab *tab = nullptr;
    SceneWidget *view = nullptr;
};

} // namespace

TEST_F(SceneKeyRoutingTest, ViewKeysPressedInTheObjectListActOnTheView)
{
    QListWidget *list = tab->objectList();
    list->setFocus();
    QApplication::processEvents();
    ASSERT_TRUE(list->hasFocus());
    list->setCurrentRow(0);
    view->setViewMode(ViewCameraMode::Front);
    const int row = list->currentRow();

    // P would make the list jump to "Projector 1" by type-to-find; it goes to the view.
    QTest::keyClick(list, Qt::Key_P);
    EXPECT_EQ(view->camera().mode(), ViewCameraMode::Perspective);
    EXPECT_EQ(list->currentRow(), row);

    QTest::keyClick(list, Qt::Key_E);
    EXPECT_EQ(view->transformMode(), int(GizmoRotate));
    QTest::keyClick(list, Qt::Key_R);
    EXPECT_EQ(view->transformMode(), int(GizmoScale));
    QTest::keyClick(list, Qt::Key_W);
    EXPECT_EQ(view->transformMode(), int(GizmoMove));
    QTest::keyClick(list, Qt::Key_X);
    EXPECT_EQ(view->transformSpace(), 1);

    // V looks through the selected projector.
    view->selectOnly(1);
    QTest::keyClick(list, Qt::Key_V);
    EXPECT_EQ(view->camera().mode(), ViewCameraMode::ProjectorView);
    EXPECT_EQ(view->projectorViewIndex(), 1);
    EXPECT_TRUE(list->hasFocus()); // the keys do not move the focus either
}

TEST_F(SceneKeyRoutingTest, TypingInTextFieldsKeepsItsLetters)
{
    auto *name = new QLineEdit(tab);
    name->show();
    name->setFocus();
    QApplication::processEvents();
    view->setViewMode(ViewCameraMode::Front);
    QTest::keyClicks(name, QStringLiteral("Pew"));
    EXPECT_EQ(name->text(), QStringLiteral("Pew"));
    EXPECT_EQ(view->camera().mode(), ViewCameraMode::Front);
    EXPECT_EQ(view->transformMode(), int(GizmoMove));
}

TEST_F(SceneKeyRoutingTest, KeysReachTheViewUnderThePointerWithFocusOutsideTheTab)
{
    outside->setFocus();
    QApplication::processEvents();
    ASSERT_TRUE(outside->hasFocus());

    // Pointer elsewhere: the key is not the view's.
    QTest::keyClick(outside, Qt::Key_R);
    EXPECT_EQ(view->transformMode(), int(GizmoMove));

    QCursor::setPos(view->mapToGlobal(view->rect().center()));
    QApplication::processEvents();
    if (!view->rect().contains(view->mapFromGlobal(QCursor::pos())))
        GTEST_SKIP() << "the display does not let the pointer move";
    QTest::keyClick(outside, Qt::Key_R);
    EXPECT_EQ(view->transformMode(), int(GizmoScale));
    QTest::keyClick(outside, Qt::Key_E);
    EXPECT_EQ(view->transformMode(), int(GizmoRotate));
}
