#include "cli/CliTestSupport.h"

#include "project/ProjectFile.h"

#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <zip.h>

namespace {

QString writeThreeTabProject(const QTemporaryDir &dir)
{
    ProjectDocument doc;
    GuideSettings guide;
    guide.pixelWidth = 400;
    guide.pixelHeight = 250;
    guide.realWidth = 4000;
    guide.realHeight = 2500;
    doc.guides = {guide};
    CanvasTabSettings canvas;
    canvas.title = QStringLiteral("Sheet");
    CanvasObjectSettings object;
    object.guide_index = 0;
    canvas.objects = {object};
    doc.canvasTabs = {canvas};
    doc.views = {Guide3DViewSettings::created()};
    doc.activeView = doc.views.first();
    doc.tabs = {{QStringLiteral("guide"), 0}, {QStringLiteral("3dView"), 0}, {QStringLiteral("canvas"), 0}};
    const QString path = dir.filePath(QStringLiteral("p.vgs"));
    QString error;
    EXPECT_TRUE(saveProjectDocument(path, doc, &error)) << error.toStdString();
    return path;
}

} // namespace

TEST(ExportDocumentCli, PdfAndPptxHoldOnePagePerTab)
{
    QTemporaryDir dir;
    const QString project = writeThreeTabProject(dir);
    CliRun run = runCli({QStringLiteral("export-document"), project, QStringLiteral("--format"), QStringLiteral("pdf"),
                         QStringLiteral("-o"), dir.filePath(QStringLiteral("views"))},
                        CliDisplay::Inherit);
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    QProcess info;
    info.start(QStringLiteral("pdfinfo"), {dir.filePath(QStringLiteral("views.pdf"))});
    ASSERT_TRUE(info.waitForFinished(30000));
    const QString text = QString::fromUtf8(info.readAllStandardOutput());
    EXPECT_TRUE(text.contains(QRegularExpression(QStringLiteral("Pages:\\s+3\\n")))) << text.toStdString();
    EXPECT_TRUE(text.contains(QRegularExpression(QStringLiteral("Page size:\\s+960(\\.\\d+)? x 600(\\.\\d+)? pts"))))
        << text.toStdString();

    run = runCli({QStringLiteral("export-document"), project, QStringLiteral("--format"), QStringLiteral("pptx"),
                  QStringLiteral("-o"), dir.filePath(QStringLiteral("views.pptx"))},
                 CliDisplay::Inherit);
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    int code = 0;
    zip_t *zip = zip_open(QFile::encodeName(dir.filePath(QStringLiteral("views.pptx"))).constData(), ZIP_RDONLY, &code);
    ASSERT_NE(zip, nullptr);
    EXPECT_GE(zip_name_locate(zip, "ppt/media/image3.png", 0), 0);
    EXPECT_LT(zip_name_locate(zip, "ppt/media/image4.png", 0), 0);
    zip_discard(zip);

    EXPECT_EQ(runCli({QStringLiteral("export-document"), project, QStringLiteral("--format"), QStringLiteral("docx"),
                      QStringLiteral("-o"), dir.filePath(QStringLiteral("x"))})
                  .exitCode,
              2);
    EXPECT_EQ(runCli({QStringLiteral("export-document"), project, QStringLiteral("--format"), QStringLiteral("pdf")}).exitCode, 2);
}
