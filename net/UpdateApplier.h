#pragma once

#include "net/UpdateResponse.h"

#include <QString>

namespace vg::net {

// What applying a verified download needs to know.
struct ApplyRequest
{
    QString downloadedFile;  // the verified file
    QString updateFolder;    // holds the script, its log, the extraction and the backup
    QString executablePath;  // the running program, replaced in place
    QString buildNumber;     // the build being installed (the applied-build marker)
    qint64 processId = 0;    // the script waits until this process has gone
    UpdateKind kind = UpdateKind::Executable;
    QString stamp;           // tells scripts of one build apart; empty: the current time
};

// How a package replaces the application folder.
enum class PackageMode {
    SingleExecutable, // the package is the program alone
    Full,             // the package holds the program: the folder is replaced, kept names stay
    Patch             // no program inside: the content is copied over the folder
};

struct PreparedUpdate
{
    QString scriptPath;
    QString logPath;
    bool package = false;
    PackageMode mode = PackageMode::SingleExecutable;
    QString packageRoot; // the folder whose content is installed
};

// Writes the script that applies the update once this process has exited. A package is
// extracted here first (an entry leaving the folder refuses the whole package before anything
// is written), so the script only copies. False with the user-visible reason.
bool prepareUpdate(const ApplyRequest &request, PreparedUpdate *prepared, QString *error);

// Starts the script detached from this process. False with the user-visible reason.
bool launchUpdater(const PreparedUpdate &prepared, QString *error);

// Where in an extracted package the content to install is, and how it is installed;
// false ("Package is empty.") when there is nothing to install.
bool choosePackageRoot(const QString &extractionFolder, const QString &executableName, QString *root,
                       PackageMode *mode, QString *error);

// A POSIX shell literal: single quotes, with each quote written as '\''.
QString shellQuote(const QString &value);

// The folder entries a full package never deletes.
bool isKeptApplicationEntry(const QString &name);

} // namespace vg::net
