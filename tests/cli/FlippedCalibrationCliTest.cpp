#include "cli/CliTestSupport.h"

#include "calibration/SyntheticCalibrationScene.h"

#include "project/ProjectFile.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <random>

// Points made by `lens` through a flipped or turned projector come back through
// `calibrate` to the same projector: the picked pixels are in the real (mirrored) image.
TEST(FlippedCalibrationCli, EveryFlipCombinationRoundTripsThroughLensAndCalibrate)
{
    QTemporaryDir dir;
    std::mt19937 rng(2024);
    SyntheticSceneOptions options;
    options.pointCount = 20;
    const SyntheticCalibrationScene scene = makeSyntheticScene(rng, options);
    QString xyz;
    for (const GuideMatchedPoint &p : scene.points)
        xyz += QStringLiteral("%1,%2,%3\n").arg(double(p.x), 0, 'g', 10).arg(double(p.y), 0, 'g', 10).arg(double(p.z), 0, 'g', 10);
    const QString pointsFile = dir.filePath(QStringLiteral("points.xyz"));
    writeFileBytes(pointsFile, xyz.toUtf8());

    for (int flags = 0; flags < 8; ++flags) {
        GuideObject truth = scene.truth;
        truth.projector_flip_h = flags & 1;
        truth.projector_flip_v = flags & 2;
        truth.projector_rotate_180 = flags & 4;
        truth.lens_shift_y = 35.0f; // a vertical shift, so an upside-down solve cannot fit
        const QString label = QStringLiteral("flags %1").arg(flags);

        ProjectDocument doc;
        Guide3DViewSettings view = Guide3DViewSettings::created();
        view.objects = {truth};
        doc.views = {view};
        doc.activeView = view;
        const QString truthProject = dir.filePath(QStringLiteral("truth.vgs"));
        QString error;
        ASSERT_TRUE(saveProjectDocument(truthProject, doc, &error)) << error.toStdString();

        const CliRun lens = runCli({QStringLiteral("lens"), truthProject, QStringLiteral("--view"), QStringLiteral("0"),
                                    QStringLiteral("--object"), QStringLiteral("0"), QStringLiteral("--points"), pointsFile});
        ASSERT_EQ(lens.exitCode, 0) << lens.err.toStdString();
        const QJsonArray projected = QJsonDocument::fromJson(lens.out.toUtf8()).object().value(QStringLiteral("points")).toArray();
        ASSERT_EQ(projected.size(), scene.points.size());
        QString csv = QStringLiteral("x,y,z,u,v\n");
        for (int i = 0; i < projected.size(); ++i) {
            const QJsonObject o = projected[i].toObject();
            const GuideMatchedPoint &p = scene.points[i];
            csv += QStringLiteral("%1,%2,%3,%4,%5\n")
                       .arg(double(p.x), 0, 'g', 10).arg(double(p.y), 0, 'g', 10).arg(double(p.z), 0, 'g', 10)
                       .arg(o.value(QStringLiteral("px")).toDouble(), 0, 'g', 12)
                       .arg(o.value(QStringLiteral("py")).toDouble(), 0, 'g', 12);
        }
        const QString csvFile = dir.filePath(QStringLiteral("matches.csv"));
        writeFileBytes(csvFile, csv.toUtf8());

        // The projector to fit starts away from the truth, with the same flips.
        GuideObject start = perturbedProjector(truth, rng, 0.3, 3.0);
        start.throw_rate = truth.throw_rate * 1.1f;
        start.lens_shift_y = 50.0f;
        view.objects = {start};
        doc.views = {view};
        const QString startProject = dir.filePath(QStringLiteral("start.vgs"));
        ASSERT_TRUE(saveProjectDocument(startProject, doc, &error)) << error.toStdString();
        const CliRun fit = runCli({QStringLiteral("calibrate"), startProject, QStringLiteral("--view"), QStringLiteral("0"),
                                   QStringLiteral("--projector"), QStringLiteral("0"), QStringLiteral("--points"), csvFile});
        ASSERT_EQ(fit.exitCode, 0) << label.toStdString() << fit.err.toStdString();
        const QJsonObject o = QJsonDocument::fromJson(fit.out.toUtf8()).object();
        EXPECT_LT(o.value(QStringLiteral("rms")).toDouble(-1), 0.05) << label.toStdString();
        EXPECT_NEAR(o.value(QStringLiteral("throw_ratio")).toDouble(), truth.throw_rate, 1e-3) << label.toStdString();
        EXPECT_NEAR(o.value(QStringLiteral("lens_shift_x")).toDouble(), truth.lens_shift_x, 0.05) << label.toStdString();
        EXPECT_NEAR(o.value(QStringLiteral("lens_shift_y")).toDouble(), 35.0, 0.05) << label.toStdString();
        const QJsonArray t = o.value(QStringLiteral("translate")).toArray();
        ASSERT_EQ(t.size(), 3);
        EXPECT_NEAR(t[0].toDouble(), truth.translate_x, 1e-2) << label.toStdString();
        EXPECT_NEAR(t[1].toDouble(), truth.translate_y, 1e-2) << label.toStdString();
        EXPECT_NEAR(t[2].toDouble(), truth.translate_z, 1e-2) << label.toStdString();
        // Residuals are reported in the real image's directions: all near zero here.
        for (const QJsonValue &r : o.value(QStringLiteral("residuals")).toArray())
            EXPECT_LT(std::hypot(r.toArray()[0].toDouble(), r.toArray()[1].toDouble()), 0.2) << label.toStdString();
    }
}
