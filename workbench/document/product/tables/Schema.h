#pragma once

#include <span>
#include <string>

struct sqlite3;

namespace qor::document::tables {

/// A product table: its name and the exact statement that makes it. A file whose stored statement
/// differs from it was not written by this program and is refused, so that no generated column,
/// view or trigger gets in.
struct Table {
    const char* name;
    std::string sql;
};

/// All product tables, in an order that satisfies their references.
[[nodiscard]] std::span<const Table> productTables();

/// True if \p database has the first product table at all.
[[nodiscard]] bool hasProductTables(sqlite3* database);

/// Throws DatabaseError naming the first table that is missing or not as productTables() says.
void checkProductTables(sqlite3* database);

/// Makes the tables, or empties those that are there.
void resetProductTables(sqlite3* database);

} // namespace qor::document::tables
