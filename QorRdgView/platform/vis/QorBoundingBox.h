#pragma once

#include "platform/vis/QorMath.h"

#include <limits>

/// Smallest and largest coordinates of something in space; empty until something is added.
struct Qor3DBoundingBox {
    QorMathPoint low{infinite, infinite, infinite};
    QorMathPoint high{-infinite, -infinite, -infinite};

    [[nodiscard]] bool IsEmpty() const { return low.x > high.x; }

    /// Points that are no numbers are left out.
    void Add(const QorMathPoint& iPoint);
    void Add(const Qor3DBoundingBox& iBox);

    [[nodiscard]] QorMathPoint Center() const { return (low + high) * 0.5; }

    [[nodiscard]] QorMathVector Extent() const { return IsEmpty() ? QorMathVector{} : high - low; }

    /// The box around this one's eight corners.
    [[nodiscard]] Qor3DBoundingBox Transformed(const QorMathTransformation& iBy) const;

private:
    static constexpr double infinite = std::numeric_limits<double>::infinity();
};

/// The same in the plane.
struct Qor2DBoundingBox {
    QorMathPoint2D low{infinite, infinite};
    QorMathPoint2D high{-infinite, -infinite};

    [[nodiscard]] bool IsEmpty() const { return low.x > high.x; }

    void Add(const QorMathPoint2D& iPoint);
    void Add(const Qor2DBoundingBox& iBox);

    [[nodiscard]] bool Holds(const QorMathPoint2D& iPoint) const {
        return iPoint.x >= low.x && iPoint.x <= high.x && iPoint.y >= low.y && iPoint.y <= high.y;
    }

private:
    static constexpr double infinite = std::numeric_limits<double>::infinity();
};
