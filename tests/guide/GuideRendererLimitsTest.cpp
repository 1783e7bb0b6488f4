#include "guide/GuideRenderer.h"

#include <QPainter>

#include <gtest/gtest.h>

#include <climits>
#include <random>

namespace {

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

// Every cell filled in order, later fills covering earlier ones, straight from the rule.
QImage paintEveryCell(const GuideSettings &s)
{
    QImage image(s.pixelWidth, s.pixelHeight, QImage::Format_ARGB32);
    image.fill(Qt::black);
    QPainter p(&image);
    const double cw = double(s.pixelWidth) / s.columns, ch = double(s.pixelHeight) / s.rows;
    for (int r = 0; r < s.rows; ++r) {
        for (int c = 0; c < s.columns; ++c) {
            const double x = s.inverseX ? s.pixelWidth - (c + 1) * cw : c * cw;
            const double y = s.inverseY ? s.pixelHeight - (r + 1) * ch : r * ch;
            QRect cell(int(std::floor(x)), int(std::floor(y)), int(std::ceil(cw)), int(std::ceil(ch)));
            if (s.inverseX ? c == 0 : c == s.columns - 1)
                cell.setRight(s.pixelWidth - 1);
            if (s.inverseY ? r == 0 : r == s.rows - 1)
                cell.setBottom(s.pixelHeight - 1);
            if (s.inverseX ? c == s.columns - 1 : c == 0)
                cell.setLeft(0);
            if (s.inverseY ? r == s.rows - 1 : r == 0)
                cell.setTop(0);
            p.fillRect(cell, guideCellColor(s, c, r, s.columns, s.rows));
        }
    }
    return image;
}

} // namespace

TEST(GuideRendererLimits, CellCountsNearTheIntegerLimitEndWithACheckerboard)
{
    // Two billion cells each way on a small image: the render must not walk every cell
    // (nor overflow the parity of column + row).
    for (const bool inverse : {false, true}) {
        GuideSettings s = cellsOnly(64, 48, INT_MAX, INT_MAX);
        s.guidePattern = 0;
        s.inverseX = s.inverseY = inverse;
        s.displayNumber = true; // too small to be drawn, but prepared
        const QImage image = renderGuideImage(s);
        ASSERT_EQ(image.size(), QSize(64, 48));
        for (int y = 0; y < 48; ++y) {
            for (int x = 0; x < 64; ++x) {
                const QRgb px = image.pixel(x, y);
                ASSERT_TRUE(px == qRgb(42, 42, 42) || px == qRgb(154, 154, 154)) << x << "," << y;
            }
        }
        s.displayCellBoundary = true; // a boundary on every pixel
        const QImage lined = renderGuideImage(s);
        EXPECT_EQ(lined.pixel(10, 10), qRgb(220, 220, 220));
        EXPECT_EQ(lined.pixel(63, 47), qRgb(220, 220, 220));
    }
}

TEST(GuideRendererLimits, SubPixelCellsMatchPaintingEveryCellInOrder)
{
    // More cells than pixels, with a colour per cell, so any cell taken for the wrong one
    // (an owner off by one, an inverse axis read forwards) shows.
    std::mt19937 rng(7);
    for (const auto &[columns, rows] : {std::pair{37, 29}, std::pair{13, 11}, std::pair{100, 3}}) {
        for (int flags = 0; flags < 4; ++flags) {
            GuideSettings s = cellsOnly(13, 11, columns, rows);
            s.inverseX = flags & 1;
            s.inverseY = flags & 2;
            for (int i = 0; i < columns * rows; ++i)
                s.colors.append(QColor(int(rng() % 256), int(rng() % 256), int(rng() % 256)));
            const QImage expected = paintEveryCell(s);
            const QImage image = renderGuideImage(s);
            for (int y = 0; y < 11; ++y) {
                for (int x = 0; x < 13; ++x)
                    ASSERT_EQ(image.pixel(x, y), expected.pixel(x, y))
                        << columns << "x" << rows << " flags " << flags << " at " << x << "," << y;
            }
        }
    }
}

TEST(GuideRendererLimits, CellLabelsLargerThanTheGlyphCacheAreStillDrawn)
{
    // Two huge cells: the labels are far beyond the size glyph images are made for, and
    // must be drawn as outlines, on the right cell (left "1-1", right "1-2").
    GuideSettings s = cellsOnly(1600, 800, 2, 1);
    s.guidePattern = 0;
    s.displayNumber = true;
    s.numberTextFormat = 2;
    s.fontScale = 3.0;
    const QImage image = renderGuideImage(s);
    auto whiteIn = [&](const QRect &area) {
        int count = 0;
        for (int y = area.top(); y <= area.bottom(); y += 2) {
            for (int x = area.left(); x <= area.right(); x += 2) {
                const QColor c = QColor::fromRgb(image.pixel(x, y));
                count += c.red() > 200 && c.green() > 200 && c.blue() > 200;
            }
        }
        return count;
    };
    const int left = whiteIn(QRect(100, 200, 600, 400));
    const int right = whiteIn(QRect(900, 200, 600, 400));
    EXPECT_GT(left, 1000);
    EXPECT_GT(right, 1000);
    // "1-2" has more ink than "1-1" in this face; a swapped pair of labels would flip this.
    EXPECT_GT(right, left);
}
