#include "scene/ui/ScenePropertyPanel.h"
#include "scene/ui/SceneWidget.h"
#include "scene/ui/ThreeDViewTab.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QGroupBox>
#include <QImage>
#include <QPainter>
#include <QSet>
#include <QTest>

#include <memory>

// Renders the 3D view tab under the real GL renderer, saves the pictures for people to look
// at (VG_SCREENSHOT_DIR, else a folder in the temporary directory) and checks what can be
// checked by pixels.
namespace {

QString screenshotDir()
{
    QString dir = qEnvironmentVariable("VG_SCREENSHOT_DIR");
    if (dir.isEmpty())
        dir = QDir::temp().filePath(QStringLiteral("vantreoguide-3dview-screenshots"));
    QDir().mkpath(dir);
    return dir;
}

QImage testGuide()
{
    QImage image(1920, 1200, QImage::Format_RGB32);
    QPainter p(&image);
    p.fillRect(image.rect(), QColor(20, 20, 60));
    for (int x = 0; x < 1920; x += 160)
        for (int y = 0; y < 1200; y += 150)
            p.fillRect(x + 2, y + 2, 156, 146, ((x / 160 + y / 150) % 2) ? QColor(40, 120, 200) : QColor(220, 80, 60));
    p.setPen(QPen(Qt::white, 8));
    p.drawLine(960, 0, 960, 1200);
    p.drawLine(0, 600, 1920, 600);
    p.drawEllipse(QPoint(960, 600), 500, 500);
    return image;
}

int distinctColours(const QImage &image, const QRect &area)
{
    QSet<QRgb> colours;
    for (int y = area.top(); y < area.bottom(); y += 3)
        for (int x = area.left(); x < area.right(); x += 3)
            colours.insert(image.pixel(x, y) & 0xF0F0F0);
    return int(colours.size());
}

// Pixels that look like the heat map's green-to-red scale (strong red or green, little blue).
int heatLikePixels(const QImage &image, const QRect &area)
{
    int count = 0;
    for (int y = area.top(); y < area.bottom(); y += 2)
        for (int x = area.left(); x < area.right(); x += 2) {
            const QColor c = image.pixelColor(x, y);
            if (c.blue() < 90 && (c.green() > 150 || c.red() > 170) && std::abs(c.red() - c.green()) < 255)
                ++count;
        }
    return count;
}

class ThreeDViewScreenshotTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        tab = std::make_unique<ThreeDViewTab>();
        tab->resize(1600, 900);
        tab->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(tab.get()));
        view = tab->sceneWidget();
        tab->setGuideSources({QStringLiteral("Guide 1")}, {testGuide()});

        SceneModel &model = view->model();
        const int plane = model.addPlane(QStringLiteral("Screen"), 8000, 4500);
        place(plane, 0.0f, 2.25f, -4.0f);
        const int dome = model.addDome(QStringLiteral("Dome"), 1500, 1500, 48, 16);
        place(dome, 5.0f, 0.0f, -1.0f);
        const int guide = model.addGuide(QStringLiteral("Guide Source"), 0, 1600, 1000);
        place(guide, -6.0f, 0.5f, 0.0f);
        for (int i = 0; i < 2; ++i) {
            const int index = model.addProjector(QStringLiteral("PJ-%1").arg(i + 1));
            GuideObject p = view->objects().at(index);
            p.translate_x = i == 0 ? -1.6f : 1.6f;
            p.translate_y = 3.0f;
            p.translate_z = 2.5f;
            p.rotate_x = -5.0f;
            p.show_projector_frustum = true;
            p.projector_pixel_footprint_heatmap_visible = i == 1;
            p.projector_image_guide_index = 0; // the guide the Guide object shows
            view->setObjectWithoutUndo(index, p);
            projectors[i] = index;
        }
        Guide3DViewSettings settings = tab->viewSettings();
        settings.view_rotation_x = 0.35;
        settings.view_rotation_y = -0.45;
        settings.focus_distance = 14.0;
        settings.target_x = 0.5;
        settings.target_y = 1.6;
        settings.target_z = -1.0;
        tab->setViewSettings(settings);
        view->selectOnly(projectors[1]);
        settle();
    }

    void place(int index, float x, float y, float z)
    {
        GuideObject o = view->objects().at(index);
        o.translate_x = x;
        o.translate_y = y;
        o.translate_z = z;
        view->setObjectWithoutUndo(index, o);
    }

    void settle()
    {
        for (int i = 0; i < 5; ++i) {
            QApplication::processEvents();
            QTest::qWait(30);
        }
    }

    QImage save(QWidget *widget, const QString &name)
    {
        const QImage image = widget->grab().toImage().convertToFormat(QImage::Format_RGB32);
        image.save(QDir(screenshotDir()).filePath(name));
        return image;
    }

    std::unique_ptr<ThreeDViewTab> tab;
    SceneWidget *view = nullptr;
    int projectors[2] = {-1, -1};
};

} // namespace

TEST_F(ThreeDViewScreenshotTest, TabWithSurfacesProjectorsFrustaAndHeatMap)
{
    if (!view->rendererReady())
        GTEST_FAIL() << "renderer did not start: " << view->rendererError().toStdString();
    const QImage shot = save(tab.get(), QStringLiteral("3dview_tab.png"));
    const QImage viewShot = save(view, QStringLiteral("3dview_view.png"));
    ASSERT_FALSE(viewShot.isNull());
    const QRect centre(viewShot.width() / 4, viewShot.height() / 4, viewShot.width() / 2, viewShot.height() / 2);
    EXPECT_GT(distinctColours(viewShot, centre), 40);
    EXPECT_GT(heatLikePixels(viewShot, centre), 200);
    EXPECT_FALSE(shot.isNull());

    // The rotation gizmo: three axis circles and the view ring.
    view->setFocus();
    QTest::keyClick(view, Qt::Key_E);
    view->selectOnly(0);
    settle();
    save(view, QStringLiteral("3dview_rotate_gizmo.png"));
    GizmoFrame frame;
    ASSERT_TRUE(view->gizmoFrame(&frame));
    const QPointF origin = view->gizmoViewport().projectToPixel(frame.origin);
    EXPECT_EQ(view->gizmoPartAt(origin + QPointF(0, -SceneGizmo::kRingPixels)), GizmoPart::Ring);
}

TEST_F(ThreeDViewScreenshotTest, ProjectorPropertyPanel)
{
    ScenePropertyPanel *panel = tab->propertyPanel();
    QStringList groups;
    for (QGroupBox *box : panel->findChildren<QGroupBox *>())
        if (box->isVisibleTo(panel))
            groups.append(box->title());
    EXPECT_TRUE(groups.contains(QStringLiteral("Projector"))) << groups.join(',').toStdString();
    EXPECT_TRUE(groups.contains(QStringLiteral("Pixel Footprint")));
    EXPECT_TRUE(groups.contains(QStringLiteral("Transform")));
    EXPECT_FALSE(groups.contains(QStringLiteral("Plane")));
    panel->resize(panel->width(), 1400);
    save(panel, QStringLiteral("3dview_projector_panel.png"));
}

TEST_F(ThreeDViewScreenshotTest, ProjectorViewLooksThroughTheLens)
{
    view->setFocus();
    QTest::keyClick(view, Qt::Key_V);
    settle();
    EXPECT_EQ(view->viewName(), QStringLiteral("PJ-2 View"));
    const QImage shot = save(view, QStringLiteral("3dview_projector_view.png"));
    // Through the lens the projected guide fills the middle of the picture.
    const QRect centre(shot.width() / 3, shot.height() / 3, shot.width() / 3, shot.height() / 3);
    EXPECT_GT(distinctColours(shot, centre), 20);
}
