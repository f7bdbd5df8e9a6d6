#pragma once

#include <string>
#include <variant>

namespace qor::app {

/// What the command line of qorworkbench asks for.
struct Options {
    bool isHeadless = false; ///< no window, no display
    std::string socket;      ///< where the automation port listens; empty: nowhere
    bool isOnce = false;     ///< the program ends with its first client
    int traceLevel = 0;      ///< 0 silent, else 1 to 6
    bool hasGallery = false; ///< the gallery of widgets is offered and opened
    std::string theme;       ///< "system", "light" or "dark"; empty: as the settings say
    std::string file;        ///< what to open; empty: nothing
};

/// Exit codes of the program.
enum ExitCode : int { exitDone = 0, exitFailed = 1, exitUsage = 2 };

/// A command line that asks for nothing more than a text, or that is wrong.
struct Answer {
    int exitCode = exitDone;
    std::string text; ///< for standard output, or for standard error when the exit code is not 0
};

/// Reads the command line; never prints.
[[nodiscard]] std::variant<Options, Answer> readCommandLine(int count,
                                                            const char* const* arguments);

} // namespace qor::app
