#pragma once

#include "platform/component/QorHandle.h"
#include "platform/text/QorString.h"

/// The name that a person gives an object.
class QorIAlias : public QorInterface {
    QorDeclareInterface(QorIAlias)

    [[nodiscard]] virtual QorUnicodeString GetAlias() const = 0;
    /// The object may change the name (see QorRscObject::SetAlias); ask for it again. E_FAIL, and
    /// nothing changes, when nothing is left of it.
    virtual QorResult SetAlias(const QorUnicodeString& iAlias) = 0;
};

QorDeclareHandle(QorIAlias);
