#include "workbench/engine/core/GlassAlbedo.h"

#include "workbench/engine/core/Microfacet.h"
#include "workbench/engine/core/Sampler.h"

#include <array>
#include <mutex>

namespace qor::engine {

namespace {

constexpr int cosines = 24;
constexpr int roughnesses = 16;
/// Slices go with (n - 1) / (n + 1) of the index n, the root of the reflectance at right angles.
constexpr int slices = 14;
constexpr float sliceStep = 0.05F;

GlassAlbedo mix(const GlassAlbedo& a, const GlassAlbedo& b, float t) {
    return {a.reflected + (b.reflected - a.reflected) * t, a.whole + (b.whole - a.whole) * t};
}

GlassAlbedo integrate(float cosTheta, float roughness, float eta) {
    constexpr std::uint32_t samples = 256;
    const float alpha = std::max(roughness * roughness, 1e-4F);
    const Vec3 wo{std::sqrt(std::max(0.0F, 1.0F - cosTheta * cosTheta)), 0.0F, cosTheta};
    const float seen = ggx::visible(wo, alpha);
    GlassAlbedo sum{0.0F, 0.0F};
    for (std::uint32_t i = 0; i < samples; ++i) {
        const Vec3 h = ggx::sampleVisible(wo, alpha, scrambledPoint(i, 11));
        const float cosH = dot(wo, h);
        const float share = fresnelDielectric(cosH, eta);
        const Vec3 up = h * (2.0F * cosH) - wo;
        if (up.z > 0.0F)
            sum.reflected += share * ggx::visibleFromBoth(wo, up, alpha) / seen;
        Vec3 down;
        if (refract(wo, h, eta, down) && down.z < 0.0F)
            sum.whole +=
                (1.0F - share) * ggx::visibleFromBoth(wo, {down.x, down.y, -down.z}, alpha) / seen;
    }
    return {sum.reflected / samples, (sum.reflected + sum.whole) / samples};
}

/// One index of refraction, from one side.
class Slice {
public:
    GlassAlbedo at(float cosTheta, float roughness, float eta) {
        std::call_once(built_, [&] { build(eta); });
        // Most happens at grazing angles.
        const float c = std::sqrt(std::clamp(cosTheta, 0.0F, 1.0F)) * (cosines - 1);
        const float r = std::clamp(roughness, 0.0F, 1.0F) * (roughnesses - 1);
        const auto c0 = static_cast<std::size_t>(std::min(c, cosines - 2.0F));
        const auto r0 = static_cast<std::size_t>(std::min(r, roughnesses - 2.0F));
        const float cRest = c - static_cast<float>(c0);
        return mix(mix(table_[r0][c0], table_[r0][c0 + 1], cRest),
                   mix(table_[r0 + 1][c0], table_[r0 + 1][c0 + 1], cRest),
                   r - static_cast<float>(r0));
    }

private:
    void build(float eta) {
        for (int r = 0; r < roughnesses; ++r)
            for (int c = 0; c < cosines; ++c) {
                const float root = static_cast<float>(c) / (cosines - 1);
                table_[static_cast<std::size_t>(r)][static_cast<std::size_t>(c)] = integrate(
                    std::max(root * root, 1e-3F), static_cast<float>(r) / (roughnesses - 1), eta);
            }
    }

    std::once_flag built_;
    std::array<std::array<GlassAlbedo, cosines>, roughnesses> table_;
};

} // namespace

GlassAlbedo glassAlbedo(float cosTheta, float roughness, float eta) {
    static std::array<std::array<Slice, slices>, 2> tables;
    const bool entering = eta >= 1.0F;
    const float index = entering ? eta : 1.0F / eta;
    const float place =
        std::clamp((index - 1.0F) / (index + 1.0F), 0.0F, (slices - 1.01F) * sliceStep) / sliceStep;
    const auto first = static_cast<std::size_t>(place);
    const auto at = [&](std::size_t slice) {
        const float root = static_cast<float>(slice) * sliceStep;
        const float n = (1.0F + root) / (1.0F - root);
        return tables[entering ? 1 : 0][slice].at(cosTheta, roughness, entering ? n : 1.0F / n);
    };
    return mix(at(first), at(first + 1), place - static_cast<float>(first));
}

} // namespace qor::engine
