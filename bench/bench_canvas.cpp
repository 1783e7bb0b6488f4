// A canvas of 20 guides laid out 5 x 4 so that its export is 8K (7680 x 4320): composing the
// picture, and composing plus writing the PNG as "Export Canvas PNG" does.
#include "canvas/CanvasNaming.h"
#include "canvas/CanvasPainter.h"
#include "guide/GuideRenderer.h"

#include <QDir>
#include <QFile>
#include <QGuiApplication>

#include <benchmark/benchmark.h>

namespace {

constexpr int kColumns = 5;
constexpr int kRows = 4;
constexpr int kCellWidth = 7680 / kColumns;  // 1536
constexpr int kCellHeight = 4320 / kRows;    // 1080

// Each guide is rendered at twice its place on the canvas (3072 x 2160) and placed at half
// scale, the usual case of 4K guides gathered on one sheet; every fourth one is cropped and
// turned a little so the general transform path is measured too.
struct Fixture {
    CanvasTabSettings canvas;
    CanvasSources sources;
};

const Fixture &fixture()
{
    static const Fixture f = [] {
        Fixture out;
        for (int i = 0; i < kColumns * kRows; ++i) {
            GuideSettings s;
            s.pixelWidth = s.realWidth = 2 * kCellWidth;
            s.pixelHeight = s.realHeight = 2 * kCellHeight;
            s.rows = 10 + i;
            s.explain = QStringLiteral("Guide %1").arg(i + 1);
            const QImage image = renderGuideImage(s);
            out.sources.guides.append({s.explain, CanvasImage{image.size(), image}, QSizeF(s.realWidth, s.realHeight)});
            CanvasObjectSettings object;
            object.guide_index = i;
            object.translate_x = (i % kColumns + 0.5) * kCellWidth;
            object.translate_y = (i / kColumns + 0.5) * kCellHeight;
            object.scale_x = object.scale_y = 0.5;
            if (i % 4 == 3) {
                object.rotation = 3;
                object.crop_left = 0.05;
                object.crop_right = 0.95;
                object.scale_x = object.scale_y = 0.45;
            }
            out.canvas.objects.append(object);
        }
        return out;
    }();
    return f;
}

void BM_RenderCanvas8K(benchmark::State &state)
{
    const Fixture &f = fixture();
    for (auto _ : state) {
        const QImage image = renderCanvasImage(f.canvas, f.sources);
        benchmark::DoNotOptimize(image.constBits());
        state.counters["width"] = image.width();
        state.counters["height"] = image.height();
    }
}

void BM_ExportCanvas8K(benchmark::State &state)
{
    const Fixture &f = fixture();
    const QString path = QDir::temp().filePath(QStringLiteral("vg_bench_canvas.png"));
    for (auto _ : state) {
        QString written, error;
        if (!exportCanvasPng(f.canvas, f.sources, path, &written, &error))
            state.SkipWithError(error.toUtf8().constData());
    }
    QFile::remove(path);
}

} // namespace

BENCHMARK(BM_RenderCanvas8K)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();
BENCHMARK(BM_ExportCanvas8K)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();

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
