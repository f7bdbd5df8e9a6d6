#include "workbench/desktop/viewer/gl/RenderTarget.h"

#include <algorithm>

namespace qor::desktop {

namespace {

constexpr GLenum multisampling = 0x809D; // GL_MULTISAMPLE, which the headers of OpenGL ES lack

} // namespace

RenderTarget::RenderTarget(Gl& gl) : gl_(gl) {
    constexpr GLint enough = 4;
    gl_.glGetIntegerv(GL_MAX_SAMPLES, &most_);
    most_ = std::min(most_, enough);
}

void RenderTarget::resize(const QSize& size, bool fine) {
    const GLint samples = fine ? most_ : 0;
    if (size == size_ && samples == samples_)
        return;
    const bool sameSize = size == size_;
    size_ = size;
    samples_ = samples;
    makeSamples();
    if (!sameSize)
        makeTexture();
}

void RenderTarget::makeSamples() {
    color_ = GlRenderbuffer(gl_);
    depth_ = GlRenderbuffer(gl_);
    sampled_ = GlFramebuffer(gl_);
    gl_.glBindFramebuffer(GL_FRAMEBUFFER, sampled_.name());
    gl_.glBindRenderbuffer(GL_RENDERBUFFER, color_.name());
    gl_.glRenderbufferStorageMultisample(GL_RENDERBUFFER, samples_, GL_RGBA8, size_.width(),
                                         size_.height());
    gl_.glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_RENDERBUFFER,
                                  color_.name());
    gl_.glBindRenderbuffer(GL_RENDERBUFFER, depth_.name());
    gl_.glRenderbufferStorageMultisample(GL_RENDERBUFFER, samples_, GL_DEPTH_COMPONENT24,
                                         size_.width(), size_.height());
    gl_.glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_DEPTH_ATTACHMENT, GL_RENDERBUFFER,
                                  depth_.name());
}

void RenderTarget::makeTexture() {
    texture_ = GlTexture(gl_);
    resolved_ = GlFramebuffer(gl_);
    gl_.glBindTexture(GL_TEXTURE_2D, texture_.name());
    gl_.glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, size_.width(), size_.height(), 0, GL_RGBA,
                     GL_UNSIGNED_BYTE, nullptr);
    gl_.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    gl_.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    gl_.glBindFramebuffer(GL_FRAMEBUFFER, resolved_.name());
    gl_.glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, texture_.name(),
                               0);
}

void RenderTarget::begin() {
    gl_.glEnable(multisampling); // Qt switches it off
    gl_.glBindFramebuffer(GL_FRAMEBUFFER, sampled_.name());
    gl_.glDisable(GL_SCISSOR_TEST);
    gl_.glViewport(0, 0, size_.width(), size_.height());
    gl_.glDepthMask(GL_TRUE);
    gl_.glClearColor(0.0F, 0.0F, 0.0F, 0.0F);
    gl_.glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
}

void RenderTarget::end() {
    gl_.glDisable(multisampling);
    gl_.glBindFramebuffer(GL_READ_FRAMEBUFFER, sampled_.name());
    gl_.glBindFramebuffer(GL_DRAW_FRAMEBUFFER, resolved_.name());
    gl_.glBlitFramebuffer(0, 0, size_.width(), size_.height(), 0, 0, size_.width(), size_.height(),
                          GL_COLOR_BUFFER_BIT, GL_NEAREST);
}

} // namespace qor::desktop
