#include "canvas/CanvasPainter.h"

#include "canvas/CanvasText.h"

#include <QCoreApplication>
#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>
#include <QStringList>

#include <algorithm>
#include <cmath>

namespace {

// 1 GiB of ARGB pixels; a larger export is refused rather than attempted.
constexpr qint64 kMaxExportPixels = qint64(1) << 28;
constexpr int kMaxExportSide = 32767;

QString tr(const char *text)
{
    return QCoreApplication::translate("CanvasTab", text);
}

void drawImageObject(QPainter &p, const CanvasObjectSettings &object, const CanvasObjectShape &shape,
                     const CanvasSources &sources)
{
    if (shape.visible.width() <= 0 || shape.visible.height() <= 0)
        return;
    if (const CanvasImage *image = sources.imageFor(object)) {
        const CanvasCrop crop = normalizedCrop(object);
        const QSizeF px = image->image.size();
        const QRectF source(QPointF(crop.left * px.width(), crop.top * px.height()),
                            QPointF(crop.right * px.width(), crop.bottom * px.height()));
        p.drawImage(shape.visible, image->image, source);
        return;
    }
    // A guide or file that is not available: a crossed frame where it would stand.
    p.save();
    p.setClipRect(shape.visible);
    p.fillRect(shape.frame, QColor(58, 58, 58));
    QPen pen(QColor(150, 150, 150), std::max(2.0, shape.frame.width() / 200));
    p.setPen(pen);
    p.drawLine(shape.frame.topLeft(), shape.frame.bottomRight());
    p.drawLine(shape.frame.topRight(), shape.frame.bottomLeft());
    p.setBrush(Qt::NoBrush);
    p.drawRect(shape.frame.adjusted(pen.widthF() / 2, pen.widthF() / 2, -pen.widthF() / 2, -pen.widthF() / 2));
    p.restore();
}

void drawTextLines(QPainter &p, const QRectF &block, const QString &text, const QFont &font, int alignment)
{
    const QFontMetricsF fm(font);
    p.setFont(font);
    const QStringList lines = text.split(QLatin1Char('\n'));
    double y = block.top() + fm.ascent();
    for (const QString &line : lines) {
        const double w = fm.horizontalAdvance(line);
        const double x = alignment <= 0 ? block.left() : alignment >= 2 ? block.right() - w : block.center().x() - w / 2;
        p.drawText(QPointF(x, y), line);
        y += fm.height();
    }
}

void drawComment(QPainter &p, const CanvasObjectSettings &object, const CanvasObjectShape &shape)
{
    const QRectF c = shape.circle;
    const double r = c.width() / 2;
    p.setPen(QPen(QColor(255, 255, 255), r * 0.14));
    p.setBrush(QColor(232, 72, 52));
    p.drawEllipse(c.adjusted(r * 0.07, r * 0.07, -r * 0.07, -r * 0.07));
    if (shape.label.isEmpty())
        return;
    const QPointF target(shape.label.left(), shape.label.center().y());
    const double distance = std::hypot(target.x(), target.y());
    if (distance > r) {
        p.setPen(QPen(QColor(255, 255, 255), std::max(1.0, r * 0.08)));
        p.drawLine(target * (r / distance), target);
    }
    const double pad = canvasCommentPadding(object);
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(20, 20, 20, 220));
    p.drawRoundedRect(shape.label, pad, pad);
    p.setPen(QColor(255, 255, 255));
    drawTextLines(p, shape.label.adjusted(pad, pad, -pad, -pad), object.comment_text, canvasCommentFont(object), 0);
}

void drawTextBox(QPainter &p, const CanvasObjectSettings &object, const CanvasObjectShape &shape)
{
    const QFont font = canvasTextBoxFont(object);
    if (object.text_box_shadow) {
        const double offset = std::max(1.0, font.pixelSize() * 0.06);
        p.setPen(QColor(0, 0, 0, 160));
        drawTextLines(p, shape.frame.translated(offset, offset), object.text_box_text, font, object.text_box_alignment);
    }
    p.setPen(object.text_box_color.isValid() ? object.text_box_color : QColor(255, 255, 255));
    drawTextLines(p, shape.frame, object.text_box_text, font, object.text_box_alignment);
}

void drawDimensionLabel(QPainter &p, const CanvasDimensionLabel &label)
{
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(0, 0, 0, 190));
    p.drawRoundedRect(label.rect, label.fontPx * 0.2, label.fontPx * 0.2);
    p.setPen(QColor(255, 255, 255));
    p.setFont(canvasLabelFont(label.fontPx));
    p.drawText(label.rect, Qt::AlignCenter, label.text);
}

} // namespace

void drawCanvasObject(QPainter &painter, const CanvasObjectSettings &object, const CanvasSources &sources)
{
    if (!object.visible)
        return;
    const double opacity = std::isfinite(object.opacity) ? std::clamp(object.opacity, 0.0, 1.0) : 1.0;
    if (opacity <= 0.0)
        return;
    const CanvasObjectShape shape = canvasObjectShape(object, sources);
    painter.save();
    painter.setOpacity(painter.opacity() * opacity);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform | QPainter::TextAntialiasing);
    painter.setTransform(shape.toCanvas, true);
    switch (shape.kind) {
    case CanvasObjectKind::GuideImage:
    case CanvasObjectKind::Picture:
        drawImageObject(painter, object, shape, sources);
        break;
    case CanvasObjectKind::Comment:
        drawComment(painter, object, shape);
        break;
    case CanvasObjectKind::TextBox:
        drawTextBox(painter, object, shape);
        break;
    }
    painter.setTransform(shape.toCanvas.inverted(), true);
    for (const CanvasDimensionLabel &label : canvasDimensionLabels(object, sources))
        drawDimensionLabel(painter, label);
    painter.restore();
}

void drawCanvasObjects(QPainter &painter, const CanvasTabSettings &canvas, const CanvasSources &sources)
{
    for (const CanvasObjectSettings &object : canvas.objects)
        drawCanvasObject(painter, object, sources);
}

QImage renderCanvasImage(const CanvasTabSettings &canvas, const CanvasSources &sources, QString *error)
{
    const QRect bounds = canvasContentBounds(canvas, sources);
    if (bounds.isEmpty()) {
        if (error)
            *error = tr("No canvas objects to export.");
        return QImage();
    }
    QImage image;
    if (bounds.width() <= kMaxExportSide && bounds.height() <= kMaxExportSide
        && qint64(bounds.width()) * bounds.height() <= kMaxExportPixels)
        image = QImage(bounds.size(), QImage::Format_ARGB32_Premultiplied);
    if (image.isNull()) {
        if (error)
            *error = tr("Canvas PNG image could not be rendered.");
        return QImage();
    }
    image.fill(canvas.background_color.isValid() ? canvas.background_color : QColor(45, 45, 45));
    QPainter painter(&image);
    painter.translate(-bounds.left(), -bounds.top());
    drawCanvasObjects(painter, canvas, sources);
    painter.end();
    return image;
}

int documentTitleBandHeight(const DocumentTitleBand &title, QSize pageSize)
{
    return title.visible ? std::max(1, int(std::lround(pageSize.height() * 0.08))) : 0;
}

QImage composeDocumentPage(const QImage &view, const DocumentTitleBand &title, QSize pageSize)
{
    QImage page(pageSize, QImage::Format_RGB32);
    if (page.isNull())
        return page;
    page.fill(QColor(0x20, 0x22, 0x26));
    QPainter p(&page);
    p.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform | QPainter::TextAntialiasing);
    const int band = documentTitleBandHeight(title, pageSize);
    if (band > 0) {
        p.fillRect(QRect(0, 0, pageSize.width(), band), title.background.isValid() ? title.background : QColor(91, 91, 91));
        p.setPen(QColor(255, 255, 255));
        p.setFont(canvasLabelFont(band * 0.45));
        const int margin = int(band * 0.4);
        p.drawText(QRect(margin, 0, pageSize.width() - 2 * margin, band), Qt::AlignLeft | Qt::AlignVCenter,
                   QFontMetrics(p.font()).elidedText(title.text, Qt::ElideRight, pageSize.width() - 2 * margin));
    }
    if (!view.isNull()) {
        const int margin = std::max(1, pageSize.height() / 40);
        const QRect area(margin, band + margin, pageSize.width() - 2 * margin, pageSize.height() - band - 2 * margin);
        QSize fitted = view.size().scaled(area.size(), Qt::KeepAspectRatio);
        fitted = fitted.expandedTo(QSize(1, 1));
        const QRect target(area.left() + (area.width() - fitted.width()) / 2,
                           area.top() + (area.height() - fitted.height()) / 2, fitted.width(), fitted.height());
        p.drawImage(target, view);
    }
    p.end();
    return page;
}

DocumentTitleBand canvasDocumentTitle(const CanvasTabSettings &canvas, const QString &tabTitle)
{
    DocumentTitleBand band;
    band.visible = canvas.document_title_visible;
    band.text = canvas.document_custom_title_enabled ? canvas.document_custom_title : tabTitle;
    band.background = canvas.document_title_background_color;
    return band;
}
