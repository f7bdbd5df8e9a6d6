#pragma once

#include "workbench/document/product/Product.h"
#include "workbench/import/scene/ConfinedFiles.h"

#include <nlohmann/json.hpp>

#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <vector>

namespace qor::import {

/// A glTF 2.0 file whose claims have been checked: every index names something, every buffer, view
/// and accessor lies within what is there, the node tree is a tree. What Assimp gets of it are
/// geometry, transforms and animations; names are replaced by numbers there, so that each of its
/// objects leads back to the JSON.
class GltfFile {
public:
    /// Reads .gltf (\p binary false) or .glb. Throws ImportError.
    GltfFile(const std::filesystem::path& file, bool binary);

    [[nodiscard]] const nlohmann::json& root() const { return json_; }

    /// The file for Assimp, in the form of the original.
    [[nodiscard]] std::vector<std::uint8_t> contentForAssimp() const;

    /// The bytes of the picture \p image. Throws ImportError if they cannot be had.
    [[nodiscard]] std::vector<std::uint8_t> imageBytes(std::size_t image) const;

    /// The number at the end of a name that contentForAssimp() gave; none if it is no such name.
    [[nodiscard]] static std::int32_t indexFromName(const std::string& name);

private:
    [[nodiscard]] std::vector<std::uint8_t> bufferBytes(std::size_t buffer) const;
    [[nodiscard]] std::uint64_t availableBytes(std::size_t buffer) const;

    bool binary_;
    ModelFolder folder_;
    nlohmann::json json_;
    std::vector<std::uint8_t> chunk_; ///< the binary chunk of a .glb
};

} // namespace qor::import
