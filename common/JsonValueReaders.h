#pragma once

#include <QColor>
#include <QJsonObject>
#include <QJsonValue>
#include <QString>

#include <cmath>
#include <limits>

// The tolerant readers every settings file goes through: a missing key or one of
// the wrong type leaves the field at its default, so one bad key never fails a load.
namespace vg::json {

// The rules, written once for any value type with QJsonValue's interface (QJsonValue and
// the parsed-tree values of JsonNodeTree.h).
namespace detail {

template <typename Value>
bool toBool(const Value &value, bool fallback)
{
    if (value.isBool())
        return value.toBool();
    if (value.isString()) {
        const QString text = value.toString().trimmed();
        return text.compare(QLatin1String("true"), Qt::CaseInsensitive) == 0 || text == QLatin1String("1");
    }
    if (value.isDouble()) {
        const double d = value.toDouble();
        if (!std::isfinite(d))
            return d != 0.0;
        // The integer value decides: 0.4 truncates to 0 and reads false.
        return std::trunc(d) != 0.0;
    }
    return fallback;
}

template <typename Value>
double toDouble(const Value &value, double fallback)
{
    if (value.isDouble())
        return value.toDouble();
    if (value.isString()) {
        bool ok = false;
        const double d = value.toString().trimmed().toDouble(&ok);
        // "inf" and "nan" parse but are not decimal numbers, and JSON cannot write them back.
        return ok && std::isfinite(d) ? d : fallback;
    }
    return fallback;
}

template <typename Value>
int toInt(const Value &value, int fallback)
{
    if (value.isDouble()) {
        const double d = value.toDouble();
        if (!std::isfinite(d) || std::trunc(d) != d)
            return fallback;
        if (d < double(std::numeric_limits<int>::min()) || d > double(std::numeric_limits<int>::max()))
            return fallback;
        return int(d);
    }
    if (value.isString()) {
        bool ok = false;
        const int i = value.toString().trimmed().toInt(&ok, 10);
        return ok ? i : fallback;
    }
    return fallback;
}

template <typename Value>
QString toString(const Value &value, const QString &fallback)
{
    return value.isString() ? value.toString() : fallback;
}

template <typename Value>
QColor toColor(const Value &value, const QColor &fallback)
{
    if (!value.isString())
        return fallback;
    const QColor color = QColor::fromString(value.toString().trimmed());
    return color.isValid() ? color : fallback;
}

} // namespace detail

inline bool toBool(const QJsonValue &value, bool fallback) { return detail::toBool(value, fallback); }
inline double toDouble(const QJsonValue &value, double fallback) { return detail::toDouble(value, fallback); }
inline int toInt(const QJsonValue &value, int fallback) { return detail::toInt(value, fallback); }
inline QString toString(const QJsonValue &value, const QString &fallback) { return detail::toString(value, fallback); }
inline QColor toColor(const QJsonValue &value, const QColor &fallback) { return detail::toColor(value, fallback); }

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
