#pragma once

#include <TopoDS_Shape.hxx>

#include <utility>
#include <vector>

namespace qor::sample {

/// Solids that the sample is made of. Millimetres. Lens parts stand on the plane y = 0 and grow
/// towards the photographed subject, which is along -y; dials stand on z = 0 and grow upwards.

/// A profile of (radius, height) corners turned around the z axis. Sharp corners.
using Profile = std::vector<std::pair<double, double>>;
[[nodiscard]] TopoDS_Shape turned(const Profile& profile);

/// A box of that size centred on x and y, on z = 0, its upright edges rounded by \p radius and
/// those of top and bottom by \p edge (0: sharp).
[[nodiscard]] TopoDS_Shape roundedBox(double x, double y, double z, double radius, double edge);

/// A cylinder on z = 0 with \p teeth grooves of \p depth around it and a small chamfer above.
[[nodiscard]] TopoDS_Shape knurledDisc(double radius, double height, int teeth, double depth);

/// The same with a hole through it.
[[nodiscard]] TopoDS_Shape
knurledRing(double radius, double inner, double height, int teeth, double depth);

/// A lens on z = 0: a cylinder of \p rim millimetres below a cap that rises by \p rise.
[[nodiscard]] TopoDS_Shape lens(double radius, double rim, double rise);

[[nodiscard]] TopoDS_Shape cylinder(double radius, double height);
[[nodiscard]] TopoDS_Shape torus(double radius, double thickness);
[[nodiscard]] TopoDS_Shape moved(const TopoDS_Shape& shape, double x, double y, double z);
/// z becomes -y: what stood upright looks at the subject.
[[nodiscard]] TopoDS_Shape facingFront(const TopoDS_Shape& shape);
[[nodiscard]] TopoDS_Shape facingBack(const TopoDS_Shape& shape);
[[nodiscard]] TopoDS_Shape without(const TopoDS_Shape& shape, const TopoDS_Shape& tool);
[[nodiscard]] TopoDS_Shape joined(const TopoDS_Shape& one, const TopoDS_Shape& other);
/// All edges broken by a fillet of \p radius; the shape as it was where that cannot be done.
[[nodiscard]] TopoDS_Shape softened(const TopoDS_Shape& shape, double radius);

} // namespace qor::sample
