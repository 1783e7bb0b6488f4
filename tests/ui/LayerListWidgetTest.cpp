#include "guide/ui/LayerListWidget.h"

#include <QCheckBox>
#include <QListWidget>
#include <QSignalSpy>
#include <QSlider>
#include <QTemporaryDir>

#include <gtest/gtest.h>

TEST(LayerListWidget, AddsMasksAndImagesInDrawingOrderWithTheTopmostListedFirst)
{
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QString png = dir.filePath(QStringLiteral("wall.png"));
    QImage source(800, 400, QImage::Format_ARGB32);
    source.fill(Qt::yellow);
    ASSERT_TRUE(source.save(png));

    LayerListWidget list;
    list.setGuideSize(QSize(1000, 600));
    QSignalSpy changed(&list, &LayerListWidget::layersChanged);
    list.addMaskLayer(QStringLiteral("circle"));
    ASSERT_TRUE(list.addImageLayer(png));
    ASSERT_EQ(list.layers().size(), 2);
    EXPECT_EQ(changed.count(), 2);

    const GuideLayerObject mask = list.layers().at(0);
    EXPECT_TRUE(mask.isMask());
    EXPECT_TRUE(mask.isCircle());
    EXPECT_DOUBLE_EQ(mask.centerX, 500.0);
    EXPECT_DOUBLE_EQ(mask.centerY, 300.0);

    // An image wider than half the guide starts at half the guide's width, aspect kept.
    const GuideLayerObject image = list.layers().at(1);
    EXPECT_EQ(image.type, QStringLiteral("image"));
    EXPECT_EQ(image.filePath, png);
    EXPECT_DOUBLE_EQ(image.baseWidth, 800.0);
    EXPECT_DOUBLE_EQ(image.baseHeight, 400.0);
    EXPECT_DOUBLE_EQ(image.width, 500.0);
    EXPECT_DOUBLE_EQ(image.height, 250.0);
    EXPECT_EQ(list.currentLayer(), 1);

    auto *view = list.findChild<QListWidget *>(QStringLiteral("vantreoLayerListView"));
    ASSERT_NE(view, nullptr);
    ASSERT_EQ(view->count(), 2);
    EXPECT_EQ(view->item(0)->text(), QStringLiteral("wall"));
    EXPECT_EQ(view->currentRow(), 0);

    QString error;
    EXPECT_FALSE(list.addImageLayer(dir.filePath(QStringLiteral("missing.png")), &error));
    EXPECT_TRUE(error.contains(QStringLiteral("missing.png")));
    EXPECT_EQ(list.layers().size(), 2);
}

TEST(LayerListWidget, ReordersHidesAndSetsOpacity)
{
    LayerListWidget list;
    list.addMaskLayer(QStringLiteral("rectangle"));
    list.addMaskLayer(QStringLiteral("circle"));
    list.addMaskLayer(QStringLiteral("rectangle"));
    ASSERT_EQ(list.currentLayer(), 2);

    list.moveCurrentLayer(-1);
    EXPECT_EQ(list.currentLayer(), 1);
    EXPECT_FALSE(list.layers().at(1).isCircle());
    EXPECT_TRUE(list.layers().at(2).isCircle());
    list.moveCurrentLayer(-5);
    EXPECT_EQ(list.currentLayer(), 0);
    list.moveCurrentLayer(+10);
    EXPECT_EQ(list.currentLayer(), 2);

    // Unticking a row hides that layer.
    auto *view = list.findChild<QListWidget *>(QStringLiteral("vantreoLayerListView"));
    ASSERT_NE(view, nullptr);
    view->item(2)->setCheckState(Qt::Unchecked); // bottom row = first layer
    EXPECT_FALSE(list.layers().at(0).visible);
    EXPECT_TRUE(list.layers().at(1).visible);

    list.setCurrentLayer(1);
    auto *opacity = list.findChild<QSlider *>();
    ASSERT_NE(opacity, nullptr);
    opacity->setValue(40);
    EXPECT_DOUBLE_EQ(list.layers().at(1).opacity, 0.4);
    list.setLayerOpacity(0, 7.0);
    EXPECT_DOUBLE_EQ(list.layers().at(0).opacity, 1.0);

    list.removeCurrentLayer();
    EXPECT_EQ(list.layers().size(), 2);
    EXPECT_EQ(list.currentLayer(), 1);
}
