#include "project/GuideReferences.h"

#include <QSet>

#include <algorithm>

namespace {

void remapOne(int *reference, const GuideIndexMap &map)
{
    if (*reference < 0)
        return;
    *reference = std::max(-1, map(*reference));
}

} // namespace

void remapGuideReferences(QVector<GuideObject> *objects, const GuideIndexMap &map)
{
    for (GuideObject &object : *objects) {
        remapOne(&object.texture_guide_index, map);
        remapOne(&object.projector_image_guide_index, map);
    }
}

void remapGuideReferences(Guide3DViewSettings *view, const GuideIndexMap &map)
{
    remapGuideReferences(&view->objects, map);
    for (GuideCameraView &camera : view->camera_views)
        remapGuideReferences(&camera.projector_objects, map);
}

void remapGuideReferences(CanvasTabSettings *tab, const GuideIndexMap &map)
{
    remapOne(&tab->selected_guide_index, map);
    for (CanvasObjectSettings &object : tab->objects)
        remapOne(&object.guide_index, map);
}

void remapGuideReferences(ProjectDocument *doc, const GuideIndexMap &map)
{
    for (Guide3DViewSettings &view : doc->views)
        remapGuideReferences(&view, map);
    remapGuideReferences(&doc->activeView, map);
    for (CanvasTabSettings &tab : doc->canvasTabs)
        remapGuideReferences(&tab, map);
    if (doc->activeGuide >= 0)
        doc->activeGuide = std::max(0, map(doc->activeGuide));
}

GuideIndexMap guideIndexMapFrom(const QVector<int> &newPositions)
{
    return [newPositions](int old) { return old < newPositions.size() ? newPositions.at(old) : -1; };
}

QVector<int> guideTabOrder(const ProjectDocument &doc)
{
    const int count = int(doc.guides.size());
    QVector<int> order;
    QSet<int> named;
    for (const ProjectTabEntry &entry : doc.tabs) {
        if (entry.kind.trimmed() == QLatin1String(kGuideTabRecord) && entry.index >= 0 && entry.index < count
            && !named.contains(entry.index)) {
            named.insert(entry.index);
            order.append(entry.index);
        }
    }
    for (int i = 0; i < count; ++i) {
        if (!named.contains(i))
            order.append(i);
    }
    return order;
}

void orderGuidesAsTabs(ProjectDocument *doc)
{
    const QVector<int> order = guideTabOrder(*doc);
    QVector<int> newPosition(order.size(), -1);
    bool unchanged = true;
    for (int position = 0; position < order.size(); ++position) {
        newPosition[order.at(position)] = position;
        unchanged = unchanged && order.at(position) == position;
    }
    if (unchanged)
        return;
    QList<GuideSettings> guides;
    guides.reserve(order.size());
    for (int old : order)
        guides.append(doc->guides.at(old));
    doc->guides = guides;
    for (ProjectTabEntry &entry : doc->tabs) {
        if (entry.kind.trimmed() == QLatin1String(kGuideTabRecord) && entry.index >= 0 && entry.index < newPosition.size())
            entry.index = newPosition.at(entry.index);
    }
    remapGuideReferences(doc, guideIndexMapFrom(newPosition));
}
