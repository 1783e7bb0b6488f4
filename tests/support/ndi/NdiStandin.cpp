// A stand-in for the NDI runtime: the runtime's entry points over an in-memory network.
// Sources are set by the test, frames pushed by the test are handed out by capture calls,
// and every call and every sent frame is recorded. Variants leave entry points out or fail
// initialisation (see the STANDIN_* definitions in tests/CMakeLists.txt).

#include "support/ndi/NdiStandinControl.h"
#include "video/NdiTypes.h"

#include <algorithm>
#include <chrono>
#include <cstring>
#include <deque>
#include <map>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#define STANDIN_EXPORT extern "C" __attribute__((visibility("default")))

namespace {

struct Frame
{
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> pixels; // tightly packed BGRA
};

struct State
{
    std::mutex mutex;
    std::vector<std::string> names, urls;
    std::vector<NdiSource> sources;
    std::deque<Frame> pending;
    std::map<std::string, int> calls;
    std::map<std::string, std::string> texts;
    Frame sent;
    int outstanding = 0; // captured frames not yet freed
};

State &state()
{
    static State s;
    return s;
}

void record(const char *name)
{
    std::lock_guard lock(state().mutex);
    ++state().calls[name];
}

int finderToken, receiverToken;
#ifndef STANDIN_NO_SEND
int senderToken;
#endif

} // namespace

// ---- control -------------------------------------------------------------------------------

STANDIN_EXPORT void standin_reset(void)
{
    std::lock_guard lock(state().mutex);
    State &s = state();
    s.names.clear();
    s.urls.clear();
    s.sources.clear();
    s.pending.clear();
    s.calls.clear();
    s.texts.clear();
    s.sent = Frame();
    s.outstanding = 0;
}

STANDIN_EXPORT void standin_set_sources(const char *const *names, const char *const *urls, int count)
{
    std::lock_guard lock(state().mutex);
    State &s = state();
    s.names.assign(names, names + count);
    s.urls.assign(urls, urls + count);
    s.sources.clear();
    for (int i = 0; i < count; ++i)
        s.sources.push_back(NdiSource{s.names[size_t(i)].c_str(), s.urls[size_t(i)].c_str()});
}

STANDIN_EXPORT void standin_push_frame(int width, int height, const std::uint8_t *bgra, int stride)
{
    Frame frame;
    frame.width = width;
    frame.height = height;
    frame.pixels.resize(size_t(width) * height * 4);
    for (int y = 0; y < height; ++y)
        std::memcpy(frame.pixels.data() + size_t(y) * width * 4, bgra + size_t(y) * stride, size_t(width) * 4);
    std::lock_guard lock(state().mutex);
    state().pending.push_back(std::move(frame));
}

STANDIN_EXPORT int standin_call_count(const char *entryPoint)
{
    std::lock_guard lock(state().mutex);
    if (std::strcmp(entryPoint, "outstanding") == 0)
        return state().outstanding;
    const auto it = state().calls.find(entryPoint);
    return it == state().calls.end() ? 0 : it->second;
}

STANDIN_EXPORT int standin_last_text(const char *what, char *buffer, int size)
{
    std::lock_guard lock(state().mutex);
    const std::string text = state().texts[what];
    if (size > 0) {
        const size_t n = std::min(text.size(), size_t(size - 1));
        std::memcpy(buffer, text.data(), n);
        buffer[n] = '\0';
    }
    return int(text.size());
}

STANDIN_EXPORT int standin_last_sent(int *width, int *height, std::uint8_t *bgra, int bufferSize)
{
    std::lock_guard lock(state().mutex);
    const Frame &f = state().sent;
    *width = f.width;
    *height = f.height;
    const int bytes = int(f.pixels.size());
    if (bgra && bufferSize >= bytes)
        std::memcpy(bgra, f.pixels.data(), size_t(bytes));
    return bytes;
}

// ---- the runtime's entry points --------------------------------------------------------------

STANDIN_EXPORT bool NDIlib_initialize(void)
{
    record("NDIlib_initialize");
#ifdef STANDIN_INIT_FAILS
    return false;
#else
    return true;
#endif
}

STANDIN_EXPORT NdiFindInstance NDIlib_find_create_v2(const NdiFindCreate *)
{
    record("NDIlib_find_create_v2");
    return &finderToken;
}

STANDIN_EXPORT void NDIlib_find_destroy(NdiFindInstance)
{
    record("NDIlib_find_destroy");
}

STANDIN_EXPORT bool NDIlib_find_wait_for_sources(NdiFindInstance, std::uint32_t timeoutMs)
{
    record("NDIlib_find_wait_for_sources");
    std::this_thread::sleep_for(std::chrono::milliseconds(std::min<std::uint32_t>(timeoutMs, 10)));
    return true;
}

STANDIN_EXPORT const NdiSource *NDIlib_find_get_current_sources(NdiFindInstance, std::uint32_t *count)
{
    std::lock_guard lock(state().mutex);
    ++state().calls["NDIlib_find_get_current_sources"];
    *count = std::uint32_t(state().sources.size());
    return state().sources.empty() ? nullptr : state().sources.data();
}

STANDIN_EXPORT NdiRecvInstance NDIlib_recv_create_v3(const NdiRecvCreateV3 *create)
{
    std::lock_guard lock(state().mutex);
    ++state().calls["NDIlib_recv_create_v3"];
    state().texts["create_source"] = create->source_to_connect_to.p_ndi_name ? create->source_to_connect_to.p_ndi_name : "";
    return &receiverToken;
}

STANDIN_EXPORT void NDIlib_recv_connect(NdiRecvInstance, const NdiSource *source)
{
    std::lock_guard lock(state().mutex);
    ++state().calls["NDIlib_recv_connect"];
    state().texts["connect_url"] = source && source->p_url_address ? source->p_url_address : "";
}

STANDIN_EXPORT void NDIlib_recv_destroy(NdiRecvInstance)
{
    record("NDIlib_recv_destroy");
}

#ifndef STANDIN_NO_CAPTURE
STANDIN_EXPORT NdiFrameType NDIlib_recv_capture_v2(NdiRecvInstance, NdiVideoFrameV2 *video, void *, void *,
                                                   std::uint32_t timeoutMs)
{
    {
        std::lock_guard lock(state().mutex);
        State &s = state();
        ++s.calls["NDIlib_recv_capture_v2"];
        if (video && !s.pending.empty()) {
            // The frame is handed out on the heap, as the runtime does, until it is freed.
            auto *frame = new Frame(std::move(s.pending.front()));
            s.pending.pop_front();
            *video = NdiVideoFrameV2{};
            video->xres = frame->width;
            video->yres = frame->height;
            video->four_cc = kNdiFourCcBgra;
            video->frame_rate_n = 30;
            video->frame_rate_d = 1;
            video->frame_format_type = kNdiFrameFormatProgressive;
            video->p_data = frame->pixels.data();
            video->line_stride_in_bytes = frame->width * 4;
            video->p_metadata = reinterpret_cast<const char *>(frame);
            ++s.outstanding;
            return NdiFrameTypeVideo;
        }
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(std::min<std::uint32_t>(timeoutMs, 5)));
    return NdiFrameTypeNone;
}
#endif

STANDIN_EXPORT void NDIlib_recv_free_video_v2(NdiRecvInstance, const NdiVideoFrameV2 *video)
{
    std::lock_guard lock(state().mutex);
    ++state().calls["NDIlib_recv_free_video_v2"];
    if (video && video->p_metadata) {
        delete reinterpret_cast<const Frame *>(video->p_metadata);
        --state().outstanding;
    }
}

#ifndef STANDIN_NO_SEND
STANDIN_EXPORT NdiSendInstance NDIlib_send_create(const NdiSendCreate *create)
{
    std::lock_guard lock(state().mutex);
    ++state().calls["NDIlib_send_create"];
    state().texts["sender_name"] = create && create->p_ndi_name ? create->p_ndi_name : "";
    return &senderToken;
}

STANDIN_EXPORT void NDIlib_send_destroy(NdiSendInstance)
{
    record("NDIlib_send_destroy");
}

STANDIN_EXPORT void NDIlib_send_send_video_v2(NdiSendInstance, const NdiVideoFrameV2 *video)
{
    std::lock_guard lock(state().mutex);
    ++state().calls["NDIlib_send_send_video_v2"];
    if (!video || !video->p_data || video->four_cc != kNdiFourCcBgra)
        return;
    Frame &f = state().sent;
    f.width = video->xres;
    f.height = video->yres;
    f.pixels.resize(size_t(f.width) * f.height * 4);
    for (int y = 0; y < f.height; ++y)
        std::memcpy(f.pixels.data() + size_t(y) * f.width * 4, video->p_data + size_t(y) * video->line_stride_in_bytes,
                    size_t(f.width) * 4);
}

STANDIN_EXPORT void NDIlib_send_send_video_async_v2(NdiSendInstance, const NdiVideoFrameV2 *)
{
    record("NDIlib_send_send_video_async_v2");
}
#endif
