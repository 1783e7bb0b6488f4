#include "common/JsonNodeTree.h"

#include <cstring>

namespace vg::json {

namespace {

quint32 keyHash(const char *text, qsizetype length)
{
    // FNV-1a: keys are short and this runs once per key of every object.
    quint32 hash = 2166136261u;
    for (qsizetype i = 0; i < length; ++i)
        hash = (hash ^ quint8(text[i])) * 16777619u;
    return hash;
}

int hexDigit(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return -1;
}

} // namespace

void JsonTree::clear()
{
    m_nodes.clear();
    m_slots.clear();
    m_open.clear();
    m_ownedText.clear();
}

void JsonTree::countChild()
{
    if (m_open.empty())
        return;
    JsonNode &parent = m_nodes[m_open.back()];
    // Members are counted at their keys, so an object's values do not count twice.
    if (parent.type == JsonNodeType::Array)
        ++parent.count;
}

quint32 JsonTree::beginContainer(JsonNodeType type)
{
    countChild();
    const quint32 index = quint32(m_nodes.size());
    JsonNode node;
    node.type = type;
    m_nodes.push_back(node);
    m_open.push_back(index);
    return index;
}

void JsonTree::endContainer(quint32 index)
{
    m_open.pop_back();
    m_nodes[index].end = quint32(m_nodes.size());
    if (m_nodes[index].type == JsonNodeType::Object)
        buildKeyTable(index);
}

void JsonTree::addKey(const char *text, qsizetype length, bool escaped)
{
    ++m_nodes[m_open.back()].count;
    JsonNode node;
    node.type = JsonNodeType::Key;
    if (escaped) {
        // Keys are compared as bytes, so an escaped key is kept decoded.
        m_ownedText.push_back(decodeJsonString(text, length, true).toStdString());
        text = m_ownedText.back().data();
        length = qsizetype(m_ownedText.back().size());
    } else if (m_copyText) {
        text = keep(text, length);
    }
    node.text = text;
    node.length = quint32(length);
    node.end = quint32(m_nodes.size() + 1);
    m_nodes.push_back(node);
}

void JsonTree::addScalar(JsonNodeType type, bool flag, double number)
{
    countChild();
    JsonNode node;
    node.type = type;
    node.flag = flag;
    node.number = number;
    node.end = quint32(m_nodes.size() + 1);
    m_nodes.push_back(node);
}

void JsonTree::addString(const char *text, qsizetype length, bool escaped)
{
    countChild();
    JsonNode node;
    node.type = JsonNodeType::String;
    node.text = m_copyText ? keep(text, length) : text;
    node.length = quint32(length);
    node.flag = escaped;
    node.end = quint32(m_nodes.size() + 1);
    m_nodes.push_back(node);
}

const char *JsonTree::keep(const char *text, qsizetype length)
{
    // A deque never moves its elements, so the pointer stays valid as the tree grows.
    m_ownedText.emplace_back(text, size_t(length));
    return m_ownedText.back().data();
}

void JsonTree::buildKeyTable(quint32 object)
{
    JsonNode &o = m_nodes[object];
    if (o.count == 0)
        return;
    quint32 size = 4;
    while (size < o.count * 2)
        size *= 2;
    o.table = quint32(m_slots.size());
    m_slots.resize(m_slots.size() + size + 1, 0);
    m_slots[o.table] = size;
    quint32 *keyTable = m_slots.data() + o.table + 1;
    const quint32 end = o.end;
    for (quint32 k = object + 1; k < end; k = m_nodes[k + 1].end) {
        const JsonNode &key = m_nodes[k];
        quint32 slot = keyHash(key.text, key.length) & (size - 1);
        while (keyTable[slot] != 0) {
            const JsonNode &other = m_nodes[keyTable[slot] - 1];
            if (other.length == key.length && std::memcmp(other.text, key.text, key.length) == 0)
                break;  // a repeated key: the later one wins, as in QJsonObject
            slot = (slot + 1) & (size - 1);
        }
        keyTable[slot] = k + 1;
    }
}

quint32 JsonTree::find(quint32 object, const char *key, qsizetype length) const
{
    const JsonNode &o = m_nodes[object];
    if (o.type != JsonNodeType::Object || o.count == 0)
        return kNone;
    const quint32 size = m_slots[o.table];
    const quint32 *keyTable = m_slots.data() + o.table + 1;
    quint32 slot = keyHash(key, length) & (size - 1);
    while (keyTable[slot] != 0) {
        const JsonNode &candidate = m_nodes[keyTable[slot] - 1];
        if (qsizetype(candidate.length) == length && std::memcmp(candidate.text, key, size_t(length)) == 0)
            return keyTable[slot];  // the value follows its key
        slot = (slot + 1) & (size - 1);
    }
    return kNone;
}

QString decodeJsonString(const char *text, qsizetype length, bool escaped)
{
    if (!escaped)
        return QString::fromUtf8(text, length);
    QString out;
    out.reserve(length);
    const char *p = text;
    const char *end = text + length;
    while (p < end) {
        const char *run = p;
        while (p < end && *p != '\\')
            ++p;
        if (p > run)
            out.append(QString::fromUtf8(run, p - run));
        if (p >= end)
            break;
        // The parser has checked every escape; an unknown letter stands for itself.
        const char escape = p[1];
        p += 2;
        switch (escape) {
        case 'b': out.append(QChar(0x8)); break;
        case 'f': out.append(QChar(0xc)); break;
        case 'n': out.append(QChar(0xa)); break;
        case 'r': out.append(QChar(0xd)); break;
        case 't': out.append(QChar(0x9)); break;
        case 'u': {
            char16_t unit = 0;
            for (int i = 0; i < 4 && p < end; ++i, ++p)
                unit = char16_t((unit << 4) | hexDigit(*p));
            // Each escape is one UTF-16 unit, so a pair of escapes forms one character
            // and a lone surrogate stays as it was written.
            out.append(QChar(unit));
            break;
        }
        default:
            out.append(QChar(uchar(escape)));
        }
    }
    return out;
}

QString JsonValueRef::toString() const
{
    if (!isString())
        return QString();
    const JsonNode &n = node();
    return decodeJsonString(n.text, n.length, n.flag);
}

JsonArrayRef JsonValueRef::toArray() const
{
    return isArray() ? JsonArrayRef(m_tree, m_index) : JsonArrayRef();
}

JsonObjectRef JsonValueRef::toObject() const
{
    return isObject() ? JsonObjectRef(m_tree, m_index) : JsonObjectRef();
}

bool JsonValueRef::plainHexColor(QColor *color) const
{
    if (!isString())
        return false;
    const JsonNode &n = node();
    if (n.length != 7 || n.text[0] != '#')
        return false;
    int channels[3];
    for (int c = 0; c < 3; ++c) {
        const int high = hexDigit(n.text[1 + 2 * c]);
        const int low = hexDigit(n.text[2 + 2 * c]);
        if (high < 0 || low < 0)
            return false;
        channels[c] = high * 16 + low;
    }
    *color = QColor(channels[0], channels[1], channels[2]);
    return true;
}

JsonValueRef JsonObjectRef::value(QLatin1String key) const
{
    if (!m_tree)
        return {};
    return {m_tree, m_tree->find(m_index, key.data(), key.size())};
}

JsonValueRef JsonObjectRef::value(const QString &key) const
{
    if (!m_tree)
        return {};
    const QByteArray utf8 = key.toUtf8();
    return {m_tree, m_tree->find(m_index, utf8.constData(), utf8.size())};
}

QColor toColor(const JsonValueRef &value, const QColor &fallback)
{
    QColor color;
    if (value.plainHexColor(&color))
        return color;
    return detail::toColor(value, fallback);
}

} // namespace vg::json
