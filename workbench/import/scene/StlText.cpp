#include "workbench/import/scene/StlText.h"

#include "workbench/import/scene/GltfContainer.h"

#include <algorithm>
#include <fstream>
#include <string>
#include <string_view>

namespace qor::import {

namespace {

constexpr std::string_view firstWord = "solid";
constexpr std::size_t longestBlank = 4096;

bool isBlank(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

char lowered(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

std::string headOf(const std::filesystem::path& file) {
    std::string head(longestBlank, '\0');
    std::ifstream in(file, std::ios::binary);
    in.read(head.data(), static_cast<std::streamsize>(head.size()));
    head.resize(static_cast<std::size_t>(in.gcount()));
    return head;
}

// Text in another form: the word is there, but not as the very first thing or in other letters.
bool wantsTidying(std::string head) {
    if (head.starts_with(firstWord))
        return false;
    head.erase(head.begin(), std::find_if_not(head.begin(), head.end(), isBlank));
    std::transform(head.begin(), head.end(), head.begin(), lowered);
    return head.starts_with(firstWord);
}

} // namespace

std::vector<std::uint8_t> tidyStl(const std::filesystem::path& file) {
    if (!wantsTidying(headOf(file)))
        return {};
    std::vector<std::uint8_t> bytes = readBytes(file);
    if (std::find(bytes.begin(), bytes.end(), 0) != bytes.end())
        return {};
    bytes.erase(bytes.begin(), std::find_if_not(bytes.begin(), bytes.end(), isBlank));
    std::transform(bytes.begin(), bytes.end(), bytes.begin(), lowered);
    return bytes;
}

} // namespace qor::import
