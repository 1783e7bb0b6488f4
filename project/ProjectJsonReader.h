#pragma once

#include "project/ProjectFile.h"

#include <QByteArray>
#include <QString>

// Everything the project loader takes from a project's JSON text, read in one pass over
// the text: each guide, scene object and canvas tab is parsed and read on its own, so no
// document of the whole file is built.
struct ProjectJsonContent {
    QList<GuideSettings> guides;
    QList<Guide3DViewSettings> views;  // the view list, or the older single view
    QList<CanvasTabSettings> canvasTabs;
    bool hasTabList = false;           // a "tabs" array was present
    QList<ProjectTabEntry> tabs;
    int activeGuide = 0;               // as written, not yet clamped
    int currentTab = -1;
};

// False with "JSON parse failed: ..." or "JSON root must be an object." in `error`.
bool readProjectJson(const QByteArray &json, ProjectJsonContent *content, QString *error);
// The same, taking the text over: the memory of the part already read is given back while
// the rest is read, so loading a large file needs little more than the text itself.
bool readProjectJson(QByteArray &&json, ProjectJsonContent *content, QString *error);
