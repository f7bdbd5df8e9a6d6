#include "workbench/engine/adapter/Workers.h"

#include <sys/resource.h>

#include <thread>

namespace qor::adapter {

namespace {

/// Behind whatever a person waits for: the window's own drawing above all, which on machines
/// without a graphics card is the processors' work too.
constexpr int niceness = 10;

} // namespace

Workers::~Workers() {
    waitForAll();
}

void Workers::start(std::function<void()> work) {
    const std::scoped_lock lock(mutex_);
    std::thread([this, work = std::move(work)]() mutable {
        setpriority(PRIO_PROCESS, 0, niceness); // on Linux: of this thread and those that it starts
        work();
        work = nullptr;
        const std::scoped_lock ended(mutex_);
        --running_;
        ended_.notify_all();
    }).detach();
    ++running_;
}

void Workers::waitForAll() {
    std::unique_lock lock(mutex_);
    ended_.wait(lock, [this] { return running_ == 0; });
}

int Workers::running() const {
    const std::scoped_lock lock(mutex_);
    return running_;
}

} // namespace qor::adapter
