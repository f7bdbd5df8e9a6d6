#pragma once

#include "platform/scene/QorIRscEnvironment.h"

/// The environments of a document.
class QorIRscPersistentEnvironment : public QorInterface {
    QorDeclareInterface(QorIRscPersistentEnvironment)

    /// In the order of creation, counted from 1. The document is flat, so that the depth changes
    /// nothing.
    [[nodiscard]] virtual QorListOf<QorIRscEnvironment> ListEnvironments(int iDepth = 0) = 0;
    /// A new one with default values and a name made up; dispatches QorCreate. Never null.
    [[nodiscard]] virtual QorIRscEnvironment_var CreateEnvironment() = 0;
    /// Takes it out; references to it become null; dispatches QorRemove. E_FAIL when it is not in
    /// the document.
    virtual QorResult RemoveEnvironment(QorIRscEnvironment* iEnvironment) = 0;
};

QorDeclareHandle(QorIRscPersistentEnvironment);
