// Dispatch of a notification to one callback, against a virtual call through a pointer.
#include "platform/component/QorCallbackManager.h"

#include <benchmark/benchmark.h>

#include <memory>

namespace {

class Receiver {
public:
    virtual ~Receiver() = default;
    virtual void Receive(QorNotification* iNotification) = 0;
};

class CountingReceiver : public Receiver {
public:
    void Receive(QorNotification* iNotification) override {
        benchmark::DoNotOptimize(iNotification);
        ++count;
    }

    long count = 0;
};

class CountingSubscriber : public QorEventSubscriber {
public:
    void ChangedCB(QorEventName,
                   QorBaseUnknown*,
                   QorNotification* iNotification,
                   QorSubscriberData,
                   QorCallbackId) {
        benchmark::DoNotOptimize(iNotification);
        ++count;
    }

    long count = 0;
};

void BM_VirtualCall(benchmark::State& ioState) {
    std::unique_ptr<Receiver> receiver = std::make_unique<CountingReceiver>();
    const auto notification = QorMake<QorNotification>();
    for (auto _ : ioState) {
        benchmark::DoNotOptimize(receiver);
        receiver->Receive(notification);
    }
}

void BM_DispatchToOneCallback(benchmark::State& ioState) {
    QorCallbackManager manager;
    CountingSubscriber subscriber;
    const auto publisher = QorMake<QorBaseUnknown>();
    const auto notification = QorMake<QorNotification>();
    manager.AddCallback(&subscriber, notification->GetEventName(), &CountingSubscriber::ChangedCB);
    for (auto _ : ioState)
        manager.DispatchCallbacks(notification->GetEventName(), publisher, notification);
    benchmark::DoNotOptimize(subscriber.count);
}

/// Beside nine subscriptions to other events.
void BM_DispatchToOneOfTen(benchmark::State& ioState) {
    QorCallbackManager manager;
    CountingSubscriber subscriber;
    const auto publisher = QorMake<QorBaseUnknown>();
    const auto notification = QorMake<QorNotification>();
    for (int i = 0; i < 9; ++i)
        manager.AddCallback(&subscriber, "Event" + std::to_string(i),
                            &CountingSubscriber::ChangedCB);
    manager.AddCallback(&subscriber, notification->GetEventName(), &CountingSubscriber::ChangedCB);
    for (auto _ : ioState)
        manager.DispatchCallbacks(notification->GetEventName(), publisher, notification);
    benchmark::DoNotOptimize(subscriber.count);
}

BENCHMARK(BM_VirtualCall);
BENCHMARK(BM_DispatchToOneCallback);
BENCHMARK(BM_DispatchToOneOfTen);

} // namespace
