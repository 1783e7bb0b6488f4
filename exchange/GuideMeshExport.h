#pragma once

#include "exchange/ExporterTable.h"

#include <QImage>

namespace vg::exchange {

// The names of one guide mesh export, from the guide's name ("" for none).
struct GuideMeshNames {
    QString object;      // "VantreoGuide_Object" or "VantreoGuide_" + name
    QString material;    // "VantreoGuide_Material" or "VantreoGuideMaterial_" + name
    QString procedure;   // "VantreoApplySurfaceShader" or "VantreoApplySurfaceShader_" + name
    QString shader;      // object + "_SurfaceShader" ...
    QString shadingGroup;
    QString fileNode;
};
GuideMeshNames guideMeshNames(const QString &guideName);

// Writes base + ".obj", base + ".mtl", base + "_maya_surface.mel" and the guide picture as
// base + "_" + object + ".png": a flat mesh of the guide's real size in metres, centred on
// the origin in the XY plane facing +Z, one quad per guide cell, with an unlit material.
// A ".obj" at the end of `base` is ignored.
bool writeGuideMesh(const GuideSettings &guide, const QImage &picture, const QString &guideName, const QString &base,
                    QStringList *written, QString *error);

ExporterEntry guideMeshExporterEntry();

} // namespace vg::exchange
