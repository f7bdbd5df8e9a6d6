#pragma once

#include "workbench/engine/core/Camera.h"
#include "workbench/engine/core/RenderOptions.h"

#include <array>
#include <filesystem>
#include <optional>
#include <string>

namespace qor::render {

enum ExitCode { done = 0, failed = 1, usage = 2, interrupted = 130 };

enum class ProgressStyle { none, bar, json };

/// What the view is to be, where the command line says so; in millimetres, z up.
struct ViewRequest {
    using Numbers = std::array<double, 3>;
    std::optional<Numbers> eye;
    std::optional<Numbers> target;
    std::optional<Numbers> up;
    std::optional<double> fovDeg; ///< full vertical angle
    std::optional<engine::Projection> projection;
    std::optional<double> viewHeightMm;
};

/// A command line, understood.
struct Request {
    std::filesystem::path model; ///< or a document
    std::filesystem::path output = "quick-render.png";
    int width = 1280;
    int height = 960;
    std::optional<std::array<int, 4>>
        region; ///< x1, y1, x2, y2 from the top left, upper limits excluded
    int quality = 1;
    std::optional<bool> finalGather;
    std::string scene; ///< a number in the catalog, "custom", or empty: the file's own or none
    ViewRequest view;
    std::optional<int> reflections;
    std::optional<int> refractions;
    std::optional<int> diffuseBounces;
    engine::PixelFilter filter = engine::PixelFilter::box;
    unsigned seed = 0;
    std::optional<double> timeLimitS;
    std::optional<double> noiseTarget;
    int threads = 0;
    ProgressStyle progress = ProgressStyle::none;
    std::filesystem::path statistics; ///< empty: none
};

} // namespace qor::render
