#include "platform/frame/QorCommandHeader.h"

#include <utility>

QorCheckHeader::QorCheckHeader(QorCommand* iFather, const QorString& iName, Creator iCreator)
    : QorCommandHeader(iFather, iName, std::move(iCreator)) {}

QorCheckHeader::~QorCheckHeader() = default;

QorResult QorCheckHeader::StartCommand() {
    if (!IsAvailable())
        return E_FAIL;
    if (GetCheckState() == QorDlgCheck)
        return EndCommand();
    ChangeCheckState(QorDlgCheck);
    RunCommand();
    return S_OK;
}

QorResult QorCheckHeader::EndCommand() {
    DropCommand();
    ChangeCheckState(QorDlgUncheck);
    return S_OK;
}

void QorCheckHeader::SetCheckState(QorDlgCheckState iState, QorDlgNotifyFlag iNotify) {
    if (iState == GetCheckState())
        return;
    if (iNotify == QorDlgDoNotify)
        StartCommand();
    else
        ChangeCheckState(iState);
}

void QorCheckHeader::CommandEnded() {
    ChangeCheckState(QorDlgUncheck);
}

QorImplementClass(QorCheckHeader, QorCommandHeader)
