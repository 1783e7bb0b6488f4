#pragma once

#include <QString>
#include <QStringList>

// ZIP bundles and packages. Errors come back in the words the File menu shows.
namespace vg::zip {

// Writes every entry below `folder` into `zipPath`, the folder's contents at the root of
// the archive. An existing ZIP is replaced only once the new one is complete.
bool compressFolderContents(const QString &folder, const QString &zipPath, QString *error);

// Writes `path` itself (a file or a folder with everything below it) into `zipPath`.
bool compressPath(const QString &path, const QString &zipPath, QString *error);

// Extracts every entry into `destination`. The whole archive is refused before anything is
// written when an entry is absolute or climbs out with "..". Existing files are replaced only
// when `overwrite` is set; otherwise the first one found fails the extraction.
bool extractArchive(const QString &zipPath, const QString &destination, bool overwrite, QString *error);

// Entries that extraction into `destination` would replace (to ask the user first).
QStringList existingFilesFor(const QString &zipPath, const QString &destination, QString *error);

// Every entry whose name is not blank and ends in ".vgs" or ".json" (any case), in archive order.
bool listProjectEntries(const QString &zipPath, QStringList *entries, QString *error);

// True when `entryName` stays inside the folder it is extracted into.
bool isSafeEntryName(const QString &entryName);

} // namespace vg::zip
