#pragma once

#include "video/CaptureEncodeWorker.h"

#include <QImage>
#include <QObject>
#include <QPointer>
#include <QSize>
#include <QTimer>

#include <memory>

class QWidget;

// Records a widget (the 3D preview or the whole main window) into an H.264 MP4 at 30 fps.
// Frames are grabbed on a 33 ms timer on the interface thread and encoded on a worker.
class WindowCaptureRecorder : public QObject
{
    Q_OBJECT

public:
    explicit WindowCaptureRecorder(QObject *parent = nullptr);
    ~WindowCaptureRecorder() override;

    bool start(QWidget *target, const QString &outputPath, QString *error);
    bool stop(QString *error);
    bool isRecording() const { return m_encoder != nullptr; }

    // The preview target paints its own cursor arrow, with a circle while a button is held.
    void setPaintedCursor(bool painted) { m_paintedCursor = painted; }
    bool paintedCursor() const { return m_paintedCursor; }
    QSize frameSize() const { return m_frameSize; }
    qint64 framesWritten() const;

    // One grab of the target as it will be recorded (trimmed, even-sized, cursor painted).
    QImage grabFrame() const;

signals:
    // A write error ended the recording; the text starts "Capture stopped:".
    void captureFailed(const QString &message);

private:
    void writeNextFrame();
    QImage grabTarget() const;
    void paintCursor(QImage &image) const;
    QImage fitToFrameSize(const QImage &image) const;

    QPointer<QWidget> m_target;
    QString m_outputPath;
    QSize m_frameSize;
    std::unique_ptr<CaptureEncodeWorker> m_encoder;
    bool m_paintedCursor = false;
    QTimer m_timer;
};
