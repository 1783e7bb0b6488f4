#include "project/ProjectJsonReader.h"

#include "common/JsonPullParser.h"
#include "project/CanvasJson.h"
#include "project/SceneJson.h"

using namespace vg::json;

namespace {

// Streams an array value, handing each object element to `read` as a parsed tree; other
// elements are checked and skipped. A value that is not an array is checked and skipped.
template <typename Read>
bool readObjectArray(JsonPullParser &parser, JsonTree &tree, Read &&read)
{
    if (parser.peek() != '[')
        return parser.parseValue(nullptr);
    parser.advance();
    return parser.parseElements([&] {
        if (parser.peek() != '{')
            return parser.parseValue(nullptr);
        tree.clear();
        if (!parser.parseValue(&tree))
            return false;
        read(JsonObjectRef(&tree, 0));
        return true;
    });
}

// A view's objects are streamed one at a time; its other keys are small and read as a tree.
bool readView(JsonPullParser &parser, Guide3DViewSettings *view)
{
    parser.advance();
    JsonTree rest;
    rest.beginContainer(JsonNodeType::Object);
    JsonTree objectTree;
    QVector<GuideObject> objects;
    const bool ok = parser.parseMembers([&](const JsonKeyText &key) {
        if (key.equals("objects")) {
            objects.clear();
            return readObjectArray(parser, objectTree,
                                   [&](const JsonObjectRef &o) { objects.append(guideObjectFromJson(o)); });
        }
        rest.addKey(key.text, key.length, key.escaped);
        return parser.parseValue(&rest);
    });
    if (!ok)
        return false;
    rest.endContainer(0);
    *view = viewSettingsFromJson(JsonObjectRef(&rest, 0), std::move(objects));
    return true;
}

bool readViewArray(JsonPullParser &parser, QList<Guide3DViewSettings> *views)
{
    if (parser.peek() != '[')
        return parser.parseValue(nullptr);
    parser.advance();
    return parser.parseElements([&] {
        if (parser.peek() != '{')
            return parser.parseValue(nullptr);
        Guide3DViewSettings view;
        if (!readView(parser, &view))
            return false;
        views->append(std::move(view));
        return true;
    });
}

void readTabList(const JsonValueRef &value, ProjectJsonContent *content)
{
    if (!value.isArray())
        return;
    content->hasTabList = true;
    content->tabs.clear();
    for (const JsonValueRef &element : value.toArray()) {
        if (!element.isObject())
            continue;
        const JsonObjectRef item = element.toObject();
        ProjectTabEntry entry;
        entry.kind = readString(item, QLatin1String("kind")).trimmed();
        if (entry.kind.compare(QLatin1String("composite"), Qt::CaseInsensitive) == 0)
            entry.kind = QString::fromLatin1(kCanvasTabRecord);
        entry.index = readInt(item, QLatin1String("index"), -1);
        if (!entry.kind.isEmpty() && entry.index >= 0)
            content->tabs.append(entry);
    }
}

QString parseFailed(const JsonPullParser &parser)
{
    return QStringLiteral("JSON parse failed: %1").arg(parser.errorString());
}

} // namespace

bool readProjectJson(const QByteArray &json, ProjectJsonContent *content, QString *error)
{
    const char *end = json.constData() + json.size();
    JsonPullParser parser(json.constData(), end);
    const char root = parser.beginDocument();
    if (root == '[') {
        const bool ok = parser.parseElements([&] { return parser.parseValue(nullptr); }) && parser.endDocument();
        if (error)
            *error = ok ? QStringLiteral("JSON root must be an object.") : parseFailed(parser);
        return false;
    }
    if (root != '{') {
        if (error)
            *error = parseFailed(parser);
        return false;
    }

    ProjectJsonContent read;
    // Keys other than the record lists are few and small: they are kept as one tree.
    JsonTree rest;
    rest.beginContainer(JsonNodeType::Object);
    JsonTree recordTree;
    // The older single view is only read when the file has no view list; until then only
    // where it lies in the text is kept.
    const char *singleView = nullptr;
    bool canvasListIsArray = false;
    QList<CanvasTabSettings> canvasTabs;
    QList<CanvasTabSettings> compositeTabs;

    const bool ok = parser.parseMembers([&](const JsonKeyText &key) {
        if (key.equals("guides")) {
            read.guides.clear();
            return readObjectArray(parser, recordTree,
                                   [&](const JsonObjectRef &o) { read.guides.append(guideSettingsFromJson(o)); });
        }
        if (key.equals("three_d_views")) {
            read.views.clear();
            return readViewArray(parser, &read.views);
        }
        if (key.equals("three_d_view")) {
            singleView = parser.peek() == '{' ? parser.position() : nullptr;
            return parser.parseValue(nullptr);
        }
        if (key.equals("canvas_tabs") || key.equals("composite_tabs")) {
            const bool current = key.equals("canvas_tabs");
            QList<CanvasTabSettings> &target = current ? canvasTabs : compositeTabs;
            target.clear();
            if (current)
                canvasListIsArray = parser.peek() == '[';
            return readObjectArray(parser, recordTree,
                                   [&](const JsonObjectRef &o) { target.append(canvasTabFromJson(o)); });
        }
        rest.addKey(key.text, key.length, key.escaped);
        return parser.parseValue(&rest);
    });
    if (!ok || !parser.endDocument()) {
        if (error)
            *error = parseFailed(parser);
        return false;
    }
    rest.endContainer(0);

    if (read.views.isEmpty() && singleView) {
        JsonPullParser viewParser(singleView, end);
        viewParser.peek();
        Guide3DViewSettings view;
        if (readView(viewParser, &view))
            read.views.append(std::move(view));
    }
    read.canvasTabs = canvasListIsArray ? std::move(canvasTabs) : std::move(compositeTabs);

    const JsonObjectRef rootObject(&rest, 0);
    read.activeGuide = readInt(rootObject, QLatin1String("active_guide"), 0);
    read.currentTab = readInt(rootObject, QLatin1String("current_tab"), -1);
    readTabList(rootObject.value(QLatin1String("tabs")), &read);
    *content = std::move(read);
    return true;
}
