#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <memory>

class QOpenGLShaderProgram;

// Compiles and links one pass. A failure logs "GL shader compile failed" with the pass name
// and the driver's info log and returns nullptr, so the caller leaves that pass out.
// The uniform blocks SceneConstants and ProjectionConstants are bound to their fixed
// binding points, and the named samplers to texture units in the order given.
std::unique_ptr<QOpenGLShaderProgram> buildSceneProgram(const QString &passName, const QByteArray &vertexSource,
                                                        const QByteArray &geometrySource,
                                                        const QByteArray &fragmentSource,
                                                        const QList<QByteArray> &samplerNames = {});

// The last failure's info log, for tests.
QString lastSceneProgramLog();
