#pragma once

#include "workbench/document/product/Mesh.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace qor::document {

/// A decoded picture: red, green, blue, alpha, 8 bit each, top row first.
/// Whether it is sRGB-coded follows from its use: base colour and emission are, all others are
/// linear data.
struct Texture {
    std::string name;
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::vector<std::uint8_t> pixels; ///< width * height * 4

    bool operator==(const Texture&) const = default;
};

enum class TextureWrap : std::uint8_t { Repeat, MirroredRepeat, ClampToEdge };

/// What a texture of a material is multiplied with or perturbs. Channels are those of glTF:
/// metallic in blue, roughness and clearcoat roughness in green, occlusion, transmission and
/// clearcoat in red.
enum class TextureSlot : std::uint8_t {
    BaseColor,
    MetallicRoughness,
    Normal,
    Occlusion,
    Emission,
    Transmission,
    Clearcoat,
    ClearcoatRoughness,
    ClearcoatNormal
};

inline constexpr std::size_t textureSlotCount = 9;

/// A texture in a slot. A coordinate is scaled, then rotated counter-clockwise, then moved.
struct TextureUse {
    std::int32_t texture = none; ///< index into Product::textures
    std::int32_t uvSet = 0;      ///< 0 or 1
    std::array<double, 2> offset{0, 0};
    std::array<double, 2> scale{1, 1};
    double rotation = 0; ///< radians
    TextureWrap wrapU = TextureWrap::Repeat;
    TextureWrap wrapV = TextureWrap::Repeat;

    bool operator==(const TextureUse&) const = default;
};

enum class AlphaMode : std::uint8_t { Opaque, Mask, Blend };

/// Surface description in the metallic-roughness model of glTF 2.0. Colours are linear, not
/// sRGB-coded.
struct Material {
    std::string name;
    std::array<double, 4> baseColor{1, 1, 1, 1};
    double metallic = 0;
    double roughness = 0.5;
    double transmission = 0;
    double ior = 1.5;
    std::array<double, 3> emission{0, 0, 0}; ///< radiance, strength included
    double normalScale = 1;
    double occlusionStrength = 1;
    double clearcoat = 0;
    double clearcoatRoughness = 0;
    double clearcoatNormalScale = 1;
    double thicknessMm = 0;           ///< 0: thin walled
    double attenuationDistanceMm = 0; ///< 0: no absorption
    std::array<double, 3> attenuationColor{1, 1, 1};
    AlphaMode alphaMode = AlphaMode::Opaque;
    double alphaCutoff = 0.5;
    bool doubleSided = true;
    bool unlit = false;
    std::array<std::optional<TextureUse>, textureSlotCount> textures;

    [[nodiscard]] const std::optional<TextureUse>& texture(TextureSlot slot) const {
        return textures[static_cast<std::size_t>(slot)];
    }

    [[nodiscard]] std::optional<TextureUse>& texture(TextureSlot slot) {
        return textures[static_cast<std::size_t>(slot)];
    }

    bool operator==(const Material&) const = default;
};

} // namespace qor::document
