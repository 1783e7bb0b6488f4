#include "guide/ui/GuideTab.h"

#include "guide/GuideRenderer.h"
#include "guide/ProjectorLayout.h"
#include "guide/ui/GuidePreviewWidget.h"
#include "guide/ui/LayerListWidget.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QFile>
#include <QImageReader>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QListWidget>
#include <QTest>
#include <QTranslator>
#include <QPushButton>
#include <QSignalSpy>
#include <QSlider>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QTimer>
#include <QWidget>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

namespace {

template <typename T>
T *child(const QWidget &parent, const char *name)
{
    T *widget = parent.findChild<T *>(QString::fromLatin1(name));
    EXPECT_NE(widget, nullptr) << name;
    return widget;
}

QString missingStyleFile(const QTemporaryDir &dir)
{
    return dir.filePath(QStringLiteral("VantreoGuideStyle.vss"));
}

// Closes the message box a command opens, so the test does not wait for a click.
void closeNextMessageBox()
{
    QTimer::singleShot(0, [] {
        if (QWidget *box = QApplication::activeModalWidget())
            box->close();
    });
}

} // namespace

TEST(GuideTab, NewTabAppliesTheStyleDefaultsFile)
{
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QString path = dir.filePath(QStringLiteral("style.vss"));
    QJsonObject style;
    style.insert(QStringLiteral("guide_pattern"), 0);
    style.insert(QStringLiteral("number_text_format"), 4); // retired: shown as Korean
    style.insert(QStringLiteral("display_circle"), true);
    style.insert(QStringLiteral("font_scale"), 1.5);
    style.insert(QStringLiteral("pixel_width"), 640); // not a style key: ignored
    QJsonObject root;
    root.insert(QStringLiteral("file_type"), QStringLiteral("VantreoGuideStyle"));
    root.insert(QStringLiteral("version"), 1);
    root.insert(QStringLiteral("style"), style);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QJsonDocument(root).toJson());
    file.close();

    GuideTab tab(nullptr, path);
    const GuideSettings s = tab.settings();
    EXPECT_EQ(s.guidePattern, 0);
    EXPECT_EQ(s.numberTextFormat, 0);
    EXPECT_TRUE(s.displayCircle);
    EXPECT_DOUBLE_EQ(s.fontScale, 1.5);
    EXPECT_EQ(s.pixelWidth, 1920);
    EXPECT_EQ(child<QComboBox>(tab, "vantreoGuideColorStyle")->currentData().toInt(), 0);
    EXPECT_EQ(child<QComboBox>(tab, "vantreoGuideNumberFormat")->currentText(), QStringLiteral("Korean Cell Name"));
    EXPECT_TRUE(child<QCheckBox>(tab, "vantreoGuideDisplayCircle")->isChecked());
    EXPECT_DOUBLE_EQ(child<QDoubleSpinBox>(tab, "vantreoGuideFontScale")->value(), 1.5);

    // Without a style file the built-in defaults stand.
    GuideTab plain(nullptr, missingStyleFile(dir));
    EXPECT_EQ(plain.settings(), GuideSettings());
}

TEST(GuideTab, SaveAsDefaultWritesTheStyleThatTheNextTabStartsFrom)
{
    QTemporaryDir dir;
    const QString path = missingStyleFile(dir);
    GuideTab first(nullptr, path);
    child<QCheckBox>(first, "vantreoGuideDisplayCrossline")->setChecked(true);
    child<QComboBox>(first, "vantreoGuideNumberFormat")->setCurrentIndex(3); // English Cell Name
    child<QSpinBox>(first, "vantreoGuidePixelHeight")->setValue(600);
    closeNextMessageBox();
    first.saveStyleAsDefault();
    ASSERT_TRUE(QFile::exists(path));

    GuideTab second(nullptr, path);
    EXPECT_TRUE(second.settings().displayCrossline);
    EXPECT_EQ(second.settings().numberTextFormat, 5);
    EXPECT_EQ(second.settings().pixelHeight, 1200); // size is not part of the style
}

TEST(GuideTab, ControlEditsChangeTheSettingsAndRerender)
{
    QTemporaryDir dir;
    GuideTab tab(nullptr, missingStyleFile(dir));
    ASSERT_TRUE(tab.waitForGuideImage());
    EXPECT_EQ(tab.guideImage().size(), QSize(1920, 1200));

    QSignalSpy changed(&tab, &GuideTab::settingsChanged);
    QSignalSpy imageChanged(&tab, &GuideTab::guideImageChanged);
    // Fixed ratio on 1920 x 1200 mm: 1083 px high becomes 1080, the width follows.
    child<QSpinBox>(tab, "vantreoGuidePixelHeight")->setValue(1083);
    EXPECT_EQ(tab.settings().pixelHeight, 1080);
    EXPECT_EQ(tab.settings().pixelWidth, 1728);
    EXPECT_EQ(child<QSpinBox>(tab, "vantreoGuidePixelWidth")->value(), 1728);
    EXPECT_GE(changed.count(), 1);
    // Auto columns follow the new aspect: 20 rows -> 32 columns.
    EXPECT_EQ(tab.settings().columns, 32);
    ASSERT_TRUE(tab.waitForGuideImage());
    EXPECT_GE(imageChanged.count(), 1);
    EXPECT_EQ(tab.guideImage().size(), QSize(1728, 1080));

    // Without fixed ratio and the multiple-of-4 rule, a height stays as typed.
    child<QCheckBox>(tab, "vantreoGuideFixedRatio")->setChecked(false);
    child<QCheckBox>(tab, "vantreoGuideMultipleOf4")->setChecked(false);
    child<QSpinBox>(tab, "vantreoGuidePixelHeight")->setValue(1083);
    EXPECT_EQ(tab.settings().pixelHeight, 1083);
    EXPECT_EQ(tab.settings().pixelWidth, 1728);

    // Rotation turns the image; the layout scale is reset by any edit.
    GuideSettings scaled = tab.settings();
    scaled.projectorScale = 2.5;
    tab.setSettings(scaled);
    EXPECT_DOUBLE_EQ(tab.settings().projectorScale, 2.5);
    child<QCheckBox>(tab, "vantreoGuideRotate")->setChecked(true);
    EXPECT_DOUBLE_EQ(tab.settings().projectorScale, 1.0);
    ASSERT_TRUE(tab.waitForGuideImage());
    EXPECT_EQ(tab.guideImage().size(), QSize(tab.settings().pixelHeight, tab.settings().pixelWidth));

    child<QSlider>(tab, "vantreoGuideLogoOpacity")->setValue(35);
    EXPECT_DOUBLE_EQ(tab.settings().logoOpacity, 0.35);
}

TEST(GuideTab, TakingSettingsAppliesTheLoadStep)
{
    QTemporaryDir dir;
    GuideTab tab(nullptr, missingStyleFile(dir));
    GuideSettings s;
    s.realWidth = 3500;
    s.realHeight = 1200;
    s.pixelHeight = 1083;
    s.projectorCount = 2;
    s.projectorAutoLayoutOverlap = 0.25;
    s.projectorAutoPlacement = true;
    s.numberTextFormat = 9;
    s.guidePattern = -3;
    tab.setSettings(s);
    const GuideSettings taken = tab.settings();
    EXPECT_DOUBLE_EQ(taken.projectorThrowDistance, 2000.0);
    EXPECT_FALSE(taken.projectorAutoPlacement);
    EXPECT_EQ(taken.pixelHeight, 1080);
    EXPECT_EQ(taken.pixelWidth, 3148); // round(1080 * 3500 / 1200) = 3150, lowered to a multiple of 4
    EXPECT_EQ(taken.numberTextFormat, 5);
    EXPECT_EQ(taken.guidePattern, 0);
    EXPECT_EQ(child<QComboBox>(tab, "vantreoGuideNumberFormat")->currentText(), QStringLiteral("English Cell Name"));
    EXPECT_DOUBLE_EQ(child<QDoubleSpinBox>(tab, "vantreoGuideThrowDistance")->value(), 2000.0);
}

TEST(GuideTab, EffectiveResolutionLocksThePixelSizeWithTheNotice)
{
    QTemporaryDir dir;
    GuideTab tab(nullptr, missingStyleFile(dir));
    tab.show();
    auto *notice = child<QLabel>(tab, "vantreoGuideSizeNotice");
    auto *width = child<QSpinBox>(tab, "vantreoGuidePixelWidth");
    EXPECT_FALSE(notice->isVisible());
    EXPECT_FALSE(width->isReadOnly());

    child<QSpinBox>(tab, "vantreoGuideProjectorCount")->setValue(2);
    child<QCheckBox>(tab, "vantreoGuideRealPixel")->setChecked(true);
    EXPECT_TRUE(tab.settings().projectorRealPixel);
    EXPECT_TRUE(notice->isVisible());
    EXPECT_EQ(notice->text(), QStringLiteral("Guide Image size is calculated automatically. Turn off Calculate "
                                             "Effective Resolution to edit W/H."));
    EXPECT_TRUE(width->isReadOnly());
    EXPECT_TRUE(child<QSpinBox>(tab, "vantreoGuidePixelHeight")->isReadOnly());
    const QSize expected = effectiveGuidePixelSize(tab.settings());
    EXPECT_EQ(QSize(tab.settings().pixelWidth, tab.settings().pixelHeight), expected);
    EXPECT_EQ(width->value(), expected.width());

    child<QCheckBox>(tab, "vantreoGuideRealPixel")->setChecked(false);
    EXPECT_FALSE(notice->isVisible());
    EXPECT_FALSE(width->isReadOnly());
}

TEST(GuideTab, ProjectorControlsAndTheResolutionCheck)
{
    QTemporaryDir dir;
    GuideTab tab(nullptr, missingStyleFile(dir));
    tab.show();
    auto *notice = child<QLabel>(tab, "vantreoGuideProjectorNotice");
    EXPECT_FALSE(notice->isVisible());
    child<QSpinBox>(tab, "vantreoGuideProjectorHeight")->setValue(1080);
    EXPECT_EQ(tab.settings().projectorHeight, 1080);
    EXPECT_TRUE(notice->isVisible());

    // Minimum overlap is edited in percent.
    child<QDoubleSpinBox>(tab, "vantreoGuideMinimumOverlap")->setValue(40.0);
    EXPECT_DOUBLE_EQ(tab.settings().projectorAutoLayoutOverlap, 0.40);

    // Auto layout on the throw-ratio basis fills in the throw distance it needs.
    child<QDoubleSpinBox>(tab, "vantreoGuideThrowRatio")->setValue(0.5);
    EXPECT_DOUBLE_EQ(tab.settings().projectorThrowDistance, automaticThrowDistance(tab.settings(), 0.5));
    EXPECT_FALSE(child<QDoubleSpinBox>(tab, "vantreoGuideThrowDistance")->isEnabled());

    // On the throw-distance basis the counts are computed, and Apply writes them back.
    child<QComboBox>(tab, "vantreoGuideLayoutBasis")->setCurrentIndex(1);
    EXPECT_TRUE(tab.settings().projectorAutoLayoutUseThrowDistance);
    child<QDoubleSpinBox>(tab, "vantreoGuideThrowDistance")->setValue(480.0); // 960 mm wide images
    const ProjectorArrayLayout layout = computeProjectorArray(tab.settings());
    child<QPushButton>(tab, "vantreoGuideApplyProjectorLayout")->click();
    EXPECT_EQ(tab.settings().projectorCount, layout.countX);
    EXPECT_EQ(tab.settings().projectorCountY, layout.countY);
    EXPECT_GT(layout.countX, 1);
    EXPECT_EQ(child<QSpinBox>(tab, "vantreoGuideProjectorCount")->value(), layout.countX);
}

TEST(GuideTab, RandomizeColorFillsOneColourPerCell)
{
    QTemporaryDir dir;
    GuideTab tab(nullptr, missingStyleFile(dir));
    child<QPushButton>(tab, "vantreoGuideRandomizeColor")->click();
    EXPECT_EQ(tab.settings().colors.size(), 32 * 20);
    child<QSpinBox>(tab, "vantreoGuideRows")->setValue(10);
    EXPECT_EQ(tab.settings().columns, 16);
    EXPECT_EQ(tab.settings().colors.size(), 16 * 10);
    child<QPushButton>(tab, "vantreoGuideResetColor")->click();
    EXPECT_TRUE(tab.settings().colors.isEmpty());
}

TEST(GuideTab, ExportWritesAPngOfTheGuideSize)
{
    QTemporaryDir dir;
    GuideTab tab(nullptr, missingStyleFile(dir));
    GuideSettings s = tab.settings();
    s.realWidth = 3840;
    s.realHeight = 2160;
    s.pixelWidth = 3840;
    s.pixelHeight = 2160;
    s.rotate = true;
    s.displayProjectorInfo = true;
    tab.setSettings(s);
    // With the preview up to date, the export writes exactly the image on screen.
    ASSERT_TRUE(tab.waitForGuideImage());
    const QString path = dir.filePath(QStringLiteral("guide.png"));
    QString error;
    ASSERT_TRUE(tab.exportPng(path, &error)) << error.toStdString();
    QImageReader reader(path);
    EXPECT_EQ(reader.format(), QByteArray("png"));
    const QImage decoded = reader.read();
    ASSERT_FALSE(decoded.isNull()) << reader.errorString().toStdString();
    EXPECT_EQ(decoded.size(), QSize(2160, 3840));
    EXPECT_TRUE(decoded.convertToFormat(QImage::Format_ARGB32) == tab.guideImage().convertToFormat(QImage::Format_ARGB32));

    // Taken before the preview has caught up, the export renders the current settings itself.
    s.rotate = false;
    tab.setSettings(s);
    const QString direct = dir.filePath(QStringLiteral("direct.png"));
    ASSERT_TRUE(tab.exportPng(direct, &error)) << error.toStdString();
    EXPECT_EQ(QImageReader(direct).size(), QSize(3840, 2160));

    EXPECT_FALSE(tab.exportPng(dir.filePath(QStringLiteral("no/such/folder/guide.png")), &error));
    EXPECT_FALSE(error.isEmpty());
}

TEST(GuideTab, LayerDraggedInThePreviewMovesInTheSettings)
{
    QTemporaryDir dir;
    GuideTab tab(nullptr, missingStyleFile(dir));
    tab.resize(1400, 900);
    tab.layerList()->addMaskLayer(QStringLiteral("rectangle"));
    ASSERT_EQ(tab.settings().imageObjects.size(), 1);
    const GuideLayerObject before = tab.settings().imageObjects.at(0);
    GuideLayerFrame frame;
    frame.center = QPointF(before.centerX + 100, before.centerY - 50);
    frame.size = QSizeF(before.width * 2, before.height);
    frame.rotationDegrees = 30;
    Q_EMIT tab.preview()->layerFrameEdited(0, frame);
    const GuideLayerObject after = tab.settings().imageObjects.at(0);
    EXPECT_DOUBLE_EQ(after.centerX, before.centerX + 100);
    EXPECT_DOUBLE_EQ(after.centerY, before.centerY - 50);
    EXPECT_DOUBLE_EQ(after.width, before.width * 2);
    EXPECT_DOUBLE_EQ(after.rotationDegrees, 30.0);
    EXPECT_EQ(tab.preview()->selectedLayer(), 0);
}

TEST(GuideTab, FollowsALanguageChangeWithoutLosingItsSettings)
{
    QTemporaryDir dir;
    GuideTab tab(nullptr, missingStyleFile(dir));
    child<QSpinBox>(tab, "vantreoGuideRows")->setValue(10);
    tab.layerList()->addMaskLayer(QStringLiteral("circle"));

    QTranslator korean;
    ASSERT_TRUE(korean.load(QStringLiteral(":/i18n/VantreoGuide_ko.qm")));
    QCoreApplication::installTranslator(&korean);
    QTest::qWait(20);
    EXPECT_EQ(child<QPushButton>(tab, "vantreoGuideExportPng")->text(), QStringLiteral("PNG 내보내기"));
    EXPECT_EQ(child<QPushButton>(tab, "vantreoGuideApplyProjectorLayout")->text(), QStringLiteral("프로젝터 배치 적용"));
    EXPECT_EQ(child<QComboBox>(tab, "vantreoGuideNumberFormat")->currentText(), QStringLiteral("행-열"));
    auto *list = child<QListWidget>(tab, "vantreoLayerListView");
    ASSERT_EQ(list->count(), 1);
    EXPECT_EQ(list->item(0)->text(), QStringLiteral("원형 마스크"));

    // The rebuilt controls show the same guide and still edit it.
    auto *rows = child<QSpinBox>(tab, "vantreoGuideRows");
    EXPECT_EQ(rows->value(), 10);
    rows->setValue(12);
    EXPECT_EQ(tab.settings().rows, 12);

    QCoreApplication::removeTranslator(&korean);
    QTest::qWait(20);
    EXPECT_EQ(child<QPushButton>(tab, "vantreoGuideExportPng")->text(), QStringLiteral("Export PNG"));
    EXPECT_EQ(tab.settings().imageObjects.size(), 1);
}
