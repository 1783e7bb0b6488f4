#include "scene/SceneModel.h"

#include <gtest/gtest.h>

TEST(SceneModelCreation, PersonSizesAndNames)
{
    SceneModel scene;
    const int a = scene.addPerson(QString(), 1700, 0);
    EXPECT_EQ(scene.object(a).name, QStringLiteral("Person 170 cm"));
    EXPECT_FLOAT_EQ(scene.object(a).scale_x, 0.25f);     // width 500 mm
    EXPECT_FLOAT_EQ(scene.object(a).scale_y, 0.85f);
    EXPECT_EQ(scene.object(a).guide_index, KindPerson);

    const int b = scene.addPerson(QString(), 4, 0);
    EXPECT_EQ(scene.object(b).name, QStringLiteral("Person 1 cm"));   // never 0 cm
    EXPECT_FLOAT_EQ(scene.object(b).scale_x, 0.05f);                  // half extents floored
    EXPECT_FLOAT_EQ(scene.object(b).scale_y, 0.05f);

    const int c = scene.addPerson(QString(), 1850, 0);                // 185 cm, 544.1 -> 544 mm
    EXPECT_EQ(scene.object(c).name, QStringLiteral("Person 185 cm"));
    EXPECT_FLOAT_EQ(scene.object(c).scale_x, 0.272f);

    const int d = scene.addPerson(QStringLiteral("Tall"), 0, 900000); // height 1, width capped
    EXPECT_EQ(scene.object(d).name, QStringLiteral("Tall"));
    EXPECT_FLOAT_EQ(scene.object(d).people_height, 1.0f);
    EXPECT_FLOAT_EQ(scene.object(d).scale_x, 50.0f);

    const int e = scene.addPerson(QString(), 15, 0);                  // 1.5 cm rounds up to 2
    EXPECT_EQ(scene.object(e).name, QStringLiteral("Person 2 cm"));
    EXPECT_EQ(scene.selectedIndex(), e);
}

TEST(SceneModelCreation, HorseshoeBendRadiusLimit)
{
    SceneModel scene;
    // Width 4 m: limit 0.45 × 4 = 1.8 m (height 3 m).
    int i = scene.addHorseshoe(QString(), 4000, 2000, 3000, 2500, 10, 10, 8);
    EXPECT_NEAR(scene.object(i).box_corner_radius, 1800.0f, 0.01f);
    EXPECT_EQ(scene.object(i).name, QStringLiteral("Horseshoe"));
    EXPECT_EQ(curvedShapeOf(scene.object(i)), CurvedShape::Horseshoe);
    EXPECT_FLOAT_EQ(scene.object(i).scale_x, 2.0f);
    EXPECT_FLOAT_EQ(scene.object(i).scale_y, 1.0f);
    EXPECT_FLOAT_EQ(scene.object(i).scale_z, 1.5f);
    // Small sizes: the limit comes from the 1 m floors, min(1, 0.45) = 0.45 m.
    i = scene.addHorseshoe(QString(), 200, 200, 200, 5000, 1000, -3, 20);
    EXPECT_NEAR(scene.object(i).box_corner_radius, 450.0f, 0.01f);
    EXPECT_EQ(scene.object(i).horseshoe_u_lines, 512);
    EXPECT_EQ(scene.object(i).horseshoe_v_lines, 0);
    // Height below the width limit: min(max(0.5, 1), 0.45 × 10) = 1 m.
    i = scene.addHorseshoe(QString(), 10000, 2000, 500, 3000, 10, 10, 8);
    EXPECT_NEAR(scene.object(i).box_corner_radius, 1000.0f, 0.01f);
    i = scene.addHorseshoe(QString(), 4000, 2000, 3000, -100, 10, 10, 8);
    EXPECT_FLOAT_EQ(scene.object(i).box_corner_radius, 0.0f);
}

TEST(SceneModelCreation, SizeAndSegmentClamps)
{
    SceneModel scene;
    int i = scene.addPlane(QString(), 0, 200000);
    EXPECT_FLOAT_EQ(scene.object(i).plane_width, 1.0f);
    EXPECT_FLOAT_EQ(scene.object(i).plane_height, 100000.0f);
    EXPECT_FLOAT_EQ(scene.object(i).scale_x, 0.0005f);
    EXPECT_FLOAT_EQ(scene.object(i).scale_y, 50.0f);
    EXPECT_EQ(scene.object(i).name, QStringLiteral("Plane"));

    i = scene.addSphere(QString(), 0, 200000, 1000, -5);
    EXPECT_FLOAT_EQ(scene.object(i).scale_x, 0.001f);     // metres, not half extents
    EXPECT_FLOAT_EQ(scene.object(i).scale_y, 100.0f);
    EXPECT_EQ(scene.object(i).horseshoe_u_lines, 512);
    EXPECT_EQ(scene.object(i).horseshoe_v_lines, 0);
    EXPECT_EQ(scene.object(i).name, QStringLiteral("Sphere"));

    i = scene.addDome(QString(), 0, 3000, 64, 16);
    EXPECT_FLOAT_EQ(scene.object(i).scale_x, 0.0f);       // a dome size may be 0
    EXPECT_FLOAT_EQ(scene.object(i).scale_y, 3.0f);
    EXPECT_EQ(scene.object(i).name, QStringLiteral("Dome"));

    i = scene.addDistanceMeasure(QString(), 0);
    EXPECT_FLOAT_EQ(scene.object(i).distance_start_x, -0.0005f);
    EXPECT_FLOAT_EQ(scene.object(i).distance_end_x, 0.0005f);
    i = scene.addDistanceMeasure(QString(), 3000);
    EXPECT_FLOAT_EQ(scene.object(i).distance_start_x, -1.5f);
    EXPECT_EQ(scene.object(i).name, QStringLiteral("Distance Measure"));

    i = scene.addCylinderWall(QString(), 3141, 2000, 720.0);
    EXPECT_FLOAT_EQ(scene.object(i).wall_cylinder_angle, 360.0f);
    EXPECT_EQ(scene.object(i).wall_cylinder_u_lines, 72);
    EXPECT_NEAR(scene.object(i).wall_cylinder_radius, 3141.0 / (2 * M_PI), 0.01);
    i = scene.addCylinderWall(QString(), 10, 10, 0.0);
    EXPECT_FLOAT_EQ(scene.object(i).wall_cylinder_angle, 1.0f);
    EXPECT_FLOAT_EQ(scene.object(i).scale_x, 0.05f);
    EXPECT_FLOAT_EQ(scene.object(i).scale_y, 0.05f);
    EXPECT_GE(scene.object(i).wall_cylinder_radius, 50.0f);

    EXPECT_EQ(SceneModel::clampSegments(1000), 512);
    EXPECT_EQ(SceneModel::clampSizeMm(0), 1);
    EXPECT_EQ(SceneModel::clampSizeMm(200000), 100000);
}

TEST(SceneModelCreation, ProjectorAndCameraDefaults)
{
    SceneModel scene;
    const int p = scene.addProjector(QString());
    const GuideObject &proj = scene.object(p);
    EXPECT_EQ(proj.guide_index, KindProjector);
    EXPECT_EQ(proj.name, QStringLiteral("Projector"));
    EXPECT_EQ(proj.projector_resolution_width, 1920);
    EXPECT_EQ(proj.projector_resolution_height, 1200);
    EXPECT_FLOAT_EQ(proj.throw_rate, 1.0f);
    EXPECT_FLOAT_EQ(proj.projection_opacity, 1.0f);
    EXPECT_FLOAT_EQ(proj.lens_shift_x, 0.0f);
    EXPECT_FLOAT_EQ(proj.lens_shift_y, 50.0f);
    EXPECT_FLOAT_EQ(proj.scale_x, 0.15f);
    const int q = scene.addProjector(QStringLiteral("P2"), 10, 10, 10, false);
    EXPECT_FLOAT_EQ(scene.object(q).lens_shift_y, 0.0f);
    EXPECT_FLOAT_EQ(scene.object(q).scale_x, 0.05f);
    const int c = scene.addCamera(QString());
    EXPECT_EQ(scene.object(c).guide_index, KindCamera);
    EXPECT_EQ(scene.object(c).name, QStringLiteral("Camera"));

    // Every kind's default name.
    EXPECT_EQ(scene.object(scene.addCirclePlane(QString(), 1000, 1000)).name, QStringLiteral("Circle Plane"));
    EXPECT_EQ(scene.object(scene.addLShape(QString(), 1000, 1000, 1000)).name, QStringLiteral("L Shape"));
    EXPECT_EQ(scene.object(scene.addCurve(QString(), {}, false)).name, QStringLiteral("Curve"));
    EXPECT_EQ(scene.object(scene.addComment(QString(), QStringLiteral("x"))).name, QStringLiteral("Comment"));
    EXPECT_EQ(scene.object(scene.addGuide(QString(), 0, 1000, 1000)).name, QStringLiteral("Guide"));
    EXPECT_EQ(scene.object(scene.addImage(QString(), QStringLiteral("a.png"), 1000, 1000)).name,
              QStringLiteral("Image"));
    EXPECT_EQ(scene.object(scene.addCylinderWall(QString(), 1000, 1000, 90)).name, QStringLiteral("Cylinder Wall"));
}

TEST(SceneModelNames, CopyNames)
{
    EXPECT_EQ(SceneModel::copyName(QStringLiteral("Wall"), {QStringLiteral("Floor")}), QStringLiteral("Wall"));
    EXPECT_EQ(SceneModel::copyName(QStringLiteral("Wall"), {QStringLiteral("Wall")}), QStringLiteral("Wall Copy"));
    EXPECT_EQ(SceneModel::copyName(QStringLiteral("Wall"), {QStringLiteral("Wall"), QStringLiteral("Wall Copy")}),
              QStringLiteral("Wall Copy 2"));
    EXPECT_EQ(SceneModel::copyName(QStringLiteral("Wall"), {QStringLiteral("Wall"), QStringLiteral("Wall Copy"),
                                                             QStringLiteral("Wall Copy 2")}),
              QStringLiteral("Wall Copy 3"));
    EXPECT_EQ(SceneModel::copyName(QString(), {}), QStringLiteral("Object"));
    EXPECT_EQ(SceneModel::copyName(QString(), {QStringLiteral("Object")}), QStringLiteral("Object Copy"));

    SceneModel scene;
    scene.addPlane(QStringLiteral("Wall"), 1000, 1000);
    const QList<int> first = scene.duplicateObjects({0});
    const QList<int> second = scene.duplicateObjects({0});
    EXPECT_EQ(scene.object(first.first()).name, QStringLiteral("Wall Copy"));
    EXPECT_EQ(scene.object(second.first()).name, QStringLiteral("Wall Copy 2"));
    EXPECT_EQ(scene.selectedIndex(), 2);
}

TEST(SceneModelUndo, SnapshotsAndLimits)
{
    SceneModel scene;
    EXPECT_FALSE(scene.undo());                      // empty stack: nothing happens
    scene.addPlane(QStringLiteral("A"), 1000, 1000);
    scene.addPlane(QStringLiteral("B"), 1000, 1000);
    EXPECT_EQ(scene.undoDepth(), 2);
    EXPECT_TRUE(scene.undo());
    EXPECT_EQ(scene.count(), 1);
    EXPECT_EQ(scene.selectedIndex(), 0);             // the selection stored with the snapshot
    EXPECT_TRUE(scene.canRedo());
    EXPECT_TRUE(scene.redo());
    EXPECT_EQ(scene.count(), 2);
    EXPECT_EQ(scene.selectedIndex(), 1);

    // A new step clears redo.
    EXPECT_TRUE(scene.undo());
    scene.addPlane(QStringLiteral("C"), 1000, 1000);
    EXPECT_FALSE(scene.canRedo());

    // Equal snapshots are not pushed twice.
    const int depth = scene.undoDepth();
    scene.pushUndoSnapshot();
    scene.pushUndoSnapshot();
    EXPECT_EQ(scene.undoDepth(), depth + 1);
    // Undo skips a snapshot equal to the current scene.
    EXPECT_TRUE(scene.undo());
    EXPECT_EQ(scene.count(), 1);

    // At most 80 are kept; the oldest go first.
    SceneModel many;
    for (int i = 0; i < 100; ++i)
        many.addPlane(QString::number(i), 1000, 1000);
    EXPECT_EQ(many.undoDepth(), SceneModel::kMaxUndoSnapshots);
    int undone = 0;
    while (many.undo())
        ++undone;
    EXPECT_EQ(undone, 80);
    EXPECT_EQ(many.count(), 20);
}

TEST(SceneModelUndo, LoadingClearsHistory)
{
    SceneModel scene;
    scene.setUndoSuppressed(true);
    scene.addPlane(QString(), 1000, 1000);
    EXPECT_FALSE(scene.canUndo());
    scene.setUndoSuppressed(false);
    scene.addPlane(QString(), 1000, 1000);
    EXPECT_TRUE(scene.canUndo());
    scene.loadObjects({GuideObject(), GuideObject()}, 5);
    EXPECT_FALSE(scene.canUndo());
    EXPECT_EQ(scene.selectedIndex(), -1);
    EXPECT_EQ(scene.count(), 2);
}

TEST(SceneModelRemoval, IndicesAreFixedUp)
{
    SceneModel scene;
    scene.addGuide(QStringLiteral("G0"), 0, 1000, 1000);    // 0
    scene.addPlane(QStringLiteral("Wall"), 1000, 1000);     // 1
    scene.addGuide(QStringLiteral("G2"), 1, 1000, 1000);    // 2
    const int p = scene.addProjector(QString());            // 3
    const int p2 = scene.addProjector(QString());           // 4
    GuideObject proj = scene.object(p);
    proj.projector_image_guide_index = 2;
    GuideProjectorCalibrationMatch m;
    m.target_index = 1;
    proj.projector_calibration.matches.append(m);
    m.target_index = 2;
    proj.projector_calibration.matches.append(m);
    scene.replaceObject(p, proj);
    GuideObject proj2 = scene.object(p2);
    proj2.projector_image_guide_index = 1;
    scene.replaceObject(p2, proj2);
    scene.setSelection({2, 3}, 3);

    EXPECT_EQ(scene.removeObjects({1, 1, 99}), 1);
    ASSERT_EQ(scene.count(), 4);
    // Projector guide bindings name the project's guides, not scene objects: untouched.
    EXPECT_EQ(scene.object(2).projector_image_guide_index, 2);
    EXPECT_EQ(scene.object(2).projector_calibration.matches[0].target_index, -1);
    EXPECT_EQ(scene.object(2).projector_calibration.matches[1].target_index, 1);
    EXPECT_EQ(scene.object(3).projector_image_guide_index, 1);
    EXPECT_EQ(scene.selectedIndex(), 2);
    EXPECT_EQ(scene.selectedIndices(), (QList<int>{1, 2}));

    scene.removeObjects({2});
    EXPECT_EQ(scene.selectedIndex(), -1);
    EXPECT_TRUE(scene.undo());
    EXPECT_EQ(scene.count(), 4);
    EXPECT_EQ(scene.selectedIndex(), 2);
}

TEST(SceneModelToggles, AnyOffTurnsAllOn)
{
    SceneModel scene;
    scene.addPlane(QString(), 1000, 1000);
    scene.addPlane(QString(), 1000, 1000);
    const int p = scene.addProjector(QString());
    GuideObject hidden = scene.object(1);
    hidden.visible = false;
    scene.replaceObject(1, hidden);

    EXPECT_TRUE(scene.toggleFlag({0, 1}, &GuideObject::visible));
    EXPECT_TRUE(scene.object(0).visible);
    EXPECT_TRUE(scene.object(1).visible);
    EXPECT_TRUE(scene.toggleFlag({0, 1}, &GuideObject::visible));
    EXPECT_FALSE(scene.object(0).visible);
    EXPECT_FALSE(scene.object(1).visible);

    // Lens-only switches skip surfaces.
    EXPECT_FALSE(scene.toggleFlag({0}, &GuideObject::show_projector_frustum, true));
    EXPECT_TRUE(scene.toggleFlag({0, p}, &GuideObject::show_projector_frustum, true));
    EXPECT_FALSE(scene.object(p).show_projector_frustum);
}

TEST(SceneModelShapes, CylinderAngleFollowsTheLock)
{
    GuideObject o = SceneModel::defaultObject(KindCylinderWall);
    o.scale_x = 1.0f;                        // 2 m of arc
    o.wall_cylinder_arc_length_lock = true;
    SceneModel::setCylinderWallAngle(o, 180.0);
    EXPECT_NEAR(o.wall_cylinder_radius, 2000.0 / M_PI, 0.01);
    EXPECT_FLOAT_EQ(o.scale_x, 1.0f);
    o.wall_cylinder_arc_length_lock = false;
    SceneModel::setCylinderWallAngle(o, 90.0);
    EXPECT_NEAR(o.scale_x, (2.0 / M_PI) * (M_PI / 2.0) / 2.0, 1e-5);   // radius kept, arc halves
}

TEST(SceneModelNames, PasteIsOneStepWithCopyNames)
{
    SceneModel scene;
    scene.addPlane(QStringLiteral("Wall"), 1000, 1000);
    GuideObject wall = scene.object(0);
    int notified = 0;
    scene.setChangedCallback([&notified] { ++notified; });
    const quint64 before = scene.revision();
    const QList<int> pasted = scene.addObjects({wall, wall, GuideObject()});
    EXPECT_EQ(notified, 1);
    EXPECT_GT(scene.revision(), before);
    ASSERT_EQ(pasted, (QList<int>{1, 2, 3}));
    EXPECT_EQ(scene.object(1).name, QStringLiteral("Wall Copy"));
    EXPECT_EQ(scene.object(2).name, QStringLiteral("Wall Copy 2"));
    EXPECT_EQ(scene.object(3).name, QStringLiteral("Object"));
    EXPECT_EQ(scene.selectedIndices(), pasted);
    EXPECT_TRUE(scene.undo());
    EXPECT_EQ(scene.count(), 1);
}
