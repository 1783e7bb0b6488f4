#include "calibration/ui/ProjectorCalibrationDialog.h"
#include "calibration/ui/ProjectorCalibrationPointView.h"
#include "scene/LensModel.h"
#include "scene/ui/SceneWidget.h"
#include "video/NdiRuntime.h"

#include "video/NdiStandinClient.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QTest>

#include <cmath>

namespace {

// A bright panel in the upper left of a projector's picture, the projector flipped as asked.
struct PanelScene {
    explicit PanelScene(bool flipH)
    {
        const int panel = scene.model().addPlane(QStringLiteral("Panel"), 600, 400);
        GuideObject plane = scene.model().object(panel);
        plane.translate_x = -0.9f;
        plane.translate_y = 0.55f;
        plane.translate_z = 0.0f;
        plane.mesh_color = QColor(250, 250, 250);
        scene.setObjectWithoutUndo(panel, plane);
        projector = scene.model().addProjector(QStringLiteral("Projector"), 400, 150, 400, false);
        GuideObject p = scene.model().object(projector);
        p.translate_x = p.translate_y = 0.0f;
        p.translate_z = 4.0f;
        p.rotate_x = p.rotate_y = p.rotate_z = 0.0f;
        p.throw_rate = 1.2f;
        p.lens_shift_x = p.lens_shift_y = 0.0f;
        p.projection_visible = false;
        p.projector_flip_h = flipH;
        scene.setObjectWithoutUndo(projector, p);
    }
    SceneWidget scene;
    int projector = -1;
};

double luminance(const QImage &image, const QPointF &at)
{
    const QColor c = image.pixelColor(std::clamp(int(at.x()), 0, image.width() - 1),
                                      std::clamp(int(at.y()), 0, image.height() - 1));
    return 0.299 * c.red() + 0.587 * c.green() + 0.114 * c.blue();
}

} // namespace

TEST(CalibrationLiveOutput, NdiSendsTheRealProjectorsPictureUnderItsName)
{
    Standin standin(VG_NDI_STANDIN);
    ASSERT_TRUE(standin.ok()) << standin.library.errorString().toStdString();
    NdiRuntime runtime({QStringLiteral(VG_NDI_STANDIN)});
    for (const bool flipH : {false, true}) {
        standin.reset();
        PanelScene world(flipH);
        GuideProjectorCalibrationSettings settings;
        settings.projector_show_shading = true;
        settings.projector_show_wireframe = false;
        settings.projector_show_vertex = false;
        GuideProjectorCalibrationSettings handedBack;
        ProjectorCalibrationDialog dialog(&world.scene, settings, nullptr, world.projector,
                                          [&handedBack](const GuideProjectorCalibrationSettings &s) { handedBack = s; });
        dialog.setNdiRuntime(&runtime);
        EXPECT_FALSE(dialog.outputOpen());

        auto *mode = dialog.findChild<QComboBox *>(QStringLiteral("calibrationOutputMode"));
        ASSERT_NE(mode, nullptr);
        mode->setCurrentIndex(mode->findData(2));
        EXPECT_EQ(handedBack.output_mode, 2);
        ASSERT_TRUE(dialog.outputOpen()) << dialog.statusText().toStdString();
        EXPECT_EQ(dialog.statusText(),
                  QStringLiteral("NDI output \"VantreoGuide Projector #2 Calibration View\" is on."));
        EXPECT_EQ(standin.text("sender_name"), "VantreoGuide Projector #2 Calibration View");

        const QImage sent = standin.sent();
        ASSERT_EQ(sent.size(), QSize(1920, 1200));
        const GuideObject &p = world.scene.objects().at(world.projector);
        // Middle of a grid cell of the panel, off its wire lines.
        const vg::scene::LensProjection centre =
            vg::scene::projectWorldPoint(vg::scene::lensIntrinsicsOf(p), vg::scene::lensPoseOf(p), {-0.87, 0.53, 0.0});
        const double on = luminance(sent, {centre.px, centre.py});
        EXPECT_GT(on, luminance(sent, {1920 - centre.px, centre.py}) + 40.0) << flipH;
        EXPECT_GT(on, luminance(sent, {centre.px, 1200 - centre.py}) + 40.0) << flipH;

        // A name of the user's own replaces the sender.
        auto *name = dialog.findChild<QLineEdit *>(QStringLiteral("calibrationOutputName"));
        name->setText(QStringLiteral("Wall Cal"));
        Q_EMIT name->editingFinished();
        EXPECT_EQ(handedBack.output_name, QStringLiteral("Wall Cal"));
        EXPECT_EQ(standin.text("sender_name"), "Wall Cal");

        mode->setCurrentIndex(mode->findData(0));
        EXPECT_FALSE(dialog.outputOpen());
    }
}

TEST(CalibrationLiveOutput, MissingRuntimeAndSpoutSayWhyNothingIsSent)
{
    NdiRuntime missing({QStringLiteral("/nonexistent/libndi.so.6")});
    PanelScene world(false);
    GuideProjectorCalibrationSettings settings;
    settings.output_mode = 2;
    ProjectorCalibrationDialog dialog(&world.scene, settings, nullptr, world.projector);
    dialog.setNdiRuntime(&missing);
    EXPECT_FALSE(dialog.outputOpen());
    EXPECT_TRUE(dialog.statusText().startsWith(
        QStringLiteral("NDI output \"VantreoGuide Projector #2 Calibration View\" could not start: ")))
        << dialog.statusText().toStdString();

    auto *mode = dialog.findChild<QComboBox *>(QStringLiteral("calibrationOutputMode"));
    mode->setCurrentIndex(mode->findData(1));
    EXPECT_EQ(dialog.statusText(), QStringLiteral("Spout output \"VantreoGuide Projector #2 Calibration View\" is "
                                                  "unavailable: Spout is not available on this system."));
}
