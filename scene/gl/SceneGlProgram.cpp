#include "scene/gl/SceneGlProgram.h"

#include "scene/gl/SceneConstants.h"

#include <QDebug>
#include <QList>
#include <QOpenGLContext>
#include <QOpenGLExtraFunctions>
#include <QOpenGLShaderProgram>

namespace {
QString g_lastLog;
}

QString lastSceneProgramLog()
{
    return g_lastLog;
}

std::unique_ptr<QOpenGLShaderProgram> buildSceneProgram(const QString &passName, const QByteArray &vertexSource,
                                                        const QByteArray &geometrySource,
                                                        const QByteArray &fragmentSource,
                                                        const QList<QByteArray> &samplerNames)
{
    auto program = std::make_unique<QOpenGLShaderProgram>();
    auto fail = [&](const QString &stage) {
        g_lastLog = program->log();
        qWarning().noquote() << QStringLiteral("GL shader compile failed (%1, %2):").arg(passName, stage) << g_lastLog;
        return std::unique_ptr<QOpenGLShaderProgram>();
    };
    if (!program->addShaderFromSourceCode(QOpenGLShader::Vertex, vertexSource))
        return fail(QStringLiteral("vertex"));
    if (!geometrySource.isEmpty() && !program->addShaderFromSourceCode(QOpenGLShader::Geometry, geometrySource))
        return fail(QStringLiteral("geometry"));
    if (!program->addShaderFromSourceCode(QOpenGLShader::Fragment, fragmentSource))
        return fail(QStringLiteral("fragment"));
    if (!program->link())
        return fail(QStringLiteral("link"));

    QOpenGLExtraFunctions *f = QOpenGLContext::currentContext()->extraFunctions();
    const GLuint id = program->programId();
    const GLuint sceneBlock = f->glGetUniformBlockIndex(id, "SceneConstants");
    if (sceneBlock != GL_INVALID_INDEX)
        f->glUniformBlockBinding(id, sceneBlock, SceneConstantsBinding);
    const GLuint projectionBlock = f->glGetUniformBlockIndex(id, "ProjectionConstants");
    if (projectionBlock != GL_INVALID_INDEX)
        f->glUniformBlockBinding(id, projectionBlock, ProjectionConstantsBinding);
    if (!samplerNames.isEmpty()) {
        program->bind();
        for (int unit = 0; unit < samplerNames.size(); ++unit) {
            const int location = program->uniformLocation(samplerNames.at(unit).constData());
            if (location >= 0)
                program->setUniformValue(location, unit);
        }
        program->release();
    }
    return program;
}
