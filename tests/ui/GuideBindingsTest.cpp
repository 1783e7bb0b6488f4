#include "MainWindowTestSupport.h"
#include "app/GuideRecords.h"
#include "app/MainWindow.h"
#include "app/ProjectLifecycle.h"
#include "guide/ui/GuideTab.h"
#include "scene/ui/SceneWidget.h"
#include "scene/ui/ThreeDViewTab.h"

#include <QTabBar>
#include <QTabWidget>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

GuideSettings named(const QString &text)
{
    GuideSettings g;
    g.explain = text;
    return g;
}

class GuideBindingsTest : public ShellSettingsFixture
{
protected:
    void SetUp() override
    {
        ShellSettingsFixture::SetUp();
        m_window = std::make_unique<MainWindow>();
        m_window->setProperty("skipStartupSample", true);
        m_window->resize(1280, 800);
        m_lifecycle = m_window->findChild<ProjectLifecycle *>();
        ASSERT_NE(m_lifecycle, nullptr);
    }

    // Guides A, B, C listed in that order but shown as tabs C, A, B; a wall shows A, a
    // floor C, and a projector (and the one stored with a camera view) projects B.
    QString writeProject()
    {
        ProjectDocument doc;
        doc.guides = {named(QStringLiteral("A")), named(QStringLiteral("B")), named(QStringLiteral("C"))};
        Guide3DViewSettings view = Guide3DViewSettings::created();
        GuideObject wall;
        wall.guide_index = KindPlane;
        wall.texture_guide_index = 0;
        GuideObject floor = wall;
        floor.texture_guide_index = 2;
        GuideObject projector;
        projector.guide_index = KindProjector;
        projector.projector_image_guide_index = 1;
        GuideCameraView camera;
        camera.projector_objects = {projector};
        view.objects = {wall, floor, projector};
        view.camera_views = {camera};
        doc.views = {view};
        doc.activeView = view;
        doc.tabs = {{QStringLiteral("guide"), 2}, {QStringLiteral("3dView"), 0}, {QStringLiteral("guide"), 0},
                    {QStringLiteral("guide"), 1}};
        const QString path = m_dir.filePath(QStringLiteral("mixed.vgs"));
        QString error;
        EXPECT_TRUE(saveProjectDocument(path, doc, &error)) << error.toStdString();
        return path;
    }

    // What the saved project's bindings name, by the guides' texts.
    QStringList boundGuides(const ProjectDocument &doc)
    {
        auto nameOf = [&](int index) { return index >= 0 && index < doc.guides.size() ? doc.guides[index].explain : QStringLiteral("-"); };
        const Guide3DViewSettings &view = doc.views.value(0);
        return {nameOf(view.objects.value(0).texture_guide_index), nameOf(view.objects.value(1).texture_guide_index),
                nameOf(view.objects.value(2).projector_image_guide_index),
                nameOf(view.camera_views.value(0).projector_objects.value(0).projector_image_guide_index)};
    }

    QStringList guideTabTexts()
    {
        QStringList texts;
        for (QWidget *content : m_window->contentTabs()) {
            if (auto *guide = qobject_cast<GuideTab *>(content))
                texts << guide->settings().explain;
        }
        return texts;
    }

    QTemporaryDir m_dir;
    std::unique_ptr<MainWindow> m_window;
    ProjectLifecycle *m_lifecycle = nullptr;
};

} // namespace

TEST_F(GuideBindingsTest, ATabOrderUnlikeTheGuideListChangesNoBinding)
{
    ASSERT_TRUE(m_lifecycle->openProject(writeProject()));
    EXPECT_EQ(guideTabTexts(), (QStringList{QStringLiteral("C"), QStringLiteral("A"), QStringLiteral("B")}));
    const QStringList expected{QStringLiteral("A"), QStringLiteral("C"), QStringLiteral("B"), QStringLiteral("B")};
    EXPECT_EQ(boundGuides(m_lifecycle->currentDocument()), expected);

    // The 3D view's guide images are listed the way its objects name them.
    auto *view = qobject_cast<ThreeDViewTab *>(m_window->contentTab(1));
    ASSERT_NE(view, nullptr);
    const QList<GuideTab *> byRecord = guiderecords::guideTabsByRecord(m_window.get());
    ASSERT_EQ(byRecord.size(), 3);
    const GuideObject wall = view->sceneWidget()->objects().at(0);
    EXPECT_EQ(byRecord.at(wall.texture_guide_index)->settings().explain, QStringLiteral("A"));

    // Dragging tabs around changes nothing any object shows, nor what a save writes.
    m_window->tabWidget()->tabBar()->moveTab(0, 3);
    m_window->tabWidget()->tabBar()->moveTab(1, 0);
    EXPECT_NE(guideTabTexts(), (QStringList{QStringLiteral("C"), QStringLiteral("A"), QStringLiteral("B")}));
    EXPECT_EQ(guiderecords::guideTabsByRecord(m_window.get()), byRecord);
    EXPECT_EQ(boundGuides(m_lifecycle->currentDocument()), expected);
    const QString saved = m_dir.filePath(QStringLiteral("saved.vgs"));
    ASSERT_TRUE(m_lifecycle->saveProjectTo(saved));
    ProjectDocument reread;
    QString error;
    ASSERT_TRUE(loadProjectDocument(saved, &reread, &error)) << error.toStdString();
    EXPECT_EQ(boundGuides(reread), expected);
}

TEST_F(GuideBindingsTest, RemovingAGuideClearsItsBindingsAndKeepsTheOthers)
{
    ASSERT_TRUE(m_lifecycle->openProject(writeProject()));
    // A new guide tab after the current one does not disturb the bindings either.
    m_window->tabWidget()->setCurrentIndex(0);
    m_window->addGuideTab();
    EXPECT_EQ(boundGuides(m_lifecycle->currentDocument()),
              (QStringList{QStringLiteral("A"), QStringLiteral("C"), QStringLiteral("B"), QStringLiteral("B")}));
    // Delete guide A (shown second among the guide tabs).
    int indexOfA = -1;
    for (int i = 0; i < m_window->contentTabCount(); ++i) {
        if (auto *guide = qobject_cast<GuideTab *>(m_window->contentTab(i)); guide && guide->settings().explain == QLatin1String("A"))
            indexOfA = i;
    }
    ASSERT_GE(indexOfA, 0);
    ASSERT_TRUE(m_window->deleteTab(indexOfA, false));
    EXPECT_EQ(boundGuides(m_lifecycle->currentDocument()),
              (QStringList{QStringLiteral("-"), QStringLiteral("C"), QStringLiteral("B"), QStringLiteral("B")}));
}

TEST(SceneViewState, TheLensLastLookedThroughIsKeptOutsideProjectorView)
{
    ThreeDViewTab tab;
    Guide3DViewSettings settings = Guide3DViewSettings::created();
    GuideObject wall;
    wall.guide_index = KindPlane;
    GuideObject projector;
    projector.guide_index = KindProjector;
    settings.objects = {wall, projector};
    settings.view_mode = 0; // perspective, not through the lens
    settings.projector_camera_view_object_index = 1;
    tab.setViewSettings(settings);
    EXPECT_EQ(tab.viewSettings().projector_camera_view_object_index, 1);
    // An index that names no object is still dropped.
    settings.projector_camera_view_object_index = 5;
    tab.setViewSettings(settings);
    EXPECT_EQ(tab.viewSettings().projector_camera_view_object_index, -1);
}
