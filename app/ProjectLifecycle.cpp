#include "app/ProjectLifecycle.h"

#include "app/GuideRecords.h"
#include "app/ProjectWindow.h"
#include "app/TabKind.h"
#include "canvas/ui/CanvasTab.h"
#include "common/AtomicFileWrite.h"
#include "project/GuideReferences.h"
#include "guide/ui/GuideTab.h"
#include "project/PortablePackage.h"
#include "project/ProjectBackups.h"
#include "project/RecentProjects.h"
#include "project/ResourceCollector.h"
#include "project/ZipArchive.h"
#include "scene/ui/ThreeDViewTab.h"
#include "common/SettingsKeys.h"

#include <QAction>
#include <QApplication>
#include <QDateTime>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFutureWatcher>
#include <QtConcurrent/QtConcurrentRun>
#include <QDir>
#include <QEvent>
#include <QEventLoop>
#include <QFutureWatcher>
#include <QtConcurrent>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QLibraryInfo>
#include <QMenu>
#include <QMessageBox>
#include <QScopeGuard>
#include <QSet>
#include <QSettings>
#include <QStatusBar>
#include <QTabWidget>
#include <QTimer>
#include <QVBoxLayout>

#include <atomic>

namespace {

constexpr int kBackupIntervalMs = 5 * 60 * 1000;


const char *const kOverlayStyle =
    "#vantreoProjectLoadingOverlay { background-color: rgb(30, 34, 39); border: none;}"
    "#vantreoProjectLoadingOverlay QLabel { color: rgba(255, 255, 255, 210); font-size: 18px; font-weight: 600;}";

QString timestamp()
{
    return QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd_HHmmss"));
}

QString withPath(const QString &text, const QString &path)
{
    return text + QLatin1Char('\n') + QDir::toNativeSeparators(path);
}

void resetCamera(Guide3DViewSettings &view)
{
    view.view_mode = 0;
    view.view_rotation_x = 0.0;
    view.view_rotation_y = 0.0;
    view.focus_distance = 0.0;
    view.target_x = view.target_y = view.target_z = 0.0;
}

} // namespace

ProjectLifecycle::ProjectLifecycle(ProjectWindow *window)
    : QObject(window->windowWidget())
    , m_window(window)
{
    setObjectName(QStringLiteral("vantreoProjectLifecycle"));
    m_dialogs.openFile = [this](const QString &title, const QString &folder, const QString &filter) {
        return QFileDialog::getOpenFileName(m_window->windowWidget(), title, folder, filter);
    };
    m_dialogs.saveFile = [this](const QString &title, const QString &path, const QString &filter) {
        // The overwrite question is ours, asked once the ".vgs" suffix is known.
        return QFileDialog::getSaveFileName(m_window->windowWidget(), title, path, filter, nullptr, QFileDialog::DontConfirmOverwrite);
    };
    m_dialogs.folder = [this](const QString &title, const QString &folder) {
        return QFileDialog::getExistingDirectory(m_window->windowWidget(), title, folder);
    };
    m_dialogs.confirm = [this](const QString &title, const QString &text) {
        return QMessageBox::question(m_window->windowWidget(), title, text, QMessageBox::Yes | QMessageBox::No, QMessageBox::No)
            == QMessageBox::Yes;
    };
    m_dialogs.warn = [this](const QString &title, const QString &text) { QMessageBox::warning(m_window->windowWidget(), title, text); };
    m_dialogs.inform = [this](const QString &title, const QString &text) {
        QMessageBox::information(m_window->windowWidget(), title, text);
    };

    m_backupTimer = new QTimer(this);
    m_backupTimer->setInterval(kBackupIntervalMs);
    connect(m_backupTimer, &QTimer::timeout, this, [this] {
        if (!m_currentFile.isEmpty() && !isLoading() && isChanged())
            backupNow();
    });
    m_backupTimer->start();

    m_changeTimer = new QTimer(this);
    m_changeTimer->setSingleShot(true);
    m_changeTimer->setInterval(250);
    connect(m_changeTimer, &QTimer::timeout, this, &ProjectLifecycle::checkChanges);

    ProjectWindow::ProjectHooks hooks;
    hooks.saveProject = [this] { return saveProject(); };
    hooks.openProject = [this](const QString &path) { return openProject(path); };
    hooks.loadStartupSample = [this] { loadStartupSample(); };
    m_window->setProjectHooks(hooks);

    m_window->watchTabs(
        this,
        [this](QWidget *content) {
            watchTab(content);
            scheduleChangeCheck();
        },
        [this] { scheduleChangeCheck(); });
    connect(m_window->tabWidget(), &QTabWidget::currentChanged, this, &ProjectLifecycle::rememberActiveGuide);
    m_windowWidget = m_window->windowWidget();
    m_windowWidget->installEventFilter(this);
    for (QWidget *content : m_window->contentTabs())
        watchTab(content);

    connectActions();
    m_savedSnapshot = snapshotOf(currentDocument());
    updateWindowTitle();
}

ProjectLifecycle::~ProjectLifecycle() = default;

bool ProjectLifecycle::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != m_windowWidget)
        return QObject::eventFilter(watched, event);
    // The window resets its title on a language change; ours goes on top afterwards.
    if (event->type() == QEvent::LanguageChange)
        QTimer::singleShot(0, this, [this] {
            updateWindowTitle();
            rebuildRecentMenu();
        });
    // An edit made just before closing may not have been compared yet.
    if (event->type() == QEvent::Close)
        checkChanges();
    if (event->type() == QEvent::Resize && m_overlay)
        m_overlay->setGeometry(m_windowWidget->rect());
    return QObject::eventFilter(watched, event);
}

void ProjectLifecycle::connectActions()
{
    auto hook = [this](const char *name, auto slot) {
        if (QAction *action = m_window->action(QString::fromLatin1(name))) {
            action->setEnabled(true);
            connect(action, &QAction::triggered, this, slot);
        }
    };
    hook("actionNewProject", [this] { newProject(true); });
    hook("actionOpenProject", [this] { openProjectInteractive(); });
    hook("actionImportProjectBundle", [this] { importProjectBundle(); });
    hook("actionSaveProject", [this] { saveProject(); });
    hook("actionSaveProjectAs", [this] { saveProjectAs(); });
    hook("actionSaveProjectAsWithResources", [this] { saveProjectAsWithResources(); });
    hook("actionExportProjectBundle", [this] { exportProjectBundle(); });
    hook("actionCreatePortablePackage", [this] { createPortablePackage(); });
    hook("actionMergeProject", [this] { mergeProjectInteractive(); });
    if (QAction *recent = m_window->action(QStringLiteral("actionRecentProjects")))
        recent->setEnabled(true);
    if (QMenu *menu = m_window->menu(QStringLiteral("menuRecentProjects")))
        connect(menu, &QMenu::aboutToShow, this, &ProjectLifecycle::rebuildRecentMenu);
    rebuildRecentMenu();
}

// ---- the project as the tabs hold it ----------------------------------------------------

ProjectDocument ProjectLifecycle::currentDocument() const
{
    ProjectDocument doc;
    const QList<QWidget *> tabs = m_window->contentTabs();
    QWidget *current = m_window->currentContentTab();
    // The guide list runs by record, which is what every binding names; the tab list says
    // where each guide's tab is shown.
    const QList<GuideTab *> guides = guiderecords::guideTabsByRecord(m_window);
    for (GuideTab *guide : guides)
        doc.guides.append(guide->settings());
    for (QWidget *content : tabs) {
        const TabKind *kind = TabKindRegistry::kindOf(content);
        if (!kind)
            continue;
        if (content == current)
            doc.currentTab = doc.tabs.size();
        const QString title = m_window->displayedTabTitle(m_window->indexOfContentTab(content));
        doc.tabs.append({kind->id(), kind->write(content, title, &doc)});
    }
    doc.activeGuide = doc.guides.isEmpty() ? 0 : qBound(0, m_activeGuide, int(doc.guides.size()) - 1);
    if (doc.currentTab >= 0 && TabKindRegistry::find(doc.tabs[doc.currentTab].kind) == &guideTabKind())
        doc.activeGuide = doc.tabs[doc.currentTab].index;
    if (!doc.views.isEmpty())
        doc.activeView = doc.views.first();
    return doc;
}

QByteArray ProjectLifecycle::snapshotOf(const ProjectDocument &source)
{
    ProjectDocument doc = source;
    doc.currentTab = -1;
    doc.activeGuide = 0;
    resetCamera(doc.activeView);
    for (Guide3DViewSettings &view : doc.views)
        resetCamera(view);
    return projectDocumentToJson(doc);
}

bool ProjectLifecycle::isChanged()
{
    checkChanges();
    return m_changed;
}

void ProjectLifecycle::markSaved()
{
    m_savedSnapshot = snapshotOf(currentDocument());
    checkChanges();
}

void ProjectLifecycle::scheduleChangeCheck()
{
    if (!isLoading())
        m_changeTimer->start();
}

void ProjectLifecycle::checkChanges()
{
    if (isLoading())
        return;
    const bool changed = snapshotOf(currentDocument()) != m_savedSnapshot;
    if (changed != m_changed) {
        m_changed = changed;
        m_window->setUnsavedChanges(changed);
        updateWindowTitle();
        Q_EMIT changeStateChanged(changed);
    }
}

void ProjectLifecycle::watchTab(QWidget *content)
{
    if (const TabKind *kind = TabKindRegistry::kindOf(content))
        kind->watch(content, this, [this] { scheduleChangeCheck(); });
}

void ProjectLifecycle::rememberActiveGuide()
{
    auto *guide = qobject_cast<GuideTab *>(m_window->currentContentTab());
    if (!guide || isLoading())
        return;
    m_activeGuide = std::max(0, int(guiderecords::guideTabsByRecord(m_window).indexOf(guide)));
}

void ProjectLifecycle::updateWindowTitle()
{
    // The window's own title text, translated in the window's context.
    static const char *const windowContext = "MainWindow";
    const QString app = QCoreApplication::translate(windowContext, "Vantreo Guide Generator");
    const QString mark = m_changed ? QStringLiteral("*") : QString();
    if (m_currentFile.isEmpty())
        m_window->windowWidget()->setWindowTitle(m_changed ? QStringLiteral("%1 %2").arg(app, mark) : app);
    else
        m_window->windowWidget()->setWindowTitle(QStringLiteral("%1%2 - %3").arg(QFileInfo(m_currentFile).fileName(), mark, app));
}

void ProjectLifecycle::setCurrentFile(const QString &path)
{
    m_currentFile = path.isEmpty() ? QString() : QFileInfo(path).absoluteFilePath();
    Settings::projectFile.write(m_currentFile);
    if (!m_currentFile.isEmpty())
        Settings::projectDirectory.write(QFileInfo(m_currentFile).absolutePath());
    updateWindowTitle();
    Q_EMIT projectFileChanged(m_currentFile);
}

void ProjectLifecycle::status(const QString &text)
{
    m_window->showStatusMessage(text, 8000);
}

bool ProjectLifecycle::hasProjectData(const ProjectDocument &doc) const
{
    return !doc.guides.isEmpty() || !doc.views.isEmpty() || !doc.canvasTabs.isEmpty();
}

QString ProjectLifecycle::withProjectSuffix(const QString &path)
{
    if (path.isEmpty() || path.endsWith(QStringLiteral(".vgs"), Qt::CaseInsensitive))
        return path;
    return path + QStringLiteral(".vgs");
}

// ---- loading overlay ---------------------------------------------------------------------

void ProjectLifecycle::showOverlay(const QString &heading)
{
    if (!m_overlay) {
        auto *overlay = new QWidget(m_window->windowWidget());
        overlay->setObjectName(QStringLiteral("vantreoProjectLoadingOverlay"));
        overlay->setAttribute(Qt::WA_StyledBackground, true);
        overlay->setStyleSheet(QString::fromLatin1(kOverlayStyle));
        auto *layout = new QVBoxLayout(overlay);
        layout->addStretch();
        m_overlayHeading = new QLabel(overlay);
        m_overlayHeading->setAlignment(Qt::AlignCenter);
        m_overlayProgress = new QLabel(overlay);
        m_overlayProgress->setObjectName(QStringLiteral("vantreoProjectLoadingProgress"));
        m_overlayProgress->setAlignment(Qt::AlignCenter);
        layout->addWidget(m_overlayHeading);
        layout->addWidget(m_overlayProgress);
        layout->addStretch();
        m_overlay = overlay;
    }
    m_overlayHeading->setText(heading);
    m_overlayProgress->clear();
    m_overlay->setGeometry(m_window->windowWidget()->rect());
    m_overlay->raise();
    m_overlay->show();
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void ProjectLifecycle::showProgress(const QString &text)
{
    if (m_overlayProgress)
        m_overlayProgress->setText(text);
    if (m_progressObserver)
        m_progressObserver(text);
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void ProjectLifecycle::hideOverlay()
{
    if (m_overlay)
        m_overlay->hide();
}

// ---- new, open, merge ----------------------------------------------------------------------

bool ProjectLifecycle::newProject(bool ask)
{
    if (ask) {
        if (!m_dialogs.confirm(tr("New Project"), tr("Initialize the program and start a new empty project?")))
            return false;
        if (isChanged() && !m_window->confirmUnsavedChanges(ProjectWindow::UnsavedChangesPrompt::NewProject))
            return false;
    }
    ++m_loading;
    m_window->removeAllTabs();
    m_activeGuide = 0;
    --m_loading;
    setCurrentFile(QString());
    markSaved();
    status(tr("Project initialized."));
    return true;
}

bool ProjectLifecycle::openProjectInteractive()
{
    const QString path = m_dialogs.openFile(tr("Open Vantreo project"), Settings::projectDirectory.read(),
                                            tr("All Supported Project Files (*.vgs *.json);;Vantreo Guide Project (*.vgs);;Legacy JSON Settings (*.json)"));
    return !path.isEmpty() && openProject(path);
}

bool ProjectLifecycle::mergeProjectInteractive()
{
    const QString path = m_dialogs.openFile(tr("Merge Vantreo project"), Settings::projectDirectory.read(),
                                            tr("All Supported Project Files (*.vgs *.json);;Vantreo Guide Project (*.vgs);;Legacy JSON Settings (*.json)"));
    return !path.isEmpty() && mergeProject(path);
}

bool ProjectLifecycle::openProject(const QString &path)
{
    if (!loadInto(path, Mode::Replace, tr("Load failed")))
        return false;
    setCurrentFile(path);
    addRecent(m_currentFile);
    markSaved();
    status(tr("Loaded project: %1").arg(QDir::toNativeSeparators(m_currentFile)));
    return true;
}

bool ProjectLifecycle::mergeProject(const QString &path)
{
    if (!loadInto(path, Mode::Merge, tr("Merge failed")))
        return false;
    // The merged content is not in the project file yet: the project stays changed.
    checkChanges();
    status(tr("Merged project: %1").arg(QDir::toNativeSeparators(QFileInfo(path).absoluteFilePath())));
    return true;
}

bool ProjectLifecycle::loadInto(const QString &path, Mode mode, const QString &failTitle)
{
    if (path.isEmpty() || !QFileInfo(path).isFile()) {
        m_dialogs.warn(failTitle, withPath(tr("Project file not found:"), path));
        return false;
    }
    ++m_loading;
    showOverlay(mode == Mode::Replace ? tr("Loading project...") : tr("Merging project..."));
    showProgress(tr("Reading settings JSON..."));
    ProjectDocument doc;
    QString error;
    if (!loadProjectDocument(path, &doc, &error)) {
        hideOverlay();
        --m_loading;
        m_dialogs.warn(failTitle, error);
        return false;
    }
    vg::resources::resolveRelativePaths(&doc, QFileInfo(path).absolutePath());
    applyDocument(doc, mode);
    hideOverlay();
    --m_loading;
    return true;
}

void ProjectLifecycle::applyDocument(const ProjectDocument &source, Mode mode)
{
    ProjectDocument doc = source;
    // Guide tabs open in the file's tab order; the guide list is put in that order with
    // every reference following, so each binding keeps naming the same guide.
    orderGuidesAsTabs(&doc);
    const bool merge = mode == Mode::Merge;
    int guideOffset = 0;
    if (merge) {
        for (QWidget *content : m_window->contentTabs())
            guideOffset += qobject_cast<GuideTab *>(content) ? 1 : 0;
        // Merged references point past the guides already open.
        remapGuideReferences(&doc, [guideOffset](int index) { return index + guideOffset; });
    } else {
        showProgress(tr("Preparing tabs..."));
        m_window->removeAllTabs();
        showProgress(tr("Cleared existing tabs..."));
    }

    // Kinds the window does not know are left out; no record of a known kind is dropped.
    QList<ProjectTabEntry> order = projectTabOrder(doc);
    order.removeIf([](const ProjectTabEntry &entry) { return !TabKindRegistry::find(entry.kind); });

    // New tabs go after the current one; start from the last so the order holds.
    if (m_window->contentTabCount() > 0)
        m_window->tabWidget()->setCurrentIndex(m_window->contentTabCount() - 1);

    QList<QWidget *> created;
    QHash<const TabKind *, int> numbers;
    QList<GuideTab *> guideTabs;
    for (const ProjectTabEntry &entry : order) {
        const TabKind *kind = TabKindRegistry::find(entry.kind);
        showProgress(kind->progressText(merge, ++numbers[kind], kind->recordCount(doc)));
        QWidget *content = m_window->addTab(*kind, kind->recordTitle(doc, entry.index));
        kind->setLoading(content, true);
        if (auto *guide = qobject_cast<GuideTab *>(content)) {
            // Merged guides take the records after those already open.
            guiderecords::setRecord(content, guideOffset + entry.index);
            guideTabs.append(guide);
        }
        kind->read(content, doc, entry.index);
        created.append(content);
    }

    if (!merge) {
        showProgress(tr("Restoring active guide..."));
        m_activeGuide = doc.activeGuide;
        showProgress(tr("Updating 3D View controls..."));
        for (QWidget *content : created) {
            if (auto *view = qobject_cast<ThreeDViewTab *>(content))
                view->refreshGuideSources();
        }
        showProgress(tr("Finalizing load..."));
        QWidget *current = nullptr;
        if (doc.currentTab >= 0 && doc.currentTab < doc.tabs.size()) {
            const ProjectTabEntry &entry = doc.tabs[doc.currentTab];
            const int position = order.indexOf(ProjectTabEntry{entry.kind.trimmed(), entry.index});
            if (position >= 0)
                current = created.value(position);
        } else if (!guideTabs.isEmpty()) {
            current = guideTabs.value(qBound(0, doc.activeGuide, int(guideTabs.size()) - 1));
        }
        if (!current && !created.isEmpty())
            current = created.first();
        if (current)
            m_window->tabWidget()->setCurrentIndex(m_window->indexOfContentTab(current));
        showProgress(tr("Updating loaded views..."));
    } else {
        for (QWidget *content : m_window->contentTabs()) {
            if (auto *view = qobject_cast<ThreeDViewTab *>(content))
                view->refreshGuideSources();
        }
        showProgress(tr("Updating merged views..."));
    }
    for (QWidget *content : created)
        TabKindRegistry::kindOf(content)->setLoading(content, false);
}

// ---- save ------------------------------------------------------------------------------------

bool ProjectLifecycle::saveProject()
{
    if (m_currentFile.isEmpty())
        return saveProjectAs();
    return saveProjectTo(m_currentFile);
}

bool ProjectLifecycle::saveProjectAs()
{
    const ProjectDocument doc = currentDocument();
    if (!hasProjectData(doc)) {
        m_dialogs.warn(tr("Save failed"), tr("No guide settings to save."));
        return false;
    }
    const QString folder = m_currentFile.isEmpty() ? Settings::projectDirectory.read() : QFileInfo(m_currentFile).absolutePath();
    const QString name = m_currentFile.isEmpty() ? QStringLiteral("VantreoGuideSettings.vgs") : QFileInfo(m_currentFile).fileName();
    QString path = m_dialogs.saveFile(tr("Save Vantreo project"), QDir(folder).filePath(name), tr("Vantreo Guide Project (*)"));
    if (path.isEmpty())
        return false;
    path = withProjectSuffix(path);
    if (QFileInfo::exists(path)
        && QFileInfo(path).absoluteFilePath() != m_currentFile
        && !m_dialogs.confirm(tr("Save Vantreo project"), tr("%1 already exists.").arg(QDir::toNativeSeparators(path)))) {
        return false;
    }
    return saveProjectTo(path);
}

bool ProjectLifecycle::saveProjectTo(const QString &requested)
{
    const ProjectDocument doc = currentDocument();
    if (!hasProjectData(doc)) {
        m_dialogs.warn(tr("Save failed"), tr("No guide settings to save."));
        return false;
    }
    const QString path = QFileInfo(withProjectSuffix(requested)).absoluteFilePath();
    if (QFileInfo(path).isFile())
        backupExistingFile(path);
    // Printing, compressing and writing a large project takes a while: it runs on a pool
    // thread, together with the change-detection snapshot, while the window keeps painting.
    // Input waits until the save is done, so nothing is edited half-way through it.
    struct Outcome
    {
        bool saved = false;
        QString error;
        QByteArray snapshot;
    };
    QFutureWatcher<Outcome> watcher;
    QEventLoop loop;
    connect(&watcher, &QFutureWatcher<Outcome>::finished, &loop, &QEventLoop::quit);
    watcher.setFuture(QtConcurrent::run([path, doc] {
        Outcome outcome;
        outcome.saved = saveProjectDocument(path, doc, &outcome.error);
        if (outcome.saved)
            outcome.snapshot = snapshotOf(doc);
        return outcome;
    }));
    if (!watcher.isFinished())
        loop.exec(QEventLoop::ExcludeUserInputEvents);
    const Outcome outcome = watcher.result();
    if (!outcome.saved) {
        m_dialogs.warn(tr("Save failed"), tr("Could not save project: %1").arg(outcome.error));
        return false;
    }
    setCurrentFile(path);
    addRecent(path);
    m_savedSnapshot = outcome.snapshot;
    checkChanges();
    status(tr("Saved project: %1").arg(QDir::toNativeSeparators(path)));
    return true;
}

bool ProjectLifecycle::saveProjectAsWithResources()
{
    if (!hasProjectData(currentDocument())) {
        m_dialogs.warn(tr("Save Project As (with Resources)"), tr("No project data to save."));
        return false;
    }
    const QString folder = m_currentFile.isEmpty() ? Settings::projectDirectory.read() : QFileInfo(m_currentFile).absolutePath();
    QString path = m_dialogs.saveFile(tr("Save Vantreo project"), QDir(folder).filePath(QStringLiteral("VantreoGuideSettings.vgs")),
                                      tr("Vantreo Guide Project (*)"));
    if (path.isEmpty())
        return false;
    path = withProjectSuffix(path);
    if (QFileInfo::exists(path) && !m_dialogs.confirm(tr("Save Project As (with Resources)"),
                                                      tr("%1 already exists.").arg(QDir::toNativeSeparators(path))))
        return false;
    return saveProjectWithResourcesTo(path);
}

bool ProjectLifecycle::saveProjectWithResourcesTo(const QString &requested)
{
    const QString title = tr("Save Project As (with Resources)");
    ProjectDocument doc = currentDocument();
    if (!hasProjectData(doc)) {
        m_dialogs.warn(title, tr("No project data to save."));
        return false;
    }
    const QString path = QFileInfo(withProjectSuffix(requested)).absoluteFilePath();
    const QString projectFolder = QFileInfo(path).absolutePath();
    vg::resources::CollectReport report;
    QString error;
    if (!vg::resources::collectResources(&doc, QDir(projectFolder).filePath(QStringLiteral("source")), projectFolder,
                                         &report, &error)) {
        m_dialogs.warn(title, error);
        return false;
    }
    if (QFileInfo(path).isFile())
        backupExistingFile(path);
    if (!saveProjectDocument(path, doc, &error)) {
        m_dialogs.warn(tr("Save failed"), tr("Could not save project: %1").arg(error));
        return false;
    }
    // The tabs now refer to the collected copies: reopen what was written.
    if (!openProject(path))
        return false;
    m_dialogs.inform(title, withPath(tr("Project saved:"), path) + QStringLiteral("\n\n") + vg::resources::reportText(report));
    return true;
}

// ---- backups ---------------------------------------------------------------------------------

bool ProjectLifecycle::backupExistingFile(const QString &path)
{
    // The file about to be replaced is what a backup must keep.
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        status(tr("Project backup failed: %1").arg(file.errorString()));
        return false;
    }
    const QByteArray existing = file.readAll();
    return writeBackup(&existing);
}

bool ProjectLifecycle::backupNow()
{
    return writeBackup(nullptr);
}

bool ProjectLifecycle::writeBackup(const QByteArray *existing)
{
    if (!m_backupsEnabled || isLoading())
        return false;
    const ProjectDocument doc = currentDocument();
    if (!existing && !hasProjectData(doc))
        return false;
    const QString folder = m_currentFile.isEmpty()
        ? QDir(Settings::projectDirectory.read().isEmpty() ? QDir::homePath() : Settings::projectDirectory.read())
              .filePath(QStringLiteral("backup"))
        : vg::backups::backupFolderFor(m_currentFile);
    if (!QDir().mkpath(folder)) {
        status(tr("Project backup failed: %1")
                   .arg(tr("Could not create project backup directory: %1").arg(QDir::toNativeSeparators(folder))));
        return false;
    }
    const QString path = vg::backups::nextBackupPath(folder, vg::backups::backupBaseName(m_currentFile),
                                                     QDateTime::currentDateTime());
    QString error;
    bool saved = false;
    if (existing) {
        saved = vg::writeFileReplacing(path, *existing, &error);
    } else {
        saved = saveProjectDocument(path, doc, &error);
    }
    if (!saved) {
        status(tr("Project backup failed: %1").arg(error));
        return false;
    }
    vg::backups::pruneBackups(folder);
    status(tr("Project backup saved: %1").arg(QDir::toNativeSeparators(path)));
    return true;
}

// ---- recent files ----------------------------------------------------------------------------

QStringList ProjectLifecycle::recentProjects() const
{
    return Settings::recentProjects.read();
}

void ProjectLifecycle::addRecent(const QString &path)
{
    Settings::recentProjects.write(vg::recent::withOpenedFile(recentProjects(), QFileInfo(path).absoluteFilePath()));
    rebuildRecentMenu();
}

void ProjectLifecycle::rebuildRecentMenu()
{
    QMenu *menu = m_window->menu(QStringLiteral("menuRecentProjects"));
    if (!menu)
        return;
    menu->clear();
    const QStringList recent = recentProjects();
    if (recent.isEmpty()) {
        QAction *none = menu->addAction(tr("(No recent projects)"));
        none->setObjectName(QStringLiteral("actionNoRecentProjects"));
        none->setEnabled(false);
        return;
    }
    for (const QString &path : recent) {
        QAction *entry = menu->addAction(QDir::toNativeSeparators(path));
        entry->setData(path);
        connect(entry, &QAction::triggered, this, [this, path] { openProject(path); });
    }
}

// ---- bundles -------------------------------------------------------------------------------

QString ProjectLifecycle::askZipPath(const QString &title, const QString &filter)
{
    const QString base = m_currentFile.isEmpty() ? QStringLiteral("VantreoGuideSettings") : QFileInfo(m_currentFile).completeBaseName();
    QString path = m_dialogs.saveFile(title, QDir(Settings::sharePackageDirectory.read()).filePath(base + QStringLiteral(".zip")), filter);
    if (path.isEmpty())
        return QString();
    if (!path.endsWith(QStringLiteral(".zip"), Qt::CaseInsensitive))
        path += QStringLiteral(".zip");
    if (QFileInfo::exists(path) && !m_dialogs.confirm(title, tr("%1 already exists.").arg(QDir::toNativeSeparators(path))))
        return QString();
    Settings::sharePackageDirectory.write(QFileInfo(path).absolutePath());
    return path;
}

bool ProjectLifecycle::exportProjectBundle()
{
    const QString title = tr("Export Project Bundle");
    if (!hasProjectData(currentDocument())) {
        m_dialogs.warn(title, tr("No project data to export."));
        return false;
    }
    const QString path = askZipPath(title, tr("Vantreo Guide Project Bundle (*.zip)"));
    return !path.isEmpty() && exportProjectBundleTo(path);
}

bool ProjectLifecycle::exportProjectBundleTo(const QString &requested)
{
    const QString title = tr("Export Project Bundle");
    ProjectDocument doc = currentDocument();
    if (!hasProjectData(doc)) {
        m_dialogs.warn(title, tr("No project data to export."));
        return false;
    }
    QString zipPath = QFileInfo(requested).absoluteFilePath();
    if (!zipPath.endsWith(QStringLiteral(".zip"), Qt::CaseInsensitive))
        zipPath += QStringLiteral(".zip");
    const QString base = m_currentFile.isEmpty() ? QStringLiteral("VantreoGuideSettings") : QFileInfo(m_currentFile).completeBaseName();
    const QDir beside = QFileInfo(zipPath).absoluteDir();
    const QString stamp = timestamp();
    QString workName = QStringLiteral("%1_export_%2").arg(base, stamp);
    for (int counter = 1; beside.exists(workName); ++counter)
        workName = QStringLiteral("%1_export_%2_%3").arg(base, stamp).arg(counter);
    const QString work = beside.filePath(workName);
    if (!QDir().mkpath(work)) {
        m_dialogs.warn(title, withPath(tr("Could not create export folder:"), work));
        return false;
    }
    // The working folder is ours alone; it goes whatever happens.
    auto cleanup = qScopeGuard([work] { QDir(work).removeRecursively(); });
    const QString source = QDir(work).filePath(QStringLiteral("source"));
    if (!QDir().mkpath(source)) {
        m_dialogs.warn(title, withPath(tr("Could not create source folder:"), source));
        return false;
    }
    vg::resources::CollectReport report;
    QString error;
    if (!vg::resources::collectResources(&doc, source, work, &report, &error)) {
        m_dialogs.warn(title, tr("Could not copy external resource files:") + QLatin1Char('\n') + error);
        return false;
    }
    const QString projectPath = QDir(work).filePath(base + QStringLiteral(".vgs"));
    if (!saveProjectDocument(projectPath, doc, &error)) {
        m_dialogs.warn(title, withPath(tr("Could not save project file:"), projectPath) + QLatin1Char('\n') + error);
        return false;
    }
    status(tr("Creating ZIP package..."));
    if (!vg::zip::compressFolderContents(work, zipPath, &error)) {
        m_dialogs.warn(title, error);
        return false;
    }
    m_dialogs.inform(title, withPath(tr("Project bundle created:"), zipPath) + QStringLiteral("\n\n") + vg::resources::reportText(report));
    status(tr("Project bundle created: %1").arg(QDir::toNativeSeparators(zipPath)));
    return true;
}

bool ProjectLifecycle::importProjectBundle()
{
    const QString title = tr("Import Project Bundle");
    const QString zipPath = m_dialogs.openFile(title, Settings::sharePackageDirectory.read(), tr("Vantreo Guide Project Bundle (*.zip)"));
    if (zipPath.isEmpty())
        return false;
    if (!QFileInfo(zipPath).isFile()) {
        m_dialogs.warn(title, withPath(tr("Project bundle file not found:"), zipPath));
        return false;
    }
    if (!zipPath.endsWith(QStringLiteral(".zip"), Qt::CaseInsensitive)) {
        m_dialogs.warn(title, withPath(tr("Selected file is not a ZIP project bundle:"), zipPath));
        return false;
    }
    Settings::sharePackageDirectory.write(QFileInfo(zipPath).absolutePath());
    const QString folder = m_dialogs.folder(tr("Choose Import Folder"), Settings::projectBundleImportDirectory.read());
    if (folder.isEmpty())
        return false;
    Settings::projectBundleImportDirectory.write(folder);
    return importProjectBundleFrom(zipPath, folder);
}

bool ProjectLifecycle::importProjectBundleFrom(const QString &zipPath, const QString &folder)
{
    const QString title = tr("Import Project Bundle");
    if (!QFileInfo(zipPath).isFile()) {
        m_dialogs.warn(title, withPath(tr("Project bundle file not found:"), zipPath));
        return false;
    }
    if (!zipPath.endsWith(QStringLiteral(".zip"), Qt::CaseInsensitive)) {
        m_dialogs.warn(title, withPath(tr("Selected file is not a ZIP project bundle:"), zipPath));
        return false;
    }
    QStringList entries;
    QString error;
    if (!vg::zip::listProjectEntries(zipPath, &entries, &error)) {
        m_dialogs.warn(title, error);
        return false;
    }
    // A ".vgs" project wins over a ".json" one; the shallowest of each kind first.
    QString projectEntry;
    for (const QString &suffix : {QStringLiteral(".vgs"), QStringLiteral(".json")}) {
        for (const QString &entry : entries) {
            if (entry.endsWith(suffix, Qt::CaseInsensitive)
                && (projectEntry.isEmpty() || entry.count(QLatin1Char('/')) < projectEntry.count(QLatin1Char('/'))))
                projectEntry = entry;
        }
        if (!projectEntry.isEmpty())
            break;
    }
    if (projectEntry.isEmpty()) {
        m_dialogs.warn(title, withPath(tr("No project file was found in the selected project bundle:"), zipPath));
        return false;
    }
    const QStringList existing = vg::zip::existingFilesFor(zipPath, folder, &error);
    if (!error.isEmpty()) {
        m_dialogs.warn(title, error);
        return false;
    }
    bool overwrite = false;
    if (!existing.isEmpty()) {
        QStringList shown = existing.mid(0, 10);
        if (existing.size() > shown.size())
            shown << QStringLiteral("...");
        if (!m_dialogs.confirm(title, tr("%1 already exists.").arg(shown.join(QLatin1Char('\n')))))
            return false;
        overwrite = true;
    }
    status(tr("Importing project bundle..."));
    if (!extractBundle(zipPath, folder, overwrite, &error)) {
        m_dialogs.warn(title, error);
        return false;
    }
    const QString projectPath = QDir(folder).filePath(projectEntry);
    if (!QFileInfo(projectPath).isFile()) {
        m_dialogs.warn(title, withPath(tr("The project file listed in the bundle was not extracted:"), projectPath));
        return false;
    }
    if (!openProject(projectPath))
        return false;
    m_dialogs.inform(title, withPath(tr("Project bundle imported:"), projectPath));
    status(tr("Imported project bundle: %1").arg(QDir::toNativeSeparators(zipPath)));
    return true;
}

// Extracts on a worker so that a bundle of many entries keeps the window painting; the
// overlay shows how far it got. A worker that stops reporting is cancelled.
bool ProjectLifecycle::extractBundle(const QString &zipPath, const QString &folder, bool overwrite, QString *error)
{
    std::atomic<qint64> done{0}, total{0};
    std::atomic<bool> cancel{false};
    QFuture<bool> future = QtConcurrent::run([=, &done, &total, &cancel](QString *out) {
        return vg::zip::extractArchive(zipPath, folder, overwrite, out, [&](qint64 d, qint64 t) {
            done = d;
            total = t;
            return !cancel.load();
        });
    }, error);
    showOverlay(tr("Importing project bundle..."));
    constexpr qint64 kStallMs = 5 * 60 * 1000;
    QElapsedTimer sinceProgress;
    sinceProgress.start();
    qint64 lastDone = -1;
    QEventLoop loop;
    QFutureWatcher<bool> watcher;
    connect(&watcher, &QFutureWatcher<bool>::finished, &loop, &QEventLoop::quit);
    QTimer tick;
    tick.setInterval(100);
    connect(&tick, &QTimer::timeout, &loop, [&] {
        if (done != lastDone) {
            lastDone = done;
            sinceProgress.restart();
            const qint64 t = total;
            showProgress(t > 0 ? QStringLiteral("%1%").arg(int(lastDone * 100 / t)) : QString());
        } else if (sinceProgress.elapsed() > kStallMs) {
            cancel = true;
        }
    });
    watcher.setFuture(future);
    tick.start();
    if (!future.isFinished())
        loop.exec(QEventLoop::ExcludeUserInputEvents);
    tick.stop();
    hideOverlay();
    return future.result();
}

// ---- portable package --------------------------------------------------------------------

bool ProjectLifecycle::createPortablePackage()
{
    const QString title = tr("Create Portable Package");
    if (!hasProjectData(currentDocument())) {
        m_dialogs.warn(title, tr("No project data to package."));
        return false;
    }
    const QString path = askZipPath(title, tr("ZIP Archive (*.zip)"));
    return !path.isEmpty() && createPortablePackageTo(path);
}

bool ProjectLifecycle::createPortablePackageTo(const QString &requested)
{
    const QString title = tr("Create Portable Package");
    vg::package::PackageRequest request;
    request.project = currentDocument();
    if (!hasProjectData(request.project)) {
        m_dialogs.warn(title, tr("No project data to package."));
        return false;
    }
    request.zipPath = QFileInfo(requested).absoluteFilePath();
    if (!request.zipPath.endsWith(QStringLiteral(".zip"), Qt::CaseInsensitive))
        request.zipPath += QStringLiteral(".zip");
    request.applicationFile = QCoreApplication::applicationFilePath();
    request.applicationFolder = m_applicationFolder.isEmpty() ? QCoreApplication::applicationDirPath() : m_applicationFolder;
    request.qtPluginFolder = QLibraryInfo::path(QLibraryInfo::PluginsPath);
    request.qtTranslationFolder = QLibraryInfo::path(QLibraryInfo::TranslationsPath);
    status(tr("Creating ZIP package..."));
    QString report;
    QString error;
    if (!vg::package::createPortablePackage(request, &report, &error)) {
        m_dialogs.warn(title, error);
        return false;
    }
    m_dialogs.inform(title, withPath(tr("Portable package created:"), request.zipPath) + QStringLiteral("\n\n") + report);
    status(tr("Portable package created: %1").arg(QDir::toNativeSeparators(request.zipPath)));
    return true;
}

// ---- start-up ----------------------------------------------------------------------------------

QString ProjectLifecycle::startupSamplePath() const
{
    if (!m_startupSamplePath.isEmpty())
        return m_startupSamplePath;
    return QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("sample.vgs"));
}

void ProjectLifecycle::loadStartupSample()
{
    bool loaded = false;
    if (!m_window->windowWidget()->property("skipStartupSample").toBool()) {
        const QString sample = startupSamplePath();
        if (QFileInfo(sample).isFile() && loadInto(sample, Mode::Replace, tr("Load failed"))) {
            // The sample is a starting point, not the user's file: saving asks for a path.
            setCurrentFile(QString());
            markSaved();
            status(tr("Loaded project: %1").arg(QDir::toNativeSeparators(QFileInfo(sample).absoluteFilePath())));
            loaded = true;
        }
    }
    if (!loaded)
        newProject(false);
    m_window->windowWidget()->setProperty("startupSampleLoaded", loaded);
    m_window->windowWidget()->setProperty("startupProjectPrepared", true);
}
