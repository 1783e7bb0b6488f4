#pragma once

#include "canvas/CanvasGeometry.h"

#include <QColor>
#include <QImage>

#include <algorithm>
#include <ostream>

// Readable strings in failure messages.
inline void PrintTo(const QString &text, std::ostream *os)
{
    *os << '"' << text.toStdString() << '"';
}

// A picture whose red channel codes x and green codes y, so a read-back pixel says which
// source pixel landed there: any mirror, turn or swapped axis shows.
inline QImage gradientImage(int width, int height)
{
    QImage image(width, height, QImage::Format_ARGB32);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x)
            image.setPixel(x, y, qRgb(x * 255 / std::max(1, width - 1), y * 255 / std::max(1, height - 1), 128));
    }
    return image;
}

inline CanvasImage canvasImageOf(const QImage &image)
{
    return CanvasImage{image.size(), image};
}

inline QImage solidImage(int width, int height, const QColor &color)
{
    QImage image(width, height, QImage::Format_ARGB32);
    image.fill(color);
    return image;
}
