#include "calibration/CalibrationMatrixFile.h"

#include "SyntheticCalibrationScene.h"

#include "scene/LensModel.h"
#include "scene/Transform.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <random>

namespace {

// A reader of the file written independently of the writer: four named lines of sixteen
// numbers each, every token checked against the three formatting rules.
struct MatrixFile {
    QStringList names;
    std::vector<Eigen::Matrix4d> rowMajor;   // each line read row by row
    QStringList tokens;
};

bool readMatrixFile(const QString &path, MatrixFile *out, QString *why)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        *why = QStringLiteral("cannot open");
        return false;
    }
    const QString text = QString::fromUtf8(file.readAll());
    if (!text.endsWith(QLatin1Char('\n'))) {
        *why = QStringLiteral("no final newline");
        return false;
    }
    const QStringList lines = text.chopped(1).split(QLatin1Char('\n'));
    if (lines.size() != 4) {
        *why = QStringLiteral("%1 lines").arg(lines.size());
        return false;
    }
    for (const QString &line : lines) {
        const QStringList parts = line.split(QLatin1Char(' '));
        if (parts.size() != 17) {
            *why = QStringLiteral("%1 fields in \"%2\"").arg(parts.size()).arg(line);
            return false;
        }
        out->names << parts.first();
        Eigen::Matrix4d m;
        for (int i = 0; i < 16; ++i) {
            bool ok = false;
            m(i / 4, i % 4) = parts[i + 1].toDouble(&ok);
            if (!ok) {
                *why = QStringLiteral("not a number: %1").arg(parts[i + 1]);
                return false;
            }
            out->tokens << parts[i + 1];
        }
        out->rowMajor.push_back(m);
    }
    return true;
}

int significantDigits(QString token)
{
    token.remove(QLatin1Char('-'));
    const int e = token.indexOf(QLatin1Char('e'));
    if (e >= 0)
        token.truncate(e);
    token.remove(QLatin1Char('.'));
    while (token.startsWith(QLatin1Char('0')))
        token.remove(0, 1);
    return int(token.size());
}

GuideObject sampleProjector(bool flipH, bool flipV, bool turn)
{
    GuideObject p;
    p.guide_index = KindProjector;
    p.projector_resolution_width = 1920;
    p.projector_resolution_height = 1080;
    p.throw_rate = 1.37f;
    p.lens_shift_x = 6.0f;
    p.lens_shift_y = 22.0f;
    p.projector_flip_h = flipH;
    p.projector_flip_v = flipV;
    p.projector_rotate_180 = turn;
    vg::scene::setObjectPose(p, {1.25, 2.5, 6.0}, lookRotation(Eigen::Vector3d(-1.0, -2.0, -6.0), 7.0));
    return p;
}

} // namespace

TEST(CalibrationMatrixFormat, ValuesFollowTheThreeRules)
{
    EXPECT_EQ(formatCalibrationMatrixValue(0.0), QStringLiteral("0.0"));
    EXPECT_EQ(formatCalibrationMatrixValue(-0.0), QStringLiteral("0.0"));
    EXPECT_EQ(formatCalibrationMatrixValue(5e-11), QStringLiteral("0.0"));
    EXPECT_EQ(formatCalibrationMatrixValue(-9.9e-11), QStringLiteral("0.0"));
    EXPECT_EQ(formatCalibrationMatrixValue(1.0), QStringLiteral("1.0"));
    EXPECT_EQ(formatCalibrationMatrixValue(-2.0), QStringLiteral("-2.0"));
    EXPECT_EQ(formatCalibrationMatrixValue(7.0 + 5e-11), QStringLiteral("7.0"));
    EXPECT_EQ(formatCalibrationMatrixValue(1234567.0), QStringLiteral("1234567.0"));
    // Just outside the integer tolerance: eight significant digits, still read as a decimal.
    EXPECT_EQ(formatCalibrationMatrixValue(3.0 + 1e-8), QStringLiteral("3.0"));
    EXPECT_EQ(formatCalibrationMatrixValue(12345678.25), QStringLiteral("12345678.0"));
    EXPECT_EQ(formatCalibrationMatrixValue(3.14159265358979), QStringLiteral("3.1415927"));
    EXPECT_EQ(formatCalibrationMatrixValue(-0.000123456789), QStringLiteral("-0.00012345679"));
    EXPECT_EQ(formatCalibrationMatrixValue(2.5e-7), QStringLiteral("2.5e-07"));
}

TEST(CalibrationMatrixFile, FourLinesOfSixteenWithRealTransposesReadBackByAnIndependentReader)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("matrix.txt"));
    const GuideObject projector = sampleProjector(false, false, false);
    const CalibrationMatrices m = calibrationMatricesOf(projector);
    QString error;
    ASSERT_TRUE(writeCalibrationMatrixFile(path, m, &error)) << error.toStdString();

    MatrixFile file;
    QString why;
    ASSERT_TRUE(readMatrixFile(path, &file, &why)) << why.toStdString();
    EXPECT_EQ(file.names, QStringList({QStringLiteral("Projection_Matrix"), QStringLiteral("Model_Matrix"),
                                       QStringLiteral("Projection_Matrix_Transposed"),
                                       QStringLiteral("Model_Matrix_Transposed")}));
    // The transposed lines really are the transposes, and not just the same numbers.
    EXPECT_TRUE(file.rowMajor[2].isApprox(file.rowMajor[0].transpose(), 1e-12));
    EXPECT_TRUE(file.rowMajor[3].isApprox(file.rowMajor[1].transpose(), 1e-12));
    EXPECT_FALSE(file.rowMajor[1].isApprox(file.rowMajor[3], 1e-3));
    EXPECT_TRUE(file.rowMajor[0].isApprox(m.projection, 1e-7));
    EXPECT_TRUE(file.rowMajor[1].isApprox(m.model, 1e-7));
    // The model matrix places the lens: its last column is the projector's position.
    EXPECT_NEAR(file.rowMajor[1](0, 3), 1.25, 1e-7);
    EXPECT_NEAR(file.rowMajor[1](1, 3), 2.5, 1e-7);
    EXPECT_NEAR(file.rowMajor[1](2, 3), 6.0, 1e-7);
    EXPECT_EQ(file.rowMajor[1](3, 3), 1.0);

    static const QRegularExpression oneDecimal(QStringLiteral("^-?\\d+\\.\\d$"));
    for (const QString &token : std::as_const(file.tokens)) {
        const double v = token.toDouble();
        if (token == QStringLiteral("0.0"))
            continue;
        if (std::abs(v - std::round(v)) <= 1e-10)
            EXPECT_TRUE(oneDecimal.match(token).hasMatch()) << token.toStdString();
        else
            EXPECT_LE(significantDigits(token), 8) << token.toStdString();
    }
}

TEST(CalibrationMatrixFile, ProjectionTimesInverseModelLandsOnTheFlippedPixel)
{
    // Each flip combination: the file's matrices take a world point to the real image pixel.
    for (int flags = 0; flags < 8; ++flags) {
        const GuideObject projector = sampleProjector(flags & 1, flags & 2, flags & 4);
        const CalibrationMatrices m = calibrationMatricesOf(projector);
        const Eigen::Vector3d world(0.3, 0.4, -0.2);
        const Eigen::Vector4d clip = m.projection * m.model.inverse() * world.homogeneous();
        const double u = (clip.x() / clip.w() + 1.0) / 2.0;
        const double v = (1.0 - clip.y() / clip.w()) / 2.0;
        const vg::scene::LensProjection expected = vg::scene::projectWorldPoint(
            vg::scene::lensIntrinsicsOf(projector), vg::scene::lensPoseOf(projector), world);
        EXPECT_NEAR(u, expected.u, 1e-9) << flags;
        EXPECT_NEAR(v, expected.v, 1e-9) << flags;
    }
}

TEST(CalibrationMatrixFile, FromAFitUsesTheFittedLensAndAFailedWriteKeepsTheOldFile)
{
    std::mt19937 rng(77);
    SyntheticSceneOptions options;
    options.pointCount = 20;
    const SyntheticCalibrationScene scene = makeSyntheticScene(rng, options);
    GuideObject start = perturbedProjector(scene.truth, rng, 0.2, 2.0);
    ProjectorCalibrationRequest request;
    request.full = true;
    ProjectorCalibrationResult fit;
    QString error;
    ASSERT_TRUE(solveProjectorCalibration(start, scene.points, request, &fit, &error)) << error.toStdString();
    const CalibrationMatrices fitted = calibrationMatricesOf(start, fit);
    const CalibrationMatrices truth = calibrationMatricesOf(scene.truth);
    EXPECT_TRUE(fitted.model.isApprox(truth.model, 1e-4));
    EXPECT_TRUE(fitted.projection.isApprox(truth.projection, 1e-3));
    EXPECT_FALSE(calibrationMatricesOf(start).model.isApprox(truth.model, 1e-3));

    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("keep.txt"));
    ASSERT_TRUE(writeCalibrationMatrixFile(path, truth, &error));
    const QString missingFolder = dir.filePath(QStringLiteral("no/such/folder/matrix.txt"));
    EXPECT_FALSE(writeCalibrationMatrixFile(missingFolder, fitted, &error));
    EXPECT_EQ(error, QStringLiteral("Could not write matrix file."));
    QFile kept(path);
    ASSERT_TRUE(kept.open(QIODevice::ReadOnly));
    EXPECT_EQ(QString::fromUtf8(kept.readAll()), calibrationMatrixFileText(truth));
}
