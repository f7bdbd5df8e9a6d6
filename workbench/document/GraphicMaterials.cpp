#include "workbench/document/GraphicMaterials.h"

#include <algorithm>

namespace qor::document {

namespace {

/// A number that both kinds of material have.
struct Factor {
    double Material::*stored;
    float QorGraphicMaterial::*shown;
};

constexpr auto factors = std::to_array<Factor>({
    {&Material::metallic, &QorGraphicMaterial::metallic},
    {&Material::roughness, &QorGraphicMaterial::roughness},
    {&Material::transmission, &QorGraphicMaterial::transmission},
    {&Material::ior, &QorGraphicMaterial::ior},
    {&Material::normalScale, &QorGraphicMaterial::normalScale},
    {&Material::occlusionStrength, &QorGraphicMaterial::occlusionStrength},
    {&Material::clearcoat, &QorGraphicMaterial::clearcoat},
    {&Material::clearcoatRoughness, &QorGraphicMaterial::clearcoatRoughness},
    {&Material::clearcoatNormalScale, &QorGraphicMaterial::clearcoatNormalScale},
    {&Material::thicknessMm, &QorGraphicMaterial::thickness},
    {&Material::attenuationDistanceMm, &QorGraphicMaterial::attenuationDistance},
    {&Material::alphaCutoff, &QorGraphicMaterial::alphaCutoff},
});

template <std::size_t size>
void toShown(const std::array<double, size>& from, float (&to)[size]) {
    for (std::size_t i = 0; i < size; ++i)
        to[i] = static_cast<float>(from[i]);
}

template <std::size_t size>
void toStored(const float (&from)[size], std::array<double, size>& to) {
    std::copy(std::begin(from), std::end(from), to.begin());
}

QorTextureUse shownUse(const TextureUse& use, std::span<const QorPixelImage_var> images) {
    QorTextureUse shown;
    shown.image = images[static_cast<std::size_t>(use.texture)];
    shown.uvSet = use.uvSet;
    shown.offset = use.offset;
    shown.scale = use.scale;
    shown.rotation = use.rotation;
    shown.wrapU = static_cast<QorTextureWrap>(use.wrapU);
    shown.wrapV = static_cast<QorTextureWrap>(use.wrapV);
    return shown;
}

/// Where \p image stands in \p images, by its pixels; appended if it is nowhere.
std::int32_t placeOf(const QorPixelImage_var& image, std::vector<QorPixelImage_var>& images) {
    const auto found =
        std::find_if(images.begin(), images.end(), [&](const QorPixelImage_var& one) {
            return one->GetContentId() == image->GetContentId();
        });
    const auto place = static_cast<std::int32_t>(found - images.begin());
    if (found == images.end())
        images.push_back(image);
    return place;
}

TextureUse storedUse(const QorTextureUse& use, std::vector<QorPixelImage_var>& images) {
    TextureUse stored;
    stored.texture = placeOf(use.image, images);
    stored.uvSet = use.uvSet;
    stored.offset = use.offset;
    stored.scale = use.scale;
    stored.rotation = use.rotation;
    stored.wrapU = static_cast<TextureWrap>(use.wrapU);
    stored.wrapV = static_cast<TextureWrap>(use.wrapV);
    return stored;
}

} // namespace

QorVar<QorGraphicMaterial> graphicMaterial(const Material& material,
                                           std::span<const QorPixelImage_var> images) {
    auto shown = QorMake<QorGraphicMaterial>();
    shown->name = material.name;
    for (const Factor& factor : factors)
        (*shown).*factor.shown = static_cast<float>(material.*factor.stored);
    toShown(material.baseColor, shown->baseColor);
    toShown(material.emission, shown->emission);
    toShown(material.attenuationColor, shown->attenuationColor);
    shown->alphaMode = static_cast<QorAlphaMode>(material.alphaMode);
    shown->doubleSided = material.doubleSided;
    shown->unlit = material.unlit;
    for (std::size_t slot = 0; slot < textureSlotCount; ++slot)
        if (const auto& use = material.textures[slot])
            shown->SetTexture(static_cast<QorTextureSlot>(slot), shownUse(*use, images));
    return shown;
}

Material materialOf(const QorGraphicMaterial& material, std::vector<QorPixelImage_var>& images) {
    Material stored;
    stored.name = material.name.Str();
    for (const Factor& factor : factors)
        stored.*factor.stored = material.*factor.shown;
    toStored(material.baseColor, stored.baseColor);
    toStored(material.emission, stored.emission);
    toStored(material.attenuationColor, stored.attenuationColor);
    stored.alphaMode = static_cast<AlphaMode>(material.alphaMode);
    stored.doubleSided = material.doubleSided;
    stored.unlit = material.unlit;
    for (std::size_t slot = 0; slot < textureSlotCount; ++slot) {
        const QorTextureUse& use = material.GetTexture(static_cast<QorTextureSlot>(slot));
        if (use.image && !use.image->IsEmpty())
            stored.textures[slot] = storedUse(use, images);
    }
    return stored;
}

QorPixelImage_var imageOf(Texture& texture) {
    auto pixels = std::make_shared<const QorPixelImage::Pixels>(std::move(texture.pixels));
    auto image = QorMake<QorPixelImage>(static_cast<int>(texture.width),
                                        static_cast<int>(texture.height), 4, std::move(pixels));
    texture.width = texture.height = 0;
    texture.pixels = {};
    return image;
}

QorVar<QorGraphicMaterial> plainMaterial() {
    auto plain = QorMake<QorGraphicMaterial>();
    plain->MarkModified();
    return plain;
}

} // namespace qor::document
