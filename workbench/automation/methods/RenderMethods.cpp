// render.* and display.*: what becomes of renders, and the display of a viewer as the engine calls
// it.
#include "platform/engine/QorRdgEngineManager.h"
#include "platform/vis/QorViewer.h"
#include "workbench/automation/Call.h"
#include "workbench/automation/methods/Groups.h"
#include "workbench/automation/methods/ViewerAddress.h"

#include <chrono>

namespace qor::automation {

namespace {

using Manager = QorRdgEngineManager;

constexpr std::chrono::milliseconds lookInterval{10};
constexpr double longestWait = 24.0 * 60.0 * 60.0;

const char* nameOf(Manager::Status status) {
    switch (status) {
    case Manager::Status::Done:
        return "done";
    case Manager::Status::Aborted:
        return "aborted";
    default:
        return "refused";
    }
}

Json describe(const Manager::Record& record) {
    Json out{{"id", record.id},           {"status", nameOf(record.status)},
             {"seconds", record.seconds}, {"width", record.width},
             {"height", record.height},   {"region", nullptr}};
    if (record.region)
        out["region"] = {record.region->x1, record.region->y1, record.region->x2,
                         record.region->y2};
    if (!record.message.IsNull())
        out["message"] = record.message.Str();
    return out;
}

/// Whether the latest start has ended and everybody has been told.
bool hasEnded(const Manager& manager) {
    const Manager::Record& record = manager.GetRecord();
    return record.id == manager.GetLastStart() && record.status != Manager::Status::Running;
}

/// Looks from time to time whether the render has ended. A subscription to its end would keep
/// renders going that nobody else wants.
class Watch : public std::enable_shared_from_this<Watch> {
public:
    Watch(QorEventLoop& loop, Answer answer, double seconds)
        : loop_(loop)
        , answer_(std::move(answer))
        , until_(loop.Now() + std::chrono::duration_cast<QorEventLoop::Clock::duration>(
                                  std::chrono::duration<double>(seconds))) {}

    void start() {
        timer_ = loop_.StartTimer(
            lookInterval, [self = shared_from_this()] { self->look(); }, true);
        answer_.whenAbandoned([self = weak_from_this()] {
            if (const auto watch = self.lock())
                watch->stop();
        });
    }

private:
    void look() {
        const Manager* manager = Manager::GetManager();
        if (manager == nullptr)
            end([this] { answer_.fail(ErrorCode::failed, "the program has no engine any more"); });
        else if (hasEnded(*manager))
            end([this, manager] { answer_.give(describe(manager->GetRecord())); });
        else if (loop_.Now() >= until_)
            end([this] { answer_.fail(ErrorCode::timedOut, "the render is still running"); });
    }

    template <class Reply>
    void end(const Reply& reply) {
        const auto alive = shared_from_this();
        stop();
        reply();
    }

    void stop() { loop_.StopTimer(timer_); }

    QorEventLoop& loop_;
    Answer answer_;
    QorEventLoop::Clock::time_point until_;
    QorTimerId timer_ = 0;
};

Json wait(QorEventLoop& loop, Call& call) {
    const double seconds = call.number("timeout");
    if (!(seconds >= 0.0) || seconds > longestWait)
        throw Error(ErrorCode::invalidParams, "parameter \"timeout\" must be from 0 to a day");
    const Manager* manager = Manager::GetManager();
    if (manager == nullptr || manager->GetLastStart() == 0)
        throw Error(ErrorCode::failed, "no render was ever started");
    if (hasEnded(*manager))
        return describe(manager->GetRecord());
    std::make_shared<Watch>(loop, call.answerLater(), seconds)->start();
    return {};
}

/// The value of the call as a whole number, or 0 when it is left out.
int wholeValue(const Call& call) {
    if (!call.has("value"))
        return 0;
    const Json& value = call.value("value");
    if (value.is_boolean())
        return value.get<bool>() ? 1 : 0;
    if (!value.is_number())
        throw Error(ErrorCode::invalidParams, "parameter \"value\" must be a number here");
    return static_cast<int>(value.get<double>());
}

Json checkAbort(QorIRdgDisplay& display, const Call& call) {
    auto abort = static_cast<unsigned char>(wholeValue(call) != 0 ? 1 : 0);
    const QorResult status = display.CheckAbort(abort);
    return {{"status", status}, {"value", static_cast<int>(abort)}};
}

Json setProgress(QorIRdgDisplay& display, const Call& call) {
    int percent = wholeValue(call);
    const QorResult status = display.SetProgress(percent);
    return {{"status", status}, {"value", percent}};
}

Json setMessage(QorIRdgDisplay& display, const Call& call) {
    if (call.has("value") && !call.value("value").is_string())
        throw Error(ErrorCode::invalidParams, "parameter \"value\" must be a text here");
    QorUnicodeString text = call.has("value") ? call.text("value") : std::string();
    const QorResult status = display.SetMessage(text);
    return {{"status", status}, {"value", text.Str()}};
}

Json clear(QorIRdgDisplay& display, const Call& /*call*/) {
    return {{"status", display.Clear()}};
}

struct Operation {
    const char* name;
    Json (*run)(QorIRdgDisplay& display, const Call& call);
};

constexpr Operation operations[] = {
    {"CheckAbort", &checkAbort},
    {"SetProgress", &setProgress},
    {"SetMessage", &setMessage},
    {"Clear", &clear},
};

Json callDisplay(Call& call) {
    const NamedViewer named = findViewer(call.text("viewer"));
    const std::string name = call.text("operation");
    for (const Operation& one : operations) {
        if (name != one.name)
            continue;
        const auto display = QorQuery<QorIRdgDisplay>(named.viewer);
        if (!display)
            throw Error(ErrorCode::wrongKind, inQuotes(named.path) + " shows no renders");
        return one.run(*display, call);
    }
    throw Error(ErrorCode::invalidParams, "there is no operation " + inQuotes(name));
}

} // namespace

MethodGroup renderMethods(QorEventLoop& loop) {
    return {
        {.name = "render.wait",
         .params = {{"timeout", ParamKind::number}},
         .run =
             [&loop](Call& call) {
                 return wait(loop, call);
             }},
        {.name = "display.call",
         .params = {{"viewer", ParamKind::text},
                    {"operation", ParamKind::text},
                    optional("value", ParamKind::any)},
         .run = &callDisplay},
    };
}

} // namespace qor::automation
