#pragma once

#include "workbench/document/product/Material.h"

#include <cstdint>
#include <span>

namespace qor::import {

/// The longest side that a texture of a model may have.
inline constexpr std::uint32_t largestTextureSide = 16384;

/// Decodes a picture file in memory (PNG, JPEG, WebP, TIFF, BMP, GIF, TGA told by their first
/// bytes; nothing that could run code or open other files). Throws ImportError with what is wrong
/// with it.
[[nodiscard]] document::Texture decodeTexture(std::span<const std::uint8_t> bytes);

} // namespace qor::import
