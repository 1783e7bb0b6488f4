#include "cli/CliTestSupport.h"

#include "project/ProjectFile.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>

namespace {




const QString kSample = QStringLiteral(VG_SOURCE_DIR "/samples/sample.vgs");

} // namespace

TEST(ProjectCli, ConvertBetweenContainerAndJson)
{
    QTemporaryDir dir;
    const QString json = dir.filePath(QStringLiteral("a.JSON"));
    const QString vgs = dir.filePath(QStringLiteral("b.vgs"));
    const QString json2 = dir.filePath(QStringLiteral("c.json"));
    CliRun r = runCli({QStringLiteral("convert"), kSample, json});
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    ProjectDocument doc;
    QString error;
    ASSERT_TRUE(loadProjectDocument(kSample, &doc, &error)) << error.toStdString();
    // Bare JSON is the writer's own indented text.
    EXPECT_EQ(readFileBytes(json), projectDocumentToJson(doc));

    r = runCli({QStringLiteral("convert"), json, vgs});
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    EXPECT_TRUE(readFileBytes(vgs).startsWith("\x89VTGUIDE"));
    ProjectDocument back;
    ASSERT_TRUE(loadProjectDocument(vgs, &back, &error));
    EXPECT_EQ(back, doc);

    r = runCli({QStringLiteral("convert"), vgs, json2});
    ASSERT_EQ(r.exitCode, 0);
    EXPECT_EQ(readFileBytes(json2), readFileBytes(json));
}

TEST(ProjectCli, ConvertFailuresPrintTheLoaderText)
{
    QTemporaryDir dir;
    const QString truncated = dir.filePath(QStringLiteral("t.vgs"));
    writeFileBytes(truncated, QByteArray("\x89VTGUIDE\r\n\x1a\n\x01", 13));
    const QString out = dir.filePath(QStringLiteral("out.vgs"));
    CliRun r = runCli({QStringLiteral("convert"), truncated, out});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_TRUE(r.err.contains(QStringLiteral("Binary settings file is truncated."))) << r.err.toStdString();
    EXPECT_FALSE(QFile::exists(out));

    const QString empty = dir.filePath(QStringLiteral("e.json"));
    writeFileBytes(empty, "{\"format\": \"VantreoGuide\"}");
    r = runCli({QStringLiteral("convert"), empty, out});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_TRUE(r.err.contains(QStringLiteral("JSON contains no guide, canvas, or 3D view tabs.")));

    r = runCli({QStringLiteral("convert"), kSample, dir.filePath(QStringLiteral("missing/dir/x.vgs"))});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_FALSE(r.err.trimmed().isEmpty());

    EXPECT_EQ(runCli({QStringLiteral("convert"), kSample}).exitCode, 2);
    EXPECT_EQ(runCli({QStringLiteral("convert"), kSample, out, QStringLiteral("--x")}).exitCode, 2);
}

TEST(ProjectCli, InfoSummarisesTheSample)
{
    const CliRun r = runCli({QStringLiteral("info"), kSample});
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    const QJsonObject info = QJsonDocument::fromJson(r.out.toUtf8()).object();
    EXPECT_EQ(info.value(QStringLiteral("guide_count")).toInt(), 2);
    EXPECT_EQ(info.value(QStringLiteral("active_guide")).toInt(), 0);
    const QJsonArray guides = info.value(QStringLiteral("guides")).toArray();
    ASSERT_EQ(guides.size(), 2);
    EXPECT_GT(guides[0].toObject().value(QStringLiteral("pixel_width")).toInt(), 0);
    const QJsonArray canvas = info.value(QStringLiteral("canvas_tabs")).toArray();
    ASSERT_EQ(canvas.size(), 1);
    EXPECT_GT(canvas[0].toObject().value(QStringLiteral("object_count")).toInt(), 0);
    const QJsonArray views = info.value(QStringLiteral("views")).toArray();
    ASSERT_EQ(views.size(), 1);
    QList<int> kinds;
    for (const QJsonValue &object : views[0].toObject().value(QStringLiteral("objects")).toArray())
        kinds.append(object.toObject().value(QStringLiteral("kind")).toInt());
    EXPECT_EQ(kinds, (QList<int>{0, 3, 5}));
    EXPECT_EQ(views[0].toObject().value(QStringLiteral("objects")).toArray()[2].toObject()
                  .value(QStringLiteral("name")).toString(), QStringLiteral("Person 170 cm"));
    EXPECT_FALSE(info.value(QStringLiteral("tabs")).toArray().isEmpty());
    EXPECT_TRUE(info.contains(QStringLiteral("current_tab")));
}

TEST(ProjectCli, InfoOfABadFileFails)
{
    QTemporaryDir dir;
    const QString bad = dir.filePath(QStringLiteral("bad.vgs"));
    writeFileBytes(bad, "[1, 2, 3]");
    const CliRun r = runCli({QStringLiteral("info"), bad});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_TRUE(r.err.contains(QStringLiteral("JSON root must be an object.")));
    EXPECT_TRUE(r.out.isEmpty());
    EXPECT_EQ(runCli({QStringLiteral("info")}).exitCode, 2);
}

TEST(ProjectCli, MakeSampleWritesTheBundledProject)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("sample.vgs"));
    const CliRun r = runCli({QStringLiteral("make-sample"), path});
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    ProjectDocument made;
    ProjectDocument bundled;
    QString error;
    ASSERT_TRUE(loadProjectDocument(path, &made, &error)) << error.toStdString();
    ASSERT_TRUE(loadProjectDocument(kSample, &bundled, &error)) << error.toStdString();
    EXPECT_EQ(made.guides.size(), 2);
    EXPECT_EQ(made.canvasTabs.size(), 1);
    ASSERT_EQ(made.views.size(), 1);
    EXPECT_EQ(made.views[0].objects.size(), 3);
    EXPECT_EQ(made.views[0].objects.size(), bundled.views[0].objects.size());
    EXPECT_EQ(made.tabs, bundled.tabs);
}
