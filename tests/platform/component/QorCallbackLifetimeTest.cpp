#include "TestObjects.h"

// What callbacks may do to the dispatch that calls them.

using QorCallbackLifetime = ComponentTest;
using Lines = std::vector<std::string>;

TEST_F(QorCallbackLifetime, WhatIsAddedWaitsForTheNextDispatch) {
    const auto publisher = MakeActor("publisher");
    const auto first = MakeActor("first");
    const auto second = MakeActor("second");
    first->ListenTo(*publisher);
    first->action = [&] {
        second->ListenTo(*publisher);
    };
    publisher->Publish();
    EXPECT_EQ(Journal(), Lines{"first:Changed"});
    first->action = [] {
    };
    publisher->Publish();
    EXPECT_EQ(Journal(), (Lines{"first:Changed", "first:Changed", "second:Changed"}));
}

TEST_F(QorCallbackLifetime, ManyMayBeAddedWhileRowsAreWalked) {
    const auto publisher = MakeActor("publisher");
    const auto first = MakeActor("first");
    std::vector<QorVar<TestActor>> others;
    first->ListenTo(*publisher);
    first->action = [&] {
        for (int i = 0; i < 100; ++i) {
            others.push_back(MakeActor("other"));
            others.back()->ListenTo(*publisher);
        }
    };
    publisher->Publish();
    EXPECT_EQ(publisher->callbacks.CountCallbacks(), 101U);
}

TEST_F(QorCallbackLifetime, WhatIsRemovedIsCalledNoMore) {
    const auto publisher = MakeActor("publisher");
    const auto first = MakeActor("first");
    const auto second = MakeActor("second");
    first->ListenTo(*publisher);
    QorCallbackId id = second->ListenTo(*publisher);
    first->action = [&] {
        publisher->callbacks.RemoveCallback(id);
    };
    publisher->Publish();
    EXPECT_EQ(Journal(), Lines{"first:Changed"});
    EXPECT_EQ(publisher->callbacks.CountCallbacks(), 1U);
}

TEST_F(QorCallbackLifetime, ACallbackMayEndItsOwnSubscription) {
    const auto publisher = MakeActor("publisher");
    const auto first = MakeActor("first");
    const auto second = MakeActor("second");
    QorCallbackId id = first->ListenTo(*publisher);
    second->ListenTo(*publisher);
    first->action = [&] {
        publisher->callbacks.RemoveCallback(id);
    };
    publisher->Publish();
    publisher->Publish();
    EXPECT_EQ(Journal(), (Lines{"first:Changed", "second:Changed", "second:Changed"}));
}

TEST_F(QorCallbackLifetime, ASubscriberMayGoWhileItsCallbackRuns) {
    const auto publisher = MakeActor("publisher");
    auto listener = MakeActor("listener");
    listener->ListenTo(*publisher);
    listener->action = [&] {
        listener.Reset();
        Journal().emplace_back("still here");
    };
    publisher->Publish();
    EXPECT_EQ(Journal(), (Lines{"listener:Changed", "still here", "~listener"}));
    EXPECT_EQ(publisher->callbacks.CountCallbacks(), 0U);
}

TEST_F(QorCallbackLifetime, ACallbackMayDestroyTheNextSubscriber) {
    const auto publisher = MakeActor("publisher");
    const auto first = MakeActor("first");
    auto second = MakeActor("second");
    first->ListenTo(*publisher);
    second->ListenTo(*publisher);
    first->action = [&] {
        second.Reset();
    };
    publisher->Publish();
    EXPECT_EQ(Journal(), (Lines{"first:Changed", "~second"}));
}

TEST_F(QorCallbackLifetime, ThePublisherIsKeptUntilItsDispatchEnds) {
    auto publisher = MakeActor("publisher");
    const auto first = MakeActor("first");
    const auto second = MakeActor("second");
    first->ListenTo(*publisher);
    second->ListenTo(*publisher);
    first->action = [&] {
        publisher.Reset();
    };
    publisher->Publish();
    EXPECT_EQ(Journal(), (Lines{"first:Changed", "second:Changed", "~publisher"}));
    EXPECT_EQ(first->CountSubscriptions(), 0U);
}

TEST_F(QorCallbackLifetime, AManagerMayEndWithinItsDispatch) {
    auto manager = std::make_unique<QorCallbackManager>();
    const auto first = MakeActor("first");
    const auto second = MakeActor("second");
    for (const auto& actor : {first, second})
        manager->AddCallback(actor.Get(), "Changed", &TestActor::EventCB);
    first->action = [&] {
        manager.reset();
    };
    manager->DispatchCallbacks("Changed", nullptr);
    EXPECT_EQ(Journal(), Lines{"first:Changed"}); // the publisher is gone: nobody else is called
    EXPECT_EQ(second->CountSubscriptions(), 0U);
}

TEST_F(QorCallbackLifetime, DispatchesNest) {
    const auto publisher = MakeActor("publisher");
    const auto first = MakeActor("first");
    const auto second = MakeActor("second");
    first->ListenTo(*publisher);
    QorCallbackId id = second->ListenTo(*publisher);
    first->action = [&] {
        if (first->calls > 1)
            return;
        publisher->Publish();
        publisher->callbacks.RemoveCallback(id);
    };
    publisher->Publish();
    EXPECT_EQ(Journal(), (Lines{"first:Changed", "first:Changed", "second:Changed"}));
}

TEST_F(QorCallbackLifetime, ASubscriberThatGoesLeavesNothing) {
    const auto publisher = MakeActor("publisher");
    const auto other = MakeActor("other");
    auto listener = MakeActor("listener");
    for (const char* event : {"a", "b", "c"}) {
        listener->ListenTo(*publisher, event);
        listener->ListenTo(*other, event);
    }
    EXPECT_EQ(listener->CountSubscriptions(), 6U);
    listener.Reset();
    EXPECT_EQ(publisher->callbacks.CountCallbacks(), 0U);
    EXPECT_EQ(other->callbacks.CountCallbacks(), 0U);
}

TEST_F(QorCallbackLifetime, APublisherThatGoesLeavesNothing) {
    auto publisher = MakeActor("publisher");
    const auto listener = MakeActor("listener");
    QorCallbackId id = listener->ListenTo(*publisher);
    listener->ListenTo(*publisher, "Another");
    publisher.Reset();
    EXPECT_EQ(listener->CountSubscriptions(), 0U);
    EXPECT_NE(id, 0U);
}

TEST_F(QorCallbackLifetime, AnObjectMayListenToItself) {
    auto actor = MakeActor("actor");
    actor->ListenTo(*actor);
    actor->action = [&] {
        actor.Reset();
    };
    actor->Publish();
    EXPECT_EQ(Journal(), (Lines{"actor:Changed", "~actor"}));
}

TEST_F(QorCallbackLifetime, AnExceptionLeavesTheTableWhole) {
    const auto publisher = MakeActor("publisher");
    const auto first = MakeActor("first");
    QorCallbackId id = first->ListenTo(*publisher);
    first->action = [&] {
        publisher->callbacks.RemoveCallback(id);
        throw std::runtime_error("broken callback");
    };
    EXPECT_THROW(publisher->Publish(), std::runtime_error);
    EXPECT_EQ(publisher->callbacks.CountCallbacks(), 0U);
    publisher->Publish();
    EXPECT_EQ(first->calls, 1);
}

TEST_F(QorCallbackLifetime, ACopyOfASubscriberStartsWithoutSubscriptions) {
    struct Listener : QorEventSubscriber {
        void
        EventCB(QorEventName, QorBaseUnknown*, QorNotification*, QorSubscriberData, QorCallbackId) {
            ++calls;
        }

        int calls = 0;
    };

    const auto publisher = MakeActor("publisher");
    Listener original;
    publisher->callbacks.AddCallback(&original, "Changed", &Listener::EventCB);
    {
        const Listener copy = original;
        EXPECT_EQ(copy.CountSubscriptions(), 0U);
    }
    publisher->Publish();
    EXPECT_EQ(original.calls, 1);
}
