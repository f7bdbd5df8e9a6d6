#pragma once

#include <functional>

/// A moment of the calendar clock.
struct QorTimeStamp {
    long seconds = 0;      ///< since 1970-01-01 UTC
    long microseconds = 0; ///< 0 to 999999

    bool operator==(const QorTimeStamp&) const = default;
};

/// The present moment. Null is ignored. Thread-safe.
void QorGetCurrentTime(QorTimeStamp* oNow);

/// Replaces the clock behind QorGetCurrentTime, or gives the real one back when \p iClock is empty.
/// For tests; to be called while no other thread asks for the time.
void QorSetClock(std::function<QorTimeStamp()> iClock);
