#pragma once

#include "canvas/CanvasGeometry.h"

#include <QDateTime>
#include <QImage>
#include <QSize>
#include <QString>
#include <QStringList>

// Default object names: "Guide Image", "Image", "Comment", "Text Box".
QString canvasDefaultObjectName(CanvasObjectKind kind);

// "%1 Copy", or "%1 Copy %2" with the first free number from 2 when that name is taken.
QString canvasCopyName(const QString &source, const QStringList &taken);

// "VantreoGuide Canvas object copy (%1 object%2)": the plain text of a copy.
QString canvasObjectCopyText(int count);

// "%1 guide source%2" (the caption of the guide source list).
QString canvasGuideSourceCaption(int count);

// The path with ".png" appended unless it already ends so, in any case.
QString withPngSuffix(const QString &path);

// Proposed names: "canvas_export_%2x%3.png", "canvas_view_%2x%3.png" and
// "%1(%2x%3)_resized(%4x%5).png" for a selected guide.
QString canvasExportFileName(QSize size);
QString canvasViewFileName(QSize size);
QString selectedGuideExportFileName(const QString &guideName, QSize own, QSize placed);
// A name with characters that file systems refuse replaced; "selected_guide" when nothing is left.
QString canvasSafeFileName(const QString &name);

// "PastedCanvasImages" in the writable data folder, or under "VantreoGuide" in the temporary
// folder when there is none.
QString pastedCanvasImageFolder();
// "clipboard_canvas_%1_%2.png": %1 the canvas name made safe, %2 the UTC time "yyyyMMdd_hhmmss_zzz".
QString pastedCanvasImageFileName(const QString &canvasName, const QDateTime &utc);
// Saves a clipboard image for the canvas into `folder`; the written path on success. The error
// texts are "Could not create a folder for pasted images." and "Could not save the clipboard
// image as PNG.".
bool savePastedCanvasImage(const QImage &image, const QString &folder, const QString &canvasName,
                           QString *path, QString *error);

// Writes the canvas picture as PNG after adding the suffix; steps and texts of "Export Canvas
// PNG" without the dialog. `writtenPath` receives the final path.
bool exportCanvasPng(const CanvasTabSettings &canvas, const CanvasSources &sources, const QString &path,
                     QString *writtenPath, QString *error);
