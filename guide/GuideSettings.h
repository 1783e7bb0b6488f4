#pragma once

#include <QColor>
#include <QJsonObject>
#include <QString>
#include <QVector>

namespace vg::json {
class JsonTextWriter;
class JsonObjectRef;
} // namespace vg::json

// Colour style ("guide_pattern"): "Vantreo" = 0, "Default" = 1.
enum GuidePattern { GuidePatternVantreo = 0, GuidePatternDefault = 1 };

// Cell label format ("number_text_format"). 1 and 4 are retired and read as Korean.
enum GuideNumberFormat {
    GuideNumberKorean = 0,
    GuideNumberRowCol = 2,
    GuideNumberColRow = 3,
    GuideNumberEnglish = 5,
};

// One layer of a guide: an image, or a rectangle/circle mask, placed in guide pixels.
struct GuideLayerObject {
    QString type = QStringLiteral("image"); // "image" or "mask"
    QString filePath;
    QString name;
    double centerX = 0.0;
    double centerY = 0.0;
    double width = 0.0;
    double height = 0.0;
    double baseWidth = 0.0;
    double baseHeight = 0.0;
    double rotationDegrees = 0.0;
    double opacity = 1.0;
    double cornerRadius = 0.0;
    QString maskShape = QStringLiteral("rectangle"); // "rectangle" or "circle"
    QColor fillColor = QColor(0, 0, 0, 255);
    bool maskInverse = false;
    bool maskWireframe = false;
    int maskULines = 0;
    int maskVLines = 0;
    double maskWireframeThickness = 1.0;
    double cropLeft = 0.0;
    double cropTop = 0.0;
    double cropRight = 0.0;
    double cropBottom = 0.0;
    bool visible = true;

    bool isMask() const { return type.compare(QLatin1String("mask"), Qt::CaseInsensitive) == 0; }
    bool isCircle() const { return maskShape == QLatin1String("circle"); }
    bool operator==(const GuideLayerObject &other) const = default;
};

struct GuideSettings {
    // Sizes and grid
    int realWidth = 1920;
    int realHeight = 1200;
    int pixelWidth = 1920;
    int pixelHeight = 1200;
    int columns = 32;
    int rows = 20;
    int realSquareWidth = 64;
    int projectorCount = 1;
    int projectorCountY = 1;
    int projectorWidth = 1920;
    int projectorHeight = 1200;
    int guidePattern = GuidePatternDefault;
    int numberTextFormat = GuideNumberRowCol;

    // Switches
    bool fixedRatio = true;
    bool evenMultipleOf4 = true;
    bool autoColumns = true;
    bool realSquare = false;
    bool inverseX = false;
    bool inverseY = false;
    bool flipH = false;
    bool rotate = false;
    bool displayReal = true;
    bool displayResolution = true;
    bool displayFinalResolutionInfo = true;
    bool documentCustomTitleEnabled = false;
    bool documentTitleVisible = true;
    bool showWidthDimension = true;
    bool showHeightDimension = true;
    bool displayOutline = true;
    bool displayExplain = true;
    bool displaySquareStatus = false;
    bool displayLogo = true;
    bool displayCenterline = true;
    bool displayCrossline = false;
    bool displayInnerline = false;
    bool displayCellBoundary = true;
    bool displayNumber = true;
    bool displayCircle = false;
    bool displayProjectorInfo = false;
    bool projectorRealPixel = false;
    bool projectorAutoPlacement = false;
    bool projectorAutoLayoutEnabled = true;
    bool projectorAutoLayoutUseThrowDistance = false;
    bool projectorFloor = false;
    bool projectorVerticalProjection = false;

    // Real numbers
    double scale = 1.0;
    double fontScale = 1.0;
    double zoom = 1.0;
    double projectorScale = 1.0;
    double projectorThrowDistance = 1920.0;
    double projectorThrowRatio = 1.0;
    double projectorAutoLayoutOverlap = 0.25;
    double viewportOffsetX = 0.0;
    double viewportOffsetY = 0.0;
    double logoOpacity = 0.7;

    // Texts and colours
    QString documentCustomTitle;
    QColor documentTitleBackgroundColor = QColor(91, 91, 91);
    QString explain;
    QString workPath = QStringLiteral("D:/");
    QString logoPath;
    QVector<QColor> colors;                 // one per cell, column-major
    QVector<GuideLayerObject> imageObjects; // drawing order

    bool operator==(const GuideSettings &other) const = default;
};

// Enumeration folding applied on writing and by the guide tab: style to 0..1, number
// format to 0..5 with the retired 1 and 4 folded into 0.
int clampGuidePattern(int value);
int clampGuideNumberFormat(int value);

QJsonObject guideLayerObjectToJson(const GuideLayerObject &layer);
GuideLayerObject guideLayerObjectFromJson(const QJsonObject &object);

// The writer is the one serialisation; the QJsonObject forms are read back from its text.
void writeGuideSettings(vg::json::JsonTextWriter &w, const GuideSettings &settings);
QJsonObject guideSettingsToJson(const GuideSettings &settings);
// Reads over defaults; absent keys keep the default. Includes completeGuideSettings().
GuideSettings guideSettingsFromJson(const QJsonObject &object);
GuideSettings guideSettingsFromJson(const vg::json::JsonObjectRef &object);
// Reads over the given settings; absent keys keep what is there. No completion.
void readGuideSettingsJson(const QJsonObject &object, GuideSettings *settings);
// What every guide read from a file goes through: enumerations folded, overlap and
// logo opacity brought into their ranges.
void completeGuideSettings(GuideSettings *settings);

// The style subset ("Save As Default" and what a new guide starts from).
QJsonObject guideStyleToJson(const GuideSettings &settings);
void applyGuideStyleJson(const QJsonObject &style, GuideSettings *settings);

// The cell grid the renderer draws: real square cells decide it when on, otherwise the
// stored columns and rows (at least 1 each).
int guideGridColumns(const GuideSettings &settings);
int guideGridRows(const GuideSettings &settings);

// Colour of cell (column, row) from the colour style alone, ignoring the colour list.
QColor guideStyleCellColor(int guidePattern, int column, int row, int columns, int rows);
// Colour of cell (column, row): the colour list first (column-major), then the style.
QColor guideCellColor(const GuideSettings &settings, int column, int row, int columns, int rows);

// Resizes the colour list to the grid's cell count; new cells take their style colour so
// the look does not change. An empty list stays empty (the style decides every cell).
void resizeGuideColors(GuideSettings *settings);
// "Randomize Color": one random colour for every cell.
void randomizeGuideColors(GuideSettings *settings);
