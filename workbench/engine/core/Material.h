#pragma once

#include "workbench/engine/core/Picture.h"

namespace qor::engine {

/// A picture laid over a surface by its texture coordinates: uv' = offset + scaled uv, turned
/// counter-clockwise as the picture is looked at.
struct Texture {
    PicturePtr picture; ///< none: the factor alone counts
    Vec2 offset;
    Vec2 scale{1.0F, 1.0F};
    float rotationRad = 0.0F;
    int uvSet = 0; ///< 0 or 1: MeshData::textureCoordinates or secondTextureCoordinates
    TextureWrap wrapU = TextureWrap::repeat;
    TextureWrap wrapV = TextureWrap::repeat;
};

/// What opacity does.
enum class AlphaMode {
    blend,  ///< that share of the surface is there
    opaque, ///< nothing
    mask,   ///< all of the surface is there where it is at least the cutoff, else nothing
};

/// What a surface does with light: the metallic-roughness model. Factors multiply what their
/// pictures hold. Values outside their range are refused by Scene::validate. Pictures are read
/// linearly unless it is said otherwise.
struct Material {
    Color baseColor{0.8F, 0.8F, 0.8F}; ///< 0..1: albedo, metal reflectance or tint of glass
    float opacity =
        1.0F; ///< 0..1, times the alpha of baseTexture: share of the surface that is there
    Texture baseTexture; ///< sRGB

    float metallic = 0.0F;            ///< 0..1
    float roughness = 0.5F;           ///< 0..1, the square root of the microfacet slope width
    Texture metallicRoughnessTexture; ///< green is roughness, blue is metallic

    float ior = 1.5F; ///< 1..4, index of refraction of the inside
    float specular =
        1.0F; ///< 0..1: strength of the dielectric reflection; 0 leaves a purely diffuse surface

    float transmission =
        0.0F; ///< 0..1: share of the light below the surface that is refracted, not diffused
    bool thinWalled = false; ///< transmits without bending: a pane without a thickness

    float clearcoat = 0.0F; ///< 0..1
    float clearcoatRoughness = 0.0F;

    Color emission;          ///< radiance, ≥ 0
    Texture emissionTexture; ///< sRGB

    Texture normalTexture; ///< tangent space, +y upwards in the picture
    float normalScale = 1.0F;

    AlphaMode alphaMode = AlphaMode::blend;
    float alphaCutoff = 0.5F; ///< ≥ 0, of mask

    Texture transmissionTexture;       ///< red
    Texture clearcoatTexture;          ///< red
    Texture clearcoatRoughnessTexture; ///< green
    /// Of the coat alone, tangent space. Without it the coat is smooth whatever normalTexture says.
    Texture clearcoatNormalTexture;
    float clearcoatNormalScale = 1.0F;
    Texture occlusionTexture;       ///< red: share of the scene's ambient light that gets there
    float occlusionStrength = 1.0F; ///< 0..1

    /// What is left of white light after attenuationDistance in the inside; not of thin walls.
    Color attenuationColor{1.0F, 1.0F, 1.0F}; ///< 0..1
    float attenuationDistance = 0.0F;         ///< scene units; 0: nothing is absorbed
};

/// Calls \p visit with each texture of \p material (const or not).
template <typename AnyMaterial, typename Visit>
void forEachTexture(AnyMaterial& material, Visit&& visit) {
    visit(material.baseTexture);
    visit(material.metallicRoughnessTexture);
    visit(material.emissionTexture);
    visit(material.normalTexture);
    visit(material.transmissionTexture);
    visit(material.clearcoatTexture);
    visit(material.clearcoatRoughnessTexture);
    visit(material.clearcoatNormalTexture);
    visit(material.occlusionTexture);
}

} // namespace qor::engine
