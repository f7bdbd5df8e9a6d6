#pragma once

#include "workbench/document/product/Mesh.h"
#include "workbench/import/model/ImportReport.h"

#include <Poly_Triangulation.hxx>
#include <TopTools_MapOfShape.hxx>
#include <TopoDS_Face.hxx>
#include <gp_Trsf.hxx>

namespace qor::import {

/// Copies the triangulations of faces into one mesh.
class FaceTriangles {
public:
    /// Both must outlive this object.
    FaceTriangles(document::Mesh& mesh, ImportReport& report) : mesh_(mesh), report_(report) {}

    /// Appends vertices, triangles and edges of \p face; counts it as missing if it has no
    /// triangles.
    void append(const TopoDS_Face& face);

    [[nodiscard]] int missing() const { return missing_; }

private:
    void appendVertices(const Poly_Triangulation& triangles, const gp_Trsf& place, bool reversed);
    void appendTriangles(const Poly_Triangulation& triangles, std::uint32_t first, bool flipped);
    void appendEdges(const TopoDS_Face& face,
                     const Handle(Poly_Triangulation) & triangles,
                     const TopLoc_Location& location,
                     std::uint32_t first);

    document::Mesh& mesh_;
    ImportReport& report_;
    TopTools_MapOfShape edges_;
    int missing_ = 0;
};

} // namespace qor::import
