// qorworkbench: reads the command line and runs the workbench in its host.
#include "QorVersion.h"
#include "platform/system/QorEventLoop.h"
#include "platform/system/QorExitHooks.h"
#include "platform/system/QorTrace.h"
#include "workbench/app/Host.h"
#include "workbench/app/ProgramResources.h"
#include "workbench/app/SignalWatcher.h"
#include "workbench/app/Workbench.h"
#include "workbench/automation/Port.h"

#include <exception>
#include <iostream>
#include <memory>

namespace qor::app {

namespace {

/// The automation port, or null when none is asked for; one that does not listen has said why.
std::unique_ptr<automation::Port> openPort(QorEventLoop& loop, const Options& options) {
    if (options.socket.empty())
        return nullptr;
    automation::PortOptions about;
    about.name = "qorworkbench";
    about.version = QorVersion();
    about.isHeadless = options.isHeadless;
    about.isOnce = options.isOnce;
    about.quit = [&loop] {
        loop.Quit();
    };
    return std::make_unique<automation::Port>(loop, options.socket, std::move(about));
}

int serve(const HostLoop& host, const Options& options) {
    QorEventLoop& loop = host.loop;
    const SignalWatcher signals([&loop] { loop.Post([&loop] { loop.Quit(); }); });
    auto port = openPort(loop, options);
    if (port && !port->error().empty()) {
        std::cerr << "qorworkbench: " << port->error() << std::endl;
        return exitFailed;
    }
    {
        Workbench workbench(loop, options);
        workbench.start();
        host.run();
        port.reset(); // nobody is served any more; the socket goes
    }
    QorRunExitHooks();
    loop.RunPosted();
    return exitDone;
}

int print(const Answer& answer) {
    (answer.exitCode == exitDone ? std::cout : std::cerr) << answer.text << std::flush;
    return answer.exitCode;
}

int run(int count, char** arguments) {
    const auto asked = readCommandLine(count, arguments);
    if (const auto* answer = std::get_if<Answer>(&asked))
        return print(*answer);
    const auto& options = std::get<Options>(asked);
    useProgramResources();
    QorTraceChannel::SetStandardErrorLevel(options.traceLevel);
    return withHost(options, [&](const HostLoop& host) { return serve(host, options); });
}

} // namespace

} // namespace qor::app

int main(int count, char** arguments) {
    try {
        return qor::app::run(count, arguments);
    } catch (const std::exception& error) {
        std::cerr << "qorworkbench: " << error.what() << '\n';
        return qor::app::exitFailed;
    }
}
