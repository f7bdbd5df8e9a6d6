#pragma once

#include "platform/system/QorEventLoop.h"
#include "platform/vis/QorView.h"

#include <functional>

/// Changes of a viewpoint's look that take a moment: quick at first, slower towards the end, by the
/// timers of the program's loop. Without a program the change is done at once. The viewpoint is
/// animated from the begin of a change to its end. A new change takes the place of one that runs.
class QorViewAnimation {
public:
    static constexpr std::chrono::milliseconds duration{250};

    /// \p iChanged is called after every step, the last one included, before the end is
    /// dispatched. The viewpoint outlives the animation.
    QorViewAnimation(Qor3DViewpoint& iViewpoint, std::function<void()> iChanged);
    ~QorViewAnimation();
    QorViewAnimation(const QorViewAnimation&) = delete;
    QorViewAnimation& operator=(const QorViewAnimation&) = delete;

    void Start(const QorView& iTo);
    /// Stops where it is. The viewpoint stays animated, for whoever goes on with it.
    void Stop();

    [[nodiscard]] bool IsRunning() const { return timer != 0; }

private:
    void Step();
    void Finish();

    Qor3DViewpoint& viewpoint;
    std::function<void()> changed;
    QorTimerId timer = 0;
    QorEventLoop::Clock::time_point begin;
    QorView from;
    QorView to;
};
