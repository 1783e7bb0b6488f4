#pragma once

#include "canvas/CanvasTabSettings.h"
#include "guide/GuideSettings.h"
#include "scene/Guide3DViewSettings.h"

#include <QByteArray>
#include <QList>
#include <QString>

// The kinds of tab records as project files name them, each naming its record list.
inline constexpr const char *kGuideTabRecord = "guide";        // guides
inline constexpr const char *kCanvasTabRecord = "canvas";      // canvasTabs
inline constexpr const char *kThreeDViewTabRecord = "3dView";  // views

// One tab of the main window in display order: its kind and the position of its settings
// in that kind's record list (-1 when unset).
struct ProjectTabEntry {
    QString kind;
    int index = -1;
    bool operator==(const ProjectTabEntry &) const = default;
};

// The project JSON text (indented). Every pointer may be null (absent); a current tab of
// -1 means none. The "version" written is 2..7 depending on what is present.
QByteArray projectToJson(const QList<GuideSettings> &guides, int activeGuide,
                         const Guide3DViewSettings *activeView = nullptr,
                         const QList<Guide3DViewSettings> *views = nullptr,
                         const QList<CanvasTabSettings> *canvasTabs = nullptr,
                         const QList<ProjectTabEntry> *tabs = nullptr, int currentTab = -1);

// Writes the container around projectToJson() through a temporary file that replaces
// `path` only when every byte was written, so a failed save leaves the old file whole.
// On failure the error text is the file's own error string.
bool saveProjectFile(const QString &path, const QList<GuideSettings> &guides, int activeGuide,
                     QString *error = nullptr, const Guide3DViewSettings *activeView = nullptr,
                     const QList<Guide3DViewSettings> *views = nullptr,
                     const QList<CanvasTabSettings> *canvasTabs = nullptr,
                     const QList<ProjectTabEntry> *tabs = nullptr, int currentTab = -1);

// Reads a container or bare JSON project. Every output may be null and is then neither
// read nor written. The tab list is replaced only when the file has a "tabs" array.
// When the file parses but holds no guide, view or canvas tab the outputs are still
// replaced and the result is false.
bool loadProjectFile(const QString &path, QList<GuideSettings> *guides, int *activeGuide,
                     QString *error = nullptr, Guide3DViewSettings *activeView = nullptr,
                     QList<Guide3DViewSettings> *views = nullptr,
                     QList<CanvasTabSettings> *canvasTabs = nullptr,
                     QList<ProjectTabEntry> *tabs = nullptr, int *currentTab = nullptr);

// Reads a project file's bytes with the size limit every loader applies (a device such
// as /dev/zero or a pipe that never ends is refused, not read to exhaustion).
bool readProjectBytes(const QString &path, QByteArray *data, QString *error);

// The same reading from bytes already in memory (container or bare JSON).
bool loadProjectData(const QByteArray &data, QList<GuideSettings> *guides, int *activeGuide,
                     QString *error = nullptr, Guide3DViewSettings *activeView = nullptr,
                     QList<Guide3DViewSettings> *views = nullptr,
                     QList<CanvasTabSettings> *canvasTabs = nullptr,
                     QList<ProjectTabEntry> *tabs = nullptr, int *currentTab = nullptr);

// Everything a project holds, for callers that want it in one value. The loaders below
// leave `doc` untouched when the load fails.
struct ProjectDocument {
    QList<GuideSettings> guides;
    int activeGuide = 0;
    Guide3DViewSettings activeView;
    QList<Guide3DViewSettings> views;
    QList<CanvasTabSettings> canvasTabs;
    QList<ProjectTabEntry> tabs;
    int currentTab = -1;
    bool operator==(const ProjectDocument &) const = default;
};

// The 3D views of a document as the window opens them: its list, or the single active view
// an older file carries alone. projectView is nullptr for an index out of range; setProjectView
// stores a changed view where projectView found it (the first is also the active view).
int projectViewCount(const ProjectDocument &doc);
const Guide3DViewSettings *projectView(const ProjectDocument &doc, int index);
void setProjectView(ProjectDocument *doc, int index, const Guide3DViewSettings &view);

// How many records of a tab kind the document holds (0 for an unknown kind).
int projectTabRecordCount(const ProjectDocument &doc, const QString &kind);
// The order tabs open in: the document's tab list (entries that name a record, each once),
// then every record it does not name, guides first, so nothing is dropped.
QList<ProjectTabEntry> projectTabOrder(const ProjectDocument &doc);

bool loadProjectDocument(const QString &path, ProjectDocument *doc, QString *error);
bool loadProjectDocumentData(const QByteArray &data, ProjectDocument *doc, QString *error);
bool saveProjectDocument(const QString &path, const ProjectDocument &doc, QString *error);
QByteArray projectDocumentToJson(const ProjectDocument &doc);
