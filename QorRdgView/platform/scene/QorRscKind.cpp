#include "platform/scene/QorRscKind.h"

#include "platform/scene/QorRscCamera.h"
#include "platform/scene/QorRscEnvironment.h"
#include "platform/scene/QorRscLight.h"
#include "platform/scene/QorRscMaterial.h"
#include "platform/scene/QorRscShooting.h"

#include <algorithm>

namespace {

/// Those of this room, then those of rooms above; shootings, which refer to all, come last.
std::vector<const QorRscKind*>& Registered() {
    static auto* kinds = new std::vector<const QorRscKind*>{
        &QorRscMaterial::Kind(), &QorRscCamera::Kind(), &QorRscLight::Kind(),
        &QorRscEnvironment::Kind(), &QorRscShooting::Kind()};
    return *kinds;
}

} // namespace

const QorRscKind* QorRscKind::Find(const QorString& iName) {
    const auto& kinds = Registered();
    const auto found = std::ranges::find(kinds, iName, &QorRscKind::name);
    return found != kinds.end() ? *found : nullptr;
}

std::vector<const QorRscKind*> QorRscKind::GetAll() {
    return Registered();
}

void QorRscKind::Register(const QorRscKind& iKind) {
    if (Find(iKind.name) == nullptr)
        Registered().insert(Registered().end() - 1, &iKind);
}

const QorAttribute* QorRscKind::FindAttribute(const QorString& iName) const {
    const auto found = std::ranges::find_if(
        attributes, [&](const QorAttribute& iAttribute) { return iAttribute.IsCalled(iName); });
    return found != attributes.end() ? &*found : nullptr;
}

QorAttributeValue QorRscKind::GetDefault(const QorAttribute& iAttribute) const {
    return iAttribute.get(*QorAdopt(create()));
}
