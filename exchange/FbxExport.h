#pragma once

#include "exchange/ExporterTable.h"

#include <QDateTime>

namespace vg::exchange {

class ExportImageSource;

// Writes the visible mesh objects (vertices in world coordinates) and the visible
// projectors and cameras (as FBX cameras) as FBX 7.4 ASCII, with textures in the folder
// "<base>_textures" beside the file. `now` stamps the header.
bool writeSceneFbx(const QVector<GuideObject> &objects, ExportImageSource &images, const QString &path,
                   const QDateTime &now, QStringList *written, QString *error);

ExporterEntry fbxExporterEntry();

// The camera names of the scene exports: "Camera_%1" for an unnamed camera,
// "Projector_%1_Camera" for an unnamed projector, else "%1_%2_Camera" (name, index).
QString exportCameraName(const QString &identifier, int index, bool camera);

} // namespace vg::exchange
