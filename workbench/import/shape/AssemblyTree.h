#pragma once

#include "workbench/document/product/Product.h"
#include "workbench/import/model/ImportReport.h"
#include "workbench/import/model/ImportSettings.h"
#include "workbench/import/shape/ShapeDocument.h"

namespace qor::import {

/// Turns a shape document into a product: every part tessellated once, every occurrence a node,
/// colours as materials. Takes the stage "mesh". Throws ImportError.
[[nodiscard]] document::Product productOf(const ShapeDocument& shapes,
                                          const ImportSettings& settings,
                                          const std::string& fallbackName,
                                          ImportReport& report);

} // namespace qor::import
