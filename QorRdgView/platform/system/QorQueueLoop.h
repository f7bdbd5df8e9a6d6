#pragma once

#include "platform/system/QorEventLoop.h"

#include <condition_variable>

/// The loop of a program without a host: it waits on a condition.
class QorQueueLoop : public QorEventLoop {
public:
    /// Turns until Quit.
    void Run();

protected:
    void Wait(std::chrono::milliseconds iTime) override;
    void Wake() override;

private:
    std::mutex wakeMutex;
    std::condition_variable wakeCondition;
    bool woken = false;
};
