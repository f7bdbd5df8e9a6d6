#pragma once

#include <array>
#include <string_view>

namespace qor::import {

/// How a substance usually looks, where a file names it but says nothing of its surface.
struct SubstanceFinish {
    std::string_view word;      ///< lower case; found anywhere in the substance's name
    std::array<float, 4> color; ///< linear, for parts without a colour of their own
    double metallic;
    double roughness;
    double transmission;
    double ior;
    double clearcoat;
};

/// The finish of the substance that \p name speaks of, in any case of letters and in English or
/// German; null for an unknown one. The first row of the table that fits counts.
[[nodiscard]] const SubstanceFinish* finishOf(std::string_view name);

} // namespace qor::import
