#include "workbench/automation/Call.h"
#include "workbench/automation/EventRecorder.h"
#include "workbench/automation/methods/Groups.h"

namespace qor::automation {

MethodGroup eventMethods(EventRecorder& events) {
    const auto take = [&events](Call&) {
        Json list = Json::array();
        for (const EventRecorder::Event& event : events.take())
            list.push_back({{"event", event.name.GetText()}, {"publisher", event.publisher}});
        return list;
    };
    return {{.name = "events.take", .params = {}, .run = take, .isForBlocked = true}};
}

} // namespace qor::automation
