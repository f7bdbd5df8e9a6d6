#include "platform/scene/QorRscCamera.h"

QorImplementClass(QorRscCamera, QorRscObject)

namespace {

constexpr const char* perspective = "perspective";
constexpr const char* parallel = "parallel";

} // namespace

const QorRscKind& QorRscCamera::Kind() {
    using Self = QorRscCamera;
    static const auto* kind = new QorRscKind{"camera", "Camera", false, &QorCreateObject<Self>,
                                             QorAttributeTable{QorRscCameraAttributes(QorPairRow)}};
    return *kind;
}

QorView QorRscCamera::GetView() const {
    return {.eye = GetEye(),
            .target = GetTarget(),
            .up = GetUp(),
            .fieldOfView = GetFieldOfView(),
            .projection = GetProjection() == parallel ? Qor3DViewpoint::Projection::Parallel
                                                      : Qor3DViewpoint::Projection::Perspective};
}

QorResult QorRscCamera::SetView(const QorView& iView) {
    const bool isParallel = iView.projection == Qor3DViewpoint::Projection::Parallel;
    const bool isTaken = Takes("Eye", iView.eye) && Takes("Target", iView.target) &&
                         Takes("Up", iView.up) && Takes("FieldOfView", iView.fieldOfView);
    if (!isTaken)
        return E_FAIL;
    SetEye(iView.eye);
    SetTarget(iView.target);
    SetUp(iView.up);
    SetFieldOfView(iView.fieldOfView);
    return SetProjection(isParallel ? parallel : perspective);
}
