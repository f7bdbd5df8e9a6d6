// widget.set: a person's new value, by kind of widget and by way.
#include "platform/dialog/QorDlgButton.h"
#include "platform/dialog/QorDlgCombo.h"
#include "platform/dialog/QorDlgEditor.h"
#include "platform/dialog/QorDlgScrollBar.h"
#include "platform/dialog/QorDlgSlider.h"
#include "platform/dialog/QorDlgSpinner.h"
#include "tests/automation/PortTest.h"

namespace qor::automation {

namespace {

class WidgetValues : public PortTest {
protected:
    void SetUp() override {
        PortTest::SetUp();
        auto* dialog = makeDialog("d");
        spinner = new QorDlgSpinner(dialog, "spinner");
        spinner->SetRangeWithStep(0.0, 100.0, 10.0);
        slider = new QorDlgSlider(dialog, "slider");
        slider->SetRange(0.0, 1.0, 10);
        bar = new QorDlgScrollBar(dialog, "bar");
        bar->SetScrollRange(0, 9);
        editor = new QorDlgEditor(dialog, "editor");
        combo = new QorDlgCombo(dialog, "combo");
        combo->SetLine("a");
        combo->SetLine("b");
        new QorDlgCheckButton(dialog, "check");
    }

    QorDlgSpinner* spinner = nullptr;
    QorDlgSlider* slider = nullptr;
    QorDlgScrollBar* bar = nullptr;
    QorDlgEditor* editor = nullptr;
    QorDlgCombo* combo = nullptr;
};

struct Row {
    const char* widget;
    Json params;
    Json after; ///< value, text, selection or position
    Names events;
};

Json valueOf(const Json& widget) {
    for (const char* key : {"value", "selection", "position", "text"})
        if (widget.contains(key))
            return widget.at(key);
    return {};
}

TEST_F(WidgetValues, ChangeAsAPersonChangesThem) {
    const Names spinnerModify{"QorDlgSpinnerModifyNotification"};
    const Names sliderDrag{"QorDlgSliderDragNotification"};
    const Names sliderBoth{"QorDlgSliderDragNotification", "QorDlgSliderModifyNotification"};
    const Names barDrag{"QorDlgScrollBarDragNotification"};
    const Names barBoth{"QorDlgScrollBarDragNotification", "QorDlgScrollBarModifyNotification"};
    const Names editorModify{"QorDlgEditModifyNotification"};
    const Names comboSelect{"QorDlgComboSelectNotification"};
    const std::vector<Row> rows = {
        {"spinner", {{"value", 33.3}}, 33.3, spinnerModify},
        {"spinner", {{"value", 33.3}}, 33.3, {}},
        {"spinner", {{"value", 1e9}, {"via", "modify"}}, 100.0, spinnerModify},
        {"spinner", {{"via", "down"}}, 90.0, spinnerModify},
        {"spinner", {{"via", "up"}}, 100.0, spinnerModify},
        {"spinner", {{"via", "up"}}, 100.0, {}},
        {"slider", {{"value", 0.33}}, 0.33, sliderBoth},
        {"slider", {{"value", 0.33}}, 0.33, {}},
        {"slider", {{"value", 0.5}, {"via", "drag"}}, 0.5, sliderDrag},
        {"slider", {{"value", 0.5}}, 0.5, {"QorDlgSliderModifyNotification"}},
        {"slider", {{"value", -3}}, 0.0, sliderBoth},
        {"bar", {{"value", 4}}, 4, barBoth},
        {"bar", {{"value", 4.0}}, 4, {}},
        {"bar", {{"value", 5}, {"via", "drag"}}, 5, barDrag},
        {"bar", {{"value", 1e300}}, 9, barBoth},
        {"editor", {{"value", "text"}}, "text", editorModify},
        {"editor", {{"value", "text"}}, "text", {}},
        {"editor", {{"value", "Grün"}}, "Grün", editorModify},
        {"combo", {{"value", 1}}, 1, comboSelect},
        {"combo", {{"value", 1}}, 1, {}},
    };
    play([&](PortClient& client) {
        client.call("events.take");
        for (const Row& row : rows) {
            Json params = row.params;
            params["path"] = std::string("d/") + row.widget;
            EXPECT_EQ(client.call("widget.set", params), Json::object()) << params;
            Names events;
            for (const Json& event : client.call("events.take"))
                events.push_back(event.at("event"));
            EXPECT_EQ(events, row.events) << params;
            const Json widget = client.call("widget.get", {{"path", params["path"]}});
            EXPECT_EQ(valueOf(widget), row.after) << params;
        }
    });
}

TEST_F(WidgetValues, AreRefusedWhenTheyAreNone) {
    struct Bad {
        const char* widget;
        Json params;
        int error;
    };

    const std::vector<Bad> rows = {
        {"spinner", {}, -32602},
        {"spinner", {{"value", "1"}}, -32602},
        {"spinner", {{"value", nullptr}}, -32602},
        {"spinner", {{"value", true}}, -32602},
        {"spinner", {{"value", 1}, {"via", "up"}}, -32602},
        {"spinner", {{"value", 1}, {"via", "sideways"}}, -32602},
        {"spinner", {{"value", 1}, {"via", 1}}, -32602},
        {"spinner", {{"value", 1}, {"via", "drag"}}, -32005},
        {"slider", {{"via", "up"}}, -32005},
        {"slider", {{"via", "drag"}}, -32602},
        {"bar", {{"value", 0.5}}, -32602},
        {"bar", {{"value", "0"}}, -32602},
        {"editor", {{"value", 1}}, -32602},
        {"editor", {{"value", "a"}, {"via", "drag"}}, -32005},
        {"combo", {{"value", 2}}, -32602},
        {"combo", {{"value", -1}}, -32602},
        {"combo", {{"value", 0.5}}, -32602},
        {"combo", {{"value", "a"}}, -32602},
        {"combo", {{"value", Json::array({0})}}, -32602},
        {"check", {{"value", 1}}, -32005},
        {"none", {{"value", 1}}, -32001},
    };
    play([&](PortClient& client) {
        client.call("events.take");
        for (const Bad& row : rows) {
            Json params = row.params.is_null() ? Json::object() : row.params;
            params["path"] = std::string("d/") + row.widget;
            EXPECT_EQ(client.callForError("widget.set", params), row.error) << params;
        }
        EXPECT_EQ(client.call("events.take"), Json::array());
    });
}

TEST_F(WidgetValues, StayAsTheyAreInInsensitiveWidgets) {
    spinner->SetSensitivity(QorDlgDISABLE);
    slider->SetVisibility(QorDlgHIDE);
    play([](PortClient& client) {
        EXPECT_EQ(client.callForError("widget.set", {{"path", "d/spinner"}, {"value", 5}}), -32003);
        EXPECT_EQ(client.callForError("widget.set", {{"path", "d/spinner"}, {"via", "up"}}),
                  -32003);
        EXPECT_EQ(client.callForError("widget.set", {{"path", "d/slider"}, {"value", 1}}), -32003);
    });
    EXPECT_EQ(spinner->GetValue(), 0.0);
    EXPECT_EQ(slider->GetValue(), 0.0);
}

} // namespace

} // namespace qor::automation
