#pragma once

#include <nlohmann/json.hpp>

#include <cstdint>
#include <functional>
#include <string>

namespace qor::import {

/// Parses glTF JSON. Throws ImportError with the place of a mistake, or if it nests too deep.
[[nodiscard]] nlohmann::json parseGltfJson(const std::string& text);

/// How many bytes a buffer really has.
using AvailableBytes = std::function<std::uint64_t(std::size_t buffer)>;

/// Throws ImportError at the first claim of \p gltf that does not hold: version, required
/// extensions, indices, lengths, and the shape of the node tree.
void checkGltf(const nlohmann::json& gltf, const AvailableBytes& available);

/// An array of \p gltf; an empty one if it is missing. Throws ImportError if it is something else.
[[nodiscard]] const nlohmann::json& arrayOf(const nlohmann::json& object, const char* member);

/// An object of \p object; an empty one if it is missing.
[[nodiscard]] const nlohmann::json& objectOf(const nlohmann::json& object, const char* member);

/// A finite number, \p otherwise if it is missing or something else.
[[nodiscard]] double numberOf(const nlohmann::json& object, const char* member, double otherwise);

/// A string, empty if it is missing or something else.
[[nodiscard]] std::string stringOf(const nlohmann::json& object, const char* member);

/// A count or length, 0 if it is missing. Throws ImportError naming \p what if it is something
/// else.
[[nodiscard]] std::uint64_t
countOf(const nlohmann::json& object, const char* member, const std::string& what);

/// "mesh 3", as messages call it.
[[nodiscard]] std::string itemName(const char* what, std::size_t index);

/// An index below \p limit, -1 if it is missing. Throws ImportError naming \p what if it is out of
/// range.
[[nodiscard]] std::int32_t indexOf(const nlohmann::json& object,
                                   const char* member,
                                   std::size_t limit,
                                   const std::string& what);

} // namespace qor::import
