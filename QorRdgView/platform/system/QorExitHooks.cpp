#include "platform/system/QorExitHooks.h"

#include <cstdlib>
#include <map>
#include <mutex>
#include <utility>
#include <vector>

namespace {

struct Hooks {
    std::mutex mutex;
    std::map<int, std::vector<std::function<void()>>> byPriority;
    bool atExit = false;
};

/// Outlives everything else, for it is run by exit.
Hooks& TheHooks() {
    static auto* hooks = new Hooks;
    return *hooks;
}

/// The next hook to run, or an empty one.
std::function<void()> TakeNext() {
    Hooks& hooks = TheHooks();
    const std::scoped_lock lock(hooks.mutex);
    if (hooks.byPriority.empty())
        return {};
    const auto first = hooks.byPriority.begin();
    std::function<void()> hook = std::move(first->second.back());
    first->second.pop_back();
    if (first->second.empty())
        hooks.byPriority.erase(first);
    return hook;
}

} // namespace

void QorCallOnExit(std::function<void()> iCallback, int iPriority) {
    if (!iCallback)
        return;
    Hooks& hooks = TheHooks();
    const std::scoped_lock lock(hooks.mutex);
    hooks.byPriority[iPriority].push_back(std::move(iCallback));
    if (!std::exchange(hooks.atExit, true))
        std::atexit(&QorRunExitHooks);
}

void QorRunExitHooks() {
    while (const std::function<void()> hook = TakeNext())
        hook();
}
