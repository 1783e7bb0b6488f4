#include "MainWindowTestSupport.h"

#include "app/MainWindow.h"
#include "guide/ProjectorLayout.h"
#include "guide/ui/GuideTab.h"
#include "scene/ui/ScenePropertyPanel.h"
#include "scene/ui/SceneWidget.h"
#include "scene/ui/ThreeDViewTab.h"

#include <QComboBox>
#include <QSpinBox>
#include <QTest>

namespace {

GuideArraySlices threeAcross()
{
    GuideArraySlices array;
    array.columns = 3;
    array.rows = 1;
    array.rects = {QRectF(0.0, 0.0, 0.4, 1.0), QRectF(0.3, 0.0, 0.4, 1.0), QRectF(0.6, 0.0, 0.4, 1.0)};
    return array;
}

QImage guideImage()
{
    QImage image(300, 100, QImage::Format_RGBA8888);
    image.fill(Qt::white);
    return image;
}

class ProjectorSlicePanel : public ShellSettingsFixture
{
};

} // namespace

TEST_F(ProjectorSlicePanel, PanelOffersTheColumnsAndRowsOfTheProjectorsGuide)
{
    ThreeDViewTab tab;
    tab.resize(1200, 800);
    tab.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&tab));
    tab.setGuideSources({QStringLiteral("Hall"), QStringLiteral("Single")}, {guideImage(), guideImage()},
                        {threeAcross(), GuideArraySlices{1, 1, {QRectF(0, 0, 1, 1)}}});
    const int index = tab.addObject(ThreeDViewTab::AddProjector, false);
    GuideObject projector = tab.sceneWidget()->objects().at(index);
    projector.projector_image_guide_index = 0;
    tab.sceneWidget()->applyObjectEdit(index, projector);

    auto *slice = tab.propertyPanel()->findChild<QComboBox *>(QStringLiteral("vantreoProjectorSliceChoice"));
    ASSERT_NE(slice, nullptr);
    ASSERT_EQ(slice->count(), 4); // whole guide, then columns 1..3 of row 1
    EXPECT_EQ(slice->currentIndex(), 0);
    EXPECT_EQ(slice->itemText(3), QStringLiteral("Column 3, Row 1"));

    slice->setCurrentIndex(3);
    Q_EMIT slice->activated(3);
    const GuideObject &edited = tab.sceneWidget()->objects().at(index);
    EXPECT_EQ(edited.projector_image_slice_column, 2);
    EXPECT_EQ(edited.projector_image_slice_row, 0);
    EXPECT_EQ(projectorImageSlice(edited, tab.sceneWidget()->guideArrays()), QRectF(0.6, 0.0, 0.4, 1.0));

    // The choice is one undo step, and the list follows the projector's guide.
    EXPECT_TRUE(tab.undo());
    EXPECT_EQ(tab.sceneWidget()->objects().at(index).projector_image_slice_column, -1);
    EXPECT_TRUE(tab.redo());
    projector = tab.sceneWidget()->objects().at(index);
    projector.projector_image_guide_index = 1;
    tab.sceneWidget()->applyObjectEdit(index, projector);
    slice = tab.propertyPanel()->findChild<QComboBox *>(QStringLiteral("vantreoProjectorSliceChoice"));
    ASSERT_NE(slice, nullptr);
    // Column 3 is not in the single projector's array: kept, and shown as such.
    EXPECT_EQ(slice->count(), 3);
    EXPECT_EQ(slice->currentIndex(), 2);
    EXPECT_TRUE(slice->currentText().contains(QStringLiteral("not in the array")));
}

// The window hands each 3D view the guides' arrays as the guide tabs lay them out.
TEST_F(ProjectorSlicePanel, WindowPassesTheGuideTabsArrayToTheView)
{
    auto window = std::make_unique<MainWindow>();
    window->setProperty("skipStartupSample", true);
    auto *guide = qobject_cast<GuideTab *>(window->addGuideTab());
    ASSERT_NE(guide, nullptr);
    GuideSettings settings = guide->settings();
    settings.projectorCount = 3;
    settings.projectorCountY = 1;
    guide->setSettings(settings);
    auto *view = qobject_cast<ThreeDViewTab *>(window->add3DViewTab());
    ASSERT_NE(view, nullptr);
    view->refreshGuideSources();
    const QVector<GuideArraySlices> &arrays = view->sceneWidget()->guideArrays();
    ASSERT_EQ(arrays.size(), 1);
    EXPECT_EQ(arrays[0].columns, 3);
    EXPECT_EQ(arrays[0].rows, 1);
    EXPECT_EQ(arrays[0].rects, projectorImageFractions(guide->settings()));
    ASSERT_EQ(arrays[0].rects.size(), 3);
    EXPECT_LT(arrays[0].rects[0].left(), arrays[0].rects[2].left());
}
