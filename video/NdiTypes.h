#pragma once

#include <cstdint>

// The C interface of the NDI runtime, declared here because the program binds to it at run
// time and builds without its SDK. Layouts follow the runtime's published interface.
extern "C" {

typedef void *NdiFindInstance;
typedef void *NdiRecvInstance;
typedef void *NdiSendInstance;

struct NdiSource
{
    const char *p_ndi_name;
    const char *p_url_address;
};

struct NdiFindCreate
{
    bool show_local_sources;
    const char *p_groups;
    const char *p_extra_ips;
};

enum NdiRecvColorFormat : int { NdiRecvColorFormatBgrxBgra = 0 };
enum NdiRecvBandwidth : int { NdiRecvBandwidthHighest = 100 };

struct NdiRecvCreateV3
{
    NdiSource source_to_connect_to;
    NdiRecvColorFormat color_format;
    NdiRecvBandwidth bandwidth;
    bool allow_video_fields;
    const char *p_ndi_recv_name;
};

enum NdiFrameType : int {
    NdiFrameTypeNone = 0,
    NdiFrameTypeVideo = 1,
    NdiFrameTypeAudio = 2,
    NdiFrameTypeMetadata = 3,
    NdiFrameTypeError = 4,
    NdiFrameTypeStatusChange = 100,
};

constexpr std::uint32_t ndiFourCc(char a, char b, char c, char d)
{
    return std::uint32_t(std::uint8_t(a)) | std::uint32_t(std::uint8_t(b)) << 8 | std::uint32_t(std::uint8_t(c)) << 16
        | std::uint32_t(std::uint8_t(d)) << 24;
}
constexpr std::uint32_t kNdiFourCcBgra = ndiFourCc('B', 'G', 'R', 'A');
constexpr std::uint32_t kNdiFourCcBgrx = ndiFourCc('B', 'G', 'R', 'X');
constexpr int kNdiFrameFormatProgressive = 1;
constexpr std::int64_t kNdiSendTimecodeSynthesize = INT64_MAX;

struct NdiVideoFrameV2
{
    int xres;
    int yres;
    std::uint32_t four_cc;
    int frame_rate_n;
    int frame_rate_d;
    float picture_aspect_ratio;
    int frame_format_type;
    std::int64_t timecode;
    std::uint8_t *p_data;
    int line_stride_in_bytes;
    const char *p_metadata;
    std::int64_t timestamp;
};

struct NdiSendCreate
{
    const char *p_ndi_name;
    const char *p_groups;
    bool clock_video;
    bool clock_audio;
};

typedef bool (*NdiInitializeFn)(void);
typedef NdiFindInstance (*NdiFindCreateV2Fn)(const NdiFindCreate *);
typedef void (*NdiFindDestroyFn)(NdiFindInstance);
typedef bool (*NdiFindWaitForSourcesFn)(NdiFindInstance, std::uint32_t timeoutMs);
typedef const NdiSource *(*NdiFindGetCurrentSourcesFn)(NdiFindInstance, std::uint32_t *count);
typedef NdiRecvInstance (*NdiRecvCreateV3Fn)(const NdiRecvCreateV3 *);
typedef void (*NdiRecvConnectFn)(NdiRecvInstance, const NdiSource *);
typedef void (*NdiRecvDestroyFn)(NdiRecvInstance);
typedef NdiFrameType (*NdiRecvCaptureV2Fn)(NdiRecvInstance, NdiVideoFrameV2 *video, void *audio, void *metadata,
                                           std::uint32_t timeoutMs);
typedef void (*NdiRecvFreeVideoV2Fn)(NdiRecvInstance, const NdiVideoFrameV2 *);
typedef NdiSendInstance (*NdiSendCreateFn)(const NdiSendCreate *);
typedef void (*NdiSendDestroyFn)(NdiSendInstance);
typedef void (*NdiSendVideoV2Fn)(NdiSendInstance, const NdiVideoFrameV2 *);

} // extern "C"
