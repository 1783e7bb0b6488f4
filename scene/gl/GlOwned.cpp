#include "scene/gl/GlOwned.h"

GlTexture makeGlTexture(QOpenGLExtraFunctions *f, GLenum internalFormat, GLenum format, GLenum type, const QSize &size,
                        GLenum filter)
{
    GlTexture texture = GlTexture::create(f);
    f->glBindTexture(GL_TEXTURE_2D, texture.id());
    f->glTexImage2D(GL_TEXTURE_2D, 0, GLint(internalFormat), size.width(), size.height(), 0, format, type, nullptr);
    f->glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GLint(filter));
    f->glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GLint(filter));
    f->glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    f->glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    f->glBindTexture(GL_TEXTURE_2D, 0);
    return texture;
}

bool glFramebufferComplete(QOpenGLExtraFunctions *f, GLuint fbo)
{
    f->glBindFramebuffer(GL_FRAMEBUFFER, fbo);
    const bool ok = f->glCheckFramebufferStatus(GL_FRAMEBUFFER) == GL_FRAMEBUFFER_COMPLETE;
    f->glBindFramebuffer(GL_FRAMEBUFFER, 0);
    return ok;
}

void uploadGlPlane(QOpenGLExtraFunctions *f, GlTexture &texture, GLenum internalFormat, GLenum format, int width,
                   int height, const void *data, bool mipmaps)
{
    if (!texture)
        texture = GlTexture::create(f);
    f->glBindTexture(GL_TEXTURE_2D, texture.id());
    f->glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    f->glTexImage2D(GL_TEXTURE_2D, 0, GLint(internalFormat), width, height, 0, format, GL_UNSIGNED_BYTE, data);
    f->glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
    f->glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, mipmaps ? GL_LINEAR_MIPMAP_LINEAR : GL_LINEAR);
    f->glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    f->glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    f->glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    if (mipmaps)
        f->glGenerateMipmap(GL_TEXTURE_2D);
    f->glBindTexture(GL_TEXTURE_2D, 0);
}
