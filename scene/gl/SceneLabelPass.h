#pragma once

#include "scene/gl/GlOwned.h"
#include "scene/gl/SceneTextAtlas.h"

#include <QPointF>

#include <functional>
#include <memory>
#include <vector>

class QOpenGLShaderProgram;
class SceneFootprintPass;
struct SceneFrame;

// Texts in the view: projector names and info, comments, dimensions, footprint values and
// the frame rate, each a bitmap of one atlas drawn as a screen-aligned quad.
class SceneLabelPass
{
public:
    SceneLabelPass();
    ~SceneLabelPass();
    bool initialize();
    bool available() const { return bool(m_program); }
    void releaseAtlas();

    void draw(SceneFrame &frame, const SceneFootprintPass &footprint);

    struct Request {
        QString key;
        std::function<DimensionTextAtlasEntry()> make;
        QPointF anchor; // pixels, top-left origin
        Qt::Alignment alignment = Qt::AlignCenter;
    };

private:
    void collectObjectLabels(const SceneFrame &frame, std::vector<Request> &requests);
    void collectFootprintLabels(const SceneFrame &frame, const SceneFootprintPass &footprint,
                                std::vector<Request> &requests);
    void placeInAtlas(const std::vector<Request> &requests);
    void drawQuads(SceneFrame &frame, const std::vector<Request> &requests);

    std::unique_ptr<QOpenGLShaderProgram> m_program;
    SceneTextAtlasPacker m_atlas{1024};
    GlTexture m_atlasTexture;
    quint64 m_uploadedRevision = 0;
};
