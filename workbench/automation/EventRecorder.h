#pragma once

#include "platform/component/QorEventName.h"

#include <deque>
#include <vector>

class QorBaseUnknown;

namespace qor::automation {

/// Keeps which events and notifications were dispatched, the latest 100,000 of them, from its
/// construction on. There is one a process. User-interface thread only.
class EventRecorder {
public:
    EventRecorder();
    ~EventRecorder();
    EventRecorder(const EventRecorder&) = delete;
    EventRecorder& operator=(const EventRecorder&) = delete;

    struct Event {
        QorEventName name;
        const char* publisher; ///< name of its class
    };

    /// Hands over what was kept, the oldest first.
    [[nodiscard]] std::vector<Event> take();

private:
    void record(QorEventName name, const QorBaseUnknown* publisher);

    std::deque<Event> events_;
};

} // namespace qor::automation
