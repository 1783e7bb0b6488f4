#include "SceneGlTestSupport.h"

#include "scene/LensModel.h"

#include <QPainter>

#include <cmath>

namespace {

using vg::scene::LensModel;

constexpr int kCols = 8;
constexpr int kRows = 5;
const QSize kView(800, 600);

QImage checkerImage()
{
    QImage image(1920, 1200, QImage::Format_RGBA8888);
    QPainter painter(&image);
    for (int r = 0; r < kRows; ++r)
        for (int c = 0; c < kCols; ++c)
            painter.fillRect(c * 240, r * 240, 240, 240, (r + c) % 2 ? Qt::black : Qt::white);
    return image;
}

// Where the ray through projector (u, v) meets the plane z = 0, in view pixels.
QPointF expectedPixel(const QVector<GuideObject> &objects, int projector, const ViewCamera &camera, double u, double v)
{
    const LensModel lens = LensModel::forObject(objects, projector);
    const vg::scene::LensRay ray = lens.ray(u, v);
    const double t = -ray.origin.z() / ray.direction.z();
    const Eigen::Vector3d hit = ray.origin + t * ray.direction;
    QPointF pixel;
    camera.worldToPixel(QVector3D(float(hit.x()), float(hit.y()), float(hit.z())), kView, &pixel);
    return pixel;
}

// Sub-pixel positions where the luminance crosses mid-grey along a row or column.
std::vector<double> crossings(const QImage &image, int fixed, bool alongRow)
{
    std::vector<double> out;
    const int n = alongRow ? image.width() : image.height();
    auto lum = [&](int i) { return luminance(alongRow ? image.pixel(i, fixed) : image.pixel(fixed, i)); };
    for (int i = 0; i + 1 < n; ++i) {
        const double a = lum(i) - 127.5, b = lum(i + 1) - 127.5;
        if ((a < 0) != (b < 0))
            out.push_back(i + 0.5 + a / (a - b));
    }
    return out;
}

double nearestDistance(const std::vector<double> &values, double x)
{
    double best = 1e9;
    for (double v : values)
        best = std::min(best, std::abs(v - x));
    return best;
}

} // namespace

TEST(ProjectionRender, GuideCellsLandWhereTheLensModelSaysAndNothingOutsideIsLit)
{
    OffscreenSceneRenderer &r = sharedRenderer();
    QVector<GuideObject> objects{makePlane(3.0f, 3.0f), makeProjector({0.2f, 0.3f, 3.0f}, 50.0f)};
    objects[1].lens_shift_x = 10.0f;
    r.renderer().setTextureSourceResolver(solidProjectorImage(checkerImage()));
    const ViewCamera camera = frontCamera(2.5);
    SceneRenderSettings settings = plainSettings();
    settings.hiddenObjectIndex = 1; // the body would hide the centre of the picture
    const QImage lit = r.render(objects, camera, settings, kView);
    settings.projectionEnabled = false;
    const QImage unlit = r.render(objects, camera, settings, kView);
    ASSERT_FALSE(lit.isNull());
    ASSERT_FALSE(unlit.isNull());
    EXPECT_EQ(r.renderer().lastFrameStats().projectorsProjected, 0);

    // Vertical cell edges along the middle of each cell row.
    int checkedEdges = 0;
    for (int row = 0; row < kRows; ++row) {
        const double v = (row + 0.5) / kRows;
        const int y = int(std::floor(expectedPixel(objects, 1, camera, 0.5, v).y()));
        const std::vector<double> found = crossings(lit, y, true);
        for (int c = 1; c < kCols; ++c) {
            const QPointF expected = expectedPixel(objects, 1, camera, double(c) / kCols, v);
            EXPECT_LE(nearestDistance(found, expected.x()), 1.0) << "column edge " << c << " row " << row;
            ++checkedEdges;
        }
    }
    // Horizontal cell edges down the middle of each cell column.
    for (int col = 0; col < kCols; ++col) {
        const double u = (col + 0.5) / kCols;
        const int x = int(std::floor(expectedPixel(objects, 1, camera, u, 0.5).x()));
        const std::vector<double> found = crossings(lit, x, false);
        for (int rr = 1; rr < kRows; ++rr) {
            const QPointF expected = expectedPixel(objects, 1, camera, u, double(rr) / kRows);
            EXPECT_LE(nearestDistance(found, expected.y()), 1.0) << "row edge " << rr << " column " << col;
            ++checkedEdges;
        }
    }
    EXPECT_EQ(checkedEdges, kRows * (kCols - 1) + kCols * (kRows - 1));

    // Outside the image rectangle (with a pixel of margin) the render equals the unlit one;
    // inside, white cells are lit.
    const QPointF topLeft = expectedPixel(objects, 1, camera, 0, 0);
    const QPointF bottomRight = expectedPixel(objects, 1, camera, 1, 1);
    const QRectF image = QRectF(topLeft, bottomRight).normalized();
    int outside = 0, litInside = 0;
    for (int y = 0; y < kView.height(); ++y) {
        for (int x = 0; x < kView.width(); ++x) {
            const QPointF centre(x + 0.5, y + 0.5);
            if (!image.adjusted(-1.5, -1.5, 1.5, 1.5).contains(centre)) {
                ++outside;
                ASSERT_EQ(lit.pixel(x, y), unlit.pixel(x, y)) << "lit outside the frustum at " << x << "," << y;
            } else if (image.adjusted(4, 4, -4, -4).contains(centre) && luminance(lit.pixel(x, y)) > 250) {
                ++litInside;
            }
        }
    }
    EXPECT_GT(outside, 100000);
    EXPECT_GT(litInside, int(image.width() * image.height() * 0.4));
}

TEST(ProjectionRender, BoxCastsASquareShadowOfTheProjectedSize)
{
    OffscreenSceneRenderer &r = sharedRenderer();
    // Projector 3 m in front of the wall, no shift; a 0.5 m cube whose front face is 1.75 m
    // from the wall (1.25 m from the lens): the shadow is the face scaled by 3 / 1.25.
    QVector<GuideObject> objects{makePlane(3.0f, 3.0f), makeProjector({0, 0, 3.0f}, 0.0f),
                                 makeBox(0.25f, 0.25f, 0.25f, {0.0f, 0.0f, 1.5f})};
    r.renderer().setTextureSourceResolver(solidProjectorImage(solidImage(Qt::white)));
    const ViewCamera camera = frontCamera(1.5);
    SceneRenderSettings settings = plainSettings();
    settings.hiddenObjectIndex = 1;
    const QImage lit = r.render(objects, camera, settings, kView);
    ASSERT_GT(r.renderer().lastFrameStats().shadowMapsRendered, 0);
    settings.projectionEnabled = false;
    const QImage unlit = r.render(objects, camera, settings, kView);

    const double shadowHalf = 0.25 * 3.0 / 1.25; // 0.6 m
    const double pixelsPerMetre = kView.height() / 3.0;
    auto at = [&](double wx, double wy) {
        QPointF p;
        camera.worldToPixel(QVector3D(float(wx), float(wy), 0.0f), kView, &p);
        return QPoint(int(std::floor(p.x())), int(std::floor(p.y())));
    };
    // The box hides the middle of its shadow; the ring between the box and the shadow's edge
    // must be dark, the ring just outside lit.
    int shadowed = 0, litRing = 0;
    for (double a = 0; a < 2 * M_PI; a += M_PI / 16) {
        const double c = std::cos(a), s = std::sin(a);
        const double square = std::max(std::abs(c), std::abs(s)); // to the square's edge
        const QPoint inShadow = at(c / square * (shadowHalf - 0.05), s / square * (shadowHalf - 0.05));
        const QPoint outside = at(c / square * (shadowHalf + 0.05), s / square * (shadowHalf + 0.05));
        EXPECT_EQ(lit.pixel(inShadow), unlit.pixel(inShadow)) << "lit inside the shadow at angle " << a;
        EXPECT_GT(luminance(lit.pixel(outside)), 250) << "dark outside the shadow at angle " << a;
        shadowed += lit.pixel(inShadow) == unlit.pixel(inShadow);
        litRing += luminance(lit.pixel(outside)) > 250;
    }
    EXPECT_EQ(shadowed, 32);
    EXPECT_EQ(litRing, 32);

    // The shadow's edges along the middle row sit at ±0.6 m to within two pixels.
    const int y = at(0, 0.4).y();
    std::vector<double> edges = crossings(lit, y, true);
    QPointF left, right;
    camera.worldToPixel(QVector3D(float(-shadowHalf), 0.4f, 0), kView, &left);
    camera.worldToPixel(QVector3D(float(shadowHalf), 0.4f, 0), kView, &right);
    EXPECT_LE(nearestDistance(edges, left.x()), 2.0);
    EXPECT_LE(nearestDistance(edges, right.x()), 2.0);
    EXPECT_GT(pixelsPerMetre, 100);
}

TEST(ProjectionRender, OverlapIsBrighterByTheCompositeRule)
{
    OffscreenSceneRenderer &r = sharedRenderer();
    QVector<GuideObject> objects{makePlane(4.0f, 3.0f), makeProjector({-0.6f, 0, 3.0f}, 0.0f),
                                 makeProjector({0.6f, 0, 3.0f}, 0.0f)};
    const int grey = 204;
    r.renderer().setTextureSourceResolver(solidProjectorImage(solidImage(QColor(grey, grey, grey))));
    const ViewCamera camera = frontCamera(1.5);
    SceneRenderSettings settings = plainSettings();
    settings.showObjects = true;
    objects[1].visible = true;
    // Bodies would sit in the view's line of sight; keep them out of the picture.
    objects[1].scale_x = objects[1].scale_y = objects[1].scale_z = 0.01f;
    objects[2].scale_x = objects[2].scale_y = objects[2].scale_z = 0.01f;
    const QImage image = r.render(objects, camera, settings, kView);
    ASSERT_EQ(r.renderer().lastFrameStats().projectorsProjected, 2);

    // The composite's arithmetic, per projector and for two.
    const double c = grey / 255.0;
    const double source = std::pow(c, 2.2);
    const double lightOne = -std::log(std::max(0.0001, 1.0 - source));
    auto composite = [&](int n) {
        const double light = n * lightOne;
        const double energy = n * source;
        const double overlap = std::max(0.0, energy - 1.0);
        return std::pow((1.0 - std::exp(-light)) / (1.0 + overlap * 0.22), 1.0 / 2.2) * 255.0;
    };
    auto valueAt = [&](double wx, double wy) {
        QPointF p;
        camera.worldToPixel(QVector3D(float(wx), float(wy), 0), kView, &p);
        return double(qRed(image.pixel(int(p.x()), int(p.y()))));
    };
    // Each image is 3 m wide: the left one spans -2.1 … 0.9, the right one -0.9 … 2.1.
    EXPECT_NEAR(valueAt(-1.5, 0.3), composite(1), 2.0);
    EXPECT_NEAR(valueAt(1.5, 0.3), composite(1), 2.0);
    EXPECT_NEAR(valueAt(0.0, 0.3), composite(2), 2.0);
    EXPECT_GT(composite(2), composite(1) + 20.0);
    EXPECT_GT(2 * source, 1.0); // the overlap gain is exercised, not only the light sum
}

TEST(ProjectionRender, Nv12SourceUsesTheLimitedRangeConversion)
{
    OffscreenSceneRenderer &r = sharedRenderer();
    ASSERT_TRUE(r.renderer().capabilities().projectionNv12);
    const int w = 16, h = 8;
    const unsigned char Y = 150, U = 100, V = 170;
    QByteArray chroma;
    for (int i = 0; i < (w / 2) * (h / 2); ++i)
        chroma.append(char(U)).append(char(V));
    auto nv12 = std::make_shared<Nv12TextureSource>(w, h, QByteArray(w * h, char(Y)), chroma);
    r.renderer().setTextureSourceResolver(
        [nv12](const GuideObject &o, int, bool projector) -> std::shared_ptr<SceneTextureSource> {
            return projector && o.isProjector() ? nv12 : nullptr;
        });
    QVector<GuideObject> objects{makePlane(3.0f, 3.0f), makeProjector({0, 0, 3.0f}, 0.0f)};
    SceneRenderSettings settings = plainSettings();
    settings.hiddenObjectIndex = 1;
    const ViewCamera camera = frontCamera(1.5);
    const QImage image = r.render(objects, camera, settings, kView);
    const QRgb centre = image.pixel(kView.width() / 2, kView.height() / 2);

    const double y = std::max(0.0, (Y / 255.0 - 0.0627451) * 1.164383);
    const double cb = U / 255.0 - 0.5, cr = V / 255.0 - 0.5;
    const double rgb[3] = {std::clamp(y + 1.792741 * cr, 0.0, 1.0),
                           std::clamp(y - 0.213249 * cb - 0.532909 * cr, 0.0, 1.0),
                           std::clamp(y + 2.112402 * cb, 0.0, 1.0)};
    // One projector: the composite returns the source colour.
    EXPECT_NEAR(qRed(centre), rgb[0] * 255.0, 2.0);
    EXPECT_NEAR(qGreen(centre), rgb[1] * 255.0, 2.0);
    EXPECT_NEAR(qBlue(centre), rgb[2] * 255.0, 2.0);
}
