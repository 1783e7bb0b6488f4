#pragma once

#include "exchange/UvLut.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace vg::exchange {

// File names of one package, all from this base name in the chosen folder.
inline constexpr char kUvLutBaseName[] = "projector_camera_uv_lut";

struct UvLutFileNames {
    QString binary, manifest, preview, uv, mask, depth, uvFloat, depthFloat;
};
UvLutFileNames uvLutFileNames();

// Quiet NaN written for the u, v and depth of invalid samples.
constexpr quint32 kUvLutNanBits = 0x7FC00000u;

// The 40-byte header of the binary table.
QByteArray uvLutBinaryHeader(const UvLutResult &result);

// Writes the binary table through a temporary file in the target folder that then replaces
// `path`, so a failed write leaves an existing table untouched.
bool writeUvLutBinary(const UvLutResult &result, const QString &path, QString *error);

// Three-channel (u × scale, v, coverage) and one-channel (depth) float maps, top row first.
bool writeUvLutFloatMaps(const UvLutResult &result, const QString &uvPath, const QString &depthPath,
                         QString *error);

// The JSON manifest, key order fixed, every sample included.
bool writeUvLutManifest(const UvLutResult &result, const QString &path, QString *error);

// Preview (the source image seen through the table), u/v colours, mask and depth.
QImage uvLutPreviewImage(const UvLutResult &result);
QImage uvLutUvImage(const UvLutResult &result);
QImage uvLutMaskImage(const UvLutResult &result);
QImage uvLutDepthImage(const UvLutResult &result);

// The binary table, and with test data the manifest, images and float maps, into `folder`.
// `written` receives the paths of the files written.
bool writeUvLutPackage(const UvLutResult &result, const QString &folder, const UvLutProgress &progress,
                       QStringList *written, QString *error);

// computeUvLut() followed by writeUvLutPackage().
bool exportUvLut(const QVector<GuideObject> &objects, ExportImageSource &images, const UvLutOptions &options,
                 const QString &folder, const UvLutProgress &progress, UvLutResult *result, QString *error);

} // namespace vg::exchange
