#pragma once

#include <cstdint>
#include <string_view>

namespace qor::imaging {

/// A number of \p size bytes with the high byte first; bytes beyond the end count as 0.
inline std::uint64_t numberAt(std::string_view bytes, std::size_t at, std::size_t size) {
    std::uint64_t value = 0;
    for (std::size_t i = at; i < at + size; ++i)
        value = value << 8U | (i < bytes.size() ? static_cast<std::uint8_t>(bytes[i]) : 0U);
    return value;
}

} // namespace qor::imaging
