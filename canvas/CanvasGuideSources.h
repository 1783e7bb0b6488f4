#pragma once

#include "canvas/CanvasGeometry.h"
#include "guide/GuideSettings.h"

#include <QList>

// Sources for drawing a canvas away from the window (command line, documents): every guide the
// canvas shows is rendered from its settings as a guide tab renders it, and every picture is
// read from its file. Guides the canvas does not show are left empty.
CanvasSources renderCanvasSources(const QList<GuideSettings> &guides, const CanvasTabSettings &canvas);
