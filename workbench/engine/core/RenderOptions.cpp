#include "workbench/engine/core/RenderOptions.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <string>

namespace qor::engine {

namespace {

struct Range {
    const char* name;
    double value;
    double lowest;
    double highest;
};

/// Whole numbers without decimals.
std::string plain(double number) {
    std::array<char, 32> text{};
    return {text.data(), std::to_chars(text.data(), text.data() + text.size(), number).ptr};
}

Result<Done> checkRanges(const RenderOptions& options) {
    const std::array ranges{
        Range{"width", static_cast<double>(options.width), 1, 1 << 20},
        Range{"height", static_cast<double>(options.height), 1, 1 << 20},
        Range{"reflections", static_cast<double>(options.depth.reflections), 0, 1000},
        Range{"refractions", static_cast<double>(options.depth.refractions), 0, 1000},
        Range{"total depth", static_cast<double>(options.depth.total), 0, 1000},
        Range{"diffuse bounces", static_cast<double>(options.depth.diffuseBounces), 0, 1000},
        Range{"minimum samples", static_cast<double>(options.samples.minimum), 1, 1 << 20},
        Range{"maximum samples", static_cast<double>(options.samples.maximum),
              static_cast<double>(options.samples.minimum), 1 << 20},
        Range{"contrast", options.samples.contrast, 0, 1},
        Range{"noise target", options.samples.noiseTarget.value_or(1.0F), 1e-12, 1e12},
        Range{"gather rays", static_cast<double>(options.finalGather.rays), 1, 1'000'000},
        Range{"gather radius", options.finalGather.maxRadius, 0, 1e30},
        Range{"ambient factor", options.ambientFactor, 0, 1e6},
        Range{"brightest indirect light", options.brightestIndirect, 0, 1e30},
        Range{"threads", static_cast<double>(options.threads), 0, 4096},
        Range{"time limit", options.timeLimitSeconds.value_or(0.0), 0, 1e12},
    };
    for (const Range& range : ranges)
        if (!(range.value >= range.lowest && range.value <= range.highest))
            return Error{ErrorCode::invalidInput,
                         std::string(range.name) + " " + plain(range.value) + " is not in " +
                             plain(range.lowest) + " .. " + plain(range.highest)};
    return Done{};
}

} // namespace

Region clippedRegion(const RenderOptions& options) {
    if (!options.region)
        return {0, 0, options.width, options.height};
    const Region& wanted = *options.region;
    const auto clip = [](std::int64_t value, int limit) {
        return static_cast<int>(std::clamp<std::int64_t>(value, 0, limit));
    };
    const int left = clip(wanted.x, options.width);
    const int low = clip(wanted.y, options.height);
    const int right = clip(std::int64_t{wanted.x} + wanted.width, options.width);
    const int high = clip(std::int64_t{wanted.y} + wanted.height, options.height);
    return {left, low, std::max(0, right - left), std::max(0, high - low)};
}

Result<Done> validate(const RenderOptions& options) {
    Result<Done> ranges = checkRanges(options);
    if (!ranges)
        return ranges;
    if (std::int64_t{options.width} * options.height > maxPixels)
        return Error{ErrorCode::tooLarge, "a picture of " + std::to_string(options.width) + " x " +
                                              std::to_string(options.height) +
                                              " pixels is too large: at most " +
                                              std::to_string(maxPixels) + " pixels are rendered"};
    const Region region = clippedRegion(options);
    if (region.width == 0 || region.height == 0)
        return Error{ErrorCode::emptyRegion, "no pixel of the region lies in the picture of " +
                                                 std::to_string(options.width) + " x " +
                                                 std::to_string(options.height)};
    return Done{};
}

} // namespace qor::engine
