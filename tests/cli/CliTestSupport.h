#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

// Runs the built vantreoguide-cli as a user would, and the small file helpers the
// command tests share.
struct CliRun {
    int exitCode = -1; // -1 when the tool did not finish in time
    QString out;
    QString err;
};

enum class CliDisplay {
    Offscreen, // QT_QPA_PLATFORM=offscreen: no window system needed
    Inherit,   // the test's own environment
    None,      // no display at all, as on a headless server
};

CliRun runCli(const QStringList &args, CliDisplay display = CliDisplay::Offscreen, int timeoutMs = 180000);

QByteArray readFileBytes(const QString &path);
// Writes the file or fails the calling test.
void writeFileBytes(const QString &path, const QByteArray &bytes);
