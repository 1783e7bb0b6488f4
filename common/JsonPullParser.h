#pragma once

#include "common/JsonNodeTree.h"

#include <QJsonParseError>

// A JSON parser that walks the text in place: a caller streams the members of an object
// or the elements of an array and reads each record into a small JsonTree as it comes, so
// a large file never exists twice in memory. It accepts and refuses exactly what
// QJsonDocument::fromJson does and reports the same error kinds, nesting included. A single
// tree larger than JsonTree::kMaxNodes is refused as "too large document".
namespace vg::json {

// A member name as written in the text.
struct JsonKeyText {
    const char *text = nullptr;
    qsizetype length = 0;
    bool escaped = false;
    bool equals(const char *key) const;
};

class JsonPullParser
{
public:
    // The same bound as the document reader's.
    static constexpr int kMaxNesting = 1024;

    JsonPullParser(const char *begin, const char *end);

    QJsonParseError::ParseError error() const { return m_error; }
    // The document reader's text for the error ("unterminated object", ...).
    QString errorString() const;
    qsizetype offset() const { return m_pos - m_begin; }
    const char *position() const { return m_pos; }

    // The document's opening: a byte order mark is skipped; returns '{', '[' (consumed) or 0
    // with the error set.
    char beginDocument();
    // After the root value: only white space may follow.
    bool endDocument();

    // The next byte that is not white space, not consumed; 0 at the end.
    char peek();
    // Skips the next byte (the bracket a caller streams after peek()).
    void advance() { ++m_pos; }

    // Parses the value at the cursor into `tree` (null: checked and skipped).
    bool parseValue(JsonTree *tree);

    // Streams the members of an object whose '{' is consumed: onMember(const JsonKeyText &)
    // is called with the cursor on the value and must consume it (parseValue or a nested
    // stream) and return whether that succeeded.
    template <typename OnMember>
    bool parseMembers(OnMember &&onMember);
    // The same for the elements of an array whose '[' is consumed: onElement().
    template <typename OnElement>
    bool parseElements(OnElement &&onElement);

    bool fail(QJsonParseError::ParseError error)
    {
        m_error = error;
        return false;
    }

private:
    bool eatSpace();
    char nextToken();
    bool parseString(JsonTree *tree, bool isKey, JsonKeyText *key);
    bool parseNumber(JsonTree *tree);
    bool enter();
    void leave() { --m_depth; }

    const char *m_begin;
    const char *m_pos;
    const char *m_end;
    int m_depth = 0;
    QJsonParseError::ParseError m_error = QJsonParseError::NoError;
};

template <typename OnMember>
bool JsonPullParser::parseMembers(OnMember &&onMember)
{
    if (!enter())
        return false;
    char token = nextToken();
    while (token == '"') {
        JsonKeyText key;
        if (!parseString(nullptr, true, &key))
            return false;
        if (nextToken() != ':')
            return fail(QJsonParseError::MissingNameSeparator);
        if (!eatSpace())
            return fail(QJsonParseError::UnterminatedObject);
        if (!onMember(key))
            return false;
        token = nextToken();
        if (token != ',')
            break;
        token = nextToken();
        if (token == '}')
            return fail(QJsonParseError::MissingObject);
    }
    if (token != '}')
        return fail(QJsonParseError::UnterminatedObject);
    leave();
    return true;
}

template <typename OnElement>
bool JsonPullParser::parseElements(OnElement &&onElement)
{
    if (!enter())
        return false;
    if (!eatSpace())
        return fail(QJsonParseError::UnterminatedArray);
    if (*m_pos == ']') {
        ++m_pos;
    } else {
        while (true) {
            if (!eatSpace())
                return fail(QJsonParseError::UnterminatedArray);
            if (!onElement())
                return false;
            const char token = nextToken();
            if (token == ']')
                break;
            if (token != ',')
                return fail(eatSpace() ? QJsonParseError::MissingValueSeparator
                                       : QJsonParseError::UnterminatedArray);
        }
    }
    leave();
    return true;
}

} // namespace vg::json
