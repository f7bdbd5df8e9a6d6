#include "workbench/import/shape/FaceStyles.h"

#include <TopoDS.hxx>
#include <TopoDS_Iterator.hxx>
#include <XCAFDoc_ShapeTool.hxx>
#include <XCAFPrs.hxx>
#include <XCAFPrs_IndexedDataMapOfShapeStyle.hxx>
#include <XCAFPrs_Style.hxx>

namespace qor::import {

namespace {

// Walks a shape down to its faces and hands the nearest style on the way to each.
class StyleWalk {
public:
    StyleWalk(const XCAFPrs_IndexedDataMapOfShapeStyle& styles, StyledPart& part)
        : styles_(styles), part_(part) {}

    void walk(const TopoDS_Shape& shape, std::optional<Quantity_ColorRGBA> color) {
        if (const XCAFPrs_Style* style = styles_.Seek(shape)) {
            if (!style->IsVisible())
                return;
            if (style->IsSetColorSurf())
                color = style->GetColorSurfRGBA();
        }
        descend(shape, color);
    }

    // As walk(), with the shape's own style left out.
    void descend(const TopoDS_Shape& shape, const std::optional<Quantity_ColorRGBA>& color) {
        if (shape.ShapeType() == TopAbs_FACE) {
            part_.faces.push_back({TopoDS::Face(shape), color});
            return;
        }
        if (shape.ShapeType() > TopAbs_FACE)
            return;
        for (TopoDS_Iterator child(shape); child.More(); child.Next())
            walk(child.Value(), color);
    }

private:
    const XCAFPrs_IndexedDataMapOfShapeStyle& styles_;
    StyledPart& part_;
};

} // namespace

StyledPart styledFaces(const TDF_Label& label) {
    XCAFPrs_IndexedDataMapOfShapeStyle styles;
    XCAFPrs::CollectStyleSettings(label, TopLoc_Location(), styles);
    const TopoDS_Shape shape = XCAFDoc_ShapeTool::GetShape(label);
    StyledPart part;
    if (shape.IsNull())
        return part;
    StyleWalk walk(styles, part);
    const XCAFPrs_Style* whole = styles.Seek(shape);
    if (whole != nullptr && whole->IsSetColorSurf())
        part.color = whole->GetColorSurfRGBA();
    // A single face that is the whole part, too, has the part's colour, so that an instance may
    // recolour it.
    walk.descend(shape, std::nullopt);
    return part;
}

} // namespace qor::import
