#pragma once

// The project reader as it was before the streaming one: the whole text parsed into a
// QJsonDocument, then every record read from its QJsonObject. Tests hold the streaming
// loader to it, and the bench measures it as the anchor of the load figures.
#include "common/JsonValueReaders.h"
#include "project/CanvasJson.h"
#include "project/ProjectFile.h"
#include "project/SceneJson.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

inline bool loadProjectThroughDocument(const QByteArray &json, ProjectDocument *doc, QString *error)
{
    using namespace vg::json;
    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(json, &parseError);
    if (parseError.error != QJsonParseError::NoError) {
        *error = QStringLiteral("JSON parse failed: %1").arg(parseError.errorString());
        return false;
    }
    if (!document.isObject()) {
        *error = QStringLiteral("JSON root must be an object.");
        return false;
    }
    const QJsonObject root = document.object();
    ProjectDocument out;
    for (const QJsonValue &element : root.value(QLatin1String("guides")).toArray()) {
        if (element.isObject())
            out.guides.append(guideSettingsFromJson(element.toObject()));
    }
    out.activeGuide = out.guides.isEmpty()
        ? 0 : std::clamp(readInt(root, QLatin1String("active_guide"), 0), 0, int(out.guides.size()) - 1);
    out.currentTab = readInt(root, QLatin1String("current_tab"), -1);
    for (const QJsonValue &element : root.value(QLatin1String("three_d_views")).toArray()) {
        if (element.isObject())
            out.views.append(viewSettingsFromJson(element.toObject()));
    }
    if (out.views.isEmpty() && root.value(QLatin1String("three_d_view")).isObject())
        out.views.append(viewSettingsFromJson(root.value(QLatin1String("three_d_view")).toObject()));
    if (!out.views.isEmpty())
        out.activeView = out.views.first();
    QJsonValue canvas = root.value(QLatin1String("canvas_tabs"));
    if (!canvas.isArray())
        canvas = root.value(QLatin1String("composite_tabs"));
    for (const QJsonValue &element : canvas.toArray()) {
        if (element.isObject())
            out.canvasTabs.append(canvasTabFromJson(element.toObject()));
    }
    for (const QJsonValue &element : root.value(QLatin1String("tabs")).toArray()) {
        const QJsonObject item = element.toObject();
        ProjectTabEntry entry{readString(item, QLatin1String("kind")).trimmed(), readInt(item, QLatin1String("index"), -1)};
        if (entry.kind.compare(QLatin1String("composite"), Qt::CaseInsensitive) == 0)
            entry.kind = QString::fromLatin1(kCanvasTabRecord);
        if (element.isObject() && !entry.kind.isEmpty() && entry.index >= 0)
            out.tabs.append(entry);
    }
    if (out.guides.isEmpty() && out.views.isEmpty() && out.canvasTabs.isEmpty()) {
        *error = QStringLiteral("JSON contains no guide, canvas, or 3D view tabs.");
        return false;
    }
    *doc = std::move(out);
    return true;
}
