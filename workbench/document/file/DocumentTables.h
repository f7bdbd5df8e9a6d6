#pragma once

#include "workbench/document/file/SceneRows.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

struct sqlite3;

namespace qor::document {

/// Version of the document's own tables.
inline constexpr int documentTablesVersion = 1;

/// What a document file says of itself beside product and scene.
struct DocumentInfo {
    std::string title;                  ///< empty: by the file's name
    std::filesystem::path recoveryPath; ///< recovery files: the file that the document belongs to
    std::int64_t savedAt = 0;           ///< seconds since 1970-01-01 UTC

    bool operator==(const DocumentInfo&) const = default;
};

// The document's own tables in an open database; all throw tables::DatabaseError.

/// Makes the tables, which are not there yet, and fills them.
void storeDocumentTables(sqlite3* database, const DocumentInfo& info, const SceneRows& scene);

/// Whether the file was written by a document, not by an import.
[[nodiscard]] bool hasDocumentTables(sqlite3* database);

/// The version of the tables, for a comparison with documentTablesVersion.
[[nodiscard]] std::int64_t documentTablesVersionOf(sqlite3* database);

/// Refuses tables that are missing or were not made by this program.
void checkDocumentTables(sqlite3* database);

[[nodiscard]] DocumentInfo loadDocumentInfo(sqlite3* database);

/// Every reference in the result names a row of it or one of \p nodes, every material one of
/// \p materials, every number is finite.
[[nodiscard]] SceneRows loadSceneRows(sqlite3* database, std::size_t nodes, std::size_t materials);

} // namespace qor::document
