#pragma once

#include "workbench/document/product/Product.h"
#include "workbench/engine/qorrender/Progress.h"

#include <filesystem>

namespace qor::render {

/// Reads a document, or a model by way of qorimport and a document in a temporary folder. Throws
/// Failure with the file's name, or Interrupted; nothing is left behind then.
document::Product readInput(const std::filesystem::path& file, Progress& progress);

} // namespace qor::render
