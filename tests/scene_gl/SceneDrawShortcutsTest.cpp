#include "SceneGlTestSupport.h"

namespace {

const QSize kView(400, 300);

// A wall of many small quads (rows of triangles, as generated meshes come) facing +Z.
std::shared_ptr<const SceneMesh> gridWall(float width, float height, int columns, int rows)
{
    auto mesh = std::make_shared<SceneMesh>();
    for (int r = 0; r <= rows; ++r) {
        for (int c = 0; c <= columns; ++c) {
            SceneVertex v;
            v.px = width * (float(c) / columns - 0.5f);
            v.py = height * (float(r) / rows - 0.5f);
            v.pz = 0.0f;
            v.nz = 1.0f;
            v.u = float(c) / columns;
            v.v = float(r) / rows;
            mesh->vertices.push_back(v);
        }
    }
    const auto stride = std::uint32_t(columns + 1);
    for (int r = 0; r < rows; ++r) {
        for (int c = 0; c < columns; ++c) {
            const auto a = std::uint32_t(r) * stride + std::uint32_t(c);
            mesh->indices.insert(mesh->indices.end(), {a, a + 1, a + stride + 1, a, a + stride + 1, a + stride});
        }
    }
    return mesh;
}

// A closed sphere: its far side lies behind its near side at every pixel it covers.
std::shared_ptr<const SceneMesh> sphere(float radius, int rings, int segments)
{
    auto mesh = std::make_shared<SceneMesh>();
    for (int i = 0; i <= rings; ++i) {
        const double theta = M_PI * i / rings;
        for (int j = 0; j <= segments; ++j) {
            const double phi = 2.0 * M_PI * j / segments;
            SceneVertex v;
            v.nx = float(std::sin(theta) * std::cos(phi));
            v.ny = float(std::cos(theta));
            v.nz = float(std::sin(theta) * std::sin(phi));
            v.px = radius * v.nx;
            v.py = radius * v.ny;
            v.pz = radius * v.nz;
            mesh->vertices.push_back(v);
        }
    }
    const auto stride = std::uint32_t(segments + 1);
    for (int i = 0; i < rings; ++i) {
        for (int j = 0; j < segments; ++j) {
            const auto a = std::uint32_t(i) * stride + std::uint32_t(j);
            mesh->indices.insert(mesh->indices.end(), {a, a + stride, a + 1, a + 1, a + stride, a + stride + 1});
        }
    }
    mesh->closed = true;
    return mesh;
}

GuideObject meshObject(std::shared_ptr<const SceneMesh> mesh, const QVector3D &at, const QColor &color)
{
    GuideObject object;
    object.guide_index = KindObjMesh;
    object.name = QStringLiteral("Mesh");
    object.imported_mesh = std::move(mesh);
    object.translate_x = at.x();
    object.translate_y = at.y();
    object.translate_z = at.z();
    object.show_wireframe = false;
    object.mesh_color = color;
    return object;
}

QImage asymmetricImage()
{
    QImage image(120, 75, QImage::Format_RGBA8888);
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            image.setPixelColor(x, y, QColor((x * 2) % 256, (y * 3) % 256, x < 30 && y < 20 ? 255 : 40));
    return image;
}

// A wall wider than the view and a ball before it, lit by two projectors that each reach one
// side, one with its heat map, one body casting a shadow; the view sees the middle only.
QVector<GuideObject> scene()
{
    QVector<GuideObject> objects{meshObject(gridWall(8.0f, 3.0f, 160, 60), {}, QColor(150, 150, 150)),
                                 meshObject(sphere(0.5f, 48, 64), {0.2f, -0.2f, 1.0f}, QColor(200, 120, 90)),
                                 makeBox(0.15f, 0.15f, 0.15f, {-0.9f, 0.3f, 1.8f})};
    for (float x : {-1.4f, 1.0f}) {
        GuideObject projector = makeProjector({x, 0.0f, 3.0f}, 20.0f);
        projector.rotate_y = x < 0 ? 12.0f : -8.0f;
        projector.projector_resolution_width = 320;
        projector.projector_resolution_height = 200;
        projector.projection_opacity = 0.8f;
        objects.push_back(projector);
    }
    objects.back().projector_pixel_footprint_heatmap_visible = true;
    objects.back().projector_pixel_footprint_heatmap_opacity = 0.4f;
    return objects;
}

} // namespace

// Skipping the runs of triangles a draw cannot show, in an order grouped by place, gives the
// picture of drawing every triangle in the mesh's own order, in every pass (surfaces, light,
// shadows, footprint and heat map), for a flat wall and a closed ball whose far side hides
// behind its near side.
TEST(SceneChunkCulling, SkippedRunsGiveTheSamePictureAsDrawingAll)
{
    OffscreenSceneRenderer &r = sharedRenderer();
    r.renderer().setTextureSourceResolver(solidProjectorImage(asymmetricImage()));
    r.renderer().setCachingEnabled(false); // every map drawn in both frames
    const QVector<GuideObject> objects = scene();
    SceneRenderSettings settings = plainSettings();

    r.renderer().setChunkCullingEnabled(false);
    const QImage all = r.render(objects, frontCamera(1.0), settings, kView);
    const SceneFrameStats allStats = r.renderer().lastFrameStats();
    r.renderer().setChunkCullingEnabled(true);
    const QImage culled = r.render(objects, frontCamera(1.0), settings, kView);
    const SceneFrameStats culledStats = r.renderer().lastFrameStats();

    ASSERT_FALSE(all.isNull());
    ASSERT_EQ(allStats.projectorsProjected, 2);
    ASSERT_EQ(allStats.heatmapsDrawn, 1);
    EXPECT_TRUE(culled == all);
    // The wall is 19,200 triangles and the ball 6,144; the view and each lens see a part of
    // the wall, so a good share of its runs is skipped in every pass.
    EXPECT_LT(culledStats.trianglesDrawn * 4, allStats.trianglesDrawn * 3)
        << culledStats.trianglesDrawn << " of " << allStats.trianglesDrawn;
    // The projectors reach the part in view: a good share of it differs from the unlit scene.
    settings.projectionEnabled = false;
    const QImage unlit = r.render(objects, frontCamera(1.0), settings, kView);
    int lit = 0;
    for (int y = 0; y < all.height(); ++y)
        for (int x = 0; x < all.width(); ++x)
            lit += all.pixel(x, y) != unlit.pixel(x, y);
    EXPECT_GT(lit, all.width() * all.height() / 4);
}

// Where a shadow lookup's whole neighbourhood lies nearer or farther than the receiver, the
// map's depth range answers in place of the filter: the same picture, shadow edges, the
// darkened border of each map and the ball's own shadow included, seen from two sides.
TEST(SceneShadowRange, AnswersAsTheFullFilterDoes)
{
    OffscreenSceneRenderer &r = sharedRenderer();
    r.renderer().setTextureSourceResolver(solidProjectorImage(asymmetricImage()));
    QVector<GuideObject> objects = scene();
    // A fence of thin bars at a slant: shadow edges at every angle and width.
    for (int i = 0; i < 12; ++i) {
        GuideObject bar = makeBox(0.012f + 0.004f * (i % 3), 0.6f, 0.01f, {-1.6f + 0.27f * i, 0.1f * (i % 4), 1.4f + 0.05f * i});
        bar.rotate_z = 7.0f * i - 40.0f;
        objects.push_back(bar);
    }
    const SceneRenderSettings settings = plainSettings();
    ViewCamera side = frontCamera(1.6);
    side.setMode(ViewCameraMode::Perspective);
    side.setRotation(0.5, 0.25);
    for (const ViewCamera &camera : {frontCamera(1.0), side}) {
        r.renderer().setShadowRangeEnabled(false);
        const QImage filtered = r.render(objects, camera, settings, kView);
        r.renderer().setShadowRangeEnabled(true);
        const QImage ranged = r.render(objects, camera, settings, kView);
        ASSERT_FALSE(filtered.isNull());
        EXPECT_TRUE(ranged == filtered);
    }
}
