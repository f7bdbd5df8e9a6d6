#pragma once

#include "workbench/import/model/ImportSettings.h"

#include <filesystem>
#include <optional>
#include <string>

namespace qor::import {

/// What qorimport was asked to do.
struct CommandLine {
    std::filesystem::path model;
    std::filesystem::path target;
    ImportSettings settings;
};

/// The command, or a message to print and the exit code for it (0 for --help, 2 for wrong usage).
struct ParsedCommandLine {
    std::optional<CommandLine> command;
    std::string message;
    int exitCode = 0;
};

[[nodiscard]] ParsedCommandLine parseCommandLine(int argc, const char* const* argv);

} // namespace qor::import
