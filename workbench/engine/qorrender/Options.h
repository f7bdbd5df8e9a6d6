#pragma once

#include "workbench/document/product/Product.h"
#include "workbench/engine/core/RenderOptions.h"
#include "workbench/engine/qorrender/Request.h"

namespace qor::render {

/// The engine's options: the level of quality, then the work that the file asks for, then what the
/// command line says.
engine::RenderOptions makeOptions(const Request& request, const document::RenderWork& work);

} // namespace qor::render
