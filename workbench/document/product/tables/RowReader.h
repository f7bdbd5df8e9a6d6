#pragma once

#include "workbench/document/product/tables/Database.h"

#include <cstdint>
#include <string>

namespace qor::document::tables {

/// Says that a file holds something that no writer makes.
[[noreturn]] void damaged(const std::string& what);

/// Row numbers must run from 0 without a gap; throws if \p row is not the one expected.
void expectRow(const char* table, std::int64_t row, std::size_t expected);

/// A reference column: the number, or `none` for NULL. Throws if it does not fit an int32.
[[nodiscard]] std::int32_t reference(const Statement& row, int column);

/// An enumerator stored as a number from 0 to \p last.
template <typename Enum>
[[nodiscard]] Enum enumerator(const Statement& row, int column, Enum last) {
    const std::int64_t value = row.integer(column);
    if (value < 0 || value > static_cast<std::int64_t>(last))
        damaged("the unknown kind " + std::to_string(value));
    return static_cast<Enum>(value);
}

/// An unsigned 32-bit column.
[[nodiscard]] std::uint32_t count(const Statement& row, int column);

} // namespace qor::document::tables
