#include "guide/GuidePngExport.h"
#include "guide/GuideRenderer.h"
#include "guide/PngWriter.h"

#include <QImage>
#include <gtest/gtest.h>

#include <cstring>

namespace {

// Everything drawn: texts at the bottom and in the middle, dimensions, projector
// outlines and labels, circles; none of it is symmetric, so a shifted band shows.
GuideSettings everything(int width, int height)
{
    GuideSettings s;
    s.pixelWidth = width;
    s.pixelHeight = height;
    s.realWidth = width;
    s.realHeight = height;
    s.displayCircle = s.displayCrossline = s.displayInnerline = s.displaySquareStatus = true;
    s.displayExplain = s.displayProjectorInfo = s.displayFinalResolutionInfo = true;
    s.showWidthDimension = s.showHeightDimension = true;
    s.projectorCount = 3;
    s.projectorCountY = 2;
    s.explain = QStringLiteral("North wall, seen from the stage");
    return s;
}

// The first texts a process draws can come out a shade different from the same texts
// drawn later, while the font caches fill; comparisons start after one render.
void warmUp(const GuideSettings &s)
{
    static_cast<void>(renderGuideImage(s, 1));
}

void expectSameRows(const QImage &whole, const QImage &rows, int firstRow, const char *what)
{
    ASSERT_EQ(rows.width(), whole.width()) << what;
    for (int y = 0; y < rows.height(); ++y)
        ASSERT_EQ(0, memcmp(whole.constScanLine(firstRow + y), rows.constScanLine(y), size_t(whole.width()) * 4))
            << what << ", image row " << firstRow + y;
}

QImage decodePng(const QByteArray &png)
{
    QImage image = QImage::fromData(png, "PNG");
    EXPECT_FALSE(image.isNull());
    return image.convertToFormat(QImage::Format_ARGB32);
}

void expectSameImage(const QImage &expected, const QImage &actual, const char *what)
{
    ASSERT_EQ(expected.size(), actual.size()) << what;
    expectSameRows(expected.convertToFormat(QImage::Format_ARGB32), actual, 0, what);
}

} // namespace

TEST(GuideBands, EachBandPaintedOverLeftoversHoldsTheWholeImagesRows)
{
    for (bool flip : {false, true}) {
        GuideSettings s = everything(1283, 719);
        s.flipH = flip;
        warmUp(s);
        const QImage whole = renderGuideImage(s, 1);
        const GuideBandPainter painter(s);
        ASSERT_GT(painter.bands().size(), 1);
        int next = 0;
        for (int i = 0; i < painter.bands().size(); ++i) {
            const QRect band = painter.bands().at(i);
            EXPECT_EQ(band.top(), next);
            EXPECT_EQ(band.width(), 1283);
            next = band.bottom() + 1;
            // A buffer that held something else: every pixel must be painted again.
            QImage rows(band.size(), QImage::Format_ARGB32_Premultiplied);
            rows.fill(QColor(1, 2, 3, 4));
            painter.paintBand(i, rows);
            expectSameRows(whole, rows, band.top(), flip ? "flipped" : "upright");
        }
        EXPECT_EQ(next, 719);
    }
}

TEST(GuideBands, EncodedGuideDecodesToTheRenderedImage)
{
    // One thread on both sides: which pool thread draws a text, and what it drew before,
    // can shade its edges (see warmUp).
    GuideSettings upright = everything(1921, 1081);
    warmUp(upright);
    expectSameImage(renderGuideImage(upright, 1), decodePng(encodeGuidePng(upright, 1)), "upright");

    // Rotated guides are turned whole: the other path, the same pixels.
    GuideSettings rotated = upright;
    rotated.rotate = true;
    rotated.flipH = true;
    EXPECT_FALSE(GuideBandPainter::paintsInBands(rotated));
    const QImage turned = renderGuideImage(rotated, 1);
    EXPECT_EQ(renderedGuideSize(rotated), turned.size());
    expectSameImage(turned, decodePng(encodeGuidePng(rotated, 1)), "rotated");

    // Smaller than one band's minimum, and a single pixel.
    for (const QSize &size : {QSize(40, 30), QSize(1, 1)}) {
        const GuideSettings small = everything(size.width(), size.height());
        warmUp(small);
        expectSameImage(renderGuideImage(small, 1), decodePng(encodeGuidePng(small, 1)), "small");
    }
}

TEST(GuideBands, DrawingsWithoutTextMatchOnAnyThreadCount)
{
    GuideSettings s = everything(2501, 1407);
    s.displayNumber = s.displayResolution = s.displayReal = s.displaySquareStatus = false;
    s.displayExplain = s.displayProjectorInfo = s.showWidthDimension = s.showHeightDimension = false;
    s.displayCenterline = s.displayOutline = s.displayCellBoundary = true;
    s.flipH = true;
    const QImage expected = renderGuideImage(s, 1);
    for (int threads : {2, 4, 9})
        expectSameImage(expected, decodePng(encodeGuidePng(s, threads)), "threads");
}

TEST(GuideBands, KoreanLabelsAndLargeFontsAcrossBandEdges)
{
    GuideSettings s = everything(2000, 1200);
    s.numberTextFormat = 2;
    s.fontScale = 3.0;
    s.displayNumber = true;
    warmUp(s);
    expectSameImage(renderGuideImage(s, 1), decodePng(encodeGuidePng(s, 1)), "Korean labels");
}

TEST(GuideBands, RenderedSizeIsClampedAndTurned)
{
    GuideSettings s;
    s.pixelWidth = 100000;
    s.pixelHeight = 0;
    EXPECT_EQ(renderedGuideSize(s), QSize(32768, 1));
    s.rotate = true;
    EXPECT_EQ(renderedGuideSize(s), QSize(1, 32768));
}

TEST(GuideBands, TextAcrossABandEdgeIsDrawnOnBothSides)
{
    // The resolution text sits on the image's middle row, where two bands meet: each band
    // draws its half, none leaves it out as lying elsewhere.
    GuideSettings s;
    s.pixelWidth = 1921;
    s.pixelHeight = 1081;
    s.displayNumber = s.displayCellBoundary = s.displayLogo = s.displayReal = s.displayExplain = false;
    s.showWidthDimension = s.showHeightDimension = false;
    s.displayResolution = true;
    const GuideBandPainter painter(s);
    int edge = -1;
    for (const QRect &band : painter.bands()) {
        if (std::abs(band.top() - 540) < std::abs(edge - 540))
            edge = band.top();
    }
    ASSERT_GT(edge, 500);
    ASSERT_LT(edge, 580);
    const QImage image = renderGuideImage(s, 2);
    for (int y : {edge - 3, edge - 1, edge, edge + 2}) {
        int white = 0;
        const auto *line = reinterpret_cast<const QRgb *>(image.constScanLine(y));
        for (int x = 0; x < image.width(); ++x)
            white += (line[x] & 0xffffffu) == 0xffffffu ? 1 : 0;
        EXPECT_GT(white, 20) << "row " << y << " beside the band edge " << edge;
    }
}
