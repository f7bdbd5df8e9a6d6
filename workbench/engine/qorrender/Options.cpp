#include "workbench/engine/qorrender/Options.h"

#include <algorithm>
#include <array>

namespace qor::render {

namespace {

/// As the quick render of the workbench has them.
struct Quality {
    engine::TraceDepth depth;
    engine::Samples samples;
    int gatherRays;
};

const Quality& qualityOf(int level) {
    static const std::array<Quality, 3> levels{{
        {{.reflections = 1, .refractions = 2, .total = 3, .diffuseBounces = 0},
         {1, 4, 0.2F, {}},
         64},
        {{.reflections = 4, .refractions = 6, .total = 8, .diffuseBounces = 0},
         {4, 64, 0.05F, {}},
         256},
        {{.reflections = 8, .refractions = 12, .total = 16, .diffuseBounces = 0},
         {16, 1024, 0.015F, {}},
         1024},
    }};
    return levels[static_cast<std::size_t>(std::clamp(level, 0, 2))];
}

void setDepth(engine::TraceDepth& depth, const Request& request, const document::RenderWork& work) {
    const auto choose = [](int& value, const std::optional<int>& file,
                           const std::optional<int>& line) {
        value = line ? *line : file ? std::max(*file, 0) : value;
    };
    choose(depth.reflections, work.glossyBounces, request.reflections);
    choose(depth.refractions, work.transmissionBounces, request.refractions);
    choose(depth.diffuseBounces, work.diffuseBounces, request.diffuseBounces);
    depth.total =
        std::max({depth.total, depth.reflections, depth.refractions, depth.diffuseBounces});
}

/// Who counts the bounces wants them traced; everybody else gets gathered light.
bool gathers(const Request& request, const document::RenderWork& work) {
    return request.finalGather.value_or(!request.diffuseBounces && !work.diffuseBounces);
}

std::optional<engine::Region> regionOf(const Request& request) {
    if (!request.region)
        return std::nullopt;
    const auto [x1, y1, x2, y2] = *request.region;
    // Brought into the picture first, so that differences of wild numbers cannot overflow.
    const auto column = [&](int x) {
        return std::clamp(x, 0, request.width);
    };
    const auto row = [&](int y) {
        return std::clamp(y, 0, request.height);
    };
    return engine::Region{column(x1), request.height - row(y2), column(x2) - column(x1),
                          row(y2) - row(y1)};
}

} // namespace

engine::RenderOptions makeOptions(const Request& request, const document::RenderWork& work) {
    constexpr int unlimitedSamples = 65536;
    const Quality& quality = qualityOf(request.quality);
    engine::RenderOptions options;
    options.width = request.width;
    options.height = request.height;
    options.region = regionOf(request);
    options.depth = quality.depth;
    options.samples = quality.samples;
    setDepth(options.depth, request, work);
    options.finalGather.on = gathers(request, work);
    options.finalGather.rays = quality.gatherRays;
    options.caustics = work.caustics.value_or(false);
    options.filter = request.filter;
    options.seed = request.seed;
    options.threads = request.threads;
    options.progressive = false;
    options.timeLimitSeconds = request.timeLimitS;
    if (request.noiseTarget) {
        options.samples.noiseTarget = static_cast<float>(*request.noiseTarget);
        options.samples.maximum = unlimitedSamples;
    }
    return options;
}

} // namespace qor::render
