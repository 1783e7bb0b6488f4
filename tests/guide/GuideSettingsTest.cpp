#include "guide/GuideSettings.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <gtest/gtest.h>

namespace {
QJsonObject parse(const char *text)
{
    return QJsonDocument::fromJson(QByteArray(text)).object();
}
} // namespace

TEST(GuideSettings, EmptyObjectKeepsEveryDefault)
{
    const GuideSettings read = guideSettingsFromJson(QJsonObject());
    EXPECT_EQ(read, GuideSettings());
    const GuideSettings d;
    EXPECT_EQ(d.pixelWidth, 1920);
    EXPECT_EQ(d.rows, 20);
    EXPECT_EQ(d.columns, 32);
    EXPECT_EQ(d.guidePattern, 1);
    EXPECT_EQ(d.numberTextFormat, 2);
    EXPECT_EQ(d.documentTitleBackgroundColor, QColor(91, 91, 91));
    EXPECT_EQ(d.workPath, QStringLiteral("D:/"));
    EXPECT_DOUBLE_EQ(d.logoOpacity, 0.7);
    EXPECT_DOUBLE_EQ(d.projectorAutoLayoutOverlap, 0.25);
}

TEST(GuideSettings, CurrentKeyWinsOverOlderKey)
{
    EXPECT_TRUE(guideSettingsFromJson(parse(R"({"ratio_enable": false, "fixed_ratio": true})")).fixedRatio);
    EXPECT_FALSE(guideSettingsFromJson(parse(R"({"even_number": false})")).evenMultipleOf4);
    EXPECT_EQ(guideSettingsFromJson(parse(R"({"projector_col": 3})")).projectorCount, 3);
    EXPECT_EQ(guideSettingsFromJson(parse(R"({"projector_col": 3, "projector_count": 2})")).projectorCount, 2);
    EXPECT_EQ(guideSettingsFromJson(parse(R"({"projector_rows": 4})")).projectorCountY, 4);
    EXPECT_EQ(guideSettingsFromJson(parse(R"({"projector_row": 5, "projector_count_y": 2})")).projectorCountY, 2);
    EXPECT_TRUE(guideSettingsFromJson(parse(R"({"projector_realpixel": "true"})")).projectorRealPixel);
    EXPECT_FALSE(guideSettingsFromJson(parse(R"({"display_res": 0})")).displayResolution);
    EXPECT_DOUBLE_EQ(guideSettingsFromJson(parse(R"({"fontsize": 1.5})")).fontScale, 1.5);
    EXPECT_DOUBLE_EQ(guideSettingsFromJson(parse(R"({"fontsize": 1.5, "font_scale": 2})")).fontScale, 2.0);
    EXPECT_EQ(guideSettingsFromJson(parse(R"({"workpath": "/srv"})")).workPath, QStringLiteral("/srv"));
}

TEST(GuideSettings, WrittenObjectHoldsOnlyCurrentKeysAndFoldsEnumerations)
{
    GuideSettings s;
    s.numberTextFormat = 4;
    EXPECT_EQ(guideSettingsToJson(s).value(QStringLiteral("number_text_format")).toInt(), 0);
    s.numberTextFormat = 9;
    EXPECT_EQ(guideSettingsToJson(s).value(QStringLiteral("number_text_format")).toInt(), 5);
    s.numberTextFormat = 1;
    EXPECT_EQ(guideSettingsToJson(s).value(QStringLiteral("number_text_format")).toInt(), 0);
    s.numberTextFormat = -3;
    EXPECT_EQ(guideSettingsToJson(s).value(QStringLiteral("number_text_format")).toInt(), 0);
    s.guidePattern = 7;
    const QJsonObject o = guideSettingsToJson(s);
    EXPECT_EQ(o.value(QStringLiteral("guide_pattern")).toInt(), 1);
    for (const char *old : {"ratio_enable", "even_number", "projector_col", "projector_row", "projector_rows",
                            "projector_realpixel", "display_res", "fontsize", "workpath"})
        EXPECT_FALSE(o.contains(QLatin1String(old))) << old;
    EXPECT_EQ(o.value(QStringLiteral("document_title_background_color")).toString(), QStringLiteral("#5b5b5b"));
    EXPECT_TRUE(o.value(QStringLiteral("pixel_width")).isDouble());
    EXPECT_TRUE(o.value(QStringLiteral("colors")).isArray());
    EXPECT_TRUE(o.value(QStringLiteral("image_objects")).isArray());
}

TEST(GuideSettings, RoundTripKeepsEveryField)
{
    GuideSettings s;
    s.realWidth = 5000;
    s.pixelHeight = 2160;
    s.inverseX = true;
    s.displayCircle = true;
    s.projectorThrowRatio = 0.42;
    s.explain = QStringLiteral("Lobby wall\nline two");
    s.colors = {QColor(1, 2, 3), QColor(250, 0, 10)};
    GuideLayerObject mask;
    mask.type = QStringLiteral("mask");
    mask.maskShape = QStringLiteral("circle");
    mask.fillColor = QColor(10, 20, 30, 128);
    mask.maskULines = 4;
    mask.cropLeft = 0.25;
    s.imageObjects = {mask, GuideLayerObject()};
    const GuideSettings back = guideSettingsFromJson(guideSettingsToJson(s));
    EXPECT_EQ(back, s);
    EXPECT_EQ(guideLayerObjectToJson(mask).value(QStringLiteral("fill_color")).toString(), QStringLiteral("#800a141e"));
}

TEST(GuideSettings, InvalidColoursAreSkippedAndLayerShapesTolerated)
{
    const GuideSettings s = guideSettingsFromJson(parse(R"({"colors": ["#ff0000", "nonsense", 5, "#00ff00"]})"));
    ASSERT_EQ(s.colors.size(), 2);
    EXPECT_EQ(s.colors.at(1), QColor(0, 255, 0));

    EXPECT_EQ(guideLayerObjectFromJson(parse(R"({"mask_shape": "  CIRCLE "})")).maskShape, QStringLiteral("circle"));
    EXPECT_EQ(guideLayerObjectFromJson(parse(R"({"mask_shape": "hexagon"})")).maskShape, QStringLiteral("rectangle"));
    const GuideLayerObject l = guideLayerObjectFromJson(QJsonObject());
    EXPECT_EQ(l.type, QStringLiteral("image"));
    EXPECT_EQ(l.fillColor, QColor(0, 0, 0, 255));

    const GuideSettings withLayers = guideSettingsFromJson(parse(R"({"image_objects": [{"type": "mask"}, 3, "x"]})"));
    ASSERT_EQ(withLayers.imageObjects.size(), 1);
    EXPECT_TRUE(withLayers.imageObjects.at(0).isMask());
}

TEST(GuideSettings, CompletionClampsOverlapAndOpacity)
{
    const GuideSettings s = guideSettingsFromJson(parse(R"({"projector_auto_layout_overlap": 0.99, "logo_opacity": 3})"));
    EXPECT_DOUBLE_EQ(s.projectorAutoLayoutOverlap, 0.95);
    EXPECT_DOUBLE_EQ(s.logoOpacity, 1.0);
}

TEST(GuideSettings, StyleSubsetCarriesOnlyTheLook)
{
    GuideSettings s;
    s.pixelWidth = 800;
    s.guidePattern = 0;
    s.displayCircle = true;
    s.logoOpacity = 0.3;
    s.colors = {QColor(9, 9, 9)};
    const QJsonObject style = guideStyleToJson(s);
    EXPECT_FALSE(style.contains(QStringLiteral("pixel_width")));
    EXPECT_EQ(style.size(), 27);
    GuideSettings target;
    applyGuideStyleJson(style, &target);
    EXPECT_EQ(target.pixelWidth, 1920);
    EXPECT_EQ(target.guidePattern, 0);
    EXPECT_TRUE(target.displayCircle);
    EXPECT_DOUBLE_EQ(target.logoOpacity, 0.3);
    EXPECT_EQ(target.colors, s.colors);
    applyGuideStyleJson(parse(R"({"display_res": false})"), &target);
    EXPECT_FALSE(target.displayResolution);
}

TEST(GuideSettings, ColourListFollowsTheGrid)
{
    GuideSettings s;
    s.columns = 3;
    s.rows = 2;
    resizeGuideColors(&s);
    EXPECT_TRUE(s.colors.isEmpty()); // the style decides every cell

    randomizeGuideColors(&s);
    ASSERT_EQ(s.colors.size(), 6);
    s.columns = 4;
    const QVector<QColor> before = s.colors;
    resizeGuideColors(&s);
    ASSERT_EQ(s.colors.size(), 8);
    EXPECT_EQ(s.colors.mid(0, 6), before);
    // Column-major: index 6 is column 3, row 0, which takes its style colour.
    EXPECT_EQ(s.colors.at(6), guideStyleCellColor(1, 3, 0, 4, 2));

    s.realSquare = true;
    s.realSquareWidth = 0; // acts as 1
    s.pixelWidth = 3;      // acts as 4
    s.pixelHeight = 5;
    EXPECT_EQ(guideGridColumns(s), 4);
    EXPECT_EQ(guideGridRows(s), 5);
    resizeGuideColors(&s);
    EXPECT_EQ(s.colors.size(), 20);

    s.realSquare = false;
    s.columns = 0;
    s.rows = -2;
    EXPECT_EQ(guideGridColumns(s), 1);
    EXPECT_EQ(guideGridRows(s), 1);
}

TEST(GuideSettings, StyleCellColoursFollowTheRule)
{
    // Checkerboard of the "Vantreo" style.
    EXPECT_EQ(guideStyleCellColor(0, 0, 0, 4, 4), QColor(42, 42, 42));
    EXPECT_EQ(guideStyleCellColor(0, 1, 0, 4, 4), QColor(154, 154, 154));
    // Four-corner blend, worked by hand for a 2 x 2 grid.
    // Cell (0, 0): u = v = 0.25. top = (174, 36, 154), bottom = (23, 64, 125),
    // base = (136, 43, 147) after rounding each mix; even -> mix with black 0.12.
    EXPECT_EQ(guideStyleCellColor(1, 0, 0, 2, 2), QColor(120, 38, 129));
    // Cell (1, 0): u = 0.75, v = 0.25. top = (181, 42, 81) (80.5 rounds up),
    // bottom = (21, 107, 74), base = (141, 58, 79); odd -> mix with 235 at 0.08.
    EXPECT_EQ(guideStyleCellColor(1, 1, 0, 2, 2), QColor(149, 72, 91));
}
