#pragma once

#include "platform/engine/QorIRdgOptions.h"
#include "platform/engine/QorRdgEngine.h"
#include "workbench/engine/core/RenderOptions.h"

namespace qor::adapter {

/// What a viewer's render gives up for a calm picture: see RenderOptions::brightestIndirect. Twice
/// white is white on the screen.
constexpr float calmBrightness = 2.0F;

/// The engine's options for \p request; what its options object does not answer keeps the engine's
/// own values. User-interface thread.
engine::RenderOptions translateOptions(const QorRdgRequest& request);

/// The part of them that an options object says, put into \p to.
void applyOptions(QorIRdgOptions& from, engine::RenderOptions& to);

} // namespace qor::adapter
