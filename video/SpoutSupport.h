#pragma once

#include "scene/gl/SceneTextureSource.h"

#include <QString>

// Spout shares Direct3D textures between processes and exists only where its SDK does. On
// this system a Spout source shows the "NO SPOUT" placeholder and says so in the log.
bool spoutAvailable();
QString spoutUnavailableText();

class SpoutTextureSource : public SceneTextureSource
{
public:
    explicit SpoutTextureSource(const QString &senderName);
    SceneTextureFrame currentFrame() override { return m_placeholder; }
    QString senderName() const { return m_sender; }

private:
    QString m_sender;
    SceneTextureFrame m_placeholder;
};

// Logs once per sender name that Spout output cannot be opened here; false.
bool openSpoutViewSender(const QString &senderName);
