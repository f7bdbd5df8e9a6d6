#pragma once

#include "platform/engine/QorIRdgOptions.h"
#include "platform/engine/QorRdgEngine.h"
#include "workbench/engine/core/RenderOptions.h"

namespace qor::adapter {

/// The engine's options for \p request; what its options object does not answer keeps the engine's
/// own values. User-interface thread.
engine::RenderOptions translateOptions(const QorRdgRequest& request);

/// The part of them that an options object says, put into \p to.
void applyOptions(QorIRdgOptions& from, engine::RenderOptions& to);

} // namespace qor::adapter
