// dialog.*: the windows.
#include "platform/dialog/QorDlgFrame.h"
#include "platform/dialog/QorDlgLabel.h"
#include "platform/dialog/QorDlgNotify.h"
#include "tests/automation/PortTest.h"

namespace qor::automation {

namespace {

class DialogMethods : public PortTest {};

TEST_F(DialogMethods, ListTheDialogs) {
    makeDialog("first")->SetTitle("First");
    auto* hidden = makeDialog<QorDlgNotify>("box");
    hidden->SetVisibility(QorDlgHIDE);
    play([](PortClient& client) {
        const Json first{{"name", "first"},
                         {"class", "QorDlgDialog"},
                         {"title", "First"},
                         {"visible", true},
                         {"blocking", false}};
        const Json list = client.call("dialog.list");
        ASSERT_EQ(list.size(), 2U);
        EXPECT_EQ(list[0], first);
        EXPECT_EQ(list[1].at("class"), "QorDlgNotify");
        EXPECT_EQ(list[1].at("visible"), false);
    });
}

TEST_F(DialogMethods, TreeHoldsTheWidgetsAndNoOtherDialogs) {
    auto* dialog = makeDialog("dialog");
    auto* frame = new QorDlgFrame(dialog, "frame");
    auto* label = new QorDlgLabel(frame, "label");
    label->SetGridConstraints(1, 2, 3, 4);
    label->SetTitle("Text");
    label->SetSensitivity(QorDlgDISABLE);
    new QorDlgDialog(frame, "inner");
    play([](PortClient& client) {
        const Json tree = client.call("dialog.tree", {{"dialog", "dialog"}});
        EXPECT_EQ(tree.at("name"), "dialog");
        EXPECT_EQ(tree.at("kind"), "dialog");
        ASSERT_EQ(tree.at("children").size(), 1U);
        const Json& inFrame = tree["children"][0].at("children");
        ASSERT_EQ(inFrame.size(), 1U);
        Json expected = client.call("widget.get", {{"path", "dialog/label"}});
        EXPECT_EQ(expected.at("grid"), Json::array({1, 2, 3, 4}));
        EXPECT_EQ(expected.at("sensitive"), false);
        EXPECT_EQ(expected.at("visible"), true);
        EXPECT_EQ(expected.at("text"), "Text");
        expected["children"] = Json::array();
        EXPECT_EQ(inFrame[0], expected);
        EXPECT_FALSE(tree["children"][0].contains("grid"));
    });
}

TEST_F(DialogMethods, DoWhatAPersonDoesWithAWindow) {
    makeDialog("dialog", QorDlgStyle(QorDlgWndOKCancel));
    const std::vector<std::pair<std::string, Names>> rows = {
        {"dialog.ok", {"QorDlgDiaOKNotification"}},
        {"dialog.cancel", {"QorDlgDiaCANCELNotification"}},
        {"dialog.close", {"QorDlgWindCloseNotification"}},
    };
    play([&](PortClient& client) {
        for (const auto& [method, events] : rows) {
            client.call("events.take");
            EXPECT_EQ(client.call(method, {{"dialog", "dialog"}}), Json::object());
            EXPECT_EQ(eventsOf(client.call("events.take"), "QorDlgDialog"), events) << method;
        }
    });
}

TEST_F(DialogMethods, ResizeSendsTheNotification) {
    auto* dialog = makeDialog("dialog");
    const auto size = [](int width, int height) {
        return Json{{"dialog", "dialog"}, {"width", width}, {"height", height}};
    };
    play([&](PortClient& client) {
        client.call("events.take");
        EXPECT_EQ(client.call("dialog.resize", size(300, 200)), Json::object());
        client.call("dialog.resize", size(300, 200));
        EXPECT_EQ(eventsOf(client.call("events.take"), "QorDlgDialog"),
                  Names({"QorDlgWindSizeNotification"}));
        EXPECT_EQ(client.callForError("dialog.resize", size(0, 200)), -32602);
        EXPECT_EQ(client.callForError("dialog.resize", {{"dialog", "dialog"}}), -32602);
    });
    int width = 0;
    int height = 0;
    dialog->GetSize(width, height);
    EXPECT_EQ(width, 300);
    EXPECT_EQ(height, 200);
}

TEST_F(DialogMethods, RefuseWhatAPersonCouldNotDo) {
    makeDialog("bare");
    makeDialog("hidden", QorDlgStyle(QorDlgWndOKCancel))->SetVisibility(QorDlgHIDE);
    new QorDlgLabel(makeDialog("dialog"), "label");
    play([](PortClient& client) {
        EXPECT_EQ(client.callForError("dialog.ok", {{"dialog", "bare"}}), -32003);
        EXPECT_EQ(client.callForError("dialog.cancel", {{"dialog", "bare"}}), -32003);
        EXPECT_EQ(client.callForError("dialog.ok", {{"dialog", "hidden"}}), -32003);
        EXPECT_EQ(client.callForError("dialog.close", {{"dialog", "hidden"}}), -32003);
        EXPECT_EQ(client.callForError("dialog.ok", {{"dialog", "none"}}), -32001);
        EXPECT_EQ(client.callForError("dialog.tree", {{"dialog", "dialog/label"}}), -32001);
        EXPECT_EQ(client.callForError("dialog.ok", {{"dialog", "bare"}, {"width", 1}}), -32602);
        EXPECT_EQ(client.callForError("dialog.ok"), -32602);
    });
}

} // namespace

} // namespace qor::automation
