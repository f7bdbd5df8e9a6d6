#include "workbench/import/scene/PlyHead.h"

#include "workbench/import/model/ImportError.h"

#include <charconv>
#include <cstdint>
#include <fstream>
#include <sstream>
#include <string>

namespace qor::import {

namespace {

constexpr std::size_t longestHead = 64 * 1024;

std::uint64_t countIn(const std::string& word, const std::string& element) {
    std::uint64_t count = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), count);
    if (error != std::errc() || end != word.data() + word.size())
        throw ImportError("its head announces \"" + word + "\" elements of \"" + element + "\"");
    return count;
}

} // namespace

void checkPlyHead(const std::filesystem::path& file) {
    const std::uintmax_t size = std::filesystem::file_size(file);
    std::ifstream in(file, std::ios::binary);
    std::string line;
    while (std::getline(in, line) && static_cast<std::size_t>(in.tellg()) < longestHead) {
        std::istringstream words(line);
        std::string keyword;
        std::string element;
        std::string count;
        words >> keyword >> element >> count;
        if (keyword == "end_header")
            return;
        // An element takes two bytes at least: a character and a separator, or a list's length and
        // an entry.
        if (keyword == "element" && countIn(count, element) > size / 2)
            throw ImportError("its head announces " + count + " elements of \"" + element +
                              "\", more than a file of " + std::to_string(size) +
                              " bytes can hold");
    }
    throw ImportError("its head has no end");
}

} // namespace qor::import
