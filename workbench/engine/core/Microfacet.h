#pragma once

#include "workbench/engine/core/Vec.h"

#include <array>

namespace qor::engine {

/// Rough surfaces after Trowbridge and Reitz (GGX), isotropic. All directions are unit vectors in
/// the frame of the normal, pointing away from the surface. alpha is the squared roughness.
namespace ggx {

/// Below this slope width a reflector is a perfect mirror.
constexpr float mirrorAlpha = 4e-4F;

/// Density of microfacet normals.
float density(const Vec3& h, float alpha);
/// Share of facets seen from \p w.
float visible(const Vec3& w, float alpha);
/// Share of facets seen from both, correlated by height (Heitz 2014).
float visibleFromBoth(const Vec3& wo, const Vec3& wi, float alpha);
/// A facet seen from \p wo, which has z > 0. Method: Heitz, "Sampling the GGX Distribution of
/// Visible Normals", JCGT 7(4), 2018.
Vec3 sampleVisible(const Vec3& wo, float alpha, const Vec2& u);

} // namespace ggx

/// What a rough reflector with Fresnel factor f0 + (f90 - f0)(1 - cos)^5 sends back in single
/// scattering, in all directions together: f0 · scale + f90 · bias.
struct DirectionalAlbedo {
    float scale = 1.0F;
    float bias = 0.0F;

    /// With a Fresnel factor of 1.
    float whole() const { return scale + bias; }
};

constexpr int albedoTableSize = 32;
/// Rows go with the roughness, columns with the square root of the cosine, because most happens at
/// grazing angles.
using AlbedoTable = std::array<std::array<DirectionalAlbedo, albedoTableSize>, albedoTableSize>;

/// Computed on first use.
const AlbedoTable& albedoTable();

/// Between the entries of the table; \p cosTheta and \p roughness in 0..1.
DirectionalAlbedo directionalAlbedo(float cosTheta, float roughness);

/// Reflectance of the boundary of a dielectric for unpolarised light. \p eta is the index behind
/// the surface over the one before it; 1 for total reflection.
float fresnelDielectric(float cosTheta, float eta);

/// Refracts \p w (away from the surface, \p cosTheta = dot(w, h) > 0) at a facet \p h; \p eta as
/// above. False on total reflection.
bool refract(const Vec3& w, const Vec3& h, float eta, Vec3& refracted);

} // namespace qor::engine
