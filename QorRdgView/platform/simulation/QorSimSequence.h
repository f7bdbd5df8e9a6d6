#pragma once

#include "platform/scene/QorRscValues.h"
#include "platform/simulation/QorISimAgent.h"

/// A sequence of a document: tracks and other sequences, one after another.
class QorSimSequence : public QorImplements<QorRscObject, QorISimAgent> {
    QorDeclareClass(QorSimSequence)

    QorSimSequence() = default;

    [[nodiscard]] const QorRscKind& GetKind() const override { return Kind(); }

    [[nodiscard]] static const QorRscKind& Kind();

    /// In seconds; 0 to last as long as its agents do together.
    [[nodiscard]] double GetDuration() const { return duration; }

    QorResult SetDuration(double iSeconds) { return Put("Duration", duration, iSeconds); }

    [[nodiscard]] QorReferences GetAgents() const { return agents; }

    /// E_FAIL, and nothing changes, when one of them is of another kind or would play this sequence
    /// again.
    QorResult SetAgents(const QorReferences& iAgents);

    QorResult ReadDuration(double& oSeconds) const override;
    [[nodiscard]] QorListOf<QorBaseUnknown> ListMovedObjects() const override;

protected:
    ~QorSimSequence() override = default;

private:
    /// Whether it is \p iOther or plays it, at any depth.
    [[nodiscard]] bool Plays(const QorSimSequence& iOther) const;

    double duration = 0.0;
    QorReferences agents;
};
