#pragma once

#include "workbench/document/product/Product.h"
#include "workbench/engine/adapter/SceneRecipe.h"

#include <functional>
#include <string>

namespace qor::render {

/// Whether the file that \p product came from brings light: lights, surroundings, or a material of
/// \p recipe that shines.
bool hasOwnLight(const document::Product& product, const adapter::SceneRecipe& recipe);

/// Lights \p recipe with that alone, in physical units; the surroundings are the background. Lights
/// that make no sense are left out: \p warn is told why.
void useOwnLight(const document::Product& product,
                 adapter::SceneRecipe& recipe,
                 const std::function<void(const std::string& text)>& warn);

} // namespace qor::render
