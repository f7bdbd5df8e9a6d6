#pragma once

#include <bit>
#include <cstddef>
#include <span>
#include <vector>

namespace qor::document::tables {

// Numbers lie in the file in little-endian order. On such a machine their bytes are written and
// read as they are.
static_assert(std::endian::native == std::endian::little,
              "blobs need a byte swap on a big-endian machine");

template <typename T>
std::span<const std::byte> bytesOf(const std::vector<T>& values) {
    return std::as_bytes(std::span(values));
}

template <typename T>
std::span<std::byte> writableBytesOf(std::vector<T>& values) {
    return std::as_writable_bytes(std::span(values));
}

} // namespace qor::document::tables
