#include "workbench/document/product/tables/RowReader.h"

#include <sqlite3.h>

#include <limits>

namespace qor::document::tables {

void damaged(const std::string& what) {
    throw DatabaseError(SQLITE_CORRUPT, "it holds " + what);
}

void expectRow(const char* table, std::int64_t row, std::size_t expected) {
    if (row != static_cast<std::int64_t>(expected))
        damaged("row " + std::to_string(row) + " of " + table + " out of order");
}

std::int32_t reference(const Statement& row, int column) {
    if (row.isNull(column))
        return -1;
    const std::int64_t value = row.integer(column);
    if (value < 0 || value > std::numeric_limits<std::int32_t>::max())
        damaged("the reference " + std::to_string(value));
    return static_cast<std::int32_t>(value);
}

std::uint32_t count(const Statement& row, int column) {
    const std::int64_t value = row.integer(column);
    if (value < 0 || value > std::numeric_limits<std::uint32_t>::max())
        damaged("the count " + std::to_string(value));
    return static_cast<std::uint32_t>(value);
}

} // namespace qor::document::tables
