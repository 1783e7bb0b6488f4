#include "scene/ViewCamera.h"

#include "scene/LensModel.h"

#include <QtMath>

#include <algorithm>
#include <cmath>

namespace {

constexpr double kOrbitRadiansPerPixel = 0.008;
constexpr double kDollyPerPixel = 0.01;
constexpr double kZoomPerStep = 0.85;
constexpr double kMinDistance = 0.05;
constexpr double kMaxDistance = 5000.0;
constexpr double kPitchLimit = 1.5607; // just short of straight up or down

double clampDistance(double d)
{
    if (!std::isfinite(d))
        return 4.0;
    return std::clamp(d, kMinDistance, kMaxDistance);
}

double halfTanFov()
{
    return std::tan(qDegreesToRadians(ViewCamera::kVerticalFieldOfViewDegrees) * 0.5);
}

} // namespace

void ViewCamera::setMode(ViewCameraMode mode)
{
    m_mode = mode;
}

void ViewCamera::setRotation(double rotationX, double rotationY)
{
    m_rotationX = std::isfinite(rotationX) ? rotationX : 0.6;
    m_rotationY = std::isfinite(rotationY) ? rotationY : 0.0;
}

void ViewCamera::setFocusDistance(double distance)
{
    m_focusDistance = clampDistance(distance);
}

void ViewCamera::setTarget(const QVector3D &target)
{
    m_target = target;
}

void ViewCamera::setProjectorView(const ViewCameraLens &lens)
{
    m_lens = lens;
    m_mode = ViewCameraMode::ProjectorView;
}

QVector3D ViewCamera::orbitDirection() const
{
    switch (m_mode) {
    case ViewCameraMode::Front:
        return {0.0f, 0.0f, 1.0f};
    case ViewCameraMode::Side:
        return {1.0f, 0.0f, 0.0f};
    default:
        break;
    }
    const double cx = std::cos(m_rotationX);
    return QVector3D(float(cx * std::sin(m_rotationY)), float(std::sin(m_rotationX)),
                     float(cx * std::cos(m_rotationY)));
}

QVector3D ViewCamera::eyePosition() const
{
    if (m_mode == ViewCameraMode::ProjectorView)
        return m_lens.lensToWorld.map(QVector3D(0, 0, 0));
    return m_target + orbitDirection() * float(m_focusDistance);
}

QVector3D ViewCamera::forward() const
{
    if (m_mode == ViewCameraMode::ProjectorView)
        return m_lens.lensToWorld.mapVector(QVector3D(0, 0, -1)).normalized();
    return -orbitDirection();
}

QMatrix4x4 ViewCamera::viewMatrix() const
{
    QMatrix4x4 view;
    if (m_mode == ViewCameraMode::ProjectorView) {
        // The lens frame may carry no scale, so its inverse is the view.
        view = m_lens.lensToWorld.inverted();
        return view;
    }
    const QVector3D eye = eyePosition();
    QVector3D up(0, 1, 0);
    // Looking straight down the vertical, the up vector is taken from the heading instead.
    if (std::abs(QVector3D::dotProduct(orbitDirection(), up)) > 0.9999f)
        up = QVector3D(float(-std::sin(m_rotationY)), 0.0f, float(-std::cos(m_rotationY)));
    view.lookAt(eye, m_target, up);
    return view;
}

double ViewCamera::farPlane() const
{
    if (m_mode == ViewCameraMode::ProjectorView)
        return std::max(1.0, m_lens.farDistance * 1.5);
    return std::max(200.0, m_focusDistance * 50.0);
}

QMatrix4x4 ViewCamera::projectionMatrix(double aspect) const
{
    aspect = std::max(0.001, std::isfinite(aspect) ? aspect : 1.0);
    QMatrix4x4 projection;
    const double nearPlane = kNearPlane;
    const double farPlane = this->farPlane();
    if (isOrthographic()) {
        const double halfHeight = m_focusDistance * halfTanFov();
        const double halfWidth = halfHeight * aspect;
        // The eye sits at focus distance; depth reaches well past the target both ways.
        projection.ortho(float(-halfWidth), float(halfWidth), float(-halfHeight), float(halfHeight),
                         float(-farPlane), float(farPlane));
        return projection;
    }
    if (m_mode == ViewCameraMode::ProjectorView) {
        // The lens image at unit depth; the viewport shows all of it, centred.
        const vg::scene::LensFrame frame = vg::scene::lensFrameForViewport(
            vg::scene::lensFrameConstants(m_lens.throwRatio, m_lens.lensShiftX, m_lens.lensShiftY, m_lens.aspect), aspect);
        const Eigen::Matrix4d m = vg::scene::lensFrustumMatrix(frame, nearPlane, farPlane);
        for (int r = 0; r < 4; ++r) {
            for (int c = 0; c < 4; ++c)
                projection(r, c) = float(m(r, c));
        }
        return projection;
    }
    projection.perspective(float(kVerticalFieldOfViewDegrees), float(aspect), float(nearPlane), float(farPlane));
    return projection;
}

QMatrix4x4 ViewCamera::viewProjection(const QSize &viewport) const
{
    const double aspect = double(std::max(1, viewport.width())) / double(std::max(1, viewport.height()));
    return projectionMatrix(aspect) * viewMatrix();
}

void ViewCamera::becomePerspective()
{
    if (m_mode == ViewCameraMode::Perspective)
        return;
    if (m_mode == ViewCameraMode::ProjectorView) {
        // Keep the eye at the lens and orbit around a point ahead of it.
        const QVector3D eye = eyePosition();
        const QVector3D dir = forward();
        m_rotationX = std::asin(std::clamp(double(-dir.y()), -1.0, 1.0));
        m_rotationY = std::atan2(double(-dir.x()), double(-dir.z()));
        m_target = eye + dir * float(m_focusDistance);
    } else {
        const QVector3D back = orbitDirection();
        m_rotationX = std::asin(std::clamp(double(back.y()), -1.0, 1.0));
        m_rotationY = std::atan2(double(back.x()), double(back.z()));
    }
    m_mode = ViewCameraMode::Perspective;
}

void ViewCamera::orbit(double deltaXPixels, double deltaYPixels)
{
    becomePerspective();
    m_rotationY -= deltaXPixels * kOrbitRadiansPerPixel;
    m_rotationX = std::clamp(m_rotationX + deltaYPixels * kOrbitRadiansPerPixel, -kPitchLimit, kPitchLimit);
    m_rotationY = std::remainder(m_rotationY, 2.0 * M_PI);
}

void ViewCamera::pan(double deltaXPixels, double deltaYPixels, const QSize &viewport)
{
    if (m_mode == ViewCameraMode::ProjectorView)
        becomePerspective();
    // One pixel moves the target by the size of a pixel at the target's distance.
    const double worldPerPixel = 2.0 * m_focusDistance * halfTanFov() / double(std::max(1, viewport.height()));
    const QMatrix4x4 view = viewMatrix();
    const QVector3D right(view(0, 0), view(0, 1), view(0, 2));
    const QVector3D up(view(1, 0), view(1, 1), view(1, 2));
    m_target += (-right * float(deltaXPixels) + up * float(deltaYPixels)) * float(worldPerPixel);
}

void ViewCamera::dolly(double deltaPixels)
{
    if (m_mode == ViewCameraMode::ProjectorView)
        becomePerspective();
    m_focusDistance = clampDistance(m_focusDistance * std::exp(deltaPixels * kDollyPerPixel));
}

void ViewCamera::zoom(double wheelSteps)
{
    if (m_mode == ViewCameraMode::ProjectorView)
        becomePerspective();
    m_focusDistance = clampDistance(m_focusDistance * std::pow(kZoomPerStep, wheelSteps));
}

void ViewCamera::frame(const QVector3D &centre, double radius)
{
    if (m_mode == ViewCameraMode::ProjectorView)
        becomePerspective();
    radius = std::max(0.05, std::isfinite(radius) ? radius : 1.0);
    m_target = centre;
    // The sphere fits the vertical field of view with a small margin.
    m_focusDistance = clampDistance(radius * 1.15 / std::sin(qDegreesToRadians(kVerticalFieldOfViewDegrees) * 0.5));
}

ViewCameraRay ViewCamera::rayThroughPixel(const QPointF &pixel, const QSize &viewport) const
{
    const double w = std::max(1, viewport.width());
    const double h = std::max(1, viewport.height());
    const float ndcX = float(2.0 * pixel.x() / w - 1.0);
    const float ndcY = float(1.0 - 2.0 * pixel.y() / h);
    const QMatrix4x4 inverse = viewProjection(viewport).inverted();
    const QVector3D nearPoint = inverse.map(QVector3D(ndcX, ndcY, -1.0f));
    const QVector3D farPoint = inverse.map(QVector3D(ndcX, ndcY, 1.0f));
    ViewCameraRay ray;
    ray.origin = isOrthographic() ? nearPoint : eyePosition();
    ray.direction = (farPoint - ray.origin).normalized();
    return ray;
}

bool ViewCamera::worldToPixel(const QVector3D &world, const QSize &viewport, QPointF *pixel) const
{
    const QVector4D clip = viewProjection(viewport) * QVector4D(world, 1.0f);
    if (clip.w() <= 1e-6f)
        return false;
    const double x = clip.x() / clip.w();
    const double y = clip.y() / clip.w();
    if (pixel)
        *pixel = QPointF((x * 0.5 + 0.5) * viewport.width(), (0.5 - y * 0.5) * viewport.height());
    return true;
}
