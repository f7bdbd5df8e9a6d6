#include "workbench/import/model/ModelFormat.h"

#include "workbench/import/model/ImportError.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <optional>
#include <string>
#include <string_view>

namespace qor::import {

namespace {

constexpr std::size_t headLength = 4096;

struct Suffix {
    const char* suffix;
    ModelFormat format;
};

constexpr auto suffixes = std::to_array<Suffix>({
    {".step", ModelFormat::Step},
    {".stp", ModelFormat::Step},
    {".iges", ModelFormat::Iges},
    {".igs", ModelFormat::Iges},
    {".brep", ModelFormat::Brep},
    {".brp", ModelFormat::Brep},
    {".gltf", ModelFormat::Gltf},
    {".glb", ModelFormat::Glb},
    {".obj", ModelFormat::Obj},
    {".stl", ModelFormat::Stl},
    {".ply", ModelFormat::Ply},
});

constexpr std::array names{"STEP",        "IGES", "BREP", "binary BREP", "glTF",
                           "binary glTF", "OBJ",  "STL",  "PLY"};

std::string readHead(const std::filesystem::path& file) {
    std::error_code error;
    if (!std::filesystem::exists(file, error))
        throw ImportError("there is no such file");
    if (!std::filesystem::is_regular_file(file, error))
        throw ImportError("it is not a file");
    std::ifstream in(file, std::ios::binary);
    if (!in)
        throw ImportError(std::string("it cannot be read: ") + std::strerror(errno),
                          document::FaultKind::Machine);
    std::string head(headLength, '\0');
    in.read(head.data(), static_cast<std::streamsize>(head.size()));
    head.resize(static_cast<std::size_t>(in.gcount()));
    if (head.empty())
        throw ImportError("the file is empty");
    return head;
}

bool isText(std::string_view head) {
    return std::none_of(head.begin(), head.end(), [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return byte < 0x09 || (byte > 0x0D && byte < 0x20);
    });
}

std::string_view trimmed(std::string_view text) {
    if (text.starts_with("\xEF\xBB\xBF"))
        text.remove_prefix(3);
    const std::size_t first = text.find_first_not_of(" \t\r\n");
    return first == std::string_view::npos ? std::string_view() : text.substr(first);
}

// The start section of IGES: 72 columns of anything, then S and a sequence number.
bool looksLikeIges(std::string_view head) {
    return head.size() >= 80 && head[72] == 'S' &&
           head.substr(73, 7).find_first_not_of(" 0123456789") == std::string_view::npos;
}

// A binary STL says how many triangles follow its 80-byte header.
bool looksLikeBinaryStl(std::string_view head, std::uintmax_t size) {
    if (head.size() < 84)
        return false;
    std::uint32_t count = 0;
    std::memcpy(&count, head.data() + 80, sizeof count);
    return std::uintmax_t{84} + std::uintmax_t{50} * count == size;
}

// What the content alone says, where it says so beyond doubt.
std::optional<ModelFormat> fromContent(std::string_view head) {
    const std::string_view text = trimmed(head);
    if (head.starts_with("glTF"))
        return ModelFormat::Glb;
    if (text.starts_with("ISO-10303-21"))
        return ModelFormat::Step;
    if (head.starts_with("ply\n") || head.starts_with("ply\r"))
        return ModelFormat::Ply;
    if (text.starts_with("DBRep_DrawableShape") || text.starts_with("CASCADE Topology"))
        return ModelFormat::Brep;
    if (text.starts_with("Open CASCADE Topology"))
        return ModelFormat::BrepBinary;
    if (looksLikeIges(head))
        return ModelFormat::Iges;
    return std::nullopt;
}

std::optional<ModelFormat> fromSuffix(const std::filesystem::path& file) {
    std::string suffix = file.extension().string();
    std::transform(suffix.begin(), suffix.end(), suffix.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    for (const Suffix& known : suffixes)
        if (suffix == known.suffix)
            return known.format;
    return std::nullopt;
}

bool startsWithSolid(std::string_view text) {
    constexpr std::string_view word = "solid";
    return text.size() >= word.size() && std::equal(word.begin(), word.end(), text.begin(),
                                                    [](char a, char b) { return a == (b | 0x20); });
}

// Whether content without a signature of its own can be what the suffix says.
bool isPossible(ModelFormat format, std::string_view head, std::uintmax_t size) {
    switch (format) {
    case ModelFormat::Gltf:
        return trimmed(head).starts_with("{");
    case ModelFormat::Obj:
        return isText(head);
    case ModelFormat::Stl:
        return looksLikeBinaryStl(head, size) || (isText(head) && startsWithSolid(trimmed(head)));
    case ModelFormat::Step:
        return head.find("ISO-10303-21") != std::string_view::npos;
    default:
        return false;
    }
}

} // namespace

const char* nameOf(ModelFormat format) {
    return names[static_cast<std::size_t>(format)];
}

ModelFormat detectFormat(const std::filesystem::path& file) {
    const std::string head = readHead(file);
    if (const auto format = fromContent(head))
        return *format;
    const auto format = fromSuffix(file);
    if (!format)
        throw ImportError(
            "\"" + file.extension().string() +
            "\" files are not supported; STEP, IGES, BREP, glTF, OBJ, STL and PLY are");
    if (!isPossible(*format, head, std::filesystem::file_size(file)))
        throw ImportError(std::string("the content is not ") + nameOf(*format) +
                          ", whatever the name says, or it is cut off");
    return *format;
}

} // namespace qor::import
