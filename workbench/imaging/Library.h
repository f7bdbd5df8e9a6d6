#pragma once

#include <cstdint>

namespace qor::imaging {

/// Largest side of a picture that is read or written, in pixels.
inline constexpr std::uint64_t largestSide = 100000;
/// Most pixels of a picture that is read or written.
inline constexpr std::uint64_t mostPixels = std::uint64_t{1} << 28U;

/// Starts Magick++ with our limits, once; every use of it begins with this. Any thread.
void prepareLibrary();

} // namespace qor::imaging
