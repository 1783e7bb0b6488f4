#pragma once

#include "canvas/CanvasGeometry.h"

#include <QColor>
#include <QImage>
#include <QString>

class QPainter;

// Draws one object in canvas coordinates on a painter already set up for them. Hidden
// objects draw nothing; dimension labels are drawn with their object.
void drawCanvasObject(QPainter &painter, const CanvasObjectSettings &object, const CanvasSources &sources);
// Every visible object, bottom to top.
void drawCanvasObjects(QPainter &painter, const CanvasTabSettings &canvas, const CanvasSources &sources);

// The exported picture of a canvas: its content bounds at one image pixel per canvas pixel on
// the canvas background. A null image with the error text "No canvas objects to export." for an
// empty canvas and "Canvas PNG image could not be rendered." when it cannot be allocated.
QImage renderCanvasImage(const CanvasTabSettings &canvas, const CanvasSources &sources, QString *error = nullptr);

// A document page: the view image fitted below an optional title band on a dark page.
struct DocumentTitleBand {
    bool visible = true;
    QString text;
    QColor background = QColor(91, 91, 91);
};
inline constexpr QSize kDocumentPageSize{2000, 1250}; // 16:10 at 150 dpi
QImage composeDocumentPage(const QImage &view, const DocumentTitleBand &title, QSize pageSize = kDocumentPageSize);
// Height of the band on a page of the given height (0 when hidden).
int documentTitleBandHeight(const DocumentTitleBand &title, QSize pageSize = kDocumentPageSize);
// A canvas tab's band: the custom title when enabled, else the tab title.
DocumentTitleBand canvasDocumentTitle(const CanvasTabSettings &canvas, const QString &tabTitle);
