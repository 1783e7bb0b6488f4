#include "scene/gl/UvLutGlProbe.h"

#include <QCoreApplication>
#include <QOpenGLContext>
#include <QOpenGLFunctions_3_3_Core>
#include <QOpenGLShaderProgram>
#include <QOpenGLVersionFunctionsFactory>
#include <QSurface>

#include <new>

using namespace vg::exchange;

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("UvLutExport", text);
}

const char *const kProbeVertex = R"(#version 330 core
layout(location = 0) in vec3 position;
uniform mat4 outputClip;
uniform mat4 sourceClip;
out vec4 sourcePosition;
out float lensDepth;
void main()
{
    vec4 world = vec4(position, 1.0);
    gl_Position = outputClip * world;
    lensDepth = gl_Position.w;
    sourcePosition = sourceClip * world;
}
)";

// a: 1 where the source sees the point, -1 where only a surface is hit, 0 (clear) for none.
const char *const kProbeFragment = R"(#version 330 core
in vec4 sourcePosition;
in float lensDepth;
uniform float sourceFar;
layout(location = 0) out vec4 result;
void main()
{
    float w = sourcePosition.w;
    bool valid = w > 0.0001 && w <= sourceFar;
    float u = 0.0;
    float v = 0.0;
    if (valid) {
        u = (sourcePosition.x / w + 1.0) * 0.5;
        v = (sourcePosition.y / w + 1.0) * 0.5;
        valid = u >= 0.0 && u <= 1.0 && v >= 0.0 && v <= 1.0;
    }
    result = vec4(u, v, lensDepth, valid ? 1.0 : -1.0);
}
)";

const char *const kResolveVertex = R"(#version 330 core
void main()
{
    vec2 p = vec2(gl_VertexID == 1 ? 3.0 : -1.0, gl_VertexID == 2 ? 3.0 : -1.0);
    gl_Position = vec4(p, 0.0, 1.0);
}
)";

// Coverage is the share of samples the source sees; the values come from the nearest of them.
const char *const kResolveFragment = R"(#version 330 core
uniform sampler2DMS probe;
uniform int samples;
layout(location = 0) out vec4 result;
void main()
{
    ivec2 p = ivec2(gl_FragCoord.xy);
    int valid = 0;
    bool hit = false;
    vec4 best = vec4(0.0);
    float bestDepth = 3.0e38;
    for (int i = 0; i < samples; ++i) {
        vec4 s = texelFetch(probe, p, i);
        if (s.a != 0.0)
            hit = true;
        if (s.a > 0.0) {
            ++valid;
            if (s.b < bestDepth) {
                bestDepth = s.b;
                best = s;
            }
        }
    }
    if (valid > 0)
        result = vec4(best.rg, best.b, float(valid) / float(samples));
    else
        result = vec4(0.0, 0.0, 0.0, hit ? -1.0 : 0.0);
}
)";

QString glErrorText(GLenum code)
{
    return QStringLiteral("GL error 0x%1").arg(code, 4, 16, QLatin1Char('0'));
}

// The lens clip matrix with the lens flips folded into NDC (u ← 1 − u is x ← −x).
QMatrix4x4 flippedClip(const vg::scene::LensModel &lens, double nearPlane, double farPlane)
{
    double u = 0.0, v = 0.0;
    vg::scene::applyLensFlips(lens.intrinsics(), u, v);
    Eigen::Matrix4d flip = Eigen::Matrix4d::Identity();
    flip(0, 0) = u > 0.5 ? -1.0 : 1.0;
    flip(1, 1) = v > 0.5 ? -1.0 : 1.0;
    const Eigen::Matrix4d m = flip * lens.projectionMatrix(nearPlane, farPlane) * lens.viewMatrix();
    QMatrix4x4 q;
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c)
            q(r, c) = float(m(r, c));
    return q;
}

std::unique_ptr<QOpenGLShaderProgram> buildProgram(const char *vertex, const char *fragment)
{
    auto program = std::make_unique<QOpenGLShaderProgram>();
    if (!program->addShaderFromSourceCode(QOpenGLShader::Vertex, vertex)
        || !program->addShaderFromSourceCode(QOpenGLShader::Fragment, fragment) || !program->link()) {
        qWarning("GL shader compile failed: UV LUT probe: %s", qPrintable(program->log()));
        return nullptr;
    }
    return program;
}

// GL names of one probe, released together.
struct ProbeObjects {
    QOpenGLFunctions_3_3_Core *f = nullptr;
    GLuint fbo = 0, color = 0, depth = 0, resolveFbo = 0, resolveColor = 0, vao = 0, vbo = 0;
    ~ProbeObjects()
    {
        if (!f)
            return;
        const GLuint framebuffers[] = {fbo, resolveFbo};
        const GLuint textures[] = {color, resolveColor};
        f->glDeleteFramebuffers(2, framebuffers);
        f->glDeleteTextures(2, textures);
        f->glDeleteRenderbuffers(1, &depth);
        f->glDeleteBuffers(1, &vbo);
        f->glDeleteVertexArrays(1, &vao);
    }
};

bool failed(QOpenGLFunctions_3_3_Core *f, const char *text, QString *error)
{
    const GLenum code = f->glGetError();
    if (code == GL_NO_ERROR)
        return false;
    *error = tr(text).arg(glErrorText(code));
    return true;
}

} // namespace

struct UvLutGlProbe::Gl {
    // Makes the probe's own context current and puts the previous one back when done.
    QOpenGLContext *previous = nullptr;
    QSurface *previousSurface = nullptr;
    OffscreenGlContext *own = nullptr;
    ~Gl()
    {
        if (own)
            own->doneCurrent();
        if (previous && previousSurface)
            previous->makeCurrent(previousSurface);
    }
};

UvLutGlProbe::UvLutGlProbe() = default;
UvLutGlProbe::~UvLutGlProbe() = default;

bool UvLutGlProbe::probe(const UvLutProbeInput &input, UvLutTable *table, const UvLutProgress &progress,
                         QString *error)
{
    Gl scope;
    scope.previous = QOpenGLContext::currentContext();
    scope.previousSurface = scope.previous ? scope.previous->surface() : nullptr;
    if (!m_context) {
        auto context = std::make_unique<OffscreenGlContext>();
        QString why;
        if (!context->create(&why)) {
            *error = tr("GPU device is not ready for GPU UV LUT export.") + QLatin1Char('\n') + why;
            return false;
        }
        m_context = std::move(context);
    }
    if (!m_context->makeCurrent()) {
        *error = tr("GPU device is not ready for GPU UV LUT export.");
        return false;
    }
    scope.own = m_context.get();
    m_renderer = m_context->rendererDescription();
    auto *f = QOpenGLVersionFunctionsFactory::get<QOpenGLFunctions_3_3_Core>(m_context->context());
    if (!f || !f->initializeOpenGLFunctions()) {
        *error = tr("GPU device is not ready for GPU UV LUT export.");
        return false;
    }
    while (f->glGetError() != GL_NO_ERROR) {
    }

    const int width = input.output.width();
    const int height = input.output.height();
    const int samples = input.aaSamples;
    GLint maxSize = 0, maxViewport[2] = {0, 0};
    f->glGetIntegerv(GL_MAX_TEXTURE_SIZE, &maxSize);
    f->glGetIntegerv(GL_MAX_VIEWPORT_DIMS, maxViewport);
    const int limit = std::min({maxSize, maxViewport[0], maxViewport[1]});
    if (width > limit || height > limit) {
        *error = tr("The GPU allows UV LUTs of at most %1 x %1 pixels; use the CPU Raster (legacy) method.").arg(limit);
        return false;
    }
    if (samples > 1) {
        GLint colorSamples = 0, depthSamples = 0;
        f->glGetIntegerv(GL_MAX_COLOR_TEXTURE_SAMPLES, &colorSamples);
        f->glGetIntegerv(GL_MAX_SAMPLES, &depthSamples);
        if (colorSamples < samples) {
            *error = tr("GPU UV LUT MSAA %1x is not supported for RGBA32F render targets: %2")
                         .arg(samples)
                         .arg(tr("at most %1 samples").arg(colorSamples));
            return false;
        }
        if (depthSamples < samples) {
            *error = tr("GPU UV LUT MSAA %1x is not supported for D32 depth targets: %2")
                         .arg(samples)
                         .arg(tr("at most %1 samples").arg(depthSamples));
            return false;
        }
    }

    const auto probeProgram = buildProgram(kProbeVertex, kProbeFragment);
    if (!probeProgram) {
        *error = tr("Could not compile GPU UV LUT export shader.");
        return false;
    }
    std::unique_ptr<QOpenGLShaderProgram> resolveProgram;
    if (samples > 1 && !(resolveProgram = buildProgram(kResolveVertex, kResolveFragment))) {
        *error = tr("Could not compile GPU UV LUT downsample shader.");
        return false;
    }

    ProbeObjects gl;
    gl.f = f;
    const GLenum colorTarget = samples > 1 ? GL_TEXTURE_2D_MULTISAMPLE : GL_TEXTURE_2D;
    f->glGenTextures(1, &gl.color);
    f->glBindTexture(colorTarget, gl.color);
    if (samples > 1) {
        f->glTexImage2DMultisample(GL_TEXTURE_2D_MULTISAMPLE, samples, GL_RGBA32F, width, height, GL_TRUE);
    } else {
        f->glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA32F, width, height, 0, GL_RGBA, GL_FLOAT, nullptr);
        f->glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
        f->glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    }
    if (failed(f, "CreateTexture2D(GPU UV LUT render target) failed: %1", error))
        return false;
    f->glGenFramebuffers(1, &gl.fbo);
    f->glBindFramebuffer(GL_FRAMEBUFFER, gl.fbo);
    f->glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, colorTarget, gl.color, 0);
    if (failed(f, "CreateRenderTargetView(GPU UV LUT render target) failed: %1", error))
        return false;
    f->glGenRenderbuffers(1, &gl.depth);
    f->glBindRenderbuffer(GL_RENDERBUFFER, gl.depth);
    if (samples > 1)
        f->glRenderbufferStorageMultisample(GL_RENDERBUFFER, samples, GL_DEPTH_COMPONENT32F, width, height);
    else
        f->glRenderbufferStorage(GL_RENDERBUFFER, GL_DEPTH_COMPONENT32F, width, height);
    if (failed(f, "CreateTexture2D(GPU UV LUT depth) failed: %1", error))
        return false;
    f->glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_DEPTH_ATTACHMENT, GL_RENDERBUFFER, gl.depth);
    const GLenum status = f->glCheckFramebufferStatus(GL_FRAMEBUFFER);
    if (status != GL_FRAMEBUFFER_COMPLETE) {
        *error = tr("CreateDepthStencilView(GPU UV LUT depth) failed: %1").arg(glErrorText(status));
        return false;
    }

    f->glGenVertexArrays(1, &gl.vao);
    f->glBindVertexArray(gl.vao);
    f->glGenBuffers(1, &gl.vbo);
    f->glBindBuffer(GL_ARRAY_BUFFER, gl.vbo);
    const std::vector<float> &positions = input.triangles->positions;
    f->glBufferData(GL_ARRAY_BUFFER, GLsizeiptr(positions.size() * sizeof(float)), positions.data(), GL_STATIC_DRAW);
    if (failed(f, "CreateBuffer(GPU UV LUT vertices) failed: %1", error))
        return false;
    f->glEnableVertexAttribArray(0);
    f->glVertexAttribPointer(0, 3, GL_FLOAT, GL_FALSE, 3 * sizeof(float), nullptr);

    probeProgram->bind();
    probeProgram->setUniformValue("outputClip",
                                  flippedClip(input.output, kUvLutNearPlane, input.output.throwDistance()));
    probeProgram->setUniformValue("sourceClip", flippedClip(input.source, kUvLutNearPlane, 1.0e6));
    probeProgram->setUniformValue("sourceFar", float(input.source.throwDistance()));
    if (failed(f, "CreateBuffer(GPU UV LUT constants) failed: %1", error))
        return false;

    f->glViewport(0, 0, width, height);
    f->glDisable(GL_BLEND);
    f->glDisable(GL_CULL_FACE);
    f->glDisable(GL_SCISSOR_TEST);
    f->glEnable(GL_DEPTH_TEST);
    f->glDepthFunc(GL_LESS);
    f->glDepthMask(GL_TRUE);
    f->glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
    if (samples > 1)
        f->glEnable(GL_MULTISAMPLE);
    f->glClearColor(0.0f, 0.0f, 0.0f, 0.0f);
    f->glClearDepth(1.0);
    f->glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    f->glDrawArrays(GL_TRIANGLES, 0, GLsizei(positions.size() / 3));

    GLuint readFbo = gl.fbo;
    if (samples > 1) {
        f->glGenTextures(1, &gl.resolveColor);
        f->glBindTexture(GL_TEXTURE_2D, gl.resolveColor);
        f->glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA32F, width, height, 0, GL_RGBA, GL_FLOAT, nullptr);
        f->glGenFramebuffers(1, &gl.resolveFbo);
        f->glBindFramebuffer(GL_FRAMEBUFFER, gl.resolveFbo);
        f->glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, gl.resolveColor, 0);
        if (failed(f, "CreateTexture2D(GPU UV LUT staging) failed: %1", error))
            return false;
        f->glDisable(GL_DEPTH_TEST);
        resolveProgram->bind();
        f->glActiveTexture(GL_TEXTURE0);
        f->glBindTexture(GL_TEXTURE_2D_MULTISAMPLE, gl.color);
        resolveProgram->setUniformValue("probe", 0);
        resolveProgram->setUniformValue("samples", samples);
        f->glDrawArrays(GL_TRIANGLES, 0, 3);
        readFbo = gl.resolveFbo;
    }

    if (progress)
        progress(tr("Reading GPU UV probe..."));
    std::vector<float> pixels;
    try {
        pixels.resize(size_t(width) * size_t(height) * 4);
    } catch (const std::bad_alloc &) {
        *error = tr("Map(GPU UV LUT staging) failed: %1").arg(tr("out of memory"));
        return false;
    }
    f->glBindFramebuffer(GL_READ_FRAMEBUFFER, readFbo);
    f->glReadBuffer(GL_COLOR_ATTACHMENT0);
    f->glPixelStorei(GL_PACK_ALIGNMENT, 4);
    f->glReadPixels(0, 0, width, height, GL_RGBA, GL_FLOAT, pixels.data());
    if (failed(f, "Map(GPU UV LUT staging) failed: %1", error))
        return false;
    f->glBindFramebuffer(GL_FRAMEBUFFER, 0);

    table->width = width;
    table->height = height;
    table->samples.assign(size_t(width) * size_t(height), UvLutSample{});
    for (int y = 0; y < height; ++y) {
        // The top image row (v = 0) is the last framebuffer row.
        const float *row = pixels.data() + size_t(height - 1 - y) * size_t(width) * 4;
        for (int x = 0; x < width; ++x, row += 4) {
            UvLutSample &s = table->at(x, y);
            const float a = row[3];
            if (a == 0.0f)
                continue;
            s.flags = UvLutSample::Hit;
            s.depth = row[2];
            if (a > 0.0f) {
                s.u = row[0];
                s.v = row[1];
                s.coverage = std::min(1.0f, a);
                s.flags |= UvLutSample::Valid;
            }
        }
    }
    return true;
}
