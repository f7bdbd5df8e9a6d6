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

/// The model as Assimp sees it.
struct SeenModel {
    std::filesystem::path file;            ///< on the disk
    std::filesystem::path name;            ///< what Assimp calls it
    std::span<const std::uint8_t> content; ///< stands for the file's own bytes unless it is empty
};

/// Assimp's view of the disk: the model's folder, and the model itself.
class ConfinedFiles : public Assimp::DefaultIOSystem {
public:
    /// The content and \p report must outlive the import.
    ConfinedFiles(SeenModel model, ImportReport& report);

    bool Exists(const char* file) const override;
    Assimp::IOStream* Open(const char* file, const char* mode) override;

private:
    [[nodiscard]] bool isModel(const char* file) const;
    /// Whether Assimp looks for the file on its own account, by the model's name.
    [[nodiscard]] bool isGuess(const std::filesystem::path& file) const;

    SeenModel model_;
    ModelFolder folder_;
    ImportReport& report_;
};

} // namespace qor::import
