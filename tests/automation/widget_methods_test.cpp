// widget.get, widget.press, widget.check and widget.doubleClick.
#include "platform/dialog/QorDlgButton.h"
#include "platform/dialog/QorDlgColorEditor.h"
#include "platform/dialog/QorDlgCombo.h"
#include "platform/dialog/QorDlgEditor.h"
#include "platform/dialog/QorDlgFrame.h"
#include "platform/dialog/QorDlgLabel.h"
#include "platform/dialog/QorDlgProgress.h"
#include "platform/dialog/QorDlgScrollBar.h"
#include "platform/dialog/QorDlgSlider.h"
#include "platform/dialog/QorDlgSpinner.h"
#include "tests/automation/PortTest.h"

namespace qor::automation {

namespace {

class WidgetMethods : public PortTest {
protected:
    void SetUp() override {
        PortTest::SetUp();
        dialog = makeDialog("dialog");
    }

    QorDlgDialog* dialog = nullptr;
};

Json in(const std::string& name) {
    return {{"path", "dialog/" + name}};
}

TEST_F(WidgetMethods, GetTellsTheValuesOfEachKind) {
    (new QorDlgPushButton(dialog, "push"))->SetIconName("play");
    (new QorDlgCheckButton(dialog, "check"))->SetState(QorDlgCheck);
    new QorDlgRadioButton(dialog, "radio");
    new QorDlgLabel(dialog, "label");
    new QorDlgSeparator(dialog, "separator");
    auto* spinner = new QorDlgSpinner(dialog, "spinner");
    spinner->SetRangeWithStep(50.0, 300.0, 25.0);
    spinner->SetFormat("%4.0f");
    spinner->SetValue(299.7);
    auto* slider = new QorDlgSlider(dialog, "slider");
    slider->SetRange(0.0, 1.0, 4);
    (new QorDlgEditor(dialog, "editor"))->SetText("typed");
    auto* combo = new QorDlgCombo(dialog, "combo");
    new QorDlgCombo(dialog, "emptyCombo");
    combo->SetLine("low");
    combo->SetLine("high");
    combo->SetSelect(1);
    auto* bar = new QorDlgScrollBar(dialog, "bar");
    bar->SetScrollRange(0, 9);
    bar->SetScrollBoxSize(3);
    bar->SetScrollPos(2);
    auto* progress = new QorDlgProgress(dialog, "progress");
    progress->SetRange(0, 200);
    progress->SetPos(50);

    const std::vector<std::pair<std::string, Json>> rows = {
        {"push", {{"kind", "push button"}, {"icon", "play"}}},
        {"check", {{"kind", "check button"}, {"checked", true}}},
        {"radio", {{"kind", "radio button"}, {"checked", false}}},
        {"label", {{"kind", "label"}, {"class", "QorDlgLabel"}}},
        {"separator", {{"kind", "separator"}, {"visible", true}, {"sensitive", true}}},
        {"spinner",
         {{"value", 299.7},
          {"min", 50},
          {"max", 300},
          {"step", 25},
          {"format", "%4.0f"},
          {"text", "300"}}},
        {"slider", {{"value", 0}, {"min", 0}, {"max", 1}, {"step", 0.25}}},
        {"editor", {{"text", "typed"}}},
        {"combo", {{"lines", {"low", "high"}}, {"selection", 1}}},
        {"emptyCombo", {{"lines", Json::array()}, {"selection", -1}}},
        {"bar", {{"position", 2}, {"range", {0, 9}}, {"boxSize", 3}}},
        {"progress", {{"position", 50}, {"range", {0, 200}}}},
    };
    play([&](PortClient& client) {
        for (const auto& [name, values] : rows) {
            const Json got = client.call("widget.get", in(name));
            EXPECT_EQ(got.at("name"), name);
            for (const auto& [key, value] : values.items())
                EXPECT_EQ(got.value(key, Json()), value) << name << " " << key;
        }
    });
}

TEST_F(WidgetMethods, GetTellsOwnVisibilityAndSensitivity) {
    auto* frame = new QorDlgFrame(dialog, "frame");
    new QorDlgLabel(frame, "label");
    frame->SetSensitivity(QorDlgDISABLE);
    frame->SetVisibility(QorDlgHIDE);
    play([](PortClient& client) {
        EXPECT_EQ(client.call("widget.get", in("frame")).at("sensitive"), false);
        EXPECT_EQ(client.call("widget.get", in("frame")).at("visible"), false);
        EXPECT_EQ(client.call("widget.get", in("label")).at("sensitive"), true);
        EXPECT_EQ(client.call("widget.get", in("label")).at("visible"), true);
        EXPECT_EQ(client.callForError("widget.get", in("none")), -32001);
    });
}

TEST_F(WidgetMethods, PressActivates) {
    new QorDlgPushButton(dialog, "push");
    (new QorDlgPushButton(dialog, "grey"))->SetSensitivity(QorDlgDISABLE);
    new QorDlgPushButton(new QorDlgFrame(dialog, "frame"), "inFrame");
    new QorDlgLabel(dialog, "label");
    play([](PortClient& client) {
        client.call("events.take");
        EXPECT_EQ(client.call("widget.press", in("push")), Json::object());
        EXPECT_EQ(eventsOf(client.call("events.take"), "QorDlgPushButton"),
                  Names({"QorDlgPushBActivateNotification"}));
        EXPECT_EQ(client.callForError("widget.press", in("grey")), -32003);
        EXPECT_EQ(client.callForError("widget.press", in("label")), -32005);
        EXPECT_EQ(client.callForError("widget.press", in("none")), -32001);
        EXPECT_EQ(client.call("widget.press", in("inFrame")), Json::object());
    });
    dialog->SetVisibility(QorDlgHIDE);
    play([](PortClient& client) {
        EXPECT_EQ(client.callForError("widget.press", in("push")), -32003);
    });
}

TEST_F(WidgetMethods, CheckNotifiesOnlyAChange) {
    new QorDlgCheckButton(dialog, "check");
    play([](PortClient& client) {
        const auto check = [&](bool checked) {
            client.call("widget.check", {{"path", "dialog/check"}, {"checked", checked}});
            return eventsOf(client.call("events.take"), "QorDlgCheckButton");
        };
        const Names modify{"QorDlgChkBModifyNotification"};
        client.call("events.take");
        EXPECT_EQ(check(true), modify);
        EXPECT_EQ(check(true), Names());
        EXPECT_EQ(check(false), modify);
        EXPECT_EQ(client.call("widget.doubleClick", in("check")), Json::object());
        EXPECT_EQ(eventsOf(client.call("events.take"), "QorDlgCheckButton"),
                  Names({"QorDlgChkBDoubleClickNotification"}));
        EXPECT_EQ(client.callForError("widget.check", in("check")), -32602);
        EXPECT_EQ(client.callForError("widget.check", {{"path", "dialog/check"}, {"checked", 1}}),
                  -32602);
    });
}

TEST_F(WidgetMethods, CheckOfARadioButtonReleasesTheOthers) {
    (new QorDlgRadioButton(dialog, "one"))->SetState(QorDlgCheck);
    new QorDlgRadioButton(dialog, "two");
    new QorDlgLabel(dialog, "label");
    play([](PortClient& client) {
        const auto check = [](const char* name, bool checked) {
            return Json{{"path", std::string("dialog/") + name}, {"checked", checked}};
        };
        client.call("events.take");
        client.call("widget.check", check("two", true));
        EXPECT_EQ(eventsOf(client.call("events.take"), "QorDlgRadioButton").size(), 2U);
        EXPECT_EQ(client.call("widget.get", in("one")).at("checked"), false);
        EXPECT_EQ(client.callForError("widget.check", check("two", false)), -32003)
            << "a person cannot uncheck the checked one";
        EXPECT_EQ(client.call("widget.check", check("one", false)), Json::object());
        EXPECT_EQ(client.callForError("widget.check", check("label", true)), -32005);
        EXPECT_EQ(client.callForError("widget.doubleClick", in("two")), -32005);
    });
}

} // namespace

} // namespace qor::automation
