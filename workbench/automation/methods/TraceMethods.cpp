#include "platform/system/QorTrace.h"
#include "workbench/automation/Call.h"
#include "workbench/automation/methods/Groups.h"

namespace qor::automation {

namespace {

Json startTrace(Call& call) {
    if (call.integer("level") < 1)
        throw Error(ErrorCode::invalidParams, "parameter \"level\" must be 1 or more");
    QorTraceChannel::StartRecording(call.integer("level"));
    return Json::object();
}

Json stopTrace(Call& /*call*/) {
    QorTraceChannel::StopRecording();
    return Json::object();
}

Json takeTrace(Call& /*call*/) {
    return QorTraceChannel::TakeRecorded();
}

} // namespace

MethodGroup traceMethods() {
    return {
        {.name = "trace.start",
         .params = {{"level", ParamKind::integer}},
         .run = &startTrace,
         .isForBlocked = true},
        {.name = "trace.stop",
         .params = {optional("level", ParamKind::integer)},
         .run = &stopTrace,
         .isForBlocked = true},
        {.name = "trace.take", .params = {}, .run = &takeTrace, .isForBlocked = true},
    };
}

} // namespace qor::automation
