#pragma once

#include "support/ndi/NdiStandinControl.h"

#include <QImage>
#include <QLibrary>

#include <cstring>
#include <string>
#include <vector>

// The stand-in's control functions, from the same file the binding loads.
struct Standin
{
    explicit Standin(const char *path)
        : library(QString::fromUtf8(path))
    {
        library.setLoadHints(QLibrary::PreventUnloadHint);
        reset = reinterpret_cast<StandinResetFn>(library.resolve("standin_reset"));
        setSources = reinterpret_cast<StandinSetSourcesFn>(library.resolve("standin_set_sources"));
        pushFrame = reinterpret_cast<StandinPushFrameFn>(library.resolve("standin_push_frame"));
        callCount = reinterpret_cast<StandinCallCountFn>(library.resolve("standin_call_count"));
        lastText = reinterpret_cast<StandinLastTextFn>(library.resolve("standin_last_text"));
        lastSent = reinterpret_cast<StandinLastSentFn>(library.resolve("standin_last_sent"));
        if (reset)
            reset();
    }
    bool ok() const { return reset && setSources && pushFrame && callCount && lastText && lastSent; }
    std::string text(const char *what) const
    {
        char buffer[512];
        lastText(what, buffer, sizeof buffer);
        return buffer;
    }
    void sources(const std::vector<const char *> &names, const std::vector<const char *> &urls)
    {
        setSources(names.data(), urls.data(), int(names.size()));
    }
    void push(const QImage &picture)
    {
        const QImage bgra = picture.convertToFormat(QImage::Format_ARGB32);
        pushFrame(bgra.width(), bgra.height(), bgra.constBits(), int(bgra.bytesPerLine()));
    }
    QImage sent() const
    {
        int w = 0, h = 0;
        const int bytes = lastSent(&w, &h, nullptr, 0);
        if (bytes <= 0)
            return {};
        QImage image(w, h, QImage::Format_ARGB32);
        std::vector<std::uint8_t> pixels(static_cast<size_t>(bytes));
        lastSent(&w, &h, pixels.data(), bytes);
        for (int y = 0; y < h; ++y)
            std::memcpy(image.scanLine(y), pixels.data() + size_t(y) * w * 4, size_t(w) * 4);
        return image;
    }

    QLibrary library;
    StandinResetFn reset = nullptr;
    StandinSetSourcesFn setSources = nullptr;
    StandinPushFrameFn pushFrame = nullptr;
    StandinCallCountFn callCount = nullptr;
    StandinLastTextFn lastText = nullptr;
    StandinLastSentFn lastSent = nullptr;
};

