#pragma once

#include "workbench/document/product/Result.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <stop_token>
#include <string>

struct sqlite3;

namespace qor::document {

/// Fills the tables of a new database inside its one transaction.
using DatabaseFiller = std::function<Result<Done>(sqlite3* database)>;

/// Reads the tables of a database whose header, length and, if asked for, structure are sound.
/// \p size is that of the file in bytes: no value in it can be longer.
using DatabaseReader = std::function<Result<Done>(sqlite3* database, std::uint64_t size)>;

/// Writes a new document file with one transaction. The file appears under its name by a rename
/// when it is whole and on the disk, with the access mode of the one it replaces; on failure, on an
/// exception of \p fill, or if the process dies, whatever had that name is as it was. A target that
/// is a link is written where it leads. Any thread.
[[nodiscard]] Result<Done> writeDatabase(const std::filesystem::path& file,
                                         const DatabaseFiller& fill);

struct ReadDatabaseOptions {
    bool quickCheck = true; ///< SQLite's quick structural check before anything is read
    std::stop_token stop;   ///< ends the check and \p read with a failure ("cancelled")
};

/// Opens a document file for reading and checks it. The file is not changed, unless a writer of an
/// older kind died in the middle of a save: then its journal is rolled back. Any thread.
[[nodiscard]] Result<Done> readDatabase(const std::filesystem::path& file,
                                        const ReadDatabaseOptions& options,
                                        const DatabaseReader& read);

/// SQLite's full integrity check, which may take as long as reading the file does several times.
/// Empty when the file is sound or \p stop was requested, else the first complaint. Any thread.
[[nodiscard]] std::string findDamage(const std::filesystem::path& file, std::stop_token stop);

} // namespace qor::document
