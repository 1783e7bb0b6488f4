#include "calibration/ProjectorCalibration.h"

#include "calibration/CalibrationSolver.h"
#include "scene/LensModel.h"

#include <QCoreApplication>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr int kMinimumPoints = 6;
constexpr int kQuickBudget = 32;
constexpr int kFullBudget = 120;

QString noProjectorMessage()
{
    return QCoreApplication::translate(
        "ProjectorCalibration", "Select a projector before calibration.");
}
QString notProjectorMessage()
{
    return QCoreApplication::translate(
        "ProjectorCalibration", "Projector Calibration can only be applied to projector objects.");
}
QString tooFewPointsMessage()
{
    return QCoreApplication::translate(
        "ProjectorCalibration", "Projector Calibration needs at least 6 matched points.");
}
QString noStartMessage()
{
    return QCoreApplication::translate(
        "ProjectorCalibration", "Calibration failed because the matched points did not produce a valid camera solve.");
}
QString jacobianMessage()
{
    return QCoreApplication::translate(
        "ProjectorCalibration", "Calibration failed while building the numeric Jacobian.");
}

bool fail(QString *out, const QString &text)
{
    if (out)
        *out = text;
    return false;
}

QSize imageSizeFor(const GuideObject &projector, QSize requested)
{
    QSize size = requested.isEmpty()
                     ? QSize(projector.projector_resolution_width, projector.projector_resolution_height)
                     : requested;
    return QSize(std::max(1, size.width()), std::max(1, size.height()));
}

template<typename Point>
bool isFinitePoint(const Point &p)
{
    return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z) && std::isfinite(p.u)
           && std::isfinite(p.v);
}

void setPose(CalibrationParameters &p, double tx, double ty, double tz, double rx, double ry, double rz)
{
    p[CalibrationPositionX] = tx;
    p[CalibrationPositionY] = ty;
    p[CalibrationPositionZ] = tz;
    p[CalibrationRotation1] = rx;
    p[CalibrationRotation2] = ry;
    p[CalibrationRotation3] = rz;
}

} // namespace

int projectorCalibrationIterationBudget(const ProjectorCalibrationRequest &request)
{
    return (request.quick && !request.full) ? kQuickBudget : kFullBudget;
}

namespace {

template<typename Point>
bool solvePoints(const GuideObject &projector, const QVector<Point> &points,
                 const ProjectorCalibrationRequest &request, ProjectorCalibrationResult *result,
                 QString *errorMessage)
{
    if (!projector.isProjector())
        return fail(errorMessage, notProjectorMessage());
    if (points.size() < kMinimumPoints)
        return fail(errorMessage, tooFewPointsMessage());

    const QSize size = imageSizeFor(projector, request.imageSize);
    const int w = size.width();
    const int h = size.height();

    // Picked pixels are in the real projector's image, which its flips and 180° turn
    // mirror; the solver's pinhole sees the image before them.
    vg::scene::LensIntrinsics lens = vg::scene::lensIntrinsicsOf(projector);
    lens.width = w;
    lens.height = h;
    const vg::scene::LensFrameConstants frame = vg::scene::lensFrameConstants(lens);

    std::vector<CalibrationObservation> observations;
    std::vector<int> sourceIndex;
    observations.reserve(size_t(points.size()));
    sourceIndex.reserve(size_t(points.size()));
    for (int i = 0; i < points.size(); ++i) {
        const Point &m = points.at(i);
        if (!isFinitePoint(m))
            continue;
        double u = double(m.u), v = double(m.v);
        vg::scene::undoLensFlipsOnPixel(lens, u, v);
        observations.push_back({double(m.x), double(m.y), double(m.z), u, v});
        sourceIndex.push_back(i);
    }
    const CalibrationProblem problem(std::move(observations), w, h);

    // Values of the record; held parameters stay at these.
    CalibrationParameters initial{};
    setPose(initial, projector.translate_x, projector.translate_y, projector.translate_z, projector.rotate_x,
            projector.rotate_y, projector.rotate_z);
    initial[CalibrationLogFocal] = std::log(vg::scene::lensFocalLengthPixels(lens));
    const Eigen::Vector2d principal0 = vg::scene::lensPrincipalPointPixels(lens);
    initial[CalibrationPrincipalX] = principal0.x();
    initial[CalibrationPrincipalY] = principal0.y();
    problem.clampToBounds(initial);

    CalibrationActiveMask active;
    active.fill(true);
    if (!request.adjust_throw_ratio)
        active[CalibrationLogFocal] = false;
    if (!request.adjust_lens_shift)
        active[CalibrationPrincipalX] = active[CalibrationPrincipalY] = false;
    auto holdFixed = [&](CalibrationParameters &p) {
        for (int k = 0; k < CalibrationParameterCount; ++k) {
            if (!active[size_t(k)])
                p[size_t(k)] = initial[size_t(k)];
        }
    };

    // Starting candidates in order: linear solve, the caller's pose, the current pose.
    std::vector<CalibrationParameters> candidates;
    CalibrationParameters linear{};
    // Fewer than six usable points leave the linear system under-determined.
    if (problem.pointCount() >= kMinimumPoints && calibrationLinearStart(problem, &linear))
        candidates.push_back(linear);
    if (request.startPose) {
        CalibrationParameters start = initial;
        const ProjectorCalibrationPose &pose = *request.startPose;
        setPose(start, pose.translate[0], pose.translate[1], pose.translate[2], pose.rotate[0], pose.rotate[1],
                pose.rotate[2]);
        candidates.push_back(start);
    }
    candidates.push_back(initial);

    double bestCost = std::numeric_limits<double>::max();
    int best = -1;
    Eigen::VectorXd scratch;
    for (size_t i = 0; i < candidates.size(); ++i) {
        holdFixed(candidates[i]);
        const double c = problem.cost(candidates[i], scratch);
        if (std::isfinite(c) && c < bestCost) {
            bestCost = c;
            best = int(i);
        }
    }
    if (best < 0)
        return fail(errorMessage, noStartMessage());

    CalibrationRefinement refined;
    if (!refineCalibration(problem, candidates[size_t(best)], initial, active,
                           projectorCalibrationIterationBudget(request), &refined))
        return fail(errorMessage, jacobianMessage());

    const CalibrationParameters &p = refined.parameters;
    ProjectorCalibrationResult r;
    r.valid = true;
    r.pointCount = problem.pointCount();
    r.rmsError = std::sqrt(refined.cost / std::max(problem.pointCount(), 1));
    r.iterations = refined.acceptedIterations;
    r.evaluatedIterations = refined.iterations;
    r.imageWidth = w;
    r.imageHeight = h;
    r.pose.translate = {p[CalibrationPositionX], p[CalibrationPositionY], p[CalibrationPositionZ]};
    r.pose.rotate = {p[CalibrationRotation1], p[CalibrationRotation2], p[CalibrationRotation3]};
    r.focalLengthPixels = std::clamp(std::exp(p[CalibrationLogFocal]), problem.focalMin(), problem.focalMax());
    r.principalPointX = p[CalibrationPrincipalX];
    r.principalPointY = p[CalibrationPrincipalY];
    r.throwRatioAdjusted = request.adjust_throw_ratio;
    r.lensShiftAdjusted = request.adjust_lens_shift;
    const Eigen::Vector2d shift =
        vg::scene::lensShiftPercentFromPrincipalPoint({r.principalPointX, r.principalPointY}, w, h);
    r.throwRatio = r.throwRatioAdjusted ? vg::scene::throwRatioFromFocalPixels(r.focalLengthPixels, w)
                                        : double(projector.throw_rate);
    r.lensShiftX = r.lensShiftAdjusted ? shift.x() : double(projector.lens_shift_x);
    r.lensShiftY = r.lensShiftAdjusted ? shift.y() : double(projector.lens_shift_y);
    r.horizontalFovDegrees = 2.0 * std::atan(w / (2.0 * r.focalLengthPixels)) * 180.0 / M_PI;

    problem.residuals(p, scratch);
    r.residuals.reserve(problem.pointCount());
    for (int i = 0; i < problem.pointCount(); ++i) {
        ProjectorCalibrationResidual residual;
        residual.pointIndex = sourceIndex[size_t(i)];
        // Back in the real image's directions, like the picked points.
        residual.du = frame.flipU ? -scratch[2 * i] : scratch[2 * i];
        residual.dv = frame.flipV ? -scratch[2 * i + 1] : scratch[2 * i + 1];
        residual.distance = std::hypot(residual.du, residual.dv);
        r.residuals.append(residual);
    }
    if (result)
        *result = r;
    return true;
}

} // namespace

bool solveProjectorCalibration(const GuideObject &projector, const QVector<GuideMatchedPoint> &points,
                               const ProjectorCalibrationRequest &request, ProjectorCalibrationResult *result,
                               QString *errorMessage)
{
    return solvePoints(projector, points, request, result, errorMessage);
}

bool solveProjectorCalibration(const GuideObject &projector, const QVector<CalibrationObservation> &points,
                               const ProjectorCalibrationRequest &request, ProjectorCalibrationResult *result,
                               QString *errorMessage)
{
    return solvePoints(projector, points, request, result, errorMessage);
}

void applyProjectorCalibration(GuideObject &projector, const ProjectorCalibrationResult &result)
{
    if (!result.valid)
        return;
    projector.translate_x = float(result.pose.translate[0]);
    projector.translate_y = float(result.pose.translate[1]);
    projector.translate_z = float(result.pose.translate[2]);
    projector.rotate_x = float(result.pose.rotate[0]);
    projector.rotate_y = float(result.pose.rotate[1]);
    projector.rotate_z = float(result.pose.rotate[2]);
    if (result.throwRatioAdjusted)
        projector.throw_rate = float(result.throwRatio);
    if (result.lensShiftAdjusted) {
        projector.lens_shift_x = float(result.lensShiftX);
        projector.lens_shift_y = float(result.lensShiftY);
    }
}

bool calibrateProjector(QVector<GuideObject> &objects, const QVector<GuideMatchedPoint> &points,
                        const ProjectorCalibrationRequest &request, ProjectorCalibrationResult *result,
                        QString *errorMessage)
{
    if (request.projectorIndex < 0 || request.projectorIndex >= objects.size())
        return fail(errorMessage, noProjectorMessage());
    const GuideObject &projector = objects.at(request.projectorIndex);
    ProjectorCalibrationResult solved;
    if (!solveProjectorCalibration(projector, points, request, &solved, errorMessage))
        return false;
    if (request.apply)
        applyProjectorCalibration(objects[request.projectorIndex], solved);
    if (result)
        *result = solved;
    return true;
}

bool calibrateProjector(Guide3DViewSettings &view, const QVector<GuideMatchedPoint> &points,
                        const ProjectorCalibrationRequest &request, ProjectorCalibrationResult *result,
                        QString *errorMessage)
{
    return calibrateProjector(view.objects, points, request, result, errorMessage);
}

bool calibrateProjector(SceneModel &scene, const QVector<GuideMatchedPoint> &points,
                        const ProjectorCalibrationRequest &request, ProjectorCalibrationResult *result,
                        QString *errorMessage)
{
    if (!scene.isValidIndex(request.projectorIndex))
        return fail(errorMessage, noProjectorMessage());
    ProjectorCalibrationResult solved;
    if (!solveProjectorCalibration(scene.object(request.projectorIndex), points, request, &solved, errorMessage))
        return false;
    if (request.apply) {
        GuideObject fitted = scene.object(request.projectorIndex);
        applyProjectorCalibration(fitted, solved);
        scene.replaceObject(request.projectorIndex, fitted);
    }
    if (result)
        *result = solved;
    return true;
}
