#pragma once

#include "platform/system/QorEventLoop.h"

#include <atomic>
#include <memory>

namespace qor::desktop {

/// The event loop of programs that run on Qt, with windows (QApplication) or without
/// (QCoreApplication). The application object exists before the loop is made and outlives it.
/// Posted work and timers are served also while Qt runs a loop of its own, for a menu or a drag,
/// and come after the input that waits.
class QtEventLoop : public QorEventLoop {
public:
    QtEventLoop();
    ~QtEventLoop() override;

    /// Turns until Quit, at once when that was before.
    void run();

    void Quit() override;

protected:
    void Wait(std::chrono::milliseconds iTime) override;
    void Wake() override;
    void DeadlineChanged() override;

private:
    class Waker;

    void serve();

    std::unique_ptr<Waker> waker_;
    std::atomic<bool> woken_ = false; ///< a wake-up is on its way
};

} // namespace qor::desktop
