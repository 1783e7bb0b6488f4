#include "calibration/CalibrationMatrixFile.h"

#include "scene/LensModel.h"

#include <QCoreApplication>
#include <QSaveFile>
#include <QStringList>

#include <cmath>

namespace {

Eigen::Matrix4d lensProjectionWithFlips(const vg::scene::LensModel &lens)
{
    Eigen::Matrix4d projection = lens.projectionMatrix(kCalibrationMatrixNear, kCalibrationMatrixFar);
    const vg::scene::LensFrameConstants frame = vg::scene::lensFrameConstants(lens.intrinsics());
    // The lens matrix gives NDC before the flips; the real image is mirrored by them.
    if (frame.flipU)
        projection.row(0) *= -1.0;
    if (frame.flipV)
        projection.row(1) *= -1.0;
    return projection;
}

Eigen::Matrix4d lensToWorld(const vg::scene::LensPose &pose)
{
    Eigen::Matrix4d m = Eigen::Matrix4d::Identity();
    m.block<3, 3>(0, 0) = pose.rotation;
    m.block<3, 1>(0, 3) = pose.position;
    return m;
}

QString joinValues(const Eigen::Matrix4d &m, bool columnOrder)
{
    QStringList values;
    for (int a = 0; a < 4; ++a) {
        for (int b = 0; b < 4; ++b)
            values.append(formatCalibrationMatrixValue(columnOrder ? m(b, a) : m(a, b)));
    }
    return values.join(QLatin1Char(' '));
}

} // namespace

CalibrationMatrices calibrationMatricesOf(const GuideObject &projector)
{
    const vg::scene::LensModel lens(vg::scene::lensIntrinsicsOf(projector), vg::scene::lensPoseOf(projector),
                                    kCalibrationMatrixFar);
    CalibrationMatrices m;
    m.projection = lensProjectionWithFlips(lens);
    m.model = lensToWorld(lens.pose());
    return m;
}

CalibrationMatrices calibrationMatricesOf(const GuideObject &projector, const ProjectorCalibrationResult &fit)
{
    GuideObject fitted = projector;
    applyProjectorCalibration(fitted, fit);
    // The record keeps single precision; the matrices take the fit's own values.
    vg::scene::LensIntrinsics intrinsics = vg::scene::lensIntrinsicsOf(fitted);
    if (fit.valid) {
        intrinsics.throwRatio = fit.throwRatio;
        intrinsics.lensShiftX = fit.lensShiftX;
        intrinsics.lensShiftY = fit.lensShiftY;
    }
    const vg::scene::LensPose pose = fit.valid
        ? vg::scene::lensPoseFromEuler({fit.pose.translate[0], fit.pose.translate[1], fit.pose.translate[2]},
                                       {fit.pose.rotate[0], fit.pose.rotate[1], fit.pose.rotate[2]})
        : vg::scene::lensPoseOf(fitted);
    const vg::scene::LensModel lens(intrinsics, pose, kCalibrationMatrixFar);
    CalibrationMatrices m;
    m.projection = lensProjectionWithFlips(lens);
    m.model = lensToWorld(lens.pose());
    return m;
}

QString formatCalibrationMatrixValue(double value)
{
    if (!std::isfinite(value))
        return QStringLiteral("0.0");
    if (std::abs(value) < 1e-10)
        return QStringLiteral("0.0");
    const double whole = std::round(value);
    if (std::abs(value - whole) <= 1e-10)
        return QString::number(whole, 'f', 1);
    QString text = QString::number(value, 'g', 8);
    // Eight digits can round to a whole number; keep it reading as a decimal value.
    if (!text.contains(QLatin1Char('.')) && !text.contains(QLatin1Char('e')))
        text += QStringLiteral(".0");
    return text;
}

QString calibrationMatrixFileText(const CalibrationMatrices &matrices)
{
    QString text;
    auto line = [&text](const char *name, const Eigen::Matrix4d &m, bool columnOrder) {
        text += QStringLiteral("%1 %2\n").arg(QLatin1String(name), joinValues(m, columnOrder));
    };
    line("Projection_Matrix", matrices.projection, false);
    line("Model_Matrix", matrices.model, false);
    line("Projection_Matrix_Transposed", matrices.projection, true);
    line("Model_Matrix_Transposed", matrices.model, true);
    return text;
}

bool writeCalibrationMatrixFile(const QString &path, const CalibrationMatrices &matrices, QString *error)
{
    QSaveFile file(path);
    const QByteArray bytes = calibrationMatrixFileText(matrices).toUtf8();
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit()) {
        if (error)
            *error = QCoreApplication::translate("CalibrationMatrixFile", "Could not write matrix file.");
        return false;
    }
    return true;
}
