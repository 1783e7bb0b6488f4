#include "guide/GuideSettings.h"

#include "common/JsonNodeTree.h"
#include "common/JsonTextWriter.h"
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

namespace {

void writeGuideLayer(JsonTextWriter &w, const GuideLayerObject &layer)
{
    w.beginObject();
    w.field("type", layer.type);
    w.field("file_path", layer.filePath);
    w.field("name", layer.name);
    w.field("center_x", layer.centerX);
    w.field("center_y", layer.centerY);
    w.field("width", layer.width);
    w.field("height", layer.height);
    w.field("base_width", layer.baseWidth);
    w.field("base_height", layer.baseHeight);
    w.field("rotation_degrees", layer.rotationDegrees);
    w.field("opacity", layer.opacity);
    w.field("corner_radius", layer.cornerRadius);
    w.field("mask_shape", layer.maskShape);
    w.key("fill_color");
    w.valueWithAlpha(layer.fillColor);
    w.field("mask_inverse", layer.maskInverse);
    w.field("mask_wireframe", layer.maskWireframe);
    w.field("mask_u_lines", layer.maskULines);
    w.field("mask_v_lines", layer.maskVLines);
    w.field("mask_wireframe_thickness", layer.maskWireframeThickness);
    w.field("crop_left", layer.cropLeft);
    w.field("crop_top", layer.cropTop);
    w.field("crop_right", layer.cropRight);
    w.field("crop_bottom", layer.cropBottom);
    w.field("visible", layer.visible);
    w.endObject();
}

template <typename Object>
GuideLayerObject readGuideLayer(const Object &o)
{
    GuideLayerObject l;
    l.type = readString(o, QLatin1String("type"), l.type);
    l.filePath = readString(o, QLatin1String("file_path"), l.filePath);
    l.name = readString(o, QLatin1String("name"), l.name);
    l.centerX = readDouble(o, QLatin1String("center_x"), l.centerX);
    l.centerY = readDouble(o, QLatin1String("center_y"), l.centerY);
    l.width = readDouble(o, QLatin1String("width"), l.width);
    l.height = readDouble(o, QLatin1String("height"), l.height);
    l.baseWidth = readDouble(o, QLatin1String("base_width"), l.baseWidth);
    l.baseHeight = readDouble(o, QLatin1String("base_height"), l.baseHeight);
    l.rotationDegrees = readDouble(o, QLatin1String("rotation_degrees"), l.rotationDegrees);
    l.opacity = readDouble(o, QLatin1String("opacity"), l.opacity);
    l.cornerRadius = readDouble(o, QLatin1String("corner_radius"), l.cornerRadius);
    const QString shape = readString(o, QLatin1String("mask_shape"), l.maskShape).trimmed();
    l.maskShape = shape.compare(QLatin1String("circle"), Qt::CaseInsensitive) == 0 ? QStringLiteral("circle")
                                                                                   : QStringLiteral("rectangle");
    l.fillColor = readColor(o, QLatin1String("fill_color"), l.fillColor);
    l.maskInverse = readBool(o, QLatin1String("mask_inverse"), l.maskInverse);
    l.maskWireframe = readBool(o, QLatin1String("mask_wireframe"), l.maskWireframe);
    l.maskULines = readInt(o, QLatin1String("mask_u_lines"), l.maskULines);
    l.maskVLines = readInt(o, QLatin1String("mask_v_lines"), l.maskVLines);
    l.maskWireframeThickness = readDouble(o, QLatin1String("mask_wireframe_thickness"), l.maskWireframeThickness);
    l.cropLeft = readDouble(o, QLatin1String("crop_left"), l.cropLeft);
    l.cropTop = readDouble(o, QLatin1String("crop_top"), l.cropTop);
    l.cropRight = readDouble(o, QLatin1String("crop_right"), l.cropRight);
    l.cropBottom = readDouble(o, QLatin1String("crop_bottom"), l.cropBottom);
    l.visible = readBool(o, QLatin1String("visible"), l.visible);
    return l;
}

} // namespace

QJsonObject guideLayerObjectToJson(const GuideLayerObject &layer)
{
    return jsonObjectFromWriter([&](JsonTextWriter &w) { writeGuideLayer(w, layer); });
}

GuideLayerObject guideLayerObjectFromJson(const QJsonObject &o)
{
    return readGuideLayer(o);
}

// ---------------------------------------------------------------- guide

namespace {

// Reads "colors" when it is an array; entries that are not colours are skipped.
template <typename Object>
void readColors(const Object &o, QVector<QColor> *colors)
{
    const auto value = o.value(QLatin1String("colors"));
    if (!value.isArray())
        return;
    const auto array = value.toArray();
    QVector<QColor> result;
    result.reserve(array.size());
    for (const auto &entry : array) {
        const QColor c = toColor(entry, QColor());
        if (c.isValid())
            result.append(c);
    }
    *colors = result;
}

template <typename Object>
void readBoolKeys(const Object &o, std::initializer_list<const char *> keys, bool *field)
{
    for (const char *key : keys)
        *field = readBool(o, QLatin1String(key), *field);
}

template <typename Object>
void readIntKeys(const Object &o, std::initializer_list<const char *> keys, int *field)
{
    for (const char *key : keys)
        *field = readInt(o, QLatin1String(key), *field);
}

template <typename Object>
void readDoubleKeys(const Object &o, std::initializer_list<const char *> keys, double *field)
{
    for (const char *key : keys)
        *field = readDouble(o, QLatin1String(key), *field);
}

template <typename Object>
void readStringKeys(const Object &o, std::initializer_list<const char *> keys, QString *field)
{
    for (const char *key : keys)
        *field = readString(o, QLatin1String(key), *field);
}

// Keys shared by the full guide object and the style subset. Older keys come first in
// each list so that the current key wins when both are present.
template <typename Object>
void readStyleKeys(const Object &o, GuideSettings *s)
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

void writeStyleKeys(JsonTextWriter &w, const GuideSettings &s)
{
    w.field("guide_pattern", clampGuidePattern(s.guidePattern));
    w.field("number_text_format", clampGuideNumberFormat(s.numberTextFormat));
    w.field("font_scale", s.fontScale);
    w.field("real_square", s.realSquare);
    w.field("real_square_width", s.realSquareWidth);
    w.field("inverse_x", s.inverseX);
    w.field("inverse_y", s.inverseY);
    w.field("display_real", s.displayReal);
    w.field("display_resolution", s.displayResolution);
    w.field("display_final_resolution_info", s.displayFinalResolutionInfo);
    w.field("guide_image_show_width_dimension", s.showWidthDimension);
    w.field("guide_image_show_height_dimension", s.showHeightDimension);
    w.field("display_outline", s.displayOutline);
    w.field("display_explain", s.displayExplain);
    w.field("display_square_status", s.displaySquareStatus);
    w.field("display_logo", s.displayLogo);
    w.field("display_centerline", s.displayCenterline);
    w.field("display_crossline", s.displayCrossline);
    w.field("display_innerline", s.displayInnerline);
    w.field("display_cell_boundary", s.displayCellBoundary);
    w.field("display_number", s.displayNumber);
    w.field("display_circle", s.displayCircle);
    w.field("flip_h", s.flipH);
    w.field("rotate", s.rotate);
    w.field("logo_path", s.logoPath);
    w.field("logo_opacity", s.logoOpacity);
    w.key("colors");
    w.beginArray();
    for (const QColor &c : s.colors)
        w.value(c);
    w.endArray();
}

template <typename Object>
void readGuideSettings(const Object &o, GuideSettings *s)
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
        readColor(o, QLatin1String("document_title_background_color"), s->documentTitleBackgroundColor);
    readStringKeys(o, {"explain"}, &s->explain);
    readStringKeys(o, {"workpath", "work_path"}, &s->workPath);

    readStyleKeys(o, s);

    const auto layers = o.value(QLatin1String("image_objects"));
    if (layers.isArray()) {
        s->imageObjects.clear();
        for (const auto &entry : layers.toArray()) {
            if (entry.isObject())
                s->imageObjects.append(readGuideLayer(entry.toObject()));
        }
    }
}

} // namespace

void writeGuideSettings(JsonTextWriter &w, const GuideSettings &s)
{
    w.beginObject();
    writeStyleKeys(w, s);
    w.field("real_width", s.realWidth);
    w.field("real_height", s.realHeight);
    w.field("pixel_width", s.pixelWidth);
    w.field("pixel_height", s.pixelHeight);
    w.field("col", s.columns);
    w.field("row", s.rows);
    w.field("projector_count", s.projectorCount);
    w.field("projector_count_y", s.projectorCountY);
    w.field("projector_width", s.projectorWidth);
    w.field("projector_height", s.projectorHeight);

    w.field("fixed_ratio", s.fixedRatio);
    w.field("even_multiple_of_4", s.evenMultipleOf4);
    w.field("auto_col", s.autoColumns);
    w.field("document_custom_title_enabled", s.documentCustomTitleEnabled);
    w.field("document_title_visible", s.documentTitleVisible);
    w.field("display_projector_info", s.displayProjectorInfo);
    w.field("projector_real_pixel", s.projectorRealPixel);
    w.field("projector_auto_placement", s.projectorAutoPlacement);
    w.field("projector_auto_layout_enabled", s.projectorAutoLayoutEnabled);
    w.field("projector_auto_layout_use_throw_distance", s.projectorAutoLayoutUseThrowDistance);
    w.field("projector_floor", s.projectorFloor);
    w.field("projector_vertical_projection", s.projectorVerticalProjection);

    w.field("scale", s.scale);
    w.field("zoom", s.zoom);
    w.field("projector_scale", s.projectorScale);
    w.field("projector_throw_distance", s.projectorThrowDistance);
    w.field("projector_throw_ratio", s.projectorThrowRatio);
    w.field("projector_auto_layout_overlap", s.projectorAutoLayoutOverlap);
    w.field("viewport_offset_x", s.viewportOffsetX);
    w.field("viewport_offset_y", s.viewportOffsetY);

    w.field("document_custom_title", s.documentCustomTitle);
    w.field("document_title_background_color", s.documentTitleBackgroundColor);
    w.field("explain", s.explain);
    w.field("work_path", s.workPath);

    w.key("image_objects");
    w.beginArray();
    for (const GuideLayerObject &layer : s.imageObjects)
        writeGuideLayer(w, layer);
    w.endArray();
    w.endObject();
}

QJsonObject guideSettingsToJson(const GuideSettings &s)
{
    return jsonObjectFromWriter([&](JsonTextWriter &w) { writeGuideSettings(w, s); });
}

void readGuideSettingsJson(const QJsonObject &o, GuideSettings *s)
{
    readGuideSettings(o, s);
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
    readGuideSettings(object, &settings);
    completeGuideSettings(&settings);
    return settings;
}

GuideSettings guideSettingsFromJson(const vg::json::JsonObjectRef &object)
{
    GuideSettings settings;
    readGuideSettings(object, &settings);
    completeGuideSettings(&settings);
    return settings;
}

QJsonObject guideStyleToJson(const GuideSettings &settings)
{
    return jsonObjectFromWriter([&](JsonTextWriter &w) {
        w.beginObject();
        writeStyleKeys(w, settings);
        w.endObject();
    });
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
