#pragma once

#include "workbench/document/file/DocumentFile.h"
#include "workbench/document/file/DocumentLock.h"

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace qor::document {

/// A document that a program which died had not saved.
struct Recoverable {
    std::filesystem::path file; ///< the recovery file
    std::filesystem::path path; ///< the document's own file; empty if it had none
    std::string title;
    std::int64_t savedAt = 0; ///< seconds since 1970-01-01 UTC

    bool operator==(const Recoverable&) const = default;
};

/// Where recovery files are: `$XDG_DATA_HOME/qorworkbench/recovery` (`~/.local/share` when that is
/// unset).
[[nodiscard]] std::filesystem::path defaultRecoveryFolder();

/// What dead programs left in \p folder, newest first. Files of programs that run are not in it,
/// nor what cannot be read.
[[nodiscard]] std::vector<Recoverable> findRecoverable(const std::filesystem::path& folder);

/// Removes a recovery file for good.
void discardRecoverable(const Recoverable& recoverable);

/// The recovery file of one open document: held by a lock as long as the document is open, so that
/// it is known whose it is; removed with the object, but left by a program that dies. Its methods
/// may run on a worker, one at a time.
class RecoveryFile {
public:
    /// A new one in \p folder, which is made if need be. Null when it cannot be had.
    [[nodiscard]] static std::shared_ptr<RecoveryFile> create(const std::filesystem::path& folder);

    /// Takes over one that a dead program left. Null when another program has done so.
    [[nodiscard]] static std::shared_ptr<RecoveryFile> adopt(const std::filesystem::path& file);

    ~RecoveryFile();
    RecoveryFile(const RecoveryFile&) = delete;
    RecoveryFile& operator=(const RecoveryFile&) = delete;
    RecoveryFile(RecoveryFile&&) = delete;
    RecoveryFile& operator=(RecoveryFile&&) = delete;

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }

    /// The file is left where it is: it could not be read now, but may be later.
    void keep() { kept_ = true; }

private:
    RecoveryFile(std::filesystem::path path, std::unique_ptr<DocumentLock> lock)
        : path_(std::move(path)), lock_(std::move(lock)) {}

    std::filesystem::path path_;
    std::unique_ptr<DocumentLock> lock_;
    bool kept_ = false;
};

} // namespace qor::document
