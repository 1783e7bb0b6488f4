#include "video/NdiReceiver.h"

#include "video/NdiRuntime.h"
#include "video/VideoPlaceholder.h"

#include <QCoreApplication>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("NdiReceiver", text);
}

constexpr int kMaxSide = 16384;
constexpr std::uint32_t kCaptureWaitMs = 100;
constexpr std::uint32_t kFindWaitMs = 200;
// Captures between two looks at the source list for a changed URL.
constexpr int kCapturesPerSourceCheck = 10;

} // namespace

QString ndiSourceLabel(const char *name, const char *url)
{
    const QString n = name && *name ? QString::fromUtf8(name) : QStringLiteral("(name)");
    const QString u = url && *url ? QString::fromUtf8(url) : QStringLiteral("(url)");
    return n + QLatin1Char(' ') + u;
}

struct NdiReceiver::Shared
{
    mutable std::mutex mutex;
    std::condition_variable wake;
    std::atomic_bool stop{false};
    SceneTextureFrame frame;     // newest captured
    quint64 handedSerial = 0;    // the serial the renderer has
    QString error;
    QString url;
    qint64 captured = 0;
};

namespace {

void setError(NdiReceiver::Shared &shared, const QString &text)
{
    bool changed = false;
    {
        std::lock_guard lock(shared.mutex);
        changed = shared.error != text;
        shared.error = text;
    }
    if (changed && !text.isEmpty())
        qWarning("%s", qPrintable(text));
}

// Sleeps up to `ms` unless a stop is requested.
void pause(NdiReceiver::Shared &shared, int ms)
{
    std::unique_lock lock(shared.mutex);
    shared.wake.wait_for(lock, std::chrono::milliseconds(ms), [&] { return shared.stop.load(); });
}

const NdiSource *findSource(const NdiRuntime::Functions &f, NdiFindInstance finder, const QString &wanted)
{
    std::uint32_t count = 0;
    const NdiSource *sources = f.findGetCurrentSources(finder, &count);
    if (!sources)
        return nullptr;
    // The list comes from the network: look at a bounded number of entries.
    count = std::min<std::uint32_t>(count, 4096);
    for (std::uint32_t i = 0; i < count; ++i) {
        const QString name = QString::fromUtf8(sources[i].p_ndi_name ? sources[i].p_ndi_name : "");
        const QString url = QString::fromUtf8(sources[i].p_url_address ? sources[i].p_url_address : "");
        if (name == wanted || (!url.isEmpty() && url == wanted))
            return &sources[i];
    }
    return nullptr;
}

bool copyFrame(const NdiVideoFrameV2 &video, SceneTextureFrame *out)
{
    if (video.xres <= 0 || video.yres <= 0 || video.xres > kMaxSide || video.yres > kMaxSide || !video.p_data
        || video.line_stride_in_bytes < video.xres * 4
        || (video.four_cc != kNdiFourCcBgra && video.four_cc != kNdiFourCcBgrx))
        return false;
    const QImage::Format format = video.four_cc == kNdiFourCcBgra ? QImage::Format_ARGB32 : QImage::Format_RGB32;
    // The wrapper borrows the runtime's buffer; copy() owns its pixels before the frame is freed.
    const QImage borrowed(video.p_data, video.xres, video.yres, video.line_stride_in_bytes, format);
    out->format = SceneTextureFrame::Rgba;
    out->image = borrowed.copy();
    if (out->image.isNull())
        return false;
    out->width = video.xres;
    out->height = video.yres;
    out->serial = nextSceneTextureSerial();
    return true;
}

void receive(NdiReceiver::Shared &shared, const NdiRuntime::Functions &f, NdiFindInstance finder,
             const QString &wanted)
{
    NdiRecvInstance receiver = nullptr;
    QString connectedUrl;
    int sinceCheck = 0;
    while (!shared.stop.load()) {
        if (!receiver) {
            f.findWaitForSources(finder, kFindWaitMs);
            const NdiSource *source = findSource(f, finder, wanted);
            if (!source) {
                // A runtime that answers at once must not turn this into a busy loop.
                pause(shared, 50);
                continue;
            }
            NdiRecvCreateV3 create{*source, NdiRecvColorFormatBgrxBgra, NdiRecvBandwidthHighest, false, "VantreoGuide"};
            receiver = f.recvCreate(&create);
            if (!receiver) {
                setError(shared, tr("Failed to create NDI receiver for source") + QLatin1Char(' ') + wanted);
                pause(shared, 1000);
                continue;
            }
            f.recvConnect(receiver, source);
            connectedUrl = QString::fromUtf8(source->p_url_address ? source->p_url_address : "");
            qInfo("%s %s", qPrintable(tr("NDI receiver connected to source")),
                  qPrintable(ndiSourceLabel(source->p_ndi_name, source->p_url_address)));
            setError(shared, {});
            std::lock_guard lock(shared.mutex);
            shared.url = connectedUrl;
            continue;
        }
        if (++sinceCheck >= kCapturesPerSourceCheck) {
            sinceCheck = 0;
            const NdiSource *source = findSource(f, finder, wanted);
            const QString url = source && source->p_url_address ? QString::fromUtf8(source->p_url_address) : QString();
            if (!url.isEmpty() && url != connectedUrl) {
                f.recvConnect(receiver, source);
                connectedUrl = url;
                qInfo("%s %s", qPrintable(tr("NDI receiver reconnected with source URL")), qPrintable(url));
                std::lock_guard lock(shared.mutex);
                shared.url = url;
            }
        }
        NdiVideoFrameV2 video{};
        const NdiFrameType type = f.recvCapture(receiver, &video, nullptr, nullptr, kCaptureWaitMs);
        if (type != NdiFrameTypeVideo) {
            if (type == NdiFrameTypeError)
                pause(shared, int(kCaptureWaitMs));
            continue;
        }
        SceneTextureFrame frame;
        const bool ok = copyFrame(video, &frame);
        f.recvFreeVideo(receiver, &video);
        if (!ok) {
            setError(shared, tr("Could not upload NDI frame for source") + QLatin1Char(' ') + wanted);
            continue;
        }
        std::lock_guard lock(shared.mutex);
        shared.frame = std::move(frame);
        shared.error.clear();
        ++shared.captured;
    }
    if (receiver)
        f.recvDestroy(receiver);
}

void runReceiver(std::shared_ptr<NdiReceiver::Shared> shared, NdiRuntime *runtime, QString wanted)
{
    QString error;
    if (!runtime->receiverReady(&error)) {
        setError(*shared, error);
        return;
    }
    const NdiRuntime::Functions &f = runtime->functions();
    NdiFindCreate create{true, nullptr, nullptr};
    NdiFindInstance finder = f.findCreate(&create);
    if (!finder) {
        setError(*shared, tr("Failed to create NDI source finder."));
        return;
    }
    receive(*shared, f, finder, wanted);
    f.findDestroy(finder);
}

} // namespace

NdiReceiver::NdiReceiver(NdiRuntime &runtime, const QString &sourceName)
    : m_runtime(runtime)
    , m_name(sourceName)
    , m_shared(std::make_shared<Shared>())
{
    const QImage image = videoPlaceholderImage(ndiPlaceholderTitle(), ndiPlaceholderDetail());
    m_placeholder.format = SceneTextureFrame::Rgba;
    m_placeholder.image = image;
    m_placeholder.width = image.width();
    m_placeholder.height = image.height();
    m_placeholder.serial = nextSceneTextureSerial();
}

NdiReceiver::~NdiReceiver()
{
    stop();
}

void NdiReceiver::start()
{
    stop();
    m_shared = std::make_shared<Shared>();
    try {
        m_thread = std::thread(runReceiver, m_shared, &m_runtime, m_name);
    } catch (const std::system_error &) {
        setError(*m_shared, tr("Failed to create NDI receiver for source") + QLatin1Char(' ') + m_name);
    }
}

void NdiReceiver::stop()
{
    m_shared->stop.store(true);
    m_shared->wake.notify_all();
    if (m_thread.joinable())
        m_thread.join();
}

SceneTextureFrame NdiReceiver::currentFrame()
{
    std::lock_guard lock(m_shared->mutex);
    if (!m_shared->frame.isValid() || !m_shared->error.isEmpty())
        return m_placeholder;
    m_shared->handedSerial = m_shared->frame.serial;
    return m_shared->frame;
}

QString NdiReceiver::errorText() const
{
    std::lock_guard lock(m_shared->mutex);
    return m_shared->error;
}

QString NdiReceiver::connectedUrl() const
{
    std::lock_guard lock(m_shared->mutex);
    return m_shared->url;
}

qint64 NdiReceiver::framesCaptured() const
{
    std::lock_guard lock(m_shared->mutex);
    return m_shared->captured;
}

bool NdiReceiver::hasNewFrame() const
{
    std::lock_guard lock(m_shared->mutex);
    return m_shared->frame.isValid() && m_shared->frame.serial != m_shared->handedSerial;
}
