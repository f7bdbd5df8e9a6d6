#pragma once

#include "workbench/engine/core/Result.h"

#include <cstdint>
#include <optional>

namespace qor::engine {

/// A rectangle of pixels: x counts from the left, y from the BOTTOM of the picture.
struct Region {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
};

enum class PixelFilter { box, gaussian };

/// How often light may go on after the first surface that the camera sees.
struct TraceDepth {
    int reflections = 4;    ///< mirror-like and glossy, ≥ 0
    int refractions = 6;    ///< through glass, ≥ 0
    int total = 10;         ///< of any kind together, ≥ 0
    int diffuseBounces = 0; ///< ≥ 0; 0: direct light only. With final gathering at least 1.
};

/// Indirect diffuse light by gathering rays at some points and interpolating between them.
struct FinalGather {
    bool on = false;
    int rays = 256; ///< accuracy: gather rays a point, 1..1'000'000
    float maxRadius =
        0.0F; ///< farthest a point's value is used, in scene units; 0: a tenth of the scene
};

/// Which pixels need more samples. Between minimum and maximum a pixel goes on while its estimated
/// error, as the eye sees it, is above the contrast; equal numbers switch this off.
struct Samples {
    int minimum = 4;
    int maximum = 16;
    float contrast = 0.02F; ///< 0..1, of the range of the screen
    /// When set, the picture ends as soon as the estimated mean of squared relative errors of its
    /// pixels is below it; contrast is then not used.
    std::optional<float> noiseTarget;
};

/// All that a render can be told beyond its scene and camera.
struct RenderOptions {
    int width = 640;
    int height = 480;
    std::optional<Region> region; ///< clipped to the picture; pixels outside stay transparent black

    bool raytracing = true; ///< off: neither reflections nor refractions
    bool textures = true;
    bool shadows = true;
    TraceDepth depth;
    Samples samples;
    FinalGather finalGather;
    float ambientFactor = 1.0F; ///< times the scene's ambient light
    bool caustics = false; ///< on: light that reaches a diffuse surface through glass is traced,
                           ///< not shone straight
    /// When positive, the most that one path may bring to the eye by way of several surfaces at a
    /// time, white being 1: what is found too rarely shows as speckles, so a little light is given
    /// up for them. 0 gives up nothing.
    float brightestIndirect = 0.0F;
    PixelFilter filter = PixelFilter::box;

    std::uint32_t seed = 0;
    int threads = 0; ///< 0: all processors. The picture does not depend on it.
    /// A coarse picture first, then refinement of the whole in passes; off: as few passes as
    /// possible.
    bool progressive = true;
    /// Of the render, reading not counted: ends with what is there when it is over, in the middle
    /// of a pass too, but not before a coarse picture. A render with a limit is progressive.
    std::optional<double> timeLimitSeconds;
};

/// Most pixels that a picture may have.
constexpr std::int64_t maxPixels = std::int64_t{1} << 28;

/// Fails with invalidInput, tooLarge or emptyRegion.
Result<Done> validate(const RenderOptions& options);

/// The part of \p options' region that lies in the picture, or the whole picture; counts from the
/// bottom as given.
Region clippedRegion(const RenderOptions& options);

} // namespace qor::engine
