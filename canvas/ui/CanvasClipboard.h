#pragma once

#include "canvas/CanvasTabSettings.h"

#include <QString>
#include <QVector>

class QImage;
class QMimeData;

// Canvas objects on the clipboard. The objects stay in one payload inside this process; the
// clipboard carries our MIME type with a text that names that payload, and the plain-text
// "VantreoGuide Canvas object copy (%1 object%2)". A newer copy replaces the payload.
namespace CanvasClipboard {

QString mimeType(); // "application/x-vantreoguide-canvas-object-copy"

// Mime data for the objects (the payload is replaced); the caller owns it.
QMimeData *createMimeData(const QVector<CanvasObjectSettings> &objects);
// The objects of our payload when the mime data names it; false otherwise (another program's
// or an older copy's data).
bool readMimeData(const QMimeData *data, QVector<CanvasObjectSettings> *objects);

} // namespace CanvasClipboard

// The clipboard entries that make a file paste as a file in file managers: the image itself,
// "text/uri-list", "x-special/gnome-copied-files" and the Windows "Preferred DropEffect" (copy).
QMimeData *createFileCopyMimeData(const QString &path, const QImage &image);
