#include "cli/CliTestSupport.h"

#include "calibration/SyntheticCalibrationScene.h"

#include "project/ProjectFile.h"
#include "scene/LensModel.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <random>

namespace {

QString csvOf(const QVector<GuideMatchedPoint> &points)
{
    QString text = QStringLiteral("x,y,z,u,v\n");
    for (const GuideMatchedPoint &p : points)
        text += QStringLiteral("%1,%2,%3,%4,%5\n")
                    .arg(double(p.x), 0, 'g', 9)
                    .arg(double(p.y), 0, 'g', 9)
                    .arg(double(p.z), 0, 'g', 9)
                    .arg(double(p.u), 0, 'g', 9)
                    .arg(double(p.v), 0, 'g', 9);
    return text;
}

// The first two lines of the file, read row by row.
bool readProjectionAndModel(const QByteArray &bytes, Eigen::Matrix4d *projection, Eigen::Matrix4d *model)
{
    const QList<QByteArray> lines = bytes.split('\n');
    if (lines.size() != 5 || !lines[4].isEmpty())
        return false;
    for (int l = 0; l < 2; ++l) {
        const QList<QByteArray> parts = lines[l].split(' ');
        if (parts.size() != 17)
            return false;
        Eigen::Matrix4d &m = l == 0 ? *projection : *model;
        for (int i = 0; i < 16; ++i)
            m(i / 4, i % 4) = parts[i + 1].toDouble();
    }
    return lines[0].startsWith("Projection_Matrix ") && lines[1].startsWith("Model_Matrix ");
}

// Where the file's matrices put a world point, as (u, v) of the image.
Eigen::Vector2d imagePointOf(const Eigen::Matrix4d &projection, const Eigen::Matrix4d &model, const Eigen::Vector3d &world)
{
    const Eigen::Vector4d clip = projection * model.inverse() * world.homogeneous();
    return {(clip.x() / clip.w() + 1.0) / 2.0, (1.0 - clip.y() / clip.w()) / 2.0};
}

class ExportMatrixCommand : public ::testing::Test
{
protected:
    void SetUp() override
    {
        std::mt19937 rng(123);
        SyntheticSceneOptions options;
        options.pointCount = 16;
        scene = makeSyntheticScene(rng, options);
        scene.truth.projector_flip_h = true;
        // The points as the flipped projector shows them.
        for (GuideMatchedPoint &p : scene.points)
            p.u = float(scene.truth.projector_resolution_width - double(p.u));
        start = perturbedProjector(scene.truth, rng, 0.3, 3.0);
        project = saveWith(start, QStringLiteral("start.vgs"));
        pointsFile = dir.filePath(QStringLiteral("points.csv"));
        writeFileBytes(pointsFile, csvOf(scene.points).toUtf8());
    }

    QString saveWith(const GuideObject &projector, const QString &name)
    {
        ProjectDocument doc;
        Guide3DViewSettings view = Guide3DViewSettings::created();
        GuideObject plane;
        plane.name = QStringLiteral("Wall");
        view.objects = {plane, projector};
        doc.views = {view};
        doc.activeView = view;
        const QString path = dir.filePath(name);
        QString error;
        EXPECT_TRUE(saveProjectDocument(path, doc, &error)) << error.toStdString();
        return path;
    }

    QTemporaryDir dir;
    SyntheticCalibrationScene scene;
    GuideObject start;
    QString project;
    QString pointsFile;
};

} // namespace

TEST_F(ExportMatrixCommand, FromFittedPointsTheMatricesShowTheRealFlippedProjector)
{
    const QString out = dir.filePath(QStringLiteral("matrix.txt"));
    const CliRun run = runCli({QStringLiteral("export-matrix"), project, QStringLiteral("--view"), QStringLiteral("0"),
                               QStringLiteral("--projector"), QStringLiteral("1"), QStringLiteral("--points"), pointsFile,
                               QStringLiteral("-o"), out});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_TRUE(run.out.startsWith(QStringLiteral("Matrix exported from calibration points: %1 (RMS 0.0").arg(out)))
        << run.out.toStdString();
    Eigen::Matrix4d projection, model;
    ASSERT_TRUE(readProjectionAndModel(readFileBytes(out), &projection, &model));
    for (const GuideMatchedPoint &p : scene.points) {
        const Eigen::Vector2d uv = imagePointOf(projection, model, {p.x, p.y, p.z});
        EXPECT_NEAR(uv.x() * scene.truth.projector_resolution_width, p.u, 0.05);
        EXPECT_NEAR(uv.y() * scene.truth.projector_resolution_height, p.v, 0.05);
    }
}

TEST_F(ExportMatrixCommand, WithoutPointsTheProjectorsOwnTransformIsWritten)
{
    const QString out = dir.filePath(QStringLiteral("own.txt"));
    const CliRun run = runCli({QStringLiteral("export-matrix"), project, QStringLiteral("--view"), QStringLiteral("0"),
                               QStringLiteral("--projector"), QStringLiteral("1"), QStringLiteral("-o"), out});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_EQ(run.out.trimmed(), QStringLiteral("Matrix exported from projector transform: %1").arg(out));
    Eigen::Matrix4d projection, model;
    ASSERT_TRUE(readProjectionAndModel(readFileBytes(out), &projection, &model));
    const Eigen::Vector3d world(scene.points[0].x, scene.points[0].y, scene.points[0].z);
    const vg::scene::LensProjection expected =
        vg::scene::projectWorldPoint(vg::scene::lensIntrinsicsOf(start), vg::scene::lensPoseOf(start), world);
    const Eigen::Vector2d uv = imagePointOf(projection, model, world);
    EXPECT_NEAR(uv.x(), expected.u, 1e-6);
    EXPECT_NEAR(uv.y(), expected.v, 1e-6);
}

TEST_F(ExportMatrixCommand, BadArgumentsAndNonProjectorsAreRefusedWithoutWriting)
{
    const QString out = dir.filePath(QStringLiteral("never.txt"));
    CliRun run = runCli({QStringLiteral("export-matrix"), project, QStringLiteral("--view"), QStringLiteral("0"),
                         QStringLiteral("--projector"), QStringLiteral("1")});
    EXPECT_EQ(run.exitCode, 2);
    run = runCli({QStringLiteral("export-matrix"), project, QStringLiteral("--view"), QStringLiteral("0"),
                  QStringLiteral("--projector"), QStringLiteral("0"), QStringLiteral("-o"), out});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(run.err.contains(QStringLiteral("Projector Calibration can only be applied to projector objects.")));
    run = runCli({QStringLiteral("export-matrix"), project, QStringLiteral("--view"), QStringLiteral("3"),
                  QStringLiteral("--projector"), QStringLiteral("1"), QStringLiteral("-o"), out});
    EXPECT_EQ(run.exitCode, 1);
    const QString fewPoints = dir.filePath(QStringLiteral("few.csv"));
    writeFileBytes(fewPoints, csvOf(scene.points.mid(0, 5)).toUtf8());
    run = runCli({QStringLiteral("export-matrix"), project, QStringLiteral("--view"), QStringLiteral("0"),
                  QStringLiteral("--projector"), QStringLiteral("1"), QStringLiteral("--points"), fewPoints,
                  QStringLiteral("-o"), out});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(run.err.contains(QStringLiteral("Projector Calibration needs at least 6 matched points.")));
    EXPECT_FALSE(QFile::exists(out));
}

TEST_F(ExportMatrixCommand, CalibrateReportNamesTheRowMovedFortyPixels)
{
    QVector<GuideMatchedPoint> points = scene.points;
    points[6].v += 40.0f;
    const QString bad = dir.filePath(QStringLiteral("bad.csv"));
    writeFileBytes(bad, csvOf(points).toUtf8());
    const CliRun run = runCli({QStringLiteral("calibrate"), project, QStringLiteral("--view"), QStringLiteral("0"),
                               QStringLiteral("--projector"), QStringLiteral("1"), QStringLiteral("--points"), bad,
                               QStringLiteral("--report")});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_TRUE(run.out.contains(QStringLiteral("Point 7 looks mismatched: without it the RMS drops from")))
        << run.out.toStdString();
    const QStringList lines = run.out.split(QLatin1Char('\n'));
    int residualLines = 0;
    for (const QString &line : lines) {
        const QStringList fields = line.simplified().split(QLatin1Char(' '));
        bool ok = false;
        if (fields.size() >= 6 && fields[0].toInt(&ok) > 0 && ok)
            ++residualLines;
    }
    EXPECT_EQ(residualLines, points.size());

    const CliRun honest = runCli({QStringLiteral("calibrate"), project, QStringLiteral("--view"), QStringLiteral("0"),
                                  QStringLiteral("--projector"), QStringLiteral("1"), QStringLiteral("--points"),
                                  pointsFile, QStringLiteral("--report")});
    ASSERT_EQ(honest.exitCode, 0) << honest.err.toStdString();
    EXPECT_FALSE(honest.out.contains(QStringLiteral("looks mismatched")));
    EXPECT_TRUE(honest.out.contains(QStringLiteral("Leave-one-out: no single point lowers the RMS by more than half.")));
}
