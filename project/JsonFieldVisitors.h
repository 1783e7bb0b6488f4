#pragma once

#include "common/JsonNodeTree.h"
#include "common/JsonTextWriter.h"
#include "common/JsonValueReaders.h"

#include <QJsonObject>

#include <cmath>
#include <limits>

// One visitor writes a record's fields and one reads them back through the tolerant
// readers; a record lists its keys once (visitXxx(record, visitor)), so writing and reading
// can never disagree on a key.
namespace vg::json {

// Scene records keep floats, written as the shortest text that reads back as the same float.
template <typename Object, typename Key>
float readFloat(const Object &o, const Key &key, float fallback)
{
    const double d = readDouble(o, key, fallback);
    constexpr double largest = double(std::numeric_limits<float>::max());
    // Up to half a float step above the largest float still rounds to it; the shortest
    // text written for that float ("3.4028235e+38") lies in that band.
    constexpr double halfStep = 0x1p103;
    if (!std::isfinite(d) || std::fabs(d) >= largest + halfStep)
        return fallback;
    if (std::fabs(d) > largest)
        return d > 0 ? float(largest) : -float(largest);
    return float(d);
}

struct FieldWriter {
    JsonTextWriter &w;
    void operator()(const char *key, const int &v) { w.field(key, v); }
    void operator()(const char *key, const bool &v) { w.field(key, v); }
    void operator()(const char *key, const float &v) { w.field(key, v); }
    // JSON has no infinity or NaN; a broken value is written as 0 rather than dropped.
    void operator()(const char *key, const double &v)
    {
        w.key(key);
        w.finiteValue(v);
    }
    void operator()(const char *key, const QString &v) { w.field(key, v); }
    void operator()(const char *key, const QColor &v) { w.field(key, v); }
};

// Reads from a QJsonObject or from a parsed tree's JsonObjectRef.
template <typename Object>
struct FieldReader {
    const Object &o;
    void operator()(const char *key, int &v) { v = readInt(o, QLatin1String(key), v); }
    void operator()(const char *key, bool &v) { v = readBool(o, QLatin1String(key), v); }
    void operator()(const char *key, float &v) { v = readFloat(o, QLatin1String(key), v); }
    void operator()(const char *key, double &v) { v = readDouble(o, QLatin1String(key), v); }
    void operator()(const char *key, QString &v) { v = readString(o, QLatin1String(key), v); }
    void operator()(const char *key, QColor &v) { v = readColor(o, QLatin1String(key), v); }
};
template <typename Object>
FieldReader(const Object &) -> FieldReader<Object>;

} // namespace vg::json
