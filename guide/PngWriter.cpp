#include "guide/PngWriter.h"

#include "common/AtomicFileWrite.h"
#include "guide/ScanlineDeflater.h"

#include <QThread>
#include <QtEndian>
#include <QtConcurrent/QtConcurrentMap>

#include <libdeflate.h>
#include <zlib.h>

#if defined(__GNUC__) && (defined(__x86_64__) || defined(__i386__))
#include <immintrin.h>
#endif
#ifdef Q_OS_LINUX
#include <sys/mman.h>
#endif

#include <algorithm>
#include <cstdlib>
#include <atomic>
#include <exception>
#include <functional>
#include <limits>
#include <memory>
#include <mutex>
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

// A pixel's bytes in PNG order (R, G, B, A) as a little-endian word; ARGB32 holds them
// as B, G, R, A.
inline quint32 pngOrder(quint32 argb)
{
    return ((argb >> 16) & 0xffu) | (argb & 0xff00ff00u) | ((argb & 0xffu) << 16);
}

// Byte-wise a - b modulo 256 in all four bytes at once, no borrow across bytes.
inline quint32 byteDifference(quint32 a, quint32 b)
{
    constexpr quint32 high = 0x80808080u;
    return ((a | high) - (b & ~high)) ^ ((a ^ ~b) & high);
}

// Filter Sub of one row straight from the pixels. Every pixel is stored as four bytes;
// in RGB the next pixel overwrites the fourth, so `out` needs kRowSlack bytes beyond the
// row. Returns all pixels ANDed together: its top byte is 0xff when the row is opaque.
constexpr int kRowSlack = 16;

quint32 subFilterRowPortable(const uchar *source, int width, bool alpha, uchar *out)
{
    const quint32 *px = reinterpret_cast<const quint32 *>(source);
    const int bpp = alpha ? 4 : 3;
    quint32 left = 0;
    quint32 all = 0xffffffffu;
    for (int x = 0; x < width; ++x) {
        const quint32 v = px[x];
        all &= v;
        const quint32 current = pngOrder(v);
        qToLittleEndian(byteDifference(current, left), out);
        left = current;
        out += bpp;
    }
    return all;
}

#if defined(__GNUC__) && (defined(__x86_64__) || defined(__i386__))
#define VG_PNG_FILTER_SSSE3 1
// Four pixels at a time: the difference to the pixel on the left in B, G, R, A order,
// then one byte shuffle to R, G, B; 16 bytes are stored and the next store starts 12 on.
__attribute__((target("ssse3"))) quint32 subFilterRowRgbSsse3(const uchar *source, int width, uchar *out)
{
    const quint32 *px = reinterpret_cast<const quint32 *>(source);
    const __m128i toRgb = _mm_setr_epi8(2, 1, 0, 6, 5, 4, 10, 9, 8, 14, 13, 12, -1, -1, -1, -1);
    __m128i all = _mm_set1_epi32(-1);
    int x = 0;
    if (width >= 5) {
        // The first pixel's left neighbour is zero; the vector loop starts at pixel 1.
        const quint32 first = px[0];
        const quint32 firstRgb = pngOrder(first);
        qToLittleEndian(firstRgb, out);
        all = _mm_and_si128(all, _mm_set1_epi32(int(first)));
        out += 3;
        x = 1;
        for (; x + 4 <= width; x += 4) {
            const __m128i current = _mm_loadu_si128(reinterpret_cast<const __m128i *>(px + x));
            const __m128i left = _mm_loadu_si128(reinterpret_cast<const __m128i *>(px + x - 1));
            all = _mm_and_si128(all, current);
            const __m128i diff = _mm_sub_epi8(current, left);
            _mm_storeu_si128(reinterpret_cast<__m128i *>(out), _mm_shuffle_epi8(diff, toRgb));
            out += 12;
        }
    }
    alignas(16) quint32 lanes[4];
    _mm_store_si128(reinterpret_cast<__m128i *>(lanes), all);
    quint32 result = lanes[0] & lanes[1] & lanes[2] & lanes[3];
    if (x > 0 && x < width) {
        // The remaining pixels, each against its left neighbour.
        quint32 left = pngOrder(px[x - 1]);
        for (; x < width; ++x) {
            const quint32 v = px[x];
            result &= v;
            const quint32 current = pngOrder(v);
            qToLittleEndian(byteDifference(current, left), out);
            left = current;
            out += 3;
        }
    } else if (x == 0) {
        result &= subFilterRowPortable(source, width, false, out);
    }
    return result;
}

bool haveSsse3()
{
    static const bool have = __builtin_cpu_supports("ssse3");
    return have;
}
#endif

quint32 subFilterRow(const uchar *source, int width, bool alpha, uchar *out)
{
#ifdef VG_PNG_FILTER_SSSE3
    if (!alpha && haveSsse3())
        return subFilterRowRgbSsse3(source, width, out);
#endif
    return subFilterRowPortable(source, width, alpha, out);
}

struct DeflateStream {
    z_stream zs{};
    bool open = false;
    // Level 1 with the smaller hash: on guide pictures (long runs) as small as the larger
    // hash and faster, since the hash is slid through with every 32 KB of input.
    DeflateStream() { open = deflateInit2(&zs, 1, Z_DEFLATED, -15, 8, Z_DEFAULT_STRATEGY) == Z_OK; }
    ~DeflateStream()
    {
        if (open)
            deflateEnd(&zs);
    }
};

// Deflates all of the stream's input into `out` from byte total_out on, growing `out`
// while deflate fills it.
bool deflateInto(z_stream *zs, int flush, QByteArray *out)
{
    for (;;) {
        if (qsizetype(zs->total_out) == out->size())
            out->resize(out->size() + std::max<qsizetype>(out->size() / 2, 4096));
        zs->next_out = reinterpret_cast<Bytef *>(out->data()) + zs->total_out;
        zs->avail_out = uInt(std::min<qsizetype>(out->size() - qsizetype(zs->total_out), 1 << 30));
        const int result = deflate(zs, flush);
        if (result == Z_STREAM_END)
            return flush == Z_FINISH;
        // Nothing left to do: the previous call ended the flush exactly at the buffer's end.
        if (result == Z_BUF_ERROR)
            return flush != Z_FINISH && zs->avail_in == 0;
        if (result != Z_OK)
            return false;
        // Done when the input is used up and deflate had room left: nothing is held back.
        if (flush != Z_FINISH && zs->avail_in == 0 && zs->avail_out > 0)
            return true;
    }
}

constexpr int kChunkRows = 16;

// Filters rows [first, end) into `out`. A row equal to the one above becomes filter Up (all
// zeros); any other row filter Sub, which flattens runs of one colour. `previous` is the
// source row above the first (null: none) and is left at the last row. Returns all
// pixels of the Sub rows ANDed together (the Up rows repeat one of them).
quint32 filterRows(const uchar *bits, qsizetype bytesPerLine, int first, int end, int width, bool alpha,
                   const uchar **previous, uchar *out)
{
    const qsizetype stride = qsizetype(width) * (alpha ? 4 : 3);
    const size_t sourceBytes = size_t(width) * 4;
    quint32 all = 0xffffffffu;
    for (int y = first; y < end; ++y) {
        const uchar *source = bits + qsizetype(y) * bytesPerLine;
        if (*previous && std::memcmp(source, *previous, sourceBytes) == 0) {
            *out++ = 2; // Up
            std::memset(out, 0, size_t(stride));
        } else {
            *out++ = 1; // Sub
            all &= subFilterRow(source, width, alpha, out);
        }
        out += stride;
        *previous = source;
    }
    return all;
}

// Filters and deflates `rows` rows of 32-bit pixels with zlib, for any picture. `rowAbove`
// is the source row before the first, or null. Rows are filtered a few at a time into a
// small buffer and deflated from there, so the rows never exist whole in filtered form: no
// large fresh buffer to clear and fault in. The deflate data ends on a byte boundary (sync
// flush) so that bands concatenate, or finishes the stream for the last band.
void encodeRows(const uchar *bits, qsizetype bytesPerLine, int rows, int width, const uchar *rowAbove, bool alpha,
                Band *band)
{
    const qsizetype stride = qsizetype(width) * (alpha ? 4 : 3);
    const size_t chunkBytes = size_t(kChunkRows) * size_t(stride + 1) + kRowSlack;
    std::unique_ptr<uchar[]> chunk(new (std::nothrow) uchar[chunkBytes]);
    DeflateStream stream;
    if (!chunk || !stream.open || rows <= 0)
        return;
    z_stream &zs = stream.zs;
    band->rawSize = qint64(rows) * qint64(stride + 1);
    // Guides deflate to a few percent; the buffer grows when a picture does not.
    band->compressed.resize(qsizetype(std::min<qint64>(band->rawSize / 16 + 4096, 64 << 20)));
    quint32 adler = 1;
    quint32 all = 0xffffffffu;
    bool ok = true;
    const uchar *previous = rowAbove;
    for (int y = 0; ok && y < rows; y += kChunkRows) {
        const int chunkEnd = std::min(rows, y + kChunkRows);
        all &= filterRows(bits, bytesPerLine, y, chunkEnd, width, alpha, &previous, chunk.get());
        const size_t filled = size_t(chunkEnd - y) * size_t(stride + 1);
        adler = quint32(libdeflate_adler32(adler, chunk.get(), filled));
        zs.next_in = chunk.get();
        zs.avail_in = uInt(filled);
        const bool final = chunkEnd >= rows;
        // Sync flush ends a band on a byte boundary with no final bit, so bands concatenate.
        ok = deflateInto(&zs, final ? (band->last ? Z_FINISH : Z_SYNC_FLUSH) : Z_NO_FLUSH, &band->compressed);
    }
    band->adler = adler;
    band->transparent = (all >> 24) != 0xffu;
    band->ok = ok;
    band->compressed.resize(qsizetype(zs.total_out));
}

// The same for drawn pictures, with the deflater that matches only runs, the pixel to the
// left and the row above: a third of zlib's time on guides, and smaller.
void encodeDrawnRows(const uchar *bits, qsizetype bytesPerLine, int rows, int width, bool alpha, Band *band)
{
    const int bpp = alpha ? 4 : 3;
    const qsizetype stride = qsizetype(width) * bpp;
    if (rows <= 0 || stride + 1 > std::numeric_limits<int>::max() / (kChunkRows + 1))
        return;
    ScanlineDeflater deflater(int(stride + 1), bpp, kChunkRows);
    band->rawSize = qint64(rows) * qint64(stride + 1);
    // Room for what guides deflate to, taken once rather than grown (and copied) by halves.
    deflater.reserveOutput(qsizetype(std::min<qint64>(band->rawSize / 12 + 4096, 256 << 20)));
    quint32 adler = 1;
    quint32 all = 0xffffffffu;
    const uchar *previous = nullptr;
    for (int y = 0; y < rows; y += kChunkRows) {
        const int chunkEnd = std::min(rows, y + kChunkRows);
        all &= filterRows(bits, bytesPerLine, y, chunkEnd, width, alpha, &previous, deflater.rows());
        const size_t filled = size_t(chunkEnd - y) * size_t(stride + 1);
        adler = quint32(libdeflate_adler32(adler, deflater.rows(), filled));
        deflater.compressRows(chunkEnd - y);
    }
    deflater.finish(band->last);
    band->compressed = deflater.output();
    band->adler = adler;
    band->transparent = (all >> 24) != 0xffu;
    band->ok = true;
}

// Signature, header, the bands as one zlib stream (header, deflate data, the combined
// Adler-32) and the end.
QByteArray assemblePng(int width, int height, bool alpha, const std::vector<Band> &bands)
{
    quint32 adler = 1;
    qint64 total = 0;
    for (const Band &band : bands) {
        if (!band.ok)
            return {};
        adler = quint32(adler32_combine(adler, band.adler, z_off_t(band.rawSize)));
        total += band.compressed.size();
    }

    QByteArray out;
    out.reserve(qsizetype(total + 128 + 12 * qint64(bands.size() + 2)));
    static const uchar signature[8] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1a, '\n'};
    out.append(reinterpret_cast<const char *>(signature), 8);
    uchar ihdr[13];
    putBigEndian32(ihdr, quint32(width));
    putBigEndian32(ihdr + 4, quint32(height));
    ihdr[8] = 8;                 // bit depth
    ihdr[9] = alpha ? 6 : 2;     // RGBA or RGB
    ihdr[10] = ihdr[11] = ihdr[12] = 0;
    appendChunk(&out, "IHDR", ihdr, 13);

    // IDAT chunks join into one zlib stream: its header (deflate, 32K window, fastest) and
    // its Adler-32 get chunks of their own, so the bands are copied once, into `out`.
    static const uchar zlibHeader[2] = {0x78, 0x01};
    appendChunk(&out, "IDAT", zlibHeader, 2);
    for (const Band &band : bands)
        appendChunk(&out, "IDAT", reinterpret_cast<const uchar *>(band.compressed.constData()), band.compressed.size());
    uchar tail[4];
    putBigEndian32(tail, adler);
    appendChunk(&out, "IDAT", tail, 4);
    appendChunk(&out, "IEND", nullptr, 0);
    return out;
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

    forEachBand([&](Band &band) {
        const uchar *above = band.firstRow > 0 ? image.constScanLine(band.firstRow - 1) : nullptr;
        encodeRows(image.constScanLine(band.firstRow), image.bytesPerLine(), band.endRow - band.firstRow, width, above,
                   alpha, &band);
    });
    return assemblePng(width, height, alpha, bands);
}

// A band buffer on large pages where the system offers them: a fresh buffer is faulted in
// page by page on its first painting, and 2 MB pages take a 512th of the faults.
QImage allocateRows(int width, int rows)
{
#ifdef Q_OS_LINUX
    constexpr size_t kLargePage = size_t(2) << 20;
    const qsizetype bytesPerLine = qsizetype(width) * 4;
    const size_t bytes = size_t(bytesPerLine) * size_t(rows);
    if (bytes >= kLargePage) {
        const size_t rounded = (bytes + kLargePage - 1) / kLargePage * kLargePage;
        if (void *memory = std::aligned_alloc(kLargePage, rounded)) {
            ::madvise(memory, rounded, MADV_HUGEPAGE); // advice only: without it, small pages
            return QImage(static_cast<uchar *>(memory), width, rows, bytesPerLine, QImage::Format_ARGB32_Premultiplied,
                          [](void *m) { std::free(m); }, memory);
        }
    }
#endif
    return QImage(width, rows, QImage::Format_ARGB32_Premultiplied);
}

// Band buffers handed from one band to the next on the same or another thread, so that
// each thread faults in one buffer and reuses it.
class RowBufferPool
{
public:
    RowBufferPool(int width, int rows) : m_width(width), m_rows(rows) {}

    QImage take()
    {
        {
            const std::lock_guard<std::mutex> lock(m_mutex);
            if (!m_free.empty()) {
                QImage image = std::move(m_free.back());
                m_free.pop_back();
                return image;
            }
        }
        return allocateRows(m_width, m_rows);
    }

    void give(QImage image)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_free.push_back(std::move(image));
    }

private:
    const int m_width;
    const int m_rows;
    std::mutex m_mutex;
    std::vector<QImage> m_free;
};

bool bandsCoverImage(const PngBandSource &source)
{
    if (source.size.isEmpty() || source.bands.isEmpty() || !source.paint)
        return false;
    int next = 0;
    for (const QRect &band : source.bands) {
        if (band.x() != 0 || band.width() != source.size.width() || band.y() != next || band.height() <= 0)
            return false;
        next = band.y() + band.height();
    }
    return next == source.size.height();
}

QByteArray encodeOpaquePngBandsOrThrow(const PngBandSource &source, int threads, bool *translucent)
{
    if (!bandsCoverImage(source))
        return {};
    if (threads <= 0)
        threads = std::max(1, QThread::idealThreadCount());
    const int width = source.size.width();
    int maxRows = 0;
    for (const QRect &band : source.bands)
        maxRows = std::max(maxRows, band.height());
    RowBufferPool pool(width, maxRows);
    std::vector<Band> bands(size_t(source.bands.size()));
    std::vector<int> order(bands.size());
    for (size_t i = 0; i < bands.size(); ++i) {
        order[i] = int(i);
        bands[i].firstRow = source.bands.at(qsizetype(i)).y();
        bands[i].endRow = bands[i].firstRow + source.bands.at(qsizetype(i)).height();
        bands[i].last = i + 1 == bands.size();
    }
    std::atomic<bool> failed{false};
    const auto work = [&](int index) {
        if (failed.load())
            return;
        Band &band = bands[size_t(index)];
        QImage buffer = pool.take();
        if (buffer.isNull()) {
            failed = true;
            return;
        }
        QImage rows(buffer.bits(), width, band.endRow - band.firstRow, buffer.bytesPerLine(), buffer.format());
        source.paint(index, rows);
        encodeDrawnRows(rows.constBits(), rows.bytesPerLine(), rows.height(), width, false, &band);
        pool.give(std::move(buffer));
        if (!band.ok || band.transparent)
            failed = true;
    };
    if (threads == 1 || order.size() == 1)
        std::for_each(order.begin(), order.end(), work);
    else
        QtConcurrent::blockingMap(order, work);
    const bool anyTranslucent = std::any_of(bands.begin(), bands.end(), [](const Band &b) { return b.transparent; });
    if (translucent)
        *translucent = anyTranslucent;
    if (failed.load() || anyTranslucent)
        return {};
    return assemblePng(width, source.size.height(), false, bands);
}

} // namespace

QByteArray encodeOpaquePngInBands(const PngBandSource &source, int threads, bool *translucent)
{
    if (translucent)
        *translucent = false;
    try {
        return encodeOpaquePngBandsOrThrow(source, threads, translucent);
    } catch (const std::exception &) {
        return {};
    }
}

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
