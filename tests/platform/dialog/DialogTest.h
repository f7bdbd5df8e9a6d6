#pragma once

#include "platform/dialog/QorDlgDialog.h"
#include "tests/support/QorTestApplication.h"
#include "tests/support/RecordingHost.h"

#include <functional>

/// A window that writes down what its widgets send, "NAME CLASS" without the classes' common
/// beginning and end, and does then what a test wants.
class ListeningDialog : public QorDlgDialog {
public:
    explicit ListeningDialog(QorCommand* iFather = nullptr,
                             const QorString& iName = "dialog",
                             QorDlgStyle iStyle = QorDlgWndOKCancel)
        : QorDlgDialog(iFather, iName, iStyle) {}

    template <class... Notifications>
    void Listen(QorCommand* iSender, Notifications*... iNotifications) {
        (AddAnalyseNotificationCB(this, iSender, iNotifications, &ListeningDialog::HeardCB), ...);
    }

    [[nodiscard]] std::vector<std::string> TakeHeard() { return std::exchange(heard, {}); }

    /// Runs inside every notification, after it was written down.
    std::function<void(QorCommand& iSender)> reaction;

protected:
    ~ListeningDialog() override = default;

private:
    void HeardCB(QorCommand* iSender, QorNotification* iNotification, QorSubscriberData /*iData*/) {
        std::string text = iNotification->IsA();
        text = text.substr(std::string("QorDlg").size());
        text.resize(text.size() - std::string("Notification").size());
        heard.push_back(iSender->GetName().Str() + " " + text);
        if (reaction)
            reaction(*iSender);
    }

    std::vector<std::string> heard;
};

using Heard = std::vector<std::string>;

/// Every test of it runs twice, with a host that draws and with none: nothing may differ.
class DialogTest
    : public QorTestApplication
    , public testing::WithParamInterface<bool> {
protected:
    void SetUp() override {
        if (GetParam())
            host = std::make_unique<RecordingHost>();
        dialog = new ListeningDialog;
        dialog->SetVisibility(QorDlgSHOW);
    }

    void TearDown() override {
        loop.RunPosted();
        if (dialog != nullptr && host)
            RecordingHost::ExpectDrawn(*dialog);
        DestroyDialog();
        loop.RunPosted();
        host.reset();
        QorTestApplication::TearDown();
    }

    void DestroyDialog() {
        if (dialog != nullptr)
            std::exchange(dialog, nullptr)->RequestDelayedDestruction();
    }

    std::unique_ptr<RecordingHost> host;
    ListeningDialog* dialog = nullptr; ///< shown; null it when a test lets it die otherwise
};

inline std::string NameHost(const testing::TestParamInfo<bool>& iInfo) {
    return iInfo.param ? "WithHost" : "WithoutHost";
}

#define QorInstantiateDialogTests(Fixture)                                                         \
    INSTANTIATE_TEST_SUITE_P(Hosts, Fixture, testing::Bool(), NameHost)
