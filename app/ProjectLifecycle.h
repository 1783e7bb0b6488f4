#pragma once

#include "project/ProjectFile.h"

#include <QObject>
#include <QPointer>
#include <QString>

#include <functional>

class ProjectWindow;
class QLabel;
class QTimer;
class QWidget;

// The window's project commands: new, open, merge, save (as, with resources), automatic
// backups, recent files, bundles, portable packages, the start-up sample and change
// detection. The window creates one; it connects the File menu by object name.
class ProjectLifecycle : public QObject
{
    Q_OBJECT

public:
    // Every question the commands ask; tests replace them. Empty strings mean cancelled.
    struct Dialogs {
        std::function<QString(const QString &title, const QString &folder, const QString &filter)> openFile;
        std::function<QString(const QString &title, const QString &path, const QString &filter)> saveFile;
        std::function<QString(const QString &title, const QString &folder)> folder;
        // Yes/No question; true for Yes.
        std::function<bool(const QString &title, const QString &text)> confirm;
        std::function<void(const QString &title, const QString &text)> warn;
        std::function<void(const QString &title, const QString &text)> inform;
    };

    explicit ProjectLifecycle(ProjectWindow *window);
    ~ProjectLifecycle() override;

    void setDialogs(const Dialogs &dialogs) { m_dialogs = dialogs; }
    const Dialogs &dialogs() const { return m_dialogs; }

    // ---- the project as the tabs hold it --------------------------------------------
    ProjectDocument currentDocument() const;
    // Change-detection snapshot: the project JSON without the current tab, the active
    // guide and every view's camera.
    static QByteArray snapshotOf(const ProjectDocument &doc);
    bool isChanged();               // compares a fresh snapshot now
    void markSaved();               // takes the snapshot the next comparisons start from
    QString currentFile() const { return m_currentFile; }
    bool isLoading() const { return m_loading > 0; }

    // ---- commands (each returns whether it did its work) ------------------------------
    bool newProject(bool ask = true);
    bool openProjectInteractive();
    bool openProject(const QString &path);
    bool mergeProjectInteractive();
    bool mergeProject(const QString &path);
    bool saveProject();              // asks for a path when the project has none
    bool saveProjectAs();
    bool saveProjectTo(const QString &path);
    bool saveProjectAsWithResources();
    bool saveProjectWithResourcesTo(const QString &path);
    bool exportProjectBundle();
    bool exportProjectBundleTo(const QString &zipPath);
    bool importProjectBundle();
    bool importProjectBundleFrom(const QString &zipPath, const QString &folder);
    bool createPortablePackage();
    bool createPortablePackageTo(const QString &zipPath);
    void loadStartupSample();

    // ---- backups ----------------------------------------------------------------------
    // Writes a backup of the open project now; false (status text set) on failure.
    bool backupNow();
    void setBackupsEnabled(bool enabled) { m_backupsEnabled = enabled; }
    bool backupsEnabled() const { return m_backupsEnabled; }
    QTimer *backupTimer() const { return m_backupTimer; }

    // ---- recent files and start-up ---------------------------------------------------------
    QStringList recentProjects() const;
    void rebuildRecentMenu();
    void setStartupSamplePath(const QString &path) { m_startupSamplePath = path; }
    QString startupSamplePath() const;
    void setApplicationFolder(const QString &folder) { m_applicationFolder = folder; }

    // Called with each line of the loading overlay while it shows (tests take screenshots).
    void setProgressObserver(std::function<void(const QString &)> observer) { m_progressObserver = std::move(observer); }
    QWidget *loadingOverlay() const { return m_overlay; }

    static QString withProjectSuffix(const QString &path);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    void changeStateChanged(bool changed);
    void projectFileChanged(const QString &path);

private:
    enum class Mode { Replace, Merge };

    void connectActions();
    bool loadInto(const QString &path, Mode mode, const QString &failTitle);
    void applyDocument(const ProjectDocument &doc, Mode mode);
    void setCurrentFile(const QString &path);
    void addRecent(const QString &path);
    void updateWindowTitle();
    void scheduleChangeCheck();
    void checkChanges();
    void watchTab(QWidget *content);
    void rememberActiveGuide();
    void showProgress(const QString &text);
    bool extractBundle(const QString &zipPath, const QString &folder, bool overwrite, QString *error);
    void showOverlay(const QString &heading);
    void hideOverlay();
    void status(const QString &text);
    bool hasProjectData(const ProjectDocument &doc) const;
    QString askZipPath(const QString &title, const QString &filter);
    bool backupExistingFile(const QString &path);
    bool writeBackup(const QByteArray *existing);

    ProjectWindow *m_window = nullptr;
    // The window's widget as filtered: events still reach the filter while the window's
    // widget base destroys its children, after the window part is gone.
    QWidget *m_windowWidget = nullptr;
    Dialogs m_dialogs;
    QString m_currentFile;
    QByteArray m_savedSnapshot;
    bool m_changed = false;
    int m_loading = 0;
    int m_activeGuide = 0;
    bool m_backupsEnabled = true;
    QTimer *m_backupTimer = nullptr;
    QTimer *m_changeTimer = nullptr;
    QPointer<QWidget> m_overlay;
    QLabel *m_overlayHeading = nullptr;
    QLabel *m_overlayProgress = nullptr;
    QString m_startupSamplePath;
    QString m_applicationFolder;
    std::function<void(const QString &)> m_progressObserver;
};
