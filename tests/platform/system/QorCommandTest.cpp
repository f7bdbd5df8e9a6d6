#include "platform/system/QorCommand.h"

#include "tests/support/QorTestApplication.h"

namespace {

QorDeclareNotification(TestPressed);
QorImplementNotification(TestPressed);

QorDeclareNotification(TestClosed);
QorImplementNotification(TestClosed);

class TestReceiver : public QorCommand {
    QorDeclareClass(TestReceiver)

    TestReceiver(QorCommand* iFather, const QorString& iName, std::vector<std::string>& ioLines)
        : QorCommand(iFather, iName), lines(ioLines) {}

    void PressedCB(QorCommand* iSender, QorNotification* iNotification, QorSubscriberData iData) {
        lines.push_back(GetName().Str() + "<" + iSender->GetName().Str() + " " +
                        iNotification->IsA() + (iData != nullptr ? " data" : ""));
    }

    QorCallbackId ListenTo(QorCommand* iSender,
                           QorNotification* iNotification,
                           QorSubscriberData iData = nullptr) {
        return AddAnalyseNotificationCB(this, iSender, iNotification, &TestReceiver::PressedCB,
                                        iData);
    }

protected:
    ~TestReceiver() override { lines.push_back("~" + GetName().Str()); }

    std::vector<std::string>& lines;
};

QorImplementClass(TestReceiver, QorCommand)

class QorCommandTest : public QorTestApplication {
protected:
    using Lines = std::vector<std::string>;

    Lines lines;
    QorVar<QorNotification> pressed = QorMake<TestPressed>();
    QorVar<TestReceiver> root = QorMake<TestReceiver>(nullptr, "root", lines);
    TestReceiver* dialog = new TestReceiver(root, "dialog", lines);
    TestReceiver* button = new TestReceiver(dialog, "button", lines);

    void TearDown() override {
        root.Reset();
        pressed.Reset();
        QorTestApplication::TearDown();
    }
};

} // namespace

TEST_F(QorCommandTest, KnowsFatherAndChildren) {
    EXPECT_EQ(button->GetFather(), dialog);
    EXPECT_EQ(root->GetFather(), nullptr);
    EXPECT_EQ(root->GetChildren(), std::vector<QorCommand*>{dialog});
    EXPECT_EQ(button->GetName(), "button");
    EXPECT_EQ(TestReceiver::CreateItself(), nullptr);
}

TEST_F(QorCommandTest, SendsToASubscriber) {
    int data = 0;
    EXPECT_NE(dialog->ListenTo(button, pressed, &data), 0U);
    EXPECT_TRUE(button->SendNotification(dialog, pressed));
    EXPECT_EQ(lines, Lines{"dialog<button TestPressed data"});
}

TEST_F(QorCommandTest, SendsUpToTheNearestFatherThatListens) {
    root->ListenTo(button, pressed);
    EXPECT_TRUE(button->SendNotification(dialog, pressed));
    EXPECT_EQ(lines, Lines{"root<button TestPressed"});
    dialog->ListenTo(button, pressed);
    EXPECT_TRUE(button->SendNotification(dialog, pressed));
    EXPECT_EQ(lines.back(), "dialog<button TestPressed");
    EXPECT_EQ(lines.size(), 2U);
}

TEST_F(QorCommandTest, SaysWhenNobodyListens) {
    const auto closed = QorMake<TestClosed>();
    root->ListenTo(button, pressed);
    EXPECT_FALSE(button->SendNotification(root, closed));
    EXPECT_FALSE(button->SendNotification(nullptr, pressed));
    EXPECT_FALSE(button->SendNotification(root, nullptr));
    EXPECT_FALSE(dialog->SendNotification(root, pressed)); // a subscription names its sender
    EXPECT_TRUE(lines.empty());
}

TEST_F(QorCommandTest, EndsASubscription) {
    QorCallbackId id = dialog->ListenTo(button, pressed);
    EXPECT_EQ(dialog->ListenTo(button, pressed), id);
    QorCommand::RemoveAnalyseNotificationCB(button, id);
    EXPECT_EQ(id, 0U);
    EXPECT_FALSE(button->SendNotification(dialog, pressed));
    EXPECT_EQ(dialog->ListenTo(nullptr, pressed), 0U);
    EXPECT_EQ(dialog->ListenTo(button, nullptr), 0U);
    QorCommand::RemoveAnalyseNotificationCB(nullptr, id);
}

TEST_F(QorCommandTest, AnObserverSeesWhatIsSent) {
    Lines seen;
    QorCallbackManager::SetObserver([&](QorEventName iEvent, const QorBaseUnknown* iPublisher) {
        seen.push_back(iEvent.GetText() + " " + iPublisher->IsA());
    });
    EXPECT_FALSE(button->SendNotification(dialog, pressed));
    QorCallbackManager::SetObserver({});
    EXPECT_EQ(seen, Lines{"TestPressed TestReceiver"});
}
