#include "guide/ui/GuidePreviewWidget.h"

#include <QSignalSpy>
#include <QTest>
#include <QThread>
#include <QWheelEvent>

#include <gtest/gtest.h>

namespace {

GuidePreviewWidget::RenderJob solidJob(QSize size, QColor color, int sleepMs = 0)
{
    return [size, color, sleepMs] {
        if (sleepMs > 0)
            QThread::msleep(sleepMs);
        QImage image(size, QImage::Format_ARGB32);
        image.fill(color);
        return image;
    };
}

QPoint toPoint(const QPointF &p) { return p.toPoint(); }

} // namespace

TEST(GuidePreviewWidget, DropsResultsOlderThanTheLatestRequest)
{
    GuidePreviewWidget preview;
    preview.resize(400, 300);
    QSignalSpy ready(&preview, &GuidePreviewWidget::imageReady);

    // The first job is still running when two more arrive: it finishes stale, the second
    // never runs (superseded while queued), only the third is shown.
    preview.requestRender(solidJob({100, 100}, Qt::red, 300));
    preview.requestRender(solidJob({50, 40}, Qt::green));
    const quint64 last = preview.requestRender(solidJob({60, 30}, Qt::blue));
    EXPECT_TRUE(preview.isRendering());
    ASSERT_TRUE(preview.waitForIdle());

    EXPECT_EQ(preview.image().size(), QSize(60, 30));
    EXPECT_EQ(preview.image().pixelColor(0, 0), QColor(Qt::blue));
    EXPECT_EQ(preview.shownGeneration(), last);
    EXPECT_EQ(preview.droppedResults(), 2);
    EXPECT_EQ(ready.count(), 1);
}

TEST(GuidePreviewWidget, NullRenderKeepsThePreviousImage)
{
    GuidePreviewWidget preview;
    preview.requestRender(solidJob({32, 16}, Qt::white));
    ASSERT_TRUE(preview.waitForIdle());
    preview.requestRender([] { return QImage(); });
    ASSERT_TRUE(preview.waitForIdle());
    EXPECT_EQ(preview.image().size(), QSize(32, 16));
}

TEST(GuidePreviewWidget, EightKGuideIsShownFromAReducedLevelAndFits)
{
    GuidePreviewWidget preview;
    preview.resize(800, 500);
    preview.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&preview));
    preview.requestRender([] {
        QImage image(7680, 4320, QImage::Format_ARGB32);
        image.fill(QColor(10, 200, 30));
        // A white right half tells the halves apart after scaling.
        for (int y = 0; y < image.height(); ++y) {
            auto *line = reinterpret_cast<QRgb *>(image.scanLine(y));
            std::fill(line + 3840, line + 7680, qRgb(255, 255, 255));
        }
        return image;
    });
    ASSERT_TRUE(preview.waitForIdle());
    EXPECT_GE(preview.pyramidLevels(), 5);
    EXPECT_TRUE(preview.isFitMode());
    EXPECT_NEAR(preview.zoom(), (800.0 - 32.0) / 7680.0, 1e-9);

    const QImage shot = preview.grab().toImage();
    const QPointF leftQuarter = preview.imageToWidget({1920, 2160});
    const QPointF rightQuarter = preview.imageToWidget({5760, 2160});
    EXPECT_EQ(shot.pixelColor(toPoint(leftQuarter)), QColor(10, 200, 30));
    EXPECT_EQ(shot.pixelColor(toPoint(rightQuarter)), QColor(255, 255, 255));
    // Outside the image is the background, not the guide.
    EXPECT_NE(shot.pixelColor(2, 2), QColor(10, 200, 30));
}

TEST(GuidePreviewWidget, WheelZoomKeepsThePointUnderTheCursor)
{
    GuidePreviewWidget preview;
    preview.resize(600, 400);
    preview.requestRender(solidJob({1920, 1200}, Qt::gray));
    ASSERT_TRUE(preview.waitForIdle());
    const QPointF cursor(150, 120);
    const QPointF before = preview.widgetToImage(cursor);
    const double zoom = preview.zoom();
    QWheelEvent wheel(cursor, preview.mapToGlobal(cursor), QPoint(), QPoint(0, 240), Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&preview, &wheel);
    EXPECT_NEAR(preview.zoom(), zoom * 1.15 * 1.15, 1e-9);
    EXPECT_FALSE(preview.isFitMode());
    const QPointF after = preview.widgetToImage(cursor);
    EXPECT_NEAR(after.x(), before.x(), 1e-6);
    EXPECT_NEAR(after.y(), before.y(), 1e-6);

    // Enlarged far beyond 100 %, single guide pixels stay crisp blocks.
    preview.fitToView();
    EXPECT_TRUE(preview.isFitMode());
    preview.setZoom(1000.0);
    EXPECT_DOUBLE_EQ(preview.zoom(), 64.0);
}

TEST(GuidePreviewWidget, DragPansTheView)
{
    GuidePreviewWidget preview;
    preview.resize(600, 400);
    preview.requestRender(solidJob({4000, 3000}, Qt::gray));
    ASSERT_TRUE(preview.waitForIdle());
    preview.setView(0.5, QPointF(2000, 1500));
    QTest::mousePress(&preview, Qt::LeftButton, Qt::NoModifier, QPoint(300, 200));
    QTest::mouseMove(&preview, QPoint(340, 180));
    QTest::mouseRelease(&preview, Qt::LeftButton, Qt::NoModifier, QPoint(340, 180));
    EXPECT_NEAR(preview.viewCenter().x(), 2000 - 40 / 0.5, 1e-6);
    EXPECT_NEAR(preview.viewCenter().y(), 1500 + 20 / 0.5, 1e-6);
}

TEST(GuidePreviewWidget, HandlesMoveScaleAndRotateTheSelectedLayer)
{
    GuidePreviewWidget preview;
    preview.resize(600, 400);
    preview.requestRender(solidJob({1200, 800}, Qt::gray));
    ASSERT_TRUE(preview.waitForIdle());
    preview.setView(0.5, QPointF(600, 400));
    GuideLayerFrame frame;
    frame.center = QPointF(600, 400);
    frame.size = QSizeF(200, 100);
    preview.setLayerFrames({frame});

    QSignalSpy clicked(&preview, &GuidePreviewWidget::layerClicked);
    QSignalSpy edited(&preview, &GuidePreviewWidget::layerFrameEdited);
    QSignalSpy finished(&preview, &GuidePreviewWidget::layerEditFinished);

    // Move: press inside, drag 30 px right on screen = 60 guide px at 50 %.
    const QPoint centre = toPoint(preview.imageToWidget({600, 400}));
    QTest::mousePress(&preview, Qt::LeftButton, Qt::NoModifier, centre);
    QTest::mouseMove(&preview, centre + QPoint(30, 10));
    QTest::mouseRelease(&preview, Qt::LeftButton, Qt::NoModifier, centre + QPoint(30, 10));
    ASSERT_EQ(clicked.count(), 1);
    EXPECT_EQ(preview.selectedLayer(), 0);
    ASSERT_GE(edited.count(), 1);
    auto last = edited.last().at(1).value<GuideLayerFrame>();
    EXPECT_NEAR(last.center.x(), 660, 1e-6);
    EXPECT_NEAR(last.center.y(), 420, 1e-6);
    EXPECT_EQ(finished.count(), 1);

    // Scale: drag the bottom-right corner outwards to twice its distance from the centre.
    frame.center = QPointF(600, 400);
    preview.setLayerFrames({frame});
    preview.setSelectedLayer(0);
    const QPoint corner = toPoint(preview.imageToWidget({700, 450}));
    const QPoint twice = toPoint(preview.imageToWidget({800, 500}));
    QTest::mousePress(&preview, Qt::LeftButton, Qt::NoModifier, corner);
    QTest::mouseMove(&preview, twice);
    QTest::mouseRelease(&preview, Qt::LeftButton, Qt::NoModifier, twice);
    last = edited.last().at(1).value<GuideLayerFrame>();
    EXPECT_NEAR(last.size.width(), 400, 1.0);
    EXPECT_NEAR(last.size.height(), 200, 1.0);
    EXPECT_NEAR(last.center.x(), 600, 1e-6);

    // Rotate: the knob above the top edge, dragged to the right of the centre, is a quarter turn.
    preview.setLayerFrames({frame});
    preview.setSelectedLayer(0);
    const QPoint knob = toPoint(preview.imageToWidget({600, 350}) + QPointF(0, -26));
    const QPoint right = toPoint(preview.imageToWidget({800, 400}));
    QTest::mousePress(&preview, Qt::LeftButton, Qt::NoModifier, knob);
    QTest::mouseMove(&preview, right);
    QTest::mouseRelease(&preview, Qt::LeftButton, Qt::NoModifier, right);
    last = edited.last().at(1).value<GuideLayerFrame>();
    EXPECT_NEAR(last.rotationDegrees, 90.0, 0.5);
    EXPECT_NEAR(last.size.width(), 200, 1e-6);
}

TEST(GuidePreviewWidget, LayerFramesFollowFlipAndRotation)
{
    GuidePreviewWidget preview;
    preview.resize(600, 400);
    preview.requestRender(solidJob({800, 1200}, Qt::gray));
    ASSERT_TRUE(preview.waitForIdle());
    preview.setView(0.25, QPointF(400, 600));
    // Guide 1200 x 800 turned a quarter: guide (100, 50) lands at image (750, 100).
    preview.setGuideTransform(QTransform(0, 1, -1, 0, 800, 0));
    GuideLayerFrame frame;
    frame.center = QPointF(100, 50);
    frame.size = QSizeF(40, 40);
    preview.setLayerFrames({frame});
    QSignalSpy clicked(&preview, &GuidePreviewWidget::layerClicked);
    const QPoint at = toPoint(preview.imageToWidget({750, 100}));
    QTest::mousePress(&preview, Qt::LeftButton, Qt::NoModifier, at);
    QTest::mouseRelease(&preview, Qt::LeftButton, Qt::NoModifier, at);
    EXPECT_EQ(clicked.count(), 1);
}
