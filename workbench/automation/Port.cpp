#include "workbench/automation/Port.h"

#include "platform/dialog/QorDlgNotify.h"
#include "platform/system/QorEventLoop.h"
#include "workbench/automation/Dispatcher.h"
#include "workbench/automation/EventRecorder.h"
#include "workbench/automation/Transport.h"
#include "workbench/automation/methods/Groups.h"

namespace qor::automation {

struct Port::Parts {
    EventRecorder events;
    std::shared_ptr<Dispatcher> dispatcher;
    std::unique_ptr<Transport> transport;
};

Port::Port(QorEventLoop& loop, const std::string& path, PortOptions options)
    : parts_(std::make_unique<Parts>()) {
    if (!options.quit)
        options.quit = [&loop] {
            loop.Quit();
        };
    auto dispatcher = std::make_shared<Dispatcher>(loop, options.isOnce, options.quit);
    parts_->dispatcher = dispatcher;
    const std::vector<MethodGroup> groups{appMethods(loop, *dispatcher, options),
                                          systemMethods(),
                                          settingsMethods(),
                                          commandMethods(),
                                          dialogMethods(),
                                          widgetMethods(),
                                          notifyMethods(),
                                          fileMethods(),
                                          colorMethods(),
                                          viewerMethods(),
                                          manipulatorMethods(),
                                          objectMethods(),
                                          selectionMethods(),
                                          renderMethods(loop),
                                          traceMethods(),
                                          eventMethods(parts_->events)};
    for (const MethodGroup& group : groups)
        add(group);
    QorDlgNotify::SetOpenedObserver(
        [dispatcher](QorDlgNotify& box) { dispatcher->boxOpened(box); });
    parts_->transport = std::make_unique<Transport>(
        path, [dispatcher](Arrival arrival) { dispatcher->arrive(std::move(arrival)); });
    dispatcher->attach(*parts_->transport);
}

Port::~Port() {
    QorDlgNotify::SetOpenedObserver({});
    parts_->dispatcher->close();
}

const std::string& Port::error() const {
    return parts_->transport->error();
}

void Port::add(MethodGroup group) {
    parts_->dispatcher->add(std::move(group));
}

void Port::hold(bool isHeld) {
    parts_->dispatcher->hold(isHeld);
}

} // namespace qor::automation
