#pragma once

#include <QImage>
#include <QSize>
#include <QtGlobal>

// The rules every recorded frame follows, shared by the recorder and its encoder.

// Average bit rate of a capture: width x height x 15 bits per second, kept within 8..50 Mbit/s.
qint64 captureBitRate(int width, int height);

// Start of frame `index` in 100-nanosecond units at 30 frames per second; time stamps count
// written frames, not wall time.
qint64 captureSampleTime(qint64 index);
constexpr qint64 kCaptureSampleDuration = 333333;

// Cuts the dark columns at the right and dark rows at the bottom that a window grab picks up
// past the painted area. Images under 16 pixels either way are left as they are.
QImage trimDarkCaptureEdges(const QImage &image);

// Keeps the top-left part with even width and height (at least 2): H.264 with 4:2:0 chroma
// needs both even.
QSize evenCaptureSize(QSize size);
QImage cropToEvenCaptureSize(const QImage &image);
