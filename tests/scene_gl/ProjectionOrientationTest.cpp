#include "SceneGlTestSupport.h"

#include "scene/LensModel.h"
#include "scene/Transform.h"

#include <QPainter>

namespace {

using vg::scene::LensModel;

const QSize kView(640, 480);

enum Quadrant { TopLeft, TopRight, BottomLeft, BottomRight };

// Four colours, one per quadrant of the source picture (rows top first), so that any mirror,
// flip or swapped axis moves a colour to the wrong corner.
QImage quadrantImage()
{
    QImage image(64, 40, QImage::Format_RGBA8888);
    QPainter painter(&image);
    painter.fillRect(0, 0, 32, 20, QColor(255, 0, 0));
    painter.fillRect(32, 0, 32, 20, QColor(0, 255, 0));
    painter.fillRect(0, 20, 32, 20, QColor(0, 0, 255));
    painter.fillRect(32, 20, 32, 20, QColor(255, 255, 255));
    return image;
}

int classify(QRgb c)
{
    const int r = qRed(c), g = qGreen(c), b = qBlue(c);
    if (r > 200 && g > 200 && b > 200)
        return BottomRight;
    if (r > 150 && g < 80 && b < 80)
        return TopLeft;
    if (g > 150 && r < 80 && b < 80)
        return TopRight;
    if (b > 150 && r < 80 && g < 80)
        return BottomLeft;
    return -1;
}

// The screen rectangle the projected picture covers on the wall z = 0.
QRectF pictureOnScreen(const QVector<GuideObject> &objects, const ViewCamera &camera)
{
    const LensModel lens = LensModel::forObject(objects, 1);
    double x0 = 1e9, y0 = 1e9, x1 = -1e9, y1 = -1e9;
    for (const auto &[u, v] : {std::pair{0.0, 0.0}, {1.0, 0.0}, {0.0, 1.0}, {1.0, 1.0}}) {
        const vg::scene::LensRay ray = lens.ray(u, v);
        const Eigen::Vector3d hit = ray.origin + (-ray.origin.z() / ray.direction.z()) * ray.direction;
        QPointF pixel;
        camera.worldToPixel(vg::scene::toQVector(hit), kView, &pixel);
        x0 = std::min(x0, pixel.x());
        y0 = std::min(y0, pixel.y());
        x1 = std::max(x1, pixel.x());
        y1 = std::max(y1, pixel.y());
    }
    return QRectF(QPointF(x0, y0), QPointF(x1, y1));
}

} // namespace

// Each flip and the half turn, through a lens shifted upwards: the corner of the wall that
// shows each colour is fixed by the switches alone (image right is +X, up is +Y, and the
// camera looks the same way as the projector).
TEST(ProjectionOrientation, FlipsAndHalfTurnMoveEachQuadrantToItsCorner)
{
    OffscreenSceneRenderer &r = sharedRenderer();
    r.renderer().setTextureSourceResolver(solidProjectorImage(quadrantImage()));
    const ViewCamera camera = frontCamera(2.5);
    SceneRenderSettings settings = plainSettings();
    settings.hiddenObjectIndex = 1;
    struct Case {
        bool flipH, flipV, rotate;
    };
    for (const Case c : {Case{false, false, false}, Case{true, false, false}, Case{false, true, false},
                         Case{true, true, false}, Case{false, false, true}, Case{true, false, true}}) {
        QVector<GuideObject> objects{makePlane(4.0f, 4.0f), makeProjector({0.0f, 0.0f, 3.0f}, -30.0f)};
        objects[1].projector_flip_h = c.flipH;
        objects[1].projector_flip_v = c.flipV;
        objects[1].projector_rotate_180 = c.rotate;
        const QImage image = r.render(objects, camera, settings, kView);
        ASSERT_EQ(r.renderer().lastFrameStats().projectorsProjected, 1);
        const QRectF picture = pictureOnScreen(objects, camera);
        // The upward shift (a negative shift lifts the picture) centres it well above the lens
        // axis, the screen's middle row, so a flip about the wrong line shows too.
        ASSERT_LT(picture.center().y(), kView.height() * 0.5 - 30.0);
        ASSERT_GT(picture.top(), 0.0);
        ASSERT_GT(picture.height(), 60.0);
        const bool mirrorX = c.flipH != c.rotate;
        const bool mirrorY = c.flipV != c.rotate;
        const QString trace = QStringLiteral("flip H %1, flip V %2, 180 %3").arg(c.flipH).arg(c.flipV).arg(c.rotate);
        for (int sx = 0; sx < 2; ++sx) {
            for (int sy = 0; sy < 2; ++sy) {
                const QPointF at(picture.left() + picture.width() * (0.25 + 0.5 * sx),
                                 picture.top() + picture.height() * (0.25 + 0.5 * sy));
                const int column = mirrorX ? 1 - sx : sx;
                const int row = mirrorY ? 1 - sy : sy;
                EXPECT_EQ(classify(image.pixel(at.toPoint())), row * 2 + column)
                    << trace.toStdString() << " screen corner " << sx << "," << sy;
            }
        }
    }
}

// A wall tilted about the horizontal axis under a lens shifted upwards: the pixel footprint
// grows from one edge of the picture to the other vertically, so a heat map sampled upside
// down, or a shift applied the wrong way, gives the wrong colour at every row.
TEST(ProjectionOrientation, HeatMapFollowsTheTiltAndTheVerticalShift)
{
    OffscreenSceneRenderer &r = sharedRenderer();
    GuideObject wall = makePlane(4.0f, 4.0f);
    wall.rotate_x = 40.0f;
    GuideObject projector = makeProjector({0.0f, 0.0f, 3.0f}, -30.0f);
    projector.projector_resolution_width = 640;
    projector.projector_resolution_height = 400;
    projector.projection_visible = false; // the heat map alone, so its colour is exact
    projector.projector_pixel_footprint_heatmap_visible = true;
    projector.projector_pixel_footprint_heatmap_opacity = 1.0f;
    const QVector<GuideObject> objects{wall, projector};
    const ViewCamera camera = frontCamera(2.5);
    SceneRenderSettings settings = plainSettings();
    settings.hiddenObjectIndex = 1;
    const QImage image = r.render(objects, camera, settings, kView);
    ASSERT_EQ(r.renderer().lastFrameStats().heatmapsDrawn, 1);
    double lo = 0, hi = 0;
    ASSERT_TRUE(r.renderer().heatmapRange(1, &lo, &hi));
    ASSERT_GT(hi, lo * 1.3) << "the tilt must spread the footprint";

    const LensModel lens = LensModel::forObject(objects, 1);
    const Eigen::Isometry3d wallToWorld = vg::scene::objectToWorld(objects[0]);
    const Eigen::Vector3d normal = wallToWorld.linear() * Eigen::Vector3d(0, 0, 1);
    const Eigen::Vector3d origin = wallToWorld.translation();
    int checked = 0;
    double vMin = 1, vMax = 0;
    for (int y = 10; y < kView.height(); y += 23) {
        for (int x = 20; x < kView.width(); x += 47) {
            const ViewCameraRay ray = camera.rayThroughPixel(QPointF(x + 0.5, y + 0.5), kView);
            const Eigen::Vector3d o = vg::scene::toEigen(ray.origin), dir = vg::scene::toEigen(ray.direction);
            const Eigen::Vector3d hit = o + ((origin - o).dot(normal) / dir.dot(normal)) * dir;
            const vg::scene::LensProjection p = lens.project(hit);
            if (!p.inside || p.u < 0.02 || p.u > 0.98 || p.v < 0.02 || p.v > 0.98)
                continue;
            const vg::scene::PixelFootprint fp = lens.footprintAt(hit, normal);
            const double value = vg::scene::footprintMetricValue(fp.mmPerPixelU, fp.mmPerPixelV, 0);
            const vg::scene::HeatColor heat = vg::scene::heatmapColor(value, lo, hi, 1.0);
            const QRgb c = image.pixel(x, y);
            EXPECT_NEAR(qRed(c), heat.r * 255.0, 5.0) << x << "," << y;
            EXPECT_NEAR(qGreen(c), heat.g * 255.0, 5.0) << x << "," << y;
            EXPECT_NEAR(qBlue(c), heat.b * 255.0, 5.0) << x << "," << y;
            vMin = std::min(vMin, p.v);
            vMax = std::max(vMax, p.v);
            ++checked;
        }
    }
    EXPECT_GT(checked, 30);
    EXPECT_LT(vMin, 0.2); // samples cover the picture from top to bottom
    EXPECT_GT(vMax, 0.8);
}
