#include "scene/GuideArraySlices.h"
#include "scene/LensModel.h"
#include "scene/SceneModel.h"
#include "scene/ScenePlacement.h"
#include "scene/Transform.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace vg::scene;

namespace {

GuideObject wall(double x, double y, double z, float halfWidth, float halfHeight, float rotateY = 0.0f)
{
    GuideObject o = SceneModel::defaultObject(KindPlane);
    o.name = QStringLiteral("Wall");
    o.scale_x = halfWidth;
    o.scale_y = halfHeight;
    o.scale_z = 0.01f;
    o.translate_x = float(x);
    o.translate_y = float(y);
    o.translate_z = float(z);
    o.rotate_y = rotateY;
    return o;
}

// A camera behind +Z looking at the origin along -Z.
PlacementView lookingDownMinusZ()
{
    PlacementView view;
    view.eye = Eigen::Vector3d(0.0, 2.0, 6.0);
    view.target = Eigen::Vector3d(0.0, 0.0, 0.0);
    return view;
}

} // namespace

TEST(ScenePlacement, NewSurfaceStandsAtTheCameraTargetAndFacesTheCamera)
{
    PlacementView view;
    view.eye = Eigen::Vector3d(6.0, 2.0, 0.0); // looking along -X
    view.target = Eigen::Vector3d(1.0, 0.0, -2.0);
    GuideObject plane = wall(0, 1.0, 0, 1.0f, 1.0f);
    const GuideObject placed = placedNewObject(plane, {}, -1, view);
    EXPECT_FLOAT_EQ(placed.translate_x, 1.0f);
    EXPECT_FLOAT_EQ(placed.translate_y, 1.0f); // still standing on the floor
    EXPECT_FLOAT_EQ(placed.translate_z, -2.0f);
    // Its front (+Z) turns towards the camera, in whole 15° steps.
    const Eigen::Vector3d front = objectRotation(placed).col(2);
    Eigen::Vector3d toEye = view.eye - objectTranslation(placed);
    toEye.y() = 0.0;
    EXPECT_GT(front.dot(toEye.normalized()), 0.97);
    EXPECT_EQ(std::fmod(std::abs(placed.rotate_y), 15.0f), 0.0f);
}

TEST(ScenePlacement, NewObjectGoesToTheRightOfTheSelectionAsTheCameraSeesIt)
{
    QVector<GuideObject> scene{wall(2.0, 1.0, 0.0, 1.0f, 1.0f)};
    GuideObject plane = wall(0, 0.5, 0, 0.5f, 0.5f);
    const GuideObject placed = placedNewObject(plane, scene, 0, lookingDownMinusZ());
    // Right of the neighbour on screen is +X here: 2 + 1 + 0.5 + gap; never to its left.
    EXPECT_NEAR(placed.translate_x, 2.0 + 1.0 + 0.5 + kPlacementGap, 1e-5);
    EXPECT_NEAR(placed.translate_z, 0.0, 1e-5);

    // Seen from the other side, the camera's right is -X.
    PlacementView behind;
    behind.eye = Eigen::Vector3d(2.0, 2.0, -6.0);
    behind.target = Eigen::Vector3d(2.0, 0.0, 0.0);
    const GuideObject other = placedNewObject(plane, scene, 0, behind);
    EXPECT_NEAR(other.translate_x, 2.0 - (1.0 + 0.5 + kPlacementGap), 1e-5);
}

TEST(ScenePlacement, NewProjectorFacesTheNearestSurfaceWithItsImageCentredOnIt)
{
    // The near wall faces +Z at 3 m; a second wall stands far off to the side.
    QVector<GuideObject> scene{wall(0.0, 1.5, -3.0, 2.0f, 1.0f), wall(30.0, 1.5, -3.0, 2.0f, 1.0f)};
    GuideObject projector = SceneModel::defaultObject(KindProjector);
    projector.throw_rate = 1.2f;
    const GuideObject placed = placedNewObject(projector, scene, -1, lookingDownMinusZ());

    const LensIntrinsics lens = lensIntrinsicsOf(placed);
    const LensPose pose = lensPoseOf(placed);
    const double distance = 1.2 * 4.0; // throw ratio times the wall's width
    const LensProjection centre = projectWorldPoint(lens, pose, Eigen::Vector3d(0.0, 1.5, -3.0), 100.0);
    ASSERT_TRUE(centre.inside);
    EXPECT_NEAR(centre.u, 0.5, 1e-4);
    EXPECT_NEAR(centre.v, 0.5, 1e-4);
    EXPECT_NEAR(centre.depth, distance, 1e-4);
    // The wall's left edge is the image's left edge (a mirrored lens would put it right).
    const LensProjection left = projectWorldPoint(lens, pose, Eigen::Vector3d(-2.0, 1.5, -3.0), 100.0);
    EXPECT_NEAR(left.u, 0.0, 1e-4);
    // A +50 % shift hangs the image below the lens, as from a ceiling mount: the lens sits
    // half an image (2.5 m / 2) above the wall's centre.
    EXPECT_NEAR(placed.translate_y, 1.5 + 1.25, 1e-4);
    EXPECT_GT(placed.translate_z, -3.0f + 1.0f);
}

TEST(ScenePlacement, ProjectorBesideAProjectorContinuesTheRow)
{
    GuideObject first = SceneModel::defaultObject(KindProjector);
    first.translate_x = -1.0f;
    first.translate_y = 2.7f;
    first.translate_z = 4.0f;
    first.rotate_x = -10.0f;
    first.rotate_y = 20.0f;
    GuideObject second = SceneModel::defaultObject(KindProjector);
    second.scale_x = second.scale_z = 0.15f;
    first.scale_x = first.scale_z = 0.15f;
    const GuideObject placed =
        placedNewObject(second, {wall(0, 1.5, -3, 2, 1), first}, 1, lookingDownMinusZ());
    EXPECT_FLOAT_EQ(placed.translate_y, 2.7f);
    EXPECT_FLOAT_EQ(placed.rotate_x, -10.0f);
    EXPECT_FLOAT_EQ(placed.rotate_y, 20.0f);
    EXPECT_NEAR(placed.translate_x, -1.0 + 0.15 + 0.15 + kPlacementGap, 1e-5);
}

TEST(ScenePlacement, ProjectorWithNothingToFaceLooksWhereTheCameraLooks)
{
    GuideObject projector = SceneModel::defaultObject(KindProjector);
    const GuideObject placed = placedNewObject(projector, {}, -1, lookingDownMinusZ());
    EXPECT_FLOAT_EQ(placed.translate_y, 1.5f);
    const Eigen::Vector3d lookDirection = -objectRotation(placed).col(2);
    EXPECT_NEAR(lookDirection.z(), -1.0, 1e-6);
}

TEST(ScenePlacement, PasteMovesAsideOnlyWhereTheOriginalsStand)
{
    const PlacementView view = lookingDownMinusZ();
    QVector<GuideObject> scene{wall(1.0, 1.0, 0.0, 1.0f, 1.0f)};

    QVector<GuideObject> copy = scene;
    offsetPastedObjects(copy, scene, view);
    EXPECT_NEAR(copy[0].translate_x, 1.0 + kPasteOffset, 1e-5); // to the camera's right
    EXPECT_FLOAT_EQ(copy[0].translate_y, 1.0f);

    // A second paste of the same copy steps past the first one.
    scene.append(copy);
    QVector<GuideObject> again{scene[0]};
    offsetPastedObjects(again, scene, view);
    EXPECT_NEAR(again[0].translate_x, 1.0 + 2 * kPasteOffset, 1e-5);

    // Into an empty spot (another view) positions are kept.
    QVector<GuideObject> elsewhere{scene[0]};
    offsetPastedObjects(elsewhere, {}, view);
    EXPECT_FLOAT_EQ(elsewhere[0].translate_x, 1.0f);
}

TEST(GuideArraySlicesLookup, ProjectorShowsItsColumnAndRowOrTheWholeGuide)
{
    GuideArraySlices array;
    array.columns = 3;
    array.rows = 1;
    array.rects = {QRectF(0.0, 0.0, 0.4, 1.0), QRectF(0.3, 0.0, 0.4, 1.0), QRectF(0.6, 0.0, 0.4, 1.0)};
    const QVector<GuideArraySlices> arrays{GuideArraySlices{}, array};

    GuideObject projector = SceneModel::defaultObject(KindProjector);
    projector.projector_image_guide_index = 1;
    projector.projector_image_slice_column = 2;
    projector.projector_image_slice_row = 0;
    EXPECT_EQ(projectorImageSlice(projector, arrays), QRectF(0.6, 0.0, 0.4, 1.0));

    projector.projector_image_slice_column = 0;
    EXPECT_EQ(projectorImageSlice(projector, arrays), QRectF(0.0, 0.0, 0.4, 1.0));

    // Out of the array, no slice asked for, or no such guide: the whole image.
    const QRectF whole(0.0, 0.0, 1.0, 1.0);
    projector.projector_image_slice_column = 3;
    EXPECT_EQ(projectorImageSlice(projector, arrays), whole);
    projector.projector_image_slice_column = 1;
    projector.projector_image_slice_row = 1;
    EXPECT_EQ(projectorImageSlice(projector, arrays), whole);
    projector.projector_image_slice_row = -1;
    EXPECT_EQ(projectorImageSlice(projector, arrays), whole);
    projector.projector_image_slice_row = 0;
    projector.projector_image_guide_index = 5;
    EXPECT_EQ(projectorImageSlice(projector, arrays), whole);
    // A slice reaching past the image is cut to it.
    array.rects[2] = QRectF(0.8, -0.1, 0.4, 1.2);
    projector.projector_image_guide_index = 1;
    projector.projector_image_slice_column = 2;
    EXPECT_EQ(projectorImageSlice(projector, {GuideArraySlices{}, array}), QRectF(0.8, 0.0, 0.2, 1.0));
}
