#pragma once

#include <array>

namespace qor::document::tables {

// Keys of the table product_info. A key that is missing leaves the default of its field.
namespace info {
inline constexpr const char* tablesVersion = "tables_version";
inline constexpr const char* name = "name";
inline constexpr const char* sourceFile = "source_file";
inline constexpr const char* unitName = "unit_name";
inline constexpr const char* unitMm = "unit_mm";
inline constexpr std::array environment{"environment_r", "environment_g", "environment_b"};
inline constexpr const char* diffuseBounces = "diffuse_bounces";
inline constexpr const char* glossyBounces = "glossy_bounces";
inline constexpr const char* transmissionBounces = "transmission_bounces";
inline constexpr const char* caustics = "caustics";
} // namespace info

} // namespace qor::document::tables
