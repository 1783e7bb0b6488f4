#include "calibration/ProjectorCalibration.h"

#include "SyntheticCalibrationScene.h"

#include "scene/LensModel.h"
#include "scene/Transform.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace {

struct RecoveryError {
    double position = 0.0;   // relative to the distance from the origin (at least 1 m)
    double rotation = 0.0;   // radians
    double throwRatio = 0.0; // relative
    double shiftX = 0.0;     // relative to the lens shift range (100 %)
    double shiftY = 0.0;
};

RecoveryError recoveryError(const SyntheticCalibrationScene &scene, const ProjectorCalibrationResult &r)
{
    const Eigen::Vector3d t(r.pose.translate[0], r.pose.translate[1], r.pose.translate[2]);
    const Eigen::Matrix3d rot = vg::scene::eulerDegreesToMatrix(r.pose.rotate[0], r.pose.rotate[1], r.pose.rotate[2]);
    RecoveryError e;
    e.position = (t - scene.position).norm() / std::max(1.0, scene.position.norm());
    e.rotation = rotationDistance(rot, scene.rotation);
    e.throwRatio = std::abs(r.throwRatio - scene.truth.throw_rate) / scene.truth.throw_rate;
    e.shiftX = std::abs(r.lensShiftX - scene.truth.lens_shift_x) / 100.0;
    e.shiftY = std::abs(r.lensShiftY - scene.truth.lens_shift_y) / 100.0;
    return e;
}

QVector<GuideObject> sceneWith(const GuideObject &projector)
{
    GuideObject wall;
    wall.guide_index = KindPlane;
    wall.name = QStringLiteral("Wall");
    return {wall, projector};
}

ProjectorCalibrationRequest requestFor(int index)
{
    ProjectorCalibrationRequest request;
    request.projectorIndex = index;
    return request;
}

} // namespace

// Double-precision matches must give the projector back to 1e-6. Single-precision matches
// carry up to 2.4e-4 px of rounding in u and v, which few points amplify.
void runRecovery(bool exact)
{
    std::mt19937 rng(1234);
    const int counts[] = {6, 7, 8, 12, 25, 50, 120, 500};
    RecoveryError worst;
    int solved = 0;
    for (int round = 0; round < 48; ++round) {
        SyntheticSceneOptions options;
        options.pointCount = counts[round % 8];
        options.surfaceCount = 2 + round % 3;
        const SyntheticCalibrationScene scene = makeSyntheticScene(rng, options);
        ASSERT_EQ(scene.points.size(), options.pointCount);
        // The record starts far off: a projector at the origin with default lens values.
        GuideObject start = scene.truth;
        start.translate_x = start.translate_y = start.translate_z = 0.0f;
        start.rotate_x = start.rotate_y = start.rotate_z = 0.0f;
        start.throw_rate = 1.0f;
        start.lens_shift_x = 0.0f;
        start.lens_shift_y = 50.0f;

        ProjectorCalibrationResult result;
        QString message;
        const bool ok = exact ? solveProjectorCalibration(start, scene.exact, requestFor(1), &result, &message)
                              : solveProjectorCalibration(start, scene.points, requestFor(1), &result, &message);
        ASSERT_TRUE(ok)
            << message.toStdString();
        ++solved;
        const RecoveryError e = recoveryError(scene, result);
        const double tolerance = exact ? 1e-6 : (options.pointCount <= 8 ? 1e-3 : 1e-4);
        EXPECT_LT(e.position, tolerance) << "round " << round << " points " << options.pointCount;
        EXPECT_LT(e.rotation, tolerance) << "round " << round;
        EXPECT_LT(e.throwRatio, tolerance) << "round " << round << " throw " << scene.truth.throw_rate;
        EXPECT_LT(e.shiftX, tolerance) << "round " << round;
        EXPECT_LT(e.shiftY, tolerance) << "round " << round;
        EXPECT_EQ(result.pointCount, options.pointCount);
        EXPECT_EQ(result.residuals.size(), options.pointCount);
        EXPECT_LT(result.rmsError, exact ? 1e-6 : 5e-3);
        worst.position = std::max(worst.position, e.position);
        worst.rotation = std::max(worst.rotation, e.rotation);
        worst.throwRatio = std::max(worst.throwRatio, e.throwRatio);
        worst.shiftX = std::max({worst.shiftX, e.shiftX, e.shiftY});
    }
    EXPECT_EQ(solved, 48);
    std::printf("worst: position %.3g rotation %.3g throw %.3g shift %.3g\n", worst.position, worst.rotation,
                worst.throwRatio, worst.shiftX);
}

TEST(ProjectorCalibration, NoiseFreeScenesComeBackExactly) { runRecovery(true); }
TEST(ProjectorCalibration, SinglePrecisionMatches) { runRecovery(false); }

TEST(ProjectorCalibration, HalfPixelNoiseLeavesRmsAtTheNoiseLevel)
{
    std::mt19937 rng(77);
    for (int round = 0; round < 12; ++round) {
        SyntheticSceneOptions options;
        options.pointCount = round % 2 ? 60 : 200;
        options.noisePixels = 0.5;
        const SyntheticCalibrationScene scene = makeSyntheticScene(rng, options);
        const GuideObject start = perturbedProjector(scene.truth, rng, 0.5, 5.0);
        ProjectorCalibrationResult result;
        QString message;
        ASSERT_TRUE(solveProjectorCalibration(start, scene.exact, requestFor(0), &result, &message));

        // The fit can never be worse than the true projector on the same noisy points.
        const CalibrationProblem problem(std::vector<CalibrationObservation>(scene.exact.begin(), scene.exact.end()),
                                         scene.truth.projector_resolution_width,
                                         scene.truth.projector_resolution_height);
        CalibrationParameters truth{};
        problem.poseFromLens(scene.rotation, scene.position, truth);
        truth[CalibrationLogFocal] = std::log(double(scene.truth.throw_rate) * problem.imageWidth());
        truth[CalibrationPrincipalX] = (0.5 - scene.truth.lens_shift_x / 100.0) * problem.imageWidth();
        truth[CalibrationPrincipalY] = (0.5 - scene.truth.lens_shift_y / 100.0) * problem.imageHeight();
        const double truthRms = std::sqrt(problem.cost(truth) / problem.pointCount());
        EXPECT_LE(result.rmsError, truthRms + 1e-6) << "round " << round;
        // Per-point distance of 2-D noise of 0.5 px per axis: about 0.5·√2, less the fitted share.
        EXPECT_GT(result.rmsError, 0.5) << "round " << round;
        EXPECT_LT(result.rmsError, 0.85) << "round " << round;
        const RecoveryError e = recoveryError(scene, result);
        EXPECT_LT(e.throwRatio, 0.02) << "round " << round;
        EXPECT_LT(e.rotation, 0.01) << "round " << round;

        double sum = 0.0;
        for (const ProjectorCalibrationResidual &r : result.residuals) {
            EXPECT_NEAR(r.distance, std::hypot(r.du, r.dv), 1e-12);
            sum += r.distance * r.distance;
        }
        EXPECT_NEAR(std::sqrt(sum / result.residuals.size()), result.rmsError, 1e-9);
    }
}

TEST(ProjectorCalibration, ResidualsPointAtTheWrongMatch)
{
    std::mt19937 rng(5);
    SyntheticSceneOptions options;
    options.pointCount = 30;
    SyntheticCalibrationScene scene = makeSyntheticScene(rng, options);
    scene.points[17].u += 40.0f;   // a mis-clicked point
    ProjectorCalibrationResult result;
    ASSERT_TRUE(solveProjectorCalibration(scene.truth, scene.points, requestFor(0), &result, nullptr));
    int worst = 0;
    for (int i = 1; i < result.residuals.size(); ++i) {
        if (result.residuals[i].distance > result.residuals[worst].distance)
            worst = i;
    }
    EXPECT_EQ(result.residuals[worst].pointIndex, 17);
    EXPECT_GT(result.residuals[worst].distance, 10.0);
}

TEST(ProjectorCalibration, CoplanarPointsSolveFromTheCurrentPose)
{
    std::mt19937 rng(99);
    for (int round = 0; round < 6; ++round) {
        SyntheticSceneOptions options;
        options.pointCount = 40;
        options.surfaceCount = 1;
        const SyntheticCalibrationScene scene = makeSyntheticScene(rng, options);
        // A rough placement: 10 cm and 2 degrees off, the lens values known.
        const GuideObject start = perturbedProjector(scene.truth, rng, 0.1, 2.0);
        ProjectorCalibrationRequest request = requestFor(0);
        request.adjust_throw_ratio = false;
        request.adjust_lens_shift = false;
        ProjectorCalibrationResult result;
        QString message;
        ASSERT_TRUE(solveProjectorCalibration(start, scene.exact, request, &result, &message))
            << message.toStdString();
        EXPECT_LT(result.rmsError, 0.05) << "round " << round;
        const RecoveryError e = recoveryError(scene, result);
        EXPECT_LT(e.position, 1e-3) << "round " << round;
        EXPECT_LT(e.rotation, 1e-3) << "round " << round;
    }
}

TEST(ProjectorCalibration, PointsBehindTheStartPose)
{
    std::mt19937 rng(31);
    SyntheticSceneOptions options;
    options.pointCount = 20;
    const SyntheticCalibrationScene scene = makeSyntheticScene(rng, options);
    // Turned round: every point is behind the lens.
    GuideObject start = scene.truth;
    start.rotate_y += 180.0f;
    const int w = start.projector_resolution_width;
    const int h = start.projector_resolution_height;
    const CalibrationProblem problem(std::vector<CalibrationObservation>(scene.exact.begin(), scene.exact.end()), w, h);
    CalibrationParameters behind{};
    problem.poseFromLens(vg::scene::objectRotation(start), vg::scene::objectTranslation(start), behind);
    behind[CalibrationLogFocal] = std::log(double(start.throw_rate) * w);
    behind[CalibrationPrincipalX] = w / 2.0;
    behind[CalibrationPrincipalY] = h / 2.0;
    const double penalty = 4.0 * std::max(w, h);
    EXPECT_DOUBLE_EQ(problem.cost(behind), 2.0 * problem.pointCount() * penalty * penalty);

    ProjectorCalibrationRequest request = requestFor(0);
    request.startPose = ProjectorCalibrationPose{{start.translate_x, start.translate_y, start.translate_z},
                                                 {start.rotate_x, start.rotate_y + 90.0, start.rotate_z}};
    ProjectorCalibrationResult result;
    ASSERT_TRUE(solveProjectorCalibration(start, scene.exact, request, &result, nullptr));
    EXPECT_LT(result.rmsError, 1e-3);
    const RecoveryError e = recoveryError(scene, result);
    EXPECT_LT(e.rotation, 1e-6);
    for (const ProjectorCalibrationResidual &r : result.residuals)
        EXPECT_LT(r.distance, penalty);
}

TEST(ProjectorCalibration, HeldThrowRatioAndLensShift)
{
    std::mt19937 rng(4242);
    for (int round = 0; round < 6; ++round) {
        SyntheticSceneOptions options;
        options.pointCount = 30;
        const SyntheticCalibrationScene scene = makeSyntheticScene(rng, options);
        GuideObject start = perturbedProjector(scene.truth, rng, 0.3, 3.0);
        ProjectorCalibrationRequest request = requestFor(0);
        request.adjust_throw_ratio = false;
        request.adjust_lens_shift = false;
        ProjectorCalibrationResult result;
        QString message;
        ASSERT_TRUE(solveProjectorCalibration(start, scene.exact, request, &result, &message)) << message.toStdString();
        // Reported lens values are the record's, untouched.
        EXPECT_EQ(result.throwRatio, double(start.throw_rate));
        EXPECT_EQ(result.lensShiftX, double(start.lens_shift_x));
        EXPECT_EQ(result.lensShiftY, double(start.lens_shift_y));
        EXPECT_FALSE(result.throwRatioAdjusted);
        EXPECT_FALSE(result.lensShiftAdjusted);
        const RecoveryError e = recoveryError(scene, result);
        EXPECT_LT(e.position, 1e-5) << "round " << round;
        EXPECT_LT(e.rotation, 1e-5) << "round " << round;

        // Held at a wrong throw ratio: the ratio stays, the fit is worse, the lens shift moves.
        start.throw_rate = scene.truth.throw_rate * 1.2f;
        request.adjust_lens_shift = true;
        QVector<GuideObject> objects = sceneWith(start);
        request.projectorIndex = 1;
        request.apply = true;
        ASSERT_TRUE(calibrateProjector(objects, scene.points, request, &result, nullptr));
        EXPECT_EQ(objects[1].throw_rate, start.throw_rate);
        EXPECT_EQ(result.throwRatio, double(start.throw_rate));
        EXPECT_GT(result.rmsError, 0.01);
        EXPECT_EQ(objects[1].lens_shift_x, float(result.lensShiftX));
    }
}

TEST(ProjectorCalibration, PointCountsAndNonFinitePoints)
{
    std::mt19937 rng(8);
    SyntheticSceneOptions options;
    options.pointCount = 12;
    const SyntheticCalibrationScene scene = makeSyntheticScene(rng, options);
    QVector<GuideObject> objects = sceneWith(scene.truth);
    ProjectorCalibrationResult result;
    QString message;

    QVector<GuideMatchedPoint> five = scene.points.mid(0, 5);
    EXPECT_FALSE(calibrateProjector(objects, five, requestFor(1), &result, &message));
    EXPECT_EQ(message, QStringLiteral("Projector Calibration needs at least 6 matched points."));

    message.clear();
    QVector<GuideMatchedPoint> six = scene.points.mid(0, 6);
    ASSERT_TRUE(calibrateProjector(objects, six, requestFor(1), &result, &message)) << message.toStdString();
    EXPECT_TRUE(message.isEmpty());
    EXPECT_EQ(result.pointCount, 6);
    EXPECT_LT(result.rmsError, 1e-2);

    // The minimum counts the points handed in; non-finite ones are skipped afterwards.
    QVector<GuideMatchedPoint> withBad = scene.points;
    withBad.insert(3, GuideMatchedPoint{std::numeric_limits<float>::quiet_NaN(), 0, 0, 10, 10});
    withBad.insert(7, GuideMatchedPoint{1, 2, 3, std::numeric_limits<float>::infinity(), 10});
    ASSERT_TRUE(calibrateProjector(objects, withBad, requestFor(1), &result, &message));
    EXPECT_EQ(result.pointCount, 12);
    ASSERT_EQ(result.residuals.size(), 12);
    EXPECT_EQ(result.residuals[3].pointIndex, 4);
    EXPECT_EQ(result.residuals[6].pointIndex, 8);
    EXPECT_TRUE(std::isfinite(result.rmsError));
    EXPECT_LT(result.rmsError, 1e-2);

    QVector<GuideMatchedPoint> fiveAndNan = five;
    fiveAndNan.append(GuideMatchedPoint{0, std::numeric_limits<float>::quiet_NaN(), 0, 0, 0});
    message.clear();
    EXPECT_TRUE(calibrateProjector(objects, fiveAndNan, requestFor(1), &result, &message));
    EXPECT_EQ(result.pointCount, 5);
}

TEST(ProjectorCalibration, FailureMessagesLeaveTheSceneAlone)
{
    std::mt19937 rng(12);
    const SyntheticCalibrationScene scene = makeSyntheticScene(rng, {});
    GuideObject camera = scene.truth;
    camera.guide_index = KindCamera;
    QVector<GuideObject> objects = sceneWith(scene.truth);
    objects.append(camera);
    const QVector<GuideObject> before = objects;
    QString message;
    ProjectorCalibrationRequest request = requestFor(-1);
    request.apply = true;
    EXPECT_FALSE(calibrateProjector(objects, scene.points, request, nullptr, &message));
    EXPECT_EQ(message, QStringLiteral("Select a projector before calibration."));
    request.projectorIndex = 3;
    EXPECT_FALSE(calibrateProjector(objects, scene.points, request, nullptr, &message));
    EXPECT_EQ(message, QStringLiteral("Select a projector before calibration."));
    request.projectorIndex = 2;
    EXPECT_FALSE(calibrateProjector(objects, scene.points, request, nullptr, &message));
    EXPECT_EQ(message, QStringLiteral("Projector Calibration can only be applied to projector objects."));
    request.projectorIndex = 0;
    EXPECT_FALSE(calibrateProjector(objects, scene.points, request, nullptr, &message));
    EXPECT_EQ(message, QStringLiteral("Projector Calibration can only be applied to projector objects."));
    // The index is checked before the point count.
    request.projectorIndex = 7;
    EXPECT_FALSE(calibrateProjector(objects, scene.points.mid(0, 2), request, nullptr, &message));
    EXPECT_EQ(message, QStringLiteral("Select a projector before calibration."));

    // No finite start: a broken record and points no linear solve can use.
    objects[1].rotate_x = std::numeric_limits<float>::quiet_NaN();
    const QVector<GuideObject> broken = objects;
    const QVector<GuideMatchedPoint> same(8, GuideMatchedPoint{1, 1, 1, 100, 100});
    request.projectorIndex = 1;
    EXPECT_FALSE(calibrateProjector(objects, same, request, nullptr, &message));
    EXPECT_EQ(message,
              QStringLiteral("Calibration failed because the matched points did not produce a valid camera solve."));
    EXPECT_EQ(objects.size(), broken.size());
    EXPECT_TRUE(std::isnan(objects[1].rotate_x));
    objects = before;
    EXPECT_EQ(objects, before);
}

TEST(ProjectorCalibration, ApplyWritesWhatTheLensModelReproduces)
{
    std::mt19937 rng(2024);
    SyntheticSceneOptions options;
    options.pointCount = 80;
    const SyntheticCalibrationScene scene = makeSyntheticScene(rng, options);
    GuideObject start = perturbedProjector(scene.truth, rng, 1.0, 10.0);
    start.throw_rate = 1.0f;
    start.lens_shift_y = 50.0f;
    QVector<GuideObject> objects = sceneWith(start);

    ProjectorCalibrationRequest request = requestFor(1);
    ProjectorCalibrationResult result;
    ASSERT_TRUE(calibrateProjector(objects, scene.points, request, &result, nullptr));
    EXPECT_EQ(objects[1], start) << "without apply the projector stays";

    request.apply = true;
    ASSERT_TRUE(calibrateProjector(objects, scene.points, request, &result, nullptr));
    const GuideObject &fitted = objects[1];
    EXPECT_FLOAT_EQ(fitted.throw_rate, float(result.throwRatio));
    EXPECT_FLOAT_EQ(fitted.translate_x, float(result.pose.translate[0]));
    EXPECT_FLOAT_EQ(fitted.rotate_z, float(result.pose.rotate[2]));
    EXPECT_NEAR(result.horizontalFovDegrees, 2.0 * std::atan(0.5 / result.throwRatio) * 180.0 / M_PI, 1e-9);

    // The renderer's projection of the written record lands on the matched pixels.
    const vg::scene::LensModel lens = vg::scene::LensModel::forObject(objects, 1);
    for (const GuideMatchedPoint &m : scene.points) {
        const vg::scene::LensProjection p = lens.project(Eigen::Vector3d(m.x, m.y, m.z));
        EXPECT_NEAR(p.px, m.u, 0.02);
        EXPECT_NEAR(p.py, m.v, 0.02);
    }
}

TEST(ProjectorCalibration, IterationBudgetsAndImageSize)
{
    ProjectorCalibrationRequest r;
    EXPECT_EQ(projectorCalibrationIterationBudget(r), 120);
    r.quick = true;
    EXPECT_EQ(projectorCalibrationIterationBudget(r), 32);
    r.full = true;
    EXPECT_EQ(projectorCalibrationIterationBudget(r), 120);

    std::mt19937 rng(3);
    SyntheticSceneOptions options;
    options.pointCount = 40;
    options.surfaceCount = 1;   // no linear start: the refinement has to do the work
    const SyntheticCalibrationScene scene = makeSyntheticScene(rng, options);
    const GuideObject start = perturbedProjector(scene.truth, rng, 1.5, 8.0);
    ProjectorCalibrationRequest quick = requestFor(0);
    quick.quick = true;
    ProjectorCalibrationResult result;
    ASSERT_TRUE(solveProjectorCalibration(start, scene.exact, quick, &result, nullptr));
    EXPECT_LE(result.evaluatedIterations, 32);
    EXPECT_LE(result.iterations, result.evaluatedIterations);
    ProjectorCalibrationRequest full = requestFor(0);
    ASSERT_TRUE(solveProjectorCalibration(start, scene.exact, full, &result, nullptr));
    EXPECT_LE(result.evaluatedIterations, 120);
    EXPECT_GT(result.iterations, 0);

    // An explicit image size replaces the projector's resolution; empty sizes fall back to it.
    ProjectorCalibrationRequest sized = requestFor(0);
    sized.imageSize = QSize(1000, 500);
    ASSERT_TRUE(solveProjectorCalibration(start, scene.exact, sized, &result, nullptr));
    EXPECT_EQ(result.imageWidth, 1000);
    EXPECT_EQ(result.imageHeight, 500);
    sized.imageSize = QSize(0, 500);
    ASSERT_TRUE(solveProjectorCalibration(start, scene.exact, sized, &result, nullptr));
    EXPECT_EQ(result.imageWidth, scene.truth.projector_resolution_width);
}

TEST(ProjectorCalibration, LensResultsStayInTheirRanges)
{
    // Points made by a lens far outside the fitted ranges.
    std::mt19937 rng(61);
    SyntheticSceneOptions options;
    options.pointCount = 40;
    options.minThrow = options.maxThrow = 14.0;
    options.maxShift = 60.0;
    SyntheticCalibrationScene scene = makeSyntheticScene(rng, options);
    for (CalibrationObservation &o : scene.exact)
        o.u += 2.5 * scene.truth.projector_resolution_width;   // principal point far right
    ProjectorCalibrationResult result;
    ASSERT_TRUE(solveProjectorCalibration(scene.truth, scene.exact, requestFor(0), &result, nullptr));
    EXPECT_LE(result.throwRatio, 10.0);
    EXPECT_GE(result.throwRatio, 0.1);
    EXPECT_GE(result.lensShiftX, -100.0);
    EXPECT_LE(result.lensShiftX, 100.0);
    EXPECT_GE(result.lensShiftY, -100.0);
    EXPECT_LE(result.lensShiftY, 100.0);
}

TEST(ProjectorCalibration, SceneModelApplyIsOneUndoStep)
{
    std::mt19937 rng(91);
    SyntheticSceneOptions options;
    options.pointCount = 20;
    const SyntheticCalibrationScene scene = makeSyntheticScene(rng, options);
    SceneModel model;
    model.addPlane(QString(), 4000, 3000);
    const int index = model.addObject(perturbedProjector(scene.truth, rng, 0.4, 4.0), false);
    model.clearUndoHistory();
    const GuideObject before = model.object(index);

    ProjectorCalibrationRequest request = requestFor(index);
    ProjectorCalibrationResult result;
    ASSERT_TRUE(calibrateProjector(model, scene.points, request, &result, nullptr));
    EXPECT_EQ(model.undoDepth(), 0);
    request.apply = true;
    ASSERT_TRUE(calibrateProjector(model, scene.points, request, &result, nullptr));
    EXPECT_EQ(model.undoDepth(), 1);
    EXPECT_NEAR(model.object(index).translate_x, scene.truth.translate_x, 1e-3);
    ASSERT_TRUE(model.undo());
    EXPECT_EQ(model.object(index), before);

    QString message;
    request.projectorIndex = 0;
    EXPECT_FALSE(calibrateProjector(model, scene.points, request, &result, &message));
    EXPECT_EQ(message, QStringLiteral("Projector Calibration can only be applied to projector objects."));
    request.projectorIndex = -1;
    EXPECT_FALSE(calibrateProjector(model, scene.points, request, &result, &message));
    EXPECT_EQ(message, QStringLiteral("Select a projector before calibration."));
}
