#pragma once

#include "platform/dialog/QorDlgNotify.h"

/// The application frame's notification box: a QorDlgNotify.
class QorFrmNotify : public QorDlgNotify {
    QorDeclareClass(QorFrmNotify)

    QorFrmNotify(QorCommand* iFather,
                 const QorString& iName,
                 QorNotifyKind iKind = QorNotifyKind::Information,
                 QorNotifyButtons iButtons = QorNotifyButtons::OK);

protected:
    ~QorFrmNotify() override;
};
