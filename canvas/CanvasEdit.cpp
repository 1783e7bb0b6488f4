#include "canvas/CanvasEdit.h"

#include <QCoreApplication>
#include <QLineF>

#include <algorithm>
#include <cmath>

namespace {

double roundTo(double value, double step)
{
    return std::round(value / step) * step;
}

double normalizedDegrees(double degrees)
{
    degrees = std::fmod(degrees, 360.0);
    if (degrees > 180.0)
        degrees -= 360.0;
    if (degrees <= -180.0)
        degrees += 360.0;
    return degrees;
}

// Which sides a handle moves: -1 the left/top side, +1 the right/bottom side, 0 neither.
struct HandleSides {
    int x = 0;
    int y = 0;
};

HandleSides sidesOf(CanvasHandle handle)
{
    switch (handle) {
    case CanvasHandle::TopLeft: return {-1, -1};
    case CanvasHandle::Top: return {0, -1};
    case CanvasHandle::TopRight: return {1, -1};
    case CanvasHandle::Right: return {1, 0};
    case CanvasHandle::BottomRight: return {1, 1};
    case CanvasHandle::Bottom: return {0, 1};
    case CanvasHandle::BottomLeft: return {-1, 1};
    case CanvasHandle::Left: return {-1, 0};
    default: return {0, 0};
    }
}

// Rotation of the object alone (no scale, no translation): canvas directions <-> object axes.
QTransform rotationOf(const CanvasObjectSettings &object)
{
    QTransform r;
    r.rotate(object.rotation);
    return r;
}

CanvasObjectSettings translated(CanvasObjectSettings object, const QPointF &delta, bool snap)
{
    object.translate_x += delta.x();
    object.translate_y += delta.y();
    if (snap) {
        object.translate_x = roundTo(object.translate_x, kCanvasSnapStep);
        object.translate_y = roundTo(object.translate_y, kCanvasSnapStep);
    }
    return object;
}

CanvasObjectSettings rotated(CanvasObjectSettings object, const QPointF &from, const QPointF &to, bool snap)
{
    const QPointF centre(object.translate_x, object.translate_y);
    const double a0 = std::atan2(from.y() - centre.y(), from.x() - centre.x());
    const double a1 = std::atan2(to.y() - centre.y(), to.x() - centre.x());
    double degrees = object.rotation + (a1 - a0) * 180.0 / M_PI;
    if (snap)
        degrees = roundTo(degrees, kCanvasRotationSnap);
    object.rotation = normalizedDegrees(degrees);
    return object;
}

CanvasObjectSettings scaled(CanvasObjectSettings object, HandleSides sides, const QPointF &from, const QPointF &to,
                            bool snap)
{
    const QTransform back = rotationOf(object).inverted();
    const QPointF centre(object.translate_x, object.translate_y);
    const QPointF a = back.map(from - centre);
    const QPointF b = back.map(to - centre);
    auto ratio = [](double now, double before) { return std::abs(before) < 1e-9 ? 1.0 : now / before; };
    double fx = 1.0, fy = 1.0;
    if (sides.x != 0 && sides.y != 0) {
        const double before = std::hypot(a.x(), a.y());
        fx = fy = before < 1e-9 ? 1.0 : std::hypot(b.x(), b.y()) / before;
    } else if (sides.x != 0) {
        fx = ratio(b.x(), a.x());
    } else if (sides.y != 0) {
        fy = ratio(b.y(), a.y());
    }
    auto apply = [snap](double scale, double factor) {
        double s = scale * std::max(factor, 1e-3);
        if (snap)
            s = std::copysign(std::max(kCanvasScaleSnap, roundTo(std::abs(s), kCanvasScaleSnap)), s);
        return s;
    };
    object.scale_x = apply(object.scale_x, fx);
    object.scale_y = apply(object.scale_y, fy);
    return object;
}

CanvasObjectSettings resized(CanvasObjectSettings object, const CanvasObjectShape &shape, HandleSides sides,
                             const QPointF &from, const QPointF &to, bool snap)
{
    const QTransform rotation = rotationOf(object);
    const QPointF delta = rotation.inverted().map(to - from);
    const QRectF v = shape.visible;
    // One axis: `lo`/`hi` are the drawn part's sides in object-local units; the moved side
    // follows the pointer and the other stays where it stands on the canvas.
    auto axis = [snap](int side, double lo, double hi, double scale, double shift, double *newScale) {
        const double fixed = side > 0 ? lo : hi;
        const double moved = side > 0 ? hi : lo;
        const double span = moved - fixed;
        if (std::abs(span) < 1e-9) {
            *newScale = scale;
            return 0.0;
        }
        double next = scale + shift / span;
        // Never through zero: the object keeps its mirroring and at least one pixel.
        double size = std::abs(span) * (next * scale > 0 ? std::abs(next) : 0.0);
        if (snap)
            size = roundTo(size, kCanvasSnapStep);
        size = std::max(size, 1.0);
        next = std::copysign(size / std::abs(span), scale);
        *newScale = next;
        return fixed * (scale - next); // how far the centre moves along this axis
    };
    double sx = object.scale_x, sy = object.scale_y;
    QPointF move;
    if (sides.x != 0)
        move.setX(axis(sides.x, v.left(), v.right(), object.scale_x, delta.x(), &sx));
    if (sides.y != 0)
        move.setY(axis(sides.y, v.top(), v.bottom(), object.scale_y, delta.y(), &sy));
    object.scale_x = sx;
    object.scale_y = sy;
    const QPointF canvasMove = rotation.map(move);
    object.translate_x += canvasMove.x();
    object.translate_y += canvasMove.y();
    return object;
}

CanvasObjectSettings cropped(CanvasObjectSettings object, const CanvasObjectShape &shape, HandleSides sides,
                             const QPointF &from, const QPointF &to, bool snap)
{
    if (shape.kind != CanvasObjectKind::GuideImage && shape.kind != CanvasObjectKind::Picture)
        return object;
    const QTransform toLocal = shape.toCanvas.inverted();
    const QPointF delta = toLocal.map(to) - toLocal.map(from);
    const QRectF f = shape.frame;
    const CanvasCrop crop = normalizedCrop(object);
    constexpr double kMinimum = 0.01;
    auto fraction = [snap](double value) { return snap ? roundTo(value, kCanvasCropSnap) : value; };
    if (sides.x < 0)
        object.crop_left = std::clamp(fraction(crop.left + delta.x() / f.width()), 0.0, crop.right - kMinimum);
    if (sides.x > 0)
        object.crop_right = std::clamp(fraction(crop.right + delta.x() / f.width()), crop.left + kMinimum, 1.0);
    if (sides.y < 0)
        object.crop_top = std::clamp(fraction(crop.top + delta.y() / f.height()), 0.0, crop.bottom - kMinimum);
    if (sides.y > 0)
        object.crop_bottom = std::clamp(fraction(crop.bottom + delta.y() / f.height()), crop.top + kMinimum, 1.0);
    return object;
}

} // namespace

CanvasTool canvasToolFromMode(int transformMode)
{
    return CanvasTool(std::clamp(transformMode, 0, 3));
}

QVector<QPointF> canvasHandlePositions(const CanvasObjectSettings &object, const CanvasSources &sources)
{
    const CanvasObjectShape shape = canvasObjectShape(object, sources);
    const QRectF r = shape.visible;
    const QPointF c = r.center();
    const QVector<QPointF> local = {r.topLeft(),     QPointF(c.x(), r.top()),    r.topRight(),
                                    QPointF(r.right(), c.y()), r.bottomRight(), QPointF(c.x(), r.bottom()),
                                    r.bottomLeft(),  QPointF(r.left(), c.y())};
    QVector<QPointF> out;
    for (const QPointF &p : local)
        out.append(shape.toCanvas.map(p));
    return out;
}

CanvasHandle canvasHandleAt(const CanvasObjectSettings &object, const CanvasSources &sources, const QPointF &point,
                            double tolerance)
{
    const QVector<QPointF> handles = canvasHandlePositions(object, sources);
    int best = -1;
    double bestDistance = tolerance;
    for (int i = 0; i < handles.size(); ++i) {
        const double d = QLineF(handles[i], point).length();
        if (d <= bestDistance) {
            bestDistance = d;
            best = i;
        }
    }
    if (best >= 0)
        return CanvasHandle(int(CanvasHandle::TopLeft) + best);
    if (canvasObjectOutline(object, sources).containsPoint(point, Qt::OddEvenFill))
        return CanvasHandle::Body;
    return CanvasHandle::None;
}

CanvasObjectSettings applyCanvasDrag(const CanvasObjectSettings &start, const CanvasSources &sources, CanvasTool tool,
                                     CanvasHandle handle, const QPointF &from, const QPointF &to, bool snap)
{
    if (handle == CanvasHandle::None)
        return start;
    if (tool == CanvasTool::Rotate)
        return rotated(start, from, to, snap);
    if (handle == CanvasHandle::Body || tool == CanvasTool::Translate)
        return translated(start, to - from, snap);
    const HandleSides sides = sidesOf(handle);
    const CanvasObjectShape shape = canvasObjectShape(start, sources);
    switch (tool) {
    case CanvasTool::Scale:
        return scaled(start, sides, from, to, snap);
    case CanvasTool::Resize:
        return resized(start, shape, sides, from, to, snap);
    case CanvasTool::Crop:
        return cropped(start, shape, sides, from, to, snap);
    default:
        return start;
    }
}

QVector<int> moveCanvasObjects(CanvasTabSettings *canvas, const QVector<int> &selection, int direction)
{
    QVector<int> sorted = selection;
    std::sort(sorted.begin(), sorted.end());
    sorted.erase(std::unique(sorted.begin(), sorted.end()), sorted.end());
    QVector<bool> selected(canvas->objects.size(), false);
    for (int i : sorted) {
        if (i >= 0 && i < canvas->objects.size())
            selected[i] = true;
    }
    const int n = int(canvas->objects.size());
    if (direction > 0) {
        for (int i = n - 2; i >= 0; --i) {
            if (selected[i] && !selected[i + 1]) {
                canvas->objects.swapItemsAt(i, i + 1);
                std::swap(selected[i], selected[i + 1]);
            }
        }
    } else if (direction < 0) {
        for (int i = 1; i < n; ++i) {
            if (selected[i] && !selected[i - 1]) {
                canvas->objects.swapItemsAt(i, i - 1);
                std::swap(selected[i], selected[i - 1]);
            }
        }
    }
    QVector<int> out;
    for (int i = 0; i < n; ++i) {
        if (selected[i])
            out.append(i);
    }
    return out;
}

QString canvasTransformStatus(const CanvasObjectSettings &object)
{
    return QCoreApplication::translate("CanvasTab", "Scale X %1 Y %2  Position X %3 Y %4")
        .arg(object.scale_x, 0, 'f', 3)
        .arg(object.scale_y, 0, 'f', 3)
        .arg(object.translate_x, 0, 'f', 1)
        .arg(object.translate_y, 0, 'f', 1);
}
