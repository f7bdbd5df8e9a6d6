#pragma once

#include "platform/component/QorCallbackMethod.h"

#include <vector>

/// The rows behind a QorCallbackManager. Counted by the manager and by every dispatch that runs
/// through it.
class QorCallbackTable {
public:
    QorCallbackTable() = default;
    QorCallbackTable(const QorCallbackTable&) = delete;
    QorCallbackTable& operator=(const QorCallbackTable&) = delete;

    struct Row {
        QorCallbackId id;
        QorEventName event;
        QorEventSubscriber* subscriber; ///< null once removed
        QorCallbackMethod method;
        QorSubscriberData data;
    };

    /// Keeps the table while rows are walked and sweeps removed rows at the end of the outermost
    /// walk.
    class Walk {
    public:
        explicit Walk(QorCallbackTable& iTable);
        ~Walk();
        Walk(const Walk&) = delete;
        Walk& operator=(const Walk&) = delete;

    private:
        QorCallbackTable& table;
    };

    QorCallbackId Add(QorEventSubscriber* iSubscriber,
                      QorEventName iEvent,
                      const QorCallbackMethod& iMethod,
                      QorSubscriberData iData);
    template <class Predicate>
    void RemoveIf(Predicate iPredicate);
    void Remove(QorCallbackId iId);
    void Remove(QorEventSubscriber* iSubscriber, QorEventName iEvent);
    /// A subscriber is being destroyed: its rows go, and it is not touched any more.
    void Forget(QorEventSubscriber* iSubscriber);
    /// Calls the rows that \p iDispatch concerns; with a receiver, its rows alone. Whether there
    /// was one.
    bool Dispatch(const QorDispatch& iDispatch, QorEventSubscriber* iReceiver);
    /// The publisher is gone: no row is called any more, and the table ends with the last walk.
    void Close();
    [[nodiscard]] std::size_t Count() const;
    [[nodiscard]] std::size_t Count(QorEventName iEvent) const;

private:
    ~QorCallbackTable() = default;
    static void Untie(QorEventSubscriber* iSubscriber, QorCallbackTable* iTable);
    void Sweep();

    std::vector<Row> rows;
    unsigned walks = 0;
    bool closed = false;
    bool hasRemoved = false;
};
