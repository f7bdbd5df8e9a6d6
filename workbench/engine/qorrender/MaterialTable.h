#pragma once

#include "workbench/document/product/Product.h"
#include "workbench/engine/core/Material.h"

#include <vector>

namespace qor::render {

/// The engine's materials for those of \p product, in the same order, and one more at the end for
/// what has none.
std::vector<engine::Material> makeMaterials(const document::Product& product);

} // namespace qor::render
