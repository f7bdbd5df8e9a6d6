#include "workbench/engine/core/Bsdf.h"

#include "workbench/engine/core/GlassAlbedo.h"
#include "workbench/engine/core/Microfacet.h"

#include <limits>

namespace qor::engine {

namespace {

constexpr float coatF0 = 0.04F;

float fifthPower(float x) {
    const float x2 = x * x;
    return x2 * x2 * x;
}

float schlick(float f0, float f90, float cosTheta) {
    return f0 + (f90 - f0) * fifthPower(std::clamp(1.0F - cosTheta, 0.0F, 1.0F));
}

Vec3 mirrored(const Vec3& wo) {
    return {-wo.x, -wo.y, wo.z};
}

/// \p toEye in \p frame, just above its horizon at least.
Vec3 eyeIn(const Frame& frame, const Vec3& toEye) {
    Vec3 wo = frame.toLocal(toEye);
    wo.z = std::max(wo.z, 1e-4F);
    return normalize(wo);
}

} // namespace

Bsdf::Bsdf(const SurfaceMaterial& material,
           const Vec3& normal,
           const Vec3& coatNormal,
           const Vec3& toEye,
           bool frontFace)
    : frame_(normal)
    , coatFrame_(material.clearcoat > 0.0F ? Frame(coatNormal) : frame_)
    , wo_(eyeIn(frame_, toEye))
    , coatWo_(material.clearcoat > 0.0F ? eyeIn(coatFrame_, toEye) : wo_)
    , alpha_(material.roughness * material.roughness)
    , coatAlpha_(material.clearcoatRoughness * material.clearcoatRoughness)
    , eta_(frontFace || material.thinWalled ? material.ior : 1.0F / material.ior)
    , thin_(material.thinWalled) {
    setUpCoat(material);
    setUpBase(material);
}

void Bsdf::setUpCoat(const SurfaceMaterial& material) {
    if (!(material.clearcoat > 0.0F))
        return;
    const DirectionalAlbedo e = directionalAlbedo(coatWo_.z, material.clearcoatRoughness);
    coatCompensation_ = 1.0F + coatF0 * (1.0F - e.whole()) / e.whole();
    coat_ = material.clearcoat;
    const float reflected = coat_ * (coatF0 * e.scale + e.bias) * coatCompensation_;
    below_ = 1.0F - reflected;
    albedo_[static_cast<std::size_t>(Lobe::clearcoat)] = reflected;
}

void Bsdf::setUpBase(const SurfaceMaterial& material) {
    const float root = (material.ior - 1.0F) / (material.ior + 1.0F);
    const float boundary = material.specular * root * root;
    const float boundaryGrazing = material.specular * std::min(1.0F, root * root * 50.0F);
    const float metal = material.metallic;
    const float glass = (1.0F - metal) * material.transmission;
    dielectric_ = material.transmission > 0.0F ? 1.0F - metal : 0.0F;
    diffuseOnly_ = metal == 0.0F && boundaryGrazing == 0.0F && glass == 0.0F && coat_ == 0.0F;
    if (diffuseOnly_) {
        diffuse_ = material.baseColor;
        albedo_[static_cast<std::size_t>(Lobe::diffuse)] = luminance(diffuse_);
        return;
    }
    const float plain = boundary * (1.0F - metal);
    const float plainGrazing = boundaryGrazing * (1.0F - metal);
    f0_ = material.baseColor * metal + Vec3{plain, plain, plain};
    f90_ = Vec3{1.0F, 1.0F, 1.0F} * (metal + plainGrazing);
    const DirectionalAlbedo e = directionalAlbedo(wo_.z, material.roughness);
    Color reflected;
    if (dielectric_ > 0.0F) {
        f0_ = material.baseColor * metal;
        f90_ = Vec3{metal, metal, metal};
        reflected = f0_ * e.scale + f90_ * e.bias + setUpGlass(material, glass);
    } else {
        compensation_ = Vec3{1.0F, 1.0F, 1.0F} + f0_ * ((1.0F - e.whole()) / e.whole());
        reflected = (f0_ * e.scale + f90_ * e.bias) * compensation_;
        const Color left =
            Vec3{1.0F, 1.0F, 1.0F} * (1.0F - metal) -
            Vec3{1.0F, 1.0F, 1.0F} * ((plain * e.scale + plainGrazing * e.bias) * compensation_.x);
        diffuse_ = material.baseColor *
                   Vec3{std::max(0.0F, left.x), std::max(0.0F, left.y), std::max(0.0F, left.z)} *
                   below_;
    }
    albedo_[static_cast<std::size_t>(Lobe::specular)] = luminance(reflected) * below_;
    albedo_[static_cast<std::size_t>(Lobe::diffuse)] = luminance(diffuse_);
}

/// The boundary of glass: one lobe up, one down, both by Fresnel's equations, with what single
/// scattering loses shared out among them. Returns what it reflects.
Color Bsdf::setUpGlass(const SurfaceMaterial& material, float glass) {
    const bool rough = alpha_ >= ggx::mirrorAlpha;
    float share = thin_ ? paneReflectance(wo_.z) : fresnelDielectric(wo_.z, eta_);
    if (rough && thin_) {
        glassCompensation_ = 1.0F / directionalAlbedo(wo_.z, material.roughness).whole();
    } else if (rough) {
        const GlassAlbedo albedo = glassAlbedo(wo_.z, material.roughness, eta_);
        glassCompensation_ = 1.0F / albedo.whole;
        share = albedo.reflected * glassCompensation_;
    }
    const Color& base = material.baseColor;
    // A solid is crossed at two boundaries, a pane at one.
    tint_ = (thin_ ? base : Color{std::sqrt(base.x), std::sqrt(base.y), std::sqrt(base.z)}) * glass;
    diffuse_ = base * ((dielectric_ - glass) * (1.0F - share) * below_);
    albedo_[static_cast<std::size_t>(Lobe::transmission)] =
        luminance(tint_) * (1.0F - share) * below_;
    return Vec3{1.0F, 1.0F, 1.0F} * (dielectric_ * share);
}

/// Of both sides of a pane together, light going to and fro in it.
float Bsdf::paneReflectance(float cosTheta) const {
    const float share = fresnelDielectric(cosTheta, eta_);
    return 2.0F * share / (1.0F + share);
}

bool Bsdf::isDelta(Lobe lobe) const {
    return lobe != Lobe::diffuse && alpha(lobe) < ggx::mirrorAlpha;
}

Color Bsdf::coatFresnel(float cosTheta) const {
    const float f = coat_ * schlick(coatF0, 1.0F, cosTheta) * coatCompensation_;
    return {f, f, f};
}

Color Bsdf::specularFresnel(float cosTheta) const {
    const float grazing = fifthPower(std::clamp(1.0F - cosTheta, 0.0F, 1.0F));
    Color f = (f0_ + (f90_ - f0_) * grazing) * compensation_;
    if (dielectric_ > 0.0F) {
        const float share = thin_ ? paneReflectance(cosTheta) : fresnelDielectric(cosTheta, eta_);
        f += Vec3{share, share, share} * (dielectric_ * glassCompensation_);
    }
    return f * below_;
}

LobeValue Bsdf::evaluate(Lobe lobe, const Vec3& toLight) const {
    const Vec3 wi = frame_.toLocal(toLight);
    switch (lobe) {
    case Lobe::diffuse: {
        const float cosTheta = std::max(wi.z, 0.0F) / pi;
        return {diffuse_ * cosTheta, cosTheta};
    }
    case Lobe::specular:
        return reflection(wi, alpha_, false);
    case Lobe::clearcoat:
        return reflection(coatFrame_.toLocal(toLight), coatAlpha_, true);
    case Lobe::transmission:
        return refraction(wi);
    }
    return {};
}

LobeValue Bsdf::reflection(const Vec3& wi, float alpha, bool coat) const {
    if (wi.z <= 0.0F || alpha < ggx::mirrorAlpha)
        return {};
    const Vec3& wo = coat ? coatWo_ : wo_;
    const Vec3 h = normalize(wo + wi);
    const float cosH = dot(wo, h);
    const float d = ggx::density(h, alpha) / (4.0F * wo.z);
    const float value = d * ggx::visibleFromBoth(wo, wi, alpha);
    const float pdf = d * ggx::visible(wo, alpha);
    return {(coat ? coatFresnel(cosH) : specularFresnel(cosH)) * value, pdf};
}

/// Colour of what passes a facet under \p cosTheta.
Color Bsdf::transmitted(float cosTheta) const {
    const float share = thin_ ? paneReflectance(cosTheta) : fresnelDielectric(cosTheta, eta_);
    return tint_ * ((1.0F - share) * glassCompensation_ * below_);
}

/// Method: Walter et al., "Microfacet Models for Refraction through Rough Surfaces", EGSR 2007.
LobeValue Bsdf::refraction(const Vec3& wi) const {
    if (wi.z >= 0.0F || alpha_ < ggx::mirrorAlpha)
        return {};
    if (thin_) {
        // A pane spreads light as its mirror image does.
        const Vec3 up{wi.x, wi.y, -wi.z};
        const Vec3 h = normalize(wo_ + up);
        const float d = ggx::density(h, alpha_) / (4.0F * wo_.z);
        return {transmitted(dot(wo_, h)) * (d * ggx::visibleFromBoth(wo_, up, alpha_)),
                d * ggx::visible(wo_, alpha_)};
    }
    const Vec3 h = bendingFacet(wi);
    const float cosO = dot(wo_, h);
    const float cosI = dot(wi, h);
    if (cosO <= 0.0F || cosI >= 0.0F)
        return {};
    const float denominator = cosO + eta_ * cosI;
    const float jacobian = eta_ * eta_ * std::abs(cosI) / (denominator * denominator);
    const float d = ggx::density(h, alpha_) * cosO * jacobian / wo_.z;
    const Vec3 below{wi.x, wi.y, -wi.z};
    return {transmitted(cosO) * (d * ggx::visibleFromBoth(wo_, below, alpha_)),
            d * ggx::visible(wo_, alpha_)};
}

/// The facet that refracts light from \p wi, below the surface, to the eye.
Vec3 Bsdf::bendingFacet(const Vec3& wi) const {
    const Vec3 h = thin_ ? normalize(wo_ + Vec3{wi.x, wi.y, -wi.z}) : normalize(wo_ + wi * eta_);
    return h.z < 0.0F ? -h : h;
}

float Bsdf::reflectedShare(float cosTheta) const {
    const float reflected = luminance(specularFresnel(cosTheta));
    const float whole = reflected + luminance(transmitted(cosTheta));
    return whole > 0.0F ? reflected / whole : 1.0F;
}

float Bsdf::facetReflects(const Vec2& u) const {
    return reflectedShare(dot(wo_, ggx::sampleVisible(wo_, alpha_, u)));
}

float Bsdf::facetReflects(Lobe lobe, const Vec3& toLight) const {
    const Vec3 wi = frame_.toLocal(toLight);
    const Vec3 h = lobe == Lobe::transmission ? bendingFacet(wi) : normalize(wo_ + wi);
    return reflectedShare(dot(wo_, h));
}

LobeSample Bsdf::sample(Lobe lobe, const Vec2& u) const {
    switch (lobe) {
    case Lobe::diffuse:
        return sampleDiffuse(u);
    case Lobe::specular:
        return sampleReflection(u, alpha_, false);
    case Lobe::clearcoat:
        return sampleReflection(u, coatAlpha_, true);
    case Lobe::transmission:
        return sampleRefraction(u);
    }
    return {};
}

LobeSample Bsdf::sampleDiffuse(const Vec2& u) const {
    const Vec3 wi = cosineHemisphere(u);
    return {frame_.toWorld(wi), diffuse_, wi.z / pi, wi.z > 0.0F};
}

LobeSample Bsdf::sampleReflection(const Vec2& u, float alpha, bool coat) const {
    const Vec3& wo = coat ? coatWo_ : wo_;
    const Frame& frame = coat ? coatFrame_ : frame_;
    const bool mirror = alpha < ggx::mirrorAlpha;
    const Vec3 h = mirror ? Vec3{0.0F, 0.0F, 1.0F} : ggx::sampleVisible(wo, alpha, u);
    const float cosH = dot(wo, h);
    const Vec3 wi = mirror ? mirrored(wo) : h * (2.0F * cosH) - wo;
    if (wi.z <= 0.0F)
        return {};
    const Color fresnel = coat ? coatFresnel(cosH) : specularFresnel(cosH);
    if (mirror)
        return {frame.toWorld(wi), fresnel, std::numeric_limits<float>::infinity(), true};
    const float seen = ggx::visible(wo, alpha);
    const float pdf = ggx::density(h, alpha) * seen / (4.0F * wo.z);
    return {frame.toWorld(wi), fresnel * (ggx::visibleFromBoth(wo, wi, alpha) / seen), pdf,
            pdf > 0.0F};
}

LobeSample Bsdf::sampleRefraction(const Vec2& u) const {
    const bool mirror = alpha_ < ggx::mirrorAlpha;
    const Vec3 h = mirror ? Vec3{0.0F, 0.0F, 1.0F} : ggx::sampleVisible(wo_, alpha_, u);
    const float cosH = dot(wo_, h);
    Vec3 wi;
    if (thin_) {
        wi = mirror ? mirrored(wo_) : h * (2.0F * cosH) - wo_;
        wi.z = -wi.z;
    } else if (!refract(wo_, h, eta_, wi)) {
        return {};
    }
    if (wi.z >= 0.0F)
        return {};
    const Color through = transmitted(cosH);
    if (mirror)
        return {frame_.toWorld(wi), through, std::numeric_limits<float>::infinity(), true};
    const Vec3 below{wi.x, wi.y, -wi.z};
    const float weight = ggx::visibleFromBoth(wo_, below, alpha_) / ggx::visible(wo_, alpha_);
    const float pdf = refraction(wi).pdf;
    return {frame_.toWorld(wi), through * weight, pdf, pdf > 0.0F};
}

} // namespace qor::engine
