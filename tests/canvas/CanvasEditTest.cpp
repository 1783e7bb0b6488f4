#include "CanvasTestSupport.h"

#include "canvas/CanvasEdit.h"

#include <QLineF>

#include <gtest/gtest.h>

namespace {

CanvasSources oneGuide(int width, int height)
{
    CanvasSources sources;
    sources.guides.append({QStringLiteral("G"), canvasImageOf(gradientImage(width, height)), QSizeF()});
    return sources;
}

CanvasObjectSettings turnedGuide()
{
    CanvasObjectSettings object;
    object.guide_index = 0;
    object.translate_x = 500;
    object.translate_y = 300;
    object.rotation = 30;
    object.scale_x = 1.5;
    object.scale_y = 0.5;
    return object;
}

QPointF handle(const CanvasObjectSettings &o, const CanvasSources &s, CanvasHandle h)
{
    return canvasHandlePositions(o, s).at(int(h) - int(CanvasHandle::TopLeft));
}

void expectSamePoint(QPointF a, QPointF b, const char *what)
{
    EXPECT_LT(QLineF(a, b).length(), 1e-6) << what << ": " << a.x() << "," << a.y() << " vs " << b.x() << "," << b.y();
}

} // namespace

TEST(CanvasEdit, ResizeKeepsTheOppositeSideAndFollowsThePointerAlongTheObjectAxis)
{
    const CanvasSources sources = oneGuide(200, 100);
    const CanvasObjectSettings start = turnedGuide();
    const QPointF right = handle(start, sources, CanvasHandle::Right);
    // 40 px further out along the object's own x axis (turned 30 degrees).
    const QPointF along(40 * std::cos(M_PI / 6), 40 * std::sin(M_PI / 6));
    const CanvasObjectSettings after =
        applyCanvasDrag(start, sources, CanvasTool::Resize, CanvasHandle::Right, right, right + along, false);
    expectSamePoint(handle(after, sources, CanvasHandle::Left), handle(start, sources, CanvasHandle::Left), "left side");
    expectSamePoint(handle(after, sources, CanvasHandle::Right), right + along, "dragged side");
    EXPECT_NEAR(canvasObjectPlacedSize(after, sources).width(), 340, 1);
    EXPECT_DOUBLE_EQ(after.scale_y, start.scale_y);
    EXPECT_DOUBLE_EQ(after.rotation, start.rotation);

    // A corner keeps the opposite corner; dragging past it stops at one pixel, never mirrors.
    const QPointF corner = handle(start, sources, CanvasHandle::TopLeft);
    const CanvasObjectSettings shrunk = applyCanvasDrag(start, sources, CanvasTool::Resize, CanvasHandle::TopLeft, corner,
                                                        corner + QPointF(5000, 5000), false);
    EXPECT_GT(shrunk.scale_x, 0.0);
    EXPECT_GT(shrunk.scale_y, 0.0);
    expectSamePoint(handle(shrunk, sources, CanvasHandle::BottomRight), handle(start, sources, CanvasHandle::BottomRight),
                    "opposite corner");
}

TEST(CanvasEdit, ScaleActsAboutTheCentreAndCropLeavesTheContentInPlace)
{
    const CanvasSources sources = oneGuide(200, 100);
    const CanvasObjectSettings start = turnedGuide();
    const QPointF corner = handle(start, sources, CanvasHandle::BottomRight);
    const QPointF centre(start.translate_x, start.translate_y);
    const CanvasObjectSettings doubled = applyCanvasDrag(start, sources, CanvasTool::Scale, CanvasHandle::BottomRight,
                                                         corner, centre + 2 * (corner - centre), false);
    EXPECT_NEAR(doubled.scale_x, 3.0, 1e-9);
    EXPECT_NEAR(doubled.scale_y, 1.0, 1e-9);
    EXPECT_DOUBLE_EQ(doubled.translate_x, start.translate_x);
    const CanvasObjectSettings snapped = applyCanvasDrag(start, sources, CanvasTool::Scale, CanvasHandle::Right,
                                                         handle(start, sources, CanvasHandle::Right),
                                                         centre + 1.37 * (handle(start, sources, CanvasHandle::Right) - centre), true);
    EXPECT_NEAR(snapped.scale_x, 2.05, 1e-9); // 1.5 * 1.37 = 2.055 -> 2.05
    EXPECT_DOUBLE_EQ(snapped.scale_y, 0.5);

    // Cropping the left quarter: the right side stays put on the canvas.
    const QPointF left = handle(start, sources, CanvasHandle::Left);
    const QPointF quarter = (handle(start, sources, CanvasHandle::Right) - left) / 4;
    const CanvasObjectSettings cropped =
        applyCanvasDrag(start, sources, CanvasTool::Crop, CanvasHandle::Left, left, left + quarter, false);
    EXPECT_NEAR(cropped.crop_left, 0.25, 1e-9);
    EXPECT_DOUBLE_EQ(cropped.crop_right, 1.0);
    EXPECT_DOUBLE_EQ(cropped.translate_x, start.translate_x);
    expectSamePoint(handle(cropped, sources, CanvasHandle::TopRight), handle(start, sources, CanvasHandle::TopRight),
                    "uncropped corner");
    expectSamePoint(handle(cropped, sources, CanvasHandle::Left), left + quarter, "cropped side");
    // A crop cannot pass the opposite side.
    const CanvasObjectSettings over =
        applyCanvasDrag(cropped, sources, CanvasTool::Crop, CanvasHandle::Right, QPointF(), -8 * quarter, false);
    EXPECT_GT(over.crop_right, over.crop_left);
}

TEST(CanvasEdit, MoveAndRotateSnapWithShift)
{
    const CanvasSources sources = oneGuide(200, 100);
    const CanvasObjectSettings start = turnedGuide();
    const CanvasObjectSettings moved =
        applyCanvasDrag(start, sources, CanvasTool::Scale, CanvasHandle::Body, QPointF(0, 0), QPointF(13.2, -26.7), true);
    EXPECT_DOUBLE_EQ(moved.translate_x, 510.0);
    EXPECT_DOUBLE_EQ(moved.translate_y, 270.0);
    const CanvasObjectSettings free =
        applyCanvasDrag(start, sources, CanvasTool::Translate, CanvasHandle::Body, QPointF(0, 0), QPointF(13.2, -26.7), false);
    EXPECT_DOUBLE_EQ(free.translate_x, 513.2);

    // A quarter turn clockwise about the centre (y grows downwards), then snapped to 15 degrees.
    const QPointF centre(start.translate_x, start.translate_y);
    const CanvasObjectSettings turned = applyCanvasDrag(start, sources, CanvasTool::Rotate, CanvasHandle::Body,
                                                        centre + QPointF(100, 0), centre + QPointF(0, 100), false);
    EXPECT_NEAR(turned.rotation, 120.0, 1e-9);
    const CanvasObjectSettings snappedTurn = applyCanvasDrag(start, sources, CanvasTool::Rotate, CanvasHandle::Body,
                                                             centre + QPointF(100, 0), centre + QPointF(100, 20), true);
    EXPECT_NEAR(snappedTurn.rotation, 45.0, 1e-9); // 30 + 11.3 -> 45
    EXPECT_EQ(canvasTransformStatus(start), QStringLiteral("Scale X 1.500 Y 0.500  Position X 500.0 Y 300.0"));
}

TEST(CanvasEdit, HitTestTakesTheTopmostVisibleObjectInsideItsTurnedOutline)
{
    const CanvasSources sources = oneGuide(200, 100);
    CanvasTabSettings canvas;
    CanvasObjectSettings bottom;
    bottom.guide_index = 0;
    canvas.objects.append(bottom);
    CanvasObjectSettings top = bottom;
    top.translate_x = 50;
    top.rotation = 45;
    canvas.objects.append(top);
    EXPECT_EQ(canvasHitTest(canvas, sources, QPointF(50, 0)), 1);
    EXPECT_EQ(canvasHitTest(canvas, sources, QPointF(-90, 0)), 0);
    // Inside the turned object's bounding box corner but outside the object itself.
    EXPECT_EQ(canvasHitTest(canvas, sources, QPointF(50 + 100, -100)), -1);
    canvas.objects[1].visible = false;
    EXPECT_EQ(canvasHitTest(canvas, sources, QPointF(50, 0)), 0);
    EXPECT_EQ(canvasHandleAt(top, sources, handle(top, sources, CanvasHandle::Top) + QPointF(2, 2), 5), CanvasHandle::Top);
}

TEST(CanvasEdit, RaiseAndLowerMoveEachSelectedObjectOnePlace)
{
    CanvasTabSettings canvas;
    for (const char *name : {"A", "B", "C", "D"}) {
        CanvasObjectSettings o;
        o.name = QString::fromLatin1(name);
        canvas.objects.append(o);
    }
    auto order = [&] {
        QString s;
        for (const CanvasObjectSettings &o : canvas.objects)
            s += o.name;
        return s;
    };
    QVector<int> selection = moveCanvasObjects(&canvas, {0, 2}, +1);
    EXPECT_EQ(order(), QStringLiteral("BADC"));
    EXPECT_EQ(selection, (QVector<int>{1, 3}));
    // The top one cannot rise further; the other still does until they meet.
    selection = moveCanvasObjects(&canvas, selection, +1);
    EXPECT_EQ(order(), QStringLiteral("BDAC"));
    EXPECT_EQ(selection, (QVector<int>{2, 3}));
    selection = moveCanvasObjects(&canvas, {0, 99, -1}, -1);
    EXPECT_EQ(order(), QStringLiteral("BDAC"));
    EXPECT_EQ(selection, (QVector<int>{0}));
}
