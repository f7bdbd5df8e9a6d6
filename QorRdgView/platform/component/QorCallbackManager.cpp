#include "platform/component/QorCallbackManager.h"

#include "platform/component/QorCallbackTable.h"

#include <algorithm>

namespace {

QorCallbackManager::Observer& TheObserver() {
    static auto* observer = new QorCallbackManager::Observer;
    return *observer;
}

QorCallbackId NextId() {
    static QorCallbackId last = 0;
    return ++last;
}

} // namespace

QorCallbackTable::Walk::Walk(QorCallbackTable& iTable) : table(iTable) {
    ++table.walks;
}

QorCallbackTable::Walk::~Walk() {
    if (--table.walks != 0)
        return;
    table.Sweep();
    if (table.closed)
        delete &table;
}

QorCallbackId QorCallbackTable::Add(QorEventSubscriber* iSubscriber,
                                    QorEventName iEvent,
                                    const QorCallbackMethod& iMethod,
                                    QorSubscriberData iData) {
    for (const Row& row : rows)
        if (row.subscriber == iSubscriber && row.event == iEvent && row.method == iMethod)
            return row.id;
    rows.push_back({NextId(), iEvent, iSubscriber, iMethod, iData});
    iSubscriber->tables.push_back(this);
    return rows.back().id;
}

template <class Predicate>
void QorCallbackTable::RemoveIf(Predicate iPredicate) {
    const Walk walk(*this);
    for (Row& row : rows)
        if (row.subscriber != nullptr && iPredicate(row)) {
            Untie(row.subscriber, this);
            row.subscriber = nullptr;
            hasRemoved = true;
        }
}

void QorCallbackTable::Remove(QorCallbackId iId) {
    RemoveIf([&](const Row& iRow) { return iRow.id == iId; });
}

void QorCallbackTable::Remove(QorEventSubscriber* iSubscriber, QorEventName iEvent) {
    RemoveIf(
        [&](const Row& iRow) { return iRow.subscriber == iSubscriber && iRow.event == iEvent; });
}

void QorCallbackTable::Forget(QorEventSubscriber* iSubscriber) {
    RemoveIf([&](const Row& iRow) { return iRow.subscriber == iSubscriber; });
}

bool QorCallbackTable::Dispatch(const QorDispatch& iDispatch, QorEventSubscriber* iReceiver) {
    const Walk walk(*this);
    bool delivered = false;
    const std::size_t end = rows.size(); // what is added meanwhile waits for the next dispatch
    for (std::size_t i = 0; i < end && !closed; ++i) {
        const Row& row = rows[i];
        if (row.subscriber == nullptr || !(row.event == iDispatch.event))
            continue;
        if (iReceiver != nullptr && row.subscriber != iReceiver)
            continue;
        QorDispatch one = iDispatch;
        one.data = row.data;
        one.cookie = row.id;
        const QorCallbackMethod method = row.method; // the row may move while the callback runs
        method(row.subscriber, one);
        delivered = true;
    }
    return delivered;
}

void QorCallbackTable::Close() {
    closed = true;
    RemoveIf([](const Row&) { return true; });
}

std::size_t QorCallbackTable::Count() const {
    return static_cast<std::size_t>(std::count_if(
        rows.begin(), rows.end(), [](const Row& iRow) { return iRow.subscriber != nullptr; }));
}

std::size_t QorCallbackTable::Count(QorEventName iEvent) const {
    return static_cast<std::size_t>(std::count_if(rows.begin(), rows.end(), [&](const Row& iRow) {
        return iRow.subscriber != nullptr && iRow.event == iEvent;
    }));
}

void QorCallbackTable::Untie(QorEventSubscriber* iSubscriber, QorCallbackTable* iTable) {
    auto& tables = iSubscriber->tables;
    const auto found = std::find(tables.begin(), tables.end(), iTable);
    if (found == tables.end())
        return;
    *found = tables.back();
    tables.pop_back();
}

void QorCallbackTable::Sweep() {
    if (!hasRemoved)
        return;
    std::erase_if(rows, [](const Row& iRow) { return iRow.subscriber == nullptr; });
    hasRemoved = false;
}

QorEventSubscriber::~QorEventSubscriber() {
    while (!tables.empty())
        tables.back()->Forget(this);
}

QorCallbackManager::QorCallbackManager() : table(new QorCallbackTable) {}

QorCallbackManager::~QorCallbackManager() {
    table->Close();
}

QorCallbackId QorCallbackManager::Add(QorEventSubscriber* iSubscriber,
                                      QorEventName iEvent,
                                      const QorCallbackMethod& iMethod,
                                      QorSubscriberData iData) {
    return iSubscriber != nullptr ? table->Add(iSubscriber, iEvent, iMethod, iData) : 0;
}

void QorCallbackManager::RemoveCallback(QorCallbackId& ioId) {
    if (ioId != 0)
        table->Remove(ioId);
    ioId = 0;
}

void QorCallbackManager::RemoveCallbacks(QorEventSubscriber* iSubscriber, QorEventName iEvent) {
    table->Remove(iSubscriber, iEvent);
}

void QorCallbackManager::DispatchCallbacks(QorEventName iEvent,
                                           QorBaseUnknown* iPublisher,
                                           QorNotification* iNotification) {
    Observe(iEvent, iPublisher);
    const QorVar<QorBaseUnknown> alive(iPublisher);
    table->Dispatch({.event = iEvent, .publisher = iPublisher, .notification = iNotification},
                    nullptr);
}

bool QorCallbackManager::DispatchTo(QorEventSubscriber* iReceiver, const QorDispatch& iDispatch) {
    const QorVar<QorBaseUnknown> alive(iDispatch.publisher);
    return table->Dispatch(iDispatch, iReceiver);
}

std::size_t QorCallbackManager::CountCallbacks() const {
    return table->Count();
}

std::size_t QorCallbackManager::CountCallbacks(QorEventName iEvent) const {
    return table->Count(iEvent);
}

void QorCallbackManager::SetObserver(Observer iObserver) {
    TheObserver() = std::move(iObserver);
}

void QorCallbackManager::Observe(QorEventName iEvent, const QorBaseUnknown* iPublisher) {
    if (TheObserver())
        TheObserver()(iEvent, iPublisher);
}
