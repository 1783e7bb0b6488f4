#pragma once

#include "app/CommandLine.h"
#include "app/ProjectWindow.h"
#include "common/GpuAdapter.h"

#include <QFont>
#include <QHash>
#include <QList>
#include <QMainWindow>
#include <QPointer>

#include <functional>

class QAction;
class QActionGroup;
class QLabel;
class QMenu;
class QPushButton;
class QTabWidget;
class QTimer;
class TabKind;
class TabTitleWidget;

// The program's main window: menus, status bar, the tab area "mainContentTabs" with
// its trailing "+" tab and the start page shown while there are no content tabs.
//
// Project work (new, open, save, merge, ...) is not done here: the project lifecycle
// finds the File menu actions by object name and fills in ProjectHooks. Until an
// action is connected it stays disabled.
class MainWindow : public QMainWindow, public ProjectWindow
{
    Q_OBJECT

public:
    explicit MainWindow(QWidget *parent = nullptr);
    ~MainWindow() override;

    // ---- tabs ------------------------------------------------------------------
    QWidget *windowWidget() override { return this; }
    QTabWidget *tabWidget() const override { return m_tabs; }
    QWidget *startPage() const { return m_startPage; }
    // Content tabs only, in display order (the "+" tab is never counted).
    int contentTabCount() const override;
    QWidget *contentTab(int index) const;
    QList<QWidget *> contentTabs() const override;
    int indexOfContentTab(const QWidget *content) const override;
    QWidget *currentContentTab() const override;

    // Each adds a tab right after the current one, makes it current and returns its
    // content widget. A given title replaces the counter-based one (a loaded project).
    QWidget *addGuideTab(const QString &title = QString());
    QWidget *addCanvasTab(const QString &title = QString());
    QWidget *add3DViewTab(const QString &title = QString());
    QWidget *addTab(const TabKind &kind, const QString &title = QString()) override;
    // Adds a prepared content widget as a tab of the given kind (used by the above and
    // by "Copy"); the window takes ownership.
    QWidget *insertContentTab(QWidget *content, const TabKind &kind, const QString &title);
    // The next number of a counter that tab kinds keep in the window ("Guide %1"); starts at 1.
    int takeTabNumber(const QString &counter);

    // "Copy": a new tab of the same kind with a copy of the contents.
    QWidget *duplicateTab(int index);
    // "Delete": asks first when confirm is set; true when the tab was removed.
    bool deleteTab(int index, bool confirm = true);
    // Removes every content tab without asking (new project, loading a project).
    void removeAllTabs() override;

    // The title as the user set it (may be empty) and as shown (falls back to
    // "fallbackTabTitle").
    QString tabTitle(int index) const;
    QString displayedTabTitle(int index) const override;
    void setTabTitle(int index, const QString &title);
    TabTitleWidget *tabTitleWidget(int index) const;

    // ---- UI scale, font, language -----------------------------------------------
    double uiScale() const { return m_uiScale; }
    void setUiScale(double scale, bool persist, bool announce);
    QFont baseUiFont() const { return m_baseUiFont; }
    void setBaseUiFont(const QFont &font, bool persist);
    void resetUiFont();
    void setUiLanguage(const QString &code);

    // ---- settings read at construction ------------------------------------------
    bool autoUpdateEnabled() const { return m_autoUpdate; }
    QString gpuAdapterKey() const { return m_gpuAdapterKey; }
    QString programSettingsFile() const { return m_programSettingsFile; }

    // ---- menus, actions, status ------------------------------------------------------
    // An action or menu by object name ("actionSaveProject", "menuRecentProjects", ...).
    QAction *action(const QString &objectName) const override;
    QMenu *menu(const QString &objectName) const override;
    void showStatusMessage(const QString &text, int timeoutMs) override;
    QLabel *startupApiStatusLabel() const { return m_startupApiLabel; }

    // ---- project lifecycle hooks ----------------------------------------------------
    void setProjectHooks(const ProjectHooks &hooks) override { m_hooks = hooks; }
    const ProjectHooks &projectHooks() const { return m_hooks; }
    void setUnsavedChanges(bool unsaved) override { m_unsavedChanges = unsaved; }
    bool hasUnsavedChanges() const { return m_unsavedChanges || m_programSettingsChanged; }
    void setProgramSettingsChanged(bool changed) { m_programSettingsChanged = changed; }
    // The "Unsaved Changes" box; true when the caller may go on (nothing unsaved,
    // Discard, or Save succeeded).
    bool confirmUnsavedChanges(UnsavedChangesPrompt prompt) override;
    void watchTabs(QObject *context, std::function<void(QWidget *)> added,
                   std::function<void()> layoutChanged) override;

    // Opens the command-line project (sets "startupProjectPreparing" meanwhile).
    bool openStartupProject(const QString &path);

    // ---- GPU selection ----------------------------------------------------------------
    void showGpuSelectionDialog();
    // Accepting the dialog with a key: the unchanged message, or store and ask to restart.
    void applyGpuSelection(const QString &key);
    // Folder the adapters are read from; tests point it at a fake tree.
    void setGpuDrmRoot(const QString &root) { m_gpuDrmRoot = root; }
    // Starts the new instance on "Restart Now"; defaults to QProcess::startDetached.
    void setRestartLauncher(std::function<bool(const QString &, const QStringList &)> launcher)
    {
        m_restartLauncher = std::move(launcher);
    }

    // ---- capture modes ------------------------------------------------------------------
    // Screenshot runs: write PNG files into the folder; false (and error) on failure.
    bool runCaptureMode(CaptureMode mode, const QString &outputDirectory, QString *error = nullptr);
    // Runs a tutorial scenario file; false (and error) for a missing or malformed file.
    bool runTutorialCapture(const QString &scenarioPath, QString *error = nullptr);
    // The window as it is on screen, with an open popup menu drawn in.
    QImage grabWindowImage(QWidget *popup = nullptr);

    // ---- exports of the current 3D view ---------------------------------------------------
    // "Export Projector/Camera UV LUT...": the dialog over the current 3D view's scene; its
    // options and media-server settings are kept in the view (MainWindowUvLut.cpp).
    Q_INVOKABLE void runProjectorCameraUvLutExport();
    // "Calibrate Projector...": the modeless calibration window for the projector selected in
    // the current 3D view (MainWindowCalibration.cpp).
    Q_INVOKABLE void calibrateSelectedProjector();

Q_SIGNALS:
    void uiScaleChanged(double scale);
    void tabAdded(QWidget *content, const QString &kind);
    void tabAboutToBeRemoved(QWidget *content);
    void tabTitleChanged(QWidget *content, const QString &title);
    // Coalesced notice that tabs were added, removed, moved, renamed or switched.
    void tabLayoutChanged();
    // Deferred start-up: the startup client's report (500 ms) and, with
    // "updates/autoUpdate", the update check (1500 ms).
    void startupClientReportRequested();
    void updateCheckRequested();

protected:
    void closeEvent(QCloseEvent *event) override;
    void changeEvent(QEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    QAction *addMenuAction(QMenu *menu, const char *objectName, bool enabled);
    void buildMenus();
    void buildStatusBar();
    void buildTabArea();
    QWidget *buildStartPage();
    void retranslateUi();
    void retranslateGeneratedTabTitles();
    void updateLanguageChecks();

    int plusTabIndex() const;
    void updateStartPage();
    void showAddTabMenu();
    void showTabContextMenu(const QPoint &position);
    void applyFontToTab(QWidget *content);
    void scheduleRelayout();
    void relayoutTabs();
    void updateEditActions();
    void undoOnCurrentTab(bool redo);
    void runStartupProjectStep();
    void restartApplication();

    // Capture helpers (MainWindowCapture.cpp).
    void settle(int milliseconds);
    bool saveScreenshot(const QString &directory, const QString &fileName, QWidget *popup, QString *error);
    bool screenshotMenu(QMenu *menu, const QString &directory, const QString &fileName, QString *error);

    QTabWidget *m_tabs = nullptr;
    QWidget *m_startPage = nullptr;
    QWidget *m_plusPage = nullptr;
    QLabel *m_startupApiLabel = nullptr;
    QMenu *m_addTabPopup = nullptr;
    QActionGroup *m_languageGroup = nullptr;
    QTimer *m_relayoutTimer = nullptr;
    QTimer *m_tabLayoutTimer = nullptr;

    // Start page widgets kept for retranslation.
    QLabel *m_startHint = nullptr;
    QLabel *m_startVersion = nullptr;
    QPushButton *m_startButton = nullptr;

    double m_uiScale = 1.0;
    QFont m_baseUiFont;
    bool m_autoUpdate = true;
    QString m_gpuAdapterKey;
    QString m_programSettingsFile;
    bool m_unsavedChanges = false;
    bool m_programSettingsChanged = false;
    bool m_closeApproved = false;
    bool m_startupProjectOpened = false;
    QHash<QString, int> m_tabNumbers;
    int m_lastContentIndex = -1;
    ProjectHooks m_hooks;
    QString m_gpuDrmRoot = QStringLiteral("/sys/class/drm");
    std::function<bool(const QString &, const QStringList &)> m_restartLauncher;
};
