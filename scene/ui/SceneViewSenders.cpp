#include "scene/ui/SceneViewSenders.h"

#include "scene/gl/OffscreenSceneRender.h"
#include "scene/gl/SceneRenderer.h"
#include "video/NdiRuntime.h"
#include "video/NdiSender.h"
#include "video/SpoutSupport.h"

#include <QOpenGLExtraFunctions>
#include <QOpenGLFramebufferObject>
#include <QSet>

#include <cmath>

namespace {

constexpr int kOutputSpout = 1;
constexpr int kOutputNdi = 2;

} // namespace

SceneViewSenders::SceneViewSenders() = default;
SceneViewSenders::~SceneViewSenders() = default;

QSize SceneViewSenders::viewSize(const GuideObject &object) const
{
    const int w = std::max(1, object.projector_resolution_width);
    const int h = std::max(1, object.projector_resolution_height);
    const double scale = std::min(1.0, double(m_maxSide) / std::max(w, h));
    return QSize(std::max(1, int(std::lround(w * scale))), std::max(1, int(std::lround(h * scale))));
}

QImage SceneViewSenders::renderView(SceneRenderer &renderer, QOpenGLExtraFunctions *f,
                                    const QVector<GuideObject> &objects, int index)
{
    ViewCamera camera;
    if (!setCameraToObjectView(camera, objects, index))
        return {};
    const QSize size = viewSize(objects.at(index));
    if (!m_target || m_target->size() != size) {
        m_target.reset();
        m_target = std::make_unique<QOpenGLFramebufferObject>(size, QOpenGLFramebufferObject::CombinedDepthStencil);
        if (!m_target->isValid()) {
            m_target.reset();
            return {};
        }
    }
    SceneRenderSettings settings;
    settings.gridVisible = false;
    settings.showLabels = false;
    settings.hiddenObjectIndex = index; // the lens's own body
    settings.backgroundColor = Qt::black;
    renderer.render(objects, camera, settings, m_target->handle(), size);
    Q_UNUSED(f);
    // Upright, top row first; the context's own framebuffer is bound again afterwards.
    return m_target->toImage();
}

void SceneViewSenders::publish(SceneRenderer &renderer, QOpenGLExtraFunctions *f, const QVector<GuideObject> &objects)
{
    QSet<QString> active;
    for (int i = 0; i < objects.size(); ++i) {
        const GuideObject &object = objects.at(i);
        if (!object.hasLens() || !object.visible)
            continue;
        const QString name = NdiSender::viewSenderName(object.isProjector(), object.projector_view_output_name);
        if (object.projector_view_output_mode == kOutputSpout) {
            openSpoutViewSender(name);
            continue;
        }
        if (object.projector_view_output_mode != kOutputNdi || active.contains(name))
            continue;
        active.insert(name);
        std::unique_ptr<NdiSender> &sender = m_senders[name];
        if (!sender) {
            sender = std::make_unique<NdiSender>(m_runtime ? *m_runtime : NdiRuntime::instance(), name);
            sender->open(nullptr);
        }
        if (!sender->isOpen())
            continue;
        const QImage view = renderView(renderer, f, objects, i);
        if (sender->send(view))
            m_lastSent.insert(name, view);
    }
    for (auto it = m_senders.begin(); it != m_senders.end();) {
        if (active.contains(it->first)) {
            ++it;
        } else {
            m_lastSent.remove(it->first);
            it = m_senders.erase(it);
        }
    }
}
