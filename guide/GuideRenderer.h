#pragma once

#include "guide/GuideSettings.h"

#include <QFont>
#include <QImage>
#include <QString>

// Draws the guide: an image of exactly pixel width x pixel height (height x width when
// rotated), 32-bit ARGB, fully opaque. A pure function of the settings; safe to call
// from any thread. Returns a null image only when the image cannot be allocated.
QImage renderGuideImage(const GuideSettings &settings);
// The same on at most `threads` threads (<= 0: the machine's cores); every count gives
// the same pixels.
QImage renderGuideImage(const GuideSettings &settings, int threads);

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
