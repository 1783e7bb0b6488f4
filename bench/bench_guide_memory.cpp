// Peak memory of large guides whose cell labels are as large as their cells: the label
// glyphs are drawn as outlines above a size cap, so one 16K guide stays far below 2 GB.
// Run: vg_bench_guide_memory (QT_QPA_PLATFORM=offscreen); the counter is the process's
// peak resident size after the render, which includes the 16K image itself (530 MB).
#include "guide/GuidePngExport.h"
#include "guide/GuideRenderer.h"

#include <QGuiApplication>

#include <benchmark/benchmark.h>

#include <sys/resource.h>

namespace {

double peakResidentMegabytes()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return double(usage.ru_maxrss) / 1024.0;
}

// 0: one cell; 1: 4 x 3 cells; both 15360 x 8640 with labels at the largest font scale.
void BM_LargeLabelGuide(benchmark::State &state)
{
    GuideSettings s;
    s.pixelWidth = 15360;
    s.pixelHeight = 8640;
    s.columns = state.range(0) == 0 ? 1 : 4;
    s.rows = state.range(0) == 0 ? 1 : 3;
    s.displayNumber = true;
    s.fontScale = 50.0;
    for (auto _ : state) {
        const QImage image = renderGuideImage(s);
        benchmark::DoNotOptimize(image.constBits());
        if (image.isNull())
            state.SkipWithError("render failed");
    }
    state.counters["peak_rss_mb"] = peakResidentMegabytes();
}

// The same 16K guide written as PNG band by band, as the guide command does; run first,
// before any whole 16K image raises the peak.
void BM_LargeGuideEncodedInBands(benchmark::State &state)
{
    GuideSettings s;
    s.pixelWidth = 15360;
    s.pixelHeight = 8640;
    s.columns = 4;
    s.rows = 3;
    s.displayNumber = true;
    s.fontScale = 50.0;
    for (auto _ : state) {
        const QByteArray png = encodeGuidePng(s);
        benchmark::DoNotOptimize(png.constData());
        if (png.isEmpty())
            state.SkipWithError("encode failed");
    }
    state.counters["peak_rss_mb"] = peakResidentMegabytes();
}

} // namespace

BENCHMARK(BM_LargeGuideEncodedInBands)->Iterations(1)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_LargeLabelGuide)->Arg(0)->Arg(1)->Iterations(1)->Unit(benchmark::kMillisecond)->UseRealTime();

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") ? QByteArray("offscreen")
                                                                               : qgetenv("QT_QPA_PLATFORM"));
    QGuiApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
