#include "platform/system/QorQueueLoop.h"

void QorQueueLoop::Run() {
    constexpr std::chrono::milliseconds longest(1000);
    while (!IsQuitting())
        RunOneTurn(longest);
}

void QorQueueLoop::Wait(std::chrono::milliseconds iTime) {
    std::unique_lock lock(wakeMutex);
    if (iTime.count() < 0)
        wakeCondition.wait(lock, [this] { return woken; });
    else
        wakeCondition.wait_for(lock, iTime, [this] { return woken; });
    woken = false;
}

void QorQueueLoop::Wake() {
    {
        const std::scoped_lock lock(wakeMutex);
        woken = true;
    }
    wakeCondition.notify_one();
}
