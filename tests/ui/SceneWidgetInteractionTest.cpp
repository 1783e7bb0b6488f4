#include "scene/ui/SceneClipboard.h"
#include "scene/ui/SceneTexts.h"
#include "scene/ui/SceneWidget.h"
#include "scene/ui/ThreeDViewTab.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QClipboard>
#include <QListWidget>
#include <QMessageBox>
#include <QMouseEvent>
#include <QMimeData>
#include <QCursor>
#include <QScreen>
#include <QGuiApplication>
#include <QTest>
#include <QTimer>

#include <cmath>
#include <memory>

namespace {

// Answers the next modal message box with `button` and records what it said.
struct MessageBoxAnswer {
    QString title;
    QString text;
    bool seen = false;
};

void answerNextMessageBox(QMessageBox::StandardButton button, MessageBoxAnswer *record)
{
    QTimer::singleShot(0, [button, record] {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        if (!box) {
            answerNextMessageBox(button, record); // not up yet: look again
            return;
        }
        record->seen = true;
        record->title = box->windowTitle();
        record->text = box->text();
        box->button(button)->click();
    });
}

class SceneWidgetTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        // The real pointer stays off the window: the X server's own enter and motion
        // events would otherwise move the hover under the test's synthetic pointer.
        QCursor::setPos(QGuiApplication::primaryScreen()->geometry().bottomRight());
        tab = std::make_unique<ThreeDViewTab>();
        tab->resize(1280, 800);
        tab->move(0, 0);
        tab->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(tab.get()));
        view = tab->sceneWidget();
        view->setFocus();
        QApplication::processEvents();
    }

    // Delivered straight to the view: a move through the window system warps the real
    // pointer, whose events arrive late or not at all under a loaded X server.
    void sendMouse(QEvent::Type type, QPoint point, Qt::MouseButton button, Qt::MouseButtons held)
    {
        QMouseEvent event(type, QPointF(point), view->mapToGlobal(QPointF(point)), button, held, Qt::NoModifier);
        QApplication::sendEvent(view, &event);
    }

    void key(int k, Qt::KeyboardModifiers mods = Qt::NoModifier) { QTest::keyClick(view, Qt::Key(k), mods); }

    GuideObject &objectAt(int i) { return const_cast<GuideObject &>(view->objects().at(i)); }

    // Moves an object without an undo step (setup only).
    void place(int index, float x, float y, float z)
    {
        GuideObject o = view->objects().at(index);
        o.translate_x = x;
        o.translate_y = y;
        o.translate_z = z;
        view->setObjectWithoutUndo(index, o);
    }

    std::unique_ptr<ThreeDViewTab> tab;
    SceneWidget *view = nullptr;
};

} // namespace

TEST_F(SceneWidgetTest, CreatesObjectsAndUndoesAndRedoesThemWithKeys)
{
    EXPECT_EQ(tab->addObject(ThreeDViewTab::AddPlane, false), 0);
    EXPECT_EQ(tab->addObject(ThreeDViewTab::AddProjector, false), 1);
    ASSERT_EQ(view->objectCount(), 2);
    EXPECT_EQ(view->objects().at(0).name, QStringLiteral("Plane 1"));
    EXPECT_EQ(view->objects().at(1).guide_index, int(KindProjector));
    EXPECT_EQ(view->currentIndex(), 1); // the newest object is selected
    EXPECT_EQ(tab->objectList()->count(), 2);

    key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(view->objectCount(), 1);
    key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(view->objectCount(), 0);
    key(Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(view->objectCount(), 1);
    key(Qt::Key_U, Qt::ControlModifier);
    EXPECT_EQ(view->objectCount(), 2);
    EXPECT_EQ(tab->objectList()->count(), 2);
}

TEST_F(SceneWidgetTest, UndoWithEmptyStackDoesNothingAndConsumesTheKey)
{
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Z, Qt::ControlModifier);
    press.setAccepted(false);
    QApplication::sendEvent(view, &press);
    EXPECT_TRUE(press.isAccepted());
    EXPECT_EQ(view->objectCount(), 0);
    EXPECT_FALSE(tab->undo());
}

TEST_F(SceneWidgetTest, GizmoDragMovesAlongTheAxisAndUndoes)
{
    tab->addObject(ThreeDViewTab::AddPlane, false);
    ASSERT_EQ(view->currentIndex(), 0);
    const GuideObject before = view->objects().at(0);
    GizmoFrame frame;
    ASSERT_TRUE(view->gizmoFrame(&frame));
    const GizmoViewport viewport = view->gizmoViewport();
    const QVector3D grab = frame.origin + frame.axes[0] * (frame.length * 0.75f);
    const QPoint start = viewport.projectToPixel(grab).toPoint();
    const QPoint end = viewport.projectToPixel(grab + QVector3D(1.0f, 0, 0)).toPoint();
    ASSERT_EQ(view->gizmoPartAt(start), GizmoPart::XAxis);

    sendMouse(QEvent::MouseMove, start, Qt::NoButton, Qt::NoButton);
    EXPECT_EQ(view->hoveredGizmoPart(), GizmoPart::XAxis);
    sendMouse(QEvent::MouseButtonPress, start, Qt::LeftButton, Qt::LeftButton);
    for (int i = 1; i <= 10; ++i)
        sendMouse(QEvent::MouseMove, start + (end - start) * i / 10, Qt::NoButton, Qt::LeftButton);
    sendMouse(QEvent::MouseButtonRelease, end, Qt::LeftButton, Qt::NoButton);

    const GuideObject &moved = view->objects().at(0);
    EXPECT_NEAR(moved.translate_x, before.translate_x + 1.0, 0.03);
    EXPECT_NEAR(moved.translate_y, before.translate_y, 1e-4);
    EXPECT_NEAR(moved.translate_z, before.translate_z, 1e-4);

    key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(view->objects().at(0), before);
    key(Qt::Key_Y, Qt::ControlModifier);
    EXPECT_NEAR(view->objects().at(0).translate_x, before.translate_x + 1.0, 0.03);
}

TEST_F(SceneWidgetTest, SnappedGizmoDragLandsOnTheStep)
{
    tab->addObject(ThreeDViewTab::AddPlane, false);
    view->setSnapEnabled(true);
    GizmoFrame frame;
    ASSERT_TRUE(view->gizmoFrame(&frame));
    const GizmoViewport viewport = view->gizmoViewport();
    const QVector3D grab = frame.origin + frame.axes[1] * (frame.length * 0.75f);
    const QPoint start = viewport.projectToPixel(grab).toPoint();
    const QPoint end = viewport.projectToPixel(grab + QVector3D(0, 0.87f, 0)).toPoint();
    QTest::mousePress(view, Qt::LeftButton, Qt::NoModifier, start);
    for (int i = 1; i <= 8; ++i)
        QTest::mouseMove(view, start + (end - start) * i / 8);
    QTest::mouseRelease(view, Qt::LeftButton, Qt::NoModifier, end);
    // The plane starts standing on the floor (y = half its height = 0.5); with world axes
    // the snapped drag lands on the 0.1 m grid: 0.5 + 0.87 -> 1.4.
    const float y = view->objects().at(0).translate_y;
    EXPECT_NEAR(y, 1.4, 1e-4);
    EXPECT_NEAR(view->objects().at(0).translate_x, 0.0, 1e-6);
}

TEST_F(SceneWidgetTest, ClickPicksAndShiftClickExtendsTheSelection)
{
    tab->addObject(ThreeDViewTab::AddPlane, false);
    tab->addObject(ThreeDViewTab::AddPlane, false);
    place(0, -1.5f, 0.5f, 0.0f);
    place(1, 1.5f, 0.5f, 0.0f);
    view->setViewMode(ViewCameraMode::Front);
    view->frameSelection(); // nothing selected after Esc: frames all
    key(Qt::Key_Escape);
    EXPECT_TRUE(view->selection().isEmpty());
    view->frameSelection();

    // Click a little off the centre so the gizmo of a selected object is not hit.
    const QPoint a = view->objectPixel(0).toPoint() + QPoint(0, 20);
    const QPoint b = view->objectPixel(1).toPoint() + QPoint(0, 20);
    QTest::mouseClick(view, Qt::LeftButton, Qt::NoModifier, a);
    EXPECT_EQ(view->selection(), QList<int>{0});
    QTest::mouseClick(view, Qt::LeftButton, Qt::ShiftModifier, b);
    EXPECT_EQ(view->selection(), (QList<int>{0, 1}));
    QTest::mouseClick(view, Qt::LeftButton, Qt::ControlModifier, a);
    EXPECT_EQ(view->selection(), QList<int>{1});
    // A click on empty space clears.
    QTest::mouseClick(view, Qt::LeftButton, Qt::NoModifier, QPoint(5, view->height() - 5));
    EXPECT_TRUE(view->selection().isEmpty());
}

TEST_F(SceneWidgetTest, HShowsAllWhenAnyIsHiddenThenHidesAll)
{
    tab->addObject(ThreeDViewTab::AddPlane, false);
    tab->addObject(ThreeDViewTab::AddPlane, false);
    GuideObject hidden = view->objects().at(1);
    hidden.visible = false;
    view->setObjectWithoutUndo(1, hidden);
    view->setSelection({0, 1});

    key(Qt::Key_H);
    EXPECT_TRUE(view->objects().at(0).visible);
    EXPECT_TRUE(view->objects().at(1).visible);
    key(Qt::Key_H);
    EXPECT_FALSE(view->objects().at(0).visible);
    EXPECT_FALSE(view->objects().at(1).visible);
    // Each press was one undo step.
    key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_TRUE(view->objects().at(0).visible);
    // With a modifier, H is not the visibility key.
    key(Qt::Key_H, Qt::ShiftModifier);
    EXPECT_TRUE(view->objects().at(0).visible);
}

TEST_F(SceneWidgetTest, IAndGActOnlyOnProjectorsAndCameras)
{
    tab->addObject(ThreeDViewTab::AddPlane, false);
    tab->addObject(ThreeDViewTab::AddProjector, false);
    tab->addObject(ThreeDViewTab::AddCamera, false);
    view->setSelection({0, 1, 2});
    // One lens object with its frustum on, one with it off: I turns both on first.
    GuideObject projector = view->objects().at(1);
    projector.show_projector_frustum = true;
    view->setObjectWithoutUndo(1, projector);
    GuideObject camera = view->objects().at(2);
    camera.show_projector_frustum = false;
    view->setObjectWithoutUndo(2, camera);
    key(Qt::Key_I);
    EXPECT_FALSE(view->objects().at(0).show_projector_frustum);
    EXPECT_TRUE(view->objects().at(1).show_projector_frustum);
    EXPECT_TRUE(view->objects().at(2).show_projector_frustum);
    key(Qt::Key_I);
    EXPECT_FALSE(view->objects().at(1).show_projector_frustum);
    EXPECT_FALSE(view->objects().at(2).show_projector_frustum);

    const bool gridBefore = view->objects().at(0).projector_pixel_footprint_grid_visible;
    key(Qt::Key_G);
    EXPECT_EQ(view->objects().at(0).projector_pixel_footprint_grid_visible, gridBefore);
    EXPECT_TRUE(view->objects().at(1).projector_pixel_footprint_grid_visible);

    // D follows the same rule on every selected object.
    key(Qt::Key_D);
    for (int i = 0; i < 3; ++i)
        EXPECT_TRUE(view->objects().at(i).show_dimensions);
    key(Qt::Key_D);
    for (int i = 0; i < 3; ++i)
        EXPECT_FALSE(view->objects().at(i).show_dimensions);
}

TEST_F(SceneWidgetTest, XTogglesLocalAndWorldAxesAndWERChooseTheMode)
{
    tab->addObject(ThreeDViewTab::AddPlane, false);
    GuideObject turned = view->objects().at(0);
    turned.rotate_y = 90.0f;
    view->setObjectWithoutUndo(0, turned);
    EXPECT_EQ(view->transformSpace(), 0);
    GizmoFrame world;
    ASSERT_TRUE(view->gizmoFrame(&world));
    EXPECT_NEAR(world.axes[0].x(), 1.0, 1e-5);

    key(Qt::Key_X);
    EXPECT_EQ(view->transformSpace(), 1);
    GizmoFrame local;
    ASSERT_TRUE(view->gizmoFrame(&local));
    EXPECT_NEAR(std::abs(local.axes[0].z()), 1.0, 1e-5);
    key(Qt::Key_X);
    EXPECT_EQ(view->transformSpace(), 0);

    key(Qt::Key_E);
    EXPECT_EQ(view->transformMode(), 1);
    key(Qt::Key_R);
    EXPECT_EQ(view->transformMode(), 2);
    key(Qt::Key_W);
    EXPECT_EQ(view->transformMode(), 0);
}

TEST_F(SceneWidgetTest, FFramesTheSelectionOrEverything)
{
    tab->addObject(ThreeDViewTab::AddPlane, false);
    tab->addObject(ThreeDViewTab::AddPlane, false);
    place(0, 10.0f, 0.0f, 0.0f);
    place(1, 20.0f, 0.0f, 0.0f);
    key(Qt::Key_Escape);
    key(Qt::Key_F);
    EXPECT_NEAR(view->camera().target().x(), 15.0, 0.6);
    // Both objects are on screen.
    for (int i = 0; i < 2; ++i) {
        const QPointF p = view->objectPixel(i);
        EXPECT_TRUE(QRectF(view->rect()).contains(p)) << i;
    }
    view->selectOnly(1);
    key(Qt::Key_F);
    EXPECT_NEAR(view->camera().target().x(), 20.0, 0.01);
}

TEST_F(SceneWidgetTest, PAndVSwitchBetweenPerspectiveAndProjectorView)
{
    const int projector = tab->addObject(ThreeDViewTab::AddProjector, false);
    GuideObject p = view->objects().at(projector);
    p.name = QStringLiteral("PJ-A");
    view->setObjectWithoutUndo(projector, p);
    key(Qt::Key_V);
    EXPECT_EQ(view->camera().mode(), ViewCameraMode::ProjectorView);
    EXPECT_EQ(view->viewName(), QStringLiteral("PJ-A View"));
    EXPECT_EQ(view->viewSettings().projector_camera_view_object_index, projector);
    key(Qt::Key_P);
    EXPECT_EQ(view->camera().mode(), ViewCameraMode::Perspective);
    EXPECT_EQ(view->viewName(), QStringLiteral("Perspective"));
}

TEST_F(SceneWidgetTest, CurveDrawingAddsPointsOnTheGroundUntilRightClick)
{
    view->beginCurveDrawing();
    EXPECT_TRUE(view->isDrawingCurve());
    EXPECT_EQ(view->statusText(), QStringLiteral("Click points on the y=0 plane. Right-click or Esc to finish."));
    const QPoint clicks[3] = {QPoint(500, 500), QPoint(620, 520), QPoint(700, 460)};
    for (const QPoint &p : clicks)
        QTest::mouseClick(view, Qt::LeftButton, Qt::NoModifier, p);
    ASSERT_EQ(view->objectCount(), 1);
    const GuideObject &curve = view->objects().at(0);
    EXPECT_EQ(curve.guide_index, int(KindCurve));
    ASSERT_EQ(curve.curve_points.size(), 3);
    for (int i = 0; i < 3; ++i) {
        // Each anchor is where the click's ray meets y = 0.
        const ViewCameraRay ray = view->camera().rayThroughPixel(QPointF(clicks[i]), view->size());
        const float t = -ray.origin.y() / ray.direction.y();
        const QVector3D hit = ray.origin + ray.direction * t;
        EXPECT_NEAR(curve.curve_points[i].anchor_x, hit.x(), 1e-3);
        EXPECT_NEAR(curve.curve_points[i].anchor_z, hit.z(), 1e-3);
    }
    QTest::mouseClick(view, Qt::RightButton, Qt::NoModifier, QPoint(300, 300));
    EXPECT_FALSE(view->isDrawingCurve());
    QTest::mouseClick(view, Qt::LeftButton, Qt::NoModifier, QPoint(400, 500));
    EXPECT_EQ(view->objects().at(0).curve_points.size(), 3);

    // Esc ends a second curve too.
    view->beginCurveDrawing();
    QTest::mouseClick(view, Qt::LeftButton, Qt::NoModifier, QPoint(450, 480));
    key(Qt::Key_Escape);
    EXPECT_FALSE(view->isDrawingCurve());
    EXPECT_EQ(view->objectCount(), 2);
}

TEST_F(SceneWidgetTest, CopyAndPasteGoThroughTheSystemClipboard)
{
    key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(view->statusText(), QStringLiteral("Select a 3D object to copy."));

    tab->addObject(ThreeDViewTab::AddPlane, false);
    key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(view->statusText(), QStringLiteral("Copied 1 3D object."));
    const QMimeData *data = QApplication::clipboard()->mimeData();
    ASSERT_TRUE(data);
    EXPECT_TRUE(data->hasFormat(QStringLiteral("application/x-vantreoguide-3d-object-copy")));
    EXPECT_EQ(data->text(), QStringLiteral("VantreoGuide 3D object copy (1 object)"));

    key(Qt::Key_V, Qt::ControlModifier);
    ASSERT_EQ(view->objectCount(), 2);
    EXPECT_EQ(view->objects().at(1).name, QStringLiteral("Plane 1 Copy"));
    EXPECT_EQ(view->statusText(), QStringLiteral("Pasted 1 3D object."));
    EXPECT_EQ(view->selection(), QList<int>{1});

    // Two objects into a second view.
    view->setSelection({0, 1});
    key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(view->statusText(), QStringLiteral("Copied 2 3D objects."));
    EXPECT_EQ(QApplication::clipboard()->mimeData()->text(), QStringLiteral("VantreoGuide 3D object copy (2 objects)"));
    ThreeDViewTab other;
    other.resize(800, 600);
    other.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&other));
    other.sceneWidget()->setFocus();
    QTest::keyClick(other.sceneWidget(), Qt::Key_V, Qt::ControlModifier);
    ASSERT_EQ(other.sceneWidget()->objectCount(), 2);
    EXPECT_EQ(other.sceneWidget()->objects().at(0).name, QStringLiteral("Plane 1"));
    EXPECT_EQ(other.sceneWidget()->objects().at(1).name, QStringLiteral("Plane 1 Copy"));
    EXPECT_EQ(other.sceneWidget()->statusText(), QStringLiteral("Pasted 2 3D objects."));

    // The whole paste is one undo step.
    QTest::keyClick(other.sceneWidget(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(other.sceneWidget()->objectCount(), 0);
    QTest::keyClick(other.sceneWidget(), Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(other.sceneWidget()->objectCount(), 2);
}

TEST_F(SceneWidgetTest, PasteReadsWhatAnotherInstanceWrote)
{
    // Another running instance writes only the raw payload under our type.
    GuideObject wall;
    wall.guide_index = KindCylinderWall;
    wall.name = QStringLiteral("Wall");
    wall.translate_x = 2.5f;
    auto *data = new QMimeData;
    data->setData(SceneClipboard::mimeType(), SceneClipboard::encode({wall}));
    QApplication::clipboard()->setMimeData(data);
    key(Qt::Key_V, Qt::ControlModifier);
    ASSERT_EQ(view->objectCount(), 1);
    EXPECT_EQ(view->objects().at(0).name, QStringLiteral("Wall"));
    EXPECT_FLOAT_EQ(view->objects().at(0).translate_x, 2.5f);

    // Text that is not ours pastes nothing.
    QApplication::clipboard()->setText(QStringLiteral("hello"));
    key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(view->objectCount(), 1);
    EXPECT_EQ(view->statusText(), QStringLiteral("No 3D objects were copied."));
}

TEST_F(SceneWidgetTest, DuplicateGivesUniqueCopyNames)
{
    tab->addObject(ThreeDViewTab::AddPlane, false);
    key(Qt::Key_D, Qt::ControlModifier);
    view->selectOnly(0);
    key(Qt::Key_D, Qt::ControlModifier);
    ASSERT_EQ(view->objectCount(), 3);
    EXPECT_EQ(view->objects().at(1).name, QStringLiteral("Plane 1 Copy"));
    EXPECT_EQ(view->objects().at(2).name, QStringLiteral("Plane 1 Copy 2"));
}

TEST_F(SceneWidgetTest, DeleteAsksFirstAndHonoursTheAnswer)
{
    tab->addObject(ThreeDViewTab::AddPlane, false);
    MessageBoxAnswer no;
    answerNextMessageBox(QMessageBox::No, &no);
    key(Qt::Key_Delete);
    EXPECT_TRUE(no.seen);
    EXPECT_EQ(no.title, QStringLiteral("Delete 3D Object"));
    EXPECT_EQ(no.text, QStringLiteral("Delete \"Plane 1\" from the 3D View?"));
    EXPECT_EQ(view->objectCount(), 1);

    tab->addObject(ThreeDViewTab::AddProjector, false);
    view->setSelection({0, 1});
    MessageBoxAnswer yes;
    answerNextMessageBox(QMessageBox::Yes, &yes);
    key(Qt::Key_Delete);
    EXPECT_EQ(yes.text, QStringLiteral("Delete \"2 objects\" from the 3D View?"));
    EXPECT_EQ(view->objectCount(), 0);
    EXPECT_TRUE(view->selection().isEmpty());
    key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(view->objectCount(), 2);
}

TEST_F(SceneWidgetTest, DeletingAProjectorClosesItsCalibrationWindow)
{
    tab->addObject(ThreeDViewTab::AddPlane, false);
    const int projector = tab->addObject(ThreeDViewTab::AddProjector, false);
    QWidget calibration;
    calibration.show();
    view->registerCalibrationWindow(projector, &calibration);
    MessageBoxAnswer confirm, notice;
    answerNextMessageBox(QMessageBox::Yes, &confirm);
    QTimer::singleShot(50, [&] { answerNextMessageBox(QMessageBox::Ok, &notice); });
    key(Qt::Key_Delete);
    EXPECT_TRUE(confirm.seen);
    EXPECT_TRUE(notice.seen);
    EXPECT_EQ(notice.text, QStringLiteral("The Projector Calibration window will close because its projector "
                                          "\"Projector 1\" is being deleted."));
    EXPECT_FALSE(calibration.isVisible());
    EXPECT_EQ(view->objectCount(), 1);
}

TEST_F(SceneWidgetTest, NavigationWithAltDragsAndWheel)
{
    const double rx = view->camera().rotationY();
    const QPoint c(view->width() / 2, view->height() / 2);
    QTest::mousePress(view, Qt::LeftButton, Qt::AltModifier, c);
    QTest::mouseMove(view, c + QPoint(80, 0));
    QTest::mouseRelease(view, Qt::LeftButton, Qt::AltModifier, c + QPoint(80, 0));
    EXPECT_NE(view->camera().rotationY(), rx);

    const QVector3D target = view->camera().target();
    QTest::mousePress(view, Qt::MiddleButton, Qt::AltModifier, c);
    QTest::mouseMove(view, c + QPoint(60, 30));
    QTest::mouseRelease(view, Qt::MiddleButton, Qt::AltModifier, c + QPoint(60, 30));
    EXPECT_GT((view->camera().target() - target).length(), 1e-3);

    const double distance = view->camera().focusDistance();
    QWheelEvent wheel(QPointF(c), view->mapToGlobal(QPointF(c)), QPoint(), QPoint(0, 120), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(view, &wheel);
    EXPECT_LT(view->camera().focusDistance(), distance);
    // A plain left click in empty space does not orbit.
    const double ry = view->camera().rotationY();
    QTest::mouseClick(view, Qt::LeftButton, Qt::NoModifier, c);
    EXPECT_EQ(view->camera().rotationY(), ry);
}

TEST_F(SceneWidgetTest, ViewSwitchesAndCameraRoundTrip)
{
    Guide3DViewSettings settings = Guide3DViewSettings::created();
    settings.show_objects = false;
    settings.grid_visible = false;
    settings.snap = true;
    settings.show_projector_frustum = true;
    settings.show_obj_polygon_lines = true;
    settings.transform_mode = 2;
    settings.transform_space = 1;
    settings.view_rotation_x = 0.3;
    settings.view_rotation_y = 1.1;
    settings.focus_distance = 9.0;
    settings.target_x = 1.0;
    settings.target_y = 2.0;
    settings.target_z = 3.0;
    GuideCameraView saved;
    saved.name = QStringLiteral("Stage");
    settings.camera_views.append(saved);
    GuideObject plane;
    plane.name = QStringLiteral("Screen");
    settings.objects.append(plane);
    tab->setViewSettings(settings);

    const Guide3DViewSettings back = tab->viewSettings();
    EXPECT_TRUE(back.present);
    EXPECT_FALSE(back.show_objects);
    EXPECT_FALSE(back.grid_visible);
    EXPECT_TRUE(back.snap);
    EXPECT_TRUE(back.show_projector_frustum);
    EXPECT_TRUE(back.show_obj_polygon_lines);
    EXPECT_EQ(back.transform_mode, 2);
    EXPECT_EQ(back.transform_space, 1);
    EXPECT_NEAR(back.view_rotation_x, 0.3, 1e-9);
    EXPECT_NEAR(back.view_rotation_y, 1.1, 1e-9);
    EXPECT_NEAR(back.focus_distance, 9.0, 1e-9);
    EXPECT_NEAR(back.target_z, 3.0, 1e-6);
    ASSERT_EQ(back.camera_views.size(), 1);
    EXPECT_EQ(back.camera_views[0].name, QStringLiteral("Stage"));
    ASSERT_EQ(back.objects.size(), 1);
    EXPECT_EQ(back.objects[0].name, QStringLiteral("Screen"));
    // A loaded scene starts with nothing to undo.
    EXPECT_FALSE(tab->canUndo());
}

TEST(SceneTexts, HelpOverlayLinesInOrder)
{
    EXPECT_EQ(SceneTexts::helpTitle(), QStringLiteral("Viewport Controls"));
    const QStringList expected{QStringLiteral("Mouse Wheel: Zoom"),
                               QStringLiteral("P: Perspective View"),
                               QStringLiteral("V: Projector View"),
                               QStringLiteral("I: Toggle Projector Frustum"),
                               QStringLiteral("X: Toggle Local/World Handles"),
                               QStringLiteral("Alt + Left Drag: Orbit"),
                               QStringLiteral("Alt + Middle Drag: Pan"),
                               QStringLiteral("Alt + Right Drag: Dolly"),
                               QStringLiteral("F: Frame Selection")};
    EXPECT_EQ(SceneTexts::helpLines(), expected);
    EXPECT_EQ(SceneTexts::deleteQuestion({}), QStringLiteral("Delete \"selected object\" from the 3D View?"));
    EXPECT_EQ(SceneTexts::calibrationClosingNotice({QStringLiteral("A"), QStringLiteral("B")}),
              QStringLiteral("Projector Calibration windows will close because their projectors are being deleted."));
}
