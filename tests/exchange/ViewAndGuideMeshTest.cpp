#include "ExportTestSupport.h"
#include "ExportTextParsers.h"

#include "exchange/GuideMeshExport.h"
#include "exchange/ViewMeshExport.h"
#include "guide/GuideRenderer.h"

#include <QFileInfo>
#include <QTemporaryDir>

#include <assimp/Importer.hpp>
#include <assimp/scene.h>
#include <gtest/gtest.h>

using namespace exporttest;
using vg::exchange::ViewMeshOptions;
using vg::exchange::writeViewMesh;

namespace {

// A projector at the origin looking down -Z (throw 1, no shift, 1600 x 1000). The wall at
// 4 m fills its frame exactly; a card at 2 m hides the middle of the wall; a plane to the
// lens's right sits half outside the frame; a plane behind the lens is never seen.
QVector<GuideObject> viewScene()
{
    GuideObject p = projector(QStringLiteral("P"));
    p.lens_shift_y = 0.0f;
    p.projector_resolution_width = 1600;
    p.projector_resolution_height = 1000;
    GuideObject wall = plane(QStringLiteral("Wall"), 4.0f, 2.5f);
    wall.translate_z = -4.0f;
    wall.plane_u_lines = 16;
    wall.plane_v_lines = 10;
    GuideObject card = plane(QStringLiteral("Card"), 0.6f, 0.4f);
    card.translate_z = -2.0f;
    card.plane_u_lines = card.plane_v_lines = 1;
    GuideObject side = plane(QStringLiteral("Side"), 1.0f, 0.5f);
    side.translate_x = 1.0f;
    side.translate_z = -2.0f;
    side.plane_u_lines = side.plane_v_lines = 1;
    GuideObject behind = plane(QStringLiteral("Behind"), 1.0f, 1.0f);
    behind.translate_z = 2.0f;
    behind.rotate_y = 180.0f;
    return {p, wall, card, side, behind};
}

struct ObjData {
    QStringList header;
    // group name -> faces (three corners of x, y, z, u, v)
    std::map<QString, std::vector<std::array<std::array<double, 5>, 3>>> faces;
};

ObjData readObj(const QString &path)
{
    ObjData data;
    std::vector<std::array<double, 3>> v;
    std::vector<std::array<double, 2>> vt;
    QString group;
    for (const QString &line : readText(path).split(QLatin1Char('\n'))) {
        const QStringList p = line.split(QLatin1Char(' '), Qt::SkipEmptyParts);
        if (line.startsWith(QLatin1Char('#')))
            data.header.append(line);
        else if (p.value(0) == QLatin1String("v"))
            v.push_back({p[1].toDouble(), p[2].toDouble(), p[3].toDouble()});
        else if (p.value(0) == QLatin1String("vt"))
            vt.push_back({p[1].toDouble(), p[2].toDouble()});
        else if (p.value(0) == QLatin1String("g"))
            group = p[1];
        else if (p.value(0) == QLatin1String("f")) {
            std::array<std::array<double, 5>, 3> face;
            for (int k = 0; k < 3; ++k) {
                const QStringList idx = p[k + 1].split(QLatin1Char('/'));
                const auto &pos = v.at(size_t(idx[0].toInt() - 1));
                const auto &uv = vt.at(size_t(idx[1].toInt() - 1));
                face[k] = {pos[0], pos[1], pos[2], uv[0], uv[1]};
            }
            data.faces[group].push_back(face);
        }
    }
    return data;
}

class ViewMesh : public ::testing::Test
{
protected:
    ObjData run(const ViewMeshOptions &options, QVector<GuideObject> scene = viewScene())
    {
        const QString path = dir.filePath(QStringLiteral("projector_view_mesh.obj"));
        QString error;
        EXPECT_TRUE(writeViewMesh(scene, 0, options, images, path, nullptr, &error)) << error.toStdString();
        return readObj(path);
    }

    QTemporaryDir dir;
    TestImages images;
};

} // namespace

TEST_F(ViewMesh, CroppedFlatPixelsWithHiddenFacesRemoved)
{
    const ObjData obj = run(ViewMeshOptions{true, true, false, 0});
    ASSERT_GE(obj.header.size(), 6);
    EXPECT_EQ(obj.header.at(0), QStringLiteral("# Vantreo Guide Projector View Mesh OBJ"));
    EXPECT_EQ(obj.header.at(1), QStringLiteral("# Mode: 2D, Clip: On, Normalize: Off, Frame Margin: 0 px"));
    EXPECT_TRUE(obj.header.contains(QStringLiteral("# Coordinates are projector-resolution pixels.")));
    EXPECT_TRUE(obj.header.contains(QStringLiteral("# Z values are flattened to 0.")));
    EXPECT_TRUE(obj.header.contains(QStringLiteral("# Hidden back surfaces are skipped with projector-space depth filtering.")));
    EXPECT_EQ(obj.faces.count(QStringLiteral("Behind_4")), 0u);
    ASSERT_EQ(obj.faces.count(QStringLiteral("Wall_1")), 1u);
    ASSERT_EQ(obj.faces.count(QStringLiteral("Card_2")), 1u);
    ASSERT_EQ(obj.faces.count(QStringLiteral("Side_3")), 1u);
    // The card spans x 0.5 m at 2 m, a quarter of the frame: pixels 560..1040 by 400..600.
    for (const auto &[group, faces] : obj.faces) {
        for (const auto &f : faces) {
            double cx = 0, cy = 0;
            for (const auto &c : f) {
                EXPECT_GE(c[0], -1e-3);
                EXPECT_LE(c[0], 1600 + 1e-3);
                EXPECT_GE(c[1], -1e-3);
                EXPECT_LE(c[1], 1000 + 1e-3);
                EXPECT_EQ(c[2], 0.0);
                cx += c[0] / 3;
                cy += c[1] / 3;
            }
            if (group == QLatin1String("Wall_1")) {
                EXPECT_FALSE(cx > 610 && cx < 990 && cy > 420 && cy < 580) << "hidden wall face at " << cx << "," << cy;
            }
        }
    }
    // The side plane reaches past the right edge and is cut there.
    double maxX = 0;
    for (const auto &f : obj.faces.at(QStringLiteral("Side_3")))
        for (const auto &c : f)
            maxX = std::max(maxX, c[0]);
    EXPECT_NEAR(maxX, 1600.0, 1e-3);
    // The wall fills the frame: the top-left pixel (Y up, so y = 1000) shows its top-left texel.
    bool found = false;
    for (const auto &f : obj.faces.at(QStringLiteral("Wall_1")))
        for (const auto &c : f)
            if (std::abs(c[0]) < 1e-3 && std::abs(c[1] - 1000) < 1e-3) {
                EXPECT_NEAR(c[3], 0.0, 1e-5);
                EXPECT_NEAR(c[4], 1.0, 1e-5);
                found = true;
            }
    EXPECT_TRUE(found);
}

TEST_F(ViewMesh, FlipsMirrorTheMeshAndFacesStayFrontFacing)
{
    QVector<GuideObject> scene = viewScene();
    scene[0].projector_flip_h = true;
    const ObjData obj = run(ViewMeshOptions{true, true, false, 0}, scene);
    // Flip H: the side plane (lens right) lands on the left of the image.
    for (const auto &f : obj.faces.at(QStringLiteral("Side_3")))
        for (const auto &c : f)
            EXPECT_LT(c[0], 800.0);
    // The image's top-left pixel now shows the wall's top-right texel.
    bool found = false;
    for (const auto &[group, faces] : obj.faces)
        for (const auto &f : faces) {
            const double area = (f[1][0] - f[0][0]) * (f[2][1] - f[0][1]) - (f[1][1] - f[0][1]) * (f[2][0] - f[0][0]);
            EXPECT_GT(area, 0.0) << group.toStdString();
            if (group == QLatin1String("Wall_1"))
                for (const auto &c : f)
                    if (std::abs(c[0]) < 1e-3 && std::abs(c[1] - 1000) < 1e-3) {
                        EXPECT_NEAR(c[3], 1.0, 1e-5);
                        found = true;
                    }
        }
    EXPECT_TRUE(found);
}

TEST_F(ViewMesh, UncroppedNormalizedDepthWithMargin)
{
    const ObjData obj = run(ViewMeshOptions{false, false, true, 100});
    EXPECT_EQ(obj.header.at(1), QStringLiteral("# Mode: 3D, Clip: Off, Normalize: On, Frame Margin: 100 px"));
    EXPECT_TRUE(obj.header.contains(QStringLiteral("# Coordinates are normalized: X = -aspect..aspect, Y = -1..1.")));
    EXPECT_TRUE(obj.header.contains(QStringLiteral("# Z values are projector depth from the lens.")));
    // Uncut: the side plane keeps its far edge at x = 1.5 m at 2 m depth: u = 1.25, X = 1.5 · 1.6.
    double maxX = -10;
    for (const auto &f : obj.faces.at(QStringLiteral("Side_3")))
        for (const auto &c : f) {
            maxX = std::max(maxX, c[0]);
            EXPECT_NEAR(c[2], 2.0, 1e-5);
        }
    EXPECT_NEAR(maxX, 1.5 * 1.6, 1e-4);
    for (const auto &f : obj.faces.at(QStringLiteral("Card_2")))
        for (const auto &c : f) {
            EXPECT_LE(std::abs(c[0]), 1.6);
            EXPECT_LE(std::abs(c[1]), 1.0);
        }
}

TEST_F(ViewMesh, ChoicesThatCannotBeExported)
{
    const QVector<GuideObject> scene = viewScene();
    const QString path = dir.filePath(QStringLiteral("v.obj"));
    QString error;
    EXPECT_FALSE(writeViewMesh(scene, -1, {}, images, path, nullptr, &error));
    EXPECT_EQ(error, QStringLiteral("Select a projector or camera object first."));
    EXPECT_FALSE(writeViewMesh(scene, 9, {}, images, path, nullptr, &error));
    EXPECT_EQ(error, QStringLiteral("Selected projector is no longer available."));
    EXPECT_FALSE(writeViewMesh(scene, 1, {}, images, path, nullptr, &error));
    EXPECT_EQ(error, QStringLiteral("Selected object is not a projector or camera."));
    QVector<GuideObject> away = scene;
    away[0].rotate_x = 90.0f;   // looks straight up at nothing
    EXPECT_FALSE(writeViewMesh(away, 0, {}, images, path, nullptr, &error));
    EXPECT_EQ(error, QStringLiteral("No mesh faces are visible inside the selected projector view."));
    EXPECT_FALSE(QFileInfo::exists(path));
}

TEST(ViewMeshOptionsRecord, ReadsStoredValuesAndClampsThem)
{
    const ViewMeshOptions o = ViewMeshOptions::fromVariantMap(
        {{QStringLiteral("flattenTo2D"), QStringLiteral("false")}, {QStringLiteral("cropToProjector"), 0},
         {QStringLiteral("normalizeCoordinates"), QStringLiteral("1")}, {QStringLiteral("frameMarginPixels"), -40}});
    EXPECT_EQ(o, (ViewMeshOptions{false, false, true, 0}));
    EXPECT_EQ(ViewMeshOptions::fromVariantMap({{QStringLiteral("frameMarginPixels"), 1e12}}).frameMarginPixels,
              ViewMeshOptions::kMaxMarginPixels);
    EXPECT_EQ(ViewMeshOptions::fromVariantMap(o.toVariantMap()), o);
    EXPECT_EQ(ViewMeshOptions::settingsKey("flattenTo2D"), QStringLiteral("export/viewMesh/flattenTo2D"));
}

TEST(GuideMesh, NamesFollowTheGuideName)
{
    EXPECT_EQ(vg::exchange::guideMeshNames(QString()).object, QStringLiteral("VantreoGuide_Object"));
    EXPECT_EQ(vg::exchange::guideMeshNames(QString()).material, QStringLiteral("VantreoGuide_Material"));
    const auto named = vg::exchange::guideMeshNames(QStringLiteral("Main \"Hall\""));
    EXPECT_EQ(named.object, QStringLiteral("VantreoGuide_Main_Hall"));
    EXPECT_EQ(named.material, QStringLiteral("VantreoGuideMaterial_Main_Hall"));
    EXPECT_EQ(named.procedure, QStringLiteral("VantreoApplySurfaceShader_Main_Hall"));
    EXPECT_EQ(named.shader, QStringLiteral("VantreoGuide_Main_Hall_SurfaceShader"));
    EXPECT_EQ(vg::exchange::guideMeshNames(QStringLiteral("본관")).object, QStringLiteral("VantreoGuide_Object"));
}

TEST(GuideMesh, ObjMtlMelAndPictureReadBack)
{
    QTemporaryDir dir;
    GuideSettings guide;
    guide.realWidth = 4000;
    guide.realHeight = 2500;
    guide.columns = 8;
    guide.rows = 5;
    guide.pixelWidth = 320;
    guide.pixelHeight = 200;
    const QImage picture = renderGuideImage(guide);
    QStringList written;
    QString error;
    const QString base = dir.filePath(QStringLiteral("hall"));
    ASSERT_TRUE(vg::exchange::writeGuideMesh(guide, picture, QStringLiteral("Hall"), base + QStringLiteral(".obj"), &written,
                                             &error))
        << error.toStdString();
    EXPECT_EQ(written.size(), 4);

    Assimp::Importer importer;
    const aiScene *read = importer.ReadFile((base + QStringLiteral(".obj")).toStdString(), 0);
    ASSERT_TRUE(read) << importer.GetErrorString();
    ASSERT_EQ(read->mNumMeshes, 1u);
    const aiMesh *mesh = read->mMeshes[0];
    EXPECT_EQ(mesh->mNumFaces, 2u * 8 * 5);
    int corners = 0;
    for (unsigned i = 0; i < mesh->mNumVertices; ++i) {
        const aiVector3D p = mesh->mVertices[i];
        EXPECT_LE(std::abs(p.x), 2.0f + 1e-6f);
        EXPECT_LE(std::abs(p.y), 1.25f + 1e-6f);
        EXPECT_EQ(p.z, 0.0f);
        if (std::abs(p.x + 2.0f) < 1e-6f && std::abs(p.y - 1.25f) < 1e-6f) {   // top-left
            EXPECT_NEAR(mesh->mTextureCoords[0][i].x, 0.0, 1e-6);
            EXPECT_NEAR(mesh->mTextureCoords[0][i].y, 1.0, 1e-6);
            ++corners;
        }
        EXPECT_NEAR(mesh->mNormals[i].z, 1.0, 1e-6);
    }
    EXPECT_GT(corners, 0);
    aiString texture;
    ASSERT_EQ(read->mMaterials[mesh->mMaterialIndex]->GetTexture(aiTextureType_DIFFUSE, 0, &texture), aiReturn_SUCCESS);
    EXPECT_STREQ(texture.C_Str(), "hall_VantreoGuide_Hall.png");
    EXPECT_EQ(QImage(dir.filePath(QString::fromUtf8(texture.C_Str()))), picture.convertToFormat(QImage::Format_RGB32));

    EXPECT_EQ(readText(base + QStringLiteral(".mtl")),
              QStringLiteral("newmtl VantreoGuideMaterial_Hall\nillum 0\nKa 1.00 1.00 1.00\nKd 1.00 1.00 1.00\n"
                             "Ks 0.00 0.00 0.00\nKe 1.00 1.00 1.00\nNs 0.00\nd 1.00\nTf 1.00 1.00 1.00\nNi 1.00\n"
                             "map_Kd hall_VantreoGuide_Hall.png\nmap_Ke hall_VantreoGuide_Hall.png\n"));
    const QString mel = readText(base + QStringLiteral("_maya_surface.mel"));
    EXPECT_TRUE(mel.startsWith(QStringLiteral("// Vantreo Guide Maya surface shader helper.\n// Import the OBJ first")));
    EXPECT_TRUE(mel.contains(QStringLiteral("global proc VantreoApplySurfaceShader_Hall()")));
    EXPECT_TRUE(mel.contains(QStringLiteral("string $objectName = \"VantreoGuide_Hall\";")));
    EXPECT_TRUE(mel.contains(QStringLiteral("Select the imported Vantreo guide mesh and run this script again.")));
    EXPECT_TRUE(mel.contains(QStringLiteral("sets -e -forceElement $sgName $targets;")));
    EXPECT_TRUE(mel.contains(dir.filePath(QStringLiteral("hall_VantreoGuide_Hall.png"))));
    EXPECT_EQ(bracketProblem(mel), QString());
}
