#pragma once

#include <QByteArray>
#include <QString>

namespace vg {

// Replaces `path` with `data` through a temporary file in the same folder that is renamed
// over the target only once every byte is on disk, so a failed write leaves the old file
// whole. A failure is described in the system's words ("No space left on device").
// Temporary copies of the same target left behind by an earlier save that was killed
// between creating and renaming them are removed first.
bool writeFileReplacing(const QString &path, const QByteArray &data, QString *error);

// Removes "<name>.XXXXXX" leftovers of saves of `path` that are older than `minimumAgeSecs`
// (a younger one may belong to a save that is still running). Returns how many went.
int removeStaleSaveCopies(const QString &path, int minimumAgeSecs = 60);

} // namespace vg
