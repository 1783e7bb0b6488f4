#include "guide/ui/GuidePreviewWidget.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QThreadPool>
#include <QWheelEvent>
#include <QtConcurrent/QtConcurrentRun>
#include <QtMath>

#include <algorithm>
#include <exception>
#include <cmath>

namespace {

constexpr double kMinZoom = 0.005;
constexpr double kMaxZoom = 64.0;
constexpr double kZoomStep = 1.25;
constexpr double kHandleSize = 8.0;
constexpr double kKnobDistance = 26.0;
// Pyramid levels stop once the image fits in this many pixels on its longer side.
constexpr int kSmallestLevel = 384;

QPointF rotated(const QPointF &p, double degrees)
{
    const double r = qDegreesToRadians(degrees);
    const double c = std::cos(r);
    const double s = std::sin(r);
    return {p.x() * c - p.y() * s, p.x() * s + p.y() * c};
}

// Guide renders get threads of their own: the renderer itself fans out over the global
// pool, and a render waiting inside that pool for its own bands could starve it.
QThreadPool *renderPool()
{
    static QThreadPool *pool = [] {
        auto *p = new QThreadPool(QCoreApplication::instance());
        p->setMaxThreadCount(2);
        p->setExpiryTimeout(30000);
        // Renders still running at exit finish while fonts and the application exist.
        QObject::connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, p, [p] {
            p->clear();
            p->waitForDone();
        });
        return p;
    }();
    return pool;
}

} // namespace

GuidePreviewWidget::GuidePreviewWidget(QWidget *parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("vantreoGuidePreview"));
    setMinimumSize(240, 180);
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
    connect(&m_watcher, &QFutureWatcher<RenderResult>::finished, this, &GuidePreviewWidget::onJobFinished);
}

GuidePreviewWidget::~GuidePreviewWidget()
{
    // A running job owns copies of its inputs only, but it draws text: let it finish while
    // the application and its fonts still exist, which a closing test or window may not
    // guarantee once this widget is gone.
    m_watcher.disconnect(this);
    m_watcher.waitForFinished();
}

quint64 GuidePreviewWidget::requestRender(RenderJob job)
{
    const quint64 generation = ++m_requestedGeneration;
    if (m_runningGeneration != 0) {
        if (m_pendingJob)
            ++m_droppedResults; // the queued request is superseded before it ran
        m_pendingJob = std::move(job);
        m_pendingGeneration = generation;
    } else {
        startJob(generation, std::move(job));
    }
    return generation;
}

bool GuidePreviewWidget::isRendering() const
{
    return m_runningGeneration != 0 || bool(m_pendingJob);
}

bool GuidePreviewWidget::waitForIdle(int timeoutMs)
{
    QElapsedTimer timer;
    timer.start();
    while (isRendering()) {
        if (timer.elapsed() > timeoutMs)
            return false;
        m_watcher.waitForFinished();
        QCoreApplication::sendPostedEvents(&m_watcher);
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
    }
    return true;
}

void GuidePreviewWidget::startJob(quint64 generation, RenderJob job)
{
    m_runningGeneration = generation;
    m_watcher.setFuture(QtConcurrent::run(renderPool(), &GuidePreviewWidget::runJob, generation, std::move(job)));
    update();
}

GuidePreviewWidget::RenderResult GuidePreviewWidget::runJob(quint64 generation, const RenderJob &job)
{
    RenderResult result;
    result.generation = generation;
    try {
        result.image = job();
        if (!result.image.isNull())
            buildLevels(&result);
    } catch (const std::exception &) {
        // Out of memory: the preview keeps its last picture instead of ending the program.
        result.image = QImage();
        result.levels.clear();
    }
    return result;
}

void GuidePreviewWidget::buildLevels(RenderResult *out)
{
    RenderResult &result = *out;
    QImage level = result.image.format() == QImage::Format_ARGB32
        ? result.image.convertToFormat(QImage::Format_ARGB32_Premultiplied)
        : result.image;
    result.levels.append(level);
    while (std::max(level.width(), level.height()) > kSmallestLevel) {
        level = level.scaled(std::max(1, level.width() / 2), std::max(1, level.height() / 2),
                             Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        result.levels.append(level);
    }
}

void GuidePreviewWidget::onJobFinished()
{
    RenderResult result = m_watcher.future().resultCount() > 0 ? m_watcher.result() : RenderResult{};
    m_runningGeneration = 0;
    if (result.generation == m_requestedGeneration && !result.image.isNull()) {
        const QSize oldSize = m_image.size();
        m_image = std::move(result.image);
        m_levels = std::move(result.levels);
        m_shownGeneration = result.generation;
        if (m_fitMode || oldSize != m_image.size()) {
            if (oldSize.isEmpty() || m_fitMode) {
                m_fitMode = true;
                m_zoom = fitZoom();
                m_viewCenter = QPointF(m_image.width() / 2.0, m_image.height() / 2.0);
            } else {
                // Keep the same part of the guide in view when its size changes.
                m_viewCenter = QPointF(m_viewCenter.x() * m_image.width() / oldSize.width(),
                                       m_viewCenter.y() * m_image.height() / oldSize.height());
            }
            Q_EMIT zoomChanged(m_zoom);
        }
        clampView();
        Q_EMIT imageReady();
    } else if (result.generation != 0) {
        ++m_droppedResults;
    }
    if (m_pendingJob) {
        RenderJob job = std::move(m_pendingJob);
        m_pendingJob = {};
        startJob(m_pendingGeneration, std::move(job));
    }
    update();
}

double GuidePreviewWidget::fitZoom() const
{
    if (m_image.isNull())
        return 1.0;
    const double margin = 16.0;
    const double zx = std::max(1.0, width() - 2 * margin) / m_image.width();
    const double zy = std::max(1.0, height() - 2 * margin) / m_image.height();
    return std::clamp(std::min(zx, zy), kMinZoom, kMaxZoom);
}

void GuidePreviewWidget::clampView()
{
    m_viewCenter.setX(std::clamp(m_viewCenter.x(), 0.0, double(std::max(0, m_image.width()))));
    m_viewCenter.setY(std::clamp(m_viewCenter.y(), 0.0, double(std::max(0, m_image.height()))));
}

void GuidePreviewWidget::setZoom(double zoom, const QPointF &widgetAnchor)
{
    zoom = std::clamp(zoom, kMinZoom, kMaxZoom);
    const QPointF anchorImage = widgetToImage(widgetAnchor);
    m_zoom = zoom;
    // Keep the image point under the anchor where it was.
    const QPointF widgetCenter(width() / 2.0, height() / 2.0);
    m_viewCenter = anchorImage - (widgetAnchor - widgetCenter) / m_zoom;
    m_fitMode = false;
    clampView();
    Q_EMIT zoomChanged(m_zoom);
    update();
}

void GuidePreviewWidget::setZoom(double zoom)
{
    setZoom(zoom, QPointF(width() / 2.0, height() / 2.0));
}

void GuidePreviewWidget::setView(double zoom, const QPointF &imageCenter)
{
    m_zoom = std::clamp(zoom, kMinZoom, kMaxZoom);
    m_viewCenter = imageCenter;
    m_fitMode = false;
    clampView();
    Q_EMIT zoomChanged(m_zoom);
    update();
}

void GuidePreviewWidget::fitToView()
{
    m_fitMode = true;
    m_zoom = fitZoom();
    m_viewCenter = QPointF(m_image.width() / 2.0, m_image.height() / 2.0);
    Q_EMIT zoomChanged(m_zoom);
    update();
}

void GuidePreviewWidget::zoomIn() { setZoom(m_zoom * kZoomStep); }
void GuidePreviewWidget::zoomOut() { setZoom(m_zoom / kZoomStep); }

void GuidePreviewWidget::setGuideTransform(const QTransform &transform)
{
    m_guideTransform = transform;
    update();
}

void GuidePreviewWidget::setLayerFrames(const QVector<GuideLayerFrame> &frames)
{
    m_frames = frames;
    if (m_selectedLayer >= m_frames.size())
        m_selectedLayer = -1;
    update();
}

void GuidePreviewWidget::setSelectedLayer(int index)
{
    m_selectedLayer = (index >= 0 && index < m_frames.size()) ? index : -1;
    update();
}

QPointF GuidePreviewWidget::widgetToImage(const QPointF &p) const
{
    const QPointF widgetCenter(width() / 2.0, height() / 2.0);
    return (p - widgetCenter) / m_zoom + m_viewCenter;
}

QPointF GuidePreviewWidget::imageToWidget(const QPointF &p) const
{
    const QPointF widgetCenter(width() / 2.0, height() / 2.0);
    return (p - m_viewCenter) * m_zoom + widgetCenter;
}

QPolygonF GuidePreviewWidget::layerPolygon(int index) const
{
    QPolygonF polygon;
    if (index < 0 || index >= m_frames.size())
        return polygon;
    const GuideLayerFrame &f = m_frames.at(index);
    const double hw = f.size.width() / 2.0;
    const double hh = f.size.height() / 2.0;
    const QPointF corners[4] = {{-hw, -hh}, {hw, -hh}, {hw, hh}, {-hw, hh}};
    for (const QPointF &c : corners)
        polygon << imageToWidget(m_guideTransform.map(f.center + rotated(c, f.rotationDegrees)));
    return polygon;
}

QPointF GuidePreviewWidget::layerHandle(int index, int which) const
{
    const QPolygonF polygon = layerPolygon(index);
    if (polygon.size() != 4)
        return {};
    if (which < 4)
        return polygon.at(which);
    const QPointF topMid = (polygon.at(0) + polygon.at(1)) / 2.0;
    const QPointF centre = (polygon.at(0) + polygon.at(2)) / 2.0;
    QPointF dir = topMid - centre;
    const double len = std::hypot(dir.x(), dir.y());
    if (len < 1e-6) {
        dir = QPointF(0, -1);
    } else {
        dir /= len;
    }
    return topMid + dir * kKnobDistance;
}

int GuidePreviewWidget::hitHandle(const QPointF &widgetPos) const
{
    if (m_selectedLayer < 0)
        return -1;
    for (int which = 4; which >= 0; --which) {
        const QPointF h = layerHandle(m_selectedLayer, which);
        if (std::abs(h.x() - widgetPos.x()) <= kHandleSize && std::abs(h.y() - widgetPos.y()) <= kHandleSize)
            return which;
    }
    return -1;
}

int GuidePreviewWidget::hitLayer(const QPointF &widgetPos) const
{
    if (m_selectedLayer >= 0 && layerPolygon(m_selectedLayer).containsPoint(widgetPos, Qt::OddEvenFill))
        return m_selectedLayer;
    for (int i = m_frames.size() - 1; i >= 0; --i) {
        if (m_frames.at(i).visible && layerPolygon(i).containsPoint(widgetPos, Qt::OddEvenFill))
            return i;
    }
    return -1;
}

void GuidePreviewWidget::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), QColor(38, 38, 40));

    if (!m_image.isNull() && !m_levels.isEmpty()) {
        const QRectF imageRect(imageToWidget(QPointF(0, 0)), QSizeF(m_image.width() * m_zoom, m_image.height() * m_zoom));
        const QRectF visible = imageRect.intersected(QRectF(rect()));
        if (!visible.isEmpty()) {
            // The smallest level that is still at least as large as what is shown.
            const double shownScale = m_zoom * devicePixelRatioF();
            int level = 0;
            while (level + 1 < m_levels.size()
                   && double(m_levels.at(level + 1).width()) / m_image.width() >= shownScale)
                ++level;
            const QImage &source = m_levels.at(level);
            const double sx = double(source.width()) / m_image.width();
            const double sy = double(source.height()) / m_image.height();
            const QPointF topLeft = widgetToImage(visible.topLeft());
            const QPointF bottomRight = widgetToImage(visible.bottomRight());
            const QRectF sourceRect(QPointF(topLeft.x() * sx, topLeft.y() * sy),
                                    QPointF(bottomRight.x() * sx, bottomRight.y() * sy));
            // Enlarged pixels stay sharp so single guide pixels can be inspected.
            painter.setRenderHint(QPainter::SmoothPixmapTransform, shownScale < 0.999);
            painter.drawImage(visible, source, sourceRect);
        }
        painter.setPen(QPen(QColor(0, 0, 0, 160), 1));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(imageRect.adjusted(-0.5, -0.5, 0.5, 0.5));
    }

    painter.setRenderHint(QPainter::Antialiasing, true);
    for (int i = 0; i < m_frames.size(); ++i) {
        if (i == m_selectedLayer)
            continue;
        if (!m_frames.at(i).visible)
            continue;
        QPen pen(QColor(255, 255, 255, 90), 1, Qt::DashLine);
        painter.setPen(pen);
        painter.setBrush(Qt::NoBrush);
        painter.drawPolygon(layerPolygon(i));
    }
    if (m_selectedLayer >= 0) {
        const QPolygonF polygon = layerPolygon(m_selectedLayer);
        const QColor accent(0, 190, 255);
        painter.setPen(QPen(accent, 1.5));
        painter.setBrush(Qt::NoBrush);
        painter.drawPolygon(polygon);
        const QPointF knob = layerHandle(m_selectedLayer, 4);
        painter.drawLine((polygon.at(0) + polygon.at(1)) / 2.0, knob);
        painter.setBrush(Qt::white);
        painter.setPen(QPen(accent, 1.5));
        for (int c = 0; c < 4; ++c)
            painter.drawRect(QRectF(polygon.at(c) - QPointF(kHandleSize / 2, kHandleSize / 2), QSizeF(kHandleSize, kHandleSize)));
        painter.drawEllipse(knob, kHandleSize / 2 + 1, kHandleSize / 2 + 1);
    }
    painter.setRenderHint(QPainter::Antialiasing, false);

    // Status in the corner: zoom, size and whether a render is under way.
    QString status;
    if (!m_image.isNull())
        status = QStringLiteral("%1 x %2 px").arg(m_image.width()).arg(m_image.height());
    if (isRendering())
        status += (status.isEmpty() ? QString() : QStringLiteral("   ")) + tr("Rendering...");
    if (status.isEmpty())
        return;
    QFont font = painter.font();
    font.setPointSizeF(std::max(7.0, font.pointSizeF() * 0.9));
    painter.setFont(font);
    const QFontMetrics metrics(font);
    const QRect textRect(8, height() - metrics.height() - 12, metrics.horizontalAdvance(status) + 12, metrics.height() + 6);
    painter.fillRect(textRect, QColor(0, 0, 0, 150));
    painter.setPen(QColor(235, 235, 235));
    painter.drawText(textRect, Qt::AlignCenter, status);
}

void GuidePreviewWidget::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    if (m_fitMode) {
        m_zoom = fitZoom();
        m_viewCenter = QPointF(m_image.width() / 2.0, m_image.height() / 2.0);
        Q_EMIT zoomChanged(m_zoom);
    }
}

void GuidePreviewWidget::wheelEvent(QWheelEvent *event)
{
    const double steps = event->angleDelta().y() / 120.0;
    if (steps == 0.0) {
        event->ignore();
        return;
    }
    setZoom(m_zoom * std::pow(1.15, steps), event->position());
    event->accept();
}

void GuidePreviewWidget::mousePressEvent(QMouseEvent *event)
{
    setFocus(Qt::MouseFocusReason);
    const QPointF pos = event->position();
    m_dragStartWidget = pos;
    m_dragStartCenter = m_viewCenter;
    if (event->button() == Qt::MiddleButton || event->button() == Qt::RightButton) {
        m_dragMode = DragMode::Pan;
        setCursor(Qt::ClosedHandCursor);
        return;
    }
    if (event->button() != Qt::LeftButton)
        return;
    const int handle = hitHandle(pos);
    int layer = handle >= 0 ? m_selectedLayer : hitLayer(pos);
    if (layer >= 0) {
        if (layer != m_selectedLayer) {
            m_selectedLayer = layer;
            Q_EMIT layerClicked(layer);
        }
        m_dragStartFrame = m_frames.at(layer);
        m_dragStartGuide = m_guideTransform.inverted().map(widgetToImage(pos));
        m_dragMode = handle == 4 ? DragMode::Rotate : handle >= 0 ? DragMode::Scale : DragMode::Move;
        update();
        return;
    }
    m_dragMode = DragMode::Pan;
    setCursor(Qt::ClosedHandCursor);
}

void GuidePreviewWidget::mouseMoveEvent(QMouseEvent *event)
{
    const QPointF pos = event->position();
    if (m_dragMode == DragMode::None) {
        const int handle = hitHandle(pos);
        if (handle == 4)
            setCursor(Qt::CrossCursor);
        else if (handle >= 0)
            setCursor(Qt::SizeAllCursor);
        else if (hitLayer(pos) >= 0)
            setCursor(Qt::OpenHandCursor);
        else
            unsetCursor();
        return;
    }
    if (m_dragMode == DragMode::Pan) {
        m_viewCenter = m_dragStartCenter - (pos - m_dragStartWidget) / m_zoom;
        m_fitMode = false;
        clampView();
        update();
        return;
    }
    if (m_selectedLayer < 0)
        return;
    const QPointF guidePos = m_guideTransform.inverted().map(widgetToImage(pos));
    GuideLayerFrame frame = m_dragStartFrame;
    const bool shift = event->modifiers() & Qt::ShiftModifier;
    if (m_dragMode == DragMode::Move) {
        frame.center = m_dragStartFrame.center + (guidePos - m_dragStartGuide);
    } else if (m_dragMode == DragMode::Scale) {
        const QPointF local = rotated(guidePos - frame.center, -frame.rotationDegrees);
        if (shift) {
            // Free scaling of width and height.
            frame.size = QSizeF(std::max(1.0, 2 * std::abs(local.x())), std::max(1.0, 2 * std::abs(local.y())));
        } else {
            const QPointF startLocal = m_dragStartGuide - frame.center;
            const double startDistance = std::hypot(startLocal.x(), startLocal.y());
            const double factor = startDistance > 1e-6 ? std::hypot(local.x(), local.y()) / startDistance : 1.0;
            frame.size = QSizeF(std::max(1.0, m_dragStartFrame.size.width() * factor),
                                std::max(1.0, m_dragStartFrame.size.height() * factor));
        }
    } else if (m_dragMode == DragMode::Rotate) {
        const QPointF d = guidePos - frame.center;
        double angle = qRadiansToDegrees(std::atan2(d.y(), d.x())) + 90.0;
        if (shift)
            angle = std::round(angle / 15.0) * 15.0;
        while (angle > 180.0)
            angle -= 360.0;
        while (angle <= -180.0)
            angle += 360.0;
        frame.rotationDegrees = angle;
    }
    m_frames[m_selectedLayer] = frame;
    Q_EMIT layerFrameEdited(m_selectedLayer, frame);
    update();
}

void GuidePreviewWidget::mouseReleaseEvent(QMouseEvent *)
{
    const DragMode mode = m_dragMode;
    m_dragMode = DragMode::None;
    unsetCursor();
    if ((mode == DragMode::Move || mode == DragMode::Scale || mode == DragMode::Rotate) && m_selectedLayer >= 0)
        Q_EMIT layerEditFinished(m_selectedLayer);
}

void GuidePreviewWidget::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton && hitLayer(event->position()) < 0)
        fitToView();
}

void GuidePreviewWidget::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Plus:
    case Qt::Key_Equal:
        zoomIn();
        break;
    case Qt::Key_Minus:
        zoomOut();
        break;
    case Qt::Key_0:
    case Qt::Key_F:
        fitToView();
        break;
    case Qt::Key_1:
        setZoom(1.0);
        break;
    default:
        QWidget::keyPressEvent(event);
    }
}
