#pragma once

#include "platform/scene/QorAttributePairs.h"

/// Something of a document that moves objects in time.
class QorISimAgent : public QorInterface {
    QorDeclareInterface(QorISimAgent)

    /// In seconds; E_FAIL, and \p oSeconds stays, when it has none.
    virtual QorResult ReadDuration(double& oSeconds) const = 0;
    /// What it moves, and what the agents in it move, each once, in order.
    [[nodiscard]] virtual QorListOf<QorBaseUnknown> ListMovedObjects() const = 0;
};

QorDeclareHandle(QorISimAgent);
