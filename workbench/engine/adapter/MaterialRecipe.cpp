#include "workbench/engine/adapter/MaterialRecipe.h"

#include "workbench/engine/adapter/Vectors.h"

#include <algorithm>
#include <cmath>

namespace qor::adapter {

namespace {

using engine::PictureEncoding;

float within(float value, float low, float high) {
    return std::isfinite(value) ? std::clamp(value, low, high) : low;
}

float finiteOr(float value, float otherwise) {
    return std::isfinite(value) ? value : otherwise;
}

float share(float value) {
    return within(value, 0.0F, 1.0F);
}

engine::Color shares(const float* rgb) {
    return {share(rgb[0]), share(rgb[1]), share(rgb[2])};
}

engine::Color radiance(const float* rgb) {
    constexpr float brightest = 1e6F;
    return {within(rgb[0], 0.0F, brightest), within(rgb[1], 0.0F, brightest),
            within(rgb[2], 0.0F, brightest)};
}

/// How a slot of the library's material is shown by the engine's.
struct SlotRow {
    QorTextureSlot from;
    engine::Texture engine::Material::*to;
    PictureEncoding encoding;
};

constexpr SlotRow slotRows[] = {
    {QorTextureSlot::BaseColor, &engine::Material::baseTexture, PictureEncoding::srgb},
    {QorTextureSlot::MetallicRoughness, &engine::Material::metallicRoughnessTexture,
     PictureEncoding::linear},
    {QorTextureSlot::Normal, &engine::Material::normalTexture, PictureEncoding::linear},
    {QorTextureSlot::Emission, &engine::Material::emissionTexture, PictureEncoding::srgb},
    {QorTextureSlot::Occlusion, &engine::Material::occlusionTexture, PictureEncoding::linear},
    {QorTextureSlot::Transmission, &engine::Material::transmissionTexture, PictureEncoding::linear},
    {QorTextureSlot::Clearcoat, &engine::Material::clearcoatTexture, PictureEncoding::linear},
    {QorTextureSlot::ClearcoatRoughness, &engine::Material::clearcoatRoughnessTexture,
     PictureEncoding::linear},
    {QorTextureSlot::ClearcoatNormal, &engine::Material::clearcoatNormalTexture,
     PictureEncoding::linear},
};

engine::TextureWrap wrapOf(QorTextureWrap wrap) {
    switch (wrap) {
    case QorTextureWrap::MirroredRepeat:
        return engine::TextureWrap::mirrored;
    case QorTextureWrap::ClampToEdge:
        return engine::TextureWrap::clamp;
    case QorTextureWrap::Repeat:
        break;
    }
    return engine::TextureWrap::repeat;
}

engine::AlphaMode alphaModeOf(QorAlphaMode mode) {
    switch (mode) {
    case QorAlphaMode::Opaque:
        return engine::AlphaMode::opaque;
    case QorAlphaMode::Mask:
        return engine::AlphaMode::mask;
    case QorAlphaMode::Blend:
        break;
    }
    return engine::AlphaMode::blend;
}

void addSlot(MaterialRecipe& recipe, const QorGraphicMaterial& from, const SlotRow& row) {
    const QorTextureUse& use = from.GetTexture(row.from);
    PictureRecipe picture = pictureRecipe(use.image, row.encoding);
    if (!picture)
        return;
    engine::Texture& to = recipe.material.*row.to;
    to.offset = {static_cast<float>(use.offset[0]), static_cast<float>(use.offset[1])};
    to.scale = {static_cast<float>(use.scale[0]), static_cast<float>(use.scale[1])};
    to.rotationRad = static_cast<float>(use.rotation);
    to.uvSet = use.uvSet;
    to.wrapU = wrapOf(use.wrapU);
    to.wrapV = wrapOf(use.wrapV);
    recipe.slots.push_back({row.to, std::move(picture)});
}

/// A wholly rough dielectric spreads what it reflects as evenly as what it scatters: it is taken as
/// Lambertian, which is exact to check and quick to trace.
void makeMatt(MaterialRecipe& recipe) {
    engine::Material& material = recipe.material;
    const bool varies =
        std::any_of(recipe.slots.begin(), recipe.slots.end(), [](const MaterialRecipe::Slot& slot) {
            return slot.texture == &engine::Material::metallicRoughnessTexture;
        });
    if (material.roughness >= 1.0F && material.metallic == 0.0F && material.transmission == 0.0F &&
        !varies)
        material.specular = 0.0F;
}

/// An unlit material shows its colour whatever the light.
void makeUnlit(MaterialRecipe& recipe) {
    engine::Material& material = recipe.material;
    std::erase_if(recipe.slots, [](const MaterialRecipe::Slot& slot) {
        return slot.texture != &engine::Material::baseTexture;
    });
    if (!recipe.slots.empty()) {
        MaterialRecipe::Slot shining = recipe.slots.front();
        shining.texture = &engine::Material::emissionTexture;
        recipe.slots.push_back(std::move(shining));
    }
    material.emission = material.baseColor;
    material.emissionTexture = material.baseTexture;
    material.baseColor = {};
    material.specular = material.metallic = material.clearcoat = material.transmission = 0.0F;
}

} // namespace

MaterialRecipe materialRecipe(const QorGraphicMaterial* material) {
    constexpr float largestIor = 4.0F;
    constexpr float farthest = 1e9F;
    MaterialRecipe recipe;
    if (material == nullptr)
        return recipe;
    const QorGraphicMaterial& from = *material;
    engine::Material& to = recipe.material;
    to.baseColor = shares(from.baseColor);
    to.opacity = share(from.baseColor[3]);
    to.alphaMode = alphaModeOf(from.alphaMode);
    to.alphaCutoff = share(from.alphaCutoff);
    to.metallic = share(from.metallic);
    to.roughness = share(from.roughness);
    to.ior = within(from.ior, 1.0F, largestIor);
    to.transmission = share(from.transmission);
    to.thinWalled = !(from.thickness > 0.0F);
    to.clearcoat = share(from.clearcoat);
    to.clearcoatRoughness = share(from.clearcoatRoughness);
    to.emission = radiance(from.emission);
    to.normalScale = finiteOr(from.normalScale, 1.0F);
    to.clearcoatNormalScale = finiteOr(from.clearcoatNormalScale, 1.0F);
    to.occlusionStrength = share(from.occlusionStrength);
    to.attenuationColor = shares(from.attenuationColor);
    to.attenuationDistance = within(from.attenuationDistance, 0.0F, farthest);
    for (const SlotRow& row : slotRows)
        addSlot(recipe, from, row);
    makeMatt(recipe);
    if (from.unlit)
        makeUnlit(recipe);
    return recipe;
}

} // namespace qor::adapter
