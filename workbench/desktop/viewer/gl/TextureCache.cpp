#include "workbench/desktop/viewer/gl/TextureCache.h"

namespace qor::desktop {

std::shared_ptr<const GpuTexture> TextureCache::get(const QorPixelImage& image, Use use) {
    if (image.IsEmpty())
        return nullptr;
    const Key key{image.GetContentId(), use};
    const auto found = textures_.find(key);
    if (found != textures_.end())
        if (auto known = found->second.lock())
            return known;
    std::erase_if(textures_, [](const auto& one) { return one.second.expired(); });
    Gl& gl = currentGl();
    auto texture = std::make_shared<GpuTexture>();
    texture->texture = GlTexture(gl);
    texture->hasAlpha = image.GetChannels() == 4;
    gl.glBindTexture(GL_TEXTURE_2D, texture->texture.name());
    upload(image, use);
    textures_[key] = texture;
    return texture;
}

void TextureCache::upload(const QorPixelImage& image, Use use) {
    const bool hasAlpha = image.GetChannels() == 4;
    const bool coded = use == Use::Colors;
    const GLint rgb = coded ? GL_SRGB8 : GL_RGB8;
    const GLint rgba = coded ? GL_SRGB8_ALPHA8 : GL_RGBA8;
    constexpr GLint usualAlignment = 4;
    Gl& gl = currentGl();
    ++uploads_;
    gl.glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    gl.glTexImage2D(GL_TEXTURE_2D, 0, hasAlpha ? rgba : rgb, image.GetWidth(), image.GetHeight(), 0,
                    hasAlpha ? GL_RGBA : GL_RGB, GL_UNSIGNED_BYTE, image.GetPixels()->data());
    gl.glPixelStorei(GL_UNPACK_ALIGNMENT, usualAlignment);
    if (use != Use::Shown)
        gl.glGenerateMipmap(GL_TEXTURE_2D);
    gl.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER,
                       use == Use::Shown ? GL_LINEAR : GL_LINEAR_MIPMAP_LINEAR);
    gl.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    gl.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    gl.glFlush(); // for the other contexts
}

} // namespace qor::desktop
