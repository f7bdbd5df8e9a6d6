#include "platform/scene/QorRscEnvironment.h"

QorImplementClass(QorRscEnvironment, QorRscObject)

const QorRscKind& QorRscEnvironment::Kind() {
    using Self = QorRscEnvironment;
    static const auto* kind =
        new QorRscKind{"environment", "Environment", false, &QorCreateObject<Self>,
                       QorAttributeTable{QorMakeAttribute<&Self::IsActive, &Self::SetActive>(
                                             "Active", QorAttributeRule::Any(), "IsActive"),
                                         QorRscEnvironmentAttributes(QorPairRow)}};
    return *kind;
}
