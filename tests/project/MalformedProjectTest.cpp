#include "project/ProjectFile.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

// Every file in tests/data/project/malformed/ is loaded: hand-made faults and every input
// the fuzzers ever found a crash or hang with. None may crash; those listed in
// malformed-expected.json must give exactly the listed outcome.
TEST(MalformedProject, EveryInputLoadsOrFailsCleanly)
{
    const QDir dir(QStringLiteral(VG_TEST_DATA_DIR "/project/malformed"));
    QFile expectedFile(QStringLiteral(VG_TEST_DATA_DIR "/project/malformed-expected.json"));
    ASSERT_TRUE(expectedFile.open(QIODevice::ReadOnly));
    const QJsonObject expected = QJsonDocument::fromJson(expectedFile.readAll()).object();
    ASSERT_FALSE(expected.isEmpty());

    const QStringList files = dir.entryList(QDir::Files, QDir::Name);
    ASSERT_GE(files.size(), expected.size());
    for (const QString &name : files) {
        SCOPED_TRACE(name.toStdString());
        ProjectDocument doc;
        QString error;
        QElapsedTimer timer;
        timer.start();
        const bool ok = loadProjectDocument(dir.filePath(name), &doc, &error);
        EXPECT_LT(timer.elapsed(), 5000);
        EXPECT_EQ(ok, error.isEmpty()) << error.toStdString();
        if (ok) {
            // Whatever was read writes and reads back to the same text.
            const QByteArray first = projectDocumentToJson(doc);
            ProjectDocument back;
            ASSERT_TRUE(loadProjectDocumentData(first, &back, &error)) << error.toStdString();
            EXPECT_EQ(projectDocumentToJson(back), first);
        }
        if (!expected.contains(name))
            continue;
        const QJsonObject want = expected.value(name).toObject();
        EXPECT_EQ(ok, want.value(QStringLiteral("ok")).toBool());
        if (want.contains(QStringLiteral("error"))) {
            EXPECT_EQ(error, want.value(QStringLiteral("error")).toString());
        }
        if (want.contains(QStringLiteral("error_prefix"))) {
            EXPECT_TRUE(error.startsWith(want.value(QStringLiteral("error_prefix")).toString())) << error.toStdString();
        }
    }
    // Every listed file exists.
    for (const QString &name : expected.keys())
        EXPECT_TRUE(files.contains(name)) << name.toStdString();
}

TEST(MalformedProject, WrongTypesEverywhereKeepDefaults)
{
    ProjectDocument doc;
    QString error;
    ASSERT_TRUE(loadProjectDocument(QStringLiteral(VG_TEST_DATA_DIR "/project/malformed/json-wrong-types-everywhere-0.json"),
                                    &doc, &error)) << error.toStdString();
    EXPECT_EQ(doc.guides.size(), 1);
    ASSERT_EQ(doc.views.size(), 2);
    EXPECT_EQ(doc.views[1].objects.size(), 2);
    EXPECT_EQ(doc.canvasTabs.size(), 2);
    EXPECT_EQ(doc.tabs, (QList<ProjectTabEntry>{{QStringLiteral("guide"), 0}}));
    for (const Guide3DViewSettings &view : doc.views) {
        EXPECT_GE(view.view_mode, 0);
        EXPECT_LE(view.view_mode, 3);
        EXPECT_GE(view.vantreo_view_mesh_server_port, 1);
        EXPECT_LE(view.vantreo_view_mesh_warp, 8);
        EXPECT_EQ(view.projector_camera_view_object_index, -1);
        for (const GuideObject &object : view.objects) {
            EXPECT_GE(object.wall_cylinder_v_lines, 1);
            EXPECT_LE(object.plane_u_lines, 512);
            EXPECT_LE(object.projector_calibration.image_width, 16384);
        }
    }
}

TEST(MalformedProject, HugeLengthPrefixFailsWithoutAllocating)
{
    // Decoding a 4 GiB claim must be refused at once; were the memory reserved first,
    // this loop would take many seconds or fail outright.
    QFile file(QStringLiteral(VG_TEST_DATA_DIR "/project/malformed/container-bomb-4gib-claim.vgs"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray data = file.readAll();
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < 200; ++i) {
        QString error;
        EXPECT_FALSE(loadProjectData(data, nullptr, nullptr, &error));
    }
    EXPECT_LT(timer.elapsed(), 1000);
}
