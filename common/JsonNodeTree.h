#pragma once

#include "common/JsonValueReaders.h"

#include <QColor>
#include <QLatin1String>
#include <QString>

#include <deque>
#include <string>
#include <vector>

// A parsed JSON value kept as a flat list of nodes that point into the source text, so
// one record of a large file can be read through the tolerant readers without building
// QJsonObjects. Strings are decoded only when read. The source text must outlive the tree.
namespace vg::json {

enum class JsonNodeType : quint8 { Null, Bool, Number, String, Array, Object, Key };

struct JsonNode {
    const char *text = nullptr;  // strings and keys: the raw bytes between the quotes
    double number = 0;
    quint32 length = 0;          // bytes of `text`
    quint32 end = 0;             // index one past this node's subtree
    quint32 count = 0;           // members of an object, elements of an array
    quint32 table = 0;           // objects: start of their key table in the tree's slots
    JsonNodeType type = JsonNodeType::Null;
    bool flag = false;           // Bool: the value; String and Key: has escapes
};

class JsonTree
{
public:
    // A tree that must stay readable after its source text is gone keeps copies of its
    // strings and keys instead of pointing into the text.
    explicit JsonTree(bool copyText = false) : m_copyText(copyText) {}

    void clear();
    bool isEmpty() const { return m_nodes.empty(); }
    // One record never needs more (the longest list a record holds is a guide's colours,
    // one per cell: 8 million cells is far beyond any real grid); a tree that would grow
    // past it is refused rather than allocated.
    static constexpr size_t kMaxNodes = size_t(1) << 23;
    bool isFull() const { return m_nodes.size() >= kMaxNodes; }

    // Building, in document order; the parser calls these.
    quint32 beginContainer(JsonNodeType type);
    void endContainer(quint32 index);
    void addKey(const char *text, qsizetype length, bool escaped);
    void addScalar(JsonNodeType type, bool flag = false, double number = 0);
    void addString(const char *text, qsizetype length, bool escaped);

    const JsonNode &node(quint32 index) const { return m_nodes[index]; }
    // The value stored under `key` in the object at `object` (the last one when a key
    // repeats), or kNone.
    quint32 find(quint32 object, const char *key, qsizetype length) const;
    static constexpr quint32 kNone = 0xffffffffu;

private:
    void countChild();
    void buildKeyTable(quint32 object);
    const char *keep(const char *text, qsizetype length);

    std::vector<JsonNode> m_nodes;
    std::vector<quint32> m_slots;
    std::vector<quint32> m_open;
    std::deque<std::string> m_ownedText;  // decoded keys, and copies when m_copyText
    bool m_copyText = false;
};

// The text of a raw JSON string (the bytes between the quotes), escapes resolved.
QString decodeJsonString(const char *text, qsizetype length, bool escaped);

class JsonArrayRef;
class JsonObjectRef;

// One value of a tree, with the parts of QJsonValue's interface the readers use. A missing
// value is undefined.
class JsonValueRef
{
public:
    JsonValueRef() = default;
    JsonValueRef(const JsonTree *tree, quint32 index) : m_tree(tree), m_index(index) {}

    bool isUndefined() const { return m_index == JsonTree::kNone; }
    bool isNull() const { return is(JsonNodeType::Null); }
    bool isBool() const { return is(JsonNodeType::Bool); }
    bool isDouble() const { return is(JsonNodeType::Number); }
    bool isString() const { return is(JsonNodeType::String); }
    bool isArray() const { return is(JsonNodeType::Array); }
    bool isObject() const { return is(JsonNodeType::Object); }

    bool toBool() const { return isBool() && node().flag; }
    double toDouble() const { return isDouble() ? node().number : 0.0; }
    QString toString() const;
    JsonArrayRef toArray() const;
    JsonObjectRef toObject() const;

    // A "#rrggbb" string read without building a QString; false for anything else.
    bool plainHexColor(QColor *color) const;

    const JsonTree *tree() const { return m_tree; }
    quint32 index() const { return m_index; }

private:
    bool is(JsonNodeType type) const { return m_index != JsonTree::kNone && node().type == type; }
    const JsonNode &node() const { return m_tree->node(m_index); }

    const JsonTree *m_tree = nullptr;
    quint32 m_index = JsonTree::kNone;
};

class JsonArrayRef
{
public:
    JsonArrayRef() = default;
    JsonArrayRef(const JsonTree *tree, quint32 index) : m_tree(tree), m_index(index) {}

    class const_iterator
    {
    public:
        const_iterator(const JsonTree *tree, quint32 index) : m_tree(tree), m_index(index) {}
        JsonValueRef operator*() const { return {m_tree, m_index}; }
        const_iterator &operator++()
        {
            m_index = m_tree->node(m_index).end;
            return *this;
        }
        bool operator!=(const const_iterator &other) const { return m_index != other.m_index; }
        bool operator==(const const_iterator &other) const { return m_index == other.m_index; }

    private:
        const JsonTree *m_tree;
        quint32 m_index;
    };

    qsizetype size() const { return m_tree ? qsizetype(m_tree->node(m_index).count) : 0; }
    bool isEmpty() const { return size() == 0; }
    const_iterator begin() const { return {m_tree, m_tree ? m_index + 1 : 0}; }
    const_iterator end() const { return {m_tree, m_tree ? m_tree->node(m_index).end : 0}; }

private:
    const JsonTree *m_tree = nullptr;
    quint32 m_index = 0;
};

class JsonObjectRef
{
public:
    JsonObjectRef() = default;
    JsonObjectRef(const JsonTree *tree, quint32 index) : m_tree(tree), m_index(index) {}

    JsonValueRef value(QLatin1String key) const;
    JsonValueRef value(const QString &key) const;
    JsonValueRef value(const char *key) const { return value(QLatin1String(key)); }
    bool contains(QLatin1String key) const { return !value(key).isUndefined(); }
    qsizetype size() const { return m_tree ? qsizetype(m_tree->node(m_index).count) : 0; }

private:
    const JsonTree *m_tree = nullptr;
    quint32 m_index = 0;
};

// The tolerant readers over tree values, with exactly the rules of the QJsonValue ones.
inline bool toBool(const JsonValueRef &value, bool fallback) { return detail::toBool(value, fallback); }
inline double toDouble(const JsonValueRef &value, double fallback) { return detail::toDouble(value, fallback); }
inline int toInt(const JsonValueRef &value, int fallback) { return detail::toInt(value, fallback); }
inline QString toString(const JsonValueRef &value, const QString &fallback) { return detail::toString(value, fallback); }
QColor toColor(const JsonValueRef &value, const QColor &fallback);

template <typename Key>
bool readBool(const JsonObjectRef &o, const Key &key, bool fallback) { return toBool(o.value(key), fallback); }
template <typename Key>
double readDouble(const JsonObjectRef &o, const Key &key, double fallback) { return toDouble(o.value(key), fallback); }
template <typename Key>
int readInt(const JsonObjectRef &o, const Key &key, int fallback) { return toInt(o.value(key), fallback); }
template <typename Key>
QString readString(const JsonObjectRef &o, const Key &key, const QString &fallback = {})
{ return toString(o.value(key), fallback); }
template <typename Key>
QColor readColor(const JsonObjectRef &o, const Key &key, const QColor &fallback) { return toColor(o.value(key), fallback); }

} // namespace vg::json
