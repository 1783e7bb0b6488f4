// Screenshot and tutorial-capture runs of the main window: a list of steps (add a tab,
// set the UI scale, open a menu, take a screenshot) executed against the live window.

#include "app/MainWindow.h"

#include "app/GpuSelectionDialog.h"
#include "app/TabKind.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMenu>
#include <QMenuBar>
#include <QPainter>
#include <QTabWidget>
#include <QThread>

namespace {

struct CaptureStep
{
    enum Kind { AddTab, SetUiScale, Screenshot, OpenMenu, GpuSelection, SelectTab, CloseAllTabs, Wait };
    Kind kind = Wait;
    const TabKind *tabKind = nullptr;
    QString title;
    double scale = 1.0;
    QString file;
    QString menu; // object name
    int index = 0;
    int milliseconds = 0;
};

CaptureStep addTab(const TabKind &kind)
{
    CaptureStep step;
    step.kind = CaptureStep::AddTab;
    step.tabKind = &kind;
    return step;
}

CaptureStep screenshot(const char *file)
{
    CaptureStep step;
    step.kind = CaptureStep::Screenshot;
    step.file = QString::fromLatin1(file);
    return step;
}

CaptureStep menuShot(const char *menu, const char *file)
{
    CaptureStep step;
    step.kind = CaptureStep::OpenMenu;
    step.menu = QString::fromLatin1(menu);
    step.file = QString::fromLatin1(file);
    return step;
}

CaptureStep gpuShot(const char *file)
{
    CaptureStep step;
    step.kind = CaptureStep::GpuSelection;
    step.file = QString::fromLatin1(file);
    return step;
}

CaptureStep closeAll()
{
    CaptureStep step;
    step.kind = CaptureStep::CloseAllTabs;
    return step;
}

QList<CaptureStep> stepsForMode(CaptureMode mode)
{
    switch (mode) {
    case CaptureMode::ManualScreenshots:
        return {screenshot("01_start_page.png"),
                menuShot("menuFile", "02_file_menu.png"),
                menuShot("menuAddTab", "03_add_tab_menu.png"),
                addTab(guideTabKind()),
                screenshot("04_guide_tab.png"),
                addTab(canvasTabKind()),
                screenshot("05_canvas_tab.png"),
                addTab(threeDViewTabKind()),
                screenshot("06_3d_view_tab.png"),
                menuShot("menuSettings", "07_settings_menu.png"),
                gpuShot("08_gpu_selection.png"),
                closeAll()};
    case CaptureMode::ProjectionTutorialScreenshots:
        return {screenshot("01_start_page.png"),
                addTab(guideTabKind()),
                screenshot("02_guide_tab.png"),
                addTab(threeDViewTabKind()),
                screenshot("03_3d_view_tab.png"),
                addTab(canvasTabKind()),
                screenshot("04_canvas_tab.png"),
                closeAll()};
    case CaptureMode::Projection2pjTutorialScreenshots:
        return {screenshot("01_start_page.png"),
                addTab(guideTabKind()),
                screenshot("02_guide_tab_projector_1.png"),
                addTab(guideTabKind()),
                screenshot("03_guide_tab_projector_2.png"),
                addTab(threeDViewTabKind()),
                screenshot("04_3d_view_tab.png"),
                addTab(canvasTabKind()),
                screenshot("05_canvas_tab.png"),
                closeAll()};
    case CaptureMode::TutorialCapture:
    case CaptureMode::None:
        break;
    }
    return {};
}

// Menu names a scenario may use: the object name or its short form ("file", "addTab").
QString menuObjectName(const QString &name)
{
    if (name.startsWith(QLatin1String("menu")))
        return name;
    if (name.isEmpty())
        return QString();
    return QStringLiteral("menu") + name.at(0).toUpper() + name.mid(1);
}

bool parseScenarioStep(const QJsonValue &value, int number, CaptureStep *step, QString *error)
{
    auto fail = [&](const QString &text) {
        *error = QStringLiteral("Tutorial scenario step %1: %2").arg(number).arg(text);
        return false;
    };
    if (!value.isObject())
        return fail(QStringLiteral("a step must be a JSON object."));
    const QJsonObject object = value.toObject();
    const QString action = object.value(QStringLiteral("action")).toString();
    if (action == QLatin1String("addTab")) {
        step->kind = CaptureStep::AddTab;
        step->tabKind = TabKindRegistry::find(object.value(QStringLiteral("kind")).toString());
        step->title = object.value(QStringLiteral("title")).toString();
        if (!step->tabKind) {
            QStringList ids;
            for (const TabKind *kind : TabKindRegistry::kinds())
                ids.append(QLatin1Char('"') + kind->id() + QLatin1Char('"'));
            return fail(QStringLiteral("\"kind\" must be one of %1.").arg(ids.join(QStringLiteral(", "))));
        }
    } else if (action == QLatin1String("setUiScale")) {
        step->kind = CaptureStep::SetUiScale;
        if (!object.value(QStringLiteral("scale")).isDouble())
            return fail(QStringLiteral("\"scale\" must be a number."));
        step->scale = object.value(QStringLiteral("scale")).toDouble();
    } else if (action == QLatin1String("screenshot") || action == QLatin1String("openMenu")
               || action == QLatin1String("gpuSelection")) {
        step->kind = action == QLatin1String("screenshot") ? CaptureStep::Screenshot
                     : action == QLatin1String("openMenu") ? CaptureStep::OpenMenu
                                                           : CaptureStep::GpuSelection;
        step->file = object.value(QStringLiteral("file")).toString().trimmed();
        if (step->file.isEmpty())
            return fail(QStringLiteral("\"file\" must name the PNG file to write."));
        if (QFileInfo(step->file).suffix().isEmpty())
            step->file += QStringLiteral(".png");
        if (step->kind == CaptureStep::OpenMenu) {
            step->menu = menuObjectName(object.value(QStringLiteral("menu")).toString());
            if (step->menu.isEmpty())
                return fail(QStringLiteral("\"menu\" must name a menu."));
        }
    } else if (action == QLatin1String("selectTab")) {
        step->kind = CaptureStep::SelectTab;
        if (!object.value(QStringLiteral("index")).isDouble())
            return fail(QStringLiteral("\"index\" must be a number."));
        step->index = object.value(QStringLiteral("index")).toInt();
    } else if (action == QLatin1String("closeAllTabs")) {
        step->kind = CaptureStep::CloseAllTabs;
    } else if (action == QLatin1String("wait")) {
        step->kind = CaptureStep::Wait;
        step->milliseconds = std::clamp(object.value(QStringLiteral("ms")).toInt(), 0, 60000);
    } else {
        return fail(QStringLiteral("unknown action \"%1\".").arg(action));
    }
    return true;
}

} // namespace

void MainWindow::settle(int milliseconds)
{
    QElapsedTimer timer;
    timer.start();
    do {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        QThread::msleep(5);
    } while (timer.elapsed() < milliseconds);
}

QImage MainWindow::grabWindowImage(QWidget *popup)
{
    QImage image = grab().toImage().convertToFormat(QImage::Format_ARGB32);
    if (popup && popup->isVisible()) {
        QPainter painter(&image);
        const QPoint at = mapFromGlobal(popup->mapToGlobal(QPoint(0, 0)));
        painter.drawPixmap(at, popup->grab());
    }
    return image;
}

bool MainWindow::saveScreenshot(const QString &directory, const QString &fileName, QWidget *popup, QString *error)
{
    const QString path = QDir(directory).filePath(fileName);
    QDir().mkpath(QFileInfo(path).absolutePath());
    const QImage image = grabWindowImage(popup);
    if (image.isNull() || !image.save(path, "PNG")) {
        if (error)
            *error = QStringLiteral("Could not write screenshot %1.").arg(QDir::toNativeSeparators(path));
        return false;
    }
    return true;
}

bool MainWindow::screenshotMenu(QMenu *menu, const QString &directory, const QString &fileName, QString *error)
{
    const QRect entry = menuBar()->actionGeometry(menu->menuAction());
    menu->popup(menuBar()->mapToGlobal(entry.bottomLeft()));
    settle(250);
    const bool ok = saveScreenshot(directory, fileName, menu, error);
    menu->hide();
    settle(50);
    return ok;
}

static bool runSteps(MainWindow *window, const QList<CaptureStep> &steps, const QString &directory, QString *error,
                     const std::function<void(int)> &settle,
                     const std::function<bool(const QString &, QWidget *)> &shoot)
{
    if (!QDir().mkpath(directory)) {
        if (error)
            *error = QStringLiteral("Could not create the screenshot folder %1.").arg(QDir::toNativeSeparators(directory));
        return false;
    }
    settle(300);
    for (const CaptureStep &step : steps) {
        switch (step.kind) {
        case CaptureStep::AddTab:
            window->addTab(*step.tabKind, step.title);
            settle(400);
            break;
        case CaptureStep::SetUiScale:
            window->setUiScale(step.scale, false, true);
            settle(200);
            break;
        case CaptureStep::Screenshot:
            if (!shoot(step.file, nullptr))
                return false;
            break;
        case CaptureStep::OpenMenu: {
            QMenu *menu = window->menu(step.menu);
            if (!menu) {
                if (error)
                    *error = QStringLiteral("There is no menu \"%1\".").arg(step.menu);
                return false;
            }
            if (!shoot(step.file, menu))
                return false;
            break;
        }
        case CaptureStep::GpuSelection: {
            // Shown without running it, so the run goes on; the system's adapters are listed.
            GpuSelectionDialog dialog(enumerateGpuAdapters(), window->gpuAdapterKey(), window);
            dialog.show();
            settle(250);
            const bool ok = shoot(step.file, &dialog);
            dialog.close();
            settle(50);
            if (!ok)
                return false;
            break;
        }
        case CaptureStep::SelectTab:
            if (QWidget *content = window->contentTab(step.index))
                window->tabWidget()->setCurrentWidget(content);
            settle(200);
            break;
        case CaptureStep::CloseAllTabs:
            window->removeAllTabs();
            settle(100);
            break;
        case CaptureStep::Wait:
            settle(step.milliseconds);
            break;
        }
    }
    return true;
}

bool MainWindow::runCaptureMode(CaptureMode mode, const QString &outputDirectory, QString *error)
{
    const QList<CaptureStep> steps = stepsForMode(mode);
    if (steps.isEmpty()) {
        if (error)
            *error = QStringLiteral("Not a screenshot mode.");
        return false;
    }
    return runSteps(
        this, steps, outputDirectory, error, [this](int ms) { settle(ms); },
        [&](const QString &file, QWidget *popup) {
            if (auto *menu = qobject_cast<QMenu *>(popup))
                return screenshotMenu(menu, outputDirectory, file, error);
            return saveScreenshot(outputDirectory, file, popup, error);
        });
}

bool MainWindow::runTutorialCapture(const QString &scenarioPath, QString *error)
{
    auto fail = [error](const QString &text) {
        if (error)
            *error = text;
        return false;
    };
    const QString shownPath = QDir::toNativeSeparators(scenarioPath);
    QFile file(scenarioPath);
    if (!QFileInfo(scenarioPath).isFile())
        return fail(QStringLiteral("Tutorial scenario %1 does not exist.").arg(shownPath));
    if (!file.open(QIODevice::ReadOnly))
        return fail(QStringLiteral("Could not open tutorial scenario %1: %2").arg(shownPath, file.errorString()));
    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll(), &parseError);
    if (parseError.error != QJsonParseError::NoError)
        return fail(QStringLiteral("Tutorial scenario %1 is not valid JSON: %2 at offset %3.")
                        .arg(shownPath, parseError.errorString())
                        .arg(parseError.offset));

    // Either {"outputDirectory": ..., "steps": [...]} or the bare list of steps.
    QJsonArray list;
    QString outputDirectory;
    if (document.isArray()) {
        list = document.array();
    } else {
        const QJsonObject root = document.object();
        if (!root.value(QStringLiteral("steps")).isArray())
            return fail(QStringLiteral("Tutorial scenario %1 has no \"steps\" list.").arg(shownPath));
        list = root.value(QStringLiteral("steps")).toArray();
        outputDirectory = root.value(QStringLiteral("outputDirectory")).toString();
    }
    if (list.isEmpty())
        return fail(QStringLiteral("Tutorial scenario %1 has no steps.").arg(shownPath));

    QList<CaptureStep> steps;
    for (int i = 0; i < list.size(); ++i) {
        CaptureStep step;
        QString stepError;
        if (!parseScenarioStep(list.at(i), i + 1, &step, &stepError))
            return fail(QStringLiteral("%1 (%2)").arg(stepError, shownPath));
        steps << step;
    }

    const QDir scenarioDir = QFileInfo(scenarioPath).absoluteDir();
    const QString directory =
        QDir::cleanPath(outputDirectory.isEmpty() ? scenarioDir.absolutePath() : scenarioDir.absoluteFilePath(outputDirectory));
    return runSteps(
        this, steps, directory, error, [this](int ms) { settle(ms); },
        [&](const QString &name, QWidget *popup) {
            if (auto *menu = qobject_cast<QMenu *>(popup))
                return screenshotMenu(menu, directory, name, error);
            return saveScreenshot(directory, name, popup, error);
        });
}
