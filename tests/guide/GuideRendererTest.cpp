#include "guide/GuideRenderer.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

// Only the cells: every other element off.
GuideSettings cellsOnly(int width, int height, int columns, int rows)
{
    GuideSettings s;
    s.pixelWidth = width;
    s.pixelHeight = height;
    s.columns = columns;
    s.rows = rows;
    s.displayNumber = s.displayCellBoundary = s.displayCenterline = s.displayOutline = false;
    s.displayLogo = s.displayResolution = s.displayReal = s.displayExplain = false;
    s.showWidthDimension = s.showHeightDimension = false;
    return s;
}

QColor at(const QImage &image, int x, int y)
{
    return QColor::fromRgba(image.pixel(x, y));
}

void expectNear(const QColor &actual, const QColor &expected, int tolerance, const char *what)
{
    EXPECT_NEAR(actual.red(), expected.red(), tolerance) << what;
    EXPECT_NEAR(actual.green(), expected.green(), tolerance) << what;
    EXPECT_NEAR(actual.blue(), expected.blue(), tolerance) << what;
    EXPECT_EQ(actual.alpha(), 255) << what;
}

} // namespace

TEST(GuideRenderer, ImageHasExactlyThePixelSize)
{
    const QImage image = renderGuideImage(cellsOnly(333, 211, 7, 5));
    EXPECT_EQ(image.size(), QSize(333, 211));
    EXPECT_EQ(image.format(), QImage::Format_ARGB32);
    GuideSettings rotated = cellsOnly(333, 211, 7, 5);
    rotated.rotate = true;
    EXPECT_EQ(renderGuideImage(rotated).size(), QSize(211, 333));
}

TEST(GuideRenderer, CellColoursOfAllThreeKinds)
{
    // Checkerboard of the "Vantreo" style.
    GuideSettings s = cellsOnly(400, 200, 4, 2);
    s.guidePattern = 0;
    QImage image = renderGuideImage(s);
    EXPECT_EQ(at(image, 50, 50), QColor(42, 42, 42));
    EXPECT_EQ(at(image, 150, 50), QColor(154, 154, 154));
    EXPECT_EQ(at(image, 50, 150), QColor(154, 154, 154));
    EXPECT_EQ(at(image, 399, 199), QColor(42, 42, 42));

    // Four-corner blend: cell (0, 0) and (1, 0) of a 2 x 2 grid, worked by hand.
    s = cellsOnly(200, 200, 2, 2);
    image = renderGuideImage(s);
    EXPECT_EQ(at(image, 10, 10), QColor(120, 38, 129));
    EXPECT_EQ(at(image, 150, 10), QColor(149, 72, 91));
    // Corners lean towards purple, red, blue and green.
    s = cellsOnly(1000, 1000, 10, 10);
    image = renderGuideImage(s);
    const QColor topLeft = at(image, 5, 5), topRight = at(image, 995, 5);
    const QColor bottomLeft = at(image, 5, 995), bottomRight = at(image, 995, 995);
    EXPECT_GT(topLeft.blue(), topLeft.green());
    EXPECT_GT(topRight.red(), topRight.blue());
    EXPECT_GT(bottomLeft.blue(), bottomLeft.red());
    EXPECT_GT(bottomRight.green(), bottomRight.red());

    // A short colour list colours the first cells, column-major; the rest keep the style.
    s = cellsOnly(300, 200, 3, 2);
    s.guidePattern = 0;
    s.colors = {QColor(255, 0, 0), QColor(0, 255, 0), QColor(0, 0, 255)};
    image = renderGuideImage(s);
    EXPECT_EQ(at(image, 50, 50), QColor(255, 0, 0));   // column 0, row 0
    EXPECT_EQ(at(image, 50, 150), QColor(0, 255, 0));  // column 0, row 1
    EXPECT_EQ(at(image, 150, 50), QColor(0, 0, 255));  // column 1, row 0
    EXPECT_EQ(at(image, 150, 150), QColor(42, 42, 42)); // column 1, row 1: style
    EXPECT_EQ(at(image, 250, 50), QColor(42, 42, 42));  // column 2, row 0: (2 + 0) even
}

TEST(GuideRenderer, ZeroColumnsAndRowsGiveOneCell)
{
    GuideSettings s = cellsOnly(64, 48, 0, 0);
    s.guidePattern = 0;
    const QImage image = renderGuideImage(s);
    for (int y = 0; y < image.height(); y += 7) {
        for (int x = 0; x < image.width(); x += 7)
            ASSERT_EQ(at(image, x, y), QColor(42, 42, 42));
    }
}

TEST(GuideRenderer, InverseAndFlipMoveTheFirstCell)
{
    GuideSettings s = cellsOnly(300, 200, 3, 2);
    const QColor red(255, 0, 0);
    s.colors = QVector<QColor>(6, QColor(0, 0, 80));
    s.colors[0] = red; // column 0, row 0

    EXPECT_EQ(at(renderGuideImage(s), 50, 50), red);
    s.inverseX = true;
    EXPECT_EQ(at(renderGuideImage(s), 250, 50), red);
    s.inverseY = true;
    EXPECT_EQ(at(renderGuideImage(s), 250, 150), red);
    s.inverseX = false;
    EXPECT_EQ(at(renderGuideImage(s), 50, 150), red);
    s.inverseY = false;
    s.flipH = true;
    EXPECT_EQ(at(renderGuideImage(s), 250, 50), red);
    s.inverseX = true; // mirrored twice
    EXPECT_EQ(at(renderGuideImage(s), 50, 50), red);
    // A quarter turn clockwise takes the top-left cell to the top-right.
    s.flipH = s.inverseX = false;
    s.rotate = true;
    const QImage turned = renderGuideImage(s);
    EXPECT_EQ(turned.size(), QSize(200, 300));
    EXPECT_EQ(at(turned, 150, 50), red);
    EXPECT_EQ(at(turned, 50, 50), QColor(0, 0, 80));
}

TEST(GuideRenderer, FlipMirrorsEveryPixel)
{
    GuideSettings s = cellsOnly(640, 400, 7, 5);
    s.displayCenterline = s.displayOutline = s.displayCellBoundary = s.displayInnerline = true;
    const QImage plain = renderGuideImage(s);
    s.flipH = true;
    EXPECT_EQ(renderGuideImage(s), plain.mirrored(true, false));
}

TEST(GuideRenderer, CentreLinesAreTwoPixelsWideAtHalvesAndQuarters)
{
    GuideSettings s = cellsOnly(400, 200, 1, 1);
    s.colors = {QColor(0, 0, 0)};
    s.displayCenterline = true;
    QImage image = renderGuideImage(s);
    const QColor halfWhite(128, 128, 128);
    // Vertical lines at x = 200, 100, 300 cover the two pixels either side of the line.
    for (int x : {99, 100, 199, 200, 299, 300})
        expectNear(at(image, x, 33), halfWhite, 1, "vertical centre line");
    for (int x : {97, 102, 197, 202, 297, 302})
        EXPECT_EQ(at(image, x, 33), QColor(0, 0, 0)) << x;
    for (int y : {49, 50, 99, 100, 149, 150})
        expectNear(at(image, 33, y), halfWhite, 1, "horizontal centre line");
    EXPECT_EQ(at(image, 33, 47), QColor(0, 0, 0));
    // Where two lines cross the colour is laid twice.
    expectNear(at(image, 200, 100), QColor(191, 191, 191), 2, "crossing");

    // Colour style 0: red at opacity 0.7.
    s.guidePattern = 0;
    image = renderGuideImage(s);
    expectNear(at(image, 200, 33), QColor(178, 0, 0), 1, "red centre line");
}

TEST(GuideRenderer, OutlineLiesInsideTheImage)
{
    GuideSettings s = cellsOnly(300, 200, 1, 1);
    s.colors = {QColor(0, 0, 0)};
    s.displayOutline = true;
    const QImage image = renderGuideImage(s);
    const QColor white(255, 255, 255);
    for (int i : {0, 2, 4}) {
        EXPECT_EQ(at(image, i, 100), white) << i;
        EXPECT_EQ(at(image, 299 - i, 100), white) << i;
        EXPECT_EQ(at(image, 150, i), white) << i;
        EXPECT_EQ(at(image, 150, 199 - i), white) << i;
    }
    EXPECT_EQ(at(image, 2, 2), white);
    EXPECT_EQ(at(image, 297, 197), white);
    // Bevel joins cut the outer corner pixel.
    EXPECT_EQ(at(image, 0, 0), QColor(0, 0, 0));
    EXPECT_EQ(at(image, 299, 199), QColor(0, 0, 0));
    EXPECT_EQ(at(image, 5, 100), QColor(0, 0, 0));
    EXPECT_EQ(at(image, 294, 100), QColor(0, 0, 0));
    EXPECT_EQ(at(image, 150, 5), QColor(0, 0, 0));
}

TEST(GuideRenderer, BandsOnManyThreadsGiveTheSamePixels)
{
    GuideSettings s;
    s.pixelWidth = 1280;
    s.pixelHeight = 720;
    s.displayCircle = s.displayCrossline = s.displayInnerline = s.displaySquareStatus = true;
    s.displayProjectorInfo = true;
    s.projectorCount = 2;
    s.projectorCountY = 2;
    s.explain = QStringLiteral("Stage left");
    GuideLayerObject mask;
    mask.type = QStringLiteral("mask");
    mask.maskShape = QStringLiteral("circle");
    mask.centerX = 900;
    mask.centerY = 400;
    mask.width = mask.height = 300;
    mask.maskWireframe = true;
    mask.maskULines = mask.maskVLines = 4;
    s.imageObjects = {mask};
    const QImage one = renderGuideImage(s, 1);
    EXPECT_EQ(renderGuideImage(s, 5), one);
    s.rotate = true;
    s.flipH = true;
    EXPECT_EQ(renderGuideImage(s, 3), renderGuideImage(s, 1));
}

TEST(GuideRenderer, EverySwitchChangesTheImage)
{
    GuideSettings base;
    base.pixelWidth = 480;
    base.pixelHeight = 300;
    base.displayNumber = base.displayCellBoundary = base.displayCenterline = base.displayOutline = false;
    base.displayResolution = base.displayReal = base.displayExplain = false;
    base.showWidthDimension = base.showHeightDimension = false;
    base.displayLogo = false;
    const QImage plain = renderGuideImage(base);
    const std::vector<std::pair<const char *, bool GuideSettings::*>> switches = {
        {"number", &GuideSettings::displayNumber},           {"boundary", &GuideSettings::displayCellBoundary},
        {"centre", &GuideSettings::displayCenterline},       {"outline", &GuideSettings::displayOutline},
        {"resolution", &GuideSettings::displayResolution},   {"real", &GuideSettings::displayReal},
        {"explain", &GuideSettings::displayExplain},         {"width", &GuideSettings::showWidthDimension},
        {"height", &GuideSettings::showHeightDimension},     {"square", &GuideSettings::displaySquareStatus},
        {"cross", &GuideSettings::displayCrossline},         {"inner", &GuideSettings::displayInnerline},
        {"circle", &GuideSettings::displayCircle},           {"projectors", &GuideSettings::displayProjectorInfo},
    };
    for (const auto &[name, member] : switches) {
        GuideSettings s = base;
        s.*member = true;
        EXPECT_NE(renderGuideImage(s), plain) << name;
    }
}

TEST(GuideRenderer, MasksCoverInsideOrOutside)
{
    GuideSettings s = cellsOnly(200, 200, 1, 1);
    s.colors = {QColor(0, 0, 255)};
    GuideLayerObject mask;
    mask.type = QStringLiteral("mask");
    mask.centerX = 100;
    mask.centerY = 100;
    mask.width = 80;
    mask.height = 80;
    mask.fillColor = QColor(255, 0, 0);
    s.imageObjects = {mask};
    QImage image = renderGuideImage(s);
    EXPECT_EQ(at(image, 100, 100), QColor(255, 0, 0));
    EXPECT_EQ(at(image, 10, 10), QColor(0, 0, 255));
    s.imageObjects[0].maskInverse = true;
    image = renderGuideImage(s);
    EXPECT_EQ(at(image, 100, 100), QColor(0, 0, 255));
    EXPECT_EQ(at(image, 10, 10), QColor(255, 0, 0));
    s.imageObjects[0].visible = false;
    EXPECT_EQ(at(renderGuideImage(s), 10, 10), QColor(0, 0, 255));
    // A circle leaves the corners of its square alone.
    s.imageObjects[0] = mask;
    s.imageObjects[0].maskShape = QStringLiteral("circle");
    image = renderGuideImage(s);
    EXPECT_EQ(at(image, 100, 100), QColor(255, 0, 0));
    EXPECT_EQ(at(image, 63, 63), QColor(0, 0, 255));
}

TEST(GuideLabels, FormatsOfRowsAndColumns)
{
    EXPECT_EQ(guideCellLabel(2, 0, 0), QStringLiteral("1-1"));
    EXPECT_EQ(guideCellLabel(2, 4, 11), QStringLiteral("5-12"));
    EXPECT_EQ(guideCellLabel(3, 4, 11), QStringLiteral("12-5"));
    EXPECT_EQ(guideCellLabel(5, 0, 0), QStringLiteral("A1"));
    EXPECT_EQ(guideCellLabel(5, 26, 9), QStringLiteral("AA10"));
    EXPECT_EQ(guideCellLabel(0, 0, 0), QStringLiteral("가1"));
    EXPECT_EQ(guideCellLabel(4, 1, 2), QStringLiteral("나3")); // retired 4 is Korean
    EXPECT_EQ(guideCellLabel(1, 13, 0), QStringLiteral("하1"));
    EXPECT_EQ(guideCellLabel(9, 0, 0), QStringLiteral("A1")); // above 5 clamps to English
    EXPECT_EQ(guideCellLabel(-1, 0, 0), QStringLiteral("가1"));
    EXPECT_EQ(guideCellLabel(0, 56, 2), QStringLiteral("가23"));
}

TEST(GuideLabels, EnglishRowNamesAreBijectiveBase26)
{
    EXPECT_EQ(englishRowName(0), QStringLiteral("A"));
    EXPECT_EQ(englishRowName(25), QStringLiteral("Z"));
    EXPECT_EQ(englishRowName(26), QStringLiteral("AA"));
    EXPECT_EQ(englishRowName(27), QStringLiteral("AB"));
    EXPECT_EQ(englishRowName(701), QStringLiteral("ZZ"));
    EXPECT_EQ(englishRowName(702), QStringLiteral("AAA"));
}

TEST(GuideLabels, KoreanRowNamesCycleThrough56Syllables)
{
    const QString expected = QStringLiteral("가나다라마바사아자차카타파하거너더러머버서어저처커터퍼허"
                                            "고노도로모보소오조초코토포호구누두루무부수우주추쿠투푸후");
    ASSERT_EQ(expected.size(), 56);
    for (int r = 0; r < 56; ++r)
        EXPECT_EQ(koreanRowName(r), expected.mid(r, 1)) << r;
    EXPECT_EQ(koreanRowName(55), QStringLiteral("후"));
    EXPECT_EQ(koreanRowName(56), QStringLiteral("가2"));
    EXPECT_EQ(koreanRowName(57), QStringLiteral("나2"));
    EXPECT_EQ(koreanRowName(112), QStringLiteral("가3"));
}

TEST(GuideLabels, SquareStatusAndTexts)
{
    GuideSettings s; // 1920 x 1200 in 32 x 20 cells of 60 px
    EXPECT_TRUE(guideCellsAreSquare(s));
    s.columns = 31;
    EXPECT_FALSE(guideCellsAreSquare(s));
    s.realSquare = true; // 30 x 19 cells of 64 x 63.2 px
    EXPECT_FALSE(guideCellsAreSquare(s));
    s.realSquareWidth = 60; // 32 x 20 cells of 60 px
    EXPECT_TRUE(guideCellsAreSquare(s));
    EXPECT_EQ(guideResolutionText(s), QStringLiteral("1920x1200px"));
    EXPECT_EQ(guidePhysicalSizeText(s), QStringLiteral("(1920x1200mm)"));
    EXPECT_EQ(guideSizeCaption(s), QStringLiteral("1920x1200px (1920x1200mm)"));
    const QString square = guideSquareStatusText(true);
    EXPECT_TRUE(square == QStringLiteral("Square") || square == QStringLiteral("정사각형"));
    const QString notSquare = guideSquareStatusText(false);
    EXPECT_TRUE(notSquare == QStringLiteral("Not square") || notSquare == QStringLiteral("정사각형 아님"));
}

TEST(GuideRenderer, OnePixelCellsTileExactlyEitherWay)
{
    GuideSettings s = cellsOnly(3, 2, 3, 2);
    for (int i = 0; i < 6; ++i)
        s.colors.append(QColor(10 * i + 5, 0, 0));
    for (bool inverse : {false, true}) {
        s.inverseX = s.inverseY = inverse;
        const QImage image = renderGuideImage(s);
        for (int c = 0; c < 3; ++c) {
            for (int r = 0; r < 2; ++r) {
                const int x = inverse ? 2 - c : c;
                const int y = inverse ? 1 - r : r;
                EXPECT_EQ(at(image, x, y), s.colors.at(2 * c + r)) << c << "," << r << " inverse " << inverse;
            }
        }
    }
}

#include <QCoreApplication>
#include <QLocale>
#include <QProcess>

// Runs in a child process started with a Korean locale by the test below.
TEST(GuideLocale, KoreanChild)
{
    if (QLocale::system().language() != QLocale::Korean)
        GTEST_SKIP() << "only meaningful under a Korean locale";
    EXPECT_EQ(guideSquareStatusText(true), QStringLiteral("정사각형"));
    EXPECT_EQ(guideSquareStatusText(false), QStringLiteral("정사각형 아님"));
}

TEST(GuideLocale, SquareStatusIsKoreanUnderAKoreanLocale)
{
    for (const char *locale : {"ko_KR.UTF-8", "en_US.UTF-8"}) {
        QProcess child;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("LC_ALL"), QLatin1String(locale));
        env.insert(QStringLiteral("LANG"), QLatin1String(locale));
        env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        child.setProcessEnvironment(env);
        child.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--gtest_filter=GuideLocale.KoreanChild")});
        ASSERT_TRUE(child.waitForFinished(60000));
        const QString output = QString::fromUtf8(child.readAllStandardOutput());
        EXPECT_EQ(child.exitCode(), 0) << output.toStdString();
        if (QByteArray(locale).startsWith("ko"))
            EXPECT_FALSE(output.contains(QStringLiteral("SKIPPED"))) << output.toStdString();
        else
            EXPECT_TRUE(output.contains(QStringLiteral("SKIPPED"))) << output.toStdString();
    }
}

TEST(GuideRenderer, FloorAndVerticalProjectionChangeTheArrayDrawing)
{
    GuideSettings s;
    s.pixelWidth = 640;
    s.pixelHeight = 400;
    s.displayProjectorInfo = true;
    s.projectorCount = 2;
    const QImage wall = renderGuideImage(s);
    GuideSettings floor = s;
    floor.projectorFloor = true;
    EXPECT_NE(renderGuideImage(floor), wall);
    GuideSettings vertical = s;
    vertical.projectorVerticalProjection = true;
    EXPECT_NE(renderGuideImage(vertical), wall);
    GuideSettings noFinal = s;
    noFinal.displayFinalResolutionInfo = false;
    EXPECT_NE(renderGuideImage(noFinal), wall);
    // Without the projector information none of these shows.
    s.displayProjectorInfo = floor.displayProjectorInfo = false;
    EXPECT_EQ(renderGuideImage(floor), renderGuideImage(s));
}

TEST(GuideRenderer, TinyCellsFollowTheFillRule)
{
    // 4 columns of 2.5 px: fills [0,3), [2,5), [5,8), [7,10), later fills covering earlier.
    GuideSettings s = cellsOnly(10, 6, 4, 2);
    for (int i = 0; i < 8; ++i)
        s.colors.append(QColor(30 * i + 10, 7, 7));
    auto columnAt = [&](const QImage &image, int x) {
        for (int c = 0; c < 4; ++c) {
            if (at(image, x, 0) == s.colors.at(2 * c))
                return c;
        }
        return -1;
    };
    QImage image = renderGuideImage(s);
    const int plain[10] = {0, 0, 1, 1, 1, 2, 2, 3, 3, 3};
    for (int x = 0; x < 10; ++x)
        EXPECT_EQ(columnAt(image, x), plain[x]) << x;
    EXPECT_EQ(at(image, 0, 5), s.colors.at(1)); // row 1 of column 0

    s.inverseX = true; // column 0 from the right: [7,10), [5,8), [2,5), [0,3)
    image = renderGuideImage(s);
    const int inverse[10] = {3, 3, 3, 2, 2, 1, 1, 1, 0, 0};
    for (int x = 0; x < 10; ++x)
        EXPECT_EQ(columnAt(image, x), inverse[x]) << x;

    s.flipH = true; // mirrored back
    image = renderGuideImage(s);
    for (int x = 0; x < 10; ++x)
        EXPECT_EQ(columnAt(image, x), inverse[9 - x]) << x;

    // Real square cells of width 0 act as 1 px: every pixel its own cell.
    GuideSettings square = cellsOnly(6, 5, 1, 1);
    square.realSquare = true;
    square.realSquareWidth = 0;
    square.guidePattern = 0;
    const QImage checker = renderGuideImage(square);
    for (int y = 0; y < 5; ++y) {
        for (int x = 0; x < 6; ++x)
            EXPECT_EQ(at(checker, x, y), ((x + y) % 2) ? QColor(154, 154, 154) : QColor(42, 42, 42)) << x << "," << y;
    }
}

TEST(GuideRenderer, NonsenseValuesStillRender)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double inf = std::numeric_limits<double>::infinity();
    GuideSettings s;
    s.pixelWidth = 160;
    s.pixelHeight = -5; // at least one pixel
    s.realWidth = 0;
    s.realHeight = -100;
    s.scale = nan;
    s.fontScale = inf;
    s.logoOpacity = nan;
    s.projectorThrowRatio = nan;
    s.projectorThrowDistance = -inf;
    s.projectorAutoLayoutOverlap = nan;
    s.projectorCount = -3;
    s.projectorWidth = 0;
    s.projectorHeight = -1;
    s.displayProjectorInfo = s.displayCircle = s.displaySquareStatus = true;
    GuideLayerObject layer;
    layer.type = QStringLiteral("mask");
    layer.width = layer.height = 50;
    layer.centerX = nan;
    layer.maskWireframe = true;
    layer.maskULines = 1000000;
    GuideLayerObject image;
    image.filePath = QStringLiteral("/nonexistent/picture.png");
    image.width = image.height = 40;
    s.imageObjects = {layer, image};
    const QImage out = renderGuideImage(s);
    EXPECT_EQ(out.size(), QSize(160, 1));
    s.projectorAutoLayoutUseThrowDistance = true;
    s.pixelHeight = 90;
    EXPECT_EQ(renderGuideImage(s).size(), QSize(160, 90));
}
