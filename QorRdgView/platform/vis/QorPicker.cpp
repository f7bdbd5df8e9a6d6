#include "platform/vis/QorPicker.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace {

/// A handle for a pick path: whoever picks may change what was picked, as it is not the tree's to
/// protect.
template <class Rep>
QorVar<QorRep> Handle(const Rep& iRep) {
    return const_cast<Rep*>(&iRep); // NOLINT(cppcoreguidelines-pro-type-const-cast)
}

class Picker2D : public QorRepVisitor2D {
public:
    Picker2D(const QorMathPoint2D& iPoint, double iTolerance)
        : point(iPoint), tolerance(iTolerance) {}

    void Visit(const Qor2DBagRep& iRep) override {
        if (!iRep.IsShown() || !iRep.IsPickable())
            return;
        const std::array<double, 4>& m = iRep.GetLinear();
        const double determinant = m[0] * m[3] - m[1] * m[2];
        if (determinant == 0.0)
            return;
        const QorMathPoint2D outer = point;
        const double outerTolerance = tolerance;
        const QorMathPoint2D moved = point - iRep.GetTranslation();
        point = {(m[3] * moved.x - m[2] * moved.y) / determinant,
                 (m[0] * moved.y - m[1] * moved.x) / determinant};
        tolerance /= std::sqrt(std::abs(determinant));
        path.push_back(Handle(iRep));
        for (const Qor2DRep_var& child : iRep.GetChildren())
            child->Accept(*this);
        path.pop_back();
        point = outer;
        tolerance = outerTolerance;
    }

    void Visit(const Qor2DLineRep& iRep) override { Leaf(iRep); }

    void Visit(const Qor2DPointRep& iRep) override { Leaf(iRep); }

    void Visit(const Qor2DImagePixelRep& iRep) override { Leaf(iRep); }

    void Visit(const Qor2DCustomRep& iRep) override { Leaf(iRep); }

    QorPickPath hit;

private:
    template <class Rep>
    void Leaf(const Rep& iRep) {
        Qor2DBoundingBox box = iRep.GetBoundingBox();
        if (!iRep.IsShown() || !iRep.IsPickable() || box.IsEmpty())
            return;
        box.low = box.low - QorMathPoint2D{tolerance, tolerance};
        box.high = box.high + QorMathPoint2D{tolerance, tolerance};
        if (!box.Holds(point))
            return;
        hit = path; // what is drawn later lies above
        hit.push_back(Handle(iRep));
    }

    QorMathPoint2D point;
    double tolerance;
    QorPickPath path;
};

/// Narrows the way along a ray, from \p ioNear to \p ioFar, to what lies between two planes across
/// an axis.
void Narrow(
    double iOrigin, double iDirection, double iLow, double iHigh, double& ioNear, double& ioFar) {
    if (iDirection == 0.0) {
        if (iOrigin < iLow || iOrigin > iHigh)
            ioFar = -1.0;
        return;
    }
    const double first = (iLow - iOrigin) / iDirection;
    const double second = (iHigh - iOrigin) / iDirection;
    ioNear = std::max(ioNear, std::min(first, second));
    ioFar = std::min(ioFar, std::max(first, second));
}

/// Where a ray comes into a box, in multiples of its direction; negative when it misses it or comes
/// to it beyond \p iFarthest.
double Enter(const Qor3DBoundingBox& iBox, const QorMathRay& iRay, double iFarthest) {
    // A plate that was turned may lie a rounding beside the box that was turned.
    const QorMathVector extent = iBox.Extent();
    const double room = 1.0e-9 * (extent.x + extent.y + extent.z);
    const QorMathPoint low = iBox.low - QorMathVector{room, room, room};
    const QorMathPoint high = iBox.high + QorMathVector{room, room, room};
    double near = 0.0;
    double far = iFarthest;
    Narrow(iRay.origin.x, iRay.direction.x, low.x, high.x, near, far);
    Narrow(iRay.origin.y, iRay.direction.y, low.y, high.y, near, far);
    Narrow(iRay.origin.z, iRay.direction.z, low.z, high.z, near, far);
    return near <= far ? near : -1.0;
}

class Picker3D : public QorRepVisitor3D {
public:
    Picker3D(const QorMathRay& iRay, double iFarthest) : ray(iRay), farthest(iFarthest) {}

    void Visit(const Qor3DBagRep& iRep) override {
        if (!iRep.IsShown() || !iRep.IsPickable() || iRep.GetMatrix().Determinant() == 0.0)
            return;
        const QorMathRay outer = ray;
        const QorMathTransformation inverse = iRep.GetMatrix().Inverse();
        // The direction keeps its stretched length, so that distances stay those of the outermost
        // space.
        ray = {inverse.Apply(outer.origin), inverse.ApplyToVector(outer.direction)};
        path.push_back(Handle(iRep));
        VisitFromNearToFar(iRep.GetChildren());
        path.pop_back();
        ray = outer;
    }

    void Visit(const Qor3DMeshRep& iRep) override {
        if (iRep.IsShown() && iRep.IsPickable())
            Leaf(iRep, iRep.GetMesh()->Intersect(ray, farthest));
    }

    void Visit(const Qor3DLineRep& /*iRep*/) override {}

    void Visit(const Qor3DLightSourceRep& /*iRep*/) override {}

    void Visit(const QorRsc3DGroundRep& iRep) override {
        const double slope = ray.direction * iRep.GetVertical();
        if (!iRep.IsShown() || !iRep.IsPickable() || slope == 0.0)
            return;
        const double distance = ((iRep.GetOrigin() - ray.origin) * iRep.GetVertical()) / slope;
        const QorMathTransformation frame = QorMathTransformation::FromZTo(iRep.GetVertical());
        const QorMathVector offset = ray.origin + ray.direction * distance - iRep.GetOrigin();
        const double half = 0.5 * iRep.GetSize();
        if (std::abs(offset * frame.axes[0]) <= half && std::abs(offset * frame.axes[1]) <= half)
            Leaf(iRep, distance);
    }

    QorPicker::Hit hit;

private:
    /// Visits those whose boxes the ray meets, as long as nothing nearer has been hit.
    void VisitFromNearToFar(const std::vector<Qor3DRep_var>& iChildren) {
        std::vector<std::pair<double, const Qor3DRep*>> met;
        for (const Qor3DRep_var& child : iChildren) {
            const double enters = Enter(child->GetBoundingBox(), ray, farthest);
            if (enters >= 0.0)
                met.emplace_back(enters, child.Get());
        }
        std::sort(met.begin(), met.end());
        for (const auto& [enters, child] : met)
            if (enters <= farthest)
                child->Accept(*this);
    }

    template <class Rep>
    void Leaf(const Rep& iRep, double iDistance) {
        if (!(iDistance >= 0.0) || !(iDistance < farthest))
            return;
        farthest = iDistance;
        hit.path = path;
        hit.path.push_back(Handle(iRep));
        hit.distance = iDistance;
    }

    QorMathRay ray;
    double farthest;
    QorPickPath path;
};

} // namespace

QorPickPath
QorPicker::Pick(const Qor2DRep& iRoot, const QorMathPoint2D& iPoint, double iTolerance) {
    Picker2D picker(iPoint, iTolerance);
    iRoot.Accept(picker);
    return std::move(picker.hit);
}

QorPicker::Hit QorPicker::Pick(const Qor3DRep& iRoot, const QorMathRay& iRay, double iFarthest) {
    Picker3D picker(iRay, iFarthest);
    iRoot.Accept(picker);
    return std::move(picker.hit);
}
