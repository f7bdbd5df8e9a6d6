#pragma once

#include <condition_variable>
#include <functional>
#include <mutex>

namespace qor::adapter {

/// Threads of the engine's own that nobody waits for until the end. They get what the rest of the
/// program leaves of the processors.
class Workers {
public:
    Workers() = default;
    /// Waits until all have ended.
    ~Workers();
    Workers(const Workers&) = delete;
    Workers(Workers&&) = delete;
    Workers& operator=(const Workers&) = delete;
    Workers& operator=(Workers&&) = delete;

    /// Runs \p work, which owns all that it touches and throws nothing. Throws std::system_error
    /// when the machine has no thread to give.
    void start(std::function<void()> work);
    void waitForAll();
    int running() const;

private:
    mutable std::mutex mutex_;
    std::condition_variable ended_;
    int running_ = 0;
};

} // namespace qor::adapter
