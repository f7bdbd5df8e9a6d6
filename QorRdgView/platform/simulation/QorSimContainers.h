#pragma once

#include "platform/scene/QorRscContainer.h"

/// Adds the kinds "experiment", "track" and "sequence" to those that documents hold. The library
/// does so when it is loaded; who links this room alone calls it. Again changes nothing.
void QorSimRegisterKinds();

/// What the container of that name in \p iDocument holds, counted from 1: "QorSimExperimentCont"
/// (experiments), "QorSiFiTrackCont" (tracks), "SIMSequenceContainer" (sequences). Empty for other
/// names and for no document.
[[nodiscard]] QorRscObjects QorSimListContainer(QorDocument* iDocument, const QorString& iName);
