#include "canvas/ui/CanvasWidget.h"

#include "canvas/CanvasPainter.h"

#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileInfo>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QUrl>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace {

constexpr double kMinViewZoom = 2.0;     // per thousand: 1 screen px shows 500 canvas px
constexpr double kMaxViewZoom = 40000.0; // 40 screen px per canvas px
constexpr double kHandleRadius = 5.0;    // screen pixels
constexpr double kWheelStep = 1.15;

const QColor kOutside(27, 28, 31);
const QColor kSelection(64, 170, 255);

} // namespace

CanvasWidget::CanvasWidget(QWidget *parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("vantreoCanvasWidget"));
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setAcceptDrops(true);
    setMinimumSize(200, 150);
}

void CanvasWidget::setCanvas(const CanvasTabSettings &canvas)
{
    m_canvas = canvas;
    m_tool = canvasToolFromMode(canvas.transform_mode);
    QVector<int> kept;
    for (int i : m_selection) {
        if (i >= 0 && i < m_canvas.objects.size())
            kept.append(i);
    }
    const bool selectionChangedNow = kept != m_selection;
    m_selection = kept;
    if (m_drag == Drag::Objects)
        m_drag = Drag::None;
    update();
    if (selectionChangedNow)
        Q_EMIT selectionChanged();
    announceStatus();
}

void CanvasWidget::setSources(const CanvasSources &sources)
{
    m_sources = sources;
    update();
    announceStatus();
}

void CanvasWidget::setTitle(const QString &title)
{
    m_title = title;
    update();
}

void CanvasWidget::setSelection(const QVector<int> &selection)
{
    QVector<int> valid;
    for (int i : selection) {
        if (i >= 0 && i < m_canvas.objects.size() && !valid.contains(i))
            valid.append(i);
    }
    if (valid == m_selection)
        return;
    m_selection = valid;
    update();
    Q_EMIT selectionChanged();
    announceStatus();
}

void CanvasWidget::setTool(CanvasTool tool)
{
    if (tool == m_tool)
        return;
    m_tool = tool;
    if (tool != CanvasTool::Crop)
        m_canvas.transform_mode = int(tool);
    update();
    Q_EMIT toolChanged(tool);
}

double CanvasWidget::zoom() const
{
    const double z = std::isfinite(m_canvas.view_zoom) ? m_canvas.view_zoom : 180.0;
    return std::clamp(z, kMinViewZoom, kMaxViewZoom) / 1000.0;
}

QPointF CanvasWidget::canvasToScreen(const QPointF &p) const
{
    return QPointF(width() / 2.0 + m_canvas.view_pan_x + p.x() * zoom(), height() / 2.0 + m_canvas.view_pan_y + p.y() * zoom());
}

QPointF CanvasWidget::screenToCanvas(const QPointF &p) const
{
    return QPointF((p.x() - width() / 2.0 - m_canvas.view_pan_x) / zoom(),
                   (p.y() - height() / 2.0 - m_canvas.view_pan_y) / zoom());
}

void CanvasWidget::fitView()
{
    QRectF bounds = canvasContentBounds(m_canvas, m_sources);
    if (bounds.isEmpty())
        bounds = QRectF(-960, -540, 1920, 1080);
    const double margin = 40.0;
    const double zx = std::max(1.0, width() - 2 * margin) / bounds.width();
    const double zy = std::max(1.0, height() - 2 * margin) / bounds.height();
    m_canvas.view_zoom = std::clamp(std::min(zx, zy) * 1000.0, kMinViewZoom, kMaxViewZoom);
    m_canvas.view_pan_x = -bounds.center().x() * zoom();
    m_canvas.view_pan_y = -bounds.center().y() * zoom();
    update();
    Q_EMIT viewChanged();
}

void CanvasWidget::zoomAt(const QPointF &screenPoint, double factor)
{
    const QPointF anchor = screenToCanvas(screenPoint);
    m_canvas.view_zoom = std::clamp(zoom() * 1000.0 * factor, kMinViewZoom, kMaxViewZoom);
    // Keep the canvas point under the pointer where it was.
    m_canvas.view_pan_x = screenPoint.x() - width() / 2.0 - anchor.x() * zoom();
    m_canvas.view_pan_y = screenPoint.y() - height() / 2.0 - anchor.y() * zoom();
    update();
    Q_EMIT viewChanged();
}

QString CanvasWidget::statusText() const
{
    const int index = primarySelection();
    return index < 0 ? QString() : canvasTransformStatus(m_canvas.objects[index]);
}

void CanvasWidget::announceStatus()
{
    Q_EMIT statusChanged(statusText());
}

QImage CanvasWidget::renderView()
{
    QImage image(size() * devicePixelRatioF(), QImage::Format_ARGB32_Premultiplied);
    if (image.isNull())
        return image;
    image.setDevicePixelRatio(devicePixelRatioF());
    QPainter painter(&image);
    paintCanvas(painter, false);
    painter.end();
    return image;
}

// ---- painting ------------------------------------------------------------------------------

void CanvasWidget::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    paintCanvas(painter, true);
}

void CanvasWidget::paintCanvas(QPainter &painter, bool withMarks)
{
    painter.fillRect(rect(), kOutside);
    const QRect bounds = canvasContentBounds(m_canvas, m_sources);
    painter.save();
    painter.translate(width() / 2.0 + m_canvas.view_pan_x, height() / 2.0 + m_canvas.view_pan_y);
    painter.scale(zoom(), zoom());
    if (!bounds.isEmpty())
        painter.fillRect(bounds, m_canvas.background_color.isValid() ? m_canvas.background_color : QColor(45, 45, 45));
    if (m_canvas.grid_visible)
        paintGrid(painter, QRectF(screenToCanvas(QPointF(0, 0)), screenToCanvas(QPointF(width(), height()))));
    drawCanvasObjects(painter, m_canvas, m_sources);
    painter.restore();
    if (!bounds.isEmpty())
        paintBoundsInfo(painter, bounds);
    if (withMarks)
        paintSelection(painter);
}

void CanvasWidget::paintGrid(QPainter &painter, const QRectF &visible)
{
    // The finest power-of-ten step that keeps lines at least 12 screen pixels apart.
    double step = 10.0;
    while (step * zoom() < 12.0 && step < 1e7)
        step *= 10.0;
    painter.save();
    QPen pen(QColor(255, 255, 255, 40), 0);
    painter.setPen(pen);
    for (double x = std::floor(visible.left() / step) * step; x <= visible.right(); x += step)
        painter.drawLine(QPointF(x, visible.top()), QPointF(x, visible.bottom()));
    for (double y = std::floor(visible.top() / step) * step; y <= visible.bottom(); y += step)
        painter.drawLine(QPointF(visible.left(), y), QPointF(visible.right(), y));
    painter.setPen(QPen(QColor(255, 255, 255, 90), 0));
    painter.drawLine(QPointF(0, visible.top()), QPointF(0, visible.bottom()));
    painter.drawLine(QPointF(visible.left(), 0), QPointF(visible.right(), 0));
    painter.restore();
}

void CanvasWidget::paintBoundsInfo(QPainter &painter, const QRect &bounds)
{
    const QRectF screen(canvasToScreen(bounds.topLeft()), canvasToScreen(QPointF(bounds.left() + bounds.width(),
                                                                                  bounds.top() + bounds.height())));
    painter.save();
    painter.setPen(QPen(QColor(255, 255, 255, 110), 1, Qt::DashLine));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(screen);

    QStringList parts;
    if (m_canvas.title_visible && !m_title.isEmpty())
        parts << m_title;
    if (m_canvas.bounds_resolution_visible)
        parts << QStringLiteral("%1x%2px").arg(bounds.width()).arg(bounds.height());
    if (m_canvas.bounds_dimensions_visible) {
        // Millimetres follow the first visible guide: its real size over its size on the canvas.
        for (const CanvasObjectSettings &object : m_canvas.objects) {
            if (!object.visible || canvasObjectKind(object) != CanvasObjectKind::GuideImage
                || object.guide_index >= m_sources.guides.size())
                continue;
            const CanvasGuideSource &guide = m_sources.guides[object.guide_index];
            if (guide.realSizeMm.isEmpty() || guide.image.pixelSize.isEmpty() || object.scale_x == 0)
                continue;
            const double mmPerPx = guide.realSizeMm.width() / (guide.image.pixelSize.width() * std::abs(object.scale_x));
            parts << QStringLiteral("(%1x%2mm)")
                         .arg(std::lround(bounds.width() * mmPerPx))
                         .arg(std::lround(bounds.height() * mmPerPx));
            break;
        }
    }
    if (m_canvas.ratio_visible && bounds.height() > 0)
        parts << QStringLiteral("%1:1").arg(double(bounds.width()) / bounds.height(), 0, 'f', 2);
    if (!parts.isEmpty()) {
        painter.setPen(QColor(235, 235, 235));
        const QFontMetrics fm(font());
        painter.drawText(QPointF(screen.left(), screen.top() - fm.descent() - 4), parts.join(QStringLiteral("  ")));
    }
    painter.restore();
}

void CanvasWidget::paintSelection(QPainter &painter)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    for (int index : m_selection) {
        const CanvasObjectSettings &object = m_canvas.objects[index];
        QPolygonF outline;
        for (const QPointF &p : canvasObjectOutline(object, m_sources))
            outline << canvasToScreen(p);
        painter.setPen(QPen(kSelection, 1.5, m_tool == CanvasTool::Crop ? Qt::DashLine : Qt::SolidLine));
        painter.setBrush(Qt::NoBrush);
        painter.drawPolygon(outline);
        if (index != primarySelection() || m_tool == CanvasTool::Translate)
            continue;
        if (m_tool == CanvasTool::Rotate) {
            const QPointF c = canvasToScreen(QPointF(object.translate_x, object.translate_y));
            painter.drawEllipse(c, 6, 6);
            continue;
        }
        painter.setBrush(m_tool == CanvasTool::Crop ? QColor(255, 200, 60) : QColor(255, 255, 255));
        painter.setPen(QPen(kSelection, 1));
        for (const QPointF &p : canvasHandlePositions(object, m_sources))
            painter.drawRect(QRectF(canvasToScreen(p) - QPointF(kHandleRadius, kHandleRadius),
                                    QSizeF(2 * kHandleRadius, 2 * kHandleRadius)));
    }
    painter.restore();
}

// ---- mouse and keys -------------------------------------------------------------------------

void CanvasWidget::mousePressEvent(QMouseEvent *event)
{
    setFocus(Qt::MouseFocusReason);
    const QPointF screen = event->position();
    m_pressScreen = screen;
    m_pressCanvas = screenToCanvas(screen);
    m_dragEdited = false;
    if (event->button() == Qt::MiddleButton || event->button() == Qt::RightButton) {
        m_drag = Drag::Pan;
        m_panStart = QPointF(m_canvas.view_pan_x, m_canvas.view_pan_y);
        return;
    }
    if (event->button() != Qt::LeftButton)
        return;

    // A handle of the selected object first, so a handle over another object still works.
    m_handle = CanvasHandle::None;
    const int primary = primarySelection();
    if (primary >= 0 && m_tool != CanvasTool::Translate && m_tool != CanvasTool::Rotate) {
        const CanvasHandle h = canvasHandleAt(m_canvas.objects[primary], m_sources, m_pressCanvas, kHandleRadius * 1.6 / zoom());
        if (h != CanvasHandle::Body && h != CanvasHandle::None)
            m_handle = h;
    }
    if (m_handle == CanvasHandle::None) {
        const int hit = canvasHitTest(m_canvas, m_sources, m_pressCanvas);
        if (hit < 0) {
            if (!(event->modifiers() & Qt::ControlModifier))
                setSelection({});
            m_drag = Drag::Pan;
            m_panStart = QPointF(m_canvas.view_pan_x, m_canvas.view_pan_y);
            return;
        }
        QVector<int> selection = m_selection;
        if (event->modifiers() & Qt::ControlModifier) {
            if (selection.contains(hit))
                selection.removeAll(hit);
            else
                selection.append(hit);
            setSelection(selection);
            if (!m_selection.contains(hit))
                return;
        } else if (!selection.contains(hit)) {
            setSelection({hit});
        } else {
            selection.removeAll(hit); // the clicked one becomes the primary
            selection.append(hit);
            setSelection(selection);
        }
        m_handle = CanvasHandle::Body;
    }
    m_drag = Drag::Objects;
    m_dragStart.clear();
    for (int i : m_selection)
        m_dragStart.append(m_canvas.objects[i]);
}

void CanvasWidget::mouseMoveEvent(QMouseEvent *event)
{
    const QPointF screen = event->position();
    if (m_drag == Drag::Pan) {
        m_canvas.view_pan_x = m_panStart.x() + screen.x() - m_pressScreen.x();
        m_canvas.view_pan_y = m_panStart.y() + screen.y() - m_pressScreen.y();
        update();
        Q_EMIT viewChanged();
        return;
    }
    if (m_drag != Drag::Objects || m_dragStart.size() != m_selection.size())
        return;
    if (!m_dragEdited && (screen - m_pressScreen).manhattanLength() < 3)
        return;
    if (!m_dragEdited) {
        Q_EMIT aboutToEdit();
        m_dragEdited = true;
    }
    const bool snap = m_canvas.snap || (event->modifiers() & Qt::ShiftModifier);
    const QPointF now = screenToCanvas(screen);
    const int primary = m_selection.size() - 1;
    for (int k = 0; k < m_selection.size(); ++k) {
        // Handles act on the primary object; the others follow body moves and turns only.
        const CanvasHandle handle = k == primary ? m_handle : CanvasHandle::Body;
        const CanvasTool tool = handle == CanvasHandle::Body && m_tool != CanvasTool::Rotate ? CanvasTool::Translate : m_tool;
        m_canvas.objects[m_selection[k]] =
            applyCanvasDrag(m_dragStart[k], m_sources, tool, handle, m_pressCanvas, now, snap);
    }
    update();
    Q_EMIT canvasEdited();
    announceStatus();
}

void CanvasWidget::mouseReleaseEvent(QMouseEvent *)
{
    m_drag = Drag::None;
    m_dragStart.clear();
}

void CanvasWidget::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (canvasHitTest(m_canvas, m_sources, screenToCanvas(event->position())) < 0)
        fitView();
}

void CanvasWidget::wheelEvent(QWheelEvent *event)
{
    const double notches = event->angleDelta().y() / 120.0;
    if (notches != 0)
        zoomAt(event->position(), std::pow(kWheelStep, notches));
    event->accept();
}

void CanvasWidget::nudge(double dx, double dy)
{
    if (m_selection.isEmpty())
        return;
    Q_EMIT aboutToEdit();
    for (int i : m_selection) {
        m_canvas.objects[i].translate_x += dx;
        m_canvas.objects[i].translate_y += dy;
    }
    update();
    Q_EMIT canvasEdited();
    announceStatus();
}

void CanvasWidget::keyPressEvent(QKeyEvent *event)
{
    const double step = (event->modifiers() & Qt::ShiftModifier) ? 10.0 : 1.0;
    switch (event->key()) {
    case Qt::Key_Left: nudge(-step, 0); return;
    case Qt::Key_Right: nudge(step, 0); return;
    case Qt::Key_Up: nudge(0, -step); return;
    case Qt::Key_Down: nudge(0, step); return;
    case Qt::Key_T: setTool(CanvasTool::Resize); return;
    case Qt::Key_C:
        if (event->modifiers() == Qt::NoModifier) {
            setTool(m_tool == CanvasTool::Crop ? canvasToolFromMode(m_canvas.transform_mode) : CanvasTool::Crop);
            return;
        }
        break;
    case Qt::Key_F: fitView(); return;
    case Qt::Key_Escape:
        if (m_tool == CanvasTool::Crop)
            setTool(canvasToolFromMode(m_canvas.transform_mode));
        else
            setSelection({});
        return;
    case Qt::Key_Delete:
    case Qt::Key_Backspace: Q_EMIT deleteRequested(); return;
    case Qt::Key_Plus:
    case Qt::Key_Equal: zoomAt(QPointF(width() / 2.0, height() / 2.0), kWheelStep); return;
    case Qt::Key_Minus: zoomAt(QPointF(width() / 2.0, height() / 2.0), 1.0 / kWheelStep); return;
    default: break;
    }
    if (event->matches(QKeySequence::SelectAll)) {
        QVector<int> all;
        for (int i = 0; i < m_canvas.objects.size(); ++i)
            all.append(i);
        setSelection(all);
        return;
    }
    QWidget::keyPressEvent(event);
}

void CanvasWidget::dragEnterEvent(QDragEnterEvent *event)
{
    if (event->mimeData()->hasUrls())
        event->acceptProposedAction();
}

void CanvasWidget::dropEvent(QDropEvent *event)
{
    QStringList paths;
    for (const QUrl &url : event->mimeData()->urls()) {
        if (url.isLocalFile())
            paths << url.toLocalFile();
    }
    if (paths.isEmpty())
        return;
    event->acceptProposedAction();
    Q_EMIT filesDropped(paths, screenToCanvas(event->position()));
}
