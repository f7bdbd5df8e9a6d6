#include "platform/dialog/QorDlgFrame.h"

QorImplementClass(QorDlgFrame, QorDialog)

QorDlgFrame::QorDlgFrame(QorCommand* iFather, const QorString& iName, QorDlgStyle iStyle)
    : QorDialog(iFather, iName, iStyle) {}
