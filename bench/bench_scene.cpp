#include "scene/LensModel.h"
#include "scene/MeshBuilders.h"
#include "scene/SceneModel.h"
#include "scene/SceneRaycast.h"

#include <benchmark/benchmark.h>

namespace {

// A 200-object scene with every generated shape in its usual settings; object 9 is a projector.
QVector<GuideObject> twoHundredObjects()
{
    SceneModel scene;
    for (int i = 0; scene.count() < 200; ++i) {
        switch (i % 10) {
        case 0: scene.addPlane(QString(), 4000, 3000); break;
        case 1: scene.addCirclePlane(QString(), 3000, 3000, 500); break;
        case 2: scene.addCylinderWall(QString(), 6000, 3000, 120.0); break;
        case 3: scene.addDome(QString(), 5000, 3000, 48, 16); break;
        case 4: scene.addSphere(QString(), 2000, 2000, 48, 24); break;
        case 5: scene.addHorseshoe(QString(), 6000, 3000, 4000, 1200, 16, 8, 12); break;
        case 6: scene.addLShape(QString(), 4000, 3000, 3000, 500); break;
        case 7: scene.addPerson(QString(), 1700, 0); break;
        case 8: {
            QVector<GuideCurvePoint> points;
            for (int k = 0; k < 6; ++k)
                points.append({double(k), double(k % 2), k - 0.3, double(k % 2), k + 0.3, double(k % 2)});
            scene.addCurve(QString(), points, false, 2500);
            break;
        }
        default: scene.addProjector(QString()); break;
        }
    }
    // Spread over a 20 × 10 grid of 8 m cells, as a large venue would be.
    QVector<GuideObject> objects = scene.objects();
    for (int i = 0; i < objects.size(); ++i) {
        objects[i].translate_x += float((i % 20) * 8);
        objects[i].translate_z -= float((i / 20) * 8);
    }
    return objects;
}

void BM_BuildMeshesOf200Objects(benchmark::State &state)
{
    const QVector<GuideObject> objects = twoHundredObjects();
    size_t triangles = 0;
    for (auto _ : state) {
        const std::vector<SceneMesh> meshes = vg::scene::buildSceneMeshes(objects);
        triangles = 0;
        for (const SceneMesh &m : meshes)
            triangles += m.indices.size() / 3;
        benchmark::DoNotOptimize(triangles);
    }
    state.counters["triangles"] = double(triangles);
}
BENCHMARK(BM_BuildMeshesOf200Objects)->Unit(benchmark::kMillisecond);

// The projection test of one projector over a 3840 × 2160 grid of world points.
void BM_ProjectionTest4KGrid(benchmark::State &state)
{
    using namespace vg::scene;
    LensIntrinsics lens;
    lens.throwRatio = 1.2;
    lens.lensShiftX = 5.0;
    lens.lensShiftY = 50.0;
    lens.flipH = true;
    const LensPose pose = lensPoseFromEuler({0.3, 2.0, 4.0}, {-10.0, 15.0, 2.0});
    const int w = 3840, h = 2160;
    std::vector<Eigen::Vector3d> points;
    points.reserve(size_t(w) * h);
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x)
            points.emplace_back(-4.0 + 8.0 * x / w, 4.5 - 4.5 * y / h, -2.0 - 0.001 * x);
    const LensModel model(lens, pose, 40.0);
    std::vector<LensProjection> out(points.size());
    for (auto _ : state) {
        model.projectMany(points.data(), points.size(), out.data());
        benchmark::DoNotOptimize(out.data());
    }
    state.SetItemsProcessed(int64_t(state.iterations()) * w * h);
}
BENCHMARK(BM_ProjectionTest4KGrid)->Unit(benchmark::kMillisecond);

void BM_ThrowDistanceOf200ObjectScene(benchmark::State &state)
{
    const QVector<GuideObject> objects = twoHundredObjects();
    for (auto _ : state)
        benchmark::DoNotOptimize(vg::scene::throwDistanceFor(objects, 9));
}
BENCHMARK(BM_ThrowDistanceOf200ObjectScene)->Unit(benchmark::kMicrosecond);

// One footprint look-up as the command line does it: a ray into the 200-object scene.
void BM_FootprintRayIntoScene(benchmark::State &state)
{
    using namespace vg::scene;
    const QVector<GuideObject> objects = twoHundredObjects();
    const std::vector<SceneMesh> meshes = buildSceneMeshes(objects);
    const LensModel model = LensModel::forObject(objects, 9);
    double sum = 0.0;
    int k = 0;
    for (auto _ : state) {
        const LensRay ray = model.ray(0.1 + 0.8 * ((k * 37) % 100) / 100.0, 0.1 + 0.8 * ((k * 53) % 100) / 100.0);
        ++k;
        SceneRaycastOptions options;
        options.skipIndex = 9;
        const SceneRayHit hit = raycastScene(objects, meshes, ray.origin, ray.direction, options);
        if (hit.hit)
            sum += model.footprintAt(hit.point, hit.normal).mmPerPixelU;
    }
    benchmark::DoNotOptimize(sum);
}
BENCHMARK(BM_FootprintRayIntoScene)->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
