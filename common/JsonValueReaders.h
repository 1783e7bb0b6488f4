#pragma once

#include <QColor>
#include <QJsonObject>
#include <QJsonValue>
#include <QString>

// The tolerant readers every settings file goes through: a missing key or one of
// the wrong type leaves the field at its default, so one bad key never fails a load.
namespace vg::json {

bool toBool(const QJsonValue &value, bool fallback);
double toDouble(const QJsonValue &value, double fallback);
int toInt(const QJsonValue &value, int fallback);
QString toString(const QJsonValue &value, const QString &fallback);
QColor toColor(const QJsonValue &value, const QColor &fallback);

inline bool readBool(const QJsonObject &o, const QString &key, bool fallback)
{ return toBool(o.value(key), fallback); }
inline double readDouble(const QJsonObject &o, const QString &key, double fallback)
{ return toDouble(o.value(key), fallback); }
inline int readInt(const QJsonObject &o, const QString &key, int fallback)
{ return toInt(o.value(key), fallback); }
inline QString readString(const QJsonObject &o, const QString &key, const QString &fallback = {})
{ return toString(o.value(key), fallback); }
inline QColor readColor(const QJsonObject &o, const QString &key, const QColor &fallback)
{ return toColor(o.value(key), fallback); }

// "#rrggbb", lower-case, no alpha.
QString colorName(const QColor &color);
// "#aarrggbb" where alpha matters.
QString colorNameWithAlpha(const QColor &color);

} // namespace vg::json
