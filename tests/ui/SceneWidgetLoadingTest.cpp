#include "scene/ui/SceneWidget.h"
#include "scene/ui/ThreeDViewTab.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>

#include <memory>

// While a project loads into the view, edits queue no frame; the end of loading queues one.
TEST(SceneWidgetLoading, NothingIsQueuedWhileLoading)
{
    auto tab = std::make_unique<ThreeDViewTab>();
    tab->resize(800, 600);
    tab->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(tab.get()));
    SceneWidget *view = tab->sceneWidget();
    QApplication::processEvents();
    ASSERT_FALSE(view->frameQueued());

    view->setLoading(true);
    EXPECT_TRUE(view->isLoading());
    GuideObject plane;
    plane.guide_index = KindPlane;
    view->model().addObject(plane);
    view->setGridVisible(!view->gridVisible());
    EXPECT_FALSE(view->frameQueued());

    view->setLoading(false);
    EXPECT_FALSE(view->isLoading());
    EXPECT_TRUE(view->frameQueued());
    QApplication::processEvents();
    EXPECT_FALSE(view->frameQueued()); // drawn
    // Edits queue frames again.
    view->setGridVisible(!view->gridVisible());
    EXPECT_TRUE(view->frameQueued());
}

// The view draws its frame rate, "FPS: %1", in white in its bottom-left corner.
TEST(SceneWidgetFrameRate, TheRateIsDrawnInTheView)
{
    auto tab = std::make_unique<ThreeDViewTab>();
    tab->resize(800, 600);
    tab->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(tab.get()));
    SceneWidget *view = tab->sceneWidget();
    QApplication::processEvents();
    if (!view->rendererReady())
        GTEST_SKIP() << "no OpenGL 3.3: " << view->rendererError().toStdString();
    const QImage frame = view->grabFramebuffer();
    ASSERT_FALSE(frame.isNull());
    auto whitePixels = [&](const QRect &area) {
        int n = 0;
        for (int y = std::max(0, area.top()); y <= std::min(frame.height() - 1, area.bottom()); ++y)
            for (int x = std::max(0, area.left()); x <= std::min(frame.width() - 1, area.right()); ++x) {
                const QRgb c = frame.pixel(x, y);
                n += qRed(c) > 200 && qGreen(c) > 200 && qBlue(c) > 200;
            }
        return n;
    };
    const int h = frame.height();
    EXPECT_GT(whitePixels(QRect(0, h - 34, 140, 34)), 30);   // the text's glyphs
    EXPECT_EQ(whitePixels(QRect(0, 0, 140, 34)), 0);          // not under the help at the top
}

// A still scene costs nothing: with projection, a heat map and the frame rate shown, the
// view draws no frame until something changes, and then one.
TEST(SceneWidgetFrameRate, NothingIsDrawnWhenNothingChanges)
{
    auto tab = std::make_unique<ThreeDViewTab>();
    tab->resize(800, 600);
    tab->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(tab.get()));
    SceneWidget *view = tab->sceneWidget();
    GuideObject wall;
    wall.guide_index = KindPlane;
    view->model().addObject(wall);
    GuideObject projector;
    projector.guide_index = KindProjector;
    projector.translate_z = 3.0f;
    projector.projector_pixel_footprint_heatmap_visible = true;
    view->model().addObject(projector);
    QTest::qWait(300);
    if (!view->rendererReady())
        GTEST_SKIP() << "no OpenGL 3.3: " << view->rendererError().toStdString();
    // Anything still arriving from the set-up (a slow machine) has its frame first.
    quint64 settled = view->framesDrawn();
    for (int tries = 0; tries < 10; ++tries) {
        QTest::qWait(300);
        if (view->framesDrawn() == settled && !view->frameQueued())
            break;
        settled = view->framesDrawn();
    }
    EXPECT_GT(settled, 0u);
    QTest::qWait(800);
    EXPECT_EQ(view->framesDrawn(), settled);
    EXPECT_FALSE(view->frameQueued());

    view->setGridVisible(!view->gridVisible());
    QTest::qWait(300);
    EXPECT_EQ(view->framesDrawn(), settled + 1);
}
