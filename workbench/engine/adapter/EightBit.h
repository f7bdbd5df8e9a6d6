#pragma once

#include "workbench/engine/core/Image.h"

#include <cstddef>
#include <cstdint>

namespace qor::adapter {

/// A linear value as 8-bit sRGB: exactly what engine::toSrgb8 gives, at a fraction of the time.
std::uint8_t srgb8(float linear);

/// Three channels of linear light as the sRGB codes of the pixel in column \p x and row \p y from
/// the top of the whole picture. What lies between two codes becomes the one or the other by place,
/// so that the mean over some pixels is right and gradients show no bands; what is a code, up to a
/// fiftieth, stays that code everywhere. Method: interleaved gradient noise (Jimenez, "Next
/// generation post processing", 2014).
void encodeColor(const float* rgb, int x, int y, std::uint8_t* target);

/// \p count pixels of linear RGBA as opaque sRGB RGBA, coded as above; the first one's place is
/// (\p x, \p y).
void encodeOpaque(const float* rgba, std::size_t count, int x, int y, std::uint8_t* target);

} // namespace qor::adapter
