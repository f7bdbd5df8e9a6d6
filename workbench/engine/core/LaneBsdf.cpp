#include "workbench/engine/core/LaneBsdf.h"

#include "workbench/engine/core/Microfacet.h"

#include <limits>

namespace qor::engine {

namespace {

constexpr float infinity = std::numeric_limits<float>::infinity();

Float8 within01(const Float8& value) {
    return least(greatest(value, Float8{}), eight(1.0F));
}

/// directionalAlbedo(), lane by lane.
struct LaneAlbedos {
    Float8 scale;
    Float8 bias;

    LaneAlbedos(const Float8& cosTheta, const Float8& roughness) {
        static_assert(sizeof(DirectionalAlbedo) == 2 * sizeof(float));
        constexpr int size = albedoTableSize;
        const float* table = &albedoTable().front().front().scale;
        const Float8 c = squareRoot(within01(cosTheta)) * (size - 1);
        const Float8 r = within01(roughness) * (size - 1);
        const Int8 column = wholePart(least(c, eight(size - 2.0F)));
        const Int8 row = wholePart(least(r, eight(size - 2.0F)));
        const Float8 across = c - numberOf(column);
        const Float8 down = r - numberOf(row);
        const Int8 at = row * size + column;
        const auto mixed = [&](const float* values) {
            const Float8 above =
                mix(entriesOf<2>(values, at), entriesOf<2>(values + 2, at), across);
            const Float8 below = mix(entriesOf<2>(values + 2 * size, at),
                                     entriesOf<2>(values + 2 * size + 2, at), across);
            return mix(above, below, down);
        };
        scale = mixed(table);
        bias = mixed(table + 1);
    }

    static Float8 mix(const Float8& a, const Float8& b, const Float8& t) { return a + (b - a) * t; }
};

} // namespace

LaneBsdf::LaneBsdf(const LaneMaterials& m, const Vec3x8& normal, const Vec3x8& toEye)
    : frames_(normal), alpha_(m.roughness * m.roughness) {
    const Float8 root = (m.ior - 1.0F) / (m.ior + 1.0F);
    const Float8 boundary = m.specular * root * root;
    const Float8 grazing = m.specular * least(root * root * 50.0F, eight(1.0F));
    shining_ = (m.metallic != 0.0F) | (grazing != 0.0F);
    anyShines_ = bitsOf(shining_) != 0;
    diffuse_ = m.baseColor;
    if (anyShines_) {
        wo_ = frames_.toLocal(toEye);
        wo_.z = greatest(wo_.z, eight(1e-4F));
        wo_ = normalize(wo_);
        setUpReflector(m, grazing, boundary);
    }
    diffuseShare_ = luminance(diffuse_);
}

void LaneBsdf::setUpReflector(const LaneMaterials& m,
                              const Float8& grazing,
                              const Float8& boundary) {
    const Float8 rest = 1.0F - m.metallic;
    const Float8 plain = boundary * rest;
    const Float8 plainGrazing = grazing * rest;
    f0_ = m.baseColor * m.metallic + Vec3x8(plain, plain, plain);
    f90_ = m.metallic + plainGrazing;
    mirror_ = alpha_ < ggx::mirrorAlpha;
    lambdaOut_ = lambda(wo_);
    const LaneAlbedos e(wo_.z, m.roughness);
    const Float8 whole = e.scale + e.bias;
    const Float8 lost = (1.0F - whole) / whole;
    compensation_ = f0_ * lost + Vec3x8(Vec3{1.0F, 1.0F, 1.0F});
    const Float8 bias = f90_ * e.bias;
    const Vec3x8 reflected = (f0_ * e.scale + Vec3x8(bias, bias, bias)) * compensation_;
    const Float8 left = rest - (plain * e.scale + plainGrazing * e.bias) * compensation_.x;
    diffuse_ = select(shining_, m.baseColor * greatest(left, Float8{}), diffuse_);
    specularShare_ = shining_ ? luminance(reflected) : Float8{};
}

Vec3x8 LaneBsdf::fresnel(const Float8& cosTheta) const {
    const Float8 x = within01(1.0F - cosTheta);
    const Float8 grazing = x * x * x * x * x;
    const Vec3x8 f90(f90_, f90_, f90_);
    return (f0_ + (f90 - f0_) * grazing) * compensation_;
}

/// Smith's Λ.
Float8 LaneBsdf::lambda(const Vec3x8& w) const {
    const Float8 cos2 = w.z * w.z;
    const Float8 tan2 = greatest(1.0F - cos2, Float8{}) / cos2;
    const Float8 value = 0.5F * (squareRoot(1.0F + alpha_ * alpha_ * tan2) - 1.0F);
    return cos2 > 0.0F ? value : eight(1e12F);
}

/// See ggx::density.
Float8 LaneBsdf::density(const Vec3x8& h) const {
    const Float8 a2 = alpha_ * alpha_;
    const Float8 d = h.x * h.x + h.y * h.y + a2 * h.z * h.z;
    return h.z > 0.0F ? a2 / (pi * d * d) : Float8{};
}

LaneBsdf::Values LaneBsdf::evaluate(const Vec3x8& toLight) const {
    Values values;
    if (!anyShines_) {
        values.diffuse = diffuse_ * (greatest(dot(toLight, frames_.z), Float8{}) * (1.0F / pi));
        return values;
    }
    const Vec3x8 wi = frames_.toLocal(toLight);
    values.diffuse = diffuse_ * (greatest(wi.z, Float8{}) * (1.0F / pi));
    const Int8 seen = (wi.z > 0.0F) & shining_ & ~mirror_;
    if (bitsOf(seen) == 0)
        return values;
    const Vec3x8 h = normalize(wo_ + wi);
    const Float8 d = density(h) / (4.0F * wo_.z);
    const Float8 both = 1.0F / (1.0F + lambdaOut_ + lambda(wi));
    values.specular = select(seen, fresnel(dot(wo_, h)) * (d * both), Vec3x8{});
    values.specularPdf = seen ? d / (1.0F + lambdaOut_) : Float8{};
    return values;
}

LaneBsdf::Samples LaneBsdf::sampleDiffuse(const Float8& u, const Float8& v) const {
    const Vec3x8 wi = cosineHemisphere(u, v);
    return {frames_.toWorld(wi), diffuse_, wi.z * (1.0F / pi), wi.z > 0.0F};
}

/// See ggx::sampleVisible.
Vec3x8 LaneBsdf::sampleVisible(const Float8& u, const Float8& v) const {
    const Vec3x8 stretched = normalize(Vec3x8{alpha_ * wo_.x, alpha_ * wo_.y, wo_.z});
    const Float8 side = stretched.x * stretched.x + stretched.y * stretched.y;
    const Int8 slanted = side > 0.0F;
    const Float8 perSide = 1.0F / squareRoot(slanted ? side : eight(1.0F));
    const Vec3x8 t1{slanted ? -stretched.y * perSide : eight(1.0F),
                    slanted ? stretched.x * perSide : Float8{}, Float8{}};
    const Vec3x8 t2 = cross(stretched, t1);
    const Float8 r = squareRoot(u);
    Float8 cosine;
    Float8 sine;
    turnedBy(v, cosine, sine);
    const Float8 p1 = r * cosine;
    const Float8 s = 0.5F * (1.0F + stretched.z);
    const Float8 p2 = (1.0F - s) * squareRoot(greatest(1.0F - p1 * p1, Float8{})) + s * r * sine;
    const Vec3x8 n =
        t1 * p1 + t2 * p2 + stretched * squareRoot(greatest(1.0F - p1 * p1 - p2 * p2, Float8{}));
    return normalize(Vec3x8{alpha_ * n.x, alpha_ * n.y, greatest(n.z, eight(1e-6F))});
}

LaneBsdf::Samples LaneBsdf::sampleSpecular(const Float8& u, const Float8& v) const {
    const Vec3x8 h = select(mirror_, Vec3x8(Vec3{0.0F, 0.0F, 1.0F}), sampleVisible(u, v));
    const Float8 cosH = dot(wo_, h);
    const Vec3x8 wi = h * (2.0F * cosH) - wo_;
    const Float8 seen = 1.0F / (1.0F + lambdaOut_);
    const Float8 both = 1.0F / (1.0F + lambdaOut_ + lambda(wi));
    const Float8 pdf = density(h) * seen / (4.0F * wo_.z);
    const Float8 share = mirror_ ? eight(1.0F) : both / seen;
    return {frames_.toWorld(wi), fresnel(cosH) * share, mirror_ ? eight(infinity) : pdf,
            (wi.z > 0.0F) & (mirror_ | (pdf > 0.0F)) & shining_};
}

} // namespace qor::engine
