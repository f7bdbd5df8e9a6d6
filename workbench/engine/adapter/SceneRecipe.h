#pragma once

#include "platform/engine/QorIRdgWorld.h"
#include "workbench/engine/adapter/MaterialRecipe.h"
#include "workbench/engine/core/Camera.h"
#include "workbench/engine/core/RenderOptions.h"
#include "workbench/engine/core/Scene.h"

#include <optional>

namespace qor::adapter {

/// One appearance of a mesh.
struct InstanceRecipe {
    std::uint64_t meshId = 0; ///< content id
    std::shared_ptr<const QorMesh::Data> mesh;
    engine::Transform transform;
    std::uint32_t material = 0; ///< in SceneRecipe::materials
    bool highlighted = false;
};

/// A snapshot as a worker needs it to make the engine's scene: plain values and shared arrays, no
/// counted object, so that whoever lets go of it last may do so on any thread.
struct SceneRecipe {
    std::vector<InstanceRecipe> instances;
    std::vector<MaterialRecipe> materials; ///< each once, in the order of their first use
    engine::Scene scene; ///< all but the assembly, the materials and the background's picture
    PictureRecipe background;
    engine::Color ambient; ///< what surfaces scatter of the room
    engine::Color lamps;   ///< how much brighter it is where it is mirrored
    engine::Vec3 vertical{0.0F, 0.0F, 1.0F};
    std::size_t squeezed = 0; ///< instances left out because their matrix is singular
    engine::Camera camera;
};

/// User-interface thread: one step an instance, no pixel and no vertex is touched. What squeezes a
/// mesh flat or has no triangle is left out.
SceneRecipe sceneRecipe(const QorRdgSnapshot& snapshot);

/// Puts the room around \p recipe, as \p options want it. With final gathering the ambient light
/// comes from the room, so corners are darker; without, it is the same everywhere and without
/// noise.
void addRoom(SceneRecipe& recipe, const engine::RenderOptions& options);

/// The camera alone; nothing when it makes no picture.
std::optional<engine::Camera> cameraOf(const QorRdgCamera& from);

} // namespace qor::adapter
