#include "scene/FootprintSampling.h"
#include "scene/MeshBuilders.h"
#include "scene/SceneModel.h"

#include <gtest/gtest.h>

using namespace vg::scene;

TEST(FootprintSampling, GridOverATiltedWall)
{
    SceneModel scene;
    const int p = scene.addProjector(QString());
    GuideObject projector = scene.object(p);
    projector.lens_shift_y = 0.0f;
    projector.projector_resolution_width = 1000;
    projector.projector_resolution_height = 500;
    scene.replaceObject(p, projector);
    const int w = scene.addPlane(QStringLiteral("Wall"), 20000, 20000);
    GuideObject wall = scene.object(w);
    wall.translate_y = 0.0f;
    wall.translate_z = -3.0f;
    scene.replaceObject(w, wall);
    const auto meshes = buildSceneMeshes(scene.objects());

    // Facing wall: every sample is 3 m / 1000 px = 3 mm/px.
    auto samples = sampleFootprintGrid(scene.objects(), meshes, p, 100);
    ASSERT_EQ(samples.size(), 11u * 5u);      // x 0..1000, y 50..450: every 100 px from the centre
    for (const FootprintGridSample &s : samples) {
        ASSERT_TRUE(s.valid);
        ASSERT_EQ(s.objectIndex, w);
        ASSERT_NEAR(s.value, 3.0, 1e-3);
    }
    FootprintRange range = footprintRange(samples);
    ASSERT_TRUE(range.valid);
    EXPECT_NEAR(range.maximum - range.minimum, 0.0, 1e-3);

    // Turned about Y, the far side of the wall gets coarser pixels.
    wall.rotate_y = 40.0f;
    scene.replaceObject(w, wall);
    samples = sampleFootprintGrid(scene.objects(), buildSceneMeshes(scene.objects()), p, 100);
    range = footprintRange(samples);
    ASSERT_TRUE(range.valid);
    EXPECT_GT(range.maximum, range.minimum * 1.5);

    // A step so fine that the samples would run away is widened.
    samples = sampleFootprintGrid(scene.objects(), meshes, p, 1, 20);
    EXPECT_LE(samples.size(), 21u * 21u);
    EXPECT_TRUE(sampleFootprintGrid(scene.objects(), meshes, w, 100).empty());   // not a projector
}
