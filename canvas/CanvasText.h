#pragma once

#include "canvas/CanvasTabSettings.h"

#include <QFont>
#include <QSizeF>
#include <QString>

// Fonts of the canvas marks. Bold text and labels use the built-in guide face so that the
// window and the command line draw the same glyphs.
QFont canvasLabelFont(double pixelSize);
QFont canvasTextBoxFont(const CanvasObjectSettings &object);
QFont canvasCommentFont(const CanvasObjectSettings &object);
double canvasCommentPadding(const CanvasObjectSettings &object);

// Size of a block of lines (at least one line high, even for an empty text).
QSizeF canvasTextBlockSize(const QString &text, const QFont &font);
