// Guide rendering and PNG export at the sizes installers use, with every drawing switch on,
// against Qt's own PNG writer on the same image.
#include "guide/GuidePngExport.h"
#include "guide/GuideRenderer.h"
#include "guide/PngWriter.h"
#include "guide/ScanlineDeflater.h"

#include <QBuffer>
#include <QDir>
#include <QGuiApplication>
#include <QImageWriter>
#include <QtEndian>

#include <benchmark/benchmark.h>

#include <zlib.h>

#include <cstring>

namespace {

GuideSettings allSwitchesOn(int width, int height)
{
    GuideSettings s;
    s.pixelWidth = width;
    s.pixelHeight = height;
    s.realWidth = width;
    s.realHeight = height;
    s.displayCircle = true;
    s.displayCrossline = true;
    s.displayInnerline = true;
    s.displaySquareStatus = true;
    s.displayProjectorInfo = true;
    s.projectorCount = 3;
    s.projectorCountY = 2;
    s.explain = QStringLiteral("Main hall, north wall. Projectors hang 4.2 m above the floor.");
    GuideLayerObject mask;
    mask.type = QStringLiteral("mask");
    mask.maskShape = QStringLiteral("circle");
    mask.centerX = width * 0.8;
    mask.centerY = height * 0.7;
    mask.width = mask.height = height * 0.2;
    mask.maskWireframe = true;
    mask.maskULines = 6;
    mask.maskVLines = 6;
    mask.fillColor = QColor(255, 255, 255);
    s.imageObjects.append(mask);
    return s;
}

const QImage &cachedGuide(int width, int height)
{
    static QMap<int, QImage> cache;
    auto it = cache.find(width);
    if (it == cache.end())
        it = cache.insert(width, renderGuideImage(allSwitchesOn(width, height)));
    return *it;
}

QString outputPath()
{
    return QDir::temp().filePath(QStringLiteral("vg_bench_guide_export.png"));
}

void BM_RenderGuide(benchmark::State &state)
{
    const GuideSettings s = allSwitchesOn(int(state.range(0)), int(state.range(1)));
    for (auto _ : state)
        benchmark::DoNotOptimize(renderGuideImage(s));
}

void BM_EncodePng(benchmark::State &state)
{
    const QImage &image = cachedGuide(int(state.range(0)), int(state.range(1)));
    qint64 size = 0;
    for (auto _ : state) {
        const QByteArray png = encodePng(image);
        size = png.size();
        benchmark::DoNotOptimize(png.constData());
    }
    state.counters["png_bytes"] = double(size);
}

void BM_RenderAndExport(benchmark::State &state)
{
    const GuideSettings s = allSwitchesOn(int(state.range(0)), int(state.range(1)));
    const QString path = outputPath();
    for (auto _ : state) {
        QString error;
        if (!writeGuidePng(renderGuideImage(s), path, &error))
            state.SkipWithError(error.toUtf8().constData());
    }
    QFile::remove(path);
}

// What the guide command does: bands painted and deflated on the cores, never the whole image.
void BM_RenderAndEncodeInBands(benchmark::State &state)
{
    const GuideSettings s = allSwitchesOn(int(state.range(0)), int(state.range(1)));
    qint64 size = 0;
    for (auto _ : state) {
        const QByteArray png = encodeGuidePng(s);
        size = png.size();
        benchmark::DoNotOptimize(png.constData());
    }
    state.counters["png_bytes"] = double(size);
}

// The 8K guide's rows as PNG filters them, taken back out of its PNG.
const QByteArray &filteredGuideRows()
{
    static const QByteArray rows = [] {
        const QByteArray png = encodeGuidePng(allSwitchesOn(7680, 4320));
        QByteArray stream;
        for (qsizetype at = 8; at + 12 <= png.size();) {
            const quint32 length = qFromBigEndian<quint32>(png.constData() + at);
            if (png.mid(at + 4, 4) == "IDAT")
                stream += png.mid(at + 8, qsizetype(length));
            at += 12 + qsizetype(length);
        }
        uLongf size = uLongf(4320) * (7680 * 3 + 1);
        QByteArray raw(qsizetype(size), Qt::Uninitialized);
        if (uncompress(reinterpret_cast<Bytef *>(raw.data()), &size, reinterpret_cast<const Bytef *>(stream.constData()),
                       uLong(stream.size())) != Z_OK)
            raw.clear();
        return raw;
    }();
    return rows;
}

// Deflating those rows, 16 at a time as the encoder hands them over: 0 the scanline
// deflater of guide exports, 1 zlib at level 1 (the whole-image encoder's settings).
void BM_DeflateGuideRows(benchmark::State &state)
{
    const QByteArray &raw = filteredGuideRows();
    const int rowBytes = 7680 * 3 + 1;
    const int rows = int(raw.size() / rowBytes);
    if (rows == 0) {
        state.SkipWithError("no rows");
        return;
    }
    qint64 size = 0;
    for (auto _ : state) {
        if (state.range(0) == 0) {
            ScanlineDeflater deflater(rowBytes, 3, 16);
            for (int y = 0; y < rows; y += 16) {
                const int count = std::min(16, rows - y);
                std::memcpy(deflater.rows(), raw.constData() + qsizetype(y) * rowBytes, size_t(count) * rowBytes);
                deflater.compressRows(count);
            }
            deflater.finish(true);
            size = deflater.output().size();
        } else {
            z_stream zs{};
            deflateInit2(&zs, 1, Z_DEFLATED, -15, 8, Z_DEFAULT_STRATEGY);
            QByteArray out(qsizetype(deflateBound(&zs, uLong(raw.size()))), Qt::Uninitialized);
            zs.next_in = reinterpret_cast<Bytef *>(const_cast<char *>(raw.constData()));
            zs.avail_in = uInt(raw.size());
            zs.next_out = reinterpret_cast<Bytef *>(out.data());
            zs.avail_out = uInt(out.size());
            deflate(&zs, Z_FINISH);
            size = qint64(zs.total_out);
            deflateEnd(&zs);
        }
    }
    state.counters["deflated_bytes"] = double(size);
    state.counters["filtered_bytes"] = double(raw.size());
}

// The quarter turn adds a pass over the whole image.
void BM_RenderAndExportRotated(benchmark::State &state)
{
    GuideSettings s = allSwitchesOn(int(state.range(0)), int(state.range(1)));
    s.rotate = true;
    s.flipH = true;
    const QString path = outputPath();
    for (auto _ : state) {
        QString error;
        if (!writeGuidePng(renderGuideImage(s), path, &error))
            state.SkipWithError(error.toUtf8().constData());
    }
    QFile::remove(path);
}

void BM_QtImageWriterPng(benchmark::State &state)
{
    const QImage &image = cachedGuide(int(state.range(0)), int(state.range(1)));
    qint64 size = 0;
    for (auto _ : state) {
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        QImageWriter writer(&buffer, "png");
        writer.write(image);
        size = buffer.size();
    }
    state.counters["png_bytes"] = double(size);
}

void sizes(benchmark::internal::Benchmark *b)
{
    b->Args({1920, 1200})->Args({3840, 2160})->Args({7680, 4320})->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();
}

} // namespace

BENCHMARK(BM_RenderGuide)->Apply(sizes);
BENCHMARK(BM_EncodePng)->Apply(sizes);
BENCHMARK(BM_RenderAndExport)->Apply(sizes);
BENCHMARK(BM_RenderAndEncodeInBands)->Apply(sizes);
BENCHMARK(BM_RenderAndExportRotated)->Args({7680, 4320})->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();
BENCHMARK(BM_QtImageWriterPng)->Apply(sizes);
BENCHMARK(BM_DeflateGuideRows)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
