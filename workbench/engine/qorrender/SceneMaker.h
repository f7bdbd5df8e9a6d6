#pragma once

#include "workbench/engine/adapter/SceneRecipe.h"
#include "workbench/engine/qorrender/Progress.h"
#include "workbench/engine/qorrender/Request.h"
#include "workbench/engine/qorrender/Stage.h"

namespace qor::render {

/// What the engine is to render: \p product on \p stage, seen by \p camera, with the room that \p
/// options want. The light that the file brings is the only one there is, unless \p request
/// names a scene, and is traced to the last speckle; else \p options become those of the viewer's
/// renders. What is squeezed flat is left out, with a warning.
adapter::SceneRecipe makeRecipe(document::Product product,
                                const engine::Camera& camera,
                                engine::RenderOptions& options,
                                Stage& stage,
                                const Request& request,
                                Progress& progress);

/// The engine's scene of it. Throws Failure when the engine refuses a mesh or a picture.
engine::Scene makeScene(adapter::SceneRecipe recipe);

} // namespace qor::render
