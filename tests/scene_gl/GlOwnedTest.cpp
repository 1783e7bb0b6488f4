#include "SceneGlTestSupport.h"

#include "scene/gl/GlOwned.h"

#include <QOpenGLContext>
#include <QOpenGLExtraFunctions>

#include <vector>

// The owners free exactly once: a moved-from owner gives its name up, the last owner frees
// it, and a name is never freed while another context is current.
TEST(GlOwned, MovedNamesAreFreedOnceByTheirLastOwner)
{
    OffscreenSceneRenderer &r = sharedRenderer();
    ASSERT_TRUE(r.context().makeCurrent());
    QOpenGLExtraFunctions *f = QOpenGLContext::currentContext()->extraFunctions();

    GLuint name = 0;
    {
        GlTexture first = makeGlTexture(f, GL_RGBA8, GL_RGBA, GL_UNSIGNED_BYTE, QSize(4, 2), GL_NEAREST);
        name = first.id();
        ASSERT_NE(name, 0u);
        GlTexture second = std::move(first);
        EXPECT_EQ(first.id(), 0u);
        EXPECT_EQ(second.id(), name);
        {
            std::vector<GlTexture> holders;
            holders.push_back(std::move(second));
            holders.reserve(16); // moves the owner again inside the vector
            EXPECT_TRUE(f->glIsTexture(name));
            GlTexture other = makeGlTexture(f, GL_RGBA8, GL_RGBA, GL_UNSIGNED_BYTE, QSize(1, 1), GL_NEAREST);
            const GLuint otherName = other.id();
            holders.front() = std::move(other); // frees the first name, keeps the second
            EXPECT_FALSE(f->glIsTexture(name));
            EXPECT_TRUE(f->glIsTexture(otherName));
            name = otherName;
        }
        EXPECT_FALSE(f->glIsTexture(name));
    }

    GlFramebuffer fbo = GlFramebuffer::create(f);
    GlBuffer buffer = GlBuffer::create(f);
    f->glBindFramebuffer(GL_FRAMEBUFFER, fbo.id());
    f->glBindBuffer(GL_ARRAY_BUFFER, buffer.id());
    f->glBindFramebuffer(GL_FRAMEBUFFER, 0);
    f->glBindBuffer(GL_ARRAY_BUFFER, 0);
    const GLuint fboName = fbo.id(), bufferName = buffer.id();
    EXPECT_TRUE(f->glIsFramebuffer(fboName));
    EXPECT_TRUE(f->glIsBuffer(bufferName));
    // With no context current the owner lets go without touching GL.
    r.context().doneCurrent();
    fbo.reset();
    buffer.reset();
    ASSERT_TRUE(r.context().makeCurrent());
    EXPECT_TRUE(f->glIsFramebuffer(fboName));
    EXPECT_TRUE(f->glIsBuffer(bufferName));
    f->glDeleteFramebuffers(1, &fboName);
    f->glDeleteBuffers(1, &bufferName);
}
