#pragma once

#include "guide/GuideSettings.h"

#include <QRectF>
#include <QSize>
#include <QVector>

// The arithmetic that ties a guide's projector array to its physical size. Every length
// is in millimetres of the surface as it finally hangs, i.e. with width and height
// exchanged when the guide is rotated.

// Lowers a value that is not a multiple of 4 to the multiple below, never below 4.
int guidePixelGridRule(int value);

double clampProjectorOverlap(double overlap);
// Projector image aspect (width / height), portrait under vertical projection.
double projectorAspect(const GuideSettings &settings);
// How many projector images a row of count projectors spans with the given overlap.
double projectorEffectiveCount(int count, double overlap);
// Surface width and height in mm (exchanged when rotated), each at least 1.
double layoutSurfaceWidth(const GuideSettings &settings);
double layoutSurfaceHeight(const GuideSettings &settings);

// Throw distance (mm) for which the array covers the surface at throw ratio throwRatio.
double automaticThrowDistance(const GuideSettings &settings, double throwRatio);

// The guide image size: (pixel width, pixel height), exchanged when rotated.
QSize guideImageSize(const GuideSettings &settings);

// Pixel size coupling done when the guide tab takes settings: the multiple-of-4 rule on
// both sides and, with fixed ratio, the width following the height and physical aspect.
void applyPixelSizeCoupling(GuideSettings *settings);

// Projector resolution check: the projector's vertical pixel count (its width under
// vertical projection), brought to the grid rule and clamped to [4, 32768].
int projectorVerticalPixels(const GuideSettings &settings);
bool projectorResolutionDiffers(const GuideSettings &settings);

// One projector's pixel size as it lands on the surface (exchanged under vertical).
QSize projectorImagePixels(const GuideSettings &settings);

// The array as it is drawn and reported.
struct ProjectorArrayLayout {
    int countX = 1;
    int countY = 1;
    double overlapX = 0.0;          // actual overlap between neighbours across, fraction
    double overlapY = 0.0;          // and down
    double imageWidthMm = 0.0;      // one projector's image on the surface
    double imageHeightMm = 0.0;
    double surfaceWidthMm = 1.0;
    double surfaceHeightMm = 1.0;
    double throwDistanceMm = 0.0;   // the distance the array is laid out for
    double throwRatio = 1.0;
    QSize effectiveResolution;      // pixels the array puts on the surface after overlap
    QVector<QRectF> projectorRects; // row by row, mm, surface origin top-left
};

// Auto Layout on, "Layout Basis" throw ratio: counts as set, throw distance from the
// throw ratio so that the array just covers the surface.
// Auto Layout on, basis throw distance: image size from distance / ratio, counts the
// fewest that cover the surface with at least the minimum overlap, overlap spread evenly.
// Auto Layout off: counts, overlap and distance / ratio as set, array centred.
ProjectorArrayLayout computeProjectorArray(const GuideSettings &settings);

// Each projector's part of the guide image, row by row as in computeProjectorArray(), as
// fractions of the image (origin top-left): what a projector of the array shows.
QVector<QRectF> projectorImageFractions(const GuideSettings &settings);

// "Calculate Effective Resolution": the guide pixel size (unrotated guide, grid rule
// applied) that the array delivers on the surface.
QSize effectiveGuidePixelSize(const GuideSettings &settings);

// "Apply Projector Layout": writes the computed counts and throw distance back, and the
// effective pixel size when "Calculate Effective Resolution" is on.
void applyProjectorLayout(GuideSettings *settings);

// Columns that follow from rows and the aspect ratio (auto columns).
int autoColumnCount(const GuideSettings &settings);

// Everything the guide tab applies when it takes settings (loading a guide or a style):
// one-shot automatic placement, pixel size coupling or the effective resolution, auto
// columns, and the colour list brought to the grid.
void applyGuideTabLoadStep(GuideSettings *settings);
