// OBJ reading against files written by a script and by Assimp
// (tests/data/mesh/make_obj_fixtures.py) and hand-written hostile input.
#include "exchange/DxfReader.h"
#include "exchange/ObjReader.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <gtest/gtest.h>

#include <cmath>

using namespace vg::exchange;

namespace {

const QString kData = QStringLiteral(VG_TEST_DATA_DIR "/mesh/");

ObjMesh readFixture(const QString &name)
{
    ObjMesh obj;
    QString error;
    EXPECT_TRUE(readObjFile(kData + name, &obj, &error)) << name.toStdString() << ": " << error.toStdString();
    return obj;
}

ObjMesh readText(const QByteArray &text, bool expectOk = true)
{
    ObjMesh obj;
    QString error;
    EXPECT_EQ(readObjData(text, QString(), &obj, &error), expectOk) << error.toStdString();
    return obj;
}

QVector3D pos(const ObjMesh &obj, std::uint32_t index)
{
    return obj.mesh.vertices.at(index).position();
}

// Signed area of triangle t projected on z, and its absolute value summed over the mesh.
double signedAreaZ(const ObjMesh &obj, size_t t)
{
    const QVector3D a = pos(obj, obj.mesh.indices[3 * t]), b = pos(obj, obj.mesh.indices[3 * t + 1]),
                    c = pos(obj, obj.mesh.indices[3 * t + 2]);
    return 0.5 * QVector3D::crossProduct(b - a, c - a).z();
}

} // namespace

TEST(ObjReader, ScriptShapesQuadsNgonsRelativeIndicesAndBadFaces)
{
    const ObjMesh obj = readFixture(QStringLiteral("shapes.obj"));
    // Quad 2 + hexagon 4 + relative triangle 1 + textured triangle 1.
    EXPECT_EQ(obj.mesh.triangleCount(), 8);
    EXPECT_EQ(obj.skippedFaces, 5);
    EXPECT_EQ(obj.skippedFaceLines, (std::vector<int>{24, 25, 27, 29, 30}));
    EXPECT_TRUE(obj.hasTexCoords);

    // The concave L (area 4) is cut into ears: no triangle turns over or leaves the outline.
    double absolute = 0.0;
    for (size_t t = 2; t < 6; ++t) {
        EXPECT_GT(signedAreaZ(obj, t), 0.0) << "triangle " << t;
        absolute += std::abs(signedAreaZ(obj, t));
    }
    EXPECT_NEAR(absolute, 4.0, 1e-6);

    // f -3//-1 -2//-1 -1//-1 names the three vertices just before it.
    EXPECT_EQ(pos(obj, obj.mesh.indices[18]), QVector3D(5, 0, 0));
    EXPECT_EQ(pos(obj, obj.mesh.indices[20]), QVector3D(6, 1, 0));
    // v/vt: vt "1 1" is the top right of the image, so v (top to bottom) is 0.
    const SceneVertex &corner = obj.mesh.vertices.at(obj.mesh.indices[23]);
    EXPECT_EQ(corner.position(), QVector3D(6, 1, 0));
    EXPECT_FLOAT_EQ(corner.u, 1.0f);
    EXPECT_FLOAT_EQ(corner.v, 0.0f);
    EXPECT_FLOAT_EQ(obj.mesh.vertices.at(obj.mesh.indices[21]).v, 1.0f);
    // Faces without normals get their face's normal, counter-clockwise seen from +z.
    for (std::uint32_t i : obj.mesh.indices)
        EXPECT_NEAR(obj.mesh.vertices[i].normal().z(), 1.0f, 1e-6);
}

TEST(ObjReader, AssimpRoomAndTexturedQuad)
{
    const ObjMesh room = readFixture(QStringLiteral("room_assimp.obj"));
    EXPECT_EQ(room.mesh.triangleCount(), 12);
    EXPECT_EQ(room.skippedFaces, 0);
    QVector3D lo(1e9, 1e9, 1e9), hi(-1e9, -1e9, -1e9);
    for (const SceneVertex &v : room.mesh.vertices) {
        for (int i = 0; i < 3; ++i)
            lo[i] = std::min(lo[i], v.position()[i]), hi[i] = std::max(hi[i], v.position()[i]);
    }
    EXPECT_EQ(hi - lo, QVector3D(6, 3, 4));
    EXPECT_TRUE(room.texturePath.isEmpty()); // its material has no map_Kd

    // The used material's texture wins over the first one listed, whose file is missing.
    for (const QString name : {QStringLiteral("textured_src.obj"), QStringLiteral("textured_assimp.obj")}) {
        const ObjMesh quad = readFixture(name);
        EXPECT_EQ(QFileInfo(quad.texturePath).fileName(), QStringLiteral("checker.png")) << name.toStdString();
        EXPECT_TRUE(QFileInfo(quad.texturePath).isAbsolute());
        EXPECT_EQ(quad.mesh.triangleCount(), 2);
    }
}

TEST(ObjReader, FaceIndicesOutsideWhatWasReadAreSkipped)
{
    const QByteArray text = "v 0 0 0\nv 1 0 0\nv 0 1 0\n"
                            "f 1 2 4\n"            // past the end
                            "f 1 2 -4\n"           // before the start
                            "f 1 2 2147483648\n"   // past a 32-bit index
                            "f 1 2 -9223372036854775808\n"
                            "f 1 2 99999999999999999999999\n"
                            "f 1/5 2/5 3/5\n"      // texture coordinate that does not exist
                            "f 1//1 2//1 3//1\n"   // normal that does not exist
                            "f 1 2 3x\n"           // junk glued to an index
                            "f 1 2 3\n";
    const ObjMesh obj = readText(text);
    EXPECT_EQ(obj.mesh.triangleCount(), 1);
    EXPECT_EQ(obj.skippedFaces, 8);
    EXPECT_EQ(obj.skippedFaceLines.front(), 4);
    EXPECT_EQ(obj.skippedFaceLines.back(), 11);
}

TEST(ObjReader, NothingUsableGivesTheMessage)
{
    const QString message = QStringLiteral("OBJ has no valid vertices/faces.");
    for (const QByteArray &text : {QByteArray(), QByteArray("# only a comment\r\n"), QByteArray("v 0 0 0\nv 1 0 0\nv 0 1 0\n"),
                                   QByteArray("v nan 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n"),
                                   QByteArray("v 1e300 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n"),
                                   QByteArray("f 1 2 3\nv 0 0 0\nv 1 0 0\nv 0 1 0\n")}) {
        ObjMesh obj;
        QString error;
        EXPECT_FALSE(readObjData(text, QString(), &obj, &error)) << text.toStdString();
        EXPECT_EQ(error, message);
    }
    ObjMesh obj;
    QString error;
    EXPECT_FALSE(readObjFile(kData + QStringLiteral("absent.obj"), &obj, &error));
    EXPECT_EQ(error, QStringLiteral("OBJ file does not exist."));
}

TEST(ObjReader, BinaryBytesAndHugePolygonsEndInTime)
{
    // Random bytes renamed .obj, with NULs and stray 'v'/'f' lines mixed in.
    QByteArray junk(1 << 20, '\0');
    QRandomGenerator random(15);
    for (char &c : junk)
        c = char(random.bounded(256));
    junk.append("\nv 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n");
    const ObjMesh fromJunk = readText(junk);
    EXPECT_GE(fromJunk.mesh.triangleCount(), 1);

    // One face of 200 000 corners round a circle: fanned, not ear-clipped in quadratic time.
    QByteArray big;
    QByteArray face = "f";
    const int n = 200000;
    for (int i = 0; i < n; ++i) {
        big += "v " + QByteArray::number(std::cos(2 * M_PI * i / n)) + ' ' + QByteArray::number(std::sin(2 * M_PI * i / n)) + " 0\n";
        face += ' ' + QByteArray::number(i + 1);
    }
    const ObjMesh circle = readText(big + face + '\n');
    EXPECT_EQ(circle.mesh.triangleCount(), n - 2);
}

TEST(ObjReader, HugeTextureCoordinatesAndNormalsStayFinite)
{
    const ObjMesh obj = readText("v 0 0 0\nv 1 0 0\nv 0 1 0\nvt 1e300 -1e300\nvn 1e300 0 0\nvn 0 0 0\n"
                                 "f 1/1/1 2/1/2 3/1/1\n");
    for (const SceneVertex &v : obj.mesh.vertices) {
        EXPECT_TRUE(std::isfinite(v.u) && std::isfinite(v.v));
        EXPECT_NEAR(v.normal().length(), 1.0f, 1e-5);
    }
}

TEST(ObjReader, FuzzFindingsReadSafelyByBothReaders)
{
    // Inputs the fuzzers once broke the readers with; each must now give a clear answer.
    const QDir dir(kData + QStringLiteral("fuzz"));
    const QStringList files = dir.entryList(QDir::Files);
    ASSERT_FALSE(files.isEmpty());
    for (const QString &name : files) {
        QFile file(dir.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const QByteArray bytes = file.readAll();
        ObjMesh obj;
        QString error;
        if (readObjData(bytes, QString(), &obj, &error)) {
            for (const SceneVertex &v : obj.mesh.vertices)
                EXPECT_TRUE(std::isfinite(v.px) && std::isfinite(v.u) && std::isfinite(v.v)) << name.toStdString();
        } else {
            EXPECT_FALSE(error.isEmpty());
        }
        DxfDrawing drawing;
        EXPECT_EQ(readDxfData(bytes, &drawing, &error), !drawing.segments.empty()) << name.toStdString();
    }
}
