#pragma once

#include "calibration/ProjectorCalibration.h"

#include <QString>
#include <QStringList>
#include <QVector>

// What an installer wants to know after a fit beyond the RMS: which point fits worst,
// whether one point alone spoils the fit, and whether the points can support a fit at all.
struct CalibrationDiagnostics {
    int worstPoint = -1;             // index into the points handed in
    double worstResidual = 0.0;      // pixels
    int mismatchedPoint = -1;        // leave-one-out finding, -1 none
    double rms = 0.0;
    double rmsWithoutMismatched = 0.0;
    bool nearlyCoplanar = false;
    bool smallCoverage = false;
};

// A fit under this RMS is good enough that no single point is called mismatched.
constexpr double kLeaveOneOutFloorPixels = 0.5;

// Worst residual of a fit, coplanarity and image coverage of the points, and the
// leave-one-out check: each point is left out in turn (the fit's pose is one more start);
// a point whose removal lowers the RMS by more than half is named (the one that lowers it
// most). Needs at least seven points for the check.
CalibrationDiagnostics diagnoseCalibration(const GuideObject &projector, const QVector<GuideMatchedPoint> &points,
                                           const ProjectorCalibrationRequest &request,
                                           const ProjectorCalibrationResult &fit);

// Spread of the scene points: the smallest principal extent against the largest is below
// 2 %; and the image points' bounding box covers less than a tenth of the image.
bool pointsNearlyCoplanar(const QVector<GuideMatchedPoint> &points);
bool pointsCoverLittleOfImage(const QVector<GuideMatchedPoint> &points, int imageWidth, int imageHeight);

// "Point %1 looks mismatched: ..." with the point's 1-based number as the caller shows it.
QString calibrationMismatchText(int pointNumber, double rms, double rmsWithout);
// The coplanarity and coverage warnings that apply.
QStringList calibrationWarnings(const CalibrationDiagnostics &diagnostics);
