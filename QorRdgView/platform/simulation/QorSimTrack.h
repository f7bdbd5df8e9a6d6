#pragma once

#include "platform/scene/QorRscValues.h"
#include "platform/simulation/QorISimAgent.h"

/// A track of a document: one motion, with a duration.
class QorSimTrack : public QorImplements<QorRscObject, QorISimAgent> {
    QorDeclareClass(QorSimTrack)

    QorSimTrack() = default;

    [[nodiscard]] const QorRscKind& GetKind() const override { return Kind(); }

    [[nodiscard]] static const QorRscKind& Kind();

    /// In seconds; 0 when it has none.
    [[nodiscard]] double GetDuration() const { return duration; }

    QorResult SetDuration(double iSeconds) { return Put("Duration", duration, iSeconds); }

    /// Name of the product's animation that it plays; empty for none.
    [[nodiscard]] QorUnicodeString GetMotion() const { return motion; }

    QorResult SetMotion(const QorUnicodeString& iName) { return Put("Motion", motion, iName); }

    /// The cameras, lights and nodes of the product that it moves.
    [[nodiscard]] QorReferences GetObjects() const { return objects; }

    QorResult SetObjects(const QorReferences& iObjects) {
        return Put("Objects", objects, iObjects);
    }

    QorResult ReadDuration(double& oSeconds) const override;
    [[nodiscard]] QorListOf<QorBaseUnknown> ListMovedObjects() const override;

protected:
    ~QorSimTrack() override = default;

private:
    double duration = 1.0;
    QorUnicodeString motion;
    QorReferences objects;
};
