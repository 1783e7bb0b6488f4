#include "exchange/ExportImageSource.h"
#include "exchange/UvLutWriter.h"
#include "guide/GuideSettings.h"
#include "scene/LensModel.h"

#include "UvLutTestScenes.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cmath>

using namespace vg::exchange;

namespace {

class UvLutCore : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_dir.isValid());
        m_image = writeAsymmetricImage(m_dir.filePath(QStringLiteral("source.png")));
    }

    UvLutResult compute(const QVector<GuideObject> &objects, UvLutOptions options = {}, QString *error = nullptr)
    {
        if (options.outputIndex < 0) {
            options.outputIndex = 1;
            options.sourceIndex = 2;
        }
        options.method = UvLutMethod::CpuRaster;
        UvLutResult result;
        QString why;
        const bool ok = computeUvLut(objects, m_images, options, {}, &result, &why);
        if (error)
            *error = why;
        else
            EXPECT_TRUE(ok) << why.toStdString();
        return result;
    }

    vg::exchange::ExportImageSource m_images;
    QTemporaryDir m_dir;
    QString m_image;
};

// Pixel centres of a camera sharing the projector's lens: u = (x + ½)/W, v from the bottom.
TEST_F(UvLutCore, SameLensSourceMapsPixelCentresAndLeavesUncoveredPixelsInvalid)
{
    const QVector<GuideObject> objects = lutWallScene(m_image);
    const UvLutResult r = compute(objects);
    ASSERT_EQ(r.table.width, 96);
    ASSERT_EQ(r.table.height, 60);
    // The wall spans the middle two thirds of the image: columns 16..79.
    for (int y = 0; y < 60; y += 7) {
        for (int x = 0; x < 96; ++x) {
            const UvLutSample &s = r.table.at(x, y);
            const bool expectValid = x >= 16 && x <= 79;
            ASSERT_EQ(s.valid(), expectValid) << x << "," << y;
            if (!expectValid) {
                EXPECT_FALSE(s.hit());
                EXPECT_EQ(s.coverage, 0.0f);
                continue;
            }
            EXPECT_NEAR(s.u, (x + 0.5) / 96.0, 1e-6);
            EXPECT_NEAR(s.v, 1.0 - (y + 0.5) / 60.0, 1e-6);
            EXPECT_NEAR(s.depth, 3.0, 1e-5);
            EXPECT_EQ(s.coverage, 1.0f);
        }
    }
    EXPECT_EQ(r.stats.validCameraUvSamples, 64 * 60);
    EXPECT_EQ(r.stats.surfaceHitSamples, 64 * 60);
    EXPECT_NEAR(r.stats.minProjectorDepth, 3.0, 1e-5);
}

TEST_F(UvLutCore, FlipsOfOutputAndSourceFollowTheLensModel)
{
    QVector<GuideObject> objects = lutWallScene(m_image);
    objects[1].projector_flip_h = true;       // output mirrored: column x shows what x' = W-1-x showed
    UvLutResult r = compute(objects);
    EXPECT_NEAR(r.table.at(20, 5).u, 1.0 - 20.5 / 96.0, 1e-6);
    EXPECT_NEAR(r.table.at(20, 5).v, 1.0 - 5.5 / 60.0, 1e-6);

    objects[1].projector_flip_h = false;
    objects[2].projector_rotate_180 = true;   // 180° with flip H leaves only the vertical flip
    objects[2].projector_flip_h = true;
    r = compute(objects);
    EXPECT_NEAR(r.table.at(20, 5).u, 20.5 / 96.0, 1e-6);
    EXPECT_NEAR(r.table.at(20, 5).v, 5.5 / 60.0, 1e-6);
}

TEST_F(UvLutCore, NearerSurfaceWinsAndTrianglesBehindTheLensAreClipped)
{
    QVector<GuideObject> objects = lutWallScene(m_image);
    GuideObject panel = lutWall(0.25f, 0.25f, -2.0f);   // occluder in the middle
    objects.append(panel);
    GuideObject floor = lutWall(2.0f, 4.0f, 0.0f);       // runs under and behind the lens
    floor.rotate_x = -90.0f;
    floor.translate_y = -0.5f;
    objects.append(floor);
    const UvLutResult r = compute(objects);
    EXPECT_NEAR(r.table.at(48, 30).depth, 2.0, 1e-5);

    const auto lens = vg::scene::LensModel::forObject(objects, 1);
    int floorPixels = 0;
    for (int x : {2, 30, 60, 93}) {
        const int y = 59;
        const auto ray = lens.pixelRay(x + 0.5, y + 0.5);
        const double t = (-0.5 - ray.origin.y()) / ray.direction.y();
        const Eigen::Vector3d hit = ray.origin + t * ray.direction;
        if (hit.z() < -3.0)
            continue;   // behind the wall
        ++floorPixels;
        EXPECT_NEAR(r.table.at(x, y).depth, -hit.z(), 1e-4) << x;
    }
    EXPECT_GT(floorPixels, 0);
}

TEST_F(UvLutCore, RefusesWhatCannotBeExported)
{
    const QVector<GuideObject> scene = lutWallScene(m_image);
    struct Case {
        const char *name;
        QVector<GuideObject> objects;
        UvLutOptions options;
        const char *message;
    };
    QVector<GuideObject> noImage = scene;
    noImage[2].projector_image_file_path.clear();
    QVector<GuideObject> unreadable = scene;
    unreadable[2].projector_image_file_path = m_dir.filePath(QStringLiteral("missing.png"));
    QVector<GuideObject> noSurface = scene;
    noSurface[0].visible = false;
    QVector<GuideObject> wallBehind = scene;
    wallBehind[0].translate_z = 3.0f;
    UvLutOptions same{1, 1};
    UvLutOptions plane{0, 2};
    UvLutOptions gone{1, 7};
    UvLutOptions aa{1, 2};
    aa.aaSamples = 2;
    const Case cases[] = {
        {"same", scene, same, "The output projector/camera and source camera must be different objects."},
        {"plane", scene, plane, "Both output and source objects must be projectors or cameras."},
        {"gone", scene, gone, "Selected projector/camera is no longer available."},
        {"aa", scene, aa, "UV LUT AA Samples requires the GPU Probe export method."},
        {"noImage", noImage, {1, 2}, "Select a source camera/projector image for the UV LUT."},
        {"unreadable", unreadable, {1, 2}, "The selected source camera/projector has no CPU-readable image."},
        {"noSurface", noSurface, {1, 2}, "No exportable scene surface triangles were found."},
        {"behind", wallBehind, {1, 2}, "No visible surface samples were found inside the selected projector view."},
    };
    for (const Case &c : cases) {
        QString error;
        UvLutResult result;
        UvLutOptions options = c.options;
        options.method = UvLutMethod::CpuRaster;
        EXPECT_FALSE(computeUvLut(c.objects, m_images, options, {}, &result, &error)) << c.name;
        EXPECT_EQ(error, QString::fromUtf8(c.message)) << c.name;
    }
}

TEST_F(UvLutCore, FeatherZeroKeepsHardMaskAndAWidthFallsOffMonotonically)
{
    const QVector<GuideObject> objects = lutWallScene(m_image);
    UvLutResult hard = compute(objects);
    EXPECT_EQ(hard.effectiveFeatherPx, 0.0);
    for (const UvLutSample &s : hard.table.samples)
        ASSERT_TRUE(s.coverage == 0.0f || s.coverage == 1.0f);

    UvLutOptions options;
    options.featherPx = 4.0;
    const UvLutResult soft = compute(objects, options);
    EXPECT_EQ(soft.effectiveFeatherPx, 4.0);
    const int y = 30;
    // Inward from the left edge (first valid column 16): rising, below 1 within 4 px, then 1.
    float previous = 0.0f;
    for (int x = 16; x < 48; ++x) {
        const float c = soft.table.at(x, y).coverage;
        EXPECT_GE(c, previous) << x;
        if (x - 15 <= 4)
            EXPECT_LT(c, 1.0f) << x;
        else
            EXPECT_EQ(c, 1.0f) << x;
        EXPECT_TRUE(soft.table.at(x, y).valid());
        previous = c;
    }
    EXPECT_GT(soft.table.at(16, y).coverage, 0.0f);
    // Mirror image on the right edge; the table's own top and bottom rows are not edges.
    EXPECT_FLOAT_EQ(soft.table.at(79, y).coverage, soft.table.at(16, y).coverage);
    EXPECT_EQ(soft.table.at(48, 0).coverage, 1.0f);
    EXPECT_EQ(soft.table.at(5, y).coverage, 0.0f);
}

} // namespace
