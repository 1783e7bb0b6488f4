#include "calibration/ui/ProjectorCalibrationPointView.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace {

constexpr double kFitMargin = 0.96;
constexpr double kWheelZoomStep = 1.15;
constexpr double kMinZoom = 0.1;
constexpr double kMaxZoom = 64.0;

} // namespace

ProjectorCalibrationDialog::PointView::PointView(Kind kind, QWidget *parent) : QWidget(parent), m_kind(kind)
{
    setObjectName(kind == Kind::Wireframe ? QStringLiteral("vantreoCalibrationWireframeView")
                                          : QStringLiteral("vantreoCalibrationProjectorView"));
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(false);
    setMinimumSize(240, 180);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void ProjectorCalibrationDialog::PointView::setWireframe(const CalibrationWireframe *wireframe)
{
    m_wireframe = wireframe;
    update();
}

void ProjectorCalibrationDialog::PointView::setMarkers(const QVector<Marker> &markers)
{
    m_markers = markers;
    update();
}

void ProjectorCalibrationDialog::PointView::setDisplay(const Display &display)
{
    m_display = display;
    update();
}

void ProjectorCalibrationDialog::PointView::setBackground(const QImage &image)
{
    m_background = image;
    update();
}

void ProjectorCalibrationDialog::PointView::setReferenceImage(const QImage &image)
{
    m_reference = image;
    update();
}

void ProjectorCalibrationDialog::PointView::setHint(const QString &hint)
{
    m_hint = hint;
    update();
}

void ProjectorCalibrationDialog::PointView::setLens(const vg::scene::LensModel &lens)
{
    m_lens = lens;
    m_haveLens = true;
    update();
}

QSize ProjectorCalibrationDialog::PointView::imageSize() const
{
    return m_haveLens ? QSize(m_lens.width(), m_lens.height()) : QSize(1920, 1200);
}

double ProjectorCalibrationDialog::PointView::fitScale() const
{
    const QSize image = imageSize();
    return kFitMargin * std::min(width() / double(std::max(1, image.width())),
                                 height() / double(std::max(1, image.height())));
}

QPointF ProjectorCalibrationDialog::PointView::contentToWidget(const QPointF &pixel) const
{
    if (m_outputMap)
        return m_outputMap->map(pixel);
    const QSize image = imageSize();
    const double s = fitScale() * m_zoom;
    const QPointF origin = QPointF(width() / 2.0, height() / 2.0) - QPointF(image.width(), image.height()) * (s / 2.0) + m_pan;
    return origin + pixel * s;
}

QPointF ProjectorCalibrationDialog::PointView::widgetToContent(const QPointF &widgetPoint) const
{
    const QSize image = imageSize();
    const double s = fitScale() * m_zoom;
    const QPointF origin = QPointF(width() / 2.0, height() / 2.0) - QPointF(image.width(), image.height()) * (s / 2.0) + m_pan;
    return (widgetPoint - origin) / s;
}

void ProjectorCalibrationDialog::PointView::frameWireframe()
{
    if (!m_wireframe || m_wireframe->isEmpty())
        return;
    Eigen::Vector3d lo = m_wireframe->vertices.front(), hi = lo;
    for (const Eigen::Vector3d &v : m_wireframe->vertices) {
        lo = lo.cwiseMin(v);
        hi = hi.cwiseMax(v);
    }
    const Eigen::Vector3d centre = (lo + hi) / 2.0;
    m_camera.setMode(ViewCameraMode::Perspective);
    m_camera.frame(QVector3D(float(centre.x()), float(centre.y()), float(centre.z())),
                   std::max(0.05, (hi - lo).norm() / 2.0));
    requestRefresh();
}

std::optional<QPointF> ProjectorCalibrationDialog::PointView::projectToWidget(const Eigen::Vector3d &world) const
{
    if (m_kind == Kind::Wireframe) {
        QPointF pixel;
        if (!m_camera.worldToPixel(QVector3D(float(world.x()), float(world.y()), float(world.z())), size(), &pixel))
            return std::nullopt;
        return pixel;
    }
    if (!m_haveLens)
        return std::nullopt;
    const vg::scene::LensProjection p = m_lens.project(world);
    if (!(p.depth > 1e-4) || !std::isfinite(p.px) || !std::isfinite(p.py))
        return std::nullopt;
    return contentToWidget(QPointF(p.px, p.py));
}

std::optional<QPointF> ProjectorCalibrationDialog::PointView::vertexWidgetPosition(int vertex) const
{
    if (!m_wireframe || vertex < 0 || vertex >= int(m_wireframe->vertices.size()))
        return std::nullopt;
    return projectToWidget(m_wireframe->vertices[size_t(vertex)]);
}

std::optional<QPointF> ProjectorCalibrationDialog::PointView::markerWidgetPosition(const Marker &marker) const
{
    if (m_kind == Kind::Wireframe)
        return projectToWidget(marker.world);
    if (!marker.pixel)
        return std::nullopt;
    return contentToWidget(*marker.pixel);
}

int ProjectorCalibrationDialog::PointView::vertexAt(const QPointF &widgetPoint) const
{
    if (!m_wireframe)
        return -1;
    const double radius = std::max(8.0, m_display.vertexSize + 4.0);
    double best = radius * radius;
    int found = -1;
    for (int i = 0; i < int(m_wireframe->vertices.size()); ++i) {
        const std::optional<QPointF> p = vertexWidgetPosition(i);
        if (!p)
            continue;
        const QPointF d = *p - widgetPoint;
        const double d2 = d.x() * d.x() + d.y() * d.y();
        if (d2 <= best) {
            best = d2;
            found = i;
        }
    }
    return found;
}

int ProjectorCalibrationDialog::PointView::markerAt(const QPointF &widgetPoint) const
{
    const double radius = std::max(6.0, double(m_display.markerSize));
    double best = radius * radius;
    int found = -1;
    for (const Marker &marker : m_markers) {
        const std::optional<QPointF> p = markerWidgetPosition(marker);
        if (!p)
            continue;
        const QPointF d = *p - widgetPoint;
        const double d2 = d.x() * d.x() + d.y() * d.y();
        if (d2 <= best) {
            best = d2;
            found = marker.row;
        }
    }
    return found;
}

void ProjectorCalibrationDialog::PointView::requestRefresh()
{
    if (refreshRequested)
        refreshRequested();
    update();
}

void ProjectorCalibrationDialog::PointView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), QColor(32, 34, 38));
    painter.setRenderHint(QPainter::Antialiasing);
    if (m_kind == Kind::Projector) {
        paintProjectorImage(painter);
    } else if (m_display.shade && !m_background.isNull()) {
        painter.drawImage(rect(), m_background);
    }
    if (m_display.wire || m_display.vertex)
        paintWires(painter);
    paintMarkers(painter);
    paintHint(painter);
}

QImage ProjectorCalibrationDialog::PointView::renderOutput(const QSize &size)
{
    QImage image(size, QImage::Format_ARGB32);
    image.fill(Qt::black);
    if (size.isEmpty())
        return image;
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    if (m_display.shade && !m_background.isNull())
        painter.drawImage(image.rect(), m_background);
    const QSize content = imageSize();
    m_outputMap = QTransform::fromScale(size.width() / double(std::max(1, content.width())),
                                        size.height() / double(std::max(1, content.height())));
    if (m_display.wire || m_display.vertex)
        paintWires(painter);
    paintMarkers(painter);
    m_outputMap.reset();
    return image;
}

void ProjectorCalibrationDialog::PointView::paintProjectorImage(QPainter &painter)
{
    const QSize image = imageSize();
    const QRectF target(contentToWidget(QPointF(0, 0)), contentToWidget(QPointF(image.width(), image.height())));
    painter.fillRect(target, Qt::black);
    if (!m_reference.isNull())
        painter.drawImage(target, m_reference);
    if (m_display.shade && !m_background.isNull()) {
        // Over a reference picture the scene is a see-through layer to match against.
        painter.setOpacity(m_reference.isNull() ? 1.0 : 0.45);
        painter.drawImage(target, m_background);
        painter.setOpacity(1.0);
    }
    painter.setPen(QPen(QColor(120, 170, 230), 1.0));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(target);
}

void ProjectorCalibrationDialog::PointView::paintWires(QPainter &painter)
{
    if (!m_wireframe)
        return;
    std::vector<std::optional<QPointF>> points(m_wireframe->vertices.size());
    for (size_t i = 0; i < points.size(); ++i)
        points[i] = projectToWidget(m_wireframe->vertices[i]);
    if (m_display.wire) {
        painter.setPen(QPen(QColor(90, 220, 255, 200), 1.0));
        for (const auto &[a, b] : m_wireframe->edges) {
            if (points[size_t(a)] && points[size_t(b)])
                painter.drawLine(*points[size_t(a)], *points[size_t(b)]);
        }
    }
    if (m_display.vertex) {
        const double s = m_display.vertexSize;
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(255, 210, 60));
        for (const auto &p : points) {
            if (p)
                painter.drawRect(QRectF(p->x() - s / 2.0, p->y() - s / 2.0, s, s));
        }
    }
}

void ProjectorCalibrationDialog::PointView::paintMarkers(QPainter &painter)
{
    const double r = m_display.markerSize;
    QFont font = painter.font();
    font.setBold(true);
    painter.setFont(font);
    for (const Marker &marker : m_markers) {
        const std::optional<QPointF> p = markerWidgetPosition(marker);
        if (!p)
            continue;
        QColor colour = marker.used ? QColor(60, 230, 90) : QColor(150, 150, 150);
        if (marker.worst)
            colour = QColor(255, 150, 40);
        if (marker.mismatched)
            colour = QColor(255, 50, 60);
        painter.setBrush(Qt::NoBrush);
        // A selected marker turns yellow; an outer ring keeps its finding visible.
        if (marker.selected && (marker.worst || marker.mismatched)) {
            painter.setPen(QPen(colour, 2.0));
            painter.drawEllipse(*p, r + 4.0, r + 4.0);
        }
        if (marker.selected)
            colour = QColor(255, 255, 80);
        painter.setPen(QPen(colour, marker.selected ? 2.5 : 1.5));
        painter.drawEllipse(*p, r, r);
        painter.drawLine(*p - QPointF(r * 0.5, 0), *p + QPointF(r * 0.5, 0));
        painter.drawLine(*p - QPointF(0, r * 0.5), *p + QPointF(0, r * 0.5));
        painter.drawText(*p + QPointF(r + 2.0, -r - 2.0), QString::number(marker.row + 1));
    }
}

void ProjectorCalibrationDialog::PointView::paintHint(QPainter &painter)
{
    if (m_hint.isEmpty())
        return;
    const QRect box(6, height() - 26, width() - 12, 22);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0, 0, 0, 150));
    painter.drawRect(box);
    painter.setPen(QColor(230, 230, 230));
    painter.setFont(QFont(font().family(), font().pointSize()));
    painter.drawText(box.adjusted(6, 0, -6, 0), Qt::AlignVCenter | Qt::AlignLeft, m_hint);
}

void ProjectorCalibrationDialog::PointView::mousePressEvent(QMouseEvent *event)
{
    setFocus(Qt::MouseFocusReason);
    m_lastMouse = event->position();
    m_dragMoved = false;
    const bool alt = event->modifiers() & Qt::AltModifier;
    if (alt) {
        if (event->button() == Qt::LeftButton && m_kind == Kind::Wireframe)
            m_drag = Drag::Orbit;
        else if (event->button() == Qt::MiddleButton)
            m_drag = Drag::Pan;
        else if (event->button() == Qt::RightButton)
            m_drag = Drag::Dolly;
        return;
    }
    if (event->button() != Qt::LeftButton)
        return;
    if (m_kind == Kind::Wireframe) {
        const int vertex = vertexAt(event->position());
        if (vertex >= 0) {
            if (vertexPicked)
                vertexPicked(vertex);
            return;
        }
        const int row = markerAt(event->position());
        if (row >= 0 && rowChosen)
            rowChosen(row);
        return;
    }
    // A selected row still waiting for its position takes the click wherever it lands.
    const auto selected = std::find_if(m_markers.cbegin(), m_markers.cend(), [](const Marker &m) { return m.selected; });
    const bool waiting = selected != m_markers.cend() && !selected->pixel;
    const int row = waiting ? -1 : markerAt(event->position());
    if (row >= 0) {
        if (rowChosen)
            rowChosen(row);
        m_drag = Drag::Marker;
        m_dragRow = row;
        return;
    }
    if (pointClicked)
        pointClicked(widgetToContent(event->position()));
}

void ProjectorCalibrationDialog::PointView::mouseMoveEvent(QMouseEvent *event)
{
    const QPointF delta = event->position() - m_lastMouse;
    m_lastMouse = event->position();
    switch (m_drag) {
    case Drag::None:
        return;
    case Drag::Orbit:
        m_camera.orbit(delta.x(), delta.y());
        requestRefresh();
        return;
    case Drag::Pan:
        if (m_kind == Kind::Wireframe) {
            m_camera.pan(delta.x(), delta.y(), size());
            requestRefresh();
        } else {
            m_pan += delta;
            update();
        }
        return;
    case Drag::Dolly:
        if (m_kind == Kind::Wireframe) {
            m_camera.dolly(delta.y());
            requestRefresh();
        } else {
            const QPointF centre(width() / 2.0, height() / 2.0);
            const QPointF anchor = widgetToContent(centre);
            m_zoom = std::clamp(m_zoom * std::exp(-delta.y() * 0.01), kMinZoom, kMaxZoom);
            m_pan += centre - contentToWidget(anchor);
            update();
        }
        return;
    case Drag::Marker:
        m_dragMoved = true;
        if (pointMoved)
            pointMoved(m_dragRow, widgetToContent(event->position()), false);
        return;
    }
}

void ProjectorCalibrationDialog::PointView::mouseReleaseEvent(QMouseEvent *event)
{
    if (m_drag == Drag::Marker && m_dragMoved && pointMoved)
        pointMoved(m_dragRow, widgetToContent(event->position()), true);
    m_drag = Drag::None;
    m_dragRow = -1;
    m_dragMoved = false;
}

void ProjectorCalibrationDialog::PointView::wheelEvent(QWheelEvent *event)
{
    const double steps = event->angleDelta().y() / 120.0;
    if (steps == 0.0)
        return;
    if (m_kind == Kind::Wireframe) {
        m_camera.zoom(steps);
        requestRefresh();
        return;
    }
    const QPointF anchor = widgetToContent(event->position());
    m_zoom = std::clamp(m_zoom * std::pow(kWheelZoomStep, steps), kMinZoom, kMaxZoom);
    m_pan += event->position() - contentToWidget(anchor);
    update();
}

void ProjectorCalibrationDialog::PointView::keyPressEvent(QKeyEvent *event)
{
    if (m_kind != Kind::Projector) {
        QWidget::keyPressEvent(event);
        return;
    }
    QPointF step;
    const double amount = (event->modifiers() & Qt::ShiftModifier) ? 10.0 : 1.0;
    switch (event->key()) {
    case Qt::Key_Left: step = {-amount, 0}; break;
    case Qt::Key_Right: step = {amount, 0}; break;
    case Qt::Key_Up: step = {0, -amount}; break;
    case Qt::Key_Down: step = {0, amount}; break;
    default: QWidget::keyPressEvent(event); return;
    }
    const auto selected = std::find_if(m_markers.cbegin(), m_markers.cend(), [](const Marker &m) { return m.selected; });
    if (selected == m_markers.cend() || !selected->pixel) {
        QWidget::keyPressEvent(event);
        return;
    }
    if (pointMoved)
        pointMoved(selected->row, *selected->pixel + step, true);
}

void ProjectorCalibrationDialog::PointView::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    if (m_kind == Kind::Wireframe && refreshRequested)
        refreshRequested();
}
