#include "workbench/engine/core/LanePaths.h"

namespace qor::engine {

namespace {

Vec3 laneOf(const Vec3x8& v, std::size_t lane) {
    return {v.x[lane], v.y[lane], v.z[lane]};
}

/// \p direction, mirrored where it goes below the triangle.
Vec3x8 above(const SurfaceLanes& surface, const Vec3x8& direction) {
    const Float8 below = least(dot(direction, surface.flat), Float8{});
    if (bitsOf(below < 0.0F) == 0)
        return direction;
    return select(below < 0.0F, normalize(direction - surface.flat * (2.0F * below)), direction);
}

} // namespace

PathState LanePaths::of(std::size_t lane, const PathBudget& budget) const {
    PathState state;
    const RTCRay8& ray = packet.ray;
    state.origin = {ray.org_x[lane], ray.org_y[lane], ray.org_z[lane]};
    state.direction = {ray.dir_x[lane], ray.dir_y[lane], ray.dir_z[lane]};
    state.throughput = laneOf(throughput, lane);
    state.budget = {reflections[lane], budget.refractions, diffuse[lane], total[lane]};
    state.cone = {cones.width[lane], cones.spread[lane]};
    state.pdf = pdf[lane];
    state.lobePdf = lobePdf[lane];
    state.lightPick = pick[lane];
    state.roughness = roughness[lane];
    state.bounces = bounces;
    state.lightsCounted = lightsCounted[lane] != 0;
    state.lightsOnly = lightsOnly[lane] != 0;
    state.straight = straight[lane] != 0;
    state.seesBackground = false;
    return state;
}

void LanePaths::follow(const LaneVertex& vertex,
                       const LaneBsdf::Samples& sample,
                       const Int8& byDiffuse,
                       const Float8& chance) {
    const Float8& alpha = vertex.bsdf.alpha();
    putRays(packet.ray, vertex.surface, above(vertex.surface, sample.direction));
    throughput = throughput * sample.weight * (1.0F / chance);
    pdf = sample.pdf * chance;
    lobePdf = sample.pdf;
    lightsOnly = (total <= 0) | ((byDiffuse ? diffuse : reflections) <= 0);
    lightsCounted = byDiffuse;
    straight &= ~byDiffuse;
    cones.width = vertex.surface.footprint;
    cones.spread = byDiffuse ? eight(diffuseSpread) : cones.spread + alpha * 0.25F;
    roughness = greatest(roughness, byDiffuse ? eight(1.0F) : squareRoot(alpha));
    total -= 1;
    diffuse += byDiffuse;
    reflections -= 1 + byDiffuse;
    ++bounces;
}

Int8 LanePaths::survivors(const Int8& asked) {
    const Float8 most = largestOf(throughput);
    const Int8 alive = asked & (most > 0.0F);
    if (bounces <= certainBounces)
        return alive;
    const Float8 survival = least(greatest(most, eight(leastChance)), eight(1.0F));
    const Int8 unsure = alive & (survival < 1.0F);
    const Int8 lucky = sampler.next1D(unsure) < survival;
    throughput = throughput * (1.0F / survival);
    return alive & (~unsure | lucky);
}

} // namespace qor::engine
