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
#include "workbench/automation/methods/Groups.h"

#include <chrono>
#include <exception>
#include <iostream>
#include <memory>
#include <utility>

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

/// Lets the port's clients find the program as its command line asks for: their requests wait until
/// the file is open, but not for ever, for they may want to cancel that.
class PortHold {
public:
    PortHold(QorEventLoop& loop, automation::Port* port) : loop_(loop), port_(port) {
        if (port_ == nullptr)
            return;
        port_->hold(true);
        timer_ = loop_.StartTimer(
            patience, [this] { end(); }, false);
    }

    ~PortHold() { end(); }

    PortHold(const PortHold&) = delete;
    PortHold& operator=(const PortHold&) = delete;

    void end() {
        loop_.StopTimer(timer_);
        if (automation::Port* held = std::exchange(port_, nullptr))
            held->hold(false);
    }

private:
    static constexpr std::chrono::seconds patience{20};

    QorEventLoop& loop_;
    automation::Port* port_;
    QorTimerId timer_ = 0;
};

int serve(const HostLoop& host, const Options& options) {
    QorEventLoop& loop = host.loop;
    const SignalWatcher signals([&loop] { loop.Post([&loop] { loop.Quit(); }); });
    auto port = openPort(loop, options);
    if (port && !port->error().empty()) {
        std::cerr << "qorworkbench: " << port->error() << std::endl;
        return exitFailed;
    }
    {
        PortHold hold(loop, port.get());
        Workbench workbench(host, options);
        if (port)
            port->add(automation::documentMethods(workbench.session().documents()));
        workbench.start([&hold] { hold.end(); });
        host.run();
        hold.end();
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
    if (const std::string wrong = useProgramResources(); !wrong.empty())
        std::cerr << "qorworkbench: " << wrong << '\n';
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
