#include "exchange/ParallelRows.h"
#include "exchange/UvLut.h"

#include <QCoreApplication>

#include <algorithm>
#include <cmath>
#include <new>

namespace vg::exchange {

namespace {

constexpr int kBandRows = 16;

// A triangle in output pixels (after the lens flips), ready for edge tests at pixel centres.
// 1/d and world/d are affine in the image, so they interpolate exactly with screen weights.
struct ScreenTriangle {
    double x[3], y[3];
    double invDepth[3];
    Eigen::Vector3d worldOverDepth[3];
    double invArea = 0.0;
    bool owns[3] = {false, false, false};   // edge i (vertex i to i+1) keeps pixels exactly on it
    int minX = 0, maxX = -1, minY = 0, maxY = -1;
};

struct LensVertex {
    Eigen::Vector3d lens;    // lens frame
    Eigen::Vector3d world;
};

// Keeps the part of a triangle at depth >= near (lens frame z <= −near).
int clipToNear(const LensVertex in[3], LensVertex out[4])
{
    int n = 0;
    for (int i = 0; i < 3; ++i) {
        const LensVertex &a = in[i];
        const LensVertex &b = in[(i + 1) % 3];
        const double da = -a.lens.z() - kUvLutNearPlane;
        const double db = -b.lens.z() - kUvLutNearPlane;
        if (da >= 0.0)
            out[n++] = a;
        if ((da >= 0.0) != (db >= 0.0)) {
            const double t = da / (da - db);
            out[n++] = {a.lens + t * (b.lens - a.lens), a.world + t * (b.world - a.world)};
        }
    }
    return n;
}

// Top-left style ownership in a y-down image: with positive orientation, an edge going up,
// or going left when horizontal, keeps its pixels, so a shared edge is drawn exactly once.
bool ownsEdge(double dx, double dy)
{
    return dy < 0.0 || (dy == 0.0 && dx > 0.0);
}

bool setupScreenTriangle(const scene::LensModel &output, const LensVertex v[3], ScreenTriangle *t)
{
    const int w = output.width();
    const int h = output.height();
    for (int i = 0; i < 3; ++i) {
        const scene::LensProjection p =
            scene::projectLensFramePoint(output.intrinsics(), v[i].lens, std::numeric_limits<double>::infinity());
        const double d = -v[i].lens.z();
        t->x[i] = p.u * w;
        t->y[i] = p.v * h;
        t->invDepth[i] = 1.0 / d;
        t->worldOverDepth[i] = v[i].world / d;
    }
    double area = (t->x[1] - t->x[0]) * (t->y[2] - t->y[0]) - (t->y[1] - t->y[0]) * (t->x[2] - t->x[0]);
    if (!std::isfinite(area) || std::abs(area) < 1e-12)
        return false;
    if (area < 0.0) {
        std::swap(t->x[1], t->x[2]);
        std::swap(t->y[1], t->y[2]);
        std::swap(t->invDepth[1], t->invDepth[2]);
        std::swap(t->worldOverDepth[1], t->worldOverDepth[2]);
        area = -area;
    }
    t->invArea = 1.0 / area;
    for (int i = 0; i < 3; ++i)
        t->owns[i] = ownsEdge(t->x[(i + 1) % 3] - t->x[i], t->y[(i + 1) % 3] - t->y[i]);
    const auto [minx, maxx] = std::minmax({t->x[0], t->x[1], t->x[2]});
    const auto [miny, maxy] = std::minmax({t->y[0], t->y[1], t->y[2]});
    // Pixel centres i + 0.5 inside the bounds.
    t->minX = int(std::max(0.0, std::ceil(minx - 0.5)));
    t->maxX = int(std::min(double(w - 1), std::floor(maxx - 0.5)));
    t->minY = int(std::max(0.0, std::ceil(miny - 0.5)));
    t->maxY = int(std::min(double(h - 1), std::floor(maxy - 0.5)));
    return t->minX <= t->maxX && t->minY <= t->maxY;
}

std::vector<ScreenTriangle> setupTriangles(const UvLutProbeInput &input)
{
    const scene::LensModel &output = input.output;
    const Eigen::Matrix3d toLens = output.pose().rotation.transpose();
    const Eigen::Vector3d lensPoint = output.pose().position;
    const float *p = input.triangles->positions.data();
    std::vector<ScreenTriangle> result;
    result.reserve(size_t(input.triangles->count()));
    for (int t = 0; t < input.triangles->count(); ++t, p += 9) {
        LensVertex v[3];
        for (int i = 0; i < 3; ++i) {
            v[i].world = Eigen::Vector3d(p[3 * i], p[3 * i + 1], p[3 * i + 2]);
            v[i].lens = toLens * (v[i].world - lensPoint);
        }
        LensVertex clipped[4];
        const int n = clipToNear(v, clipped);
        for (int k = 1; k + 1 < n; ++k) {
            const LensVertex fan[3] = {clipped[0], clipped[k], clipped[k + 1]};
            ScreenTriangle screen;
            if (setupScreenTriangle(output, fan, &screen))
                result.push_back(screen);
        }
    }
    return result;
}

// Depth-tested raster of one band of rows; the winner of each pixel is resolved afterwards.
void rasterBand(const std::vector<ScreenTriangle> &triangles, const std::vector<int> &bucket, int y0, int y1,
                int width, double farPlane, std::vector<double> &depth, std::vector<int> &winner,
                std::vector<Eigen::Vector3d> &weights)
{
    std::fill(depth.begin(), depth.end(), std::numeric_limits<double>::infinity());
    std::fill(winner.begin(), winner.end(), -1);
    for (int index : bucket) {
        const ScreenTriangle &t = triangles[size_t(index)];
        const int rowFirst = std::max(y0, t.minY);
        const int rowLast = std::min(y1 - 1, t.maxY);
        for (int y = rowFirst; y <= rowLast; ++y) {
            const double py = y + 0.5;
            for (int x = t.minX; x <= t.maxX; ++x) {
                const double px = x + 0.5;
                double e[3];
                bool inside = true;
                for (int i = 0; i < 3 && inside; ++i) {
                    const int j = (i + 1) % 3;
                    e[i] = (t.x[j] - t.x[i]) * (py - t.y[i]) - (t.y[j] - t.y[i]) * (px - t.x[i]);
                    inside = e[i] > 0.0 || (e[i] == 0.0 && t.owns[i]);
                }
                if (!inside)
                    continue;
                // e[i] weighs the vertex opposite edge i.
                const double b0 = e[1] * t.invArea, b1 = e[2] * t.invArea, b2 = e[0] * t.invArea;
                const double invD = b0 * t.invDepth[0] + b1 * t.invDepth[1] + b2 * t.invDepth[2];
                const double d = 1.0 / invD;
                const size_t cell = size_t(y - y0) * size_t(width) + size_t(x);
                if (!(d >= kUvLutNearPlane) || d > farPlane || d >= depth[cell])
                    continue;
                depth[cell] = d;
                winner[cell] = index;
                weights[cell] = Eigen::Vector3d(b0, b1, b2);
            }
        }
    }
}

} // namespace

bool rasterizeUvLut(const UvLutProbeInput &input, UvLutTable *table, QString *error)
{
    const int width = input.output.width();
    const int height = input.output.height();
    if (qint64(width) * height > kUvLutMaxPixels) {
        if (error)
            *error = QCoreApplication::translate("UvLutExport", "The UV LUT of %1 x %2 pixels is too large.")
                         .arg(width)
                         .arg(height);
        return false;
    }
    const std::vector<ScreenTriangle> triangles = setupTriangles(input);
    const int bands = (height + kBandRows - 1) / kBandRows;
    std::vector<std::vector<int>> buckets(static_cast<size_t>(bands));
    for (int i = 0; i < int(triangles.size()); ++i) {
        const ScreenTriangle &t = triangles[size_t(i)];
        for (int b = t.minY / kBandRows; b <= t.maxY / kBandRows; ++b)
            buckets[size_t(b)].push_back(i);
    }
    table->width = width;
    table->height = height;
    table->samples.assign(size_t(width) * size_t(height), UvLutSample{});
    const double farPlane = input.output.throwDistance();

    parallelForChunks(bands, 1, [&](int first, int last) {
        const size_t cells = size_t(kBandRows) * size_t(width);
        std::vector<double> depth(cells);
        std::vector<int> winner(cells);
        std::vector<Eigen::Vector3d> weights(cells);
        for (int band = first; band < last; ++band) {
            const int y0 = band * kBandRows;
            const int y1 = std::min(height, y0 + kBandRows);
            rasterBand(triangles, buckets[size_t(band)], y0, y1, width, farPlane, depth, winner, weights);
            for (int y = y0; y < y1; ++y) {
                for (int x = 0; x < width; ++x) {
                    const size_t cell = size_t(y - y0) * size_t(width) + size_t(x);
                    if (winner[cell] < 0)
                        continue;
                    const ScreenTriangle &t = triangles[size_t(winner[cell])];
                    const Eigen::Vector3d &b = weights[cell];
                    const Eigen::Vector3d world =
                        (b[0] * t.worldOverDepth[0] + b[1] * t.worldOverDepth[1] + b[2] * t.worldOverDepth[2])
                        * depth[cell];
                    resolveUvLutSample(input.source, world, depth[cell], &table->at(x, y));
                }
            }
        }
    });
    return true;
}

} // namespace vg::exchange
