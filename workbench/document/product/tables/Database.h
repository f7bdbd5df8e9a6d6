#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_blob;
struct sqlite3_stmt;

namespace qor::document::tables {

/// Thrown inside this room only; the doors (ProductFile, ProductTables) turn it into a Failure.
class DatabaseError : public std::runtime_error {
public:
    DatabaseError(int sqliteCode, const std::string& text)
        : std::runtime_error(text), code(sqliteCode) {}

    int code; ///< SQLite's primary result code
};

/// A prepared statement. Parameters and columns count from 1 and 0, as SQLite's do.
class Statement {
public:
    Statement(sqlite3* database, std::string_view sql);
    ~Statement();
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;
    Statement(Statement&&) = delete;
    Statement& operator=(Statement&&) = delete;

    void bind(int parameter, std::int64_t value);
    void bind(int parameter, double value);
    void bind(int parameter, std::string_view value);
    /// The bytes must live until the next step. An empty span is stored as a blob of length 0, not
    /// as NULL.
    void bind(int parameter, std::span<const std::byte> value);
    void bindNull(int parameter);
    /// A row's number, or NULL for a negative \p index.
    void bindReference(int parameter, std::int32_t index);

    /// True if there is a row.
    bool step();
    /// Runs a statement without rows and makes it ready for the next binding.
    void run();

    [[nodiscard]] bool isNull(int column) const;
    [[nodiscard]] std::int64_t integer(int column) const;
    [[nodiscard]] double real(int column) const;
    [[nodiscard]] std::string text(int column) const;

private:
    void check(int code) const;

    sqlite3* database_;
    sqlite3_stmt* statement_ = nullptr;
};

/// Reads one blob column row by row straight into the caller's memory.
class BlobReader {
public:
    BlobReader(sqlite3* database, const char* table, const char* column);
    ~BlobReader();
    BlobReader(const BlobReader&) = delete;
    BlobReader& operator=(const BlobReader&) = delete;
    BlobReader(BlobReader&&) = delete;
    BlobReader& operator=(BlobReader&&) = delete;

    /// Fills \p target, which must have exactly the blob's length.
    void read(std::int64_t row, std::span<std::byte> target);

private:
    void open(std::int64_t row);

    sqlite3* database_;
    const char* table_;
    const char* column_;
    sqlite3_blob* blob_ = nullptr;
};

enum class OpenMode { ReadOnly, ReadWrite, Create };

/// An owned connection. Extended hardening is on: the schema of the file is not trusted with
/// functions.
class Database {
public:
    Database(const std::filesystem::path& file, OpenMode mode);
    ~Database();
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;
    Database(Database&&) = delete;
    Database& operator=(Database&&) = delete;

    [[nodiscard]] sqlite3* get() const { return database_; }

    /// Commits what is pending to the operating system and closes; throws where the destructor
    /// could not.
    void close();

private:
    sqlite3* database_ = nullptr;
};

/// Switches off what a hostile schema could use: functions in views and triggers, writes to the
/// schema.
void harden(sqlite3* database);
void execute(sqlite3* database, const std::string& sql);

} // namespace qor::document::tables
