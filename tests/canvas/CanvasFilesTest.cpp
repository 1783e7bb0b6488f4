#include "CanvasTestSupport.h"

#include "canvas/CanvasGuideSources.h"
#include "canvas/CanvasNaming.h"
#include "canvas/CanvasPainter.h"
#include "guide/GuideRenderer.h"
#include "project/ProjectFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gtest/gtest.h>

TEST(CanvasNames, SuffixCountsCaptionsAndCopyNames)
{
    EXPECT_EQ(withPngSuffix(QStringLiteral("/t/sheet.PNG")), QStringLiteral("/t/sheet.PNG"));
    EXPECT_EQ(withPngSuffix(QStringLiteral("/t/sheet.Png")), QStringLiteral("/t/sheet.Png"));
    EXPECT_EQ(withPngSuffix(QStringLiteral("/t/sheet")), QStringLiteral("/t/sheet.png"));
    EXPECT_EQ(withPngSuffix(QStringLiteral("/t/sheet.png.bak")), QStringLiteral("/t/sheet.png.bak.png"));

    EXPECT_EQ(canvasObjectCopyText(1), QStringLiteral("VantreoGuide Canvas object copy (1 object)"));
    EXPECT_EQ(canvasObjectCopyText(2), QStringLiteral("VantreoGuide Canvas object copy (2 objects)"));
    EXPECT_EQ(canvasObjectCopyText(0), QStringLiteral("VantreoGuide Canvas object copy (0 objects)"));
    EXPECT_EQ(canvasGuideSourceCaption(1), QStringLiteral("1 guide source"));
    EXPECT_EQ(canvasGuideSourceCaption(3), QStringLiteral("3 guide sources"));

    EXPECT_EQ(canvasCopyName(QStringLiteral("Photo"), {QStringLiteral("Photo")}), QStringLiteral("Photo Copy"));
    EXPECT_EQ(canvasCopyName(QStringLiteral("Photo"), {QStringLiteral("Photo"), QStringLiteral("Photo Copy")}),
              QStringLiteral("Photo Copy 2"));
    EXPECT_EQ(canvasCopyName(QStringLiteral("Photo"),
                             {QStringLiteral("Photo Copy"), QStringLiteral("Photo Copy 2"), QStringLiteral("Photo Copy 4")}),
              QStringLiteral("Photo Copy 3"));

    EXPECT_EQ(canvasExportFileName(QSize(7680, 4320)), QStringLiteral("canvas_export_7680x4320.png"));
    EXPECT_EQ(canvasViewFileName(QSize(800, 600)), QStringLiteral("canvas_view_800x600.png"));
    EXPECT_EQ(selectedGuideExportFileName(QStringLiteral("Wall: A/B"), QSize(3840, 2160), QSize(1920, 1080)),
              QStringLiteral("Wall_ A_B(3840x2160)_resized(1920x1080).png"));
    EXPECT_EQ(selectedGuideExportFileName(QStringLiteral("  "), QSize(1, 2), QSize(3, 4)),
              QStringLiteral("selected_guide(1x2)_resized(3x4).png"));
}

TEST(CanvasFiles, ExportKeepsOrAppendsTheSuffixAndRefusesAnEmptyCanvas)
{
    QTemporaryDir dir;
    CanvasSources sources;
    sources.pictures.insert(QStringLiteral("p"), canvasImageOf(gradientImage(30, 20)));
    CanvasTabSettings canvas;
    QString written, error;
    EXPECT_FALSE(exportCanvasPng(canvas, sources, dir.filePath(QStringLiteral("empty")), &written, &error));
    EXPECT_EQ(error, QStringLiteral("No canvas objects to export."));
    EXPECT_TRUE(QDir(dir.path()).entryList(QDir::Files).isEmpty());

    CanvasObjectSettings picture;
    picture.image_file_path = QStringLiteral("p");
    canvas.objects.append(picture);
    ASSERT_TRUE(exportCanvasPng(canvas, sources, dir.filePath(QStringLiteral("Upper.PNG")), &written, &error));
    EXPECT_EQ(written, dir.filePath(QStringLiteral("Upper.PNG")));
    ASSERT_TRUE(exportCanvasPng(canvas, sources, dir.filePath(QStringLiteral("plain")), &written, &error));
    EXPECT_EQ(written, dir.filePath(QStringLiteral("plain.png")));
    QStringList files = QDir(dir.path()).entryList(QDir::Files);
    files.sort(Qt::CaseSensitive);
    EXPECT_EQ(files, (QStringList{QStringLiteral("Upper.PNG"), QStringLiteral("plain.png")}));
    const QImage back(written);
    EXPECT_EQ(back.convertToFormat(QImage::Format_RGB32), gradientImage(30, 20).convertToFormat(QImage::Format_RGB32));

    EXPECT_FALSE(exportCanvasPng(canvas, sources, dir.filePath(QStringLiteral("missing/x.png")), &written, &error));
    EXPECT_EQ(error, QStringLiteral("PNG file could not be saved."));
}

TEST(CanvasFiles, PastedImageLandsInTheFolderWithTheStatedName)
{
    QTemporaryDir dir;
    const QString folder = dir.filePath(QStringLiteral("data/PastedCanvasImages"));
    const QImage image = gradientImage(16, 9);
    QString path, error;
    ASSERT_TRUE(savePastedCanvasImage(image, folder, QStringLiteral("Canvas 2"), &path, &error)) << error.toStdString();
    EXPECT_EQ(QFileInfo(path).absolutePath(), QFileInfo(folder).absoluteFilePath());
    static const QRegularExpression name(QStringLiteral("^clipboard_canvas_Canvas_2_\\d{8}_\\d{6}_\\d{3}\\.png$"));
    EXPECT_TRUE(name.match(QFileInfo(path).fileName()).hasMatch()) << path.toStdString();
    EXPECT_EQ(QImage(path).convertToFormat(QImage::Format_RGB32), image.convertToFormat(QImage::Format_RGB32));

    const QDateTime at(QDate(2026, 3, 4), QTime(5, 6, 7, 89), Qt::UTC);
    EXPECT_EQ(pastedCanvasImageFileName(QStringLiteral("Canvas 1"), at), QStringLiteral("clipboard_canvas_Canvas_1_20260304_050607_089.png"));
    EXPECT_TRUE(pastedCanvasImageFolder().endsWith(QStringLiteral("/PastedCanvasImages")));

    // A folder that cannot be made: a plain file stands where it would go.
    QFile blocker(dir.filePath(QStringLiteral("blocker")));
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    blocker.close();
    EXPECT_FALSE(savePastedCanvasImage(image, dir.filePath(QStringLiteral("blocker/sub")), QStringLiteral("c"), &path, &error));
    EXPECT_EQ(error, QStringLiteral("Could not create a folder for pasted images."));
    EXPECT_FALSE(savePastedCanvasImage(QImage(), folder, QStringLiteral("c"), &path, &error));
    EXPECT_EQ(error, QStringLiteral("Could not save the clipboard image as PNG."));
}

TEST(CanvasFiles, PicturesAreReadBoundedAndMissingOnesDrawAsFrames)
{
    QTemporaryDir dir;
    const QString good = dir.filePath(QStringLiteral("good.png"));
    ASSERT_TRUE(gradientImage(12, 8).save(good));
    const QString bad = dir.filePath(QStringLiteral("bad.png"));
    QFile file(bad);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    // A PNG header that declares 100000 x 100000 pixels.
    file.write(QByteArray::fromHex("89504e470d0a1a0a0000000d49484452000186a0000186a00806000000"));
    file.close();
    CanvasImage picture;
    QString error;
    EXPECT_TRUE(loadCanvasPicture(good, &picture, &error));
    EXPECT_EQ(picture.pixelSize, QSize(12, 8));
    EXPECT_FALSE(loadCanvasPicture(bad, &picture, &error));
    EXPECT_EQ(error, QStringLiteral("Selected image file could not be read."));

    CanvasTabSettings canvas;
    CanvasObjectSettings a, b;
    a.image_file_path = good;
    b.image_file_path = bad;
    b.translate_x = 1000;
    canvas.objects = {a, b};
    CanvasSources sources;
    loadCanvasPictures(canvas, &sources);
    EXPECT_TRUE(sources.pictures.contains(good));
    EXPECT_FALSE(sources.pictures.contains(bad));
    // The unreadable one keeps a place of the stand-in size.
    EXPECT_EQ(canvasObjectPlacedSize(b, sources), kMissingImageSize);
}

namespace {

CanvasTabSettings everyKindCanvas(const QString &picturePath)
{
    CanvasTabSettings canvas;
    canvas.title = QStringLiteral("Crew sheet");
    canvas.selected_guide_index = 1;
    canvas.grid_visible = true;
    canvas.ratio_visible = true;
    canvas.bounds_dimensions_visible = false;
    canvas.bounds_resolution_visible = false;
    canvas.title_visible = false;
    canvas.document_custom_title_enabled = true;
    canvas.document_title_visible = false;
    canvas.document_custom_title = QStringLiteral("Front of house");
    canvas.document_title_background_color = QColor(1, 2, 3);
    canvas.snap = true;
    canvas.background_color = QColor(10, 20, 30);
    canvas.transform_mode = 3;
    canvas.view_zoom = 55.5;
    canvas.view_pan_x = -12.5;
    canvas.view_pan_y = 40.25;

    CanvasObjectSettings guide;
    guide.guide_index = 1;
    guide.name = QStringLiteral("Left wall");
    guide.translate_x = 120.5;
    guide.translate_y = -40;
    guide.rotation = 12;
    guide.scale_x = 0.25;
    guide.scale_y = 0.3;
    guide.crop_left = 0.1;
    guide.crop_top = 0.05;
    guide.crop_right = 0.8;
    guide.crop_bottom = 0.9;
    guide.opacity = 0.75;
    guide.show_width_dimension = true;
    guide.show_height_dimension = true;
    CanvasObjectSettings picture;
    picture.image_file_path = picturePath;
    picture.name = QStringLiteral("Venue photo");
    picture.translate_x = 700;
    picture.rotation = -20;
    picture.scale_x = -1.5; // mirrored
    picture.show_height_dimension = true;
    CanvasObjectSettings comment;
    comment.object_type = QStringLiteral("comment");
    comment.name = QStringLiteral("Note");
    comment.translate_y = 300;
    comment.comment_text = QStringLiteral("Truss here");
    comment.comment_label_offset_x = -0.5;
    comment.comment_label_offset_y = 0.4;
    comment.comment_circle_scale = 1.5;
    comment.comment_font_scale = 1.2;
    CanvasObjectSettings text;
    text.object_type = QStringLiteral("text_box");
    text.name = QStringLiteral("Heading");
    text.translate_x = 400;
    text.translate_y = -300;
    text.text_box_text = QStringLiteral("Stage\nleft");
    text.text_box_font_scale = 3;
    text.text_box_bold = true;
    text.text_box_shadow = true;
    text.text_box_alignment = 2;
    text.text_box_vertical_alignment = 0;
    text.text_box_color = QColor(250, 200, 0);
    CanvasObjectSettings hidden = picture;
    hidden.visible = false;
    hidden.name = QStringLiteral("Hidden");
    canvas.objects = {guide, picture, comment, text, hidden};
    return canvas;
}

} // namespace

TEST(CanvasFiles, EveryKindAndFieldSurvivesSaveAndRendersIdentically)
{
    QTemporaryDir dir;
    const QString picture = dir.filePath(QStringLiteral("photo.png"));
    ASSERT_TRUE(gradientImage(64, 48).save(picture));

    ProjectDocument doc;
    GuideSettings small;
    small.pixelWidth = 320;
    small.pixelHeight = 200;
    small.realWidth = 3200;
    small.realHeight = 2000;
    GuideSettings other = small;
    other.pixelWidth = 480;
    other.realWidth = 4800;
    other.rows = 6;
    doc.guides = {small, other};
    doc.canvasTabs = {everyKindCanvas(picture)};
    doc.tabs = {{QStringLiteral("guide"), 0}, {QStringLiteral("guide"), 1}, {QStringLiteral("canvas"), 0}};
    const QString path = dir.filePath(QStringLiteral("p.vgs"));
    QString error;
    ASSERT_TRUE(saveProjectDocument(path, doc, &error)) << error.toStdString();

    ProjectDocument back;
    ASSERT_TRUE(loadProjectDocument(path, &back, &error)) << error.toStdString();
    ASSERT_EQ(back.canvasTabs.size(), 1);
    EXPECT_EQ(back.canvasTabs[0], doc.canvasTabs[0]);

    const QImage before = renderCanvasImage(doc.canvasTabs[0], renderCanvasSources(doc.guides, doc.canvasTabs[0]));
    const QImage after = renderCanvasImage(back.canvasTabs[0], renderCanvasSources(back.guides, back.canvasTabs[0]));
    ASSERT_FALSE(before.isNull());
    EXPECT_EQ(before, after);
    // The guide shown is guide 1 (480 px wide), not guide 0: its placed label says so.
    const QVector<CanvasDimensionLabel> labels =
        canvasDimensionLabels(back.canvasTabs[0].objects[0], renderCanvasSources(back.guides, back.canvasTabs[0]));
    ASSERT_EQ(labels.size(), 1);
    EXPECT_EQ(labels[0].text, QStringLiteral("84x51px")); // 480 * 0.7 * 0.25, 200 * 0.85 * 0.3
}
