#include "cli/CliTestSupport.h"

#include "calibration/SyntheticCalibrationScene.h"

#include "project/ProjectFile.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <random>

namespace {



QString csvOf(const QVector<GuideMatchedPoint> &points)
{
    QString text = QStringLiteral("x,y,z,u,v\n");
    for (const GuideMatchedPoint &p : points) {
        text += QStringLiteral("%1, %2, %3, %4, %5\n")
                    .arg(double(p.x), 0, 'g', 9)
                    .arg(double(p.y), 0, 'g', 9)
                    .arg(double(p.z), 0, 'g', 9)
                    .arg(double(p.u), 0, 'g', 9)
                    .arg(double(p.v), 0, 'g', 9);
    }
    return text;
}

class CalibrateCommand : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_dir.isValid());
        std::mt19937 rng(515);
        SyntheticSceneOptions options;
        options.pointCount = 24;
        m_scene = makeSyntheticScene(rng, options);

        // Two views; the projector to fit is object 1 of the second view, placed roughly.
        ProjectDocument doc;
        Guide3DViewSettings first = Guide3DViewSettings::created();
        first.title = QStringLiteral("First");
        Guide3DViewSettings second = Guide3DViewSettings::created();
        second.title = QStringLiteral("Second");
        GuideObject wall;
        wall.guide_index = KindPlane;
        wall.name = QStringLiteral("Wall");
        m_start = perturbedProjector(m_scene.truth, rng, 0.5, 4.0);
        m_start.throw_rate = 1.0f;
        m_start.lens_shift_x = 0.0f;
        m_start.lens_shift_y = 50.0f;
        second.objects = {wall, m_start};
        doc.views = {first, second};
        doc.activeView = first;
        m_project = m_dir.filePath(QStringLiteral("in.vgs"));
        QString error;
        ASSERT_TRUE(saveProjectDocument(m_project, doc, &error)) << error.toStdString();
        m_points = m_dir.filePath(QStringLiteral("points.csv"));
        writeFileBytes(m_points, (csvOf(m_scene.points)).toUtf8());
    }

    QTemporaryDir m_dir;
    SyntheticCalibrationScene m_scene;
    GuideObject m_start;
    QString m_project;
    QString m_points;
};

} // namespace

TEST_F(CalibrateCommand, PrintsTheFitAsJsonInKeyOrder)
{
    const CliRun run = runCli({QStringLiteral("calibrate"), m_project, QStringLiteral("--view"), QStringLiteral("1"),
                               QStringLiteral("--projector"), QStringLiteral("1"), QStringLiteral("--points"),
                               m_points});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    QJsonParseError parseError;
    const QJsonDocument json = QJsonDocument::fromJson(run.out.toUtf8(), &parseError);
    ASSERT_TRUE(json.isObject()) << parseError.errorString().toStdString() << run.out.toStdString();
    const QJsonObject o = json.object();
    EXPECT_LT(o.value(QStringLiteral("rms")).toDouble(-1), 0.01);
    EXPECT_GE(o.value(QStringLiteral("iterations")).toInt(-1), 0);
    EXPECT_EQ(o.value(QStringLiteral("points")).toInt(), 24);
    EXPECT_NEAR(o.value(QStringLiteral("throw_ratio")).toDouble(), m_scene.truth.throw_rate, 1e-4);
    EXPECT_NEAR(o.value(QStringLiteral("lens_shift_x")).toDouble(), m_scene.truth.lens_shift_x, 1e-2);
    EXPECT_NEAR(o.value(QStringLiteral("lens_shift_y")).toDouble(), m_scene.truth.lens_shift_y, 1e-2);
    EXPECT_NEAR(o.value(QStringLiteral("h_fov_deg")).toDouble(),
                2.0 * std::atan(0.5 / m_scene.truth.throw_rate) * 180.0 / M_PI, 1e-3);
    const QJsonArray translate = o.value(QStringLiteral("translate")).toArray();
    ASSERT_EQ(translate.size(), 3);
    EXPECT_NEAR(translate[0].toDouble(), m_scene.truth.translate_x, 1e-3);
    EXPECT_NEAR(translate[2].toDouble(), m_scene.truth.translate_z, 1e-3);
    EXPECT_EQ(o.value(QStringLiteral("rotate")).toArray().size(), 3);
    const QJsonArray residuals = o.value(QStringLiteral("residuals")).toArray();
    ASSERT_EQ(residuals.size(), 24);
    EXPECT_EQ(residuals[0].toArray().size(), 2);

    // Keys appear in the documented order.
    const QStringList keys = {"\"rms\"", "\"iterations\"", "\"points\"", "\"throw_ratio\"", "\"lens_shift_x\"",
                              "\"lens_shift_y\"", "\"h_fov_deg\"", "\"translate\"", "\"rotate\"", "\"residuals\""};
    qsizetype at = -1;
    for (const QString &key : keys) {
        const qsizetype next = run.out.indexOf(key);
        EXPECT_GT(next, at) << key.toStdString();
        at = next;
    }
}

TEST_F(CalibrateCommand, ApplyWritesTheProjectorIntoTheOutputProject)
{
    const QString out = m_dir.filePath(QStringLiteral("out.vgs"));
    const CliRun run = runCli({QStringLiteral("calibrate"), m_project, QStringLiteral("--view"), QStringLiteral("1"),
                               QStringLiteral("--projector"), QStringLiteral("1"), QStringLiteral("--points"),
                               m_points, QStringLiteral("--no-throw-ratio"), QStringLiteral("--quick"),
                               QStringLiteral("--apply"), QStringLiteral("-o"), out});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    ProjectDocument doc;
    QString error;
    ASSERT_TRUE(loadProjectDocument(out, &doc, &error)) << error.toStdString();
    ASSERT_EQ(doc.views.size(), 2);
    EXPECT_EQ(doc.views[0].title, QStringLiteral("First"));
    ASSERT_EQ(doc.views[1].objects.size(), 2);
    const GuideObject &fitted = doc.views[1].objects[1];
    const QJsonObject o = QJsonDocument::fromJson(run.out.toUtf8()).object();
    const QJsonArray translate = o.value(QStringLiteral("translate")).toArray();
    EXPECT_FLOAT_EQ(fitted.translate_x, float(translate[0].toDouble()));
    EXPECT_FLOAT_EQ(fitted.translate_y, float(translate[1].toDouble()));
    // The throw ratio was held; the lens shift was fitted and written.
    EXPECT_EQ(fitted.throw_rate, 1.0f);
    EXPECT_NEAR(fitted.lens_shift_x, o.value(QStringLiteral("lens_shift_x")).toDouble(), 1e-3);
    // The input project is unchanged.
    ProjectDocument original;
    ASSERT_TRUE(loadProjectDocument(m_project, &original, &error));
    EXPECT_EQ(original.views[1].objects[1].translate_x, m_start.translate_x);
}

TEST_F(CalibrateCommand, StartPoseAndImageSize)
{
    const GuideObject &t = m_scene.truth;
    const QString start = QStringLiteral("%1,%2,%3,%4,%5,%6")
                              .arg(t.translate_x)
                              .arg(t.translate_y)
                              .arg(t.translate_z)
                              .arg(t.rotate_x)
                              .arg(t.rotate_y)
                              .arg(t.rotate_z);
    const QString size = QStringLiteral("%1x%2").arg(t.projector_resolution_width).arg(t.projector_resolution_height);
    const CliRun run = runCli({QStringLiteral("calibrate"), m_project, QStringLiteral("--view"), QStringLiteral("1"),
                               QStringLiteral("--projector"), QStringLiteral("1"), QStringLiteral("--points"),
                               m_points, QStringLiteral("--start"), start, QStringLiteral("--image-size"), size,
                               QStringLiteral("--no-lens-shift")});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    const QJsonObject o = QJsonDocument::fromJson(run.out.toUtf8()).object();
    EXPECT_EQ(o.value(QStringLiteral("lens_shift_y")).toDouble(), 50.0);
}

TEST_F(CalibrateCommand, FailuresAndUsageErrors)
{
    // Five points: the solver's own message, exit 1.
    const QString five = m_dir.filePath(QStringLiteral("five.csv"));
    writeFileBytes(five, (csvOf(m_scene.points.mid(0, 5))).toUtf8());
    CliRun run = runCli({QStringLiteral("calibrate"), m_project, QStringLiteral("--view"), QStringLiteral("1"),
                         QStringLiteral("--projector"), QStringLiteral("1"), QStringLiteral("--points"), five});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(run.err.contains(QStringLiteral("Projector Calibration needs at least 6 matched points.")));
    EXPECT_TRUE(run.out.isEmpty());

    // Not a projector.
    run = runCli({QStringLiteral("calibrate"), m_project, QStringLiteral("--view"), QStringLiteral("1"),
                  QStringLiteral("--projector"), QStringLiteral("0"), QStringLiteral("--points"), m_points});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(run.err.contains(QStringLiteral("Projector Calibration can only be applied to projector objects.")));
    run = runCli({QStringLiteral("calibrate"), m_project, QStringLiteral("--view"), QStringLiteral("1"),
                  QStringLiteral("--projector"), QStringLiteral("9"), QStringLiteral("--points"), m_points});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(run.err.contains(QStringLiteral("Select a projector before calibration.")));

    // A malformed line is named by its number; blank lines count as lines.
    const QString bad = m_dir.filePath(QStringLiteral("bad.csv"));
    writeFileBytes(bad, (QStringLiteral("x,y,z,u,v\n1,2,3,4,5\n\n1,2,3,4\n")).toUtf8());
    run = runCli({QStringLiteral("calibrate"), m_project, QStringLiteral("--view"), QStringLiteral("1"),
                  QStringLiteral("--projector"), QStringLiteral("1"), QStringLiteral("--points"), bad});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(run.err.contains(QStringLiteral("line 4"))) << run.err.toStdString();

    // A first line of numbers in the wrong count is no header.
    writeFileBytes(bad, (QStringLiteral("1,2,3,4\n1,2,3,4,5\n")).toUtf8());
    run = runCli({QStringLiteral("calibrate"), m_project, QStringLiteral("--view"), QStringLiteral("1"),
                  QStringLiteral("--projector"), QStringLiteral("1"), QStringLiteral("--points"), bad});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(run.err.contains(QStringLiteral("line 1"))) << run.err.toStdString();

    // A second header-like line is an error too.
    writeFileBytes(bad, (QStringLiteral("x,y,z,u,v\nx,y,z,u,v\n")).toUtf8());
    run = runCli({QStringLiteral("calibrate"), m_project, QStringLiteral("--view"), QStringLiteral("1"),
                  QStringLiteral("--projector"), QStringLiteral("1"), QStringLiteral("--points"), bad});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(run.err.contains(QStringLiteral("line 2")));

    // No such view.
    run = runCli({QStringLiteral("calibrate"), m_project, QStringLiteral("--view"), QStringLiteral("5"),
                  QStringLiteral("--projector"), QStringLiteral("1"), QStringLiteral("--points"), m_points});
    EXPECT_EQ(run.exitCode, 1);

    // Usage errors: exit 2.
    const QStringList base = {QStringLiteral("calibrate"), m_project, QStringLiteral("--view"), QStringLiteral("1"),
                              QStringLiteral("--projector"), QStringLiteral("1"), QStringLiteral("--points"),
                              m_points};
    EXPECT_EQ(runCli(base + QStringList{QStringLiteral("--apply")}).exitCode, 2);
    EXPECT_EQ(runCli(base + QStringList{QStringLiteral("--image-size"), QStringLiteral("12by4")}).exitCode, 2);
    EXPECT_EQ(runCli(base + QStringList{QStringLiteral("--start"), QStringLiteral("1,2,3")}).exitCode, 2);
    EXPECT_EQ(runCli({QStringLiteral("calibrate"), m_project, QStringLiteral("--view"), QStringLiteral("1")}).exitCode,
              2);
}
