#pragma once

#include "workbench/document/product/Product.h"
#include "workbench/import/model/ImportReport.h"
#include "workbench/import/model/ImportSettings.h"
#include "workbench/import/shape/FaceStyles.h"

#include <TopoDS_Shape.hxx>

#include <functional>

namespace qor::import {

/// Gives the index of the material for a colour of the file.
using MaterialOf = std::function<std::int32_t(const Quantity_ColorRGBA&)>;

/// Triangles of \p part, whose faces belong to \p shape: one vertex run a face with normals of its
/// surface, faces grouped by colour, and the lines where faces meet. Empty if nothing could be
/// meshed.
[[nodiscard]] document::Mesh tessellate(const TopoDS_Shape& shape,
                                        const StyledPart& part,
                                        const ImportSettings& settings,
                                        const MaterialOf& materialOf,
                                        ImportReport& report);

} // namespace qor::import
