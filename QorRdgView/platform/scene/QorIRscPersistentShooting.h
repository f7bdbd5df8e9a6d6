#pragma once

#include "platform/scene/QorIRscShooting.h"

/// The shootings of a document.
class QorIRscPersistentShooting : public QorInterface {
    QorDeclareInterface(QorIRscPersistentShooting)

    /// In the order of creation, counted from 1. Those that are of, or offer, the class
    /// named. The document is flat, so that the depth changes nothing.
    [[nodiscard]] virtual QorListOf<QorIRscShooting>
    ListShootings(const QorString& iClass = QorIRscShooting::ClassName(), int iDepth = 1) = 0;
    /// A new one with default values and a name made up; dispatches QorCreate. Never null.
    [[nodiscard]] virtual QorIRscShooting_var CreateShooting() = 0;
    /// Takes it out; references to it become null; dispatches QorRemove. E_FAIL when it is not in
    /// the document.
    virtual QorResult RemoveShooting(QorIRscShooting* iShooting) = 0;
};

QorDeclareHandle(QorIRscPersistentShooting);
