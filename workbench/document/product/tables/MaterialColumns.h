#pragma once

#include "workbench/document/product/Material.h"

#include <span>

namespace qor::document::tables {

/// A number of a material and the column that holds it.
struct MaterialColumn {
    const char* name;
    double& (*value)(Material&);
};

[[nodiscard]] std::span<const MaterialColumn> materialColumns();

/// Names of TextureSlot, in its order.
[[nodiscard]] std::span<const char* const> textureSlotNames();

} // namespace qor::document::tables
