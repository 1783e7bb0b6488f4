#include "guide/GuideRenderer.h"
#include "guide/PngWriter.h"

#include <QBuffer>
#include <QImageReader>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

QImage decode(const QByteArray &png)
{
    QBuffer buffer;
    buffer.setData(png);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer, "png");
    QImage image = reader.read();
    EXPECT_FALSE(image.isNull()) << reader.errorString().toStdString();
    return image;
}

void expectSamePixels(const QImage &expected, const QImage &actual)
{
    ASSERT_EQ(expected.size(), actual.size());
    const QImage a = expected.convertToFormat(QImage::Format_ARGB32);
    const QImage b = actual.convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < a.height(); ++y)
        ASSERT_EQ(0, memcmp(a.constScanLine(y), b.constScanLine(y), size_t(a.width()) * 4)) << "row " << y;
}

QImage noise(int width, int height, bool alpha, quint32 seed)
{
    QRandomGenerator random(seed);
    QImage image(width, height, QImage::Format_ARGB32);
    for (int y = 0; y < height; ++y) {
        auto *line = reinterpret_cast<quint32 *>(image.scanLine(y));
        for (int x = 0; x < width; ++x)
            line[x] = random.generate() | (alpha ? 0u : 0xff000000u);
    }
    return image;
}

} // namespace

TEST(PngWriter, RenderedGuideDecodesPixelExactly)
{
    GuideSettings s;
    s.pixelWidth = 1600;
    s.pixelHeight = 900;
    s.displayCircle = s.displayProjectorInfo = s.displayCrossline = true;
    const QImage guide = renderGuideImage(s);
    for (int threads : {1, 2, 7}) {
        const QByteArray png = encodePng(guide, threads);
        ASSERT_TRUE(png.startsWith("\x89PNG\r\n\x1a\n"));
        expectSamePixels(guide, decode(png));
    }
}

TEST(PngWriter, NoiseAndTransparencyRoundTrip)
{
    const QImage opaque = noise(257, 301, false, 7);
    const QByteArray rgb = encodePng(opaque, 4);
    EXPECT_EQ(quint8(rgb.at(25)), 2); // colour type: RGB
    expectSamePixels(opaque, decode(rgb));

    // One translucent pixel in the last row is enough to keep the alpha channel.
    QImage almost = noise(200, 600, false, 13);
    almost.setPixel(199, 599, qRgba(10, 20, 30, 40));
    const QByteArray almostPng = encodePng(almost, 4);
    EXPECT_EQ(quint8(almostPng.at(25)), 6);
    expectSamePixels(almost, decode(almostPng));

    const QImage translucent = noise(300, 129, true, 11);
    const QByteArray rgba = encodePng(translucent, 3);
    EXPECT_EQ(quint8(rgba.at(25)), 6); // colour type: RGBA
    const QImage back = decode(rgba);
    EXPECT_TRUE(back.hasAlphaChannel());
    expectSamePixels(translucent, back);
}

TEST(PngWriter, TinyAndOddShapesAndOtherFormats)
{
    expectSamePixels(noise(1, 1, false, 1), decode(encodePng(noise(1, 1, false, 1))));
    expectSamePixels(noise(1, 3000, false, 2), decode(encodePng(noise(1, 3000, false, 2), 8)));
    expectSamePixels(noise(5000, 2, true, 3), decode(encodePng(noise(5000, 2, true, 3), 8)));
    QImage rgb888 = noise(64, 64, false, 4).convertToFormat(QImage::Format_RGB888);
    expectSamePixels(rgb888, decode(encodePng(rgb888)));
    EXPECT_TRUE(encodePng(QImage()).isEmpty());
}

TEST(PngWriter, SavesThroughTemporaryFileAndReportsFailure)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("guide.png"));
    const QImage image = noise(40, 30, false, 5);
    QString error;
    ASSERT_TRUE(writeGuidePng(image, path, &error)) << error.toStdString();
    expectSamePixels(image, QImage(path));
    EXPECT_FALSE(writeGuidePng(image, dir.filePath(QStringLiteral("missing/dir/guide.png")), &error));
    EXPECT_FALSE(error.isEmpty());
}
