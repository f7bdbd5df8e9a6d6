#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace qor::import {

/// The two parts of a .glb file.
struct GlbParts {
    std::string json;
    std::vector<std::uint8_t> chunk;
};

/// Throws ImportError if lengths do not fit the file.
[[nodiscard]] GlbParts splitGlb(std::span<const std::uint8_t> bytes);
[[nodiscard]] std::vector<std::uint8_t> joinGlb(const GlbParts& parts);

/// A whole file. Throws ImportError.
[[nodiscard]] std::vector<std::uint8_t> readBytes(const std::filesystem::path& file);

/// The bytes of a "data:...;base64," URI; nothing if \p uri is no such URI. Throws ImportError for
/// bad base64.
[[nodiscard]] std::optional<std::vector<std::uint8_t>> dataUriBytes(std::string_view uri);
/// How many bytes that gives, without decoding.
[[nodiscard]] std::optional<std::uint64_t> dataUriLength(std::string_view uri);

/// "my%20file.bin" as "my file.bin".
[[nodiscard]] std::string percentDecoded(std::string_view uri);

} // namespace qor::import
