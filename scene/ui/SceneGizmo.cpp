#include "scene/ui/SceneGizmo.h"

#include <QLineF>
#include <QtMath>
#include <algorithm>
#include <cmath>

QString gizmoPartName(GizmoPart part)
{
    switch (part) {
    case GizmoPart::XAxis: return QStringLiteral("xaxis");
    case GizmoPart::YAxis: return QStringLiteral("yaxis");
    case GizmoPart::ZAxis: return QStringLiteral("zaxis");
    case GizmoPart::Screen: return QStringLiteral("screen");
    case GizmoPart::Ring: return QStringLiteral("ring");
    case GizmoPart::None: break;
    }
    return {};
}

GizmoPart gizmoPartFromName(const QString &name)
{
    for (GizmoPart part : {GizmoPart::XAxis, GizmoPart::YAxis, GizmoPart::ZAxis,
                           GizmoPart::Screen, GizmoPart::Ring}) {
        if (gizmoPartName(part) == name)
            return part;
    }
    return GizmoPart::None;
}

double pixelDistanceToSegment(const QPointF &p, const QPointF &a, const QPointF &b)
{
    const QPointF ab = b - a;
    const double len2 = QPointF::dotProduct(ab, ab);
    double t = len2 > 1e-12 ? QPointF::dotProduct(p - a, ab) / len2 : 0.0;
    t = std::clamp(t, 0.0, 1.0);
    return QLineF(p, a + ab * t).length();
}

QVector3D GizmoViewport::eye() const
{
    return view.inverted().map(QVector3D(0, 0, 0));
}

QVector3D GizmoViewport::forward() const
{
    return view.inverted().mapVector(QVector3D(0, 0, -1)).normalized();
}

bool GizmoViewport::isOrthographic() const
{
    return qFuzzyIsNull(projection(3, 2)) && qFuzzyCompare(projection(3, 3), 1.0f);
}

GizmoRay GizmoViewport::rayThroughPixel(const QPointF &pixel) const
{
    const float w = std::max(1, size.width());
    const float h = std::max(1, size.height());
    const float x = float(2.0 * pixel.x() / w - 1.0);
    const float y = float(1.0 - 2.0 * pixel.y() / h);
    const QMatrix4x4 inverse = viewProjection().inverted();
    const QVector3D nearPoint = inverse.map(QVector3D(x, y, -1.0f));
    const QVector3D farPoint = inverse.map(QVector3D(x, y, 1.0f));
    GizmoRay ray;
    ray.origin = nearPoint;
    ray.direction = (farPoint - nearPoint).normalized();
    if (ray.direction.isNull())
        ray.direction = forward();
    return ray;
}

QPointF GizmoViewport::projectToPixel(const QVector3D &world, bool *inFront) const
{
    const QVector4D clip = viewProjection() * QVector4D(world, 1.0f);
    const bool front = clip.w() > 1e-6f;
    if (inFront)
        *inFront = front;
    const float w = front ? clip.w() : 1e-6f;
    const double x = (clip.x() / w * 0.5 + 0.5) * size.width();
    const double y = (0.5 - clip.y() / w * 0.5) * size.height();
    return {x, y};
}

float GizmoViewport::worldSizeForPixels(const QVector3D &at, float pixels) const
{
    const float h = std::max(1, size.height());
    const float p11 = std::abs(projection(1, 1)) > 1e-9f ? std::abs(projection(1, 1)) : 1.0f;
    if (isOrthographic())
        return pixels * 2.0f / (p11 * h);
    const float depth = std::max(0.01f, QVector3D::dotProduct(at - eye(), forward()));
    return pixels * 2.0f * depth / (p11 * h);
}

QVector3D GizmoFrame::axis(GizmoPart part) const
{
    switch (part) {
    case GizmoPart::XAxis: return axes[0];
    case GizmoPart::YAxis: return axes[1];
    case GizmoPart::ZAxis: return axes[2];
    default: break;
    }
    return {};
}

GizmoFrame SceneGizmo::frame(const GizmoViewport &viewport, const QVector3D &origin,
                             const QQuaternion &rotation, bool localAxes, int mode)
{
    GizmoFrame result;
    result.origin = origin;
    if (localAxes || mode == GizmoScale) {
        result.axes[0] = rotation.rotatedVector(QVector3D(1, 0, 0)).normalized();
        result.axes[1] = rotation.rotatedVector(QVector3D(0, 1, 0)).normalized();
        result.axes[2] = rotation.rotatedVector(QVector3D(0, 0, 1)).normalized();
    }
    result.length = viewport.worldSizeForPixels(origin, kHandlePixels);
    return result;
}

namespace {

constexpr GizmoPart kAxisParts[3] = {GizmoPart::XAxis, GizmoPart::YAxis, GizmoPart::ZAxis};

QVector<QPointF> circleAround(const GizmoViewport &viewport, const QVector3D &centre,
                              const QVector3D &axis, float radius)
{
    QVector3D u = QVector3D::crossProduct(axis, QVector3D(0, 1, 0));
    if (u.lengthSquared() < 1e-6f)
        u = QVector3D::crossProduct(axis, QVector3D(1, 0, 0));
    u.normalize();
    const QVector3D v = QVector3D::crossProduct(axis, u).normalized();
    QVector<QPointF> points;
    points.reserve(SceneGizmo::kCircleSegments + 1);
    for (int i = 0; i <= SceneGizmo::kCircleSegments; ++i) {
        const float a = float(2.0 * M_PI * i / SceneGizmo::kCircleSegments);
        points.append(viewport.projectToPixel(centre + (u * std::cos(a) + v * std::sin(a)) * radius));
    }
    return points;
}

QVector<QPointF> screenCircle(const QPointF &centre, double radius)
{
    QVector<QPointF> points;
    for (int i = 0; i <= SceneGizmo::kCircleSegments; ++i) {
        const double a = 2.0 * M_PI * i / SceneGizmo::kCircleSegments;
        points.append(centre + QPointF(std::cos(a), std::sin(a)) * radius);
    }
    return points;
}

double distanceToPolyline(const QPointF &p, const QVector<QPointF> &line)
{
    double best = std::numeric_limits<double>::max();
    for (int i = 1; i < line.size(); ++i)
        best = std::min(best, pixelDistanceToSegment(p, line[i - 1], line[i]));
    return best;
}

// Parameter along the axis line nearest to the ray; false when they are parallel.
bool axisParameter(const GizmoRay &ray, const QVector3D &origin, const QVector3D &axis, float *t)
{
    const QVector3D w = origin - ray.origin;
    const float b = QVector3D::dotProduct(axis, ray.direction);
    const float denom = 1.0f - b * b;
    if (denom < 1e-5f)
        return false;
    *t = (b * QVector3D::dotProduct(ray.direction, w) - QVector3D::dotProduct(axis, w)) / denom;
    return true;
}

double screenAngle(const QPointF &centre, const QPointF &p)
{
    // y grows downwards on screen; measure counter-clockwise as seen by the user.
    return std::atan2(-(p.y() - centre.y()), p.x() - centre.x());
}

} // namespace

QVector<QPointF> SceneGizmo::partOutline(const GizmoViewport &viewport, const GizmoFrame &frame,
                                         int mode, GizmoPart part)
{
    const QPointF centre = viewport.projectToPixel(frame.origin);
    switch (part) {
    case GizmoPart::XAxis:
    case GizmoPart::YAxis:
    case GizmoPart::ZAxis:
        if (mode == GizmoRotate)
            return circleAround(viewport, frame.origin, frame.axis(part), frame.length);
        return {centre, viewport.projectToPixel(frame.origin + frame.axis(part) * frame.length)};
    case GizmoPart::Screen: {
        if (mode == GizmoRotate)
            return {};
        const double s = kScreenHandlePixels;
        return {centre + QPointF(-s, -s), centre + QPointF(s, -s), centre + QPointF(s, s),
                centre + QPointF(-s, s), centre + QPointF(-s, -s)};
    }
    case GizmoPart::Ring:
        if (mode != GizmoRotate)
            return {};
        return screenCircle(centre, kRingPixels);
    case GizmoPart::None: break;
    }
    return {};
}

GizmoPart SceneGizmo::pick(const GizmoViewport &viewport, const GizmoFrame &frame, int mode,
                           const QPointF &pixel)
{
    bool inFront = false;
    const QPointF centre = viewport.projectToPixel(frame.origin, &inFront);
    if (!inFront)
        return GizmoPart::None;

    if (mode != GizmoRotate) {
        const QPointF d = pixel - centre;
        if (std::abs(d.x()) <= kScreenHandlePixels + 2 && std::abs(d.y()) <= kScreenHandlePixels + 2)
            return GizmoPart::Screen;
    }

    GizmoPart best = GizmoPart::None;
    double bestDistance = kPickTolerancePixels;
    for (GizmoPart part : kAxisParts) {
        const double d = distanceToPolyline(pixel, partOutline(viewport, frame, mode, part));
        if (d <= bestDistance) {
            bestDistance = d;
            best = part;
        }
    }
    if (best != GizmoPart::None)
        return best;
    if (mode == GizmoRotate
        && distanceToPolyline(pixel, partOutline(viewport, frame, mode, GizmoPart::Ring))
               <= kPickTolerancePixels)
        return GizmoPart::Ring;
    return GizmoPart::None;
}

QVector3D SceneGizmo::axisTranslation(const GizmoViewport &viewport, const GizmoFrame &frame,
                                      GizmoPart axisPart, const QPointF &start, const QPointF &now)
{
    const QVector3D axis = frame.axis(axisPart);
    if (axis.isNull())
        return {};
    float t0 = 0, t1 = 0;
    if (!axisParameter(viewport.rayThroughPixel(start), frame.origin, axis, &t0)
        || !axisParameter(viewport.rayThroughPixel(now), frame.origin, axis, &t1))
        return {};
    return axis * (t1 - t0);
}

QVector3D SceneGizmo::screenTranslation(const GizmoViewport &viewport, const QVector3D &origin,
                                        const QPointF &start, const QPointF &now)
{
    const QVector3D normal = viewport.forward();
    auto hit = [&](const QPointF &pixel, QVector3D *out) {
        const GizmoRay ray = viewport.rayThroughPixel(pixel);
        const float denom = QVector3D::dotProduct(ray.direction, normal);
        if (std::abs(denom) < 1e-6f)
            return false;
        const float s = QVector3D::dotProduct(origin - ray.origin, normal) / denom;
        *out = ray.origin + ray.direction * s;
        return true;
    };
    QVector3D a, b;
    if (!hit(start, &a) || !hit(now, &b))
        return {};
    return b - a;
}

QVector3D SceneGizmo::rotationAxis(const GizmoViewport &viewport, const GizmoFrame &frame,
                                   GizmoPart part)
{
    if (part == GizmoPart::Ring || part == GizmoPart::Screen)
        return -viewport.forward();
    return frame.axis(part);
}

float SceneGizmo::rotationDegrees(const GizmoViewport &viewport, const GizmoFrame &frame,
                                  GizmoPart part, const QPointF &start, const QPointF &now)
{
    const QPointF centre = viewport.projectToPixel(frame.origin);
    if (QLineF(centre, start).length() < 1.0 || QLineF(centre, now).length() < 1.0)
        return 0.0f;
    double delta = qRadiansToDegrees(screenAngle(centre, now) - screenAngle(centre, start));
    while (delta > 180.0)
        delta -= 360.0;
    while (delta <= -180.0)
        delta += 360.0;
    const QVector3D axis = rotationAxis(viewport, frame, part);
    // Counter-clockwise on screen is a positive turn about an axis pointing at the viewer.
    const bool towardViewer = QVector3D::dotProduct(axis, viewport.forward()) <= 0.0f;
    return float(towardViewer ? delta : -delta);
}

float SceneGizmo::scaleFactor(const GizmoViewport &viewport, const GizmoFrame &frame,
                              GizmoPart part, const QPointF &start, const QPointF &now)
{
    if (part == GizmoPart::Screen || part == GizmoPart::Ring) {
        const QPointF d = now - start;
        return std::max(0.01f, float(std::exp((d.x() - d.y()) / 150.0)));
    }
    const QVector3D axis = frame.axis(part);
    float t0 = 0, t1 = 0;
    if (axis.isNull()
        || !axisParameter(viewport.rayThroughPixel(start), frame.origin, axis, &t0)
        || !axisParameter(viewport.rayThroughPixel(now), frame.origin, axis, &t1)
        || std::abs(t0) < 1e-6f)
        return 1.0f;
    return std::max(0.01f, t1 / t0);
}

float SceneGizmo::snapped(float value, float step)
{
    if (step <= 0.0f)
        return value;
    return std::round(value / step) * step;
}

QVector3D SceneGizmo::snapped(const QVector3D &value, float step)
{
    return {snapped(value.x(), step), snapped(value.y(), step), snapped(value.z(), step)};
}
