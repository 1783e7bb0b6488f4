#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringList>

#include <functional>

// ZIP bundles and packages. Errors come back in the words the File menu shows.
namespace vg::zip {

// Writes every entry below `folder` into `zipPath`, the folder's contents at the root of
// the archive. An existing ZIP is replaced only once the new one is complete.
bool compressFolderContents(const QString &folder, const QString &zipPath, QString *error);

// Writes `path` itself (a file or a folder with everything below it) into `zipPath`.
bool compressPath(const QString &path, const QString &zipPath, QString *error);

// The most an import may unpack, whatever the disk holds.
constexpr qint64 kMaxExtractBytes = qint64(16) << 30;

// Told the bytes written so far and the total; returning false cancels the extraction.
// Called on the extracting thread.
using ExtractProgress = std::function<bool(qint64 done, qint64 total)>;

// Extracts every entry into `destination`. The whole archive is refused before anything is
// written when an entry is absolute, climbs out with "..", is "." or otherwise no file
// name, is a symbolic link, or when the entries unpack to more than the destination's free
// space or `maxBytes`. No link on the way is followed. Existing files are replaced
// only when `overwrite` is set; otherwise any one found fails the extraction before it
// starts. A failed or cancelled extraction removes what it wrote. Safe off the UI thread.
bool extractArchive(const QString &zipPath, const QString &destination, bool overwrite, QString *error,
                    const ExtractProgress &progress = {}, qint64 maxBytes = kMaxExtractBytes);

// Entries that extraction into `destination` would replace (to ask the user first).
QStringList existingFilesFor(const QString &zipPath, const QString &destination, QString *error);

// Every entry whose name is not blank and ends in ".vgs" or ".json" (any case), in archive order.
bool listProjectEntries(const QString &zipPath, QStringList *entries, QString *error);

// One entry of an archive written from memory.
struct MemoryEntry {
    QString name;
    QByteArray data;
};

// Which step of writeMemoryArchive failed.
enum class MemoryArchiveFailure { None, Open, Entry, Finalize };

// Writes the entries in their order (deflated, each stamped with `localTime` in DOS form)
// into `zipPath`, replacing it only once the archive is complete. On failure `failure` says
// which step failed and `failedEntry` names the entry for Entry.
bool writeMemoryArchive(const QString &zipPath, const QList<MemoryEntry> &entries, const QDateTime &localTime,
                        MemoryArchiveFailure *failure, QString *failedEntry = nullptr);

// True when `entryName` stays inside the folder it is extracted into.
bool isSafeEntryName(const QString &entryName);

} // namespace vg::zip
