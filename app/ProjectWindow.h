#pragma once

#include <QList>
#include <QString>

#include <functional>

class QAction;
class QMenu;
class QObject;
class QTabWidget;
class QWidget;
class TabKind;

// What the project lifecycle needs of the window that shows the project: its tabs, its
// File menu, its title and status line. The window implements it; the lifecycle knows the
// window only through it.
class ProjectWindow
{
public:
    // What the window asks of the project lifecycle. Every member may be empty.
    struct ProjectHooks
    {
        // Saves the project (asking for a path when it has none); true when it was saved.
        std::function<bool()> saveProject;
        // Opens a project file (command line, drop, the last program-settings file).
        std::function<bool(const QString &path)> openProject;
        // Loads "sample.vgs" beside the program, or sets up the default new project.
        std::function<void()> loadStartupSample;
    };

    enum class UnsavedChangesPrompt { Closing, NewProject };

    virtual ~ProjectWindow() = default;

    // The window itself: parent of dialogs and overlays, holder of the title.
    virtual QWidget *windowWidget() = 0;

    virtual QTabWidget *tabWidget() const = 0;
    virtual int contentTabCount() const = 0;
    virtual QList<QWidget *> contentTabs() const = 0;
    virtual int indexOfContentTab(const QWidget *content) const = 0;
    virtual QWidget *currentContentTab() const = 0;
    virtual QString displayedTabTitle(int index) const = 0;
    virtual QWidget *addTab(const TabKind &kind, const QString &title = QString()) = 0;
    virtual void removeAllTabs() = 0;
    // Calls `added` for every tab added from now on and `layoutChanged` when tabs move,
    // are renamed or removed, for as long as `context` lives.
    virtual void watchTabs(QObject *context, std::function<void(QWidget *)> added,
                           std::function<void()> layoutChanged) = 0;

    virtual QAction *action(const QString &objectName) const = 0;
    virtual QMenu *menu(const QString &objectName) const = 0;
    virtual void showStatusMessage(const QString &text, int timeoutMs) = 0;

    virtual void setProjectHooks(const ProjectHooks &hooks) = 0;
    virtual void setUnsavedChanges(bool unsaved) = 0;
    // The "Unsaved Changes" box; true when the caller may go on.
    virtual bool confirmUnsavedChanges(UnsavedChangesPrompt prompt) = 0;
};
