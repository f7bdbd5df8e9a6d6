#pragma once

#include "workbench/automation/Exchange.h"
#include "workbench/automation/Method.h"

#include <atomic>
#include <deque>
#include <functional>
#include <list>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

class QorDlgNotify;
class QorEventLoop;

namespace qor::automation {

/// Handles requests one after another on the user-interface thread and decides when each is
/// answered: when its own work has run, and what was posted or given to the workers of the dialogs
/// meanwhile; or when a notification box stops that work. While a box is open, requests are served
/// by the nested turn of the box.
class Dispatcher : public std::enable_shared_from_this<Dispatcher> {
public:
    Dispatcher(QorEventLoop& loop, bool isOnce, std::function<void()> quit);

    /// Before the first turn of the loop; \p transport lives until close().
    void attach(Transport& transport) { transport_ = &transport; }

    void add(MethodGroup group);

    /// While it is held no request is handled; they wait. User-interface thread.
    void hold(bool isHeld);

    /// Takes what comes from the client. Called on the transport's thread.
    void arrive(Arrival arrival);

    /// A notification box has opened and its nested turn is about to begin.
    void boxOpened(const QorDlgNotify& box);

    /// Ends the program; an open notification box is answered "cancel".
    void end();

    /// Answers what is open with an error; nothing is handled or sent any more.
    void close();

private:
    friend class Answer;
    friend class Call;

    /// Work that is under way: that of a request, or of somebody else that opened a box.
    struct Work {
        ExchangePtr exchange; ///< null for somebody else's
        int depth = 0;        ///< of the loop
        ExchangePtr waiter;   ///< a notify.answer, answered when this work has run
    };

    struct Item {
        ExchangePtr exchange; ///< null: end of the client's input
        ConnectionId connection = 0;
    };

    struct OpenBox {
        const QorDlgNotify* box;
        Work* opener;
    };

    void post(std::function<void(Dispatcher&)> work);
    void wake();
    void serve();
    [[nodiscard]] bool isFree() const;
    [[nodiscard]] bool hasItems() const;
    bool takeItem(Item& item);
    void unpack(Arrival arrival);
    ExchangePtr makeExchange(Request request, ConnectionId connection);

    void run(const ExchangePtr& exchange);
    [[nodiscard]] Json execute(const ExchangePtr& exchange);
    [[nodiscard]] Json invoke(const ExchangePtr& exchange);

    Work& begin(ExchangePtr exchange);
    /// Runs what is posted, then answers for \p work and forgets it.
    void settle(Work& work);
    void finishWorkers();
    Work& findOpener();
    void answerBlocked(const ExchangePtr& exchange, const std::string& boxName);

    void answer(const ExchangePtr& exchange, Json response);
    void deliver(const Exchange& exchange, Json response);
    void abandon(const ExchangePtr& exchange);
    void clientGone(ConnectionId connection);
    void finishConnection();

    void goOnWithout(const ExchangePtr& exchange);
    void remember(const ExchangePtr& exchange);
    void conclude(const ExchangePtr& exchange);
    void answerWhenUnblocked(const ExchangePtr& exchange, const QorDlgNotify& box);

    QorEventLoop& loop_;
    Transport* transport_ = nullptr;
    bool isOnce_;
    std::function<void()> quit_;
    std::map<std::string, Method, std::less<>> methods_;

    mutable std::mutex mutex_;
    std::deque<Arrival> arrivals_; ///< under the mutex
    std::atomic<bool> isWoken_ = false;

    std::deque<Item> items_;
    ExchangePtr current_; ///< the request that the others wait for
    std::list<Work> works_;
    std::vector<OpenBox> boxes_;
    std::vector<ExchangePtr> deferred_;
    std::size_t unanswered_ = 0;  ///< requests of the client that are in items_ or under way
    ConnectionId inputEnded_ = 0; ///< the connection that sends no more, or 0
    ConnectionId gone_ = 0;       ///< the last connection that hung up altogether
    bool isEnding_ = false;
    bool isHeld_ = false;
};

} // namespace qor::automation
