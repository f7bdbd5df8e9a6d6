#include "platform/system/QorTrace.h"

#include "platform/text/QorCLocale.h"

#include <algorithm>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <deque>
#include <iterator>
#include <mutex>
#include <utility>

namespace {

constexpr std::size_t mostRecorded = 100'000;

struct Listeners {
    std::mutex mutex;
    int standardErrorLevel = 0;
    int recordingLevel = 0;
    std::deque<std::string> recorded;
};

/// Outlives everything else, for destructors trace.
Listeners& TheListeners() {
    static auto* listeners = new Listeners;
    return *listeners;
}

int GetLoudest(const Listeners& iListeners) {
    return std::max(iListeners.standardErrorLevel, iListeners.recordingLevel);
}

std::string Format(const char* iFormat, va_list iArguments) {
    const QorCLocale locale;
    va_list again;
    va_copy(again, iArguments);
    const int length = std::vsnprintf(nullptr, 0, iFormat, again);
    va_end(again);
    std::string line(static_cast<std::size_t>(std::max(length, 0)), '\0');
    std::vsnprintf(line.data(), line.size() + 1, iFormat, iArguments);
    return line;
}

} // namespace

std::atomic<int> QorTraceChannel::loudest = 0;

void QorTraceChannel::SetStandardErrorLevel(int iLevel) {
    Listeners& listeners = TheListeners();
    const std::scoped_lock lock(listeners.mutex);
    listeners.standardErrorLevel = std::max(iLevel, 0);
    loudest = GetLoudest(listeners);
}

void QorTraceChannel::StartRecording(int iLevel) {
    Listeners& listeners = TheListeners();
    const std::scoped_lock lock(listeners.mutex);
    listeners.recordingLevel = std::max(iLevel, 0);
    listeners.recorded.clear();
    loudest = GetLoudest(listeners);
}

void QorTraceChannel::StopRecording() {
    Listeners& listeners = TheListeners();
    const std::scoped_lock lock(listeners.mutex);
    listeners.recordingLevel = 0;
    loudest = GetLoudest(listeners);
}

std::vector<std::string> QorTraceChannel::TakeRecorded() {
    Listeners& listeners = TheListeners();
    const std::scoped_lock lock(listeners.mutex);
    std::deque<std::string> taken;
    taken.swap(listeners.recorded);
    return {std::make_move_iterator(taken.begin()), std::make_move_iterator(taken.end())};
}

void QorTraceChannel::Write(int iLevel, std::string iLine) {
    Listeners& listeners = TheListeners();
    const std::scoped_lock lock(listeners.mutex);
    if (iLevel <= listeners.standardErrorLevel)
        std::fwrite(iLine.data(), 1, iLine.size(), stderr);
    if (iLevel > listeners.recordingLevel)
        return;
    if (listeners.recorded.size() == mostRecorded)
        listeners.recorded.pop_front();
    listeners.recorded.push_back(std::move(iLine));
}

void QorTraceFormatted(int iLevel, const char* iFormat, ...) {
    va_list arguments;
    va_start(arguments, iFormat);
    std::string line = Format(iFormat, arguments);
    va_end(arguments);
    QorTraceChannel::Write(iLevel, std::move(line));
}

unsigned QorTraceId(const void* iObject) {
    return static_cast<unsigned>(reinterpret_cast<std::uintptr_t>(iObject));
}
