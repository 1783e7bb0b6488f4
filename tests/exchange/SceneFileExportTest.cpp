// FBX, USD and Maya files of the sample scene read back: FBX by Assimp, USD and Maya ASCII
// by the structural readers of ExportTextParsers.h.

#include "ExportTestSupport.h"
#include "ExportTextParsers.h"

#include "exchange/FbxExport.h"
#include "exchange/MayaExport.h"
#include "exchange/UsdExport.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include <assimp/Importer.hpp>
#include <assimp/scene.h>
#include <gtest/gtest.h>

using namespace exporttest;

namespace {

class SceneFileExport : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(dir.isValid());
        imagePath = dir.filePath(QStringLiteral("poster.png"));
        ASSERT_TRUE(quadrantImage().save(imagePath));
        scene = sampleScene(imagePath);
    }

    QTemporaryDir dir;
    QString imagePath;
    QVector<GuideObject> scene;
    TestImages images;
};

const aiMesh *meshOfNode(const aiScene *read, const char *name)
{
    const aiNode *node = read->mRootNode->FindNode(name);
    return node && node->mNumMeshes ? read->mMeshes[node->mMeshes[0]] : nullptr;
}

} // namespace

TEST_F(SceneFileExport, AssimpReadsTheFbxMeshesInWorldCoordinatesWithTheirTextures)
{
    const QString path = dir.filePath(QStringLiteral("scene.fbx"));
    QStringList written;
    QString error;
    ASSERT_TRUE(vg::exchange::writeSceneFbx(scene, images, path, QDateTime(QDate(2026, 3, 4), QTime(5, 6, 7, 8)), &written,
                                            &error))
        << error.toStdString();
    Assimp::Importer importer;
    const aiScene *read = importer.ReadFile(path.toStdString(), 0);
    ASSERT_TRUE(read) << importer.GetErrorString();
    EXPECT_EQ(read->mNumMeshes, 3u);
    EXPECT_EQ(read->mNumCameras, 1u);
    for (int index : {0, 1, 2}) {
        const GuideObject &o = scene.at(index);
        const aiMesh *mesh = meshOfNode(read, o.name.toUtf8().constData());
        ASSERT_TRUE(mesh) << o.name.toStdString();
        const std::vector<Eigen::Vector3d> expected = worldTriangles(o);
        ASSERT_EQ(size_t(mesh->mNumFaces) * 3, expected.size()) << o.name.toStdString();
        for (unsigned f = 0; f < mesh->mNumFaces; f += std::max(1u, mesh->mNumFaces / 9)) {
            for (int c = 0; c < 3; ++c) {
                const aiVector3D v = mesh->mVertices[mesh->mFaces[f].mIndices[c]];
                EXPECT_LT((Eigen::Vector3d(v.x, v.y, v.z) - expected[f * 3 + c]).norm(), 1e-5);
            }
        }
    }
    const aiMesh *poster = meshOfNode(read, "Poster");
    ASSERT_TRUE(poster);
    aiString texture;
    ASSERT_EQ(read->mMaterials[poster->mMaterialIndex]->GetTexture(aiTextureType_DIFFUSE, 0, &texture), aiReturn_SUCCESS);
    QString texturePath = QString::fromUtf8(texture.C_Str());
    if (QFileInfo(texturePath).isRelative())
        texturePath = QFileInfo(path).dir().filePath(texturePath);
    const QImage picture(texturePath);
    ASSERT_FALSE(picture.isNull()) << texturePath.toStdString();
    EXPECT_EQ(picture.pixel(1, 1), qRgb(255, 0, 0));
    EXPECT_TRUE(texturePath.contains(QStringLiteral("scene_textures")));
    EXPECT_TRUE(written.contains(texturePath) || written.contains(QFileInfo(texturePath).absoluteFilePath()));
}

TEST_F(SceneFileExport, FbxSectionsDefinitionsAndPolygonEndsFollowTheFormat)
{
    const QString path = dir.filePath(QStringLiteral("scene.fbx"));
    QString error;
    ASSERT_TRUE(vg::exchange::writeSceneFbx(scene, images, path, QDateTime(QDate(2026, 3, 4), QTime(5, 6, 7, 8)), nullptr,
                                            &error));
    const QString text = readText(path);
    EXPECT_TRUE(text.startsWith(QStringLiteral("; FBX 7.4.0 project file exported by VantreoGuide\n")));
    int last = -1;
    for (const char *section : {"FBXHeaderExtension:  {", "GlobalSettings:  {", "Documents:  {", "References:  {",
                                "Definitions:  {", "Objects:  {", "Connections:  {", "Takes:  {"}) {
        const int at = text.indexOf(QStringLiteral("\n") + QLatin1String(section));
        EXPECT_GT(at, last) << section;
        last = at;
    }
    EXPECT_TRUE(text.contains(QStringLiteral("\t\tYear: 2026\n\t\tMonth: 3\n\t\tDay: 4\n\t\tHour: 5\n\t\tMinute: 6\n")));
    EXPECT_EQ(bracketProblem(text), QString());
    // Definitions count what Objects holds.
    auto definedCount = [&](const char *type) {
        return int(numberAfter(textFrom(text, QStringLiteral("ObjectType: \"%1\"").arg(QLatin1String(type))), QStringLiteral("Count:")));
    };
    EXPECT_EQ(definedCount("Geometry"), int(text.count(QStringLiteral("\tGeometry: "))));
    EXPECT_EQ(definedCount("Model"), int(text.count(QStringLiteral("\tModel: "))));
    EXPECT_EQ(definedCount("Material"), int(text.count(QStringLiteral("\tMaterial: "))));
    EXPECT_EQ(definedCount("NodeAttribute"), 1);
    // Every polygon is a triangle whose third index is stored complemented.
    const QString polygon = textFrom(text, QStringLiteral("PolygonVertexIndex: *"));
    const std::vector<double> indices = fbxArray(text, QStringLiteral("PolygonVertexIndex: *"));
    ASSERT_FALSE(indices.empty());
    EXPECT_EQ(int(numberAfter(polygon, QStringLiteral("*"))), int(indices.size()));
    for (size_t i = 0; i < indices.size(); ++i)
        EXPECT_EQ(indices[i] < 0, i % 3 == 2) << i;
}

TEST_F(SceneFileExport, UsdLayerParsesAndPlacesEveryPointInTheWorld)
{
    scene[2].name = QStringLiteral("Materials");               // would clash with the scope
    scene[0].name = QStringLiteral("1 \"Wall\" 벽");            // digit first, quotes, Korean
    const QString path = dir.filePath(QStringLiteral("vantreo_scene.usda"));
    QStringList written;
    QString error;
    ASSERT_TRUE(vg::exchange::writeSceneUsd(scene, images, path, &written, &error)) << error.toStdString();
    const QString text = readText(path);
    ASSERT_TRUE(text.startsWith(QStringLiteral("#usda 1.0\n(\n    defaultPrim = \"Scene\"\n    metersPerUnit = 1\n    upAxis = \"Y\"\n)\n")));
    EXPECT_EQ(bracketProblem(text), QString());
    QString problem;
    const std::vector<UsdPrim> prims = usdPrims(text, &problem);
    ASSERT_EQ(problem, QString());
    QSet<QString> paths;
    for (const UsdPrim &p : prims) {
        EXPECT_FALSE(paths.contains(p.path)) << "named twice: " << p.path.toStdString();
        paths.insert(p.path);
        static const QRegularExpression identifier(QStringLiteral("^[A-Za-z_][A-Za-z0-9_]*$"));
        EXPECT_TRUE(identifier.match(p.path.section(QLatin1Char('/'), -1)).hasMatch()) << p.path.toStdString();
    }
    EXPECT_TRUE(paths.contains(QStringLiteral("/Scene/_1_Wall")));
    EXPECT_TRUE(paths.contains(QStringLiteral("/Scene/Materials_2")));
    EXPECT_TRUE(paths.contains(QStringLiteral("/Scene/Beamer_5_Camera")));
    // Every relationship and connection names a prim that exists.
    static const QRegularExpression target(QStringLiteral("<(/[^>.]*)(?:\\.[^>]*)?>"));
    auto it = target.globalMatch(text);
    int targets = 0;
    while (it.hasNext()) {
        const QString p = it.next().captured(1);
        EXPECT_TRUE(paths.contains(p)) << p.toStdString();
        ++targets;
    }
    EXPECT_GE(targets, 3 + 3 + 2);   // bindings, surface outputs, texture connections
    // Arrays hold what they claim, and points under the transform land where the scene has them.
    int meshes = 0;
    for (const UsdPrim &p : prims) {
        if (p.type != QLatin1String("Mesh"))
            continue;
        ++meshes;
        const QString body = p.lines.join(QLatin1Char('\n'));
        int faces = 0, indexCount = 0, pointCount = 0, normalCount = 0, stCount = 0;
        const std::vector<double> counts = usdArray(body, QStringLiteral("int[] faceVertexCounts"), &faces);
        const std::vector<double> indices = usdArray(body, QStringLiteral("int[] faceVertexIndices"), &indexCount);
        const std::vector<double> points = usdArray(body, QStringLiteral("point3f[] points"), &pointCount);
        usdArray(body, QStringLiteral("normal3f[] normals"), &normalCount);
        usdArray(body, QStringLiteral("texCoord2f[] primvars:st"), &stCount);
        double sum = 0.0;
        for (double c : counts)
            sum += c;
        EXPECT_EQ(int(sum), indexCount) << p.path.toStdString();
        EXPECT_EQ(int(points.size()), 3 * pointCount);
        EXPECT_EQ(normalCount, pointCount);
        EXPECT_EQ(stCount, indexCount);   // faceVarying
        for (double i : indices)
            EXPECT_LT(int(i), pointCount);
        const std::vector<double> m = usdMatrix(body);
        ASSERT_EQ(m.size(), 16u);
        const int sceneIndex = p.path.endsWith(QStringLiteral("_1_Wall")) ? 0 : p.path.endsWith(QStringLiteral("Poster")) ? 1 : 2;
        const std::vector<Eigen::Vector3d> expected = worldTriangles(scene.at(sceneIndex));
        ASSERT_EQ(expected.size(), size_t(indexCount));
        for (size_t k = 0; k < indices.size(); k += 17) {
            const size_t v = size_t(indices[k]) * 3;
            const Eigen::Vector3d local(points[v], points[v + 1], points[v + 2]);
            Eigen::Vector3d world;
            for (int c = 0; c < 3; ++c)
                world[c] = local.x() * m[size_t(c)] + local.y() * m[size_t(4 + c)] + local.z() * m[size_t(8 + c)] + m[size_t(12 + c)];
            EXPECT_LT((world - expected[k]).norm(), 1e-5) << p.path.toStdString();
        }
    }
    EXPECT_EQ(meshes, 3);
    // The poster's texture sits in the texture folder under its prim's name.
    EXPECT_TRUE(text.contains(QStringLiteral("asset inputs:file = @vantreo_scene_textures/Poster.png@")));
    EXPECT_EQ(QImage(dir.filePath(QStringLiteral("vantreo_scene_textures/Poster.png"))).pixel(1, 1), qRgb(255, 0, 0));
}

TEST_F(SceneFileExport, MayaSceneNamesEveryNodeOnceAndImportsItsCompanion)
{
    scene[5].name = QStringLiteral("Beamer \"A\"");
    GuideObject second = projector(QStringLiteral("Beamer \"A\""));
    second.translate_x = -2.0f;
    GuideObject unnamed = projector(QStringLiteral("프로젝터"));
    scene.append(second);
    scene.append(unnamed);
    const QString path = dir.filePath(QStringLiteral("projector_scene.ma"));
    QStringList written;
    QString error;
    ASSERT_TRUE(vg::exchange::writeMayaScene(scene, {5, 6, 7, 0}, images, path, &written, &error)) << error.toStdString();
    const QString text = readText(path);
    EXPECT_EQ(bracketProblem(text), QString());
    const QStringList lines = text.split(QLatin1Char('\n'));
    EXPECT_EQ(lines.at(0), QStringLiteral("//Maya ASCII projector scene exported by VantreoGuide"));
    EXPECT_EQ(lines.at(2), QStringLiteral("requires maya \"2024\";"));
    EXPECT_EQ(lines.at(3), QStringLiteral("currentUnit -linear \"cm\" -angle \"degree\" -time \"film\";"));

    static const QRegularExpression created(QStringLiteral("(?:createNode \\w+|curve -d 1) -n \"([^\"]+)\"(?: -p \"([^\"]+)\")?"));
    static const QRegularExpression parented(QStringLiteral("^parent \"([^\"]+)\" \"([^\"]+)\";$"));
    static const QRegularExpression knots(QStringLiteral("^curve -d 1 -n \"[^\"]+\"((?: -p \\S+ \\S+ \\S+)+)((?: -k \\S+)+);$"));
    QSet<QString> nodes;
    for (const QString &line : lines) {
        const QRegularExpressionMatch m = created.match(line);
        if (m.hasMatch()) {
            EXPECT_FALSE(nodes.contains(m.captured(1))) << "named twice: " << m.captured(1).toStdString();
            if (!m.captured(2).isEmpty()) {
                EXPECT_TRUE(nodes.contains(m.captured(2))) << m.captured(2).toStdString();
            }
            nodes.insert(m.captured(1));
        }
        const QRegularExpressionMatch p = parented.match(line);
        if (p.hasMatch()) {
            EXPECT_TRUE(nodes.contains(p.captured(1)));
            EXPECT_TRUE(nodes.contains(p.captured(2)));
        }
        const QRegularExpressionMatch k = knots.match(line);
        if (k.hasMatch()) {   // degree 1: one knot per point
            EXPECT_EQ(k.captured(1).count(QStringLiteral("-p")), k.captured(2).count(QStringLiteral("-k")));
        }
    }
    // Three lenses: a camera, a shape, a frustum group and eight curves each.
    EXPECT_EQ(nodes.size(), 3 * 11);
    EXPECT_TRUE(nodes.contains(QStringLiteral("Beamer_A_Camera")));
    EXPECT_TRUE(nodes.contains(QStringLiteral("Beamer_A_6_Camera")));
    EXPECT_TRUE(nodes.contains(QStringLiteral("Projector_Camera")));
    EXPECT_TRUE(nodes.contains(QStringLiteral("Projector_Frustum")));
    EXPECT_TRUE(nodes.contains(QStringLiteral("Beamer_A_Lens_TopLeft")));

    // The companion OBJ is named in the import block and holds the visible surfaces.
    const QString companion = dir.filePath(QStringLiteral("projector_scene_scene.obj"));
    EXPECT_TRUE(text.contains(QStringLiteral("\"%1\"`;").arg(companion)));
    EXPECT_TRUE(text.contains(QStringLiteral("createNode transform -name \"VantreoGuide_Scene_cm\"")));
    EXPECT_TRUE(text.contains(QStringLiteral("\".scale\") -type \"double3\" 100 100 100;")));
    Assimp::Importer importer;
    const aiScene *read = importer.ReadFile(companion.toStdString(), 0);
    ASSERT_TRUE(read) << importer.GetErrorString();
    EXPECT_EQ(read->mNumMeshes, 3u);   // wall, poster, person; no frustums
    EXPECT_TRUE(written.contains(companion));
}

TEST_F(SceneFileExport, EmptyScenesAndUnmakeableFoldersAreRefused)
{
    const QVector<GuideObject> nothing = {scene.at(3), scene.at(4)};   // hidden plane, comment
    QString error;
    EXPECT_FALSE(vg::exchange::writeSceneFbx(nothing, images, dir.filePath(QStringLiteral("a.fbx")), QDateTime(), nullptr, &error));
    EXPECT_EQ(error, QStringLiteral("No visible mesh objects or projectors are available for FBX export."));
    EXPECT_FALSE(vg::exchange::writeSceneUsd(nothing, images, dir.filePath(QStringLiteral("a.usda")), nullptr, &error));
    EXPECT_EQ(error, QStringLiteral("No visible mesh objects or projectors are available for USD export."));
    EXPECT_FALSE(vg::exchange::writeMayaScene(scene, {0, 1}, images, dir.filePath(QStringLiteral("a.ma")), nullptr, &error));
    EXPECT_EQ(error, QStringLiteral("Select a projector or camera object first."));
    EXPECT_FALSE(QFileInfo::exists(dir.filePath(QStringLiteral("a.fbx"))));

    QFile blocker(dir.filePath(QStringLiteral("file")));
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    blocker.close();
    const QString under = dir.filePath(QStringLiteral("file/sub"));
    EXPECT_FALSE(vg::exchange::writeSceneFbx(scene, images, under + QStringLiteral("/a.fbx"), QDateTime(), nullptr, &error));
    EXPECT_EQ(error, QStringLiteral("Could not create export folder: ") + QDir::toNativeSeparators(under));
    EXPECT_FALSE(vg::exchange::writeSceneUsd(scene, images, under + QStringLiteral("/a.usda"), nullptr, &error));
    EXPECT_EQ(error, QStringLiteral("Could not create export folder: ") + QDir::toNativeSeparators(under));
    EXPECT_FALSE(vg::exchange::writeMayaScene(scene, {5}, images, under + QStringLiteral("/a.ma"), nullptr, &error));
    EXPECT_EQ(error, QStringLiteral("Could not create export folder: ") + QDir::toNativeSeparators(under));

    // The texture folder beside a USD layer is blocked by a file of that name: nothing is written.
    QFile textureBlocker(dir.filePath(QStringLiteral("b_textures")));
    ASSERT_TRUE(textureBlocker.open(QIODevice::WriteOnly));
    textureBlocker.close();
    EXPECT_FALSE(vg::exchange::writeSceneUsd(scene, images, dir.filePath(QStringLiteral("b.usda")), nullptr, &error));
    EXPECT_TRUE(error.startsWith(QStringLiteral("Could not create export folder: "))) << error.toStdString();
    EXPECT_FALSE(QFileInfo::exists(dir.filePath(QStringLiteral("b.usda"))));
}
