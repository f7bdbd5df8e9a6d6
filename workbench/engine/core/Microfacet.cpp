#include "workbench/engine/core/Microfacet.h"

#include "workbench/engine/core/Sampler.h"

#include <array>
#include <memory>

namespace qor::engine {

namespace ggx {

namespace {

/// Smith's Λ.
float lambda(const Vec3& w, float alpha) {
    const float cos2 = w.z * w.z;
    if (cos2 <= 0.0F)
        return 1e12F;
    const float tan2 = std::max(0.0F, 1.0F - cos2) / cos2;
    return 0.5F * (std::sqrt(1.0F + alpha * alpha * tan2) - 1.0F);
}

} // namespace

float density(const Vec3& h, float alpha) {
    const float a2 = alpha * alpha;
    // 1 + z²(α² - 1) cancels near the pole: x² + y² + α² z² is the same without it.
    const float d = h.x * h.x + h.y * h.y + a2 * h.z * h.z;
    return h.z > 0.0F ? a2 / (pi * d * d) : 0.0F;
}

float visible(const Vec3& w, float alpha) {
    return 1.0F / (1.0F + lambda(w, alpha));
}

float visibleFromBoth(const Vec3& wo, const Vec3& wi, float alpha) {
    return 1.0F / (1.0F + lambda(wo, alpha) + lambda(wi, alpha));
}

Vec3 sampleVisible(const Vec3& wo, float alpha, const Vec2& u) {
    const Vec3 stretched = normalize({alpha * wo.x, alpha * wo.y, wo.z});
    const float side = stretched.x * stretched.x + stretched.y * stretched.y;
    const Vec3 t1 = side > 0.0F ? Vec3{-stretched.y, stretched.x, 0.0F} / std::sqrt(side)
                                : Vec3{1.0F, 0.0F, 0.0F};
    const Vec3 t2 = cross(stretched, t1);
    const float r = std::sqrt(u.x);
    const float phi = 2.0F * pi * u.y;
    const float p1 = r * std::cos(phi);
    const float s = 0.5F * (1.0F + stretched.z);
    const float p2 = (1.0F - s) * std::sqrt(std::max(0.0F, 1.0F - p1 * p1)) + s * r * std::sin(phi);
    const Vec3 n =
        t1 * p1 + t2 * p2 + stretched * std::sqrt(std::max(0.0F, 1.0F - p1 * p1 - p2 * p2));
    return normalize({alpha * n.x, alpha * n.y, std::max(1e-6F, n.z)});
}

} // namespace ggx

namespace {

constexpr int tableSize = albedoTableSize;

DirectionalAlbedo integrate(float cosTheta, float roughness) {
    constexpr std::uint32_t samples = 256;
    const float alpha = std::max(roughness * roughness, 1e-4F);
    const Vec3 wo{std::sqrt(std::max(0.0F, 1.0F - cosTheta * cosTheta)), 0.0F, cosTheta};
    DirectionalAlbedo sum{0.0F, 0.0F};
    for (std::uint32_t i = 0; i < samples; ++i) {
        const Vec3 h = ggx::sampleVisible(wo, alpha, scrambledPoint(i, 1));
        const float cosH = dot(wo, h);
        const Vec3 wi = h * (2.0F * cosH) - wo;
        if (wi.z <= 0.0F)
            continue;
        const float weight = ggx::visibleFromBoth(wo, wi, alpha) / ggx::visible(wo, alpha);
        const float slant = std::max(0.0F, 1.0F - cosH);
        const float grazing = slant * slant * slant * slant * slant;
        sum.scale += weight * (1.0F - grazing);
        sum.bias += weight * grazing;
    }
    return {sum.scale / samples, sum.bias / samples};
}

DirectionalAlbedo mix(const DirectionalAlbedo& a, const DirectionalAlbedo& b, float t) {
    return {a.scale + (b.scale - a.scale) * t, a.bias + (b.bias - a.bias) * t};
}

} // namespace

const AlbedoTable& albedoTable() {
    static const auto table = [] {
        auto result = std::make_unique<AlbedoTable>();
        for (int r = 0; r < tableSize; ++r)
            for (int c = 0; c < tableSize; ++c) {
                const float root = static_cast<float>(c) / (tableSize - 1);
                (*result)[static_cast<std::size_t>(r)][static_cast<std::size_t>(c)] = integrate(
                    std::max(root * root, 1e-3F), static_cast<float>(r) / (tableSize - 1));
            }
        return result;
    }();
    return *table;
}

DirectionalAlbedo directionalAlbedo(float cosTheta, float roughness) {
    const AlbedoTable& table = albedoTable();
    const float c = std::sqrt(std::clamp(cosTheta, 0.0F, 1.0F)) * (tableSize - 1);
    const float r = std::clamp(roughness, 0.0F, 1.0F) * (tableSize - 1);
    const auto c0 = static_cast<std::size_t>(std::min(c, tableSize - 2.0F));
    const auto r0 = static_cast<std::size_t>(std::min(r, tableSize - 2.0F));
    const float cRest = c - static_cast<float>(c0);
    return mix(mix(table[r0][c0], table[r0][c0 + 1], cRest),
               mix(table[r0 + 1][c0], table[r0 + 1][c0 + 1], cRest), r - static_cast<float>(r0));
}

float fresnelDielectric(float cosTheta, float eta) {
    const float c = std::clamp(std::abs(cosTheta), 0.0F, 1.0F);
    const float sinT2 = (1.0F - c * c) / (eta * eta);
    if (sinT2 >= 1.0F)
        return 1.0F;
    const float cosT = std::sqrt(1.0F - sinT2);
    const float parallel = (eta * c - cosT) / (eta * c + cosT);
    const float perpendicular = (c - eta * cosT) / (c + eta * cosT);
    return 0.5F * (parallel * parallel + perpendicular * perpendicular);
}

bool refract(const Vec3& w, const Vec3& h, float eta, Vec3& refracted) {
    const float c = dot(w, h);
    const float sinT2 = std::max(0.0F, 1.0F - c * c) / (eta * eta);
    if (sinT2 >= 1.0F)
        return false;
    const float cosT = std::sqrt(1.0F - sinT2);
    refracted = normalize(w * (-1.0F / eta) + h * (c / eta - cosT));
    return true;
}

} // namespace qor::engine
