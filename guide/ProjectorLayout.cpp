#include "guide/ProjectorLayout.h"

#include <algorithm>
#include <cmath>

int guidePixelGridRule(int value)
{
    if (value % 4 == 0 && value >= 4)
        return value;
    return std::max(4, value - (((value % 4) + 4) % 4));
}

double clampProjectorOverlap(double overlap)
{
    if (!std::isfinite(overlap))
        return 0.0;
    return std::clamp(overlap, 0.0, 0.95);
}

double projectorAspect(const GuideSettings &s)
{
    const double w = s.projectorVerticalProjection ? s.projectorHeight : s.projectorWidth;
    const double h = s.projectorVerticalProjection ? s.projectorWidth : s.projectorHeight;
    const double a = h < 1.0 ? 1.0 : w / h;
    return std::max(a, 0.0001);
}

double projectorEffectiveCount(int count, double overlap)
{
    const int n = std::max(count, 1);
    return std::max(n - std::max(n - 1, 0) * clampProjectorOverlap(overlap), 0.0001);
}

double layoutSurfaceWidth(const GuideSettings &s)
{
    return std::max(double(s.rotate ? s.realHeight : s.realWidth), 1.0);
}

double layoutSurfaceHeight(const GuideSettings &s)
{
    return std::max(double(s.rotate ? s.realWidth : s.realHeight), 1.0);
}

double automaticThrowDistance(const GuideSettings &s, double throwRatio)
{
    const double o = clampProjectorOverlap(s.projectorAutoLayoutOverlap);
    const double ex = projectorEffectiveCount(s.projectorCount, o);
    const double ey = projectorEffectiveCount(s.projectorCountY, o);
    const double a = projectorAspect(s);
    const double hp = layoutSurfaceHeight(s) / ey;
    const double wp = layoutSurfaceWidth(s) / ex;
    const double imageWidth = std::max(hp * a, wp);
    const double t = std::isfinite(throwRatio) ? std::max(throwRatio, 0.0001) : 0.0001;
    return std::max(imageWidth * t, 1.0);
}

QSize guideImageSize(const GuideSettings &s)
{
    return s.rotate ? QSize(s.pixelHeight, s.pixelWidth) : QSize(s.pixelWidth, s.pixelHeight);
}

void applyPixelSizeCoupling(GuideSettings *s)
{
    if (s->fixedRatio) {
        s->pixelHeight = guidePixelGridRule(s->pixelHeight);
        const double ratio = s->realHeight > 0 ? double(s->realWidth) / s->realHeight : 1.0;
        const double width = std::round(s->pixelHeight * ratio); // half away from zero
        s->pixelWidth = guidePixelGridRule(int(std::clamp(width, -2.0e9, 2.0e9)));
    } else {
        s->pixelWidth = guidePixelGridRule(s->pixelWidth);
        s->pixelHeight = guidePixelGridRule(s->pixelHeight);
    }
}

int projectorVerticalPixels(const GuideSettings &s)
{
    const int v = s.projectorVerticalProjection ? s.projectorWidth : s.projectorHeight;
    return std::clamp(guidePixelGridRule(v), 4, 32768);
}

bool projectorResolutionDiffers(const GuideSettings &s)
{
    return projectorVerticalPixels(s) != s.pixelHeight;
}

QSize projectorImagePixels(const GuideSettings &s)
{
    const int w = std::max(s.projectorWidth, 1);
    const int h = std::max(s.projectorHeight, 1);
    return s.projectorVerticalProjection ? QSize(h, w) : QSize(w, h);
}

namespace {
// Fewest projectors whose images of the given size cover span with overlap >= minimum.
int coveringCount(double span, double image, double minimumOverlap)
{
    if (image <= 0.0)
        return 1;
    const double ratio = span / image;
    if (ratio <= 1.0)
        return 1;
    const double n = (ratio - minimumOverlap) / (1.0 - minimumOverlap);
    return std::clamp(int(std::ceil(n - 1e-9)), 1, 64);
}

// Actual overlap when count images of the given size just span the surface.
double spreadOverlap(int count, double span, double image, double minimumOverlap)
{
    if (count <= 1 || image <= 0.0)
        return minimumOverlap;
    const double o = (count - span / image) / (count - 1);
    return std::clamp(o, minimumOverlap, 0.95);
}
} // namespace

ProjectorArrayLayout computeProjectorArray(const GuideSettings &s)
{
    ProjectorArrayLayout l;
    l.surfaceWidthMm = layoutSurfaceWidth(s);
    l.surfaceHeightMm = layoutSurfaceHeight(s);
    l.throwRatio = std::isfinite(s.projectorThrowRatio) ? std::max(s.projectorThrowRatio, 0.0001) : 1.0;
    const double o = clampProjectorOverlap(s.projectorAutoLayoutOverlap);
    const double a = projectorAspect(s);
    l.countX = std::clamp(s.projectorCount, 1, 64);
    l.countY = std::clamp(s.projectorCountY, 1, 64);
    l.overlapX = l.overlapY = o;

    const double distance = std::isfinite(s.projectorThrowDistance) ? std::max(s.projectorThrowDistance, 1.0) : 1.0;
    if (s.projectorAutoLayoutEnabled && !s.projectorAutoLayoutUseThrowDistance) {
        l.throwDistanceMm = automaticThrowDistance(s, l.throwRatio);
        l.imageWidthMm = l.throwDistanceMm / l.throwRatio;
        // The floor value of 1 mm can leave the images smaller than the surface.
        l.imageWidthMm = std::max(l.imageWidthMm, 1e-6);
        l.imageHeightMm = l.imageWidthMm / a;
    } else if (s.projectorAutoLayoutEnabled) {
        l.throwDistanceMm = distance;
        l.imageWidthMm = distance / l.throwRatio;
        l.imageHeightMm = l.imageWidthMm / a;
        l.countX = coveringCount(l.surfaceWidthMm, l.imageWidthMm, o);
        l.countY = coveringCount(l.surfaceHeightMm, l.imageHeightMm, o);
        l.overlapX = spreadOverlap(l.countX, l.surfaceWidthMm, l.imageWidthMm, o);
        l.overlapY = spreadOverlap(l.countY, l.surfaceHeightMm, l.imageHeightMm, o);
    } else {
        l.throwDistanceMm = distance;
        l.imageWidthMm = distance / l.throwRatio;
        l.imageHeightMm = l.imageWidthMm / a;
    }

    const double stepX = l.imageWidthMm * (1.0 - l.overlapX);
    const double stepY = l.imageHeightMm * (1.0 - l.overlapY);
    const double spanX = l.imageWidthMm + stepX * (l.countX - 1);
    const double spanY = l.imageHeightMm + stepY * (l.countY - 1);
    const double x0 = (l.surfaceWidthMm - spanX) / 2.0;
    const double y0 = (l.surfaceHeightMm - spanY) / 2.0;
    l.projectorRects.reserve(l.countX * l.countY);
    for (int j = 0; j < l.countY; ++j) {
        for (int i = 0; i < l.countX; ++i)
            l.projectorRects.append(QRectF(x0 + i * stepX, y0 + j * stepY, l.imageWidthMm, l.imageHeightMm));
    }

    // Pixels per mm of one projector, times the surface: what lands on the wall.
    const QSize px = projectorImagePixels(s);
    const double w = std::round(l.surfaceWidthMm * px.width() / l.imageWidthMm);
    const double h = std::round(l.surfaceHeightMm * px.height() / l.imageHeightMm);
    l.effectiveResolution = QSize(int(std::clamp(w, 1.0, 1.0e6)), int(std::clamp(h, 1.0, 1.0e6)));
    return l;
}

QSize effectiveGuidePixelSize(const GuideSettings &s)
{
    const QSize onSurface = computeProjectorArray(s).effectiveResolution;
    const int w = std::min(guidePixelGridRule(onSurface.width()), 32768);
    const int h = std::min(guidePixelGridRule(onSurface.height()), 32768);
    // The guide's own width and height are those before the quarter turn.
    return s.rotate ? QSize(h, w) : QSize(w, h);
}

void applyProjectorLayout(GuideSettings *s)
{
    const ProjectorArrayLayout l = computeProjectorArray(*s);
    s->projectorCount = l.countX;
    s->projectorCountY = l.countY;
    s->projectorThrowDistance = l.throwDistanceMm;
    if (s->projectorRealPixel) {
        const QSize size = effectiveGuidePixelSize(*s);
        s->pixelWidth = size.width();
        s->pixelHeight = size.height();
    }
}

int autoColumnCount(const GuideSettings &s)
{
    const int rows = std::max(s.rows, 1);
    const double height = std::max(s.pixelHeight, 1);
    return std::clamp(int(std::lround(rows * double(std::max(s.pixelWidth, 1)) / height)), 1, 4096);
}

void applyGuideTabLoadStep(GuideSettings *s)
{
    if (s->projectorAutoPlacement) {
        s->projectorThrowDistance = automaticThrowDistance(*s, s->projectorThrowRatio);
        s->projectorAutoPlacement = false;
    }
    if (s->projectorRealPixel) {
        const QSize size = effectiveGuidePixelSize(*s);
        s->pixelWidth = size.width();
        s->pixelHeight = size.height();
    } else {
        applyPixelSizeCoupling(s);
    }
    if (s->autoColumns && !s->realSquare)
        s->columns = autoColumnCount(*s);
    resizeGuideColors(s);
}

QVector<QRectF> projectorImageFractions(const GuideSettings &settings)
{
    const ProjectorArrayLayout layout = computeProjectorArray(settings);
    const double width = std::max(1.0, layout.surfaceWidthMm);
    const double height = std::max(1.0, layout.surfaceHeightMm);
    QVector<QRectF> fractions;
    fractions.reserve(layout.projectorRects.size());
    for (const QRectF &mm : layout.projectorRects)
        fractions.append(QRectF(mm.x() / width, mm.y() / height, mm.width() / width, mm.height() / height));
    return fractions;
}
