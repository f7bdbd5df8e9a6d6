#include "platform/vis/QorMath.h"

#include <cmath>

double QorMathVector::Norm() const {
    return std::hypot(x, y, z);
}

QorMathVector QorMathVector::Normalized() const {
    return NormalizedOr({});
}

QorMathVector QorMathVector::NormalizedOr(const QorMathVector& iDefault) const {
    const double norm = Norm();
    return norm > 0.0 && std::isfinite(norm) ? *this * (1.0 / norm) : iDefault;
}

QorMathPoint QorMathTransformation::Apply(const QorMathPoint& iPoint) const {
    return ApplyToVector(iPoint) + origin;
}

QorMathVector QorMathTransformation::ApplyToVector(const QorMathVector& iVector) const {
    return axes[0] * iVector.x + axes[1] * iVector.y + axes[2] * iVector.z;
}

QorMathTransformation QorMathTransformation::operator*(const QorMathTransformation& iInner) const {
    QorMathTransformation product;
    for (std::size_t i = 0; i < axes.size(); ++i)
        product.axes[i] = ApplyToVector(iInner.axes[i]);
    product.origin = Apply(iInner.origin);
    return product;
}

double QorMathTransformation::Determinant() const {
    return axes[0] * (axes[1] ^ axes[2]);
}

QorMathTransformation QorMathTransformation::Inverse() const {
    const double determinant = Determinant();
    if (determinant == 0.0 || !std::isfinite(determinant))
        return {};
    // The rows of the inverse are the cross products of the columns over the determinant.
    const QorMathVector rowX = (axes[1] ^ axes[2]) * (1.0 / determinant);
    const QorMathVector rowY = (axes[2] ^ axes[0]) * (1.0 / determinant);
    const QorMathVector rowZ = (axes[0] ^ axes[1]) * (1.0 / determinant);
    QorMathTransformation inverse;
    inverse.axes = {{{rowX.x, rowY.x, rowZ.x}, {rowX.y, rowY.y, rowZ.y}, {rowX.z, rowY.z, rowZ.z}}};
    inverse.origin = -inverse.ApplyToVector(origin);
    return inverse;
}

QorMathTransformation QorMathTransformation::Translation(const QorMathVector& iBy) {
    QorMathTransformation translation;
    translation.origin = iBy;
    return translation;
}

QorMathTransformation QorMathTransformation::Rotation(const QorMathVector& iAxis, double iAngle) {
    const QorMathVector axis = iAxis.NormalizedOr({0.0, 0.0, 1.0});
    const double cosine = std::cos(iAngle);
    const double sine = std::sin(iAngle);
    const auto turned = [&](const QorMathVector& iVector) { // Rodrigues' rotation formula
        return iVector * cosine + (axis ^ iVector) * sine +
               axis * ((axis * iVector) * (1.0 - cosine));
    };
    QorMathTransformation rotation;
    for (QorMathVector& column : rotation.axes)
        column = turned(column);
    return rotation;
}

QorMathTransformation QorMathTransformation::FromZTo(const QorMathVector& iDirection) {
    const QorMathVector up{0.0, 0.0, 1.0};
    const QorMathVector direction = iDirection.NormalizedOr(up);
    const QorMathVector across = up ^ direction;
    const double sine = across.Norm();
    if (sine == 0.0)
        return direction.z > 0.0 ? QorMathTransformation{}
                                 : Rotation({1.0, 0.0, 0.0}, std::acos(-1.0));
    return Rotation(across, std::atan2(sine, up * direction));
}
