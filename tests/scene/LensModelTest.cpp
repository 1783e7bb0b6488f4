#include "scene/GuideObject.h"
#include "scene/LensModel.h"
#include "scene/Transform.h"

#include <gtest/gtest.h>

#include <random>

using namespace vg::scene;

namespace {

LensIntrinsics plainLens()
{
    LensIntrinsics lens;
    lens.throwRatio = 1.0;
    lens.lensShiftX = 0.0;
    lens.lensShiftY = 0.0;
    lens.width = 1920;
    lens.height = 1200;
    return lens;
}

GuideObject projectorAt(float x, float y, float z, float halfWidth = 0.15f)
{
    GuideObject o;
    o.guide_index = KindProjector;
    o.translate_x = x;
    o.translate_y = y;
    o.translate_z = z;
    o.scale_x = o.scale_y = o.scale_z = halfWidth;
    return o;
}

} // namespace

TEST(LensModel, LimitsOfThrowRatioAndShift)
{
    EXPECT_DOUBLE_EQ(clampedThrowRatio(0.0), 0.1);
    EXPECT_DOUBLE_EQ(clampedThrowRatio(20.0), 10.0);
    EXPECT_DOUBLE_EQ(lensShiftFraction(150.0), 1.0);
    EXPECT_DOUBLE_EQ(lensShiftFraction(-150.0), -1.0);

    // Clamped values are what the projection uses: ratio 0 behaves as 0.1, 150 % as 100 %.
    LensIntrinsics a = plainLens();
    LensIntrinsics b = plainLens();
    a.throwRatio = 0.0;
    b.throwRatio = 0.1;
    a.lensShiftX = 150.0;
    b.lensShiftX = 100.0;
    const Eigen::Vector3d q(0.3, -0.2, -2.0);
    const LensProjection pa = projectLensFramePoint(a, q, 100.0);
    const LensProjection pb = projectLensFramePoint(b, q, 100.0);
    EXPECT_DOUBLE_EQ(pa.u, pb.u);
    EXPECT_DOUBLE_EQ(pa.v, pb.v);
    a.throwRatio = 20.0;
    b.throwRatio = 10.0;
    EXPECT_DOUBLE_EQ(projectLensFramePoint(a, q, 100.0).u, projectLensFramePoint(b, q, 100.0).u);
}

TEST(LensModel, OnAxisPointTwoMetresAway)
{
    const LensIntrinsics lens = plainLens();
    const LensProjection p = projectLensFramePoint(lens, {0.0, 0.0, -2.0}, 8.0);
    EXPECT_NEAR(p.u, 0.5, 1e-12);
    EXPECT_NEAR(p.v, 0.5, 1e-12);
    EXPECT_TRUE(p.inside);
    EXPECT_DOUBLE_EQ(p.depth, 2.0);
    const Eigen::Vector2d size = lensImageSizeAtDepth(lens, 2.0);
    EXPECT_NEAR(size.x(), 2.0, 1e-12);
    EXPECT_NEAR(size.y(), 1.25, 1e-12);
    // The image edges at that depth.
    EXPECT_NEAR(projectLensFramePoint(lens, {1.0, 0.625, -2.0}, 8.0).u, 1.0, 1e-12);
    EXPECT_NEAR(projectLensFramePoint(lens, {1.0, 0.625, -2.0}, 8.0).v, 0.0, 1e-12);
}

TEST(LensModel, DefaultVerticalShiftPutsTopEdgeOnAxis)
{
    LensIntrinsics lens = plainLens();
    lens.lensShiftY = 50.0;
    for (double d : {0.5, 2.0, 7.0}) {
        const LensProjection p = projectLensFramePoint(lens, {0.0, 0.0, -d}, 8.0);
        EXPECT_NEAR(p.v, 0.0, 1e-12) << d;
        EXPECT_NEAR(p.u, 0.5, 1e-12);
        EXPECT_TRUE(p.inside);
    }
    // Below the axis lies inside the image, above it outside.
    EXPECT_TRUE(projectLensFramePoint(lens, {0.0, -0.3, -2.0}, 8.0).inside);
    EXPECT_FALSE(projectLensFramePoint(lens, {0.0, 0.3, -2.0}, 8.0).inside);
}

TEST(LensModel, FlipsAndRotation)
{
    LensIntrinsics lens = plainLens();
    const Eigen::Vector3d q(0.3, 0.2, -2.0);
    const LensProjection plain = projectLensFramePoint(lens, q, 8.0);

    lens.rotate180 = true;
    lens.flipH = true;
    const LensProjection rotFlipH = projectLensFramePoint(lens, q, 8.0);
    EXPECT_NEAR(rotFlipH.u, plain.u, 1e-12);            // only a vertical flip is left
    EXPECT_NEAR(rotFlipH.v, 1.0 - plain.v, 1e-12);

    lens.flipH = false;
    const LensProjection rot = projectLensFramePoint(lens, q, 8.0);
    EXPECT_NEAR(rot.u, 1.0 - plain.u, 1e-12);
    EXPECT_NEAR(rot.v, 1.0 - plain.v, 1e-12);

    lens.rotate180 = false;
    lens.flipV = true;
    const LensProjection flipV = projectLensFramePoint(lens, q, 8.0);
    EXPECT_NEAR(flipV.u, plain.u, 1e-12);
    EXPECT_NEAR(flipV.v, 1.0 - plain.v, 1e-12);
}

TEST(LensModel, DepthLimits)
{
    const LensIntrinsics lens = plainLens();
    EXPECT_FALSE(projectLensFramePoint(lens, {0, 0, 1.0}, 8.0).inside);        // behind
    EXPECT_FALSE(projectLensFramePoint(lens, {0, 0, -0.00005}, 8.0).inside);   // at the lens
    EXPECT_TRUE(projectLensFramePoint(lens, {0, 0, -8.0}, 8.0).inside);        // exactly at D
    EXPECT_FALSE(projectLensFramePoint(lens, {0, 0, -8.01}, 8.0).inside);
}

TEST(LensModel, ThrowDistanceOfAnEmptyScene)
{
    QVector<GuideObject> scene{projectorAt(0, 0, 0, 0.15f)};
    EXPECT_DOUBLE_EQ(throwDistanceFor(scene, 0), 8.0);
    scene[0].scale_x = 0.5f;                       // 28 × 0.5 = 14
    EXPECT_NEAR(throwDistanceFor(scene, 0), 14.0, 1e-6);
    scene[0].scale_x = 40.0f;                      // 1120, cut to 500
    EXPECT_DOUBLE_EQ(throwDistanceFor(scene, 0), 500.0);
    scene[0].scale_x = 0.0f;                       // half width floored at 0.1
    EXPECT_DOUBLE_EQ(throwDistanceFor(scene, 0), 8.0);
    GuideObject plane;
    plane.guide_index = KindPlane;
    QVector<GuideObject> other{plane};
    EXPECT_DOUBLE_EQ(throwDistanceFor(other, 0), 8.0);
}

TEST(LensModel, ThrowDistanceReachesObjects)
{
    QVector<GuideObject> scene{projectorAt(0, 0, 0)};
    GuideObject wall;
    wall.guide_index = KindPlane;
    wall.translate_z = -20.0f;
    wall.scale_x = 2.0f;
    wall.scale_y = 1.0f;
    scene.append(wall);
    EXPECT_NEAR(throwDistanceFor(scene, 0), 20.0, 1e-5);
    // A plane turned about Y offers its far corner.
    scene[1].rotate_y = 90.0f;
    EXPECT_NEAR(throwDistanceFor(scene, 0), 22.0, 1e-5);
    scene[1].visible = false;
    EXPECT_DOUBLE_EQ(throwDistanceFor(scene, 0), 8.0);

    GuideObject other = projectorAt(0, 0, -30.0f, 0.1f);   // sphere radius 0.12 + 0.03
    scene.append(other);
    EXPECT_NEAR(throwDistanceFor(scene, 0), 30.15, 1e-5);

    GuideObject far = projectorAt(0, 0, -900.0f);
    scene.append(far);
    EXPECT_DOUBLE_EQ(throwDistanceFor(scene, 0), 500.0);
}

TEST(LensModel, ThrowDistanceRulesPerKind)
{
    // A projector at the origin looking down -Z and one object straight ahead of it.
    auto reach = [](const GuideObject &other) {
        return throwDistanceFor(QVector<GuideObject>{projectorAt(0, 0, 0), other}, 0);
    };
    GuideObject cylinder;
    cylinder.guide_index = KindCylinderWall;
    cylinder.translate_z = -20.0f;
    cylinder.scale_x = float(M_PI);          // 2π m of arc
    cylinder.scale_y = 1.0f;
    cylinder.wall_cylinder_angle = 180.0f;   // radius 2 m, the arc bulging towards +Z
    cylinder.rotate_y = 180.0f;              // turned so that it bulges away from the projector
    EXPECT_NEAR(reach(cylinder), 22.0, 1e-4);   // the arc's ends lie one radius deeper
    cylinder.wall_cylinder_angle = 0.0f;     // clamped to 1°: the radius is huge, the arc nearly flat
    EXPECT_NEAR(reach(cylinder), 20.0 + 360.0 * (1.0 - std::cos(M_PI / 360.0)), 1e-5);

    GuideObject camera;
    camera.guide_index = KindCamera;
    camera.translate_z = -30.0f;
    camera.scale_x = 0.5f;
    camera.scale_y = 2.0f;
    EXPECT_NEAR(reach(camera), 32.0, 1e-5);  // its largest size

    GuideObject person;
    person.guide_index = KindPerson;
    person.translate_z = -30.0f;
    person.scale_x = 3.0f;
    person.scale_y = 4.0f;
    person.scale_z = 0.0f;
    EXPECT_NEAR(reach(person), 35.0, 1e-5);  // bounding radius 5
    person.guide_index = KindCurvedSurface;
    EXPECT_NEAR(reach(person), 35.0, 1e-5);

    GuideObject projector = projectorAt(0, 0, -30.0f, 1.0f);   // 0.62 × 1 + 0.03
    EXPECT_NEAR(reach(projector), 30.65, 1e-5);

    // Kinds without a rule never extend the reach.
    for (int kind : {int(KindCurve), int(KindComment), int(KindDistanceMeasure), int(KindLShape), int(KindImage)}) {
        GuideObject far;
        far.guide_index = kind;
        far.translate_z = -100.0f;
        EXPECT_DOUBLE_EQ(reach(far), 8.0) << kind;
    }
    // Objects behind the lens do not either.
    GuideObject behind;
    behind.guide_index = KindPlane;
    behind.translate_z = 50.0f;
    EXPECT_DOUBLE_EQ(reach(behind), 8.0);
}

TEST(LensModel, PixelRayPixelRoundTripForRandomLenses)
{
    std::mt19937 rng(1234);
    std::uniform_real_distribution<double> ratio(0.1, 10.0), shift(-100.0, 100.0), angle(-180.0, 180.0),
        pos(-10.0, 10.0), unit(0.0, 1.0);
    std::uniform_int_distribution<int> res(16, 4096), bit(0, 1);
    for (int trial = 0; trial < 200; ++trial) {
        LensIntrinsics lens;
        lens.throwRatio = ratio(rng);
        lens.lensShiftX = shift(rng);
        lens.lensShiftY = shift(rng);
        lens.width = res(rng);
        lens.height = res(rng);
        lens.flipH = bit(rng);
        lens.flipV = bit(rng);
        lens.rotate180 = bit(rng);
        const LensPose pose = lensPoseFromEuler({pos(rng), pos(rng), pos(rng)}, {angle(rng), angle(rng), angle(rng)});
        const LensModel model(lens, pose, 8.0 + 400.0 * unit(rng));
        // Pixel centres over the whole image, first and last pixels included, at random
        // depths along the rays.
        for (int gy = 0; gy <= 8; ++gy) {
            for (int gx = 0; gx <= 8; ++gx) {
                const double u = (0.5 + gx * (lens.width - 1) / 8.0) / lens.width;
                const double v = (0.5 + gy * (lens.height - 1) / 8.0) / lens.height;
                const LensRay ray = model.ray(u, v);
                const double t = (0.05 + 0.9 * unit(rng)) * (ray.farPoint - ray.origin).norm();
                const LensProjection p = model.project(ray.origin + t * ray.direction);
                ASSERT_NEAR(p.u, u, 1e-7) << trial;
                ASSERT_NEAR(p.v, v, 1e-7) << trial;
                ASSERT_TRUE(p.inside) << trial;
                ASSERT_NEAR(p.px, u * lens.width, 1e-7 * lens.width);
            }
        }
    }
}

TEST(LensModel, PinholeFormAgreesWithProjection)
{
    LensIntrinsics lens = plainLens();
    lens.throwRatio = 1.7;
    lens.lensShiftX = 12.0;
    lens.lensShiftY = 40.0;
    const double f = lensFocalLengthPixels(lens);
    const Eigen::Vector2d c = lensPrincipalPointPixels(lens);
    const Eigen::Vector3d q(0.4, -0.3, -3.0);
    const LensProjection p = projectLensFramePoint(lens, q, 8.0);
    EXPECT_NEAR(p.px, f * q.x() / 3.0 + c.x(), 1e-9);
    EXPECT_NEAR(p.py, c.y() - f * q.y() / 3.0, 1e-9);

    // The clip matrix gives the same (u, v).
    const LensModel model(lens, LensPose{}, 8.0);
    const Eigen::Vector4d clip = model.projectionMatrix(0.1, 50.0) * Eigen::Vector4d(q.x(), q.y(), q.z(), 1.0);
    EXPECT_NEAR((clip.x() / clip.w() + 1.0) / 2.0, p.u, 1e-12);
    EXPECT_NEAR((1.0 - clip.y() / clip.w()) / 2.0, p.v, 1e-12);
}

TEST(LensModel, FrustumCornersAtThrowDistance)
{
    LensIntrinsics lens = plainLens();
    lens.lensShiftY = 50.0;
    const LensModel model(lens, LensPose{}, 10.0);
    const auto corners = model.farCorners();
    EXPECT_NEAR(corners[0].x(), -5.0, 1e-12);
    EXPECT_NEAR(corners[0].y(), 0.0, 1e-12);          // top edge on the axis
    EXPECT_NEAR(corners[2].x(), 5.0, 1e-12);
    EXPECT_NEAR(corners[2].y(), -6.25, 1e-12);
    EXPECT_NEAR(corners[2].z(), -10.0, 1e-12);
    EXPECT_EQ(model.frustumLines().size(), 16u);
}

TEST(LensModel, FootprintOnAFacingWall)
{
    const LensModel model(plainLens(), LensPose{}, 8.0);
    // At 2 m the image is 2000 mm wide over 1920 px and 1250 mm over 1200 px.
    const PixelFootprint fp = model.footprintAt({0.0, 0.0, -2.0}, {0.0, 0.0, 1.0});
    ASSERT_TRUE(fp.valid);
    EXPECT_NEAR(fp.mmPerPixelU, 2000.0 / 1920.0, 1e-6);
    EXPECT_NEAR(fp.mmPerPixelV, 1250.0 / 1200.0, 1e-6);
    EXPECT_FALSE(model.footprintAt({0.0, 0.0, -2.0}, {0.0, 0.0, 0.0}).valid);
    EXPECT_FALSE(model.footprintAt({0.0, 0.0, 2.0}, {0.0, 0.0, 1.0}).valid);

    EXPECT_DOUBLE_EQ(footprintMetricValue(2.0, 3.0, FootprintMax), 3.0);
    EXPECT_DOUBLE_EQ(footprintMetricValue(2.0, 3.0, FootprintU), 2.0);
    EXPECT_DOUBLE_EQ(footprintMetricValue(2.0, 3.0, FootprintV), 3.0);
    EXPECT_DOUBLE_EQ(footprintMetricValue(2.0, 8.0, FootprintArea), 4.0);
    EXPECT_EQ(footprintLabel(1.5, 0), QStringLiteral("1.50 mm/px"));
    EXPECT_EQ(footprintLabel(1.5, 3), QStringLiteral("1.50 mm2/px"));
}

TEST(LensModel, HeatColourAndGrid)
{
    EXPECT_FALSE(heatmapColor(0.0001, 0.0, 1.0, 0.5).draws);
    const HeatColor low = heatmapColor(0.001, 0.001, 1.0, 0.5);
    EXPECT_NEAR(low.r, 0.05f, 1e-6);
    EXPECT_NEAR(low.g, 0.95f, 1e-6);
    EXPECT_FLOAT_EQ(low.a, 0.5f);
    const HeatColor mid = heatmapColor(0.5, 0.0, 1.0, 1.0);
    EXPECT_NEAR(mid.r, 1.0f, 1e-6);
    EXPECT_NEAR(mid.g, 0.88f, 1e-6);
    const HeatColor high = heatmapColor(5.0, 0.0, 1.0, 1.0);
    EXPECT_NEAR(high.g, 0.08f, 1e-6);
    // An empty range still gives a colour, not a division by zero.
    EXPECT_TRUE(heatmapColor(1.0, 1.0, 1.0, 1.0).draws);

    // Lines every 100 px centred on the image centre (960, 600).
    EXPECT_NEAR(projectionGridCoverage(960.0, 123.4, 1920, 1200, 100, 1.0), 1.0, 1e-12);
    EXPECT_NEAR(projectionGridCoverage(860.0, 123.4, 1920, 1200, 100, 1.0), 1.0, 1e-12);
    EXPECT_NEAR(projectionGridCoverage(910.0, 650.0, 1920, 1200, 100, 1.0), 0.0, 1e-12);
    EXPECT_NEAR(projectionGridCoverage(910.0, 600.0, 1920, 1200, 100, 1.0), 1.0, 1e-12);
    const QVector3D blended = blendProjectionGrid(QVector3D(0, 0, 0), 1.0);
    EXPECT_NEAR(blended.x(), 0.18f, 1e-6);
}

TEST(Transform, EulerOrderAndInverse)
{
    // X is applied first: a 90° turn about X then 90° about Y sends +Y to +Z then to +X.
    const Eigen::Matrix3d r = eulerDegreesToMatrix(90.0, 90.0, 0.0);
    const Eigen::Vector3d y = r * Eigen::Vector3d::UnitY();
    EXPECT_NEAR(y.x(), 1.0, 1e-12);
    std::mt19937 rng(7);
    std::uniform_real_distribution<double> a(-180, 180), b(-89, 89);
    for (int i = 0; i < 100; ++i) {
        const Eigen::Vector3d e(a(rng), b(rng), a(rng));
        const Eigen::Vector3d back = matrixToEulerDegrees(eulerDegreesToMatrix(e.x(), e.y(), e.z()));
        EXPECT_NEAR((back - e).norm(), 0.0, 1e-9);
    }
    GuideObject o;
    o.translate_x = 1.0f;
    o.rotate_y = 90.0f;
    const Eigen::Vector3d w = localToWorld(o, {0.0, 0.0, -1.0});
    EXPECT_NEAR(w.x(), 0.0, 1e-6);    // -Z turned by +90° about Y points along -X
    EXPECT_NEAR((worldToLocal(o, w) - Eigen::Vector3d(0, 0, -1)).norm(), 0.0, 1e-6);
}
