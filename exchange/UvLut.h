#pragma once

#include "scene/LensModel.h"

#include <QImage>
#include <QString>
#include <QVector>

#include <cstdint>
#include <functional>
#include <limits>
#include <vector>

struct GuideObject;

// Projector/camera UV look-up tables: for every pixel of an output projector, the point of a
// source camera's (or projector's) image that lands there.

namespace vg::exchange {

class ExportImageSource;

enum class UvLutMethod { GpuProbe, CpuRaster };

struct UvLutOptions {
    int outputIndex = -1;
    int sourceIndex = -1;
    UvLutMethod method = UvLutMethod::GpuProbe;
    double uScale = 1.0;       // 0..10, multiplies only the written u
    double featherPx = 0.0;    // 0..8
    int aaSamples = 1;         // 1..4, GPU probe only
    bool testData = false;     // manifest, preview and diagnostic images, float maps
};

// Limits applied to the options where they are used.
double clampedUvLutScale(double scale);
double clampedUvLutFeather(double px);
int clampedUvLutAaSamples(int samples);

QString uvLutMethodKey(UvLutMethod method);      // "gpu_probe", "cpu_raster_legacy"
QString uvLutMethodLabel(UvLutMethod method);    // "GPU Probe", "CPU Raster (legacy)"

// World-space triangles of the scene's surfaces, three vertices of x, y, z each.
struct UvLutTriangles {
    std::vector<float> positions;
    int count() const { return int(positions.size() / 9); }
};

// Every visible surface object (not projectors, cameras, measures or comments).
UvLutTriangles collectUvLutTriangles(const QVector<GuideObject> &objects);

// One output pixel. u, v are the source's normalised coordinates with v from the bottom
// (v = 1 − lens v), unscaled; depth is metres along the output lens axis.
struct UvLutSample {
    float u = 0.0f, v = 0.0f, depth = 0.0f, coverage = 0.0f;
    std::uint8_t flags = 0;
    static constexpr std::uint8_t Hit = 1;     // a surface is seen here
    static constexpr std::uint8_t Valid = 2;   // and the source sees that point
    bool valid() const { return flags & Valid; }
    bool hit() const { return flags & Hit; }
};

struct UvLutTable {
    int width = 0;
    int height = 0;
    std::vector<UvLutSample> samples;   // rows from the top, left to right
    const UvLutSample &at(int x, int y) const { return samples[size_t(y) * size_t(width) + size_t(x)]; }
    UvLutSample &at(int x, int y) { return samples[size_t(y) * size_t(width) + size_t(x)]; }
};

// Surfaces nearer the output lens than this are clipped, by both sampling methods.
constexpr double kUvLutNearPlane = 0.01;
// The largest table computed (pixels), so a hostile resolution cannot exhaust memory.
constexpr qint64 kUvLutMaxPixels = qint64(8192) * 8192;

// What a sampling method is given.
struct UvLutProbeInput {
    const UvLutTriangles *triangles = nullptr;
    scene::LensModel output;    // its resolution is the table size
    scene::LensModel source;
    int aaSamples = 1;
};

using UvLutProgress = std::function<void(const QString &text)>;

// The GPU probe lives beside the renderer; the exchange core only sees this interface.
class UvLutGpuProbe
{
public:
    virtual ~UvLutGpuProbe() = default;
    virtual bool probe(const UvLutProbeInput &input, UvLutTable *table, const UvLutProgress &progress,
                       QString *error) = 0;
};

// The CPU rasteriser: depth-tested, values at pixel centres, rows split over the thread pool.
bool rasterizeUvLut(const UvLutProbeInput &input, UvLutTable *table, QString *error);

// Shared by both methods: the source's view of a world point, written into a sample.
void resolveUvLutSample(const scene::LensModel &source, const Eigen::Vector3d &world, double depth,
                        UvLutSample *sample);

struct UvLutStats {
    int projectedTriangles = 0;
    qint64 surfaceHitSamples = 0;
    qint64 validCameraUvSamples = 0;
    double minProjectorDepth = std::numeric_limits<double>::quiet_NaN();
    double maxProjectorDepth = std::numeric_limits<double>::quiet_NaN();
};
UvLutStats uvLutStats(const UvLutTable &table, int projectedTriangles);

// Softens coverage within `widthPx` of the valid region's edges; returns the width applied.
double featherUvLut(UvLutTable *table, double widthPx);

// Identity of an object named in the manifest.
struct UvLutObjectInfo {
    int objectIndex = -1;
    QString name;
    bool camera = false;
    int resolutionWidth = 1;
    int resolutionHeight = 1;
    QString imageFilePath;
    int imageWidth = 0;
    int imageHeight = 0;
};

// A computed table with everything the files record.
struct UvLutResult {
    UvLutTable table;
    UvLutOptions options;
    UvLutObjectInfo output;
    UvLutObjectInfo source;
    QImage sourceImage;
    UvLutStats stats;
    double effectiveFeatherPx = 0.0;
};

// The source's image as the 3D view shows it: the guide it projects or its image file.
bool resolveUvLutSourceImage(const QVector<GuideObject> &objects, ExportImageSource &images, int sourceIndex,
                             QImage *image, QString *error);

// Checks the options, collects the surfaces and samples them; the GPU probe and the source
// image come from `images`. `sourceImage`, when not null, is used instead of resolving one.
bool computeUvLut(const QVector<GuideObject> &objects, ExportImageSource &images, const UvLutOptions &options,
                  const UvLutProgress &progress, UvLutResult *result, QString *error,
                  const QImage *sourceImage = nullptr);

} // namespace vg::exchange
