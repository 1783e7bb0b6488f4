#include "guide/PngWriter.h"

#include <QBuffer>
#include <QImageReader>
#include <QRandomGenerator>
#include <QtEndian>
#include <gtest/gtest.h>

#include <libdeflate.h>
#include <zlib.h>

#include <atomic>
#include <cstring>

namespace {

QImage decode(const QByteArray &png)
{
    QBuffer buffer;
    buffer.setData(png);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer, "png");
    QImage image = reader.read();
    EXPECT_FALSE(image.isNull()) << reader.errorString().toStdString();
    return image;
}

void expectSamePixels(const QImage &expected, const QImage &actual, const char *what)
{
    ASSERT_EQ(expected.size(), actual.size()) << what;
    const QImage a = expected.convertToFormat(QImage::Format_ARGB32);
    const QImage b = actual.convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < a.height(); ++y)
        ASSERT_EQ(0, memcmp(a.constScanLine(y), b.constScanLine(y), size_t(a.width()) * 4)) << what << ", row " << y;
}

// An opaque picture that is neither symmetric nor periodic: flat areas, edges, a slope,
// noise in one corner, so a mirrored, shifted or channel-swapped decode differs.
QImage picture(int width, int height, quint32 seed)
{
    QRandomGenerator random(seed);
    QImage image(width, height, QImage::Format_ARGB32);
    for (int y = 0; y < height; ++y) {
        auto *line = reinterpret_cast<quint32 *>(image.scanLine(y));
        for (int x = 0; x < width; ++x) {
            quint32 v;
            if (x < width / 3)
                v = qRgb(200, 30, (y * 7) & 0xff); // flat rows, changing down the image
            else if (y < height / 4)
                v = qRgb(x & 0xff, (x * 3) & 0xff, 17); // a slope along the row
            else if (x > width - 9 && y > height - 9)
                v = random.generate() | 0xff000000u;
            else
                v = (x + 2 * y) % 11 == 0 ? qRgb(255, 255, 0) : qRgb(10, 60, 120); // diagonal lines
            line[x] = v;
        }
    }
    return image;
}

// Bands of the given heights over `image`, painted by copying the image's rows over
// whatever the buffer held.
PngBandSource bandsOf(const QImage &image, const QList<int> &heights)
{
    PngBandSource source;
    source.size = image.size();
    int y = 0;
    for (int h : heights) {
        source.bands.append(QRect(0, y, image.width(), h));
        y += h;
    }
    source.paint = [image, bands = source.bands](int index, QImage &rows) {
        const QRect band = bands.at(index);
        EXPECT_EQ(rows.size(), band.size());
        for (int r = 0; r < band.height(); ++r)
            std::memcpy(rows.scanLine(r), image.constScanLine(band.y() + r), size_t(image.width()) * 4);
    };
    return source;
}

// Equal bands of at most `rows` rows.
QList<int> evenBands(int height, int rows)
{
    QList<int> heights;
    for (int y = 0; y < height; y += rows)
        heights.append(std::min(rows, height - y));
    return heights;
}

QByteArray idatStream(const QByteArray &png)
{
    QByteArray zlibStream;
    qsizetype at = 8;
    while (at + 12 <= png.size()) {
        const quint32 length = qFromBigEndian<quint32>(png.constData() + at);
        if (png.mid(at + 4, 4) == "IDAT")
            zlibStream += png.mid(at + 8, qsizetype(length));
        at += 12 + qsizetype(length);
    }
    return zlibStream;
}

// The image's rows, filtered, as PNG stores them: from the IDAT chunks through the stock
// zlib inflate, checking the stream's own Adler-32 on the way.
QByteArray inflatedImageData(const QByteArray &png)
{
    const QByteArray zlibStream = idatStream(png);
    uLongf size = 64 << 20;
    QByteArray raw(qsizetype(size), Qt::Uninitialized);
    const int result = uncompress(reinterpret_cast<Bytef *>(raw.data()), &size,
                                  reinterpret_cast<const Bytef *>(zlibStream.constData()), uLong(zlibStream.size()));
    EXPECT_EQ(result, Z_OK);
    raw.resize(qsizetype(size));
    return raw;
}

} // namespace

TEST(PngBandEncoding, OddWidthsAndBandHeightsDecodePixelExactly)
{
    // Widths 1 to 9 take the pixel loop's every tail; 1283 is not a multiple of any band.
    for (int width : {1, 2, 3, 4, 5, 6, 7, 8, 9, 1283}) {
        const QImage image = picture(width, 37, quint32(width));
        for (const QList<int> &heights : {QList<int>{37}, evenBands(37, 5), QList<int>{1, 35, 1}}) {
            for (int threads : {1, 3}) {
                bool translucent = true;
                const QByteArray png = encodeOpaquePngInBands(bandsOf(image, heights), threads, &translucent);
                EXPECT_FALSE(translucent);
                ASSERT_FALSE(png.isEmpty()) << "width " << width;
                EXPECT_EQ(quint8(png.at(25)), 2) << "colour type RGB";
                expectSamePixels(image, decode(png), "banded encode");
            }
        }
    }
}

TEST(PngBandEncoding, OnePixelAndOneRowImages)
{
    const QImage dot = picture(1, 1, 9);
    expectSamePixels(dot, decode(encodeOpaquePngInBands(bandsOf(dot, {1}), 2, nullptr)), "1 x 1");
    const QImage row = picture(4001, 1, 10);
    expectSamePixels(row, decode(encodeOpaquePngInBands(bandsOf(row, {1}), 2, nullptr)), "one row");
    const QImage column = picture(1, 500, 11);
    expectSamePixels(column, decode(encodeOpaquePngInBands(bandsOf(column, evenBands(500, 7)), 2, nullptr)),
                     "one column, many bands");
}

TEST(PngBandEncoding, ManyBandsOnManyThreadsGiveTheSameRowsAsTheWholeImageEncoder)
{
    // 23 bands over 8 threads; buffers pass between bands holding an earlier band's rows.
    const QImage image = picture(2049, 23 * 17 + 5, 12);
    const QByteArray banded = encodeOpaquePngInBands(bandsOf(image, evenBands(image.height(), 17)), 8, nullptr);
    ASSERT_FALSE(banded.isEmpty());
    expectSamePixels(image, decode(banded), "QImage read-back");
    const QImage fromFile = QImage::fromData(banded, "PNG");
    expectSamePixels(image, fromFile, "read-back through the image loader");

    // The raw inflate of both encoders' data: same rows after unfiltering, so compare the
    // decoded images, and each stream's Adler-32 was checked by uncompress.
    const QByteArray whole = encodePng(image, 1);
    EXPECT_EQ(inflatedImageData(banded).size(), inflatedImageData(whole).size());
    expectSamePixels(decode(whole), decode(banded), "against the whole-image encoder");
}

TEST(PngBandEncoding, TranslucentPixelIsRefusedAndReported)
{
    QImage image = picture(300, 40, 13);
    image.setPixel(299, 39, qRgba(10, 20, 30, 128)); // in the last band only
    bool translucent = false;
    EXPECT_TRUE(encodeOpaquePngInBands(bandsOf(image, evenBands(40, 8)), 2, &translucent).isEmpty());
    EXPECT_TRUE(translucent);
    // A transparent pixel inside the vector loop of a row, in the first band.
    QImage early = picture(300, 40, 14);
    early.setPixel(6, 0, qRgba(0, 0, 0, 0));
    EXPECT_TRUE(encodeOpaquePngInBands(bandsOf(early, evenBands(40, 8)), 1, &translucent).isEmpty());
    EXPECT_TRUE(translucent);
}

TEST(PngBandEncoding, BandsThatDoNotCoverTheImageAreRefused)
{
    const QImage image = picture(50, 20, 15);
    bool translucent = true;
    EXPECT_TRUE(encodeOpaquePngInBands(bandsOf(image, {10, 9}), 2, &translucent).isEmpty()); // short
    EXPECT_FALSE(translucent);
    EXPECT_TRUE(encodeOpaquePngInBands(bandsOf(image, {10, 11}), 2, nullptr).isEmpty()); // past the end
    PngBandSource gap = bandsOf(image, {10, 10});
    gap.bands[1].moveTop(11);
    EXPECT_TRUE(encodeOpaquePngInBands(gap, 2, nullptr).isEmpty());
    PngBandSource narrow = bandsOf(image, {20});
    narrow.bands[0].setWidth(49);
    EXPECT_TRUE(encodeOpaquePngInBands(narrow, 2, nullptr).isEmpty());
    PngBandSource none = bandsOf(image, {20});
    none.paint = nullptr;
    EXPECT_TRUE(encodeOpaquePngInBands(none, 2, nullptr).isEmpty());
}

TEST(PngBandEncoding, EveryBandIsPaintedOnce)
{
    const QImage image = picture(64, 64, 16);
    PngBandSource source = bandsOf(image, evenBands(64, 3));
    std::vector<std::atomic<int>> calls(size_t(source.bands.size()));
    const auto copy = source.paint;
    source.paint = [&](int index, QImage &rows) {
        ++calls[size_t(index)];
        copy(index, rows);
    };
    ASSERT_FALSE(encodeOpaquePngInBands(source, 4, nullptr).isEmpty());
    for (const std::atomic<int> &c : calls)
        EXPECT_EQ(c.load(), 1);
}

TEST(PngBandEncoding, StreamReadsWithASecondIndependentInflater)
{
    // libdeflate's inflater is written apart from zlib's and refuses incomplete codes and
    // a wrong Adler-32: both must read the joined bands to the same rows.
    const QImage image = picture(3001, 97, 17);
    const QByteArray png = encodeOpaquePngInBands(bandsOf(image, evenBands(97, 13)), 4, nullptr);
    ASSERT_FALSE(png.isEmpty());
    const QByteArray stream = idatStream(png);
    const QByteArray byZlib = inflatedImageData(png);
    QByteArray byLibdeflate(byZlib.size(), Qt::Uninitialized);
    libdeflate_decompressor *inflater = libdeflate_alloc_decompressor();
    ASSERT_NE(inflater, nullptr);
    size_t produced = 0;
    const libdeflate_result result = libdeflate_zlib_decompress(inflater, stream.constData(), size_t(stream.size()),
                                                                byLibdeflate.data(), size_t(byLibdeflate.size()), &produced);
    libdeflate_free_decompressor(inflater);
    EXPECT_EQ(result, LIBDEFLATE_SUCCESS);
    EXPECT_EQ(produced, size_t(byZlib.size()));
    EXPECT_TRUE(byLibdeflate == byZlib);
    EXPECT_EQ(byZlib.size(), qsizetype(97) * (3001 * 3 + 1));
}
