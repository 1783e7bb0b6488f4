#pragma once

#include "guide/GuideSettings.h"

#include <QFont>
#include <QImage>
#include <QRect>
#include <QString>
#include <QVector>

#include <memory>

// Draws the guide: an image of exactly pixel width x pixel height (height x width when
// rotated), 32-bit ARGB, fully opaque. A pure function of the settings; safe to call
// from any thread. Returns a null image only when the image cannot be allocated.
QImage renderGuideImage(const GuideSettings &settings);
// The same on at most `threads` threads (<= 0: the machine's cores); every count gives
// the same pixels.
QImage renderGuideImage(const GuideSettings &settings, int threads);

// The size renderGuideImage() gives: pixel width x pixel height within the renderer's
// limits, turned when rotated.
QSize renderedGuideSize(const GuideSettings &settings);

// The guide painted band by band into rows the caller provides, so that it can be written
// out without the whole image ever existing. A band holds exactly the pixels the same rows
// of renderGuideImage() hold. Only for guides paintsInBands() accepts: a rotated guide is
// turned as a whole.
class GuideBandPainter
{
public:
    static bool paintsInBands(const GuideSettings &settings) { return !settings.rotate; }

    explicit GuideBandPainter(const GuideSettings &settings);
    ~GuideBandPainter();
    GuideBandPainter(const GuideBandPainter &) = delete;
    GuideBandPainter &operator=(const GuideBandPainter &) = delete;

    // Rows of the image, top to bottom, covering it.
    const QVector<QRect> &bands() const { return m_bands; }
    // Paints band `index` into `rows`: band width x band height, ARGB32 premultiplied, its
    // first row the band's first row, whatever it held before. Every pixel is written and
    // ends opaque. Safe to call for different bands on several threads at once.
    void paintBand(int index, QImage &rows) const;

    struct Prepared; // what every band shares, prepared once

private:
    std::unique_ptr<Prepared> d;
    QVector<QRect> m_bands;
};

// The face the guide texts are drawn in, at a pixel size; other drawings that must look
// the same on every machine (the canvas) use it too.
QFont guideTextFont(double pixelSize);

// Cell label of zero-based row and column in the given "number_text_format".
QString guideCellLabel(int numberTextFormat, int row, int column);
// Row names: bijective base 26 ("A", "Z", "AA"), and the 56 Korean syllables with a
// cycle number from row 56 on ("가", "후", "가2").
QString englishRowName(int row);
QString koreanRowName(int row);

// Whether the rendered cells are square (|cell width - cell height| <= 0.001).
bool guideCellsAreSquare(const GuideSettings &settings);
// "Square" / "Not square", in Korean under a Korean system locale.
QString guideSquareStatusText(bool square);

// "%1x%2px", "(%1x%2mm)" and "%1x%2px (%3x%4mm)".
QString guideResolutionText(const GuideSettings &settings);
QString guidePhysicalSizeText(const GuideSettings &settings);
QString guideSizeCaption(const GuideSettings &settings);
