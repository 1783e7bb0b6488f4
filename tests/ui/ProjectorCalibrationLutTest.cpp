#include "calibration/ui/ProjectorCalibrationDialog.h"
#include "net/mediaserver/MediaServerLink.h"
#include "scene/ui/SceneWidget.h"
#include "tools/mediaserver-standin/MediaServerStandIn.h"

#include "exchange/UvLutTestScenes.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

// Export LUT and Update LUT of the calibration window go through the scene's UV LUT export
// and the media-server link with the window's settings.
TEST(CalibrationWindowLut, ExportWritesThePackageAndUpdateUploadsOnlyWithTheLinkOn)
{
    QTemporaryDir dir;
    SceneWidget scene;
    scene.model().loadObjects(lutWallScene(writeAsymmetricImage(dir.filePath(QStringLiteral("photo.png")))));
    MediaServerStandInThread standIn;
    QString error;
    ASSERT_TRUE(standIn.start(&error)) << error.toStdString();

    GuideProjectorCalibrationSettings settings;
    settings.vantreo_player_ip = QStringLiteral("10.0.0.7");
    settings.vantreo_server_port = standIn.server().udpPort();
    settings.vantreo_warpeditor_number = 3;
    GuideProjectorCalibrationSettings handedBack;
    ProjectorCalibrationDialog dialog(&scene, settings, nullptr, 1,
                                      [&handedBack](const GuideProjectorCalibrationSettings &s) { handedBack = s; });
    dialog.setUploadPorts(standIn.server().controlPort(), standIn.server().dataPort());

    const QString folder = dir.filePath(QStringLiteral("lut"));
    ASSERT_TRUE(dialog.exportLutTo(folder, &error)) << error.toStdString();
    QFile lut(QDir(folder).filePath(QStringLiteral("projector_camera_uv_lut.uvlut")));
    ASSERT_TRUE(lut.open(QIODevice::ReadOnly));
    EXPECT_TRUE(lut.read(8).startsWith("VTGUVLUT"));

    EXPECT_FALSE(dialog.updateLut(&error));
    EXPECT_EQ(error, QStringLiteral("Vantreo Server link is disabled."));
    EXPECT_TRUE(standIn.server().files().isEmpty());

    dialog.findChild<QCheckBox *>(QStringLiteral("calibrationServerEnabled"))->click();
    EXPECT_TRUE(handedBack.vantreo_server_enabled);
    ASSERT_TRUE(dialog.updateLut(&error)) << error.toStdString();
    EXPECT_EQ(dialog.statusText(), QStringLiteral("Uploaded display_3.uvlut to 127.0.0.1 and removed the temporary LUT "
                                                  "file.\nUpdated LUT display_3.uvlut to 127.0.0.1"));
    ASSERT_EQ(standIn.server().files().size(), 1);
    EXPECT_EQ(standIn.server().files()[0].name, QStringLiteral("display_3.uvlut"));
    vg::mediaserver::waitWhileProcessingEvents([&] { return !standIn.server().datagrams().isEmpty(); }, 3000);
    EXPECT_EQ(standIn.server().datagrams().value(0),
              QStringLiteral(R"({"command":"uvlut_update","target_ip":"10.0.0.7","warpeditor_index":3})"));

    // The camera itself cannot be the calibrated lens of a LUT.
    ProjectorCalibrationDialog onCamera(&scene, settings, nullptr, 2);
    EXPECT_FALSE(onCamera.exportLutTo(folder, &error));
    EXPECT_EQ(error, QStringLiteral("Camera UV LUT export is unavailable."));
    EXPECT_FALSE(onCamera.updateLut(&error));
    EXPECT_EQ(error, QStringLiteral("Camera UV LUT update is unavailable."));
}
