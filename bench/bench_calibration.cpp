#include "calibration/ProjectorCalibration.h"
#include "tests/calibration/SyntheticCalibrationScene.h"

#include <benchmark/benchmark.h>

#include <random>

namespace {

// Points as a user picks them: half a pixel of click noise, the projector placed roughly
// (30 cm, 3 degrees off) with default lens values, several surfaces.
struct Case {
    SyntheticCalibrationScene scene;
    GuideObject start;
};

Case makeCase(int points, int surfaces)
{
    std::mt19937 rng(20261121u + unsigned(points) * 7u + unsigned(surfaces));
    SyntheticSceneOptions options;
    options.pointCount = points;
    options.surfaceCount = surfaces;
    options.noisePixels = 0.5;
    Case c;
    c.scene = makeSyntheticScene(rng, options);
    c.start = perturbedProjector(c.scene.truth, rng, 0.3, 3.0);
    if (surfaces > 1) {
        c.start.throw_rate = 1.0f;
        c.start.lens_shift_x = 0.0f;
        c.start.lens_shift_y = 50.0f;
    }
    return c;
}

void runSolve(benchmark::State &state, int surfaces)
{
    const int points = int(state.range(0));
    const bool quick = state.range(1) != 0;
    const Case c = makeCase(points, surfaces);
    ProjectorCalibrationRequest request;
    request.projectorIndex = 0;
    request.quick = quick;
    // Coplanar points leave no linear start: hold the lens so the pose alone is fitted.
    request.adjust_throw_ratio = request.adjust_lens_shift = surfaces > 1;
    ProjectorCalibrationResult result;
    QString message;
    for (auto _ : state) {
        const bool ok = solveProjectorCalibration(c.start, c.scene.points, request, &result, &message);
        benchmark::DoNotOptimize(ok);
        if (!ok) {
            state.SkipWithError("calibration failed");
            break;
        }
    }
    state.counters["rms_px"] = result.rmsError;
    state.counters["accepted"] = result.iterations;
    state.counters["iterations"] = result.evaluatedIterations;
}

void BM_CalibrateProjector(benchmark::State &state)
{
    runSolve(state, 3);
}

void BM_CalibrateProjectorCoplanar(benchmark::State &state)
{
    runSolve(state, 1);
}

} // namespace

// Arguments: point count, quick budget (1) or full (0).
BENCHMARK(BM_CalibrateProjector)
    ->ArgsProduct({{6, 50, 500}, {0, 1}})
    ->ArgNames({"points", "quick"})
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_CalibrateProjectorCoplanar)
    ->ArgsProduct({{6, 50, 500}, {0, 1}})
    ->ArgNames({"points", "quick"})
    ->Unit(benchmark::kMicrosecond);

BENCHMARK_MAIN();
