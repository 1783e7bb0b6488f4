#pragma once

#include "common/JsonValueReaders.h"

#include <QJsonObject>

// One visitor writes a record's fields and one reads them back through the tolerant
// readers; a record lists its keys once (visitXxx(record, visitor)), so writing and reading
// can never disagree on a key.
namespace vg::json {

// Scene records keep floats; the shortest text that reads back as the same float keeps
// files readable ("0.65", not "0.6499999761581421").
QJsonValue floatValue(float value);
float readFloat(const QJsonObject &o, const QString &key, float fallback);

struct FieldWriter {
    QJsonObject &o;
    void operator()(const char *key, const int &v) { o.insert(QLatin1String(key), v); }
    void operator()(const char *key, const bool &v) { o.insert(QLatin1String(key), v); }
    void operator()(const char *key, const float &v) { o.insert(QLatin1String(key), floatValue(v)); }
    void operator()(const char *key, const double &v);
    void operator()(const char *key, const QString &v) { o.insert(QLatin1String(key), v); }
    void operator()(const char *key, const QColor &v) { o.insert(QLatin1String(key), colorName(v)); }
};

struct FieldReader {
    const QJsonObject &o;
    void operator()(const char *key, int &v) { v = readInt(o, QLatin1String(key), v); }
    void operator()(const char *key, bool &v) { v = readBool(o, QLatin1String(key), v); }
    void operator()(const char *key, float &v) { v = readFloat(o, QLatin1String(key), v); }
    void operator()(const char *key, double &v) { v = readDouble(o, QLatin1String(key), v); }
    void operator()(const char *key, QString &v) { v = readString(o, QLatin1String(key), v); }
    void operator()(const char *key, QColor &v) { v = readColor(o, QLatin1String(key), v); }
};

} // namespace vg::json
