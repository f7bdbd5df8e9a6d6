#pragma once

#include "workbench/desktop/viewer/gl/GlObjects.h"

#include <QSize>

namespace qor::desktop {

/// A picture with transparency and depth that is drawn with several samples a pixel and then
/// becomes a texture.
class RenderTarget {
public:
    explicit RenderTarget(Gl& gl);

    /// Makes it \p size pixels large, with several samples a pixel or with one; the content is
    /// lost if it was not so.
    void resize(const QSize& size, bool fine);

    /// Empties it and makes it what is drawn into.
    void begin();
    /// Brings what was drawn into the texture.
    void end();

    [[nodiscard]] GLuint texture() const { return texture_.name(); }

    [[nodiscard]] const QSize& size() const { return size_; }

private:
    void makeSamples();
    void makeTexture();

    Gl& gl_;
    QSize size_;
    GLint most_ = 0;    ///< samples a pixel
    GLint samples_ = 0; ///< those in use; 0 for a pixel of its own
    GlRenderbuffer color_;
    GlRenderbuffer depth_;
    GlFramebuffer sampled_;
    GlTexture texture_;
    GlFramebuffer resolved_;
};

} // namespace qor::desktop
