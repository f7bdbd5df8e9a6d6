#pragma once

#include <TDF_Label.hxx>
#include <TopoDS_Face.hxx>

#include <Quantity_ColorRGBA.hxx>

#include <optional>
#include <vector>

namespace qor::import {

/// A face of a part with the colour that it or a shape around it has, if any but the whole part's.
struct StyledFace {
    TopoDS_Face face;
    std::optional<Quantity_ColorRGBA> color;
};

/// Faces of a part in the order of the shape, hidden ones left out, and the colour of the part as a
/// whole.
struct StyledPart {
    std::vector<StyledFace> faces;
    std::optional<Quantity_ColorRGBA> color;
};

/// Collects the faces of the part at \p label, which stands for a simple shape.
[[nodiscard]] StyledPart styledFaces(const TDF_Label& label);

} // namespace qor::import
