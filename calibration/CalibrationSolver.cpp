#include "calibration/CalibrationSolver.h"

#include "scene/Transform.h"

#include <Eigen/Cholesky>
#include <Eigen/Eigenvalues>
#include <Eigen/Geometry>

#include <algorithm>
#include <cmath>
#include <limits>

const CalibrationParameters kCalibrationJacobianSteps = {0.002, 0.002, 0.002, 0.0005, 0.0005, 0.0005,
                                                         0.0005, 0.25, 0.25};
const CalibrationParameters kCalibrationStepLimits = {1.0, 1.0, 1.0, 0.25, 0.25, 0.25, 0.25, 120.0, 120.0};

namespace {

constexpr double kMinDepth = 1e-6;
constexpr double kPivotLimit = 1e-12;
constexpr double kMinImprovement = 1e-5;
constexpr double kInitialLambda = 0.001;
constexpr double kMaxLambda = 1e12;
constexpr double kMinLambda = 1e-9;

using SmallMatrix = Eigen::Matrix<double, Eigen::Dynamic, Eigen::Dynamic, 0, CalibrationParameterCount,
                                  CalibrationParameterCount>;
using SmallVector = Eigen::Matrix<double, Eigen::Dynamic, 1, 0, CalibrationParameterCount, 1>;

} // namespace

CalibrationProblem::CalibrationProblem(std::vector<CalibrationObservation> points, int imageWidth, int imageHeight)
    : m_points(std::move(points))
    , m_width(std::max(1, imageWidth))
    , m_height(std::max(1, imageHeight))
{
    m_penalty = 4.0 * std::max(m_width, m_height);
    m_focalMin = 0.1 * m_width;
    m_focalMax = 10.0 * m_width;
    m_logFocalMin = std::log(m_focalMin);
    m_logFocalMax = std::log(m_focalMax);
}

void CalibrationProblem::clampToBounds(CalibrationParameters &p) const
{
    p[CalibrationLogFocal] = std::clamp(p[CalibrationLogFocal], m_logFocalMin, m_logFocalMax);
    p[CalibrationPrincipalX] = std::clamp(p[CalibrationPrincipalX], -0.5 * m_width, 1.5 * m_width);
    p[CalibrationPrincipalY] = std::clamp(p[CalibrationPrincipalY], -0.5 * m_height, 1.5 * m_height);
}

vg::scene::LensIntrinsics CalibrationProblem::lensFor(const CalibrationParameters &p) const
{
    // The pinhole values in the lens record's own terms; the lens model applies the same
    // limits (throw ratio 0.1..10 is f in 0.1·W..10·W). Flips do not take part: matches are
    // given in the image as the projector receives it.
    vg::scene::LensIntrinsics lens;
    lens.width = m_width;
    lens.height = m_height;
    lens.throwRatio = std::exp(p[CalibrationLogFocal]) / m_width;
    lens.lensShiftX = (0.5 - p[CalibrationPrincipalX] / m_width) * 100.0;
    lens.lensShiftY = (0.5 - p[CalibrationPrincipalY] / m_height) * 100.0;
    return lens;
}

vg::scene::LensPose CalibrationProblem::poseFor(const CalibrationParameters &p) const
{
    return vg::scene::lensPoseFromEuler(
        Eigen::Vector3d(p[CalibrationPositionX], p[CalibrationPositionY], p[CalibrationPositionZ]),
        Eigen::Vector3d(p[CalibrationRotation1], p[CalibrationRotation2], p[CalibrationRotation3]));
}

void CalibrationProblem::residuals(const CalibrationParameters &p, Eigen::VectorXd &out) const
{
    const int n = pointCount();
    out.resize(2 * n);
    // The lens model's limits would quietly turn a broken value into a usable lens.
    for (double value : p) {
        if (!std::isfinite(value)) {
            out.setConstant(std::numeric_limits<double>::quiet_NaN());
            return;
        }
    }
    const vg::scene::LensIntrinsics lens = lensFor(p);
    const vg::scene::LensPose pose = poseFor(p);
    const Eigen::Matrix3d toLens = pose.rotation.transpose();
    constexpr double noFarLimit = std::numeric_limits<double>::infinity();
    for (int i = 0; i < n; ++i) {
        const CalibrationObservation &o = m_points[size_t(i)];
        const Eigen::Vector3d q = toLens * (Eigen::Vector3d(o.x, o.y, o.z) - pose.position);
        // Depth along the viewing direction; the lens model looks along -Z.
        if (-q.z() <= kMinDepth) {
            out[2 * i] = m_penalty;
            out[2 * i + 1] = m_penalty;
            continue;
        }
        const vg::scene::LensProjection projected = vg::scene::projectLensFramePoint(lens, q, noFarLimit);
        out[2 * i] = projected.px - o.u;
        out[2 * i + 1] = projected.py - o.v;
    }
}

double CalibrationProblem::cost(const CalibrationParameters &p, Eigen::VectorXd &scratch) const
{
    residuals(p, scratch);
    const double c = scratch.squaredNorm();
    return std::isfinite(c) ? c : std::numeric_limits<double>::infinity();
}

double CalibrationProblem::cost(const CalibrationParameters &p) const
{
    Eigen::VectorXd scratch;
    return cost(p, scratch);
}

void CalibrationProblem::poseFromLens(const Eigen::Matrix3d &axes, const Eigen::Vector3d &lensPoint,
                                      CalibrationParameters &p) const
{
    // The lens point is the object's origin, so the position is the lens point itself.
    const Eigen::Vector3d angles = vg::scene::matrixToEulerDegrees(axes);
    p[CalibrationPositionX] = lensPoint.x();
    p[CalibrationPositionY] = lensPoint.y();
    p[CalibrationPositionZ] = lensPoint.z();
    p[CalibrationRotation1] = angles.x();
    p[CalibrationRotation2] = angles.y();
    p[CalibrationRotation3] = angles.z();
}

namespace {

struct Normalisation {
    Eigen::Vector3d centroid3 = Eigen::Vector3d::Zero();
    double scale3 = 1.0;
    Eigen::Vector2d centroid2 = Eigen::Vector2d::Zero();
    double scale2 = 1.0;
};

Normalisation hartleyNormalisation(const std::vector<CalibrationObservation> &points)
{
    Normalisation n;
    const double count = double(points.size());
    for (const CalibrationObservation &o : points) {
        n.centroid3 += Eigen::Vector3d(o.x, o.y, o.z);
        n.centroid2 += Eigen::Vector2d(o.u, o.v);
    }
    n.centroid3 /= count;
    n.centroid2 /= count;
    double mean3 = 0.0, mean2 = 0.0;
    for (const CalibrationObservation &o : points) {
        mean3 += (Eigen::Vector3d(o.x, o.y, o.z) - n.centroid3).norm();
        mean2 += (Eigen::Vector2d(o.u, o.v) - n.centroid2).norm();
    }
    mean3 /= count;
    mean2 /= count;
    if (mean3 > 1e-12)
        n.scale3 = std::sqrt(3.0) / mean3;
    if (mean2 > 1e-12)
        n.scale2 = std::sqrt(2.0) / mean2;
    return n;
}

// One sign of the projection matrix turned into a lens; false when a guard rejects it.
bool decomposeProjection(const CalibrationProblem &problem, const Eigen::Matrix<double, 3, 4> &projection,
                         CalibrationParameters *out)
{
    const Eigen::Matrix3d m = projection.leftCols<3>();
    const double thirdNorm = m.row(2).norm();
    if (!(thirdNorm > 1e-12))
        return false;
    const Eigen::Vector3d view = m.row(2).transpose() / thirdNorm;
    const Eigen::Vector3d row1 = m.row(0).transpose() / thirdNorm;
    const Eigen::Vector3d row2 = m.row(1).transpose() / thirdNorm;
    const Eigen::Vector3d last = projection.col(3) / thirdNorm;

    double cx = row1.dot(view);
    double cy = row2.dot(view);
    const Eigen::Vector3d rest1 = row1 - cx * view;
    const Eigen::Vector3d rest2 = row2 - cy * view;
    const double fx = rest1.norm();
    const double fy = rest2.norm();
    if (!(std::isfinite(fx) && fx > 1e-6 && std::isfinite(fy) && fy > 1e-6))
        return false;

    const Eigen::Vector3d axis1 = rest1 / fx;
    Eigen::Vector3d axis2 = rest2 / fy;
    axis2 -= axis2.dot(axis1) * axis1;
    const double norm2 = axis2.norm();
    if (!(norm2 > 1e-12))
        return false;
    axis2 /= norm2;
    Eigen::Vector3d axis3 = axis1.cross(axis2);
    double fySigned = fy;
    if (axis3.dot(view) < 0.0) {
        axis2 = -axis2;
        fySigned = -fy;
        axis3 = axis1.cross(axis2);
    }

    const double focal = 0.5 * (fx + fy);
    const int w = problem.imageWidth();
    const int h = problem.imageHeight();
    if (!(std::isfinite(focal) && focal > 1.0 && focal <= 100.0 * std::max(w, h)))
        return false;
    if (!std::isfinite(cx))
        cx = 0.5 * w;
    if (!std::isfinite(cy))
        cy = 0.5 * h;

    // Rows of the camera rotation: image right, image down, viewing direction.
    Eigen::Matrix3d rotation;
    rotation.row(0) = axis1.transpose();
    rotation.row(1) = axis2.transpose();
    rotation.row(2) = axis3.transpose();
    Eigen::Vector3d t;
    t.z() = last.z();
    t.y() = (last.y() - cy * t.z()) / fySigned;
    t.x() = (last.x() - cx * t.z()) / fx;
    const Eigen::Vector3d centre = -rotation.transpose() * t;

    // The lens frame looks along -Z with +Y up.
    Eigen::Matrix3d axes;
    axes.col(0) = axis1;
    axes.col(1) = -axis2;
    axes.col(2) = -axis3;
    CalibrationParameters p{};
    problem.poseFromLens(axes, centre, p);
    p[CalibrationLogFocal] = std::log(focal);
    p[CalibrationPrincipalX] = cx;
    p[CalibrationPrincipalY] = cy;
    for (double value : p) {
        if (!std::isfinite(value))
            return false;
    }
    *out = p;
    return true;
}

} // namespace

bool calibrationLinearStart(const CalibrationProblem &problem, CalibrationParameters *start)
{
    const std::vector<CalibrationObservation> &points = problem.points();
    if (points.empty())
        return false;
    const Normalisation n = hartleyNormalisation(points);

    Eigen::Matrix<double, 12, 12> normal = Eigen::Matrix<double, 12, 12>::Zero();
    Eigen::Matrix<double, 12, 1> row;
    for (const CalibrationObservation &o : points) {
        const Eigen::Vector3d x = n.scale3 * (Eigen::Vector3d(o.x, o.y, o.z) - n.centroid3);
        const Eigen::Vector4d xh(x.x(), x.y(), x.z(), 1.0);
        const double u = n.scale2 * (o.u - n.centroid2.x());
        const double v = n.scale2 * (o.v - n.centroid2.y());
        row << xh, Eigen::Vector4d::Zero(), -u * xh;
        normal.selfadjointView<Eigen::Lower>().rankUpdate(row);
        row << Eigen::Vector4d::Zero(), xh, -v * xh;
        normal.selfadjointView<Eigen::Lower>().rankUpdate(row);
    }
    if (!normal.allFinite())
        return false;
    Eigen::SelfAdjointEigenSolver<Eigen::Matrix<double, 12, 12>> eigen;
    eigen.compute(normal); // reads the lower triangle only
    if (eigen.info() != Eigen::Success)
        return false;
    const Eigen::Matrix<double, 12, 1> h = eigen.eigenvectors().col(0);

    Eigen::Matrix<double, 3, 4> normalised;
    normalised.row(0) = h.segment<4>(0).transpose();
    normalised.row(1) = h.segment<4>(4).transpose();
    normalised.row(2) = h.segment<4>(8).transpose();

    Eigen::Matrix3d undo2 = Eigen::Matrix3d::Identity();
    undo2(0, 0) = undo2(1, 1) = 1.0 / n.scale2;
    undo2(0, 2) = n.centroid2.x();
    undo2(1, 2) = n.centroid2.y();
    Eigen::Matrix4d apply3 = Eigen::Matrix4d::Identity();
    apply3.topLeftCorner<3, 3>() *= n.scale3;
    apply3.topRightCorner<3, 1>() = -n.scale3 * n.centroid3;
    const Eigen::Matrix<double, 3, 4> projection = undo2 * normalised * apply3;
    if (!projection.allFinite())
        return false;

    bool found = false;
    double bestCost = std::numeric_limits<double>::infinity();
    CalibrationParameters best{};
    Eigen::VectorXd scratch;
    for (double sign : {1.0, -1.0}) {
        CalibrationParameters candidate{};
        if (!decomposeProjection(problem, sign * projection, &candidate))
            continue;
        const double c = problem.cost(candidate, scratch);
        if (!found || c < bestCost) {
            found = true;
            bestCost = c;
            best = candidate;
        }
    }
    if (!found)
        return false;
    problem.clampToBounds(best);
    *start = best;
    return true;
}

namespace {

// LDLᵀ with pivoting; a pivot at or below the limit means the damped system is singular.
template<typename Matrix, typename Vector>
bool solveSymmetric(const Matrix &a, const Vector &b, Vector *x)
{
    Eigen::LDLT<Matrix> ldlt(a);
    if (ldlt.info() != Eigen::Success)
        return false;
    if ((ldlt.vectorD().cwiseAbs().array() <= kPivotLimit).any())
        return false;
    *x = ldlt.solve(b);
    return x->allFinite();
}

} // namespace

bool solveCalibrationSystem(const Eigen::MatrixXd &a, const Eigen::VectorXd &b, Eigen::VectorXd *x)
{
    if (a.rows() == 0 || a.cols() != a.rows() || b.size() != a.rows())
        return false;
    return solveSymmetric(a, b, x);
}

bool refineCalibration(const CalibrationProblem &problem, const CalibrationParameters &start,
                       const CalibrationParameters &initial, const CalibrationActiveMask &active,
                       int iterationBudget, CalibrationRefinement *outcome)
{
    std::array<int, CalibrationParameterCount> columns{};
    int activeCount = 0;
    for (int k = 0; k < CalibrationParameterCount; ++k) {
        if (active[size_t(k)])
            columns[size_t(activeCount++)] = k;
    }

    CalibrationParameters p = start;
    for (int k = 0; k < CalibrationParameterCount; ++k) {
        if (!active[size_t(k)])
            p[size_t(k)] = initial[size_t(k)];
    }

    // Buffers live across iterations; a rejected step leaves p, and so the Jacobian and
    // the normal equations, unchanged, so they are only rebuilt after an accepted step.
    Eigen::VectorXd r, trial;
    double cost = problem.cost(p, r);
    const Eigen::Index residualCount = r.size();
    Eigen::MatrixXd jacobian(residualCount, activeCount);
    SmallMatrix normal(activeCount, activeCount);
    SmallMatrix damped(activeCount, activeCount);
    SmallVector gradient(activeCount);
    SmallVector delta(activeCount);
    bool needJacobian = true;
    double lambda = kInitialLambda;
    int accepted = 0;
    int iteration = 0;

    outcome->jacobianFailed = false;
    while (iteration < iterationBudget && activeCount > 0) {
        ++iteration;
        if (needJacobian) {
            for (int c = 0; c < activeCount; ++c) {
                const int k = columns[size_t(c)];
                const double h = kCalibrationJacobianSteps[size_t(k)];
                CalibrationParameters perturbed = p;
                perturbed[size_t(k)] += h;
                problem.clampToBounds(perturbed);
                problem.residuals(perturbed, trial);
                if (trial.size() != residualCount) {
                    outcome->jacobianFailed = true;
                    outcome->parameters = p;
                    outcome->cost = cost;
                    outcome->acceptedIterations = accepted;
                    outcome->iterations = iteration;
                    return false;
                }
                jacobian.col(c) = (trial - r) / h;
            }
            normal.noalias() = jacobian.transpose() * jacobian;
            gradient.noalias() = -(jacobian.transpose() * r);
            needJacobian = false;
        }

        damped = normal;
        for (int c = 0; c < activeCount; ++c)
            damped(c, c) += lambda * (std::abs(normal(c, c)) + 1.0);
        if (!solveSymmetric(damped, gradient, &delta)) {
            lambda *= 10.0;
            if (lambda > kMaxLambda)
                break;
            continue;
        }

        CalibrationParameters next = p;
        for (int c = 0; c < activeCount; ++c) {
            const size_t k = size_t(columns[size_t(c)]);
            next[k] += std::clamp(delta[c], -kCalibrationStepLimits[k], kCalibrationStepLimits[k]);
        }
        problem.clampToBounds(next);
        for (int k = 0; k < CalibrationParameterCount; ++k) {
            if (!active[size_t(k)])
                next[size_t(k)] = initial[size_t(k)];
        }

        const double nextCost = problem.cost(next, trial);
        const double improvement = cost - nextCost;
        if (std::isfinite(nextCost) && improvement > kMinImprovement) {
            p = next;
            cost = nextCost;
            r.swap(trial);
            ++accepted;
            needJacobian = true;
            lambda = std::max(0.35 * lambda, kMinLambda);
            if (improvement < kMinImprovement)
                break;
        } else {
            lambda *= 4.0;
            if (lambda > kMaxLambda)
                break;
        }
    }

    outcome->parameters = p;
    outcome->cost = cost;
    outcome->acceptedIterations = accepted;
    outcome->iterations = iteration;
    return true;
}
