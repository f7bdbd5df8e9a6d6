#pragma once

#include "platform/system/QorEventLoop.h"

/// A loop whose time stands still until a test moves it, and that never waits.
class QorManualLoop : public QorEventLoop {
public:
    [[nodiscard]] Clock::time_point Now() const override { return now; }

    /// Lets time pass in one step: then what is posted runs, and timers that are due, once each.
    void Advance(std::chrono::milliseconds iTime) {
        now += iTime;
        RunPosted();
        RunDueTimers();
        RunPosted();
    }

    /// How often the loop had nothing to do and would have waited.
    [[nodiscard]] int CountWaits() const { return waits; }

protected:
    void Wait(std::chrono::milliseconds iTime) override {
        if (iTime.count() != 0)
            ++waits;
    }

    void Wake() override {}

private:
    Clock::time_point now{std::chrono::hours(1)};
    int waits = 0;
};
