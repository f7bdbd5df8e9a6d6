#include "workbench/desktop/viewer/gl/GlMath.h"

#include <algorithm>

namespace qor::desktop {

Matrix4d operator*(const Matrix4d& left, const Matrix4d& right) {
    Matrix4d product{};
    for (std::size_t column = 0; column < 4; ++column)
        for (std::size_t row = 0; row < 4; ++row)
            for (std::size_t k = 0; k < 4; ++k)
                product[column * 4 + row] += left[k * 4 + row] * right[column * 4 + k];
    return product;
}

Matrix4 toFloats(const Matrix4d& matrix) {
    Matrix4 floats{};
    std::transform(matrix.begin(), matrix.end(), floats.begin(),
                   [](double value) { return static_cast<float>(value); });
    return floats;
}

Float3 toFloats(const QorMathVector& vector) {
    return {static_cast<float>(vector.x), static_cast<float>(vector.y),
            static_cast<float>(vector.z)};
}

Matrix4d viewMatrix(const QorMathTransformation& frame) {
    const auto& [x, y, z] = frame.axes;
    return {x.x,
            y.x,
            z.x,
            0.0, //
            x.y,
            y.y,
            z.y,
            0.0, //
            x.z,
            y.z,
            z.z,
            0.0, //
            -(x * frame.origin),
            -(y * frame.origin),
            -(z * frame.origin),
            1.0};
}

Matrix4d parallelMatrix(double halfWidth, double halfHeight, double near, double far) {
    const double depth = far - near;
    return {1.0 / halfWidth,
            0.0,
            0.0,
            0.0, //
            0.0,
            1.0 / halfHeight,
            0.0,
            0.0, //
            0.0,
            0.0,
            -2.0 / depth,
            0.0, //
            0.0,
            0.0,
            -(far + near) / depth,
            1.0};
}

Matrix4d perspectiveMatrix(double halfWidth, double halfHeight, double near, double far) {
    const double depth = far - near;
    return {1.0 / halfWidth,
            0.0,
            0.0,
            0.0, //
            0.0,
            1.0 / halfHeight,
            0.0,
            0.0, //
            0.0,
            0.0,
            -(far + near) / depth,
            -1.0, //
            0.0,
            0.0,
            -2.0 * far * near / depth,
            0.0};
}

Matrix4d halvingMatrix() {
    return {0.5, 0.0, 0.0, 0.0, 0.0, 0.5, 0.0, 0.0, 0.0, 0.0, 0.5, 0.0, 0.5, 0.5, 0.5, 1.0};
}

} // namespace qor::desktop
