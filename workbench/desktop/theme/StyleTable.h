#pragma once

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace qor::desktop {

/// A row of a table from something that Qt asks for to what answers it.
template <class Key, class Value>
struct Row {
    Key key;
    Value value;
};

template <class Key, class Value, std::size_t count>
const Value* find(const Row<Key, Value> (&rows)[count], Key key) {
    const auto* const row =
        std::find_if(std::begin(rows), std::end(rows),
                     [&](const Row<Key, Value>& one) { return one.key == key; });
    return row != std::end(rows) ? &row->value : nullptr;
}

} // namespace qor::desktop
