#include "platform/system/QorClock.h"

#include <chrono>
#include <utility>

namespace {

std::function<QorTimeStamp()>& TheClock() {
    static auto* clock = new std::function<QorTimeStamp()>;
    return *clock;
}

QorTimeStamp ReadRealClock() {
    using namespace std::chrono;
    const auto now = floor<microseconds>(system_clock::now().time_since_epoch());
    const auto whole = floor<seconds>(now);
    return {static_cast<long>(whole.count()), static_cast<long>((now - whole).count())};
}

} // namespace

void QorGetCurrentTime(QorTimeStamp* oNow) {
    if (oNow != nullptr)
        *oNow = TheClock() ? TheClock()() : ReadRealClock();
}

void QorSetClock(std::function<QorTimeStamp()> iClock) {
    TheClock() = std::move(iClock);
}
