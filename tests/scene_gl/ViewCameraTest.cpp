#include "scene/ViewCamera.h"

#include <gtest/gtest.h>

#include <cmath>

TEST(ViewCamera, PerspectiveLooksAtTheTargetWithA45DegreeField)
{
    ViewCamera camera;
    camera.setRotation(0.0, 0.0);
    camera.setFocusDistance(4.0);
    const QSize viewport(800, 800);
    QPointF pixel;
    ASSERT_TRUE(camera.worldToPixel(QVector3D(0, 0, 0), viewport, &pixel));
    EXPECT_NEAR(pixel.x(), 400.0, 1e-3);
    EXPECT_NEAR(pixel.y(), 400.0, 1e-3);
    // A point at the top edge of the 45° field, 4 m away.
    const float top = float(4.0 * std::tan(22.5 * M_PI / 180.0));
    ASSERT_TRUE(camera.worldToPixel(QVector3D(0, top, 0), viewport, &pixel));
    EXPECT_NEAR(pixel.y(), 0.0, 1e-2);
    // The ray back through that pixel passes the point.
    const ViewCameraRay ray = camera.rayThroughPixel(pixel, viewport);
    const QVector3D onRay = ray.origin + ray.direction * (QVector3D(0, top, 0) - ray.origin).length();
    EXPECT_NEAR(onRay.y(), top, 1e-3);
}

TEST(ViewCamera, FrontAndSideLookAlongTheAxes)
{
    ViewCamera camera;
    camera.setMode(ViewCameraMode::Front);
    EXPECT_NEAR(camera.forward().z(), -1.0f, 1e-6);
    camera.setMode(ViewCameraMode::Side);
    EXPECT_NEAR(camera.forward().x(), -1.0f, 1e-6);
    EXPECT_TRUE(camera.isOrthographic());
    // Orbiting from the side view turns it into a perspective camera seen from the same side.
    camera.orbit(0, 0);
    EXPECT_EQ(camera.mode(), ViewCameraMode::Perspective);
    EXPECT_NEAR(camera.forward().x(), -1.0f, 1e-5);
}

TEST(ViewCamera, OrbitPanDollyAndZoom)
{
    ViewCamera camera;
    const double pitch = camera.rotationX();
    camera.orbit(10, 20);
    EXPECT_GT(camera.rotationX(), pitch);
    camera.orbit(0, 100000);
    EXPECT_LT(camera.rotationX(), M_PI / 2); // never flips over the top
    const QVector3D before = camera.target();
    camera.pan(100, 0, QSize(800, 600));
    EXPECT_GT((camera.target() - before).length(), 0.01f);
    const double distance = camera.focusDistance();
    camera.dolly(50);
    EXPECT_GT(camera.focusDistance(), distance);
    camera.zoom(3);
    EXPECT_LT(camera.focusDistance(), distance * 1.7);
    camera.frame(QVector3D(1, 2, 3), 2.0);
    EXPECT_EQ(camera.target(), QVector3D(1, 2, 3));
    QPointF p;
    ASSERT_TRUE(camera.worldToPixel(QVector3D(1, 2, 3), QSize(640, 480), &p));
    EXPECT_NEAR(p.x(), 320.0, 1e-2);
}

TEST(ViewCamera, ProjectorViewUsesTheLensFrustum)
{
    ViewCamera camera;
    ViewCameraLens lens;
    lens.lensToWorld.translate(0, 0, 3);
    lens.throwRatio = 1.0;
    lens.lensShiftY = 0.5;
    lens.aspect = 1.6;
    camera.setProjectorView(lens);
    // With the viewport of the projector's own aspect, the image's top edge (on the lens axis
    // at 50 % shift) is the viewport's top edge, and its width fills the viewport.
    const QSize viewport(1600, 1000);
    QPointF p;
    ASSERT_TRUE(camera.worldToPixel(QVector3D(0, 0, 0), viewport, &p));
    EXPECT_NEAR(p.y(), 0.0, 1e-2);
    EXPECT_NEAR(p.x(), 800.0, 1e-2);
    ASSERT_TRUE(camera.worldToPixel(QVector3D(1.5f, -1.875f, 0), viewport, &p));
    EXPECT_NEAR(p.x(), 1600.0, 0.05);
    EXPECT_NEAR(p.y(), 1000.0, 0.05);
}
