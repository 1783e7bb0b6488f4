#pragma once

#include "scene/GuideObject.h"

#include <QColor>
#include <QElapsedTimer>
#include <QImage>
#include <QPainter>
#include <QProcess>
#include <QStringList>
#include <QTest>

#include <functional>

// Runs the ffmpeg tool; true when it made its output.
inline bool runFfmpeg(const QStringList &arguments)
{
    QProcess process;
    process.start(QStringLiteral("ffmpeg"), QStringList{"-y", "-v", "error"} + arguments);
    return process.waitForFinished(60000) && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
}

// A picture no flip or turn leaves the same: red top-left, blue top-right, green bottom half.
inline QImage quadrantPicture(int width, int height)
{
    QImage image(width, height, QImage::Format_ARGB32);
    QPainter painter(&image);
    painter.fillRect(0, 0, width / 2, height / 2, QColor(255, 0, 0));
    painter.fillRect(width / 2, 0, width - width / 2, height / 2, QColor(0, 0, 255));
    painter.fillRect(0, height / 2, width, height - height / 2, QColor(0, 255, 0));
    painter.end();
    return image;
}

// The same picture as a movie clip made by the ffmpeg tool (H.264, 30 frames).
inline bool makeQuadrantClip(const QString &path, int width = 128, int height = 96)
{
    const QString filter = QStringLiteral(
        "drawbox=x=0:y=0:w=%1:h=%2:color=red:t=fill,drawbox=x=%1:y=0:w=%1:h=%2:color=blue:t=fill,"
        "drawbox=x=0:y=%2:w=%3:h=%2:color=lime:t=fill").arg(width / 2).arg(height / 2).arg(width);
    return runFfmpeg({"-f", "lavfi", "-i", QStringLiteral("color=c=black:s=%1x%2:r=30").arg(width).arg(height),
                      "-frames:v", "30", "-vf", filter, "-c:v", "libx264", "-pix_fmt", "yuv444p", path});
}

enum class Hue { Red, Green, Blue, Other };

inline Hue hueOf(QRgb c)
{
    const int r = qRed(c), g = qGreen(c), b = qBlue(c);
    if (r > 150 && g < 90 && b < 90)
        return Hue::Red;
    if (g > 150 && r < 90 && b < 90)
        return Hue::Green;
    if (b > 150 && r < 90 && g < 90)
        return Hue::Blue;
    return Hue::Other;
}

// Polls `done` while the event loop runs, up to `timeoutMs`.
inline bool waitUntil(const std::function<bool()> &done, int timeoutMs = 10000)
{
    QElapsedTimer timer;
    timer.start();
    while (!done()) {
        if (timer.elapsed() > timeoutMs)
            return false;
        QTest::qWait(10);
    }
    return true;
}

// Two images agree within `tolerance` per channel on every `step`-th pixel.
inline int differingPixels(const QImage &a, const QImage &b, int tolerance, int step = 4)
{
    if (a.size() != b.size())
        return a.width() * a.height();
    int differing = 0;
    for (int y = 0; y < a.height(); y += step) {
        for (int x = 0; x < a.width(); x += step) {
            const QRgb p = a.pixel(x, y), q = b.pixel(x, y);
            if (std::abs(qRed(p) - qRed(q)) > tolerance || std::abs(qGreen(p) - qGreen(q)) > tolerance
                || std::abs(qBlue(p) - qBlue(q)) > tolerance)
                ++differing;
        }
    }
    return differing;
}
