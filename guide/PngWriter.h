#pragma once

#include <QByteArray>
#include <QImage>
#include <QRect>
#include <QString>
#include <QVector>

#include <functional>

// Standard PNG (8-bit RGB, or RGBA when the image has any non-opaque pixel), encoded on
// several threads: bands of rows are filtered and deflated independently and joined into
// one zlib stream at byte-aligned flush points, with one combined Adler-32. Any decoder
// reads the result.
//
// threads <= 0 uses the machine's cores. Returns an empty array for a null image.
QByteArray encodePng(const QImage &image, int threads = 0);

// An opaque image handed to the encoder in bands of rows, for encoding it without the
// whole image ever existing.
struct PngBandSource {
    QSize size;
    // Rows of the image, top to bottom, covering it, each the image's full width.
    QVector<QRect> bands;
    // Fills `rows` (the band's size, ARGB32 premultiplied, holding anything) with every
    // pixel of band `index`. Called once per band, possibly on several threads at once.
    std::function<void(int index, QImage &rows)> paint;
};

// Encodes the bands as an RGB PNG: each thread paints a band into a buffer it reuses and
// deflates it at once. Returns an empty array when the bands do not cover the image, on
// running out of memory, and when a painted pixel is not opaque (`translucent` is then
// true: encode the whole image with encodePng instead).
QByteArray encodeOpaquePngInBands(const PngBandSource &source, int threads, bool *translucent);

// Encodes and saves through QSaveFile, so a failed write leaves an older file whole.
// On failure returns false with the file's error text.
bool writeGuidePng(const QImage &image, const QString &path, QString *error, int threads = 0);
