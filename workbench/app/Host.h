#pragma once

#include "workbench/app/CommandLine.h"

#include <functional>
#include <string>

class QorEventLoop;

namespace qor::app {

class Services;

/// What a host lends to the program: the loop, and what runs it until it is asked to quit.
struct HostLoop {
    QorEventLoop& loop;
    std::function<void()> run;
    Services& services;
    /// Gives the windows another theme: "system", "light" or "dark"; empty without windows.
    std::function<void(const std::string& theme)> chooseTheme = {};
};

/// Sets up what draws and waits, as the options ask for, and calls \p serve with it while all of
/// that lives. The result is the exit code.
[[nodiscard]] int withHost(const Options& options,
                           const std::function<int(const HostLoop& host)>& serve);

} // namespace qor::app
