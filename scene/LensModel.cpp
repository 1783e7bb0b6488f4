#include "scene/LensModel.h"

#include "scene/GuideObject.h"
#include "scene/ShapeGeometry.h"
#include "scene/Transform.h"

#include <algorithm>
#include <cmath>

namespace vg::scene {

namespace {

double finiteOr(double value, double fallback)
{
    return std::isfinite(value) ? value : fallback;
}

int atLeastOne(int value)
{
    return std::max(1, value);
}

LensFrame frameAtDepth(const LensIntrinsics &lens, double depth)
{
    return lensFrameAtDepth(lensFrameConstants(lens), depth);
}

LensProjection projectWithConstants(const LensFrameConstants &k, const Eigen::Vector3d &q, double throwDistance)
{
    LensProjection p;
    const double d = -q.z();
    p.depth = d;
    p.inDepthRange = d > 0.0001 && !(d > throwDistance);
    const LensFrame f = lensFrameAtDepth(k, d);
    double u = (q.x() - (f.centerX - f.halfWidth)) / std::max(0.0001, 2.0 * f.halfWidth);
    double v = ((f.centerY + f.halfHeight) - q.y()) / std::max(0.0001, 2.0 * f.halfHeight);
    if (k.flipU)
        u = 1.0 - u;
    if (k.flipV)
        v = 1.0 - v;
    p.u = u;
    p.v = v;
    p.px = u * k.width;
    p.py = v * k.height;
    p.inside = p.inDepthRange && u >= 0.0 && u <= 1.0 && v >= 0.0 && v <= 1.0;
    return p;
}

double depthOf(const LensPose &pose, const Eigen::Vector3d &world)
{
    return -(pose.rotation.transpose() * (world - pose.position)).z();
}

// Ray of one projector pixel against the plane through `point` with normal `n`; a ray
// parallel to the plane or meeting it behind the lens gives the point itself.
Eigen::Vector3d rayPlaneHit(const LensRay &ray, const Eigen::Vector3d &point, const Eigen::Vector3d &n)
{
    const double denom = n.dot(ray.direction);
    if (std::abs(denom) <= 0.000001)
        return point;
    const double t = n.dot(point - ray.origin) / denom;
    if (!(t > 0.0))
        return point;
    return ray.origin + t * ray.direction;
}

} // namespace

LensFrameConstants lensFrameConstants(double throwRatio, double shiftXFraction, double shiftYFraction, double aspect)
{
    LensFrameConstants k;
    k.throwRatio = clampedThrowRatio(throwRatio);
    k.shiftX = std::clamp(finiteOr(shiftXFraction, 0.0), -1.0, 1.0);
    k.shiftY = std::clamp(finiteOr(shiftYFraction, 0.0), -1.0, 1.0);
    k.aspect = std::max(0.001, finiteOr(aspect, 1.0));
    return k;
}

LensFrameConstants lensFrameConstants(const LensIntrinsics &lens)
{
    LensFrameConstants k = lensFrameConstants(lens.throwRatio, lensShiftFraction(lens.lensShiftX),
                                              lensShiftFraction(lens.lensShiftY), lensAspect(lens.width, lens.height));
    k.flipU = lens.flipH != lens.rotate180;
    k.flipV = lens.flipV != lens.rotate180;
    k.width = atLeastOne(lens.width);
    k.height = atLeastOne(lens.height);
    return k;
}

LensFrame lensFrameAtDepth(const LensFrameConstants &k, double depth)
{
    LensFrame f;
    f.halfWidth = depth / (2.0 * k.throwRatio);
    f.halfHeight = f.halfWidth / k.aspect;
    f.centerX = 2.0 * f.halfWidth * k.shiftX;
    f.centerY = -2.0 * f.halfHeight * k.shiftY; // a positive shift moves the image down
    return f;
}

LensFrame lensFrameForViewport(const LensFrameConstants &k, double viewportAspect)
{
    LensFrame f = lensFrameAtDepth(k, 1.0);
    const double aspect = std::max(0.001, finiteOr(viewportAspect, k.aspect));
    if (aspect > k.aspect)
        f.halfWidth = f.halfHeight * aspect;
    else
        f.halfHeight = f.halfWidth / aspect;
    return f;
}

Eigen::Matrix4d lensFrustumMatrix(const LensFrame &unit, double n, double f)
{
    n = std::max(1e-6, n);
    f = std::max(n + 1e-6, f);
    const double hw = std::max(1e-12, unit.halfWidth), hh = std::max(1e-12, unit.halfHeight);
    Eigen::Matrix4d p = Eigen::Matrix4d::Zero();
    p(0, 0) = 1.0 / hw;
    p(0, 2) = unit.centerX / hw;
    p(1, 1) = 1.0 / hh;
    p(1, 2) = unit.centerY / hh;
    p(2, 2) = -(f + n) / (f - n);
    p(2, 3) = -2.0 * f * n / (f - n);
    p(3, 2) = -1.0;
    return p;
}

void undoLensFlipsOnPixel(const LensIntrinsics &lens, double &px, double &py)
{
    const double w = atLeastOne(lens.width), h = atLeastOne(lens.height);
    double u = px / w, v = py / h;
    applyLensFlips(lens, u, v);
    px = u * w;
    py = v * h;
}

double throwRatioFromFocalPixels(double focalPixels, int width)
{
    return focalPixels / atLeastOne(width);
}

Eigen::Vector2d lensShiftPercentFromPrincipalPoint(const Eigen::Vector2d &principal, int width, int height)
{
    return {(0.5 - principal.x() / atLeastOne(width)) * 100.0, (0.5 - principal.y() / atLeastOne(height)) * 100.0};
}

double clampedThrowRatio(double throwRatio)
{
    return std::clamp(finiteOr(throwRatio, 1.0), 0.1, 10.0);
}

double lensShiftFraction(double percent)
{
    return std::clamp(finiteOr(percent, 0.0) / 100.0, -1.0, 1.0);
}

double lensAspect(int width, int height)
{
    return std::max(0.001, double(atLeastOne(width)) / double(atLeastOne(height)));
}

LensIntrinsics lensIntrinsicsOf(const GuideObject &o)
{
    LensIntrinsics lens;
    lens.throwRatio = o.throw_rate;
    lens.lensShiftX = o.lens_shift_x;
    lens.lensShiftY = o.lens_shift_y;
    lens.width = o.projector_resolution_width;
    lens.height = o.projector_resolution_height;
    lens.flipH = o.projector_flip_h;
    lens.flipV = o.projector_flip_v;
    lens.rotate180 = o.projector_rotate_180;
    return lens;
}

LensPose lensPoseOf(const GuideObject &o)
{
    return {objectTranslation(o), objectRotation(o)};
}

LensPose lensPoseFromEuler(const Eigen::Vector3d &position, const Eigen::Vector3d &rotationDegrees)
{
    return {position, eulerDegreesToMatrix(rotationDegrees.x(), rotationDegrees.y(), rotationDegrees.z())};
}

void applyLensFlips(const LensIntrinsics &lens, double &u, double &v)
{
    const LensFrameConstants k = lensFrameConstants(lens);
    if (k.flipU)
        u = 1.0 - u;
    if (k.flipV)
        v = 1.0 - v;
}

LensProjection projectLensFramePoint(const LensIntrinsics &lens, const Eigen::Vector3d &q, double throwDistance)
{
    return projectWithConstants(lensFrameConstants(lens), q, throwDistance);
}

LensProjection projectWorldPoint(const LensIntrinsics &lens, const LensPose &pose, const Eigen::Vector3d &world,
                                 double throwDistance)
{
    return projectLensFramePoint(lens, pose.rotation.transpose() * (world - pose.position), throwDistance);
}

Eigen::Vector3d lensFarPoint(const LensIntrinsics &lens, double u, double v, double throwDistance)
{
    applyLensFlips(lens, u, v);
    const LensFrame f = frameAtDepth(lens, throwDistance);
    return {f.centerX - f.halfWidth + u * 2.0 * f.halfWidth, f.centerY + f.halfHeight - v * 2.0 * f.halfHeight,
            -throwDistance};
}

LensRay lensRay(const LensIntrinsics &lens, const LensPose &pose, double u, double v, double throwDistance)
{
    LensRay ray;
    ray.origin = pose.position;
    ray.farPoint = pose.rotation * lensFarPoint(lens, u, v, throwDistance) + pose.position;
    ray.direction = (ray.farPoint - ray.origin).normalized();
    return ray;
}

double lensFocalLengthPixels(const LensIntrinsics &lens)
{
    return clampedThrowRatio(lens.throwRatio) * atLeastOne(lens.width);
}

Eigen::Vector2d lensPrincipalPointPixels(const LensIntrinsics &lens)
{
    return {atLeastOne(lens.width) * (0.5 - lensShiftFraction(lens.lensShiftX)),
            atLeastOne(lens.height) * (0.5 - lensShiftFraction(lens.lensShiftY))};
}

Eigen::Vector2d lensImageSizeAtDepth(const LensIntrinsics &lens, double depth)
{
    const LensFrame f = frameAtDepth(lens, depth);
    return {2.0 * f.halfWidth, 2.0 * f.halfHeight};
}

double baseThrowDistance(const GuideObject &object)
{
    if (!object.hasLens())
        return 8.0;
    return std::max(8.0, 28.0 * std::max(0.1, finiteOr(object.scale_x, 0.1)));
}

double throwDistanceFor(const QVector<GuideObject> &objects, int index)
{
    if (index < 0 || index >= objects.size())
        return 8.0;
    const GuideObject &self = objects[index];
    const LensPose pose = lensPoseOf(self);
    double reach = baseThrowDistance(self);
    auto extend = [&](double depth) {
        if (std::isfinite(depth))
            reach = std::max(reach, depth);
    };
    for (int i = 0; i < objects.size(); ++i) {
        const GuideObject &o = objects[i];
        if (i == index || !o.visible)
            continue;
        switch (o.guide_index) {
        case KindPlane:
        case KindCirclePlane: {
            const double hx = std::max(0.001, double(o.scale_x));
            const double hy = std::max(0.001, double(o.scale_y));
            for (double sx : {-1.0, 1.0})
                for (double sy : {-1.0, 1.0})
                    extend(depthOf(pose, localToWorld(o, {sx * hx, sy * hy, 0.0})));
            break;
        }
        case KindCylinderWall: {
            const double angle = cylinderWallAngleDegrees(o) * M_PI / 180.0;
            const double radius = cylinderWallRadius(o);
            for (int k = 0; k < 17; ++k) {
                const double theta = -angle / 2.0 + angle * k / 16.0;
                for (double y : {-double(o.scale_y), double(o.scale_y)})
                    extend(depthOf(pose, localToWorld(o, cylinderWallPoint(radius, theta, y))));
            }
            break;
        }
        case KindProjector: {
            const double r = std::max(0.12, 0.62 * std::max(0.1, double(o.scale_x))) + 0.03;
            extend(depthOf(pose, objectTranslation(o)) + r);
            break;
        }
        case KindCamera: {
            const double size = std::max({double(o.scale_x), double(o.scale_y), double(o.scale_z)});
            extend(depthOf(pose, objectTranslation(o)) + std::max(0.01, size));
            break;
        }
        case KindPerson:
        case KindCurvedSurface:
            extend(depthOf(pose, objectTranslation(o)) + boundingRadius(o));
            break;
        default:
            break;
        }
    }
    return std::clamp(reach, 8.0, 500.0);
}

double footprintMetricValue(double u, double v, int metric)
{
    switch (metric) {
    case FootprintU:
        return u;
    case FootprintV:
        return v;
    case FootprintArea:
        return std::sqrt(std::max(0.0, u * v));
    default:
        return std::max(u, v);
    }
}

QString footprintUnitSuffix(int metric)
{
    return metric == FootprintArea ? QStringLiteral(" mm2/px") : QStringLiteral(" mm/px");
}

QString footprintLabel(double value, int metric)
{
    return QString::number(value, 'f', 2) + footprintUnitSuffix(metric);
}

HeatColor heatmapColor(double value, double minimum, double maximum, double opacity)
{
    HeatColor c;
    if (!(value > 0.0001))
        return c;
    const double span = std::max(minimum + 0.0001, maximum) - minimum;
    const double t = std::clamp((value - minimum) / span, 0.0, 1.0);
    const double green[3] = {0.05, 0.95, 0.18};
    const double yellow[3] = {1.0, 0.88, 0.06};
    const double red[3] = {1.0, 0.08, 0.03};
    const double *from = t < 0.5 ? green : yellow;
    const double *to = t < 0.5 ? yellow : red;
    const double k = t < 0.5 ? 2.0 * t : 2.0 * (t - 0.5);
    c.r = float(from[0] + (to[0] - from[0]) * k);
    c.g = float(from[1] + (to[1] - from[1]) * k);
    c.b = float(from[2] + (to[2] - from[2]) * k);
    c.a = float(opacity);
    c.draws = true;
    return c;
}

double projectionGridCoverage(double px, double py, int width, int height, int stepPixels, double derivativePixels)
{
    const double step = std::max(1, stepPixels);
    const double aa = std::max(0.001, 1.35 * derivativePixels);
    auto distanceToLine = [step](double offset) {
        const double m = offset - step * std::floor(offset / step);   // 0..step
        return std::min(m, step - m);
    };
    const double dx = distanceToLine(px - atLeastOne(width) * 0.5);
    const double dy = distanceToLine(py - atLeastOne(height) * 0.5);
    const double d = std::min(dx, dy);
    const double x = std::clamp(d / aa, 0.0, 1.0);
    return 1.0 - x * x * (3.0 - 2.0 * x);
}

QVector3D blendProjectionGrid(const QVector3D &rgb, double coverage)
{
    const float k = float(kProjectionGridStrength * std::clamp(coverage, 0.0, 1.0));
    return rgb * (1.0f - k) + QVector3D(1.0f, 1.0f, 1.0f) * k;
}

QColor projectorFrustumColor()
{
    return QColor::fromRgbF(0.0f, 1.0f, 0.0f, 90.0f / 255.0f);
}

QColor cameraFrustumColor()
{
    return QColor::fromRgbF(0.05f, 0.65f, 1.0f, 90.0f / 255.0f);
}

QString projectorPlaceholderResolutionText(int width, int height)
{
    return QStringLiteral("%1 x %2px").arg(width).arg(height);
}

QString projectorThrowRatioText(double throwRatio)
{
    return QStringLiteral("Throw Ratio %1").arg(QString::number(throwRatio, 'f', 2));
}

QString resolutionLabelText(int width, int height)
{
    return QStringLiteral("%1x%2px").arg(width).arg(height);
}

LensModel::LensModel(const LensIntrinsics &lens, const LensPose &pose, double throwDistance)
    : m_lens(lens), m_pose(pose), m_throwDistance(throwDistance)
{
}

LensModel LensModel::forObject(const QVector<GuideObject> &objects, int index)
{
    if (index < 0 || index >= objects.size())
        return {};
    const GuideObject &o = objects[index];
    return LensModel(lensIntrinsicsOf(o), lensPoseOf(o), throwDistanceFor(objects, index));
}

int LensModel::width() const
{
    return atLeastOne(m_lens.width);
}

int LensModel::height() const
{
    return atLeastOne(m_lens.height);
}

LensProjection LensModel::project(const Eigen::Vector3d &world) const
{
    const LensFrameConstants k = lensFrameConstants(m_lens);
    return projectWithConstants(k, m_pose.rotation.transpose() * (world - m_pose.position), m_throwDistance);
}

void LensModel::projectMany(const Eigen::Vector3d *world, size_t count, LensProjection *out) const
{
    const LensFrameConstants k = lensFrameConstants(m_lens);
    const Eigen::Matrix3d toLens = m_pose.rotation.transpose();
    for (size_t i = 0; i < count; ++i)
        out[i] = projectWithConstants(k, toLens * (world[i] - m_pose.position), m_throwDistance);
}

LensRay LensModel::ray(double u, double v) const
{
    return lensRay(m_lens, m_pose, u, v, m_throwDistance);
}

LensRay LensModel::pixelRay(double px, double py) const
{
    return ray(px / width(), py / height());
}

std::array<Eigen::Vector3d, 4> LensModel::farCorners() const
{
    return {ray(0, 0).farPoint, ray(1, 0).farPoint, ray(1, 1).farPoint, ray(0, 1).farPoint};
}

std::vector<QVector3D> LensModel::frustumLines() const
{
    const auto corners = farCorners();
    const QVector3D lens = toQVector(m_pose.position);
    std::vector<QVector3D> lines;
    lines.reserve(16);
    for (int i = 0; i < 4; ++i) {
        lines.push_back(lens);
        lines.push_back(toQVector(corners[i]));
    }
    for (int i = 0; i < 4; ++i) {
        lines.push_back(toQVector(corners[i]));
        lines.push_back(toQVector(corners[(i + 1) % 4]));
    }
    return lines;
}

Eigen::Matrix4d LensModel::viewMatrix() const
{
    Eigen::Matrix4d m = Eigen::Matrix4d::Identity();
    m.block<3, 3>(0, 0) = m_pose.rotation.transpose();
    m.block<3, 1>(0, 3) = -m_pose.rotation.transpose() * m_pose.position;
    return m;
}

Eigen::Matrix4d LensModel::projectionMatrix(double n, double f) const
{
    // x_ndc = 2T·x/d − 2sx, y_ndc = 2TA·y/d + 2sy with d = −z: the NDC of (u, v) before flips.
    return lensFrustumMatrix(lensFrameAtDepth(lensFrameConstants(m_lens), 1.0), n, f);
}

PixelFootprint LensModel::footprintAt(const Eigen::Vector3d &point, const Eigen::Vector3d &normal) const
{
    PixelFootprint fp;
    const double len = normal.norm();
    if (!(len > 1e-12) || !std::isfinite(len))
        return fp;
    const Eigen::Vector3d n = normal / len;
    const LensProjection p = project(point);
    if (!p.inside)
        return fp;
    const Eigen::Vector3d c = rayPlaneHit(ray(p.u, p.v), point, n);
    const Eigen::Vector3d hu = rayPlaneHit(ray(p.u + 1.0 / width(), p.v), point, n);
    const Eigen::Vector3d hv = rayPlaneHit(ray(p.u, p.v + 1.0 / height()), point, n);
    fp.mmPerPixelU = (hu - c).norm() * 1000.0;
    fp.mmPerPixelV = (hv - c).norm() * 1000.0;
    fp.valid = true;
    return fp;
}

} // namespace vg::scene
