#pragma once

#include "workbench/automation/Json.h"
#include "workbench/automation/methods/ViewerAddress.h"

namespace qor::automation {

/// What viewer.list tells of a viewer: path, kind, width, height.
[[nodiscard]] Json readViewerBriefly(const NamedViewer& named);
/// What viewer.get tells of it.
[[nodiscard]] Json readViewer(const NamedViewer& named);

} // namespace qor::automation
