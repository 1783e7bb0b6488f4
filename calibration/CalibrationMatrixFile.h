#pragma once

#include "calibration/ProjectorCalibration.h"
#include "scene/GuideObject.h"

#include <Eigen/Core>

#include <QString>

// The projection-matrix text file: four lines, each a name and sixteen values.
//
// "Projection_Matrix" is the OpenGL clip matrix of the lens frame (near 0.1 m, far 1000 m)
// with the projector's flips and 180° turn applied, so NDC x and y run along the real
// projector's image; "Model_Matrix" places the lens frame in the world (lens to world).
// Both are written row by row; the "_Transposed" lines hold the same matrices column by
// column.
struct CalibrationMatrices {
    Eigen::Matrix4d projection = Eigen::Matrix4d::Identity();
    Eigen::Matrix4d model = Eigen::Matrix4d::Identity();
};

constexpr double kCalibrationMatrixNear = 0.1;
constexpr double kCalibrationMatrixFar = 1000.0;

// The matrices of a projector record as it stands.
CalibrationMatrices calibrationMatricesOf(const GuideObject &projector);
// The matrices of a fitted result, on the record it was fitted to.
CalibrationMatrices calibrationMatricesOf(const GuideObject &projector, const ProjectorCalibrationResult &fit);

// "0.0" below 1e-10 in magnitude, one decimal within 1e-10 of a whole number, otherwise
// eight significant digits.
QString formatCalibrationMatrixValue(double value);
// The whole file text, four lines ending in "\n".
QString calibrationMatrixFileText(const CalibrationMatrices &matrices);
// Writes it through a temporary file; the old file stays whole on failure, which reports
// "Could not write matrix file.".
bool writeCalibrationMatrixFile(const QString &path, const CalibrationMatrices &matrices, QString *error);
