#include "MainWindowTestSupport.h"

#include "guide/ui/GuideTab.h"
#include "project/ProjectFile.h"
#include "scene/ui/SceneExportDialogs.h"
#include "scene/ui/SceneWidget.h"
#include "scene/ui/ThreeDViewTab.h"

#include <QAction>
#include <QCheckBox>
#include <QDir>
#include <QFileInfo>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QSettings>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QTest>

namespace {

QString screenshotDir()
{
    QString dir = qEnvironmentVariable("VG_SCREENSHOT_DIR");
    if (dir.isEmpty())
        dir = QDir::temp().filePath(QStringLiteral("vantreoguide-export-screenshots"));
    QDir().mkpath(dir);
    return dir;
}

class SceneExportMenu : public ShellSettingsFixture
{
protected:
    void SetUp() override
    {
        ShellSettingsFixture::SetUp();
        ASSERT_TRUE(out.isValid());
        tab = std::make_unique<ThreeDViewTab>();
        tab->resize(1280, 800);
        tab->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(tab.get()));
        SceneModel &model = tab->sceneWidget()->model();
        wall = model.addPlane(QStringLiteral("Wall"), 4000, 2500);
        GuideObject *w = model.mutableObject(wall);
        w->translate_z = -4.0f;
        projector = model.addProjector(QStringLiteral("Beamer"));
        model.clearSelection();
    }

    // A chooser that answers the file dialog with `name` in the output folder.
    auto choose(const QString &name)
    {
        return [this, name](const QString &title, const QString &suggested, const QString &filter) {
            lastTitle = title;
            lastSuggested = suggested;
            lastFilter = filter;
            return out.filePath(name);
        };
    }

    QTemporaryDir out;
    std::unique_ptr<ThreeDViewTab> tab;
    int wall = -1, projector = -1;
    QString lastTitle, lastSuggested, lastFilter;
};

} // namespace

TEST_F(SceneExportMenu, ListsTheSceneFormatsOfTheTableAndShowsThem)
{
    QMenu *menu = tab->exportMenu();
    ASSERT_TRUE(menu);
    QStringList names, texts;
    for (QAction *action : menu->actions()) {
        names.append(action->objectName());
        texts.append(action->text());
    }
    EXPECT_EQ(names, (QStringList{QStringLiteral("vantreoSceneExport_obj"), QStringLiteral("vantreoSceneExport_view-mesh"),
                                  QStringLiteral("vantreoSceneExport_fbx"), QStringLiteral("vantreoSceneExport_usd"),
                                  QStringLiteral("vantreoSceneExport_maya"), QString(),
                                  QStringLiteral("actionExportProjectorCameraUvLut")}));
    EXPECT_EQ(texts.first(), QStringLiteral("Export OBJ..."));
    menu->popup(tab->mapToGlobal(QPoint(40, 40)));
    ASSERT_TRUE(QTest::qWaitForWindowExposed(menu));
    QTest::qWait(50);
    const QImage shot = menu->grab().toImage();
    EXPECT_GT(shot.height(), 5 * 12);
    shot.save(QDir(screenshotDir()).filePath(QStringLiteral("scene_export_menu.png")));
    tab->grab().save(QDir(screenshotDir()).filePath(QStringLiteral("scene_export_tab.png")));
    menu->hide();
}

TEST_F(SceneExportMenu, ObjRemembersItsFolderAndAddsTheSuffix)
{
    const QStringList written = tab->exportScene(QStringLiteral("obj"), choose(QStringLiteral("room")));
    ASSERT_GE(written.size(), 2);
    EXPECT_EQ(written.first(), out.filePath(QStringLiteral("room.obj")));
    EXPECT_EQ(lastTitle, QStringLiteral("Export OBJ"));
    EXPECT_EQ(lastFilter, QStringLiteral("Wavefront OBJ (*.obj)"));
    EXPECT_TRUE(lastSuggested.endsWith(QStringLiteral("3d_view.obj")));
    EXPECT_EQ(QSettings().value(QStringLiteral("paths/objExportDirectory")).toString(), QFileInfo(out.path()).absoluteFilePath());
    // Nothing selected: every visible object, with the projector's frustum.
    const QByteArray obj = [&] { QFile f(written.first()); f.open(QIODevice::ReadOnly); return f.readAll(); }();
    EXPECT_TRUE(obj.contains("g Wall_0\n"));
    EXPECT_TRUE(obj.contains("g Beamer_Frustum\n"));
    // The next dialog starts in that folder.
    tab->exportScene(QStringLiteral("fbx"), choose(QStringLiteral("room.fbx")));
    EXPECT_EQ(QFileInfo(lastSuggested).fileName(), QStringLiteral("vantreo_scene.fbx"));
}

TEST_F(SceneExportMenu, ViewMeshAsksForItsOptionsAndKeepsThem)
{
    // Without a projector chosen the user is told before any dialog.
    auto refused = answerNextMessageBox([](QMessageBox *box) { return box->button(QMessageBox::Ok); });
    EXPECT_TRUE(tab->exportScene(QStringLiteral("view-mesh"), choose(QStringLiteral("vm.obj"))).isEmpty());
    EXPECT_EQ(refused->title, QStringLiteral("Export failed"));
    EXPECT_EQ(refused->text, QStringLiteral("Select a projector or camera object first."));

    tab->sceneWidget()->model().setSelectedIndex(projector);
    onNextModal([](QWidget *modal) {
        auto *dialog = qobject_cast<ViewMeshOptionsDialog *>(modal);
        ASSERT_TRUE(dialog);
        dialog->findChild<QCheckBox *>(QStringLiteral("vantreoViewMeshFlatten"))->setChecked(false);
        dialog->findChild<QCheckBox *>(QStringLiteral("vantreoViewMeshNormalize"))->setChecked(true);
        dialog->findChild<QSpinBox *>(QStringLiteral("vantreoViewMeshMargin"))->setValue(32);
        dialog->grab().save(QDir(screenshotDir()).filePath(QStringLiteral("view_mesh_options.png")));
        dialog->accept();
    });
    const QStringList written = tab->exportScene(QStringLiteral("view-mesh"), choose(QStringLiteral("vm.obj")));
    ASSERT_FALSE(written.isEmpty());
    QFile f(written.first());
    ASSERT_TRUE(f.open(QIODevice::ReadOnly));
    EXPECT_TRUE(f.readAll().contains("# Mode: 3D, Clip: On, Normalize: On, Frame Margin: 32 px\n"));
    QSettings settings;
    EXPECT_EQ(settings.value(QStringLiteral("export/viewMesh/flattenTo2D")).toBool(), false);
    EXPECT_EQ(settings.value(QStringLiteral("export/viewMesh/normalizeCoordinates")).toBool(), true);
    EXPECT_EQ(settings.value(QStringLiteral("export/viewMesh/frameMarginPixels")).toInt(), 32);
    const vg::exchange::ViewMeshOptions again = ViewMeshOptionsDialog().options();
    EXPECT_EQ(again, (vg::exchange::ViewMeshOptions{false, true, true, 32}));
}

TEST_F(SceneExportMenu, FailuresShowInABoxTitledExportFailed)
{
    QFile blocker(out.filePath(QStringLiteral("file")));
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    blocker.close();
    auto seen = answerNextMessageBox([](QMessageBox *box) { return box->button(QMessageBox::Ok); });
    EXPECT_TRUE(tab->exportScene(QStringLiteral("usd"), choose(QStringLiteral("file/sub/scene.usda"))).isEmpty());
    EXPECT_EQ(seen->title, QStringLiteral("Export failed"));
    EXPECT_TRUE(seen->text.startsWith(QStringLiteral("Could not create export folder: "))) << seen->text.toStdString();
}

TEST_F(SceneExportMenu, GuideTabExportsItsMeshNamedAfterItsTitle)
{
    GuideTab guideTab;
    GuideSettings settings = guideTab.settings();
    settings.pixelWidth = 480;
    settings.pixelHeight = 300;
    guideTab.setSettings(settings);
    guideTab.setProperty("fallbackTabTitle", QStringLiteral("Hall"));
    auto *button = guideTab.findChild<QPushButton *>(QStringLiteral("vantreoGuideExportMesh"));
    ASSERT_TRUE(button);
    EXPECT_EQ(button->text(), QStringLiteral("Export Guide Mesh (OBJ + MEL)..."));
    QString suggestedSeen;
    const QStringList written = guideTab.exportGuideMeshInteractive([&](const QString &suggested) {
        suggestedSeen = suggested;
        return out.filePath(QStringLiteral("hall.obj"));
    });
    ASSERT_EQ(written.size(), 4);
    EXPECT_TRUE(suggestedSeen.endsWith(QStringLiteral("vantreo_guide.obj")));
    EXPECT_EQ(QFileInfo(written.at(2)).fileName(), QStringLiteral("hall_maya_surface.mel"));
    EXPECT_EQ(QImage(out.filePath(QStringLiteral("hall_VantreoGuide_Hall.png"))).size(), QSize(480, 300));
    EXPECT_EQ(QSettings().value(QStringLiteral("paths/guideMeshExportDirectory")).toString(),
              QFileInfo(out.path()).absoluteFilePath());

    // A folder that cannot be made: the box says so.
    QFile blocker(out.filePath(QStringLiteral("plain")));
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    blocker.close();
    auto seen = answerNextMessageBox([](QMessageBox *box) { return box->button(QMessageBox::Ok); });
    EXPECT_TRUE(guideTab.exportGuideMeshInteractive([&](const QString &) { return out.filePath(QStringLiteral("plain/x/g")); })
                    .isEmpty());
    EXPECT_EQ(seen->title, QStringLiteral("Export failed"));
    EXPECT_TRUE(seen->text.startsWith(QStringLiteral("Could not save OBJ file: "))) << seen->text.toStdString();
}

TEST_F(SceneExportMenu, SampleProjectLeavesTheWindowInEveryFormat)
{
    ProjectDocument sample;
    QString error;
    ASSERT_TRUE(loadProjectDocument(QStringLiteral(VG_SOURCE_DIR "/samples/sample.vgs"), &sample, &error))
        << error.toStdString();
    ASSERT_FALSE(sample.views.isEmpty());
    tab->setViewSettings(sample.views.first());
    const QVector<GuideObject> &objects = tab->sceneWidget()->model().objects();
    int lens = -1;
    for (int i = 0; i < objects.size() && lens < 0; ++i)
        if (objects.at(i).hasLens())
            lens = i;
    ASSERT_GE(lens, 0);
    tab->sceneWidget()->model().setSelectedIndex(lens);
    const struct {
        const char *id, *file, *firstLine;
    } formats[] = {
        {"obj", "sample.obj", "# Vantreo Guide 3D View OBJ"},
        {"view-mesh", "sample_view.obj", "# Vantreo Guide Projector View Mesh OBJ"},
        {"fbx", "sample.fbx", "; FBX 7.4.0 project file exported by VantreoGuide"},
        {"usd", "sample.usda", "#usda 1.0"},
        {"maya", "sample.ma", "//Maya ASCII projector scene exported by VantreoGuide"},
    };
    for (const auto &f : formats) {
        if (QLatin1String(f.id) == QLatin1String("view-mesh"))
            onNextModal([](QWidget *modal) { qobject_cast<QDialog *>(modal)->accept(); });
        const QStringList written = tab->exportScene(QString::fromLatin1(f.id), choose(QString::fromLatin1(f.file)));
        ASSERT_FALSE(written.isEmpty()) << f.id;
        QFile file(written.first());
        ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << f.id;
        EXPECT_EQ(file.readLine().trimmed(), QByteArray(f.firstLine)) << f.id;
    }
}
