#pragma once

#include "workbench/engine/qorrender/Request.h"

#include <string>

namespace qor::render {

/// A request, or what to print and the exit code.
struct ParsedCommandLine {
    std::optional<Request> request;
    std::string message;
    int exitCode = done;
};

/// Understands the program's arguments. \p onTerminal says whether a person sees the progress: then
/// a bar is the default.
ParsedCommandLine parseCommandLine(int argc, const char* const* argv, bool onTerminal);

} // namespace qor::render
