#include "canvas/CanvasPainter.h"
#include "exchange/ExporterTable.h"
#include "exchange/TabViewDocument.h"
#include "project/ProjectFile.h"

#include <QBuffer>
#include <QFile>
#include <QSet>
#include <QDir>
#include <QImageReader>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QXmlStreamReader>

#include <gtest/gtest.h>
#include <zip.h>

#include <map>

namespace {

using namespace vg::exchange;

// A guide, a canvas with a custom title and a canvas with its title hidden.
ProjectDocument threeTabs()
{
    ProjectDocument doc;
    GuideSettings guide;
    guide.pixelWidth = 400;
    guide.pixelHeight = 250;
    guide.realWidth = 4000;
    guide.realHeight = 2500;
    guide.documentTitleBackgroundColor = QColor(200, 30, 30);
    doc.guides = {guide};
    CanvasObjectSettings shown;
    shown.guide_index = 0;
    CanvasTabSettings titled;
    titled.title = QStringLiteral("Canvas 1");
    titled.document_custom_title_enabled = true;
    titled.document_custom_title = QStringLiteral("Front of house");
    titled.document_title_background_color = QColor(20, 160, 40);
    titled.objects = {shown};
    CanvasTabSettings bare = titled;
    bare.document_title_visible = false;
    doc.canvasTabs = {titled, bare};
    doc.tabs = {{QStringLiteral("canvas"), 1}, {QStringLiteral("guide"), 0}, {QStringLiteral("canvas"), 0}};
    return doc;
}

struct Archive {
    std::vector<std::string> names;
    std::map<std::string, QByteArray> data;
    std::map<std::string, time_t> times;
};

bool readArchive(const QString &path, Archive *out)
{
    int code = 0;
    zip_t *zip = zip_open(QFile::encodeName(path).constData(), ZIP_RDONLY, &code);
    if (!zip)
        return false;
    const zip_int64_t n = zip_get_num_entries(zip, 0);
    for (zip_int64_t i = 0; i < n; ++i) {
        zip_stat_t st;
        zip_stat_index(zip, zip_uint64_t(i), 0, &st);
        QByteArray bytes(qsizetype(st.size), Qt::Uninitialized);
        zip_file_t *f = zip_fopen_index(zip, zip_uint64_t(i), 0);
        const bool ok = f && zip_fread(f, bytes.data(), st.size) == zip_int64_t(st.size);
        if (f)
            zip_fclose(f);
        if (!ok) {
            zip_discard(zip);
            return false;
        }
        out->names.push_back(st.name);
        out->data[st.name] = bytes;
        out->times[st.name] = st.mtime;
    }
    zip_discard(zip);
    return true;
}

// Attribute values of every element named `element` in a well-formed document; fails the
// test for a malformed one.
QList<QXmlStreamAttributes> elements(const QByteArray &xml, const QString &element)
{
    QList<QXmlStreamAttributes> out;
    QXmlStreamReader reader(xml);
    while (!reader.atEnd()) {
        if (reader.readNext() == QXmlStreamReader::StartElement && reader.name() == element)
            out.append(reader.attributes());
    }
    EXPECT_FALSE(reader.hasError()) << reader.errorString().toStdString() << "\n" << xml.left(300).toStdString();
    return out;
}

QString relTarget(const QByteArray &rels, const QString &id)
{
    for (const QXmlStreamAttributes &a : elements(rels, QStringLiteral("Relationship"))) {
        if (a.value(QStringLiteral("Id")) == id)
            return a.value(QStringLiteral("Target")).toString();
    }
    return QString();
}

} // namespace

TEST(TabViewDocument, PagesFollowTabOrderAndTitleBands)
{
    QList<QImage> pages;
    QString error;
    ASSERT_TRUE(projectDocumentPages(threeTabs(), nullptr, {}, &pages, &error)) << error.toStdString();
    ASSERT_EQ(pages.size(), 3);
    const QColor page(0x20, 0x22, 0x26);
    for (const QImage &p : pages)
        EXPECT_EQ(p.size(), QSize(2000, 1250));
    // Tab 1: the canvas with its title hidden, no band at the top.
    EXPECT_EQ(pages[0].pixelColor(1990, 10), page);
    // Tab 2: the guide's band in its colour; tab 3: the custom-titled canvas in its colour.
    EXPECT_EQ(pages[1].pixelColor(1990, 10), QColor(200, 30, 30));
    EXPECT_EQ(pages[2].pixelColor(1990, 10), QColor(20, 160, 40));
    // The custom title is written in the band: white glyph pixels in its left half.
    int white = 0;
    for (int y = 0; y < 100; ++y)
        for (int x = 0; x < 1000; ++x)
            white += qGray(pages[2].pixel(x, y)) > 230;
    EXPECT_GT(white, 200);
    // Below the band both canvases show the same picture, the hidden-title one larger.
    EXPECT_NE(pages[0].pixelColor(1000, 625), page);
}

TEST(TabViewDocument, PdfHasOnePagePerTabOnTheWidePage)
{
    QTemporaryDir dir;
    QList<QImage> pages;
    QString error;
    ASSERT_TRUE(projectDocumentPages(threeTabs(), nullptr, {}, &pages, &error));
    const QString pdf = dir.filePath(QStringLiteral("views.pdf"));
    ASSERT_TRUE(writeTabViewPdf(pdf, pages, &error)) << error.toStdString();

    QProcess info;
    info.start(QStringLiteral("pdfinfo"), {pdf});
    ASSERT_TRUE(info.waitForFinished(30000));
    const QString out = QString::fromUtf8(info.readAllStandardOutput());
    EXPECT_TRUE(out.contains(QRegularExpression(QStringLiteral("Pages:\\s+3\\n")))) << out.toStdString();
    const QRegularExpressionMatch size = QRegularExpression(QStringLiteral("Page size:\\s+([\\d.]+) x ([\\d.]+) pts")).match(out);
    ASSERT_TRUE(size.hasMatch()) << out.toStdString();
    EXPECT_NEAR(size.captured(1).toDouble(), 960.0, 1.0);
    EXPECT_NEAR(size.captured(2).toDouble(), 600.0, 1.0);

    EXPECT_FALSE(writeTabViewPdf(dir.path(), pages, &error)); // a folder, not a file
    EXPECT_EQ(error, QStringLiteral("Could not create PDF writer."));
}

TEST(TabViewDocument, PptxPartsIdsAndTargetsAreConsistent)
{
    QTemporaryDir dir;
    QList<QImage> pages;
    QString error;
    ASSERT_TRUE(projectDocumentPages(threeTabs(), nullptr, {}, &pages, &error));
    const QString pptx = dir.filePath(QStringLiteral("views.pptx"));
    const time_t before = time(nullptr);
    ASSERT_TRUE(writeTabViewPptx(pptx, pages, &error)) << error.toStdString();

    Archive archive;
    ASSERT_TRUE(readArchive(pptx, &archive));
    std::vector<std::string> expected = {"[Content_Types].xml", "_rels/.rels", "docProps/core.xml", "docProps/app.xml",
                                         "ppt/presentation.xml", "ppt/_rels/presentation.xml.rels",
                                         "ppt/slideMasters/slideMaster1.xml", "ppt/slideMasters/_rels/slideMaster1.xml.rels",
                                         "ppt/slideLayouts/slideLayout1.xml", "ppt/slideLayouts/_rels/slideLayout1.xml.rels",
                                         "ppt/theme/theme1.xml", "ppt/media/image1.png", "ppt/media/image2.png",
                                         "ppt/media/image3.png"};
    for (int i = 1; i <= 3; ++i) {
        expected.push_back("ppt/slides/slide" + std::to_string(i) + ".xml");
        expected.push_back("ppt/slides/_rels/slide" + std::to_string(i) + ".xml.rels");
    }
    EXPECT_EQ(archive.names, expected);
    // DOS times hold local time to two seconds.
    EXPECT_LE(std::abs(double(archive.times["ppt/presentation.xml"] - before)), 4.0);

    // Every XML part is well-formed.
    for (const std::string &name : archive.names) {
        if (name.find(".png") == std::string::npos)
            elements(archive.data[name], QStringLiteral("none"));
    }
    // The presentation's slide list points through rId2..rId4 at slides 1..3, master at rId1.
    const QByteArray &rels = archive.data["ppt/_rels/presentation.xml.rels"];
    EXPECT_EQ(relTarget(rels, QStringLiteral("rId1")), QStringLiteral("slideMasters/slideMaster1.xml"));
    const QList<QXmlStreamAttributes> slideIds = elements(archive.data["ppt/presentation.xml"], QStringLiteral("sldId"));
    ASSERT_EQ(slideIds.size(), 3);
    QSet<QString> ids;
    for (int i = 0; i < 3; ++i) {
        const QString rid = slideIds[i].value(QStringLiteral("r:id")).toString();
        EXPECT_EQ(rid, QStringLiteral("rId%1").arg(i + 2));
        EXPECT_EQ(relTarget(rels, rid), QStringLiteral("slides/slide%1.xml").arg(i + 1));
        ids.insert(slideIds[i].value(QStringLiteral("id")).toString());
        EXPECT_GE(slideIds[i].value(QStringLiteral("id")).toInt(), 256);
    }
    EXPECT_EQ(ids.size(), 3);
    const QList<QXmlStreamAttributes> size = elements(archive.data["ppt/presentation.xml"], QStringLiteral("sldSz"));
    ASSERT_EQ(size.size(), 1);
    EXPECT_EQ(size[0].value(QStringLiteral("cx")), QStringLiteral("12192000"));
    EXPECT_EQ(size[0].value(QStringLiteral("cy")), QStringLiteral("7620000"));
    EXPECT_EQ(size[0].value(QStringLiteral("type")), QStringLiteral("screen16x10"));

    // Each slide shows its own image over the whole slide; the image is that page.
    QStringList overrides;
    for (const QXmlStreamAttributes &a : elements(archive.data["[Content_Types].xml"], QStringLiteral("Override")))
        overrides << a.value(QStringLiteral("PartName")).toString();
    for (int i = 1; i <= 3; ++i) {
        EXPECT_TRUE(overrides.contains(QStringLiteral("/ppt/slides/slide%1.xml").arg(i)));
        const QByteArray &slide = archive.data["ppt/slides/slide" + std::to_string(i) + ".xml"];
        const QByteArray &slideRels = archive.data["ppt/slides/_rels/slide" + std::to_string(i) + ".xml.rels"];
        const QList<QXmlStreamAttributes> blips = elements(slide, QStringLiteral("blip"));
        ASSERT_EQ(blips.size(), 1);
        EXPECT_EQ(relTarget(slideRels, blips[0].value(QStringLiteral("r:embed")).toString()),
                  QStringLiteral("../media/image%1.png").arg(i));
        EXPECT_EQ(relTarget(slideRels, QStringLiteral("rId2")), QStringLiteral("../slideLayouts/slideLayout1.xml"));
        const QList<QXmlStreamAttributes> names = elements(slide, QStringLiteral("cNvPr"));
        EXPECT_EQ(names.last().value(QStringLiteral("name")), QStringLiteral("Document Page %1").arg(i));
        const QList<QXmlStreamAttributes> ext = elements(slide, QStringLiteral("ext"));
        EXPECT_EQ(ext.last().value(QStringLiteral("cx")), QStringLiteral("12192000"));
        const QImage image = QImage::fromData(archive.data["ppt/media/image" + std::to_string(i) + ".png"], "PNG");
        EXPECT_EQ(image.convertToFormat(QImage::Format_RGB32), pages[i - 1].convertToFormat(QImage::Format_RGB32));
    }
    EXPECT_TRUE(archive.data["docProps/app.xml"].contains("<Slides>3</Slides>"));
    EXPECT_TRUE(archive.data["docProps/core.xml"].contains("<dc:title>VantreoGuide Tab Views</dc:title>"));
    EXPECT_TRUE(archive.data["ppt/theme/theme1.xml"].contains("name=\"VantreoGuide\""));

    EXPECT_FALSE(writeTabViewPptx(dir.filePath(QStringLiteral("no/such/folder/x.pptx")), pages, &error));
    EXPECT_EQ(error, QStringLiteral("Could not open %1 for writing.").arg(dir.filePath(QStringLiteral("no/such/folder/x.pptx"))));
}

TEST(TabViewDocument, ExporterTableOffersBothDocumentsForTheProject)
{
    const ExporterEntry *pdf = findExporter(QStringLiteral("pdf"));
    const ExporterEntry *pptx = findExporter(QStringLiteral("pptx"));
    ASSERT_TRUE(pdf && pptx);
    EXPECT_EQ(pdf->fileFilter(), QStringLiteral("PDF Files (*.pdf)"));
    EXPECT_EQ(pptx->fileFilter(), QStringLiteral("PowerPoint Files (*.pptx)"));
    EXPECT_EQ(pdf->displayMenuText(), QStringLiteral("Export Tab Views to PDF..."));
    EXPECT_EQ(pptx->subject, ExportSubject::Project);

    QTemporaryDir dir;
    ExportRequest request;
    QStringList written;
    QString error;
    EXPECT_FALSE(pdf->run(request, dir.filePath(QStringLiteral("a.pdf")), &written, &error));
    EXPECT_EQ(error, QStringLiteral("There are no tab views to export."));
    const ProjectDocument doc = threeTabs();
    request.project = &doc;
    ASSERT_TRUE(pptx->run(request, dir.filePath(QStringLiteral("a.pptx")), &written, &error)) << error.toStdString();
    EXPECT_EQ(written, QStringList{dir.filePath(QStringLiteral("a.pptx"))});
}
