#pragma once

#include "workbench/engine/core/LaneSampling.h"

namespace qor::engine {

/// Materials at eight places: what SurfaceMaterial has for opaque ones without a coat.
struct LaneMaterials {
    Vec3x8 baseColor;
    Float8 metallic{};
    Float8 roughness{};
    Float8 ior{};
    Float8 specular{};
    Float8 occlusion{};
};

/// How eight opaque surfaces without a coat scatter light: Bsdf's Lambertian base and its
/// reflector, lane by lane.
class LaneBsdf {
public:
    /// \p normal is the shading normal on the side of \p toEye.
    LaneBsdf(const LaneMaterials& materials, const Vec3x8& normal, const Vec3x8& toEye);

    /// What sends light from a direction to the eye, each BSDF times cosine.
    struct Values {
        Vec3x8 diffuse;
        Vec3x8 specular;
        Float8 specularPdf{};
    };

    struct Samples {
        Vec3x8 direction; ///< world
        Vec3x8 weight;    ///< BSDF · cosine / density of the lobe
        Float8 pdf{};     ///< density of the lobe; infinite for a mirror
        Int8 valid{};
    };

    const Vec3x8& diffuseAlbedo() const { return diffuse_; }

    const Float8& diffuseShare() const { return diffuseShare_; }

    const Float8& specularShare() const { return specularShare_; }

    /// The lanes that reflect.
    const Int8& shining() const { return shining_; }

    bool anyShines() const { return anyShines_; }

    /// Slope width of the reflector.
    const Float8& alpha() const { return alpha_; }

    Values evaluate(const Vec3x8& toLight) const;
    Samples sampleDiffuse(const Float8& u, const Float8& v) const;
    Samples sampleSpecular(const Float8& u, const Float8& v) const;

private:
    void setUpReflector(const LaneMaterials& materials, const Float8& grazing, const Float8& plain);
    Vec3x8 fresnel(const Float8& cosTheta) const;
    Vec3x8 sampleVisible(const Float8& u, const Float8& v) const;
    Float8 lambda(const Vec3x8& w) const;
    Float8 density(const Vec3x8& h) const;

    LaneFrames frames_;
    Vec3x8 wo_;
    Vec3x8 diffuse_;
    Vec3x8 f0_;
    Float8 f90_{};
    Vec3x8 compensation_;
    Float8 alpha_{};
    Float8 lambdaOut_{};
    Float8 diffuseShare_{};
    Float8 specularShare_{};
    Int8 shining_{};
    Int8 mirror_{};
    bool anyShines_ = false;
};

} // namespace qor::engine
