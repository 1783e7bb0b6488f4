#pragma once

#include "scene/LensModel.h"

#include <Eigen/Core>

#include <array>
#include <vector>

// The numeric core of the projector calibration: residuals of a nine-value lens pose,
// the linear first guess and the bounded Levenberg-Marquardt refinement. It knows
// nothing of scene objects; ProjectorCalibration.h maps records onto it.

// One match, widened to double: scene point and projector pixel (origin top-left, v down).
struct CalibrationObservation {
    double x = 0.0, y = 0.0, z = 0.0;
    double u = 0.0, v = 0.0;
};

// Parameter vector, also the column order of the Jacobian.
enum CalibrationParameterIndex : int {
    CalibrationPositionX = 0,
    CalibrationPositionY = 1,
    CalibrationPositionZ = 2,
    CalibrationRotation1 = 3,
    CalibrationRotation2 = 4,
    CalibrationRotation3 = 5,
    CalibrationLogFocal = 6,
    CalibrationPrincipalX = 7,
    CalibrationPrincipalY = 8,
    CalibrationParameterCount = 9
};
using CalibrationParameters = std::array<double, CalibrationParameterCount>;
using CalibrationActiveMask = std::array<bool, CalibrationParameterCount>;

// Forward-difference steps, per-iteration step limits.
extern const CalibrationParameters kCalibrationJacobianSteps;
extern const CalibrationParameters kCalibrationStepLimits;

class CalibrationProblem
{
public:
    CalibrationProblem(std::vector<CalibrationObservation> points, int imageWidth, int imageHeight);

    int imageWidth() const { return m_width; }
    int imageHeight() const { return m_height; }
    int pointCount() const { return int(m_points.size()); }
    const std::vector<CalibrationObservation> &points() const { return m_points; }

    // Residual of a point behind or on the lens, in pixels.
    double behindPenalty() const { return m_penalty; }
    double logFocalMin() const { return m_logFocalMin; }
    double logFocalMax() const { return m_logFocalMax; }
    double focalMin() const { return m_focalMin; }
    double focalMax() const { return m_focalMax; }

    // ln f, cx and cy to their bounds; the pose values are unbounded.
    void clampToBounds(CalibrationParameters &p) const;

    // The lens record and pose a parameter vector stands for.
    vg::scene::LensIntrinsics lensFor(const CalibrationParameters &p) const;
    vg::scene::LensPose poseFor(const CalibrationParameters &p) const;

    // 2N values: predicted minus observed u, then v, for each point in order.
    void residuals(const CalibrationParameters &p, Eigen::VectorXd &out) const;
    // Sum of squared residuals; +inf when any residual is not finite.
    double cost(const CalibrationParameters &p) const;
    double cost(const CalibrationParameters &p, Eigen::VectorXd &scratch) const;

    // Pose values (position, three stored angles) for a lens whose axes (columns: right,
    // up, backwards) and lens point are given in world coordinates.
    void poseFromLens(const Eigen::Matrix3d &axes, const Eigen::Vector3d &lensPoint, CalibrationParameters &p) const;

private:
    std::vector<CalibrationObservation> m_points;
    int m_width = 1;
    int m_height = 1;
    double m_penalty = 0.0;
    double m_focalMin = 0.0, m_focalMax = 0.0;
    double m_logFocalMin = 0.0, m_logFocalMax = 0.0;
};

// Hartley-normalised direct linear transform and its decomposition into a lens pose,
// ln f, cx and cy (clamped to their bounds). False when the points are degenerate, the
// eigen-solver fails or neither sign of the projection matrix gives a usable lens.
bool calibrationLinearStart(const CalibrationProblem &problem, CalibrationParameters *start);

// Solves the damped normal equations A·x = b for a small symmetric system. False when a
// pivot is at or below 1e-12 in magnitude or the result is not finite.
bool solveCalibrationSystem(const Eigen::MatrixXd &a, const Eigen::VectorXd &b, Eigen::VectorXd *x);

struct CalibrationRefinement {
    CalibrationParameters parameters{};
    double cost = 0.0;
    int acceptedIterations = 0;
    int iterations = 0;   // accepted, rejected and failed solves
    bool jacobianFailed = false;
};

// Levenberg-Marquardt from start; held parameters (inactive) are kept at their value in
// initial. False only when the Jacobian cannot be built.
bool refineCalibration(const CalibrationProblem &problem, const CalibrationParameters &start,
                       const CalibrationParameters &initial, const CalibrationActiveMask &active,
                       int iterationBudget, CalibrationRefinement *outcome);
