#include "platform/scene/QorRscLight.h"

QorImplementClass(QorRscLight, QorRscObject)

const QorRscKind& QorRscLight::Kind() {
    using Self = QorRscLight;
    static const auto* kind =
        new QorRscKind{"light", "Light", false, &QorCreateObject<Self>,
                       QorAttributeTable{QorMakeAttribute<&Self::IsActive, &Self::SetActive>(
                                             "Active", QorAttributeRule::Any(), "IsActive"),
                                         QorRscLightAttributes(QorPairRow)}};
    return *kind;
}
