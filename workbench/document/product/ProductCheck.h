#pragma once

#include "workbench/document/product/Product.h"

#include <optional>
#include <string>

namespace qor::document {

/// What is wrong with \p product, in a lower-case clause that names the place ("node 12: …"), or
/// nothing. A product that passes can be used without further tests: every reference is in range,
/// parents stand before their children, the tree is at most maximumTreeDepth deep, arrays have the
/// lengths that belong together, indices name vertices, and every number is finite.
[[nodiscard]] std::optional<std::string> findFault(const Product& product);

/// The same for one mesh, its groups' materials left out.
[[nodiscard]] std::optional<std::string> findMeshFault(const Mesh& mesh);

} // namespace qor::document
