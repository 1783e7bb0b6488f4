#include "cli/CliTestSupport.h"

#include "common/SettingsContainer.h"
#include "guide/GuideSettings.h"

#include <QFile>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {



QJsonObject guideInfo(const QStringList &args)
{
    const CliRun run = runCli(QStringList{QStringLiteral("guide-info")} + args);
    EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
    return QJsonDocument::fromJson(run.out.toUtf8()).object();
}

} // namespace

TEST(GuideCli, BareGuideRendersWithTheLoadStepApplied)
{
    QTemporaryDir dir;
    const QString guide = dir.filePath(QStringLiteral("guide.json"));
    // 1083 px high becomes 1080; with fixed ratio the width follows 3500 x 1200 mm.
    writeFileBytes(guide, R"({"real_width": 3500, "real_height": 1200, "pixel_height": 1083, "pixel_width": 10,
                          "projector_count": 2, "projector_auto_placement": true, "projector_throw_distance": 7,
                          "rotate": true})");
    const QString png = dir.filePath(QStringLiteral("out.png"));
    const CliRun run = runCli({QStringLiteral("render-guide"), guide, QStringLiteral("-o"), png});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    const QImage image(png);
    ASSERT_FALSE(image.isNull());
    EXPECT_EQ(image.size(), QSize(1080, 3148)); // rotated: height x width

    const QJsonObject info = guideInfo({guide});
    EXPECT_EQ(info.value(QStringLiteral("pixel_width")).toInt(), 3148);
    EXPECT_EQ(info.value(QStringLiteral("pixel_height")).toInt(), 1080);
    EXPECT_EQ(info.value(QStringLiteral("image_width")).toInt(), 1080);
    EXPECT_EQ(info.value(QStringLiteral("image_height")).toInt(), 3148);
    EXPECT_EQ(info.value(QStringLiteral("rows")).toInt(), 20);
    EXPECT_EQ(info.value(QStringLiteral("columns")).toInt(), 58);
    EXPECT_DOUBLE_EQ(info.value(QStringLiteral("cell_height")).toDouble(), 54.0);
    EXPECT_FALSE(info.value(QStringLiteral("square")).toBool());
    // Rotated, the surface is 1200 x 3500 mm; the height decides: 3500 mm tall 16:10 images
    // are 5600 mm wide, so at throw ratio 1 the distance is 5600 mm, and 1920 px over
    // 5600 mm puts 411 px across the 1200 mm.
    EXPECT_DOUBLE_EQ(info.value(QStringLiteral("projector_throw_distance")).toDouble(), 5600.0);
    EXPECT_EQ(info.value(QStringLiteral("effective_width")).toInt(), 411);
    EXPECT_EQ(info.value(QStringLiteral("effective_height")).toInt(), 1200);
}

TEST(GuideCli, ProjectGuidesAreChosenByNumberOrActive)
{
    QTemporaryDir dir;
    GuideSettings first;
    first.pixelWidth = 800;
    first.pixelHeight = 500;
    first.realWidth = 800;
    first.realHeight = 500;
    GuideSettings second = first;
    second.realSquare = true;
    second.realSquareWidth = 50;
    QJsonObject root;
    root.insert(QStringLiteral("format"), QStringLiteral("VantreoGuide"));
    root.insert(QStringLiteral("version"), 2);
    root.insert(QStringLiteral("active_guide"), 1);
    root.insert(QStringLiteral("guides"), QJsonArray{guideSettingsToJson(first), guideSettingsToJson(second)});
    const QString project = dir.filePath(QStringLiteral("p.vgs"));
    writeFileBytes(project, vg::encodeSettingsContainer(QJsonDocument(root).toJson()));

    EXPECT_TRUE(guideInfo({project}).value(QStringLiteral("square")).toBool()); // the active guide: 16 x 10 squares
    EXPECT_EQ(guideInfo({project}).value(QStringLiteral("columns")).toInt(), 16);
    EXPECT_EQ(guideInfo({project, QStringLiteral("--guide"), QStringLiteral("0")}).value(QStringLiteral("columns")).toInt(),
              32); // auto columns: 20 rows on 16:10

    const QString png = dir.filePath(QStringLiteral("g0.png"));
    CliRun run = runCli({QStringLiteral("render-guide"), project, QStringLiteral("--guide"),
                                   QStringLiteral("0"), QStringLiteral("-o"), png});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_EQ(QImage(png).size(), QSize(800, 500));

    run = runCli({QStringLiteral("render-guide"), project, QStringLiteral("--guide"), QStringLiteral("2"),
                       QStringLiteral("-o"), png});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(run.err.contains(QStringLiteral("Guide 2 does not exist"))) << run.err.toStdString();
}

TEST(GuideCli, BadInputsAndUsage)
{
    QTemporaryDir dir;
    const QString png = dir.filePath(QStringLiteral("x.png"));
    CliRun run = runCli({QStringLiteral("render-guide"), dir.filePath(QStringLiteral("none.json")),
                                   QStringLiteral("-o"), png});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(run.err.contains(QStringLiteral("Load failed: "))) << run.err.toStdString();

    const QString broken = dir.filePath(QStringLiteral("broken.json"));
    writeFileBytes(broken, "{\"pixel_width\": ");
    run = runCli({QStringLiteral("guide-info"), broken});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(run.err.contains(QStringLiteral("JSON parse failed"))) << run.err.toStdString();

    EXPECT_EQ(runCli({QStringLiteral("render-guide"), broken}).exitCode, 2); // no -o
    EXPECT_EQ(runCli({QStringLiteral("guide-info")}).exitCode, 2);
    EXPECT_EQ(runCli({QStringLiteral("guide-info"), broken, QStringLiteral("--guide"), QStringLiteral("x")}).exitCode, 2);
    EXPECT_EQ(runCli({QStringLiteral("guide-info"), broken, QStringLiteral("--guide"), QStringLiteral("-1")}).exitCode, 2);
    EXPECT_FALSE(QFile::exists(png));
}

TEST(GuideCli, SampleProjectRenders)
{
    const QString sample = QStringLiteral(VG_SOURCE_DIR "/samples/sample.vgs");
    if (!QFile::exists(sample))
        GTEST_SKIP() << "no sample project";
    QTemporaryDir dir;
    const QString png = dir.filePath(QStringLiteral("sample.png"));
    const CliRun run = runCli({QStringLiteral("render-guide"), sample, QStringLiteral("-o"), png});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    const QJsonObject info = guideInfo({sample});
    EXPECT_EQ(QImage(png).size(), QSize(info.value(QStringLiteral("image_width")).toInt(),
                                        info.value(QStringLiteral("image_height")).toInt()));
}
