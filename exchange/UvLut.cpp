#include "exchange/UvLut.h"

#include "exchange/ExportImageSource.h"
#include "scene/GuideObject.h"
#include "scene/MeshBuilders.h"
#include "scene/Transform.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <algorithm>
#include <cmath>
#include <new>

namespace vg::exchange {

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("UvLutExport", text);
}

bool isUvLutSurface(const GuideObject &object)
{
    if (!object.visible)
        return false;
    switch (object.guide_index) {
    case KindProjector:
    case KindCamera:
    case KindDistanceMeasure:
    case KindComment:
        return false;
    default:
        return true;
    }
}

UvLutObjectInfo objectInfo(const QVector<GuideObject> &objects, int index)
{
    const GuideObject &o = objects.at(index);
    UvLutObjectInfo info;
    info.objectIndex = index;
    info.name = o.name;
    info.camera = o.isCamera();
    info.resolutionWidth = std::max(1, o.projector_resolution_width);
    info.resolutionHeight = std::max(1, o.projector_resolution_height);
    info.imageFilePath = o.projector_image_file_path;
    return info;
}

bool checkUvLutOptions(const QVector<GuideObject> &objects, const UvLutOptions &options, QString *error)
{
    const auto exists = [&](int i) { return i >= 0 && i < objects.size(); };
    if (!exists(options.outputIndex) || !exists(options.sourceIndex)) {
        *error = tr("Selected projector/camera is no longer available.");
        return false;
    }
    if (options.outputIndex == options.sourceIndex) {
        *error = tr("The output projector/camera and source camera must be different objects.");
        return false;
    }
    if (!objects.at(options.outputIndex).hasLens() || !objects.at(options.sourceIndex).hasLens()) {
        *error = tr("Both output and source objects must be projectors or cameras.");
        return false;
    }
    if (options.method == UvLutMethod::CpuRaster && clampedUvLutAaSamples(options.aaSamples) > 1) {
        *error = tr("UV LUT AA Samples requires the GPU Probe export method.");
        return false;
    }
    return true;
}

} // namespace

double clampedUvLutScale(double scale)
{
    return std::isfinite(scale) ? std::clamp(scale, 0.0, 10.0) : 1.0;
}

double clampedUvLutFeather(double px)
{
    return std::isfinite(px) ? std::clamp(px, 0.0, 8.0) : 0.0;
}

int clampedUvLutAaSamples(int samples)
{
    // Multisample counts are powers of two.
    const int s = std::clamp(samples, 1, 4);
    return s == 3 ? 4 : s;
}

QString uvLutMethodKey(UvLutMethod method)
{
    return method == UvLutMethod::GpuProbe ? QStringLiteral("gpu_probe") : QStringLiteral("cpu_raster_legacy");
}

QString uvLutMethodLabel(UvLutMethod method)
{
    return method == UvLutMethod::GpuProbe ? tr("GPU Probe") : tr("CPU Raster (legacy)");
}

UvLutTriangles collectUvLutTriangles(const QVector<GuideObject> &objects)
{
    UvLutTriangles triangles;
    for (const GuideObject &object : objects) {
        if (!isUvLutSurface(object))
            continue;
        const SceneMesh mesh = scene::buildObjectMesh(object);
        if (mesh.indices.empty())
            continue;
        const Eigen::Isometry3d toWorld = scene::objectToWorld(object);
        triangles.positions.reserve(triangles.positions.size() + mesh.indices.size() * 3);
        for (std::uint32_t index : mesh.indices) {
            if (index >= mesh.vertices.size())
                continue;
            const SceneVertex &v = mesh.vertices[index];
            const Eigen::Vector3d w = toWorld * Eigen::Vector3d(v.px, v.py, v.pz);
            triangles.positions.push_back(float(w.x()));
            triangles.positions.push_back(float(w.y()));
            triangles.positions.push_back(float(w.z()));
        }
        triangles.positions.resize(size_t(triangles.count()) * 9);
    }
    return triangles;
}

void resolveUvLutSample(const scene::LensModel &source, const Eigen::Vector3d &world, double depth,
                        UvLutSample *sample)
{
    sample->flags = UvLutSample::Hit;
    sample->depth = float(depth);
    const scene::LensProjection p = source.project(world);
    if (!p.inside) {
        sample->coverage = 0.0f;
        return;
    }
    sample->u = float(p.u);
    sample->v = float(1.0 - p.v);
    sample->coverage = 1.0f;
    sample->flags |= UvLutSample::Valid;
}

UvLutStats uvLutStats(const UvLutTable &table, int projectedTriangles)
{
    UvLutStats stats;
    stats.projectedTriangles = projectedTriangles;
    double lo = std::numeric_limits<double>::infinity();
    double hi = -lo;
    for (const UvLutSample &s : table.samples) {
        if (s.hit())
            ++stats.surfaceHitSamples;
        if (!s.valid())
            continue;
        ++stats.validCameraUvSamples;
        lo = std::min(lo, double(s.depth));
        hi = std::max(hi, double(s.depth));
    }
    if (stats.validCameraUvSamples > 0) {
        stats.minProjectorDepth = lo;
        stats.maxProjectorDepth = hi;
    }
    return stats;
}

bool resolveUvLutSourceImage(const QVector<GuideObject> &objects, ExportImageSource &images, int sourceIndex,
                             QImage *image, QString *error)
{
    const GuideObject &source = objects.at(sourceIndex);
    const bool live = !source.projector_spout_sender.isEmpty() || !source.projector_ndi_source.isEmpty();
    if (source.projector_image_guide_index < 0 && source.projector_image_file_path.isEmpty() && !live) {
        *error = tr("Select a source camera/projector image for the UV LUT.");
        return false;
    }
    const QImage result = images.projectorSourceImage(objects, sourceIndex);
    if (result.isNull()) {
        *error = tr("The selected source camera/projector has no CPU-readable image.");
        return false;
    }
    *image = result;
    return true;
}

bool computeUvLut(const QVector<GuideObject> &objects, ExportImageSource &images, const UvLutOptions &options,
                  const UvLutProgress &progress, UvLutResult *result, QString *error, const QImage *sourceImage)
{
    QString scratch;
    QString &err = error ? *error : scratch;
    const auto report = [&](const char *text) {
        if (progress)
            progress(tr(text));
    };
    if (!checkUvLutOptions(objects, options, &err))
        return false;
    UvLutResult out;
    out.options = options;
    out.options.uScale = clampedUvLutScale(options.uScale);
    out.options.featherPx = clampedUvLutFeather(options.featherPx);
    out.options.aaSamples = clampedUvLutAaSamples(options.aaSamples);
    if (sourceImage && !sourceImage->isNull())
        out.sourceImage = *sourceImage;
    else if (!resolveUvLutSourceImage(objects, images, options.sourceIndex, &out.sourceImage, &err))
        return false;
    out.output = objectInfo(objects, options.outputIndex);
    out.source = objectInfo(objects, options.sourceIndex);
    out.source.imageWidth = out.sourceImage.width();
    out.source.imageHeight = out.sourceImage.height();
    if (qint64(out.output.resolutionWidth) * out.output.resolutionHeight > kUvLutMaxPixels) {
        err = tr("The UV LUT of %1 x %2 pixels is too large.").arg(out.output.resolutionWidth).arg(out.output.resolutionHeight);
        return false;
    }

    const bool useGpu = out.options.method == UvLutMethod::GpuProbe;
    report(useGpu ? "Collecting scene surfaces for GPU probe..." : "Projecting scene surfaces with CPU raster...");
    const UvLutTriangles triangles = collectUvLutTriangles(objects);
    if (triangles.count() == 0) {
        err = tr("No exportable scene surface triangles were found.");
        return false;
    }
    UvLutProbeInput input;
    input.triangles = &triangles;
    input.output = scene::LensModel::forObject(objects, options.outputIndex);
    input.source = scene::LensModel::forObject(objects, options.sourceIndex);
    input.aaSamples = out.options.aaSamples;
    try {
        if (useGpu) {
            UvLutGpuProbe *gpu = images.uvLutProbe();
            if (!gpu) {
                err = tr("GPU device is not ready for GPU UV LUT export.");
                return false;
            }
            report("Rendering GPU UV probe...");
            if (!gpu->probe(input, &out.table, progress, &err))
                return false;
        } else if (!rasterizeUvLut(input, &out.table, &err)) {
            return false;
        }

        report("Resolving visible projector samples...");
        out.stats = uvLutStats(out.table, triangles.count());
        if (out.stats.validCameraUvSamples == 0) {
            err = tr("No visible surface samples were found inside the selected projector view.");
            return false;
        }
        if (out.options.featherPx > 0.0)
            report("Feathering UV LUT valid mask...");
        out.effectiveFeatherPx = featherUvLut(&out.table, out.options.featherPx);
    } catch (const std::bad_alloc &) {
        err = tr("Not enough memory for a UV LUT of %1 x %2 pixels.")
                  .arg(out.output.resolutionWidth)
                  .arg(out.output.resolutionHeight);
        return false;
    }
    if (result)
        *result = std::move(out);
    return true;
}

} // namespace vg::exchange
