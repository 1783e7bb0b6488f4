#include "project/JsonFieldVisitors.h"

#include <charconv>
#include <cmath>
#include <limits>

namespace vg::json {

QJsonValue floatValue(float value)
{
    if (!std::isfinite(value))
        return 0.0;
    char buffer[32];
    const auto result = std::to_chars(buffer, buffer + sizeof(buffer), value);
    return QByteArray(buffer, int(result.ptr - buffer)).toDouble();
}

float readFloat(const QJsonObject &o, const QString &key, float fallback)
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

void FieldWriter::operator()(const char *key, const double &v)
{
    // JSON has no infinity or NaN; a broken value is written as 0 rather than dropped.
    o.insert(QLatin1String(key), std::isfinite(v) ? v : 0.0);
}

} // namespace vg::json
