#include "workbench/import/model/CommandLine.h"

#include <array>
#include <charconv>
#include <string_view>
#include <vector>

namespace qor::import {

namespace {

constexpr const char* usageText =
    "usage: qorimport MODEL OUT.qor [--deflection MM] [--angle DEG]\n"
    "  MODEL              a STEP, IGES, BREP, glTF, OBJ, STL or PLY file\n"
    "  OUT.qor            the document file to make; it appears when it is whole\n"
    "  --deflection MM    largest distance of triangles from a curved surface (default: 0.0003 of\n"
    "                     each part's diagonal)\n"
    "  --angle DEG        largest angle between neighbouring triangles, 1 to 60 (default: 12)\n";

struct Option {
    const char* name;
    double ImportSettings::*value;
    double lowest;
    double highest;
};

constexpr auto options =
    std::to_array<Option>({{"--deflection", &ImportSettings::deflectionMm, 1e-6, 1e6},
                           {"--angle", &ImportSettings::angleDeg, 1, 60}});

ParsedCommandLine wrong(const std::string& what) {
    return {std::nullopt, "qorimport: " + what + "\n" + usageText, 2};
}

const Option* findOption(std::string_view name) {
    for (const Option& option : options)
        if (name == option.name)
            return &option;
    return nullptr;
}

bool readNumber(std::string_view text, const Option& option, ImportSettings& settings) {
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() ||
        !(value >= option.lowest && value <= option.highest))
        return false;
    settings.*option.value = value;
    return true;
}

} // namespace

ParsedCommandLine parseCommandLine(int argc, const char* const* argv) {
    CommandLine command;
    std::vector<std::string_view> files;
    for (int i = 1; i < argc; ++i) {
        const std::string_view word = argv[i];
        if (word == "--help" || word == "-h")
            return {std::nullopt, usageText, 0};
        const Option* option = findOption(word);
        if (option == nullptr && word.size() > 1 && word.starts_with("-"))
            return wrong("unknown option " + std::string(word));
        if (option == nullptr) {
            files.push_back(word);
            continue;
        }
        if (++i == argc || !readNumber(argv[i], *option, command.settings))
            return wrong(std::string(word) + " needs a number in its range");
    }
    if (files.size() != 2)
        return wrong("a model and a document file are needed");
    command.model = files[0];
    command.target = files[1];
    return {command, {}, 0};
}

} // namespace qor::import
