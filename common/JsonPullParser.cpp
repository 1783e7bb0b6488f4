#include "common/JsonPullParser.h"

#include <QByteArray>

#include <charconv>
#include <cstring>

namespace vg::json {

namespace {

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool isHex(char c)
{
    return isDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

// Length of the well-formed UTF-8 sequence at p (lead byte >= 0x80), or 0. Overlong forms,
// surrogates, code points above U+10FFFF and cut-off sequences are refused.
int utf8SequenceLength(const uchar *p, const uchar *end)
{
    const uchar b = *p;
    int need;
    char32_t code;
    char32_t minimum;
    if (b <= 0xc1)
        return 0;
    if (b < 0xe0) {
        need = 2;
        code = b & 0x1f;
        minimum = 0x80;
    } else if (b < 0xf0) {
        need = 3;
        code = b & 0x0f;
        minimum = 0x800;
    } else if (b < 0xf5) {
        need = 4;
        code = b & 0x07;
        minimum = 0x10000;
    } else {
        return 0;
    }
    if (end - p < need)
        return 0;
    for (int i = 1; i < need; ++i) {
        if ((p[i] & 0xc0) != 0x80)
            return 0;
        code = (code << 6) | (p[i] & 0x3f);
    }
    if (code < minimum || (code >= 0xd800 && code <= 0xdfff) || code > 0x10ffff)
        return 0;
    return need;
}

} // namespace

bool JsonKeyText::equals(const char *key) const
{
    if (escaped)
        return decodeJsonString(text, length, true) == QLatin1String(key);
    const size_t size = std::strlen(key);
    return size_t(length) == size && std::memcmp(text, key, size) == 0;
}

JsonPullParser::JsonPullParser(const char *begin, const char *end) : m_begin(begin), m_pos(begin), m_end(end) {}

QString JsonPullParser::errorString() const
{
    QJsonParseError error;
    error.error = m_error;
    return error.errorString();
}

bool JsonPullParser::eatSpace()
{
    while (m_pos < m_end) {
        const char c = *m_pos;
        if (c != ' ' && c != '\t' && c != '\n' && c != '\r')
            break;
        ++m_pos;
    }
    return m_pos < m_end;
}

char JsonPullParser::nextToken()
{
    if (!eatSpace())
        return 0;
    const char token = *m_pos++;
    switch (token) {
    case '[': case '{': case ':': case ',': case ']': case '}': case '"':
        return token;
    default:
        return 0;
    }
}

char JsonPullParser::peek()
{
    return eatSpace() ? *m_pos : 0;
}

bool JsonPullParser::enter()
{
    if (++m_depth > kMaxNesting)
        return fail(QJsonParseError::DeepNesting);
    return true;
}

char JsonPullParser::beginDocument()
{
    static const char bom[3] = {char(0xef), char(0xbb), char(0xbf)};
    if (m_end - m_pos > 3 && std::memcmp(m_pos, bom, 3) == 0)
        m_pos += 3;
    const char token = nextToken();
    if (token != '{' && token != '[') {
        fail(QJsonParseError::IllegalValue);
        return 0;
    }
    return token;
}

bool JsonPullParser::endDocument()
{
    if (eatSpace())
        return fail(QJsonParseError::GarbageAtEnd);
    return true;
}

bool JsonPullParser::parseValue(JsonTree *tree)
{
    if (tree && tree->isFull())
        return fail(QJsonParseError::DocumentTooLarge);
    const char first = *m_pos++;
    switch (first) {
    case 'n':
    case 't':
    case 'f': {
        const char *rest = first == 'n' ? "ull" : first == 't' ? "rue" : "alse";
        const qsizetype length = first == 'f' ? 4 : 3;
        // One byte more than the word must remain, as in the document reader.
        if (m_end - m_pos < length + 1 || std::memcmp(m_pos, rest, size_t(length)) != 0)
            return fail(QJsonParseError::IllegalValue);
        m_pos += length;
        if (tree)
            tree->addScalar(first == 'n' ? JsonNodeType::Null : JsonNodeType::Bool, first == 't');
        return true;
    }
    case '"':
        return parseString(tree, false, nullptr);
    case '[': {
        const quint32 index = tree ? tree->beginContainer(JsonNodeType::Array) : 0;
        if (!parseElements([&] { return parseValue(tree); }))
            return false;
        if (tree)
            tree->endContainer(index);
        return true;
    }
    case '{': {
        const quint32 index = tree ? tree->beginContainer(JsonNodeType::Object) : 0;
        const bool ok = parseMembers([&](const JsonKeyText &key) {
            if (tree)
                tree->addKey(key.text, key.length, key.escaped);
            return parseValue(tree);
        });
        if (!ok)
            return false;
        if (tree)
            tree->endContainer(index);
        return true;
    }
    case ',':
        return fail(QJsonParseError::IllegalValue);
    case '}':
    case ']':
        return fail(QJsonParseError::MissingObject);
    default:
        --m_pos;
        return parseNumber(tree);
    }
}

bool JsonPullParser::parseString(JsonTree *tree, bool isKey, JsonKeyText *key)
{
    const char *start = m_pos;
    bool escaped = false;
    while (m_pos < m_end) {
        const char c = *m_pos;
        if (c == '"')
            break;
        if (c == '\\') {
            // The document reader checks the end once at the first escape, as it would at
            // a closing quote, before it reads the escapes.
            if (!escaped && m_end - m_pos <= 1)
                return fail(QJsonParseError::UnterminatedString);
            escaped = true;
            if (++m_pos >= m_end)
                return fail(QJsonParseError::IllegalEscapeSequence);
            if (*m_pos++ == 'u') {
                if (m_end - m_pos < 4)
                    return fail(QJsonParseError::IllegalEscapeSequence);
                for (int i = 0; i < 4; ++i, ++m_pos) {
                    if (!isHex(*m_pos))
                        return fail(QJsonParseError::IllegalEscapeSequence);
                }
            }
            continue;
        }
        if (uchar(c) < 0x80) {
            ++m_pos;
            continue;
        }
        const int length = utf8SequenceLength(reinterpret_cast<const uchar *>(m_pos),
                                               reinterpret_cast<const uchar *>(m_end));
        if (length == 0)
            return fail(QJsonParseError::IllegalUTF8String);
        m_pos += length;
    }
    // The closing quote may not be the last byte: a document always closes after it.
    if (m_end - m_pos <= 1)
        return fail(QJsonParseError::UnterminatedString);
    const qsizetype length = m_pos - start;
    ++m_pos;
    if (isKey) {
        *key = {start, length, escaped};
    } else if (tree) {
        tree->addString(start, length, escaped);
    }
    return true;
}

bool JsonPullParser::parseNumber(JsonTree *tree)
{
    const char *start = m_pos;
    bool isInt = true;
    bool strict = true;  // the form std::from_chars and JSON agree on
    if (m_pos < m_end && *m_pos == '-')
        ++m_pos;
    const char *digits = m_pos;
    if (m_pos < m_end && *m_pos == '0') {
        ++m_pos;
    } else {
        while (m_pos < m_end && isDigit(*m_pos))
            ++m_pos;
    }
    strict = m_pos > digits;
    if (m_pos < m_end && *m_pos == '.') {
        const char *fraction = ++m_pos;
        while (m_pos < m_end && isDigit(*m_pos)) {
            isInt = isInt && *m_pos == '0';
            ++m_pos;
        }
        strict = strict && m_pos > fraction;
    }
    if (m_pos < m_end && (*m_pos == 'e' || *m_pos == 'E')) {
        isInt = false;
        ++m_pos;
        if (m_pos < m_end && (*m_pos == '-' || *m_pos == '+'))
            ++m_pos;
        const char *exponent = m_pos;
        while (m_pos < m_end && isDigit(*m_pos))
            ++m_pos;
        strict = strict && m_pos > exponent;
    }
    if (m_pos >= m_end)
        return fail(QJsonParseError::TerminationByNumber);

    double d = 0;
    bool ok = false;
    if (strict) {
        const auto result = std::from_chars(start, m_pos, d);
        ok = result.ec == std::errc() && result.ptr == m_pos;
    }
    if (!ok) {
        // Forms outside the strict grammar, and out-of-range values, are decided exactly as
        // the document reader decides them.
        const QByteArray number = QByteArray::fromRawData(start, m_pos - start);
        if (isInt) {
            const qlonglong n = number.toLongLong(&ok);
            d = double(n);
        }
        if (!ok) {
            d = number.toDouble(&ok);
            if (!ok)
                return fail(QJsonParseError::IllegalNumber);
        }
    }
    // Whole values are kept as integers there, which have no negative zero.
    if (d == 0)
        d = 0.0;
    if (tree)
        tree->addScalar(JsonNodeType::Number, false, d);
    return true;
}

} // namespace vg::json
