#pragma once

#include "exchange/ExporterTable.h"

#include <QVariantMap>

namespace vg::exchange {

class ExportImageSource;

// Options of the projector view mesh, persisted under "export/viewMesh/<name>".
struct ViewMeshOptions {
    bool flattenTo2D = true;             // z = 0, else projector depth
    bool cropToProjector = true;         // cut faces at the frame (plus margin)
    bool normalizeCoordinates = false;   // X = -aspect..aspect, Y = -1..1, else pixels
    int frameMarginPixels = 0;           // 0..kMaxMarginPixels around the frame

    static constexpr int kMaxMarginPixels = 100000;
    static QString settingsKey(const char *name);   // "export/viewMesh/" + name
    static ViewMeshOptions fromVariantMap(const QVariantMap &options);
    QVariantMap toVariantMap() const;
    bool operator==(const ViewMeshOptions &) const = default;
};

// The scene as projector or camera `lensIndex` sees it: every visible face that shows
// inside its frame (plus margin), hidden ones removed by a depth test in projector space,
// written as OBJ + MTL with each source object's texture mapping.
bool writeViewMesh(const QVector<GuideObject> &objects, int lensIndex, const ViewMeshOptions &options,
                   ExportImageSource &images, const QString &path, QStringList *written, QString *error);

ExporterEntry viewMeshExporterEntry();

} // namespace vg::exchange
