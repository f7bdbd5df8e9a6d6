#pragma once

#include "workbench/document/product/Product.h"
#include "workbench/engine/core/Camera.h"
#include "workbench/engine/core/Scene.h"

namespace qor::render {

/// Gives \p scene the lights and surroundings of \p product; a plain studio that follows \p camera
/// when it has none and nothing in it shines.
void addLight(engine::Scene& scene, const document::Product& product, const engine::Camera& camera);

} // namespace qor::render
