// A whole dialog through the port: the options of a quick render, as a person would use them.
#include "platform/system/QorSettingRepository.h"
#include "quickrender/QorRdgOptionsDialog.h"
#include "tests/automation/PortTest.h"

namespace qor::automation {

namespace {

/// Opens the dialog and destroys it when it is done.
class Opener : public QorCommand {
public:
    Opener() : QorCommand(nullptr, "opener") {
        auto* dialog = new QorRdgOptionsDialog(this, "optionsDialog");
        for (QorNotification* end :
             {dialog->GetDiaOKNotification(), dialog->GetDiaCANCELNotification(),
              dialog->GetWindCloseNotification()})
            AddAnalyseNotificationCB(this, dialog, end, &Opener::endCB);
        dialog->SetVisibility(QorDlgSHOW);
    }

private:
    void endCB(QorCommand* /*sender*/, QorNotification* /*notification*/, void* /*data*/) {
        RequestDelayedDestruction();
    }
};

class OptionsDialog : public PortTest {
protected:
    /// Opens the dialog and plays.
    void open(const Scenario& scenario) {
        new Opener;
        play([&](PortClient& client) {
            scenario(client);
            EXPECT_EQ(client.call("dialog.list"), Json::array()) << "the dialog is gone";
        });
    }
};

Json widget(const std::string& name) {
    return {{"path", "optionsDialog/" + name}};
}

Json with(const std::string& name, const char* key, const Json& value) {
    return {{"path", "optionsDialog/" + name}, {key, value}};
}

const Json dialog{{"dialog", "optionsDialog"}};

Json setting(const char* key) {
    return {{"repository", "RenderingOptionsSettings"}, {"key", key}};
}

TEST_F(OptionsDialog, ShowsTheDefaults) {
    open([](PortClient& client) {
        EXPECT_EQ(client.call("widget.get", widget("qualityCombo")).at("selection"), 1);
        EXPECT_EQ(client.call("widget.get", widget("finalGatherCheck")).at("checked"), true);
        EXPECT_EQ(client.call("widget.get", widget("screenRadio")).at("checked"), true);
        const Json spinner = client.call("widget.get", widget("customSpinner"));
        EXPECT_EQ(spinner.at("value"), 300);
        EXPECT_EQ(spinner.at("sensitive"), false);
        EXPECT_EQ(client.callForError("widget.set", with("customSpinner", "value", 72)), -32003);
        client.call("dialog.cancel", dialog);
    });
}

TEST_F(OptionsDialog, KeepsWhatWasChosenOnDisk) {
    open([](PortClient& client) {
        client.call("widget.set", with("qualityCombo", "value", 2));
        client.call("widget.check", with("finalGatherCheck", "checked", false));
        client.call("widget.check", with("customRadio", "checked", true));
        client.call("widget.set", with("customSpinner", "value", 299.7));
        EXPECT_EQ(client.call("widget.get", widget("customSpinner")).at("text"), "300");
        client.call("widget.set", with("unitCombo", "value", 1));
        EXPECT_EQ(client.call("dialog.ok", dialog), Json::object());
    });
    QorSettingRepository::ForgetAll();
    open([](PortClient& client) {
        EXPECT_EQ(client.call("settings.get", setting("Quality")), 2);
        EXPECT_EQ(client.call("settings.get", setting("FinalGather")), 0);
        EXPECT_EQ(client.call("settings.get", setting("ScreenResolution")), 0);
        EXPECT_EQ(client.call("settings.get", setting("CustomResolution")), 299) << "cut";
        EXPECT_EQ(client.call("settings.get", setting("CustomUnit")), 1);
        EXPECT_EQ(client.call("widget.get", widget("qualityCombo")).at("selection"), 2);
        EXPECT_EQ(client.call("widget.get", widget("customSpinner")).at("sensitive"), true);
        client.call("dialog.close", dialog);
    });
}

TEST_F(OptionsDialog, CancelWritesNothing) {
    open([](PortClient& client) {
        client.call("widget.set", with("qualityCombo", "value", 0));
        client.call("dialog.cancel", dialog);
        EXPECT_EQ(client.call("settings.get", setting("Quality")), nullptr);
    });
}

TEST_F(OptionsDialog, StaysAsBuiltWithoutItsRepository) {
    QorSettingRepository::SetLocked("RenderingOptionsSettings", true);
    open([](PortClient& client) {
        EXPECT_EQ(client.call("widget.get", widget("screenRadio")).at("checked"), false);
        client.call("dialog.ok", dialog);
    });
    QorSettingRepository::SetLocked("RenderingOptionsSettings", false);
}

} // namespace

} // namespace qor::automation
