#include "platform/dialog/QorDlgColorEditor.h"
#include "workbench/automation/Address.h"
#include "workbench/automation/Call.h"
#include "workbench/automation/methods/Groups.h"
#include "workbench/automation/methods/UserAction.h"

namespace qor::automation {

namespace {

QorDlgColorEditor& findEditor(const std::string& name) {
    QorDlgDialog& dialog = findDialog(name);
    if (auto* editor = dynamic_cast<QorDlgColorEditor*>(&dialog))
        return *editor;
    throw Error(ErrorCode::wrongKind, inQuotes(name) + " is no colour editor");
}

std::array<float, 3> readColor(const Json& value) {
    constexpr std::size_t parts = 3;
    if (value.size() != parts)
        throw Error(ErrorCode::invalidParams, R"(parameter "color" must be [red, green, blue])");
    return value.get<std::array<float, parts>>();
}

Json acceptColor(Call& call) {
    const std::string name = call.text("dialog");
    const std::array<float, 3> color = readColor(call.value("color"));
    return answerAction(findEditor(name).UserAccept(color), name);
}

Json cancelColor(Call& call) {
    const std::string name = call.text("dialog");
    return answerAction(findEditor(name).UserCancel(), name);
}

} // namespace

MethodGroup colorMethods() {
    const Param dialog{"dialog", ParamKind::text};
    return {
        {.name = "color.accept",
         .params = {dialog, {"color", ParamKind::numbers}},
         .run = &acceptColor},
        {.name = "color.cancel", .params = {dialog}, .run = &cancelColor},
    };
}

} // namespace qor::automation
