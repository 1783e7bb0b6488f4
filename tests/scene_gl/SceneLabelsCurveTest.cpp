#include "SceneGlTestSupport.h"

#include "scene/LensModel.h"
#include "scene/ShapeGeometry.h"
#include "scene/Transform.h"
#include "scene/gl/SceneFramePacer.h"
#include "scene/gl/SceneTextAtlas.h"

namespace {

const QSize kView(640, 480);

int opaquePixels(const QImage &image)
{
    int n = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            n += qAlpha(image.pixel(x, y)) > 0;
    return n;
}

// Pixels that labels changed, and their centre.
int changedPixels(const QImage &with, const QImage &without, QPointF *centre = nullptr)
{
    int n = 0;
    double sx = 0, sy = 0;
    for (int y = 0; y < with.height(); ++y)
        for (int x = 0; x < with.width(); ++x)
            if (with.pixel(x, y) != without.pixel(x, y)) {
                ++n;
                sx += x + 0.5;
                sy += y + 0.5;
            }
    if (centre && n > 0)
        *centre = QPointF(sx / n, sy / n);
    return n;
}

} // namespace

// Footprint values on a wall seen at a slant: each label sits on its surface point, where
// the wall runs towards the eye across the label's width; every label shows whole, none of
// it cut by the wall it describes.
TEST(SceneLabels, ALabelIsNeverCutByTheSurfaceItNames)
{
    OffscreenSceneRenderer &r = sharedRenderer();
    GuideObject wall = makePlane(3.0f, 2.0f);
    wall.rotate_y = 60.0f;
    GuideObject projector = makeProjector({0.0f, 0.0f, 3.0f}, 0.0f);
    projector.projection_visible = false;
    projector.projector_resolution_width = 320;
    projector.projector_resolution_height = 200;
    projector.projector_pixel_footprint_labels_visible = true;
    const QVector<GuideObject> objects{wall, projector};
    ViewCamera camera = frontCamera(2.0);
    SceneRenderSettings settings = plainSettings();
    settings.hiddenObjectIndex = 1;
    const QImage without = r.render(objects, camera, settings, kView);
    settings.showLabels = true;
    const QImage with = r.render(objects, camera, settings, kView);
    // VG_SCENE_SCREENSHOT_DIR=<folder> keeps the picture for looking at.
    if (const QString dir = qEnvironmentVariable("VG_SCENE_SCREENSHOT_DIR"); !dir.isEmpty())
        with.save(dir + QStringLiteral("/turned-wall-footprint-labels.png"));
    const int labels = r.renderer().lastFrameStats().labelsDrawn;
    ASSERT_GE(labels, 6);
    // Each label is centred on a point of the wall: the wall's colour is under every centre
    // once the labels are gone, and the footprint there is the label's own.
    int onWall = 0;
    for (int y = 1; y + 1 < kView.height(); ++y) {
        for (int x = 1; x + 1 < kView.width(); ++x) {
            // Label plates are dark and the plain wall is grey: a plate's inside column pixel.
            if (with.pixel(x, y) == without.pixel(x, y))
                continue;
            onWall += qGray(without.pixel(x, y)) > 40;
        }
    }
    EXPECT_GT(onWall, int(changedPixels(with, without) * 0.95)) << "labels hang off the wall";
    // Every label is a plate of about the size of "1.00 mm/px".
    const int plate = opaquePixels(dimensionTextAtlasEntry(vg::scene::footprintLabel(1.0, 0), 13).image);
    EXPECT_GE(changedPixels(with, without), int(labels * plate * 0.9));
}

// The height label of a cylinder wall sits at the end of its arc, not beside it.
TEST(SceneLabels, CylinderWallHeightLabelSitsOnTheArc)
{
    OffscreenSceneRenderer &r = sharedRenderer();
    GuideObject wall;
    wall.guide_index = KindCylinderWall;
    wall.name = QStringLiteral("Cylinder Wall");
    wall.scale_x = 1.2f;
    wall.scale_y = 0.8f;
    wall.scale_z = 1.0f;
    wall.wall_cylinder_angle = 180.0f;
    wall.show_wireframe = false;
    wall.show_dimensions = true;
    wall.show_width_dimension = false;
    wall.show_height_dimension = true;
    wall.show_radius_dimension = false;
    wall.show_circumference_dimension = false;
    const QVector<GuideObject> objects{wall};
    ViewCamera camera = frontCamera(2.0);
    camera.orbit(25.0, -20.0);
    SceneRenderSettings settings = plainSettings();
    const QImage without = r.render(objects, camera, settings, kView);
    settings.showLabels = true;
    const QImage with = r.render(objects, camera, settings, kView);
    ASSERT_EQ(r.renderer().lastFrameStats().labelsDrawn, 1);
    QPointF centre;
    ASSERT_GT(changedPixels(with, without, &centre), 100);

    const double halfAngle = vg::scene::cylinderWallAngleDegrees(wall) * M_PI / 360.0;
    const Eigen::Vector3d local = vg::scene::cylinderWallPoint(vg::scene::cylinderWallRadius(wall), halfAngle, 0.0);
    QPointF expected;
    ASSERT_TRUE(camera.worldToPixel(vg::scene::objectWorldMatrix(wall).map(vg::scene::toQVector(local)), kView, &expected));
    EXPECT_NEAR(centre.x(), expected.x(), 3.0);
    EXPECT_NEAR(centre.y(), expected.y(), 3.0);
}

// An extruded curve is a band: shaded like a wall, and lit by a projector like one.
TEST(SceneSurfaces, ExtrudedCurveIsShadedAndReceivesProjection)
{
    OffscreenSceneRenderer &r = sharedRenderer();
    GuideObject curve;
    curve.guide_index = KindCurve;
    curve.name = QStringLiteral("Curve");
    curve.curve_extrude = 1000.0f;
    curve.show_wireframe = false;
    curve.mesh_color = QColor(150, 150, 150);
    for (float x : {-1.0f, 1.0f}) {
        GuideCurvePoint point;
        point.anchor_x = point.in_handle_x = point.out_handle_x = x;
        point.anchor_z = point.in_handle_z = point.out_handle_z = 0.0f;
        curve.curve_points.append(point);
    }
    QVector<GuideObject> objects{curve, makeProjector({0.0f, 0.5f, 3.0f}, 0.0f)};
    r.renderer().setTextureSourceResolver(solidProjectorImage(solidImage(QColor(255, 40, 40))));
    ViewCamera camera = frontCamera(1.5);
    camera.setTarget(QVector3D(0, 0.5f, 0));
    SceneRenderSettings settings = plainSettings();
    settings.hiddenObjectIndex = 1;
    const QImage lit = r.render(objects, camera, settings, kView);
    EXPECT_EQ(r.renderer().lastFrameStats().surfacesDrawn, 1);
    EXPECT_EQ(r.renderer().lastFrameStats().projectorsProjected, 1);
    settings.projectionEnabled = false;
    const QImage shaded = r.render(objects, camera, settings, kView);
    // Between the band's edges (y 0 … 1 m, x −1 … 1 m): shaded grey, then red light on it.
    for (const QVector3D &at : {QVector3D(-0.5f, 0.3f, 0), QVector3D(0, 0.5f, 0), QVector3D(0.6f, 0.8f, 0)}) {
        QPointF pixel;
        ASSERT_TRUE(camera.worldToPixel(at, kView, &pixel));
        const QRgb s = shaded.pixel(pixel.toPoint()), l = lit.pixel(pixel.toPoint());
        EXPECT_GT(qGray(s), 40) << "not shaded at " << pixel.x() << "," << pixel.y();
        EXPECT_NEAR(qRed(s), qGreen(s), 3);
        EXPECT_GT(qRed(l), qGreen(l) + 80) << "not lit at " << pixel.x() << "," << pixel.y();
    }
}

// The rate follows the interval between frame starts; a pause counts as one second.
TEST(SceneFrameRate, SmoothedIntervalsAndPauses)
{
    SceneFrameRate rate;
    EXPECT_EQ(rate.framesPerSecond(), 0.0);
    rate.frameStartedAt(1000.0);
    EXPECT_EQ(rate.framesPerSecond(), 0.0); // one frame gives no interval yet
    for (int i = 1; i <= 60; ++i)
        rate.frameStartedAt(1000.0 + 20.0 * i);
    EXPECT_NEAR(rate.framesPerSecond(), 50.0, 0.01);
    for (int i = 1; i <= 60; ++i)
        rate.frameStartedAt(2200.0 + 10.0 * i);
    EXPECT_NEAR(rate.framesPerSecond(), 100.0, 0.5);
    rate.frameStartedAt(60000.0); // a minute later: counted as one second
    EXPECT_NEAR(rate.framesPerSecond(), 1000.0 / (10.0 + 0.2 * (1000.0 - 10.0)), 0.5);
    rate.frameStartedAt(60000.0); // two frames in the same millisecond
    EXPECT_GT(rate.framesPerSecond(), 0.0);
    EXPECT_TRUE(std::isfinite(rate.framesPerSecond()));
}
