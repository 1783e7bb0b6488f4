#pragma once

#include "exchange/ExporterTable.h"

namespace vg::exchange {

class ExportImageSource;

// Writes a Maya ASCII scene at `path` that imports the companion OBJ "<base>_scene.obj"
// (the visible mesh objects, written beside it by the OBJ scene writer) into a group
// scaled to centimetres, and adds a camera with frustum curves for each projector or
// camera among `lensIndices`.
bool writeMayaScene(const QVector<GuideObject> &objects, const QList<int> &lensIndices, ExportImageSource &images,
                    const QString &path, QStringList *written, QString *error);

ExporterEntry mayaExporterEntry();

// A Maya node name: ASCII letters, digits and underscores, not starting with a digit;
// empty when nothing usable is left.
QString mayaIdentifier(const QString &name);

} // namespace vg::exchange
