#include "scene/ui/SceneGizmo.h"

#include <gtest/gtest.h>

#include <QLineF>
#include <QtMath>

namespace {

GizmoViewport makeViewport(const QVector3D &eye, const QVector3D &target = {})
{
    GizmoViewport viewport;
    viewport.size = QSize(800, 600);
    viewport.view.lookAt(eye, target, QVector3D(0, 1, 0));
    viewport.projection.perspective(45.0f, 800.0f / 600.0f, 0.02f, 100.0f);
    return viewport;
}

} // namespace

TEST(SceneWidgetGizmo, PartNamesRoundTrip)
{
    for (GizmoPart part : {GizmoPart::XAxis, GizmoPart::YAxis, GizmoPart::ZAxis, GizmoPart::Screen,
                           GizmoPart::Ring})
        EXPECT_EQ(gizmoPartFromName(gizmoPartName(part)), part);
    EXPECT_EQ(gizmoPartName(GizmoPart::XAxis), QStringLiteral("xaxis"));
    EXPECT_EQ(gizmoPartName(GizmoPart::Screen), QStringLiteral("screen"));
    EXPECT_EQ(gizmoPartName(GizmoPart::Ring), QStringLiteral("ring"));
    EXPECT_EQ(gizmoPartFromName(QStringLiteral("bogus")), GizmoPart::None);
}

TEST(SceneWidgetGizmo, PicksHandlesWhereTheyAreDrawn)
{
    const GizmoViewport viewport = makeViewport({3, 2, 5});
    const GizmoFrame frame = SceneGizmo::frame(viewport, {}, QQuaternion(), false, GizmoMove);
    // Handles appear about the same size on screen, whatever the distance.
    const QPointF centre = viewport.projectToPixel({});
    const QPointF xEnd = viewport.projectToPixel(frame.axes[0] * frame.length);
    EXPECT_NEAR(QLineF(centre, xEnd).length(), SceneGizmo::kHandlePixels, 40.0);

    EXPECT_EQ(SceneGizmo::pick(viewport, frame, GizmoMove, centre), GizmoPart::Screen);
    for (int i = 0; i < 3; ++i) {
        const QPointF tip = viewport.projectToPixel(frame.axes[i] * frame.length * 0.85f);
        EXPECT_EQ(SceneGizmo::pick(viewport, frame, GizmoMove, tip), GizmoPart(int(GizmoPart::XAxis) + i));
    }
    EXPECT_EQ(SceneGizmo::pick(viewport, frame, GizmoMove, centre + QPointF(-200, 200)), GizmoPart::None);

    // Rotation: axis circles and the outer view ring; no centre square.
    const GizmoFrame rotFrame = SceneGizmo::frame(viewport, {}, QQuaternion(), false, GizmoRotate);
    EXPECT_NE(SceneGizmo::pick(viewport, rotFrame, GizmoRotate, centre), GizmoPart::Screen);
    EXPECT_EQ(SceneGizmo::pick(viewport, rotFrame, GizmoRotate,
                               centre + QPointF(0, -SceneGizmo::kRingPixels)),
              GizmoPart::Ring);
    const QPointF onYCircle = viewport.projectToPixel(QVector3D(1, 0, 0) * rotFrame.length);
    // The point on the y circle at +x is also the x axis direction; make sure a circle wins.
    const GizmoPart part = SceneGizmo::pick(viewport, rotFrame, GizmoRotate, onYCircle);
    EXPECT_TRUE(part == GizmoPart::YAxis || part == GizmoPart::ZAxis);
}

TEST(SceneWidgetGizmo, LocalAxesFollowTheObject)
{
    const GizmoViewport viewport = makeViewport({3, 2, 5});
    const QQuaternion turn = QQuaternion::fromAxisAndAngle(0, 1, 0, 90);
    const GizmoFrame world = SceneGizmo::frame(viewport, {}, turn, false, GizmoMove);
    const GizmoFrame local = SceneGizmo::frame(viewport, {}, turn, true, GizmoMove);
    EXPECT_NEAR((world.axes[0] - QVector3D(1, 0, 0)).length(), 0.0, 1e-5);
    EXPECT_NEAR((local.axes[0] - QVector3D(0, 0, -1)).length(), 0.0, 1e-5);
    // Scale always works in the object's own axes.
    const GizmoFrame scale = SceneGizmo::frame(viewport, {}, turn, false, GizmoScale);
    EXPECT_NEAR((scale.axes[0] - QVector3D(0, 0, -1)).length(), 0.0, 1e-5);
}

TEST(SceneWidgetGizmo, AxisDragFollowsTheCursorAlongTheAxis)
{
    const GizmoViewport viewport = makeViewport({3, 2, 5});
    const GizmoFrame frame = SceneGizmo::frame(viewport, {}, QQuaternion(), false, GizmoMove);
    const QPointF a = viewport.projectToPixel({0.5f, 0, 0});
    const QPointF b = viewport.projectToPixel({1.5f, 0, 0});
    const QVector3D delta = SceneGizmo::axisTranslation(viewport, frame, GizmoPart::XAxis, a, b);
    EXPECT_NEAR(delta.x(), 1.0, 1e-3);
    EXPECT_NEAR(delta.y(), 0.0, 1e-6);
    EXPECT_NEAR(delta.z(), 0.0, 1e-6);
}

TEST(SceneWidgetGizmo, ScreenDragStaysInTheViewPlane)
{
    const GizmoViewport viewport = makeViewport({0, 0, 5});
    const QPointF a = viewport.projectToPixel({0, 0, 0});
    const QPointF b = viewport.projectToPixel({1, 1, 0});
    const QVector3D delta = SceneGizmo::screenTranslation(viewport, {}, a, b);
    EXPECT_NEAR(delta.x(), 1.0, 1e-3);
    EXPECT_NEAR(delta.y(), 1.0, 1e-3);
    EXPECT_NEAR(delta.z(), 0.0, 1e-3);
}

TEST(SceneWidgetGizmo, RingTurnsAboutTheViewAxis)
{
    const GizmoViewport viewport = makeViewport({0, 0, 5});
    const GizmoFrame frame = SceneGizmo::frame(viewport, {}, QQuaternion(), false, GizmoRotate);
    const QPointF centre = viewport.projectToPixel({});
    const QPointF right = centre + QPointF(100, 0);
    const QPointF up = centre + QPointF(0, -100);
    // A counter-clockwise quarter turn on screen turns +90° about the axis towards the viewer (+z).
    EXPECT_NEAR(SceneGizmo::rotationDegrees(viewport, frame, GizmoPart::Ring, right, up), 90.0, 1e-3);
    EXPECT_NEAR((SceneGizmo::rotationAxis(viewport, frame, GizmoPart::Ring) - QVector3D(0, 0, 1)).length(),
                0.0, 1e-5);
    // The z handle's axis points at the viewer too: same sign.
    EXPECT_NEAR(SceneGizmo::rotationDegrees(viewport, frame, GizmoPart::ZAxis, right, up), 90.0, 1e-3);
    // Seen from behind, the same cursor turn is a negative turn about +z.
    const GizmoViewport behind = makeViewport({0, 0, -5});
    const GizmoFrame behindFrame = SceneGizmo::frame(behind, {}, QQuaternion(), false, GizmoRotate);
    const QPointF c2 = behind.projectToPixel({});
    EXPECT_NEAR(SceneGizmo::rotationDegrees(behind, behindFrame, GizmoPart::ZAxis, c2 + QPointF(100, 0),
                                            c2 + QPointF(0, -100)),
                -90.0, 1e-3);
}

TEST(SceneWidgetGizmo, ScaleAndSnapping)
{
    const GizmoViewport viewport = makeViewport({3, 2, 5});
    const GizmoFrame frame = SceneGizmo::frame(viewport, {}, QQuaternion(), false, GizmoScale);
    const QPointF a = viewport.projectToPixel({0.5f, 0, 0});
    const QPointF b = viewport.projectToPixel({1.0f, 0, 0});
    EXPECT_NEAR(SceneGizmo::scaleFactor(viewport, frame, GizmoPart::XAxis, a, b), 2.0, 1e-3);
    // Dragging through the origin never gives a negative or zero scale.
    EXPECT_GE(SceneGizmo::scaleFactor(viewport, frame, GizmoPart::XAxis, a,
                                      viewport.projectToPixel({-1.0f, 0, 0})),
              0.01f);
    EXPECT_FLOAT_EQ(SceneGizmo::snapped(0.26f, 0.1f), 0.3f);
    EXPECT_FLOAT_EQ(SceneGizmo::snapped(-22.0f, 15.0f), -15.0f);
    EXPECT_FLOAT_EQ(SceneGizmo::snapped(1.234f, 0.0f), 1.234f);
}
