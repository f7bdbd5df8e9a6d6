#pragma once

#include "workbench/import/model/ImportReport.h"

#include <assimp/DefaultIOSystem.h>

#include <filesystem>
#include <optional>
#include <span>
#include <string>

namespace qor::import {

/// Where a model may read files: its own folder and what lies below it, links followed.
class ModelFolder {
public:
    explicit ModelFolder(const std::filesystem::path& model);

    /// The file that the model calls \p name, or nothing if it lies outside the folder.
    [[nodiscard]] std::optional<std::filesystem::path>
    find(const std::filesystem::path& name) const;

private:
    std::filesystem::path folder_;
};

/// Assimp's view of the disk: the model's folder, and the model itself as bytes in memory if given.
class ConfinedFiles : public Assimp::DefaultIOSystem {
public:
    /// All must outlive the import. \p content stands for the file \p model; empty: the file
    /// itself.
    ConfinedFiles(const std::filesystem::path& model,
                  std::span<const std::uint8_t> content,
                  ImportReport& report);

    bool Exists(const char* file) const override;
    Assimp::IOStream* Open(const char* file, const char* mode) override;

private:
    [[nodiscard]] bool isModel(const char* file) const;

    std::filesystem::path model_;
    ModelFolder folder_;
    std::span<const std::uint8_t> content_;
    ImportReport& report_;
};

} // namespace qor::import
