#include "app/MainWindow.h"

#include "scene/ui/SceneWidget.h"
#include "scene/ui/ThreeDViewTab.h"
#include "scene/ui/UvLutExportDialog.h"

#include <QPointer>
#include <QStatusBar>

void MainWindow::runProjectorCameraUvLutExport()
{
    auto *tab = qobject_cast<ThreeDViewTab *>(currentContentTab());
    if (!tab) {
        statusBar()->showMessage(tr("Open a 3D view to export a UV LUT."), 5000);
        return;
    }
    // The dialog runs its own event loop: the tab may be closed (a project loaded) meanwhile.
    QPointer<SceneWidget> view = tab->sceneWidget();
    const Guide3DViewSettings settings = view->viewSettings();
    UvLutExportDialog dialog(settings.objects, view->guideImages(), settings.projector_calibration_settings,
                             view->currentIndex(), this);
    dialog.exec();
    if (view)
        view->setProjectorCalibrationSettings(dialog.settings());
}
