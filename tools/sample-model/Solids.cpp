#include "tools/sample-model/Solids.h"

#include <BRepAlgoAPI_Cut.hxx>
#include <BRepAlgoAPI_Fuse.hxx>
#include <BRepBuilderAPI_MakeEdge.hxx>
#include <BRepBuilderAPI_MakeFace.hxx>
#include <BRepBuilderAPI_MakePolygon.hxx>
#include <BRepBuilderAPI_MakeWire.hxx>
#include <BRepBuilderAPI_Transform.hxx>
#include <BRepFilletAPI_MakeFillet.hxx>
#include <BRepPrimAPI_MakeBox.hxx>
#include <BRepPrimAPI_MakeCylinder.hxx>
#include <BRepPrimAPI_MakePrism.hxx>
#include <BRepPrimAPI_MakeRevol.hxx>
#include <BRepPrimAPI_MakeTorus.hxx>
#include <BRep_Tool.hxx>
#include <GC_MakeArcOfCircle.hxx>
#include <Standard_Failure.hxx>
#include <TopExp.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <gp_Trsf.hxx>

#include <cmath>
#include <numbers>

namespace qor::sample {

namespace {

const gp_Ax1 upright(gp_Pnt(0, 0, 0), gp_Dir(0, 0, 1));

TopoDS_Shape transformed(const TopoDS_Shape& shape, const gp_Trsf& trsf) {
    return BRepBuilderAPI_Transform(shape, trsf, true).Shape();
}

TopoDS_Shape revolved(const TopoDS_Wire& wire) {
    return BRepPrimAPI_MakeRevol(BRepBuilderAPI_MakeFace(wire).Face(), upright).Shape();
}

bool isUpright(const TopoDS_Edge& edge) {
    const gp_Pnt a = BRep_Tool::Pnt(TopExp::FirstVertex(edge));
    const gp_Pnt b = BRep_Tool::Pnt(TopExp::LastVertex(edge));
    return std::abs(a.Z() - b.Z()) > 1e-6;
}

template <typename Wanted>
TopoDS_Shape filleted(const TopoDS_Shape& shape, double radius, const Wanted& wanted) {
    BRepFilletAPI_MakeFillet fillet(shape);
    for (TopExp_Explorer edge(shape, TopAbs_EDGE); edge.More(); edge.Next())
        if (wanted(TopoDS::Edge(edge.Current())))
            fillet.Add(radius, TopoDS::Edge(edge.Current()));
    return fillet.Shape();
}

/// A gear-like outline: flat teeth with notches between them.
TopoDS_Face knurledFace(double radius, int teeth, double depth) {
    BRepBuilderAPI_MakePolygon outline;
    for (int tooth = 0; tooth < teeth; ++tooth)
        for (const auto& [turn, inwards] : {std::pair{-0.3, 0.0}, {0.3, 0.0}, {0.5, depth}}) {
            const double angle = 2 * std::numbers::pi * (tooth + turn) / teeth;
            outline.Add(gp_Pnt((radius - inwards) * std::cos(angle),
                               (radius - inwards) * std::sin(angle), 0));
        }
    outline.Close();
    return BRepBuilderAPI_MakeFace(outline.Wire()).Face();
}

} // namespace

TopoDS_Shape turned(const Profile& profile) {
    BRepBuilderAPI_MakePolygon outline;
    for (const auto& [radius, height] : profile)
        outline.Add(gp_Pnt(radius, 0, height));
    outline.Close();
    return revolved(outline.Wire());
}

TopoDS_Shape roundedBox(double x, double y, double z, double radius, double edge) {
    TopoDS_Shape box = BRepPrimAPI_MakeBox(gp_Pnt(-x / 2, -y / 2, 0), x, y, z).Shape();
    box = filleted(box, radius, isUpright);
    if (edge > 0)
        box = filleted(box, edge, [](const TopoDS_Edge& side) { return !isUpright(side); });
    return box;
}

TopoDS_Shape knurledDisc(double radius, double height, int teeth, double depth) {
    const double edge = 2 * depth;
    const TopoDS_Shape teethed =
        BRepPrimAPI_MakePrism(knurledFace(radius, teeth, depth), gp_Vec(0, 0, height - edge))
            .Shape();
    const TopoDS_Shape top = turned({{0, height - edge},
                                     {radius - depth, height - edge},
                                     {radius - depth, height - depth},
                                     {radius - 2 * depth, height},
                                     {0, height}});
    return joined(teethed, top);
}

TopoDS_Shape knurledRing(double radius, double inner, double height, int teeth, double depth) {
    return without(
        BRepPrimAPI_MakePrism(knurledFace(radius, teeth, depth), gp_Vec(0, 0, height)).Shape(),
        moved(cylinder(inner, height + 2), 0, 0, -1));
}

TopoDS_Shape lens(double radius, double rim, double rise) {
    const gp_Pnt axis(0, 0, 0), corner(radius, 0, 0), shoulder(radius, 0, rim),
        top(0, 0, rim + rise);
    const double sphere = (radius * radius + rise * rise) / (2 * rise);
    const double half = std::asin(radius / sphere) / 2;
    const gp_Pnt middle(sphere * std::sin(half), 0, rim + rise - sphere * (1 - std::cos(half)));
    BRepBuilderAPI_MakeWire outline(BRepBuilderAPI_MakeEdge(axis, corner).Edge(),
                                    BRepBuilderAPI_MakeEdge(corner, shoulder).Edge());
    outline.Add(BRepBuilderAPI_MakeEdge(GC_MakeArcOfCircle(shoulder, middle, top).Value()).Edge());
    outline.Add(BRepBuilderAPI_MakeEdge(top, axis).Edge());
    return revolved(outline.Wire());
}

TopoDS_Shape cylinder(double radius, double height) {
    return BRepPrimAPI_MakeCylinder(radius, height).Shape();
}

TopoDS_Shape torus(double radius, double thickness) {
    return BRepPrimAPI_MakeTorus(radius, thickness).Shape();
}

TopoDS_Shape moved(const TopoDS_Shape& shape, double x, double y, double z) {
    gp_Trsf trsf;
    trsf.SetTranslation(gp_Vec(x, y, z));
    return transformed(shape, trsf);
}

TopoDS_Shape facingFront(const TopoDS_Shape& shape) {
    gp_Trsf trsf;
    trsf.SetRotation(gp_Ax1(gp_Pnt(0, 0, 0), gp_Dir(1, 0, 0)), std::numbers::pi / 2);
    return transformed(shape, trsf);
}

TopoDS_Shape facingBack(const TopoDS_Shape& shape) {
    gp_Trsf trsf;
    trsf.SetRotation(gp_Ax1(gp_Pnt(0, 0, 0), gp_Dir(1, 0, 0)), -std::numbers::pi / 2);
    return transformed(shape, trsf);
}

TopoDS_Shape without(const TopoDS_Shape& shape, const TopoDS_Shape& tool) {
    return BRepAlgoAPI_Cut(shape, tool).Shape();
}

TopoDS_Shape joined(const TopoDS_Shape& one, const TopoDS_Shape& other) {
    BRepAlgoAPI_Fuse fuse(one, other);
    fuse.SimplifyResult();
    return fuse.Shape();
}

TopoDS_Shape softened(const TopoDS_Shape& shape, double radius) {
    try {
        return filleted(shape, radius, [](const TopoDS_Edge&) { return true; });
    } catch (const Standard_Failure&) {
        return shape;
    }
}

} // namespace qor::sample
