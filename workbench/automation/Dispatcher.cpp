#include "workbench/automation/Dispatcher.h"

#include "platform/dialog/QorDlgNotify.h"
#include "platform/system/QorEventLoop.h"
#include "scenes/QorRdgWorkers.h"
#include "workbench/automation/Call.h"

#include <algorithm>
#include <utility>

namespace qor::automation {

Dispatcher::Dispatcher(QorEventLoop& loop, bool isOnce, std::function<void()> quit)
    : loop_(loop), isOnce_(isOnce), quit_(std::move(quit)) {}

void Dispatcher::add(MethodGroup group) {
    for (Method& method : group)
        methods_.insert_or_assign(method.name, method);
}

// ---- requests in

void Dispatcher::post(std::function<void(Dispatcher&)> work) {
    loop_.Post(
        [weak = weak_from_this(), work = std::move(work)] {
            if (const auto self = weak.lock())
                work(*self);
        },
        QorEventLoop::Scope::AnyDepth);
}

void Dispatcher::arrive(Arrival arrival) {
    if (arrival.kind == Arrival::Kind::gone) {
        post([connection = arrival.connection](Dispatcher& self) { self.clientGone(connection); });
        return;
    }
    {
        const std::scoped_lock lock(mutex_);
        arrivals_.push_back(std::move(arrival));
    }
    wake();
}

/// Has the next item served at a turn of its own, so that input, timers and painting get theirs.
void Dispatcher::wake() {
    if (!isWoken_.exchange(true))
        post([](Dispatcher& self) { self.serve(); });
}

bool Dispatcher::hasItems() const {
    const std::scoped_lock lock(mutex_);
    return !items_.empty() || !arrivals_.empty();
}

/// Whether a request may be handled now: none is waited for, and the work of an earlier one is not
/// under way in this very turn.
bool Dispatcher::isFree() const {
    return !isHeld_ && !isEnding_ && !current_ &&
           (works_.empty() || works_.back().depth < loop_.GetDepth());
}

void Dispatcher::hold(bool isHeld) {
    isHeld_ = isHeld;
    if (isFree() && hasItems())
        wake();
}

void Dispatcher::serve() {
    isWoken_ = false;
    Item item;
    if (!isFree() || !takeItem(item))
        return; // whoever ends what is in the way wakes us
    if (item.exchange) {
        run(item.exchange);
    } else {
        inputEnded_ = item.connection;
        finishConnection();
    }
    if (isFree() && hasItems())
        wake();
}

bool Dispatcher::takeItem(Item& item) {
    while (items_.empty()) {
        Arrival arrival;
        {
            const std::scoped_lock lock(mutex_);
            if (arrivals_.empty())
                return false;
            arrival = std::move(arrivals_.front());
            arrivals_.pop_front();
        }
        unpack(std::move(arrival));
    }
    item = std::move(items_.front());
    items_.pop_front();
    return true;
}

void Dispatcher::unpack(Arrival arrival) {
    if (arrival.kind == Arrival::Kind::endOfInput) {
        items_.push_back({nullptr, arrival.connection});
        return;
    }
    const auto batch = arrival.message.isBatch ? std::make_shared<Batch>() : nullptr;
    for (Request& request : arrival.message.requests) {
        items_.push_back({makeExchange(std::move(request), arrival.connection), 0});
        items_.back().exchange->batch = batch;
    }
    if (batch)
        batch->missing = arrival.message.requests.size();
    transport_->handled(arrival.weight);
}

ExchangePtr Dispatcher::makeExchange(Request request, ConnectionId connection) {
    auto exchange = std::make_shared<Exchange>();
    exchange->request = std::move(request);
    exchange->connection = connection;
    exchange->dispatcher = weak_from_this();
    ++unanswered_;
    return exchange;
}

// ---- a request's work

void Dispatcher::run(const ExchangePtr& exchange) {
    current_ = exchange;
    Work& work = begin(exchange);
    Json response = execute(exchange);
    if (!exchange->isDeferred)
        exchange->response = std::move(response);
    settle(work);
}

Json Dispatcher::execute(const ExchangePtr& exchange) {
    const Json& id = exchange->request.id;
    try {
        return makeResult(id, invoke(exchange));
    } catch (const Error& error) {
        exchange->isDeferred = false;
        return makeError(id, error.code(), error.what());
    } catch (const std::exception& error) {
        exchange->isDeferred = false;
        return makeError(id, ErrorCode::internalError, error.what());
    }
}

Json Dispatcher::invoke(const ExchangePtr& exchange) {
    const Request& request = exchange->request;
    if (request.error)
        throw Error(*request.error);
    const auto found = methods_.find(request.method);
    if (found == methods_.end())
        throw Error(ErrorCode::methodNotFound, "there is no method " + inQuotes(request.method));
    const Method& method = found->second;
    const QorDlgNotify* box = QorDlgNotify::GetOpen();
    if (box != nullptr && !method.isForBlocked)
        throw Error(ErrorCode::blocked, "the notification box " + inQuotes(box->GetName().Str()) +
                                            " has to be answered first");
    checkParams(method, request.params);
    exchange->waitsForWorkers = method.waitsForWorkers;
    Call call(*this, exchange);
    return method.run(call);
}

Dispatcher::Work& Dispatcher::begin(ExchangePtr exchange) {
    works_.push_back({std::move(exchange), loop_.GetDepth(), nullptr});
    return works_.back();
}

void Dispatcher::settle(Work& work) {
    if (work.waiter && work.exchange && work.exchange->isDeferred && work.exchange->isAnswered) {
        // The work goes on beyond this turn: whoever closed the box is answered when it has ended.
        work.exchange->heir = std::exchange(work.waiter, nullptr);
        goOnWithout(work.exchange->heir);
    }
    loop_.RunPosted();
    if ((work.exchange && work.exchange->waitsForWorkers) || work.waiter)
        finishWorkers();
    const ExchangePtr exchange = work.exchange;
    const ExchangePtr waiter = work.waiter;
    std::erase_if(boxes_, [&](const OpenBox& open) { return open.opener == &work; });
    works_.remove_if([&](const Work& one) { return &one == &work; });
    if (exchange && !exchange->isDeferred)
        answer(exchange, std::move(exchange->response));
    if (waiter)
        answer(waiter, makeResult(waiter->request.id, Json::object()));
    if (isFree() && hasItems())
        wake();
}

/// What workers make for the dialogs (thumbnails) counts as posted: an answer shows
/// it ready.
void Dispatcher::finishWorkers() {
    while (QorRdgWorkers::CountPending() > 0) {
        QorRdgWorkers::Finish();
        loop_.RunPosted();
    }
}

// ---- notification boxes

void Dispatcher::boxOpened(const QorDlgNotify& box) {
    const std::string name = box.GetName().Str();
    std::erase_if(boxes_, [&](const OpenBox& open) { return open.box == &box; });
    boxes_.push_back({&box, &findOpener()});
    // Whatever is under way goes on when the box is closed, not before.
    for (Work& work : works_) {
        if (work.exchange && !work.exchange->isDeferred)
            answerBlocked(work.exchange, name);
        if (work.waiter)
            answerBlocked(std::exchange(work.waiter, nullptr), name);
    }
    if (current_)
        answerBlocked(ExchangePtr(current_), name);
    if (hasItems())
        wake();
}

/// The work that has just opened a box: the one under way in this turn of the loop. If no request
/// is at work here, somebody else is: a person, a timer. That has run when the loop gets back to
/// what is posted now.
Dispatcher::Work& Dispatcher::findOpener() {
    const auto found = std::find_if(works_.rbegin(), works_.rend(), [this](const Work& work) {
        return work.depth == loop_.GetDepth();
    });
    if (found != works_.rend())
        return *found;
    Work& other = begin(nullptr);
    loop_.Post([weak = weak_from_this(), &other] {
        if (const auto self = weak.lock())
            self->settle(other);
    });
    return other;
}

void Dispatcher::answerBlocked(const ExchangePtr& exchange, const std::string& boxName) {
    Json response = exchange->response;
    if (!response.contains("result") && !response.contains("error"))
        response = makeResult(exchange->request.id, Json::object());
    if (response.contains("result") && response["result"].is_object())
        response["result"]["blocked"] = boxName;
    const auto stop = std::exchange(exchange->whenAbandoned, nullptr);
    answer(exchange, std::move(response));
    if (stop)
        stop();
}

void Dispatcher::answerWhenUnblocked(const ExchangePtr& exchange, const QorDlgNotify& box) {
    const auto found = std::find_if(boxes_.begin(), boxes_.end(),
                                    [&](const OpenBox& open) { return open.box == &box; });
    if (found == boxes_.end())
        return; // it was open before the port was there
    exchange->isDeferred = true;
    found->opener->waiter = exchange;
    boxes_.erase(found);
}

// ---- answers out

void Dispatcher::goOnWithout(const ExchangePtr& exchange) {
    remember(exchange);
    if (current_ == exchange)
        current_ = nullptr;
    if (hasItems())
        wake();
}

void Dispatcher::remember(const ExchangePtr& exchange) {
    deferred_.push_back(exchange);
    if (exchange->connection == gone_)
        post([exchange](Dispatcher& self) { self.abandon(exchange); });
}

void Dispatcher::conclude(const ExchangePtr& exchange) {
    exchange->isDeferred = false;
    settle(begin(exchange));
}

void Dispatcher::answer(const ExchangePtr& exchange, Json response) {
    if (std::exchange(exchange->isAnswered, true))
        return;
    if (current_ == exchange)
        current_ = nullptr;
    std::erase(deferred_, exchange);
    deliver(*exchange, std::move(response));
    --unanswered_;
    finishConnection();
    if (const auto next = std::exchange(exchange->afterAnswer, nullptr))
        next();
}

void Dispatcher::deliver(const Exchange& exchange, Json response) {
    if (!exchange.batch) {
        if (exchange.request.wantsAnswer)
            transport_->send(exchange.connection, printLine(response));
        return;
    }
    Batch& batch = *exchange.batch;
    if (exchange.request.wantsAnswer)
        batch.answers.push_back(std::move(response));
    if (--batch.missing == 0 && !batch.answers.empty())
        transport_->send(exchange.connection, printLine(batch.answers));
}

void Dispatcher::abandon(const ExchangePtr& exchange) {
    if (exchange->isAnswered)
        return;
    const auto stop = std::exchange(exchange->whenAbandoned, nullptr);
    answer(exchange, nullptr);
    if (stop)
        stop();
    if (isFree() && hasItems())
        wake();
}

void Dispatcher::clientGone(ConnectionId connection) {
    gone_ = connection;
    const std::vector<ExchangePtr> waiting = deferred_;
    for (const ExchangePtr& exchange : waiting)
        if (exchange->connection == connection)
            abandon(exchange);
}

/// Lets the next client in, or ends the program, once the client sends no more and has its answers.
void Dispatcher::finishConnection() {
    if (inputEnded_ == 0 || unanswered_ != 0)
        return;
    transport_->finish(std::exchange(inputEnded_, 0));
    if (isOnce_)
        end();
}

void Dispatcher::end() {
    if (std::exchange(isEnding_, true))
        return;
    if (QorDlgNotify* box = QorDlgNotify::GetOpen())
        box->UserCancel();
    quit_();
}

void Dispatcher::close() {
    isEnding_ = true;
    isOnce_ = false;
    std::vector<ExchangePtr> open = deferred_;
    for (const Work& work : works_)
        open.insert(open.end(), {work.exchange, work.waiter});
    for (const ExchangePtr& exchange : open)
        if (exchange)
            answer(exchange,
                   makeError(exchange->request.id, ErrorCode::failed, "the program ends"));
}

} // namespace qor::automation
