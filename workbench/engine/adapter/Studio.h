#pragma once

#include "workbench/engine/core/Camera.h"
#include "workbench/engine/core/Scene.h"

namespace qor::adapter {

/// The neutral room that a product is photographed in: bright walls, a darker floor, a large soft
/// box over the photographer's left shoulder, a strip to the right, one behind the product. Metals
/// and glass need it to look like themselves; all other surfaces get the ambient light from it,
/// with darker corners. Its mean over all directions is \p radiance. It turns with the camera
/// around \p vertical, as the room of a turntable seems to.
engine::Environment
studio(const engine::Color& radiance, const engine::Vec3& vertical, const engine::Camera& camera);

} // namespace qor::adapter
