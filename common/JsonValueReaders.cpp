#include "common/JsonValueReaders.h"

namespace vg::json {

QString colorName(const QColor &color)
{
    return color.name(QColor::HexRgb);
}

QString colorNameWithAlpha(const QColor &color)
{
    return color.name(QColor::HexArgb);
}

} // namespace vg::json
