#pragma once

#include "platform/vis/QorMath.h"

#include <array>

namespace qor::desktop {

using Float2 = std::array<float, 2>;
using Float3 = std::array<float, 3>;
using Float4 = std::array<float, 4>;

/// Column by column, as OpenGL takes it.
using Matrix4 = std::array<float, 16>;

/// The same in doubles, for putting together.
using Matrix4d = std::array<double, 16>;

[[nodiscard]] Matrix4d operator*(const Matrix4d& left, const Matrix4d& right);
[[nodiscard]] Matrix4 toFloats(const Matrix4d& matrix);
[[nodiscard]] Float3 toFloats(const QorMathVector& vector);

/// Takes model space to the axes of \p frame.
[[nodiscard]] Matrix4d viewMatrix(const QorMathTransformation& frame);

/// What lies within \p halfWidth, \p halfHeight and the depths \p near to \p far along -z.
[[nodiscard]] Matrix4d parallelMatrix(double halfWidth, double halfHeight, double near, double far);

/// The same for an eye at the origin; the half sizes are those at depth 1.
[[nodiscard]] Matrix4d
perspectiveMatrix(double halfWidth, double halfHeight, double near, double far);

/// From -1..1 to 0..1 in all three directions.
[[nodiscard]] Matrix4d halvingMatrix();

} // namespace qor::desktop
