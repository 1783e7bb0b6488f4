// Window capture cost per 1920x1080 frame and 4K H.264 movie decoding on the CPU path,
// beside the ffmpeg tool decoding the same clip to nothing in the same run.

#include "video/CaptureFrame.h"
#include "video/CaptureVideoWriter.h"
#include "video/MovieTexture.h"

#include <QElapsedTimer>
#include <QImage>
#include <QPainter>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

QImage windowPicture(int shift)
{
    QImage image(1920, 1080, QImage::Format_RGB32);
    image.fill(qRgb(40, 44, 52));
    QPainter painter(&image);
    for (int i = 0; i < 40; ++i)
        painter.fillRect((i * 97 + shift * 7) % 1800, (i * 53) % 1000, 120, 60, QColor::fromHsv(i * 9 % 360, 160, 220));
    return image;
}

void BM_CaptureTrim1080(benchmark::State &state)
{
    const QImage frame = windowPicture(0);
    for (auto _ : state)
        benchmark::DoNotOptimize(cropToEvenCaptureSize(trimDarkCaptureEdges(frame)));
}
BENCHMARK(BM_CaptureTrim1080)->Unit(benchmark::kMillisecond);

void BM_CaptureEncode1080(benchmark::State &state)
{
    QTemporaryDir dir;
    CaptureVideoWriter writer;
    QString error;
    if (!writer.open(dir.filePath(QStringLiteral("bench.mp4")), QSize(1920, 1080), &error)) {
        state.SkipWithError(error.toStdString().c_str());
        return;
    }
    QList<QImage> frames;
    for (int i = 0; i < 8; ++i)
        frames << windowPicture(i);
    int index = 0;
    for (auto _ : state)
        writer.writeFrame(frames[index++ % frames.size()], &error);
    writer.finish(&error);
}
BENCHMARK(BM_CaptureEncode1080)->Unit(benchmark::kMillisecond)->Iterations(60);

void BM_MovieDecode4K(benchmark::State &state)
{
    QTemporaryDir dir;
    const QString clip = dir.filePath(QStringLiteral("4k.mp4"));
    constexpr int kFrames = 60;
    QProcess make;
    make.start(QStringLiteral("ffmpeg"), {"-y", "-v", "error", "-f", "lavfi", "-i", "testsrc2=s=3840x2160:r=30",
                                          "-frames:v", QString::number(kFrames), "-c:v", "libx264", "-preset",
                                          "ultrafast", "-pix_fmt", "yuv420p", clip});
    if (!make.waitForFinished(300000) || make.exitCode() != 0) {
        state.SkipWithError("the ffmpeg tool could not make the 4K clip");
        return;
    }
    double ours = 0.0;
    for (auto _ : state) {
        MovieTexture movie(clip, false);
        QString error;
        movie.start(&error);
        QElapsedTimer timer;
        timer.start();
        for (int i = 0; i < kFrames; ++i)
            if (!movie.takeNextFrame(10000))
                break;
        ours = kFrames / (timer.nsecsElapsed() / 1e9);
    }
    QProcess tool;
    QElapsedTimer timer;
    timer.start();
    tool.start(QStringLiteral("ffmpeg"), {"-v", "error", "-benchmark", "-threads", "2", "-i", clip, "-f", "null", "-"});
    tool.waitForFinished(300000);
    state.counters["our_fps"] = ours;
    state.counters["ffmpeg_fps"] = kFrames / (timer.nsecsElapsed() / 1e9);
}
BENCHMARK(BM_MovieDecode4K)->Unit(benchmark::kMillisecond)->Iterations(2);

} // namespace

BENCHMARK_MAIN();
