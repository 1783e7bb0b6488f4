#pragma once

#include "exchange/ExporterTable.h"

namespace vg::exchange {

class ExportImageSource;

// Writes the visible mesh objects (points in each object's frame under its transform) and
// the visible projectors and cameras (as USD cameras) as one USD ASCII layer, with
// UsdPreviewSurface materials and textures in "<base>_textures" beside it.
bool writeSceneUsd(const QVector<GuideObject> &objects, ExportImageSource &images, const QString &path,
                   QStringList *written, QString *error);

ExporterEntry usdExporterEntry();

// A USD identifier for a name: ASCII letters, digits and underscores, never starting with a
// digit; `fallback` when nothing usable is left.
QString usdIdentifier(const QString &name, const QString &fallback);

} // namespace vg::exchange
