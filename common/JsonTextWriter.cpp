#include "common/JsonTextWriter.h"

#include "common/JsonValueReaders.h"

#include <QJsonDocument>

#include <charconv>
#include <cmath>
#include <cstring>

namespace vg::json {

namespace {
constexpr int kIndent = 4;
constexpr char kHex[] = "0123456789abcdef";
} // namespace

JsonTextWriter::JsonTextWriter(qsizetype expectedSize)
{
    m_buffer.resize(std::max<qsizetype>(expectedSize, 64));
    m_pos = m_buffer.data();
    m_limit = m_pos + m_buffer.size();
}

void JsonTextWriter::ensure(qsizetype extra)
{
    if (m_limit - m_pos >= extra)
        return;
    const qsizetype used = m_pos - m_buffer.constData();
    const qsizetype capacity = std::max(used + extra, m_buffer.size() * 2);
    m_buffer.resize(capacity);
    m_pos = m_buffer.data() + used;
    m_limit = m_buffer.data() + capacity;
}

void JsonTextWriter::putRaw(const char *data, qsizetype size)
{
    ensure(size);
    std::memcpy(m_pos, data, size_t(size));
    m_pos += size;
}

void JsonTextWriter::beginItem()
{
    if (m_afterKey) {
        m_afterKey = false;
        return;
    }
    if (m_depth == 0)
        return;
    ensure(2 + qsizetype(m_depth) * kIndent);
    if (!m_empty)
        put(',');
    put('\n');
    std::memset(m_pos, ' ', size_t(m_depth) * kIndent);
    m_pos += m_depth * kIndent;
    m_empty = false;
}

void JsonTextWriter::key(const char *name)
{
    beginItem();
    const qsizetype length = qsizetype(std::strlen(name));
    ensure(length + 4);
    put('"');
    std::memcpy(m_pos, name, size_t(length));
    m_pos += length;
    put('"');
    put(':');
    put(' ');
    m_afterKey = true;
}

void JsonTextWriter::open(char bracket)
{
    beginItem();
    ensure(1);
    put(bracket);
    ++m_depth;
    m_empty = true;
}

void JsonTextWriter::close(char bracket)
{
    --m_depth;
    ensure(2 + qsizetype(m_depth) * kIndent);
    if (!m_empty) {
        put('\n');
        std::memset(m_pos, ' ', size_t(m_depth) * kIndent);
        m_pos += m_depth * kIndent;
    }
    put(bracket);
    m_empty = false;
    if (m_depth == 0)
        put('\n');
}

void JsonTextWriter::beginObject() { open('{'); }
void JsonTextWriter::endObject() { close('}'); }
void JsonTextWriter::beginArray() { open('['); }
void JsonTextWriter::endArray() { close(']'); }

void JsonTextWriter::value(int v)
{
    beginItem();
    ensure(16);
    m_pos = std::to_chars(m_pos, m_limit, v).ptr;
}

void JsonTextWriter::value(bool v)
{
    beginItem();
    if (v)
        putRaw("true", 4);
    else
        putRaw("false", 5);
}

void JsonTextWriter::value(double v)
{
    beginItem();
    if (!std::isfinite(v)) {
        putRaw("null", 4);
        return;
    }
    ensure(32);
    m_pos = std::to_chars(m_pos, m_limit, v).ptr;
}

void JsonTextWriter::finiteValue(double v)
{
    value(std::isfinite(v) ? v : 0.0);
}

void JsonTextWriter::value(float v)
{
    beginItem();
    ensure(32);
    m_pos = std::to_chars(m_pos, m_limit, std::isfinite(v) ? v : 0.0f).ptr;
}

void JsonTextWriter::value(const QString &v)
{
    beginItem();
    putString(v);
}

void JsonTextWriter::value(const char *latin1)
{
    value(QString::fromLatin1(latin1));
}

void JsonTextWriter::value(const QColor &v)
{
    if (!v.isValid()) {
        value(colorName(v));
        return;
    }
    beginItem();
    ensure(9);
    put('"');
    put('#');
    for (const int channel : {v.red(), v.green(), v.blue()}) {
        put(kHex[(channel >> 4) & 15]);
        put(kHex[channel & 15]);
    }
    put('"');
}

void JsonTextWriter::valueWithAlpha(const QColor &v)
{
    value(colorNameWithAlpha(v));
}

void JsonTextWriter::putString(const QString &text)
{
    const qsizetype length = text.size();
    // Six bytes is the most one UTF-16 unit can take ("\uXXXX"), plus the quotes.
    ensure(length * 6 + 2);
    put('"');
    const char16_t *units = reinterpret_cast<const char16_t *>(text.constData());
    for (qsizetype i = 0; i < length; ++i) {
        const char16_t u = units[i];
        if (u < 0x80) {
            if (u >= 0x20 && u != '"' && u != '\\') {
                put(char(u));
                continue;
            }
            put('\\');
            switch (u) {
            case '"': put('"'); break;
            case '\\': put('\\'); break;
            case '\b': put('b'); break;
            case '\f': put('f'); break;
            case '\n': put('n'); break;
            case '\r': put('r'); break;
            case '\t': put('t'); break;
            default:
                put('u'); put('0'); put('0');
                put(kHex[u >> 4]);
                put(kHex[u & 15]);
            }
        } else if (u < 0x800) {
            put(char(0xc0 | (u >> 6)));
            put(char(0x80 | (u & 0x3f)));
        } else if (QChar::isHighSurrogate(u) && i + 1 < length && QChar::isLowSurrogate(units[i + 1])) {
            const char32_t code = QChar::surrogateToUcs4(u, units[++i]);
            put(char(0xf0 | (code >> 18)));
            put(char(0x80 | ((code >> 12) & 0x3f)));
            put(char(0x80 | ((code >> 6) & 0x3f)));
            put(char(0x80 | (code & 0x3f)));
        } else if (QChar::isSurrogate(u)) {
            // A lone surrogate has no UTF-8 form; the escape keeps it exactly.
            put('\\'); put('u');
            put(kHex[u >> 12]);
            put(kHex[(u >> 8) & 15]);
            put(kHex[(u >> 4) & 15]);
            put(kHex[u & 15]);
        } else {
            put(char(0xe0 | (u >> 12)));
            put(char(0x80 | ((u >> 6) & 0x3f)));
            put(char(0x80 | (u & 0x3f)));
        }
    }
    put('"');
}

QByteArray JsonTextWriter::take()
{
    m_buffer.truncate(m_pos - m_buffer.constData());
    QByteArray out = std::move(m_buffer);
    m_buffer = QByteArray();
    m_pos = m_limit = nullptr;
    return out;
}

QJsonObject jsonObjectFromWriter(const std::function<void(JsonTextWriter &)> &write)
{
    JsonTextWriter writer;
    write(writer);
    return QJsonDocument::fromJson(writer.take()).object();
}

} // namespace vg::json
