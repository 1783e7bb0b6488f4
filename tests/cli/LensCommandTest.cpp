#include "cli/CliTestSupport.h"

#include "project/ProjectFile.h"
#include "scene/SceneModel.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>

namespace {


// A projector at the origin looking down -Z without lens shift, a 4 m wall 2 m in front of
// it, and a second wall facing it at an angle further off to the side.
QString writeProject(const QTemporaryDir &dir)
{
    SceneModel scene;
    const int projector = scene.addProjector(QStringLiteral("P1"));
    GuideObject p = scene.object(projector);
    p.lens_shift_y = 0.0f;
    scene.replaceObject(projector, p);
    const int wall = scene.addPlane(QStringLiteral("Wall"), 4000, 3000);
    GuideObject w = scene.object(wall);
    w.translate_y = 0.0f;
    w.translate_z = -2.0f;
    scene.replaceObject(wall, w);
    scene.addCamera(QStringLiteral("Cam"));

    ProjectDocument doc;
    doc.guides.append(GuideSettings());
    Guide3DViewSettings view = Guide3DViewSettings::created();
    view.objects = scene.objects();
    doc.activeView = view;
    doc.views.append(view);
    const QString path = dir.filePath(QStringLiteral("lens.vgs"));
    QString error;
    EXPECT_TRUE(saveProjectDocument(path, doc, &error)) << error.toStdString();
    return path;
}

} // namespace

TEST(LensCommand, OnePointOnTheAxis)
{
    QTemporaryDir dir;
    const QString project = writeProject(dir);
    const CliRun run = runCli({QStringLiteral("lens"), project, QStringLiteral("--view"), QStringLiteral("0"),
                               QStringLiteral("--object"), QStringLiteral("0"), QStringLiteral("--point"),
                               QStringLiteral("0,0,-2")});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    const QJsonObject root = QJsonDocument::fromJson(run.out.toUtf8()).object();
    const QJsonArray lensPoint = root.value(QStringLiteral("lens_point")).toArray();
    ASSERT_EQ(lensPoint.size(), 3);
    EXPECT_DOUBLE_EQ(lensPoint.at(2).toDouble(), 0.0);
    EXPECT_DOUBLE_EQ(root.value(QStringLiteral("throw_distance")).toDouble(), 8.0);
    const QJsonObject point = root.value(QStringLiteral("points")).toArray().at(0).toObject();
    EXPECT_NEAR(point.value(QStringLiteral("u")).toDouble(), 0.5, 1e-9);
    EXPECT_NEAR(point.value(QStringLiteral("v")).toDouble(), 0.5, 1e-9);
    EXPECT_NEAR(point.value(QStringLiteral("px")).toDouble(), 960.0, 1e-6);
    EXPECT_NEAR(point.value(QStringLiteral("py")).toDouble(), 600.0, 1e-6);
    EXPECT_TRUE(point.value(QStringLiteral("inside")).toBool());
    EXPECT_NEAR(point.value(QStringLiteral("depth")).toDouble(), 2.0, 1e-9);
    // 2 m wide image over 1920 px on a facing wall.
    EXPECT_NEAR(point.value(QStringLiteral("footprint_mm_per_px")).toDouble(), 2000.0 / 1920.0, 1e-4);
}

TEST(LensCommand, PointsFromCsv)
{
    QTemporaryDir dir;
    const QString project = writeProject(dir);
    const QString csv = dir.filePath(QStringLiteral("points.csv"));
    QFile file(csv);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    // On the wall's top-left image corner, behind the lens, and a point whose ray misses every surface.
    file.write("-1,0.625,-2\n\n0, 0, 3\n0.9,0,-2\n10,0,-1\n");
    file.close();
    const CliRun run = runCli({QStringLiteral("lens"), project, QStringLiteral("--view"), QStringLiteral("0"),
                               QStringLiteral("--object"), QStringLiteral("0"), QStringLiteral("--points"), csv});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    const QJsonArray points = QJsonDocument::fromJson(run.out.toUtf8()).object().value(QStringLiteral("points")).toArray();
    ASSERT_EQ(points.size(), 4);
    const QJsonObject corner = points.at(0).toObject();
    EXPECT_NEAR(corner.value(QStringLiteral("u")).toDouble(), 0.0, 1e-9);
    EXPECT_NEAR(corner.value(QStringLiteral("v")).toDouble(), 0.0, 1e-9);
    EXPECT_TRUE(corner.value(QStringLiteral("inside")).toBool());
    const QJsonObject behind = points.at(1).toObject();
    EXPECT_FALSE(behind.value(QStringLiteral("inside")).toBool());
    EXPECT_NEAR(behind.value(QStringLiteral("depth")).toDouble(), -3.0, 1e-9);
    EXPECT_TRUE(behind.value(QStringLiteral("footprint_mm_per_px")).isNull());
    // A wall parallel to the image plane has the same footprint everywhere.
    EXPECT_NEAR(points.at(2).toObject().value(QStringLiteral("footprint_mm_per_px")).toDouble(), 2000.0 / 1920.0, 1e-4);
    EXPECT_TRUE(points.at(3).toObject().value(QStringLiteral("footprint_mm_per_px")).isNull());
}

TEST(LensCommand, CameraWorksAndErrorsAreClear)
{
    QTemporaryDir dir;
    const QString project = writeProject(dir);
    auto args = [&](const QString &object, const QString &point) {
        return QStringList{QStringLiteral("lens"), project, QStringLiteral("--view"), QStringLiteral("0"),
                           QStringLiteral("--object"), object, QStringLiteral("--point"), point};
    };
    EXPECT_EQ(runCli(args(QStringLiteral("2"), QStringLiteral("0,0,-1"))).exitCode, 0);   // the camera

    CliRun run = runCli(args(QStringLiteral("1"), QStringLiteral("0,0,-1")));
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(run.err.contains("not a projector or camera")) << run.err.toStdString();
    run = runCli(args(QStringLiteral("7"), QStringLiteral("0,0,-1")));
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(run.err.contains("no object 7"));
    run = runCli(args(QStringLiteral("0"), QStringLiteral("0,0")));
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(run.err.contains("Malformed point"));
    run = runCli(args(QStringLiteral("0"), QStringLiteral("0,nan,1")));
    EXPECT_EQ(run.exitCode, 1);
    run = runCli({QStringLiteral("lens"), project, QStringLiteral("--view"), QStringLiteral("3"),
                  QStringLiteral("--object"), QStringLiteral("0"), QStringLiteral("--point"), QStringLiteral("0,0,1")});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(run.err.contains("no view 3"));

    const QString badCsv = dir.filePath(QStringLiteral("bad.csv"));
    QFile file(badCsv);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("0,0,-1\n1;2;3\n");
    file.close();
    run = runCli({QStringLiteral("lens"), project, QStringLiteral("--view"), QStringLiteral("0"),
                  QStringLiteral("--object"), QStringLiteral("0"), QStringLiteral("--points"), badCsv});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(run.err.contains("line 2")) << run.err.toStdString();

    // Usage errors: both point options, or none.
    run = runCli({QStringLiteral("lens"), project, QStringLiteral("--view"), QStringLiteral("0"),
                  QStringLiteral("--object"), QStringLiteral("0")});
    EXPECT_EQ(run.exitCode, 2);
    run = runCli({QStringLiteral("lens"), project, QStringLiteral("--view"), QStringLiteral("0"),
                  QStringLiteral("--object"), QStringLiteral("0"), QStringLiteral("--point"), QStringLiteral("0,0,1"),
                  QStringLiteral("--points"), badCsv});
    EXPECT_EQ(run.exitCode, 2);
    run = runCli({QStringLiteral("lens"), dir.filePath(QStringLiteral("missing.vgs")), QStringLiteral("--view"),
                  QStringLiteral("0"), QStringLiteral("--object"), QStringLiteral("0"), QStringLiteral("--point"),
                  QStringLiteral("0,0,1")});
    EXPECT_EQ(run.exitCode, 1);
}
