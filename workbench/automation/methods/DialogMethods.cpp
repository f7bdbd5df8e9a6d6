#include "platform/dialog/QorDlgDialog.h"
#include "workbench/automation/Address.h"
#include "workbench/automation/Call.h"
#include "workbench/automation/WidgetReaders.h"
#include "workbench/automation/methods/Groups.h"
#include "workbench/automation/methods/UserAction.h"

namespace qor::automation {

namespace {

Json listAll(Call& /*call*/) {
    Json list = Json::array();
    for (const QorDlgDialog* dialog : listDialogs())
        list.push_back({{"name", dialog->GetName().Str()},
                        {"class", dialog->IsA()},
                        {"title", dialog->GetTitle().Str()},
                        {"visible", dialog->GetVisibility() == QorDlgSHOW},
                        {"blocking", dialog->IsBlocking()}});
    return list;
}

Json getTree(Call& call) {
    return readWidgetTree(findDialog(call.text("dialog")));
}

using Action = QorUserResult (QorDlgDialog::*)();

template <Action action>
Json act(Call& call) {
    const std::string name = call.text("dialog");
    return answerAction((findDialog(name).*action)(), name);
}

Json resize(Call& call) {
    const std::string name = call.text("dialog");
    return answerAction(findDialog(name).UserResize(call.integer("width"), call.integer("height")),
                        name);
}

} // namespace

MethodGroup dialogMethods() {
    const Param dialog{"dialog", ParamKind::text};
    return {
        {.name = "dialog.list", .params = {}, .run = &listAll, .isForBlocked = true},
        {.name = "dialog.tree", .params = {dialog}, .run = &getTree, .isForBlocked = true},
        {.name = "dialog.ok", .params = {dialog}, .run = &act<&QorDlgDialog::UserOK>},
        {.name = "dialog.cancel", .params = {dialog}, .run = &act<&QorDlgDialog::UserCancel>},
        {.name = "dialog.close", .params = {dialog}, .run = &act<&QorDlgDialog::UserClose>},
        {.name = "dialog.resize",
         .params = {dialog, {"width", ParamKind::integer}, {"height", ParamKind::integer}},
         .run = &resize},
    };
}

} // namespace qor::automation
