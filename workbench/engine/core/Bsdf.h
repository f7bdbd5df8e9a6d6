#pragma once

#include "workbench/engine/core/Sampling.h"

#include <array>

namespace qor::engine {

/// The ways in which a surface scatters light. Each has a depth of its own to count against.
enum class Lobe { diffuse, specular, clearcoat, transmission };
constexpr int lobeCount = 4;

/// A set of lobes.
class LobeSet {
public:
    static constexpr LobeSet all() { return LobeSet((1U << lobeCount) - 1U); }

    constexpr bool has(Lobe lobe) const {
        return ((bits_ >> static_cast<unsigned>(lobe)) & 1U) != 0;
    }

    constexpr LobeSet without(Lobe lobe) const {
        return LobeSet(bits_ & ~(1U << static_cast<unsigned>(lobe)));
    }

private:
    constexpr explicit LobeSet(unsigned bits) : bits_(bits) {}

    unsigned bits_;
};

/// A material at one place, its textures looked up.
struct SurfaceMaterial {
    Color baseColor{0.8F, 0.8F, 0.8F};
    float opacity = 1.0F;
    float metallic = 0.0F;
    float roughness = 0.5F;
    float ior = 1.5F;
    float specular = 1.0F;
    float transmission = 0.0F;
    bool thinWalled = false;
    float clearcoat = 0.0F;
    float clearcoatRoughness = 0.0F;
    Color emission;
    float occlusion = 1.0F; ///< share of ambient light that gets there
    Color absorption;       ///< per length, of the inside
};

/// What one lobe sends from a light's direction to the eye, and with which density it would have
/// chosen that direction.
struct LobeValue {
    Color value;      ///< BSDF times cosine
    float pdf = 0.0F; ///< without the probability of the lobe
};

/// A direction chosen by a lobe.
struct LobeSample {
    Vec3 direction;   ///< world
    Color weight;     ///< BSDF · cosine / density of the lobe; without the probability of the lobe
    float pdf = 0.0F; ///< density of the lobe; infinite for a mirror
    bool valid = false;
};

/// How light is scattered at one point towards one direction: a Lambertian base under a GGX
/// reflector (metal or dielectric), or a dielectric boundary, under a clear coat. No lobe gains
/// energy, and all of them together do not: what an upper layer reflects, the lower one does not
/// get. Multiple scattering between microfacets is made up for after Turquin, "Practical multiple
/// scattering compensation for microfacet models", 2019.
class Bsdf {
public:
    /// \p normal is the shading normal, a unit vector on the side of \p toEye; \p frontFace tells
    /// whether the light that leaves comes from outside.
    Bsdf(const SurfaceMaterial& material, const Vec3& normal, const Vec3& toEye, bool frontFace)
        : Bsdf(material, normal, normal, toEye, frontFace) {}

    /// With a normal of its own for the clear coat.
    Bsdf(const SurfaceMaterial& material,
         const Vec3& normal,
         const Vec3& coatNormal,
         const Vec3& toEye,
         bool frontFace);

    /// Share of the light of all lobes together that \p lobe returns, about; the probabilities to
    /// choose lobes by.
    float albedo(Lobe lobe) const { return albedo_[static_cast<std::size_t>(lobe)]; }

    /// Of the Lambertian base, exactly.
    const Color& diffuseAlbedo() const { return diffuse_; }

    /// Whether there is nothing but the Lambertian base.
    bool isDiffuseOnly() const { return diffuseOnly_; }

    /// Whether \p lobe is a perfect mirror, for which evaluate() is always black.
    bool isDelta(Lobe lobe) const;

    /// Roughness of the widest reflecting lobe, as a guess how much a ray's footprint opens.
    float alpha(Lobe lobe) const { return lobe == Lobe::clearcoat ? coatAlpha_ : alpha_; }

    /// \p lobe from world direction \p toLight.
    LobeValue evaluate(Lobe lobe, const Vec3& toLight) const;
    LobeSample sample(Lobe lobe, const Vec2& u) const;

    /// Whether facets both reflect and transmit, some more of this, some more of that.
    bool hasFacets() const { return dielectric_ > 0.0F && !isDelta(Lobe::specular); }

    /// Of the facet that sample() chooses by \p u for specular and transmission: share of what it
    /// returns that it reflects.
    float facetReflects(const Vec2& u) const;
    /// The same of the facet that sends light from \p toLight to the eye by \p lobe.
    float facetReflects(Lobe lobe, const Vec3& toLight) const;

    const Frame& frame() const { return frame_; }

private:
    void setUpCoat(const SurfaceMaterial& material);
    void setUpBase(const SurfaceMaterial& material);
    Color setUpGlass(const SurfaceMaterial& material, float glass);
    float reflectedShare(float cosTheta) const;
    Vec3 bendingFacet(const Vec3& wi) const;
    float paneReflectance(float cosTheta) const;
    Color coatFresnel(float cosTheta) const;
    Color specularFresnel(float cosTheta) const;
    LobeValue reflection(const Vec3& wi, float alpha, bool coat) const;
    LobeValue refraction(const Vec3& wi) const;
    LobeSample sampleReflection(const Vec2& u, float alpha, bool coat) const;
    LobeSample sampleRefraction(const Vec2& u) const;
    LobeSample sampleDiffuse(const Vec2& u) const;
    Color transmitted(float cosTheta) const;

    Frame frame_;
    Frame coatFrame_;
    Vec3 wo_;
    Vec3 coatWo_;
    std::array<float, lobeCount> albedo_{};
    Color diffuse_;
    Color f0_;
    Color f90_;
    Color compensation_{1.0F, 1.0F, 1.0F};
    Color tint_;
    float alpha_ = 1.0F;
    float coatAlpha_ = 1.0F;
    float coat_ = 0.0F;
    float coatCompensation_ = 1.0F;
    float below_ = 1.0F;      ///< what the coat lets through
    float dielectric_ = 0.0F; ///< share of the boundary that follows Fresnel's equations exactly
    float glassCompensation_ = 1.0F; ///< what single scattering at the boundary loses
    float eta_ = 1.0F;
    bool thin_ = false;
    bool diffuseOnly_ = false;
};

} // namespace qor::engine
