#include "app/GuideRecords.h"

#include "app/MainWindow.h"
#include "guide/ui/GuideTab.h"
#include "project/GuideReferences.h"
#include "scene/ui/SceneWidget.h"
#include "scene/ui/ThreeDViewTab.h"

#include <QVariant>

#include <algorithm>
#include <climits>

namespace guiderecords {
namespace {

const char *const kRecordProperty = "vantreoGuideRecord";

// Every binding of the 3D views to guide `removed` is cleared and later ones move down one.
// Canvas tabs follow their guides by source id themselves when the tabs change.
void forgetGuide(MainWindow *window, int removed)
{
    const GuideIndexMap map = [removed](int index) { return index == removed ? -1 : index > removed ? index - 1 : index; };
    for (QWidget *content : window->contentTabs()) {
        if (auto *view = qobject_cast<ThreeDViewTab *>(content)) {
            SceneWidget *scene = view->sceneWidget();
            // Objects in place, so the view keeps its undo history and camera.
            QVector<GuideObject> objects = scene->objects();
            remapGuideReferences(&objects, map);
            for (int i = 0; i < objects.size(); ++i) {
                if (!(objects.at(i) == scene->objects().at(i)))
                    scene->setObjectWithoutUndo(i, objects.at(i));
            }
            // The projectors stored with camera views (the objects are done above).
            Guide3DViewSettings settings = view->viewSettings();
            const QVector<GuideCameraView> before = settings.camera_views;
            for (GuideCameraView &camera : settings.camera_views)
                remapGuideReferences(&camera.projector_objects, map);
            if (settings.camera_views != before)
                view->setViewSettings(settings);
        }
    }
}

} // namespace

int recordOf(const QWidget *content)
{
    if (!qobject_cast<const GuideTab *>(content))
        return -1;
    bool ok = false;
    const int record = content->property(kRecordProperty).toInt(&ok);
    return ok ? record : -1;
}

void setRecord(QWidget *content, int record)
{
    if (content)
        content->setProperty(kRecordProperty, record);
}

QList<GuideTab *> guideTabsByRecord(const ProjectWindow *window)
{
    QList<GuideTab *> tabs;
    for (QWidget *content : window->contentTabs()) {
        if (auto *guide = qobject_cast<GuideTab *>(content))
            tabs.append(guide);
    }
    std::stable_sort(tabs.begin(), tabs.end(), [](const GuideTab *a, const GuideTab *b) {
        const int ra = recordOf(a), rb = recordOf(b);
        return (ra < 0 ? INT_MAX : ra) < (rb < 0 ? INT_MAX : rb);
    });
    return tabs;
}

void keepRecords(MainWindow *window)
{
    QObject::connect(window, &MainWindow::tabAdded, window, [window](QWidget *content, const QString &) {
        if (!qobject_cast<GuideTab *>(content) || recordOf(content) >= 0)
            return;
        int next = 0;
        for (QWidget *other : window->contentTabs()) {
            if (other != content)
                next = std::max(next, recordOf(other) + 1);
        }
        setRecord(content, next);
    });
    QObject::connect(window, &MainWindow::tabAboutToBeRemoved, window, [window](QWidget *content) {
        const int removed = recordOf(content);
        if (removed < 0)
            return;
        for (QWidget *other : window->contentTabs()) {
            const int record = recordOf(other);
            if (other != content && record > removed)
                setRecord(other, record - 1);
        }
        setRecord(content, -1);
        forgetGuide(window, removed);
    });
}

} // namespace guiderecords
