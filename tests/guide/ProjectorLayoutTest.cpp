#include "guide/ProjectorLayout.h"

#include <gtest/gtest.h>

namespace {
GuideSettings surface(int realWidth, int realHeight)
{
    GuideSettings s;
    s.realWidth = realWidth;
    s.realHeight = realHeight;
    return s;
}
} // namespace

TEST(ProjectorLayout, ThrowDistanceCoversTheSurface)
{
    GuideSettings s = surface(1920, 1200);
    EXPECT_DOUBLE_EQ(automaticThrowDistance(s, 1.0), 1920.0);

    s = surface(3500, 1200);
    s.projectorCount = 2;
    s.projectorAutoLayoutOverlap = 0.25;
    EXPECT_DOUBLE_EQ(projectorEffectiveCount(2, 0.25), 1.75);
    EXPECT_DOUBLE_EQ(automaticThrowDistance(s, 1.0), 2000.0);

    // The height can limit instead: 1 x 1 on a tall surface.
    s = surface(1000, 1000);
    EXPECT_DOUBLE_EQ(automaticThrowDistance(s, 0.5), 800.0); // 1000 * 1.6 * 0.5

    // Rotation exchanges the surface sides.
    s = surface(1200, 1920);
    s.rotate = true;
    EXPECT_DOUBLE_EQ(automaticThrowDistance(s, 1.0), 1920.0);
}

TEST(ProjectorLayout, OverlapAndRatioAreClamped)
{
    GuideSettings s = surface(3500, 1200);
    s.projectorCount = 3;
    s.projectorAutoLayoutOverlap = 0.99;
    GuideSettings clamped = s;
    clamped.projectorAutoLayoutOverlap = 0.95;
    EXPECT_DOUBLE_EQ(automaticThrowDistance(s, 1.0), automaticThrowDistance(clamped, 1.0));
    s.projectorAutoLayoutOverlap = -0.5;
    EXPECT_DOUBLE_EQ(projectorEffectiveCount(3, -0.5), 3.0);
    EXPECT_DOUBLE_EQ(automaticThrowDistance(s, 0.0), 1.0);
    EXPECT_DOUBLE_EQ(automaticThrowDistance(s, -3.0), 1.0);
    // Counts below 1 act as 1.
    s.projectorCount = 0;
    s.projectorCountY = -2;
    EXPECT_DOUBLE_EQ(projectorEffectiveCount(0, 0.25), 1.0);
}

TEST(ProjectorLayout, AspectFollowsOrientation)
{
    GuideSettings s;
    EXPECT_DOUBLE_EQ(projectorAspect(s), 1.6);
    s.projectorVerticalProjection = true;
    EXPECT_DOUBLE_EQ(projectorAspect(s), 0.625);
    s.projectorWidth = 0; // divisor below 1
    EXPECT_DOUBLE_EQ(projectorAspect(s), 1.0);
    s.projectorVerticalProjection = false;
    s.projectorHeight = 1920;
    EXPECT_DOUBLE_EQ(projectorAspect(s), 0.0001);
}

TEST(ProjectorLayout, PixelGridRuleAndCoupling)
{
    EXPECT_EQ(guidePixelGridRule(1083), 1080);
    EXPECT_EQ(guidePixelGridRule(1080), 1080);
    EXPECT_EQ(guidePixelGridRule(3), 4);
    EXPECT_EQ(guidePixelGridRule(0), 4);
    EXPECT_EQ(guidePixelGridRule(-7), 4);
    EXPECT_EQ(guidePixelGridRule(7), 4);

    GuideSettings s = surface(5000, 2000);
    s.pixelHeight = 1083;
    s.pixelWidth = 17;
    applyPixelSizeCoupling(&s);
    EXPECT_EQ(s.pixelHeight, 1080);
    EXPECT_EQ(s.pixelWidth, 2700);

    // Height 1 is brought to 4 first; the width follows from it.
    s = surface(1999, 2);
    s.pixelHeight = 1;
    applyPixelSizeCoupling(&s);
    EXPECT_EQ(s.pixelHeight, 4);
    EXPECT_EQ(s.pixelWidth, 3996); // round(3998) -> 3996

    s = surface(1000, 0); // no height: ratio 1
    s.pixelHeight = 722;
    applyPixelSizeCoupling(&s);
    EXPECT_EQ(s.pixelWidth, 720);

    s = surface(1920, 1200);
    s.fixedRatio = false;
    s.evenMultipleOf4 = false; // the rule holds on loading all the same
    s.pixelWidth = 1001;
    s.pixelHeight = 503;
    applyPixelSizeCoupling(&s);
    EXPECT_EQ(s.pixelWidth, 1000);
    EXPECT_EQ(s.pixelHeight, 500);

    s.rotate = true;
    EXPECT_EQ(guideImageSize(s), QSize(500, 1000));
}

TEST(ProjectorLayout, ProjectorResolutionCheck)
{
    GuideSettings s;
    EXPECT_FALSE(projectorResolutionDiffers(s));
    s.projectorHeight = 1083; // brought to 1080
    s.pixelHeight = 1080;
    EXPECT_FALSE(projectorResolutionDiffers(s));
    s.projectorVerticalProjection = true; // the width counts now
    EXPECT_TRUE(projectorResolutionDiffers(s));
    EXPECT_EQ(projectorVerticalPixels(s), 1920);
    s.projectorWidth = 100000;
    EXPECT_EQ(projectorVerticalPixels(s), 32768);
}

TEST(ProjectorLayout, RatioBasisKeepsCountsAndSpansTheSurface)
{
    GuideSettings s = surface(3500, 1200);
    s.projectorCount = 2;
    const ProjectorArrayLayout l = computeProjectorArray(s);
    EXPECT_EQ(l.countX, 2);
    EXPECT_DOUBLE_EQ(l.throwDistanceMm, 2000.0);
    ASSERT_EQ(l.projectorRects.size(), 2);
    EXPECT_DOUBLE_EQ(l.projectorRects[0].left(), 0.0);
    EXPECT_DOUBLE_EQ(l.projectorRects[1].right(), 3500.0);
    EXPECT_DOUBLE_EQ(l.projectorRects[0].right() - l.projectorRects[1].left(), 500.0); // 25 % of 2000
    // The height is over-covered and centred: 2000 / 1.6 = 1250 mm tall on 1200.
    EXPECT_DOUBLE_EQ(l.projectorRects[0].top(), -25.0);
    // 1920 px over 2000 mm: 3360 px across 3500 mm; 1200 px over 1250 mm: 1152 px.
    EXPECT_EQ(l.effectiveResolution, QSize(3360, 1152));
    EXPECT_EQ(effectiveGuidePixelSize(s), QSize(3360, 1152));
}

TEST(ProjectorLayout, DistanceBasisFindsTheFewestProjectors)
{
    GuideSettings s = surface(6000, 1200);
    s.projectorAutoLayoutUseThrowDistance = true;
    s.projectorThrowDistance = 2000.0; // images 2000 x 1250 mm at ratio 1
    s.projectorAutoLayoutOverlap = 0.2;
    ProjectorArrayLayout l = computeProjectorArray(s);
    // n - (n - 1) * 0.2 >= 3 gives n = 3.5, so 4 projectors with the overlap spread out.
    EXPECT_EQ(l.countX, 4);
    EXPECT_EQ(l.countY, 1);
    EXPECT_NEAR(l.overlapX, 1.0 / 3.0, 1e-12);
    EXPECT_NEAR(l.projectorRects.last().right(), 6000.0, 1e-9);
    EXPECT_DOUBLE_EQ(l.throwDistanceMm, 2000.0);

    // An exact fit needs no extra projector.
    s.realWidth = 5200; // 3 images: 3 - 2 * 0.2 = 2.6 = 5200 / 2000
    l = computeProjectorArray(s);
    EXPECT_EQ(l.countX, 3);
    EXPECT_NEAR(l.overlapX, 0.2, 1e-12);

    applyProjectorLayout(&s);
    EXPECT_EQ(s.projectorCount, 3);
    EXPECT_EQ(s.projectorCountY, 1);
}

TEST(ProjectorLayout, ManualLayoutUsesDistanceAndRatioAsSet)
{
    GuideSettings s = surface(1920, 1200);
    s.projectorAutoLayoutEnabled = false;
    s.projectorThrowDistance = 960.0;
    s.projectorThrowRatio = 0.5;
    const ProjectorArrayLayout l = computeProjectorArray(s);
    EXPECT_DOUBLE_EQ(l.imageWidthMm, 1920.0);
    EXPECT_DOUBLE_EQ(l.throwDistanceMm, 960.0);
    EXPECT_EQ(l.effectiveResolution, QSize(1920, 1200));
}

TEST(ProjectorLayout, TabLoadStepPlacesOnceAndCouplesPixels)
{
    GuideSettings s = surface(3500, 1200);
    s.projectorCount = 2;
    s.projectorAutoPlacement = true;
    s.projectorThrowDistance = 5.0;
    s.pixelHeight = 1083;
    applyGuideTabLoadStep(&s);
    EXPECT_FALSE(s.projectorAutoPlacement);
    EXPECT_DOUBLE_EQ(s.projectorThrowDistance, 2000.0);
    EXPECT_EQ(s.pixelHeight, 1080);
    EXPECT_EQ(s.pixelWidth, 3148); // round(1080 * 3500 / 1200) = 3150 -> 3148
    EXPECT_EQ(s.columns, 58); // auto columns: round(20 * 3148 / 1080) = round(58.3)

    // With "Calculate Effective Resolution" the array decides the pixel size.
    s.projectorRealPixel = true;
    applyGuideTabLoadStep(&s);
    EXPECT_EQ(QSize(s.pixelWidth, s.pixelHeight), QSize(3360, 1152));

    // Without auto placement the stored distance stays.
    GuideSettings manual = surface(1920, 1200);
    manual.projectorThrowDistance = 5.0;
    applyGuideTabLoadStep(&manual);
    EXPECT_DOUBLE_EQ(manual.projectorThrowDistance, 5.0);
    EXPECT_EQ(manual.columns, 32);
}

// Three projectors across with a quarter overlap on a surface they just cover: each shows
// its own third-and-a-bit of the guide, left to right, and together they span it exactly.
TEST(ProjectorImageFractions, EachProjectorOfARowCoversItsOwnPartLeftToRight)
{
    GuideSettings s;
    s.projectorCount = 3;
    s.projectorCountY = 1;
    s.projectorWidth = 1920;
    s.projectorHeight = 1200;
    s.projectorAutoLayoutOverlap = 0.25;
    s.projectorAutoLayoutEnabled = true;
    s.projectorAutoLayoutUseThrowDistance = false;
    s.projectorVerticalProjection = false;
    s.rotate = false;
    // ex = 3 - 2 x 0.25 = 2.5 images across; one image 2000 x 1250 mm.
    s.realWidth = 5000;
    s.realHeight = 1250;
    const QVector<QRectF> fractions = projectorImageFractions(s);
    ASSERT_EQ(fractions.size(), 3);
    EXPECT_NEAR(fractions[0].left(), 0.0, 1e-9);
    EXPECT_NEAR(fractions[0].width(), 0.4, 1e-9);
    EXPECT_NEAR(fractions[1].left(), 0.3, 1e-9);
    EXPECT_NEAR(fractions[2].left(), 0.6, 1e-9);
    EXPECT_NEAR(fractions[2].right(), 1.0, 1e-9);
    for (const QRectF &slice : fractions) {
        EXPECT_NEAR(slice.top(), 0.0, 1e-9);
        EXPECT_NEAR(slice.height(), 1.0, 1e-9);
    }

    // Two rows: the second row lies below the first (image rows go down).
    s.projectorCount = 1;
    s.projectorCountY = 2;
    s.realWidth = 2000;
    s.realHeight = 2500 - 312; // 2 x 1250 less a quarter overlap, rounded to whole mm
    const QVector<QRectF> rows = projectorImageFractions(s);
    ASSERT_EQ(rows.size(), 2);
    EXPECT_LT(rows[0].top(), rows[1].top());
    EXPECT_GT(rows[0].bottom(), rows[1].top()); // they overlap
}
