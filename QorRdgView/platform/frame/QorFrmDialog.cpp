#include "platform/frame/QorFrmDialog.h"

QorFrmDialog::QorFrmDialog(QorCommand* iFather, const QorString& iName, QorDlgStyle iStyle)
    : QorDlgDialog(iFather, iName, iStyle) {}

QorFrmDialog::~QorFrmDialog() = default;

QorImplementClass(QorFrmDialog, QorDlgDialog)
