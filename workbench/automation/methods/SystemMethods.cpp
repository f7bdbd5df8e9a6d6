#include "platform/system/QorEnvironment.h"
#include "workbench/automation/Call.h"
#include "workbench/automation/methods/Groups.h"

namespace qor::automation {

namespace {

Json setVariable(Call& call) {
    std::optional<QorUnicodeString> value;
    if (!call.value("value").is_null())
        value = QorUnicodeString(call.text("value"));
    if (!QorSetEnv(call.text("name"), value))
        throw Error(ErrorCode::invalidParams,
                    inQuotes(call.text("name")) + " cannot be the name of a variable");
    return Json::object();
}

} // namespace

MethodGroup systemMethods() {
    return {{.name = "system.env",
             .params = {{"name", ParamKind::text}, {"value", ParamKind::textOrNull}},
             .run = &setVariable}};
}

} // namespace qor::automation
