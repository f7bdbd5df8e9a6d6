#pragma once

#include "workbench/document/product/Product.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace qor::document {

/// Corners of an axis-parallel box, in millimetres.
struct Box {
    Vector3 low;
    Vector3 high;
};

/// \p inner followed by \p outer.
[[nodiscard]] Transform combine(const Transform& outer, const Transform& inner);

[[nodiscard]] Vector3 transformPoint(const Transform& transform, const Vector3& point);

/// For each node, its transform into the world's axes.
[[nodiscard]] std::vector<Transform> worldTransforms(const Product& product);

/// The material that \p group shows under \p node: its own, else that of the nearest instance or
/// part upwards; an instance goes before its part. `none` if nobody names one.
[[nodiscard]] std::int32_t
effectiveMaterial(const Product& product, std::int32_t node, const MeshGroup& group);

/// Box around all vertices of all instances; nothing if there is no vertex.
[[nodiscard]] std::optional<Box> boundingBox(const Product& product);

/// Triangles with every instance counted.
[[nodiscard]] std::uint64_t instancedTriangleCount(const Product& product);

} // namespace qor::document
