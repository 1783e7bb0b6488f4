#pragma once

#include "scene/gl/SceneTextureSource.h"
#include "video/MovieTexture.h"

#include <memory>

// A movie as the renderer sees it: the newest due frame (BGRA through the CPU, NV12 planes
// for the two-plane shader), the last one again while no new frame is due, and the
// "NO MOVIE" placeholder once decoding has failed.
class MovieTextureSource : public SceneTextureSource
{
public:
    explicit MovieTextureSource(std::shared_ptr<MovieTexture> movie);

    SceneTextureFrame currentFrame() override;
    const std::shared_ptr<MovieTexture> &movie() const { return m_movie; }
    // Frames handed to the renderer so far.
    qint64 framesReceived() const { return m_received; }

    // The NV12 planes of a decoded frame in the renderer's packing (luma rows of `width`,
    // chroma rows of two bytes per chroma sample); false when the buffer is too short.
    static bool nv12Frame(const MovieFrame &frame, SceneTextureFrame *out);

private:
    std::shared_ptr<MovieTexture> m_movie;
    SceneTextureFrame m_last;
    SceneTextureFrame m_placeholder;
    qint64 m_received = 0;
};
