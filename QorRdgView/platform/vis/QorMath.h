#pragma once

#include <array>

/// Points, vectors, directions and transformations of model space, in millimetres unless said
/// otherwise.

struct QorMathVector {
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;

    bool operator==(const QorMathVector&) const = default;

    QorMathVector operator+(const QorMathVector& iOther) const {
        return {x + iOther.x, y + iOther.y, z + iOther.z};
    }

    QorMathVector operator-(const QorMathVector& iOther) const {
        return {x - iOther.x, y - iOther.y, z - iOther.z};
    }

    QorMathVector operator-() const { return {-x, -y, -z}; }

    QorMathVector operator*(double iFactor) const {
        return {x * iFactor, y * iFactor, z * iFactor};
    }

    /// Dot product.
    double operator*(const QorMathVector& iOther) const {
        return x * iOther.x + y * iOther.y + z * iOther.z;
    }

    /// Cross product.
    QorMathVector operator^(const QorMathVector& iOther) const {
        return {y * iOther.z - z * iOther.y, z * iOther.x - x * iOther.z,
                x * iOther.y - y * iOther.x};
    }

    [[nodiscard]] double Norm() const;
    /// Of length 1; the zero vector and vectors that are no numbers give the zero vector, or \p
    /// iDefault.
    [[nodiscard]] QorMathVector Normalized() const;
    [[nodiscard]] QorMathVector NormalizedOr(const QorMathVector& iDefault) const;
};

/// A point is added to and subtracted from as a vector from the origin.
using QorMathPoint = QorMathVector;

struct QorMathPoint2D {
    double x = 0.0;
    double y = 0.0;

    bool operator==(const QorMathPoint2D&) const = default;

    QorMathPoint2D operator+(const QorMathPoint2D& iOther) const {
        return {x + iOther.x, y + iOther.y};
    }

    QorMathPoint2D operator-(const QorMathPoint2D& iOther) const {
        return {x - iOther.x, y - iOther.y};
    }
};

/// A line from a point along a direction of length 1.
struct QorMathRay {
    QorMathPoint origin;
    QorMathVector direction;
};

/// An affine transformation: three columns for the axes, one for the origin.
struct QorMathTransformation {
    std::array<QorMathVector, 3> axes{{{1.0, 0.0, 0.0}, {0.0, 1.0, 0.0}, {0.0, 0.0, 1.0}}};
    QorMathVector origin;

    bool operator==(const QorMathTransformation&) const = default;
    [[nodiscard]] QorMathPoint Apply(const QorMathPoint& iPoint) const;
    [[nodiscard]] QorMathVector ApplyToVector(const QorMathVector& iVector) const;
    /// First \p iInner, then this.
    [[nodiscard]] QorMathTransformation operator*(const QorMathTransformation& iInner) const;
    [[nodiscard]] double Determinant() const;
    /// The identity when it is singular.
    [[nodiscard]] QorMathTransformation Inverse() const;

    [[nodiscard]] static QorMathTransformation Translation(const QorMathVector& iBy);
    /// By \p iAngle radians about \p iAxis through the origin.
    [[nodiscard]] static QorMathTransformation Rotation(const QorMathVector& iAxis, double iAngle);
    /// The rotation that turns +Z to \p iDirection by the shortest way.
    [[nodiscard]] static QorMathTransformation FromZTo(const QorMathVector& iDirection);
};

/// A right-handed system of axes.
class QorMathAxis {
public:
    QorMathAxis() = default;

    /// The axes are taken as they are given.
    QorMathAxis(const QorMathPoint& iOrigin,
                const QorMathVector& iFirst,
                const QorMathVector& iSecond,
                const QorMathVector& iThird)
        : frame{{iFirst, iSecond, iThird}, iOrigin} {}

    explicit QorMathAxis(const QorMathTransformation& iFrame) : frame(iFrame) {}

    [[nodiscard]] const QorMathPoint& GetOrigin() const { return frame.origin; }

    [[nodiscard]] const QorMathVector& GetFirstDirection() const { return frame.axes[0]; }

    [[nodiscard]] const QorMathVector& GetSecondDirection() const { return frame.axes[1]; }

    [[nodiscard]] const QorMathVector& GetThirdDirection() const { return frame.axes[2]; }

    /// From coordinates in these axes to model space.
    [[nodiscard]] const QorMathTransformation& GetFrame() const { return frame; }

private:
    QorMathTransformation frame;
};
