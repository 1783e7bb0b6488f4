#include "MainWindowTestSupport.h"

#include "app/MainWindow.h"
#include "app/TabKind.h"
#include "canvas/ui/CanvasTab.h"
#include "app/TabTitleWidget.h"
#include "app/UiPreferences.h"

#include <QAction>
#include <QFontDatabase>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QShortcut>
#include <QStatusBar>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>

namespace {

class MainWindowTest : public ShellSettingsFixture
{
protected:
    std::unique_ptr<MainWindow> makeWindow()
    {
        auto window = std::make_unique<MainWindow>();
        window->setProperty("skipStartupSample", true);
        return window;
    }
};

QStringList menuEntries(QMenu *menu)
{
    QStringList entries;
    for (QAction *action : menu->actions())
        entries << (action->isSeparator() ? QStringLiteral("—") : action->text());
    return entries;
}

} // namespace

TEST(UiPreferences, ScaleRoundingAndClamps)
{
    EXPECT_DOUBLE_EQ(normalizeUiScale(2.5), 1.8);
    EXPECT_DOUBLE_EQ(normalizeUiScale(0.654), 0.7);
    EXPECT_DOUBLE_EQ(normalizeUiScale(1.234), 1.23);
    EXPECT_DOUBLE_EQ(normalizeUiScale(1.235), 1.24);
    EXPECT_DOUBLE_EQ(normalizeUiScale(0.7), 0.7);
    EXPECT_DOUBLE_EQ(normalizeUiScale(-3.0), 0.7);
    EXPECT_DOUBLE_EQ(normalizeUiScale(std::numeric_limits<double>::quiet_NaN()), 1.0);
}

TEST(UiPreferences, ScaledFontKeepsItsUnitAndMinimum)
{
    QFont points;
    points.setPointSizeF(10.0);
    EXPECT_DOUBLE_EQ(scaledUiFont(points, 1.5).pointSizeF(), 15.0);
    points.setPointSizeF(1.2);
    EXPECT_DOUBLE_EQ(scaledUiFont(points, 0.7).pointSizeF(), 1.0);
    QFont pixels;
    pixels.setPixelSize(13);
    EXPECT_EQ(scaledUiFont(pixels, 1.23).pixelSize(), 16); // 15.99 rounds to 16
    EXPECT_EQ(scaledUiFont(pixels, 0.7).pixelSize(), 9);   // 9.1
    pixels.setPixelSize(1);
    EXPECT_EQ(scaledUiFont(pixels, 0.7).pixelSize(), 1);
}

TEST(UiPreferences, LanguageCodeNormalisation)
{
    EXPECT_EQ(normalizeLanguageCode(QStringLiteral("ko-KR")), QStringLiteral("ko"));
    EXPECT_EQ(normalizeLanguageCode(QStringLiteral("  KO_kr ")), QStringLiteral("ko"));
    EXPECT_EQ(normalizeLanguageCode(QStringLiteral("fr")), QStringLiteral("en"));
    EXPECT_EQ(normalizeLanguageCode(QStringLiteral("en-US")), QStringLiteral("en"));
    EXPECT_EQ(normalizeLanguageCode(QString()), QStringLiteral("en"));
    EXPECT_EQ(translationFileName(QStringLiteral("ko-KR")), QStringLiteral("VantreoGuide_ko.qm"));
}

TEST(UiPreferences, DefaultFontIsTheBundledFontOneSizeUp)
{
    const QFont font = defaultUiFont();
    EXPECT_EQ(font.family(), QStringLiteral("NanumGothic"));
    EXPECT_EQ(font.weight(), QFont::ExtraBold);
    const QFont system = QFontDatabase::systemFont(QFontDatabase::GeneralFont);
    if (system.pointSizeF() > 0) {
        EXPECT_DOUBLE_EQ(font.pointSizeF(), system.pointSizeF() + 1.0);
    }
}

TEST_F(MainWindowTest, StoredScaleIsRoundedAndClampedAtStart)
{
    const std::pair<double, double> cases[] = {{2.5, 1.8}, {0.654, 0.7}, {1.234, 1.23}};
    for (const auto &[stored, expected] : cases) {
        QSettings().setValue(QStringLiteral("ui/scale"), stored);
        auto window = makeWindow();
        EXPECT_DOUBLE_EQ(window->uiScale(), expected) << stored;
    }
    QSettings().setValue(QStringLiteral("ui/scale"), QStringLiteral("not a number"));
    EXPECT_DOUBLE_EQ(makeWindow()->uiScale(), 1.0);
}

TEST_F(MainWindowTest, ZoomShortcutsStepAndStopAtTheLimits)
{
    QSettings().setValue(QStringLiteral("ui/scale"), 0.75);
    auto window = makeWindow();
    // Without a window manager the window cannot be made active, so the shortcuts are
    // found by their keys and fired directly.
    auto press = [&](const QKeySequence &keys) {
        for (QShortcut *shortcut : window->findChildren<QShortcut *>()) {
            if (shortcut->key() == keys) {
                Q_EMIT shortcut->activated();
                return;
            }
        }
        ADD_FAILURE() << "no shortcut for " << keys.toString().toStdString();
    };
    for (int i = 0; i < 3; ++i)
        press(QKeySequence(QKeySequence::ZoomOut));
    EXPECT_DOUBLE_EQ(window->uiScale(), 0.7);
    EXPECT_DOUBLE_EQ(QSettings().value(QStringLiteral("ui/scale")).toDouble(), 0.7);
    EXPECT_EQ(window->statusBar()->currentMessage(), QStringLiteral("UI scale: 70% (viewport unchanged)"));

    press(QKeySequence(QStringLiteral("Ctrl+=")));
    EXPECT_DOUBLE_EQ(window->uiScale(), 0.8);
    for (int i = 0; i < 15; ++i)
        press(QKeySequence(QKeySequence::ZoomIn));
    EXPECT_DOUBLE_EQ(window->uiScale(), 1.8);
}

TEST_F(MainWindowTest, SettingScaleAppliesFontToTabsAndAnnouncesRoundedPercent)
{
    auto window = makeWindow();
    QFont base = window->baseUiFont();
    base.setPointSizeF(10.0);
    window->setBaseUiFont(base, false);
    QWidget *guide = window->addGuideTab();
    window->setUiScale(1.235, false, true);
    EXPECT_DOUBLE_EQ(window->uiScale(), 1.24);
    EXPECT_DOUBLE_EQ(guide->font().pointSizeF(), 12.4);
    EXPECT_DOUBLE_EQ(QApplication::font().pointSizeF(), 12.4);
    EXPECT_EQ(window->statusBar()->currentMessage(), QStringLiteral("UI scale: 124% (viewport unchanged)"));
    EXPECT_FALSE(QSettings().contains(QStringLiteral("ui/scale")));
    window->setUiScale(1.005, true, false);
    EXPECT_DOUBLE_EQ(QSettings().value(QStringLiteral("ui/scale")).toDouble(), window->uiScale());
}

TEST_F(MainWindowTest, MenusAndEntriesInOrder)
{
    auto window = makeWindow();
    QStringList titles;
    for (QAction *action : window->menuBar()->actions())
        titles << action->text();
    EXPECT_EQ(titles, (QStringList{QStringLiteral("File"), QStringLiteral("Edit"), QStringLiteral("Add Tab"),
                                   QStringLiteral("Settings"), QStringLiteral("Language"), QStringLiteral("Help")}));
    const QString sep = QStringLiteral("—");
    EXPECT_EQ(menuEntries(window->menu(QStringLiteral("menuFile"))),
              (QStringList{QStringLiteral("New Project"), sep, QStringLiteral("Open Project..."),
                           QStringLiteral("Import Project Bundle..."), QStringLiteral("Save Project"),
                           QStringLiteral("Save Project As..."), QStringLiteral("Save Project As (with Resources)..."),
                           QStringLiteral("Export Project Bundle..."), QStringLiteral("Create Portable Package..."),
                           QStringLiteral("Merge Project..."), sep, QStringLiteral("Recent Projects"), sep,
                           QStringLiteral("Export All Guides..."), QStringLiteral("Export Tab Views to PPTX..."),
                           QStringLiteral("Export Tab Views to PDF..."), sep,
                           QStringLiteral("Record Window...\tCtrl+Shift+R")}));
    EXPECT_EQ(menuEntries(window->menu(QStringLiteral("menuEdit"))),
              (QStringList{QStringLiteral("Undo\tCtrl+Z"), QStringLiteral("Redo\tCtrl+Y")}));
    EXPECT_EQ(menuEntries(window->menu(QStringLiteral("menuAddTab"))),
              (QStringList{QStringLiteral("Guide"), QStringLiteral("Canvas"), QStringLiteral("3D View")}));
    EXPECT_EQ(menuEntries(window->menu(QStringLiteral("menuSettings"))),
              (QStringList{QStringLiteral("GPU Selection..."), QStringLiteral("UI Font..."), QStringLiteral("Reset UI Font")}));
    EXPECT_EQ(menuEntries(window->menu(QStringLiteral("menuLanguage"))),
              (QStringList{QStringLiteral("English"), QString::fromUtf8("한국어")}));
    EXPECT_EQ(menuEntries(window->menu(QStringLiteral("menuHelp"))),
              (QStringList{QStringLiteral("Version"), QStringLiteral("Update")}));

    // Shortcuts, and entries whose features are not attached yet are disabled.
    EXPECT_EQ(window->action(QStringLiteral("actionSaveProject"))->shortcut(), QKeySequence(QKeySequence::Save));
    EXPECT_EQ(window->action(QStringLiteral("actionRecordWindow"))->shortcut(), QKeySequence(QStringLiteral("Ctrl+Shift+R")));
    EXPECT_TRUE(window->action(QStringLiteral("actionOpenProject"))->isEnabled());
    EXPECT_TRUE(window->action(QStringLiteral("actionRecentProjects"))->isEnabled());
    EXPECT_TRUE(window->action(QStringLiteral("actionUpdate"))->isEnabled());
    EXPECT_TRUE(window->action(QStringLiteral("actionGpuSelection"))->isEnabled());
    EXPECT_EQ(window->windowTitle(), QStringLiteral("Vantreo Guide Generator"));

    QLabel *api = window->startupApiStatusLabel();
    EXPECT_EQ(api->text(), QStringLiteral("Startup API: Waiting"));
    EXPECT_EQ(api->toolTip(), QStringLiteral("Startup API request has not been sent yet."));
}

TEST_F(MainWindowTest, StartPageShowsWithoutTabsAndComesBack)
{
    auto window = makeWindow();
    window->show();
    QWidget *start = window->startPage();
    EXPECT_EQ(start->objectName(), QStringLiteral("vantreoGuideStartPage"));
    EXPECT_EQ(window->tabWidget()->objectName(), QStringLiteral("mainContentTabs"));
    EXPECT_EQ(window->contentTabCount(), 0);
    EXPECT_TRUE(start->isVisible());
    EXPECT_EQ(window->tabWidget()->tabText(window->tabWidget()->count() - 1), QStringLiteral("+"));

    auto *version = start->findChild<QLabel *>(QStringLiteral("vantreoStartVersion"));
    ASSERT_NE(version, nullptr);
    EXPECT_TRUE(version->text().startsWith(QStringLiteral("Version 1.0.0  Build ")));
    auto *button = start->findChild<QPushButton *>(QStringLiteral("vantreoStartAddGuideButton"));
    ASSERT_NE(button, nullptr);
    EXPECT_EQ(button->text(), QStringLiteral("Add guide tab"));

    button->click();
    ASSERT_EQ(window->contentTabCount(), 1);
    EXPECT_FALSE(start->isVisible());
    EXPECT_EQ(TabKindRegistry::kindOf(window->contentTab(0)), &guideTabKind());

    EXPECT_TRUE(window->deleteTab(0, false));
    EXPECT_EQ(window->contentTabCount(), 0);
    EXPECT_TRUE(start->isVisible());
    EXPECT_EQ(window->tabWidget()->currentWidget(), start);
}

TEST_F(MainWindowTest, NewTabGoesRightAfterTheCurrentOne)
{
    auto window = makeWindow();
    QWidget *g1 = window->addGuideTab();
    QWidget *g2 = window->addGuideTab();
    QWidget *g3 = window->addGuideTab();
    EXPECT_EQ(window->contentTabs(), (QList<QWidget *>{g1, g2, g3}));
    window->tabWidget()->setCurrentWidget(g1);
    QWidget *canvas = window->addCanvasTab();
    EXPECT_EQ(window->contentTabs(), (QList<QWidget *>{g1, canvas, g2, g3}));
    EXPECT_EQ(window->currentContentTab(), canvas);
    // The "+" tab stays last.
    EXPECT_EQ(window->tabWidget()->indexOf(window->startPage()), window->tabWidget()->count() - 1);
}

TEST_F(MainWindowTest, TabTitlesCountersAndSourceIds)
{
    auto window = makeWindow();
    QWidget *g1 = window->addGuideTab();
    QWidget *c1 = window->addCanvasTab();
    QWidget *g2 = window->addGuideTab();
    QWidget *v1 = window->add3DViewTab();
    QWidget *v2 = window->add3DViewTab();
    EXPECT_EQ(g1->property("fallbackTabTitle").toString(), QStringLiteral("Guide 1"));
    EXPECT_EQ(g2->property("fallbackTabTitle").toString(), QStringLiteral("Guide 2"));
    EXPECT_EQ(c1->property("fallbackTabTitle").toString(), QStringLiteral("Canvas 1"));
    EXPECT_EQ(v1->property("fallbackTabTitle").toString(), QStringLiteral("3D View"));
    EXPECT_EQ(v2->property("fallbackTabTitle").toString(), QStringLiteral("3D View 2"));
    EXPECT_EQ(g1->property("guideSourceId").toInt() + 1, g2->property("guideSourceId").toInt());
    EXPECT_FALSE(c1->property("guideSourceId").isValid());
    EXPECT_EQ(TabKindRegistry::kindOf(v1), &threeDViewTabKind());

    // Deleting does not reuse a number or a source id.
    const int lastId = g2->property("guideSourceId").toInt();
    window->deleteTab(window->indexOfContentTab(g2), false);
    QWidget *g3 = window->addGuideTab();
    EXPECT_EQ(g3->property("fallbackTabTitle").toString(), QStringLiteral("Guide 3"));
    EXPECT_GT(g3->property("guideSourceId").toInt(), lastId);

    // A cleared title shows the fallback.
    const int index = window->indexOfContentTab(g1);
    window->setTabTitle(index, QStringLiteral("Left wall"));
    EXPECT_EQ(window->displayedTabTitle(index), QStringLiteral("Left wall"));
    window->setTabTitle(index, QString());
    EXPECT_EQ(window->tabTitle(index), QString());
    EXPECT_EQ(window->displayedTabTitle(index), QStringLiteral("Guide 1"));
}

TEST_F(MainWindowTest, TitleIsRenamedInPlace)
{
    auto window = makeWindow();
    window->show();
    QWidget *guide = window->addGuideTab();
    TabTitleWidget *title = window->tabTitleWidget(0);
    ASSERT_NE(title, nullptr);
    QString edited;
    QObject::connect(window.get(), &MainWindow::tabTitleChanged, [&](QWidget *content, const QString &text) {
        EXPECT_EQ(content, guide);
        edited = text;
    });
    QTest::mouseDClick(title, Qt::LeftButton);
    ASSERT_TRUE(title->isEditing());
    auto *editor = title->findChild<QLineEdit *>();
    editor->setText(QStringLiteral("Floor"));
    QTest::keyClick(editor, Qt::Key_Return);
    EXPECT_FALSE(title->isEditing());
    EXPECT_EQ(edited, QStringLiteral("Floor"));
    EXPECT_EQ(window->tabTitle(0), QStringLiteral("Floor"));

    title->startEditing();
    editor->setText(QStringLiteral("Ceiling"));
    QTest::keyClick(editor, Qt::Key_Escape);
    EXPECT_EQ(window->tabTitle(0), QStringLiteral("Floor"));
}

TEST_F(MainWindowTest, DeleteAsksWithTheTabTitle)
{
    auto window = makeWindow();
    window->show();
    window->addGuideTab();
    auto seen = answerNextMessageBox(QMessageBox::No);
    EXPECT_FALSE(window->deleteTab(0));
    EXPECT_EQ(seen->title, QStringLiteral("Delete Tab"));
    EXPECT_EQ(seen->text, QStringLiteral("Delete \"Guide 1\"?"));
    EXPECT_EQ(window->contentTabCount(), 1);

    answerNextMessageBox(QMessageBox::Yes);
    EXPECT_TRUE(window->deleteTab(0));
    EXPECT_EQ(window->contentTabCount(), 0);
}

TEST_F(MainWindowTest, CopyDuplicatesKindAndCanvasSettings)
{
    auto window = makeWindow();
    auto *canvas = qobject_cast<CanvasTab *>(window->addCanvasTab());
    ASSERT_NE(canvas, nullptr);
    CanvasTabSettings settings;
    settings.title = QStringLiteral("Stage");
    settings.view_zoom = 90.0;
    settings.objects.append(CanvasObjectSettings{});
    canvas->setSettings(settings);
    window->addGuideTab();
    auto *copy = qobject_cast<CanvasTab *>(window->duplicateTab(0));
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(window->indexOfContentTab(copy), 1);
    EXPECT_EQ(copy->settings(), settings);
    EXPECT_EQ(TabKindRegistry::kindOf(copy), &canvasTabKind());
    EXPECT_EQ(copy->property("fallbackTabTitle").toString(), QStringLiteral("Canvas 2"));
    EXPECT_EQ(window->duplicateTab(7), nullptr);
}

TEST_F(MainWindowTest, UnsavedChangesBoxOnClose)
{
    auto window = makeWindow();
    window->show();
    EXPECT_TRUE(window->close()); // nothing unsaved: closes without asking

    window = makeWindow();
    window->show();
    int saves = 0;
    bool saveSucceeds = false;
    MainWindow::ProjectHooks hooks;
    hooks.saveProject = [&] {
        ++saves;
        return saveSucceeds;
    };
    window->setProjectHooks(hooks);
    window->setUnsavedChanges(true);

    auto seen = answerNextMessageBox(QMessageBox::Cancel);
    EXPECT_FALSE(window->close());
    EXPECT_EQ(seen->title, QStringLiteral("Unsaved Changes"));
    EXPECT_EQ(seen->text, QStringLiteral("Save changes before closing?"));
    EXPECT_EQ(seen->informativeText, QStringLiteral("There are unsaved changes."));
    EXPECT_EQ(seen->defaultButton, QStringLiteral("Save"));
    EXPECT_EQ(seen->buttons.size(), 3);

    answerNextMessageBox(QMessageBox::Save); // the save fails: stay open
    EXPECT_FALSE(window->close());
    EXPECT_EQ(saves, 1);
    saveSucceeds = true;
    answerNextMessageBox(QMessageBox::Save);
    EXPECT_TRUE(window->close());
    EXPECT_EQ(saves, 2);

    window = makeWindow();
    window->show();
    window->setProgramSettingsChanged(true);
    seen = answerNextMessageBox(QMessageBox::Discard);
    EXPECT_TRUE(window->close());
    EXPECT_EQ(seen->informativeText, QStringLiteral("Your program settings have changed."));

    window = makeWindow();
    window->setUnsavedChanges(true);
    seen = answerNextMessageBox(QMessageBox::Cancel);
    EXPECT_FALSE(window->confirmUnsavedChanges(MainWindow::UnsavedChangesPrompt::NewProject));
    EXPECT_EQ(seen->text, QStringLiteral("Save changes before starting a new project?"));
}

TEST_F(MainWindowTest, DeferredStartupSteps)
{
    auto window = std::make_unique<MainWindow>();
    int samples = 0;
    QStringList opened;
    MainWindow::ProjectHooks hooks;
    hooks.loadStartupSample = [&] {
        ++samples;
        EXPECT_TRUE(window->property("startupProjectPreparing").toBool());
    };
    hooks.openProject = [&](const QString &path) {
        opened << path;
        return true;
    };
    window->setProjectHooks(hooks);
    int reports = 0, updates = 0;
    QObject::connect(window.get(), &MainWindow::startupClientReportRequested, [&] { ++reports; });
    QObject::connect(window.get(), &MainWindow::updateCheckRequested, [&] { ++updates; });
    QTest::qWait(100);
    EXPECT_EQ(samples, 0);
    QTest::qWait(1600);
    EXPECT_EQ(samples, 1);
    EXPECT_FALSE(window->property("startupProjectPreparing").toBool());
    EXPECT_EQ(reports, 1);
    EXPECT_EQ(updates, 1);
    EXPECT_TRUE(opened.isEmpty());

    // Screenshot runs skip the sample; "updates/autoUpdate" off skips the update check.
    QSettings().setValue(QStringLiteral("updates/autoUpdate"), false);
    window = std::make_unique<MainWindow>();
    window->setProperty("skipStartupSample", true);
    window->setProjectHooks(hooks);
    updates = 0;
    QObject::connect(window.get(), &MainWindow::updateCheckRequested, [&] { ++updates; });
    QTest::qWait(1700);
    EXPECT_EQ(samples, 1);
    EXPECT_EQ(updates, 0);

    // The last program-settings file is opened instead of the sample.
    QTemporaryDir dir;
    const QString last = dir.filePath(QStringLiteral("last.vgs"));
    QFile file(last);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.close();
    QSettings().setValue(QStringLiteral("paths/programSettingsFile"), last);
    window = std::make_unique<MainWindow>();
    window->setProjectHooks(hooks);
    QTest::qWait(300);
    EXPECT_EQ(opened, QStringList{last});
    EXPECT_EQ(samples, 1);
}

TEST_F(MainWindowTest, LanguageMenuStoresCodeAndRetranslates)
{
    auto window = makeWindow();
    window->action(QStringLiteral("actionLanguageKorean"))->trigger();
    EXPECT_EQ(QSettings().value(QStringLiteral("ui/language")).toString(), QStringLiteral("ko"));
    EXPECT_TRUE(window->action(QStringLiteral("actionLanguageKorean"))->isChecked());
    EXPECT_EQ(installedUiLanguage(), QStringLiteral("ko"));
    EXPECT_EQ(window->menu(QStringLiteral("menuFile"))->title(), QString::fromUtf8("파일"));
    EXPECT_EQ(window->action(QStringLiteral("actionLanguageEnglish"))->text(), QStringLiteral("English"));

    window->action(QStringLiteral("actionLanguageEnglish"))->trigger();
    EXPECT_EQ(QSettings().value(QStringLiteral("ui/language")).toString(), QStringLiteral("en"));
    EXPECT_EQ(window->menu(QStringLiteral("menuFile"))->title(), QStringLiteral("File"));
}

TEST_F(MainWindowTest, UiFontIsStoredAndReset)
{
    auto window = makeWindow();
    QFont chosen(QStringLiteral("DejaVu Sans"));
    chosen.setPointSizeF(12.0);
    window->setUiScale(1.5, false, false);
    window->setBaseUiFont(chosen, true);
    EXPECT_EQ(QSettings().value(QStringLiteral("ui/font")).toString(), chosen.toString());
    EXPECT_DOUBLE_EQ(QApplication::font().pointSizeF(), 18.0);
    // A new window starts from the stored font.
    EXPECT_EQ(makeWindow()->baseUiFont().family(), QStringLiteral("DejaVu Sans"));

    window->resetUiFont();
    EXPECT_FALSE(QSettings().contains(QStringLiteral("ui/font")));
    EXPECT_EQ(window->baseUiFont().family(), defaultUiFont().family());
    QSettings().setValue(QStringLiteral("ui/font"), QStringLiteral("Sans,12,broken"));
    EXPECT_EQ(makeWindow()->baseUiFont().family(), defaultUiFont().family());
}

TEST_F(MainWindowTest, PlusTabOpensTheAddMenuAndKeepsTheCurrentTab)
{
    auto window = makeWindow();
    window->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    QWidget *guide = window->addGuideTab();
    QWidget *canvas = window->addCanvasTab();
    window->tabWidget()->setCurrentWidget(guide);
    QTabBar *bar = window->tabWidget()->tabBar();
    const int plus = window->tabWidget()->indexOf(window->startPage());
    QTest::mouseClick(bar, Qt::LeftButton, Qt::NoModifier, bar->tabRect(plus).center());
    QTRY_VERIFY(QApplication::activePopupWidget() != nullptr);
    auto *popup = qobject_cast<QMenu *>(QApplication::activePopupWidget());
    ASSERT_NE(popup, nullptr);
    QStringList entries;
    for (QAction *action : popup->actions())
        entries << action->text();
    EXPECT_EQ(entries, (QStringList{QStringLiteral("Guide"), QStringLiteral("Canvas"), QStringLiteral("3D View")}));
    EXPECT_EQ(window->currentContentTab(), guide);
    popup->actions().at(1)->trigger();
    popup->hide();
    EXPECT_EQ(window->contentTabCount(), 3);
    EXPECT_EQ(window->contentTab(1), window->currentContentTab()); // right after the guide
    EXPECT_EQ(window->displayedTabTitle(1), QStringLiteral("Canvas 2"));
    EXPECT_EQ(window->contentTab(2), canvas);
}

TEST_F(MainWindowTest, TabContextMenuCopiesAndDeletes)
{
    auto window = makeWindow();
    window->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    window->addCanvasTab();
    QTabBar *bar = window->tabWidget()->tabBar();
    auto chooseFromContextMenu = [&](int entry) {
        QStringList seen;
        QTimer::singleShot(100, [&seen, entry] {
            if (auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget())) {
                for (QAction *action : menu->actions())
                    seen << action->text();
                menu->actions().at(entry)->trigger();
                menu->hide();
            }
        });
        Q_EMIT bar->customContextMenuRequested(bar->tabRect(0).center());
        return seen;
    };
    EXPECT_EQ(chooseFromContextMenu(0), (QStringList{QStringLiteral("Copy"), QStringLiteral("Delete")}));
    ASSERT_EQ(window->contentTabCount(), 2);
    EXPECT_EQ(window->displayedTabTitle(1), QStringLiteral("Canvas 2"));

    answerNextMessageBox(QMessageBox::Yes);
    chooseFromContextMenu(1);
    EXPECT_EQ(window->contentTabCount(), 1);
    EXPECT_EQ(window->displayedTabTitle(0), QStringLiteral("Canvas 2"));
}
