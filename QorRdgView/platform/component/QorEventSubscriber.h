#pragma once

#include <vector>

class QorCallbackTable;

/// Base of everything that receives callbacks. When it is destroyed, subscriptions that are left
/// are dropped. Not copied: a copy starts without subscriptions.
class QorEventSubscriber {
public:
    QorEventSubscriber() = default;

    QorEventSubscriber(const QorEventSubscriber& /*iOther*/) {}

    QorEventSubscriber& operator=(const QorEventSubscriber& /*iOther*/) { return *this; }

    /// Subscriptions held now, over all publishers.
    [[nodiscard]] std::size_t CountSubscriptions() const { return tables.size(); }

protected:
    ~QorEventSubscriber();

private:
    friend class QorCallbackTable;
    /// One entry a subscription, so that a table knows when the last one goes.
    std::vector<QorCallbackTable*> tables;
};
