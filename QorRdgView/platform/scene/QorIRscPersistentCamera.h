#pragma once

#include "platform/scene/QorIRscCamera.h"

/// The cameras of a document.
class QorIRscPersistentCamera : public QorInterface {
    QorDeclareInterface(QorIRscPersistentCamera)

    /// In the order of creation, counted from 1. The document is flat, so that the depth changes
    /// nothing.
    [[nodiscard]] virtual QorListOf<QorIRscCamera> ListCameras(int iDepth = 0) = 0;
    /// A new one with default values and a name made up; dispatches QorCreate. Never null.
    [[nodiscard]] virtual QorIRscCamera_var CreateCamera() = 0;
    /// Takes it out; references to it become null; dispatches QorRemove. E_FAIL when it is not in
    /// the document.
    virtual QorResult RemoveCamera(QorIRscCamera* iCamera) = 0;
};

QorDeclareHandle(QorIRscPersistentCamera);
