#pragma once

#include "workbench/document/product/Product.h"

#include <array>

namespace qor::document::tables {

/// The numbers of a camera or light in the order in which their column `numbers` holds them.
using ViewNumbers = std::array<double, 14>;

[[nodiscard]] ViewNumbers numbersOf(const Camera& camera);
[[nodiscard]] ViewNumbers numbersOf(const Light& light);
void setNumbers(Camera& camera, const ViewNumbers& numbers);
void setNumbers(Light& light, const ViewNumbers& numbers);

} // namespace qor::document::tables
