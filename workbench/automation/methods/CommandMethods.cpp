#include "platform/frame/QorCommandHeader.h"
#include "workbench/automation/Call.h"
#include "workbench/automation/methods/Groups.h"

namespace qor::automation {

namespace {

Json listCommands(Call& /*call*/) {
    Json list = Json::array();
    for (const QorCommandHeader* header : QorCommandHeader::GetAll())
        list.push_back({{"name", header->GetName().Str()},
                        {"available", header->IsAvailable()},
                        {"checked", header->GetCheckState() == QorDlgCheck}});
    return list;
}

QorVar<QorCommandHeader> findHeader(const std::string& name) {
    QorVar<QorCommandHeader> header = QorCommandHeader::GetHeaderFromList(name, 1);
    if (!header)
        throw Error(ErrorCode::noSuchObject, "there is no command " + inQuotes(name));
    return header;
}

Json startCommand(Call& call) {
    const std::string name = call.text("name");
    const auto header = findHeader(name);
    if (!header->IsAvailable())
        throw Error(ErrorCode::cannotAct, "the command " + inQuotes(name) + " is not available");
    if (!QorSucceeded(header->UserStart()))
        throw Error(ErrorCode::failed, "the command " + inQuotes(name) + " could not be started");
    return Json::object();
}

Json endCommand(Call& call) {
    const std::string name = call.text("name");
    if (!QorSucceeded(findHeader(name)->EndCommand()))
        throw Error(ErrorCode::failed, "the command " + inQuotes(name) + " could not be ended");
    return Json::object();
}

} // namespace

MethodGroup commandMethods() {
    const Param name{"name", ParamKind::text};
    return {
        {.name = "command.list", .params = {}, .run = &listCommands},
        {.name = "command.start", .params = {name}, .run = &startCommand},
        {.name = "command.end", .params = {name}, .run = &endCommand},
    };
}

} // namespace qor::automation
