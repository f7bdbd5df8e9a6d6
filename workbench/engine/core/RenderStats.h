#pragma once

#include <cstddef>
#include <cstdint>

namespace qor::engine {

/// Rays by kind.
struct RayCounts {
    std::uint64_t camera = 0;
    std::uint64_t shadow = 0;
    std::uint64_t reflection = 0;
    std::uint64_t refraction = 0;
    std::uint64_t diffuse = 0;
    std::uint64_t gather = 0; ///< all rays of the interpolation cache's points

    std::uint64_t total() const {
        return camera + shadow + reflection + refraction + diffuse + gather;
    }

    RayCounts& operator+=(const RayCounts& other);
};

/// What a render has cost so far.
struct RenderStats {
    RayCounts rays;
    int passes = 0;
    std::uint64_t samples = 0;        ///< camera samples in pixels of the region
    double prepareSeconds = 0.0;      ///< structures and tables
    double gatherSeconds = 0.0;       ///< filling the interpolation cache
    double traceSeconds = 0.0;        ///< passes
    double firstPictureSeconds = 0.0; ///< from start() to the coarse picture
    std::size_t gatherPoints = 0;
    std::size_t filmBytes = 0;   ///< of this render's pixels
    std::size_t sceneBytes = 0;  ///< meshes, pictures and their structures
    double estimatedError = 0.0; ///< mean of squared relative errors, where it is known
};

} // namespace qor::engine
