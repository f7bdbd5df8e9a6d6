#include "workbench/document/session/Recovery.h"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <tuple>

namespace qor::document {

namespace fs = std::filesystem;

namespace {

constexpr const char* suffix = ".qor";
constexpr int attempts = 10000;

fs::path dataFolder() {
    if (const char* folder = std::getenv("XDG_DATA_HOME"); folder != nullptr && *folder == '/')
        return folder;
    const char* home = std::getenv("HOME");
    return fs::path(home != nullptr ? home : "/") / ".local" / "share";
}

bool makePrivateFolder(const fs::path& folder) {
    std::error_code error;
    fs::create_directories(folder, error);
    if (!fs::is_directory(folder, error))
        return false;
    fs::permissions(folder, fs::perms::owner_all, error);
    return true;
}

void removeFile(const fs::path& file) {
    std::error_code ignored;
    fs::remove(file, ignored);
}

/// Removes what the dead left whose recovery file was never whole, or is gone.
void removeRemains(const fs::path& folder) {
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(folder, error)) {
        const std::string name = entry.path().filename().string();
        if (!name.starts_with('.') || !name.ends_with(".qor.lock"))
            continue;
        const fs::path file =
            folder / name.substr(1, name.size() - 1 - std::string(".lock").size());
        std::error_code ignored;
        if (fs::exists(file, ignored) || DocumentLock::isHeld(file))
            continue;
        removeAbandoned(file);
        // Taking the lock and letting it go removes it, if nobody has it.
        (void)DocumentLock::acquire(file);
    }
}

} // namespace

fs::path defaultRecoveryFolder() {
    return dataFolder() / "qorworkbench" / "recovery";
}

std::vector<Recoverable> findRecoverable(const fs::path& folder) {
    std::vector<Recoverable> found;
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(folder, error)) {
        const fs::path& file = entry.path();
        if (file.extension() != suffix || file.filename().string().starts_with('.') ||
            DocumentLock::isHeld(file))
            continue;
        removeAbandoned(file);
        if (const Result<DocumentInfo> info = readDocumentInfo(file))
            found.push_back(
                {file, info.value().recoveryPath, info.value().title, info.value().savedAt});
    }
    removeRemains(folder);
    std::sort(found.begin(), found.end(), [](const Recoverable& a, const Recoverable& b) {
        return std::tie(b.savedAt, a.file) < std::tie(a.savedAt, b.file);
    });
    return found;
}

void discardRecoverable(const Recoverable& recoverable) {
    if (const auto lock = DocumentLock::acquire(recoverable.file))
        removeFile(recoverable.file);
}

std::shared_ptr<RecoveryFile> RecoveryFile::create(const fs::path& folder) {
    if (!makePrivateFolder(folder))
        return nullptr;
    for (int number = 1; number < attempts; ++number) {
        const fs::path file =
            folder / (std::to_string(getpid()) + "-" + std::to_string(number) + suffix);
        std::error_code ignored;
        if (fs::exists(file, ignored))
            continue; // of this program, or of a dead one that had this number
        if (auto lock = DocumentLock::acquire(file))
            return std::shared_ptr<RecoveryFile>(new RecoveryFile(file, std::move(lock.value())));
    }
    return nullptr;
}

std::shared_ptr<RecoveryFile> RecoveryFile::adopt(const fs::path& file) {
    auto lock = DocumentLock::acquire(file);
    if (!lock)
        return nullptr;
    return std::shared_ptr<RecoveryFile>(new RecoveryFile(file, std::move(lock.value())));
}

RecoveryFile::~RecoveryFile() {
    if (!kept_)
        removeFile(path_);
}

} // namespace qor::document
