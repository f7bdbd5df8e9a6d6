#pragma once

#include "workbench/document/file/DocumentFile.h"
#include "workbench/document/session/Operation.h"

#include <chrono>
#include <cstdint>
#include <filesystem>

namespace qor::document {

/// How model files are imported.
struct ImportOptions {
    std::filesystem::path program;          ///< qorimport
    double deflectionMm = 0;                ///< 0: relative to each part
    double angleDeg = 0;                    ///< 0: the import's default
    std::chrono::milliseconds timeLimit{0}; ///< 0: none
    std::uint64_t memoryLimit = 0;          ///< bytes of address space; 0: none
};

/// Runs the import of \p model in its process and reads what it made. A cancel kills the process at
/// once. Fails with one sentence that names the model, whatever becomes of the process. For a
/// worker; waits.
[[nodiscard]] Result<LoadedDocument> importModel(const std::filesystem::path& model,
                                                 const ImportOptions& options,
                                                 const WorkContext& context);

/// Of the computer, for a limit that leaves room.
[[nodiscard]] std::uint64_t memoryOfComputer();

} // namespace qor::document
