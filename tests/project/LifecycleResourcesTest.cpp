#include "project/PortablePackage.h"
#include "project/ResourceCollector.h"
#include "project/ZipArchive.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace vg;

namespace {

QString writeFile(const QString &path, const QByteArray &bytes)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    file.open(QIODevice::WriteOnly);
    file.write(bytes);
    return path;
}

QByteArray readFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// Two different files both called "logo.png", one shared texture, one missing picture.
ProjectDocument projectWithResources(const QString &root)
{
    ProjectDocument doc;
    GuideSettings first;
    first.logoPath = writeFile(root + QStringLiteral("/a/logo.png"), "first logo");
    GuideLayerObject layer;
    layer.filePath = writeFile(root + QStringLiteral("/b/logo.png"), "second logo");
    first.imageObjects.append(layer);
    GuideLayerObject mask;
    mask.type = QStringLiteral("mask");
    mask.filePath = root + QStringLiteral("/not-a-resource.png");
    first.imageObjects.append(mask);
    doc.guides.append(first);

    CanvasTabSettings canvas;
    CanvasObjectSettings picture;
    picture.image_file_path = root + QStringLiteral("/gone/picture.png");
    canvas.objects.append(picture);
    doc.canvasTabs.append(canvas);

    Guide3DViewSettings view = Guide3DViewSettings::created();
    GuideObject wall;
    wall.texture_file_path = writeFile(root + QStringLiteral("/tex/wall.jpg"), "wall");
    GuideObject projector;
    projector.projector_image_file_path = wall.texture_file_path;
    view.objects = {wall, projector};
    doc.views.append(view);
    doc.activeView = view;
    return doc;
}

} // namespace

TEST(LifecycleResources, ReferencesNameTheirCategories)
{
    QTemporaryDir tmp;
    const auto refs = resources::collectReferences(projectWithResources(tmp.path()));
    QStringList categories;
    for (const auto &ref : refs)
        categories << ref.category;
    // The active view repeats the first view, so its two paths come twice.
    EXPECT_EQ(categories, (QStringList{"Guide logo", "Guide image object", "Canvas image object", "Object texture",
                                       "Projection image", "Object texture", "Projection image"}));
}

TEST(LifecycleResources, CollectCopiesOnceRenamesClashesAndRewritesPaths)
{
    QTemporaryDir tmp;
    ProjectDocument doc = projectWithResources(tmp.path());
    const QString project = tmp.filePath(QStringLiteral("out"));
    resources::CollectReport report;
    QString error;
    ASSERT_TRUE(resources::collectResources(&doc, project + QStringLiteral("/source"), project, &report, &error)) << error.toStdString();

    EXPECT_EQ(doc.guides[0].logoPath, QStringLiteral("source/logo.png"));
    EXPECT_EQ(doc.guides[0].imageObjects[0].filePath, QStringLiteral("source/logo_1.png"));
    EXPECT_EQ(doc.guides[0].imageObjects[1].filePath, tmp.path() + QStringLiteral("/not-a-resource.png"));
    EXPECT_EQ(readFile(project + QStringLiteral("/source/logo.png")), QByteArray("first logo"));
    EXPECT_EQ(readFile(project + QStringLiteral("/source/logo_1.png")), QByteArray("second logo"));
    // Texture and projection image are one file: one copy, both paths on it.
    EXPECT_EQ(doc.views[0].objects[0].texture_file_path, QStringLiteral("source/wall.jpg"));
    EXPECT_EQ(doc.views[0].objects[1].projector_image_file_path, QStringLiteral("source/wall.jpg"));
    EXPECT_EQ(report.copied.size(), 3);
    // The missing picture keeps its path and is reported.
    EXPECT_EQ(doc.canvasTabs[0].objects[0].image_file_path, tmp.path() + QStringLiteral("/gone/picture.png"));
    ASSERT_EQ(report.missing.size(), 1);

    const QString text = resources::reportText(report);
    EXPECT_TRUE(text.startsWith(QStringLiteral("Resource folder:\n")));
    EXPECT_TRUE(text.contains(QStringLiteral("Missing files:\n") + QDir::toNativeSeparators(tmp.path() + QStringLiteral("/gone/picture.png"))));
    EXPECT_FALSE(text.contains(QStringLiteral("Failed files:")));

    // Read back beside the project, the relative paths point at the copies.
    resources::resolveRelativePaths(&doc, project);
    EXPECT_EQ(doc.guides[0].logoPath, project + QStringLiteral("/source/logo.png"));
}

TEST(LifecycleResources, EmptyProjectAndBadFolderTexts)
{
    QTemporaryDir tmp;
    ProjectDocument doc;
    doc.guides.append(GuideSettings());
    resources::CollectReport report;
    QString error;
    ASSERT_TRUE(resources::collectResources(&doc, tmp.filePath(QStringLiteral("source")), QString(), &report, &error));
    EXPECT_EQ(resources::reportText(report), QStringLiteral("No external resource files were found."));

    EXPECT_FALSE(resources::collectResources(&doc, QString(), QString(), &report, &error));
    EXPECT_EQ(error, QStringLiteral("Resource folder is empty."));

    writeFile(tmp.filePath(QStringLiteral("file")), "x");
    EXPECT_FALSE(resources::collectResources(&doc, tmp.filePath(QStringLiteral("file/source")), QString(), &report, &error));
    EXPECT_TRUE(error.startsWith(QStringLiteral("Could not create resource folder:\n")));
}

TEST(LifecyclePackage, LibrariesComeFromTheLoaderWithoutTheCRuntime)
{
    QString error;
    const QStringList libraries = package::bundledLibrariesFor({QCoreApplication::applicationFilePath()}, &error);
    ASSERT_TRUE(error.isEmpty()) << error.toStdString();
    bool hasQtCore = false;
    for (const QString &library : libraries) {
        const QString name = QFileInfo(library).fileName();
        hasQtCore |= name.startsWith(QStringLiteral("libQt6Core.so"));
        EXPECT_FALSE(name.startsWith(QStringLiteral("libc.so"))) << name.toStdString();
        EXPECT_TRUE(QFileInfo(library).isAbsolute());
    }
    EXPECT_TRUE(hasQtCore);
}

TEST(LifecyclePackage, PackageHoldsProgramEntriesLauncherSampleAndSources)
{
    QTemporaryDir tmp;
    // A stand-in application folder: a program, a "conf" entry and a plugin folder.
    const QString app = tmp.filePath(QStringLiteral("app"));
    const QString program = app + QStringLiteral("/VantreoGuide");
    QDir().mkpath(app);
    ASSERT_TRUE(QFile::copy(QStringLiteral("/bin/true"), program));
    writeFile(app + QStringLiteral("/conf/settings.ini"), "[a]");
    writeFile(app + QStringLiteral("/platforms/readme.txt"), "plugin");
    writeFile(app + QStringLiteral("/unrelated.txt"), "left out");

    package::PackageRequest request;
    request.applicationFile = program;
    request.applicationFolder = app;
    request.zipPath = tmp.filePath(QStringLiteral("share/package.zip"));
    QDir().mkpath(tmp.filePath(QStringLiteral("share")));
    request.project = projectWithResources(tmp.path());
    request.now = QDateTime(QDate(2026, 1, 2), QTime(3, 4, 5));

    QString report, error;
    ASSERT_TRUE(package::createPortablePackage(request, &report, &error)) << error.toStdString();
    EXPECT_TRUE(QFileInfo(request.zipPath).isFile());
    EXPECT_FALSE(QFileInfo::exists(tmp.filePath(QStringLiteral("share/VantreoGuide_20260102_030405"))));
    EXPECT_TRUE(report.contains(QStringLiteral("Missing files:")));

    const QString out = tmp.filePath(QStringLiteral("unpacked"));
    ASSERT_TRUE(zip::extractArchive(request.zipPath, out, false, &error)) << error.toStdString();
    const QDir root(out + QStringLiteral("/VantreoGuide_20260102_030405"));
    EXPECT_TRUE(root.exists(QStringLiteral("VantreoGuide")));
    EXPECT_TRUE(root.exists(QStringLiteral("conf/settings.ini")));
    EXPECT_TRUE(root.exists(QStringLiteral("platforms/readme.txt")));
    EXPECT_FALSE(root.exists(QStringLiteral("unrelated.txt")));
    EXPECT_TRUE(root.exists(QStringLiteral("source/logo.png")));
    const QByteArray launcher = readFile(root.filePath(QStringLiteral("VantreoGuide.sh")));
    EXPECT_TRUE(launcher.contains("LD_LIBRARY_PATH=\"$here/lib"));
    EXPECT_TRUE(launcher.contains("QT_PLUGIN_PATH="));
    EXPECT_TRUE(QFileInfo(root.filePath(QStringLiteral("VantreoGuide.sh"))).isExecutable());
    EXPECT_TRUE(QFileInfo(root.filePath(QStringLiteral("VantreoGuide"))).isExecutable());

    ProjectDocument sample;
    ASSERT_TRUE(loadProjectDocument(root.filePath(QStringLiteral("sample.vgs")), &sample, &error)) << error.toStdString();
    EXPECT_EQ(sample.guides[0].logoPath, QStringLiteral("source/logo.png"));
}

TEST(LifecyclePackage, MissingApplicationFolderIsReported)
{
    QTemporaryDir tmp;
    package::PackageRequest request;
    request.applicationFolder = tmp.filePath(QStringLiteral("nowhere"));
    request.applicationFile = tmp.filePath(QStringLiteral("nowhere/VantreoGuide"));
    request.zipPath = tmp.filePath(QStringLiteral("p.zip"));
    QString error;
    EXPECT_FALSE(package::createPortablePackage(request, nullptr, &error));
    EXPECT_EQ(error, QStringLiteral("Application folder was not found."));
    EXPECT_FALSE(QFileInfo::exists(request.zipPath));
}
