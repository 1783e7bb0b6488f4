#include "scene/GuideArraySlices.h"

#include "scene/GuideObject.h"

#include <cmath>

QRectF projectorImageSlice(const GuideObject &projector, const QVector<GuideArraySlices> &arrays)
{
    const QRectF whole(0.0, 0.0, 1.0, 1.0);
    const int guide = projector.projector_image_guide_index;
    const int column = projector.projector_image_slice_column;
    const int row = projector.projector_image_slice_row;
    if (guide < 0 || guide >= arrays.size() || column < 0 || row < 0)
        return whole;
    const GuideArraySlices &array = arrays.at(guide);
    if (column >= array.columns || row >= array.rows)
        return whole;
    const qsizetype at = qsizetype(row) * array.columns + column;
    if (at >= array.rects.size())
        return whole;
    const QRectF slice = array.rects.at(at).intersected(whole);
    // A slice that misses the image or is not a number would show nothing useful.
    if (!std::isfinite(slice.width()) || !std::isfinite(slice.height()) || slice.width() <= 1e-6
        || slice.height() <= 1e-6)
        return whole;
    return slice;
}
