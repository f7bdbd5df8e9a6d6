#include "platform/frame/QorFrmCommand.h"

#include "platform/frame/QorCommandSelector.h"

QorFrmCommand::QorFrmCommand(QorCommand* iFather, const QorString& iName)
    : QorImplements(iFather, iName) {
    Activate();
}

QorFrmCommand::~QorFrmCommand() {
    QorCommandSelector::GetDefaultCommandSelectorInstance()->Deactivate(this);
}

void QorFrmCommand::Dying() {
    QorCommandSelector::GetDefaultCommandSelectorInstance()->Deactivate(this);
}

void QorFrmCommand::Activate() {
    QorCommandSelector::GetDefaultCommandSelectorInstance()->Activate(this);
}

void QorFrmCommand::RequestEnd() {
    auto* header = dynamic_cast<QorCommandHeader*>(GetFather());
    if (header != nullptr && header->GetCommand() == this)
        header->EndCommand();
    else
        RequestDelayedDestruction();
}

QorResult QorFrmCommand::SetLongHelpId(const QorString& iId) {
    longHelpId = iId;
    return S_OK;
}

QorImplementClass(QorFrmCommand, QorCommand)
