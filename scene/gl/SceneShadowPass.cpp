#include "scene/gl/SceneShadowPass.h"

#include "scene/Transform.h"
#include "scene/gl/SceneFrame.h"
#include "scene/gl/SceneGlProgram.h"
#include "scene/gl/SceneShaderSources.h"

#include <QOpenGLShaderProgram>

SceneShadowPass::SceneShadowPass() = default;
SceneShadowPass::~SceneShadowPass() = default;

bool SceneShadowPass::initialize()
{
    using namespace SceneShaderSources;
    m_rangeFromDepth = buildSceneProgram(QStringLiteral("shadow range"), fullScreenVertex(), {},
                                         withDefines(shadowRangeFragment(), {"FROM_DEPTH"}), {"source"});
    m_rangeFromRange =
        buildSceneProgram(QStringLiteral("shadow range levels"), fullScreenVertex(), {}, shadowRangeFragment(), {"source"});
    return m_rangeFromDepth && m_rangeFromRange;
}

// Half the map's size at level 0, down to one texel.
bool SceneShadowPass::ensureRange(QOpenGLExtraFunctions *f, ShadowMap &map)
{
    if (map.range)
        return true;
    map.range = GlTexture::create(f);
    f->glBindTexture(GL_TEXTURE_2D, map.range.id());
    int levels = 0;
    for (int size = SceneRenderer::kShadowMapSize / 2; size >= 1; size /= 2)
        f->glTexImage2D(GL_TEXTURE_2D, levels++, GL_RG32F, size, size, 0, GL_RG, GL_FLOAT, nullptr);
    f->glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST_MIPMAP_NEAREST);
    f->glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    f->glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    f->glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    f->glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAX_LEVEL, levels - 1);
    f->glBindTexture(GL_TEXTURE_2D, 0);
    const GLenum colorBuffer = GL_COLOR_ATTACHMENT0;
    for (int level = 0; level < levels; ++level) {
        GlFramebuffer fbo = GlFramebuffer::create(f);
        f->glBindFramebuffer(GL_FRAMEBUFFER, fbo.id());
        f->glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, map.range.id(), level);
        f->glDrawBuffers(1, &colorBuffer);
        if (!glFramebufferComplete(f, fbo.id())) {
            qWarning("GL projector shadow map pipeline is unavailable");
            map.range.reset();
            map.rangeLevels.clear();
            return false;
        }
        map.rangeLevels.push_back(std::move(fbo));
    }
    return true;
}

// Each level from the one below it; while a level is drawn the texture offers only the
// level it reads, so no level is read and written at once.
void SceneShadowPass::buildRange(SceneFrame &frame, ShadowMap &map)
{
    QOpenGLExtraFunctions *f = frame.gl();
    f->glDisable(GL_DEPTH_TEST);
    f->glDepthMask(GL_FALSE);
    f->glActiveTexture(GL_TEXTURE0);
    int size = SceneRenderer::kShadowMapSize / 2;
    for (int level = 0; level < int(map.rangeLevels.size()); ++level, size /= 2) {
        f->glBindFramebuffer(GL_FRAMEBUFFER, map.rangeLevels[size_t(level)].id());
        f->glViewport(0, 0, size, size);
        if (level == 0) {
            m_rangeFromDepth->bind();
            f->glBindTexture(GL_TEXTURE_2D, map.depth.id());
        } else {
            m_rangeFromRange->bind();
            f->glBindTexture(GL_TEXTURE_2D, map.range.id());
            f->glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_BASE_LEVEL, level - 1);
            f->glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAX_LEVEL, level - 1);
        }
        frame.common.drawFullScreenTriangle();
    }
    f->glBindTexture(GL_TEXTURE_2D, map.range.id());
    f->glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_BASE_LEVEL, 0);
    f->glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAX_LEVEL, int(map.rangeLevels.size()) - 1);
    f->glBindTexture(GL_TEXTURE_2D, 0);
    f->glEnable(GL_DEPTH_TEST);
    f->glDepthMask(GL_TRUE);
}


bool SceneShadowPass::ensureMap(QOpenGLExtraFunctions *f, ShadowMap &map)
{
    if (map.fbo)
        return true;
    const int size = SceneRenderer::kShadowMapSize;
    map.depth = makeGlTexture(f, GL_DEPTH_COMPONENT32F, GL_DEPTH_COMPONENT, GL_FLOAT, QSize(size, size), GL_NEAREST);
    map.fbo = GlFramebuffer::create(f);
    f->glBindFramebuffer(GL_FRAMEBUFFER, map.fbo.id());
    f->glFramebufferTexture2D(GL_FRAMEBUFFER, GL_DEPTH_ATTACHMENT, GL_TEXTURE_2D, map.depth.id(), 0);
    f->glDrawBuffers(0, nullptr);
    f->glReadBuffer(GL_NONE);
    if (!glFramebufferComplete(f, map.fbo.id())) {
        qWarning("GL projector shadow map pipeline is unavailable");
        map.fbo.reset();
        map.depth.reset();
        return false;
    }
    if (!ensureRange(f, map)) {
        map.fbo.reset();
        map.depth.reset();
        return false;
    }
    return true;
}

std::vector<SceneShadowPass::Caster> SceneShadowPass::castersOf(const SceneFrame &frame, int projector) const
{
    const QMatrix4x4 matrix = lensClipMatrix(frame.lenses[projector]);
    std::vector<Caster> casters;
    for (const SceneFrameItem &item : frame.items) {
        if (item.index == projector || item.mesh->indexCount == 0 || (!item.surface && !item.body))
            continue;
        if (boxMayMeetClipVolume(item.mesh->localBounds, matrix * item.world))
            casters.push_back({item.index, item.mesh->revision, item.world});
    }
    return casters;
}

void SceneShadowPass::drawMap(SceneFrame &frame, int projector, ShadowMap &map, const std::vector<Caster> &casters)
{
    QOpenGLExtraFunctions *f = frame.gl();
    map.matrix = lensClipMatrix(frame.lenses[projector]);
    f->glBindFramebuffer(GL_FRAMEBUFFER, map.fbo.id());
    f->glViewport(0, 0, SceneRenderer::kShadowMapSize, SceneRenderer::kShadowMapSize);
    f->glDisable(GL_SCISSOR_TEST); // a shared map is drawn between a light pass's projectors
    f->glDisable(GL_STENCIL_TEST);
    f->glDisable(GL_BLEND);
    f->glEnable(GL_DEPTH_TEST);
    f->glDepthFunc(GL_LESS);
    f->glDepthMask(GL_TRUE);
    f->glClear(GL_DEPTH_BUFFER_BIT);
    frame.common.depthProgram()->bind();
    size_t next = 0;
    for (const SceneFrameItem &item : frame.items) {
        if (next >= casters.size())
            break;
        if (item.index != casters[next].index)
            continue;
        ++next;
        // The map's own clip volume: what lies outside it draws nothing into the map.
        const QMatrix4x4 mvp = map.matrix * item.world;
        frame.common.setSceneConstants(mvp, QVector4D(1, 0, 0, 0));
        frame.common.drawTriangles(*item.mesh, {&mvp, nullptr});
    }
    buildRange(frame, map);
    map.casters = casters;
    map.valid = true;
    ++frame.stats.shadowMapsRendered;
}

bool SceneShadowPass::update(SceneFrame &frame)
{
    int kept = 0;
    for (int p : frame.projecting) {
        if (kept++ >= m_residentLimit)
            break;
        ShadowMap &map = m_maps[p];
        if (!ensureMap(frame.gl(), map))
            return false;
        std::vector<Caster> casters = castersOf(frame, p);
        if (m_caching && map.valid && map.matrix == lensClipMatrix(frame.lenses[p]) && map.casters == casters)
            continue;
        drawMap(frame, p, map, casters);
    }
    // Projectors past the limit lose their kept maps.
    for (auto it = m_maps.begin(); it != m_maps.end();) {
        const auto position = std::find(frame.projecting.begin(), frame.projecting.end(), it->first);
        if (position == frame.projecting.end() || position - frame.projecting.begin() >= m_residentLimit)
            it = m_maps.erase(it);
        else
            ++it;
    }
    return m_residentLimit > 0 || frame.projecting.empty() || ensureMap(frame.gl(), m_shared);
}

GLuint SceneShadowPass::depthTexture(SceneFrame &frame, int projector, bool *drewShared)
{
    *drewShared = false;
    auto it = m_maps.find(projector);
    if (it != m_maps.end() && it->second.valid)
        return it->second.depth.id();
    if (!ensureMap(frame.gl(), m_shared))
        return 0;
    drawMap(frame, projector, m_shared, castersOf(frame, projector));
    m_shared.valid = false; // the next projector draws it again
    *drewShared = true;
    return m_shared.depth.id();
}

GLuint SceneShadowPass::rangeTexture(int projector) const
{
    auto it = m_maps.find(projector);
    return it != m_maps.end() && it->second.valid ? it->second.range.id() : m_shared.range.id();
}

QMatrix4x4 SceneShadowPass::shadowMatrix(int projector) const
{
    auto it = m_maps.find(projector);
    return it == m_maps.end() ? m_shared.matrix : it->second.matrix;
}

void SceneShadowPass::keepOnly(const std::set<int> &projectors)
{
    std::erase_if(m_maps, [&](const auto &entry) { return !projectors.count(entry.first); });
}

void SceneShadowPass::clear()
{
    m_maps.clear();
    m_shared = ShadowMap();
}
