#pragma once

#include "project/ProjectFile.h"

#include <QDateTime>
#include <QString>
#include <QStringList>

// A ZIP that holds the program with everything it needs to run elsewhere and the current
// project as "sample.vgs", so the package opens that project when it starts.
namespace vg::package {

struct PackageRequest {
    QString applicationFile;   // the running executable
    QString applicationFolder; // where "conf", "translations", ... are looked for
    QString qtPluginFolder;    // where platforms/, imageformats/, ... come from when not beside the program
    QString qtTranslationFolder;
    QString zipPath;
    ProjectDocument project;
    QDateTime now = QDateTime::currentDateTime();
};

// Names of the entries copied from the application folder when present.
QStringList applicationEntries();
// Qt plugin folders a packaged program needs on this platform.
QStringList pluginFolders();

// Shared libraries `binary` loads, as resolved by the dynamic loader (ldd); libraries
// the target system always has (the C runtime, the GPU driver stack) are left out.
QStringList bundledLibrariesFor(const QStringList &binaries, QString *error);

// "VantreoGuide_%1" with the timestamp.
QString packageFolderName(const QDateTime &now);

// Builds the folder beside the ZIP, zips it (the folder itself at the archive's root) and
// removes it. The report carries the resource collection's text. Errors are in the
// words the File menu shows.
bool createPortablePackage(const PackageRequest &request, QString *resourceReport, QString *error);

} // namespace vg::package
