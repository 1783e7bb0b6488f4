#include "NdiStandinClient.h"
#include "VideoTestSupport.h"

#include "scene/ui/SceneWidget.h"
#include "scene/ui/ThreeDViewTab.h"
#include "video/MovieTexture.h"
#include "video/VideoSourceRegistry.h"

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cmath>
#include <memory>

namespace {

GuideObject moviePlane(const QString &path)
{
    GuideObject plane;
    plane.guide_index = KindPlane;
    plane.name = QStringLiteral("Wall");
    plane.scale_x = 1.0f;
    plane.scale_y = 0.75f;
    plane.scale_z = 0.001f;
    plane.plane_width = 2000.0f;
    plane.plane_height = 1500.0f;
    plane.plane_u_lines = plane.plane_v_lines = 0;
    plane.show_wireframe = false;
    plane.show_dimensions = false;
    plane.texture_file_path = path;
    return plane;
}

} // namespace

// The 3D view as the user has it: a movie chosen for a wall plays there, the panel shows its
// state and decode mode, and deleting the wall ends the decoder before the call returns.
TEST(SceneWidgetMovie, WallPlaysTheMoviePanelShowsStateAndDeleteStopsTheWorker)
{
    QTemporaryDir dir;
    const QString clip = dir.filePath(QStringLiteral("wall.mp4"));
    ASSERT_TRUE(makeQuadrantClip(clip, 160, 120)) << "the ffmpeg tool could not make the clip";
    auto tab = std::make_unique<ThreeDViewTab>();
    tab->resize(1000, 700);
    tab->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(tab.get()));
    SceneWidget *view = tab->sceneWidget();
    QApplication::processEvents();
    if (!view->rendererReady())
        GTEST_SKIP() << "no OpenGL 3.3: " << view->rendererError().toStdString();
    view->setGridVisible(false);
    view->setViewMode(ViewCameraMode::Front);
    view->camera().setTarget(QVector3D(0, 0, 0));
    view->camera().setFocusDistance(1.2 / std::tan(ViewCamera::kVerticalFieldOfViewDegrees * M_PI / 360.0));
    const int index = view->model().addObject(moviePlane(clip));
    view->selectOnly(index);

    auto pixel = [&](const QImage &frame, double wx, double wy) {
        QPointF p;
        view->camera().worldToPixel(QVector3D(float(wx), float(wy), 0), view->size(), &p);
        const double dpr = frame.width() / double(view->width());
        return frame.pixel(int(p.x() * dpr), int(p.y() * dpr));
    };
    QImage frame;
    const bool shown = waitUntil([&] {
        frame = view->grabFramebuffer();
        return hueOf(pixel(frame, -0.5, 0.4)) == Hue::Red && hueOf(pixel(frame, 0.5, 0.4)) == Hue::Blue
            && hueOf(pixel(frame, 0.0, -0.4)) == Hue::Green;
    });
    EXPECT_TRUE(shown) << "the wall must show the clip with red top-left, blue top-right, green below";

    auto *state = tab->findChild<QLabel *>(QStringLiteral("videoSourceState"));
    ASSERT_TRUE(state);
    const QString ready = MovieTexture::stateText(MovieState::Ready) + QStringLiteral(" · ")
        + MovieTexture::decodeModeText(MovieDecodeMode::Cpu) + QStringLiteral(" (2)");
    EXPECT_TRUE(waitUntil([&] { return state->text() == ready; })) << state->text().toStdString();

    // Asking for hardware decoding in the panel: GPU decoding, or the fallback on a machine
    // without a decoder for it; never a failure.
    auto *decode = tab->findChild<QComboBox *>(QStringLiteral("movieDecodeMode"));
    ASSERT_TRUE(decode);
    ASSERT_TRUE(decode->isEnabled());
    decode->setCurrentIndex(1);
    EXPECT_TRUE(view->objects().at(index).texture_movie_hwaccel);
    EXPECT_TRUE(waitUntil([&] {
        return state->text().endsWith(QStringLiteral("(3)")) || state->text().endsWith(QStringLiteral("(1)"));
    })) << state->text().toStdString();

    ObjectVideoSource source = objectVideoSource(view->objects().at(index), false);
    std::shared_ptr<MovieTexture> movie = view->videoSources()->movie(source);
    ASSERT_TRUE(movie);
    EXPECT_TRUE(movie->workerRunning());
    EXPECT_EQ(view->deleteSelection(false), 1);
    EXPECT_FALSE(movie->workerRunning()) << "the decoder ends with its surface";
    EXPECT_EQ(view->videoSources()->activeSourceCount(), 0);
}

// Switching a projector's view output to NDI in the panel publishes the view through the
// process's runtime binding, found through the runtime directory variable.
TEST(SceneWidgetViewOutput, NdiOutputChosenInThePanelReachesTheRuntime)
{
    qputenv("NDI_RUNTIME_DIR_V6", VG_NDI_STANDIN_DIR);
    Standin standin(VG_NDI_STANDIN);
    ASSERT_TRUE(standin.ok());
    auto tab = std::make_unique<ThreeDViewTab>();
    tab->resize(1000, 700);
    tab->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(tab.get()));
    SceneWidget *view = tab->sceneWidget();
    QApplication::processEvents();
    if (!view->rendererReady())
        GTEST_SKIP() << "no OpenGL 3.3: " << view->rendererError().toStdString();
    GuideObject projector;
    projector.guide_index = KindProjector;
    projector.name = QStringLiteral("Projector");
    projector.translate_z = 3.0f;
    const int index = view->model().addObject(projector);
    view->selectOnly(index);
    QApplication::processEvents();
    auto *mode = tab->findChild<QComboBox *>(QStringLiteral("viewOutputMode"));
    ASSERT_TRUE(mode);
    mode->setCurrentIndex(2);
    EXPECT_EQ(view->objects().at(index).projector_view_output_mode, 2);
    EXPECT_TRUE(waitUntil([&] { return standin.callCount("NDIlib_send_send_video_v2") > 0; }));
    EXPECT_EQ(standin.text("sender_name"), "VantreoGuide Projector View");
    const QImage sent = standin.sent();
    EXPECT_EQ(sent.size(), QSize(1280, 800)) << "1920 x 1200 published at 1280 px across";

    mode->setCurrentIndex(0);
    QApplication::processEvents();
    EXPECT_TRUE(waitUntil([&] { return standin.callCount("NDIlib_send_destroy") == 1; }));
    qunsetenv("NDI_RUNTIME_DIR_V6");
}
