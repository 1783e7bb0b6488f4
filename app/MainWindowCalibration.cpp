#include "app/MainWindow.h"

#include "calibration/ui/ProjectorCalibrationDialog.h"
#include "scene/ui/SceneWidget.h"
#include "scene/ui/ThreeDViewTab.h"

#include <QPointer>
#include <QStatusBar>

void MainWindow::calibrateSelectedProjector()
{
    auto *tab = qobject_cast<ThreeDViewTab *>(currentContentTab());
    if (!tab) {
        statusBar()->showMessage(tr("Open a 3D view to calibrate a projector."), 5000);
        return;
    }
    SceneWidget *view = tab->sceneWidget();
    const int selected = view->currentIndex();
    const bool lens = selected >= 0 && selected < view->objectCount() && view->objects().at(selected).hasLens();
    const int index = lens ? selected : -1;

    // One window per view and projector: a second request brings the open one forward.
    const auto open = findChildren<ProjectorCalibrationDialog *>();
    for (ProjectorCalibrationDialog *dialog : open) {
        if (dialog->parentWidget() == this && dialog->property("vantreoSceneWidget").value<QObject *>() == view
            && (index < 0 || dialog->projectorIndex() == index)) {
            dialog->show();
            dialog->raise();
            dialog->activateWindow();
            return;
        }
    }

    QPointer<SceneWidget> target = view;
    auto *dialog = new ProjectorCalibrationDialog(
        view, view->viewSettings().projector_calibration_settings, this, index,
        [target](const GuideProjectorCalibrationSettings &settings) {
            if (target)
                target->setProjectorCalibrationSettings(settings);
        });
    dialog->setProperty("vantreoSceneWidget", QVariant::fromValue<QObject *>(view));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->show();
}
