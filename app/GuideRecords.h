#pragma once

#include <QList>

class GuideTab;
class MainWindow;
class ProjectWindow;
class QWidget;

// A guide tab stands for one guide of the project's list (its record), whatever its place
// among the tabs: surfaces, projectors and canvases name guides by record, so dragging a
// tab changes nothing they show. Records are dense (0 .. guide count − 1); a new guide tab
// takes the next one, and a removed one takes its bindings with it (cleared, later
// records moving down one in every 3D view; canvas tabs follow by source id).
namespace guiderecords {

int recordOf(const QWidget *content);          // -1 when not a guide tab with a record
void setRecord(QWidget *content, int record);
// The guide tabs by record; tabs without one follow in display order.
QList<GuideTab *> guideTabsByRecord(const ProjectWindow *window);

// Keeps the records of the window's guide tabs (call once per window).
void keepRecords(MainWindow *window);

} // namespace guiderecords
