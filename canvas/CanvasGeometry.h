#pragma once

#include "canvas/CanvasTabSettings.h"

#include <QHash>
#include <QImage>
#include <QPolygonF>
#include <QRectF>
#include <QSizeF>
#include <QString>
#include <QTransform>
#include <QVector>

// Canvas coordinates are pixels of the exported image: an image object at scale 1 stands
// at its own pixel size. An object's position is its centre; rotation (degrees, clockwise
// on screen) and scale act about that centre.

enum class CanvasObjectKind { GuideImage, Picture, Comment, TextBox };

CanvasObjectKind canvasObjectKind(const CanvasObjectSettings &object);

// The pixels an image object shows: the size it stands for on the canvas (the full image's
// pixel size) and the pixels drawn, which may be a smaller preview of the same picture.
struct CanvasImage {
    QSize pixelSize;
    QImage image;
    bool isValid() const { return !pixelSize.isEmpty() && !image.isNull(); }
};

struct CanvasGuideSource {
    QString name;
    CanvasImage image;
    QSizeF realSizeMm; // the guide's physical size, for millimetre bounds
};

// What image objects draw: guides by guide index, pictures by their file path.
struct CanvasSources {
    QVector<CanvasGuideSource> guides;
    QHash<QString, CanvasImage> pictures;

    // nullptr when the object shows no image or its image is not available.
    const CanvasImage *imageFor(const CanvasObjectSettings &object) const;
};

// Reads a picture file for the canvas. Files whose declared size is beyond what the canvas
// can hold are refused before they are decoded.
bool loadCanvasPicture(const QString &path, CanvasImage *picture, QString *error = nullptr);
// Loads every picture the canvas refers to and `sources` does not hold yet; unreadable files
// stay absent (drawn as missing).
void loadCanvasPictures(const CanvasTabSettings &canvas, CanvasSources *sources);
// A copy of an image no larger than maxSide on either side, standing for its full size.
CanvasImage canvasPreviewImage(const QImage &full, int maxSide);

// Sizes of the drawn marks, in canvas pixels at object scale 1.
inline constexpr double kCommentRadius = 48.0;
inline constexpr double kCommentLabelUnit = 400.0;
inline constexpr double kCommentFontPx = 40.0;
inline constexpr double kTextBoxFontPxPerScale = 10.0;
inline constexpr QSize kMissingImageSize{640, 360};

// Crop fractions brought into 0..1 with left <= right and top <= bottom.
struct CanvasCrop {
    double left = 0, top = 0, right = 1, bottom = 1;
};
CanvasCrop normalizedCrop(const CanvasObjectSettings &object);

struct CanvasObjectShape {
    CanvasObjectKind kind = CanvasObjectKind::Picture;
    QRectF frame;          // whole local rectangle before crop; images are centred on the origin
    QRectF visible;        // the part drawn (frame after crop)
    QTransform toCanvas;   // local -> canvas
    // Comments: the circle and the label box, local.
    QRectF circle;
    QRectF label;
};

QTransform canvasObjectTransform(const CanvasObjectSettings &object);
CanvasObjectShape canvasObjectShape(const CanvasObjectSettings &object, const CanvasSources &sources);
// The drawn part as a canvas polygon (four corners: top-left, top-right, bottom-right, bottom-left).
QPolygonF canvasObjectOutline(const CanvasObjectSettings &object, const CanvasSources &sources);

// The pixel size of the image an object shows, and the size at which it stands on the canvas
// (cropped and scaled), rounded to whole pixels.
QSize canvasObjectSourceSize(const CanvasObjectSettings &object, const CanvasSources &sources);
QSize canvasObjectPlacedSize(const CanvasObjectSettings &object, const CanvasSources &sources);

// Dimension labels of an object ("%1px", "%1x%2px") and where they stand, canvas coordinates.
struct CanvasDimensionLabel {
    QString text;
    QRectF rect;
    double fontPx = 0;
};
QVector<CanvasDimensionLabel> canvasDimensionLabels(const CanvasObjectSettings &object, const CanvasSources &sources);

// Canvas rectangle an object covers, its labels included.
QRectF canvasObjectBounds(const CanvasObjectSettings &object, const CanvasSources &sources);
// Union of every visible object's bounds, widened to whole pixels; empty for no object.
QRect canvasContentBounds(const CanvasTabSettings &canvas, const CanvasSources &sources);

// The topmost visible object under a canvas point, -1 for none.
int canvasHitTest(const CanvasTabSettings &canvas, const CanvasSources &sources, const QPointF &point);
