#include "platform/simulation/QorSimTrack.h"

QorImplementClass(QorSimTrack, QorRscObject)

const QorRscKind& QorSimTrack::Kind() {
    using Self = QorSimTrack;
    static const auto* kind = new QorRscKind{
        "track", "Track", false, &QorCreateObject<Self>,
        QorAttributeTable{
            QorMakeAttribute<&Self::GetDuration, &Self::SetDuration>(
                "Duration", QorAttributeRule::AtLeast(0.0)),
            QorMakeAttribute<&Self::GetMotion, &Self::SetMotion>("Motion", QorAttributeRule::Any()),
            QorMakeAttribute<&Self::GetObjects, &Self::SetObjects>(
                "Objects",
                QorAttributeRule::OfKind({"camera", "light", QorAttributeRule::productNode}))}};
    return *kind;
}

QorResult QorSimTrack::ReadDuration(double& oSeconds) const {
    if (duration <= 0.0)
        return E_FAIL;
    oSeconds = duration;
    return S_OK;
}

QorListOf<QorBaseUnknown> QorSimTrack::ListMovedObjects() const {
    QorListOf<QorBaseUnknown> moved;
    for (const QorReference& object : objects)
        if (moved.Locate(object.Get()) == 0)
            moved.Append(object.Get());
    return moved;
}
