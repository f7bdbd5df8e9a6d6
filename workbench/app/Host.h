#pragma once

#include "workbench/app/CommandLine.h"

#include <functional>

class QorEventLoop;

namespace qor::app {

/// What a host lends to the program: the loop, and what runs it until it is asked to quit.
struct HostLoop {
    QorEventLoop& loop;
    std::function<void()> run;
};

/// Sets up what draws and waits, as the options ask for, and calls \p serve with it while all of
/// that lives. The result is the exit code.
[[nodiscard]] int withHost(const Options& options,
                           const std::function<int(const HostLoop& host)>& serve);

} // namespace qor::app
