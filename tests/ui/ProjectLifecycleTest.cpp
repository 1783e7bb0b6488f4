#include "MainWindowTestSupport.h"

#include "app/MainWindow.h"
#include "app/ProjectLifecycle.h"
#include "canvas/ui/CanvasTab.h"
#include "guide/ui/GuideTab.h"
#include "project/ProjectBackups.h"
#include "project/ZipArchive.h"
#include "scene/ui/SceneWidget.h"
#include "scene/ui/ThreeDViewTab.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPainter>
#include <QRegularExpression>
#include <QStatusBar>
#include <QTabWidget>
#include <QTest>

#include <zip.h>

namespace {

struct Recorded {
    QStringList warnings;
    QStringList informations;
    QStringList confirmations;
};

class ProjectLifecycleTest : public ShellSettingsFixture
{
protected:
    void SetUp() override
    {
        ShellSettingsFixture::SetUp();
        ASSERT_TRUE(m_tmp.isValid()) << m_tmp.errorString().toStdString() << " " << m_tmp.path().toStdString();
    }

    std::unique_ptr<MainWindow> makeWindow()
    {
        auto window = std::make_unique<MainWindow>();
        window->setProperty("skipStartupSample", true);
        window->resize(1280, 800);
        lifecycleOf(window.get())->setDialogs(scriptedDialogs());
        return window;
    }

    static ProjectLifecycle *lifecycleOf(MainWindow *window) { return window->findChild<ProjectLifecycle *>(); }

    // Answers every question from the members below and records what was said.
    ProjectLifecycle::Dialogs scriptedDialogs()
    {
        ProjectLifecycle::Dialogs dialogs;
        dialogs.openFile = [this](const QString &title, const QString &, const QString &filter) {
            m_lastTitle = title;
            m_lastFilter = filter;
            return m_openAnswer;
        };
        dialogs.saveFile = [this](const QString &title, const QString &, const QString &filter) {
            m_lastTitle = title;
            m_lastFilter = filter;
            return m_saveAnswer;
        };
        dialogs.folder = [this](const QString &title, const QString &) {
            m_lastTitle = title;
            return m_folderAnswer;
        };
        dialogs.confirm = [this](const QString &title, const QString &text) {
            m_recorded.confirmations << title + QLatin1Char('|') + text;
            return m_confirmAnswer;
        };
        dialogs.warn = [this](const QString &title, const QString &text) { m_recorded.warnings << title + QLatin1Char('|') + text; };
        dialogs.inform = [this](const QString &title, const QString &text) {
            m_recorded.informations << title + QLatin1Char('|') + text;
        };
        return dialogs;
    }

    QString path(const QString &name) const { return m_tmp.filePath(name); }

    QString writeLogo(const QString &file, QColor color)
    {
        QDir().mkpath(QFileInfo(file).absolutePath());
        QImage image(8, 8, QImage::Format_RGB32);
        image.fill(color);
        image.save(file);
        return file;
    }

    static QString sampleProject() { return QStringLiteral(VG_SOURCE_DIR "/samples/sample.vgs"); }

    QTemporaryDir m_tmp;
    Recorded m_recorded;
    QString m_openAnswer, m_saveAnswer, m_folderAnswer, m_lastTitle, m_lastFilter;
    bool m_confirmAnswer = true;
};

GuideTab *firstGuide(MainWindow *window)
{
    for (QWidget *content : window->contentTabs()) {
        if (auto *guide = qobject_cast<GuideTab *>(content))
            return guide;
    }
    return nullptr;
}

TEST_F(ProjectLifecycleTest, MenuEntriesAreEnabledAndRecentMenuStartsEmpty)
{
    auto window = makeWindow();
    for (const char *name : {"actionNewProject", "actionOpenProject", "actionImportProjectBundle", "actionSaveProject",
                             "actionSaveProjectAs", "actionSaveProjectAsWithResources", "actionExportProjectBundle",
                             "actionCreatePortablePackage", "actionMergeProject"})
        EXPECT_TRUE(window->action(QString::fromLatin1(name))->isEnabled()) << name;
    QMenu *recent = window->menu(QStringLiteral("menuRecentProjects"));
    ASSERT_EQ(recent->actions().size(), 1);
    EXPECT_EQ(recent->actions()[0]->text(), QStringLiteral("(No recent projects)"));
    EXPECT_FALSE(recent->actions()[0]->isEnabled());
}

TEST_F(ProjectLifecycleTest, SavePathWithoutExtensionGetsVgsAndBecomesCurrent)
{
    auto window = makeWindow();
    ProjectLifecycle *lifecycle = lifecycleOf(window.get());
    lifecycle->saveProjectTo(path(QStringLiteral("empty")));
    EXPECT_EQ(m_recorded.warnings, QStringList{QStringLiteral("Save failed|No guide settings to save.")});

    window->addGuideTab();
    m_saveAnswer = path(QStringLiteral("show"));
    ASSERT_TRUE(lifecycle->saveProjectAs());
    EXPECT_EQ(m_lastTitle, QStringLiteral("Save Vantreo project"));
    EXPECT_EQ(m_lastFilter, QStringLiteral("Vantreo Guide Project (*)"));
    const QString saved = path(QStringLiteral("show.vgs"));
    EXPECT_TRUE(QFileInfo(saved).isFile());
    EXPECT_FALSE(QFileInfo::exists(path(QStringLiteral("show"))));
    EXPECT_EQ(lifecycle->currentFile(), saved);
    EXPECT_EQ(QSettings().value(QStringLiteral("paths/programSettingsFile")).toString(), saved);
    EXPECT_EQ(QSettings().value(QStringLiteral("paths/programSettingsDirectory")).toString(), m_tmp.path());
    EXPECT_EQ(lifecycle->recentProjects().value(0), saved);
    EXPECT_EQ(window->statusBar()->currentMessage(), QStringLiteral("Saved project: %1").arg(saved));
    EXPECT_EQ(window->windowTitle(), QStringLiteral("show.vgs - Vantreo Guide Generator"));
    EXPECT_FALSE(lifecycle->isChanged());

    // Save As onto another existing file asks first; "No" keeps it.
    QFile(path(QStringLiteral("other.vgs"))).open(QIODevice::WriteOnly);
    m_saveAnswer = path(QStringLiteral("other.vgs"));
    m_confirmAnswer = false;
    EXPECT_FALSE(lifecycle->saveProjectAs());
    EXPECT_EQ(m_recorded.confirmations.value(0), QStringLiteral("Save Vantreo project|%1 already exists.").arg(m_saveAnswer));
    EXPECT_EQ(QFileInfo(m_saveAnswer).size(), 0);
}

TEST_F(ProjectLifecycleTest, OrbitAndTabSwitchAreNoChangeMovingAnObjectIs)
{
    auto window = makeWindow();
    ProjectLifecycle *lifecycle = lifecycleOf(window.get());
    window->addGuideTab();
    auto *view = qobject_cast<ThreeDViewTab *>(window->add3DViewTab());
    ASSERT_NE(view, nullptr);
    ASSERT_GE(view->addObject(ThreeDViewTab::AddPlane, false), 0);
    ASSERT_TRUE(lifecycle->saveProjectTo(path(QStringLiteral("scene.vgs"))));
    EXPECT_FALSE(lifecycle->isChanged());

    Guide3DViewSettings settings = view->viewSettings();
    settings.view_mode = 2;
    settings.view_rotation_x += 0.7;
    settings.view_rotation_y -= 1.1;
    settings.focus_distance *= 3.0;
    settings.target_x = 4.0;
    view->setViewSettings(settings);
    window->tabWidget()->setCurrentIndex(0);
    QTest::qWait(50);
    EXPECT_FALSE(lifecycle->isChanged());
    EXPECT_EQ(window->windowTitle(), QStringLiteral("scene.vgs - Vantreo Guide Generator"));

    settings = view->viewSettings();
    settings.objects[0].translate_x += 1.5f;
    view->setViewSettings(settings);
    EXPECT_TRUE(lifecycle->isChanged());
    EXPECT_TRUE(window->hasUnsavedChanges());
    EXPECT_EQ(window->windowTitle(), QStringLiteral("scene.vgs* - Vantreo Guide Generator"));

    // The snapshot itself leaves the camera, current tab and active guide out.
    ProjectDocument doc = lifecycle->currentDocument();
    ProjectDocument orbited = doc;
    orbited.views[0].view_rotation_x = -2.0;
    orbited.activeView.focus_distance = 99.0;
    orbited.currentTab = 0;
    EXPECT_EQ(ProjectLifecycle::snapshotOf(doc), ProjectLifecycle::snapshotOf(orbited));
}

TEST_F(ProjectLifecycleTest, SavesOverAFileKeepBackupsAndElevenLeaveTen)
{
    auto window = makeWindow();
    ProjectLifecycle *lifecycle = lifecycleOf(window.get());
    window->addGuideTab();
    const QString file = path(QStringLiteral("show.vgs"));
    ASSERT_TRUE(lifecycle->saveProjectTo(file));
    EXPECT_FALSE(QFileInfo::exists(path(QStringLiteral("backup")))); // nothing was overwritten yet

    QFile original(file);
    ASSERT_TRUE(original.open(QIODevice::ReadOnly));
    const QByteArray before = original.readAll();
    original.close();
    for (int i = 0; i < 11; ++i)
        ASSERT_TRUE(lifecycle->saveProjectTo(file));
    const QDir backups(path(QStringLiteral("backup")));
    const QStringList names = backups.entryList({QStringLiteral("*_backup_*.vgs")}, QDir::Files, QDir::Name);
    EXPECT_EQ(names.size(), 10);
    // Saves within one second share the timestamp and count up after it.
    const QRegularExpression pattern(QStringLiteral(R"(^show_backup_\d{8}_\d{6}(_\d+)?\.vgs$)"));
    bool counted = false;
    for (const QString &name : names) {
        EXPECT_TRUE(pattern.match(name).hasMatch()) << name.toStdString();
        counted |= name.count(QLatin1Char('_')) == 4;
    }
    EXPECT_TRUE(counted);
    QFile kept(backups.filePath(names.first()));
    ASSERT_TRUE(kept.open(QIODevice::ReadOnly));
    EXPECT_EQ(kept.readAll().size(), before.size());

    EXPECT_TRUE(lifecycle->backupNow());
    EXPECT_TRUE(window->statusBar()->currentMessage().startsWith(QStringLiteral("Project backup saved: ")));
}

TEST_F(ProjectLifecycleTest, OpenShowsProgressRestoresTabsAndReportsMissingFiles)
{
    auto window = makeWindow();
    window->show();
    ProjectLifecycle *lifecycle = lifecycleOf(window.get());
    QStringList progress;
    lifecycle->setProgressObserver([&](const QString &line) {
        progress << line;
        QWidget *overlay = window->findChild<QWidget *>(QStringLiteral("vantreoProjectLoadingOverlay"));
        ASSERT_NE(overlay, nullptr);
        EXPECT_TRUE(overlay->isVisible());
        EXPECT_EQ(overlay->geometry(), window->rect());
    });

    EXPECT_FALSE(lifecycle->openProject(path(QStringLiteral("nothing.vgs"))));
    EXPECT_EQ(m_recorded.warnings.value(0),
              QStringLiteral("Load failed|Project file not found:\n%1").arg(path(QStringLiteral("nothing.vgs"))));

    QFile bad(path(QStringLiteral("bad.vgs")));
    ASSERT_TRUE(bad.open(QIODevice::WriteOnly));
    bad.write("{\"nothing\": 1}");
    bad.close();
    window->addGuideTab();
    EXPECT_FALSE(lifecycle->openProject(bad.fileName()));
    EXPECT_EQ(m_recorded.warnings.value(1), QStringLiteral("Load failed|JSON contains no guide, canvas, or 3D view tabs."));
    EXPECT_EQ(window->contentTabCount(), 1); // the open project is left as it was

    ASSERT_TRUE(lifecycle->openProject(sampleProject()));
    ProjectDocument expected;
    QString error;
    ASSERT_TRUE(loadProjectDocument(sampleProject(), &expected, &error));
    EXPECT_EQ(window->contentTabCount(), expected.guides.size() + expected.canvasTabs.size() + expected.views.size());
    EXPECT_EQ(progress.value(0), QStringLiteral("Reading settings JSON..."));
    EXPECT_TRUE(progress.contains(QStringLiteral("Loading guide tab 1 of %1...").arg(expected.guides.size())));
    EXPECT_EQ(progress.last(), QStringLiteral("Updating loaded views..."));
    EXPECT_FALSE(lifecycle->loadingOverlay()->isVisible());
    EXPECT_EQ(lifecycle->loadingOverlay()->styleSheet(),
              QStringLiteral("#vantreoProjectLoadingOverlay { background-color: rgb(30, 34, 39); border: none;}"
                             "#vantreoProjectLoadingOverlay QLabel { color: rgba(255, 255, 255, 210); font-size: 18px; font-weight: 600;}"));
    EXPECT_EQ(window->statusBar()->currentMessage(), QStringLiteral("Loaded project: %1").arg(QFileInfo(sampleProject()).absoluteFilePath()));
    EXPECT_FALSE(lifecycle->isChanged());

    // Merge appends the same tabs again; the project file stays.
    const int before = window->contentTabCount();
    progress.clear();
    ASSERT_TRUE(lifecycle->mergeProject(sampleProject()));
    EXPECT_EQ(window->contentTabCount(), 2 * before);
    EXPECT_EQ(progress.last(), QStringLiteral("Updating merged views..."));
    EXPECT_EQ(lifecycle->currentFile(), QFileInfo(sampleProject()).absoluteFilePath());
    EXPECT_TRUE(lifecycle->isChanged());
    EXPECT_FALSE(lifecycle->mergeProject(path(QStringLiteral("gone.vgs"))));
    EXPECT_TRUE(m_recorded.warnings.last().startsWith(QStringLiteral("Merge failed|Project file not found:")));
}

TEST_F(ProjectLifecycleTest, NinthRecentFileDropsTheOldestAndReopeningMovesToHead)
{
    auto window = makeWindow();
    ProjectLifecycle *lifecycle = lifecycleOf(window.get());
    window->addGuideTab();
    QStringList files;
    for (int i = 1; i <= 9; ++i) {
        files << path(QStringLiteral("p%1.vgs").arg(i));
        ASSERT_TRUE(lifecycle->saveProjectTo(files.last()));
    }
    QStringList recent = lifecycle->recentProjects();
    ASSERT_EQ(recent.size(), 8);
    EXPECT_EQ(recent.first(), files[8]);
    EXPECT_FALSE(recent.contains(files[0]));
    ASSERT_TRUE(lifecycle->openProject(files[3]));
    recent = lifecycle->recentProjects();
    EXPECT_EQ(recent.first(), files[3]);
    EXPECT_EQ(recent.count(files[3]), 1);
    QMenu *menu = window->menu(QStringLiteral("menuRecentProjects"));
    EXPECT_EQ(menu->actions().size(), 8);
    EXPECT_EQ(menu->actions()[0]->text(), QDir::toNativeSeparators(files[3]));
}

TEST_F(ProjectLifecycleTest, BundleExportThenImportElsewhereOpensTheProjectWithItsResources)
{
    auto window = makeWindow();
    ProjectLifecycle *lifecycle = lifecycleOf(window.get());
    auto *guide = qobject_cast<GuideTab *>(window->addGuideTab());
    GuideSettings settings = guide->settings();
    settings.logoPath = writeLogo(path(QStringLiteral("assets/logo.png")), Qt::red);
    guide->setSettings(settings);
    QDir().mkpath(path(QStringLiteral("work")));
    ASSERT_TRUE(lifecycle->saveProjectTo(path(QStringLiteral("work/show.vgs"))));

    const QString zipPath = path(QStringLiteral("share/show"));
    QDir().mkpath(path(QStringLiteral("share")));
    ASSERT_TRUE(lifecycle->exportProjectBundleTo(zipPath));
    EXPECT_TRUE(QFileInfo(zipPath + QStringLiteral(".zip")).isFile());
    EXPECT_EQ(QDir(path(QStringLiteral("share"))).entryList(QDir::Dirs | QDir::NoDotAndDotDot), QStringList());
    EXPECT_EQ(window->statusBar()->currentMessage(), QStringLiteral("Project bundle created: %1.zip").arg(zipPath));

    // Imported on "another machine": the original logo is gone.
    QFile::remove(settings.logoPath);
    auto other = makeWindow();
    ProjectLifecycle *second = lifecycleOf(other.get());
    const QString target = path(QStringLiteral("elsewhere"));
    ASSERT_TRUE(second->importProjectBundleFrom(zipPath + QStringLiteral(".zip"), target)) << m_recorded.warnings.join(';').toStdString();
    EXPECT_EQ(second->currentFile(), target + QStringLiteral("/show.vgs"));
    GuideTab *imported = firstGuide(other.get());
    ASSERT_NE(imported, nullptr);
    EXPECT_EQ(imported->settings().logoPath, target + QStringLiteral("/source/logo.png"));
    EXPECT_EQ(QImage(imported->settings().logoPath).pixelColor(0, 0), QColor(Qt::red));
    EXPECT_EQ(other->statusBar()->currentMessage(), QStringLiteral("Imported project bundle: %1.zip").arg(zipPath));

    // A second import into the same folder asks before replacing; "No" leaves it.
    m_confirmAnswer = false;
    EXPECT_FALSE(second->importProjectBundleFrom(zipPath + QStringLiteral(".zip"), target));
    EXPECT_TRUE(m_recorded.confirmations.last().startsWith(QStringLiteral("Import Project Bundle|")));
}

TEST_F(ProjectLifecycleTest, BundleWithOnlyJsonImportsAndClimbingEntryIsRefused)
{
    auto window = makeWindow();
    ProjectLifecycle *lifecycle = lifecycleOf(window.get());
    ProjectDocument doc;
    doc.guides.append(GuideSettings());
    doc.guides.append(GuideSettings());
    QFile json(path(QStringLiteral("legacy/settings.json")));
    QDir().mkpath(path(QStringLiteral("legacy")));
    ASSERT_TRUE(json.open(QIODevice::WriteOnly));
    json.write(projectDocumentToJson(doc));
    json.close();
    QString error;
    ASSERT_TRUE(vg::zip::compressFolderContents(path(QStringLiteral("legacy")), path(QStringLiteral("legacy.zip")), &error));
    ASSERT_TRUE(lifecycle->importProjectBundleFrom(path(QStringLiteral("legacy.zip")), path(QStringLiteral("in"))));
    EXPECT_EQ(window->contentTabCount(), 2);
    EXPECT_EQ(lifecycle->currentFile(), path(QStringLiteral("in/settings.json")));

    // "../evil.txt" would land beside the import folder: refused, nothing written.
    int code = 0;
    zip_t *archive = zip_open(QFile::encodeName(path(QStringLiteral("evil.zip"))).constData(), ZIP_CREATE | ZIP_TRUNCATE, &code);
    ASSERT_NE(archive, nullptr);
    static const QByteArray project = projectDocumentToJson(doc);
    static const QByteArray evil("evil");
    zip_file_add(archive, "show.json", zip_source_buffer(archive, project.constData(), zip_uint64_t(project.size()), 0), 0);
    zip_file_add(archive, "../evil.txt", zip_source_buffer(archive, evil.constData(), zip_uint64_t(evil.size()), 0), 0);
    ASSERT_EQ(zip_close(archive), 0);
    const int warningsBefore = m_recorded.warnings.size();
    EXPECT_FALSE(lifecycle->importProjectBundleFrom(path(QStringLiteral("evil.zip")), path(QStringLiteral("target/in"))));
    EXPECT_GT(m_recorded.warnings.size(), warningsBefore);
    EXPECT_FALSE(QFileInfo::exists(path(QStringLiteral("target/evil.txt"))));
    EXPECT_FALSE(QFileInfo::exists(path(QStringLiteral("target/in/show.json"))));
    EXPECT_EQ(lifecycle->currentFile(), path(QStringLiteral("in/settings.json")));

    // Not a ZIP, no project inside.
    EXPECT_FALSE(lifecycle->importProjectBundleFrom(json.fileName(), path(QStringLiteral("x"))));
    EXPECT_TRUE(m_recorded.warnings.last().startsWith(QStringLiteral("Import Project Bundle|Selected file is not a ZIP project bundle:")));
    QFile note(path(QStringLiteral("notes/readme.txt")));
    QDir().mkpath(path(QStringLiteral("notes")));
    ASSERT_TRUE(note.open(QIODevice::WriteOnly));
    note.write("no project here");
    note.close();
    ASSERT_TRUE(vg::zip::compressFolderContents(path(QStringLiteral("notes")), path(QStringLiteral("notes.zip")), &error));
    EXPECT_FALSE(lifecycle->importProjectBundleFrom(path(QStringLiteral("notes.zip")), path(QStringLiteral("y"))));
    EXPECT_EQ(m_recorded.warnings.last(), QStringLiteral("Import Project Bundle|No project file was found in the selected project bundle:\n%1")
                                              .arg(path(QStringLiteral("notes.zip"))));
    EXPECT_FALSE(QFileInfo::exists(path(QStringLiteral("y"))));
}

TEST_F(ProjectLifecycleTest, NewProjectAsksThenClearsEverything)
{
    auto window = makeWindow();
    ProjectLifecycle *lifecycle = lifecycleOf(window.get());
    window->addGuideTab();
    ASSERT_TRUE(lifecycle->saveProjectTo(path(QStringLiteral("a.vgs"))));
    m_confirmAnswer = false;
    EXPECT_FALSE(lifecycle->newProject());
    EXPECT_EQ(m_recorded.confirmations.value(0), QStringLiteral("New Project|Initialize the program and start a new empty project?"));
    EXPECT_EQ(window->contentTabCount(), 1);
    m_confirmAnswer = true;
    ASSERT_TRUE(lifecycle->newProject());
    EXPECT_EQ(window->contentTabCount(), 0);
    EXPECT_TRUE(lifecycle->currentFile().isEmpty());
    EXPECT_TRUE(QSettings().value(QStringLiteral("paths/programSettingsFile")).toString().isEmpty());
    EXPECT_EQ(window->statusBar()->currentMessage(), QStringLiteral("Project initialized."));
    EXPECT_EQ(window->windowTitle(), QStringLiteral("Vantreo Guide Generator"));
}

TEST_F(ProjectLifecycleTest, StartupSampleLoadsAndSetsTheWindowProperties)
{
    auto window = std::make_unique<MainWindow>();
    ProjectLifecycle *lifecycle = lifecycleOf(window.get());
    lifecycle->setDialogs(scriptedDialogs());
    lifecycle->setStartupSamplePath(path(QStringLiteral("missing/sample.vgs")));
    lifecycle->loadStartupSample();
    EXPECT_FALSE(window->property("startupSampleLoaded").toBool());
    EXPECT_TRUE(window->property("startupProjectPrepared").toBool());
    EXPECT_EQ(window->contentTabCount(), 0);

    auto second = std::make_unique<MainWindow>();
    ProjectLifecycle *lifecycle2 = lifecycleOf(second.get());
    lifecycle2->setDialogs(scriptedDialogs());
    QFile::copy(sampleProject(), path(QStringLiteral("sample.vgs")));
    lifecycle2->setStartupSamplePath(path(QStringLiteral("sample.vgs")));
    // The window's own deferred start-up step runs it.
    for (int i = 0; i < 200 && !second->property("startupProjectPrepared").toBool(); ++i)
        QTest::qWait(50);
    ASSERT_TRUE(second->property("startupProjectPrepared").toBool());
    EXPECT_TRUE(second->property("startupSampleLoaded").toBool());
    EXPECT_GT(second->contentTabCount(), 0);
    EXPECT_TRUE(lifecycle2->currentFile().isEmpty());
    EXPECT_FALSE(lifecycle2->isChanged());
}

TEST_F(ProjectLifecycleTest, ChangeSaveOnCloseThenReopen)
{
    QFile::copy(sampleProject(), path(QStringLiteral("show.vgs")));
    QFile::setPermissions(path(QStringLiteral("show.vgs")), QFile::ReadOwner | QFile::WriteOwner);
    GuideSettings changed;
    {
        auto window = makeWindow();
        window->show();
        ProjectLifecycle *lifecycle = lifecycleOf(window.get());
        ASSERT_TRUE(lifecycle->openProject(path(QStringLiteral("show.vgs"))));
        GuideTab *guide = firstGuide(window.get());
        ASSERT_NE(guide, nullptr);
        changed = guide->settings();
        changed.explain = QStringLiteral("changed before closing");
        guide->setSettings(changed);
        changed = guide->settings();
        EXPECT_TRUE(lifecycle->isChanged());
        auto seen = answerNextMessageBox(QMessageBox::Save);
        EXPECT_TRUE(window->close());
        EXPECT_EQ(seen->title, QStringLiteral("Unsaved Changes"));
        EXPECT_EQ(seen->text, QStringLiteral("Save changes before closing?"));
    }
    auto reopened = makeWindow();
    ASSERT_TRUE(lifecycleOf(reopened.get())->openProject(path(QStringLiteral("show.vgs"))));
    EXPECT_EQ(firstGuide(reopened.get())->settings().explain, QStringLiteral("changed before closing"));
    EXPECT_TRUE(QDir(path(QStringLiteral("backup"))).entryList({QStringLiteral("show_backup_*.vgs")}).size() == 1);
}

// Screenshots of the loading overlay and the recent menu, for looking at.
TEST_F(ProjectLifecycleTest, ScreenshotsOfOverlayAndRecentMenu)
{
    const QString out = qEnvironmentVariable("VG_LIFECYCLE_SCREENSHOTS", path(QStringLiteral("shots")));
    QDir().mkpath(out);
    auto window = makeWindow();
    window->show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    ProjectLifecycle *lifecycle = lifecycleOf(window.get());
    bool shot = false;
    lifecycle->setProgressObserver([&](const QString &line) {
        if (!shot && line.startsWith(QStringLiteral("Loading guide tab"))) {
            shot = true;
            window->grab().save(out + QStringLiteral("/loading_overlay.png"));
        }
    });
    ASSERT_TRUE(lifecycle->openProject(sampleProject()));
    lifecycle->setProgressObserver({});
    EXPECT_TRUE(shot);
    for (int i = 1; i <= 3; ++i)
        ASSERT_TRUE(lifecycle->saveProjectTo(path(QStringLiteral("recent%1.vgs").arg(i))));
    QMenu *file = window->menu(QStringLiteral("menuFile"));
    QMenu *recent = window->menu(QStringLiteral("menuRecentProjects"));
    ASSERT_NE(file, nullptr);
    file->popup(window->mapToGlobal(QPoint(0, window->menuBar()->height())));
    QTest::qWait(100);
    QAction *recentAction = window->action(QStringLiteral("actionRecentProjects"));
    file->setActiveAction(recentAction);
    const QRect entry = file->actionGeometry(recentAction);
    recent->popup(file->mapToGlobal(entry.topRight()));
    QTest::qWait(200);
    EXPECT_EQ(recent->actions().size(), 4);
    QImage image = window->grabWindowImage(file);
    QPainter painter(&image);
    painter.drawPixmap(window->mapFromGlobal(recent->mapToGlobal(QPoint(0, 0))), recent->grab());
    painter.end();
    EXPECT_TRUE(image.save(out + QStringLiteral("/recent_menu.png")));
    recent->close();
    file->close();
}

} // namespace

namespace {

// The package of the running program carries its Qt libraries and plugins.
TEST_F(ProjectLifecycleTest, PortablePackageOfTheRunningProgram)
{
    auto window = makeWindow();
    ProjectLifecycle *lifecycle = lifecycleOf(window.get());
    EXPECT_FALSE(lifecycle->createPortablePackageTo(path(QStringLiteral("empty.zip"))));
    EXPECT_EQ(m_recorded.warnings.value(0), QStringLiteral("Create Portable Package|No project data to package."));

    window->addGuideTab();
    ASSERT_TRUE(lifecycle->createPortablePackageTo(path(QStringLiteral("package")))) << m_recorded.warnings.join(';').toStdString();
    const QString zipPath = path(QStringLiteral("package.zip"));
    ASSERT_TRUE(QFileInfo(zipPath).isFile());
    EXPECT_TRUE(window->statusBar()->currentMessage().startsWith(QStringLiteral("Portable package created: ")));
    EXPECT_TRUE(m_recorded.informations.last().startsWith(QStringLiteral("Create Portable Package|Portable package created:\n")));

    QString error;
    ASSERT_TRUE(vg::zip::extractArchive(zipPath, path(QStringLiteral("out")), false, &error)) << error.toStdString();
    const QStringList folders = QDir(path(QStringLiteral("out"))).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    ASSERT_EQ(folders.size(), 1);
    EXPECT_TRUE(folders[0].startsWith(QStringLiteral("VantreoGuide_")));
    const QDir root(path(QStringLiteral("out/") + folders[0]));
    EXPECT_TRUE(root.exists(QFileInfo(QCoreApplication::applicationFilePath()).fileName()));
    EXPECT_TRUE(root.exists(QStringLiteral("sample.vgs")));
    EXPECT_FALSE(QDir(root.filePath(QStringLiteral("lib"))).entryList({QStringLiteral("libQt6Widgets.so*")}).isEmpty());
    EXPECT_TRUE(QFileInfo(root.filePath(QFileInfo(QCoreApplication::applicationFilePath()).completeBaseName() + QStringLiteral(".sh"))).isExecutable());
    EXPECT_FALSE(QDir(root.filePath(QStringLiteral("platforms"))).entryList({QStringLiteral("*.so")}).isEmpty());
    // Nothing generated is left beside the ZIP.
    EXPECT_EQ(QDir(m_tmp.path()).entryList({QStringLiteral("VantreoGuide_*")}, QDir::Dirs), QStringList());
}

} // namespace

TEST_F(ProjectLifecycleTest, ABundleOfManyEntriesIsExtractedWhileTheWindowReportsProgress)
{
    auto window = makeWindow();
    ProjectLifecycle *lifecycle = lifecycleOf(window.get());
    ProjectDocument doc;
    doc.guides.append(GuideSettings());
    const QByteArray project = projectDocumentToJson(doc);
    const QByteArray small(100, 'x');
    int code = 0;
    zip_t *archive = zip_open(QFile::encodeName(path(QStringLiteral("many.zip"))).constData(), ZIP_CREATE | ZIP_TRUNCATE, &code);
    ASSERT_NE(archive, nullptr);
    zip_file_add(archive, "show.json", zip_source_buffer(archive, project.constData(), zip_uint64_t(project.size()), 0), 0);
    for (int i = 0; i < 30000; ++i) {
        const QByteArray name = QStringLiteral("source/%1/file%2.txt").arg(i % 50).arg(i).toUtf8();
        zip_file_add(archive, name.constData(), zip_source_buffer(archive, small.constData(), zip_uint64_t(small.size()), 0), 0);
    }
    ASSERT_EQ(zip_close(archive), 0);

    // The overlay's progress line is updated from the event loop while the worker extracts:
    // a window that froze for the extraction would show none of it.
    QStringList progress;
    lifecycle->setProgressObserver([&](const QString &line) { progress << line; });
    ASSERT_TRUE(lifecycle->importProjectBundleFrom(path(QStringLiteral("many.zip")), path(QStringLiteral("many"))))
        << m_recorded.warnings.join(';').toStdString();
    const QStringList percentages = progress.filter(QRegularExpression(QStringLiteral("^\\d+%$")));
    EXPECT_FALSE(percentages.isEmpty()) << progress.join(QLatin1Char('|')).toStdString();
    EXPECT_TRUE(QFileInfo::exists(path(QStringLiteral("many/source/49/file29999.txt"))));
}

// A 3D view drew frames of a half-filled scene while a project was still loading into it.
TEST_F(ProjectLifecycleTest, ThreeDViewsDrawNothingUntilTheLoadHasFinished)
{
    auto window = makeWindow();
    window->show();
    ProjectLifecycle *lifecycle = lifecycleOf(window.get());
    int viewsSeenLoading = 0;
    lifecycle->setProgressObserver([&](const QString &line) {
        if (line != QStringLiteral("Updating loaded views..."))
            return;
        for (QWidget *content : window->contentTabs()) {
            if (auto *view = qobject_cast<ThreeDViewTab *>(content)) {
                EXPECT_TRUE(view->sceneWidget()->isLoading());
                EXPECT_FALSE(view->sceneWidget()->frameQueued());
                ++viewsSeenLoading;
            }
        }
    });
    ASSERT_TRUE(lifecycle->openProject(sampleProject()));
    EXPECT_GT(viewsSeenLoading, 0);
    for (QWidget *content : window->contentTabs()) {
        if (auto *view = qobject_cast<ThreeDViewTab *>(content)) {
            EXPECT_FALSE(view->sceneWidget()->isLoading()) << "the view draws again once loaded";
        }
    }
}
