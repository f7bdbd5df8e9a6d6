// trace.* and events.*: what was kept.
#include "platform/component/QorCallbackManager.h"
#include "platform/dialog/QorDlgButton.h"
#include "platform/system/QorTrace.h"
#include "tests/automation/PortTest.h"
#include "workbench/automation/EventRecorder.h"

namespace qor::automation {

namespace {

class RecordMethods : public PortTest {
protected:
    void TearDown() override {
        QorTraceChannel::StopRecording();
        (void)QorTraceChannel::TakeRecorded();
        PortTest::TearDown();
    }
};

TEST_F(RecordMethods, TraceKeepsLinesOfItsLevelAndBelow) {
    play([](PortClient& client) {
        EXPECT_EQ(client.call("trace.take"), Json::array());
        EXPECT_EQ(client.call("trace.start", {{"level", 3}}), Json::object());
    });
    QorTrace(2, "(Class::Two) \n");
    QorTrace(3, "(Class::Three) value=%d\n", 7);
    QorTrace(4, "(Class::Four) \n");
    play([](PortClient& client) {
        EXPECT_EQ(client.call("trace.take"),
                  Json::array({"(Class::Two) \n", "(Class::Three) value=7\n"}));
        EXPECT_EQ(client.call("trace.take"), Json::array());
        EXPECT_EQ(client.call("trace.stop"), Json::object());
    });
    QorTrace(2, "(Class::Late) \n");
    play([](PortClient& client) {
        EXPECT_EQ(client.call("trace.take"), Json::array());
        EXPECT_EQ(client.callForError("trace.start"), -32602);
        EXPECT_EQ(client.callForError("trace.start", {{"level", 0}}), -32602);
        EXPECT_EQ(client.callForError("trace.start", {{"level", 1.5}}), -32602);
    });
}

TEST_F(RecordMethods, EventsAreKeptFromTheStart) {
    auto* dialog = makeDialog("dialog", QorDlgStyle(QorDlgWndOK));
    auto* button = new QorDlgPushButton(dialog, "push");
    button->UserPress();
    dialog->UserOK();
    QorCallbackManager manager;
    manager.DispatchCallbacks("RENDER_DONE", nullptr);
    play([](PortClient& client) {
        const Json expected = Json::array(
            {{{"event", "QorDlgPushBActivateNotification"}, {"publisher", "QorDlgPushButton"}},
             {{"event", "QorDlgDiaOKNotification"}, {"publisher", "QorDlgDialog"}},
             {{"event", "RENDER_DONE"}, {"publisher", ""}}});
        EXPECT_EQ(client.call("events.take"), expected);
        EXPECT_EQ(client.call("events.take"), Json::array());
    });
}

TEST_F(RecordMethods, EventsAreTheLatestHundredThousand) {
    constexpr int count = 100'005;
    QorCallbackManager manager;
    for (int i = 0; i < count; ++i)
        manager.DispatchCallbacks(i < 10 ? "EARLY" : "LATE", nullptr);
    play([](PortClient& client) {
        const Json taken = client.call("events.take");
        ASSERT_EQ(taken.size(), 100'000U);
        EXPECT_EQ(taken[4].at("event"), "EARLY");
        EXPECT_EQ(taken[5].at("event"), "LATE");
    });
}

} // namespace

} // namespace qor::automation
