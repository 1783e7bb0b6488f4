#pragma once

#include "scene/SceneMesh.h"

#include <QByteArray>
#include <QString>

#include <vector>

// Reads a Wavefront OBJ file into one triangle mesh: positions (metres), texture
// coordinates, normals, and the diffuse texture of its material library.
namespace vg::exchange {

struct ObjMesh {
    // Positions as in the file; v of the texture coordinates runs top to bottom as in the
    // scene's vertices. Corners without a normal get the smooth normal of their faces.
    SceneMesh mesh;
    bool hasTexCoords = false;
    // Absolute path of the map_Kd of the first material the faces use that has one;
    // empty when there is none or its file is missing.
    QString texturePath;
    int skippedFaces = 0;
    std::vector<int> skippedFaceLines;   // line numbers of the first skipped faces
};

// Faces whose corners index nothing read so far (0, past the end, before the start with a
// negative index) or a position that is not a finite number are skipped with the log line
// "Skipping invalid OBJ face at line N". Material libraries are looked up in `folder`.
// False with "OBJ has no valid vertices/faces." when no triangle remains.
bool readObjData(const QByteArray &data, const QString &folder, ObjMesh *out, QString *error);

// As readObjData, after "OBJ file does not exist." and read errors.
bool readObjFile(const QString &path, ObjMesh *out, QString *error);

} // namespace vg::exchange
