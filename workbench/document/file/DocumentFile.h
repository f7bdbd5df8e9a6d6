#pragma once

#include "workbench/document/ProductReps.h"
#include "workbench/document/file/DocumentSnapshot.h"
#include "workbench/document/product/ProductFile.h"

#include <filesystem>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

namespace qor::document {

/// What a document file holds, ready to be shown.
struct LoadedDocument {
    ProductReps product;
    std::optional<SceneRows> scene; ///< nothing in a file that an import made
    DocumentInfo info;
    std::vector<std::string> warnings = {}; ///< what an import left out or mended; each a sentence
};

/// Writes \p snapshot as the document file \p file: one transaction in a new file, which then takes
/// the name; see writeDatabase. Fails with a sentence that names the file. Any thread.
[[nodiscard]] Result<Done> writeDocument(const std::filesystem::path& file,
                                         const DocumentSnapshot& snapshot,
                                         const ProductProgress& progress = {},
                                         std::stop_token stop = {});

struct ReadDocumentOptions {
    bool quickCheck = true;
    ProductProgress progress;
    std::stop_token stop;
};

/// Reads a document file and builds its representations. Refuses, with a sentence that names the
/// file, what is no document, damaged, of a later version or has no read access. Any thread.
[[nodiscard]] Result<LoadedDocument> readDocument(const std::filesystem::path& file,
                                                  const ReadDocumentOptions& options = {});

/// Only what the file says of itself; no check of the rest. Any thread.
[[nodiscard]] Result<DocumentInfo> readDocumentInfo(const std::filesystem::path& file);

/// Why \p file, or a file to be made there, cannot be written: read-only, or in a folder that is.
/// Empty when it can be.
[[nodiscard]] std::string whyReadOnly(const std::filesystem::path& file);

/// Whether the file begins as document files do.
[[nodiscard]] bool looksLikeDocument(const std::filesystem::path& file);

} // namespace qor::document
