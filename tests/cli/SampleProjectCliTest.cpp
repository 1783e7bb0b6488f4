#include "cli/CliTestSupport.h"

#include "guide/GuideRenderer.h"
#include "guide/ProjectorLayout.h"
#include "project/ProjectFile.h"

#include <QImage>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cmath>

// The bundled sample shows the program's central path: seen through its projector, the
// wall carries the project's first guide, right way up and unmirrored.
TEST(SampleProjectCli, TheSampleProjectorProjectsTheWallGuideOntoTheWall)
{
    const QString sample = QStringLiteral(VG_SOURCE_DIR "/samples/sample.vgs");
    ProjectDocument doc;
    QString error;
    ASSERT_TRUE(loadProjectDocument(sample, &doc, &error)) << error.toStdString();
    ASSERT_EQ(doc.views.size(), 1);
    int projector = -1;
    for (int i = 0; i < doc.views[0].objects.size(); ++i) {
        if (doc.views[0].objects[i].guide_index == KindProjector)
            projector = i;
    }
    ASSERT_GE(projector, 0);
    EXPECT_EQ(doc.views[0].objects[projector].projector_image_guide_index, 0);

    QTemporaryDir dir;
    const QString png = dir.filePath(QStringLiteral("through.png"));
    const CliRun run = runCli({QStringLiteral("render-view"), sample, QStringLiteral("--camera"),
                               QStringLiteral("object:%1").arg(projector), QStringLiteral("--size"),
                               QStringLiteral("480x300"), QStringLiteral("-o"), png},
                              CliDisplay::Inherit);
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    const QImage image(png);
    ASSERT_EQ(image.size(), QSize(480, 300));
    GuideSettings wall = doc.guides[0];
    applyGuideTabLoadStep(&wall);
    const QImage guide = renderGuideImage(wall)
                             .scaled(480, 300, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                             .convertToFormat(QImage::Format_RGB32);
    auto meanDifference = [&](const QImage &other) {
        double difference = 0.0;
        int samples = 0;
        for (int y = 8; y < 292; y += 5) {
            for (int x = 8; x < 472; x += 5) {
                const QRgb a = image.pixel(x, y), b = other.pixel(x, y);
                difference += std::abs(qRed(a) - qRed(b)) + std::abs(qGreen(a) - qGreen(b)) + std::abs(qBlue(a) - qBlue(b));
                ++samples;
            }
        }
        return difference / (3.0 * samples);
    };
    EXPECT_LT(meanDifference(guide), 14.0);
    // A mirrored or upside-down picture would not match: the guide's corners differ.
    EXPECT_GT(meanDifference(guide.mirrored(true, true)), 20.0);
}
