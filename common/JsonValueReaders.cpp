#include "common/JsonValueReaders.h"

#include <cmath>
#include <limits>

namespace vg::json {

bool toBool(const QJsonValue &value, bool fallback)
{
    switch (value.type()) {
    case QJsonValue::Bool:
        return value.toBool();
    case QJsonValue::String: {
        const QString text = value.toString().trimmed();
        return text.compare(QLatin1String("true"), Qt::CaseInsensitive) == 0 || text == QLatin1String("1");
    }
    case QJsonValue::Double: {
        const double d = value.toDouble();
        if (!std::isfinite(d))
            return d != 0.0;
        // The integer value decides: 0.4 truncates to 0 and reads false.
        return std::trunc(d) != 0.0;
    }
    default:
        return fallback;
    }
}

double toDouble(const QJsonValue &value, double fallback)
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

int toInt(const QJsonValue &value, int fallback)
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

QString toString(const QJsonValue &value, const QString &fallback)
{
    return value.isString() ? value.toString() : fallback;
}

QColor toColor(const QJsonValue &value, const QColor &fallback)
{
    if (!value.isString())
        return fallback;
    const QString text = value.toString().trimmed();
    QColor color = QColor::fromString(text);
    return color.isValid() ? color : fallback;
}

QString colorName(const QColor &color)
{
    return color.name(QColor::HexRgb);
}

QString colorNameWithAlpha(const QColor &color)
{
    return color.name(QColor::HexArgb);
}

} // namespace vg::json
