#include "platform/simulation/QorSimExperiment.h"

QorImplementClass(QorSimExperiment, QorRscObject)

const QorRscKind& QorSimExperiment::Kind() {
    using Self = QorSimExperiment;
    static const auto* kind = new QorRscKind{
        "experiment", "Experiment", false, &QorCreateObject<Self>,
        QorAttributeTable{QorMakeAttribute<&Self::GetObjects, &Self::SetObjects>(
            "Objects", QorAttributeRule::OfKind({"camera", "light", "track", "sequence",
                                                 QorAttributeRule::productNode}))}};
    return *kind;
}
