#pragma once

#include "project/ProjectFile.h"
#include "scene/GuideObject.h"

#include <QString>
#include <QStringList>

// Turns OBJ and DXF files into scene objects, and gives loaded or pasted mesh objects
// their geometry back (the scene file keeps only the file path, "obj_path").
namespace vg::exchange {

enum class MeshFileKind { Unknown, Obj, Dxf };

// By the file name's suffix, without regard to case.
MeshFileKind meshFileKind(const QString &path);

// Reads `path` into a new record: KindObjMesh or KindDxfMesh, named after the file,
// obj_path set to the absolute path, the geometry centred on the object, and scale_* set
// to the half extents in metres (at least 0.001). A DXF plan is laid on the floor: drawing
// x stays x, drawing y runs along -z, drawing z (elevation) becomes y. An OBJ keeps its
// place: the object sits at the centre of the model's bounding box; its diffuse texture
// (map_Kd) becomes the object's texture. False with the reader's message.
bool importMeshFile(const QString &path, GuideObject *object, QString *error);

// Reads the geometry of every mesh object that has none (after a load or a paste), keeping
// the object's own transform and sizes. A relative obj_path (as resources are collected)
// is taken below `baseFolder`. A file read once serves every object naming it. A failure
// leaves that object without geometry and adds "name: message" to `problems`. Returns the
// number of objects given geometry.
int loadImportedGeometry(QVector<GuideObject> &objects, QStringList *problems = nullptr,
                         const QString &baseFolder = QString());
int loadImportedGeometry(ProjectDocument *doc, QStringList *problems = nullptr, const QString &baseFolder = QString());

} // namespace vg::exchange
