#pragma once

#include "workbench/document/product/Result.h"

#include <filesystem>
#include <memory>

namespace qor::document {

/// Says to other programs, and to this one, that a document is open for writing. It is a hidden
/// file beside the document, ".NAME.lock", that names the process and its computer and is held by a
/// file lock: the system frees that when the process ends in whatever way, so the lock of a dead
/// program is taken over by the next one. Any thread.
class DocumentLock {
public:
    /// Fails with a sentence that names who has the document: input, if that is a living program;
    /// machine, if no lock file can be made.
    [[nodiscard]] static Result<std::unique_ptr<DocumentLock>>
    acquire(const std::filesystem::path& document);

    /// Whether somebody holds it now.
    [[nodiscard]] static bool isHeld(const std::filesystem::path& document);

    /// Whether it is this program that holds it.
    [[nodiscard]] static bool isHeldByThisProgram(const std::filesystem::path& document);

    /// The lock file; equal for two names of one document.
    [[nodiscard]] const std::filesystem::path& file() const { return file_; }

    /// Removes the lock file.
    ~DocumentLock();
    DocumentLock(const DocumentLock&) = delete;
    DocumentLock& operator=(const DocumentLock&) = delete;
    DocumentLock(DocumentLock&&) = delete;
    DocumentLock& operator=(DocumentLock&&) = delete;

    /// Name of the lock file of \p document.
    [[nodiscard]] static std::filesystem::path fileOf(const std::filesystem::path& document);

private:
    DocumentLock(std::filesystem::path file, int descriptor)
        : file_(std::move(file)), descriptor_(descriptor) {}

    std::filesystem::path file_;
    int descriptor_;
};

} // namespace qor::document
