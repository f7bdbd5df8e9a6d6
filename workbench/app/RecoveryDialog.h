#pragma once

#include "platform/dialog/QorDlgButton.h"
#include "platform/dialog/QorDlgCombo.h"
#include "platform/frame/QorFrmDialog.h"
#include "workbench/app/Session.h"

namespace qor::app {

/// Offers what a program that died had not saved. It stops nobody: a person may look at it later,
/// and what is neither recovered nor discarded is offered again at the next start. Texts are in the
/// message catalog "RecoveryDialog".
class RecoveryDialog : public QorFrmDialog {
    QorDeclareClass(RecoveryDialog)

    /// \p found is not empty; \p session outlives the dialog.
    RecoveryDialog(QorCommand* owner, Session& session, std::vector<document::Recoverable> found);

protected:
    ~RecoveryDialog() override = default;

private:
    void list();
    /// Takes the chosen one out of the list; the dialog goes with the last.
    [[nodiscard]] document::Recoverable take();
    void recoverCB(QorCommand* sender, QorNotification* notification, QorSubscriberData data);
    void discardCB(QorCommand* sender, QorNotification* notification, QorSubscriberData data);
    void endCB(QorCommand* sender, QorNotification* notification, QorSubscriberData data);

    Session& session_;
    std::vector<document::Recoverable> found_;
    QorDlgCombo* choice_; ///< these are children
    QorDlgPushButton* recover_;
    QorDlgPushButton* discard_;
};

/// Opens the dialog when there is something to recover.
void offerRecovery(MainFrame& frame, Session& session);

} // namespace qor::app
