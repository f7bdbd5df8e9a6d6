#include "platform/simulation/QorSimSequence.h"

#include <algorithm>

QorImplementClass(QorSimSequence, QorRscObject)

const QorRscKind& QorSimSequence::Kind() {
    using Self = QorSimSequence;
    static const auto* kind = new QorRscKind{
        "sequence", "Sequence", false, &QorCreateObject<Self>,
        QorAttributeTable{QorMakeAttribute<&Self::GetDuration, &Self::SetDuration>(
                              "Duration", QorAttributeRule::AtLeast(0.0)),
                          QorMakeAttribute<&Self::GetAgents, &Self::SetAgents>(
                              "Agents", QorAttributeRule::OfKind({"track", "sequence"}))}};
    return *kind;
}

bool QorSimSequence::Plays(const QorSimSequence& iOther) const {
    return this == &iOther || std::ranges::any_of(agents, [&](const QorReference& iAgent) {
               const auto* sequence = dynamic_cast<const QorSimSequence*>(iAgent.Get());
               return sequence != nullptr && sequence->Plays(iOther);
           });
}

QorResult QorSimSequence::SetAgents(const QorReferences& iAgents) {
    for (const QorReference& agent : iAgents)
        if (const auto* sequence = dynamic_cast<const QorSimSequence*>(agent.Get()))
            if (sequence->Plays(*this))
                return E_FAIL;
    return Put("Agents", agents, iAgents);
}

QorResult QorSimSequence::ReadDuration(double& oSeconds) const {
    double sum = duration;
    for (const QorReference& agent : agents) {
        double seconds = 0.0;
        if (duration <= 0.0 && QorSucceeded(QorQuery<QorISimAgent>(agent)->ReadDuration(seconds)))
            sum += seconds;
    }
    if (sum <= 0.0)
        return E_FAIL;
    oSeconds = sum;
    return S_OK;
}

QorListOf<QorBaseUnknown> QorSimSequence::ListMovedObjects() const {
    QorListOf<QorBaseUnknown> moved;
    for (const QorReference& agent : agents)
        for (const QorReference& object : QorQuery<QorISimAgent>(agent)->ListMovedObjects())
            if (moved.Locate(object.Get()) == 0)
                moved.Append(object.Get());
    return moved;
}
