#pragma once

#include "exchange/ExporterTable.h"
#include "project/ZipArchive.h"

#include <QDateTime>
#include <QImage>
#include <QList>
#include <QString>

struct ProjectDocument;

namespace vg::exchange {

class ExportImageSource;

// Documents of the tab views: one page per tab, in tab order, on a 16:10 page of
// 338.6667 x 211.6667 mm (13.333 x 8.333 in).
inline constexpr double kDocumentPageWidthMm = 338.6667;
inline constexpr double kDocumentPageHeightMm = 211.6667;
inline constexpr qint64 kSlideWidthEmu = 12192000;
inline constexpr qint64 kSlideHeightEmu = 7620000;

// The page of every tab of a project: guides by the guide renderer, canvases by the canvas
// core, 3D views through `images` (the GPU). `titles`, when given, are the tabs' shown titles
// in the same order as the tab list; without them guides are "Guide %1" and canvases carry
// their saved titles. Fails on a tab whose picture cannot be made.
bool projectDocumentPages(const ProjectDocument &project, ExportImageSource *images, const QStringList &titles,
                          QList<QImage> *pages, QString *error);

// The PDF: one page image per page, drawn over the whole page at 150 dpi.
bool writeTabViewPdf(const QString &path, const QList<QImage> &pages, QString *error);

// The PPTX package parts in their order, the slides' pictures given as PNG bytes.
QList<vg::zip::MemoryEntry> pptxParts(const QList<QByteArray> &slidePngs, const QDateTime &nowUtc);
// Encodes the pages and writes the package.
bool writeTabViewPptx(const QString &path, const QList<QImage> &pages, QString *error);

ExporterEntry pdfExporterEntry();
ExporterEntry pptxExporterEntry();

} // namespace vg::exchange
