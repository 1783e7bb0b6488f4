#pragma once

#include <QByteArray>
#include <QColor>
#include <QJsonObject>
#include <QString>

#include <functional>

// Writes indented JSON text straight into one growing buffer, the way settings files are
// laid out (four spaces a level, "key": value). Records write themselves through it, so a
// large project never exists as a document tree on its way to the file.
namespace vg::json {

class JsonTextWriter
{
public:
    explicit JsonTextWriter(qsizetype expectedSize = 4096);

    void beginObject();
    void endObject();
    void beginArray();
    void endArray();
    // The next value belongs to this key (ASCII, no escaping needed).
    void key(const char *name);

    void value(int v);
    void value(bool v);
    // JSON has no infinity or NaN: they are written as null, which readers take as missing.
    void value(double v);
    // The shortest text that reads back as the same float; non-finite floats become 0.
    void value(float v);
    void value(const QString &v);
    void value(const char *latin1);
    // "#rrggbb"
    void value(const QColor &v);
    void valueWithAlpha(const QColor &v);
    // A double written as 0 when it is not finite (scene records never write null).
    void finiteValue(double v);

    template <typename T>
    void field(const char *name, const T &v)
    {
        key(name);
        value(v);
    }

    // The text so far; complete once every object and array is closed.
    QByteArray take();

private:
    void beginItem();
    void open(char bracket);
    void close(char bracket);
    void ensure(qsizetype extra);
    void put(char c) { *m_pos++ = c; }
    void putRaw(const char *data, qsizetype size);
    void putString(const QString &text);

    QByteArray m_buffer;
    char *m_pos = nullptr;
    char *m_limit = nullptr;
    int m_depth = 0;
    bool m_afterKey = false;
    bool m_empty = true;   // the innermost open container has no item yet
};

// The document form of what `write` produces, for callers that want a QJsonObject of a
// record (clipboard, tests): the text is the one serialisation, the object is read from it.
QJsonObject jsonObjectFromWriter(const std::function<void(JsonTextWriter &)> &write);

} // namespace vg::json
