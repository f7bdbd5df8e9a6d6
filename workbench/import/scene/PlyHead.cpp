#include "workbench/import/scene/PlyHead.h"

#include "workbench/import/model/ImportError.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <sstream>
#include <string_view>

namespace qor::import {

namespace {

constexpr std::size_t longestHead = 256 * 1024;

struct NamedNumber {
    const char* name;
    PlyNumber type;
};

constexpr auto numbers = std::to_array<NamedNumber>({
    {"char", PlyNumber::Int8},
    {"int8", PlyNumber::Int8},
    {"uchar", PlyNumber::Uint8},
    {"uint8", PlyNumber::Uint8},
    {"short", PlyNumber::Int16},
    {"int16", PlyNumber::Int16},
    {"ushort", PlyNumber::Uint16},
    {"uint16", PlyNumber::Uint16},
    {"int", PlyNumber::Int32},
    {"int32", PlyNumber::Int32},
    {"uint", PlyNumber::Uint32},
    {"uint32", PlyNumber::Uint32},
    {"float", PlyNumber::Float},
    {"float32", PlyNumber::Float},
    {"double", PlyNumber::Double},
    {"float64", PlyNumber::Double},
});

constexpr std::array<std::size_t, 8> sizes{1, 1, 2, 2, 4, 4, 4, 8};

struct NamedForm {
    const char* name;
    PlyForm form;
};

constexpr auto forms = std::to_array<NamedForm>({{"ascii", PlyForm::Text},
                                                 {"binary_little_endian", PlyForm::LittleEndian},
                                                 {"binary_big_endian", PlyForm::BigEndian}});

template <typename Table>
const auto& find(const Table& table, const std::string& name, const char* what) {
    const auto found = std::find_if(table.begin(), table.end(),
                                    [&name](const auto& one) { return name == one.name; });
    if (found == table.end())
        throw ImportError("its head names the unknown " + std::string(what) + " \"" + name + "\"");
    return *found;
}

std::uint64_t countOf(const std::string& word, const std::string& element) {
    std::uint64_t count = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), count);
    if (error != std::errc() || end != word.data() + word.size())
        throw ImportError("its head announces \"" + word + "\" elements of \"" + element + "\"");
    return count;
}

class HeadReader {
public:
    explicit HeadReader(std::size_t fileSize) : fileSize_(fileSize) {}

    /// False at the last line.
    bool take(const std::string& line) {
        std::istringstream words(line);
        std::string keyword;
        words >> keyword;
        if (keyword == "format")
            head.form = readForm(words);
        else if (keyword == "element")
            head.elements.push_back(readElement(words));
        else if (keyword == "property" && !head.elements.empty())
            head.elements.back().properties.push_back(readProperty(words));
        return keyword != "end_header";
    }

    PlyHead head;

private:
    static PlyForm readForm(std::istringstream& words) {
        std::string name;
        words >> name;
        return find(forms, name, "format").form;
    }

    [[nodiscard]] PlyElement readElement(std::istringstream& words) const {
        PlyElement element;
        std::string count;
        words >> element.name >> count;
        element.count = countOf(count, element.name);
        // An element takes two bytes at least: a character and a separator, or a list's length and
        // an entry.
        if (element.count > fileSize_ / 2)
            throw ImportError("its head announces " + count + " elements of \"" + element.name +
                              "\", more than a file of " + std::to_string(fileSize_) +
                              " bytes can hold");
        return element;
    }

    static PlyProperty readProperty(std::istringstream& words) {
        PlyProperty property;
        std::string type;
        words >> type;
        property.isList = type == "list";
        if (property.isList) {
            words >> type;
            property.countType = find(numbers, type, "type").type;
            words >> type;
        }
        property.type = find(numbers, type, "type").type;
        words >> property.name;
        return property;
    }

    std::size_t fileSize_;
};

} // namespace

std::size_t bytesOf(PlyNumber type) {
    return sizes[static_cast<std::size_t>(type)];
}

PlyHead readPlyHead(std::span<const std::uint8_t> bytes) {
    const std::string_view text(reinterpret_cast<const char*>(bytes.data()),
                                std::min(bytes.size(), longestHead));
    HeadReader reader(bytes.size());
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = text.find('\n', at);
        if (end == std::string_view::npos)
            break;
        if (!reader.take(std::string(text.substr(at, end - at)))) {
            reader.head.length = end + 1;
            return std::move(reader.head);
        }
        at = end + 1;
    }
    throw ImportError("its head has no end");
}

} // namespace qor::import
