#include "MainWindowTestSupport.h"

#include "app/MainWindow.h"
#include "app/TabKind.h"
#include "project/SceneJson.h"
#include "scene/ui/SceneAddObjectDialog.h"
#include "scene/ui/ScenePropertyPanel.h"
#include "scene/ui/SceneWidget.h"
#include "scene/ui/ThreeDViewTab.h"

#include <QAction>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QSpinBox>
#include <QTabWidget>
#include <QTest>

namespace {

QAction *addAction(ThreeDViewTab &tab, ThreeDViewTab::AddKind kind)
{
    for (QAction *action : tab.addMenu()->actions())
        if (!action->isSeparator() && action->data().toInt() == int(kind))
            return action;
    return nullptr;
}

// The field of the property panel labelled `label`.
template <typename T>
T *panelField(ScenePropertyPanel *panel, const QString &label)
{
    for (QFormLayout *form : panel->findChildren<QFormLayout *>()) {
        for (int row = 0; row < form->rowCount(); ++row) {
            auto *labelItem = form->itemAt(row, QFormLayout::LabelRole);
            auto *fieldItem = form->itemAt(row, QFormLayout::FieldRole);
            auto *text = labelItem ? qobject_cast<QLabel *>(labelItem->widget()) : nullptr;
            if (text && text->text() == label && fieldItem)
                if (auto *field = qobject_cast<T *>(fieldItem->widget()); field && field->isVisibleTo(panel))
                    return field;
        }
    }
    return nullptr;
}

class ThreeDViewTabTest : public ShellSettingsFixture
{
protected:
    void SetUp() override
    {
        ShellSettingsFixture::SetUp();
        tab = std::make_unique<ThreeDViewTab>();
        tab->resize(1280, 800);
        tab->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(tab.get()));
    }

    std::unique_ptr<ThreeDViewTab> tab;
};

} // namespace

TEST_F(ThreeDViewTabTest, AddMenuCoversEveryKind)
{
    const ThreeDViewTab::AddKind kinds[] = {
        ThreeDViewTab::AddPlane,      ThreeDViewTab::AddCirclePlane, ThreeDViewTab::AddCylinderWall,
        ThreeDViewTab::AddDome,       ThreeDViewTab::AddSphere,      ThreeDViewTab::AddHorseshoe,
        ThreeDViewTab::AddLShape,     ThreeDViewTab::AddPerson,      ThreeDViewTab::AddProjector,
        ThreeDViewTab::AddCamera,     ThreeDViewTab::AddCurve,       ThreeDViewTab::AddDistanceMeasure,
        ThreeDViewTab::AddComment,    ThreeDViewTab::AddGuide,       ThreeDViewTab::AddImage};
    for (auto kind : kinds)
        EXPECT_NE(addAction(*tab, kind), nullptr) << int(kind);

    // Without asking, every kind but the drawn curve appears with its defaults.
    int expected = 0;
    for (auto kind : kinds) {
        if (kind == ThreeDViewTab::AddCurve)
            continue;
        EXPECT_EQ(tab->addObject(kind, false), expected) << int(kind);
        ++expected;
    }
    const QVector<GuideObject> &objects = tab->sceneWidget()->objects();
    // Numbered from 1, so that the next one of a kind is told apart at once.
    EXPECT_EQ(objects.at(0).name, QStringLiteral("Plane 1"));
    EXPECT_EQ(objects.at(3).name, QStringLiteral("Dome 1"));
    EXPECT_EQ(objects.at(4).name, QStringLiteral("Sphere 1"));
    EXPECT_EQ(objects.at(5).name, QStringLiteral("Horseshoe 1"));
    EXPECT_EQ(objects.at(7).name, QStringLiteral("Person 170 cm"));
    EXPECT_EQ(objects.at(8).guide_index, int(KindProjector));
    EXPECT_EQ(tab->objectList()->count(), expected);
}

TEST_F(ThreeDViewTabTest, AddDialogTakesMillimetresWithTheClamps)
{
    onNextModal([](QWidget *modal) {
        auto *dialog = qobject_cast<SceneAddObjectDialog *>(modal);
        ASSERT_NE(dialog, nullptr);
        // Sizes stop at 1 .. 100000 mm.
        dialog->spinBox(0)->setValue(250000);
        EXPECT_EQ(dialog->spinBox(0)->value(), 100000);
        dialog->spinBox(0)->setValue(0);
        EXPECT_EQ(dialog->spinBox(0)->value(), 1);
        dialog->spinBox(0)->setValue(2500);
        dialog->spinBox(1)->setValue(1200);
        dialog->findChild<QLineEdit *>()->setText(QStringLiteral("Front Wall"));
        dialog->accept();
    });
    addAction(*tab, ThreeDViewTab::AddPlane)->trigger();
    ASSERT_EQ(tab->sceneWidget()->objectCount(), 1);
    const GuideObject &plane = tab->sceneWidget()->objects().at(0);
    EXPECT_EQ(plane.name, QStringLiteral("Front Wall"));
    EXPECT_FLOAT_EQ(plane.scale_x, 1.25f);
    EXPECT_FLOAT_EQ(plane.scale_y, 0.6f);

    // A person with width 0 takes its width from the height.
    onNextModal([](QWidget *modal) {
        auto *dialog = qobject_cast<SceneAddObjectDialog *>(modal);
        ASSERT_NE(dialog, nullptr);
        dialog->spinBox(0)->setValue(1700);
        dialog->spinBox(1)->setValue(0);
        dialog->accept();
    });
    addAction(*tab, ThreeDViewTab::AddPerson)->trigger();
    ASSERT_EQ(tab->sceneWidget()->objectCount(), 2);
    EXPECT_EQ(tab->sceneWidget()->objects().at(1).name, QStringLiteral("Person 170 cm"));
    EXPECT_FLOAT_EQ(tab->sceneWidget()->objects().at(1).scale_x, 0.25f);

    // Segment counts stop at 512; Cancel adds nothing.
    onNextModal([](QWidget *modal) {
        auto *dialog = qobject_cast<SceneAddObjectDialog *>(modal);
        ASSERT_NE(dialog, nullptr);
        dialog->spinBox(2)->setValue(1000);
        EXPECT_EQ(dialog->spinBox(2)->value(), 512);
        dialog->reject();
    });
    addAction(*tab, ThreeDViewTab::AddDome)->trigger();
    EXPECT_EQ(tab->sceneWidget()->objectCount(), 2);
}

TEST_F(ThreeDViewTabTest, PropertyEditsGoThroughUndo)
{
    tab->addObject(ThreeDViewTab::AddProjector, false);
    ScenePropertyPanel *panel = tab->propertyPanel();
    auto *position = panelField<QDoubleSpinBox>(panel, QStringLiteral("Position X"));
    auto *throwRatio = panelField<QDoubleSpinBox>(panel, QStringLiteral("Throw ratio"));
    auto *width = panelField<QSpinBox>(panel, QStringLiteral("Resolution width"));
    ASSERT_TRUE(position && throwRatio && width);
    EXPECT_DOUBLE_EQ(width->value(), 1920);

    position->setValue(2.0);
    throwRatio->setValue(0.05); // below the limit: held at 0.1
    width->setValue(3840);
    const GuideObject &edited = tab->sceneWidget()->objects().at(0);
    EXPECT_FLOAT_EQ(edited.translate_x, 2.0f);
    EXPECT_FLOAT_EQ(edited.throw_rate, 0.1f);
    EXPECT_EQ(edited.projector_resolution_width, 3840);

    EXPECT_TRUE(tab->undo());
    EXPECT_EQ(tab->sceneWidget()->objects().at(0).projector_resolution_width, 1920);
    EXPECT_EQ(width->value(), 1920); // the panel follows the scene
    EXPECT_TRUE(tab->undo());
    EXPECT_TRUE(tab->undo());
    EXPECT_FLOAT_EQ(tab->sceneWidget()->objects().at(0).translate_x, 0.0f);
    EXPECT_TRUE(tab->redo());
    EXPECT_FLOAT_EQ(tab->sceneWidget()->objects().at(0).translate_x, 2.0f);

    // The panel shows the fields of the selected kind only.
    tab->addObject(ThreeDViewTab::AddPlane, false);
    EXPECT_EQ(panelField<QSpinBox>(panel, QStringLiteral("Resolution width")), nullptr);
    EXPECT_NE(panelField<QSpinBox>(panel, QStringLiteral("U lines")), nullptr);
}

TEST_F(ThreeDViewTabTest, ViewLooksTheSameAfterSavingAndLoading)
{
    SceneWidget *view = tab->sceneWidget();
    tab->addObject(ThreeDViewTab::AddPlane, false);
    tab->addObject(ThreeDViewTab::AddProjector, false);
    view->setFocus();
    QTest::keyClick(view, Qt::Key_E);           // rotate mode
    QTest::keyClick(view, Qt::Key_X);           // local axes
    view->setSnapEnabled(true);
    view->setGridVisible(false);
    view->setShowProjectorFrustum(true);
    const QPoint c(view->width() / 2, view->height() / 2);
    QTest::mousePress(view, Qt::LeftButton, Qt::AltModifier, c);
    QTest::mouseMove(view, c + QPoint(-70, 25));
    QTest::mouseRelease(view, Qt::LeftButton, Qt::AltModifier, c + QPoint(-70, 25));

    const Guide3DViewSettings saved = tab->viewSettings();
    const Guide3DViewSettings loaded = viewSettingsFromJson(viewSettingsToJson(saved));
    ThreeDViewTab reopened;
    reopened.setViewSettings(loaded);
    const Guide3DViewSettings again = reopened.viewSettings();
    EXPECT_EQ(again.transform_mode, 1);
    EXPECT_EQ(again.transform_space, 1);
    EXPECT_TRUE(again.snap);
    EXPECT_FALSE(again.grid_visible);
    EXPECT_TRUE(again.show_projector_frustum);
    EXPECT_NEAR(again.view_rotation_x, saved.view_rotation_x, 1e-9);
    EXPECT_NEAR(again.view_rotation_y, saved.view_rotation_y, 1e-9);
    EXPECT_NEAR(again.focus_distance, saved.focus_distance, 1e-9);
    EXPECT_EQ(again.objects, saved.objects);
    EXPECT_EQ(again, loaded);

    // The projector view is saved with the object it looks through.
    view->selectOnly(1);
    QTest::keyClick(view, Qt::Key_V);
    const Guide3DViewSettings through = viewSettingsFromJson(viewSettingsToJson(tab->viewSettings()));
    EXPECT_EQ(through.view_mode, 3);
    EXPECT_EQ(through.projector_camera_view_object_index, 1);
    reopened.setViewSettings(through);
    EXPECT_EQ(reopened.sceneWidget()->camera().mode(), ViewCameraMode::ProjectorView);
    EXPECT_EQ(reopened.sceneWidget()->viewName(), QStringLiteral("Projector 1 View"));
}

TEST_F(ThreeDViewTabTest, WindowAddsCopiesAndUndoesThroughTheEditMenu)
{
    MainWindow window;
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    auto *first = qobject_cast<ThreeDViewTab *>(window.add3DViewTab());
    ASSERT_NE(first, nullptr);
    first->addObject(ThreeDViewTab::AddPlane, false);
    first->addObject(ThreeDViewTab::AddCamera, false);

    // "Copy" duplicates the whole view.
    auto *copy = qobject_cast<ThreeDViewTab *>(window.duplicateTab(window.indexOfContentTab(first)));
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(copy->viewSettings().objects, first->viewSettings().objects);
    EXPECT_EQ(TabKindRegistry::kindOf(copy), &threeDViewTabKind());

    // Edit > Undo acts on the current 3D view.
    window.tabWidget()->setCurrentWidget(first);
    QAction *undo = window.action(QStringLiteral("actionUndo"));
    QAction *redo = window.action(QStringLiteral("actionRedo"));
    ASSERT_TRUE(undo && redo);
    EXPECT_TRUE(undo->isEnabled());
    undo->trigger();
    EXPECT_EQ(first->sceneWidget()->objectCount(), 1);
    EXPECT_EQ(copy->sceneWidget()->objectCount(), 2);
    redo->trigger();
    EXPECT_EQ(first->sceneWidget()->objectCount(), 2);
}

TEST_F(ThreeDViewTabTest, SavedCameraViewsKeepTheCameraAndTheProjectors)
{
    SceneWidget *view = tab->sceneWidget();
    const int projector = tab->addObject(ThreeDViewTab::AddProjector, false);
    view->camera().setTarget(QVector3D(1, 2, 3));
    view->camera().setFocusDistance(7.0);
    view->saveCameraView(QStringLiteral("Stage"));
    ASSERT_EQ(view->cameraViews().size(), 1);
    EXPECT_EQ(view->cameraViews().at(0).projector_objects.size(), 1);

    GuideObject moved = view->objects().at(projector);
    moved.translate_x = 4.0f;
    view->applyObjectEdit(projector, moved);
    view->camera().setTarget(QVector3D(0, 0, 0));
    ASSERT_TRUE(view->restoreCameraView(0));
    EXPECT_NEAR(view->camera().target().z(), 3.0, 1e-6);
    EXPECT_NEAR(view->camera().focusDistance(), 7.0, 1e-9);
    EXPECT_FLOAT_EQ(view->objects().at(projector).translate_x, 0.0f);
    // Putting the projectors back is one undo step.
    EXPECT_TRUE(tab->undo());
    EXPECT_FLOAT_EQ(view->objects().at(projector).translate_x, 4.0f);
    // And the saved views travel with the project.
    const Guide3DViewSettings loaded = viewSettingsFromJson(viewSettingsToJson(tab->viewSettings()));
    ASSERT_EQ(loaded.camera_views.size(), 1);
    EXPECT_EQ(loaded.camera_views.at(0).name, QStringLiteral("Stage"));
    EXPECT_EQ(loaded.camera_views.at(0).projector_objects.size(), 1);
}
