#include "SceneGlTestSupport.h"

#include "scene/GuideArraySlices.h"

#include <QPainter>

namespace {

const QSize kView(800, 600);

// A 3 x 1 guide: red, green and blue thirds. Within each third the left half is the pure
// colour and the right half is paled with white, and the lower half is darker, so a slice
// taken from the wrong place, mirrored or upside down shows up at the sampled points.
QImage threeSliceGuide()
{
    QImage image(300, 100, QImage::Format_RGBA8888);
    QPainter painter(&image);
    const QColor colours[3] = {QColor(255, 0, 0), QColor(0, 255, 0), QColor(0, 0, 255)};
    for (int k = 0; k < 3; ++k) {
        const QColor pure = colours[k];
        const QColor pale(std::max(pure.red(), 170), std::max(pure.green(), 170), std::max(pure.blue(), 170));
        auto darker = [](const QColor &c) { return QColor(c.red() * 2 / 5, c.green() * 2 / 5, c.blue() * 2 / 5); };
        painter.fillRect(k * 100, 0, 50, 50, pure);
        painter.fillRect(k * 100 + 50, 0, 50, 50, pale);
        painter.fillRect(k * 100, 50, 50, 50, darker(pure));
        painter.fillRect(k * 100 + 50, 50, 50, 50, darker(pale));
    }
    return image;
}

int dominantChannel(QRgb c)
{
    const int r = qRed(c), g = qGreen(c), b = qBlue(c);
    if (r > g + 40 && r > b + 40)
        return 0;
    if (g > r + 40 && g > b + 40)
        return 1;
    if (b > r + 40 && b > g + 40)
        return 2;
    return -1;
}

int minChannel(QRgb c)
{
    return std::min({qRed(c), qGreen(c), qBlue(c)});
}

} // namespace

// Three projectors side by side, each set to its column of the guide's 3 x 1 array: the wall
// shows red, green and blue from left to right, each slice the right way round.
TEST(ArraySliceProjection, ThreeProjectorsOfARowShowTheirOwnThirdOfTheGuide)
{
    OffscreenSceneRenderer &r = sharedRenderer();
    const QImage guide = threeSliceGuide();
    r.renderer().setGuideImages({guide});

    QVector<GuideObject> objects{makePlane(6.0f, 4.0f)};
    const float xs[3] = {-3.0f, 0.0f, 3.0f};
    for (int k = 0; k < 3; ++k) {
        // Throw ratio 1 at 3 m: each image is 3 m wide, the three meet edge to edge.
        GuideObject projector = makeProjector({xs[k], 0.0f, 3.0f}, 0.0f);
        projector.projector_image_guide_index = 0;
        projector.projector_image_slice_column = k;
        projector.projector_image_slice_row = 0;
        projector.show_projector_frustum = false;
        objects.append(projector);
    }
    GuideArraySlices array;
    array.columns = 3;
    array.rows = 1;
    array.rects = {QRectF(0.0, 0.0, 1.0 / 3, 1.0), QRectF(1.0 / 3, 0.0, 1.0 / 3, 1.0),
                   QRectF(2.0 / 3, 0.0, 1.0 / 3, 1.0)};
    SceneRenderSettings settings = plainSettings();
    settings.guideArrays = {array};
    const ViewCamera camera = frontCamera(3.6);
    const QImage frame = r.render(objects, camera, settings, kView);
    ASSERT_FALSE(frame.isNull());

    auto sample = [&](double x, double y) {
        QPointF pixel;
        EXPECT_TRUE(camera.worldToPixel(QVector3D(float(x), float(y), 0.0f), kView, &pixel));
        return frame.pixel(int(pixel.x()), int(pixel.y()));
    };
    for (int k = 0; k < 3; ++k) {
        const QRgb leftTop = sample(xs[k] - 0.7, 0.45);
        const QRgb rightTop = sample(xs[k] + 0.7, 0.45);
        const QRgb leftBottom = sample(xs[k] - 0.7, -0.45);
        EXPECT_EQ(dominantChannel(leftTop), k) << "projector " << k << " shows the wrong slice";
        EXPECT_EQ(dominantChannel(leftBottom), k) << "projector " << k;
        // Pure on the left of its slice, paled on the right: not mirrored.
        EXPECT_GT(minChannel(rightTop), minChannel(leftTop) + 30) << "projector " << k << " is mirrored";
        // Bright above, dark below: not upside down.
        EXPECT_GT(luminance(leftTop), luminance(leftBottom) * 1.3) << "projector " << k << " is upside down";
    }

    // Without a slice each projector shows the whole guide: the left projector's left
    // sample is red as before, but its centre now shows the green third.
    for (int k = 1; k <= 3; ++k)
        objects[k].projector_image_slice_column = -1;
    const QImage whole = r.render(objects, camera, settings, kView);
    QPointF pixel;
    ASSERT_TRUE(camera.worldToPixel(QVector3D(xs[2], 0.45f, 0.0f), kView, &pixel));
    EXPECT_EQ(dominantChannel(whole.pixel(int(pixel.x()), int(pixel.y()))), 1);
}
