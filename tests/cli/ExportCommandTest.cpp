#include "cli/CliTestSupport.h"

#include "project/ProjectFile.h"

#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

// A textured wall showing guide 1 (a 3:2 guide), a projector casting guide 0 through a
// hidden guide object, and a camera.
QString writeExportProject(const QTemporaryDir &dir)
{
    ProjectDocument doc;
    doc.guides.append(GuideSettings());
    GuideSettings second;
    second.pixelWidth = 600;
    second.pixelHeight = 400;
    doc.guides.append(second);
    Guide3DViewSettings view = Guide3DViewSettings::created();
    GuideObject wall;
    wall.guide_index = KindPlane;
    wall.name = QStringLiteral("Wall");
    wall.scale_x = 3.0f;
    wall.scale_y = 2.0f;
    wall.texture_guide_index = 1;
    GuideObject projector;
    projector.guide_index = KindProjector;
    projector.name = QStringLiteral("Projector");
    projector.translate_z = 3.0f;
    projector.projector_image_guide_index = 2;
    GuideObject guide;
    guide.guide_index = KindGuide;
    guide.name = QStringLiteral("Guide");
    guide.texture_guide_index = 0;
    guide.visible = false;
    GuideObject camera;
    camera.guide_index = KindCamera;
    camera.name = QStringLiteral("Witness");
    camera.translate_x = 2.0f;
    camera.translate_z = 4.0f;
    view.objects = {wall, projector, guide, camera};
    doc.views.append(view);
    const QString path = dir.filePath(QStringLiteral("scene.vgs"));
    QString error;
    EXPECT_TRUE(saveProjectDocument(path, doc, &error)) << error.toStdString();
    return path;
}

CliRun exportRun(const QStringList &args)
{
    return runCli(QStringList{QStringLiteral("export")} + args);
}

} // namespace

TEST(ExportCommand, ObjListsItsFilesAndWritesTheGuideTextures)
{
    QTemporaryDir dir;
    const QString project = writeExportProject(dir);
    const QString obj = dir.filePath(QStringLiteral("out/scene.obj"));
    const CliRun run = exportRun({project, QStringLiteral("--format"), QStringLiteral("obj"), QStringLiteral("-o"), obj});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    const QStringList lines = run.out.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    ASSERT_GE(lines.size(), 4);
    EXPECT_EQ(QFileInfo(lines.at(0)).fileName(), QStringLiteral("scene.obj"));
    EXPECT_EQ(QFileInfo(lines.at(1)).fileName(), QStringLiteral("scene.mtl"));
    // The wall shows guide 1 as the guide renderer draws it.
    const QImage wallTexture(dir.filePath(QStringLiteral("out/scene_Wall_0.png")));
    EXPECT_EQ(wallTexture.size(), QSize(600, 400));
    // The projector casts guide 0 (1920 x 1200) through the hidden guide object.
    const QImage cast(dir.filePath(QStringLiteral("out/scene_Projector_Frustum.png")));
    EXPECT_EQ(cast.size(), QSize(1920, 1200));
    EXPECT_TRUE(QFileInfo::exists(dir.filePath(QStringLiteral("out/scene.mtl"))));
}

TEST(ExportCommand, ObjectsOptionExportsTheSelectionEvenWhenHidden)
{
    QTemporaryDir dir;
    const QString project = writeExportProject(dir);
    const QString obj = dir.filePath(QStringLiteral("sel.obj"));
    CliRun run = exportRun({project, QStringLiteral("--format"), QStringLiteral("obj"), QStringLiteral("--objects"),
                            QStringLiteral("3,2"), QStringLiteral("-o"), obj});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    // The camera casts nothing: its frustum has no picture.
    EXPECT_FALSE(QFileInfo::exists(dir.filePath(QStringLiteral("sel_Witness_Frustum.png"))));
    EXPECT_FALSE(QFileInfo::exists(dir.filePath(QStringLiteral("sel_Wall_0.png"))));
    // The hidden guide panel was asked for by index, so it comes with its guide.
    EXPECT_EQ(QImage(dir.filePath(QStringLiteral("sel_Guide_2.png"))).size(), QSize(1920, 1200));
    const QByteArray text = readFileBytes(obj);
    EXPECT_TRUE(text.contains("g Guide_2\n"));
    EXPECT_TRUE(text.contains("g Witness_Frustum\n"));
    EXPECT_FALSE(text.contains("g Wall_0"));
}

TEST(ExportCommand, RefusesBadArguments)
{
    QTemporaryDir dir;
    const QString project = writeExportProject(dir);
    const QString out = dir.filePath(QStringLiteral("x.obj"));
    CliRun run = exportRun({project, QStringLiteral("--format"), QStringLiteral("stl"), QStringLiteral("-o"), out});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_TRUE(run.err.contains(QStringLiteral("--format takes one of obj"))) << run.err.toStdString();
    run = exportRun({project, QStringLiteral("--format"), QStringLiteral("obj"), QStringLiteral("--objects"),
                     QStringLiteral("0,x"), QStringLiteral("-o"), out});
    EXPECT_EQ(run.exitCode, 2);
    run = exportRun({project, QStringLiteral("--format"), QStringLiteral("obj"), QStringLiteral("--objects"),
                     QStringLiteral("9"), QStringLiteral("-o"), out});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(run.err.contains(QStringLiteral("there is no object 9"))) << run.err.toStdString();
    EXPECT_FALSE(QFileInfo::exists(out));
}

TEST(ExportCommand, EverySceneFormatAndTheGuideMesh)
{
    QTemporaryDir dir;
    const QString project = writeExportProject(dir);
    struct Case {
        QStringList args;
        const char *mainFile;
        const char *firstLine;
    };
    const Case cases[] = {
        {{QStringLiteral("--format"), QStringLiteral("fbx")}, "s.fbx", "; FBX 7.4.0 project file exported by VantreoGuide"},
        {{QStringLiteral("--format"), QStringLiteral("usd")}, "s.usda", "#usda 1.0"},
        {{QStringLiteral("--format"), QStringLiteral("maya"), QStringLiteral("--projector"), QStringLiteral("1")}, "s.ma",
         "//Maya ASCII projector scene exported by VantreoGuide"},
        {{QStringLiteral("--format"), QStringLiteral("view-mesh"), QStringLiteral("--projector"), QStringLiteral("1"),
          QStringLiteral("--flatten"), QStringLiteral("--crop"), QStringLiteral("--margin"), QStringLiteral("20")},
         "vm.obj", "# Vantreo Guide Projector View Mesh OBJ"},
    };
    for (const Case &c : cases) {
        const QString out = dir.filePath(QString::fromLatin1(c.mainFile));
        const CliRun run = exportRun(QStringList{project} + c.args + QStringList{QStringLiteral("-o"), out});
        ASSERT_EQ(run.exitCode, 0) << c.mainFile << ": " << run.err.toStdString();
        EXPECT_TRUE(readFileBytes(out).startsWith(QByteArray(c.firstLine) + '\n')) << c.mainFile;
        EXPECT_TRUE(run.out.startsWith(QDir::toNativeSeparators(QFileInfo(out).absoluteFilePath()))) << c.mainFile;
    }
    EXPECT_TRUE(readFileBytes(dir.filePath(QStringLiteral("vm.obj")))
                    .contains("# Mode: 2D, Clip: On, Normalize: Off, Frame Margin: 20 px\n"));
    // Maya without a lens chosen says what to do.
    CliRun run = exportRun({project, QStringLiteral("--format"), QStringLiteral("maya"), QStringLiteral("-o"),
                            dir.filePath(QStringLiteral("none.ma"))});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(run.err.contains(QStringLiteral("Select a projector or camera object first."))) << run.err.toStdString();

    const QString base = dir.filePath(QStringLiteral("guide1"));
    run = runCli({QStringLiteral("export-guide-mesh"), project, QStringLiteral("--guide"), QStringLiteral("1"),
                  QStringLiteral("-o"), base});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_EQ(run.out.count(QLatin1Char('\n')), 4);
    EXPECT_EQ(QImage(base + QStringLiteral("_VantreoGuide_Object.png")).size(), QSize(600, 400));
    EXPECT_TRUE(QFileInfo::exists(base + QStringLiteral("_maya_surface.mel")));
    run = runCli({QStringLiteral("export-guide-mesh"), project, QStringLiteral("--guide"), QStringLiteral("5"),
                  QStringLiteral("-o"), base});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(run.err.contains(QStringLiteral("there is no guide 5")));
}
