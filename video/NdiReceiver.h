#pragma once

#include "scene/gl/SceneTextureSource.h"

#include <QString>

#include <memory>
#include <thread>

class NdiRuntime;

// One NDI source as a texture: a worker finds the source by name (or URL), connects a
// receiver, follows the source to a new URL, and keeps the newest captured frame. Until a
// frame arrives, or after a failure, the renderer gets the "NO NDI" placeholder.
class NdiReceiver : public SceneTextureSource
{
public:
    NdiReceiver(NdiRuntime &runtime, const QString &sourceName);
    ~NdiReceiver() override;
    NdiReceiver(const NdiReceiver &) = delete;
    NdiReceiver &operator=(const NdiReceiver &) = delete;

    void start();
    // Returns within one capture wait of the worker.
    void stop();

    SceneTextureFrame currentFrame() override;
    QString sourceName() const { return m_name; }
    // The last failure, empty while all is well.
    QString errorText() const;
    // The URL the receiver is connected to; empty before a connection.
    QString connectedUrl() const;
    qint64 framesCaptured() const;
    // Whether a frame newer than the one last handed to the renderer is waiting.
    bool hasNewFrame() const;

    struct Shared;

private:
    NdiRuntime &m_runtime;
    QString m_name;
    std::shared_ptr<Shared> m_shared;
    std::thread m_thread;
    SceneTextureFrame m_placeholder;
};

// "(name)" and "(url)" for empty fields, as the log shows them.
QString ndiSourceLabel(const char *name, const char *url);
