#include "platform/dialog/QorDlgLabel.h"

QorImplementClass(QorDlgLabel, QorDialog)
QorImplementClass(QorDlgSeparator, QorDialog)

QorDlgLabel::QorDlgLabel(QorCommand* iFather, const QorString& iName, QorDlgStyle iStyle)
    : QorDialog(iFather, iName, iStyle) {}

QorDlgSeparator::QorDlgSeparator(QorCommand* iFather, const QorString& iName, QorDlgStyle iStyle)
    : QorDialog(iFather, iName, iStyle) {}
