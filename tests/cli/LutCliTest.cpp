#include "cli/CliTestSupport.h"

#include "exchange/UvLutTestScenes.h"
#include "project/ProjectFile.h"
#include "tools/mediaserver-standin/MediaServerStandIn.h"

#include <QDir>
#include <QImage>
#include <QTemporaryDir>
#include <QThread>
#include <QtEndian>

#include <gtest/gtest.h>

namespace {

// The bundled sample with a camera beside its projector; returns the two indices.
QString writeLutProject(const QTemporaryDir &dir, int *output, int *source)
{
    ProjectDocument doc;
    QString error;
    EXPECT_TRUE(loadProjectDocument(QStringLiteral(VG_SOURCE_DIR "/samples/sample.vgs"), &doc, &error));
    const QString image = writeAsymmetricImage(dir.filePath(QStringLiteral("camera.png")), 320, 200);
    QVector<GuideObject> objects = lutSampleScene(image, output, 320, 200);
    *source = int(objects.size()) - 1;
    doc.views.first().objects = objects;
    const QString path = dir.filePath(QStringLiteral("lut.vgs"));
    EXPECT_TRUE(saveProjectDocument(path, doc, &error)) << error.toStdString();
    return path;
}

quint32 headerField(const QByteArray &bytes, int offset)
{
    return qFromLittleEndian<quint32>(bytes.constData() + offset);
}

TEST(LutCli, ExportLutWritesThePackageByEitherMethod)
{
    QTemporaryDir dir;
    int output = -1, source = -1;
    const QString project = writeLutProject(dir, &output, &source);
    const QString cpuFolder = dir.filePath(QStringLiteral("cpu"));
    CliRun run = runCli({"export-lut", project, "--output", QString::number(output), "--source", QString::number(source),
                         "--method", "cpu", "--feather", "2", "--test-data", "-o", cpuFolder});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_TRUE(run.err.contains("LUT export complete."));
    for (const char *name : {".uvlut", ".json", "_preview.png", "_uv.png", "_mask.png", "_depth.png", "_uv_float.pfm",
                             "_depth_float.pfm"})
        EXPECT_TRUE(QFile::exists(QDir(cpuFolder).filePath(QStringLiteral("projector_camera_uv_lut") + name))) << name;
    const QByteArray cpu = readFileBytes(QDir(cpuFolder).filePath("projector_camera_uv_lut.uvlut"));
    ASSERT_EQ(cpu.size(), 40 + 16 * 320 * 200);
    EXPECT_EQ(headerField(cpu, 12), 320u);
    EXPECT_EQ(headerField(cpu, 24), 1600u);   // the camera's resolution
    EXPECT_EQ(headerField(cpu, 32), 320u);    // its image

    const QString gpuFolder = dir.filePath(QStringLiteral("gpu"));
    run = runCli({"export-lut", project, "--output", QString::number(output), "--source", QString::number(source),
                  "--method", "gpu", "--aa", "4", "-o", gpuFolder},
                 CliDisplay::Inherit);
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_TRUE(run.err.contains("Reading GPU UV probe..."));
    EXPECT_EQ(readFileBytes(QDir(gpuFolder).filePath("projector_camera_uv_lut.uvlut")).size(), cpu.size());

    run = runCli({"export-lut", project, "--output", QString::number(output), "--source", QString::number(source),
                  "--method", "cpu", "--aa", "2", "-o", gpuFolder});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(run.err.contains("UV LUT AA Samples requires the GPU Probe export method.")) << run.err.toStdString();
    run = runCli({"export-lut", project, "--output", QString::number(output), "--source", QString::number(output),
                  "--method", "cpu", "-o", gpuFolder});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(run.err.contains("must be different objects"));
    run = runCli({"export-lut", project, "--output", "1", "--source", "2", "--aa", "3", "-o", gpuFolder});
    EXPECT_EQ(run.exitCode, 2);
}

TEST(LutCli, SendLutUploadsAndAnnouncesToTheServer)
{
    QTemporaryDir dir;
    MediaServerStandInThread standIn;
    QString error;
    // The file service listens on its fixed ports; the command port is free to choose.
    ASSERT_TRUE(standIn.start(&error, 0, 17601, 17602)) << error.toStdString();
    const QString file = dir.filePath(QStringLiteral("display_4.uvlut"));
    writeFileBytes(file, QByteArray("VTGUVLUT") + QByteArray(32, '\0'));
    const CliRun run = runCli({"send-lut", file, "--server", "127.0.0.1", "--player", "10.0.0.9", "--port",
                               QString::number(standIn.server().udpPort()), "--warp", "12"});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_TRUE(run.out.contains("Updated LUT display_4.uvlut to 127.0.0.1"));
    for (int i = 0; i < 300 && standIn.server().datagrams().isEmpty(); ++i)
        QThread::msleep(10);
    ASSERT_EQ(standIn.server().files().size(), 1);
    EXPECT_EQ(standIn.server().files()[0].bytes, readFileBytes(file));
    EXPECT_EQ(standIn.server().datagrams().value(0),
              R"({"command":"uvlut_update","target_ip":"10.0.0.9","warpeditor_index":8})");
}

} // namespace
