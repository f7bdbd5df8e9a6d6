#pragma once

#include "workbench/engine/core/Image.h"

#include <cstddef>
#include <cstdint>

namespace qor::adapter {

/// A linear value as 8-bit sRGB: exactly what engine::toSrgb8 gives, at a fraction of the time.
std::uint8_t srgb8(float linear);

/// \p count pixels of linear RGBA as opaque 8-bit sRGB RGBA.
void encodeOpaque(const float* rgba, std::size_t count, std::uint8_t* target);

} // namespace qor::adapter
