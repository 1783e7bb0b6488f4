#include "cli/CliTestSupport.h"

#include "project/ProjectFile.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

const QString kSample = QStringLiteral(VG_SOURCE_DIR "/samples/sample.vgs");
const QString kData = QStringLiteral(VG_TEST_DATA_DIR "/mesh/");

} // namespace

TEST(ImportCli, AddsTheMeshToTheViewAndPrintsIndexNameAndSizes)
{
    QTemporaryDir dir;
    const QString first = dir.filePath(QStringLiteral("first.vgs"));
    const QString second = dir.filePath(QStringLiteral("second.vgs"));
    ProjectDocument sample;
    QString error;
    ASSERT_TRUE(loadProjectDocument(kSample, &sample, &error));
    const int before = int(sample.views.at(0).objects.size());

    CliRun r = runCli({QStringLiteral("import"), kSample, QStringLiteral("--view"), QStringLiteral("0"),
                       kData + QStringLiteral("plan_r2018.dxf"), QStringLiteral("-o"), first});
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    EXPECT_EQ(r.out.trimmed(), QStringLiteral("Object %1 \"plan_r2018\": 10000.0 x 1000.0 x 6000.0 mm").arg(before));
    // Importing the same file again gives the copy name.
    r = runCli({QStringLiteral("import"), first, kData + QStringLiteral("plan_r2018.dxf"), QStringLiteral("-o"), second});
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    EXPECT_TRUE(r.out.contains(QStringLiteral("\"plan_r2018 Copy\""))) << r.out.toStdString();

    ProjectDocument out;
    ASSERT_TRUE(loadProjectDocument(second, &out, &error)) << error.toStdString();
    const QVector<GuideObject> &objects = out.views.at(0).objects;
    ASSERT_EQ(objects.size(), before + 2);
    EXPECT_EQ(objects.last().guide_index, KindDxfMesh);
    EXPECT_EQ(objects.last().obj_path, kData + QStringLiteral("plan_r2018.dxf"));
    EXPECT_FLOAT_EQ(objects.last().scale_z, 3.0f);
    // Everything that was there stays as it was.
    for (int i = 0; i < before; ++i)
        EXPECT_EQ(objects.at(i), sample.views.at(0).objects.at(i)) << i;
}

TEST(ImportCli, FailuresLeaveNoOutputAndSayWhy)
{
    QTemporaryDir dir;
    const QString out = dir.filePath(QStringLiteral("out.vgs"));
    CliRun r = runCli({QStringLiteral("import"), kSample, kData + QStringLiteral("missing.obj"), QStringLiteral("-o"), out});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_TRUE(r.err.contains(QStringLiteral("Import failed: OBJ file does not exist."))) << r.err.toStdString();
    r = runCli({QStringLiteral("import"), kSample, QStringLiteral("--view"), QStringLiteral("7"),
                kData + QStringLiteral("room_assimp.obj"), QStringLiteral("-o"), out});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_TRUE(r.err.contains(QStringLiteral("there is no view 7"))) << r.err.toStdString();
    EXPECT_FALSE(QFileInfo::exists(out));
    r = runCli({QStringLiteral("import"), kSample, kData + QStringLiteral("room_assimp.obj")});
    EXPECT_EQ(r.exitCode, 2);
}
