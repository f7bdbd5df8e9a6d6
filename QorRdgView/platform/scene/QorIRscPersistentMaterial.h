#pragma once

#include "platform/scene/QorIRscMaterial.h"

/// The materials of a document.
class QorIRscPersistentMaterial : public QorInterface {
    QorDeclareInterface(QorIRscPersistentMaterial)

    /// In the order of creation, counted from 1. The document is flat, so that the depth changes
    /// nothing.
    [[nodiscard]] virtual QorListOf<QorIRscMaterial> ListMaterials(int iDepth = 0) = 0;
    /// A new one with default values and a name made up; dispatches QorCreate. Never null.
    [[nodiscard]] virtual QorIRscMaterial_var CreateMaterial() = 0;
    /// Takes it out; references to it become null; dispatches QorRemove. E_FAIL when it is not in
    /// the document.
    virtual QorResult RemoveMaterial(QorIRscMaterial* iMaterial) = 0;
};

QorDeclareHandle(QorIRscPersistentMaterial);
