#include "workbench/document/session/RecentFiles.h"

#include "platform/system/QorSettingRepository.h"

#include <algorithm>

namespace qor::document {

namespace fs = std::filesystem;

namespace {

constexpr const char* repositoryName = "documents";

QorString keyOf(std::size_t place) {
    return "RecentFile." + std::to_string(place + 1);
}

void write(const std::vector<fs::path>& files) {
    const auto repository = QorSettingRepository::GetRepository(repositoryName);
    if (!repository)
        return;
    for (std::size_t i = 0; i < RecentFiles::most; ++i)
        if (i < files.size() || repository->FindSetting(keyOf(i)) != nullptr)
            repository->WriteSetting(keyOf(i),
                                     QorUnicodeString(i < files.size() ? files[i].string() : ""));
    repository->SaveRepository();
}

} // namespace

std::vector<fs::path> RecentFiles::list() {
    std::vector<fs::path> files;
    const auto repository = QorSettingRepository::GetRepository(repositoryName);
    QorUnicodeString file;
    for (std::size_t i = 0; repository && i < most; ++i)
        if (repository->ReadSetting(keyOf(i), &file) && !file.IsNull())
            files.emplace_back(file.Str());
    return files;
}

void RecentFiles::add(const fs::path& file) {
    const fs::path absolute = fs::absolute(file).lexically_normal();
    std::vector<fs::path> files = list();
    std::erase(files, absolute);
    files.insert(files.begin(), absolute);
    files.resize(std::min(files.size(), most));
    write(files);
}

bool RecentFiles::dropIfMissing(const fs::path& file) {
    std::error_code error;
    const fs::path absolute = fs::absolute(file).lexically_normal();
    if (fs::exists(absolute, error))
        return false;
    std::vector<fs::path> files = list();
    if (std::erase(files, absolute) == 0)
        return false;
    write(files);
    return true;
}

} // namespace qor::document
