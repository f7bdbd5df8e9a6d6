#include "platform/dialog/QorDlgProgress.h"

QorImplementClass(QorDlgProgress, QorDialog)

QorDlgProgress::QorDlgProgress(QorCommand* iFather, const QorString& iName, QorDlgStyle iStyle)
    : QorDialog(iFather, iName, iStyle) {}

void QorDlgProgress::SetRange(int iMin, int iMax) {
    if (iMax < iMin)
        return;
    min = iMin;
    max = iMax;
    Changed(QorAspectRange);
}

void QorDlgProgress::SetPos(int iPosition) {
    position = iPosition;
    Changed(QorAspectValue);
}
