#include "workbench/automation/methods/UserAction.h"

#include "workbench/automation/Error.h"

namespace qor::automation {

Json answerAction(QorUserResult result, const std::string& name) {
    const std::string object = inQuotes(name);
    switch (result) {
    case QorUserResult::Done:
        break;
    case QorUserResult::Insensitive:
        throw Error(ErrorCode::cannotAct, object + " is insensitive or hidden");
    case QorUserResult::Impossible:
        throw Error(ErrorCode::cannotAct, "a person could not do that to " + object);
    case QorUserResult::OutOfRange:
        throw Error(ErrorCode::invalidParams, "that is beyond what " + object + " has");
    }
    return Json::object();
}

} // namespace qor::automation
