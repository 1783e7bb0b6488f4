// Frame time of the 3D view on this machine's OpenGL (Mesa llvmpipe without a GPU): the
// reference scene of four projectors with shadows on a 100k-triangle dome plus a floor,
// heat map on, 1280 × 720, against the same scene with projection off.
#include "guide/GuideRenderer.h"
#include "scene/GuideObject.h"
#include "scene/SceneMesh.h"
#include "scene/ViewCamera.h"
#include "scene/gl/OffscreenSceneRender.h"
#include "scene/gl/PrivateGlDisplay.h"

#include <QGuiApplication>
#include <QOpenGLContext>
#include <QOpenGLExtraFunctions>
#include <QOpenGLFramebufferObject>

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdio>
#include <memory>

namespace {

const QSize kFrame(1280, 720);

// A hemisphere of radius r facing inwards, rings × segments quads: 224 × 224 × 2 ≈ 100k triangles.
std::shared_ptr<const SceneMesh> domeMesh(double r, int rings, int segments)
{
    auto mesh = std::make_shared<SceneMesh>();
    for (int i = 0; i <= rings; ++i) {
        const double theta = (M_PI / 2.0) * i / rings; // from the top
        for (int j = 0; j <= segments; ++j) {
            const double phi = 2.0 * M_PI * j / segments;
            SceneVertex v;
            const double x = std::sin(theta) * std::cos(phi), y = std::cos(theta), z = std::sin(theta) * std::sin(phi);
            v.px = float(r * x);
            v.py = float(r * y);
            v.pz = float(r * z);
            v.nx = float(-x);
            v.ny = float(-y);
            v.nz = float(-z);
            v.u = float(j) / segments;
            v.v = float(i) / rings;
            mesh->vertices.push_back(v);
        }
    }
    const int stride = segments + 1;
    for (int i = 0; i < rings; ++i) {
        for (int j = 0; j < segments; ++j) {
            const auto a = std::uint32_t(i * stride + j), b = a + 1, c = a + std::uint32_t(stride), d = c + 1;
            // The top ring's quads collapse to one triangle each.
            if (i > 0)
                mesh->indices.insert(mesh->indices.end(), {a, c, b});
            mesh->indices.insert(mesh->indices.end(), {b, c, d});
        }
    }
    return mesh;
}

QVector<GuideObject> referenceScene()
{
    QVector<GuideObject> objects;
    GuideObject floor;
    floor.guide_index = KindPlane;
    floor.name = QStringLiteral("Floor");
    floor.scale_x = floor.scale_y = 8.0f;
    floor.plane_width = floor.plane_height = 16000.0f;
    floor.rotate_x = -90.0f;
    floor.mesh_color = QColor(150, 150, 150);
    objects.push_back(floor);

    GuideObject dome;
    dome.guide_index = KindObjMesh;
    dome.name = QStringLiteral("Dome");
    dome.imported_mesh = domeMesh(5.0, 224, 224);
    dome.show_wireframe = false;
    dome.mesh_color = QColor(210, 210, 215);
    objects.push_back(dome);

    for (int i = 0; i < 4; ++i) {
        GuideObject projector;
        projector.guide_index = KindProjector;
        projector.name = QStringLiteral("Projector %1").arg(i + 1);
        const double heading = 90.0 * i + 45.0;
        projector.translate_x = float(1.2 * std::sin(heading * M_PI / 180.0));
        projector.translate_z = float(1.2 * std::cos(heading * M_PI / 180.0));
        projector.translate_y = 1.2f;
        projector.rotate_x = 25.0f;   // tilted up towards the dome
        projector.rotate_y = float(heading + 180.0);
        projector.scale_x = projector.scale_y = projector.scale_z = 0.15f;
        projector.throw_rate = 0.8f;
        projector.lens_shift_y = 0.0f;
        projector.projector_image_guide_index = 0;
        projector.projector_pixel_footprint_heatmap_visible = true;
        projector.projector_pixel_footprint_heatmap_opacity = 0.5f;
        objects.push_back(projector);
    }
    return objects;
}

ViewCamera referenceCamera()
{
    ViewCamera camera;
    camera.setTarget(QVector3D(0, 1.5f, 0));
    camera.setRotation(0.35, 0.4);
    camera.setFocusDistance(4.2);
    return camera;
}

struct Fixture {
    std::unique_ptr<OffscreenSceneRenderer> renderer;
    std::unique_ptr<QOpenGLFramebufferObject> target;
    QVector<GuideObject> objects;
    bool ok = false;

    Fixture()
    {
        QString error;
        if (!ensureGlDisplay(&error)) {
            std::fprintf(stderr, "%s\n", qPrintable(error));
            return;
        }
        renderer = std::make_unique<OffscreenSceneRenderer>();
        if (!renderer->initialize(&error)) {
            std::fprintf(stderr, "%s\n", qPrintable(error));
            return;
        }
        target = std::make_unique<QOpenGLFramebufferObject>(kFrame);
        renderer->renderer().setGuideImages({renderGuideImage(GuideSettings())});
        objects = referenceScene();
        std::fprintf(stderr, "GL: %s\n", qPrintable(renderer->context().rendererDescription()));
        ok = true;
    }

    void frame(const SceneRenderSettings &settings, const ViewCamera &camera)
    {
        renderer->renderer().render(objects, camera, settings, target->handle(), kFrame);
        QOpenGLContext::currentContext()->extraFunctions()->glFinish();
    }
};

Fixture &fixture()
{
    static Fixture f;
    return f;
}

// Benchmarks with an argument run with the drawing shortcuts that keep the picture (runs of
// mesh triangles outside a draw's volume skipped, shadow lookups answered by the depth
// range) on (1) or off (0, the anchor).
void runFrames(benchmark::State &state, const SceneRenderSettings &settings, bool dragProjector, bool culling = true)
{
    Fixture &f = fixture();
    if (!f.ok) {
        state.SkipWithError("no OpenGL 3.3 context");
        return;
    }
    f.renderer->renderer().setChunkCullingEnabled(culling);
    f.renderer->renderer().setShadowRangeEnabled(culling);
    ViewCamera camera = referenceCamera();
    f.frame(settings, camera); // uploads, shadow and footprint maps
    int n = 0;
    SceneFrameStats sum;
    int frames = 0;
    for (auto _ : state) {
        camera.orbit(2.0, 0.0); // a moving view, as while navigating
        if (dragProjector)
            f.objects[2].translate_x += (n++ % 2) ? 0.01f : -0.01f;
        f.frame(settings, camera);
        const SceneFrameStats &s = f.renderer->renderer().lastFrameStats();
        sum.geometryMs += s.geometryMs;
        sum.shadowMapMs += s.shadowMapMs;
        sum.accumulationMs += s.accumulationMs;
        sum.compositeMs += s.compositeMs;
        sum.footprintMetricMs += s.footprintMetricMs;
        sum.heatmapMs += s.heatmapMs;
        sum.linesMs += s.linesMs;
        sum.labelsMs += s.labelsMs;
        ++frames;
    }
    if (settings.measurePasses && frames > 0) {
        state.counters["geometry_ms"] = sum.geometryMs / frames;
        state.counters["shadow_ms"] = sum.shadowMapMs / frames;
        state.counters["light_ms"] = sum.accumulationMs / frames;
        state.counters["composite_ms"] = sum.compositeMs / frames;
        state.counters["metric_ms"] = sum.footprintMetricMs / frames;
        state.counters["heatmap_ms"] = sum.heatmapMs / frames;
        state.counters["lines_ms"] = sum.linesMs / frames;
        state.counters["labels_ms"] = sum.labelsMs / frames;
    }
    const SceneFrameStats &stats = f.renderer->renderer().lastFrameStats();
    state.counters["projectors"] = stats.projectorsProjected;
    state.counters["shadow_maps"] = stats.shadowMapsRendered;
    state.counters["heat_maps"] = stats.heatmapsDrawn;
    state.counters["footprint_maps"] = stats.footprintMapsRendered;
    state.counters["triangles"] = double(stats.trianglesDrawn);
    f.renderer->renderer().setChunkCullingEnabled(true);
    f.renderer->renderer().setShadowRangeEnabled(true);
}

SceneRenderSettings baseSettings()
{
    SceneRenderSettings settings;
    settings.showFps = true;
    settings.framesPerSecond = 30.0;
    return settings;
}

void BM_SceneRender_ProjectionHeatmap(benchmark::State &state)
{
    runFrames(state, baseSettings(), false, state.range(0) != 0);
}

void BM_SceneRender_ProjectionNoHeatmap(benchmark::State &state)
{
    SceneRenderSettings settings = baseSettings();
    Fixture &f = fixture();
    QVector<GuideObject> saved = f.objects;
    for (GuideObject &o : f.objects)
        o.projector_pixel_footprint_heatmap_visible = false;
    runFrames(state, settings, false);
    f.objects = saved;
}

void BM_SceneRender_ProjectionOff(benchmark::State &state)
{
    SceneRenderSettings settings = baseSettings();
    settings.projectionEnabled = false;
    Fixture &f = fixture();
    QVector<GuideObject> saved = f.objects;
    for (GuideObject &o : f.objects)
        o.projector_pixel_footprint_heatmap_visible = false;
    runFrames(state, settings, false);
    f.objects = saved;
}

// Dragging a projector changes the scene every frame, so the footprint maps are redrawn too.
void BM_SceneRender_DraggingProjector(benchmark::State &state)
{
    runFrames(state, baseSettings(), true, state.range(0) != 0);
}

// The reference frame with every pass finished and timed on its own.
void BM_SceneRender_PassBreakdown(benchmark::State &state)
{
    SceneRenderSettings settings = baseSettings();
    settings.measurePasses = true;
    runFrames(state, settings, false, state.range(0) != 0);
}

BENCHMARK(BM_SceneRender_PassBreakdown)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->UseRealTime()->MinTime(2.0);
BENCHMARK(BM_SceneRender_ProjectionHeatmap)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->UseRealTime()->MinTime(2.0);
BENCHMARK(BM_SceneRender_ProjectionNoHeatmap)->Unit(benchmark::kMillisecond)->UseRealTime()->MinTime(2.0);
BENCHMARK(BM_SceneRender_ProjectionOff)->Unit(benchmark::kMillisecond)->UseRealTime()->MinTime(2.0);
BENCHMARK(BM_SceneRender_DraggingProjector)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->UseRealTime()->MinTime(2.0);

} // namespace

// VG_SCENE_SCREENSHOTS=<folder> writes the reference scene from two cameras and through
// one projector, for looking at what is being measured.
void writeScreenshots(const QString &folder)
{
    Fixture &f = fixture();
    if (!f.ok)
        return;
    SceneRenderSettings settings = baseSettings();
    settings.showFps = false;
    ViewCamera outside;
    outside.setTarget(QVector3D(0, 1.5f, 0));
    outside.setRotation(0.5, 0.7);
    outside.setFocusDistance(16.0);
    struct Shot {
        const char *name;
        ViewCamera camera;
        int hidden;
    };
    ViewCamera through;
    setCameraToObjectView(through, f.objects, 2);
    const Shot shots[] = {{"reference-inside.png", referenceCamera(), -1},
                          {"reference-outside.png", outside, -1},
                          {"reference-projector1.png", through, 2}};
    for (const Shot &shot : shots) {
        SceneRenderSettings s = settings;
        s.hiddenObjectIndex = shot.hidden;
        const QImage image = f.renderer->render(f.objects, shot.camera, s, kFrame);
        image.save(folder + QLatin1Char('/') + QLatin1String(shot.name));
    }
}

int main(int argc, char **argv)
{
    // The off-screen platform without a display; ensureGlDisplay() supplies one when needed.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") && qEnvironmentVariableIsEmpty("DISPLAY"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    const QString shots = qEnvironmentVariable("VG_SCENE_SCREENSHOTS");
    if (!shots.isEmpty()) {
        writeScreenshots(shots);
        fixture().target.reset();
        fixture().renderer.reset();
        return 0;
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    fixture().target.reset();
    fixture().renderer.reset();
    benchmark::Shutdown();
    return 0;
}
