#pragma once

#include <QRect>
#include <QString>
#include <QStringList>

// The special runs the program can be started in instead of the normal session.
enum class CaptureMode {
    None,
    ManualScreenshots,
    ProjectionTutorialScreenshots,
    Projection2pjTutorialScreenshots,
    TutorialCapture,
};

struct CommandLineOptions
{
    CaptureMode mode = CaptureMode::None;
    QString outputDirectory; // absolute; the screenshot modes
    QString scenarioPath;    // absolute; "--tutorial-capture"
    QString projectPath;     // absolute; only without a mode
    QString error;           // non-empty: log it and end with exit code 1
};

// Reads the program's arguments (arguments[0] is the program itself). Relative
// paths are taken against currentDirectory. Options match whole, case-sensitive
// arguments; when several modes are given the first of manual, projection, 2pj,
// tutorial capture wins. A screenshot option takes the next argument as its folder
// unless that is missing or another option.
CommandLineOptions parseCommandLine(const QStringList &arguments, const QString &currentDirectory);

// The normal (non-capture) first placement: 1480 x 920, no larger than the available
// area (1920 x 1080 when that is empty) or 1920 x 1080, centred in it.
QRect startupWindowGeometry(const QRect &availableGeometry);
