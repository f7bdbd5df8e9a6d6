#include "platform/dialog/QorDlgCombo.h"

QorImplementClass(QorDlgCombo, QorDialog)

QorDlgCombo::QorDlgCombo(QorCommand* iFather, const QorString& iName, QorDlgStyle iStyle)
    : QorDialog(iFather, iName, iStyle) {}

void QorDlgCombo::SetLine(const QorUnicodeString& iLine) {
    lines.push_back(iLine);
    if (selection < 0)
        selection = 0;
    Changed(QorAspectLines | QorAspectSelection);
}

void QorDlgCombo::SetLine(const QorUnicodeString& iLine, int iIndex) {
    if (!IsLine(iIndex))
        return;
    lines[static_cast<std::size_t>(iIndex)] = iLine;
    Changed(QorAspectLines);
}

void QorDlgCombo::ClearLine() {
    lines.clear();
    selection = -1;
    Changed(QorAspectLines | QorAspectSelection);
}

bool QorDlgCombo::IsLine(int iIndex) const {
    return iIndex >= 0 && static_cast<std::size_t>(iIndex) < lines.size();
}

void QorDlgCombo::SetSelect(int iIndex, QorDlgNotifyFlag iNotify) {
    if (!IsLine(iIndex) || iIndex == selection)
        return;
    const QorVar<QorDialog> alive(this);
    selection = iIndex;
    Changed(QorAspectSelection);
    if (iNotify == QorDlgDoNotify)
        Notify(select.Get());
}

QorUserResult QorDlgCombo::UserSelect(int iIndex) {
    if (!CanAct())
        return QorUserResult::Insensitive;
    if (!IsLine(iIndex))
        return QorUserResult::OutOfRange;
    SetSelect(iIndex, QorDlgDoNotify);
    return QorUserResult::Done;
}
