#pragma once

#include "workbench/engine/core/RenderOptions.h"
#include "workbench/engine/core/RenderStats.h"

#include <cstdint>
#include <string>

namespace qor::render {

/// What a run took.
struct RunTimes {
    double readS = 0;   ///< import and reading
    double sceneS = 0;  ///< turning the product into a scene
    double renderS = 0; ///< from the start of the render to its end, structures included
    double writeS = 0;
};

/// A JSON object in text. \p triangles counts every instance.
std::string formatStatistics(const RunTimes& times,
                             const engine::RenderStats& stats,
                             const engine::RenderOptions& options,
                             std::uint64_t triangles);

} // namespace qor::render
