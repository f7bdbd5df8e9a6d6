#pragma once

#include "workbench/engine/core/LaneSampler.h"
#include "workbench/engine/core/SurfaceLanes.h"

namespace qor::engine {

/// Eight surfaces with their scattering and how their lobes will be chosen: Vertex, lane by lane.
struct LaneVertex {
    const SurfaceLanes& surface;
    LaneBsdf bsdf;
    Int8 on{};              ///< lanes that are shaded
    Float8 diffuse{};       ///< probability to go on with this lobe
    Float8 specular{};      ///< and with this one
    Int8 looks{};           ///< at how many lights, if there are more
    bool scattered = false; ///< the surfaces lie anywhere, not close together
};

/// Puts rays that leave \p surface towards \p direction into \p packet, without an end.
void putRays(RayPacket& packet, const SurfaceLanes& surface, const Vec3x8& direction);

/// What lights that are sampled send to eight surfaces at a time, where nothing is see-through.
class LaneLights {
public:
    LaneLights(const CompiledScene& scene, const RenderOptions& options);

    /// Expected number of looks of each lane at a given light.
    Float8 picks(const LaneVertex& vertex) const;

    /// What the lanes send on to the eye of all lights, looking at as many as PathTracer does.
    Vec3x8 direct(const LaneVertex& vertex, LaneSampler& sampler, RayCounts& counts) const;

    /// A vertex with its random numbers and what direct() says of it.
    struct Request {
        const LaneVertex& vertex;
        LaneSampler& sampler;
        Vec3x8 light{};
    };

    /// The same for two that the camera sees close together: their shadow rays are traced as one.
    void direct(Request& one, Request& other, RayCounts& counts) const;

private:
    /// A directional light with what sampling it needs.
    struct Sun {
        Frame frame; ///< around the way towards it
        Color radiance;
        float pdf = 0.0F;         ///< infinite: without extent
        float oneMinusCos = 0.0F; ///< of its half angle
        bool castsShadows = true;

        bool isDelta() const { return !(pdf < std::numeric_limits<float>::infinity()); }
    };

    /// LightSample, lane by lane.
    struct Arrivals {
        Vec3x8 direction;
        Float8 distance{};
        Vec3x8 radiance;
        Float8 pdf{};
        Int8 castsShadows{};

        void set(std::size_t lane, const LightSample& sample);
    };

    /// What would arrive if nothing lay between.
    struct Expected {
        Vec3x8 light;
        Int8 lit{};  ///< lanes where something does
        Int8 rays{}; ///< those of them that something may shade
        Float8 end{};

        /// With what \p packet has become of the shadow rays.
        Vec3x8 seen(const RayPacket& packet) const;
    };

    Arrivals
    sampleAll(int light, const LaneVertex& vertex, const Int8& asked, LaneSampler& sampler) const;
    Arrivals sampleSome(const LaneVertex& vertex, const Int8& asked, LaneSampler& sampler) const;
    static Arrivals sampleSun(const Sun& sun, const Float8& u, const Float8& v);
    Expected expect(const LaneVertex& vertex, const Arrivals& lights, const Int8& asked) const;
    static void putShadowRays(const LaneVertex& vertex,
                              const Arrivals& lights,
                              const Expected& expected,
                              RayPacket& packet);
    Vec3x8 arriving(const LaneVertex& vertex,
                    const Arrivals& lights,
                    const Int8& asked,
                    RayCounts& counts) const;

    const CompiledScene& scene_;
    std::vector<Sun> suns_; ///< the first lights, as long as they are directional
};

} // namespace qor::engine
