#include "MainWindowTestSupport.h"

#include "app/MainWindow.h"
#include "calibration/ui/ProjectorCalibrationDialog.h"
#include "scene/ui/ScenePropertyPanel.h"
#include "scene/ui/SceneWidget.h"
#include "scene/ui/ThreeDViewTab.h"

#include <QAction>
#include <QCheckBox>
#include <QPushButton>
#include <QTest>

namespace {

class MainWindowCalibrationTest : public ShellSettingsFixture
{
};

} // namespace

TEST_F(MainWindowCalibrationTest, EntriesOpenOneModelessWindowPerProjectorAndSettingsReachTheView)
{
    auto window = std::make_unique<MainWindow>();
    window->setProperty("skipStartupSample", true);
    window->show();
    auto *tab = qobject_cast<ThreeDViewTab *>(window->add3DViewTab());
    ASSERT_NE(tab, nullptr);
    SceneWidget *view = tab->sceneWidget();
    const int wall = view->model().addPlane(QStringLiteral("Wall"), 3000, 2000);
    const int projector = view->model().addProjector(QStringLiteral("Projector"), 400, 150, 400, true);
    ASSERT_GE(wall, 0);
    view->selectOnly(projector);
    QApplication::processEvents();

    // The 3D view's entry.
    QAction *entry = tab->findChild<QAction *>(QStringLiteral("actionCalibrateProjector"));
    ASSERT_NE(entry, nullptr);
    EXPECT_EQ(entry->text(), QStringLiteral("Calibrate Projector..."));
    entry->trigger();
    QList<ProjectorCalibrationDialog *> dialogs = window->findChildren<ProjectorCalibrationDialog *>();
    ASSERT_EQ(dialogs.size(), 1);
    ProjectorCalibrationDialog *dialog = dialogs.first();
    EXPECT_FALSE(dialog->isModal());
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_EQ(dialog->projectorIndex(), projector);
    EXPECT_EQ(dialog->targetIndex(), wall);

    // The property panel's button brings the same window forward instead of a second one.
    QApplication::processEvents();
    auto *button = tab->findChild<QPushButton *>(QStringLiteral("calibrateProjectorButton"));
    ASSERT_NE(button, nullptr);
    button->click();
    EXPECT_EQ(window->findChildren<ProjectorCalibrationDialog *>().size(), 1);

    // A settings change is in the view at once, so saving the project keeps it.
    auto *update = dialog->findChild<QCheckBox *>(QStringLiteral("calibrationProjectorUpdate"));
    ASSERT_NE(update, nullptr);
    ASSERT_TRUE(view->viewSettings().projector_calibration_settings.projector_update);
    update->click();
    EXPECT_FALSE(view->viewSettings().projector_calibration_settings.projector_update);
    EXPECT_EQ(dialog->statusText(), QStringLiteral("3D View projector update is off. Calibration preview will update "
                                                   "without changing the projector object."));
    dialog->close();
    QApplication::processEvents();
}
