#pragma once

#include "scene/GuideObject.h"

#include <QImage>
#include <QMap>
#include <QSize>
#include <QString>
#include <QVector>

#include <memory>

class NdiRuntime;
class NdiSender;
class QOpenGLExtraFunctions;
class QOpenGLFramebufferObject;
class SceneRenderer;

// Publishes the views of projectors and cameras whose view output is switched on: NDI
// senders get the view rendered through the lens after each frame of the 3D view; a Spout
// output reports once that Spout is not available here.
class SceneViewSenders
{
public:
    SceneViewSenders();
    ~SceneViewSenders(); // needs the renderer's context current when views were rendered

    void setNdiRuntime(NdiRuntime *runtime) { m_runtime = runtime; }
    // Longest side of a published view, in pixels; the lens's aspect is kept.
    void setMaximumSide(int pixels) { m_maxSide = std::max(16, pixels); }

    // Renders and sends every enabled view with the renderer's context current; senders of
    // objects that stopped publishing are closed.
    void publish(SceneRenderer &renderer, QOpenGLExtraFunctions *f, const QVector<GuideObject> &objects);

    int openSenderCount() const { return int(m_senders.size()); }
    // The last picture sent under a name (for the panel's preview and for tests).
    QImage lastSent(const QString &name) const { return m_lastSent.value(name); }

    // The size a view of `object` is published at.
    QSize viewSize(const GuideObject &object) const;

private:
    QImage renderView(SceneRenderer &renderer, QOpenGLExtraFunctions *f, const QVector<GuideObject> &objects,
                      int index);

    NdiRuntime *m_runtime = nullptr;
    int m_maxSide = 1280;
    std::map<QString, std::unique_ptr<NdiSender>> m_senders;
    QMap<QString, QImage> m_lastSent;
    std::unique_ptr<QOpenGLFramebufferObject> m_target;
};
