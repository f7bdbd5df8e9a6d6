#pragma once

#include "platform/scene/QorRscValues.h"
#include "platform/simulation/QorISimExperiment.h"

/// An experiment of a document.
class QorSimExperiment : public QorImplements<QorRscObject, QorISimExperiment> {
    QorDeclareClass(QorSimExperiment)

    QorSimExperiment() = default;

    [[nodiscard]] const QorRscKind& GetKind() const override { return Kind(); }

    [[nodiscard]] static const QorRscKind& Kind();

    [[nodiscard]] QorReferences GetObjects() const override { return objects; }

    QorResult SetObjects(const QorReferences& iObjects) override {
        return Put("Objects", objects, iObjects);
    }

protected:
    ~QorSimExperiment() override = default;

private:
    QorReferences objects;
};
