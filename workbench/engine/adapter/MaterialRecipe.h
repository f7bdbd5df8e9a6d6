#pragma once

#include "platform/vis/QorGraphicMaterial.h"
#include "workbench/engine/adapter/PictureRecipe.h"
#include "workbench/engine/core/Material.h"

#include <vector>

namespace qor::adapter {

/// A material of the engine, and the pictures that are still to be put into its textures.
struct MaterialRecipe {
    struct Slot {
        engine::Texture engine::Material::*texture;
        PictureRecipe picture;
    };

    engine::Material material;
    std::vector<Slot> slots;
};

/// User-interface thread; copies no pixels. Null gives the engine's own grey. Numbers that are none
/// or out of range are brought to the nearest that the engine accepts.
MaterialRecipe materialRecipe(const QorGraphicMaterial* material);

} // namespace qor::adapter
