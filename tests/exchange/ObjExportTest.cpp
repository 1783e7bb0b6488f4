#include "ExportTestSupport.h"

#include "exchange/ExportScene.h"
#include "exchange/ExportText.h"
#include "exchange/ExporterTable.h"
#include "exchange/ObjExport.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include <assimp/Importer.hpp>
#include <assimp/postprocess.h>
#include <assimp/scene.h>
#include <gtest/gtest.h>

using namespace exporttest;
using vg::exchange::ObjSceneOptions;
using vg::exchange::writeSceneObj;

namespace {

// Assimp makes a node for each "o" and each "g" line; the groups hold the meshes.
std::vector<std::string> groupsWithMeshes(const aiScene *scene)
{
    std::vector<std::string> names;
    for (unsigned i = 0; i < scene->mRootNode->mNumChildren; ++i) {
        if (scene->mRootNode->mChildren[i]->mNumMeshes > 0)
            names.emplace_back(scene->mRootNode->mChildren[i]->mName.C_Str());
    }
    return names;
}

const aiMesh *meshByName(const aiScene *scene, const std::string &name)
{
    for (unsigned i = 0; i < scene->mNumMeshes; ++i) {
        if (scene->mMeshes[i]->mName.C_Str() == name)
            return scene->mMeshes[i];
    }
    return nullptr;
}

Eigen::Vector3d toEigen(const aiVector3D &v)
{
    return {v.x, v.y, v.z};
}

class ObjExport : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(dir.isValid());
        imagePath = dir.filePath(QStringLiteral("poster.png"));
        ASSERT_TRUE(quadrantImage().save(imagePath));
        scene = sampleScene(imagePath);
    }

    QString exportScene(const QList<int> &selection, ObjSceneOptions options, QStringList *written = nullptr)
    {
        const QString path = dir.filePath(QStringLiteral("out/3d_view.obj"));
        QString error;
        EXPECT_TRUE(writeSceneObj(scene, selection, options, images, path, written, &error)) << error.toStdString();
        return path;
    }

    QTemporaryDir dir;
    QString imagePath;
    QVector<GuideObject> scene;
    TestImages images;
};

} // namespace

TEST_F(ObjExport, AssimpReadsEveryVisibleMeshInWorldCoordinates)
{
    QStringList written;
    const QString path = exportScene({}, {}, &written);
    ASSERT_GE(written.size(), 2);
    EXPECT_EQ(written.at(0), path);

    Assimp::Importer importer;
    const aiScene *read = importer.ReadFile(path.toStdString(), 0);
    ASSERT_TRUE(read) << importer.GetErrorString();
    // Wall, poster and person are visible meshes; the hidden plane and the comment are not;
    // the projector adds its frustum, whose far rectangle is a mesh of its own material.
    EXPECT_EQ(groupsWithMeshes(read),
              (std::vector<std::string>{"Wall_0", "Poster_1", "Person_170_cm_2", "Beamer_Frustum"}));
    ASSERT_EQ(read->mNumMeshes, 5u);
    for (int index : {0, 1, 2}) {
        const GuideObject &o = scene.at(index);
        const QString group = vg::exchange::objNames(vg::exchange::asciiIdentifier(o.name), index).group;
        const aiMesh *mesh = meshByName(read, group.toStdString());
        ASSERT_TRUE(mesh) << group.toStdString();
        const std::vector<Eigen::Vector3d> expected = worldTriangles(o);
        ASSERT_EQ(size_t(mesh->mNumFaces) * 3, expected.size()) << group.toStdString();
        // Assimp unrolls faces, so face k holds the world positions of triangle k.
        for (unsigned f = 0; f < mesh->mNumFaces; f += std::max(1u, mesh->mNumFaces / 7)) {
            ASSERT_EQ(mesh->mFaces[f].mNumIndices, 3u);
            for (int c = 0; c < 3; ++c) {
                const Eigen::Vector3d got = toEigen(mesh->mVertices[mesh->mFaces[f].mIndices[c]]);
                EXPECT_LT((got - expected[f * 3 + c]).norm(), 2e-6) << group.toStdString() << " face " << f;
            }
        }
    }
    EXPECT_EQ(meshByName(read, "Hidden_3"), nullptr);
}

TEST_F(ObjExport, DistinctVerticesMatchTheSceneMesh)
{
    const QString path = exportScene({}, {});
    Assimp::Importer importer;
    const aiScene *read = importer.ReadFile(path.toStdString(), aiProcess_JoinIdenticalVertices);
    ASSERT_TRUE(read);
    const aiMesh *wall = meshByName(read, "Wall_0");
    ASSERT_TRUE(wall);
    const SceneMesh mesh = vg::scene::buildObjectMesh(scene.at(0));
    EXPECT_EQ(wall->mNumVertices, mesh.vertices.size());
    EXPECT_EQ(wall->mNumFaces, mesh.indices.size() / 3);
}

TEST_F(ObjExport, TexturesResolveBesideTheObjAndKeepTheirOrientation)
{
    const QString path = exportScene({}, {});
    Assimp::Importer importer;
    const aiScene *read = importer.ReadFile(path.toStdString(), 0);
    ASSERT_TRUE(read);
    const aiMesh *poster = meshByName(read, "Poster_1");
    ASSERT_TRUE(poster);
    const aiMaterial *material = read->mMaterials[poster->mMaterialIndex];
    aiString name;
    material->Get(AI_MATKEY_NAME, name);
    EXPECT_STREQ(name.C_Str(), "Poster_1_material");
    aiString texture;
    ASSERT_EQ(material->GetTexture(aiTextureType_DIFFUSE, 0, &texture), aiReturn_SUCCESS);
    EXPECT_STREQ(texture.C_Str(), "3d_view_Poster_1.png");
    const QString texturePath = QFileInfo(path).dir().filePath(QString::fromUtf8(texture.C_Str()));
    const QImage written(texturePath);
    ASSERT_FALSE(written.isNull());
    EXPECT_EQ(written.pixel(2, 2), qRgb(255, 0, 0));
    EXPECT_EQ(written.pixel(written.width() - 3, written.height() - 3), qRgb(255, 255, 255));

    // The poster's top-left corner (local -x, +y) carries the texture's top-left: OBJ v = 1.
    const GuideObject &o = scene.at(1);
    const Eigen::Vector3d topLeft = vg::scene::objectToWorld(o) * Eigen::Vector3d(-o.scale_x, o.scale_y, 0.0);
    const Eigen::Vector3d bottomRight = vg::scene::objectToWorld(o) * Eigen::Vector3d(o.scale_x, -o.scale_y, 0.0);
    int seen = 0;
    for (unsigned i = 0; i < poster->mNumVertices; ++i) {
        const Eigen::Vector3d p = toEigen(poster->mVertices[i]);
        const aiVector3D uv = poster->mTextureCoords[0][i];
        if ((p - topLeft).norm() < 1e-5) {
            EXPECT_NEAR(uv.x, 0.0, 1e-6);
            EXPECT_NEAR(uv.y, 1.0, 1e-6);
            ++seen;
        }
        if ((p - bottomRight).norm() < 1e-5) {
            EXPECT_NEAR(uv.x, 1.0, 1e-6);
            EXPECT_NEAR(uv.y, 0.0, 1e-6);
            ++seen;
        }
    }
    EXPECT_GE(seen, 2);

    // The wall has no picture: a flat material with its colour and no texture.
    const aiMesh *wall = meshByName(read, "Wall_0");
    ASSERT_TRUE(wall);
    const aiMaterial *flat = read->mMaterials[wall->mMaterialIndex];
    EXPECT_EQ(flat->GetTextureCount(aiTextureType_DIFFUSE), 0u);
    aiColor3D kd;
    flat->Get(AI_MATKEY_COLOR_DIFFUSE, kd);
    EXPECT_NEAR(kd.r, scene.at(0).mesh_color.redF(), 1e-6);
}

TEST_F(ObjExport, ProjectorFrustumFollowsTheLensModelAndCarriesItsPictureFlipped)
{
    const QString path = exportScene({}, {});
    Assimp::Importer importer;
    const aiScene *read = importer.ReadFile(path.toStdString(), 0);
    ASSERT_TRUE(read);
    const aiMesh *frustum = meshByName(read, "Beamer_Frustum");
    ASSERT_TRUE(frustum);
    const vg::scene::LensModel lens = vg::scene::LensModel::forObject(scene, 5);
    const auto corners = lens.farCorners();
    // The far rectangle shows the picture: the texture's top-left (u 0, OBJ v 1) sits where
    // the lens model puts the image's top-left. With flip H that is the right-hand side.
    int matched = 0;
    for (unsigned i = 0; i < frustum->mNumVertices; ++i) {
        const aiVector3D uv = frustum->mTextureCoords[0][i];
        const Eigen::Vector3d p = toEigen(frustum->mVertices[i]);
        if (std::abs(uv.x) < 1e-6 && std::abs(uv.y - 1.0) < 1e-6) {
            EXPECT_LT((p - corners[0]).norm(), 1e-4);
            ++matched;
        }
    }
    EXPECT_GE(matched, 1);
    const Eigen::Vector3d right = lens.pose().rotation.col(0);
    EXPECT_GT((corners[0] - corners[1]).dot(right), 0.0) << "flip H puts the image's left edge on the lens's right";

    // The projector has no source: its placeholder is written beside the OBJ.
    EXPECT_TRUE(QFileInfo::exists(QFileInfo(path).dir().filePath(QStringLiteral("3d_view_Beamer_Frustum.png"))));
}

TEST_F(ObjExport, HeaderAndMaterialBlocksAreWrittenInOrder)
{
    const QString path = exportScene({0, 1}, ObjSceneOptions{true, true});
    const QStringList obj = readText(path).split(QLatin1Char('\n'));
    ASSERT_GE(obj.size(), 3);
    EXPECT_EQ(obj.at(0), QStringLiteral("# Vantreo Guide 3D View OBJ"));
    EXPECT_EQ(obj.at(1), QStringLiteral("mtllib 3d_view.mtl"));
    const QString mtl = readText(QFileInfo(path).dir().filePath(QStringLiteral("3d_view.mtl")));
    EXPECT_TRUE(mtl.contains(QStringLiteral("newmtl Poster_1_material\nillum 2\nKa 1.000000 1.000000 1.000000\n"
                                            "Kd 1.000000 1.000000 1.000000\nKs 0.000000 0.000000 0.000000\n"
                                            "Ns 0.000000\nmap_Kd 3d_view_Poster_1.png\n")))
        << mtl.toStdString();
    EXPECT_TRUE(mtl.contains(QStringLiteral("newmtl Wall_0_flat_material\n")));
    // Only the selection: no person, no frustum.
    EXPECT_FALSE(readText(path).contains(QStringLiteral("Person")));
    EXPECT_FALSE(mtl.contains(QStringLiteral("frustum")));
    // Every group is followed by its material and smoothing lines before its faces.
    const int usemtl = obj.indexOf(QStringLiteral("usemtl Wall_0_flat_material"));
    ASSERT_GT(usemtl, 0);
    EXPECT_EQ(obj.at(usemtl + 1), QStringLiteral("s off"));
    EXPECT_TRUE(obj.at(usemtl + 2).startsWith(QStringLiteral("f ")));
}

TEST_F(ObjExport, RefusesEmptyChoicesAndUnmakeableFolders)
{
    QString error;
    const QString path = dir.filePath(QStringLiteral("x.obj"));
    EXPECT_FALSE(writeSceneObj(scene, {}, ObjSceneOptions{true, true}, images, path, nullptr, &error));
    EXPECT_EQ(error, QStringLiteral("No 3D object is selected for OBJ export."));
    // A comment alone is nothing to export.
    EXPECT_FALSE(writeSceneObj(scene, {4}, ObjSceneOptions{true, true}, images, path, nullptr, &error));
    EXPECT_EQ(error, QStringLiteral("No 3D object is selected for OBJ export."));

    QVector<GuideObject> bare = {scene.at(3), scene.at(4)};   // hidden plane and comment
    EXPECT_FALSE(writeSceneObj(bare, {}, {}, images, path, nullptr, &error));
    EXPECT_EQ(error, QStringLiteral("No visible mesh objects are available for OBJ export."));
    EXPECT_FALSE(QFileInfo::exists(path));

    // A folder below a plain file cannot be made.
    QFile blocker(dir.filePath(QStringLiteral("blocker")));
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    blocker.close();
    const QString blocked = dir.filePath(QStringLiteral("blocker/sub/a.obj"));
    EXPECT_FALSE(writeSceneObj(scene, {}, {}, images, blocked, nullptr, &error));
    EXPECT_TRUE(error.startsWith(QStringLiteral("Could not save OBJ file: "))) << error.toStdString();
    EXPECT_TRUE(error.contains(QStringLiteral("a.obj")));
}

TEST_F(ObjExport, HostileNamesStayOnTheirLineAndFallBackToIndexedNames)
{
    scene[0].name = QStringLiteral("벽 \"north\"\nv 9 9 9");
    scene[1].name = QStringLiteral("포스터");
    const QString path = exportScene({}, {});
    const QString text = readText(path);
    EXPECT_FALSE(text.contains(QStringLiteral("\nv 9 9 9")));
    EXPECT_TRUE(text.contains(QStringLiteral("o 벽 \"north\" v 9 9 9\n")));
    EXPECT_TRUE(text.contains(QStringLiteral("g north_v_9_9_9_0\n")));
    // No ASCII letter left: the indexed names.
    EXPECT_TRUE(text.contains(QStringLiteral("o 포스터\ng object_1\n")));
    EXPECT_TRUE(text.contains(QStringLiteral("usemtl material_1\n")));
    EXPECT_TRUE(QFileInfo::exists(QFileInfo(path).dir().filePath(QStringLiteral("3d_view_object_1.png"))));

    Assimp::Importer importer;
    const aiScene *read = importer.ReadFile(path.toStdString(), 0);
    ASSERT_TRUE(read) << importer.GetErrorString();
    EXPECT_EQ(groupsWithMeshes(read),
              (std::vector<std::string>{"north_v_9_9_9_0", "object_1", "Person_170_cm_2", "Beamer_Frustum"}));
}

TEST_F(ObjExport, ExtrudedCurvesAreSurfacesAndFlatOnesAreNot)
{
    GuideObject band;
    band.guide_index = KindCurve;
    band.name = QStringLiteral("Band");
    band.curve_points = {GuideCurvePoint{-1.0, 0.0, -1.2, 0.0, -0.8, 0.0}, GuideCurvePoint{1.0, -1.0, 0.8, -1.0, 1.2, -1.0}};
    band.curve_extrude = 2000.0f;
    GuideObject flat = band;
    flat.name = QStringLiteral("Flat");
    flat.curve_extrude = 0.0f;
    scene = {band, flat};
    const QString path = exportScene({}, {});
    Assimp::Importer importer;
    const aiScene *read = importer.ReadFile(path.toStdString(), 0);
    ASSERT_TRUE(read) << importer.GetErrorString();
    EXPECT_EQ(groupsWithMeshes(read), (std::vector<std::string>{"Band_0"}));
    EXPECT_EQ(size_t(meshByName(read, "Band_0")->mNumFaces) * 3, worldTriangles(band).size());
}

TEST(ExporterTable, RowsAreUniqueAndReachableByIdentifier)
{
    QStringList ids;
    for (const vg::exchange::ExporterEntry &e : vg::exchange::exporterTable()) {
        EXPECT_FALSE(ids.contains(e.identifier)) << e.identifier.toStdString();
        ids.append(e.identifier);
        EXPECT_EQ(vg::exchange::findExporter(e.identifier), &e);
        EXPECT_TRUE(e.fileFilter().endsWith(QStringLiteral("(*.%1)").arg(e.suffix)));
        EXPECT_TRUE(e.directoryKey.startsWith(QStringLiteral("paths/")));
        EXPECT_TRUE(bool(e.run));
    }
    EXPECT_TRUE(ids.contains(QStringLiteral("obj")));
    EXPECT_EQ(vg::exchange::findExporter(QStringLiteral("nope")), nullptr);

    // The table's function is the same export the format offers.
    QTemporaryDir dir;
    vg::exchange::ExportRequest request;
    request.objects = {plane(QStringLiteral("A"), 1.0f, 1.0f)};
    QStringList written;
    QString error;
    ASSERT_TRUE(vg::exchange::findExporter(QStringLiteral("obj"))->run(request, dir.filePath(QStringLiteral("a.obj")),
                                                                         &written, &error))
        << error.toStdString();
    EXPECT_EQ(written.size(), 2);
}
