#pragma once

#include "workbench/document/product/Product.h"
#include "workbench/engine/core/Scene.h"
#include "workbench/engine/qorrender/Progress.h"

namespace qor::render {

/// The objects and materials of \p product as the engine takes them, without any light. Instances
/// that are hidden, or squeezed flat, are left out; the latter with a warning. Throws Failure when
/// the engine refuses a mesh or a picture.
engine::Scene makeScene(const document::Product& product, Progress& progress);

} // namespace qor::render
