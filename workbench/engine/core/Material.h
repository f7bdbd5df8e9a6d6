#pragma once

#include "workbench/engine/core/Picture.h"

namespace qor::engine {

/// A picture laid over a surface by its texture coordinates: uv' = offset + scale · rotated uv.
struct Texture {
    PicturePtr picture; ///< none: the factor alone counts
    Vec2 offset;
    Vec2 scale{1.0F, 1.0F};
    float rotationRad = 0.0F;
};

/// What a surface does with light: the metallic-roughness model. Factors multiply what their
/// pictures hold. Values outside their range are refused by Scene::validate.
struct Material {
    Color baseColor{0.8F, 0.8F, 0.8F}; ///< 0..1: albedo, metal reflectance or tint of glass
    float opacity =
        1.0F; ///< 0..1, times the alpha of baseTexture: share of the surface that is there
    Texture baseTexture;

    float metallic = 0.0F;            ///< 0..1
    float roughness = 0.5F;           ///< 0..1, the square root of the microfacet slope width
    Texture metallicRoughnessTexture; ///< linear: green is roughness, blue is metallic

    float ior = 1.5F; ///< 1..4, index of refraction of the inside
    float specular =
        1.0F; ///< 0..1: strength of the dielectric reflection; 0 leaves a purely diffuse surface

    float transmission =
        0.0F; ///< 0..1: share of the light below the surface that is refracted, not diffused
    bool thinWalled = false; ///< transmits without bending: a pane without a thickness

    float clearcoat = 0.0F; ///< 0..1
    float clearcoatRoughness = 0.0F;

    Color emission; ///< radiance, ≥ 0
    Texture emissionTexture;

    Texture normalTexture; ///< linear, tangent space
    float normalScale = 1.0F;
};

} // namespace qor::engine
