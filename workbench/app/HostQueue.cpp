// The host of a program that was built without a desktop: a loop that waits on a condition.
#include "platform/system/QorApplication.h"
#include "platform/system/QorQueueLoop.h"
#include "workbench/app/Host.h"
#include "workbench/app/Services.h"

#include <iostream>

namespace qor::app {

int withHost(const Options& options, const std::function<int(const HostLoop& host)>& serve) {
    if (!options.isHeadless) {
        std::cerr << "qorworkbench: this program was built without windows; use --headless\n";
        return exitFailed;
    }
    QorQueueLoop loop;
    const QorInteractiveApplication application(loop);
    Services services;
    return serve({loop, [&] { loop.Run(); }, services});
}

} // namespace qor::app
