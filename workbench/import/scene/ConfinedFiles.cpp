#include "workbench/import/scene/ConfinedFiles.h"

#include <assimp/MemoryIOWrapper.h>

namespace qor::import {

namespace fs = std::filesystem;

namespace {

fs::path folderOf(const fs::path& model) {
    return model.has_parent_path() ? model.parent_path() : fs::path(".");
}

} // namespace

ModelFolder::ModelFolder(const fs::path& model) : folder_(fs::canonical(folderOf(model))) {}

std::optional<fs::path> ModelFolder::find(const fs::path& name) const {
    std::error_code error;
    const fs::path whole = name.is_absolute() ? name : folder_ / name;
    const fs::path resolved = fs::weakly_canonical(whole, error);
    if (error)
        return std::nullopt;
    const fs::path relative = resolved.lexically_relative(folder_);
    if (relative.empty() || *relative.begin() == "..")
        return std::nullopt;
    return resolved;
}

ConfinedFiles::ConfinedFiles(SeenModel model, ImportReport& report)
    : model_(std::move(model)), folder_(model_.file), report_(report) {}

bool ConfinedFiles::isModel(const char* file) const {
    return model_.name == fs::path(file);
}

bool ConfinedFiles::Exists(const char* file) const {
    if (isModel(file))
        return true;
    const auto found = folder_.find(fs::absolute(file));
    return found && fs::is_regular_file(*found);
}

Assimp::IOStream* ConfinedFiles::Open(const char* file, const char* mode) {
    if (std::string_view(mode).find_first_of("wa+") != std::string_view::npos)
        return nullptr;
    if (isModel(file) && !model_.content.empty())
        return new Assimp::MemoryIOStream(model_.content.data(), model_.content.size());
    if (isModel(file))
        return DefaultIOSystem::Open(model_.file.c_str(), mode);
    const auto found = folder_.find(fs::absolute(file));
    if (!found) {
        report_.warn("it refers to \"" + std::string(file) +
                     "\", which is outside its folder and was not read");
        return nullptr;
    }
    // Pipes and devices never end, or never begin.
    if (!fs::is_regular_file(*found)) {
        if (!isGuess(*found))
            report_.warn("it refers to \"" + found->filename().string() + "\", which is missing");
        return nullptr;
    }
    return DefaultIOSystem::Open(found->c_str(), mode);
}

bool ConfinedFiles::isGuess(const fs::path& file) const {
    return file.stem() == model_.file.stem();
}

} // namespace qor::import
