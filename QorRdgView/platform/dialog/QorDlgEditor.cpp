#include "platform/dialog/QorDlgEditor.h"

QorImplementClass(QorDlgEditor, QorDialog)

QorDlgEditor::QorDlgEditor(QorCommand* iFather, const QorString& iName, QorDlgStyle iStyle)
    : QorDialog(iFather, iName, iStyle) {}

void QorDlgEditor::SetText(const QorUnicodeString& iText, QorDlgNotifyFlag iNotify) {
    if (iText == text)
        return;
    const QorVar<QorDialog> alive(this);
    text = iText;
    Changed(QorAspectValue);
    if (iNotify == QorDlgDoNotify)
        Notify(modify.Get());
}

QorUserResult QorDlgEditor::UserSetText(const QorUnicodeString& iText) {
    if (!CanAct())
        return QorUserResult::Insensitive;
    SetText(iText, QorDlgDoNotify);
    return QorUserResult::Done;
}
