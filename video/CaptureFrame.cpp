#include "video/CaptureFrame.h"

#include <algorithm>

namespace {

constexpr qint64 kMinBitRate = 8'000'000;
constexpr qint64 kMaxBitRate = 50'000'000;
constexpr int kDarkLevel = 8;
constexpr int kMinTrimmedSide = 16;

bool isLit(QRgb pixel)
{
    return qRed(pixel) > kDarkLevel || qGreen(pixel) > kDarkLevel || qBlue(pixel) > kDarkLevel;
}

int keptWidth(const QImage &image)
{
    const int needed = std::max(image.height() / 100, 1);
    for (int x = image.width() - 1; x >= 0; --x) {
        int lit = 0;
        for (int y = 0; y < image.height() && lit < needed; ++y)
            lit += isLit(reinterpret_cast<const QRgb *>(image.constScanLine(y))[x]) ? 1 : 0;
        if (lit >= needed)
            return x + 1;
    }
    return 0;
}

int keptHeight(const QImage &image, int width)
{
    const int needed = std::max(width / 100, 1);
    for (int y = image.height() - 1; y >= 0; --y) {
        const auto *row = reinterpret_cast<const QRgb *>(image.constScanLine(y));
        int lit = 0;
        for (int x = 0; x < width && lit < needed; ++x)
            lit += isLit(row[x]) ? 1 : 0;
        if (lit >= needed)
            return y + 1;
    }
    return 0;
}

} // namespace

qint64 captureBitRate(int width, int height)
{
    const qint64 raw = qint64(std::max(width, 0)) * qint64(std::max(height, 0)) * 15;
    return std::clamp(raw, kMinBitRate, kMaxBitRate);
}

qint64 captureSampleTime(qint64 index)
{
    return index * 10'000'000 / 30;
}

QSize evenCaptureSize(QSize size)
{
    return QSize(std::max(size.width() & ~1, 2), std::max(size.height() & ~1, 2));
}

QImage cropToEvenCaptureSize(const QImage &image)
{
    if (image.isNull())
        return image;
    const QSize even = evenCaptureSize(image.size());
    if (even == image.size() || even.width() > image.width() || even.height() > image.height())
        return image;
    return image.copy(0, 0, even.width(), even.height());
}

QImage trimDarkCaptureEdges(const QImage &image)
{
    if (image.width() < kMinTrimmedSide || image.height() < kMinTrimmedSide)
        return image;
    const QImage rgb = image.format() == QImage::Format_RGB32 || image.format() == QImage::Format_ARGB32
        ? image
        : image.convertToFormat(QImage::Format_RGB32);
    const int width = keptWidth(rgb);
    const int height = keptHeight(rgb, std::max(width, 1));
    const QSize kept = evenCaptureSize(QSize(width, height));
    if (kept == rgb.size())
        return rgb;
    return rgb.copy(0, 0, std::min(kept.width(), rgb.width()), std::min(kept.height(), rgb.height()));
}
