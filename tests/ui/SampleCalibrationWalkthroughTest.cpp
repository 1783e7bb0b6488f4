#include "MainWindowTestSupport.h"

#include "app/MainWindow.h"
#include "calibration/ui/ProjectorCalibrationDialog.h"
#include "calibration/ui/ProjectorCalibrationPointView.h"
#include "scene/LensModel.h"
#include "scene/Transform.h"
#include "scene/gl/OffscreenSceneRender.h"
#include "scene/ui/SceneWidget.h"
#include "scene/ui/ThreeDViewTab.h"

#include <QAction>
#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QMouseEvent>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QtEndian>

#include <cmath>
#include <cstring>

// A new user's session on the bundled sample: a photo of the real wall is loaded, the
// projector placed roughly by hand is calibrated by clicking grid corners, the matrix and a
// camera LUT are exported. The pictures are kept (VG_SCREENSHOT_DIR, else a temporary
// folder) for people to look at; what pixels can tell is checked.
namespace {

QString walkthroughDir()
{
    QString dir = qEnvironmentVariable("VG_SCREENSHOT_DIR");
    if (dir.isEmpty())
        dir = QDir::temp().filePath(QStringLiteral("vantreoguide-calibration-walkthrough"));
    QDir().mkpath(dir);
    return dir;
}

void clickAt(QWidget *widget, const QPointF &at)
{
    const QPointF global = widget->mapToGlobal(at);
    QMouseEvent press(QEvent::MouseButtonPress, at, global, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(widget, &press);
    QMouseEvent release(QEvent::MouseButtonRelease, at, global, Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(widget, &release);
}

// The photo a camera at the real projector takes of its own picture on the wall.
QImage photoThrough(const SceneWidget *view, int index)
{
    OffscreenSceneRenderer renderer;
    QString error;
    if (!renderer.initialize(&error))
        return {};
    renderer.renderer().setGuideImages(view->guideImages());
    ViewCamera camera;
    setCameraToObjectView(camera, view->objects(), index);
    SceneRenderSettings settings;
    settings.gridVisible = false;
    settings.showLabels = false;
    settings.hiddenObjectIndex = index;
    const GuideObject &p = view->objects().at(index);
    QImage image = renderer.render(view->objects(), camera, settings,
                                   QSize(p.projector_resolution_width, p.projector_resolution_height));
    const vg::scene::LensFrameConstants frame = vg::scene::lensFrameConstants(vg::scene::lensIntrinsicsOf(p));
    return image.mirrored(frame.flipU, frame.flipV);
}

struct LutFile {
    int width = 0, height = 0;
    std::vector<float> samples;   // u, v, coverage, depth
};

bool readLut(const QString &path, LutFile *lut)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray bytes = file.readAll();
    if (bytes.size() < 40 || !bytes.startsWith("VTGUVLUT"))
        return false;
    auto u32 = [&bytes](int offset) { return qFromLittleEndian<quint32>(bytes.constData() + offset); };
    lut->width = int(u32(12));
    lut->height = int(u32(16));
    if (u32(20) != 4 || lut->width < 1 || lut->height < 1 || lut->width > 16384 || lut->height > 16384)
        return false;
    const qint64 count = qint64(lut->width) * lut->height * 4;
    if (bytes.size() != 40 + count * 4)
        return false;
    lut->samples.resize(size_t(count));
    for (qint64 i = 0; i < count; ++i) {
        const quint32 bits = u32(int(40 + i * 4));
        std::memcpy(&lut->samples[size_t(i)], &bits, 4);
    }
    return true;
}

} // namespace

class SampleCalibrationWalkthrough : public ShellSettingsFixture
{
};

TEST_F(SampleCalibrationWalkthrough, SampleProjectorSnapsOntoThePhotoAndExportsMatrixAndLut)
{
    const QString dir = walkthroughDir();
    auto window = std::make_unique<MainWindow>();
    window->setProperty("skipStartupSample", true);
    window->resize(1600, 1000);
    window->show();
    ASSERT_TRUE(window->openStartupProject(QStringLiteral(VG_SOURCE_DIR "/samples/sample.vgs")));
    auto *tab = window->findChild<ThreeDViewTab *>();
    ASSERT_NE(tab, nullptr);
    auto *tabs = window->findChild<QTabWidget *>(QStringLiteral("mainContentTabs"));
    ASSERT_NE(tabs, nullptr);
    for (int i = 0; i < tabs->count(); ++i) {
        if (tabs->widget(i) == tab || tabs->widget(i)->isAncestorOf(tab))
            tabs->setCurrentIndex(i);
    }
    QApplication::processEvents();
    SceneWidget *view = tab->sceneWidget();
    int projector = -1, wall = -1;
    for (int i = 0; i < view->objectCount(); ++i) {
        if (projector < 0 && view->objects().at(i).isProjector())
            projector = i;
        if (wall < 0 && view->objects().at(i).guide_index == KindPlane)
            wall = i;
    }
    ASSERT_GE(projector, 0);
    ASSERT_GE(wall, 0);
    // The guides render off the UI thread; the photo and the scene wait for them.
    EXPECT_TRUE(QTest::qWaitFor(
        [view] {
            const QVector<QImage> &images = view->guideImages();
            return !images.isEmpty() && std::none_of(images.begin(), images.end(), [](const QImage &i) { return i.isNull(); });
        },
        20000));
    QApplication::processEvents();
    const GuideObject truth = view->objects().at(projector);

    const QImage photo = photoThrough(view, projector);
    ASSERT_FALSE(photo.isNull());
    const QString photoPath = QDir(dir).filePath(QStringLiteral("calib-reference.png"));
    ASSERT_TRUE(photo.save(photoPath));

    // Placed by hand: a little off in position and aim.
    GuideObject rough = truth;
    rough.translate_x += 0.2f;
    rough.translate_z -= 0.25f;
    rough.rotate_x -= 1.5f;
    rough.rotate_y += 2.5f;
    ASSERT_TRUE(view->applyObjectEdit(projector, rough));
    view->selectOnly(projector);
    tab->findChild<QAction *>(QStringLiteral("actionCalibrateProjector"))->trigger();
    auto *dialog = window->findChild<ProjectorCalibrationDialog *>();
    ASSERT_NE(dialog, nullptr);
    dialog->resize(1500, 960);
    QApplication::processEvents();
    ASSERT_EQ(dialog->targetIndex(), wall);
    // A flat wall square to the lens cannot tell zoom from distance, nor lens shift from aim:
    // keep the lens the projector has and fit its pose.
    dialog->findChild<QCheckBox *>(QStringLiteral("calibrationAdjustLensShift"))->click();
    dialog->findChild<QCheckBox *>(QStringLiteral("calibrationAdjustThrowRatio"))->click();
    dialog->findChild<QCheckBox *>(QStringLiteral("calibrationProjectorShade"))->click();
    ASSERT_TRUE(dialog->loadReferenceImage(photoPath));

    // Grid corners spread over the picture: the vertex nearest to each of nine places.
    const vg::scene::LensIntrinsics lens = vg::scene::lensIntrinsicsOf(truth);
    const vg::scene::LensPose pose = vg::scene::lensPoseOf(truth);
    QVector<int> chosen;
    for (const QPointF &aim : {QPointF(0.1, 0.1), QPointF(0.9, 0.1), QPointF(0.1, 0.9), QPointF(0.9, 0.9),
                               QPointF(0.5, 0.5), QPointF(0.5, 0.1), QPointF(0.1, 0.5), QPointF(0.9, 0.5),
                               QPointF(0.5, 0.9)}) {
        int best = -1;
        double bestDistance = 1e300;
        for (int v = 0; v < int(dialog->wireframe().vertices.size()); ++v) {
            const vg::scene::LensProjection p = vg::scene::projectWorldPoint(lens, pose, dialog->wireframe().vertices[size_t(v)]);
            if (!p.inside || chosen.contains(v))
                continue;
            const double d = std::hypot(p.u - aim.x(), p.v - aim.y());
            if (d < bestDistance) {
                bestDistance = d;
                best = v;
            }
        }
        ASSERT_GE(best, 0);
        chosen.append(best);
    }
    for (int i = 0; i < chosen.size(); ++i) {
        const int v = chosen[i];
        const std::optional<QPointF> inWire = dialog->wireframeView()->vertexWidgetPosition(v);
        ASSERT_TRUE(inWire.has_value());
        clickAt(dialog->wireframeView(), *inWire);
        const vg::scene::LensProjection p = vg::scene::projectWorldPoint(lens, pose, dialog->wireframe().vertices[size_t(v)]);
        clickAt(dialog->projectorView(), dialog->projectorView()->contentToWidget(QPointF(p.px, p.py)));
        if (i == 3) {
            QApplication::processEvents();
            ASSERT_TRUE(dialog->grab().save(QDir(dir).filePath(QStringLiteral("calib-before.png"))));
            EXPECT_EQ(dialog->statusText(),
                      QStringLiteral("Click wireframe vertices, then click matching real points. Need 6 or more. Current: 4"));
        }
    }
    QApplication::processEvents();
    ASSERT_TRUE(dialog->grab().save(QDir(dir).filePath(QStringLiteral("calib-after.png"))));
    const GuideObject fitted = view->objects().at(projector);
    EXPECT_LT((vg::scene::objectTranslation(fitted) - vg::scene::objectTranslation(truth)).norm(), 1e-3);
    const Eigen::Matrix3d turn = vg::scene::objectRotation(fitted).transpose() * vg::scene::objectRotation(truth);
    EXPECT_LT(std::acos(std::clamp((turn.trace() - 1.0) / 2.0, -1.0, 1.0)) * 180.0 / M_PI, 0.01);
    EXPECT_TRUE(dialog->diagnosticsText().contains(QStringLiteral("nearly coplanar")));

    const QString matrix = QDir(dir).filePath(QStringLiteral("calib-matrix.txt"));
    ASSERT_TRUE(dialog->exportMatrixTo(matrix));
    EXPECT_TRUE(dialog->statusText().startsWith(QStringLiteral("Matrix exported from calibration points: ")));

    // Without a camera image there is nothing to map from.
    QString error;
    EXPECT_FALSE(dialog->exportLutTo(QDir::temp().filePath(QStringLiteral("never-written")), &error));
    EXPECT_EQ(error, QStringLiteral("Add a camera (or another projector) with an image to map the UV LUT from."));
    // The camera that took the photo stands where the real projector is.
    const int camera = view->model().addCamera(QStringLiteral("Site Camera"));
    GuideObject cam = view->objects().at(camera);
    vg::scene::setObjectPose(cam, vg::scene::objectTranslation(truth), vg::scene::objectRotation(truth));
    cam.throw_rate = truth.throw_rate;
    cam.lens_shift_x = truth.lens_shift_x;
    cam.lens_shift_y = truth.lens_shift_y;
    cam.projector_resolution_width = truth.projector_resolution_width;
    cam.projector_resolution_height = truth.projector_resolution_height;
    cam.projector_image_file_path = photoPath;
    ASSERT_TRUE(view->applyObjectEdit(camera, cam));
    // The table itself is large; only its preview is kept for people to look at.
    QTemporaryDir lutFolder;
    const QString lutDir = lutFolder.filePath(QStringLiteral("calib-lut"));
    ASSERT_TRUE(dialog->exportLutTo(lutDir, &error)) << error.toStdString();

    // The fitted projector and the camera see the wall alike: the LUT maps each projector
    // pixel to (nearly) the same camera pixel, and resampling the photo gives it back.
    LutFile lut;
    ASSERT_TRUE(readLut(QDir(lutDir).filePath(QStringLiteral("projector_camera_uv_lut.uvlut")), &lut));
    ASSERT_EQ(lut.width, truth.projector_resolution_width);
    QImage preview(lut.width, lut.height, QImage::Format_RGB32);
    preview.fill(Qt::black);
    int valid = 0, far = 0;
    QString firstFar;
    for (int y = 0; y < lut.height; ++y) {
        for (int x = 0; x < lut.width; ++x) {
            const float *s = &lut.samples[size_t(y * lut.width + x) * 4];
            if (!std::isfinite(s[0]) || s[2] <= 0.5f)
                continue;
            ++valid;
            const double cx = s[0] * photo.width();
            const double cy = (1.0 - s[1]) * photo.height();
            if (std::hypot(cx - (x + 0.5), cy - (y + 0.5)) > 2.0) {
                if (far == 0)
                    firstFar = QStringLiteral("pixel %1,%2 maps to %3,%4").arg(x).arg(y).arg(cx).arg(cy);
                ++far;
            }
            const QPoint at(std::clamp(int(cx), 0, photo.width() - 1), std::clamp(int(cy), 0, photo.height() - 1));
            preview.setPixel(x, y, photo.pixel(at));
        }
    }
    ASSERT_TRUE(preview.save(QDir(dir).filePath(QStringLiteral("calib-lut-preview.png"))));
    EXPECT_GT(valid, lut.width * lut.height / 5);
    EXPECT_LT(far, valid / 100 + 1) << firstFar.toStdString();

    // A click that missed by 40 px: the check names it and the row is marked.
    dialog->selectRow(4);
    for (int i = 0; i < 4; ++i)
        QTest::keyClick(dialog->projectorView(), Qt::Key_Left, Qt::ShiftModifier);
    QApplication::processEvents();
    ASSERT_TRUE(dialog->grab().save(QDir(dir).filePath(QStringLiteral("calib-mismatch.png"))));
    EXPECT_TRUE(dialog->diagnosticsText().contains(QStringLiteral("Point 5 looks mismatched")))
        << dialog->diagnosticsText().toStdString();
    dialog->close();
}
