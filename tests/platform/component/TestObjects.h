#pragma once

#include "platform/component/QorCallbackManager.h"
#include "platform/component/QorExtension.h"
#include "platform/component/QorHandle.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

/// What the object of a test did last, in order; cleared by the fixture.
std::vector<std::string>& Journal();

/// Fails a test that leaves an object.
class ComponentTest : public testing::Test {
protected:
    ComponentTest() { Journal().clear(); }

    void TearDown() override {
        for (const auto& [name, count] : QorMetaObject::LiveObjects())
            ADD_FAILURE() << count << " objects of class " << name << " are left";
    }
};

class QorITestShape : public QorInterface {
    QorDeclareInterface(QorITestShape)

    virtual int CountCorners() const = 0;
};

class QorITestColor : public QorInterface {
    QorDeclareInterface(QorITestColor)

    virtual int GetHue() const = 0;
};

class QorITestWeight : public QorInterface {
    QorDeclareInterface(QorITestWeight)

    virtual int GetGrams() const = 0;
};

/// A class with an interface of its own.
class TestSolid : public QorImplements<QorBaseUnknown, QorITestShape> {
    QorDeclareClass(TestSolid)

    int CountCorners() const override { return corners; }

    int corners = 8;

protected:
    ~TestSolid() override;
};

class TestPyramid : public TestSolid {
    QorDeclareClass(TestPyramid)

    TestPyramid() { corners = 5; }

protected:
    ~TestPyramid() override = default;
};

/// A class that cannot be made without arguments.
class TestNamed : public QorBaseUnknown {
    QorDeclareClass(TestNamed)

    explicit TestNamed(std::string iName) : name(std::move(iName)) {}

    std::string name;

protected:
    ~TestNamed() override { Journal().push_back("~" + name); }
};

/// Two interfaces in one extension.
class TestPaint : public QorImplements<QorExtension, QorITestColor, QorITestWeight> {
    QorDeclareClass(TestPaint)

    using QorImplements::QorImplements;

    int GetHue() const override { return 120; }

    int GetGrams() const override { return 3; }

protected:
    ~TestPaint() override;
};

QorDeclareBOA(QorITestColor, TestPaint);

/// Publishes and subscribes, and runs what a test gives it.
class TestActor
    : public QorBaseUnknown
    , public QorEventSubscriber {
    QorDeclareClass(TestActor)

    QorCallbackManager callbacks;
    std::function<void()> action = [] {
    };
    int calls = 0;
    QorSubscriberData data = nullptr;
    QorCallbackId cookie = 0;
    QorBaseUnknown* publisher = nullptr;
    QorNotification* notification = nullptr;
    std::string name;

    void EventCB(QorEventName iEvent,
                 QorBaseUnknown* iPublisher,
                 QorNotification* iNotification,
                 QorSubscriberData iData,
                 QorCallbackId iCookie) {
        ++calls;
        data = iData;
        cookie = iCookie;
        publisher = iPublisher;
        notification = iNotification;
        Journal().push_back(name + ":" + iEvent.GetText());
        action();
    }

    void OtherCB(QorEventName /*iEvent*/,
                 QorBaseUnknown* /*iPublisher*/,
                 QorNotification* /*iNotification*/,
                 QorSubscriberData /*iData*/,
                 QorCallbackId /*iCookie*/) {
        Journal().push_back(name + ":other");
    }

    QorCallbackId ListenTo(TestActor& iPublisher, const char* iEvent = "Changed") {
        return iPublisher.callbacks.AddCallback(this, iEvent, &TestActor::EventCB);
    }

    void Publish(const char* iEvent = "Changed") { callbacks.DispatchCallbacks(iEvent, this); }

protected:
    ~TestActor() override;
};

[[nodiscard]] QorVar<TestActor> MakeActor(const char* iName);
