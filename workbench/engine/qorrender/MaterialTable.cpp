#include "workbench/engine/qorrender/MaterialTable.h"

#include "workbench/engine/qorrender/Failure.h"

#include <algorithm>
#include <map>
#include <tuple>

namespace qor::render {

namespace {

using document::AlphaMode;
using document::TextureSlot;
using engine::PictureEncoding;

engine::Color colorOf(const double* values) {
    return {static_cast<float>(values[0]), static_cast<float>(values[1]),
            static_cast<float>(values[2])};
}

float share(double value) {
    return static_cast<float>(std::clamp(value, 0.0, 1.0));
}

engine::Color shares(const std::array<double, 4>& values) {
    return {share(values[0]), share(values[1]), share(values[2])};
}

/// What a picture's alpha is made into.
struct AlphaUse {
    AlphaMode mode = AlphaMode::Blend; ///< Blend leaves it
    double cutoff = 0;                 ///< Mask: below this nothing is there
};

class Materials {
public:
    explicit Materials(const document::Product& product) : product_(product) {}

    engine::Material make(const document::Material& from) {
        const AlphaUse alpha{from.alphaMode, from.alphaCutoff / std::max(from.baseColor[3], 1e-6)};
        engine::Material to;
        to.baseColor = shares(from.baseColor);
        to.opacity = from.alphaMode == AlphaMode::Blend ? share(from.baseColor[3]) : 1.0F;
        to.baseTexture = use(from, TextureSlot::BaseColor, PictureEncoding::srgb, alpha);
        to.metallic = share(from.metallic);
        to.roughness = share(from.roughness);
        to.metallicRoughnessTexture =
            use(from, TextureSlot::MetallicRoughness, PictureEncoding::linear, {});
        to.ior = static_cast<float>(std::clamp(from.ior, 1.0, 4.0));
        to.transmission = share(from.transmission);
        to.thinWalled = from.thicknessMm <= 0;
        to.clearcoat = share(from.clearcoat);
        to.clearcoatRoughness = share(from.clearcoatRoughness);
        to.emission = colorOf(from.emission.data());
        to.emissionTexture =
            use(from, TextureSlot::Emission, PictureEncoding::srgb, {AlphaMode::Opaque});
        to.normalTexture = use(from, TextureSlot::Normal, PictureEncoding::linear, {});
        to.normalScale = static_cast<float>(from.normalScale);
        return from.unlit ? shiningOnly(to) : to;
    }

private:
    /// An unlit material shows its colour whatever the light.
    static engine::Material shiningOnly(engine::Material material) {
        material.emission = material.baseColor;
        material.emissionTexture = material.baseTexture;
        material.baseColor = {};
        material.specular = 0.0F;
        material.metallic = 0.0F;
        material.clearcoat = 0.0F;
        material.transmission = 0.0F;
        return material;
    }

    engine::Texture use(const document::Material& material,
                        TextureSlot slot,
                        PictureEncoding encoding,
                        const AlphaUse& alpha) {
        const auto& from = material.texture(slot);
        if (!from || from->texture == document::none)
            return {};
        engine::Texture to;
        to.picture = picture(from->texture, encoding, alpha);
        to.offset = {static_cast<float>(from->offset[0]), static_cast<float>(from->offset[1])};
        to.scale = {static_cast<float>(from->scale[0]), static_cast<float>(from->scale[1])};
        to.rotationRad = static_cast<float>(from->rotation);
        return to;
    }

    engine::PicturePtr
    picture(std::int32_t index, PictureEncoding encoding, const AlphaUse& alpha) {
        engine::PicturePtr& known = pictures_[{index, encoding, alpha.mode, alpha.cutoff}];
        if (!known)
            known =
                makePicture(product_.textures[static_cast<std::size_t>(index)], encoding, alpha);
        return known;
    }

    static engine::PicturePtr
    makePicture(const document::Texture& from, PictureEncoding encoding, const AlphaUse& alpha) {
        std::vector<std::uint8_t> pixels = from.pixels;
        if (alpha.mode != AlphaMode::Blend)
            for (std::size_t i = 3; i < pixels.size(); i += 4)
                pixels[i] =
                    alpha.mode == AlphaMode::Opaque || pixels[i] >= alpha.cutoff * 255 ? 255 : 0;
        auto made =
            engine::Picture::create(static_cast<int>(from.width), static_cast<int>(from.height),
                                    std::move(pixels), encoding);
        if (!made)
            throw Failure("texture \"" + from.name + "\": " + made.error().message);
        return made.value();
    }

    const document::Product& product_;
    std::map<std::tuple<std::int32_t, PictureEncoding, AlphaMode, double>, engine::PicturePtr>
        pictures_;
};

} // namespace

std::vector<engine::Material> makeMaterials(const document::Product& product) {
    Materials maker(product);
    std::vector<engine::Material> materials;
    for (const document::Material& material : product.materials)
        materials.push_back(maker.make(material));
    materials.emplace_back();
    return materials;
}

} // namespace qor::render
