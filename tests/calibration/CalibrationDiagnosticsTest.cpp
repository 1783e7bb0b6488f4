#include "calibration/CalibrationDiagnostics.h"

#include "SyntheticCalibrationScene.h"

#include <gtest/gtest.h>

#include <random>

namespace {

struct Fitted {
    ProjectorCalibrationRequest request;
    ProjectorCalibrationResult fit;
    GuideObject start;
};

Fitted fitPoints(const SyntheticCalibrationScene &scene, const QVector<GuideMatchedPoint> &points, std::mt19937 &rng)
{
    Fitted f;
    f.start = perturbedProjector(scene.truth, rng, 0.2, 2.0);
    f.request.full = true;
    QString error;
    EXPECT_TRUE(solveProjectorCalibration(f.start, points, f.request, &f.fit, &error)) << error.toStdString();
    return f;
}

} // namespace

TEST(CalibrationLeaveOneOut, RowMovedFortyPixelsIsNamedAndHonestRowsAreNot)
{
    for (unsigned seed : {3u, 11u, 29u, 41u}) {
        std::mt19937 rng(seed);
        SyntheticSceneOptions options;
        options.pointCount = 12;
        const SyntheticCalibrationScene scene = makeSyntheticScene(rng, options);
        QVector<GuideMatchedPoint> points = scene.points;
        const int bad = int(seed % 12);
        points[bad].u += 40.0f;
        const Fitted f = fitPoints(scene, points, rng);
        const CalibrationDiagnostics d = diagnoseCalibration(f.start, points, f.request, f.fit);
        EXPECT_EQ(d.mismatchedPoint, bad) << seed;
        EXPECT_LT(d.rmsWithoutMismatched, 0.5 * d.rms) << seed;
        EXPECT_EQ(calibrationMismatchText(bad + 1, d.rms, d.rmsWithoutMismatched),
                  QStringLiteral("Point %1 looks mismatched: without it the RMS drops from %2 px to %3 px.")
                      .arg(bad + 1)
                      .arg(d.rms, 0, 'f', 2)
                      .arg(d.rmsWithoutMismatched, 0, 'f', 2));
    }
}

TEST(CalibrationLeaveOneOut, HonestNoisyPointsNameNobodyAndTheWorstResidualIsTheLargest)
{
    std::mt19937 rng(5);
    SyntheticSceneOptions options;
    options.pointCount = 15;
    options.noisePixels = 1.5;
    const SyntheticCalibrationScene scene = makeSyntheticScene(rng, options);
    const Fitted f = fitPoints(scene, scene.points, rng);
    ASSERT_GE(f.fit.rmsError, kLeaveOneOutFloorPixels);
    const CalibrationDiagnostics d = diagnoseCalibration(f.start, scene.points, f.request, f.fit);
    EXPECT_EQ(d.mismatchedPoint, -1);
    double largest = 0.0;
    for (const ProjectorCalibrationResidual &r : f.fit.residuals)
        largest = std::max(largest, r.distance);
    ASSERT_GE(d.worstPoint, 0);
    EXPECT_DOUBLE_EQ(d.worstResidual, largest);
    EXPECT_DOUBLE_EQ(f.fit.residuals[d.worstPoint].distance, largest);
}

TEST(CalibrationLeaveOneOut, ExactFitAndTooFewPointsSkipTheCheck)
{
    std::mt19937 rng(8);
    SyntheticSceneOptions options;
    options.pointCount = 10;
    const SyntheticCalibrationScene scene = makeSyntheticScene(rng, options);
    const Fitted exact = fitPoints(scene, scene.points, rng);
    EXPECT_EQ(diagnoseCalibration(exact.start, scene.points, exact.request, exact.fit).mismatchedPoint, -1);

    QVector<GuideMatchedPoint> six = scene.points.mid(0, 6);
    six[2].v += 40.0f;
    const Fitted few = fitPoints(scene, six, rng);
    EXPECT_EQ(diagnoseCalibration(few.start, six, few.request, few.fit).mismatchedPoint, -1);
}

TEST(CalibrationPointSpread, CoplanarAndSmallCoverageWarnings)
{
    QVector<GuideMatchedPoint> flat;
    for (int i = 0; i < 9; ++i)
        flat.append(GuideMatchedPoint{float(i % 3), float(i / 3), 0.001f * float(i % 2), float(100 + 800 * (i % 3)),
                                      float(100 + 500 * (i / 3))});
    EXPECT_TRUE(pointsNearlyCoplanar(flat));
    EXPECT_FALSE(pointsCoverLittleOfImage(flat, 1920, 1200));

    QVector<GuideMatchedPoint> deep = flat;
    deep[4].z = 1.5f;
    deep[8].z = -1.0f;
    EXPECT_FALSE(pointsNearlyCoplanar(deep));

    QVector<GuideMatchedPoint> corner = deep;
    for (GuideMatchedPoint &p : corner) {
        p.u = 10.0f + p.u * 0.2f;   // spans 20..190 of 1920
        p.v = 10.0f + p.v * 0.2f;
    }
    EXPECT_TRUE(pointsCoverLittleOfImage(corner, 1920, 1200));
    // Only the width is small: the area decides.
    QVector<GuideMatchedPoint> strip = deep;
    for (GuideMatchedPoint &p : strip)
        p.u = 900.0f + (p.u - 100.0f) * 0.05f;
    EXPECT_TRUE(pointsCoverLittleOfImage(strip, 1920, 1200));

    CalibrationDiagnostics d;
    EXPECT_TRUE(calibrationWarnings(d).isEmpty());
    d.nearlyCoplanar = true;
    d.smallCoverage = true;
    const QStringList warnings = calibrationWarnings(d);
    ASSERT_EQ(warnings.size(), 2);
    EXPECT_TRUE(warnings[0].contains(QStringLiteral("coplanar")));
    EXPECT_TRUE(warnings[1].contains(QStringLiteral("less than a tenth of the image")));
}
