#include "calibration/CalibrationSolver.h"

#include "SyntheticCalibrationScene.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace {

CalibrationParameters lensAt(const CalibrationProblem &problem, const Eigen::Matrix3d &axes, const Eigen::Vector3d &at,
                             double focal, double cx, double cy)
{
    CalibrationParameters p{};
    problem.poseFromLens(axes, at, p);
    p[CalibrationLogFocal] = std::log(focal);
    p[CalibrationPrincipalX] = cx;
    p[CalibrationPrincipalY] = cy;
    return p;
}

} // namespace

TEST(CalibrationSolver, ResidualsArePinholeDifferencesInPointOrder)
{
    // A lens at the origin looking down -Z: u = x·f/d + cx, v = cy − y·f/d.
    const CalibrationProblem problem({{0.5, 0.25, -2.0, 100.0, 200.0}, {0.0, 0.0, 1.0, 10.0, 20.0},
                                      {-1.0, 0.0, -4.0, 0.0, 0.0}},
                                     1000, 600);
    const CalibrationParameters p = lensAt(problem, Eigen::Matrix3d::Identity(), Eigen::Vector3d::Zero(), 800.0,
                                           480.0, 310.0);
    Eigen::VectorXd r;
    problem.residuals(p, r);
    ASSERT_EQ(r.size(), 6);
    EXPECT_NEAR(r[0], 0.5 * 800.0 / 2.0 + 480.0 - 100.0, 1e-9);
    EXPECT_NEAR(r[1], 310.0 - 0.25 * 800.0 / 2.0 - 200.0, 1e-9);
    // Behind the lens: both residuals are the penalty 4·max(W, H).
    EXPECT_EQ(r[2], 4000.0);
    EXPECT_EQ(r[3], 4000.0);
    EXPECT_NEAR(r[4], -1.0 * 800.0 / 4.0 + 480.0, 1e-9);
    EXPECT_NEAR(r[5], 310.0, 1e-9);
    EXPECT_NEAR(problem.cost(p), r.squaredNorm(), 1e-9);

    // The focal length is used within 0.1·W … 10·W whatever the parameter says.
    CalibrationParameters wide = p;
    wide[CalibrationLogFocal] = std::log(1e9);
    problem.residuals(wide, r);
    EXPECT_NEAR(r[0], 0.5 * 10000.0 / 2.0 + 480.0 - 100.0, 1e-6);
    wide[CalibrationLogFocal] = std::nan("");
    EXPECT_TRUE(std::isinf(problem.cost(wide)));
}

TEST(CalibrationSolver, BoundsClampLensValuesOnly)
{
    const CalibrationProblem problem({}, 2000, 1000);
    CalibrationParameters p{};
    p.fill(1e6);
    problem.clampToBounds(p);
    EXPECT_EQ(p[CalibrationPositionX], 1e6);
    EXPECT_EQ(p[CalibrationRotation3], 1e6);
    EXPECT_DOUBLE_EQ(p[CalibrationLogFocal], std::log(20000.0));
    EXPECT_EQ(p[CalibrationPrincipalX], 3000.0);
    EXPECT_EQ(p[CalibrationPrincipalY], 1500.0);
    p.fill(-1e6);
    problem.clampToBounds(p);
    EXPECT_DOUBLE_EQ(p[CalibrationLogFocal], std::log(200.0));
    EXPECT_EQ(p[CalibrationPrincipalX], -1000.0);
    EXPECT_EQ(p[CalibrationPrincipalY], -500.0);
}

TEST(CalibrationSolver, LinearSystemRefusesSmallPivots)
{
    Eigen::MatrixXd a(3, 3);
    a << 4, 1, 0, 1, 3, 1, 0, 1, 2;
    const Eigen::VectorXd b = Eigen::Vector3d(1, 2, 3);
    Eigen::VectorXd x;
    ASSERT_TRUE(solveCalibrationSystem(a, b, &x));
    EXPECT_LT((a * x - b).norm(), 1e-12);

    Eigen::MatrixXd singular = Eigen::MatrixXd::Zero(3, 3);
    singular(0, 0) = 1.0;
    singular(1, 1) = 1e-13;
    singular(2, 2) = 1.0;
    EXPECT_FALSE(solveCalibrationSystem(singular, b, &x));
    EXPECT_FALSE(solveCalibrationSystem(Eigen::MatrixXd::Zero(3, 3), b, &x));
}

TEST(CalibrationSolver, LinearStartPicksTheSignInFrontOfTheLens)
{
    std::mt19937 rng(17);
    for (int round = 0; round < 20; ++round) {
        SyntheticSceneOptions options;
        options.pointCount = 10 + round;
        const SyntheticCalibrationScene scene = makeSyntheticScene(rng, options);
        const CalibrationProblem problem(std::vector<CalibrationObservation>(scene.exact.begin(), scene.exact.end()),
                                         scene.truth.projector_resolution_width,
                                         scene.truth.projector_resolution_height);
        CalibrationParameters start{};
        ASSERT_TRUE(calibrationLinearStart(problem, &start));
        EXPECT_LT(problem.cost(start), 1e-12);
        const vg::scene::LensPose pose = problem.poseFor(start);
        EXPECT_LT((pose.position - scene.position).norm(), 1e-8);
        EXPECT_LT(rotationDistance(pose.rotation, scene.rotation), 1e-9);
    }
}

TEST(CalibrationSolver, LinearStartRejectsDegeneratePoints)
{
    const CalibrationProblem same(std::vector<CalibrationObservation>(8, {1.0, 2.0, 3.0, 50.0, 60.0}), 1920, 1080);
    CalibrationParameters start{};
    EXPECT_FALSE(calibrationLinearStart(same, &start));
    const CalibrationProblem none({}, 1920, 1080);
    EXPECT_FALSE(calibrationLinearStart(none, &start));
}

TEST(CalibrationSolver, RefinementKeepsHeldParametersAndCountsIterations)
{
    std::mt19937 rng(23);
    SyntheticSceneOptions options;
    options.pointCount = 30;
    const SyntheticCalibrationScene scene = makeSyntheticScene(rng, options);
    const int w = scene.truth.projector_resolution_width;
    const int h = scene.truth.projector_resolution_height;
    const CalibrationProblem problem(std::vector<CalibrationObservation>(scene.exact.begin(), scene.exact.end()), w, h);
    const CalibrationParameters truth =
        lensAt(problem, scene.rotation, scene.position, double(scene.truth.throw_rate) * w,
               (0.5 - scene.truth.lens_shift_x / 100.0) * w, (0.5 - scene.truth.lens_shift_y / 100.0) * h);
    CalibrationParameters start = truth;
    start[CalibrationPositionX] += 0.2;
    start[CalibrationRotation2] += 1.5;
    start[CalibrationLogFocal] += 0.1;   // held: must come back to truth's value

    CalibrationActiveMask active;
    active.fill(true);
    active[CalibrationLogFocal] = active[CalibrationPrincipalX] = active[CalibrationPrincipalY] = false;
    CalibrationRefinement outcome;
    ASSERT_TRUE(refineCalibration(problem, start, truth, active, 120, &outcome));
    EXPECT_EQ(outcome.parameters[CalibrationLogFocal], truth[CalibrationLogFocal]);
    EXPECT_EQ(outcome.parameters[CalibrationPrincipalX], truth[CalibrationPrincipalX]);
    EXPECT_NEAR(outcome.parameters[CalibrationPositionX], truth[CalibrationPositionX], 1e-4);
    EXPECT_LT(outcome.cost, 1e-3);
    EXPECT_GT(outcome.acceptedIterations, 0);
    EXPECT_LE(outcome.acceptedIterations, outcome.iterations);
    EXPECT_LE(outcome.iterations, 120);

    // The rotation step limit of 0.25 per iteration: 1.5 needs at least six accepted steps.
    EXPECT_GE(outcome.acceptedIterations, 6);

    CalibrationRefinement few;
    ASSERT_TRUE(refineCalibration(problem, start, truth, active, 3, &few));
    EXPECT_EQ(few.iterations, 3);
    EXPECT_GT(few.cost, outcome.cost);
}
