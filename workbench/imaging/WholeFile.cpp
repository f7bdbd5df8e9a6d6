#include "workbench/imaging/WholeFile.h"

#include "workbench/imaging/BigEndian.h"
#include "workbench/imaging/PictFile.h"

#include <algorithm>

namespace qor::imaging {

namespace {

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

/// A Photoshop file: header, three sections that tell their lengths, and the flattened picture,
/// plain or with a list of the lengths of its packed rows (Adobe, Photoshop File Formats, 2019).
bool isWholePsd(std::string_view bytes) {
    constexpr std::size_t header = 26;
    constexpr int sections = 3;
    std::uint64_t at = header;
    for (int i = 0; i < sections && at < bytes.size(); ++i)
        at += 4 + numberAt(bytes, at, 4);
    if (at + 2 > bytes.size())
        return false;
    const std::uint64_t compression = numberAt(bytes, at, 2);
    const std::uint64_t rows = numberAt(bytes, 12, 2) * numberAt(bytes, 14, 4);
    const std::uint64_t rowSize = (numberAt(bytes, 18, 4) * numberAt(bytes, 22, 2) + 7) / 8;
    const std::uint64_t left = bytes.size() - at - 2;
    if (compression == 0)
        return left >= rows * rowSize;
    if (compression != 1)
        return true; // deflated: that notices it itself
    std::uint64_t packed = rows * 2;
    for (std::uint64_t row = 0; row < rows && packed <= left; ++row)
        packed += numberAt(bytes, at + 2 + row * 2, 2);
    return packed <= left;
}

struct Check {
    std::string_view coder;
    bool (*isWhole)(std::string_view bytes);
};

constexpr Check checks[] = {
    {"PNG", &isWholePng}, {"SGI", &isWholeSgi}, {"PSD", &isWholePsd}, {"PICT", &isWholePict}};

} // namespace

bool isWhole(std::string_view coder, std::string_view bytes) {
    const auto* found =
        std::ranges::find_if(checks, [&](const Check& one) { return one.coder == coder; });
    return found == std::end(checks) || found->isWhole(bytes);
}

} // namespace qor::imaging
