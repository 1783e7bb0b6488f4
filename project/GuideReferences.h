#pragma once

#include "project/ProjectFile.h"

#include <functional>

// Every place a project names a guide does so by its position in the project's guide
// list (the guide record): surfaces and Guide objects ("texture_guide_index"), projectors
// ("projector_image_guide_index", also those stored with camera views), canvas objects
// and "selected_guide_index". These helpers move all of them together when the list
// changes, so no binding silently switches to another guide.

// Maps each reference r >= 0 to map(r); a result below 0 clears it (-1). References
// below 0 stay as they are.
using GuideIndexMap = std::function<int(int)>;
void remapGuideReferences(QVector<GuideObject> *objects, const GuideIndexMap &map);
void remapGuideReferences(Guide3DViewSettings *view, const GuideIndexMap &map);
void remapGuideReferences(CanvasTabSettings *tab, const GuideIndexMap &map);
// Views, the active view, canvas tabs and the active guide.
void remapGuideReferences(ProjectDocument *doc, const GuideIndexMap &map);

// The map of a list reordered so that old position i is now at newPositions[i]; removed
// entries have -1 there. Positions past the list clear the reference.
GuideIndexMap guideIndexMapFrom(const QVector<int> &newPositions);

// The guides in the order the window shows their tabs: first those the tab list names, in
// its order, then the rest in list order.
QVector<int> guideTabOrder(const ProjectDocument &doc);

// Reorders the guide list into tab order and moves every reference with it, so that a
// guide's position in the list is also its tab's position among the guide tabs. What
// each surface, projector and canvas shows is unchanged.
void orderGuidesAsTabs(ProjectDocument *doc);
