#include "workbench/document/product/ProductFile.h"

#include "workbench/document/product/ProductTables.h"
#include "workbench/document/product/tables/Database.h"
#include "workbench/document/product/tables/Guard.h"

#include <fcntl.h>
#include <sqlite3.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstring>
#include <memory>

namespace qor::document {

namespace fs = std::filesystem;
using tables::Database;
using tables::OpenMode;

namespace {

constexpr std::string_view unfinishedSuffix = ".unfinished";

Failure machineFailure(const fs::path& file, const std::string& what) {
    return {FaultKind::Machine, file.string() + ": " + what + ": " + std::strerror(errno)};
}

// Read only, unless a writer died in the middle of a save: then its journal must be rolled back
// first.
std::unique_ptr<Database> openToRead(const fs::path& file) {
    auto database = std::make_unique<Database>(file, OpenMode::ReadOnly);
    try {
        tables::execute(database->get(), "PRAGMA schema_version");
    } catch (const tables::DatabaseError& error) {
        if (error.code != SQLITE_READONLY && error.code != SQLITE_CANTOPEN)
            throw;
        database = std::make_unique<Database>(file, OpenMode::ReadWrite);
    }
    return database;
}

// The file is nobody's until it is renamed, so a journal would protect nothing; flush() makes it
// durable at once.
constexpr const char* newFilePragmas = "PRAGMA page_size = 16384; PRAGMA journal_mode = OFF;"
                                       "PRAGMA synchronous = OFF; PRAGMA foreign_keys = ON;"
                                       "PRAGMA locking_mode = EXCLUSIVE; BEGIN;";

Result<Done> fill(const fs::path& unfinished,
                  const fs::path& target,
                  const Product& product,
                  const ProductProgress& progress) {
    Database database(unfinished, OpenMode::Create);
    tables::execute(database.get(), newFilePragmas);
    tables::execute(database.get(),
                    "PRAGMA application_id = " + std::to_string(documentApplicationId) +
                        "; PRAGMA user_version = " + std::to_string(documentVersion));
    if (Result<Done> stored = storeProduct(database.get(), target.string(), product, progress);
        !stored)
        return stored;
    tables::execute(database.get(), "COMMIT");
    database.close();
    return Done{};
}

bool syncPath(const fs::path& path, int flags) {
    const int file = open(path.c_str(), flags | O_CLOEXEC);
    if (file < 0)
        return false;
    const bool synced = fsync(file) == 0;
    close(file);
    return synced;
}

fs::path folderOf(const fs::path& file) {
    return file.has_parent_path() ? file.parent_path() : fs::path(".");
}

Result<Done> publish(const fs::path& unfinished, const fs::path& target) {
    if (!syncPath(unfinished, O_RDWR))
        return machineFailure(target, "it could not be written to the disk");
    if (std::rename(unfinished.c_str(), target.c_str()) != 0)
        return machineFailure(target, "it could not be given its name");
    syncPath(folderOf(target), O_RDONLY | O_DIRECTORY);
    return Done{};
}

// SQLite reads what a truncated last page lacks as zeros; here a file that is shorter than its
// header says is damaged.
void checkLength(sqlite3* database, std::uintmax_t size) {
    tables::Statement pages(database, "SELECT page_count * page_size FROM pragma_page_count(), "
                                      "pragma_page_size()");
    if (!pages.step() || static_cast<std::uintmax_t>(pages.integer(0)) > size)
        throw tables::DatabaseError(SQLITE_CORRUPT, "its end is missing");
}

// The process that wrote \p name for \p target, or 0 if the name is none of unfinishedName().
long writerOf(const std::string& name, const fs::path& target) {
    const std::string head = std::string(".") + target.filename().string() + ".";
    if (name.size() <= head.size() + unfinishedSuffix.size() || !name.starts_with(head) ||
        !name.ends_with(unfinishedSuffix))
        return 0;
    long process = 0;
    const char* first = name.data() + head.size();
    const char* last = name.data() + name.size() - unfinishedSuffix.size();
    const auto [end, error] = std::from_chars(first, last, process);
    return error == std::errc() && end == last && process > 0 ? process : 0;
}

bool runs(long process) {
    return kill(static_cast<pid_t>(process), 0) == 0 || errno == EPERM;
}

} // namespace

Result<Product> readProduct(const fs::path& file, const ReadOptions& options) {
    std::error_code error;
    const std::uintmax_t size = fs::file_size(file, error);
    if (error)
        return Failure{FaultKind::Input, file.string() + ": " + error.message()};
    return tables::guarded(file.string(), [&]() -> Result<Product> {
        const std::unique_ptr<Database> database = openToRead(file);
        checkLength(database->get(), size);
        if (Result<Done> sound =
                checkDocumentHeader(database->get(), file.string(), options.quickCheck);
            !sound)
            return sound.failure();
        return loadProduct(database->get(), file.string(), size, options);
    });
}

Result<Done>
writeProduct(const fs::path& file, const Product& product, const ProductProgress& progress) {
    removeAbandoned(file);
    const fs::path unfinished = unfinishedName(file, getpid());
    std::error_code ignored;
    fs::remove(unfinished, ignored);
    Result<Done> written =
        tables::guarded(file.string(), [&] { return fill(unfinished, file, product, progress); });
    if (written)
        written = publish(unfinished, file);
    if (!written)
        fs::remove(unfinished, ignored);
    return written;
}

fs::path unfinishedName(const fs::path& target, long process) {
    return folderOf(target) / (std::string(".") + target.filename().string() + "." +
                               std::to_string(process) + std::string(unfinishedSuffix));
}

void removeAbandoned(const fs::path& target) {
    std::error_code error;
    for (fs::directory_iterator entry(folderOf(target), error), end; !error && entry != end;
         entry.increment(error)) {
        const long process = writerOf(entry->path().filename().string(), target);
        if (process == 0 || runs(process))
            continue;
        std::error_code ignored;
        fs::remove(entry->path(), ignored);
    }
}

} // namespace qor::document
