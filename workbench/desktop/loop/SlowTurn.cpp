#include "workbench/desktop/loop/SlowTurn.h"

#include "platform/system/QorTrace.h"

#include <QEvent>
#include <QObject>

#include <ctime>

namespace qor::desktop {

namespace {

constexpr int level = 5;
constexpr double patienceMs = 20.0;

double millisecondsOf(clockid_t clock) {
    timespec time{};
    clock_gettime(clock, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

} // namespace

SlowTurn* SlowTurn::innermost_ = nullptr;

SlowTurn::Times SlowTurn::now() {
    return {Milliseconds(millisecondsOf(CLOCK_MONOTONIC)),
            Milliseconds(millisecondsOf(CLOCK_THREAD_CPUTIME_ID))};
}

SlowTurn::SlowTurn(const QObject& receiver, const QEvent& event)
    : isListenedTo_(QorTraceChannel::IsActive(level)) {
    if (!isListenedTo_)
        return;
    receiver_ = receiver.metaObject()->className(); // now: the event may be its end
    event_ = static_cast<int>(event.type());
    outer_ = innermost_;
    innermost_ = this;
    start_ = now();
}

SlowTurn::~SlowTurn() {
    if (!isListenedTo_)
        return;
    const Times end = now();
    innermost_ = outer_;
    const Times all{end.passed - start_.passed, end.worked - start_.worked};
    if (outer_ != nullptr) {
        outer_->within_.passed += all.passed;
        outer_->within_.worked += all.worked;
    }
    const double passed = (all.passed - within_.passed).count();
    if (passed > patienceMs)
        QorTrace(level, "(SlowTurn) %.1f ms, %.1f ms at work: %s, event %d \n", passed,
                 (all.worked - within_.worked).count(), receiver_, event_);
}

} // namespace qor::desktop
