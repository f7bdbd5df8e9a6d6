#include "workbench/import/shape/FaceTriangles.h"

#include <BRep_Tool.hxx>
#include <Poly_PolygonOnTriangulation.hxx>
#include <StdPrs_ToolTriangulatedShape.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Edge.hxx>

#include <cmath>

namespace qor::import {

namespace {

bool isFinite(const gp_Pnt& point) {
    return std::isfinite(point.X()) && std::isfinite(point.Y()) && std::isfinite(point.Z());
}

bool allFinite(const Poly_Triangulation& triangles) {
    for (Standard_Integer i = 1; i <= triangles.NbNodes(); ++i)
        if (!isFinite(triangles.Node(i)))
            return false;
    return true;
}

bool isDegenerate(Standard_Integer a, Standard_Integer b, Standard_Integer c) {
    return a == b || b == c || a == c;
}

} // namespace

void FaceTriangles::append(const TopoDS_Face& face) {
    TopLoc_Location location;
    const Handle(Poly_Triangulation)& triangles = BRep_Tool::Triangulation(face, location);
    if (triangles.IsNull() || triangles->NbTriangles() == 0 || !allFinite(*triangles)) {
        ++missing_;
        return;
    }
    report_.inLibrary([&] { StdPrs_ToolTriangulatedShape::ComputeNormals(face, triangles); });
    const gp_Trsf place = location.Transformation();
    const bool reversed = face.Orientation() == TopAbs_REVERSED;
    const auto first = static_cast<std::uint32_t>(mesh_.vertexCount());
    appendVertices(*triangles, place, reversed);
    appendTriangles(*triangles, first, reversed != static_cast<bool>(place.IsNegative()));
    appendEdges(face, triangles, location, first);
}

void FaceTriangles::appendVertices(const Poly_Triangulation& triangles,
                                   const gp_Trsf& place,
                                   bool reversed) {
    const float sign = reversed ? -1.F : 1.F;
    for (Standard_Integer i = 1; i <= triangles.NbNodes(); ++i) {
        const gp_Pnt point = triangles.Node(i).Transformed(place);
        gp_Vec normal(triangles.Normal(i).XYZ());
        normal.Transform(place);
        normal.Normalize();
        mesh_.positions.insert(mesh_.positions.end(),
                               {static_cast<float>(point.X()), static_cast<float>(point.Y()),
                                static_cast<float>(point.Z())});
        mesh_.normals.insert(mesh_.normals.end(), {sign * static_cast<float>(normal.X()),
                                                   sign * static_cast<float>(normal.Y()),
                                                   sign * static_cast<float>(normal.Z())});
    }
}

void FaceTriangles::appendTriangles(const Poly_Triangulation& triangles,
                                    std::uint32_t first,
                                    bool flipped) {
    for (Standard_Integer i = 1; i <= triangles.NbTriangles(); ++i) {
        Standard_Integer a = 0;
        Standard_Integer b = 0;
        Standard_Integer c = 0;
        triangles.Triangle(i).Get(a, b, c);
        if (isDegenerate(a, b, c))
            continue;
        if (flipped)
            std::swap(b, c);
        const auto index = [first](Standard_Integer node) {
            return first + static_cast<std::uint32_t>(node - 1);
        };
        mesh_.indices.insert(mesh_.indices.end(), {index(a), index(b), index(c)});
    }
}

void FaceTriangles::appendEdges(const TopoDS_Face& face,
                                const Handle(Poly_Triangulation) & triangles,
                                const TopLoc_Location& location,
                                std::uint32_t first) {
    for (TopExp_Explorer explorer(face, TopAbs_EDGE); explorer.More(); explorer.Next()) {
        const TopoDS_Edge& edge = TopoDS::Edge(explorer.Current());
        // The seam of a cylinder is no line that a person would draw.
        if (BRep_Tool::Degenerated(edge) || BRep_Tool::IsClosed(edge, face) || !edges_.Add(edge))
            continue;
        const Handle(Poly_PolygonOnTriangulation)& polygon =
            BRep_Tool::PolygonOnTriangulation(edge, triangles, location);
        for (Standard_Integer i = 1; !polygon.IsNull() && i < polygon->NbNodes(); ++i) {
            mesh_.edges.push_back(first + static_cast<std::uint32_t>(polygon->Node(i) - 1));
            mesh_.edges.push_back(first + static_cast<std::uint32_t>(polygon->Node(i + 1) - 1));
        }
    }
}

} // namespace qor::import
