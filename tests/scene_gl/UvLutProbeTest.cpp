#include "exchange/UvLut.h"
#include "scene/gl/UvLutGlProbe.h"

#include "exchange/UvLutTestScenes.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cmath>

using namespace vg::exchange;

namespace {

struct Comparison {
    qint64 bothValid = 0;
    qint64 surfaceDiffers = 0;       // valid in both, but a different surface won the pixel
    qint64 surfaceDiffersOffEdge = 0;
    qint64 maskDiffers = 0;
    qint64 maskDiffersOffEdge = 0;   // differing pixels with no validity change beside them
    double maxDu = 0.0, maxDv = 0.0, maxDepthRelative = 0.0;
    qint64 edgePixels = 0;           // pixels on an edge of validity in the CPU table
};

// A pixel beside a change of validity, or beside a jump in depth (a silhouette).
bool onEdge(const UvLutTable &t, int x, int y, bool silhouettes = false)
{
    const UvLutSample &s = t.at(x, y);
    const int dx[] = {1, -1, 0, 0}, dy[] = {0, 0, 1, -1};
    for (int k = 0; k < 4; ++k) {
        const int nx = x + dx[k], ny = y + dy[k];
        if (nx < 0 || ny < 0 || nx >= t.width || ny >= t.height)
            continue;
        const UvLutSample &n = t.at(nx, ny);
        if (n.valid() != s.valid())
            return true;
        if (silhouettes && s.hit() && n.hit() && std::abs(n.depth - s.depth) > 0.01f * s.depth)
            return true;
    }
    return false;
}

Comparison compare(const UvLutTable &gpu, const UvLutTable &cpu)
{
    Comparison c;
    for (int y = 0; y < cpu.height; ++y) {
        for (int x = 0; x < cpu.width; ++x) {
            const UvLutSample &g = gpu.at(x, y), &s = cpu.at(x, y);
            const bool edge = onEdge(cpu, x, y) || onEdge(gpu, x, y);
            c.edgePixels += onEdge(cpu, x, y);
            if (g.valid() != s.valid()) {
                ++c.maskDiffers;
                c.maskDiffersOffEdge += !edge;
                continue;
            }
            if (!g.valid())
                continue;
            ++c.bothValid;
            // Rasterisers differ within a fraction of a pixel of a silhouette: the GPU snaps
            // vertices to its sub-pixel grid. There the two may pick different surfaces.
            if (std::abs(double(g.depth) - s.depth) > 1e-3 * s.depth) {
                ++c.surfaceDiffers;
                c.surfaceDiffersOffEdge += !onEdge(cpu, x, y, true) && !onEdge(gpu, x, y, true);
                continue;
            }
            c.maxDu = std::max(c.maxDu, std::abs(double(g.u) - s.u));
            c.maxDv = std::max(c.maxDv, std::abs(double(g.v) - s.v));
            c.maxDepthRelative = std::max(c.maxDepthRelative, std::abs(double(g.depth) - s.depth) / s.depth);
        }
    }
    return c;
}

class UvLutProbe : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_dir.isValid());
        m_image = writeAsymmetricImage(m_dir.filePath(QStringLiteral("source.png")));
    }

    // Both methods on one scene; the GPU at `samples` samples.
    void run(const QVector<GuideObject> &objects, int output, int source, int samples, UvLutTable *gpu,
             UvLutTable *cpu)
    {
        const UvLutTriangles triangles = collectUvLutTriangles(objects);
        UvLutProbeInput input;
        input.triangles = &triangles;
        input.output = vg::scene::LensModel::forObject(objects, output);
        input.source = vg::scene::LensModel::forObject(objects, source);
        input.aaSamples = samples;
        QString error;
        ASSERT_TRUE(m_probe.probe(input, gpu, {}, &error)) << error.toStdString();
        input.aaSamples = 1;
        ASSERT_TRUE(rasterizeUvLut(input, cpu, &error)) << error.toStdString();
    }

    void expectAgreement(const QVector<GuideObject> &objects, int output, int source, const char *what)
    {
        UvLutTable gpu, cpu;
        run(objects, output, source, 1, &gpu, &cpu);
        ASSERT_EQ(gpu.width, cpu.width);
        ASSERT_EQ(gpu.height, cpu.height);
        const Comparison c = compare(gpu, cpu);
        EXPECT_GT(c.bothValid, qint64(cpu.width) * cpu.height / 10) << what;
        EXPECT_LE(c.maxDu, 1e-4) << what;
        EXPECT_LE(c.maxDv, 1e-4) << what;
        EXPECT_LE(c.maxDepthRelative, 1e-4) << what;
        // Masks may disagree only where validity changes, and then on few of those pixels.
        EXPECT_EQ(c.maskDiffersOffEdge, 0) << what;
        EXPECT_LE(c.maskDiffers, std::max<qint64>(8, c.edgePixels / 20)) << what << " edge pixels " << c.edgePixels;
        EXPECT_EQ(c.surfaceDiffersOffEdge, 0) << what;
        EXPECT_LE(c.surfaceDiffers, 8) << what;
        std::cout << what << ": " << c.bothValid << " valid in both, " << c.maskDiffers << " mask differences on "
                  << c.edgePixels << " edge pixels, " << c.surfaceDiffers << " silhouette pixels differ, max du " << c.maxDu << ", dv " << c.maxDv << "\n";
    }

    QTemporaryDir m_dir;
    QString m_image;
    UvLutGlProbe m_probe;
};

TEST_F(UvLutProbe, GpuAndCpuAgreeOnTheSampleScene)
{
    int projector = -1;
    const QVector<GuideObject> objects = lutSampleScene(m_image, &projector, 480, 300);
    ASSERT_GE(projector, 0);
    expectAgreement(objects, projector, int(objects.size()) - 1, "sample");
}

TEST_F(UvLutProbe, GpuAndCpuAgreeOnADomeWithTwoProjectors)
{
    QVector<GuideObject> objects = lutDomeScene(m_image, 400, 250);
    expectAgreement(objects, 1, 2, "dome");
    // Flipped and turned lenses on both sides go through the same model.
    objects[1].projector_flip_h = true;
    objects[1].projector_rotate_180 = true;
    objects[2].projector_flip_v = true;
    expectAgreement(objects, 1, 2, "dome flipped");
}

TEST_F(UvLutProbe, GpuOutputIsNotMirroredAgainstTheLensModel)
{
    // The wall scene's pixel centres are known exactly; a flipped read-back would fail here.
    QVector<GuideObject> objects = lutWallScene(m_image, 96, 60);
    objects[1].lens_shift_y = 20.0f;
    objects[2].lens_shift_y = 20.0f;
    UvLutTable gpu, cpu;
    run(objects, 1, 2, 1, &gpu, &cpu);
    EXPECT_NEAR(gpu.at(20, 3).u, 20.5 / 96.0, 1e-5);
    EXPECT_NEAR(gpu.at(20, 3).v, 1.0 - 3.5 / 60.0, 1e-5);
    EXPECT_FALSE(gpu.at(3, 3).valid());
    EXPECT_TRUE(gpu.at(20, 3).valid());
}

TEST_F(UvLutProbe, MultisampleCoverageIsFractionalOnlyAtEdges)
{
    // A turned wall narrower than the image: slanted silhouettes against nothing.
    QVector<GuideObject> objects = lutWallScene(m_image, 320, 200);
    objects[0].rotate_z = 12.0f;
    objects[2].throw_rate = 0.5f;
    UvLutTable gpu, cpu;
    run(objects, 1, 2, 4, &gpu, &cpu);
    qint64 fractional = 0, fractionalOffEdge = 0, full = 0;
    for (int y = 0; y < gpu.height; ++y) {
        for (int x = 0; x < gpu.width; ++x) {
            const UvLutSample &s = gpu.at(x, y);
            if (!s.valid())
                continue;
            if (s.coverage < 1.0f) {
                ++fractional;
                // Quarter steps at four samples.
                EXPECT_NEAR(s.coverage * 4.0f, std::round(s.coverage * 4.0f), 1e-6);
                fractionalOffEdge += !onEdge(gpu, x, y) && !onEdge(cpu, x, y) && cpu.at(x, y).valid();
            } else {
                ++full;
            }
        }
    }
    EXPECT_GT(fractional, 0);
    EXPECT_GT(full, 10 * fractional);
    EXPECT_LE(fractionalOffEdge, fractional / 10);
}

} // namespace
