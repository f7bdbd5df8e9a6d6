#pragma once

#include "workbench/automation/Message.h"
#include "workbench/automation/Transport.h"

#include <functional>
#include <memory>

namespace qor::automation {

class Dispatcher;

/// The answers of a batch, until all are there.
struct Batch {
    std::size_t missing = 0;
    Json answers = Json::array();
};

/// One request on its way to its answer. Belongs to the dispatcher, and to whoever answers it
/// later.
struct Exchange {
    Request request;
    ConnectionId connection = 0;
    std::shared_ptr<Batch> batch; ///< null outside a batch
    std::weak_ptr<Dispatcher> dispatcher;

    Json response;           ///< what to send when the work is done; null while there is none
    bool isDeferred = false; ///< the handler leaves the answer to somebody else
    bool isAnswered = false;
    bool waitsForWorkers = true;         ///< what workers make for dialogs belongs to the answer
    std::function<void()> whenAbandoned; ///< a deferred answer is not wanted any more
    std::function<void()> afterAnswer;
    /// The notify.answer that let this request's work go on, after it had been answered with the
    /// box; it gets the answer that this request does not need any more.
    std::shared_ptr<Exchange> heir;
};

using ExchangePtr = std::shared_ptr<Exchange>;

/// The right to answer a request after its handler has returned. Copies stand for the same answer;
/// only the first one given counts. User-interface thread only; harmless after the port's end.
class Answer {
public:
    explicit Answer(ExchangePtr exchange) : exchange_(std::move(exchange)) {}

    /// Runs the work that is posted, then answers.
    void give(Json result) const;
    void fail(ErrorCode code, const std::string& text) const;

    /// Whether an answer is still wanted: none was given, the client is there, and so is the port.
    /// Of a request that a notification box stopped, the notify.answer wants it.
    [[nodiscard]] bool isWanted() const { return !recipient()->isAnswered; }

    /// Called once when the answer is not wanted any more though none was given: stop what it
    /// waits for.
    void whenAbandoned(std::function<void()> stop) const {
        exchange_->whenAbandoned = std::move(stop);
    }

private:
    [[nodiscard]] const ExchangePtr& recipient() const {
        return exchange_->heir ? exchange_->heir : exchange_;
    }

    void conclude(Json response) const;

    ExchangePtr exchange_;
};

} // namespace qor::automation
