#include "SceneGlTestSupport.h"

#include <QPainter>

#include <functional>

namespace {

const QSize kView(480, 360);

// A wall, a box casting shadows onto it, and three projectors lighting it from different
// places with footprint heat maps; the asymmetric source shows any misplaced texel.
QVector<GuideObject> cachedScene()
{
    QVector<GuideObject> objects{makePlane(3.0f, 2.5f), makeBox(0.25f, 0.25f, 0.25f, {0.3f, 0.2f, 1.2f})};
    const QVector3D places[3] = {{-0.6f, 0.1f, 3.0f}, {0.5f, -0.2f, 3.2f}, {0.0f, 0.5f, 2.8f}};
    for (const QVector3D &at : places) {
        GuideObject projector = makeProjector(at, -10.0f);
        projector.projector_resolution_width = 320;
        projector.projector_resolution_height = 200;
        projector.projection_opacity = 0.6f;
        projector.projector_pixel_footprint_heatmap_visible = true;
        projector.projector_pixel_footprint_heatmap_opacity = 0.35f;
        objects.push_back(projector);
    }
    return objects;
}

QImage gradientImage(int seed)
{
    QImage image(96, 60, QImage::Format_RGBA8888);
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            image.setPixelColor(x, y, QColor((x * 5 + seed * 40) % 256, (y * 4) % 256, (x + y + seed * 90) % 256));
    return image;
}

struct Frame {
    QImage image;
    SceneFrameStats stats;
};

Frame renderWith(OffscreenSceneRenderer &r, const QVector<GuideObject> &objects, const SceneRenderSettings &settings)
{
    Frame frame;
    frame.image = r.render(objects, frontCamera(2.2), settings, kView);
    frame.stats = r.renderer().lastFrameStats();
    return frame;
}

} // namespace

// After each kind of change the kept maps give the picture of a renderer that draws
// everything anew, and only the projectors the change touches are drawn again.
TEST(SceneCaches, EveryChangeGivesThePictureOfAFullRedraw)
{
    OffscreenSceneRenderer &r = sharedRenderer();
    int sourceSeed = 0;
    r.renderer().setTextureSourceResolver([&sourceSeed](const GuideObject &object, int index, bool projector)
                                              -> std::shared_ptr<SceneTextureSource> {
        if (!projector || !object.isProjector())
            return nullptr;
        static std::map<std::pair<int, int>, std::shared_ptr<SceneTextureSource>> sources;
        auto &source = sources[{index, index == 3 ? sourceSeed : 0}];
        if (!source)
            source = std::make_shared<ImageTextureSource>(gradientImage(index + (index == 3 ? sourceSeed : 0)));
        return source;
    });
    SceneRenderSettings settings = plainSettings();
    QVector<GuideObject> objects = cachedScene();
    renderWith(r, objects, settings); // fills the caches

    struct Change {
        const char *name;
        std::function<void()> apply;
        int shadowMapsExpected;   // drawn again with caching on
        int footprintMapsExpected;
    };
    const Change changes[] = {
        {"nothing", [] {}, 0, 0},
        {"move a projector", [&] { objects[2].translate_x += 0.15f; }, 1, 1},
        {"change a projector's source", [&] { sourceSeed = 1; }, 0, 0},
        // The box is a surface of every projector's footprint too.
        {"move a surface", [&] { objects[1].translate_y -= 0.2f; }, 3, 3},
        {"hide a caster", [&] { objects[1].visible = false; }, 3, 3},
        {"shadows off", [&] { settings.projectionEnabled = false; }, 0, 0},
        {"shadows on", [&] { settings.projectionEnabled = true; }, 0, 0},
        {"move the wall", [&] { objects[0].translate_z -= 0.1f; }, 3, 3},
    };
    for (const Change &change : changes) {
        change.apply();
        r.renderer().setCachingEnabled(true);
        const Frame cached = renderWith(r, objects, settings);
        r.renderer().setCachingEnabled(false);
        const Frame full = renderWith(r, objects, settings);
        ASSERT_FALSE(cached.image.isNull());
        EXPECT_TRUE(cached.image == full.image) << change.name;
        EXPECT_EQ(cached.stats.shadowMapsRendered, change.shadowMapsExpected) << change.name;
        EXPECT_EQ(cached.stats.footprintMapsRendered, change.footprintMapsExpected) << change.name;
        EXPECT_EQ(full.stats.footprintMapsRendered, 3) << change.name;
        // The full redraw refreshed every map; the next cached frame starts from it.
        r.renderer().setCachingEnabled(true);
    }
}

// Past the limit projectors share one depth map: the same picture, the memory bounded.
TEST(SceneCaches, ShadowMapsBeyondTheLimitShareOneMap)
{
    OffscreenSceneRenderer &r = sharedRenderer();
    r.renderer().setTextureSourceResolver(solidProjectorImage(gradientImage(2)));
    QVector<GuideObject> objects = cachedScene();
    for (int i = 0; i < 5; ++i) {
        GuideObject more = makeProjector({-1.0f + 0.5f * i, -0.6f, 2.6f + 0.1f * i}, 20.0f);
        more.projection_opacity = 0.3f;
        objects.push_back(more);
    }
    SceneRenderSettings settings = plainSettings();
    r.renderer().setResidentShadowMapLimit(8);
    const Frame kept = renderWith(r, objects, settings);
    EXPECT_EQ(kept.stats.shadowMapsResident, 8);
    EXPECT_EQ(kept.stats.projectorsProjected, 8);
    for (int limit : {2, 0}) {
        r.renderer().setResidentShadowMapLimit(limit);
        const Frame shared = renderWith(r, objects, settings);
        EXPECT_EQ(shared.stats.shadowMapsResident, limit);
        EXPECT_TRUE(shared.image == kept.image) << "limit " << limit;
        // The projectors without a map of their own draw the shared one every frame.
        const Frame again = renderWith(r, objects, settings);
        EXPECT_EQ(again.stats.shadowMapsRendered, 8 - limit);
        EXPECT_TRUE(again.image == kept.image) << "limit " << limit;
    }
}

// Footprint maps are as large as a projector's image: past the limit projectors keep only
// their range and label points and share one map target, with the same picture.
TEST(SceneCaches, FootprintMapsBeyondTheLimitShareOneTarget)
{
    OffscreenSceneRenderer &r = sharedRenderer();
    r.renderer().setTextureSourceResolver(solidProjectorImage(gradientImage(1)));
    QVector<GuideObject> objects = cachedScene();
    objects[3].projector_pixel_footprint_heatmap_auto_range = true;
    SceneRenderSettings settings = plainSettings();
    r.renderer().setResidentFootprintMapLimit(8);
    const Frame kept = renderWith(r, objects, settings);
    ASSERT_EQ(kept.stats.footprintMapsResident, 3);
    ASSERT_EQ(kept.stats.heatmapsDrawn, 3);
    double keptMin = 0, keptMax = 0;
    ASSERT_TRUE(r.renderer().heatmapRange(3, &keptMin, &keptMax));
    ASSERT_GT(keptMax, keptMin);

    for (int limit : {1, 0}) {
        r.renderer().setResidentFootprintMapLimit(limit);
        const Frame shared = renderWith(r, objects, settings);
        EXPECT_EQ(shared.stats.footprintMapsResident, limit);
        EXPECT_EQ(shared.stats.heatmapsDrawn, 3);
        EXPECT_TRUE(shared.image == kept.image) << "limit " << limit;
        double minimum = 0, maximum = 0;
        EXPECT_TRUE(r.renderer().heatmapRange(3, &minimum, &maximum));
        EXPECT_DOUBLE_EQ(minimum, keptMin);
        EXPECT_DOUBLE_EQ(maximum, keptMax);
        QSize size;
        EXPECT_TRUE(r.renderer().footprintMetricValues(3, &size).isEmpty()) << "no values kept past the limit";
        // Two or more projectors without a map take turns in the shared target every frame.
        const Frame again = renderWith(r, objects, settings);
        EXPECT_EQ(again.stats.footprintMapsRendered, 3 - limit);
        EXPECT_TRUE(again.image == kept.image) << "limit " << limit;
    }
    r.renderer().setResidentFootprintMapLimit(8);
}
