#include "MainWindowTestSupport.h"

#include "app/MainWindow.h"
#include "app/UiPreferences.h"
#include "app/VantreoProxyStyle.h"
#include "guide/GuideRenderer.h"
#include "guide/ProjectorLayout.h"
#include "scene/ui/SceneWidget.h"
#include "scene/ui/ThreeDViewTab.h"

#include <QDir>
#include <QLabel>
#include <QTabWidget>
#include <QTest>

// Pictures of the window for people to look at (VG_SCREENSHOT_DIR, else a folder in the
// temporary directory), with the checks that pixels allow.
namespace {

QString screenshotDir()
{
    QString dir = qEnvironmentVariable("VG_SCREENSHOT_DIR");
    if (dir.isEmpty())
        dir = QDir::temp().filePath(QStringLiteral("vantreoguide-everyday-screenshots"));
    QDir().mkpath(dir);
    return dir;
}

class EverydayScreenshotTest : public ShellSettingsFixture
{
protected:
    void SetUp() override
    {
        ShellSettingsFixture::SetUp();
        m_palette = QApplication::palette();
        QApplication::setPalette(VantreoProxyStyle().standardPalette());
    }
    void TearDown() override
    {
        installUiTranslation(QStringLiteral("en"));
        QApplication::setPalette(m_palette);
        ShellSettingsFixture::TearDown();
    }
    QPalette m_palette;
};

// A guide of three projectors across, drawn with its array.
GuideSettings threeAcrossGuide()
{
    GuideSettings s;
    s.realWidth = 6000;
    s.realHeight = 1250;
    s.pixelWidth = 2304;
    s.pixelHeight = 480;
    s.projectorCount = 3;
    s.projectorCountY = 1;
    s.projectorAutoLayoutOverlap = 0.0;
    s.displayProjectorInfo = true;
    return s;
}

} // namespace

TEST_F(EverydayScreenshotTest, KoreanWindowRightAfterSwitching)
{
    auto window = std::make_unique<MainWindow>();
    window->setProperty("skipStartupSample", true);
    window->resize(1480, 920);
    window->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    window->addGuideTab();
    auto *view = qobject_cast<ThreeDViewTab *>(window->add3DViewTab());
    ASSERT_NE(view, nullptr);
    view->addObject(ThreeDViewTab::AddPlane, false);
    view->addObject(ThreeDViewTab::AddProjector, false);
    QTest::qWait(100);

    window->action(QStringLiteral("actionLanguageKorean"))->trigger();
    QTest::qWait(100);
    const QImage shot = window->grabWindowImage();
    ASSERT_FALSE(shot.isNull());
    EXPECT_TRUE(shot.save(QDir(screenshotDir()).filePath(QStringLiteral("everyday-korean-window.png"))));
    EXPECT_EQ(window->tabWidget()->currentWidget(), view);
    EXPECT_EQ(view->findChild<QLabel *>(QStringLiteral("vantreoSceneObjectsLabel"))->text(), QString::fromUtf8("개체"));
}

TEST_F(EverydayScreenshotTest, ThreeByOneArrayProjectsItsThreeSlices)
{
    ThreeDViewTab tab;
    tab.resize(1400, 800);
    tab.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&tab));
    SceneWidget *view = tab.sceneWidget();
    QApplication::processEvents();
    if (!view->rendererReady())
        GTEST_SKIP() << "no OpenGL 3.3: " << view->rendererError().toStdString();

    const GuideSettings guide = threeAcrossGuide();
    const ProjectorArrayLayout layout = computeProjectorArray(guide);
    tab.setGuideSources({QStringLiteral("Hall")}, {renderGuideImage(guide)},
                        {GuideArraySlices{layout.countX, layout.countY, projectorImageFractions(guide)}});
    // A 6 m x 1.25 m wall and three projectors 2 m apart, each 2 m from it (throw ratio 1).
    const int wall = tab.addObject(ThreeDViewTab::AddPlane, false);
    GuideObject plane = view->objects().at(wall);
    plane.translate_x = 0.0f;
    plane.translate_y = 1.5f;
    plane.translate_z = 0.0f;
    plane.rotate_y = 0.0f;
    plane.scale_x = 3.0f;
    plane.scale_y = 0.625f;
    plane.show_wireframe = false;
    view->applyObjectEdit(wall, plane);
    for (int k = 0; k < 3; ++k) {
        const int index = tab.addObject(ThreeDViewTab::AddProjector, false);
        GuideObject p = view->objects().at(index);
        p.translate_x = float(-2.0 + 2.0 * k);
        p.translate_y = 1.5f;
        p.translate_z = 2.0f;
        p.rotate_x = p.rotate_y = p.rotate_z = 0.0f;
        p.lens_shift_y = 0.0f;
        p.projector_resolution_width = 768;
        p.projector_resolution_height = 480;
        p.projector_image_guide_index = 0;
        p.projector_image_slice_column = k;
        p.projector_image_slice_row = 0;
        p.show_projector_frustum = false;
        view->applyObjectEdit(index, p);
    }
    view->clearSelection();
    view->setHelpOverlayVisible(false);
    view->camera().setTarget(QVector3D(0.0f, 1.5f, 0.0f));
    view->camera().setRotation(0.22, 0.0);
    view->camera().setFocusDistance(6.4);
    QTest::qWait(100);
    const QImage frame = view->grabFramebuffer();
    ASSERT_FALSE(frame.isNull());
    EXPECT_TRUE(frame.save(QDir(screenshotDir()).filePath(QStringLiteral("everyday-array-slices.png"))));

    // Each projector's part of the wall shows a different slice: the three areas differ.
    auto area = [&](double x) {
        QPointF a, b;
        view->camera().worldToPixel(QVector3D(float(x - 0.8), 1.9f, 0.0f), frame.size(), &a);
        view->camera().worldToPixel(QVector3D(float(x + 0.8), 1.1f, 0.0f), frame.size(), &b);
        return frame.copy(QRectF(a, b).normalized().toRect());
    };
    const QImage left = area(-2.0), middle = area(0.0), right = area(2.0);
    ASSERT_FALSE(left.isNull() || middle.isNull() || right.isNull());
    EXPECT_NE(left, middle);
    EXPECT_NE(middle, right);
    EXPECT_NE(left, right);
}
