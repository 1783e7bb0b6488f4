#include "CanvasTestSupport.h"

#include "canvas/CanvasPainter.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

// Source pixel coordinate coded in a gradientImage pixel of a W x H picture.
QPointF decoded(QRgb pixel, int width, int height)
{
    return QPointF(qRed(pixel) * (width - 1) / 255.0, qGreen(pixel) * (height - 1) / 255.0);
}

void expectSource(const QImage &image, int x, int y, QPointF expected, int width, int height)
{
    const QPointF got = decoded(image.pixel(x, y), width, height);
    EXPECT_NEAR(got.x(), expected.x(), 2.0) << "at output pixel " << x << "," << y;
    EXPECT_NEAR(got.y(), expected.y(), 2.0) << "at output pixel " << x << "," << y;
}

CanvasObjectSettings guideObject(double x, double y)
{
    CanvasObjectSettings object;
    object.guide_index = 0;
    object.translate_x = x;
    object.translate_y = y;
    return object;
}

} // namespace

TEST(CanvasRender, GuideWithRotationScaleAndCropLandsWhereTheArithmeticSays)
{
    CanvasSources sources;
    sources.guides.append({QStringLiteral("G"), canvasImageOf(gradientImage(100, 50)), QSizeF(1000, 500)});
    CanvasTabSettings canvas;
    CanvasObjectSettings object = guideObject(300, 200);
    object.rotation = 90;    // clockwise
    object.scale_x = 2.0;
    object.crop_left = 0.5;  // the right half of the guide stays
    canvas.objects.append(object);

    QString error;
    const QImage image = renderCanvasImage(canvas, sources, &error);
    ASSERT_FALSE(image.isNull()) << error.toStdString();
    // Visible local part [0,50] x [-25,25], twice as wide, turned: 50 wide, 100 tall.
    ASSERT_EQ(image.size(), QSize(50, 100));
    EXPECT_EQ(canvasContentBounds(canvas, sources), QRect(275, 200, 50, 100));

    // Output (ox, oy) shows source (50 + (oy + 0.5) / 2, 49.5 - ox).
    auto source = [](int ox, int oy) { return QPointF(50 + (oy + 0.5) / 2.0, 49.5 - ox); };
    for (const QPoint p : {QPoint(0, 0), QPoint(49, 0), QPoint(0, 99), QPoint(49, 99), QPoint(20, 60)})
        expectSource(image, p.x(), p.y(), source(p.x(), p.y()), 100, 50);
}

TEST(CanvasRender, ObjectsKeepTheirPlacesOrderAndOpacityAndHiddenOnesAreAbsent)
{
    CanvasSources sources;
    sources.guides.append({QStringLiteral("G"), canvasImageOf(gradientImage(100, 50)), QSizeF()});
    sources.pictures.insert(QStringLiteral("red.png"), canvasImageOf(solidImage(20, 20, Qt::red)));
    sources.pictures.insert(QStringLiteral("blue.png"), canvasImageOf(solidImage(40, 40, Qt::blue)));

    CanvasTabSettings canvas;
    canvas.background_color = QColor(0, 0, 0);
    canvas.objects.append(guideObject(0, 0)); // [-50,50] x [-25,25]
    CanvasObjectSettings red;
    red.image_file_path = QStringLiteral("red.png");
    red.translate_x = 300;
    red.translate_y = 100; // [290,310] x [90,110]
    red.opacity = 0.5;
    canvas.objects.append(red);
    CanvasObjectSettings overlap = red; // lies over the guide's top-left corner, fully opaque
    overlap.opacity = 1.0;
    overlap.translate_x = -40;
    overlap.translate_y = -15; // [-50,-30] x [-25,-5]
    canvas.objects.append(overlap);
    CanvasObjectSettings hidden;
    hidden.image_file_path = QStringLiteral("blue.png");
    hidden.translate_x = 900;
    hidden.translate_y = 900;
    hidden.visible = false;
    canvas.objects.append(hidden);

    const QImage image = renderCanvasImage(canvas, sources);
    // The hidden object neither shows nor widens the export.
    ASSERT_EQ(image.size(), QSize(360, 135));
    const QPoint origin(50, 25); // canvas (0,0) in the image
    // Top-left of the guide is under the opaque red square; the guide's other corners show.
    EXPECT_EQ(image.pixelColor(origin + QPoint(-49, -24)), QColor(Qt::red));
    expectSource(image, origin.x() + 49, origin.y() - 24, QPointF(99.5, 0.5), 100, 50);
    expectSource(image, origin.x() - 49, origin.y() + 24, QPointF(0.5, 49.5), 100, 50);
    // Half-opaque red over black.
    const QColor blended = image.pixelColor(origin + QPoint(300, 100));
    EXPECT_NEAR(blended.red(), 128, 3);
    EXPECT_LE(blended.green(), 2);
    // Between the objects only the canvas background remains.
    EXPECT_EQ(image.pixelColor(origin + QPoint(200, 0)), QColor(0, 0, 0));

    canvas.objects[1].visible = false;
    EXPECT_EQ(renderCanvasImage(canvas, sources).size(), QSize(100, 50));
}

TEST(CanvasRender, EmptyOrAllHiddenCanvasRefusesAndHugeContentFails)
{
    CanvasTabSettings canvas;
    QString error;
    EXPECT_TRUE(renderCanvasImage(canvas, CanvasSources(), &error).isNull());
    EXPECT_EQ(error, QStringLiteral("No canvas objects to export."));

    CanvasObjectSettings comment;
    comment.object_type = QStringLiteral("comment");
    comment.visible = false;
    canvas.objects.append(comment);
    error.clear();
    EXPECT_TRUE(renderCanvasImage(canvas, CanvasSources(), &error).isNull());
    EXPECT_EQ(error, QStringLiteral("No canvas objects to export."));

    // A missing picture still stands as a frame; scaled beyond what an image can hold it fails.
    CanvasObjectSettings picture;
    picture.image_file_path = QStringLiteral("/nonexistent.png");
    picture.scale_x = picture.scale_y = 1000;
    canvas.objects.append(picture);
    error.clear();
    EXPECT_TRUE(renderCanvasImage(canvas, CanvasSources(), &error).isNull());
    EXPECT_EQ(error, QStringLiteral("Canvas PNG image could not be rendered."));
}

TEST(CanvasRender, DimensionLabelsNameThePlacedSize)
{
    CanvasSources sources;
    sources.pictures.insert(QStringLiteral("p"), canvasImageOf(solidImage(200, 100, Qt::green)));
    CanvasObjectSettings object;
    object.image_file_path = QStringLiteral("p");
    object.scale_x = 1.5;
    object.crop_top = 0.5;
    object.show_width_dimension = true;
    QVector<CanvasDimensionLabel> labels = canvasDimensionLabels(object, sources);
    ASSERT_EQ(labels.size(), 1);
    EXPECT_EQ(labels[0].text, QStringLiteral("300px"));
    object.show_height_dimension = true;
    labels = canvasDimensionLabels(object, sources);
    ASSERT_EQ(labels.size(), 1);
    EXPECT_EQ(labels[0].text, QStringLiteral("300x50px"));
    // The label lies below the object and widens the content bounds downwards only.
    EXPECT_GT(labels[0].rect.top(), 25.0);
    CanvasTabSettings canvas;
    canvas.objects.append(object);
    const QRect bounds = canvasContentBounds(canvas, sources);
    EXPECT_EQ(bounds.top(), 0);
    EXPECT_GT(bounds.bottom(), 50);
}

TEST(CanvasRender, TitleBandFollowsTheDocumentSettings)
{
    QImage view(400, 100, QImage::Format_RGB32);
    view.fill(Qt::blue);
    for (int y = 0; y < 100; ++y)
        for (int x = 0; x < 100; ++x)
            view.setPixel(x, y, qRgb(255, 0, 0)); // red on the left quarter

    CanvasTabSettings canvas;
    canvas.document_title_background_color = QColor(10, 200, 30);
    canvas.document_custom_title_enabled = true;
    canvas.document_custom_title = QStringLiteral("Stage left");
    const DocumentTitleBand band = canvasDocumentTitle(canvas, QStringLiteral("Canvas 1"));
    EXPECT_EQ(band.text, QStringLiteral("Stage left"));
    const QImage page = composeDocumentPage(view, band);
    ASSERT_EQ(page.size(), kDocumentPageSize);
    const int bandHeight = documentTitleBandHeight(band);
    EXPECT_EQ(bandHeight, 100);
    EXPECT_EQ(page.pixelColor(page.width() - 3, 3), QColor(10, 200, 30));
    // The title text is white in the band's left part.
    int white = 0;
    for (int y = 0; y < bandHeight; ++y)
        for (int x = 0; x < page.width() / 2; ++x)
            white += qGray(page.pixel(x, y)) > 200 ? 1 : 0;
    EXPECT_GT(white, 100);
    // The view is fitted below the band, unmirrored: red left, blue right, page colour outside.
    EXPECT_EQ(page.pixelColor(page.width() / 2, page.height() / 2 - 10), QColor(Qt::blue));
    EXPECT_EQ(page.pixelColor(page.width() / 2 - page.width() / 2 + 60, page.height() / 2 + 40), QColor(Qt::red));
    EXPECT_EQ(page.pixelColor(page.width() / 2, bandHeight + 5), QColor(0x20, 0x22, 0x26));

    canvas.document_custom_title_enabled = false;
    EXPECT_EQ(canvasDocumentTitle(canvas, QStringLiteral("Canvas 1")).text, QStringLiteral("Canvas 1"));
    canvas.document_title_visible = false;
    const DocumentTitleBand hidden = canvasDocumentTitle(canvas, QStringLiteral("Canvas 1"));
    const QImage bare = composeDocumentPage(view, hidden);
    EXPECT_EQ(documentTitleBandHeight(hidden), 0);
    for (int x = 0; x < bare.width(); x += 50)
        EXPECT_EQ(bare.pixelColor(x, 3), QColor(0x20, 0x22, 0x26)) << x;
}

TEST(CanvasRender, CommentsAndTextBoxesDrawTheirTextWhereTheirAlignmentPutsIt)
{
    CanvasTabSettings canvas;
    canvas.background_color = QColor(0, 0, 0);
    CanvasObjectSettings text;
    text.object_type = QStringLiteral("text_box");
    text.text_box_text = QStringLiteral("WWWW\nWWWW");
    text.text_box_color = QColor(255, 255, 0);
    text.text_box_alignment = 0;          // position at the left edge
    text.text_box_vertical_alignment = 0; // and at the top
    text.translate_x = 100;
    text.translate_y = 100;
    canvas.objects.append(text);
    const CanvasObjectShape shape = canvasObjectShape(text, CanvasSources());
    EXPECT_DOUBLE_EQ(shape.frame.left(), 0.0);
    EXPECT_DOUBLE_EQ(shape.frame.top(), 0.0);
    text.text_box_alignment = 2;
    text.text_box_vertical_alignment = 2;
    const CanvasObjectShape other = canvasObjectShape(text, CanvasSources());
    EXPECT_DOUBLE_EQ(other.frame.right(), 0.0);
    EXPECT_DOUBLE_EQ(other.frame.bottom(), 0.0);

    const QImage image = renderCanvasImage(canvas, CanvasSources());
    ASSERT_FALSE(image.isNull());
    int yellow = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            yellow += (qRed(image.pixel(x, y)) > 200 && qGreen(image.pixel(x, y)) > 200 && qBlue(image.pixel(x, y)) < 60);
    EXPECT_GT(yellow, image.width() * image.height() / 10);

    CanvasObjectSettings comment;
    comment.object_type = QStringLiteral("comment");
    comment.comment_text = QStringLiteral("Truss");
    const CanvasObjectShape marker = canvasObjectShape(comment, CanvasSources());
    // Default offsets put the label to the upper right of the circle.
    EXPECT_GT(marker.label.left(), marker.circle.right());
    EXPECT_LT(marker.label.center().y(), 0.0);
    EXPECT_TRUE(marker.frame.contains(marker.label));
}
