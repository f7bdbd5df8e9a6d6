#include "workbench/import/scene/PlyCheck.h"

#include "workbench/import/model/ImportError.h"
#include "workbench/import/scene/GltfContainer.h"
#include "workbench/import/scene/PlyHead.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cstring>
#include <string_view>

namespace qor::import {

namespace {

// Gives the numbers of a body one after another; only whole ones matter, what else a file holds is
// passed over.
class Numbers {
public:
    Numbers(std::span<const std::uint8_t> bytes, PlyForm form)
        : at_(reinterpret_cast<const char*>(bytes.data())), end_(at_ + bytes.size()), form_(form) {}

    /// False when the file ends before it.
    bool take(PlyNumber type, std::int64_t& value) {
        return form_ == PlyForm::Text ? takeWord(value) : takeBytes(type, value);
    }

    /// No list can be longer.
    [[nodiscard]] std::uint64_t left() const { return static_cast<std::uint64_t>(end_ - at_); }

private:
    static bool isBlank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

    bool takeWord(std::int64_t& value) {
        at_ = std::find_if_not(at_, end_, isBlank);
        if (at_ == end_)
            return false;
        const char* last = std::find_if(at_, end_, isBlank);
        value = 0;
        std::from_chars(at_, last, value);
        at_ = last;
        return true;
    }

    bool takeBytes(PlyNumber type, std::int64_t& value) {
        const std::size_t size = bytesOf(type);
        if (left() < size)
            return false;
        std::array<char, 8> bytes{};
        std::copy_n(at_, size, bytes.begin());
        at_ += size;
        if ((form_ == PlyForm::LittleEndian) != (std::endian::native == std::endian::little))
            std::reverse(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(size));
        value = valueOf(type, bytes);
        return true;
    }

    template <typename T>
    static T as(const std::array<char, 8>& bytes) {
        T value{};
        std::memcpy(&value, bytes.data(), sizeof value);
        return value;
    }

    static std::int64_t valueOf(PlyNumber type, const std::array<char, 8>& bytes) {
        switch (type) {
        case PlyNumber::Int8:
            return as<std::int8_t>(bytes);
        case PlyNumber::Uint8:
            return as<std::uint8_t>(bytes);
        case PlyNumber::Int16:
            return as<std::int16_t>(bytes);
        case PlyNumber::Uint16:
            return as<std::uint16_t>(bytes);
        case PlyNumber::Int32:
            return as<std::int32_t>(bytes);
        case PlyNumber::Uint32:
            return as<std::uint32_t>(bytes);
        case PlyNumber::Float:
        case PlyNumber::Double:
            break;
        }
        return 0;
    }

    const char* at_;
    const char* end_;
    PlyForm form_;
};

bool listsVertices(const PlyElement& element, const PlyProperty& property) {
    return element.name == "face" && property.isList && property.name.starts_with("vertex_ind");
}

class BodyCheck {
public:
    BodyCheck(const PlyHead& head, std::span<const std::uint8_t> body)
        : head_(head), numbers_(body, head.form) {
        for (const PlyElement& element : head.elements)
            if (element.name == "vertex")
                vertices_ = element.count;
    }

    void check() {
        for (const PlyElement& element : head_.elements)
            for (std::uint64_t i = 0; i < element.count; ++i)
                for (const PlyProperty& property : element.properties)
                    check(element, property, i);
    }

private:
    void check(const PlyElement& element, const PlyProperty& property, std::uint64_t index) {
        if (!property.isList) {
            static_cast<void>(next(property.type, element, index));
            return;
        }
        const std::int64_t length = next(property.countType, element, index);
        if (length < 0 || static_cast<std::uint64_t>(length) > numbers_.left())
            throw ImportError(element.name + " " + std::to_string(index) + " claims a list of " +
                              std::to_string(length) + " numbers");
        const bool areVertices = listsVertices(element, property);
        for (std::int64_t i = 0; i < length; ++i) {
            const std::int64_t value = next(property.type, element, index);
            if (areVertices && (value < 0 || static_cast<std::uint64_t>(value) >= vertices_))
                throw ImportError("face " + std::to_string(index) + " names the vertex " +
                                  std::to_string(value) + ", which is not there");
        }
    }

    std::int64_t next(PlyNumber type, const PlyElement& element, std::uint64_t index) {
        std::int64_t value = 0;
        if (!numbers_.take(type, value))
            throw ImportError("the file is cut off: " + element.name + " " + std::to_string(index) +
                              " of " + std::to_string(element.count) + " is missing");
        return value;
    }

    const PlyHead& head_;
    Numbers numbers_;
    std::uint64_t vertices_ = 0;
};

} // namespace

void checkPly(const std::filesystem::path& file) {
    const std::vector<std::uint8_t> bytes = readBytes(file);
    const PlyHead head = readPlyHead(bytes);
    BodyCheck(head, std::span(bytes).subspan(head.length)).check();
}

} // namespace qor::import
