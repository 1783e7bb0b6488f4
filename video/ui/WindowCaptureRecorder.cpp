#include "video/ui/WindowCaptureRecorder.h"

#include "video/CaptureFrame.h"

#include <QCursor>
#include <QGuiApplication>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>
#include <QScreen>
#include <QWidget>
#include <QWindow>

namespace {

constexpr int kTickMs = 33;
constexpr int kFinishTimeoutMs = 30000;

bool captureDebug()
{
    static const bool enabled = qEnvironmentVariableIsSet("VANTREO_CAPTURE_DEBUG");
    return enabled;
}

QString sizeText(QSize size)
{
    return QStringLiteral("%1x%2").arg(size.width()).arg(size.height());
}

} // namespace

WindowCaptureRecorder::WindowCaptureRecorder(QObject *parent)
    : QObject(parent)
{
    m_timer.setTimerType(Qt::PreciseTimer);
    m_timer.setInterval(kTickMs);
    connect(&m_timer, &QTimer::timeout, this, &WindowCaptureRecorder::writeNextFrame);
}

WindowCaptureRecorder::~WindowCaptureRecorder()
{
    if (isRecording()) {
        QString ignored;
        stop(&ignored);
    }
}

qint64 WindowCaptureRecorder::framesWritten() const
{
    return m_encoder ? m_encoder->framesWritten() : 0;
}

bool WindowCaptureRecorder::start(QWidget *target, const QString &outputPath, QString *error)
{
    if (isRecording()) {
        QString ignored;
        stop(&ignored);
    }
    if (!target) {
        *error = tr("Capture target is not available.");
        return false;
    }
    if (outputPath.isEmpty()) {
        *error = tr("Capture file path is empty.");
        return false;
    }
    m_target = target;
    m_outputPath = outputPath;
    const QImage first = grabFrame();
    if (first.isNull()) {
        *error = tr("Could not capture the selected target.");
        return false;
    }
    m_frameSize = first.size();
    auto encoder = std::make_unique<CaptureEncodeWorker>();
    const bool started = encoder->start(outputPath, m_frameSize, error);
    if (captureDebug())
        qInfo().noquote() << QStringLiteral("Capture start target=%1 firstFrame=%2 requestedOutput=%3 writer=%4 fill=%5")
                                 .arg(target->objectName().isEmpty() ? QString::fromLatin1(target->metaObject()->className())
                                                                     : target->objectName(),
                                      sizeText(m_frameSize), outputPath,
                                      started ? QStringLiteral("libx264") : *error)
                                 .arg(m_paintedCursor ? QStringLiteral("stretch") : QStringLiteral("keep-aspect"));
    if (!started)
        return false;
    m_encoder = std::move(encoder);
    m_encoder->submit(first);
    m_timer.start();
    return true;
}

bool WindowCaptureRecorder::stop(QString *error)
{
    m_timer.stop();
    if (!m_encoder) {
        *error = tr("Capture writer is not active.");
        return false;
    }
    QString reason;
    const bool ok = m_encoder->finish(kFinishTimeoutMs, &reason);
    m_encoder.reset();
    if (!ok)
        *error = tr("Failed to finalize capture video:") + QLatin1Char(' ') + reason;
    return ok;
}

void WindowCaptureRecorder::writeNextFrame()
{
    QString failure;
    if (!m_encoder) {
        failure = tr("Capture writer is not active.");
    } else if (const QString encodeError = m_encoder->error(); !encodeError.isEmpty()) {
        failure = encodeError;
    } else {
        const QImage frame = grabFrame();
        if (frame.isNull())
            failure = tr("Captured frame is empty.");
        else
            m_encoder->submit(fitToFrameSize(frame));
    }
    if (failure.isEmpty())
        return;
    QString ignored;
    if (m_encoder)
        stop(&ignored);
    m_timer.stop();
    emit captureFailed(tr("Capture stopped:") + QLatin1Char(' ') + failure);
}

QImage WindowCaptureRecorder::grabFrame() const
{
    QImage image = grabTarget();
    if (image.isNull())
        return image;
    image = image.convertToFormat(QImage::Format_RGB32);
    if (m_paintedCursor)
        paintCursor(image);
    return cropToEvenCaptureSize(trimDarkCaptureEdges(image));
}

QImage WindowCaptureRecorder::grabTarget() const
{
    if (!m_target)
        return {};
    QWidget *top = m_target->window();
    QPixmap pixmap;
    QString path = QStringLiteral("window");
    const QRect area(m_target->mapTo(top, QPoint(0, 0)), m_target->size());
    QScreen *screen = top->screen();
    if (screen && top->windowHandle() && top->isVisible() && area.isValid() && !area.isEmpty())
        pixmap = screen->grabWindow(top->winId(), area.x(), area.y(), area.width(), area.height());
    // The toolkit renders the widget itself when the screen cannot hand the window back.
    if (pixmap.isNull() || pixmap.size() != area.size() * pixmap.devicePixelRatio()) {
        path = QStringLiteral("widget");
        pixmap = m_target->grab();
    }
    QImage image = pixmap.toImage();
    if (captureDebug())
        qInfo().noquote() << QStringLiteral("Window grab window=%1 pixmap=%2 image=%3 via=%4")
                                 .arg(sizeText(area.size()), sizeText(pixmap.size()), sizeText(image.size()), path);
    return image;
}

void WindowCaptureRecorder::paintCursor(QImage &image) const
{
    if (!m_target)
        return;
    const qreal scale = image.width() / qreal(std::max(m_target->width(), 1));
    const QPointF at = QPointF(m_target->mapFromGlobal(QCursor::pos())) * scale;
    if (!QRectF(image.rect()).contains(at))
        return;
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(at);
    painter.scale(scale, scale);
    if (QGuiApplication::mouseButtons() != Qt::NoButton) {
        painter.setPen(QPen(QColor(255, 200, 0), 2.5));
        painter.setBrush(Qt::NoBrush);
        painter.drawEllipse(QPointF(0, 0), 14, 14);
    }
    QPainterPath arrow;
    arrow.moveTo(0, 0);
    arrow.lineTo(0, 17);
    arrow.lineTo(4.5, 13);
    arrow.lineTo(7.5, 19.5);
    arrow.lineTo(10, 18.5);
    arrow.lineTo(7, 12);
    arrow.lineTo(12, 12);
    arrow.closeSubpath();
    painter.setPen(QPen(Qt::black, 1.2));
    painter.setBrush(Qt::white);
    painter.drawPath(arrow);
}

QImage WindowCaptureRecorder::fitToFrameSize(const QImage &image) const
{
    if (image.size() == m_frameSize)
        return image;
    if (m_paintedCursor)
        return image.scaled(m_frameSize, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    // Keep the picture's shape: scale inside the frame and fill the rest with black.
    const QImage scaled = image.scaled(m_frameSize, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    QImage frame(m_frameSize, QImage::Format_RGB32);
    frame.fill(Qt::black);
    QPainter painter(&frame);
    painter.drawImage(QPoint(0, 0), scaled);
    return frame;
}
