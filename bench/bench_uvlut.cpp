// UV look-up table of 3840 × 2160 on the bundled sample (projector, wall, person) seen from
// a camera beside the projector: the CPU raster, the GPU probe (Mesa llvmpipe without a GPU),
// and the binary table's write speed against a plain write of as many bytes in one call.
#include "exchange/UvLutWriter.h"
#include "project/ProjectFile.h"
#include "scene/gl/PrivateGlDisplay.h"
#include "scene/gl/UvLutGlProbe.h"

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <memory>

using namespace vg::exchange;

namespace {

constexpr int kWidth = 3840;
constexpr int kHeight = 2160;

struct Fixture {
    QVector<GuideObject> objects;
    UvLutTriangles triangles;
    UvLutProbeInput input;
    QImage sourceImage;
    std::unique_ptr<UvLutGlProbe> probe;
    QTemporaryDir folder;

    Fixture()
    {
        ProjectDocument doc;
        QString error;
        if (!loadProjectDocument(QStringLiteral(VG_SOURCE_DIR "/samples/sample.vgs"), &doc, &error))
            qFatal("sample: %s", qPrintable(error));
        objects = doc.views.first().objects;
        int projector = -1;
        for (int i = 0; i < objects.size() && projector < 0; ++i)
            if (objects[i].isProjector())
                projector = i;
        objects[projector].projector_resolution_width = kWidth;
        objects[projector].projector_resolution_height = kHeight;
        GuideObject camera = objects[projector];
        camera.guide_index = KindCamera;
        camera.translate_x += 0.35f;
        camera.rotate_y += 4.0f;
        objects.append(camera);
        triangles = collectUvLutTriangles(objects);
        input.triangles = &triangles;
        input.output = vg::scene::LensModel::forObject(objects, projector);
        input.source = vg::scene::LensModel::forObject(objects, int(objects.size()) - 1);
        sourceImage = QImage(1920, 1080, QImage::Format_RGB32);
        sourceImage.fill(Qt::gray);
    }
};

Fixture &fixture()
{
    static Fixture f;
    return f;
}

UvLutResult &result()
{
    static UvLutResult r = [] {
        UvLutResult out;
        out.table.width = 0;
        QString error;
        if (!rasterizeUvLut(fixture().input, &out.table, &error))
            qFatal("raster: %s", qPrintable(error));
        out.source.resolutionWidth = 1920;
        out.source.resolutionHeight = 1200;
        out.source.imageWidth = 1920;
        out.source.imageHeight = 1080;
        return out;
    }();
    return r;
}

void BM_UvLut_CpuRaster_4K(benchmark::State &state)
{
    Fixture &f = fixture();
    for (auto _ : state) {
        UvLutTable table;
        QString error;
        if (!rasterizeUvLut(f.input, &table, &error))
            state.SkipWithError(qPrintable(error));
        benchmark::DoNotOptimize(table.samples.data());
    }
    state.counters["pixels"] = double(kWidth) * kHeight;
}

void BM_UvLut_GpuProbe_4K(benchmark::State &state)
{
    Fixture &f = fixture();
    if (!f.probe)
        f.probe = std::make_unique<UvLutGlProbe>();
    UvLutProbeInput input = f.input;
    input.aaSamples = int(state.range(0));
    for (auto _ : state) {
        UvLutTable table;
        QString error;
        if (!f.probe->probe(input, &table, {}, &error)) {
            state.SkipWithError(qPrintable(error));
            break;
        }
        benchmark::DoNotOptimize(table.samples.data());
    }
    state.SetLabel(f.probe->rendererDescription().toStdString());
}

void BM_UvLut_WriteBinary_4K(benchmark::State &state)
{
    const UvLutResult &r = result();
    const QString path = QDir(fixture().folder.path()).filePath(QStringLiteral("bench.uvlut"));
    for (auto _ : state) {
        QString error;
        if (!writeUvLutBinary(r, path, &error))
            state.SkipWithError(qPrintable(error));
    }
    state.SetBytesProcessed(state.iterations() * (40 + 16 * qint64(kWidth) * kHeight));
}

// The same number of bytes in one write and a flush: what the file system gives at best.
void BM_PlainFileWrite_4K(benchmark::State &state)
{
    const QByteArray bytes(40 + 16 * qint64(kWidth) * kHeight, 'x');
    const QString path = QDir(fixture().folder.path()).filePath(QStringLiteral("plain.bin"));
    for (auto _ : state) {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.flush())
            state.SkipWithError("plain write failed");
    }
    state.SetBytesProcessed(state.iterations() * bytes.size());
}

} // namespace

BENCHMARK(BM_UvLut_CpuRaster_4K)->Unit(benchmark::kMillisecond)->UseRealTime()->MinTime(3.0);
BENCHMARK(BM_UvLut_GpuProbe_4K)->Arg(1)->Arg(4)->Unit(benchmark::kMillisecond)->UseRealTime()->MinTime(3.0);
BENCHMARK(BM_UvLut_WriteBinary_4K)->Unit(benchmark::kMillisecond)->UseRealTime()->MinTime(3.0);
BENCHMARK(BM_PlainFileWrite_4K)->Unit(benchmark::kMillisecond)->UseRealTime()->MinTime(3.0);

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") && qEnvironmentVariableIsEmpty("DISPLAY"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    QString error;
    if (!ensureGlDisplay(&error))
        qWarning("%s", qPrintable(error));
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    fixture().probe.reset();
    benchmark::Shutdown();
    return 0;
}
