#pragma once

#include <QByteArray>
#include <QImage>
#include <QString>

// Standard PNG (8-bit RGB, or RGBA when the image has any non-opaque pixel), encoded on
// several threads: bands of rows are filtered and deflated independently and joined into
// one zlib stream at byte-aligned flush points, with one combined Adler-32. Any decoder
// reads the result.
//
// threads <= 0 uses the machine's cores. Returns an empty array for a null image.
QByteArray encodePng(const QImage &image, int threads = 0);

// Encodes and saves through QSaveFile, so a failed write leaves an older file whole.
// On failure returns false with the file's error text.
bool writeGuidePng(const QImage &image, const QString &path, QString *error, int threads = 0);
