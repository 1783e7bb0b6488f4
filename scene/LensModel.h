#pragma once

#include <Eigen/Geometry>
#include <QColor>
#include <QString>
#include <QVector>
#include <QVector3D>

#include <array>
#include <limits>
#include <vector>

struct GuideObject;

// The projector and camera lens model. Every consumer (renderer, calibration, look-up
// tables, exports, command line) evaluates these functions and nothing else.
//
// Lens frame: origin at the lens point, the object's axes; the lens looks along -Z, image
// right is +X, image up is +Y. The lens point sits at the object's origin, so the lens pose
// is exactly the object's translate and rotate fields (Transform.h).
//
// (u, v) run 0..1 from the top-left corner of the image, after flips; pixels are
// (px, py) = (u · width, v · height), so the centre of pixel i is at i + 0.5.

namespace vg::scene {

struct LensIntrinsics {
    double throwRatio = 1.0;    // as stored; used clamped to 0.1..10
    double lensShiftX = 0.0;    // percent of the image width; used clamped to -100..100
    double lensShiftY = 50.0;   // percent of the image height
    int width = 1920;           // used as at least 1
    int height = 1200;
    bool flipH = false;
    bool flipV = false;
    bool rotate180 = false;
};

struct LensPose {
    Eigen::Vector3d position = Eigen::Vector3d::Zero();     // lens point in world
    Eigen::Matrix3d rotation = Eigen::Matrix3d::Identity(); // lens frame axes in world (columns)
};

struct LensProjection {
    double u = 0.0, v = 0.0;      // after flips
    double px = 0.0, py = 0.0;    // u · width, v · height
    double depth = 0.0;           // metres along the viewing direction
    bool inDepthRange = false;    // 0.0001 < depth <= D
    bool inside = false;          // in depth range and 0 <= u, v <= 1
};

struct LensRay {
    Eigen::Vector3d origin;       // the lens point
    Eigen::Vector3d direction;    // unit length
    Eigen::Vector3d farPoint;     // on the far rectangle at depth D
};

// The per-lens constants every lens computation starts from, with the limits applied:
// throw ratio 0.1..10, shifts as fractions -1..1, aspect at least 0.001. The shader's
// uniforms are fed from these.
struct LensFrameConstants {
    double throwRatio = 1.0;
    double shiftX = 0.0;
    double shiftY = 0.0;
    double aspect = 1.0;
    bool flipU = false;          // flip H, inverted by rotate 180
    bool flipV = false;          // flip V, inverted by rotate 180
    int width = 1;
    int height = 1;
};
LensFrameConstants lensFrameConstants(const LensIntrinsics &lens);
// For callers holding the shifts as fractions and an aspect rather than a resolution.
LensFrameConstants lensFrameConstants(double throwRatio, double shiftXFraction, double shiftYFraction, double aspect);

// The image rectangle at a depth in the lens frame (before flips): half sizes and centre.
struct LensFrame {
    double halfWidth = 0.0;
    double halfHeight = 0.0;
    double centerX = 0.0;
    double centerY = 0.0;
};
LensFrame lensFrameAtDepth(const LensFrameConstants &constants, double depth);
// The frame at unit depth widened to a viewport's aspect, centred on the lens image,
// so a view through the lens shows all of its image.
LensFrame lensFrameForViewport(const LensFrameConstants &constants, double viewportAspect);
// OpenGL frustum of a frame at unit depth, depth mapped over near..far.
Eigen::Matrix4d lensFrustumMatrix(const LensFrame &unitDepthFrame, double nearPlane, double farPlane);

// A pixel of the projector's real (flipped) image to the same pixel before the flips, and
// back: the flips are their own inverse.
void undoLensFlipsOnPixel(const LensIntrinsics &lens, double &px, double &py);
// The pinhole values back to the record's: throw ratio and lens shift in percent.
double throwRatioFromFocalPixels(double focalPixels, int width);
Eigen::Vector2d lensShiftPercentFromPrincipalPoint(const Eigen::Vector2d &principal, int width, int height);

// Limits applied where the fields are used.
double clampedThrowRatio(double throwRatio);
double lensShiftFraction(double percent);      // percent / 100 clamped to -1..1
double lensAspect(int width, int height);      // max(0.001, width / height)

LensIntrinsics lensIntrinsicsOf(const GuideObject &object);
LensPose lensPoseOf(const GuideObject &object);
LensPose lensPoseFromEuler(const Eigen::Vector3d &position, const Eigen::Vector3d &rotationDegrees);

// Applies (or, the same thing, undoes) the flips: U flips with flip H, V with flip V, and
// rotate 180 inverts both decisions.
void applyLensFlips(const LensIntrinsics &lens, double &u, double &v);

// The projection test for a point already in the lens frame / in world coordinates.
// Pass D = infinity to ignore the far limit (as the calibration does).
LensProjection projectLensFramePoint(const LensIntrinsics &lens, const Eigen::Vector3d &q, double throwDistance);
LensProjection projectWorldPoint(const LensIntrinsics &lens, const LensPose &pose, const Eigen::Vector3d &world,
                                 double throwDistance = std::numeric_limits<double>::infinity());

// Far point of (u, v) at depth D in the lens frame, and the world ray through it.
Eigen::Vector3d lensFarPoint(const LensIntrinsics &lens, double u, double v, double throwDistance);
LensRay lensRay(const LensIntrinsics &lens, const LensPose &pose, double u, double v, double throwDistance);

// Pinhole form of the same model: focal length and principal point in pixels, before flips
// (px = f·x/d + cx, py = cy − f·y/d with x right, y up in the lens frame).
double lensFocalLengthPixels(const LensIntrinsics &lens);
Eigen::Vector2d lensPrincipalPointPixels(const LensIntrinsics &lens);
// Image width and height in metres at a depth.
Eigen::Vector2d lensImageSizeAtDepth(const LensIntrinsics &lens, double depth);

// Throw distance D of object `index` in the scene (8 for kinds without a lens).
double throwDistanceFor(const QVector<GuideObject> &objects, int index);
double baseThrowDistance(const GuideObject &object);

// Footprint metrics.
enum FootprintMetric { FootprintMax = 0, FootprintU = 1, FootprintV = 2, FootprintArea = 3 };
struct PixelFootprint {
    bool valid = false;           // false: outside the projection or no usable surface normal
    double mmPerPixelU = 0.0;
    double mmPerPixelV = 0.0;
};
double footprintMetricValue(double mmPerPixelU, double mmPerPixelV, int metric);
QString footprintUnitSuffix(int metric);             // " mm/px" or " mm2/px"
QString footprintLabel(double value, int metric);    // "3.12 mm/px"

struct HeatColor {
    float r = 0.0f, g = 0.0f, b = 0.0f, a = 0.0f;
    bool draws = false;           // values of 0.0001 or less draw nothing
};
HeatColor heatmapColor(double value, double minimum, double maximum, double opacity);

// Projection grid: how much of a grid line covers projector pixel position (px, py), 0..1,
// for lines every `stepPixels` (at least 1) centred on the image centre; derivativePixels
// is the screen-space change of the pixel position (the anti-aliasing width).
constexpr double kProjectionGridStrength = 0.18;
double projectionGridCoverage(double px, double py, int width, int height, int stepPixels, double derivativePixels);
// Blends white over a colour with the grid's line strength.
QVector3D blendProjectionGrid(const QVector3D &rgb, double coverage);

// Frustum colours (RGBA 0..1).
QColor projectorFrustumColor();
QColor cameraFrustumColor();

// Label texts.
QString projectorPlaceholderResolutionText(int width, int height);   // "1920 x 1200px"
QString projectorThrowRatioText(double throwRatio);                  // "Throw Ratio 1.00"
QString resolutionLabelText(int width, int height);                  // "1920x1200px"

// A projector or camera with its throw distance, ready to evaluate.
class LensModel
{
public:
    LensModel() = default;
    LensModel(const LensIntrinsics &lens, const LensPose &pose, double throwDistance);
    // The object at `index` with its throw distance in that scene.
    static LensModel forObject(const QVector<GuideObject> &objects, int index);

    const LensIntrinsics &intrinsics() const { return m_lens; }
    const LensPose &pose() const { return m_pose; }
    double throwDistance() const { return m_throwDistance; }
    int width() const;
    int height() const;

    LensProjection project(const Eigen::Vector3d &world) const;
    // The same test for many points, with the per-lens constants computed once.
    void projectMany(const Eigen::Vector3d *world, size_t count, LensProjection *out) const;
    LensRay ray(double u, double v) const;
    LensRay pixelRay(double px, double py) const;

    // Far rectangle corners in world: image (u, v) = (0,0), (1,0), (1,1), (0,1) after flips.
    std::array<Eigen::Vector3d, 4> farCorners() const;
    // Four edges from the lens point and the far rectangle outline: 8 segments, 16 points.
    std::vector<QVector3D> frustumLines() const;

    // World → lens frame, and an OpenGL clip matrix of the lens frame whose NDC is
    // (2u − 1, 1 − 2v) before flips, depth mapped over near..far.
    Eigen::Matrix4d viewMatrix() const;
    Eigen::Matrix4d projectionMatrix(double nearPlane, double farPlane) const;

    // Footprint of one projector pixel at a surface point with the given surface normal.
    PixelFootprint footprintAt(const Eigen::Vector3d &surfacePoint, const Eigen::Vector3d &surfaceNormal) const;

private:
    LensIntrinsics m_lens;
    LensPose m_pose;
    double m_throwDistance = 8.0;
};

} // namespace vg::scene
