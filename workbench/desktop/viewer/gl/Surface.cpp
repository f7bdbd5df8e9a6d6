#include "workbench/desktop/viewer/gl/Surface.h"

#include "workbench/desktop/viewer/gl/GlProgram.h"
#include "workbench/desktop/viewer/gl/TextureCache.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace qor::desktop {

namespace {

struct MapRow {
    QorTextureSlot slot;
    const char* sampler;
    TextureCache::Use use;
};

/// In the order of the shader's arrays.
constexpr std::array<MapRow, 5> mapTable{{
    {QorTextureSlot::BaseColor, "baseColorMap", TextureCache::Use::Colors},
    {QorTextureSlot::MetallicRoughness, "finishMap", TextureCache::Use::Numbers},
    {QorTextureSlot::Normal, "normalMap", TextureCache::Use::Numbers},
    {QorTextureSlot::Occlusion, "occlusionMap", TextureCache::Use::Numbers},
    {QorTextureSlot::Emission, "emissionMap", TextureCache::Use::Colors},
}};

GLint wrapOf(QorTextureWrap wrap) {
    switch (wrap) {
    case QorTextureWrap::MirroredRepeat:
        return GL_MIRRORED_REPEAT;
    case QorTextureWrap::ClampToEdge:
        return GL_CLAMP_TO_EDGE;
    case QorTextureWrap::Repeat:
        break;
    }
    return GL_REPEAT;
}

float dielectricReflectance(float ior) {
    const float part = (ior - 1.0F) / (ior + 1.0F);
    return part * part;
}

std::string element(const char* array, std::size_t index) {
    return std::string(array) + "[" + std::to_string(index) + "]";
}

} // namespace

Surface::Surface(const QorGraphicMaterial* material, TextureCache& textures) {
    if (material == nullptr)
        return;
    constexpr float clearest = 0.1F; // what is left of the clearest glass, so that it is seen
    std::copy_n(material->baseColor, 4, baseColor_.begin());
    finish_ = {material->metallic, material->roughness, material->clearcoat,
               material->clearcoatRoughness};
    std::copy_n(material->emission, 3, emission_.begin());
    reflectance_ = dielectricReflectance(material->ior);
    opacity_ = 1.0F - (1.0F - clearest) * std::clamp(material->transmission, 0.0F, 1.0F);
    normalScale_ = material->normalScale;
    occlusionStrength_ = material->occlusionStrength;
    unlit_ = material->unlit;
    if (material->alphaMode == QorAlphaMode::Mask)
        alphaCutoff_ = material->alphaCutoff;
    if (material->alphaMode != QorAlphaMode::Blend)
        baseColor_[3] = material->alphaMode == QorAlphaMode::Mask ? baseColor_[3] : 1.0F;
    for (std::size_t i = 0; i < mapCount; ++i) {
        Map& map = maps_[i];
        map.use = material->GetTexture(mapTable[i].slot);
        if (map.use.image)
            map.texture = textures.get(*map.use.image, mapTable[i].use);
        map.use.image.Reset();
        textured_ = textured_ || map.texture;
    }
    const bool blends = material->alphaMode == QorAlphaMode::Blend;
    const GpuTexture* picture = maps_[0].texture.get();
    clear_ = opacity_ < 1.0F || (blends && baseColor_[3] < 1.0F) ||
             (blends && picture != nullptr && picture->hasAlpha);
}

bool Surface::isDark() const {
    constexpr float dark = 0.03F;
    return 0.2126F * baseColor_[0] + 0.7152F * baseColor_[1] + 0.0722F * baseColor_[2] < dark;
}

void Surface::apply(GlProgram& program, Gl& gl) const {
    program.set("baseColor", baseColor_);
    program.set("finish", finish_);
    program.set("emission", emission_);
    program.set("reflectance", reflectance_);
    program.set("opacity", opacity_);
    program.set("alphaCutoff", alphaCutoff_);
    program.set("unlit", unlit_ ? 1 : 0);
    if (!textured_)
        return;
    program.set("normalScale", normalScale_);
    program.set("occlusionStrength", occlusionStrength_);
    for (std::size_t i = 0; i < mapCount; ++i)
        applyMap(i, program, gl);
}

void Surface::applyMap(std::size_t index, GlProgram& program, Gl& gl) const {
    const auto& [texture, use] = maps_[index];
    program.set(element("used", index).c_str(), texture ? 1 : 0);
    program.set(mapTable[index].sampler, static_cast<int>(index));
    if (!texture)
        return;
    gl.glActiveTexture(GL_TEXTURE0 + static_cast<GLenum>(index));
    gl.glBindTexture(GL_TEXTURE_2D, texture->texture.name());
    gl.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, wrapOf(use.wrapU));
    gl.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, wrapOf(use.wrapV));
    const auto cosine = std::cos(use.rotation);
    const auto sine = std::sin(use.rotation);
    const auto part = [](double value) {
        return static_cast<float>(value);
    };
    // Counter-clockwise in a picture whose rows go down.
    program.set(element("uvTurn", index).c_str(),
                Float4{part(cosine * use.scale[0]), part(-sine * use.scale[0]),
                       part(sine * use.scale[1]), part(cosine * use.scale[1])});
    program.set(element("uvMove", index).c_str(), Float2{part(use.offset[0]), part(use.offset[1])});
    program.set(element("uvSet", index).c_str(), use.uvSet);
}

} // namespace qor::desktop
