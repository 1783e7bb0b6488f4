#include "video/CaptureFrame.h"
#include "video/CaptureVideoWriter.h"
#include "video/ui/WindowCaptureRecorder.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPainter>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QWidget>

#include <gtest/gtest.h>

namespace {

// Four unequal quadrants: a mirrored, flipped or transposed video fails the colour checks.
QImage quadrantPicture(QSize size)
{
    QImage image(size, QImage::Format_RGB32);
    QPainter painter(&image);
    const int w = size.width() / 2, h = size.height() / 2;
    painter.fillRect(0, 0, w, h, QColor(230, 30, 30));
    painter.fillRect(w, 0, size.width() - w, h, QColor(30, 200, 40));
    painter.fillRect(0, h, w, size.height() - h, QColor(40, 40, 230));
    painter.fillRect(w, h, size.width() - w, size.height() - h, QColor(240, 240, 240));
    return image;
}

QJsonObject probe(const QString &file, const QStringList &extra = {})
{
    QProcess process;
    process.start(QStringLiteral("ffprobe"), QStringList{QStringLiteral("-v"), QStringLiteral("error"),
                                                         QStringLiteral("-print_format"), QStringLiteral("json")}
                                                 + extra + QStringList{file});
    if (!process.waitForFinished(30000))
        return {};
    return QJsonDocument::fromJson(process.readAllStandardOutput()).object();
}

QJsonObject videoStream(const QString &file)
{
    const QJsonObject info = probe(file, {QStringLiteral("-count_frames"), QStringLiteral("-show_streams"),
                                          QStringLiteral("-show_format")});
    return info.value(QStringLiteral("streams")).toArray().first().toObject();
}

// Frame `index` of a video decoded by the ffmpeg tool into RGB.
QImage decodedFrame(const QString &file, int index, QSize size)
{
    QProcess process;
    process.start(QStringLiteral("ffmpeg"),
                  {QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-i"), file, QStringLiteral("-vf"),
                   QStringLiteral("select=eq(n\\,%1)").arg(index), QStringLiteral("-frames:v"), QStringLiteral("1"),
                   QStringLiteral("-f"), QStringLiteral("rawvideo"), QStringLiteral("-pix_fmt"),
                   QStringLiteral("rgb24"), QStringLiteral("-")});
    if (!process.waitForFinished(30000))
        return {};
    const QByteArray bytes = process.readAllStandardOutput();
    if (bytes.size() != size.width() * size.height() * 3)
        return {};
    return QImage(reinterpret_cast<const uchar *>(bytes.constData()), size.width(), size.height(),
                  size.width() * 3, QImage::Format_RGB888)
        .copy();
}

void expectNear(QRgb actual, QColor expected, const char *where)
{
    SCOPED_TRACE(where);
    EXPECT_NEAR(qRed(actual), expected.red(), 24);
    EXPECT_NEAR(qGreen(actual), expected.green(), 24);
    EXPECT_NEAR(qBlue(actual), expected.blue(), 24);
}

class PictureWidget : public QWidget
{
public:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.drawImage(0, 0, quadrantPicture(size()));
    }
};

} // namespace

TEST(CaptureVideoWriter, WritesH264At30FpsWithIndexTimeStampsAndUprightPicture)
{
    QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("clip.mp4"));
    const QSize size(160, 90);
    CaptureVideoWriter writer;
    QString error;
    ASSERT_TRUE(writer.open(file, size, &error)) << error.toStdString();
    const QImage picture = quadrantPicture(size);
    for (int i = 0; i < 31; ++i)
        ASSERT_TRUE(writer.writeFrame(picture, &error)) << error.toStdString();
    ASSERT_TRUE(writer.finish(&error)) << error.toStdString();

    const QJsonObject stream = videoStream(file);
    EXPECT_EQ(stream.value(QStringLiteral("codec_name")).toString(), QStringLiteral("h264"));
    EXPECT_EQ(stream.value(QStringLiteral("pix_fmt")).toString(), QStringLiteral("yuv420p"));
    EXPECT_EQ(stream.value(QStringLiteral("r_frame_rate")).toString(), QStringLiteral("30/1"));
    EXPECT_EQ(stream.value(QStringLiteral("width")).toInt(), 160);
    EXPECT_EQ(stream.value(QStringLiteral("height")).toInt(), 90);
    EXPECT_EQ(stream.value(QStringLiteral("nb_read_frames")).toString(), QStringLiteral("31"));

    // Frame 30 starts exactly one second in.
    const QJsonObject frames = probe(file, {QStringLiteral("-show_entries"), QStringLiteral("frame=pts_time")});
    const QJsonArray list = frames.value(QStringLiteral("frames")).toArray();
    ASSERT_EQ(list.size(), 31);
    EXPECT_EQ(list.at(30).toObject().value(QStringLiteral("pts_time")).toString().toDouble(), 1.0);

    const QImage decoded = decodedFrame(file, 30, size);
    ASSERT_FALSE(decoded.isNull());
    expectNear(decoded.pixel(20, 20), QColor(230, 30, 30), "top left");
    expectNear(decoded.pixel(140, 20), QColor(30, 200, 40), "top right");
    expectNear(decoded.pixel(20, 70), QColor(40, 40, 230), "bottom left");
    expectNear(decoded.pixel(140, 70), QColor(240, 240, 240), "bottom right");
}

TEST(CaptureVideoWriter, RefusesBadSizesPathsAndFrames)
{
    QTemporaryDir dir;
    QString error;
    CaptureVideoWriter writer;
    EXPECT_FALSE(writer.open(dir.filePath(QStringLiteral("a.mp4")), QSize(161, 90), &error));
    EXPECT_EQ(error, QStringLiteral("Invalid capture frame size."));
    EXPECT_FALSE(writer.open(dir.filePath(QStringLiteral("a.mp4")), QSize(0, 0), &error));
    EXPECT_EQ(error, QStringLiteral("Invalid capture frame size."));
    EXPECT_FALSE(writer.open(dir.filePath(QStringLiteral("missing/folder/a.mp4")), QSize(64, 64), &error));
    // FFmpeg's own reason follows the step that failed.
    EXPECT_TRUE(error.startsWith(QStringLiteral("Capture file writer creation failed: "))) << error.toStdString();
    EXPECT_GT(error.size(), int(strlen("Capture file writer creation failed: ")));
    EXPECT_FALSE(writer.writeFrame(quadrantPicture(QSize(64, 64)), &error));
    EXPECT_EQ(error, QStringLiteral("Capture writer is not active."));

    ASSERT_TRUE(writer.open(dir.filePath(QStringLiteral("b.mp4")), QSize(64, 64), &error));
    EXPECT_FALSE(writer.writeFrame(quadrantPicture(QSize(66, 64)), &error));
    EXPECT_EQ(writer.framesWritten(), 0);
    EXPECT_FALSE(writer.writeFrame(QImage(), &error));
    EXPECT_EQ(error, QStringLiteral("Captured frame is empty."));
    EXPECT_TRUE(writer.writeFrame(quadrantPicture(QSize(64, 64)), &error));
    EXPECT_EQ(writer.framesWritten(), 1);
    EXPECT_TRUE(writer.finish(&error));
}

TEST(WindowCaptureRecorder, RecordsTheWindowForTwoSecondsAsTheProbeSees)
{
    PictureWidget widget;
    widget.resize(321, 241);
    widget.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&widget));
    QTest::qWait(100);

    QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("window.mp4"));
    WindowCaptureRecorder recorder;
    QSignalSpy failed(&recorder, &WindowCaptureRecorder::captureFailed);
    QString error;
    ASSERT_TRUE(recorder.start(&widget, file, &error)) << error.toStdString();
    EXPECT_TRUE(recorder.isRecording());
    EXPECT_EQ(recorder.frameSize(), QSize(320, 240));
    QTest::qWait(2000);
    ASSERT_TRUE(recorder.stop(&error)) << error.toStdString();
    EXPECT_FALSE(recorder.isRecording());
    EXPECT_EQ(failed.count(), 0);

    const QJsonObject stream = videoStream(file);
    EXPECT_EQ(stream.value(QStringLiteral("codec_name")).toString(), QStringLiteral("h264"));
    EXPECT_EQ(stream.value(QStringLiteral("r_frame_rate")).toString(), QStringLiteral("30/1"));
    EXPECT_EQ(stream.value(QStringLiteral("width")).toInt(), 320);
    EXPECT_EQ(stream.value(QStringLiteral("height")).toInt(), 240);
    const int frames = stream.value(QStringLiteral("nb_read_frames")).toString().toInt();
    // Two seconds of 33 ms ticks on a busy machine: most ticks make it, none are doubled.
    EXPECT_GE(frames, 20);
    EXPECT_LE(frames, 62);
    // 320 x 240 falls under the floor, so the encoder holds 8 Mbit/s.
    const double bitRate = stream.value(QStringLiteral("bit_rate")).toString().toDouble();
    EXPECT_GT(bitRate, 8'000'000 * 0.75);
    EXPECT_LT(bitRate, 8'000'000 * 1.25);

    const QImage decoded = decodedFrame(file, 0, QSize(320, 240));
    ASSERT_FALSE(decoded.isNull());
    expectNear(decoded.pixel(30, 30), QColor(230, 30, 30), "top left");
    expectNear(decoded.pixel(290, 30), QColor(30, 200, 40), "top right");
    expectNear(decoded.pixel(30, 210), QColor(40, 40, 230), "bottom left");
}

TEST(WindowCaptureRecorder, StartFailuresUseTheirTexts)
{
    WindowCaptureRecorder recorder;
    QString error;
    EXPECT_FALSE(recorder.start(nullptr, QStringLiteral("/tmp/x.mp4"), &error));
    EXPECT_EQ(error, QStringLiteral("Capture target is not available."));
    PictureWidget widget;
    widget.resize(64, 64);
    EXPECT_FALSE(recorder.start(&widget, QString(), &error));
    EXPECT_EQ(error, QStringLiteral("Capture file path is empty."));
    EXPECT_FALSE(recorder.stop(&error));
    EXPECT_EQ(error, QStringLiteral("Capture writer is not active."));
    EXPECT_FALSE(recorder.isRecording());
}

TEST(WindowCaptureRecorder, PaintedCursorMarksThePointerAndClick)
{
    PictureWidget widget;
    widget.resize(200, 200);
    widget.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&widget));
    QCursor::setPos(widget.mapToGlobal(QPoint(50, 150)));
    QTest::qWait(50);
    if (widget.mapFromGlobal(QCursor::pos()) != QPoint(50, 150))
        GTEST_SKIP() << "this display does not move the pointer";
    WindowCaptureRecorder recorder;
    recorder.setPaintedCursor(true);
    QTemporaryDir dir;
    QString error;
    ASSERT_TRUE(recorder.start(&widget, dir.filePath(QStringLiteral("c.mp4")), &error)) << error.toStdString();
    const QImage frame = recorder.grabFrame();
    recorder.stop(&error);
    // The arrow's tip sits at the pointer, its black outline just inside the white body.
    const QRgb body = frame.pixel(52, 160);
    EXPECT_GT(qRed(body), 200);
    EXPECT_GT(qGreen(body), 200);
    EXPECT_GT(qBlue(body), 200);
    // Beside the arrow the blue quadrant is untouched.
    expectNear(frame.pixel(30, 160), QColor(40, 40, 230), "beside the arrow");
    expectNear(frame.pixel(52, 140), QColor(40, 40, 230), "above the tip");
}
