#include "exchange/TabViewDocument.h"

#include "canvas/CanvasGuideSources.h"
#include "canvas/CanvasPainter.h"
#include "exchange/ExportImageSource.h"
#include "guide/GuideRenderer.h"
#include "guide/PngWriter.h"
#include "guide/ProjectorLayout.h"
#include "project/ProjectFile.h"
#include "common/SettingsKeys.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QSet>

namespace vg::exchange {

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("TabViewDocument", text);
}

const char *const kXmlDeclaration = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n";
const char *const kNamespaces = "xmlns:a=\"http://schemas.openxmlformats.org/drawingml/2006/main\" "
                                "xmlns:r=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships\" "
                                "xmlns:p=\"http://schemas.openxmlformats.org/presentationml/2006/main\"";
const char *const kEmptyGroup = "<p:nvGrpSpPr><p:cNvPr id=\"1\" name=\"\"/><p:cNvGrpSpPr/><p:nvPr/></p:nvGrpSpPr>"
                                "<p:grpSpPr><a:xfrm><a:off x=\"0\" y=\"0\"/><a:ext cx=\"0\" cy=\"0\"/>"
                                "<a:chOff x=\"0\" y=\"0\"/><a:chExt cx=\"0\" cy=\"0\"/></a:xfrm></p:grpSpPr>";

QByteArray xmlPart(const QString &body)
{
    return QByteArray(kXmlDeclaration) + body.toUtf8();
}

QString relationships(const QList<QPair<QString, QString>> &typeAndTarget)
{
    QString out = QStringLiteral("<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">");
    for (int i = 0; i < typeAndTarget.size(); ++i)
        out += QStringLiteral("<Relationship Id=\"rId%1\" Type=\"%2\" Target=\"%3\"/>")
                   .arg(i + 1)
                   .arg(typeAndTarget[i].first, typeAndTarget[i].second);
    return out + QStringLiteral("</Relationships>");
}

const QString kRel = QStringLiteral("http://schemas.openxmlformats.org/officeDocument/2006/relationships/");

QString contentTypes(int slides)
{
    const QString pml = QStringLiteral("application/vnd.openxmlformats-officedocument.presentationml.");
    QString out = QStringLiteral(
        "<Types xmlns=\"http://schemas.openxmlformats.org/package/2006/content-types\">"
        "<Default Extension=\"rels\" ContentType=\"application/vnd.openxmlformats-package.relationships+xml\"/>"
        "<Default Extension=\"xml\" ContentType=\"application/xml\"/>"
        "<Default Extension=\"png\" ContentType=\"image/png\"/>");
    auto override = [&](const QString &part, const QString &type) {
        out += QStringLiteral("<Override PartName=\"%1\" ContentType=\"%2\"/>").arg(part, type);
    };
    override(QStringLiteral("/ppt/presentation.xml"), pml + QStringLiteral("presentation.main+xml"));
    override(QStringLiteral("/ppt/slideMasters/slideMaster1.xml"), pml + QStringLiteral("slideMaster+xml"));
    override(QStringLiteral("/ppt/slideLayouts/slideLayout1.xml"), pml + QStringLiteral("slideLayout+xml"));
    override(QStringLiteral("/ppt/theme/theme1.xml"), QStringLiteral("application/vnd.openxmlformats-officedocument.theme+xml"));
    override(QStringLiteral("/docProps/core.xml"), QStringLiteral("application/vnd.openxmlformats-package.core-properties+xml"));
    override(QStringLiteral("/docProps/app.xml"),
             QStringLiteral("application/vnd.openxmlformats-officedocument.extended-properties+xml"));
    for (int i = 1; i <= slides; ++i)
        override(QStringLiteral("/ppt/slides/slide%1.xml").arg(i), pml + QStringLiteral("slide+xml"));
    return out + QStringLiteral("</Types>");
}

QString coreProperties(const QDateTime &nowUtc)
{
    const QString when = nowUtc.toUTC().toString(QStringLiteral("yyyy-MM-ddTHH:mm:ssZ"));
    return QStringLiteral(
               "<cp:coreProperties xmlns:cp=\"http://schemas.openxmlformats.org/package/2006/metadata/core-properties\" "
               "xmlns:dc=\"http://purl.org/dc/elements/1.1/\" xmlns:dcterms=\"http://purl.org/dc/terms/\" "
               "xmlns:dcmitype=\"http://purl.org/dc/dcmitype/\" xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\">"
               "<dc:title>VantreoGuide Tab Views</dc:title><dc:creator>VantreoGuide</dc:creator>"
               "<cp:lastModifiedBy>VantreoGuide</cp:lastModifiedBy>"
               "<dcterms:created xsi:type=\"dcterms:W3CDTF\">%1</dcterms:created>"
               "<dcterms:modified xsi:type=\"dcterms:W3CDTF\">%1</dcterms:modified></cp:coreProperties>")
        .arg(when);
}

QString appProperties(int slides)
{
    return QStringLiteral("<Properties xmlns=\"http://schemas.openxmlformats.org/officeDocument/2006/extended-properties\" "
                          "xmlns:vt=\"http://schemas.openxmlformats.org/officeDocument/2006/docPropsVTypes\">"
                          "<Application>VantreoGuide</Application>"
                          "<PresentationFormat>On-screen Show (16:10)</PresentationFormat>"
                          "<Slides>%1</Slides><Company>Vantreo</Company></Properties>")
        .arg(slides);
}

QString presentation(int slides)
{
    QString ids;
    for (int i = 1; i <= slides; ++i)
        ids += QStringLiteral("<p:sldId id=\"%1\" r:id=\"rId%2\"/>").arg(255 + i).arg(i + 1);
    return QStringLiteral("<p:presentation %1 saveSubsetFonts=\"1\">"
                          "<p:sldMasterIdLst><p:sldMasterId id=\"2147483648\" r:id=\"rId1\"/></p:sldMasterIdLst>"
                          "<p:sldIdLst>%2</p:sldIdLst>"
                          "<p:sldSz cx=\"%3\" cy=\"%4\" type=\"screen16x10\"/>"
                          "<p:notesSz cx=\"6858000\" cy=\"9144000\"/></p:presentation>")
        .arg(QLatin1String(kNamespaces), ids)
        .arg(kSlideWidthEmu)
        .arg(kSlideHeightEmu);
}

QString slideMaster()
{
    return QStringLiteral("<p:sldMaster %1><p:cSld><p:bg><p:bgPr><a:solidFill><a:schemeClr val=\"bg1\"/></a:solidFill>"
                          "<a:effectLst/></p:bgPr></p:bg><p:spTree>%2</p:spTree></p:cSld>"
                          "<p:clrMap bg1=\"lt1\" tx1=\"dk1\" bg2=\"lt2\" tx2=\"dk2\" accent1=\"accent1\" accent2=\"accent2\" "
                          "accent3=\"accent3\" accent4=\"accent4\" accent5=\"accent5\" accent6=\"accent6\" hlink=\"hlink\" "
                          "folHlink=\"folHlink\"/>"
                          "<p:sldLayoutIdLst><p:sldLayoutId id=\"2147483649\" r:id=\"rId1\"/></p:sldLayoutIdLst>"
                          "<p:txStyles><p:titleStyle/><p:bodyStyle/><p:otherStyle/></p:txStyles></p:sldMaster>")
        .arg(QLatin1String(kNamespaces), QLatin1String(kEmptyGroup));
}

QString slideLayout()
{
    return QStringLiteral("<p:sldLayout %1 type=\"blank\" preserve=\"1\"><p:cSld name=\"Blank\"><p:spTree>%2</p:spTree>"
                          "</p:cSld><p:clrMapOvr><a:masterClrMapping/></p:clrMapOvr></p:sldLayout>")
        .arg(QLatin1String(kNamespaces), QLatin1String(kEmptyGroup));
}

QString theme()
{
    auto solid = [](const char *c) { return QStringLiteral("<a:solidFill><a:schemeClr val=\"%1\"/></a:solidFill>").arg(QLatin1String(c)); };
    const QString fills = solid("phClr") + solid("phClr") + solid("phClr");
    QString lines;
    for (int w : {6350, 12700, 19050})
        lines += QStringLiteral("<a:ln w=\"%1\">%2</a:ln>").arg(w).arg(solid("phClr"));
    const QString effects = QStringLiteral("<a:effectStyle><a:effectLst/></a:effectStyle>").repeated(3);
    auto colour = [](const char *name, const char *rgb) {
        return QStringLiteral("<a:%1><a:srgbClr val=\"%2\"/></a:%1>").arg(QLatin1String(name), QLatin1String(rgb));
    };
    const QString scheme = colour("dk1", "111111") + colour("lt1", "FFFFFF") + colour("dk2", "1F1F1F")
                           + colour("lt2", "EEEEEE") + colour("accent1", "4472C4") + colour("accent2", "ED7D31")
                           + colour("accent3", "A5A5A5") + colour("accent4", "FFC000") + colour("accent5", "5B9BD5")
                           + colour("accent6", "70AD47") + colour("hlink", "0563C1") + colour("folHlink", "954F72");
    const QString font = QStringLiteral("<a:latin typeface=\"Arial\"/><a:ea typeface=\"\"/><a:cs typeface=\"\"/>");
    return QStringLiteral("<a:theme xmlns:a=\"http://schemas.openxmlformats.org/drawingml/2006/main\" name=\"VantreoGuide\">"
                          "<a:themeElements><a:clrScheme name=\"VantreoGuide\">%1</a:clrScheme>"
                          "<a:fontScheme name=\"VantreoGuide\"><a:majorFont>%2</a:majorFont><a:minorFont>%2</a:minorFont>"
                          "</a:fontScheme><a:fmtScheme name=\"VantreoGuide\"><a:fillStyleLst>%3</a:fillStyleLst>"
                          "<a:lnStyleLst>%4</a:lnStyleLst><a:effectStyleLst>%5</a:effectStyleLst>"
                          "<a:bgFillStyleLst>%3</a:bgFillStyleLst></a:fmtScheme></a:themeElements></a:theme>")
        .arg(scheme, font, fills, lines, effects);
}

QString slide(int number)
{
    return QStringLiteral(
               "<p:sld %1><p:cSld><p:bg><p:bgPr><a:solidFill><a:srgbClr val=\"FFFFFF\"/></a:solidFill><a:effectLst/>"
               "</p:bgPr></p:bg><p:spTree>%2<p:pic><p:nvPicPr><p:cNvPr id=\"2\" name=\"Document Page %3\"/>"
               "<p:cNvPicPr><a:picLocks noChangeAspect=\"1\"/></p:cNvPicPr><p:nvPr/></p:nvPicPr>"
               "<p:blipFill><a:blip r:embed=\"rId1\"/><a:stretch><a:fillRect/></a:stretch></p:blipFill>"
               "<p:spPr><a:xfrm><a:off x=\"0\" y=\"0\"/><a:ext cx=\"%4\" cy=\"%5\"/></a:xfrm>"
               "<a:prstGeom prst=\"rect\"><a:avLst/></a:prstGeom><a:ln><a:noFill/></a:ln></p:spPr></p:pic>"
               "</p:spTree></p:cSld><p:clrMapOvr><a:masterClrMapping/></p:clrMapOvr></p:sld>")
        .arg(QLatin1String(kNamespaces), QLatin1String(kEmptyGroup))
        .arg(number)
        .arg(kSlideWidthEmu)
        .arg(kSlideHeightEmu);
}

bool writeDocumentPages(const ExportRequest &request, const QString &path, QStringList *written, QString *error,
                        bool pdf)
{
    if (!request.project) {
        *error = tr("There are no tab views to export.");
        return false;
    }
    QList<QImage> pages;
    if (!projectDocumentPages(*request.project, request.images, request.options.value(QStringLiteral("tabTitles")).toStringList(),
                              &pages, error))
        return false;
    if (pages.isEmpty()) {
        *error = tr("There are no tab views to export.");
        return false;
    }
    const bool ok = pdf ? writeTabViewPdf(path, pages, error) : writeTabViewPptx(path, pages, error);
    if (ok && written)
        *written = QStringList{path};
    return ok;
}

} // namespace

bool projectDocumentPages(const ProjectDocument &project, ExportImageSource *images, const QStringList &titles,
                          QList<QImage> *pages, QString *error)
{
    ExportImageSource coreImages(project.guides);
    ExportImageSource *source = images ? images : &coreImages;
    const QList<ProjectTabEntry> order = projectTabOrder(project);
    for (int n = 0; n < order.size(); ++n) {
        const ProjectTabEntry &entry = order[n];
        const QString given = n < titles.size() ? titles[n] : QString();
        DocumentTitleBand band;
        QImage view;
        if (entry.kind == QLatin1String(kGuideTabRecord)) {
            GuideSettings guide = project.guides[entry.index];
            applyGuideTabLoadStep(&guide);
            view = renderGuideImage(guide);
            const QString title = given.isEmpty() ? QStringLiteral("Guide %1").arg(entry.index + 1) : given;
            band.visible = guide.documentTitleVisible;
            band.text = guide.documentCustomTitleEnabled ? guide.documentCustomTitle : title;
            band.background = guide.documentTitleBackgroundColor;
        } else if (entry.kind == QLatin1String(kCanvasTabRecord)) {
            const CanvasTabSettings &canvas = project.canvasTabs[entry.index];
            const QString title = !given.isEmpty() ? given
                                  : !canvas.title.isEmpty() ? canvas.title
                                                            : QStringLiteral("Tab %1").arg(n + 1);
            view = renderCanvasImage(canvas, renderCanvasSources(project.guides, canvas)); // empty canvas: no view
            band = canvasDocumentTitle(canvas, title);
        } else {
            ExportViewRender request;
            request.size = QSize(1920, 1080);
            if (!source->renderSceneView(project.views[entry.index], request, &view, error))
                return false;
            band.text = QStringLiteral("3D Simulation");
        }
        const QImage page = composeDocumentPage(view, band);
        if (page.isNull()) {
            *error = tr("Could not encode slide image %1.").arg(n + 1);
            return false;
        }
        pages->append(page);
    }
    return true;
}

bool writeTabViewPdf(const QString &path, const QList<QImage> &pages, QString *error)
{
    {
        QPdfWriter writer(path);
        writer.setPageSize(QPageSize(QSizeF(kDocumentPageWidthMm, kDocumentPageHeightMm), QPageSize::Millimeter,
                                     QStringLiteral("Widescreen 16:10"), QPageSize::ExactMatch));
        writer.setPageOrientation(QPageLayout::Portrait);
        writer.setPageMargins(QMarginsF(0, 0, 0, 0), QPageLayout::Millimeter);
        writer.setResolution(150);
        writer.setCreator(QStringLiteral("VantreoGuide"));
        writer.setTitle(QStringLiteral("VantreoGuide Tab Views"));
        QPainter painter;
        if (!painter.begin(&writer)) {
            *error = tr("Could not create PDF writer.");
            return false;
        }
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        for (int i = 0; i < pages.size(); ++i) {
            if (i > 0 && !writer.newPage()) {
                *error = tr("PDF export failed.");
                return false;
            }
            painter.drawImage(QRect(0, 0, writer.width(), writer.height()), pages[i]);
        }
        if (!painter.end()) {
            *error = tr("PDF export failed.");
            return false;
        }
    }
    if (QFileInfo(path).size() <= 0) {
        *error = tr("PDF export failed.");
        return false;
    }
    return true;
}

QList<vg::zip::MemoryEntry> pptxParts(const QList<QByteArray> &slidePngs, const QDateTime &nowUtc)
{
    const int n = int(slidePngs.size());
    QList<vg::zip::MemoryEntry> parts;
    auto add = [&](const QString &name, const QByteArray &data) { parts.append({name, data}); };
    add(QStringLiteral("[Content_Types].xml"), xmlPart(contentTypes(n)));
    add(QStringLiteral("_rels/.rels"),
        xmlPart(relationships({{kRel + QStringLiteral("officeDocument"), QStringLiteral("ppt/presentation.xml")},
                               {QStringLiteral("http://schemas.openxmlformats.org/package/2006/relationships/metadata/core-properties"),
                                QStringLiteral("docProps/core.xml")},
                               {kRel + QStringLiteral("extended-properties"), QStringLiteral("docProps/app.xml")}})));
    add(QStringLiteral("docProps/core.xml"), xmlPart(coreProperties(nowUtc)));
    add(QStringLiteral("docProps/app.xml"), xmlPart(appProperties(n)));
    add(QStringLiteral("ppt/presentation.xml"), xmlPart(presentation(n)));
    QList<QPair<QString, QString>> presentationRels{{kRel + QStringLiteral("slideMaster"), QStringLiteral("slideMasters/slideMaster1.xml")}};
    for (int i = 1; i <= n; ++i)
        presentationRels.append({kRel + QStringLiteral("slide"), QStringLiteral("slides/slide%1.xml").arg(i)});
    add(QStringLiteral("ppt/_rels/presentation.xml.rels"), xmlPart(relationships(presentationRels)));
    add(QStringLiteral("ppt/slideMasters/slideMaster1.xml"), xmlPart(slideMaster()));
    add(QStringLiteral("ppt/slideMasters/_rels/slideMaster1.xml.rels"),
        xmlPart(relationships({{kRel + QStringLiteral("slideLayout"), QStringLiteral("../slideLayouts/slideLayout1.xml")},
                               {kRel + QStringLiteral("theme"), QStringLiteral("../theme/theme1.xml")}})));
    add(QStringLiteral("ppt/slideLayouts/slideLayout1.xml"), xmlPart(slideLayout()));
    add(QStringLiteral("ppt/slideLayouts/_rels/slideLayout1.xml.rels"),
        xmlPart(relationships({{kRel + QStringLiteral("slideMaster"), QStringLiteral("../slideMasters/slideMaster1.xml")}})));
    add(QStringLiteral("ppt/theme/theme1.xml"), xmlPart(theme()));
    for (int i = 1; i <= n; ++i)
        add(QStringLiteral("ppt/media/image%1.png").arg(i), slidePngs[i - 1]);
    for (int i = 1; i <= n; ++i) {
        add(QStringLiteral("ppt/slides/slide%1.xml").arg(i), xmlPart(slide(i)));
        add(QStringLiteral("ppt/slides/_rels/slide%1.xml.rels").arg(i),
            xmlPart(relationships({{kRel + QStringLiteral("image"), QStringLiteral("../media/image%1.png").arg(i)},
                                   {kRel + QStringLiteral("slideLayout"), QStringLiteral("../slideLayouts/slideLayout1.xml")}})));
    }
    return parts;
}

bool writeTabViewPptx(const QString &path, const QList<QImage> &pages, QString *error)
{
    {
        QFile probe(path);
        if (!probe.open(QIODevice::WriteOnly)) {
            *error = tr("Could not open %1 for writing.").arg(path);
            return false;
        }
    }
    QList<QByteArray> pngs;
    for (int i = 0; i < pages.size(); ++i) {
        QByteArray png = encodePng(pages[i]);
        if (png.isEmpty()) {
            *error = tr("Could not encode slide image %1.").arg(i + 1);
            return false;
        }
        pngs.append(png);
    }
    vg::zip::MemoryArchiveFailure failure;
    QString entry;
    if (!vg::zip::writeMemoryArchive(path, pptxParts(pngs, QDateTime::currentDateTimeUtc()), QDateTime::currentDateTime(),
                                     &failure, &entry)) {
        switch (failure) {
        case vg::zip::MemoryArchiveFailure::Open:
            *error = tr("Could not open %1 for writing.").arg(path);
            break;
        case vg::zip::MemoryArchiveFailure::Entry:
            *error = tr("Could not write %1 into PPTX.").arg(entry);
            break;
        default:
            *error = tr("Could not finalize PPTX file.");
            break;
        }
        return false;
    }
    return true;
}

ExporterEntry pdfExporterEntry()
{
    return {QStringLiteral("pdf"), QStringLiteral("pdf"), QT_TRANSLATE_NOOP("Exporters", "PDF Files"),
            QT_TRANSLATE_NOOP("Exporters", "Export Tab Views to PDF..."), ExportSubject::Project, QStringLiteral("tab_views"),
            Settings::tabViewExportDirectory.key(),
            [](const ExportRequest &request, const QString &path, QStringList *written, QString *error) {
                return writeDocumentPages(request, path, written, error, true);
            }};
}

ExporterEntry pptxExporterEntry()
{
    return {QStringLiteral("pptx"), QStringLiteral("pptx"), QT_TRANSLATE_NOOP("Exporters", "PowerPoint Files"),
            QT_TRANSLATE_NOOP("Exporters", "Export Tab Views to PPTX..."), ExportSubject::Project,
            QStringLiteral("tab_views"), Settings::tabViewExportDirectory.key(),
            [](const ExportRequest &request, const QString &path, QStringList *written, QString *error) {
                return writeDocumentPages(request, path, written, error, false);
            }};
}

} // namespace vg::exchange
