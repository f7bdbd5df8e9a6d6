#pragma once

#include "platform/dialog/QorDlgFrame.h"
#include "platform/system/QorTrace.h"
#include "quickrender/QorRdgOptionsDialog.h"
#include "tests/support/QorTestApplication.h"
#include "tests/support/RecordingHost.h"

#include <optional>

/// Opens the options dialog and hears what it passes on.
class OptionsOpener : public QorDlgDialog {
public:
    OptionsOpener() : QorDlgDialog(nullptr, "opener") {}

    void Open() {
        options = new QorRdgOptionsDialog(this, "optionsDialog", QorDlgDefaultStyle);
        const std::vector<QorNotification*> all = {options->GetDiaOKNotification(),
                                                   options->GetDiaCANCELNotification(),
                                                   options->GetWindCloseNotification()};
        for (QorNotification* one : all)
            AddAnalyseNotificationCB(this, options, one, &OptionsOpener::EndCB);
        options->SetVisibility(QorDlgSHOW);
    }

    [[nodiscard]] std::vector<std::string> TakeHeard() { return std::exchange(heard, {}); }

    QorRdgOptionsDialog* options = nullptr; ///< null again when it has ended

protected:
    ~OptionsOpener() override = default;

private:
    void EndCB(QorCommand* iSender, QorNotification* iNotification, QorSubscriberData /*iData*/) {
        EXPECT_EQ(iSender, options);
        heard.emplace_back(iNotification->IsA());
        std::exchange(options, nullptr)->RequestDelayedDestruction();
    }

    std::vector<std::string> heard;
};

/// The options dialog as an opener has it, with the program's own catalogs.
class OptionsDialogTest : public QorTestApplication {
protected:
    void SetUp() override { QorCatalogs::SetProgramDirectory(QOR_RESOURCES); }

    void TearDown() override {
        if (opener != nullptr)
            std::exchange(opener, nullptr)->RequestDelayedDestruction();
        loop.RunPosted();
        host.reset();
        QorSettingRepository::SetLocked(repositoryName, false);
        QorTestApplication::TearDown();
    }

    static void Store(const char* iKey, int iValue) {
        QorSettingRepository::GetRepository(repositoryName)->WriteSetting(iKey, &iValue);
    }

    /// The setting, or nothing when it is absent.
    static std::optional<int> Stored(const char* iKey) {
        int value = 0;
        const auto settings = QorSettingRepository::GetRepository(repositoryName);
        return settings->ReadSetting(iKey, &value) ? std::optional(value) : std::nullopt;
    }

    template <class Widget>
    static Widget* Find(const char* iName) {
        return Person::Find<Widget>(std::string("optionsDialog/") + iName);
    }

    static QorDlgCombo* Quality() { return Find<QorDlgCombo>("qualityCombo"); }

    static QorDlgCheckButton* FinalGather() { return Find<QorDlgCheckButton>("finalGatherCheck"); }

    static QorDlgRadioButton* Screen() { return Find<QorDlgRadioButton>("screenRadio"); }

    static QorDlgRadioButton* Custom() { return Find<QorDlgRadioButton>("customRadio"); }

    static QorDlgSpinner* Resolution() { return Find<QorDlgSpinner>("customSpinner"); }

    static QorDlgCombo* Unit() { return Find<QorDlgCombo>("unitCombo"); }

    static constexpr const char* repositoryName = "RenderingOptionsSettings";
    static constexpr const char* file = "config/qorworkbench/RenderingOptionsSettings.settings";
    std::unique_ptr<RecordingHost> host = std::make_unique<RecordingHost>();
    OptionsOpener* opener = new OptionsOpener;
};
