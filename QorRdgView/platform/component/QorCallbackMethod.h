#pragma once

#include "platform/component/QorEventName.h"
#include "platform/component/QorHandle.h"
#include "platform/component/QorNotification.h"

#include <array>
#include <cstring>
#include <type_traits>

class QorCommand;
class QorEventSubscriber;

/// Identity of a subscription; 0 is none.
using QorCallbackId = unsigned long;
/// What a subscriber had itself given back with each callback.
using QorSubscriberData = void*;

/// One delivery, as it reaches a callback.
struct QorDispatch {
    QorEventName event;
    QorBaseUnknown* publisher = nullptr;
    QorNotification* notification = nullptr;
    /// The same publisher, when it is a command and sent a notification; else null.
    QorCommand* command = nullptr;
    QorSubscriberData data = nullptr;
    QorCallbackId cookie = 0;
};

/// Callback of an event: event name, publisher, notification (may be null), data, cookie.
template <class Subscriber>
using QorEventMethod = void (Subscriber::*)(
    QorEventName, QorBaseUnknown*, QorNotification*, QorSubscriberData, QorCallbackId);
/// Callback of a widget or command: sender, notification, data.
template <class Subscriber>
using QorCommandMethod = void (Subscriber::*)(QorCommand*, QorNotification*, QorSubscriberData);

/// A member function of any subscriber class, comparable and without allocation.
class QorCallbackMethod {
public:
    template <class Subscriber>
    QorCallbackMethod(QorEventMethod<Subscriber> iMethod) // NOLINT(google-explicit-constructor)
        : invoke(&InvokeEvent<Subscriber>) {
        Store(iMethod);
    }

    template <class Subscriber>
    QorCallbackMethod(QorCommandMethod<Subscriber> iMethod) // NOLINT(google-explicit-constructor)
        : invoke(&InvokeCommand<Subscriber>) {
        Store(iMethod);
    }

    void operator()(QorEventSubscriber* iSubscriber, const QorDispatch& iDispatch) const {
        invoke(iSubscriber, *this, iDispatch);
    }

    bool operator==(const QorCallbackMethod& iOther) const {
        return invoke == iOther.invoke && bytes == iOther.bytes;
    }

private:
    using Invoke = void (*)(QorEventSubscriber*, const QorCallbackMethod&, const QorDispatch&);

    template <class Method>
    void Store(Method iMethod) {
        static_assert(sizeof(Method) <= sizeof(bytes));
        std::memcpy(bytes.data(), &iMethod, sizeof(Method));
    }

    template <class Method>
    [[nodiscard]] Method Load() const {
        Method method;
        std::memcpy(&method, bytes.data(), sizeof(Method));
        return method;
    }

    /// A subscriber that is counted is kept alive while its callback runs.
    template <class Subscriber>
    [[nodiscard]] static auto KeepAlive(Subscriber* iSubscriber) {
        if constexpr (std::is_base_of_v<QorBaseUnknown, Subscriber>)
            return QorVar<QorBaseUnknown>(iSubscriber);
        else
            return iSubscriber;
    }

    template <class Subscriber>
    static void InvokeEvent(QorEventSubscriber* iSubscriber,
                            const QorCallbackMethod& iMethod,
                            const QorDispatch& iOne) {
        auto* subscriber = static_cast<Subscriber*>(iSubscriber);
        [[maybe_unused]] const auto alive = KeepAlive(subscriber);
        (subscriber->*iMethod.Load<QorEventMethod<Subscriber>>())(
            iOne.event, iOne.publisher, iOne.notification, iOne.data, iOne.cookie);
    }

    template <class Subscriber>
    static void InvokeCommand(QorEventSubscriber* iSubscriber,
                              const QorCallbackMethod& iMethod,
                              const QorDispatch& iOne) {
        auto* subscriber = static_cast<Subscriber*>(iSubscriber);
        [[maybe_unused]] const auto alive = KeepAlive(subscriber);
        (subscriber->*iMethod.Load<QorCommandMethod<Subscriber>>())(iOne.command, iOne.notification,
                                                                    iOne.data);
    }

    Invoke invoke;
    std::array<unsigned char, 2 * sizeof(void*)> bytes{};
};
