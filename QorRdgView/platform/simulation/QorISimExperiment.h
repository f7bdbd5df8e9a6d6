#pragma once

#include "platform/scene/QorAttributePairs.h"

/// A simulation experiment: a motion that is computed, so that it has no duration of its own.
class QorISimExperiment : public QorInterface {
    QorDeclareInterface(QorISimExperiment)

    /// What takes part: cameras, lights, nodes of the product, tracks and sequences.
    [[nodiscard]] virtual QorReferences GetObjects() const = 0;
    /// E_FAIL, and nothing changes, when one of them is of another kind.
    virtual QorResult SetObjects(const QorReferences& iObjects) = 0;
};

QorDeclareHandle(QorISimExperiment);
