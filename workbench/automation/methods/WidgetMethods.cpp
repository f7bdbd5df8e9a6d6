#include "platform/dialog/QorDlgButton.h"
#include "workbench/automation/Address.h"
#include "workbench/automation/Call.h"
#include "workbench/automation/WidgetReaders.h"
#include "workbench/automation/methods/Groups.h"
#include "workbench/automation/methods/UserAction.h"
#include "workbench/automation/methods/WidgetValue.h"

namespace qor::automation {

namespace {

[[noreturn]] void refuseKind(const QorDialog& widget, const char* action) {
    throw Error(ErrorCode::wrongKind,
                "a " + std::string(widget.GetKind()) + " cannot be " + action);
}

Json getWidget(Call& call) {
    return readWidget(findWidget(call.text("path")));
}

Json press(Call& call) {
    const std::string path = call.text("path");
    QorDialog& widget = findWidget(path);
    auto* button = dynamic_cast<QorDlgPushButton*>(&widget);
    if (button == nullptr)
        refuseKind(widget, "pressed");
    return answerAction(button->UserPress(), path);
}

Json check(Call& call) {
    const std::string path = call.text("path");
    QorDialog& widget = findWidget(path);
    if (auto* button = dynamic_cast<QorDlgCheckButton*>(&widget))
        return answerAction(button->UserCheck(call.flag("checked")), path);
    if (auto* button = dynamic_cast<QorDlgRadioButton*>(&widget))
        return answerAction(button->UserCheck(call.flag("checked")), path);
    refuseKind(widget, "checked");
}

Json doubleClick(Call& call) {
    const std::string path = call.text("path");
    QorDialog& widget = findWidget(path);
    auto* button = dynamic_cast<QorDlgCheckButton*>(&widget);
    if (button == nullptr)
        refuseKind(widget, "double-clicked");
    return answerAction(button->UserDoubleClick(), path);
}

Json setValue(Call& call) {
    const std::string path = call.text("path");
    NewValue change;
    if (call.has("value"))
        change.value = &call.value("value");
    if (call.has("via"))
        change.via = call.text("via");
    return answerAction(setWidgetValue(findWidget(path), change), path);
}

} // namespace

MethodGroup widgetMethods() {
    const Param path{"path", ParamKind::text};
    return {
        {.name = "widget.get", .params = {path}, .run = &getWidget, .isForBlocked = true},
        {.name = "widget.press", .params = {path}, .run = &press},
        {.name = "widget.check", .params = {path, {"checked", ParamKind::boolean}}, .run = &check},
        {.name = "widget.doubleClick", .params = {path}, .run = &doubleClick},
        {.name = "widget.set",
         .params = {path, optional("value", ParamKind::any), optional("via", ParamKind::text)},
         .run = &setValue},
    };
}

} // namespace qor::automation
