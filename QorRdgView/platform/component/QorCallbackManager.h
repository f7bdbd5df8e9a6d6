#pragma once

#include "platform/component/QorCallbackMethod.h"
#include "platform/component/QorEventSubscriber.h"

#include <functional>

class QorCallbackTable;

/// The subscriptions to one publisher, and their dispatch. Every publisher owns one. User-interface
/// thread only. During a dispatch callbacks may add and remove subscriptions and destroy the
/// publisher or each other: those added are first called by the next dispatch, those removed are
/// called no more.
class QorCallbackManager {
public:
    QorCallbackManager();
    ~QorCallbackManager();
    QorCallbackManager(const QorCallbackManager&) = delete;
    QorCallbackManager& operator=(const QorCallbackManager&) = delete;

    /// Subscribes \p iMethod of \p iSubscriber to \p iEvent and returns the subscription's id. A
    /// subscription of the same event, object and method that is there already is kept, and its id
    /// returned.
    template <class Subscriber>
    QorCallbackId AddCallback(Subscriber* iSubscriber,
                              QorEventName iEvent,
                              QorEventMethod<std::type_identity_t<Subscriber>> iMethod,
                              QorSubscriberData iData = nullptr) {
        return Add(iSubscriber, iEvent, QorCallbackMethod(iMethod), iData);
    }

    /// The same for a method of either form.
    QorCallbackId Add(QorEventSubscriber* iSubscriber,
                      QorEventName iEvent,
                      const QorCallbackMethod& iMethod,
                      QorSubscriberData iData);

    /// Ends one subscription and sets \p ioId to 0; an id that is unknown or 0 is ignored.
    void RemoveCallback(QorCallbackId& ioId);
    /// Ends all subscriptions of \p iSubscriber to \p iEvent.
    void RemoveCallbacks(QorEventSubscriber* iSubscriber, QorEventName iEvent);

    /// Calls every subscriber of \p iEvent in the order of subscription. \p iPublisher is kept
    /// alive meanwhile.
    void DispatchCallbacks(QorEventName iEvent,
                           QorBaseUnknown* iPublisher,
                           QorNotification* iNotification = nullptr);
    /// Delivers to the subscriptions of \p iReceiver alone; whether there was one.
    bool DispatchTo(QorEventSubscriber* iReceiver, const QorDispatch& iDispatch);

    [[nodiscard]] std::size_t CountCallbacks() const;
    /// Subscriptions to one event.
    [[nodiscard]] std::size_t CountCallbacks(QorEventName iEvent) const;

    /// Sees every event and notification of the process, with its publisher; set by whoever records
    /// them.
    using Observer = std::function<void(QorEventName iEvent, const QorBaseUnknown* iPublisher)>;
    static void SetObserver(Observer iObserver);
    /// Tells the observer of a notification that is sent rather than dispatched.
    static void Observe(QorEventName iEvent, const QorBaseUnknown* iPublisher);

private:
    /// Lives on while a dispatch runs through it, even when the publisher is gone.
    QorCallbackTable* table;
};
