#include "guide/GuideSettings.h"

#include "common/JsonValueReaders.h"

#include <QJsonArray>
#include <QRandomGenerator>

#include <algorithm>
#include <cmath>

using namespace vg::json;

int clampGuidePattern(int value)
{
    return std::clamp(value, 0, 1);
}

int clampGuideNumberFormat(int value)
{
    const int clamped = std::clamp(value, 0, 5);
    return (clamped == 1 || clamped == 4) ? 0 : clamped;
}

// ---------------------------------------------------------------- layers

QJsonObject guideLayerObjectToJson(const GuideLayerObject &layer)
{
    QJsonObject o;
    o.insert(QStringLiteral("type"), layer.type);
    o.insert(QStringLiteral("file_path"), layer.filePath);
    o.insert(QStringLiteral("name"), layer.name);
    o.insert(QStringLiteral("center_x"), layer.centerX);
    o.insert(QStringLiteral("center_y"), layer.centerY);
    o.insert(QStringLiteral("width"), layer.width);
    o.insert(QStringLiteral("height"), layer.height);
    o.insert(QStringLiteral("base_width"), layer.baseWidth);
    o.insert(QStringLiteral("base_height"), layer.baseHeight);
    o.insert(QStringLiteral("rotation_degrees"), layer.rotationDegrees);
    o.insert(QStringLiteral("opacity"), layer.opacity);
    o.insert(QStringLiteral("corner_radius"), layer.cornerRadius);
    o.insert(QStringLiteral("mask_shape"), layer.maskShape);
    o.insert(QStringLiteral("fill_color"), colorNameWithAlpha(layer.fillColor));
    o.insert(QStringLiteral("mask_inverse"), layer.maskInverse);
    o.insert(QStringLiteral("mask_wireframe"), layer.maskWireframe);
    o.insert(QStringLiteral("mask_u_lines"), layer.maskULines);
    o.insert(QStringLiteral("mask_v_lines"), layer.maskVLines);
    o.insert(QStringLiteral("mask_wireframe_thickness"), layer.maskWireframeThickness);
    o.insert(QStringLiteral("crop_left"), layer.cropLeft);
    o.insert(QStringLiteral("crop_top"), layer.cropTop);
    o.insert(QStringLiteral("crop_right"), layer.cropRight);
    o.insert(QStringLiteral("crop_bottom"), layer.cropBottom);
    o.insert(QStringLiteral("visible"), layer.visible);
    return o;
}

GuideLayerObject guideLayerObjectFromJson(const QJsonObject &o)
{
    GuideLayerObject l;
    l.type = readString(o, QStringLiteral("type"), l.type);
    l.filePath = readString(o, QStringLiteral("file_path"), l.filePath);
    l.name = readString(o, QStringLiteral("name"), l.name);
    l.centerX = readDouble(o, QStringLiteral("center_x"), l.centerX);
    l.centerY = readDouble(o, QStringLiteral("center_y"), l.centerY);
    l.width = readDouble(o, QStringLiteral("width"), l.width);
    l.height = readDouble(o, QStringLiteral("height"), l.height);
    l.baseWidth = readDouble(o, QStringLiteral("base_width"), l.baseWidth);
    l.baseHeight = readDouble(o, QStringLiteral("base_height"), l.baseHeight);
    l.rotationDegrees = readDouble(o, QStringLiteral("rotation_degrees"), l.rotationDegrees);
    l.opacity = readDouble(o, QStringLiteral("opacity"), l.opacity);
    l.cornerRadius = readDouble(o, QStringLiteral("corner_radius"), l.cornerRadius);
    const QString shape = readString(o, QStringLiteral("mask_shape"), l.maskShape).trimmed();
    l.maskShape = shape.compare(QLatin1String("circle"), Qt::CaseInsensitive) == 0 ? QStringLiteral("circle")
                                                                                   : QStringLiteral("rectangle");
    l.fillColor = readColor(o, QStringLiteral("fill_color"), l.fillColor);
    l.maskInverse = readBool(o, QStringLiteral("mask_inverse"), l.maskInverse);
    l.maskWireframe = readBool(o, QStringLiteral("mask_wireframe"), l.maskWireframe);
    l.maskULines = readInt(o, QStringLiteral("mask_u_lines"), l.maskULines);
    l.maskVLines = readInt(o, QStringLiteral("mask_v_lines"), l.maskVLines);
    l.maskWireframeThickness = readDouble(o, QStringLiteral("mask_wireframe_thickness"), l.maskWireframeThickness);
    l.cropLeft = readDouble(o, QStringLiteral("crop_left"), l.cropLeft);
    l.cropTop = readDouble(o, QStringLiteral("crop_top"), l.cropTop);
    l.cropRight = readDouble(o, QStringLiteral("crop_right"), l.cropRight);
    l.cropBottom = readDouble(o, QStringLiteral("crop_bottom"), l.cropBottom);
    l.visible = readBool(o, QStringLiteral("visible"), l.visible);
    return l;
}

// ---------------------------------------------------------------- guide

namespace {

QJsonArray colorsToJson(const QVector<QColor> &colors)
{
    QJsonArray array;
    for (const QColor &c : colors)
        array.append(colorName(c));
    return array;
}

// Reads "colors" when it is an array; entries that are not colours are skipped.
void readColors(const QJsonObject &o, QVector<QColor> *colors)
{
    const QJsonValue value = o.value(QStringLiteral("colors"));
    if (!value.isArray())
        return;
    const QJsonArray array = value.toArray();
    QVector<QColor> result;
    result.reserve(array.size());
    for (const QJsonValue &entry : array) {
        const QColor c = toColor(entry, QColor());
        if (c.isValid())
            result.append(c);
    }
    *colors = result;
}

void readBoolKeys(const QJsonObject &o, std::initializer_list<const char *> keys, bool *field)
{
    for (const char *key : keys)
        *field = readBool(o, QLatin1String(key), *field);
}

void readIntKeys(const QJsonObject &o, std::initializer_list<const char *> keys, int *field)
{
    for (const char *key : keys)
        *field = readInt(o, QLatin1String(key), *field);
}

void readDoubleKeys(const QJsonObject &o, std::initializer_list<const char *> keys, double *field)
{
    for (const char *key : keys)
        *field = readDouble(o, QLatin1String(key), *field);
}

void readStringKeys(const QJsonObject &o, std::initializer_list<const char *> keys, QString *field)
{
    for (const char *key : keys)
        *field = readString(o, QLatin1String(key), *field);
}

// Keys shared by the full guide object and the style subset. Older keys come first in
// each list so that the current key wins when both are present.
void readStyleKeys(const QJsonObject &o, GuideSettings *s)
{
    readIntKeys(o, {"guide_pattern"}, &s->guidePattern);
    readIntKeys(o, {"number_text_format"}, &s->numberTextFormat);
    readDoubleKeys(o, {"fontsize", "font_scale"}, &s->fontScale);
    readBoolKeys(o, {"real_square"}, &s->realSquare);
    readIntKeys(o, {"real_square_width"}, &s->realSquareWidth);
    readBoolKeys(o, {"inverse_x"}, &s->inverseX);
    readBoolKeys(o, {"inverse_y"}, &s->inverseY);
    readBoolKeys(o, {"display_real"}, &s->displayReal);
    readBoolKeys(o, {"display_res", "display_resolution"}, &s->displayResolution);
    readBoolKeys(o, {"display_final_resolution_info"}, &s->displayFinalResolutionInfo);
    readBoolKeys(o, {"guide_image_show_width_dimension"}, &s->showWidthDimension);
    readBoolKeys(o, {"guide_image_show_height_dimension"}, &s->showHeightDimension);
    readBoolKeys(o, {"display_outline"}, &s->displayOutline);
    readBoolKeys(o, {"display_explain"}, &s->displayExplain);
    readBoolKeys(o, {"display_square_status"}, &s->displaySquareStatus);
    readBoolKeys(o, {"display_logo"}, &s->displayLogo);
    readBoolKeys(o, {"display_centerline"}, &s->displayCenterline);
    readBoolKeys(o, {"display_crossline"}, &s->displayCrossline);
    readBoolKeys(o, {"display_innerline"}, &s->displayInnerline);
    readBoolKeys(o, {"display_cell_boundary"}, &s->displayCellBoundary);
    readBoolKeys(o, {"display_number"}, &s->displayNumber);
    readBoolKeys(o, {"display_circle"}, &s->displayCircle);
    readBoolKeys(o, {"flip_h"}, &s->flipH);
    readBoolKeys(o, {"rotate"}, &s->rotate);
    readStringKeys(o, {"logo_path"}, &s->logoPath);
    readDoubleKeys(o, {"logo_opacity"}, &s->logoOpacity);
    readColors(o, &s->colors);
}

void writeStyleKeys(const GuideSettings &s, QJsonObject *o)
{
    o->insert(QStringLiteral("guide_pattern"), clampGuidePattern(s.guidePattern));
    o->insert(QStringLiteral("number_text_format"), clampGuideNumberFormat(s.numberTextFormat));
    o->insert(QStringLiteral("font_scale"), s.fontScale);
    o->insert(QStringLiteral("real_square"), s.realSquare);
    o->insert(QStringLiteral("real_square_width"), s.realSquareWidth);
    o->insert(QStringLiteral("inverse_x"), s.inverseX);
    o->insert(QStringLiteral("inverse_y"), s.inverseY);
    o->insert(QStringLiteral("display_real"), s.displayReal);
    o->insert(QStringLiteral("display_resolution"), s.displayResolution);
    o->insert(QStringLiteral("display_final_resolution_info"), s.displayFinalResolutionInfo);
    o->insert(QStringLiteral("guide_image_show_width_dimension"), s.showWidthDimension);
    o->insert(QStringLiteral("guide_image_show_height_dimension"), s.showHeightDimension);
    o->insert(QStringLiteral("display_outline"), s.displayOutline);
    o->insert(QStringLiteral("display_explain"), s.displayExplain);
    o->insert(QStringLiteral("display_square_status"), s.displaySquareStatus);
    o->insert(QStringLiteral("display_logo"), s.displayLogo);
    o->insert(QStringLiteral("display_centerline"), s.displayCenterline);
    o->insert(QStringLiteral("display_crossline"), s.displayCrossline);
    o->insert(QStringLiteral("display_innerline"), s.displayInnerline);
    o->insert(QStringLiteral("display_cell_boundary"), s.displayCellBoundary);
    o->insert(QStringLiteral("display_number"), s.displayNumber);
    o->insert(QStringLiteral("display_circle"), s.displayCircle);
    o->insert(QStringLiteral("flip_h"), s.flipH);
    o->insert(QStringLiteral("rotate"), s.rotate);
    o->insert(QStringLiteral("logo_path"), s.logoPath);
    o->insert(QStringLiteral("logo_opacity"), s.logoOpacity);
    o->insert(QStringLiteral("colors"), colorsToJson(s.colors));
}

} // namespace

QJsonObject guideSettingsToJson(const GuideSettings &s)
{
    QJsonObject o;
    writeStyleKeys(s, &o);
    o.insert(QStringLiteral("real_width"), s.realWidth);
    o.insert(QStringLiteral("real_height"), s.realHeight);
    o.insert(QStringLiteral("pixel_width"), s.pixelWidth);
    o.insert(QStringLiteral("pixel_height"), s.pixelHeight);
    o.insert(QStringLiteral("col"), s.columns);
    o.insert(QStringLiteral("row"), s.rows);
    o.insert(QStringLiteral("projector_count"), s.projectorCount);
    o.insert(QStringLiteral("projector_count_y"), s.projectorCountY);
    o.insert(QStringLiteral("projector_width"), s.projectorWidth);
    o.insert(QStringLiteral("projector_height"), s.projectorHeight);

    o.insert(QStringLiteral("fixed_ratio"), s.fixedRatio);
    o.insert(QStringLiteral("even_multiple_of_4"), s.evenMultipleOf4);
    o.insert(QStringLiteral("auto_col"), s.autoColumns);
    o.insert(QStringLiteral("document_custom_title_enabled"), s.documentCustomTitleEnabled);
    o.insert(QStringLiteral("document_title_visible"), s.documentTitleVisible);
    o.insert(QStringLiteral("display_projector_info"), s.displayProjectorInfo);
    o.insert(QStringLiteral("projector_real_pixel"), s.projectorRealPixel);
    o.insert(QStringLiteral("projector_auto_placement"), s.projectorAutoPlacement);
    o.insert(QStringLiteral("projector_auto_layout_enabled"), s.projectorAutoLayoutEnabled);
    o.insert(QStringLiteral("projector_auto_layout_use_throw_distance"), s.projectorAutoLayoutUseThrowDistance);
    o.insert(QStringLiteral("projector_floor"), s.projectorFloor);
    o.insert(QStringLiteral("projector_vertical_projection"), s.projectorVerticalProjection);

    o.insert(QStringLiteral("scale"), s.scale);
    o.insert(QStringLiteral("zoom"), s.zoom);
    o.insert(QStringLiteral("projector_scale"), s.projectorScale);
    o.insert(QStringLiteral("projector_throw_distance"), s.projectorThrowDistance);
    o.insert(QStringLiteral("projector_throw_ratio"), s.projectorThrowRatio);
    o.insert(QStringLiteral("projector_auto_layout_overlap"), s.projectorAutoLayoutOverlap);
    o.insert(QStringLiteral("viewport_offset_x"), s.viewportOffsetX);
    o.insert(QStringLiteral("viewport_offset_y"), s.viewportOffsetY);

    o.insert(QStringLiteral("document_custom_title"), s.documentCustomTitle);
    o.insert(QStringLiteral("document_title_background_color"), colorName(s.documentTitleBackgroundColor));
    o.insert(QStringLiteral("explain"), s.explain);
    o.insert(QStringLiteral("work_path"), s.workPath);

    QJsonArray layers;
    for (const GuideLayerObject &layer : s.imageObjects)
        layers.append(guideLayerObjectToJson(layer));
    o.insert(QStringLiteral("image_objects"), layers);
    return o;
}

void readGuideSettingsJson(const QJsonObject &o, GuideSettings *s)
{
    readIntKeys(o, {"real_width"}, &s->realWidth);
    readIntKeys(o, {"real_height"}, &s->realHeight);
    readIntKeys(o, {"pixel_width"}, &s->pixelWidth);
    readIntKeys(o, {"pixel_height"}, &s->pixelHeight);
    readIntKeys(o, {"col"}, &s->columns);
    readIntKeys(o, {"row"}, &s->rows);
    readIntKeys(o, {"projector_col", "projector_count"}, &s->projectorCount);
    readIntKeys(o, {"projector_row", "projector_rows", "projector_count_y"}, &s->projectorCountY);
    readIntKeys(o, {"projector_width"}, &s->projectorWidth);
    readIntKeys(o, {"projector_height"}, &s->projectorHeight);

    readBoolKeys(o, {"ratio_enable", "fixed_ratio"}, &s->fixedRatio);
    readBoolKeys(o, {"even_number", "even_multiple_of_4"}, &s->evenMultipleOf4);
    readBoolKeys(o, {"auto_col"}, &s->autoColumns);
    readBoolKeys(o, {"document_custom_title_enabled"}, &s->documentCustomTitleEnabled);
    readBoolKeys(o, {"document_title_visible"}, &s->documentTitleVisible);
    readBoolKeys(o, {"display_projector_info"}, &s->displayProjectorInfo);
    readBoolKeys(o, {"projector_realpixel", "projector_real_pixel"}, &s->projectorRealPixel);
    readBoolKeys(o, {"projector_auto_placement"}, &s->projectorAutoPlacement);
    readBoolKeys(o, {"projector_auto_layout_enabled"}, &s->projectorAutoLayoutEnabled);
    readBoolKeys(o, {"projector_auto_layout_use_throw_distance"}, &s->projectorAutoLayoutUseThrowDistance);
    readBoolKeys(o, {"projector_floor"}, &s->projectorFloor);
    readBoolKeys(o, {"projector_vertical_projection"}, &s->projectorVerticalProjection);

    readDoubleKeys(o, {"scale"}, &s->scale);
    readDoubleKeys(o, {"zoom"}, &s->zoom);
    readDoubleKeys(o, {"projector_scale"}, &s->projectorScale);
    readDoubleKeys(o, {"projector_throw_distance"}, &s->projectorThrowDistance);
    readDoubleKeys(o, {"projector_throw_ratio"}, &s->projectorThrowRatio);
    readDoubleKeys(o, {"projector_auto_layout_overlap"}, &s->projectorAutoLayoutOverlap);
    readDoubleKeys(o, {"viewport_offset_x"}, &s->viewportOffsetX);
    readDoubleKeys(o, {"viewport_offset_y"}, &s->viewportOffsetY);

    readStringKeys(o, {"document_custom_title"}, &s->documentCustomTitle);
    s->documentTitleBackgroundColor =
        readColor(o, QStringLiteral("document_title_background_color"), s->documentTitleBackgroundColor);
    readStringKeys(o, {"explain"}, &s->explain);
    readStringKeys(o, {"workpath", "work_path"}, &s->workPath);

    readStyleKeys(o, s);

    const QJsonValue layers = o.value(QStringLiteral("image_objects"));
    if (layers.isArray()) {
        s->imageObjects.clear();
        for (const QJsonValue &entry : layers.toArray()) {
            if (entry.isObject())
                s->imageObjects.append(guideLayerObjectFromJson(entry.toObject()));
        }
    }
}

void completeGuideSettings(GuideSettings *s)
{
    s->guidePattern = clampGuidePattern(s->guidePattern);
    s->numberTextFormat = clampGuideNumberFormat(s->numberTextFormat);
    if (!std::isfinite(s->projectorAutoLayoutOverlap))
        s->projectorAutoLayoutOverlap = 0.25;
    s->projectorAutoLayoutOverlap = std::clamp(s->projectorAutoLayoutOverlap, 0.0, 0.95);
    if (!std::isfinite(s->logoOpacity))
        s->logoOpacity = 0.7;
    s->logoOpacity = std::clamp(s->logoOpacity, 0.0, 1.0);
}

GuideSettings guideSettingsFromJson(const QJsonObject &object)
{
    GuideSettings settings;
    readGuideSettingsJson(object, &settings);
    completeGuideSettings(&settings);
    return settings;
}

QJsonObject guideStyleToJson(const GuideSettings &settings)
{
    QJsonObject o;
    writeStyleKeys(settings, &o);
    return o;
}

void applyGuideStyleJson(const QJsonObject &style, GuideSettings *settings)
{
    readStyleKeys(style, settings);
}

// ---------------------------------------------------------------- grid and colours

namespace {
int squareCount(int pixels, int squareWidth)
{
    const qint64 p = std::max(pixels, 4);
    const qint64 w = std::max(squareWidth, 1);
    return int(std::max<qint64>(1, (p + w - 1) / w));
}
} // namespace

int guideGridColumns(const GuideSettings &s)
{
    return s.realSquare ? squareCount(s.pixelWidth, s.realSquareWidth) : std::max(s.columns, 1);
}

int guideGridRows(const GuideSettings &s)
{
    return s.realSquare ? squareCount(s.pixelHeight, s.realSquareWidth) : std::max(s.rows, 1);
}

namespace {
struct Rgb {
    double r, g, b;
};

Rgb mix(const Rgb &a, const Rgb &b, double t)
{
    t = std::clamp(t, 0.0, 1.0);
    // std::round rounds half away from zero.
    return {std::round(a.r + (b.r - a.r) * t), std::round(a.g + (b.g - a.g) * t), std::round(a.b + (b.b - a.b) * t)};
}
} // namespace

QColor guideStyleCellColor(int guidePattern, int c, int r, int columns, int rows)
{
    // Parity without the sum, which overflows for indices near the integer limit.
    const bool odd = ((c ^ r) & 1) != 0;
    if (clampGuidePattern(guidePattern) != GuidePatternDefault) {
        const int level = odd ? 154 : 42;
        return QColor(level, level, level);
    }
    static constexpr Rgb purple{171, 33, 190}, red{184, 45, 44}, blue{24, 42, 151}, green{20, 128, 48};
    const double u = (c + 0.5) / std::max(columns, 1);
    const double v = (r + 0.5) / std::max(rows, 1);
    const Rgb top = mix(purple, red, u);
    const Rgb bottom = mix(blue, green, u);
    const Rgb base = mix(top, bottom, v);
    const Rgb result = odd ? mix(base, Rgb{235, 235, 235}, 0.08) : mix(base, Rgb{0, 0, 0}, 0.12);
    return QColor(int(result.r), int(result.g), int(result.b));
}

QColor guideCellColor(const GuideSettings &s, int c, int r, int columns, int rows)
{
    const qint64 index = qint64(std::max(rows, 1)) * c + r;
    if (index >= 0 && index < s.colors.size())
        return s.colors.at(int(index));
    return guideStyleCellColor(s.guidePattern, c, r, columns, rows);
}

void resizeGuideColors(GuideSettings *s)
{
    if (s->colors.isEmpty())
        return;
    const int columns = guideGridColumns(*s);
    const int rows = guideGridRows(*s);
    const qint64 count = qint64(columns) * rows;
    if (count == s->colors.size() || count > (1 << 24))
        return;
    const int old = int(s->colors.size());
    s->colors.resize(int(count));
    for (int i = old; i < count; ++i)
        s->colors[i] = guideStyleCellColor(s->guidePattern, i / rows, i % rows, columns, rows);
}

void randomizeGuideColors(GuideSettings *s)
{
    const int columns = guideGridColumns(*s);
    const int rows = guideGridRows(*s);
    const qint64 count = std::min<qint64>(qint64(columns) * rows, 1 << 24);
    QRandomGenerator *random = QRandomGenerator::global();
    s->colors.resize(int(count));
    for (QColor &color : s->colors)
        color = QColor::fromRgb(random->bounded(256), random->bounded(256), random->bounded(256));
}
