#include "video/CaptureFrame.h"

#include <gtest/gtest.h>

namespace {

QImage litImage(int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(qRgb(90, 140, 200));
    return image;
}

void paintBlack(QImage &image, const QRect &area)
{
    for (int y = area.top(); y <= area.bottom(); ++y)
        for (int x = area.left(); x <= area.right(); ++x)
            image.setPixel(x, y, qRgb(8, 8, 8));
}

} // namespace

TEST(CaptureFrame, BitRateFollowsAreaWithinClamps)
{
    EXPECT_EQ(captureBitRate(1920, 1080), 31'104'000);
    EXPECT_EQ(captureBitRate(640, 480), 8'000'000);
    EXPECT_EQ(captureBitRate(3840, 2160), 50'000'000);
    EXPECT_EQ(captureBitRate(0, 0), 8'000'000);
}

TEST(CaptureFrame, TimeStampsCountFramesNotWallTime)
{
    EXPECT_EQ(captureSampleTime(0), 0);
    EXPECT_EQ(captureSampleTime(1), 333'333);
    EXPECT_EQ(captureSampleTime(30), 10'000'000);
    // Hours of recording stay exact: 64-bit arithmetic, no drift from adding durations.
    EXPECT_EQ(captureSampleTime(30LL * 3600 * 5), 5LL * 3600 * 10'000'000);
}

TEST(CaptureFrame, DarkStripsOnRightAndBottomAreCut)
{
    QImage image = litImage(200, 120);
    paintBlack(image, QRect(194, 0, 6, 120)); // 6-pixel strip on the right
    paintBlack(image, QRect(0, 110, 200, 10)); // 10 rows at the bottom
    const QImage trimmed = trimDarkCaptureEdges(image);
    EXPECT_EQ(trimmed.size(), QSize(194, 110));
    // The kept part is the top-left one: a black strip on the LEFT must stay.
    QImage left = litImage(200, 120);
    paintBlack(left, QRect(0, 0, 6, 120));
    EXPECT_EQ(trimDarkCaptureEdges(left).size(), QSize(200, 120));
    EXPECT_EQ(trimDarkCaptureEdges(left).pixel(0, 0), qRgb(8, 8, 8));
}

TEST(CaptureFrame, ScanNeedsAHundredthOfTheSideLit)
{
    // 300 rows: a column needs 3 lit pixels to end the scan; 2 stray pixels are noise.
    QImage image = litImage(100, 300);
    paintBlack(image, QRect(90, 0, 10, 300));
    image.setPixel(95, 10, qRgb(255, 255, 255));
    image.setPixel(95, 20, qRgb(255, 255, 255));
    EXPECT_EQ(trimDarkCaptureEdges(image).width(), 90);
    image.setPixel(95, 30, qRgb(0, 0, 9)); // one channel above 8 is lit
    EXPECT_EQ(trimDarkCaptureEdges(image).width(), 96);
}

TEST(CaptureFrame, SmallTargetsAndSizesStayEven)
{
    QImage small = litImage(15, 15);
    paintBlack(small, QRect(9, 0, 6, 15));
    EXPECT_EQ(trimDarkCaptureEdges(small).size(), QSize(15, 15));
    EXPECT_EQ(cropToEvenCaptureSize(litImage(1001, 701)).size(), QSize(1000, 700));
    EXPECT_EQ(evenCaptureSize(QSize(1, 1)), QSize(2, 2));
    // An odd width left by trimming is rounded down too.
    QImage odd = litImage(101, 64);
    paintBlack(odd, QRect(97, 0, 4, 64));
    EXPECT_EQ(trimDarkCaptureEdges(odd).size(), QSize(96, 64));
    // A wholly dark picture keeps the minimum size rather than vanishing.
    QImage dark(40, 40, QImage::Format_RGB32);
    dark.fill(Qt::black);
    EXPECT_EQ(trimDarkCaptureEdges(dark).size(), QSize(2, 2));
}
