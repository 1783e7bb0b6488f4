#include "calibration/CalibrationDiagnostics.h"

#include <Eigen/Eigenvalues>

#include <QCoreApplication>

#include <algorithm>
#include <cmath>

namespace {

constexpr double kCoplanarRatio = 0.02;
constexpr double kCoverageFraction = 0.1;

bool finitePoint(const GuideMatchedPoint &p)
{
    return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z) && std::isfinite(p.u)
           && std::isfinite(p.v);
}

} // namespace

bool pointsNearlyCoplanar(const QVector<GuideMatchedPoint> &points)
{
    Eigen::Vector3d mean = Eigen::Vector3d::Zero();
    int n = 0;
    for (const GuideMatchedPoint &p : points) {
        if (finitePoint(p)) {
            mean += Eigen::Vector3d(p.x, p.y, p.z);
            ++n;
        }
    }
    if (n < 4)
        return true;
    mean /= n;
    Eigen::Matrix3d covariance = Eigen::Matrix3d::Zero();
    for (const GuideMatchedPoint &p : points) {
        if (!finitePoint(p))
            continue;
        const Eigen::Vector3d d = Eigen::Vector3d(p.x, p.y, p.z) - mean;
        covariance += d * d.transpose();
    }
    const Eigen::SelfAdjointEigenSolver<Eigen::Matrix3d> solver(covariance / n);
    if (solver.info() != Eigen::Success)
        return true;
    const Eigen::Vector3d extents = solver.eigenvalues().cwiseMax(0.0).cwiseSqrt();   // ascending
    return extents.z() <= 0.0 || extents.x() < kCoplanarRatio * extents.z();
}

bool pointsCoverLittleOfImage(const QVector<GuideMatchedPoint> &points, int imageWidth, int imageHeight)
{
    double minU = 0, maxU = 0, minV = 0, maxV = 0;
    bool any = false;
    for (const GuideMatchedPoint &p : points) {
        if (!finitePoint(p))
            continue;
        if (!any) {
            minU = maxU = p.u;
            minV = maxV = p.v;
            any = true;
        }
        minU = std::min(minU, double(p.u));
        maxU = std::max(maxU, double(p.u));
        minV = std::min(minV, double(p.v));
        maxV = std::max(maxV, double(p.v));
    }
    if (!any)
        return true;
    const double area = double(std::max(1, imageWidth)) * double(std::max(1, imageHeight));
    const double w = std::clamp(maxU, 0.0, double(imageWidth)) - std::clamp(minU, 0.0, double(imageWidth));
    const double h = std::clamp(maxV, 0.0, double(imageHeight)) - std::clamp(minV, 0.0, double(imageHeight));
    return w * h < kCoverageFraction * area;
}

CalibrationDiagnostics diagnoseCalibration(const GuideObject &projector, const QVector<GuideMatchedPoint> &points,
                                           const ProjectorCalibrationRequest &request,
                                           const ProjectorCalibrationResult &fit)
{
    CalibrationDiagnostics d;
    d.rms = fit.rmsError;
    for (const ProjectorCalibrationResidual &r : fit.residuals) {
        if (d.worstPoint < 0 || r.distance > d.worstResidual) {
            d.worstPoint = r.pointIndex;
            d.worstResidual = r.distance;
        }
    }
    d.nearlyCoplanar = pointsNearlyCoplanar(points);
    d.smallCoverage = pointsCoverLittleOfImage(points, fit.imageWidth, fit.imageHeight);

    if (points.size() < 7 || !(fit.rmsError >= kLeaveOneOutFloorPixels))
        return d;
    ProjectorCalibrationRequest without = request;
    without.apply = false;
    without.imageSize = QSize(fit.imageWidth, fit.imageHeight);
    without.startPose = fit.pose;
    double best = fit.rmsError;
    for (int i = 0; i < points.size(); ++i) {
        QVector<GuideMatchedPoint> rest = points;
        rest.removeAt(i);
        ProjectorCalibrationResult r;
        if (!solveProjectorCalibration(projector, rest, without, &r, nullptr))
            continue;
        if (r.rmsError < 0.5 * fit.rmsError && r.rmsError < best) {
            best = r.rmsError;
            d.mismatchedPoint = i;
            d.rmsWithoutMismatched = r.rmsError;
        }
    }
    return d;
}

QString calibrationMismatchText(int pointNumber, double rms, double rmsWithout)
{
    return QCoreApplication::translate("CalibrationDiagnostics",
                                       "Point %1 looks mismatched: without it the RMS drops from %2 px to %3 px.")
        .arg(pointNumber)
        .arg(rms, 0, 'f', 2)
        .arg(rmsWithout, 0, 'f', 2);
}

QStringList calibrationWarnings(const CalibrationDiagnostics &diagnostics)
{
    QStringList warnings;
    if (diagnostics.nearlyCoplanar)
        warnings << QCoreApplication::translate(
            "CalibrationDiagnostics", "The used points are nearly coplanar: add points at other depths for a reliable fit.");
    if (diagnostics.smallCoverage)
        warnings << QCoreApplication::translate(
            "CalibrationDiagnostics", "The used points cover less than a tenth of the image: add points nearer its edges.");
    return warnings;
}
