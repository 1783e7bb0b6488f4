#pragma once

#include "exchange/UvLut.h"
#include "net/mediaserver/MediaServerLink.h"

#include <QString>

namespace vg::mediaserver {

// Where a LUT goes: the server (UDP port and file service), the player and its warp editor.
struct UvLutServerTarget {
    QString serverAddress = QStringLiteral("127.0.0.1");
    QString playerAddress = QStringLiteral("127.0.0.1");
    quint16 udpPort = 17779;
    int warpEditorIndex = 1;
    UploadOptions upload;    // serverAddress is taken from above
};

// "display_%1.uvlut" with the warp editor number.
QString uvLutUpdateFileName(int warpEditorIndex);

struct UvLutUpdateReport {
    QString message;   // "Uploaded %1 to %2 and removed the temporary LUT file." or the variant
    QString status;    // "Updated LUT %1 to %2"
    QString reply;     // what the file service answered
};

// Update LUT: writes the table to a temporary folder as "display_N.uvlut", uploads it with
// "service_upload" into "uvlut", removes the temporary file and sends "uvlut_update".
// On failure `error` starts with the caller's headline text, then the cause.
bool updateUvLutOnServer(const vg::exchange::UvLutResult &result, const UvLutServerTarget &target,
                         UvLutUpdateReport *report, QString *error);

} // namespace vg::mediaserver
