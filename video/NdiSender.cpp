#include "video/NdiSender.h"

#include "video/NdiRuntime.h"

#include <QCoreApplication>

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("NdiSender", text);
}

} // namespace

NdiSender::NdiSender(NdiRuntime &runtime, const QString &name)
    : m_runtime(runtime)
    , m_name(name)
{
}

NdiSender::~NdiSender()
{
    if (m_instance)
        m_runtime.functions().sendDestroy(m_instance);
}

QString NdiSender::viewSenderName(bool projector, const QString &userName)
{
    if (!userName.trimmed().isEmpty())
        return userName.trimmed();
    return QStringLiteral("VantreoGuide %1 View").arg(projector ? QStringLiteral("Projector") : QStringLiteral("Camera"));
}

bool NdiSender::open(QString *error)
{
    if (m_instance)
        return true;
    QString text;
    if (m_runtime.senderReady(&text)) {
        const QByteArray name = m_name.toUtf8();
        const NdiSendCreate create{name.constData(), nullptr, false, false};
        m_instance = m_runtime.functions().sendCreate(&create);
        if (!m_instance)
            text = tr("Failed to create NDI projector view sender") + QLatin1Char(' ') + m_name;
    }
    if (error)
        *error = text;
    if (!text.isEmpty()) {
        if (!m_failed)
            qWarning("%s", qPrintable(text));
        m_failed = true;
        return false;
    }
    qInfo("%s %s", qPrintable(tr("NDI projector view sender opened as")), qPrintable(m_name));
    return true;
}

bool NdiSender::send(const QImage &image)
{
    if (!m_instance || image.isNull())
        return false;
    // ARGB32 is B, G, R, A in memory on the little-endian machines the runtime ships for.
    QImage bgra = image.convertToFormat(QImage::Format_ARGB32);
    NdiVideoFrameV2 frame{};
    frame.xres = bgra.width();
    frame.yres = bgra.height();
    frame.four_cc = kNdiFourCcBgra;
    frame.frame_rate_n = 30;
    frame.frame_rate_d = 1;
    frame.picture_aspect_ratio = float(bgra.width()) / float(bgra.height());
    frame.frame_format_type = kNdiFrameFormatProgressive;
    frame.timecode = kNdiSendTimecodeSynthesize;
    frame.p_data = bgra.bits();
    frame.line_stride_in_bytes = int(bgra.bytesPerLine());
    // The synchronous call: the runtime is done with the pixels when it returns.
    m_runtime.functions().sendVideo(m_instance, &frame);
    ++m_sent;
    return true;
}
