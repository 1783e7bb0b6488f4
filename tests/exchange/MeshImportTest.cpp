// Imported files as scene objects: placement and sizes, the geometry given back after a
// save and load, and the files collected with the project's resources.
#include "exchange/MeshImport.h"

#include "project/ResourceCollector.h"
#include "project/SceneJson.h"
#include "scene/MeshBuilders.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace vg::exchange;

namespace {

const QString kData = QStringLiteral(VG_TEST_DATA_DIR "/mesh/");

GuideObject imported(const QString &name)
{
    GuideObject o;
    QString error;
    EXPECT_TRUE(importMeshFile(kData + name, &o, &error)) << error.toStdString();
    return o;
}

bool hasPoint(const std::vector<QVector3D> &points, const QVector3D &p)
{
    return std::any_of(points.begin(), points.end(), [&](const QVector3D &q) { return (q - p).length() < 1e-5f; });
}

} // namespace

TEST(MeshImport, DxfPlanLiesOnTheFloorCentredWithHalfExtentSizes)
{
    const GuideObject o = imported(QStringLiteral("plan_r2018.dxf"));
    EXPECT_EQ(o.guide_index, KindDxfMesh);
    EXPECT_EQ(o.name, QStringLiteral("plan_r2018"));
    EXPECT_EQ(o.obj_path, kData + QStringLiteral("plan_r2018.dxf"));
    // 10 m wide (x), 6 m deep (drawing y), 1 m high (drawing z): half extents in metres.
    EXPECT_FLOAT_EQ(o.scale_x, 5.0f);
    EXPECT_FLOAT_EQ(o.scale_y, 0.5f);
    EXPECT_FLOAT_EQ(o.scale_z, 3.0f);
    EXPECT_EQ(o.translate_x, 0.0f);
    ASSERT_TRUE(o.imported_mesh);
    // The drawing's origin is the plan's left, near corner on the floor: drawing +y runs
    // away along -z, so (0, 0, 0) lands at x = -1, y = -1, z = +1 of the unit box.
    EXPECT_TRUE(hasPoint(o.imported_mesh->lines, QVector3D(-1, -1, 1)));
    EXPECT_TRUE(hasPoint(o.imported_mesh->lines, QVector3D(1, -1, -1)));   // drawing (10, 6)
    // The top of the 3D polyline, drawing (8, 2, 1), tells a mirror or swapped axis apart.
    EXPECT_TRUE(hasPoint(o.imported_mesh->lines, QVector3D(0.6f, 1.0f, 1.0f / 3.0f)));
    EXPECT_FALSE(hasPoint(o.imported_mesh->lines, QVector3D(-0.6f, 1.0f, 1.0f / 3.0f)));
    EXPECT_FALSE(hasPoint(o.imported_mesh->lines, QVector3D(0.6f, 1.0f, -1.0f / 3.0f)));
    // The scene mesh carries the lines at full size.
    const SceneMesh mesh = vg::scene::buildObjectMesh(o);
    EXPECT_TRUE(hasPoint(mesh.lines, QVector3D(-5, -0.5f, 3)));
}

TEST(MeshImport, DxfExtrudeRaisesWallsOnEverySegment)
{
    GuideObject o = imported(QStringLiteral("plan_r2018.dxf"));
    EXPECT_EQ(vg::scene::buildObjectMesh(o).triangleCount(), 0);
    o.dxf_extrude = 2500.0f; // mm
    const SceneMesh walls = vg::scene::buildObjectMesh(o);
    EXPECT_EQ(walls.triangleCount(), 2 * int(o.imported_mesh->lines.size() / 2));
    float top = -1e9f;
    for (const SceneVertex &v : walls.vertices)
        top = std::max(top, v.py);
    EXPECT_NEAR(top, 0.5f + 2.5f, 1e-5f);
}

TEST(MeshImport, ObjRoomKeepsItsPlaceAndTexture)
{
    const GuideObject room = imported(QStringLiteral("room_assimp.obj"));
    EXPECT_EQ(room.guide_index, KindObjMesh);
    EXPECT_FLOAT_EQ(room.translate_y, 1.5f); // the room stands on y = 0
    EXPECT_FLOAT_EQ(room.scale_x, 3.0f);
    EXPECT_FLOAT_EQ(room.scale_y, 1.5f);
    EXPECT_FLOAT_EQ(room.scale_z, 2.0f);
    EXPECT_FALSE(room.texture_visible);

    const GuideObject quad = imported(QStringLiteral("textured_assimp.obj"));
    EXPECT_TRUE(quad.texture_visible);
    EXPECT_EQ(quad.texture_file_path, kData + QStringLiteral("checker.png"));
    EXPECT_FLOAT_EQ(quad.scale_z, 0.001f); // flat: the 1 mm floor of the sizes
}

TEST(MeshImport, UnknownAndFailingFilesGiveTheReadersMessage)
{
    GuideObject o;
    QString error;
    EXPECT_FALSE(importMeshFile(kData + QStringLiteral("checker.png"), &o, &error));
    EXPECT_EQ(error, QStringLiteral("checker.png is not an OBJ or DXF file."));
    EXPECT_FALSE(importMeshFile(kData + QStringLiteral("missing.DXF"), &o, &error));
    EXPECT_EQ(error, QStringLiteral("DXF file does not exist."));
    EXPECT_FALSE(importMeshFile(kData + QStringLiteral("fuzz/absent.obj"), &o, &error));
    EXPECT_EQ(error, QStringLiteral("OBJ file does not exist."));
}

TEST(MeshImport, SavedObjectsGetTheirGeometryBackFromTheFile)
{
    GuideObject room = imported(QStringLiteral("room_assimp.obj"));
    room.scale_x = 6.0f; // the user stretched it: the saved size wins over the file's
    const GuideObject plan = imported(QStringLiteral("plan_r2018.dxf"));
    GuideObject lost = plan;
    lost.name = QStringLiteral("Lost");
    lost.obj_path = kData + QStringLiteral("gone.dxf");

    QVector<GuideObject> objects;
    for (const GuideObject &o : {room, plan, plan, lost})
        objects.append(guideObjectFromJson(guideObjectToJson(o)));
    for (const GuideObject &o : objects)
        ASSERT_FALSE(o.imported_mesh);

    QStringList problems;
    EXPECT_EQ(loadImportedGeometry(objects, &problems), 3);
    EXPECT_EQ(problems, QStringList{QStringLiteral("Lost: DXF file does not exist.")});
    EXPECT_EQ(objects[0].scale_x, 6.0f);
    EXPECT_EQ(*objects[0].imported_mesh, *room.imported_mesh);
    EXPECT_EQ(objects[1].imported_mesh->lines, plan.imported_mesh->lines);
    EXPECT_EQ(objects[1].imported_mesh, objects[2].imported_mesh); // read once
    EXPECT_FALSE(objects[3].imported_mesh);
}

TEST(MeshImport, ResourceCollectionCopiesTheMeshFilesAndTheyStillLoad)
{
    QTemporaryDir dir;
    ProjectDocument doc;
    doc.views.append(Guide3DViewSettings());
    doc.views[0].objects = {imported(QStringLiteral("textured_src.obj")), imported(QStringLiteral("plan_r12.dxf"))};

    vg::resources::CollectReport report;
    QString error;
    ASSERT_TRUE(vg::resources::collectResources(&doc, dir.filePath(QStringLiteral("source")), dir.path(), &report, &error));
    EXPECT_TRUE(report.missing.isEmpty());
    EXPECT_EQ(report.copied.size(), 3); // the OBJ, its texture and the DXF
    EXPECT_EQ(doc.views[0].objects[0].obj_path, QStringLiteral("source/textured_src.obj"));
    EXPECT_EQ(doc.views[0].objects[1].obj_path, QStringLiteral("source/plan_r12.dxf"));

    vg::resources::resolveRelativePaths(&doc, dir.path());
    for (GuideObject &o : doc.views[0].objects)
        o.imported_mesh.reset();
    EXPECT_EQ(loadImportedGeometry(&doc), 2);
}
