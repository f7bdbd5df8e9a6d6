#include "platform/system/QorEventLoop.h"

#include "platform/text/QorCatalogs.h"

#include <algorithm>
#include <climits>
#include <thread>

using std::chrono::milliseconds;

namespace {

std::uintptr_t ThisThread() {
    static thread_local char mark = 0;
    return reinterpret_cast<std::uintptr_t>(&mark);
}

} // namespace

QorEventLoop::QorEventLoop() : thread(ThisThread()) {}

QorEventLoop::~QorEventLoop() = default;

void QorEventLoop::Post(Work iWork, Scope iScope) {
    const bool anyDepth = iScope == Scope::AnyDepth || ThisThread() != thread;
    {
        const std::scoped_lock lock(mutex);
        posted.push_back({std::move(iWork), anyDepth ? INT_MAX : depth});
    }
    Wake();
}

bool QorEventLoop::RunOnePosted() {
    Posted next;
    {
        const std::scoped_lock lock(mutex);
        const auto found = std::find_if(posted.begin(), posted.end(),
                                        [&](const Posted& iOne) { return iOne.depth >= depth; });
        if (found == posted.end())
            return false;
        next = std::move(*found);
        posted.erase(found);
    }
    next.work();
    return true;
}

void QorEventLoop::RunPosted() {
    QorCatalogs::Refresh();
    while (RunOnePosted()) {
    }
}

QorTimerId QorEventLoop::StartTimer(milliseconds iInterval, Work iWork, bool iRepeat) {
    timers.push_back({++lastTimer, Now() + iInterval, iInterval, std::move(iWork), iRepeat});
    DeadlineChanged();
    return lastTimer;
}

void QorEventLoop::StopTimer(QorTimerId& ioTimer) {
    std::erase_if(timers, [&](const Timer& iTimer) { return iTimer.id == ioTimer; });
    ioTimer = 0;
    DeadlineChanged();
}

milliseconds QorEventLoop::TimeToNextTimer() const {
    if (timers.empty())
        return milliseconds(-1);
    const auto next =
        std::min_element(timers.begin(), timers.end(),
                         [](const Timer& iA, const Timer& iB) { return iA.due < iB.due; });
    return std::max(milliseconds(0), std::chrono::ceil<milliseconds>(next->due - Now()));
}

std::size_t QorEventLoop::CountPosted() const {
    const std::scoped_lock lock(mutex);
    return posted.size();
}

bool QorEventLoop::RunDueTimers() {
    QorCatalogs::Refresh();
    const Clock::time_point now = Now();
    std::vector<QorTimerId> due;
    for (const Timer& timer : timers)
        if (timer.due <= now)
            due.push_back(timer.id);
    bool ran = false;
    for (const QorTimerId id : due) {
        const auto found = std::find_if(timers.begin(), timers.end(),
                                        [&](const Timer& iOne) { return iOne.id == id; });
        if (found == timers.end())
            continue; // stopped by a timer before it
        const Work work = found->work;
        if (found->repeat)
            found->due = now + found->interval;
        else
            timers.erase(found);
        work();
        ran = true;
    }
    if (ran)
        DeadlineChanged();
    return ran;
}

bool QorEventLoop::RunSlice() {
    QorCatalogs::Refresh();
    bool ran = false;
    std::size_t count = 0;
    {
        const std::scoped_lock lock(mutex);
        count = posted.size(); // work that is posted meanwhile waits for the next turn
    }
    for (; count > 0 && RunOnePosted(); --count)
        ran = true;
    return RunDueTimers() || ran;
}

bool QorEventLoop::RunOneTurn(milliseconds iWait) {
    const bool ran = RunSlice();
    const milliseconds timer = TimeToNextTimer();
    const milliseconds longest = timer.count() < 0 ? iWait : std::min(iWait, timer);
    Wait(ran ? milliseconds(0) : longest);
    return ran;
}

/// One level deeper while it lives, however that ends.
class QorEventLoop::Deeper {
public:
    explicit Deeper(QorEventLoop& iLoop) : loop(iLoop) { ++loop.depth; }

    ~Deeper() {
        --loop.depth;
        loop.Wake(); // work that was held back for this depth
    }

    Deeper(const Deeper&) = delete;
    Deeper& operator=(const Deeper&) = delete;

private:
    QorEventLoop& loop;
};

void QorEventLoop::RunNested(const std::function<bool()>& iDone) {
    constexpr milliseconds patience(
        50); // a host without Wake for its own events still looks now and then
    const Deeper deeper(*this);
    while (!quitting && !iDone())
        RunOneTurn(patience);
}

void QorEventLoop::Quit() {
    quitting = true;
    Wake();
}
