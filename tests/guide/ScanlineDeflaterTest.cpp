#include "guide/ScanlineDeflater.h"

#include <QByteArray>
#include <QRandomGenerator>
#include <gtest/gtest.h>

#include <zlib.h>

#include <cstring>
#include <vector>

namespace {

// The stock raw inflater: the reference every PNG reader builds on.
bool inflateRaw(const QByteArray &deflated, size_t expectedSize, QByteArray *out)
{
    z_stream zs{};
    if (inflateInit2(&zs, -15) != Z_OK)
        return false;
    out->resize(qsizetype(expectedSize + 64));
    zs.next_in = reinterpret_cast<Bytef *>(const_cast<char *>(deflated.constData()));
    zs.avail_in = uInt(deflated.size());
    zs.next_out = reinterpret_cast<Bytef *>(out->data());
    zs.avail_out = uInt(out->size());
    const int result = inflate(&zs, Z_FINISH);
    out->resize(qsizetype(zs.total_out));
    const bool whole = result == Z_STREAM_END && zs.avail_in == 0;
    inflateEnd(&zs);
    return whole;
}

// Deflates `data` as rows of rowBytes, handed over `rowsPerCall` rows at a time.
QByteArray deflateRows(const QByteArray &data, int rowBytes, int pixelBytes, int rowsPerCall, bool last = true)
{
    ScanlineDeflater deflater(rowBytes, pixelBytes, rowsPerCall);
    EXPECT_TRUE(deflater.isValid());
    const int rows = int(data.size() / rowBytes);
    for (int y = 0; y < rows; y += rowsPerCall) {
        const int count = std::min(rowsPerCall, rows - y);
        std::memcpy(deflater.rows(), data.constData() + qsizetype(y) * rowBytes, size_t(count) * size_t(rowBytes));
        deflater.compressRows(count);
    }
    deflater.finish(last);
    return deflater.output();
}

void expectRoundTrip(const QByteArray &data, int rowBytes, int pixelBytes, int rowsPerCall, const char *what)
{
    const QByteArray deflated = deflateRows(data, rowBytes, pixelBytes, rowsPerCall);
    QByteArray back;
    ASSERT_TRUE(inflateRaw(deflated, size_t(data.size()), &back)) << what;
    ASSERT_EQ(back.size(), data.size()) << what;
    EXPECT_TRUE(back == data) << what;
}

QByteArray randomBytes(qsizetype size, quint32 seed)
{
    QRandomGenerator random(seed);
    QByteArray bytes(size, Qt::Uninitialized);
    for (char &c : bytes)
        c = char(random.bounded(256));
    return bytes;
}

// Rows like a filtered drawing: zero runs, a few edges, rows repeating the one above
// except where a curve crosses them, and one-pixel repeats.
QByteArray drawnRows(int rowBytes, int rows, quint32 seed)
{
    QRandomGenerator random(seed);
    QByteArray data(qsizetype(rowBytes) * rows, '\0');
    for (int y = 0; y < rows; ++y) {
        char *row = data.data() + qsizetype(y) * rowBytes;
        row[0] = 1;
        if (y > 0 && y % 7 != 0)
            std::memcpy(row, row - rowBytes, size_t(rowBytes));
        else
            for (int x = 1; x < rowBytes; x += 1 + int(random.bounded(40)))
                row[x] = char(random.bounded(256));
        row[1 + (y * 5) % (rowBytes - 1)] = char(0x40 + y % 13); // the curve
        for (int x = rowBytes / 2; x + 3 < rowBytes && x < rowBytes / 2 + 30; x += 3)
            std::memcpy(row + x, "\x01\x02\x03", 3); // a gradient: one pixel repeated
    }
    return data;
}

} // namespace

TEST(ScanlineDeflater, IncompressibleRowsRoundTripThroughManyBlocks)
{
    // About 200k literals: several blocks of their own codes.
    expectRoundTrip(randomBytes(601 * 333, 1), 601, 3, 16, "random rows");
}

TEST(ScanlineDeflater, DrawnRowsRoundTripAndShrink)
{
    const QByteArray data = drawnRows(3 * 1001 + 1, 300, 2);
    expectRoundTrip(data, 3 * 1001 + 1, 3, 16, "drawn rows, 16 a call");
    expectRoundTrip(data, 3 * 1001 + 1, 3, 1, "drawn rows, one a call: matches reach into the previous call");
    expectRoundTrip(data, 3 * 1001 + 1, 3, 300, "drawn rows, all at once");
    EXPECT_LT(deflateRows(data, 3 * 1001 + 1, 3, 16).size(), data.size() / 10);

    // Four-byte pixels: the pixel-back distance is 4.
    expectRoundTrip(drawnRows(4 * 999 + 1, 120, 3), 4 * 999 + 1, 4, 16, "RGBA rows");
}

TEST(ScanlineDeflater, LongRunsAndExactMatchLengthEdges)
{
    // Runs of every length around the 258-byte match limit and the 3-byte minimum.
    QByteArray data;
    for (int run : {1, 2, 3, 4, 257, 258, 259, 516, 517, 1000}) {
        data.append(char((run & 0x7f) | 1));
        data.append(QByteArray(run, char(run % 5)));
    }
    const int rowBytes = 97;
    data.append(QByteArray(rowBytes - data.size() % rowBytes, '\x09'));
    expectRoundTrip(data, rowBytes, 3, 4, "runs");

    // One row, one byte.
    expectRoundTrip(QByteArray(1, '\x01'), 1, 1, 1, "a single byte");
    expectRoundTrip(QByteArray(1, '\x00'), 1, 3, 1, "a single zero");
}

TEST(ScanlineDeflater, RowsWiderThanTheWindowUseNoRowMatch)
{
    // 40000-byte rows: the row above is beyond deflate's 32 KB reach.
    const int rowBytes = 40000;
    QByteArray data = randomBytes(rowBytes, 4);
    data.append(data); // the same row again: must not be copied from 40000 back
    data.append(data.left(rowBytes));
    expectRoundTrip(data, rowBytes, 3, 2, "wide rows");
}

TEST(ScanlineDeflater, NonLastDataEndsOnASyncPointAndConcatenates)
{
    // Two streams of rows deflated apart, the first not last, read as one deflate stream.
    const QByteArray first = drawnRows(301, 40, 5);
    const QByteArray second = drawnRows(301, 33, 6);
    const QByteArray a = deflateRows(first, 301, 3, 16, false);
    const QByteArray b = deflateRows(second, 301, 3, 16, true);
    ASSERT_GE(a.size(), 4);
    EXPECT_TRUE(a.endsWith(QByteArray("\x00\x00\xff\xff", 4))); // an empty stored block, byte-aligned
    QByteArray back;
    ASSERT_TRUE(inflateRaw(a + b, size_t(first.size() + second.size()), &back));
    EXPECT_TRUE(back == first + second);

    // The first alone is no complete stream: its last block is not final.
    QByteArray partial;
    EXPECT_FALSE(inflateRaw(a, size_t(first.size()), &partial));
    EXPECT_TRUE(partial == first);
}
