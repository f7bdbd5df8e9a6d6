#pragma once

#include <chrono>

class QEvent;
class QObject;

namespace qor::desktop {

/// Lives while the user-interface thread handles an event, and traces (level 5) when that kept a
/// person waiting: a turn of more than 20 ms, with what the thread was given of a processor in it.
/// Events that are handled within it count for themselves. Costs a comparison when nobody listens.
class SlowTurn {
public:
    SlowTurn(const QObject& receiver, const QEvent& event);
    ~SlowTurn();
    SlowTurn(const SlowTurn&) = delete;
    SlowTurn& operator=(const SlowTurn&) = delete;

private:
    using Milliseconds = std::chrono::duration<double, std::milli>;

    /// Since some time in the past: on the clock, and at work.
    struct Times {
        Milliseconds passed;
        Milliseconds worked;
    };

    static Times now();

    bool isListenedTo_;
    const char* receiver_ = "";
    int event_ = 0;
    Times start_{};
    Times within_{}; ///< spent in turns within this one
    SlowTurn* outer_ = nullptr;
    static SlowTurn* innermost_;
};

} // namespace qor::desktop
