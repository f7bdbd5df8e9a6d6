#pragma once

#include "workbench/document/product/Product.h"
#include "workbench/document/product/Result.h"
#include "workbench/import/model/ImportReport.h"
#include "workbench/import/model/ImportSettings.h"

#include <filesystem>

namespace qor::import {

/// Reads a model file of any supported format. What comes back has passed document::findFault and
/// is of a size that a product can have. A failure's text names the file. What Open CASCADE and
/// Assimp throw ends here; what they crash on ends the process, which is why this runs in one of
/// its own.
[[nodiscard]] document::Result<document::Product>
readModel(const std::filesystem::path& file, const ImportSettings& settings, ImportReport& report);

} // namespace qor::import
