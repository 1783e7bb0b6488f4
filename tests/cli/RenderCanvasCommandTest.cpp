#include "cli/CliTestSupport.h"

#include "canvas/CanvasGuideSources.h"
#include "canvas/CanvasPainter.h"
#include "project/ProjectFile.h"

#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

CliRun renderCanvas(const QStringList &args)
{
    return runCli(QStringList{QStringLiteral("render-canvas")} + args);
}

// Two guides side by side and a photo beside them, the photo given relative to the project.
ProjectDocument twoGuidesAndAPhoto(const QTemporaryDir &dir)
{
    QImage photo(80, 40, QImage::Format_RGB32);
    photo.fill(QColor(200, 40, 10));
    photo.save(dir.filePath(QStringLiteral("photo.png")));

    ProjectDocument doc;
    GuideSettings a;
    a.pixelWidth = 400;
    a.pixelHeight = 250;
    a.realWidth = 4000;
    a.realHeight = 2500;
    GuideSettings b = a;
    b.rows = 5;
    b.flipH = true;
    doc.guides = {a, b};
    CanvasTabSettings canvas;
    CanvasObjectSettings left;
    left.guide_index = 0;
    CanvasObjectSettings right;
    right.guide_index = 1;
    right.translate_x = 420;
    right.rotation = 10;
    CanvasObjectSettings picture;
    picture.image_file_path = QStringLiteral("photo.png");
    picture.translate_y = 300;
    picture.opacity = 0.6;
    canvas.objects = {left, right, picture};
    doc.canvasTabs = {CanvasTabSettings(), canvas};
    return doc;
}

} // namespace

TEST(RenderCanvasCli, WritesTheSameImageAsTheCanvasExport)
{
    QTemporaryDir dir;
    ProjectDocument doc = twoGuidesAndAPhoto(dir);
    const QString project = dir.filePath(QStringLiteral("p.vgs"));
    QString error;
    ASSERT_TRUE(saveProjectDocument(project, doc, &error));

    const QString out = dir.filePath(QStringLiteral("sheet"));
    const CliRun run = renderCanvas({project, QStringLiteral("--canvas"), QStringLiteral("1"), QStringLiteral("-o"), out});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    const QImage written(out + QStringLiteral(".png"));
    ASSERT_FALSE(written.isNull());

    // In-process: the photo as the window holds it (an absolute path) and the guides rendered.
    doc.canvasTabs[1].objects[2].image_file_path = dir.filePath(QStringLiteral("photo.png"));
    const CanvasSources sources = renderCanvasSources(doc.guides, doc.canvasTabs[1]);
    const QImage expected = renderCanvasImage(doc.canvasTabs[1], sources);
    ASSERT_EQ(written.size(), expected.size());
    EXPECT_EQ(written.convertToFormat(QImage::Format_RGB32), expected.convertToFormat(QImage::Format_RGB32));
    EXPECT_TRUE(run.out.contains(QStringLiteral("(%1x%2 px)").arg(expected.width()).arg(expected.height())));
    // The photo (below the guides) shows half-transparent over the background, not as a missing frame.
    const QPoint photoCentre = QPoint(0, 300) - canvasContentBounds(doc.canvasTabs[1], sources).topLeft();
    const QColor photo = written.pixelColor(photoCentre);
    EXPECT_NEAR(photo.red(), int(0.6 * 200 + 0.4 * 45), 3);
}

TEST(RenderCanvasCli, RefusesEmptyCanvasesMissingTabsAndBadArguments)
{
    QTemporaryDir dir;
    const QString project = dir.filePath(QStringLiteral("p.vgs"));
    QString error;
    ASSERT_TRUE(saveProjectDocument(project, twoGuidesAndAPhoto(dir), &error));
    const QString out = dir.filePath(QStringLiteral("x.png"));

    CliRun run = renderCanvas({project, QStringLiteral("-o"), out}); // canvas 0 is empty
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(run.err.contains(QStringLiteral("No canvas objects to export."))) << run.err.toStdString();
    run = renderCanvas({project, QStringLiteral("--canvas"), QStringLiteral("2"), QStringLiteral("-o"), out});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(run.err.contains(QStringLiteral("holds 2 canvas tab(s)"))) << run.err.toStdString();
    EXPECT_EQ(renderCanvas({project}).exitCode, 2);
    EXPECT_EQ(renderCanvas({project, QStringLiteral("--canvas"), QStringLiteral("-1"), QStringLiteral("-o"), out}).exitCode, 2);
    EXPECT_FALSE(QFileInfo::exists(out));
}
