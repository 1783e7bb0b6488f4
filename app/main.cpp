#include "app/CommandLine.h"
#include "app/DecimalSeparatorGuard.h"
#include "app/MainWindow.h"
#include "app/SpinBoxWheelGuard.h"
#include "app/UiPreferences.h"
#include "app/VantreoProxyStyle.h"
#include "common/GpuAdapter.h"
#include "common/SettingsKeys.h"

#include <QApplication>
#include <QDebug>
#include <QDir>
#include <QGuiApplication>
#include <QIcon>
#include <QScreen>
#include <QSettings>
#include <QThreadPool>

#include <memory>

namespace {

const char *const kOrganisation = "VantreoSolution";
const char *const kApplication = "VantreoGuide";

} // namespace

int main(int argc, char **argv)
{
    // The GPU choice has to be in the environment before the first GL context exists,
    // so it is read before the application object (Mesa honours DRI_PRIME per process).
    {
        const QSettings settings(QSettings::NativeFormat, QSettings::UserScope, QString::fromLatin1(kOrganisation),
                                 QString::fromLatin1(kApplication));
        applyGpuAdapterChoiceToEnvironment(
            Settings::graphicsAdapter.read(settings));
    }

    // 1. Identity and style.
    QApplication app(argc, argv);
    QApplication::setStyle(new VantreoProxyStyle);
    QApplication::setPalette(QApplication::style()->standardPalette());
    SpinBoxWheelGuard::install();
    DecimalSeparatorGuard::install();
    QApplication::setOrganizationName(QString::fromLatin1(kOrganisation));
    QApplication::setApplicationName(QString::fromLatin1(kApplication));
    QApplication::setApplicationVersion(QStringLiteral(VG_VERSION));

    // 2. Translation; English when it cannot be loaded.
    QString translationError;
    const QString language = Settings::uiLanguage.read();
    if (!installUiTranslation(language, &translationError))
        qWarning().noquote() << QStringLiteral("Could not load UI translation: %1").arg(translationError);

    // 3. Font and icon.
    QApplication::setFont(storedUiFont(QSettings()));
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/assets/icon64_green.ico")));

    // 4. Command line.
    const CommandLineOptions options = parseCommandLine(QApplication::arguments(), QDir::currentPath());
    if (!options.error.isEmpty()) {
        qWarning().noquote() << options.error;
        return 1;
    }

    // 5. The window.
    auto window = std::make_unique<MainWindow>();
    if (options.mode != CaptureMode::None) {
        window->setProperty("skipStartupSample", true);
        window->setMaximumSize(1920, 1080);
        window->resize(1480, 920);
        window->show();
    } else {
        QScreen *screen = window->screen() ? window->screen() : QGuiApplication::primaryScreen();
        const QRect available = screen ? screen->availableGeometry() : QRect(0, 0, 1920, 1080);
        window->setGeometry(startupWindowGeometry(available));
        window->show();
        if (!options.projectPath.isEmpty())
            window->openStartupProject(options.projectPath);
    }

    // 6. A capture mode runs once and ends the process; otherwise the event loop.
    int exitCode = 0;
    QString error;
    if (options.mode == CaptureMode::None) {
        exitCode = app.exec();
    } else {
        const bool ok = options.mode == CaptureMode::TutorialCapture
                            ? window->runTutorialCapture(options.scenarioPath, &error)
                            : window->runCaptureMode(options.mode, options.outputDirectory, &error);
        if (!ok)
            qWarning().noquote() << error;
        exitCode = ok ? 0 : 1;
    }

    // Background renders use fonts and images: let them finish while the application exists.
    window.reset();
    for (QThreadPool *pool : app.findChildren<QThreadPool *>())
        pool->waitForDone();
    QThreadPool::globalInstance()->waitForDone();
    return exitCode;
}
