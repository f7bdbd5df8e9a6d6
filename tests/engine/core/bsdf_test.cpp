#include "workbench/engine/core/Bsdf.h"
#include "workbench/engine/core/Microfacet.h"
#include "workbench/engine/core/Sampler.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace qor::engine {
namespace {

const Vec3 up{0.0F, 0.0F, 1.0F};

Vec3 directionAt(float cosTheta, float phi = 0.3F) {
    const float s = std::sqrt(1.0F - cosTheta * cosTheta);
    return {s * std::cos(phi), s * std::sin(phi), cosTheta};
}

struct Case {
    std::string name;
    SurfaceMaterial material;
    float leastReturned; ///< of white light under 60°, 0 where nothing is promised
};

SurfaceMaterial
material(float metallic, float roughness, float transmission, float clearcoat, float specular) {
    SurfaceMaterial m;
    m.baseColor = {1.0F, 1.0F, 1.0F};
    m.metallic = metallic;
    m.roughness = roughness;
    m.transmission = transmission;
    m.clearcoat = clearcoat;
    m.clearcoatRoughness = 0.3F;
    m.specular = specular;
    return m;
}

const std::vector<Case>& cases() {
    static const std::vector<Case> all = {
        {"diffuse", material(0, 0.5F, 0, 0, 0), 0.999F},
        {"smooth plastic", material(0, 0.1F, 0, 0, 1), 0.985F},
        {"plastic", material(0, 0.5F, 0, 0, 1), 0.985F},
        {"rough plastic", material(0, 1.0F, 0, 0, 1), 0.985F},
        {"mirror", material(1, 0.0F, 0, 0, 1), 0.985F},
        {"polished metal", material(1, 0.2F, 0, 0, 1), 0.985F},
        {"metal", material(1, 0.5F, 0, 0, 1), 0.985F},
        {"rough metal", material(1, 1.0F, 0, 0, 1), 0.985F},
        {"half metal", material(0.5F, 0.4F, 0, 0, 1), 0.975F},
        {"glass", material(0, 0.0F, 1, 0, 1), 0.999F},
        {"frosted glass", material(0, 0.5F, 1, 0, 1), 0.985F},
        {"half glass", material(0, 0.2F, 0.5F, 0, 1), 0.985F},
        {"ground glass", material(0, 1.0F, 1, 0, 1), 0.985F},
        {"half ground glass", material(0, 0.8F, 0.5F, 0, 1), 0.985F},
        {"lacquered", material(0, 0.6F, 0, 1, 1), 0.985F},
        {"lacquered metal", material(1, 0.6F, 0, 1, 1), 0.985F},
    };
    return all;
}

/// Light of all lobes together, and of one, when white light comes from everywhere: by sampling
/// each lobe alone.
float returned(const Bsdf& bsdf, Lobe lobe) {
    constexpr std::uint32_t samples = 4096;
    double sum = 0.0;
    for (std::uint32_t i = 0; i < samples; ++i) {
        const LobeSample s = bsdf.sample(lobe, scrambledPoint(i, 77));
        if (s.valid)
            sum += luminance(s.weight);
    }
    return static_cast<float>(sum / samples);
}

float returned(const Bsdf& bsdf) {
    float sum = 0.0F;
    for (int i = 0; i < lobeCount; ++i)
        if (bsdf.albedo(Lobe{i}) > 0.0F)
            sum += returned(bsdf, Lobe{i});
    return sum;
}

TEST(Bsdf, NoMaterialGainsEnergyFromAnyDirection) {
    for (const Case& c : cases())
        for (const float cosTheta : {0.02F, 0.1F, 0.3F, 0.5F, 0.8F, 0.98F})
            for (const bool front : {true, false}) {
                const Bsdf bsdf(c.material, up, directionAt(cosTheta), front);
                EXPECT_LE(returned(bsdf), 1.01F)
                    << c.name << " cos " << cosTheta << " front " << front;
            }
}

TEST(Bsdf, WhiteMaterialsReturnAllLight) {
    for (const Case& c : cases()) {
        const Bsdf bsdf(c.material, up, directionAt(0.5F), true);
        EXPECT_GE(returned(bsdf), c.leastReturned) << c.name;
    }
}

TEST(Bsdf, SamplesHaveTheDensityAndWeightThatEvaluationGives) {
    for (const Case& c : cases())
        for (int i = 0; i < lobeCount; ++i) {
            const Lobe lobe{i};
            const Bsdf bsdf(c.material, up, directionAt(0.6F), true);
            if (bsdf.albedo(lobe) <= 0.0F || bsdf.isDelta(lobe))
                continue;
            for (std::uint32_t k = 0; k < 64; ++k) {
                const LobeSample s = bsdf.sample(lobe, scrambledPoint(k, 5));
                if (!s.valid || std::abs(s.direction.z) < 0.02F)
                    continue;
                const LobeValue v = bsdf.evaluate(lobe, s.direction);
                EXPECT_NEAR(v.pdf, s.pdf, 0.01F * s.pdf + 1e-4F) << c.name << " lobe " << i;
                EXPECT_NEAR(v.value.x, s.weight.x * s.pdf, 0.01F * v.value.x + 1e-4F)
                    << c.name << " lobe " << i;
            }
        }
}

TEST(Bsdf, DensitiesIntegrateToAtMostOne) {
    for (const Case& c : cases())
        for (int i = 0; i < lobeCount; ++i) {
            const Lobe lobe{i};
            const Bsdf bsdf(c.material, up, directionAt(0.7F), true);
            if (bsdf.albedo(lobe) <= 0.0F || bsdf.isDelta(lobe) || bsdf.alpha(lobe) < 0.05F)
                continue;
            constexpr std::uint32_t samples = 1U << 16U;
            double sum = 0.0;
            for (std::uint32_t k = 0; k < samples; ++k) {
                Vec3 d = uniformCone(scrambledPoint(k, 9), 2.0F);
                sum += bsdf.evaluate(lobe, d).pdf * 4.0 * pi;
            }
            EXPECT_LE(sum / samples, 1.02) << c.name << " lobe " << i;
        }
}

TEST(Fresnel, FollowsTheFormulas) {
    for (const float eta : {1.0F / 1.5F, 1.1F, 1.33F, 1.5F, 2.4F}) {
        const float r = (eta - 1.0F) / (eta + 1.0F);
        EXPECT_NEAR(fresnelDielectric(1.0F, eta), r * r, 1e-6F);
        for (const float degrees : {10.0F, 30.0F, 50.0F, 80.0F}) {
            const double ti = degrees * 3.14159265358979 / 180.0;
            const double s = std::sin(ti) / eta;
            if (s >= 1.0) {
                EXPECT_EQ(fresnelDielectric(static_cast<float>(std::cos(ti)), eta), 1.0F);
                continue;
            }
            const double tt = std::asin(s);
            const double rs = std::sin(ti - tt) / std::sin(ti + tt);
            const double rp = std::tan(ti - tt) / std::tan(ti + tt);
            EXPECT_NEAR(fresnelDielectric(static_cast<float>(std::cos(ti)), eta),
                        0.5 * (rs * rs + rp * rp), 1e-5);
        }
    }
}

TEST(Refraction, FollowsSnell) {
    for (const float eta : {1.0F / 1.5F, 1.33F, 1.5F})
        for (const float cosTheta : {0.95F, 0.8F, 0.78F}) {
            const Vec3 w = directionAt(cosTheta);
            Vec3 t;
            ASSERT_TRUE(refract(w, up, eta, t));
            const float sinI = std::sqrt(1.0F - cosTheta * cosTheta);
            const float sinT = std::sqrt(t.x * t.x + t.y * t.y);
            EXPECT_NEAR(sinI, eta * sinT, 1e-5F);
            EXPECT_LT(t.z, 0.0F);
            EXPECT_LT(t.x * w.x, 0.0F);
        }
    Vec3 t;
    EXPECT_FALSE(refract(directionAt(0.3F), up, 1.0F / 1.5F, t));
}

} // namespace
} // namespace qor::engine
