#include "workbench/app/DialogCommand.h"

namespace qor::app {

DialogCommand::DialogCommand(QorCommand* owner, const QorString& itsName, Maker make)
    : QorFrmCommand(owner, itsName), dialog_(make(this)) {
    for (const QorNotification* end :
         {dialog_->GetDiaOKNotification(), dialog_->GetDiaCANCELNotification(),
          dialog_->GetWindCloseNotification()})
        AddAnalyseNotificationCB(this, dialog_, end, &DialogCommand::endCB);
    dialog_->SetVisibility(QorDlgSHOW);
}

void DialogCommand::raise() {
    Activate();
    dialog_->SetVisibility(QorDlgSHOW);
}

void DialogCommand::endCB(QorCommand* /*sender*/,
                          QorNotification* /*notification*/,
                          QorSubscriberData /*data*/) {
    RequestEnd();
}

DialogHeader::DialogHeader(QorCommand* owner, const QorString& itsName, DialogCommand::Maker make)
    : QorCommandHeader(owner, itsName, [make](QorCommandHeader& header) -> QorCommand* {
        return new DialogCommand(&header, header.GetName(), make);
    }) {}

QorResult DialogHeader::StartCommand() {
    if (!IsAvailable())
        return E_FAIL;
    auto* running = static_cast<DialogCommand*>(GetCommand());
    if (running != nullptr && !running->IsDying())
        running->raise();
    else
        RunCommand();
    return S_OK;
}

QorImplementClass(DialogCommand, QorFrmCommand)
QorImplementClass(DialogHeader, QorCommandHeader)

} // namespace qor::app
