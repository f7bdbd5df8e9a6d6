#pragma once

#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>
#include <mutex>
#include <vector>

/// Identity of a timer; 0 is none.
using QorTimerId = std::uint64_t;

/// The loop of the user-interface thread: posted work, timers and nested turns. All of its order is
/// decided here; a host only lends the waiting (`Wait`, `Wake`) and the time (`Now`). Without a
/// host the loop waits on a condition of its own. Every operation is for the user-interface thread
/// except Post.
class QorEventLoop {
public:
    using Work = std::function<void()>;
    using Clock = std::chrono::steady_clock;

    /// Which turns may run posted work: those of the depth it was posted at and shallower, or any.
    enum class Scope { CurrentDepth, AnyDepth };

    QorEventLoop();
    virtual ~QorEventLoop();
    QorEventLoop(const QorEventLoop&) = delete;
    QorEventLoop& operator=(const QorEventLoop&) = delete;

    /// Runs \p iWork at a later turn, in order. Thread-safe; from another thread the scope is
    /// always AnyDepth.
    void Post(Work iWork, Scope iScope = Scope::CurrentDepth);

    /// Runs \p iWork after \p iInterval, once or again and again. Timers run at every depth, and a
    /// timer that is late runs once, not once for every period missed.
    QorTimerId StartTimer(std::chrono::milliseconds iInterval, Work iWork, bool iRepeat);
    /// Stops a timer and sets \p ioTimer to 0; 0 and timers that have ended are ignored.
    void StopTimer(QorTimerId& ioTimer);

    /// One turn: what is posted for this depth, then the timers that are due; when there is nothing
    /// it waits up to \p iWait for something to come. Whether anything ran.
    bool RunOneTurn(std::chrono::milliseconds iWait = std::chrono::milliseconds(0));
    /// Runs posted work until none is left for this depth, that posted meanwhile included; no
    /// timers.
    void RunPosted();
    /// Turns one level deeper until \p iDone answers true or the loop is asked to quit.
    void RunNested(const std::function<bool()>& iDone);

    /// Work that waits to be run, and timers that run: nothing of either is left at the end of a
    /// test.
    [[nodiscard]] std::size_t CountPosted() const;

    [[nodiscard]] std::size_t CountTimers() const { return timers.size(); }

    /// 0 outside any nested turn.
    [[nodiscard]] int GetDepth() const { return depth; }

    /// Ends nested turns as soon as they look, and the host's own run.
    virtual void Quit();

    [[nodiscard]] bool IsQuitting() const { return quitting; }

    /// Present time; a loop of tests answers a time that it is told.
    [[nodiscard]] virtual Clock::time_point Now() const { return Clock::now(); }

protected:
    /// Lets the host do its own events, and waits for one, or for Wake, at most \p iTime (negative:
    /// for ever).
    virtual void Wait(std::chrono::milliseconds iTime) = 0;
    /// Ends a Wait, or makes the host call RunPosted and RunDueTimers soon. Called from any thread.
    virtual void Wake() = 0;

    /// Called whenever the time of the next timer has changed; for hosts that arm one of their own.
    virtual void DeadlineChanged() {}

    /// Time until the next timer is due, 0 when one is, negative without timers.
    [[nodiscard]] std::chrono::milliseconds TimeToNextTimer() const;
    bool RunDueTimers();
    /// A turn without its waiting: what is posted now for this depth, then the timers that are due.
    /// For hosts whose own loop has just been woken.
    bool RunSlice();

private:
    struct Posted {
        Work work;
        int depth; ///< the least depth of turns that may not run it is depth + 1; INT_MAX: any
    };

    struct Timer {
        QorTimerId id;
        Clock::time_point due;
        std::chrono::milliseconds interval;
        Work work;
        bool repeat;
    };

    class Deeper;
    bool RunOnePosted();

    mutable std::mutex mutex; ///< guards `posted` alone
    std::deque<Posted> posted;
    std::vector<Timer> timers;
    QorTimerId lastTimer = 0;
    int depth = 0;
    bool quitting = false;
    std::uintptr_t thread;
};
