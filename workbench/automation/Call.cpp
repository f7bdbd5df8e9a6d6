#include "workbench/automation/Call.h"

#include "workbench/automation/Dispatcher.h"

namespace qor::automation {

Answer Call::answerLater() {
    exchange_->isDeferred = true;
    if (!exchange_->isAnswered)
        dispatcher_.goOnWithout(exchange_);
    return Answer(exchange_);
}

Answer Call::answerLaterAlone() {
    exchange_->isDeferred = true;
    dispatcher_.remember(exchange_);
    return Answer(exchange_);
}

void Call::answerWhenUnblocked(const QorDlgNotify& box) {
    dispatcher_.answerWhenUnblocked(exchange_, box);
}

void Call::afterAnswer(std::function<void()> work) {
    exchange_->afterAnswer = std::move(work);
}

} // namespace qor::automation
