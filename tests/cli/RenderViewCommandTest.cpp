#include "cli/CliTestSupport.h"

#include "guide/GuideRenderer.h"
#include "project/ProjectFile.h"

#include <QImage>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cmath>

namespace {

// Every call here is a render-view run.
CliRun renderView(const QStringList &args, bool withoutDisplay = false)
{
    return runCli(QStringList{QStringLiteral("render-view")} + args,
                  withoutDisplay ? CliDisplay::None : CliDisplay::Inherit);
}

// A wall 3 m in front of a projector that shows guide 0 through a guide object.
QString writeProject(const QTemporaryDir &dir)
{
    ProjectDocument doc;
    doc.guides.append(GuideSettings());
    Guide3DViewSettings view = Guide3DViewSettings::created();
    view.grid_visible = false;
    GuideObject wall;
    wall.guide_index = KindPlane;
    wall.name = QStringLiteral("Wall");
    wall.scale_x = 3.0f;
    wall.scale_y = 3.0f;
    wall.plane_width = wall.plane_height = 6000.0f;
    wall.show_wireframe = false;
    GuideObject projector;
    projector.guide_index = KindProjector;
    projector.name = QStringLiteral("Projector");
    projector.translate_z = 3.0f;
    projector.scale_x = projector.scale_y = projector.scale_z = 0.1f;
    projector.lens_shift_y = 0.0f;
    projector.projector_image_guide_index = 0;
    GuideObject guide;
    guide.guide_index = KindGuide;
    guide.name = QStringLiteral("Guide");
    guide.texture_guide_index = 0;
    guide.visible = false;
    view.objects = {wall, projector, guide};
    doc.views.append(view);
    const QString path = dir.filePath(QStringLiteral("scene.vgs"));
    QString error;
    EXPECT_TRUE(saveProjectDocument(path, doc, &error)) << error.toStdString();
    return path;
}

} // namespace

TEST(RenderViewCommand, ThroughTheProjectorTheWallShowsTheGuide)
{
    QTemporaryDir dir;
    const QString project = writeProject(dir);
    const QString png = dir.filePath(QStringLiteral("through.png"));
    const CliRun run = renderView({project, QStringLiteral("--camera"), QStringLiteral("object:1"),
                                      QStringLiteral("--size"), QStringLiteral("960x600"), QStringLiteral("-o"), png});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    const QImage image(png);
    ASSERT_EQ(image.size(), QSize(960, 600));
    // Seen from its own lens, the projector's picture fills the view: it is the guide.
    const QImage guide = renderGuideImage(GuideSettings())
                             .scaled(960, 600, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                             .convertToFormat(QImage::Format_RGB32);
    double difference = 0.0;
    int samples = 0;
    for (int y = 10; y < 590; y += 7) {
        for (int x = 10; x < 950; x += 7) {
            const QRgb a = image.pixel(x, y), b = guide.pixel(x, y);
            difference += std::abs(qRed(a) - qRed(b)) + std::abs(qGreen(a) - qGreen(b)) + std::abs(qBlue(a) - qBlue(b));
            ++samples;
        }
    }
    EXPECT_LT(difference / (3.0 * samples), 12.0);
}

TEST(RenderViewCommand, HeatmapFrustumAndNoDisplay)
{
    QTemporaryDir dir;
    const QString project = writeProject(dir);
    const QString plain = dir.filePath(QStringLiteral("plain.png"));
    const QString heat = dir.filePath(QStringLiteral("heat.png"));
    // Without any display the command brings up its own GL display.
    CliRun run = renderView({project, QStringLiteral("--camera"), QStringLiteral("front"), QStringLiteral("--size"),
                                QStringLiteral("320x200"), QStringLiteral("-o"), plain},
                               true);
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    run = renderView({project, QStringLiteral("--camera"), QStringLiteral("front"), QStringLiteral("--size"),
                  QStringLiteral("320x200"), QStringLiteral("--heatmap"), QStringLiteral("--frustum"),
                  QStringLiteral("-o"), heat});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    const QImage a(plain), b(heat);
    ASSERT_EQ(a.size(), QSize(320, 200));
    ASSERT_EQ(b.size(), a.size());
    // The heat map tints the wall: a face-on wall has one footprint, drawn as one colour.
    int tinted = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x)
            tinted += a.pixel(x, y) != b.pixel(x, y);
    EXPECT_GT(tinted, a.width() * a.height() / 10);
}

TEST(RenderViewCommand, UsageAndFailures)
{
    QTemporaryDir dir;
    const QString project = writeProject(dir);
    const QString png = dir.filePath(QStringLiteral("x.png"));
    EXPECT_EQ(renderView({project}).exitCode, 2); // no -o
    EXPECT_EQ(renderView({project, QStringLiteral("--camera"), QStringLiteral("top"), QStringLiteral("-o"), png}).exitCode, 2);
    EXPECT_EQ(renderView({project, QStringLiteral("--size"), QStringLiteral("0x10"), QStringLiteral("-o"), png}).exitCode, 2);
    const CliRun notLens =
        renderView({project, QStringLiteral("--camera"), QStringLiteral("object:0"), QStringLiteral("-o"), png});
    EXPECT_EQ(notLens.exitCode, 1);
    EXPECT_TRUE(notLens.err.contains(QStringLiteral("not a projector or camera"))) << notLens.err.toStdString();
    EXPECT_EQ(renderView({project, QStringLiteral("--view"), QStringLiteral("3"), QStringLiteral("-o"), png}).exitCode, 1);
    EXPECT_EQ(renderView({dir.filePath(QStringLiteral("missing.vgs")), QStringLiteral("-o"), png}).exitCode, 1);
    EXPECT_FALSE(QFile::exists(png));
}
