#include "workbench/automation/EventRecorder.h"

#include "platform/component/QorCallbackManager.h"

#include <utility>

namespace qor::automation {

namespace {

constexpr std::size_t mostEvents = 100'000;

} // namespace

EventRecorder::EventRecorder() {
    QorCallbackManager::SetObserver(
        [this](QorEventName name, const QorBaseUnknown* publisher) { record(name, publisher); });
}

EventRecorder::~EventRecorder() {
    QorCallbackManager::SetObserver({});
}

void EventRecorder::record(QorEventName name, const QorBaseUnknown* publisher) {
    if (events_.size() == mostEvents)
        events_.pop_front();
    events_.push_back({name, publisher != nullptr ? publisher->IsA() : ""});
}

std::vector<EventRecorder::Event> EventRecorder::take() {
    const std::deque<Event> taken = std::exchange(events_, {});
    return {taken.begin(), taken.end()};
}

} // namespace qor::automation
