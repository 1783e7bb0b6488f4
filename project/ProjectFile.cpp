#include "project/ProjectFile.h"

#include "common/AtomicFileWrite.h"

#include "common/JsonValueReaders.h"
#include "common/SettingsContainer.h"
#include "project/CanvasJson.h"
#include "project/SceneJson.h"

#include <QFile>
#include <QJsonArray>
#include <QSet>
#include <QJsonDocument>
#include <QJsonObject>

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
    QJsonObject root;
    int version = 2;
    root.insert(QLatin1String("format"), QStringLiteral("VantreoGuide"));
    root.insert(QLatin1String("active_guide"), std::clamp(activeGuide, 0, std::max(int(guides.size()) - 1, 0)));

    QJsonArray guideArray;
    for (const GuideSettings &guide : guides)
        guideArray.append(guideSettingsToJson(guide));
    root.insert(QLatin1String("guides"), guideArray);

    const Guide3DViewSettings *singleView = nullptr;
    if (activeView && activeView->present)
        singleView = activeView;
    else if (views && !views->isEmpty() && views->first().present)
        singleView = &views->first();
    if (singleView) {
        version = 3;
        root.insert(QLatin1String("three_d_view"), viewSettingsToJson(*singleView));
    }

    if (views && !views->isEmpty()) {
        QJsonArray viewArray;
        for (const Guide3DViewSettings &view : *views) {
            if (view.present)
                viewArray.append(viewSettingsToJson(view));
        }
        if (!viewArray.isEmpty()) {
            version = 5;
            root.insert(QLatin1String("three_d_views"), viewArray);
        }
    }

    if (canvasTabs && !canvasTabs->isEmpty()) {
        QJsonArray canvasArray;
        for (const CanvasTabSettings &tab : *canvasTabs)
            canvasArray.append(canvasTabToJson(tab));
        root.insert(QLatin1String("canvas_tabs"), canvasArray);
        version = std::max(version, 4);
    }

    if (tabs && !tabs->isEmpty()) {
        QJsonArray tabArray;
        for (const ProjectTabEntry &entry : *tabs) {
            if (entry.kind.trimmed().isEmpty() || entry.index < 0)
                continue;
            QJsonObject item;
            item.insert(QLatin1String("kind"), entry.kind);
            item.insert(QLatin1String("index"), entry.index);
            tabArray.append(item);
        }
        if (!tabArray.isEmpty()) {
            version = std::max(version, 6);
            root.insert(QLatin1String("tabs"), tabArray);
        }
    }

    if (currentTab >= 0) {
        version = std::max(version, 7);
        root.insert(QLatin1String("current_tab"), currentTab);
    }

    root.insert(QLatin1String("version"), version);
    return QJsonDocument(root).toJson(QJsonDocument::Indented);
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

    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(json, &parseError);
    if (parseError.error != QJsonParseError::NoError) {
        setError(error, QStringLiteral("JSON parse failed: %1").arg(parseError.errorString()));
        return false;
    }
    if (!document.isObject()) {
        setError(error, QStringLiteral("JSON root must be an object."));
        return false;
    }
    const QJsonObject root = document.object();

    QList<GuideSettings> readGuides;
    const QJsonValue guideValue = root.value(QLatin1String("guides"));
    if (guideValue.isArray()) {
        for (const QJsonValue &element : guideValue.toArray()) {
            if (element.isObject())
                readGuides.append(guideSettingsFromJson(element.toObject()));
        }
    }
    const int guideCount = int(readGuides.size());
    if (activeGuide) {
        *activeGuide = guideCount > 0
            ? std::clamp(readInt(root, QLatin1String("active_guide"), 0), 0, guideCount - 1)
            : 0;
    }
    if (guides)
        *guides = std::move(readGuides);

    if (currentTab)
        *currentTab = readInt(root, QLatin1String("current_tab"), -1);

    QList<Guide3DViewSettings> readViews;
    const QJsonValue viewArray = root.value(QLatin1String("three_d_views"));
    if (viewArray.isArray()) {
        for (const QJsonValue &element : viewArray.toArray()) {
            if (element.isObject())
                readViews.append(viewSettingsFromJson(element.toObject()));
        }
    }
    if (readViews.isEmpty()) {
        const QJsonValue single = root.value(QLatin1String("three_d_view"));
        if (single.isObject())
            readViews.append(viewSettingsFromJson(single.toObject()));
    }
    const int viewCount = int(readViews.size());
    if (activeView)
        *activeView = readViews.isEmpty() ? Guide3DViewSettings() : readViews.first();
    if (views)
        *views = std::move(readViews);

    QJsonValue canvasValue = root.value(QLatin1String("canvas_tabs"));
    if (!canvasValue.isArray())
        canvasValue = root.value(QLatin1String("composite_tabs"));
    QList<CanvasTabSettings> readCanvasTabs;
    if (canvasValue.isArray()) {
        for (const QJsonValue &element : canvasValue.toArray()) {
            if (element.isObject())
                readCanvasTabs.append(canvasTabFromJson(element.toObject()));
        }
    }
    const int canvasCount = int(readCanvasTabs.size());
    if (canvasTabs)
        *canvasTabs = std::move(readCanvasTabs);

    const QJsonValue tabValue = root.value(QLatin1String("tabs"));
    if (tabs && tabValue.isArray()) {
        tabs->clear();
        for (const QJsonValue &element : tabValue.toArray()) {
            if (!element.isObject())
                continue;
            const QJsonObject item = element.toObject();
            ProjectTabEntry entry;
            entry.kind = readString(item, QLatin1String("kind")).trimmed();
            if (entry.kind.compare(QLatin1String("composite"), Qt::CaseInsensitive) == 0)
                entry.kind = QString::fromLatin1(kCanvasTabRecord);
            entry.index = readInt(item, QLatin1String("index"), -1);
            if (!entry.kind.isEmpty() && entry.index >= 0)
                tabs->append(entry);
        }
    }

    if (guideCount == 0 && viewCount == 0 && canvasCount == 0) {
        setError(error, noTabsError());
        return false;
    }
    return true;
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
    // In pieces, so the memory taken follows what the file holds, not the limit.
    data->clear();
    try {
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
    QByteArray data;
    if (!readProjectBytes(path, &data, error))
        return false;
    return loadProjectData(data, guides, activeGuide, error, activeView, views, canvasTabs, tabs, currentTab);
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
