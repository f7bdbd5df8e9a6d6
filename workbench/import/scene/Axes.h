#pragma once

#include "workbench/document/product/Product.h"

#include <array>

namespace qor::import {

/// From a model file's axes and unit to millimetres with z up. It is applied to shapes, transforms
/// and views alike (a transform M becomes C M C^-1), so that no node of the tree carries the
/// conversion.
struct Axes {
    double scale = 1; ///< millimetres a unit of the file
    bool yUp = false; ///< the file's y points up: (x, y, z) becomes (x, -z, y)

    [[nodiscard]] document::Vector3 direction(const document::Vector3& v) const {
        return yUp ? document::Vector3{v[0], -v[2], v[1]} : v;
    }

    [[nodiscard]] document::Vector3 point(const document::Vector3& v) const {
        const document::Vector3 turned = direction(v);
        return {turned[0] * scale, turned[1] * scale, turned[2] * scale};
    }

    /// Factors along the axes.
    [[nodiscard]] document::Vector3 factors(const document::Vector3& v) const {
        return yUp ? document::Vector3{v[0], v[2], v[1]} : v;
    }

    [[nodiscard]] document::Transform transform(const document::Transform& m) const;
};

} // namespace qor::import
