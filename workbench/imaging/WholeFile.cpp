#include "workbench/imaging/WholeFile.h"

#include <cstdint>

namespace qor::imaging {

namespace {

/// A number with the high byte first; 0 beyond the end.
std::uint64_t numberAt(std::string_view bytes, std::size_t at, std::size_t size) {
    std::uint64_t value = 0;
    for (std::size_t i = at; i < at + size; ++i)
        value = value << 8U | (i < bytes.size() ? static_cast<std::uint8_t>(bytes[i]) : 0U);
    return value;
}

/// A PNG file ends with an empty chunk of this name.
bool isWholePng(std::string_view bytes) {
    return bytes.find("IEND") != std::string_view::npos;
}

/// A packed SGI file lists where each row of each channel begins and how long it is; a plain one
/// has a fixed length.
bool isWholeSgi(std::string_view bytes) {
    constexpr std::size_t header = 512;
    const std::uint64_t width = numberAt(bytes, 6, 2);
    const std::uint64_t rows = numberAt(bytes, 8, 2) * numberAt(bytes, 10, 2);
    if (numberAt(bytes, 2, 1) == 0)
        return bytes.size() >= header + width * rows * numberAt(bytes, 3, 1);
    if (bytes.size() < header + rows * 8)
        return false;
    for (std::size_t row = 0; row < rows; ++row)
        if (numberAt(bytes, header + row * 4, 4) + numberAt(bytes, header + (rows + row) * 4, 4) >
            bytes.size())
            return false;
    return true;
}

} // namespace

bool isWhole(std::string_view coder, std::string_view bytes) {
    if (coder == "PNG")
        return isWholePng(bytes);
    return coder != "SGI" || isWholeSgi(bytes);
}

} // namespace qor::imaging
