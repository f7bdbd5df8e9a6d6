#include "workbench/document/product/DatabaseFile.h"

#include "workbench/document/product/ProductFile.h"
#include "workbench/document/product/ProductTables.h"
#include "workbench/document/product/tables/Database.h"
#include "workbench/document/product/tables/Guard.h"

#include <fcntl.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <memory>

namespace qor::document {

namespace fs = std::filesystem;
using tables::Database;
using tables::OpenMode;

namespace {

constexpr int stepsBetweenLooks = 20000; // of SQLite's machine: about a millisecond

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

void stopOnRequest(sqlite3* database, const std::stop_token& stop) {
    sqlite3_progress_handler(
        database, stepsBetweenLooks,
        [](void* token) {
            return static_cast<const std::stop_token*>(token)->stop_requested() ? 1 : 0;
        },
        const_cast<std::stop_token*>(&stop));
}

// The file is nobody's until it is renamed, so a journal would protect nothing; publish() makes it
// durable at once.
constexpr const char* newFilePragmas = "PRAGMA page_size = 16384; PRAGMA journal_mode = OFF;"
                                       "PRAGMA synchronous = OFF; PRAGMA foreign_keys = ON;"
                                       "PRAGMA locking_mode = EXCLUSIVE; BEGIN;";

Result<Done> fillNew(const fs::path& unfinished, const DatabaseFiller& fill) {
    Database database(unfinished, OpenMode::Create);
    tables::execute(database.get(), newFilePragmas);
    tables::execute(database.get(),
                    "PRAGMA application_id = " + std::to_string(documentApplicationId) +
                        "; PRAGMA user_version = " + std::to_string(documentVersion));
    if (Result<Done> filled = fill(database.get()); !filled)
        return filled;
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

void keepMode(const fs::path& target, const fs::path& unfinished) {
    struct stat there {};

    if (stat(target.c_str(), &there) == 0)
        chmod(unfinished.c_str(), there.st_mode & 07777);
}

Result<Done> publish(const fs::path& unfinished, const fs::path& target) {
    if (!syncPath(unfinished, O_RDWR))
        return machineFailure(target, "it could not be written to the disk");
    keepMode(target, unfinished);
    if (std::rename(unfinished.c_str(), target.c_str()) != 0)
        return machineFailure(target, "it could not be given its name");
    const fs::path folder = target.has_parent_path() ? target.parent_path() : fs::path(".");
    syncPath(folder, O_RDONLY | O_DIRECTORY);
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

// Removes what was begun, however the writing ends; after the rename there is nothing left.
class Unfinished {
public:
    explicit Unfinished(fs::path path) : path_(std::move(path)) { remove(); }

    ~Unfinished() { remove(); }

    Unfinished(const Unfinished&) = delete;
    Unfinished& operator=(const Unfinished&) = delete;
    Unfinished(Unfinished&&) = delete;
    Unfinished& operator=(Unfinished&&) = delete;

    [[nodiscard]] const fs::path& path() const { return path_; }

private:
    void remove() const {
        std::error_code ignored;
        fs::remove(path_, ignored);
    }

    fs::path path_;
};

fs::path whereItLeads(const fs::path& file) {
    std::error_code error;
    if (!fs::is_symlink(file, error))
        return file;
    const fs::path target = fs::weakly_canonical(file, error);
    return error ? file : target;
}

} // namespace

Result<Done> writeDatabase(const fs::path& file, const DatabaseFiller& fill) {
    const fs::path target = whereItLeads(file);
    removeAbandoned(target);
    const Unfinished unfinished(unfinishedName(target, getpid()));
    Result<Done> written =
        tables::guarded(file.string(), [&] { return fillNew(unfinished.path(), fill); });
    return written ? publish(unfinished.path(), target) : written;
}

Result<Done>
readDatabase(const fs::path& file, const ReadDatabaseOptions& options, const DatabaseReader& read) {
    std::error_code error;
    const std::uintmax_t size = fs::file_size(file, error);
    if (error)
        return Failure{FaultKind::Input, file.string() + ": " + error.message()};
    return tables::guarded(file.string(), [&]() -> Result<Done> {
        const std::unique_ptr<Database> database = openToRead(file);
        stopOnRequest(database->get(), options.stop);
        checkLength(database->get(), size);
        if (Result<Done> sound =
                checkDocumentHeader(database->get(), file.string(), options.quickCheck);
            !sound)
            return sound;
        return read(database->get(), size);
    });
}

std::string findDamage(const fs::path& file, std::stop_token stop) {
    std::string complaint;
    const Result<Done> checked = tables::guarded(file.string(), [&]() -> Result<Done> {
        const std::unique_ptr<Database> database = openToRead(file);
        stopOnRequest(database->get(), stop);
        tables::Statement check(database->get(), "PRAGMA integrity_check(1)");
        const std::string answer = check.step() ? check.text(0) : "no answer";
        if (answer != "ok")
            complaint = answer;
        return Done{};
    });
    if (stop.stop_requested())
        return {};
    return checked ? complaint : checked.failure().text;
}

} // namespace qor::document
