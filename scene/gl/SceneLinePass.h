#pragma once

#include <memory>

class QOpenGLShaderProgram;
struct SceneFrame;

// Lines over the lit surfaces: the ground grid, frusta, and each object's wire grid,
// measures and curves, drawn as screen-space quads of a given pixel width.
class SceneLinePass
{
public:
    SceneLinePass();
    ~SceneLinePass();
    bool initialize();
    bool available() const { return bool(m_program); }
    void draw(SceneFrame &frame);

private:
    void drawWorldLines(SceneFrame &frame);
    void drawWireframes(SceneFrame &frame);

    std::unique_ptr<QOpenGLShaderProgram> m_program;
};
