#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace qor::imaging {

/// False when a QuickDraw picture ends within the rows of a pixel map, or without its end mark.
bool isWholePict(std::string_view bytes);

/// The alpha of a whole QuickDraw picture of that size, a byte a pixel, top row first; nothing when
/// its one pixel map has none.
std::optional<std::vector<std::uint8_t>>
alphaOfPict(std::string_view bytes, std::size_t width, std::size_t height);

} // namespace qor::imaging
