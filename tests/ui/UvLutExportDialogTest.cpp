#include "scene/ui/UvLutExportDialog.h"
#include "net/mediaserver/MediaServerLink.h"
#include "tools/mediaserver-standin/MediaServerStandIn.h"

#include "exchange/UvLutTestScenes.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QSpinBox>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

class UvLutDialog : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_dir.isValid());
        m_objects = lutWallScene(writeAsymmetricImage(m_dir.filePath("source.png")));
    }

    // Shown and grabbed when VG_UVLUT_SCREENSHOT_DIR is set, for a look by eye.
    void screenshot(QWidget &dialog, const char *name)
    {
        const QString folder = qEnvironmentVariable("VG_UVLUT_SCREENSHOT_DIR");
        if (folder.isEmpty())
            return;
        dialog.show();
        QApplication::processEvents();
        dialog.grab().save(QDir(folder).filePath(QString::fromLatin1(name)));
    }

    QTemporaryDir m_dir;
    QVector<GuideObject> m_objects;
};

TEST_F(UvLutDialog, ExportsThePackageFromTheChosenViewAndSource)
{
    UvLutExportDialog dialog(m_objects, {}, GuideProjectorCalibrationSettings(), 1);
    auto *output = dialog.findChild<QComboBox *>("uvLutOutputView");
    auto *source = dialog.findChild<QComboBox *>("uvLutSource");
    auto *method = dialog.findChild<QComboBox *>("uvLutMethod");
    auto *aa = dialog.findChild<QComboBox *>("uvLutAaSamples");
    ASSERT_TRUE(output && source && method && aa);
    EXPECT_EQ(output->currentData().toInt(), 1);
    EXPECT_EQ(source->currentData().toInt(), 2);   // the lens with a picture
    EXPECT_EQ(output->count(), 2);                 // only projectors and cameras

    aa->setCurrentIndex(aa->findData(4));
    method->setCurrentIndex(method->findData(int(vg::exchange::UvLutMethod::CpuRaster)));
    EXPECT_FALSE(aa->isEnabled());
    EXPECT_EQ(dialog.options().aaSamples, 1);
    dialog.findChild<QCheckBox *>("uvLutTestData")->setChecked(true);
    dialog.setFolder(m_dir.filePath("lut"));
    screenshot(dialog, "uvlut_dialog.png");

    QString error;
    ASSERT_TRUE(dialog.exportLut(&error)) << error.toStdString();
    EXPECT_EQ(dialog.progressText(), "LUT export complete.");
    const QImage preview(QDir(m_dir.filePath("lut")).filePath("projector_camera_uv_lut_preview.png"));
    ASSERT_EQ(preview.size(), QSize(96, 60));
    EXPECT_EQ(QColor(preview.pixel(20, 5)), QColor(230, 30, 30));     // source top left
    EXPECT_EQ(QColor(preview.pixel(75, 55)), QColor(20, 20, 200));    // source bottom right
    EXPECT_TRUE(QFile::exists(QDir(m_dir.filePath("lut")).filePath("projector_camera_uv_lut.uvlut")));
    EXPECT_EQ(dialog.settings().uv_lut_aa_samples, 4);

    source->setCurrentIndex(source->findData(1));
    EXPECT_FALSE(dialog.exportLut(&error));
    EXPECT_EQ(error, "The output projector/camera and source camera must be different objects.");
    EXPECT_EQ(dialog.progressText(), error);
}

TEST_F(UvLutDialog, UpdateLutUploadsAndAnnouncesWithTheDialogsServerSettings)
{
    MediaServerStandInThread standIn;
    QString error;
    ASSERT_TRUE(standIn.start(&error)) << error.toStdString();
    GuideProjectorCalibrationSettings settings;
    settings.vantreo_server_ip = QString();
    settings.vantreo_player_ip = "10.0.0.7";
    settings.vantreo_server_port = standIn.server().udpPort();
    settings.vantreo_warpeditor_number = 5;
    UvLutExportDialog dialog(m_objects, {}, settings, 1);
    dialog.findChild<QComboBox *>("uvLutMethod")->setCurrentIndex(1);
    dialog.setUploadPorts(standIn.server().controlPort(), standIn.server().dataPort());

    ASSERT_TRUE(dialog.updateLut(&error)) << error.toStdString();
    EXPECT_EQ(dialog.progressText(), "Uploaded display_5.uvlut to 127.0.0.1 and removed the temporary LUT file.\n"
                                     "Updated LUT display_5.uvlut to 127.0.0.1");
    ASSERT_EQ(standIn.server().files().size(), 1);
    EXPECT_EQ(standIn.server().files()[0].name, "display_5.uvlut");
    EXPECT_TRUE(standIn.server().files()[0].bytes.startsWith("VTGUVLUT"));
    vg::mediaserver::waitWhileProcessingEvents([&] { return !standIn.server().datagrams().isEmpty(); }, 3000);
    EXPECT_EQ(standIn.server().datagrams().value(0),
              R"({"command":"uvlut_update","target_ip":"10.0.0.7","warpeditor_index":5})");

    // A server that never confirms: the headline and the cause.
    standIn.server().setReply(MediaServerStandIn::Reply::FinishOnly);
    dialog.findChild<QSpinBox *>("uvLutWarpEditor")->setValue(8);
    EXPECT_FALSE(dialog.updateLut(&error));
    EXPECT_TRUE(error.startsWith("Could not upload LUT to Vantreo Service.\n")) << error.toStdString();
    EXPECT_EQ(dialog.settings().vantreo_warpeditor_number, 8);
}

} // namespace

#include "app/MainWindow.h"
#include "scene/ui/SceneWidget.h"
#include "scene/ui/ThreeDViewTab.h"

#include "MainWindowTestSupport.h"

#include <QAction>

namespace {

class UvLutWindow : public ShellSettingsFixture
{
};

// The 3D view's entry reaches the window's runner, which opens the dialog on that view's
// scene and keeps the dialog's settings in the view.
TEST_F(UvLutWindow, ThreeDViewEntryOpensTheDialogAndKeepsItsSettings)
{
    QTemporaryDir dir;
    MainWindow window;
    window.setProperty("skipStartupSample", true);
    window.resize(1280, 800);
    window.show();
    auto *tab = qobject_cast<ThreeDViewTab *>(window.add3DViewTab());
    ASSERT_NE(tab, nullptr);
    Guide3DViewSettings view = Guide3DViewSettings::created();
    view.objects = lutWallScene(writeAsymmetricImage(dir.filePath("source.png")));
    tab->setViewSettings(view);
    auto *entry = tab->findChild<QAction *>("actionExportProjectorCameraUvLut");
    ASSERT_NE(entry, nullptr);

    bool seen = false;
    QString progress;
    onNextModal([&](QWidget *modal) {
        auto *dialog = qobject_cast<UvLutExportDialog *>(modal);
        seen = dialog != nullptr;
        if (!dialog) {
            modal->close();
            return;
        }
        dialog->findChild<QComboBox *>("uvLutMethod")->setCurrentIndex(1);
        dialog->findChild<QSpinBox *>("uvLutWarpEditor")->setValue(6);
        dialog->setFolder(dir.filePath("out"));
        const QString shots = qEnvironmentVariable("VG_UVLUT_SCREENSHOT_DIR");
        QString error;
        dialog->exportLut(&error);
        progress = dialog->progressText();
        if (!shots.isEmpty())
            window.grabWindowImage(dialog).save(QDir(shots).filePath("uvlut_window.png"));
        dialog->reject();
    });
    entry->trigger();
    EXPECT_TRUE(seen);
    EXPECT_EQ(progress, "LUT export complete.");
    EXPECT_TRUE(QFile::exists(QDir(dir.filePath("out")).filePath("projector_camera_uv_lut.uvlut")));
    EXPECT_EQ(tab->viewSettings().projector_calibration_settings.vantreo_warpeditor_number, 6);
}

} // namespace
