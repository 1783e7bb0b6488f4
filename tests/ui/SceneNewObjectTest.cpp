#include "MainWindowTestSupport.h"

#include "scene/LensModel.h"
#include "scene/ScenePlacement.h"
#include "scene/Transform.h"
#include "scene/ui/SceneAddObjectDialog.h"
#include "scene/ui/SceneHeatmapLegend.h"
#include "scene/ui/SceneWidget.h"
#include "scene/ui/ThreeDViewTab.h"

#include <QAction>
#include <QDoubleSpinBox>
#include <QMenu>
#include <QPainter>
#include <QSpinBox>
#include <QTest>

namespace {

class SceneNewObjectTest : public ShellSettingsFixture
{
protected:
    void SetUp() override
    {
        ShellSettingsFixture::SetUp();
        tab = std::make_unique<ThreeDViewTab>();
        tab->resize(1200, 800);
        tab->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(tab.get()));
        view = tab->sceneWidget();
    }

    bool inView(int index) const
    {
        const QPointF pixel = view->objectPixel(index);
        return QRectF(view->rect()).adjusted(20, 20, -20, -20).contains(pixel);
    }

    std::unique_ptr<ThreeDViewTab> tab;
    SceneWidget *view = nullptr;
};

QAction *addAction(ThreeDViewTab &tab, ThreeDViewTab::AddKind kind)
{
    for (QAction *action : tab.addMenu()->actions())
        if (!action->isSeparator() && action->data().toInt() == int(kind))
            return action;
    return nullptr;
}

} // namespace

TEST_F(SceneNewObjectTest, NewObjectsAppearInTheCamerasViewWithNumberedNames)
{
    // The user has looked away from the origin: new things come where they look.
    view->camera().setTarget(QVector3D(6.0f, 0.0f, -5.0f));
    view->camera().setRotation(0.4, 0.9);
    view->camera().setFocusDistance(9.0);

    const int first = tab->addObject(ThreeDViewTab::AddPlane, false);
    const int second = tab->addObject(ThreeDViewTab::AddPlane, false);
    EXPECT_EQ(view->objects().at(first).name, QStringLiteral("Plane 1"));
    EXPECT_EQ(view->objects().at(second).name, QStringLiteral("Plane 2"));
    EXPECT_TRUE(inView(first));
    EXPECT_TRUE(inView(second));
    EXPECT_NEAR(view->objects().at(first).translate_x, 6.0, 1e-4);
    EXPECT_NEAR(view->objects().at(first).translate_z, -5.0, 1e-4);
    // The second goes beside the first, to its right on screen.
    EXPECT_GT(view->objectPixel(second).x(), view->objectPixel(first).x() + 20.0);

    // A projector faces the nearest surface with the surface centred in its image.
    const int projector = tab->addObject(ThreeDViewTab::AddProjector, false);
    const GuideObject &p = view->objects().at(projector);
    EXPECT_EQ(p.name, QStringLiteral("Projector 1"));
    EXPECT_TRUE(inView(projector));
    int facing = -1;
    for (int i : {first, second}) {
        const GuideObject &wall = view->objects().at(i);
        const vg::scene::LensProjection hit = vg::scene::projectWorldPoint(
            vg::scene::lensIntrinsicsOf(p), vg::scene::lensPoseOf(p), vg::scene::objectTranslation(wall), 100.0);
        if (hit.inside && std::abs(hit.u - 0.5) < 1e-3 && std::abs(hit.v - 0.5) < 1e-3)
            facing = i;
    }
    EXPECT_EQ(facing, second);
    EXPECT_GT(p.translate_y, 0.0f);
    EXPECT_EQ(view->objects().at(tab->addObject(ThreeDViewTab::AddProjector, false)).name,
              QStringLiteral("Projector 2"));

    // One undo removes a placed object whole.
    const int count = view->objectCount();
    EXPECT_TRUE(tab->undo());
    EXPECT_EQ(view->objectCount(), count - 1);
}

TEST_F(SceneNewObjectTest, AddProjectorAsksForResolutionThrowRatioAndLensShift)
{
    onNextModal([](QWidget *modal) {
        auto *dialog = qobject_cast<SceneAddObjectDialog *>(modal);
        ASSERT_NE(dialog, nullptr);
        ASSERT_TRUE(dialog->hasLensFields());
        const QList<QSpinBox *> spins = dialog->findChildren<QSpinBox *>();
        const QList<QDoubleSpinBox *> reals = dialog->findChildren<QDoubleSpinBox *>();
        ASSERT_EQ(reals.size(), 3); // throw ratio, shift X, shift Y
        // The pixel rows follow the three body sizes.
        QSpinBox *width = nullptr, *height = nullptr;
        for (QSpinBox *spin : spins) {
            if (spin->value() == 1920)
                width = spin;
            else if (spin->value() == 1200)
                height = spin;
        }
        ASSERT_TRUE(width && height);
        width->setValue(3840);
        height->setValue(2160);
        dialog->throwRatioBox()->setValue(0.8);
        reals[1]->setValue(-12.5);
        reals[2]->setValue(30.0);
        dialog->accept();
    });
    addAction(*tab, ThreeDViewTab::AddProjector)->trigger();
    ASSERT_EQ(view->objectCount(), 1);
    const GuideObject &p = view->objects().at(0);
    EXPECT_EQ(p.name, QStringLiteral("Projector 1"));
    EXPECT_EQ(p.projector_resolution_width, 3840);
    EXPECT_EQ(p.projector_resolution_height, 2160);
    EXPECT_FLOAT_EQ(p.throw_rate, 0.8f);
    EXPECT_FLOAT_EQ(p.lens_shift_x, -12.5f);
    EXPECT_FLOAT_EQ(p.lens_shift_y, 30.0f);
}

TEST_F(SceneNewObjectTest, PasteLandsBesideTheOriginalNotOnIt)
{
    tab->addObject(ThreeDViewTab::AddPlane, false);
    const GuideObject original = view->objects().at(0);
    ASSERT_TRUE(view->copySelection());
    ASSERT_EQ(view->pasteFromClipboard(), 1);
    ASSERT_EQ(view->objectCount(), 2);
    const GuideObject &copy = view->objects().at(1);
    const QVector3D shift(copy.translate_x - original.translate_x, copy.translate_y - original.translate_y,
                          copy.translate_z - original.translate_z);
    EXPECT_NEAR(shift.length(), vg::scene::kPasteOffset, 1e-4);
    EXPECT_FLOAT_EQ(shift.y(), 0.0f);
    // To the camera's right: the copy shows right of the original.
    EXPECT_GT(view->objectPixel(1).x(), view->objectPixel(0).x());
}

TEST_F(SceneNewObjectTest, FrustumKeyHidesTheSelectedFrustumWithTheViewWideOptionOn)
{
    tab->addObject(ThreeDViewTab::AddProjector, false);
    tab->addObject(ThreeDViewTab::AddProjector, false);
    view->setShowProjectorFrustum(true);
    view->selectOnly(0);
    view->setFocus();
    QTest::keyClick(view, Qt::Key_I);
    EXPECT_FALSE(view->showProjectorFrustum());
    EXPECT_FALSE(view->objects().at(0).show_projector_frustum);
    EXPECT_TRUE(view->objects().at(1).show_projector_frustum); // still shown, now by its own switch
    QTest::keyClick(view, Qt::Key_I);
    EXPECT_TRUE(view->objects().at(0).show_projector_frustum);
    EXPECT_TRUE(tab->undo());
    EXPECT_TRUE(tab->undo());
    EXPECT_TRUE(view->objects().at(0).show_projector_frustum);
    EXPECT_TRUE(view->objects().at(1).show_projector_frustum);
}

TEST_F(SceneNewObjectTest, ControlShiftZRedoesInTheView)
{
    tab->addObject(ThreeDViewTab::AddPlane, false);
    view->setFocus();
    QTest::keyClick(view, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(view->objectCount(), 0);
    QTest::keyClick(view, Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(view->objectCount(), 1);
}

TEST_F(SceneNewObjectTest, HeatMapLegendShowsTheProjectorsRange)
{
    view->camera().setTarget(QVector3D(0.0f, 1.0f, 0.0f));
    view->camera().setRotation(0.2, 0.0);
    tab->addObject(ThreeDViewTab::AddPlane, false);
    const int projector = tab->addObject(ThreeDViewTab::AddProjector, false);
    EXPECT_FALSE(view->heatmapLegend().visible);
    GuideObject p = view->objects().at(projector);
    p.projector_pixel_footprint_heatmap_visible = true;
    view->applyObjectEdit(projector, p);
    QApplication::processEvents();
    if (!view->rendererReady())
        GTEST_SKIP() << "no OpenGL 3.3: " << view->rendererError().toStdString();
    view->grabFramebuffer(); // one frame measures the range
    const SceneHeatmapLegend legend = view->heatmapLegend();
    ASSERT_TRUE(legend.visible);
    EXPECT_EQ(legend.projectorName, QStringLiteral("Projector 1"));
    EXPECT_GT(legend.minimum, 0.0);
    EXPECT_GT(legend.maximum, legend.minimum);
    EXPECT_TRUE(SceneHeatmapLegendPainter::maximumText(legend).endsWith(QStringLiteral(" mm/px")));
}

// The key runs from green (low) on the left to red (high) on the right, with both ends labelled.
TEST(SceneHeatmapLegendPaint, BarRunsGreenToRedWithTheRangeAtItsEnds)
{
    SceneHeatmapLegend legend;
    legend.visible = true;
    legend.projectorName = QStringLiteral("P");
    legend.minimum = 1.25;
    legend.maximum = 7.5;
    EXPECT_EQ(SceneHeatmapLegendPainter::minimumText(legend), QStringLiteral("1.25 mm/px"));
    EXPECT_EQ(SceneHeatmapLegendPainter::maximumText(legend), QStringLiteral("7.50 mm/px"));

    QImage image(600, 400, QImage::Format_ARGB32);
    image.fill(Qt::black);
    {
        QPainter painter(&image);
        SceneHeatmapLegendPainter::paint(painter, image.rect(), legend);
    }
    const QRect box = SceneHeatmapLegendPainter::boxRect(image.rect());
    EXPECT_TRUE(image.rect().contains(box));
    EXPECT_GT(box.left(), image.width() / 2); // bottom right, clear of the frame rate
    const QRect bar = SceneHeatmapLegendPainter::barRect(box);
    const QRgb low = image.pixel(bar.left() + 2, bar.center().y());
    const QRgb high = image.pixel(bar.right() - 2, bar.center().y());
    EXPECT_GT(qGreen(low), 200);
    EXPECT_LT(qRed(low), 60);
    EXPECT_GT(qRed(high), 200);
    EXPECT_LT(qGreen(high), 60);
    // Labels: light text under both ends of the bar.
    auto lightPixels = [&](const QRect &area) {
        int n = 0;
        for (int y = area.top(); y <= area.bottom(); ++y)
            for (int x = area.left(); x <= area.right(); ++x)
                n += qGray(image.pixel(x, y)) > 180;
        return n;
    };
    const QRect under(bar.left(), bar.bottom() + 2, bar.width(), box.bottom() - bar.bottom() - 3);
    EXPECT_GT(lightPixels(QRect(under.left(), under.top(), 60, under.height())), 10);
    EXPECT_GT(lightPixels(QRect(under.right() - 60, under.top(), 60, under.height())), 10);

    legend.visible = false;
    QImage none(600, 400, QImage::Format_ARGB32);
    none.fill(Qt::black);
    {
        QPainter painter(&none);
        SceneHeatmapLegendPainter::paint(painter, none.rect(), legend);
    }
    EXPECT_EQ(none.pixel(bar.center()), qRgb(0, 0, 0));
}
