#include "project/ProjectJsonReader.h"

#include "common/JsonPullParser.h"
#include "project/CanvasJson.h"
#include "project/SceneJson.h"

#include <algorithm>
#include <new>

#if defined(Q_OS_LINUX)
#include <sys/mman.h>
#include <unistd.h>
#endif

using namespace vg::json;

namespace {

// Hands the pages of text that has been read back to the system while the rest is read, so
// that at no time are the whole text and the whole set of records in memory together.
// Nothing reads the text behind the reading position again: record trees are read before
// their text is released, and trees kept longer hold copies of their strings.
class ConsumedText
{
public:
    ConsumedText() = default;
    ConsumedText(char *begin, qsizetype size)
    {
#if defined(Q_OS_LINUX)
        m_page = quintptr(sysconf(_SC_PAGESIZE));
        m_released = (quintptr(begin) + m_page - 1) & ~(m_page - 1);
        m_end = quintptr(begin + size);
        m_enabled = m_page > 0 && m_released < m_end;
#else
        Q_UNUSED(begin);
        Q_UNUSED(size);
#endif
    }

    // Text from here on is needed again later.
    void keepFrom(const char *position)
    {
        if (!m_keep || quintptr(position) < m_keep)
            m_keep = quintptr(position);
    }

    void releaseBefore(const char *position)
    {
#if defined(Q_OS_LINUX)
        if (!m_enabled)
            return;
        quintptr limit = std::min(quintptr(position), m_end);
        if (m_keep)
            limit = std::min(limit, m_keep);
        limit &= ~(m_page - 1);
        // In steps of a megabyte or more, so the calls stay few.
        if (limit < m_released + (quintptr(1) << 20))
            return;
        madvise(reinterpret_cast<void *>(m_released), limit - m_released, MADV_DONTNEED);
        m_released = limit;
#else
        Q_UNUSED(position);
#endif
    }

private:
    quintptr m_page = 0;
    quintptr m_released = 0;
    quintptr m_end = 0;
    quintptr m_keep = 0;
    bool m_enabled = false;
};

// Streams an array value, handing each object element to `read` as a parsed tree; other
// elements are checked and skipped. A value that is not an array is checked and skipped.
template <typename Read>
bool readObjectArray(JsonPullParser &parser, ConsumedText &text, JsonTree &tree, Read &&read)
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
        text.releaseBefore(parser.position());
        return true;
    });
}

// A view's objects are streamed one at a time; its other keys are small and read as a tree.
bool readView(JsonPullParser &parser, ConsumedText &text, Guide3DViewSettings *view)
{
    parser.advance();
    JsonTree rest(true);
    rest.beginContainer(JsonNodeType::Object);
    JsonTree objectTree;
    QVector<GuideObject> objects;
    const bool ok = parser.parseMembers([&](const JsonKeyText &key) {
        if (key.equals("objects")) {
            objects.clear();
            return readObjectArray(parser, text, objectTree,
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

bool readViewArray(JsonPullParser &parser, ConsumedText &text, QList<Guide3DViewSettings> *views)
{
    if (parser.peek() != '[')
        return parser.parseValue(nullptr);
    parser.advance();
    return parser.parseElements([&] {
        if (parser.peek() != '{')
            return parser.parseValue(nullptr);
        Guide3DViewSettings view;
        if (!readView(parser, text, &view))
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

bool readProjectJsonRecords(const QByteArray &json, ConsumedText text, ProjectJsonContent *content, QString *error)
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
    JsonTree rest(true);
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
            return readObjectArray(parser, text, recordTree,
                                   [&](const JsonObjectRef &o) { read.guides.append(guideSettingsFromJson(o)); });
        }
        if (key.equals("three_d_views")) {
            read.views.clear();
            return readViewArray(parser, text, &read.views);
        }
        if (key.equals("three_d_view")) {
            singleView = parser.peek() == '{' ? parser.position() : nullptr;
            if (singleView)
                text.keepFrom(singleView);
            return parser.parseValue(nullptr);
        }
        if (key.equals("canvas_tabs") || key.equals("composite_tabs")) {
            const bool current = key.equals("canvas_tabs");
            QList<CanvasTabSettings> &target = current ? canvasTabs : compositeTabs;
            target.clear();
            if (current)
                canvasListIsArray = parser.peek() == '[';
            return readObjectArray(parser, text, recordTree,
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
        if (readView(viewParser, text, &view))
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

bool readProjectJsonText(const QByteArray &json, ConsumedText text, ProjectJsonContent *content, QString *error)
{
    try {
        return readProjectJsonRecords(json, text, content, error);
    } catch (const std::bad_alloc &) {
        if (error)
            *error = QStringLiteral("There is not enough memory to read the file.");
        return false;
    }
}

} // namespace

bool readProjectJson(const QByteArray &json, ProjectJsonContent *content, QString *error)
{
    return readProjectJsonText(json, ConsumedText(), content, error);
}

bool readProjectJson(QByteArray &&json, ProjectJsonContent *content, QString *error)
{
    QByteArray text = std::move(json);
    // data() of an unshared array gives its own bytes, never a copy.
    char *begin = text.isDetached() ? text.data() : nullptr;
    return readProjectJsonText(text, begin ? ConsumedText(begin, text.size()) : ConsumedText(), content, error);
}
