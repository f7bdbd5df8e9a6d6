#include "platform/frame/QorFrmNotify.h"

QorFrmNotify::QorFrmNotify(QorCommand* iFather,
                           const QorString& iName,
                           QorNotifyKind iKind,
                           QorNotifyButtons iButtons)
    : QorDlgNotify(iFather, iName, iKind, iButtons) {}

QorFrmNotify::~QorFrmNotify() = default;

QorImplementClass(QorFrmNotify, QorDlgNotify)
