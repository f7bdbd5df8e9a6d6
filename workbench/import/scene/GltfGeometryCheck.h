#pragma once

#include <nlohmann/json.hpp>

namespace qor::import {

// Throw ImportError at the first claim of a glTF file about its numbers that does not hold. Buffers
// and their views have been checked before.

/// Accessors lie within their views and are of a known type.
void checkGltfAccessors(const nlohmann::json& gltf);

/// Primitives name accessors of the kind that they need, materials and pictures that are there.
void checkGltfMeshes(const nlohmann::json& gltf);

/// Keys and times of animations fit together.
void checkGltfAnimations(const nlohmann::json& gltf);

} // namespace qor::import
