#include "platform/system/QorEventLoop.h"
#include "workbench/automation/Call.h"
#include "workbench/automation/Dispatcher.h"
#include "workbench/automation/Port.h"
#include "workbench/automation/methods/Groups.h"

#include <unistd.h>

#include <chrono>
#include <memory>

namespace qor::automation {

namespace {

constexpr double longestRunMs = 24.0 * 60.0 * 60.0 * 1000.0;

/// Leaves the loop to itself for that long. It runs as it does without us, not in a nested turn, so
/// that everything gets its turn that would.
Json runLoop(QorEventLoop& loop, Call& call) {
    const double ms = call.number("ms");
    if (ms < 0.0 || ms > longestRunMs)
        throw Error(ErrorCode::invalidParams, "parameter \"ms\" must be from 0 to a day");
    const Answer answer = call.answerLaterAlone();
    const auto time =
        std::chrono::ceil<std::chrono::milliseconds>(std::chrono::duration<double, std::milli>(ms));
    const QorTimerId timer = loop.StartTimer(
        time, [answer] { answer.give(Json::object()); }, false);
    answer.whenAbandoned([&loop, timer] {
        QorTimerId stopped = timer;
        loop.StopTimer(stopped);
    });
    return {};
}

} // namespace

MethodGroup appMethods(QorEventLoop& loop, Dispatcher& dispatcher, const PortOptions& options) {
    const Json info{{"name", options.name},
                    {"version", options.version},
                    {"headless", options.isHeadless},
                    {"pid", ::getpid()}};
    const auto quit = [&dispatcher](Call& call) {
        call.afterAnswer([&dispatcher] { dispatcher.end(); });
        return Json::object();
    };
    return {
        {.name = "app.info",
         .params = {},
         .run = [info](Call&) { return info; },
         .isForBlocked = true,
         .waitsForWorkers = false},
        {.name = "app.run",
         .params = {{"ms", ParamKind::number}},
         .run = [&loop](Call& call) { return runLoop(loop, call); },
         .isForBlocked = true},
        {.name = "app.quit", .params = {}, .run = quit, .isForBlocked = true},
    };
}

} // namespace qor::automation
