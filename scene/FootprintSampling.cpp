#include "scene/FootprintSampling.h"

#include "scene/GuideObject.h"
#include "scene/LensModel.h"
#include "scene/SceneRaycast.h"

#include <algorithm>
#include <cmath>

namespace vg::scene {

namespace {

// Grid positions along one axis: centre ± whole steps, inside 0..size.
std::vector<double> gridPositions(int size, int step)
{
    std::vector<double> positions;
    const double centre = size * 0.5;
    const int below = int(std::floor(centre / step));
    for (int k = -below; centre + double(k) * step <= size; ++k)
        positions.push_back(centre + double(k) * step);
    return positions;
}

} // namespace

std::vector<FootprintGridSample> sampleFootprintGrid(const QVector<GuideObject> &objects,
                                                     const std::vector<SceneMesh> &meshes, int projectorIndex,
                                                     int stepPixels, int maxPerAxis)
{
    std::vector<FootprintGridSample> samples;
    if (projectorIndex < 0 || projectorIndex >= objects.size() || !objects[projectorIndex].hasLens())
        return samples;
    const LensModel lens = LensModel::forObject(objects, projectorIndex);
    const int metric = std::clamp(objects[projectorIndex].projector_pixel_footprint_metric, 0, 3);
    maxPerAxis = std::max(1, maxPerAxis);
    int step = std::max(1, stepPixels);
    const int longest = std::max(lens.width(), lens.height());
    if (longest / step + 1 > maxPerAxis)
        step *= (longest / step + 1 + maxPerAxis - 1) / maxPerAxis;
    const std::vector<double> xs = gridPositions(lens.width(), step);
    const std::vector<double> ys = gridPositions(lens.height(), step);
    SceneRaycastOptions options;
    options.skipIndex = projectorIndex;
    samples.reserve(xs.size() * ys.size());
    for (double py : ys) {
        for (double px : xs) {
            FootprintGridSample s;
            s.px = px;
            s.py = py;
            const LensRay ray = lens.pixelRay(px, py);
            options.maxDistance = (ray.farPoint - ray.origin).norm() * 1.000001;
            const SceneRayHit hit = raycastScene(objects, meshes, ray.origin, ray.direction, options);
            if (hit.hit) {
                const PixelFootprint fp = lens.footprintAt(hit.point, hit.normal);
                if (fp.valid) {
                    s.valid = true;
                    s.objectIndex = hit.objectIndex;
                    s.point = hit.point;
                    s.mmPerPixelU = fp.mmPerPixelU;
                    s.mmPerPixelV = fp.mmPerPixelV;
                    s.value = footprintMetricValue(fp.mmPerPixelU, fp.mmPerPixelV, metric);
                }
            }
            samples.push_back(s);
        }
    }
    return samples;
}

FootprintRange footprintRange(const std::vector<FootprintGridSample> &samples)
{
    FootprintRange range;
    for (const FootprintGridSample &s : samples) {
        if (!s.valid || !(s.value > 0.0001) || !std::isfinite(s.value))
            continue;
        if (!range.valid) {
            range = {true, s.value, s.value};
        } else {
            range.minimum = std::min(range.minimum, s.value);
            range.maximum = std::max(range.maximum, s.value);
        }
    }
    return range;
}

} // namespace vg::scene
