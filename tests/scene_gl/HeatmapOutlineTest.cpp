#include "SceneGlTestSupport.h"

#include "scene/LensModel.h"
#include "scene/Transform.h"
#include "scene/gl/SceneGlProgram.h"
#include "scene/gl/SceneShaderSources.h"
#include "scene/gl/SceneTextAtlas.h"

#include <QOpenGLShaderProgram>
#include <QRegularExpression>
#include <QTest>

namespace {

using vg::scene::LensModel;

const QSize kView(640, 480);

// A wall turned 35° about the vertical so the footprint grows across the image.
QVector<GuideObject> obliqueScene()
{
    GuideObject wall = makePlane(4.0f, 3.0f);
    wall.rotate_y = 35.0f;
    GuideObject projector = makeProjector({0, 0, 3.0f}, 0.0f);
    projector.projector_pixel_footprint_heatmap_visible = true;
    projector.projector_pixel_footprint_heatmap_opacity = 1.0f;
    projector.projector_resolution_width = 640;
    projector.projector_resolution_height = 400;
    projector.projection_visible = false; // the heat map alone, so its colour is exact
    return {wall, projector};
}

} // namespace

TEST(HeatmapRender, ColourMatchesTheCpuFootprintAndHeatColour)
{
    OffscreenSceneRenderer &r = sharedRenderer();
    const QVector<GuideObject> objects = obliqueScene();
    const ViewCamera camera = frontCamera(1.6);
    SceneRenderSettings settings = plainSettings();
    settings.hiddenObjectIndex = 1;
    const QImage image = r.render(objects, camera, settings, kView);
    ASSERT_EQ(r.renderer().lastFrameStats().heatmapsDrawn, 1);
    double lo = 0, hi = 0;
    ASSERT_TRUE(r.renderer().heatmapRange(1, &lo, &hi));
    EXPECT_LT(lo, hi);

    const LensModel lens = LensModel::forObject(objects, 1);
    const Eigen::Isometry3d wallToWorld = vg::scene::objectToWorld(objects[0]);
    const Eigen::Vector3d normal = wallToWorld.linear() * Eigen::Vector3d(0, 0, 1);
    const Eigen::Vector3d origin = wallToWorld.translation();

    // The metric map agrees with the CPU footprint at its texel centres.
    QSize mapSize;
    const QVector<float> metric = r.renderer().footprintMetricValues(1, &mapSize);
    ASSERT_EQ(mapSize, QSize(640, 400));
    double cpuMin = 1e9, cpuMax = 0;
    for (int j = 2; j < mapSize.height(); j += 37) {
        for (int i = 2; i < mapSize.width(); i += 41) {
            const vg::scene::LensRay ray = lens.pixelRay(i + 0.5, j + 0.5);
            const double t = (origin - ray.origin).dot(normal) / ray.direction.dot(normal);
            const Eigen::Vector3d hit = ray.origin + t * ray.direction;
            const vg::scene::PixelFootprint fp = lens.footprintAt(hit, normal);
            ASSERT_TRUE(fp.valid);
            const double expected = vg::scene::footprintMetricValue(fp.mmPerPixelU, fp.mmPerPixelV, 0);
            EXPECT_NEAR(metric[j * mapSize.width() + i], expected, expected * 0.01 + 0.005) << i << "," << j;
            cpuMin = std::min(cpuMin, expected);
            cpuMax = std::max(cpuMax, expected);
        }
    }
    EXPECT_LE(lo, cpuMin + 0.01);
    EXPECT_GE(hi, cpuMax - 0.01);

    // Colours on screen: the heat colour of the CPU metric at the surface point under the pixel.
    int checked = 0;
    for (int y = 40; y < kView.height(); y += 53) {
        for (int x = 40; x < kView.width(); x += 61) {
            const ViewCameraRay ray = camera.rayThroughPixel(QPointF(x + 0.5, y + 0.5), kView);
            const Eigen::Vector3d o = vg::scene::toEigen(ray.origin), dir = vg::scene::toEigen(ray.direction);
            const double t = (origin - o).dot(normal) / dir.dot(normal);
            const Eigen::Vector3d hit = o + t * dir;
            const vg::scene::LensProjection p = lens.project(hit);
            if (!p.inside || p.u < 0.01 || p.u > 0.99 || p.v < 0.01 || p.v > 0.99)
                continue;
            const vg::scene::PixelFootprint fp = lens.footprintAt(hit, normal);
            const double value = vg::scene::footprintMetricValue(fp.mmPerPixelU, fp.mmPerPixelV, 0);
            const vg::scene::HeatColor heat = vg::scene::heatmapColor(value, lo, hi, 1.0);
            ASSERT_TRUE(heat.draws);
            const QRgb c = image.pixel(x, y);
            EXPECT_NEAR(qRed(c), heat.r * 255.0, 4.0) << x << "," << y;
            EXPECT_NEAR(qGreen(c), heat.g * 255.0, 4.0) << x << "," << y;
            EXPECT_NEAR(qBlue(c), heat.b * 255.0, 4.0) << x << "," << y;
            ++checked;
        }
    }
    EXPECT_GT(checked, 20);

    // Footprint labels name the metric at surface points, in the model's wording.
    QVector<GuideObject> labelled = objects;
    labelled[1].projector_pixel_footprint_labels_visible = true;
    settings.showLabels = true;
    r.render(labelled, camera, settings, kView);
    EXPECT_EQ(r.renderer().lastFrameStats().labelsDrawn, 9);
}

TEST(SelectionOutline, RingsTheSelectedObjectAndLeavesItsInsideAlone)
{
    OffscreenSceneRenderer &r = sharedRenderer();
    QVector<GuideObject> objects{makeBox(0.4f, 0.3f, 0.2f, {0, 0, 0})};
    const ViewCamera camera = frontCamera(1.0);
    SceneRenderSettings settings = plainSettings();
    const QImage plain = r.render(objects, camera, settings, kView);
    settings.selection = {0};
    const QImage selected = r.render(objects, camera, settings, kView);
    if (qEnvironmentVariableIsSet("VG_SCENE_GL_DUMP"))
        selected.save(QStringLiteral("/tmp/outline.png"));

    QPointF topLeft, bottomRight;
    camera.worldToPixel(QVector3D(-0.4f, 0.3f, 0.2f), kView, &topLeft);
    camera.worldToPixel(QVector3D(0.4f, -0.3f, 0.2f), kView, &bottomRight);
    const QRectF box(topLeft, bottomRight);
    int ring = 0, ringTotal = 0;
    for (int y = 0; y < kView.height(); ++y) {
        for (int x = 0; x < kView.width(); ++x) {
            const QPointF c(x + 0.5, y + 0.5);
            if (box.adjusted(1, 1, -1, -1).contains(c)) {
                ASSERT_EQ(selected.pixel(x, y), plain.pixel(x, y)) << "outline inside at " << x << "," << y;
            } else if (!box.adjusted(-5, -5, 5, 5).contains(c)) {
                ASSERT_EQ(selected.pixel(x, y), plain.pixel(x, y)) << "outline far away at " << x << "," << y;
            } else if (!box.adjusted(-0.05, -0.05, 0.05, 0.05).contains(c)
                       && (box.adjusted(-1, 0, 1, 0).contains(c) || box.adjusted(0, -1, 0, 1).contains(c))) {
                // Beside an edge, within a pixel: a silhouette pixel is at most two away.
                ++ringTotal;
                const QRgb p = selected.pixel(x, y);
                // Yellow over the black background.
                if (qRed(p) > 200 && qGreen(p) > 170 && qBlue(p) < 120)
                    ++ring;
            }
        }
    }
    EXPECT_GT(ringTotal, 500);
    EXPECT_GT(ring, ringTotal * 9 / 10);
}

TEST(SceneShaders, FailedCompileLeavesThePassOut)
{
    sharedRenderer();
    QByteArray broken = SceneShaderSources::compositeFragment();
    broken.replace("fragColor = vec4(color, alpha);", "fragColor = undefinedThing;");
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("^GL shader compile failed")));
    auto program = buildSceneProgram(QStringLiteral("broken"), SceneShaderSources::fullScreenVertex(), {}, broken);
    EXPECT_EQ(program, nullptr);
    EXPECT_FALSE(lastSceneProgramLog().isEmpty());
    // Every pass of the renderer compiled on this context.
    const SceneRendererCapabilities &caps = sharedRenderer().renderer().capabilities();
    EXPECT_TRUE(caps.geometry && caps.texturedGeometry && caps.nv12Geometry && caps.lines && caps.projection
                && caps.projectionNv12 && caps.shadowMaps && caps.footprintMetric && caps.heatmap && caps.outline
                && caps.labels);
}

TEST(SceneLabels, FpsOverlayAndPlaceholderTexts)
{
    OffscreenSceneRenderer &r = sharedRenderer();
    QVector<GuideObject> objects{makePlane(1.0f, 1.0f)};
    const ViewCamera camera = frontCamera(1.0);
    SceneRenderSettings settings = plainSettings();
    const QImage without = r.render(objects, camera, settings, kView);
    settings.showFps = true;
    settings.framesPerSecond = 59.94;
    const QImage with = r.render(objects, camera, settings, kView);
    EXPECT_EQ(r.renderer().lastFrameStats().labelsDrawn, 1);
    int changed = 0;
    for (int y = 0; y < 40; ++y)
        for (int x = 0; x < 160; ++x)
            changed += with.pixel(x, y) != without.pixel(x, y);
    EXPECT_GT(changed, 200);
    EXPECT_EQ(viewportFpsAtlasEntry(59.94, 14).key, QStringLiteral("viewport-fps|59.9|14"));
    EXPECT_EQ(dimensionTextAtlasEntry(dimensionLabelText(QLatin1Char('W'), 1500.2)).key,
              QStringLiteral("dimension|W 1500mm|14"));
    EXPECT_EQ(renderProjectorCameraResolutionFrame(1920, 1200).key,
              QStringLiteral("projector-camera-resolution|1920|1200"));

    // The placeholder keeps the projector's proportions and is not blank.
    const QImage placeholder = projectorPlaceholderImage(3840, 2400, 1.2);
    EXPECT_EQ(placeholder.width(), 2048);
    EXPECT_EQ(placeholder.height(), 1280);
    EXPECT_NE(placeholder.pixel(placeholder.width() / 2, placeholder.height() / 2 - 200), placeholder.pixel(5, 5));
}

TEST(SceneMeshes, ChangedObjectsAreUploadedAgain)
{
    OffscreenSceneRenderer &r = sharedRenderer();
    QVector<GuideObject> objects{makePlane(1.0f, 1.0f)};
    const ViewCamera camera = frontCamera(1.0);
    const SceneRenderSettings settings = plainSettings();
    r.render(objects, camera, settings, kView);
    r.render(objects, camera, settings, kView);
    EXPECT_EQ(r.renderer().lastFrameStats().meshUploads, 0);
    objects[0].translate_x = 0.2f; // a move keeps the mesh
    r.render(objects, camera, settings, kView);
    EXPECT_EQ(r.renderer().lastFrameStats().meshUploads, 0);
    objects[0].scale_x = 0.5f;
    objects[0].plane_width = 1000.0f;
    const QImage narrow = r.render(objects, camera, settings, kView);
    EXPECT_EQ(r.renderer().lastFrameStats().meshUploads, 1);
    // The narrower plane no longer covers a point 0.8 m right of centre.
    QPointF p;
    camera.worldToPixel(QVector3D(1.0f, 0, 0), kView, &p);
    EXPECT_EQ(narrow.pixel(int(p.x()), int(p.y())), qRgb(0, 0, 0));
}

TEST(SceneSurfaces, GuidePanelShowsItsGuideImageAtTheObjectOpacity)
{
    OffscreenSceneRenderer &r = sharedRenderer();
    QImage guide(64, 40, QImage::Format_RGBA8888);
    guide.fill(QColor(200, 40, 20, 0)); // alpha 0: a guide panel still shows it opaque
    r.renderer().setGuideImages({guide});
    GuideObject panel = makePlane(1.0f, 0.6f);
    panel.guide_index = KindGuide;
    panel.texture_guide_index = 0;
    QVector<GuideObject> objects{panel};
    const ViewCamera camera = frontCamera(1.0);
    const SceneRenderSettings settings = plainSettings();
    QImage image = r.render(objects, camera, settings, kView);
    QRgb centre = image.pixel(kView.width() / 2, kView.height() / 2);
    EXPECT_NEAR(qRed(centre), 200, 2);
    EXPECT_NEAR(qGreen(centre), 40, 2);
    objects[0].object_opacity = 0.5f;
    image = r.render(objects, camera, settings, kView);
    centre = image.pixel(kView.width() / 2, kView.height() / 2);
    EXPECT_NEAR(qRed(centre), 100, 2); // over the black background
    // An image surface keeps the picture's own alpha.
    objects[0].guide_index = KindImage;
    objects[0].object_opacity = 1.0f;
    image = r.render(objects, camera, settings, kView);
    centre = image.pixel(kView.width() / 2, kView.height() / 2);
    EXPECT_LT(qRed(centre), 5);
}
