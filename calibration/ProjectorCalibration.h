#pragma once

#include "calibration/CalibrationSolver.h"
#include "scene/Guide3DViewSettings.h"
#include "scene/GuideObject.h"
#include "scene/SceneModel.h"

#include <QSize>
#include <QString>
#include <QVector>

#include <array>
#include <optional>

// A projector pose in the record's own units: position in metres, the three stored
// rotation angles in degrees.
struct ProjectorCalibrationPose {
    std::array<double, 3> translate{};
    std::array<double, 3> rotate{};
    bool operator==(const ProjectorCalibrationPose &) const = default;
};

// What the caller asks of one calibration run; read once at the start.
struct ProjectorCalibrationRequest {
    int projectorIndex = -1;                 // index into the scene's object list
    QSize imageSize;                         // empty: the projector's output resolution
    bool quick = false;                      // with full off: 32 iterations, else 120
    bool full = false;
    bool apply = false;                      // write the fitted values into the projector
    bool adjust_throw_ratio = true;          // solve the focal length, else hold it
    bool adjust_lens_shift = true;           // solve the principal point, else hold it
    std::optional<ProjectorCalibrationPose> startPose;   // one more starting candidate
};

// How far one used point is from where the fitted projector shows it, in pixels
// (predicted minus observed).
struct ProjectorCalibrationResidual {
    int pointIndex = -1;                     // index in the point list handed in
    double du = 0.0;
    double dv = 0.0;
    double distance = 0.0;
};

struct ProjectorCalibrationResult {
    bool valid = false;
    double rmsError = 0.0;                   // pixels, over the used points
    int iterations = 0;                      // accepted refinement steps
    int evaluatedIterations = 0;             // accepted, rejected and failed steps
    int pointCount = 0;                      // points used (finite ones)
    int imageWidth = 1;
    int imageHeight = 1;
    ProjectorCalibrationPose pose;
    double throwRatio = 1.0;
    double lensShiftX = 0.0;                 // percent of the image width
    double lensShiftY = 0.0;                 // percent of the image height
    double focalLengthPixels = 0.0;
    double principalPointX = 0.0;
    double principalPointY = 0.0;
    double horizontalFovDegrees = 0.0;       // 2·atan(W / 2f)
    bool throwRatioAdjusted = true;
    bool lensShiftAdjusted = true;
    QVector<ProjectorCalibrationResidual> residuals;   // one per used point, in order
};

// Iteration budget of a request: 32 for a quick run (quick on, full off), else 120.
int projectorCalibrationIterationBudget(const ProjectorCalibrationRequest &request);

// Fits a projector record to the points. Never changes the record (the request's apply
// flag is for the scene-level operations). False with one of the user-visible failure
// texts in message.
bool solveProjectorCalibration(const GuideObject &projector, const QVector<GuideMatchedPoint> &points,
                               const ProjectorCalibrationRequest &request, ProjectorCalibrationResult *result,
                               QString *message);
// The same for points already in double precision (scripts, tests).
bool solveProjectorCalibration(const GuideObject &projector, const QVector<CalibrationObservation> &points,
                               const ProjectorCalibrationRequest &request, ProjectorCalibrationResult *result,
                               QString *message);

// Writes a valid result into a projector record: pose always, throw ratio and lens shift
// only when they were adjusted.
void applyProjectorCalibration(GuideObject &projector, const ProjectorCalibrationResult &result);

// The scene-level operation the calibration window and the 3D view call: checks the index
// and kind, fits, and when request.apply is set writes the result into the projector.
// On failure the objects are left untouched.
bool calibrateProjector(QVector<GuideObject> &objects, const QVector<GuideMatchedPoint> &points,
                        const ProjectorCalibrationRequest &request, ProjectorCalibrationResult *result,
                        QString *message);
// The same on a 3D view's objects.
bool calibrateProjector(Guide3DViewSettings &view, const QVector<GuideMatchedPoint> &points,
                        const ProjectorCalibrationRequest &request, ProjectorCalibrationResult *result,
                        QString *message);
// The same on the 3D view's scene model: an applied fit is one undoable step.
bool calibrateProjector(SceneModel &scene, const QVector<GuideMatchedPoint> &points,
                        const ProjectorCalibrationRequest &request, ProjectorCalibrationResult *result,
                        QString *message);
