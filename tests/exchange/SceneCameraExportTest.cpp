// Each projector leaves the FBX, USD and Maya exports as a camera. These tests rebuild the
// camera's frustum from the written numbers alone and hold it against the lens model's
// own corner rays over throw ratios, lens shifts, flips and the 180° rotation.

#include "ExportTestSupport.h"
#include "ExportTextParsers.h"

#include "exchange/FbxExport.h"
#include "exchange/MayaExport.h"
#include "exchange/UsdExport.h"

#include <QDateTime>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace exporttest;

namespace {

struct LensCase {
    double throwRatio, shiftX, shiftY;
    bool flipH, flipV, rotate180;
};

std::vector<LensCase> lensCases()
{
    std::vector<LensCase> cases;
    const double throws[] = {0.3, 1.0, 2.2, 3.0};
    const double shifts[][2] = {{-60, -60}, {60, 35}, {0, 50}, {-25, 60}};
    const bool flips[][3] = {{false, false, false}, {true, false, false}, {false, true, false},
                             {true, true, false},   {false, false, true}, {true, false, true}};
    for (double t : throws)
        for (const auto &s : shifts)
            for (const auto &f : flips)
                cases.push_back({t, s[0], s[1], f[0], f[1], f[2]});
    return cases;
}

QVector<GuideObject> cameraScene(const LensCase &c)
{
    GuideObject p = projector(QStringLiteral("Lens"));
    p.throw_rate = float(c.throwRatio);
    p.lens_shift_x = float(c.shiftX);
    p.lens_shift_y = float(c.shiftY);
    p.projector_flip_h = c.flipH;
    p.projector_flip_v = c.flipV;
    p.projector_rotate_180 = c.rotate180;
    p.projector_resolution_width = 1920;
    p.projector_resolution_height = 1080;
    p.translate_x = 1.5f;
    p.translate_y = 2.0f;
    p.translate_z = -0.5f;
    p.rotate_x = 12.0f;
    p.rotate_y = -35.0f;
    p.rotate_z = 8.0f;
    GuideObject wall = plane(QStringLiteral("Wall"), 2.0f, 1.0f);
    wall.plane_u_lines = wall.plane_v_lines = 1;
    wall.translate_z = -5.0f;
    return {wall, p};
}

// The image corner (u, v) a film corner shows: film corners run top-left, top-right,
// bottom-right, bottom-left; a camera turned half a turn sees them from the other side;
// a flip then swaps the image side.
Eigen::Vector2d imageCornerOfFilmCorner(int corner, const LensCase &c, bool roll)
{
    const double a = (corner == 1 || corner == 2) ? 1.0 : 0.0;
    const double b = corner >= 2 ? 1.0 : 0.0;
    double gu = roll ? 1.0 - a : a, gv = roll ? 1.0 - b : b;
    const bool flipU = c.flipH != c.rotate180, flipV = c.flipV != c.rotate180;
    if (flipU)
        gu = 1.0 - gu;
    if (flipV)
        gv = 1.0 - gv;
    return {gu, gv};
}

// Compares the camera (world rotation of a frame that looks along -Z, film corners in that
// frame) with the projector's rays, corner by corner.
void expectSameFrustum(const QVector<GuideObject> &scene, const LensCase &c, const Eigen::Vector3d &position,
                       const Eigen::Matrix3d &rotation, const std::array<Eigen::Vector3d, 4> &film, const char *format)
{
    const vg::scene::LensModel lens = vg::scene::LensModel::forObject(scene, 1);
    EXPECT_LT((position - lens.pose().position).norm(), 1e-4 * (1.0 + lens.pose().position.norm())) << format;
    // Whether the camera was turned: its up axis against the lens's.
    const bool roll = rotation.col(1).dot(lens.pose().rotation.col(1)) < 0.0;
    EXPECT_EQ(roll, (c.flipH != c.rotate180) && (c.flipV != c.rotate180)) << format;
    for (int k = 0; k < 4; ++k) {
        const Eigen::Vector3d got = (rotation * film[k]).normalized();
        const Eigen::Vector2d uv = imageCornerOfFilmCorner(k, c, roll);
        const Eigen::Vector3d want = lens.ray(uv.x(), uv.y()).direction;
        EXPECT_LT((got - want).norm(), 1e-4) << format << " corner " << k << " throw " << c.throwRatio << " shift "
                                             << c.shiftX << "," << c.shiftY << " flips " << c.flipH << c.flipV
                                             << c.rotate180;
    }
}

} // namespace

TEST(SceneCameraExport, FbxCameraReproducesTheProjectorFrustum)
{
    QTemporaryDir dir;
    TestImages images;
    for (const LensCase &c : lensCases()) {
        const QVector<GuideObject> scene = cameraScene(c);
        const QString path = dir.filePath(QStringLiteral("cam.fbx"));
        QString error;
        ASSERT_TRUE(vg::exchange::writeSceneFbx(scene, images, path, QDateTime::currentDateTime(), nullptr, &error))
            << error.toStdString();
        const QString text = readText(path);
        const QString model = textFrom(text, QStringLiteral("\"Camera\" {"));
        const QString shape = textFrom(text, QStringLiteral("\"NodeAttribute::"));
        ASSERT_FALSE(model.isEmpty());
        ASSERT_FALSE(shape.isEmpty());
        const std::vector<double> t = numbersAfter(model, QStringLiteral("\"Lcl Translation\", \"Lcl Translation\", \"\", \"A\","));
        const std::vector<double> r = numbersAfter(model, QStringLiteral("\"Lcl Rotation\", \"Lcl Rotation\", \"\", \"A\","));
        const std::vector<double> post = numbersAfter(model, QStringLiteral("\"PostRotation\", \"Vector3D\", \"Vector\", \"\","));
        ASSERT_EQ(t.size(), 3u);
        ASSERT_EQ(r.size(), 3u);
        ASSERT_EQ(post.size(), 3u);
        const double inch = 25.4;
        const double focal = numberAfter(shape, QStringLiteral("\"FocalLength\", \"double\", \"Number\", \"\","));
        const double w = numberAfter(shape, QStringLiteral("\"FilmWidth\", \"double\", \"Number\", \"\",")) * inch;
        const double h = numberAfter(shape, QStringLiteral("\"FilmHeight\", \"double\", \"Number\", \"\",")) * inch;
        const double ox = numberAfter(shape, QStringLiteral("\"FilmOffsetX\", \"double\", \"Number\", \"\",")) * inch;
        const double oy = numberAfter(shape, QStringLiteral("\"FilmOffsetY\", \"double\", \"Number\", \"\",")) * inch;
        // FBX: world = Lcl Rotation · PostRotation⁻¹ on a camera that looks along +X with +Y
        // up and +Z right; the frame below looks along -Z like the others.
        const Eigen::Matrix3d fbxCamera = eulerXyz(r[0], r[1], r[2]) * eulerXyz(post[0], post[1], post[2]).transpose();
        Eigen::Matrix3d minusZFrame;
        minusZFrame.col(0) = fbxCamera.col(2);    // right
        minusZFrame.col(1) = fbxCamera.col(1);    // up
        minusZFrame.col(2) = -fbxCamera.col(0);   // backwards
        expectSameFrustum(scene, c, Eigen::Vector3d(t[0], t[1], t[2]), minusZFrame, filmCorners(focal, w, h, ox, oy), "FBX");
        if (HasFailure())
            return;
    }
}

TEST(SceneCameraExport, UsdCameraReproducesTheProjectorFrustum)
{
    QTemporaryDir dir;
    TestImages images;
    for (const LensCase &c : lensCases()) {
        const QVector<GuideObject> scene = cameraScene(c);
        const QString path = dir.filePath(QStringLiteral("cam.usda"));
        QString error;
        ASSERT_TRUE(vg::exchange::writeSceneUsd(scene, images, path, nullptr, &error)) << error.toStdString();
        const QString camera = textFrom(readText(path), QStringLiteral("def Camera"));
        ASSERT_FALSE(camera.isEmpty());
        const double focal = numberAfter(camera, QStringLiteral("float focalLength ="));
        const double w = numberAfter(camera, QStringLiteral("float horizontalAperture ="));
        const double h = numberAfter(camera, QStringLiteral("float verticalAperture ="));
        const double ox = numberAfter(camera, QStringLiteral("float horizontalApertureOffset ="));
        const double oy = numberAfter(camera, QStringLiteral("float verticalApertureOffset ="));
        const std::vector<double> m = usdMatrix(camera);
        ASSERT_EQ(m.size(), 16u);
        // Row vectors: the rows are the images of the camera's axes, then the translation.
        Eigen::Matrix3d rotation;
        for (int row = 0; row < 3; ++row)
            for (int col = 0; col < 3; ++col)
                rotation(col, row) = m[size_t(row * 4 + col)];
        expectSameFrustum(scene, c, Eigen::Vector3d(m[12], m[13], m[14]), rotation, filmCorners(focal, w, h, ox, oy), "USD");
        if (HasFailure())
            return;
    }
}

TEST(SceneCameraExport, MayaCameraAndFrustumCurvesReproduceTheProjector)
{
    QTemporaryDir dir;
    TestImages images;
    for (const LensCase &c : lensCases()) {
        const QVector<GuideObject> scene = cameraScene(c);
        const QString path = dir.filePath(QStringLiteral("cam.ma"));
        QString error;
        ASSERT_TRUE(vg::exchange::writeMayaScene(scene, {1}, images, path, nullptr, &error)) << error.toStdString();
        const QString text = readText(path);
        const QString camera = textFrom(text, QStringLiteral("createNode transform -n \"Lens_Camera\""));
        ASSERT_FALSE(camera.isEmpty());
        const std::vector<double> t = numbersAfter(camera, QStringLiteral("setAttr \".t\" -type \"double3\""));
        const std::vector<double> r = numbersAfter(camera, QStringLiteral("setAttr \".r\" -type \"double3\""));
        ASSERT_EQ(t.size(), 3u);
        ASSERT_EQ(r.size(), 3u);
        const double inch = 25.4;
        const double focal = numberAfter(camera, QStringLiteral("setAttr \".fl\""));
        const double w = numberAfter(camera, QStringLiteral("setAttr \".hfa\"")) * inch;
        const double h = numberAfter(camera, QStringLiteral("setAttr \".vfa\"")) * inch;
        const double ox = numberAfter(camera, QStringLiteral("setAttr \".hfo\"")) * inch;
        const double oy = numberAfter(camera, QStringLiteral("setAttr \".vfo\"")) * inch;
        // Maya works in centimetres.
        expectSameFrustum(scene, c, Eigen::Vector3d(t[0], t[1], t[2]) / 100.0, eulerXyz(r[0], r[1], r[2]),
                          filmCorners(focal, w, h, ox, oy), "Maya");
        // The frustum curves run from the lens to the corners of the image as it lands.
        const vg::scene::LensModel lens = vg::scene::LensModel::forObject(scene, 1);
        const auto corners = lens.farCorners();
        const char *names[4] = {"Lens_TopLeft", "Lens_TopRight", "Lens_BottomRight", "Lens_BottomLeft"};
        for (int k = 0; k < 4; ++k) {
            const std::vector<double> p = numbersAfter(text, QStringLiteral("curve -d 1 -n \"Lens_%1\"").arg(QLatin1String(names[k])));
            ASSERT_EQ(p.size(), 8u) << names[k];   // two points and the knots 0 1
            const Eigen::Vector3d end(p[3], p[4], p[5]);
            EXPECT_LT((end / 100.0 - corners[k]).norm(), 1e-4 * corners[k].norm()) << names[k];
        }
        if (HasFailure())
            return;
    }
}
