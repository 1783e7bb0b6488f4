#include "guide/PngWriter.h"

#include "common/AtomicFileWrite.h"

#include <QThread>
#include <QtConcurrent/QtConcurrentMap>

#include <libdeflate.h>
#include <zlib.h>

#include <algorithm>
#include <exception>
#include <functional>
#include <memory>
#include <new>
#include <cstring>
#include <vector>

namespace {

void putBigEndian32(uchar *p, quint32 v)
{
    p[0] = uchar(v >> 24);
    p[1] = uchar(v >> 16);
    p[2] = uchar(v >> 8);
    p[3] = uchar(v);
}

void appendChunk(QByteArray *out, const char type[4], const uchar *data, qsizetype size)
{
    uchar header[8];
    putBigEndian32(header, quint32(size));
    std::memcpy(header + 4, type, 4);
    out->append(reinterpret_cast<const char *>(header), 8);
    if (size > 0)
        out->append(reinterpret_cast<const char *>(data), size);
    quint32 crc = libdeflate_crc32(0, header + 4, 4);
    if (size > 0)
        crc = libdeflate_crc32(crc, data, size_t(size));
    uchar tail[4];
    putBigEndian32(tail, crc);
    out->append(reinterpret_cast<const char *>(tail), 4);
}

struct Band {
    int firstRow = 0;
    int endRow = 0;
    bool last = false;
    QByteArray compressed;
    quint32 adler = 1;
    qint64 rawSize = 0;
    bool ok = false;
    bool transparent = false;
};

// One row converted to RGB(A) bytes: memory order of ARGB32 is B, G, R, A.
void convertRow(const uchar *src, uchar *dst, int width, bool alpha)
{
    const quint32 *px = reinterpret_cast<const quint32 *>(src);
    if (alpha) {
        for (int x = 0; x < width; ++x) {
            const quint32 v = px[x];
            dst[0] = uchar(v >> 16);
            dst[1] = uchar(v >> 8);
            dst[2] = uchar(v);
            dst[3] = uchar(v >> 24);
            dst += 4;
        }
    } else {
        for (int x = 0; x < width; ++x) {
            const quint32 v = px[x];
            dst[0] = uchar(v >> 16);
            dst[1] = uchar(v >> 8);
            dst[2] = uchar(v);
            dst += 3;
        }
    }
}

// Filters a band: a row equal to the one above becomes filter Up (all zeros, which
// deflate collapses); any other row filter Sub, which flattens runs of one colour.
// Rows are filtered a few at a time into a small buffer and deflated from there, so the band
// never exists whole in filtered form: no large fresh buffer to clear and fault in.
void encodeBand(const QImage &image, bool alpha, int level, Band *band)
{
    constexpr int kChunkRows = 16;
    const int width = image.width();
    const int bpp = alpha ? 4 : 3;
    const qsizetype stride = qsizetype(width) * bpp;
    const int rows = band->endRow - band->firstRow;
    const size_t chunkBytes = size_t(kChunkRows) * size_t(stride + 1);
    std::unique_ptr<uchar[]> chunk(new (std::nothrow) uchar[chunkBytes]);
    if (!chunk)
        return;
    std::vector<uchar> current(static_cast<size_t>(stride)), previous(static_cast<size_t>(stride));
    if (band->firstRow > 0)
        convertRow(image.constScanLine(band->firstRow - 1), previous.data(), width, alpha);
    const uchar *previousSource = band->firstRow > 0 ? image.constScanLine(band->firstRow - 1) : nullptr;
    const size_t sourceBytes = size_t(width) * 4;

    z_stream zs{};
    if (deflateInit2(&zs, level, Z_DEFLATED, -15, 9, Z_DEFAULT_STRATEGY) != Z_OK)
        return;
    band->rawSize = qint64(rows) * qint64(stride + 1);
    band->compressed.resize(qsizetype(deflateBound(&zs, uLong(band->rawSize)) + 16));
    zs.next_out = reinterpret_cast<Bytef *>(band->compressed.data());
    zs.avail_out = uInt(band->compressed.size());
    quint32 adler = 1;
    bool ok = true;
    int y = band->firstRow;
    while (ok && y < band->endRow) {
        uchar *out = chunk.get();
        const int chunkEnd = std::min(band->endRow, y + kChunkRows);
        for (; y < chunkEnd; ++y) {
            const uchar *source = image.constScanLine(y);
            if (previousSource && std::memcmp(source, previousSource, sourceBytes) == 0) {
                *out++ = 2; // Up
                std::memset(out, 0, size_t(stride));
            } else {
                convertRow(source, current.data(), width, alpha);
                *out++ = 1; // Sub
                const uchar *c = current.data();
                std::memcpy(out, c, size_t(bpp));
                for (qsizetype i = bpp; i < stride; ++i)
                    out[i] = uchar(c[i] - c[i - bpp]);
                std::swap(current, previous);
            }
            out += stride;
            previousSource = source;
        }
        const size_t filled = size_t(out - chunk.get());
        adler = quint32(libdeflate_adler32(adler, chunk.get(), filled));
        zs.next_in = chunk.get();
        zs.avail_in = uInt(filled);
        const bool final = y >= band->endRow;
        // Sync flush ends a band on a byte boundary with no final bit, so bands concatenate.
        const int result = deflate(&zs, final ? (band->last ? Z_FINISH : Z_SYNC_FLUSH) : Z_NO_FLUSH);
        if (final)
            ok = band->last ? result == Z_STREAM_END : (result == Z_OK && zs.avail_in == 0);
        else
            ok = result == Z_OK && zs.avail_in == 0;
    }
    band->adler = adler;
    band->ok = ok && rows > 0;
    band->compressed.resize(qsizetype(zs.total_out));
    deflateEnd(&zs);
}

bool rowsHaveTransparency(const QImage &image, int firstRow, int endRow)
{
    const int width = image.width();
    for (int y = firstRow; y < endRow; ++y) {
        const quint32 *px = reinterpret_cast<const quint32 *>(image.constScanLine(y));
        quint32 all = 0xffffffffu;
        for (int x = 0; x < width; ++x) // width held in a local, so the loop vectorises
            all &= px[x];
        if ((all >> 24) != 0xff)
            return true;
    }
    return false;
}

} // namespace

namespace {
QByteArray encodePngOrThrow(const QImage &source, int threads);
}

QByteArray encodePng(const QImage &source, int threads)
{
    // The buffers grow with the image; running out of memory is an encoding failure.
    try {
        return encodePngOrThrow(source, threads);
    } catch (const std::exception &) {
        return {};
    }
}

namespace {

QByteArray encodePngOrThrow(const QImage &source, int threads)
{
    if (source.isNull())
        return {};
    QImage image = source;
    if (image.format() != QImage::Format_ARGB32 && image.format() != QImage::Format_RGB32)
        image = image.convertToFormat(image.hasAlphaChannel() ? QImage::Format_ARGB32 : QImage::Format_RGB32);
    const int width = image.width();
    const int height = image.height();

    if (threads <= 0)
        threads = std::max(1, QThread::idealThreadCount());
    // Several bands per thread keep the cores busy when bands differ in content.
    const qint64 rowBytes = qint64(width) * 4 + 1;
    const int minRows = int(std::max<qint64>(1, (256 * 1024) / rowBytes));
    const int bandCount = std::clamp(std::min(threads * 4, height / minRows), 1, height);
    std::vector<Band> bands(static_cast<size_t>(bandCount));
    for (int i = 0; i < bandCount; ++i) {
        bands[size_t(i)].firstRow = int(qint64(height) * i / bandCount);
        bands[size_t(i)].endRow = int(qint64(height) * (i + 1) / bandCount);
        bands[size_t(i)].last = i == bandCount - 1;
    }
    const auto forEachBand = [&](const std::function<void(Band &)> &work) {
        if (bandCount == 1 || threads == 1)
            std::for_each(bands.begin(), bands.end(), work);
        else
            QtConcurrent::blockingMap(bands, work);
    };

    // RGB when every pixel is opaque, which is what guides are.
    bool alpha = false;
    if (image.hasAlphaChannel()) {
        forEachBand([&](Band &band) { band.transparent = rowsHaveTransparency(image, band.firstRow, band.endRow); });
        alpha = std::any_of(bands.begin(), bands.end(), [](const Band &band) { return band.transparent; });
    }

    const int level = 1;
    forEachBand([&](Band &band) { encodeBand(image, alpha, level, &band); });

    quint32 adler = 1;
    qint64 total = 0;
    for (const Band &band : bands) {
        if (!band.ok)
            return {};
        adler = quint32(adler32_combine(adler, band.adler, z_off_t(band.rawSize)));
        total += band.compressed.size();
    }

    QByteArray out;
    out.reserve(qsizetype(total + 128 + 12 * bandCount));
    static const uchar signature[8] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1a, '\n'};
    out.append(reinterpret_cast<const char *>(signature), 8);
    uchar ihdr[13];
    putBigEndian32(ihdr, quint32(width));
    putBigEndian32(ihdr + 4, quint32(height));
    ihdr[8] = 8;                 // bit depth
    ihdr[9] = alpha ? 6 : 2;     // RGBA or RGB
    ihdr[10] = ihdr[11] = ihdr[12] = 0;
    appendChunk(&out, "IHDR", ihdr, 13);

    // The zlib stream: header (deflate, 32K window, fastest), the bands, the Adler-32.
    for (size_t i = 0; i < bands.size(); ++i) {
        QByteArray data;
        const bool first = i == 0;
        const bool last = i + 1 == bands.size();
        if (first || last) {
            data.reserve(bands[i].compressed.size() + 6);
            if (first)
                data.append(char(0x78)).append(char(0x01));
            data.append(bands[i].compressed);
            if (last) {
                uchar tail[4];
                putBigEndian32(tail, adler);
                data.append(reinterpret_cast<const char *>(tail), 4);
            }
            appendChunk(&out, "IDAT", reinterpret_cast<const uchar *>(data.constData()), data.size());
        } else {
            appendChunk(&out, "IDAT", reinterpret_cast<const uchar *>(bands[i].compressed.constData()),
                        bands[i].compressed.size());
        }
    }
    appendChunk(&out, "IEND", nullptr, 0);
    return out;
}

} // namespace

bool writeGuidePng(const QImage &image, const QString &path, QString *error, int threads)
{
    const QByteArray png = encodePng(image, threads);
    if (png.isEmpty()) {
        if (error)
            *error = QStringLiteral("The image could not be encoded as PNG.");
        return false;
    }
    return vg::writeFileReplacing(path, png, error);
}
