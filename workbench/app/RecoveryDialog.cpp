#include "workbench/app/RecoveryDialog.h"

#include "platform/dialog/QorDlgLabel.h"
#include "platform/text/QorMsgCatalog.h"

#include <array>
#include <ctime>

namespace qor::app {

using document::Recoverable;

namespace {

/// "2026-11-20 16:04", in the time of the place.
std::string momentOf(std::int64_t seconds) {
    const std::time_t moment = seconds;
    std::tm local{};
    std::array<char, 32> text{};
    if (localtime_r(&moment, &local) == nullptr)
        return {};
    return {text.data(), std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M", &local)};
}

} // namespace

RecoveryDialog::RecoveryDialog(QorCommand* owner, Session& session, std::vector<Recoverable> found)
    : QorFrmDialog(owner, "recoveryDialog", QorDlgWndCANCEL | QorDlgWndNoResize | QorDlgGridLayout)
    , session_(session)
    , found_(std::move(found)) {
    (new QorDlgLabel(this, "whatLabel"))->SetGridConstraints(0, 0, 3, 1);
    choice_ = new QorDlgCombo(this, "documentCombo");
    choice_->SetGridConstraints(1, 0, 3, 1);
    recover_ = new QorDlgPushButton(this, "recoverButton");
    recover_->SetGridConstraints(2, 0, 1, 1);
    discard_ = new QorDlgPushButton(this, "discardButton");
    discard_->SetGridConstraints(2, 1, 1, 1);
    AddAnalyseNotificationCB(this, recover_, recover_->GetPushBActivateNotification(),
                             &RecoveryDialog::recoverCB);
    AddAnalyseNotificationCB(this, discard_, discard_->GetPushBActivateNotification(),
                             &RecoveryDialog::discardCB);
    for (const QorNotification* end : {GetDiaCANCELNotification(), GetWindCloseNotification()})
        AddAnalyseNotificationCB(this, this, end, &RecoveryDialog::endCB);
    list();
}

void RecoveryDialog::list() {
    choice_->ClearLine();
    for (const Recoverable& one : found_)
        choice_->SetLine(QorMsgCatalog::BuildMessage("RecoveryDialog", "Document",
                                                     {one.title, momentOf(one.savedAt)}));
}

Recoverable RecoveryDialog::take() {
    const auto place = found_.begin() + choice_->GetSelect();
    Recoverable chosen = *place;
    found_.erase(place);
    if (found_.empty())
        RequestDelayedDestruction();
    else
        list();
    return chosen;
}

void RecoveryDialog::recoverCB(QorCommand* /*sender*/,
                               QorNotification* /*notification*/,
                               QorSubscriberData /*data*/) {
    session_.recover(take());
}

void RecoveryDialog::discardCB(QorCommand* /*sender*/,
                               QorNotification* /*notification*/,
                               QorSubscriberData /*data*/) {
    document::discardRecoverable(take());
}

void RecoveryDialog::endCB(QorCommand* /*sender*/,
                           QorNotification* /*notification*/,
                           QorSubscriberData /*data*/) {
    SetVisibility(QorDlgHIDE);
    RequestDelayedDestruction();
}

void offerRecovery(MainFrame& frame, Session& session) {
    std::vector<Recoverable> found = session.documents().listRecoverable();
    if (!found.empty())
        (new RecoveryDialog(&frame, session, std::move(found)))->SetVisibility(QorDlgSHOW);
}

QorImplementClass(RecoveryDialog, QorFrmDialog)

} // namespace qor::app
