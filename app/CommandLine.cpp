#include "app/CommandLine.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace {

struct ModeOption
{
    CaptureMode mode;
    const char *option;
    const char *defaultFolder;
};

// In order of precedence.
constexpr ModeOption kModes[] = {
    {CaptureMode::ManualScreenshots, "--manual-screenshots", "manual_screenshots"},
    {CaptureMode::ProjectionTutorialScreenshots, "--projection-tutorial-screenshots", "projection_tutorial_screenshots"},
    {CaptureMode::Projection2pjTutorialScreenshots, "--projection-2pj-tutorial-screenshots",
     "projection_2pj_tutorial_screenshots"},
    {CaptureMode::TutorialCapture, "--tutorial-capture", nullptr},
};

bool isOption(const QString &argument)
{
    return argument.startsWith(QLatin1Char('-'));
}

} // namespace

CommandLineOptions parseCommandLine(const QStringList &arguments, const QString &currentDirectory)
{
    CommandLineOptions options;
    const QDir base(currentDirectory);
    const QStringList args = arguments.mid(1);

    const int captureIndex = args.indexOf(QStringLiteral("--tutorial-capture"));
    if (captureIndex >= 0) {
        const QString next = args.value(captureIndex + 1);
        if (next.isEmpty() || isOption(next)) {
            options.error = QStringLiteral("--tutorial-capture requires a scenario JSON file path.");
            return options;
        }
    }

    for (const ModeOption &mode : kModes) {
        const int index = args.indexOf(QString::fromLatin1(mode.option));
        if (index < 0)
            continue;
        options.mode = mode.mode;
        const QString next = args.value(index + 1);
        if (mode.mode == CaptureMode::TutorialCapture) {
            options.scenarioPath = QDir::cleanPath(base.absoluteFilePath(next));
        } else {
            const QString folder = (next.isEmpty() || isOption(next)) ? QString::fromLatin1(mode.defaultFolder) : next;
            options.outputDirectory = QDir::cleanPath(base.absoluteFilePath(folder));
        }
        return options;
    }

    for (const QString &argument : args) {
        if (argument.isEmpty() || isOption(argument))
            continue;
        const QFileInfo info(base.absoluteFilePath(argument));
        if (info.isFile()) {
            options.projectPath = info.absoluteFilePath();
            break;
        }
    }
    return options;
}

QRect startupWindowGeometry(const QRect &availableGeometry)
{
    const QRect area = availableGeometry.isValid() && !availableGeometry.isEmpty() ? availableGeometry
                                                                                  : QRect(0, 0, 1920, 1080);
    const int width = std::min({1480, area.width(), 1920});
    const int height = std::min({920, area.height(), 1080});
    const int x = area.x() + (area.width() - width) / 2;
    const int y = area.y() + (area.height() - height) / 2;
    return QRect(x, y, width, height);
}
