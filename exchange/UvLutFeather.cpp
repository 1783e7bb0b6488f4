#include "exchange/ParallelRows.h"
#include "exchange/UvLut.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace vg::exchange {

namespace {

constexpr double kFar = 1e20;

// Exact 1D squared-distance transform (lower envelope of parabolas) of n values of f with
// the given stride; result written back in place. v, z and d are scratch of n, n + 1 and n.
void distance1d(double *f, int n, int stride, std::vector<int> &v, std::vector<double> &z, std::vector<double> &d)
{
    int k = 0;
    v[0] = 0;
    z[0] = -kFar;
    z[1] = kFar;
    const auto meet = [&](int q, int p) {
        const double fq = f[size_t(q) * stride], fp = f[size_t(p) * stride];
        return ((fq + double(q) * q) - (fp + double(p) * p)) / (2.0 * double(q - p));
    };
    for (int q = 1; q < n; ++q) {
        // z[0] is below any meeting point, so k never drops under 0.
        double s = meet(q, v[size_t(k)]);
        while (s <= z[size_t(k)]) {
            --k;
            s = meet(q, v[size_t(k)]);
        }
        ++k;
        v[size_t(k)] = q;
        z[size_t(k)] = s;
        z[size_t(k) + 1] = kFar;
    }
    k = 0;
    for (int q = 0; q < n; ++q) {
        while (z[size_t(k) + 1] < double(q))
            ++k;
        const int p = v[size_t(k)];
        const double dq = double(q - p);
        d[size_t(q)] = dq * dq + f[size_t(p) * stride];
    }
    for (int q = 0; q < n; ++q)
        f[size_t(q) * stride] = std::min(d[size_t(q)], kFar);
}

} // namespace

double featherUvLut(UvLutTable *table, double widthPx)
{
    const int w = table->width;
    const int h = table->height;
    const double requested = clampedUvLutFeather(widthPx);
    // A band wider than half the table would leave no full-coverage pixel at all.
    const double effective = std::min(requested, 0.5 * std::min(w, h));
    if (!(effective > 0.0) || w <= 0 || h <= 0)
        return 0.0;

    // Squared distance of every valid pixel centre to the nearest invalid one.
    std::vector<double> dist(size_t(w) * size_t(h));
    for (size_t i = 0; i < dist.size(); ++i)
        dist[i] = table->samples[i].valid() ? kFar : 0.0;
    parallelForChunks(w, 64, [&](int first, int last) {
        std::vector<int> v(static_cast<size_t>(h));
        std::vector<double> z(static_cast<size_t>(h) + 1), d(static_cast<size_t>(h));
        for (int x = first; x < last; ++x)
            distance1d(dist.data() + x, h, w, v, z, d);
    });
    parallelForChunks(h, 16, [&](int first, int last) {
        std::vector<int> v(static_cast<size_t>(w));
        std::vector<double> z(static_cast<size_t>(w) + 1), d(static_cast<size_t>(w));
        for (int y = first; y < last; ++y)
            distance1d(dist.data() + size_t(y) * size_t(w), w, 1, v, z, d);
    });

    // Linear ramp: a pixel next to an invalid one gets 0.5 / width, full coverage is reached
    // half a pixel beyond the width.
    for (size_t i = 0; i < dist.size(); ++i) {
        UvLutSample &s = table->samples[i];
        if (!s.valid() || dist[i] >= kFar)
            continue;
        const double ramp = std::clamp((std::sqrt(double(dist[i])) - 0.5) / effective, 0.0, 1.0);
        s.coverage = float(s.coverage * ramp);
    }
    return effective;
}

} // namespace vg::exchange
