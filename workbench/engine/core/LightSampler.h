#pragma once

#include "workbench/engine/core/EnvironmentMap.h"
#include "workbench/engine/core/Light.h"

#include <vector>

namespace qor::engine {

/// One choice of a point on a light, seen from a surface.
struct LightSample {
    Vec3 direction;        ///< unit, towards the light
    float distance = 0.0F; ///< infinite for far lights
    Color radiance;        ///< of a light without extent: what a surface that faces it receives
    float pdf = 0.0F; ///< per solid angle; infinite for lights without extent, 0: nothing arrives
    bool castsShadows = true;
};

/// A triangle that shines, in world space.
struct EmissiveTriangle {
    Vec3 a;
    Vec3 edge1;
    Vec3 edge2;
    Color radiance;
};

/// What a ray sees of lights that are no surfaces.
struct LightHit {
    Color radiance;
    float pdf = 0.0F; ///< with which LightSampler::sample would have chosen this direction
    float distance = 0.0F;
};

/// All lights of a scene behind one index: those of the list, then the triangles that shine as one,
/// then the environment's picture.
class LightSampler {
public:
    LightSampler(const std::vector<Light>& lights,
                 std::vector<EmissiveTriangle> triangles,
                 const EnvironmentMap& environment);

    int count() const { return count_; }

    /// Whether a ray could meet something that shines, other than by chance of the surface's own
    /// sampling: false when there are only lights without extent.
    bool canBeHit() const { return canBeHit_; }

    /// Whether light \p index has no extent.
    bool isDelta(int index) const;

    LightSample sample(int index, const Vec3& point, const Vec2& u) const;

    /// Calls \p visit(LightHit) for each light of the list that a ray from \p origin meets before
    /// \p farthest; lights at infinity only if \p farthest is infinite. \p fromCamera leaves out
    /// lights that the camera does not see.
    template <typename Visit>
    void hits(const Vec3& origin,
              const Vec3& direction,
              float farthest,
              bool fromCamera,
              Visit&& visit) const {
        for (const std::size_t index : hittable_) {
            LightHit hit;
            if (hitOne(lights_[index], origin, direction, farthest, fromCamera, hit))
                visit(hit);
        }
    }

    /// Density with which sample() chooses a point of a shining triangle of \p radiance, met at \p
    /// distance under \p cosTheta.
    float trianglePdf(const Color& radiance, float distance, float cosTheta) const;

private:
    /// A light with what sampling it needs again and again.
    struct Prepared {
        Light light;
        Frame frame; ///< around the way towards a directional light, the axis of a spot
        float oneMinusCos = 0.0F; ///< of a directional light's half angle
        float area = 0.0F;
        Vec3 normal;
    };

    static Prepared prepare(const Light& light);
    bool hitOne(const Prepared& light,
                const Vec3& origin,
                const Vec3& direction,
                float farthest,
                bool fromCamera,
                LightHit& hit) const;
    LightSample sampleTriangle(const Vec3& point, const Vec2& u) const;
    LightSample sampleEnvironment(const Vec2& u) const;

    std::vector<Prepared> lights_;
    std::vector<std::size_t> hittable_;
    std::vector<EmissiveTriangle> triangles_;
    std::vector<float> triangleSums_;
    const EnvironmentMap* environment_;
    int count_ = 0;
    int triangleIndex_ = -1;
    int environmentIndex_ = -1;
    bool canBeHit_ = false;
};

} // namespace qor::engine
