#pragma once

#include "net/UpdateApplier.h"

#include <QString>
#include <QStringList>

#include <utility>

namespace vg::net {

// Everything a generated update script is told; paths are absolute.
struct ScriptValues
{
    qint64 processId = 0;
    QString executable;
    QString applicationFolder;
    QString buildNumber;
    QString sourceFile;       // the new executable (single-file updates)
    QString packageRoot;      // the extracted content (package updates)
    QString extractionFolder; // removed when the package is in place
    QString backupFolder;
    QString scriptPath;
    QString logPath;
};

// ".sh" here, ".ps1" on Windows.
QString scriptExtension();
// The program and arguments that run a script ("/bin/sh" and the path here).
std::pair<QString, QStringList> scriptLauncher(const QString &scriptPath);

// Waits for the program to exit, replaces the executable (40 tries, 250 ms apart), starts it
// and removes itself; every step is logged with the local time.
QString executableUpdateScript(const ScriptValues &values);

// Backs the application folder up, installs the extracted package as `mode` says, keeping
// the settings file, "backup", "source" and project files, writes the applied-build marker
// and starts the program. Any failure copies the backup back and exits with 1.
QString packageUpdateScript(const ScriptValues &values, PackageMode mode);

// The POSIX package script, whatever the platform (the tests read it).
QString posixPackageScript(const ScriptValues &values, PackageMode mode);

// The same scripts in Windows PowerShell, which the program uses on Windows.
QString powerShellExecutableScript(const ScriptValues &values);
QString powerShellPackageScript(const ScriptValues &values, const QString &modeWord);
// A PowerShell literal: single quotes, each quote inside doubled.
QString powerShellQuote(const QString &value);

} // namespace vg::net
