#include "project/ProjectFile.h"

#include "common/AtomicFileWrite.h"

#include "common/JsonTextWriter.h"
#include "common/SettingsContainer.h"
#include "project/CanvasJson.h"
#include "project/ProjectJsonReader.h"
#include "project/SceneJson.h"

#include <QFile>
#include <QSet>

#include <algorithm>
#include <new>

namespace {

using namespace vg::json;

QString noTabsError()
{
    return QStringLiteral("JSON contains no guide, canvas, or 3D view tabs.");
}

constexpr qint64 kMaxSequentialProjectBytes = qint64(64) << 20;

QString tooLargeError()
{
    return QStringLiteral("The file is too large to be a project.");
}

void setError(QString *error, const QString &text)
{
    if (error)
        *error = text;
}

} // namespace

QByteArray projectToJson(const QList<GuideSettings> &guides, int activeGuide,
                         const Guide3DViewSettings *activeView, const QList<Guide3DViewSettings> *views,
                         const QList<CanvasTabSettings> *canvasTabs, const QList<ProjectTabEntry> *tabs,
                         int currentTab)
{
    const Guide3DViewSettings *singleView = nullptr;
    if (activeView && activeView->present)
        singleView = activeView;
    else if (views && !views->isEmpty() && views->first().present)
        singleView = &views->first();
    const bool anyListedView = views && std::any_of(views->begin(), views->end(),
                                                    [](const Guide3DViewSettings &v) { return v.present; });
    const bool anyCanvas = canvasTabs && !canvasTabs->isEmpty();
    const bool anyTab = tabs && std::any_of(tabs->begin(), tabs->end(), [](const ProjectTabEntry &entry) {
        return !entry.kind.trimmed().isEmpty() && entry.index >= 0;
    });

    int version = 2;
    if (singleView)
        version = 3;
    if (anyListedView)
        version = 5;
    if (anyCanvas)
        version = std::max(version, 4);
    if (anyTab)
        version = std::max(version, 6);
    if (currentTab >= 0)
        version = std::max(version, 7);

    JsonTextWriter w(qsizetype(1) << 20);
    w.beginObject();
    w.field("format", "VantreoGuide");
    w.field("version", version);
    w.field("active_guide", std::clamp(activeGuide, 0, std::max(int(guides.size()) - 1, 0)));
    if (currentTab >= 0)
        w.field("current_tab", currentTab);

    w.key("guides");
    w.beginArray();
    for (const GuideSettings &guide : guides)
        writeGuideSettings(w, guide);
    w.endArray();

    if (anyListedView) {
        w.key("three_d_views");
        w.beginArray();
        for (const Guide3DViewSettings &view : *views) {
            if (view.present)
                writeViewSettings(w, view);
        }
        w.endArray();
    }
    // The single view after the list: readers of the list never need to read it.
    if (singleView) {
        w.key("three_d_view");
        writeViewSettings(w, *singleView);
    }

    if (anyCanvas) {
        w.key("canvas_tabs");
        w.beginArray();
        for (const CanvasTabSettings &tab : *canvasTabs)
            writeCanvasTab(w, tab);
        w.endArray();
    }

    if (anyTab) {
        w.key("tabs");
        w.beginArray();
        for (const ProjectTabEntry &entry : *tabs) {
            if (entry.kind.trimmed().isEmpty() || entry.index < 0)
                continue;
            w.beginObject();
            w.field("kind", entry.kind);
            w.field("index", entry.index);
            w.endObject();
        }
        w.endArray();
    }
    w.endObject();
    return w.take();
}

bool saveProjectFile(const QString &path, const QList<GuideSettings> &guides, int activeGuide, QString *error,
                     const Guide3DViewSettings *activeView, const QList<Guide3DViewSettings> *views,
                     const QList<CanvasTabSettings> *canvasTabs, const QList<ProjectTabEntry> *tabs,
                     int currentTab)
{
    const QByteArray container = vg::encodeSettingsContainer(
        projectToJson(guides, activeGuide, activeView, views, canvasTabs, tabs, currentTab));
    return vg::writeFileReplacing(path, container, error);
}

namespace {

// Takes the text by value: when no one else shares it, the reader gives back its memory
// as it goes.
bool loadProjectJson(QByteArray json, QList<GuideSettings> *guides, int *activeGuide, QString *error,
                     Guide3DViewSettings *activeView, QList<Guide3DViewSettings> *views,
                     QList<CanvasTabSettings> *canvasTabs, QList<ProjectTabEntry> *tabs, int *currentTab)
{
    ProjectJsonContent content;
    if (!readProjectJson(std::move(json), &content, error))
        return false;

    const int guideCount = int(content.guides.size());
    const int viewCount = int(content.views.size());
    const int canvasCount = int(content.canvasTabs.size());
    if (activeGuide)
        *activeGuide = guideCount > 0 ? std::clamp(content.activeGuide, 0, guideCount - 1) : 0;
    if (guides)
        *guides = std::move(content.guides);
    if (currentTab)
        *currentTab = content.currentTab;
    if (activeView)
        *activeView = content.views.isEmpty() ? Guide3DViewSettings() : content.views.first();
    if (views)
        *views = std::move(content.views);
    if (canvasTabs)
        *canvasTabs = std::move(content.canvasTabs);
    if (tabs && content.hasTabList)
        *tabs = std::move(content.tabs);

    if (guideCount == 0 && viewCount == 0 && canvasCount == 0) {
        setError(error, noTabsError());
        return false;
    }
    return true;
}

} // namespace

bool loadProjectData(const QByteArray &data, QList<GuideSettings> *guides, int *activeGuide, QString *error,
                     Guide3DViewSettings *activeView, QList<Guide3DViewSettings> *views,
                     QList<CanvasTabSettings> *canvasTabs, QList<ProjectTabEntry> *tabs, int *currentTab)
{
    QByteArray json;
    QString containerError;
    if (!vg::decodeSettingsContainer(data, &json, &containerError)) {
        setError(error, containerError);
        return false;
    }
    return loadProjectJson(std::move(json), guides, activeGuide, error, activeView, views, canvasTabs, tabs,
                           currentTab);
}

bool readProjectBytes(const QString &path, QByteArray *data, QString *error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        setError(error, file.errorString());
        return false;
    }
    // Bounded, so that a device or pipe that never ends cannot hang the load; a pipe
    // may bring less than a regular file.
    const qint64 limit = file.isSequential() ? kMaxSequentialProjectBytes : vg::kSettingsContainerMaxPayload;
    if (!file.isSequential() && file.size() > limit) {
        setError(error, tooLargeError());
        return false;
    }
    // In pieces, so the memory taken follows what the file holds, not the limit. A regular
    // file's size is known: its bytes go straight into a buffer of that size.
    data->clear();
    try {
        if (!file.isSequential() && file.size() > 0) {
            data->resize(file.size());
            qint64 done = 0;
            while (done < data->size()) {
                const qint64 got = file.read(data->data() + done, data->size() - done);
                if (got <= 0)
                    break;
                done += got;
            }
            data->truncate(done);
        }
        QByteArray chunk;
        while (!(chunk = file.read(qint64(1) << 20)).isEmpty()) {
            if (data->size() + chunk.size() > limit) {
                data->clear();
                setError(error, tooLargeError());
                return false;
            }
            data->append(chunk);
        }
    } catch (const std::bad_alloc &) {
        data->clear();
        setError(error, QStringLiteral("There is not enough memory to read the file."));
        return false;
    }
    if (file.error() != QFileDevice::NoError) {
        setError(error, file.errorString());
        return false;
    }
    return true;
}

bool loadProjectFile(const QString &path, QList<GuideSettings> *guides, int *activeGuide, QString *error,
                     Guide3DViewSettings *activeView, QList<Guide3DViewSettings> *views,
                     QList<CanvasTabSettings> *canvasTabs, QList<ProjectTabEntry> *tabs, int *currentTab)
{
    QByteArray json;
    {
        QByteArray data;
        if (!readProjectBytes(path, &data, error))
            return false;
        QString containerError;
        if (!vg::decodeSettingsContainer(data, &json, &containerError)) {
            setError(error, containerError);
            return false;
        }
        // The compressed bytes are not needed while the text is read.
    }
    return loadProjectJson(std::move(json), guides, activeGuide, error, activeView, views, canvasTabs, tabs,
                           currentTab);
}

QByteArray projectDocumentToJson(const ProjectDocument &doc)
{
    return projectToJson(doc.guides, doc.activeGuide, &doc.activeView, &doc.views, &doc.canvasTabs, &doc.tabs,
                         doc.currentTab);
}

bool saveProjectDocument(const QString &path, const ProjectDocument &doc, QString *error)
{
    return saveProjectFile(path, doc.guides, doc.activeGuide, error, &doc.activeView, &doc.views, &doc.canvasTabs,
                           &doc.tabs, doc.currentTab);
}

bool loadProjectDocument(const QString &path, ProjectDocument *doc, QString *error)
{
    ProjectDocument loaded;
    const bool ok = loadProjectFile(path, &loaded.guides, &loaded.activeGuide, error, &loaded.activeView,
                                    &loaded.views, &loaded.canvasTabs, &loaded.tabs, &loaded.currentTab);
    if (ok && doc)
        *doc = std::move(loaded);
    return ok;
}

bool loadProjectDocumentData(const QByteArray &data, ProjectDocument *doc, QString *error)
{
    ProjectDocument loaded;
    const bool ok = loadProjectData(data, &loaded.guides, &loaded.activeGuide, error, &loaded.activeView,
                                    &loaded.views, &loaded.canvasTabs, &loaded.tabs, &loaded.currentTab);
    if (ok && doc)
        *doc = std::move(loaded);
    return ok;
}

int projectTabRecordCount(const ProjectDocument &doc, const QString &kind)
{
    if (kind == QLatin1String(kGuideTabRecord))
        return int(doc.guides.size());
    if (kind == QLatin1String(kCanvasTabRecord))
        return int(doc.canvasTabs.size());
    if (kind == QLatin1String(kThreeDViewTabRecord))
        return int(doc.views.size());
    return 0;
}

QList<ProjectTabEntry> projectTabOrder(const ProjectDocument &doc)
{
    QList<ProjectTabEntry> order;
    QSet<QString> named;
    for (const ProjectTabEntry &entry : doc.tabs) {
        const QString kind = entry.kind.trimmed();
        const QString key = kind + QLatin1Char('/') + QString::number(entry.index);
        if (entry.index >= 0 && entry.index < projectTabRecordCount(doc, kind) && !named.contains(key)) {
            named.insert(key);
            order.append({kind, entry.index});
        }
    }
    for (const char *name : {kGuideTabRecord, kCanvasTabRecord, kThreeDViewTabRecord}) {
        const QString kind = QString::fromLatin1(name);
        for (int i = 0; i < projectTabRecordCount(doc, kind); ++i) {
            if (!named.contains(kind + QLatin1Char('/') + QString::number(i)))
                order.append({kind, i});
        }
    }
    return order;
}

int projectViewCount(const ProjectDocument &doc)
{
    return doc.views.isEmpty() && doc.activeView.present ? 1 : int(doc.views.size());
}

const Guide3DViewSettings *projectView(const ProjectDocument &doc, int index)
{
    if (doc.views.isEmpty())
        return index == 0 && doc.activeView.present ? &doc.activeView : nullptr;
    return index >= 0 && index < doc.views.size() ? &doc.views[index] : nullptr;
}

void setProjectView(ProjectDocument *doc, int index, const Guide3DViewSettings &view)
{
    if (doc->views.isEmpty()) {
        doc->activeView = view;
        return;
    }
    doc->views[index] = view;
    if (index == 0)
        doc->activeView = view;
}
