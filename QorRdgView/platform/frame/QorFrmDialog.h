#pragma once

#include "platform/dialog/QorDlgDialog.h"

/// A dialog of the application frame: what the commands of the program open. It belongs to the
/// command or dialog that made it and ends by passing its OK or Cancel on to it.
class QorFrmDialog : public QorDlgDialog {
    QorDeclareClass(QorFrmDialog)

    QorFrmDialog(QorCommand* iFather,
                 const QorString& iName,
                 QorDlgStyle iStyle = QorDlgDefaultStyle);

protected:
    ~QorFrmDialog() override;
};
