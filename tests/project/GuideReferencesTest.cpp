#include "project/GuideReferences.h"

#include <gtest/gtest.h>

namespace {

GuideSettings guideOfWidth(int width)
{
    GuideSettings g;
    g.pixelWidth = width;
    return g;
}

// Guides told apart by their width: A = 100, B = 200, C = 300.
ProjectDocument documentWithMixedOrder()
{
    ProjectDocument doc;
    doc.guides = {guideOfWidth(100), guideOfWidth(200), guideOfWidth(300)};
    doc.tabs = {{QStringLiteral("guide"), 2}, {QStringLiteral("canvas"), 0}, {QStringLiteral("guide"), 0},
                {QStringLiteral("guide"), 1}};
    doc.activeGuide = 1;
    Guide3DViewSettings view = Guide3DViewSettings::created();
    GuideObject wall;
    wall.guide_index = KindPlane;
    wall.texture_guide_index = 0;
    GuideObject projector;
    projector.guide_index = KindProjector;
    projector.projector_image_guide_index = 2;
    GuideCameraView camera;
    GuideObject stored = projector;
    stored.projector_image_guide_index = 1;
    camera.projector_objects = {stored};
    view.objects = {wall, projector};
    view.camera_views = {camera};
    doc.views = {view};
    doc.activeView = view;
    CanvasTabSettings canvas;
    canvas.selected_guide_index = 2;
    CanvasObjectSettings image;
    image.guide_index = 0;
    canvas.objects = {image};
    doc.canvasTabs = {canvas};
    return doc;
}

int widthOf(const ProjectDocument &doc, int index)
{
    return index >= 0 && index < doc.guides.size() ? doc.guides.at(index).pixelWidth : -1;
}

} // namespace

TEST(GuideReferences, OrderingAsTabsKeepsEveryBindingOnItsGuide)
{
    ProjectDocument doc = documentWithMixedOrder();
    orderGuidesAsTabs(&doc);
    // The list now runs in tab order: C, A, B.
    ASSERT_EQ(doc.guides.size(), 3);
    EXPECT_EQ(widthOf(doc, 0), 300);
    EXPECT_EQ(widthOf(doc, 1), 100);
    EXPECT_EQ(widthOf(doc, 2), 200);
    EXPECT_EQ(guideTabOrder(doc), (QVector<int>{0, 1, 2}));
    // Every reference still names the guide it named.
    for (const Guide3DViewSettings *view : {&doc.views[0], &doc.activeView}) {
        EXPECT_EQ(widthOf(doc, view->objects[0].texture_guide_index), 100);
        EXPECT_EQ(widthOf(doc, view->objects[1].projector_image_guide_index), 300);
        EXPECT_EQ(widthOf(doc, view->camera_views[0].projector_objects[0].projector_image_guide_index), 200);
    }
    EXPECT_EQ(widthOf(doc, doc.canvasTabs[0].selected_guide_index), 300);
    EXPECT_EQ(widthOf(doc, doc.canvasTabs[0].objects[0].guide_index), 100);
    EXPECT_EQ(widthOf(doc, doc.activeGuide), 200);
    // The canvas tab entry is left alone; the file reads the same after a save and load.
    EXPECT_EQ(doc.tabs[1], (ProjectTabEntry{QStringLiteral("canvas"), 0}));
    ProjectDocument again = doc;
    orderGuidesAsTabs(&again);
    EXPECT_EQ(again, doc);
}

TEST(GuideReferences, TabsNamingAGuideTwiceOrNotAtAllStillGiveOneOrder)
{
    ProjectDocument doc = documentWithMixedOrder();
    doc.tabs = {{QStringLiteral("guide"), 1}, {QStringLiteral("guide"), 1}, {QStringLiteral("guide"), 7}};
    // Named first (B), then the unnamed ones in list order (A, C).
    EXPECT_EQ(guideTabOrder(doc), (QVector<int>{1, 0, 2}));
    orderGuidesAsTabs(&doc);
    EXPECT_EQ(widthOf(doc, 0), 200);
    EXPECT_EQ(widthOf(doc, doc.views[0].objects[0].texture_guide_index), 100);
}

TEST(GuideReferences, RemovalClearsAndShiftsMergeOffsets)
{
    ProjectDocument doc = documentWithMixedOrder();
    // Guide 0 (A) removed: B and C move down one, bindings to A are cleared.
    remapGuideReferences(&doc, guideIndexMapFrom({-1, 0, 1}));
    EXPECT_EQ(doc.views[0].objects[0].texture_guide_index, -1);
    EXPECT_EQ(doc.views[0].objects[1].projector_image_guide_index, 1);
    EXPECT_EQ(doc.views[0].camera_views[0].projector_objects[0].projector_image_guide_index, 0);
    EXPECT_EQ(doc.canvasTabs[0].objects[0].guide_index, -1);
    EXPECT_EQ(doc.canvasTabs[0].selected_guide_index, 1);
    EXPECT_EQ(doc.activeGuide, 0);

    // A merge offset moves every binding, including those stored with camera views.
    ProjectDocument merged = documentWithMixedOrder();
    remapGuideReferences(&merged, [](int index) { return index + 4; });
    EXPECT_EQ(merged.views[0].objects[0].texture_guide_index, 4);
    EXPECT_EQ(merged.views[0].camera_views[0].projector_objects[0].projector_image_guide_index, 5);
    EXPECT_EQ(merged.canvasTabs[0].selected_guide_index, 6);
    // "None" stays none.
    GuideObject none;
    QVector<GuideObject> objects{none};
    remapGuideReferences(&objects, [](int index) { return index + 4; });
    EXPECT_EQ(objects[0].texture_guide_index, -1);
    EXPECT_EQ(objects[0].projector_image_guide_index, -1);
}
