// Imported OBJ and DXF files as the renderer draws them, read back from the frame.
#include "SceneGlTestSupport.h"

#include "exchange/MeshImport.h"

namespace {

const QString kData = QStringLiteral(VG_TEST_DATA_DIR "/mesh/");
const QSize kView(640, 480);

GuideObject importFixture(const QString &name)
{
    GuideObject o;
    QString error;
    EXPECT_TRUE(vg::exchange::importMeshFile(kData + name, &o, &error)) << error.toStdString();
    o.show_wireframe = false;
    return o;
}

QRgb pixelAt(const QImage &image, const ViewCamera &camera, const QVector3D &world)
{
    QPointF p;
    EXPECT_TRUE(camera.worldToPixel(world, image.size(), &p));
    return image.pixel(int(p.x()), int(p.y()));
}

int litPixels(const QImage &image)
{
    int count = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            count += luminance(image.pixel(x, y)) > 20;
    return count;
}

} // namespace

TEST(ImportedMeshRender, TexturedObjShowsItsMapUprightAndUnmirrored)
{
    // A 2 x 1 m quad standing at z = 0 from x -1..1, y 0..1; its texture is white with a red
    // top-left and a blue bottom-right quarter.
    const GuideObject quad = importFixture(QStringLiteral("textured_src.obj"));
    ASSERT_TRUE(quad.texture_visible);
    ViewCamera camera = frontCamera(1.0);
    camera.setTarget(QVector3D(0, 0.5f, 0));
    SceneRenderSettings settings = plainSettings();
    settings.projectionEnabled = false;
    const QImage image = sharedRenderer().render({quad}, camera, settings, kView);

    const QRgb topLeft = pixelAt(image, camera, {-0.5f, 0.75f, 0});
    const QRgb topRight = pixelAt(image, camera, {0.5f, 0.75f, 0});
    const QRgb bottomLeft = pixelAt(image, camera, {-0.5f, 0.25f, 0});
    const QRgb bottomRight = pixelAt(image, camera, {0.5f, 0.25f, 0});
    EXPECT_GT(qRed(topLeft), qBlue(topLeft) + 60) << std::hex << topLeft;
    EXPECT_GT(qRed(topLeft), qGreen(topLeft) + 60);
    EXPECT_GT(qBlue(bottomRight), qRed(bottomRight) + 60) << std::hex << bottomRight;
    for (QRgb white : {topRight, bottomLeft}) {
        EXPECT_GT(luminance(white), 100) << std::hex << white;
        EXPECT_LT(std::abs(qRed(white) - qBlue(white)), 30);
    }
    // Outside the quad the background stays.
    EXPECT_EQ(pixelAt(image, camera, {-1.2f, 0.5f, 0}), qRgb(0, 0, 0));
}

TEST(ImportedMeshRender, DxfLinesDrawAtTheirOwnThickness)
{
    GuideObject plan = importFixture(QStringLiteral("plan_r2018.dxf"));
    plan.rotate_x = 90.0f; // stand the floor plan up to face the front camera
    const ViewCamera camera = frontCamera(4.0);
    SceneRenderSettings settings = plainSettings();
    settings.projectionEnabled = false;

    plan.dxf_line_thickness = 1.0f;
    plan.wireframe_thickness = 8.0f; // the wire grid's width must not apply
    const int thin = litPixels(sharedRenderer().render({plan}, camera, settings, kView));
    plan.dxf_line_thickness = 6.0f;
    plan.wireframe_thickness = 1.0f;
    const int thick = litPixels(sharedRenderer().render({plan}, camera, settings, kView));
    EXPECT_GT(thin, 500);  // the outline alone is some 1000 pixels around
    EXPECT_GT(thick, 3 * thin);
}
