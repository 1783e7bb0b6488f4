#pragma once

#include "exchange/ExporterTable.h"

#include <QColor>
#include <QList>
#include <QString>
#include <QStringList>
#include <QVector>

struct GuideObject;

namespace vg::exchange {

class ExportImageSource;
class ExportTextFile;

// Options of the 3D view's OBJ export.
struct ObjSceneOptions {
    // Only the selected objects; otherwise every visible one.
    bool selectedOnly = false;
    // Each exported projector and camera adds its frustum as a group of its own.
    bool includeFrustums = true;

    static ObjSceneOptions fromVariantMap(const QVariantMap &options);
};

// Writes the OBJ at `path`, the MTL beside it (same base name) and the textures as
// "<base>_<group>.png". Vertices are in world coordinates (metres).
bool writeSceneObj(const QVector<GuideObject> &objects, const QList<int> &selection, const ObjSceneOptions &options,
                   ExportImageSource &images, const QString &path, QStringList *written, QString *error);

ExporterEntry objExporterEntry();

// Names shared by the OBJ writers: the indexed form when the object's name leaves no
// ASCII identifier ("object_%1", "material_%1" ...), else "<name>_<index>..." forms.
struct ObjNames {
    QString group;
    QString material;           // textured
    QString flatMaterial;       // flat colour
    QString frustumGroup;
    QString frustumMaterial;
};
ObjNames objNames(const QString &identifier, int index);

// One MTL block in the order the exports use; `opacityLine` adds "d 1.000000".
void writeMtlBlock(ExportTextFile &file, const QString &name, const QColor &diffuse, const QString &textureFile,
                   bool opacityLine);

} // namespace vg::exchange
