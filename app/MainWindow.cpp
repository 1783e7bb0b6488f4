#include "app/MainWindow.h"
#include "app/ProjectLifecycle.h"
#include "app/UpdateController.h"

#include "app/GpuSelectionDialog.h"
#include "app/GuideRecords.h"
#include "app/GuideExportAll.h"
#include "app/TabViewDocuments.h"
#include "app/WindowRecording.h"
#include "app/TabKind.h"
#include "app/TabTitleWidget.h"
#include "app/UiPreferences.h"
#include "common/SettingsKeys.h"

#include <QAction>
#include <QActionGroup>
#include <QApplication>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileInfo>
#include <QFontDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QLayout>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QMouseEvent>
#include <QProcess>
#include <QPushButton>
#include <QRegularExpression>
#include <QSettings>
#include <QShortcut>
#include <QStatusBar>
#include <QStyle>
#include <QTabBar>
#include <QTabWidget>
#include <QTimer>
#include <QVBoxLayout>

#include <cmath>

namespace {

constexpr int kStatusMessageTimeout = 5000;

bool isProjectFile(const QString &path)
{
    const QString suffix = QFileInfo(path).suffix().toLower();
    return suffix == QLatin1String("vgs") || suffix == QLatin1String("json");
}

// A tab bar that reports a finished drag so the "+" tab can be put back at the end.
class ContentTabBarFilter : public QObject
{
public:
    ContentTabBarFilter(std::function<void()> onRelease, QObject *parent)
        : QObject(parent)
        , m_onRelease(std::move(onRelease))
    {
    }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::MouseButtonRelease)
            QTimer::singleShot(0, this, m_onRelease);
        return QObject::eventFilter(watched, event);
    }

private:
    std::function<void()> m_onRelease;
};

// A made-up title in the current language from the kind's id and the number it was given:
// "Guide 3", "Canvas 2"; the first 3D view is plain "3D View", later ones are numbered.
QString generatedTabTitle(const QString &kindId, int number)
{
    if (kindId == guideTabKind().id())
        return MainWindow::tr("Guide %1").arg(number);
    if (kindId == canvasTabKind().id())
        return MainWindow::tr("Canvas %1").arg(number);
    if (kindId == threeDViewTabKind().id())
        return number <= 1 ? MainWindow::tr("3D View") : MainWindow::tr("3D View %1").arg(number);
    return QString();
}

// The number at the end of a made-up title, in either language; 1 when it has none.
int generatedTitleNumber(const QString &title)
{
    static const QRegularExpression trailingNumber(QStringLiteral("\\s(\\d{1,9})$"));
    const QRegularExpressionMatch match = trailingNumber.match(title);
    return match.hasMatch() ? match.captured(1).toInt() : 1;
}

} // namespace

MainWindow::MainWindow(QWidget *parent)
    : QMainWindow(parent)
{
    setObjectName(QStringLiteral("vantreoMainWindow"));
    setAcceptDrops(true);

    QSettings settings;
    m_uiScale = storedUiScale(settings);
    m_autoUpdate = Settings::autoUpdate.read();
    m_gpuAdapterKey = Settings::graphicsAdapter.read(settings).trimmed();
    if (m_gpuAdapterKey.isEmpty())
        m_gpuAdapterKey = QString::fromLatin1(kGpuAdapterAutoKey);
    // The file itself is opened in the first deferred step, once the project lifecycle
    // is attached and the tab area exists.
    m_programSettingsFile = Settings::projectFile.read(settings);
    m_baseUiFont = storedUiFont(settings);

    m_restartLauncher = [](const QString &program, const QStringList &arguments) {
        return QProcess::startDetached(program, arguments);
    };

    buildMenus();
    buildStatusBar();
    buildTabArea();
    retranslateUi();

    m_relayoutTimer = new QTimer(this);
    m_relayoutTimer->setSingleShot(true);
    m_relayoutTimer->setInterval(0);
    connect(m_relayoutTimer, &QTimer::timeout, this, &MainWindow::relayoutTabs);
    m_tabLayoutTimer = new QTimer(this);
    m_tabLayoutTimer->setSingleShot(true);
    m_tabLayoutTimer->setInterval(0);
    connect(m_tabLayoutTimer, &QTimer::timeout, this, &MainWindow::tabLayoutChanged);

    // The project lifecycle attaches here: it connects the File actions by object
    // name, enables them and sets the project hooks.
    guiderecords::keepRecords(this);
    new ProjectLifecycle(this);
    new UpdateController(this);
    connectExportAllGuides(this);
    new TabViewDocuments(this);
    new WindowRecording(this);

    setUiScale(m_uiScale, false, false);

    QTimer::singleShot(150, this, &MainWindow::runStartupProjectStep);
    QTimer::singleShot(500, this, &MainWindow::startupClientReportRequested);
    QTimer::singleShot(1500, this, [this] {
        if (m_autoUpdate)
            Q_EMIT updateCheckRequested();
    });
}

MainWindow::~MainWindow() = default;

// ---- construction -------------------------------------------------------------------

QAction *MainWindow::addMenuAction(QMenu *menu, const char *objectName, bool enabled)
{
    auto *action = new QAction(this);
    action->setObjectName(QString::fromLatin1(objectName));
    action->setEnabled(enabled);
    menu->addAction(action);
    return action;
}

void MainWindow::buildMenus()
{
    QMenuBar *bar = menuBar();
    auto makeMenu = [this, bar](const char *objectName) {
        auto *menu = new QMenu(this);
        menu->setObjectName(QString::fromLatin1(objectName));
        bar->addMenu(menu);
        return menu;
    };

    // File: the project lifecycle, export and recording features enable their entries.
    QMenu *file = makeMenu("menuFile");
    addMenuAction(file, "actionNewProject", false);
    file->addSeparator();
    addMenuAction(file, "actionOpenProject", false);
    addMenuAction(file, "actionImportProjectBundle", false);
    addMenuAction(file, "actionSaveProject", false)->setShortcut(QKeySequence::Save);
    addMenuAction(file, "actionSaveProjectAs", false);
    addMenuAction(file, "actionSaveProjectAsWithResources", false);
    addMenuAction(file, "actionExportProjectBundle", false);
    addMenuAction(file, "actionCreatePortablePackage", false);
    addMenuAction(file, "actionMergeProject", false);
    file->addSeparator();
    auto *recent = new QMenu(this);
    recent->setObjectName(QStringLiteral("menuRecentProjects"));
    recent->menuAction()->setObjectName(QStringLiteral("actionRecentProjects"));
    recent->menuAction()->setEnabled(false);
    file->addMenu(recent);
    file->addSeparator();
    addMenuAction(file, "actionExportAllGuides", false);
    addMenuAction(file, "actionExportTabViewsToPptx", false);
    addMenuAction(file, "actionExportTabViewsToPdf", false);
    file->addSeparator();
    addMenuAction(file, "actionRecordWindow", false)->setShortcut(QKeySequence(QStringLiteral("Ctrl+Shift+R")));

    QMenu *edit = makeMenu("menuEdit");
    QAction *undo = addMenuAction(edit, "actionUndo", false);
    undo->setShortcut(QKeySequence(QStringLiteral("Ctrl+Z")));
    connect(undo, &QAction::triggered, this, [this] { undoOnCurrentTab(false); });
    QAction *redo = addMenuAction(edit, "actionRedo", false);
    // Ctrl+Shift+Z is the redo many users reach for first.
    redo->setShortcuts({QKeySequence(QStringLiteral("Ctrl+Y")), QKeySequence(QStringLiteral("Ctrl+Shift+Z"))});
    connect(redo, &QAction::triggered, this, [this] { undoOnCurrentTab(true); });

    QMenu *addTab = makeMenu("menuAddTab");
    connect(addMenuAction(addTab, "actionAddGuideTab", true), &QAction::triggered, this, [this] { addGuideTab(); });
    connect(addMenuAction(addTab, "actionAddCanvasTab", true), &QAction::triggered, this, [this] { addCanvasTab(); });
    connect(addMenuAction(addTab, "actionAdd3DViewTab", true), &QAction::triggered, this, [this] { add3DViewTab(); });

    QMenu *settingsMenu = makeMenu("menuSettings");
    connect(addMenuAction(settingsMenu, "actionGpuSelection", true), &QAction::triggered, this,
            &MainWindow::showGpuSelectionDialog);
    connect(addMenuAction(settingsMenu, "actionUiFont", true), &QAction::triggered, this, [this] {
        bool ok = false;
        const QFont font = QFontDialog::getFont(&ok, m_baseUiFont, this, tr("UI Font"));
        if (ok)
            setBaseUiFont(font, true);
    });
    connect(addMenuAction(settingsMenu, "actionResetUiFont", true), &QAction::triggered, this,
            &MainWindow::resetUiFont);

    QMenu *language = makeMenu("menuLanguage");
    m_languageGroup = new QActionGroup(this);
    m_languageGroup->setExclusive(true);
    QAction *english = addMenuAction(language, "actionLanguageEnglish", true);
    QAction *korean = addMenuAction(language, "actionLanguageKorean", true);
    for (QAction *entry : {english, korean}) {
        entry->setCheckable(true);
        m_languageGroup->addAction(entry);
    }
    english->setData(QStringLiteral("en"));
    korean->setData(QStringLiteral("ko"));
    connect(english, &QAction::triggered, this, [this] { setUiLanguage(QStringLiteral("en")); });
    connect(korean, &QAction::triggered, this, [this] { setUiLanguage(QStringLiteral("ko")); });
    updateLanguageChecks();

    QMenu *help = makeMenu("menuHelp");
    connect(addMenuAction(help, "actionVersion", true), &QAction::triggered, this, [this] {
        QMessageBox::about(this, tr("Version"),
                           tr("VantreoGuide %1\nBuild %2").arg(QCoreApplication::applicationVersion().isEmpty()
                                                                   ? QStringLiteral(VG_VERSION)
                                                                   : QCoreApplication::applicationVersion(),
                                                               buildIdText()));
    });
    addMenuAction(help, "actionUpdate", false);

    // UI scale shortcuts act anywhere in the window.
    auto zoom = [this](const QKeySequence &keys, double step) {
        auto *shortcut = new QShortcut(keys, this);
        connect(shortcut, &QShortcut::activated, this, [this, step] { setUiScale(m_uiScale + step, true, true); });
    };
    zoom(QKeySequence::ZoomIn, 0.1);
    zoom(QKeySequence(QStringLiteral("Ctrl+=")), 0.1);
    zoom(QKeySequence::ZoomOut, -0.1);
}

void MainWindow::buildStatusBar()
{
    m_startupApiLabel = new QLabel(this);
    m_startupApiLabel->setObjectName(QStringLiteral("vantreoStartupApiStatus"));
    statusBar()->addPermanentWidget(m_startupApiLabel);
}

void MainWindow::buildTabArea()
{
    m_tabs = new QTabWidget(this);
    m_tabs->setObjectName(QStringLiteral("mainContentTabs"));
    m_tabs->setDocumentMode(true);
    m_tabs->setMovable(true);
    m_tabs->setTabsClosable(true);
    m_tabs->tabBar()->setSelectionBehaviorOnRemove(QTabBar::SelectLeftTab);
    m_tabs->tabBar()->setContextMenuPolicy(Qt::CustomContextMenu);
    m_tabs->tabBar()->installEventFilter(new ContentTabBarFilter(
        [this] {
            const int plus = plusTabIndex();
            if (plus >= 0 && plus != m_tabs->count() - 1)
                m_tabs->tabBar()->moveTab(plus, m_tabs->count() - 1);
        },
        this));

    // The "+" tab's page is the start page: it is what shows while there are no content tabs.
    m_startPage = buildStartPage();
    const int plus = m_tabs->addTab(m_startPage, QStringLiteral("+"));
    for (auto side : {QTabBar::LeftSide, QTabBar::RightSide}) {
        if (QWidget *button = m_tabs->tabBar()->tabButton(plus, side))
            button->hide();
        m_tabs->tabBar()->setTabButton(plus, side, nullptr);
    }
    m_addTabPopup = new QMenu(this);
    m_addTabPopup->setObjectName(QStringLiteral("vantreoAddTabPopup"));
    m_addTabPopup->addAction(action(QStringLiteral("actionAddGuideTab")));
    m_addTabPopup->addAction(action(QStringLiteral("actionAddCanvasTab")));
    m_addTabPopup->addAction(action(QStringLiteral("actionAdd3DViewTab")));

    connect(m_tabs, &QTabWidget::tabBarClicked, this, [this](int index) {
        if (index >= 0 && index == plusTabIndex())
            QTimer::singleShot(0, this, &MainWindow::showAddTabMenu);
    });
    connect(m_tabs, &QTabWidget::currentChanged, this, [this](int index) {
        if (index >= 0 && index == plusTabIndex() && contentTabCount() > 0) {
            // The "+" tab only opens its menu; stay on the content tab.
            const int back = std::clamp(m_lastContentIndex, 0, contentTabCount() - 1);
            m_tabs->setCurrentIndex(m_tabs->indexOf(contentTab(back)));
            return;
        }
        if (index >= 0 && index != plusTabIndex())
            m_lastContentIndex = indexOfContentTab(m_tabs->widget(index));
        updateEditActions();
        m_tabLayoutTimer->start();
    });
    connect(m_tabs, &QTabWidget::tabCloseRequested, this, [this](int index) {
        if (index != plusTabIndex())
            deleteTab(indexOfContentTab(m_tabs->widget(index)), true);
    });
    connect(m_tabs->tabBar(), &QTabBar::tabMoved, this, [this] {
        if (!(QApplication::mouseButtons() & Qt::LeftButton)) {
            const int plus = plusTabIndex();
            if (plus >= 0 && plus != m_tabs->count() - 1)
                m_tabs->tabBar()->moveTab(plus, m_tabs->count() - 1);
        }
        m_tabLayoutTimer->start();
    });
    connect(m_tabs->tabBar(), &QWidget::customContextMenuRequested, this, &MainWindow::showTabContextMenu);
    setCentralWidget(m_tabs);
}

QWidget *MainWindow::buildStartPage()
{
    auto *page = new QWidget;
    page->setObjectName(QStringLiteral("vantreoGuideStartPage"));
    auto *layout = new QVBoxLayout(page);
    layout->setSpacing(14);
    layout->addStretch(3);

    auto *logo = new QLabel(page);
    logo->setObjectName(QStringLiteral("vantreoStartLogo"));
    const QPixmap logoPixmap(QStringLiteral(":/assets/logo2000.png"));
    if (!logoPixmap.isNull())
        logo->setPixmap(logoPixmap.scaledToWidth(560, Qt::SmoothTransformation));
    logo->setAlignment(Qt::AlignCenter);
    layout->addWidget(logo);

    auto *headingRow = new QHBoxLayout;
    headingRow->addStretch(1);
    auto *icon = new QLabel(page);
    icon->setObjectName(QStringLiteral("vantreoStartIcon"));
    icon->setPixmap(QPixmap(QStringLiteral(":/assets/icon64.png")));
    headingRow->addWidget(icon);
    auto *heading = new QLabel(QStringLiteral("VantreoGuide"), page);
    heading->setObjectName(QStringLiteral("vantreoStartHeading"));
    heading->setStyleSheet(QStringLiteral("font-size: 28px;"));
    headingRow->addSpacing(10);
    headingRow->addWidget(heading);
    headingRow->addStretch(1);
    layout->addLayout(headingRow);

    m_startHint = new QLabel(page);
    m_startHint->setObjectName(QStringLiteral("vantreoStartHint"));
    m_startHint->setStyleSheet(QStringLiteral("color: rgba(255, 255, 255, 150);"));
    m_startHint->setAlignment(Qt::AlignCenter);
    layout->addWidget(m_startHint);

    m_startButton = new QPushButton(page);
    m_startButton->setObjectName(QStringLiteral("vantreoStartAddGuideButton"));
    m_startButton->setMinimumWidth(180);
    connect(m_startButton, &QPushButton::clicked, this, [this] { addGuideTab(); });
    auto *buttonRow = new QHBoxLayout;
    buttonRow->addStretch(1);
    buttonRow->addWidget(m_startButton);
    buttonRow->addStretch(1);
    layout->addLayout(buttonRow);

    layout->addStretch(4);
    m_startVersion = new QLabel(page);
    m_startVersion->setObjectName(QStringLiteral("vantreoStartVersion"));
    m_startVersion->setStyleSheet(QStringLiteral("color: rgba(255, 255, 255, 180);"));
    m_startVersion->setAlignment(Qt::AlignCenter);
    layout->addWidget(m_startVersion);
    return page;
}

void MainWindow::retranslateUi()
{
    setWindowTitle(tr("Vantreo Guide Generator"));
    auto setText = [this](const char *objectName, const QString &text) {
        if (QAction *a = action(QString::fromLatin1(objectName)))
            a->setText(text);
    };
    auto setTitle = [this](const char *objectName, const QString &text) {
        if (QMenu *m = menu(QString::fromLatin1(objectName)))
            m->setTitle(text);
    };
    setTitle("menuFile", tr("File"));
    setText("actionNewProject", tr("New Project"));
    setText("actionOpenProject", tr("Open Project..."));
    setText("actionImportProjectBundle", tr("Import Project Bundle..."));
    setText("actionSaveProject", tr("Save Project"));
    setText("actionSaveProjectAs", tr("Save Project As..."));
    setText("actionSaveProjectAsWithResources", tr("Save Project As (with Resources)..."));
    setText("actionExportProjectBundle", tr("Export Project Bundle..."));
    setText("actionCreatePortablePackage", tr("Create Portable Package..."));
    setText("actionMergeProject", tr("Merge Project..."));
    setTitle("menuRecentProjects", tr("Recent Projects"));
    setText("actionExportAllGuides", tr("Export All Guides..."));
    setText("actionExportTabViewsToPptx", tr("Export Tab Views to PPTX..."));
    setText("actionExportTabViewsToPdf", tr("Export Tab Views to PDF..."));
    setText("actionRecordWindow", tr("Record Window...\tCtrl+Shift+R"));

    setTitle("menuEdit", tr("Edit"));
    setText("actionUndo", tr("Undo\tCtrl+Z"));
    setText("actionRedo", tr("Redo\tCtrl+Y"));

    setTitle("menuAddTab", tr("Add Tab"));
    setText("actionAddGuideTab", tr("Guide"));
    setText("actionAddCanvasTab", tr("Canvas"));
    setText("actionAdd3DViewTab", tr("3D View"));

    setTitle("menuSettings", tr("Settings"));
    setText("actionGpuSelection", tr("GPU Selection..."));
    setText("actionUiFont", tr("UI Font..."));
    setText("actionResetUiFont", tr("Reset UI Font"));

    setTitle("menuLanguage", tr("Language"));
    // The language names are shown in their own language whatever the UI language is.
    setText("actionLanguageEnglish", QStringLiteral("English"));
    setText("actionLanguageKorean", QStringLiteral("한국어"));

    setTitle("menuHelp", tr("Help"));
    setText("actionVersion", tr("Version"));
    setText("actionUpdate", tr("Update"));

    // The waiting text follows the language until the startup client reports.
    if (m_startupApiLabel
        && (m_startupApiLabel->text().isEmpty()
            || m_startupApiLabel->text() == m_startupApiLabel->property("vantreoWaitingText").toString())) {
        m_startupApiLabel->setText(tr("Startup API: Waiting"));
        m_startupApiLabel->setToolTip(tr("Startup API request has not been sent yet."));
        m_startupApiLabel->setProperty("vantreoWaitingText", m_startupApiLabel->text());
    }
    retranslateGeneratedTabTitles();

    m_startHint->setText(tr("Use Add Tab or the + tab to start."));
    m_startButton->setText(tr("Add guide tab"));
    m_startVersion->setText(tr("Version %1  Build %2").arg(QStringLiteral(VG_VERSION), buildIdText()));
}

void MainWindow::updateLanguageChecks()
{
    const QString code = normalizeLanguageCode(Settings::uiLanguage.read());
    for (QAction *entry : m_languageGroup->actions())
        entry->setChecked(entry->data().toString() == code);
}

// ---- tabs -----------------------------------------------------------------------------

int MainWindow::plusTabIndex() const
{
    return m_tabs->indexOf(m_startPage);
}

int MainWindow::contentTabCount() const
{
    return m_tabs->count() - (plusTabIndex() >= 0 ? 1 : 0);
}

QList<QWidget *> MainWindow::contentTabs() const
{
    QList<QWidget *> result;
    for (int i = 0; i < m_tabs->count(); ++i) {
        if (m_tabs->widget(i) != m_startPage)
            result << m_tabs->widget(i);
    }
    return result;
}

QWidget *MainWindow::contentTab(int index) const
{
    return contentTabs().value(index, nullptr);
}

int MainWindow::indexOfContentTab(const QWidget *content) const
{
    return content ? contentTabs().indexOf(const_cast<QWidget *>(content)) : -1;
}

QWidget *MainWindow::currentContentTab() const
{
    QWidget *current = m_tabs->currentWidget();
    return current == m_startPage ? nullptr : current;
}

QWidget *MainWindow::addGuideTab(const QString &title)
{
    return addTab(guideTabKind(), title);
}

QWidget *MainWindow::addCanvasTab(const QString &title)
{
    return addTab(canvasTabKind(), title);
}

QWidget *MainWindow::add3DViewTab(const QString &title)
{
    return addTab(threeDViewTabKind(), title);
}

QWidget *MainWindow::addTab(const TabKind &kind, const QString &title)
{
    return insertContentTab(kind.create(*this, m_tabs), kind, title);
}

int MainWindow::takeTabNumber(const QString &counter)
{
    int &next = m_tabNumbers[counter];
    next = std::max(next, 1);
    return next++;
}

QWidget *MainWindow::insertContentTab(QWidget *content, const TabKind &kind, const QString &title)
{
    if (!content)
        return nullptr;
    TabKindRegistry::mark(content, kind);
    // Counted even when a title is given, so later new tabs never repeat a loaded one's number.
    const QString fallback = kind.newTitle(*this);
    const int number = generatedTitleNumber(fallback);
    const QString shownTitle = title.isEmpty() ? fallback : title;
    content->setProperty("fallbackTabTitle", shownTitle);
    // A title the window made up follows the language until the user renames the tab.
    content->setProperty("vantreoGeneratedTabTitle", title.isEmpty() ? fallback : QString());
    content->setProperty("vantreoGeneratedTabNumber", number);

    QWidget *current = currentContentTab();
    const int position = current ? m_tabs->indexOf(current) + 1 : std::max(0, plusTabIndex());
    const int index = m_tabs->insertTab(position, content, QString());

    auto *titleWidget = new TabTitleWidget(shownTitle, shownTitle);
    titleWidget->setFont(scaledUiFont(m_baseUiFont, m_uiScale));
    const auto closeSide = QTabBar::ButtonPosition(
        style()->styleHint(QStyle::SH_TabBar_CloseButtonPosition, nullptr, m_tabs->tabBar()));
    m_tabs->tabBar()->setTabButton(index, closeSide == QTabBar::LeftSide ? QTabBar::RightSide : QTabBar::LeftSide,
                                   titleWidget);
    m_tabs->setTabToolTip(index, shownTitle);
    connect(titleWidget, &TabTitleWidget::titleEdited, this, [this, content, titleWidget](const QString &edited) {
        m_tabs->setTabToolTip(m_tabs->indexOf(content), titleWidget->displayedTitle());
        Q_EMIT tabTitleChanged(content, edited);
        m_tabLayoutTimer->start();
    });

    applyFontToTab(content);
    m_tabs->setCurrentWidget(content);
    m_lastContentIndex = indexOfContentTab(content);
    Q_EMIT tabAdded(content, kind.id());
    updateEditActions();
    m_tabLayoutTimer->start();
    return content;
}

void MainWindow::retranslateGeneratedTabTitles()
{
    for (int i = 0; i < contentTabCount(); ++i) {
        QWidget *content = contentTab(i);
        TabTitleWidget *titleWidget = tabTitleWidget(i);
        const QString generated = content->property("vantreoGeneratedTabTitle").toString();
        if (!titleWidget || generated.isEmpty() || titleWidget->title() != generated)
            continue;
        const TabKind *kind = TabKindRegistry::kindOf(content);
        if (!kind)
            continue;
        const QString retitled = generatedTabTitle(kind->id(), content->property("vantreoGeneratedTabNumber").toInt());
        if (retitled.isEmpty() || retitled == generated)
            continue;
        content->setProperty("vantreoGeneratedTabTitle", retitled);
        content->setProperty("fallbackTabTitle", retitled);
        titleWidget->setFallbackTitle(retitled);
        titleWidget->setTitle(retitled);
        m_tabs->setTabToolTip(m_tabs->indexOf(content), retitled);
    }
    if (m_tabLayoutTimer)
        m_tabLayoutTimer->start();
}

QWidget *MainWindow::duplicateTab(int index)
{
    QWidget *source = contentTab(index);
    if (!source)
        return nullptr;
    m_tabs->setCurrentWidget(source);
    const TabKind *kind = TabKindRegistry::kindOf(source);
    if (!kind)
        return nullptr;
    return insertContentTab(kind->duplicate(*this, source, m_tabs), *kind, QString());
}

bool MainWindow::deleteTab(int index, bool confirm)
{
    QWidget *content = contentTab(index);
    if (!content)
        return false;
    if (confirm) {
        const QString title = displayedTabTitle(index);
        const auto answer = QMessageBox::question(
            this, tr("Delete Tab"), tr("Delete \"%1\"?").arg(title.isEmpty() ? tr("this tab") : title),
            QMessageBox::Yes | QMessageBox::No, QMessageBox::No);
        if (answer != QMessageBox::Yes)
            return false;
    }
    Q_EMIT tabAboutToBeRemoved(content);
    m_tabs->removeTab(m_tabs->indexOf(content));
    delete content;
    if (contentTabCount() == 0) {
        m_lastContentIndex = -1;
        m_tabs->setCurrentWidget(m_startPage);
    }
    updateStartPage();
    updateEditActions();
    m_tabLayoutTimer->start();
    return true;
}

void MainWindow::removeAllTabs()
{
    while (contentTabCount() > 0)
        deleteTab(contentTabCount() - 1, false);
}

TabTitleWidget *MainWindow::tabTitleWidget(int index) const
{
    QWidget *content = contentTab(index);
    if (!content)
        return nullptr;
    const int tabIndex = m_tabs->indexOf(content);
    for (auto side : {QTabBar::LeftSide, QTabBar::RightSide}) {
        if (auto *title = qobject_cast<TabTitleWidget *>(m_tabs->tabBar()->tabButton(tabIndex, side)))
            return title;
    }
    return nullptr;
}

QString MainWindow::tabTitle(int index) const
{
    TabTitleWidget *title = tabTitleWidget(index);
    return title ? title->title() : QString();
}

QString MainWindow::displayedTabTitle(int index) const
{
    if (TabTitleWidget *title = tabTitleWidget(index))
        return title->displayedTitle();
    QWidget *content = contentTab(index);
    return content ? content->property("fallbackTabTitle").toString() : QString();
}

void MainWindow::setTabTitle(int index, const QString &title)
{
    TabTitleWidget *titleWidget = tabTitleWidget(index);
    if (!titleWidget)
        return;
    titleWidget->setTitle(title);
    m_tabs->setTabToolTip(m_tabs->indexOf(contentTab(index)), titleWidget->displayedTitle());
    m_tabLayoutTimer->start();
}

void MainWindow::updateStartPage()
{
    if (contentTabCount() == 0)
        m_tabs->setCurrentWidget(m_startPage);
}

void MainWindow::showAddTabMenu()
{
    const int plus = plusTabIndex();
    const QRect rect = m_tabs->tabBar()->tabRect(plus);
    m_addTabPopup->popup(m_tabs->tabBar()->mapToGlobal(rect.bottomLeft()));
}

void MainWindow::showTabContextMenu(const QPoint &position)
{
    const int tabIndex = m_tabs->tabBar()->tabAt(position);
    if (tabIndex < 0 || tabIndex == plusTabIndex())
        return;
    QWidget *content = m_tabs->widget(tabIndex);
    QMenu menu(this);
    menu.setObjectName(QStringLiteral("vantreoTabContextMenu"));
    QAction *copy = menu.addAction(tr("Copy"));
    QAction *remove = menu.addAction(tr("Delete"));
    // Acted on after the menu has closed, however the entry was triggered.
    QAction *chosen = nullptr;
    for (QAction *entry : {copy, remove})
        connect(entry, &QAction::triggered, &menu, [&chosen, entry] { chosen = entry; });
    if (QAction *picked = menu.exec(m_tabs->tabBar()->mapToGlobal(position)))
        chosen = picked;
    const int index = indexOfContentTab(content);
    if (chosen == copy)
        duplicateTab(index);
    else if (chosen == remove)
        deleteTab(index, true);
}

void MainWindow::watchTabs(QObject *context, std::function<void(QWidget *)> added,
                           std::function<void()> layoutChanged)
{
    connect(this, &MainWindow::tabAdded, context, [added](QWidget *content, const QString &) { added(content); });
    connect(this, &MainWindow::tabLayoutChanged, context, layoutChanged);
}

void MainWindow::showStatusMessage(const QString &text, int timeoutMs)
{
    statusBar()->showMessage(text, timeoutMs);
}

void MainWindow::updateEditActions()
{
    QWidget *current = currentContentTab();
    const TabKind *kind = TabKindRegistry::kindOf(current);
    const bool available = kind && kind->hasUndo(current);
    if (QAction *undo = action(QStringLiteral("actionUndo")))
        undo->setEnabled(available);
    if (QAction *redo = action(QStringLiteral("actionRedo")))
        redo->setEnabled(available);
}

void MainWindow::undoOnCurrentTab(bool redo)
{
    QWidget *current = currentContentTab();
    if (const TabKind *kind = TabKindRegistry::kindOf(current))
        redo ? kind->redo(current) : kind->undo(current);
}

// ---- UI scale, font, language ------------------------------------------------------------

void MainWindow::setUiScale(double scale, bool persist, bool announce)
{
    m_uiScale = normalizeUiScale(scale);
    const QFont font = scaledUiFont(m_baseUiFont, m_uiScale);
    QApplication::setFont(font);
    for (QWidget *content : contentTabs())
        applyFontToTab(content);
    scheduleRelayout();
    if (persist)
        Settings::uiScale.write(m_uiScale);
    if (announce) {
        const int percent = int(std::round(m_uiScale * 100.0));
        statusBar()->showMessage(tr("UI scale: %1% (viewport unchanged)").arg(percent), kStatusMessageTimeout);
    }
    Q_EMIT uiScaleChanged(m_uiScale);
}

void MainWindow::applyFontToTab(QWidget *content)
{
    const QFont font = scaledUiFont(m_baseUiFont, m_uiScale);
    content->setFont(font);
    const int index = indexOfContentTab(content);
    if (TabTitleWidget *title = tabTitleWidget(index))
        title->setFont(font);
}

void MainWindow::scheduleRelayout()
{
    if (m_relayoutTimer)
        m_relayoutTimer->start();
}

void MainWindow::relayoutTabs()
{
    for (QWidget *content : contentTabs()) {
        if (QLayout *layout = content->layout())
            layout->invalidate();
        content->updateGeometry();
    }
    m_tabs->tabBar()->updateGeometry();
    m_tabs->tabBar()->adjustSize();
}

void MainWindow::setBaseUiFont(const QFont &font, bool persist)
{
    m_baseUiFont = font;
    if (persist)
        Settings::uiFont.write(font.toString());
    setUiScale(m_uiScale, false, false);
}

void MainWindow::resetUiFont()
{
    Settings::uiFont.remove();
    m_baseUiFont = defaultUiFont();
    setUiScale(m_uiScale, false, false);
}

void MainWindow::setUiLanguage(const QString &code)
{
    const QString language = normalizeLanguageCode(code);
    Settings::uiLanguage.write(language);
    QString error;
    if (!installUiTranslation(language, &error))
        qWarning().noquote() << QStringLiteral("Could not load UI translation: %1").arg(error);
    // Installing the translation sends LanguageChange, which retranslates the window.
    retranslateUi();
    updateLanguageChecks();
}

void MainWindow::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange && m_startHint)
        retranslateUi();
    QMainWindow::changeEvent(event);
}

// ---- menus and actions -------------------------------------------------------------------

QAction *MainWindow::action(const QString &objectName) const
{
    for (QAction *a : findChildren<QAction *>(objectName)) {
        if (a->objectName() == objectName)
            return a;
    }
    // Sub-menu entries ("actionRecentProjects") belong to their menu.
    for (QMenu *m : findChildren<QMenu *>()) {
        if (m->menuAction()->objectName() == objectName)
            return m->menuAction();
    }
    return nullptr;
}

QMenu *MainWindow::menu(const QString &objectName) const
{
    return findChild<QMenu *>(objectName);
}

// ---- project lifecycle -------------------------------------------------------------------

bool MainWindow::confirmUnsavedChanges(UnsavedChangesPrompt prompt)
{
    if (!hasUnsavedChanges())
        return true;
    QMessageBox box(this);
    box.setObjectName(QStringLiteral("vantreoUnsavedChangesBox"));
    box.setIcon(QMessageBox::Question);
    box.setWindowTitle(tr("Unsaved Changes"));
    if (prompt == UnsavedChangesPrompt::NewProject) {
        box.setText(tr("Save changes before starting a new project?"));
        box.setInformativeText(tr("Your current project has unsaved changes."));
    } else {
        box.setText(tr("Save changes before closing?"));
        box.setInformativeText(m_unsavedChanges ? tr("There are unsaved changes.")
                                                : tr("Your program settings have changed."));
    }
    box.setStandardButtons(QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel);
    box.setDefaultButton(QMessageBox::Save);
    box.setEscapeButton(QMessageBox::Cancel);
    const int answer = box.exec();
    if (answer == QMessageBox::Discard)
        return true;
    if (answer == QMessageBox::Save)
        return m_hooks.saveProject && m_hooks.saveProject();
    return false;
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    if (m_closeApproved || confirmUnsavedChanges(UnsavedChangesPrompt::Closing)) {
        m_closeApproved = true;
        event->accept();
    } else {
        event->ignore();
    }
}

bool MainWindow::openStartupProject(const QString &path)
{
    m_startupProjectOpened = true;
    setProperty("startupProjectPreparing", true);
    const bool opened = m_hooks.openProject && m_hooks.openProject(path);
    setProperty("startupProjectPreparing", false);
    return opened;
}

void MainWindow::runStartupProjectStep()
{
    if (property("skipStartupSample").toBool() || m_startupProjectOpened)
        return;
    if (!m_programSettingsFile.isEmpty() && QFileInfo(m_programSettingsFile).isFile() && m_hooks.openProject) {
        if (openStartupProject(m_programSettingsFile))
            return;
    }
    if (m_hooks.loadStartupSample) {
        m_startupProjectOpened = true;
        setProperty("startupProjectPreparing", true);
        m_hooks.loadStartupSample();
        setProperty("startupProjectPreparing", false);
    }
}

void MainWindow::dragEnterEvent(QDragEnterEvent *event)
{
    if (!m_hooks.openProject || !event->mimeData()->hasUrls())
        return;
    for (const QUrl &url : event->mimeData()->urls()) {
        if (url.isLocalFile() && isProjectFile(url.toLocalFile())) {
            event->acceptProposedAction();
            return;
        }
    }
}

void MainWindow::dropEvent(QDropEvent *event)
{
    if (!m_hooks.openProject)
        return;
    for (const QUrl &url : event->mimeData()->urls()) {
        if (url.isLocalFile() && isProjectFile(url.toLocalFile())) {
            event->acceptProposedAction();
            m_hooks.openProject(url.toLocalFile());
            return;
        }
    }
}

// ---- GPU selection -----------------------------------------------------------------------

void MainWindow::showGpuSelectionDialog()
{
    GpuSelectionDialog dialog(enumerateGpuAdapters(m_gpuDrmRoot), m_gpuAdapterKey, this);
    if (dialog.exec() == QDialog::Accepted)
        applyGpuSelection(dialog.selectedKey());
}

void MainWindow::applyGpuSelection(const QString &key)
{
    if (key == m_gpuAdapterKey) {
        statusBar()->showMessage(tr("GPU selection unchanged."), kStatusMessageTimeout);
        return;
    }
    m_gpuAdapterKey = key;
    Settings::graphicsAdapter.write(key);

    QMessageBox box(this);
    box.setObjectName(QStringLiteral("vantreoGpuRestartBox"));
    box.setIcon(QMessageBox::Question);
    box.setWindowTitle(tr("GPU Selection"));
    box.setText(tr("GPU selection was saved."));
    box.setInformativeText(tr("Restart VantreoGuide now to apply it to all GPU previews."));
    QPushButton *restartNow = box.addButton(tr("Restart Now"), QMessageBox::AcceptRole);
    QPushButton *later = box.addButton(tr("Later"), QMessageBox::RejectRole);
    box.setDefaultButton(restartNow);
    box.setEscapeButton(later);
    box.exec();
    if (box.clickedButton() == restartNow)
        restartApplication();
    else
        statusBar()->showMessage(tr("GPU selection saved. Restart required."), kStatusMessageTimeout);
}

void MainWindow::restartApplication()
{
    if (!confirmUnsavedChanges(UnsavedChangesPrompt::Closing)) {
        statusBar()->showMessage(tr("GPU selection saved. Restart required."), kStatusMessageTimeout);
        return;
    }
    const QString program = QCoreApplication::applicationFilePath();
    const QStringList arguments = QCoreApplication::arguments().mid(1);
    if (!m_restartLauncher || !m_restartLauncher(program, arguments)) {
        QMessageBox::warning(this, tr("GPU Selection"),
                             tr("VantreoGuide could not restart automatically. Please restart it manually."));
        return;
    }
    m_closeApproved = true;
    close();
    QCoreApplication::quit();
}
