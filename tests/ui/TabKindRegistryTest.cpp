#include "MainWindowTestSupport.h"

#include "app/MainWindow.h"
#include "app/ProjectLifecycle.h"
#include "app/TabKind.h"
#include "project/ProjectFile.h"

#include <QAction>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>
#include <QWidget>

namespace {

class TabKindRegistryTest : public ShellSettingsFixture
{
protected:
    std::unique_ptr<MainWindow> makeWindow()
    {
        auto window = std::make_unique<MainWindow>();
        window->setProperty("skipStartupSample", true);
        return window;
    }
    static ProjectLifecycle *lifecycleOf(MainWindow *window) { return window->findChild<ProjectLifecycle *>(); }
};

// The record a kind writes for one tab, with the title left out (a copy gets its own).
QJsonValue recordWithoutTitle(const ProjectDocument &doc, const ProjectTabEntry &entry)
{
    const QJsonObject json = QJsonDocument::fromJson(projectDocumentToJson(doc)).object();
    QString list;
    if (entry.kind == QLatin1String("guide"))
        list = QStringLiteral("guides");
    else if (entry.kind == QLatin1String("canvas"))
        list = QStringLiteral("canvas_tabs");
    else
        list = QStringLiteral("three_d_views");
    QJsonObject record = json.value(list).toArray().at(entry.index).toObject();
    record.remove(QStringLiteral("title"));
    return record;
}

} // namespace

TEST_F(TabKindRegistryTest, IdsAreTheProjectFileNamesAndStrangersAreNoKind)
{
    QStringList ids;
    for (const TabKind *kind : TabKindRegistry::kinds())
        ids << kind->id();
    // Project files of every version name their tabs so; a renamed id would orphan them.
    EXPECT_EQ(ids, (QStringList{QStringLiteral("guide"), QStringLiteral("canvas"), QStringLiteral("3dView")}));
    EXPECT_EQ(TabKindRegistry::find(QStringLiteral(" canvas ")), &canvasTabKind());
    EXPECT_EQ(TabKindRegistry::find(QStringLiteral("Guide")), nullptr);
    EXPECT_EQ(TabKindRegistry::find(QString()), nullptr);
    QWidget stranger;
    EXPECT_EQ(TabKindRegistry::kindOf(&stranger), nullptr);
    EXPECT_EQ(TabKindRegistry::kindOf(nullptr), nullptr);
}

TEST_F(TabKindRegistryTest, CopyOfEveryTabOfTheSampleWritesTheSameRecord)
{
    auto window = makeWindow();
    ProjectLifecycle *lifecycle = lifecycleOf(window.get());
    ASSERT_TRUE(lifecycle->openProject(QStringLiteral(VG_SOURCE_DIR "/samples/sample.vgs")));
    const int original = window->contentTabCount();
    QSet<const TabKind *> seen;
    for (int i = 0; i < original; ++i) {
        QWidget *source = window->contentTab(i);
        seen.insert(TabKindRegistry::kindOf(source));
        QWidget *copy = window->duplicateTab(i);
        ASSERT_NE(copy, nullptr);
        EXPECT_EQ(TabKindRegistry::kindOf(copy), TabKindRegistry::kindOf(source));
        const ProjectDocument doc = lifecycle->currentDocument();
        const ProjectTabEntry sourceEntry = doc.tabs.value(window->indexOfContentTab(source));
        const ProjectTabEntry copyEntry = doc.tabs.value(window->indexOfContentTab(copy));
        EXPECT_EQ(copyEntry.kind, sourceEntry.kind);
        EXPECT_NE(copyEntry.index, sourceEntry.index) << "a copy is a record of its own";
        EXPECT_EQ(recordWithoutTitle(doc, copyEntry), recordWithoutTitle(doc, sourceEntry)) << qPrintable(sourceEntry.kind);
        window->deleteTab(window->indexOfContentTab(copy), false);
    }
    EXPECT_EQ(seen.size(), TabKindRegistry::kinds().size()) << "the sample holds a tab of every kind";
}

TEST_F(TabKindRegistryTest, EditMenuFollowsTheKindOfTheCurrentTab)
{
    auto window = makeWindow();
    QAction *undo = window->action(QStringLiteral("actionUndo"));
    QAction *redo = window->action(QStringLiteral("actionRedo"));
    ASSERT_TRUE(undo && redo);
    EXPECT_FALSE(undo->isEnabled()) << "no tab";
    window->addCanvasTab();
    EXPECT_TRUE(undo->isEnabled());
    EXPECT_TRUE(redo->isEnabled());
    window->add3DViewTab();
    EXPECT_TRUE(undo->isEnabled());
    window->addGuideTab();
    EXPECT_EQ(undo->isEnabled(), guideTabKind().hasUndo(window->currentContentTab()));
}
