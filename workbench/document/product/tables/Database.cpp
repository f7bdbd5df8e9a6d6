#include "workbench/document/product/tables/Database.h"

#include <sqlite3.h>

#include <cstring>

namespace qor::document::tables {

namespace {

[[noreturn]] void fail(sqlite3* database, int code) {
    throw DatabaseError(code & 0xff,
                        database != nullptr ? sqlite3_errmsg(database) : sqlite3_errstr(code));
}

int openFlags(OpenMode mode) {
    switch (mode) {
    case OpenMode::ReadOnly:
        return SQLITE_OPEN_READONLY;
    case OpenMode::ReadWrite:
        return SQLITE_OPEN_READWRITE;
    case OpenMode::Create:
        break;
    }
    return SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_EXCLUSIVE;
}

// The system's reason where SQLite has none of its own.
std::string openingFault(sqlite3* database, int code) {
    const int reason = database != nullptr ? sqlite3_system_errno(database) : 0;
    if ((code & 0xff) == SQLITE_CANTOPEN && reason != 0)
        return std::strerror(reason);
    return database != nullptr ? sqlite3_errmsg(database) : sqlite3_errstr(code);
}

} // namespace

Statement::Statement(sqlite3* database, std::string_view sql) : database_(database) {
    check(sqlite3_prepare_v2(database, sql.data(), static_cast<int>(sql.size()), &statement_,
                             nullptr));
}

Statement::~Statement() {
    sqlite3_finalize(statement_);
}

void Statement::bind(int parameter, std::int64_t value) {
    check(sqlite3_bind_int64(statement_, parameter, value));
}

void Statement::bind(int parameter, double value) {
    check(sqlite3_bind_double(statement_, parameter, value));
}

void Statement::bind(int parameter, std::string_view value) {
    check(sqlite3_bind_text64(statement_, parameter, value.data(), value.size(), SQLITE_TRANSIENT,
                              SQLITE_UTF8));
}

void Statement::bind(int parameter, std::span<const std::byte> value) {
    if (value.empty())
        check(sqlite3_bind_zeroblob(statement_, parameter, 0));
    else
        check(
            sqlite3_bind_blob64(statement_, parameter, value.data(), value.size(), SQLITE_STATIC));
}

void Statement::bindNull(int parameter) {
    check(sqlite3_bind_null(statement_, parameter));
}

void Statement::bindReference(int parameter, std::int32_t index) {
    if (index < 0)
        bindNull(parameter);
    else
        bind(parameter, std::int64_t{index});
}

bool Statement::step() {
    const int code = sqlite3_step(statement_);
    if (code != SQLITE_ROW && code != SQLITE_DONE)
        fail(database_, code);
    return code == SQLITE_ROW;
}

void Statement::run() {
    step();
    check(sqlite3_reset(statement_));
}

bool Statement::isNull(int column) const {
    return sqlite3_column_type(statement_, column) == SQLITE_NULL;
}

std::int64_t Statement::integer(int column) const {
    return sqlite3_column_int64(statement_, column);
}

double Statement::real(int column) const {
    return sqlite3_column_double(statement_, column);
}

std::string Statement::text(int column) const {
    const auto* bytes = reinterpret_cast<const char*>(sqlite3_column_text(statement_, column));
    const int length = sqlite3_column_bytes(statement_, column);
    return bytes == nullptr ? std::string() : std::string(bytes, static_cast<std::size_t>(length));
}

void Statement::check(int code) const {
    if (code != SQLITE_OK)
        fail(database_, code);
}

BlobReader::BlobReader(sqlite3* database, const char* table, const char* column)
    : database_(database), table_(table), column_(column) {}

BlobReader::~BlobReader() {
    sqlite3_blob_close(blob_);
}

void BlobReader::open(std::int64_t row) {
    const int code = blob_ == nullptr
                         ? sqlite3_blob_open(database_, "main", table_, column_, row, 0, &blob_)
                         : sqlite3_blob_reopen(blob_, row);
    if (code != SQLITE_OK)
        fail(database_, code);
}

void BlobReader::read(std::int64_t row, std::span<std::byte> target) {
    open(row);
    if (static_cast<std::size_t>(sqlite3_blob_bytes(blob_)) != target.size())
        throw DatabaseError(SQLITE_CORRUPT, "a blob changed its length");
    if (const int code =
            sqlite3_blob_read(blob_, target.data(), static_cast<int>(target.size()), 0))
        fail(database_, code);
}

Database::Database(const std::filesystem::path& file, OpenMode mode) {
    const int code = sqlite3_open_v2(file.c_str(), &database_, openFlags(mode), nullptr);
    if (code != SQLITE_OK) {
        const std::string text = openingFault(database_, code);
        sqlite3_close(database_);
        throw DatabaseError(code & 0xff, text);
    }
    if (mode != OpenMode::Create)
        harden(database_);
}

Database::~Database() {
    sqlite3_close(database_);
}

void Database::close() {
    if (const int code = sqlite3_close(database_))
        fail(database_, code);
    database_ = nullptr;
}

void harden(sqlite3* database) {
    sqlite3_db_config(database, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_db_config(database, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    sqlite3_db_config(database, SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
    sqlite3_db_config(database, SQLITE_DBCONFIG_ENABLE_VIEW, 0, nullptr);
}

void execute(sqlite3* database, const std::string& sql) {
    if (const int code = sqlite3_exec(database, sql.c_str(), nullptr, nullptr, nullptr))
        fail(database, code);
}

} // namespace qor::document::tables
