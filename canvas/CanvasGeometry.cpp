#include "canvas/CanvasGeometry.h"

#include "canvas/CanvasText.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QImageReader>

#include <algorithm>
#include <cmath>

namespace {

// A picture larger than this is refused before decoding: 16384 x 16384 at 4 bytes is 1 GiB.
constexpr qint64 kMaxPicturePixels = qint64(16384) * 16384;
constexpr int kMaxPictureSide = 32768;

QString tr(const char *text)
{
    return QCoreApplication::translate("CanvasTab", text);
}

QRectF centredRect(QSizeF size)
{
    return QRectF(-size.width() / 2.0, -size.height() / 2.0, size.width(), size.height());
}

} // namespace

CanvasObjectKind canvasObjectKind(const CanvasObjectSettings &object)
{
    if (object.isComment())
        return CanvasObjectKind::Comment;
    if (object.isTextBox())
        return CanvasObjectKind::TextBox;
    return object.guide_index >= 0 ? CanvasObjectKind::GuideImage : CanvasObjectKind::Picture;
}

const CanvasImage *CanvasSources::imageFor(const CanvasObjectSettings &object) const
{
    switch (canvasObjectKind(object)) {
    case CanvasObjectKind::GuideImage:
        if (object.guide_index < guides.size() && guides[object.guide_index].image.isValid())
            return &guides[object.guide_index].image;
        return nullptr;
    case CanvasObjectKind::Picture: {
        auto it = pictures.constFind(object.image_file_path);
        return it != pictures.constEnd() && it->isValid() ? &*it : nullptr;
    }
    default:
        return nullptr;
    }
}

bool loadCanvasPicture(const QString &path, CanvasImage *picture, QString *error)
{
    QImageReader reader(path);
    reader.setAutoTransform(true);
    const QSize declared = reader.size();
    if (declared.isValid()
        && (declared.width() > kMaxPictureSide || declared.height() > kMaxPictureSide
            || qint64(declared.width()) * declared.height() > kMaxPicturePixels)) {
        if (error)
            *error = tr("Selected image file could not be read.");
        return false;
    }
    reader.setAllocationLimit(int(kMaxPicturePixels * 4 / (1024 * 1024)));
    QImage image = reader.read();
    if (image.isNull()) {
        if (error)
            *error = tr("Selected image file could not be read.");
        return false;
    }
    picture->pixelSize = image.size();
    picture->image = std::move(image);
    return true;
}

void loadCanvasPictures(const CanvasTabSettings &canvas, CanvasSources *sources)
{
    for (const CanvasObjectSettings &object : canvas.objects) {
        if (canvasObjectKind(object) != CanvasObjectKind::Picture || object.image_file_path.isEmpty()
            || sources->pictures.contains(object.image_file_path))
            continue;
        CanvasImage picture;
        if (loadCanvasPicture(object.image_file_path, &picture))
            sources->pictures.insert(object.image_file_path, picture);
    }
}

CanvasImage canvasPreviewImage(const QImage &full, int maxSide)
{
    CanvasImage out;
    out.pixelSize = full.size();
    if (full.isNull() || std::max(full.width(), full.height()) <= maxSide)
        out.image = full;
    else
        out.image = full.scaled(maxSide, maxSide, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    return out;
}

CanvasCrop normalizedCrop(const CanvasObjectSettings &object)
{
    auto unit = [](double v) { return std::isfinite(v) ? std::clamp(v, 0.0, 1.0) : 0.0; };
    CanvasCrop crop;
    crop.left = unit(object.crop_left);
    crop.top = unit(object.crop_top);
    crop.right = std::max(crop.left, std::isfinite(object.crop_right) ? unit(object.crop_right) : 1.0);
    crop.bottom = std::max(crop.top, std::isfinite(object.crop_bottom) ? unit(object.crop_bottom) : 1.0);
    return crop;
}

QTransform canvasObjectTransform(const CanvasObjectSettings &object)
{
    auto finite = [](double v, double fallback) { return std::isfinite(v) ? v : fallback; };
    QTransform t;
    t.translate(finite(object.translate_x, 0), finite(object.translate_y, 0));
    t.rotate(finite(object.rotation, 0));
    t.scale(finite(object.scale_x, 1), finite(object.scale_y, 1));
    return t;
}

CanvasObjectShape canvasObjectShape(const CanvasObjectSettings &object, const CanvasSources &sources)
{
    CanvasObjectShape shape;
    shape.kind = canvasObjectKind(object);
    shape.toCanvas = canvasObjectTransform(object);
    switch (shape.kind) {
    case CanvasObjectKind::GuideImage:
    case CanvasObjectKind::Picture: {
        const CanvasImage *image = sources.imageFor(object);
        shape.frame = centredRect(image ? QSizeF(image->pixelSize) : QSizeF(kMissingImageSize));
        const CanvasCrop crop = normalizedCrop(object);
        const QRectF f = shape.frame;
        shape.visible = QRectF(QPointF(f.left() + crop.left * f.width(), f.top() + crop.top * f.height()),
                               QPointF(f.left() + crop.right * f.width(), f.top() + crop.bottom * f.height()));
        break;
    }
    case CanvasObjectKind::Comment: {
        const double r = kCommentRadius * std::max(0.05, object.comment_circle_scale);
        shape.circle = QRectF(-r, -r, 2 * r, 2 * r);
        shape.frame = shape.circle;
        if (!object.comment_text.isEmpty()) {
            const QPointF anchor(object.comment_label_offset_x * kCommentLabelUnit,
                                 object.comment_label_offset_y * kCommentLabelUnit);
            const QSizeF text = canvasTextBlockSize(object.comment_text, canvasCommentFont(object));
            const double pad = canvasCommentPadding(object);
            // The label's left edge stands at the anchor, vertically centred on it.
            shape.label = QRectF(anchor.x(), anchor.y() - text.height() / 2 - pad, text.width() + 2 * pad,
                                 text.height() + 2 * pad);
            shape.frame = shape.frame.united(shape.label);
        }
        shape.visible = shape.frame;
        break;
    }
    case CanvasObjectKind::TextBox: {
        const QSizeF size = canvasTextBlockSize(object.text_box_text, canvasTextBoxFont(object));
        // The alignments say where the position stands on the block: left/centre/right, top/middle/bottom.
        const double x = object.text_box_alignment <= 0 ? 0.0
                         : object.text_box_alignment >= 2 ? -size.width()
                                                          : -size.width() / 2;
        const double y = object.text_box_vertical_alignment <= 0 ? 0.0
                         : object.text_box_vertical_alignment >= 2 ? -size.height()
                                                                   : -size.height() / 2;
        shape.frame = QRectF(QPointF(x, y), size);
        shape.visible = shape.frame;
        break;
    }
    }
    return shape;
}

QPolygonF canvasObjectOutline(const CanvasObjectSettings &object, const CanvasSources &sources)
{
    const CanvasObjectShape shape = canvasObjectShape(object, sources);
    const QRectF r = shape.visible;
    return shape.toCanvas.map(QPolygonF({r.topLeft(), r.topRight(), r.bottomRight(), r.bottomLeft()}));
}

QSize canvasObjectSourceSize(const CanvasObjectSettings &object, const CanvasSources &sources)
{
    const CanvasObjectShape shape = canvasObjectShape(object, sources);
    return shape.frame.size().toSize();
}

QSize canvasObjectPlacedSize(const CanvasObjectSettings &object, const CanvasSources &sources)
{
    const CanvasObjectShape shape = canvasObjectShape(object, sources);
    const double w = shape.visible.width() * std::abs(object.scale_x);
    const double h = shape.visible.height() * std::abs(object.scale_y);
    return QSize(int(std::lround(std::min(w, 1e9))), int(std::lround(std::min(h, 1e9))));
}

QVector<CanvasDimensionLabel> canvasDimensionLabels(const CanvasObjectSettings &object, const CanvasSources &sources)
{
    QVector<CanvasDimensionLabel> labels;
    if (!object.show_width_dimension && !object.show_height_dimension)
        return labels;
    const QRectF box = canvasObjectOutline(object, sources).boundingRect();
    const QSize placed = canvasObjectPlacedSize(object, sources);
    const double fontPx = std::clamp(0.04 * std::max(box.width(), box.height()), 14.0, 400.0);
    const QFont font = canvasLabelFont(fontPx);
    auto labelAt = [&](const QString &text, const QPointF &centre) {
        const QSizeF size = canvasTextBlockSize(text, font) + QSizeF(fontPx * 0.6, fontPx * 0.3);
        labels.append({text, QRectF(centre - QPointF(size.width() / 2, size.height() / 2), size), fontPx});
    };
    const double gap = fontPx * 0.4;
    if (object.show_width_dimension && object.show_height_dimension) {
        labelAt(QStringLiteral("%1x%2px").arg(placed.width()).arg(placed.height()),
                QPointF(box.center().x(), box.bottom() + gap + fontPx * 0.65));
    } else if (object.show_width_dimension) {
        labelAt(QStringLiteral("%1px").arg(placed.width()), QPointF(box.center().x(), box.bottom() + gap + fontPx * 0.65));
    } else {
        const QString text = QStringLiteral("%1px").arg(placed.height());
        const double half = (canvasTextBlockSize(text, font).width() + fontPx * 0.6) / 2;
        labelAt(text, QPointF(box.right() + gap + half, box.center().y()));
    }
    return labels;
}

QRectF canvasObjectBounds(const CanvasObjectSettings &object, const CanvasSources &sources)
{
    QRectF bounds = canvasObjectOutline(object, sources).boundingRect();
    for (const CanvasDimensionLabel &label : canvasDimensionLabels(object, sources))
        bounds = bounds.united(label.rect);
    return bounds;
}

QRect canvasContentBounds(const CanvasTabSettings &canvas, const CanvasSources &sources)
{
    QRectF united;
    for (const CanvasObjectSettings &object : canvas.objects) {
        if (!object.visible)
            continue;
        const QRectF b = canvasObjectBounds(object, sources);
        if (b.width() <= 0 || b.height() <= 0 || !std::isfinite(b.width()) || !std::isfinite(b.height()))
            continue;
        united = united.isNull() ? b : united.united(b);
    }
    if (united.isNull())
        return QRect();
    // Clamp far-off coordinates so the integer rectangle cannot overflow.
    auto c = [](double v) { return std::clamp(v, -1e9, 1e9); };
    const int left = int(std::floor(c(united.left()) + 1e-9));
    const int top = int(std::floor(c(united.top()) + 1e-9));
    const int right = int(std::ceil(c(united.right()) - 1e-9));
    const int bottom = int(std::ceil(c(united.bottom()) - 1e-9));
    return QRect(QPoint(left, top), QPoint(right - 1, bottom - 1));
}

int canvasHitTest(const CanvasTabSettings &canvas, const CanvasSources &sources, const QPointF &point)
{
    for (int i = int(canvas.objects.size()) - 1; i >= 0; --i) {
        const CanvasObjectSettings &object = canvas.objects[i];
        if (!object.visible)
            continue;
        if (canvasObjectOutline(object, sources).containsPoint(point, Qt::OddEvenFill))
            return i;
    }
    return -1;
}
