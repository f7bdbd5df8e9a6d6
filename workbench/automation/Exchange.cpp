#include "workbench/automation/Exchange.h"

#include "workbench/automation/Dispatcher.h"

namespace qor::automation {

void Answer::give(Json result) const {
    conclude(makeResult(exchange_->request.id, std::move(result)));
}

void Answer::fail(ErrorCode code, const std::string& text) const {
    conclude(makeError(exchange_->request.id, code, text));
}

void Answer::conclude(Json response) const {
    if (!isWanted())
        return;
    exchange_->response = std::move(response);
    if (const auto dispatcher = exchange_->dispatcher.lock())
        dispatcher->conclude(exchange_);
}

} // namespace qor::automation
