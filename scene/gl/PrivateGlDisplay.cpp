#include "scene/gl/PrivateGlDisplay.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QGuiApplication>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QThread>

#include <csignal>
#include <sys/types.h>

bool ensureGlDisplay(QString *error, qint64 *startedServerPid)
{
    if (startedServerPid)
        *startedServerPid = 0;
    if (!qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"))
        return true;
    // Only the off-screen platform opens its X connection lazily, at the first context.
    if (QGuiApplication::platformName() != QLatin1String("offscreen")) {
        if (error)
            *error = QStringLiteral("No display is set for the \"%1\" platform.").arg(QGuiApplication::platformName());
        return false;
    }
    const QString xvfb = QStandardPaths::findExecutable(QStringLiteral("Xvfb"));
    if (xvfb.isEmpty()) {
        if (error)
            *error = QStringLiteral("Rendering the 3D view needs OpenGL 3.3, and without a display that needs Xvfb, "
                                    "which was not found. Run under xvfb-run or in a desktop session.");
        return false;
    }
    QTemporaryDir dir;
    if (!dir.isValid()) {
        if (error)
            *error = QStringLiteral("No temporary folder for the virtual display.");
        return false;
    }
    const QString numberFile = dir.filePath(QStringLiteral("display"));
    QProcess process;
    process.setProgram(xvfb);
    // -terminate: the server quits when its last client (this process) disconnects.
    process.setArguments({QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"),
                          QStringLiteral("0"), QStringLiteral("640x480x24"), QStringLiteral("-nolisten"),
                          QStringLiteral("tcp"), QStringLiteral("-terminate")});
    process.setStandardOutputFile(numberFile);
    process.setStandardErrorFile(QProcess::nullDevice());
    qint64 pid = 0;
    if (!process.startDetached(&pid)) {
        if (error)
            *error = QStringLiteral("The virtual display (Xvfb) could not be started.");
        return false;
    }
    QDeadlineTimer deadline(10000);
    QByteArray number;
    while (!deadline.hasExpired()) {
        QFile file(numberFile);
        if (file.open(QIODevice::ReadOnly)) {
            number = file.readAll();
            if (number.contains('\n'))
                break;
        }
        QThread::msleep(20);
    }
    number = number.trimmed();
    bool ok = false;
    number.toInt(&ok);
    if (!ok) {
        if (error)
            *error = QStringLiteral("The virtual display (Xvfb) did not start in time.");
        stopPrivateGlDisplay(pid);
        return false;
    }
    qputenv("DISPLAY", ":" + number);
    if (startedServerPid)
        *startedServerPid = pid;
    return true;
}

void stopPrivateGlDisplay(qint64 pid)
{
    if (pid > 0)
        ::kill(pid_t(pid), SIGTERM);
}
