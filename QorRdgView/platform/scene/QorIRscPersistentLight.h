#pragma once

#include "platform/scene/QorIRscLight.h"

/// The lights of a document.
class QorIRscPersistentLight : public QorInterface {
    QorDeclareInterface(QorIRscPersistentLight)

    /// In the order of creation, counted from 1. The document is flat, so that the depth changes
    /// nothing.
    [[nodiscard]] virtual QorListOf<QorIRscLight> ListLights(int iDepth = 0) = 0;
    /// A new one with default values and a name made up; dispatches QorCreate. Never null.
    [[nodiscard]] virtual QorIRscLight_var CreateLight() = 0;
    /// Takes it out; references to it become null; dispatches QorRemove. E_FAIL when it is not in
    /// the document.
    virtual QorResult RemoveLight(QorIRscLight* iLight) = 0;
};

QorDeclareHandle(QorIRscPersistentLight);
