#pragma once

#include "workbench/document/product/Product.h"
#include "workbench/engine/core/Camera.h"
#include "workbench/engine/qorrender/Request.h"

namespace qor::render {

/// The camera: what \p request says, else the file's first camera, else an isometric view of the
/// whole product, fitted to a picture of that \p aspect (width by height). Throws Failure when
/// there is nothing to fit a view to.
engine::Camera
makeCamera(const document::Product& product, const ViewRequest& request, double aspect);

} // namespace qor::render
