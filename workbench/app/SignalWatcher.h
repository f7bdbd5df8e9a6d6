#pragma once

#include <array>
#include <functional>
#include <thread>

namespace qor::app {

/// While it lives, SIGTERM and SIGINT call \p onSignal, on a thread of the watcher, instead of
/// killing the program. A second signal of the kind kills it, so that a program that hangs can
/// still be ended. At most one exists.
class SignalWatcher {
public:
    explicit SignalWatcher(std::function<void()> onSignal);
    ~SignalWatcher();
    SignalWatcher(const SignalWatcher&) = delete;
    SignalWatcher& operator=(const SignalWatcher&) = delete;

private:
    void watch();

    std::function<void()> onSignal_;
    std::array<int, 2> pipe_{-1, -1};
    std::thread thread_;
};

} // namespace qor::app
