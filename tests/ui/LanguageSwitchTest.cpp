#include "MainWindowTestSupport.h"

#include "app/MainWindow.h"
#include "app/TabTitleWidget.h"
#include "app/UiPreferences.h"
#include "scene/ui/ScenePropertyPanel.h"
#include "scene/ui/SceneWidget.h"
#include "scene/ui/ThreeDViewTab.h"

#include <QAction>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <QToolBar>
#include <QToolButton>

namespace {

QString ko(const char *context, const char *source)
{
    return QCoreApplication::translate(context, source);
}

template <typename T>
T *withText(QWidget *root, const QString &text)
{
    for (T *widget : root->findChildren<T *>()) {
        if (widget->text() == text)
            return widget;
    }
    return nullptr;
}

QGroupBox *groupTitled(QWidget *root, const QString &title)
{
    for (QGroupBox *box : root->findChildren<QGroupBox *>()) {
        if (box->title() == title)
            return box;
    }
    return nullptr;
}

bool formHasLabel(QWidget *root, const QString &text)
{
    for (QFormLayout *form : root->findChildren<QFormLayout *>()) {
        for (int row = 0; row < form->rowCount(); ++row) {
            QLayoutItem *item = form->itemAt(row, QFormLayout::LabelRole);
            auto *label = item ? qobject_cast<QLabel *>(item->widget()) : nullptr;
            if (label && label->text() == text)
                return true;
        }
    }
    return false;
}

void collectMenuTexts(QMenu *menu, QStringList *texts)
{
    *texts << menu->title();
    for (QAction *action : menu->actions()) {
        *texts << action->text();
        if (QMenu *sub = action->menu())
            collectMenuTexts(sub, texts);
    }
}

// Every text the 3D tab's toolbar and its menus show, entry by entry.
QStringList sceneToolTexts(ThreeDViewTab *tab)
{
    QStringList texts;
    auto *toolBar = tab->findChild<QToolBar *>(QStringLiteral("vantreoSceneToolBar"));
    if (!toolBar)
        return texts;
    for (QAction *action : toolBar->actions())
        texts << action->text();
    for (QToolButton *button : toolBar->findChildren<QToolButton *>()) {
        texts << button->text();
        if (QMenu *menu = button->menu())
            collectMenuTexts(menu, &texts);
    }
    return texts;
}

// The standard Cancel button as Qt labels it now.
QString standardCancelText()
{
    QDialogButtonBox box(QDialogButtonBox::Cancel);
    return box.button(QDialogButtonBox::Cancel)->text();
}

class LanguageSwitchTest : public ShellSettingsFixture
{
protected:
    void TearDown() override
    {
        installUiTranslation(QStringLiteral("en"));
        ShellSettingsFixture::TearDown();
    }
};

} // namespace

TEST_F(LanguageSwitchTest, EveryTabKindChangesAtOnceBothWays)
{
    auto window = std::make_unique<MainWindow>();
    window->setProperty("skipStartupSample", true);
    window->resize(1400, 900);
    window->show();
    QWidget *guide = window->addGuideTab();
    QWidget *canvas = window->addCanvasTab();
    auto *view = qobject_cast<ThreeDViewTab *>(window->add3DViewTab());
    ASSERT_TRUE(guide && canvas && view);
    view->addObject(ThreeDViewTab::AddProjector, false);
    ASSERT_TRUE(view->sceneWidget()->lookThrough(0));
    const QString projectorName = view->sceneWidget()->objects().at(0).name;
    const QStringList englishTools = sceneToolTexts(view);
    ASSERT_NE(withText<QPushButton>(canvas, QStringLiteral("Fit View")), nullptr);
    ASSERT_NE(groupTitled(guide, QStringLiteral("Projector Layout")), nullptr);
    EXPECT_EQ(standardCancelText(), QStringLiteral("Cancel"));

    window->action(QStringLiteral("actionLanguageKorean"))->trigger();
    QTest::qWait(50); // the guide tab rebuilds its panels on the next turn of the loop

    // The window, its tab titles and the status label.
    EXPECT_EQ(window->menu(QStringLiteral("menuFile"))->title(), QString::fromUtf8("파일"));
    EXPECT_EQ(window->displayedTabTitle(0), ko("MainWindow", "Guide %1").arg(1));
    EXPECT_NE(window->displayedTabTitle(0), QStringLiteral("Guide 1"));
    EXPECT_EQ(window->displayedTabTitle(2), ko("MainWindow", "3D View"));
    EXPECT_EQ(window->startupApiStatusLabel()->text(), ko("MainWindow", "Startup API: Waiting"));
    // Qt's own buttons.
    EXPECT_EQ(standardCancelText(), QString::fromUtf8("취소"));
    // The guide and canvas tabs.
    EXPECT_NE(groupTitled(guide, ko("GuideTab", "Projector Layout")), nullptr);
    EXPECT_NE(withText<QPushButton>(canvas, ko("CanvasTab", "Fit View")), nullptr);
    EXPECT_EQ(withText<QPushButton>(canvas, QStringLiteral("Fit View")), nullptr);
    // The 3D view: list heading, toolbar and menus, property labels and the view badge.
    EXPECT_NE(withText<QLabel>(view, ko("ThreeDViewTab", "Objects")), nullptr);
    EXPECT_EQ(withText<QLabel>(view, QStringLiteral("Objects")), nullptr);
    EXPECT_TRUE(formHasLabel(view->propertyPanel(), ko("ScenePropertyPanel", "Throw ratio")));
    EXPECT_FALSE(formHasLabel(view->propertyPanel(), QStringLiteral("Throw ratio")));
    EXPECT_EQ(view->sceneWidget()->viewName(), ko("SceneTexts", "%1 View").arg(projectorName));
    EXPECT_TRUE(view->sceneWidget()->viewName().contains(QString::fromUtf8("시점")));
    const QStringList koreanTools = sceneToolTexts(view);
    ASSERT_EQ(koreanTools.size(), englishTools.size());
    int translated = 0;
    for (int i = 0; i < englishTools.size(); ++i) {
        const QString expected = ko("ThreeDViewTab", englishTools[i].toUtf8().constData());
        if (expected == englishTools[i])
            continue; // not one of the tab's own texts (names, exporter entries)
        EXPECT_EQ(koreanTools[i], expected) << englishTools[i].toStdString();
        ++translated;
    }
    EXPECT_GT(translated, 20); // Add menu, View and Edit menus, mode buttons

    // And back again.
    window->action(QStringLiteral("actionLanguageEnglish"))->trigger();
    QTest::qWait(50);
    EXPECT_EQ(window->menu(QStringLiteral("menuFile"))->title(), QStringLiteral("File"));
    EXPECT_EQ(window->displayedTabTitle(0), QStringLiteral("Guide 1"));
    EXPECT_EQ(window->displayedTabTitle(2), QStringLiteral("3D View"));
    EXPECT_EQ(standardCancelText(), QStringLiteral("Cancel"));
    EXPECT_NE(groupTitled(guide, QStringLiteral("Projector Layout")), nullptr);
    EXPECT_NE(withText<QPushButton>(canvas, QStringLiteral("Fit View")), nullptr);
    EXPECT_NE(withText<QLabel>(view, QStringLiteral("Objects")), nullptr);
    EXPECT_TRUE(formHasLabel(view->propertyPanel(), QStringLiteral("Throw ratio")));
    EXPECT_EQ(sceneToolTexts(view), englishTools);
}

TEST_F(LanguageSwitchTest, RenamedTabKeepsItsTitleAcrossTheSwitch)
{
    auto window = std::make_unique<MainWindow>();
    window->setProperty("skipStartupSample", true);
    window->addGuideTab();
    window->addGuideTab(QStringLiteral("Loaded Hall"));
    window->setTabTitle(0, QStringLiteral("Main Wall"));
    window->action(QStringLiteral("actionLanguageKorean"))->trigger();
    EXPECT_EQ(window->displayedTabTitle(0), QStringLiteral("Main Wall"));
    EXPECT_EQ(window->displayedTabTitle(1), QStringLiteral("Loaded Hall"));
    window->action(QStringLiteral("actionLanguageEnglish"))->trigger();
    EXPECT_EQ(window->displayedTabTitle(0), QStringLiteral("Main Wall"));
}
