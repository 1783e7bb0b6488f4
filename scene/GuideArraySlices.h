#pragma once

#include <QRectF>
#include <QVector>

struct GuideObject;

// A guide's projector array as the 3D view needs it: how many projectors across and down,
// and the part of the guide image each one covers, row by row, as fractions of the image
// (origin top-left, 0..1).
constexpr int kMaxGuideArraySide = 64;

struct GuideArraySlices {
    int columns = 1;
    int rows = 1;
    QVector<QRectF> rects;
    bool operator==(const GuideArraySlices &) const = default;
};

// The part of its guide a projector shows, as fractions of the image: its slice when it
// names a column and row that the guide's array has, else the whole image (0, 0, 1, 1).
QRectF projectorImageSlice(const GuideObject &projector, const QVector<GuideArraySlices> &arrays);
