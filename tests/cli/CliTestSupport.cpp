#include "cli/CliTestSupport.h"

#include <QFile>
#include <QProcess>
#include <gtest/gtest.h>

CliRun runCli(const QStringList &args, CliDisplay display, int timeoutMs)
{
    QProcess process;
    process.setProgram(QStringLiteral(VG_BIN_DIR "/vantreoguide-cli"));
    process.setArguments(args);
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    if (display == CliDisplay::Offscreen) {
        env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    } else if (display == CliDisplay::None) {
        env.remove(QStringLiteral("DISPLAY"));
        env.remove(QStringLiteral("WAYLAND_DISPLAY"));
        env.remove(QStringLiteral("QT_QPA_PLATFORM"));
    }
    process.setProcessEnvironment(env);
    process.start();
    CliRun run;
    if (!process.waitForFinished(timeoutMs)) {
        process.kill();
        process.waitForFinished();
        return run;
    }
    run.exitCode = process.exitCode();
    run.out = QString::fromUtf8(process.readAllStandardOutput());
    run.err = QString::fromUtf8(process.readAllStandardError());
    return run;
}

QByteArray readFileBytes(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void writeFileBytes(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate)) << path.toStdString();
    ASSERT_EQ(file.write(bytes), bytes.size());
}
