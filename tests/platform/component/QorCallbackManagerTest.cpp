#include "TestObjects.h"

using QorCallbackManagerTest = ComponentTest;
using Lines = std::vector<std::string>;

TEST_F(QorCallbackManagerTest, CallsSubscribersInTheirOrder) {
    const auto publisher = MakeActor("publisher");
    const auto first = MakeActor("first");
    const auto second = MakeActor("second");
    first->ListenTo(*publisher);
    second->ListenTo(*publisher);
    publisher->Publish();
    publisher->Publish("Another");
    EXPECT_EQ(Journal(), (Lines{"first:Changed", "second:Changed"}));
}

TEST_F(QorCallbackManagerTest, GivesPublisherNotificationDataAndCookie) {
    const auto publisher = MakeActor("publisher");
    const auto listener = MakeActor("listener");
    int data = 0;
    const QorCallbackId id =
        publisher->callbacks.AddCallback(listener.Get(), "Changed", &TestActor::EventCB, &data);
    const auto notification = QorMake<QorNotification>();
    publisher->callbacks.DispatchCallbacks("Changed", publisher, notification);
    EXPECT_EQ(listener->data, &data);
    EXPECT_EQ(listener->cookie, id);
    EXPECT_EQ(listener->publisher, publisher.Get());
    EXPECT_EQ(listener->notification, notification.Get());
}

TEST_F(QorCallbackManagerTest, ADuplicateReturnsTheIdThatIsThere) {
    const auto publisher = MakeActor("publisher");
    const auto listener = MakeActor("listener");
    const QorCallbackId id = listener->ListenTo(*publisher);
    EXPECT_NE(id, 0U);
    EXPECT_EQ(listener->ListenTo(*publisher), id);
    EXPECT_NE(listener->ListenTo(*publisher, "Another"), id);
    EXPECT_NE(publisher->callbacks.AddCallback(listener.Get(), "Changed", &TestActor::OtherCB), id);
    EXPECT_EQ(publisher->callbacks.CountCallbacks(), 3U);
    EXPECT_EQ(listener->CountSubscriptions(), 3U);
    publisher->Publish();
    EXPECT_EQ(Journal(), (Lines{"listener:Changed", "listener:other"}));
}

TEST_F(QorCallbackManagerTest, RemovesOneByOne) {
    const auto publisher = MakeActor("publisher");
    const auto listener = MakeActor("listener");
    QorCallbackId first = listener->ListenTo(*publisher);
    QorCallbackId second = listener->ListenTo(*publisher, "Another");
    publisher->callbacks.RemoveCallback(first);
    EXPECT_EQ(first, 0U);
    publisher->Publish();
    publisher->Publish("Another");
    EXPECT_EQ(Journal(), Lines{"listener:Another"});
    publisher->callbacks.RemoveCallback(first); // 0 is nothing
    QorCallbackId unknown = 123456789;
    publisher->callbacks.RemoveCallback(unknown);
    EXPECT_EQ(unknown, 0U);
    EXPECT_EQ(listener->CountSubscriptions(), 1U);
    publisher->callbacks.RemoveCallback(second);
    EXPECT_EQ(listener->CountSubscriptions(), 0U);
    EXPECT_EQ(publisher->callbacks.CountCallbacks(), 0U);
}

TEST_F(QorCallbackManagerTest, RemovesAllOfAnEvent) {
    const auto publisher = MakeActor("publisher");
    const auto listener = MakeActor("listener");
    const auto other = MakeActor("other");
    listener->ListenTo(*publisher);
    listener->ListenTo(*publisher, "Another");
    other->ListenTo(*publisher);
    publisher->callbacks.AddCallback(listener.Get(), "Changed", &TestActor::OtherCB);
    publisher->callbacks.RemoveCallbacks(listener.Get(), "Changed");
    publisher->Publish();
    EXPECT_EQ(Journal(), Lines{"other:Changed"});
    EXPECT_EQ(listener->CountSubscriptions(), 1U);
}

TEST_F(QorCallbackManagerTest, IdsAreNeverUsedAgain) {
    const auto publisher = MakeActor("publisher");
    const auto listener = MakeActor("listener");
    const QorCallbackId before = listener->ListenTo(*publisher);
    QorCallbackId id = before;
    publisher->callbacks.RemoveCallback(id);
    EXPECT_GT(listener->ListenTo(*publisher), before);
}

TEST_F(QorCallbackManagerTest, NobodyIsNoSubscriber) {
    const auto publisher = MakeActor("publisher");
    EXPECT_EQ(publisher->callbacks.AddCallback(static_cast<TestActor*>(nullptr), "Changed",
                                               &TestActor::EventCB),
              0U);
    publisher->callbacks.DispatchCallbacks("Changed", nullptr);
}

TEST_F(QorCallbackManagerTest, DeliversToOneReceiver) {
    const auto publisher = MakeActor("publisher");
    const auto first = MakeActor("first");
    const auto second = MakeActor("second");
    first->ListenTo(*publisher);
    second->ListenTo(*publisher);
    const QorDispatch dispatch{.event = "Changed", .publisher = publisher.Get()};
    EXPECT_TRUE(publisher->callbacks.DispatchTo(second.Get(), dispatch));
    EXPECT_EQ(Journal(), Lines{"second:Changed"});
    EXPECT_FALSE(publisher->callbacks.DispatchTo(publisher.Get(), dispatch));
}

TEST_F(QorCallbackManagerTest, AnObserverSeesEveryEvent) {
    Lines seen;
    QorCallbackManager::SetObserver([&](QorEventName iEvent, const QorBaseUnknown* iPublisher) {
        seen.push_back(iEvent.GetText() + " " + (iPublisher != nullptr ? iPublisher->IsA() : "-"));
    });
    MakeActor("publisher")->Publish();
    QorCallbackManager::Observe("Sent", nullptr);
    QorCallbackManager::SetObserver({});
    MakeActor("publisher")->Publish();
    EXPECT_EQ(seen, (Lines{"Changed TestActor", "Sent -"}));
}
