#include "workbench/engine/qorrender/Statistics.h"

#include <nlohmann/json.hpp>
#include <sys/resource.h>

namespace qor::render {

namespace {

/// Most memory that this process had at once; its children are not counted.
std::uint64_t peakBytes() {
    constexpr std::uint64_t kibi = 1024;
    rusage use{};
    getrusage(RUSAGE_SELF, &use);
    return static_cast<std::uint64_t>(use.ru_maxrss) * kibi;
}

} // namespace

std::string formatStatistics(const RunTimes& times,
                             const engine::RenderStats& stats,
                             const engine::RenderOptions& options,
                             std::uint64_t triangles) {
    const engine::Region region = engine::clippedRegion(options);
    const nlohmann::ordered_json json{
        {"read_s", times.readS},
        {"scene_s", times.sceneS},
        {"build_s", stats.prepareSeconds},
        {"gather_s", stats.gatherSeconds},
        {"trace_s", stats.traceSeconds},
        {"first_picture_s", stats.firstPictureSeconds},
        {"render_s", times.renderS},
        {"write_s", times.writeS},
        {"rays",
         {{"camera", stats.rays.camera},
          {"shadow", stats.rays.shadow},
          {"reflection", stats.rays.reflection},
          {"refraction", stats.rays.refraction},
          {"diffuse", stats.rays.diffuse},
          {"gather", stats.rays.gather},
          {"total", stats.rays.total()}}},
        {"passes", stats.passes},
        {"samples", stats.samples},
        {"gather_points", stats.gatherPoints},
        {"estimated_error", stats.estimatedError},
        {"pixels", std::uint64_t(region.width) * std::uint64_t(region.height)},
        {"triangles", triangles},
        {"scene_bytes", stats.sceneBytes},
        {"film_bytes", stats.filmBytes},
        {"peak_bytes", peakBytes()},
    };
    return json.dump(2) + "\n";
}

} // namespace qor::render
