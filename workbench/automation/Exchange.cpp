#include "workbench/automation/Exchange.h"

#include "workbench/automation/Dispatcher.h"

namespace qor::automation {

void Answer::give(Json result) const {
    // What a notify.answer gives is the same whatever it let go on.
    conclude(
        makeResult(recipient()->request.id, exchange_->heir ? Json::object() : std::move(result)));
}

void Answer::fail(ErrorCode code, const std::string& text) const {
    conclude(makeError(recipient()->request.id, code, text));
}

void Answer::conclude(Json response) const {
    if (!isWanted())
        return;
    recipient()->response = std::move(response);
    if (const auto dispatcher = exchange_->dispatcher.lock())
        dispatcher->conclude(recipient());
}

} // namespace qor::automation
