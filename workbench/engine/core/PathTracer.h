#pragma once

#include "workbench/engine/core/RenderStats.h"
#include "workbench/engine/core/Sampler.h"
#include "workbench/engine/core/Surface.h"

#include <array>
#include <limits>
#include <vector>

namespace qor::engine {

class GatherCache;

/// How far a footprint opens at a diffuse bounce.
constexpr float diffuseSpread = 0.2F;

/// The numbers of everything behind the camera are independent of those that place the ray.
template <typename Bits>
constexpr Bits pathSeed(Bits pixelSeed) {
    return pixelSeed ^ (0x28bc2U << placeBits);
}

inline Sampler pathSampler(std::uint32_t seed, std::uint32_t index) {
    return {pathSeed(seed), index};
}

/// Behind so many surfaces paths end by chance in proportion to what they still carry.
constexpr int certainBounces = 3;
constexpr float leastChance = 0.05F;

/// Lights that each surface seen by the camera, and each one behind, looks at.
constexpr int looksAtFirst = 16;
constexpr int looksLater = 2;

/// Shadow rays end a little before the light, which may be a surface itself.
constexpr float almostThere = 0.9999F;

/// Chance that a path goes on that carries \p carried after \p bounces surfaces.
inline float survivalChance(float carried, int bounces) {
    if (!(carried > 0.0F))
        return 0.0F;
    return bounces <= certainBounces ? 1.0F : std::clamp(carried, leastChance, 1.0F);
}

/// What a ray may still do.
struct PathBudget {
    int reflections = 0;
    int refractions = 0;
    int diffuse = 0;
    int total = 0;
};

/// A ray on its way, and what it has to know of its past.
struct PathState {
    Vec3 origin;
    Vec3 direction; ///< unit
    float tNear = 0.0F;
    Color throughput{1.0F, 1.0F, 1.0F};
    PathBudget budget;
    RayCone cone;
    Color absorption; ///< per length of what it is inside of
    Vec2 raster;      ///< place in the picture, 0..1 from the top left, for the background
    /// Density with which the last surface chose this direction; infinite: no light sampling could
    /// have.
    float pdf = std::numeric_limits<float>::infinity();
    /// The same within the lobe that was chosen: what else the surface might have done does not
    /// change what it sees this way.
    float lobePdf = std::numeric_limits<float>::infinity();
    float lightPick = 1.0F; ///< expected number of looks of the last surface at a given light
    float uncovered = 1.0F; ///< what see-through ground has left of the background
    float roughness = 0.0F; ///< largest of the reflectors that have scattered it
    int bounces = 0;        ///< surfaces that have scattered it
    bool lightsCounted =
        false;               ///< the last surface has already seen all lights that can be sampled
    bool lightsOnly = false; ///< budget used up: what shines counts, surfaces are not shaded
    bool straight = true;    ///< from the camera through mirrors and glass only
    bool seesBackground = true; ///< from the camera through glass only
};

/// A surface with its scattering and how its lobes will be chosen.
struct Vertex {
    Surface surface;
    Bsdf bsdf;
    std::array<float, lobeCount> probability{}; ///< to go on with a lobe
    float lightPick = 1.0F;
    /// Specular and transmission are chosen together, then the one or the other by the facet.
    bool byFacet = false;
    bool gathered = false; ///< indirect diffuse light comes from the cache
    Color gatheredIrradiance;
    /// Behind a diffuse surface, which has already seen what shines through glass as if the glass
    /// did not bend it.
    bool lightGoesStraight = false;
};

/// Chance that \p vertex goes on with \p lobe towards \p direction, without the lobe's own density.
float chanceOf(const Vertex& vertex, Lobe lobe, const Vec3& direction);

/// What arrives of a light that nothing blocks.
struct LightShare {
    Color straight; ///< counted through glass, too, as if it did not bend light
    Color clear;    ///< blocked by glass: paths through it find the light

    Color whole() const { return straight + clear; }
};

/// What gets through on the way to a light.
struct Visibility {
    Color straight; ///< glass counted as above
    Color clear;    ///< glass counted as opaque
};

/// What a camera ray brought back.
struct PathResult {
    Color color;
    float alpha = 1.0F;
};

/// Follows single rays. One object for each task: it counts rays. Method: path tracing with light
/// sampling and multiple importance sampling (Veach 1997, ch. 9), lobe by lobe: each is sampled
/// with its own density and weighted alone, so that every kind of bounce can have a depth of its
/// own.
class PathTracer {
public:
    /// \p cache may be null. It serves surfaces that the camera sees, in mirrors and through glass
    /// too, and with \p cacheBehind also those behind diffuse ones.
    PathTracer(const CompiledScene& scene,
               const RenderOptions& options,
               const GatherCache* cache,
               bool cacheBehind = false)
        : scene_(scene), options_(options), cache_(cache), cacheBehind_(cacheBehind) {}

    PathBudget fullBudget() const;

    /// Light that arrives along \p state.
    /// \p firstDistance, if given, becomes the distance of the first surface; it stays as it is
    /// when there is none.
    PathResult trace(PathState state, Sampler& sampler, float* firstDistance = nullptr);
    /// Appends to \p spots the surfaces along a camera ray, in mirrors and through glass too, whose
    /// indirect light the cache does not cover.
    void collect(PathState state, Sampler& sampler, std::vector<Surface>& spots);

    /// Scattering at a surface reached by \p state.
    Vertex vertexAt(const PathState& state, const Surface& surface) const;
    /// All that a vertex sends back along \p state except the direct light of lights that are
    /// sampled.
    Color indirectLight(const Vertex& vertex, PathState state, Sampler& sampler);
    /// What it sends back of lights that are sampled.
    Color directLight(const Vertex& vertex, Sampler& sampler);

    /// One light's share, still to be multiplied by visibility(); black if there is none.
    static LightShare unshadowed(const Vertex& vertex, const LightSample& light);
    /// The part of \p light that gets to \p surface.
    Visibility visibility(const Surface& surface, const LightSample& light);
    /// The ray from \p surface towards \p light; its end is not positive where nothing can lie
    /// between.
    static Ray shadowRay(const Surface& surface, const LightSample& light);
    /// What the ground leaves of light that comes along \p ray.
    float groundTransparency(const Ray& ray) const;

    /// What a ray sees of lights that are no surfaces, up to \p farthest.
    Color lightsOnTheWay(const PathState& state, float farthest) const;
    /// What a ray sees that leaves the scene.
    Color leaving(const PathState& state) const;

    RayCounts& counts() { return counts_; }

private:
    /// Goes on to the next surface to be shaded, adding what shines on the way. False if there is
    /// none.
    bool advance(PathState& state, Sampler& sampler, Surface& surface, PathResult& result);
    Color background(const PathState& state) const;
    void collectAt(const Vertex& vertex);
    /// \p light that \p state brings, within what the options allow.
    Color bounded(const PathState& state, const Color& light) const;
    Color ownLight(const Vertex& vertex, const PathState& state) const;
    Color emitted(const PathState& state, const Surface& surface) const;
    float lightWeight(const PathState& state, float lightPdf) const;
    /// The ground on the way of \p state; true if it is to be shaded like any other surface, else
    /// \p state goes on below with what is left of its throughput.
    bool
    meetGround(PathState& state, Sampler& sampler, float t, Surface& surface, PathResult& result);
    void
    shadeGround(PathState& state, Sampler& sampler, const Surface& surface, PathResult& result);
    Color groundShadow(const Vertex& vertex, int looks, Sampler& sampler);
    PathResult mirrorInGround(const PathState& state, const Surface& surface, Sampler& sampler);
    Visibility marchVisibility(Ray ray);
    void setProbabilities(const PathState& state, Vertex& vertex) const;

    struct LobeChoice {
        Lobe lobe = Lobe::diffuse;
        float probability = 0.0F;
    };

    static LobeChoice chooseLobe(const Vertex& vertex, const Vec2& u, Sampler& sampler);
    static bool exhausted(const PathBudget& budget, Lobe lobe);
    bool scatter(PathState& state, const Vertex& vertex, Sampler& sampler);
    static bool survives(PathState& state, Sampler& sampler);
    void countRay(Lobe lobe);

    const CompiledScene& scene_;
    const RenderOptions& options_;
    const GatherCache* cache_;
    bool cacheBehind_;
    std::vector<Surface>* spots_ = nullptr; ///< while collecting
    RayCounts counts_;
};

} // namespace qor::engine
