#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace qor::import {

enum class PlyForm : std::uint8_t { Text, LittleEndian, BigEndian };

enum class PlyNumber : std::uint8_t { Int8, Uint8, Int16, Uint16, Int32, Uint32, Float, Double };

struct PlyProperty {
    std::string name;
    PlyNumber type = PlyNumber::Float;
    bool isList = false;
    PlyNumber countType = PlyNumber::Uint8; ///< of a list's length
};

struct PlyElement {
    std::string name;
    std::uint64_t count = 0;
    std::vector<PlyProperty> properties;
};

/// What the head of a PLY file announces.
struct PlyHead {
    PlyForm form = PlyForm::Text;
    std::vector<PlyElement> elements;
    std::size_t length = 0; ///< of the head; the elements follow
};

/// Throws ImportError if there is no such head, or it announces more elements than so many bytes
/// can hold.
[[nodiscard]] PlyHead readPlyHead(std::span<const std::uint8_t> bytes);

[[nodiscard]] std::size_t bytesOf(PlyNumber type);

} // namespace qor::import
