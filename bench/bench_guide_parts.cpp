// What each drawing element of the guide costs on an 8K guide, for finding slow parts.
#include "guide/GuideRenderer.h"

#include <QGuiApplication>

#include <benchmark/benchmark.h>

namespace {

void BM_GuidePart(benchmark::State &state)
{
    GuideSettings s;
    s.pixelWidth = 7680;
    s.pixelHeight = 4320;
    s.displayCenterline = s.displayOutline = s.displayLogo = s.displayResolution = s.displayReal = false;
    s.displayExplain = s.displayNumber = s.displayCellBoundary = false;
    s.showWidthDimension = s.showHeightDimension = false;
    switch (state.range(0)) {
    case 0: break; // cells only
    case 1: s.displayNumber = true; break;
    case 2: s.displayCellBoundary = true; s.displayInnerline = true; break;
    case 3: s.displayCrossline = true; break;
    case 4: s.displayCenterline = true; break;
    case 5: s.displayCircle = true; break;
    case 6: s.displayOutline = true; break;
    case 7: s.displayResolution = s.displayReal = s.displaySquareStatus = true; break;
    case 8: s.showWidthDimension = s.showHeightDimension = true; break;
    case 9: s.displayExplain = true; break;
    case 10: s.displayProjectorInfo = true; s.projectorCount = 3; s.projectorCountY = 2; break;
    case 11: s.displayLogo = true; break;
    case 12: s.rotate = true; break;
    }
    for (auto _ : state)
        benchmark::DoNotOptimize(renderGuideImage(s));
}

} // namespace

BENCHMARK(BM_GuidePart)->DenseRange(0, 12)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();

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
