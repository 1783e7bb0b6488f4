// OBJ and DXF files brought into the 3D view tab as a user does it: the Add menu's file
// dialogs, files dropped on the view, the failure box, and the meshes after a reload.
#include "MainWindowTestSupport.h"

#include "project/SceneJson.h"
#include "scene/ui/SceneWidget.h"
#include "scene/ui/ThreeDViewTab.h"

#include <QAction>
#include <QDropEvent>
#include <QFileDialog>
#include <QMenu>
#include <QMimeData>
#include <QTest>
#include <QUrl>

namespace {

const QString kData = QStringLiteral(VG_TEST_DATA_DIR "/mesh/");

class ThreeDViewImportTest : public ShellSettingsFixture
{
protected:
    void SetUp() override
    {
        ShellSettingsFixture::SetUp();
        tab = std::make_unique<ThreeDViewTab>();
        tab->resize(1024, 700);
        tab->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(tab.get()));
    }

    QAction *menuAction(const QString &text) const
    {
        for (QAction *action : tab->addMenu()->actions())
            if (action->text() == text)
                return action;
        return nullptr;
    }

    // Sends a drop of `files` on the 3D view; true when the view accepted it.
    bool drop(const QStringList &files)
    {
        QMimeData mime;
        QList<QUrl> urls;
        for (const QString &file : files)
            urls.append(QUrl::fromLocalFile(file));
        mime.setUrls(urls);
        SceneWidget *view = tab->sceneWidget();
        const QPoint at = view->rect().center();
        QDragEnterEvent enter(at, Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(view, &enter);
        if (!enter.isAccepted())
            return false;
        QDropEvent dropEvent(QPointF(at), Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(view, &dropEvent);
        return dropEvent.isAccepted();
    }

    std::unique_ptr<ThreeDViewTab> tab;
};

} // namespace

TEST_F(ThreeDViewImportTest, AddMenuDialogsImportAndRememberTheirFolder)
{
    QAction *obj = menuAction(QStringLiteral("OBJ Mesh..."));
    QAction *dxf = menuAction(QStringLiteral("DXF Drawing..."));
    ASSERT_TRUE(obj && dxf);

    QString seenFolder;
    auto choose = [&seenFolder](const QString &file) {
        onNextModal([&seenFolder, file](QWidget *modal) {
            auto *dialog = qobject_cast<QFileDialog *>(modal);
            ASSERT_NE(dialog, nullptr);
            seenFolder = dialog->directory().absolutePath();
            dialog->selectFile(file);
            static_cast<QDialog *>(dialog)->accept();
        });
    };
    choose(kData + QStringLiteral("plan_r2018.dxf"));
    dxf->trigger();
    const QVector<GuideObject> &objects = tab->sceneWidget()->objects();
    ASSERT_EQ(objects.size(), 1);
    EXPECT_EQ(objects[0].guide_index, KindDxfMesh);
    EXPECT_TRUE(objects[0].imported_mesh);
    EXPECT_EQ(QSettings().value(QStringLiteral("paths/dxfDrawingImportDirectory")).toString(),
              QDir(kData).absolutePath());

    // The next DXF dialog opens where the last one was left; the OBJ one keeps its own.
    choose(kData + QStringLiteral("plan_r12.dxf"));
    dxf->trigger();
    EXPECT_EQ(seenFolder, QDir(kData).absolutePath());
    choose(kData + QStringLiteral("room_assimp.obj"));
    obj->trigger();
    ASSERT_EQ(objects.size(), 3);
    EXPECT_EQ(objects[2].guide_index, KindObjMesh);
    EXPECT_EQ(tab->sceneWidget()->currentIndex(), 2);
    EXPECT_EQ(QSettings().value(QStringLiteral("paths/objMeshImportDirectory")).toString(), QDir(kData).absolutePath());
}

TEST_F(ThreeDViewImportTest, DroppedFilesImportAndOthersAreLeftToTheWindow)
{
    EXPECT_TRUE(drop({kData + QStringLiteral("plan_r2018.dxf"), kData + QStringLiteral("room_assimp.obj")}));
    const QVector<GuideObject> &objects = tab->sceneWidget()->objects();
    ASSERT_EQ(objects.size(), 2);
    EXPECT_EQ(objects[0].name, QStringLiteral("plan_r2018"));
    EXPECT_EQ(objects[1].name, QStringLiteral("room_assimp"));
    // The same file again is a copy beside the first.
    EXPECT_TRUE(drop({kData + QStringLiteral("plan_r2018.dxf")}));
    EXPECT_EQ(objects.last().name, QStringLiteral("plan_r2018 Copy"));
    // A picture or a project is not the view's to take.
    EXPECT_FALSE(drop({kData + QStringLiteral("checker.png")}));
    EXPECT_EQ(objects.size(), 3);
}

TEST_F(ThreeDViewImportTest, AFailedImportSaysWhyInTheImportFailedBox)
{
    QTemporaryDir dir;
    const QString junk = dir.filePath(QStringLiteral("scan.obj"));
    QFile file(junk);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray("\x7f" "ELF\x02\x01\x01\0\0\0\0", 12).repeated(1000));
    file.close();

    auto seen = answerNextMessageBox(QMessageBox::Ok);
    EXPECT_TRUE(drop({junk}));
    EXPECT_EQ(seen->title, QStringLiteral("Import failed"));
    EXPECT_EQ(seen->text, QStringLiteral("OBJ has no valid vertices/faces."));
    EXPECT_TRUE(tab->sceneWidget()->objects().isEmpty());
}

TEST_F(ThreeDViewImportTest, MeshesComeBackWithTheirGeometryAfterAReload)
{
    QString error;
    ASSERT_EQ(tab->importMesh(kData + QStringLiteral("textured_src.obj"), &error), 0) << error.toStdString();
    ASSERT_EQ(tab->importMesh(kData + QStringLiteral("plan_crlf.dxf"), &error), 1) << error.toStdString();
    const QJsonObject saved = viewSettingsToJson(tab->viewSettings());

    ThreeDViewTab reopened;
    reopened.setViewSettings(viewSettingsFromJson(saved));
    const QVector<GuideObject> &objects = reopened.sceneWidget()->objects();
    ASSERT_EQ(objects.size(), 2);
    for (int i = 0; i < 2; ++i) {
        ASSERT_TRUE(objects[i].imported_mesh) << i;
        EXPECT_EQ(*objects[i].imported_mesh, *tab->sceneWidget()->objects().at(i).imported_mesh);
    }
    EXPECT_TRUE(objects[0].texture_visible);
    EXPECT_EQ(objects[0].texture_file_path, kData + QStringLiteral("checker.png"));
}
