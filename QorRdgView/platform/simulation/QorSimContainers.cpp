#include "platform/simulation/QorSimContainers.h"

#include "platform/simulation/QorSimExperiment.h"
#include "platform/simulation/QorSimSequence.h"
#include "platform/simulation/QorSimTrack.h"

#include <array>

namespace {

struct Container {
    const char* name;
    const QorRscKind& (*kind)();
};

constexpr std::array<Container, 3> containers{{
    {"QorSiFiTrackCont", &QorSimTrack::Kind},
    {"SIMSequenceContainer", &QorSimSequence::Kind},
    {"QorSimExperimentCont", &QorSimExperiment::Kind},
}};

/// Where the whole library is loaded, the kinds are known from the start.
[[maybe_unused]] const bool registered = (QorSimRegisterKinds(), true);

} // namespace

void QorSimRegisterKinds() {
    for (const Container& container : containers)
        QorRscKind::Register(container.kind());
}

QorRscObjects QorSimListContainer(QorDocument* iDocument, const QorString& iName) {
    const QorRscContainer* objects = QorRscContainer::Of(iDocument);
    if (objects == nullptr)
        return {};
    for (const Container& container : containers)
        if (iName == container.name)
            return objects->ListObjects(container.kind().name);
    return {};
}
