#include "workbench/import/shape/SubstanceFinish.h"

#include <algorithm>
#include <cctype>
#include <string>

namespace qor::import {

namespace {

// Reflectances of metals: normal incidence, from the optical constants collected by Palik,
// "Handbook of Optical Constants of Solids" (1985), rounded. Special words stand before general
// ones ("anodized" before "alumin").
constexpr SubstanceFinish finishes[] = {
    // word         colour                          metal  rough  glass  ior   coat
    {"anodi", {0.05F, 0.05F, 0.055F, 1}, 0.55, 0.38, 0, 1.5, 0},
    {"eloxiert", {0.05F, 0.05F, 0.055F, 1}, 0.55, 0.38, 0, 1.5, 0},
    {"paint", {0.6F, 0.6F, 0.6F, 1}, 0, 0.45, 0, 1.5, 0.8},
    {"lacquer", {0.6F, 0.6F, 0.6F, 1}, 0, 0.45, 0, 1.5, 1},
    {"lack", {0.6F, 0.6F, 0.6F, 1}, 0, 0.45, 0, 1.5, 1},
    {"enamel", {0.6F, 0.6F, 0.6F, 1}, 0, 0.3, 0, 1.5, 1},
    {"acryl", {0.95F, 0.95F, 0.95F, 1}, 0, 0.05, 1, 1.49, 0},
    {"polycarbonate", {0.95F, 0.95F, 0.95F, 1}, 0, 0.08, 1, 1.58, 0},
    {"glass", {0.97F, 0.97F, 0.97F, 1}, 0, 0.0, 1, 1.52, 0},
    {"glas", {0.97F, 0.97F, 0.97F, 1}, 0, 0.0, 1, 1.52, 0},
    {"chrom", {0.55F, 0.556F, 0.554F, 1}, 1, 0.12, 0, 1.5, 0},
    {"stainless", {0.56F, 0.56F, 0.55F, 1}, 1, 0.3, 0, 1.5, 0},
    {"edelstahl", {0.56F, 0.56F, 0.55F, 1}, 1, 0.3, 0, 1.5, 0},
    {"steel", {0.53F, 0.52F, 0.51F, 1}, 1, 0.35, 0, 1.5, 0},
    {"stahl", {0.53F, 0.52F, 0.51F, 1}, 1, 0.35, 0, 1.5, 0},
    {"cast iron", {0.3F, 0.29F, 0.28F, 1}, 1, 0.6, 0, 1.5, 0},
    {"iron", {0.53F, 0.51F, 0.49F, 1}, 1, 0.5, 0, 1.5, 0},
    {"alumin", {0.91F, 0.92F, 0.92F, 1}, 1, 0.32, 0, 1.5, 0},
    {"magnesium", {0.75F, 0.75F, 0.76F, 1}, 1, 0.45, 0, 1.5, 0},
    {"brass", {0.89F, 0.79F, 0.43F, 1}, 1, 0.25, 0, 1.5, 0},
    {"messing", {0.89F, 0.79F, 0.43F, 1}, 1, 0.25, 0, 1.5, 0},
    {"bronze", {0.71F, 0.51F, 0.28F, 1}, 1, 0.35, 0, 1.5, 0},
    {"copper", {0.95F, 0.64F, 0.54F, 1}, 1, 0.25, 0, 1.5, 0},
    {"kupfer", {0.95F, 0.64F, 0.54F, 1}, 1, 0.25, 0, 1.5, 0},
    {"titan", {0.54F, 0.5F, 0.45F, 1}, 1, 0.35, 0, 1.5, 0},
    {"nickel", {0.66F, 0.61F, 0.53F, 1}, 1, 0.25, 0, 1.5, 0},
    {"zinc", {0.66F, 0.69F, 0.7F, 1}, 1, 0.45, 0, 1.5, 0},
    {"zink", {0.66F, 0.69F, 0.7F, 1}, 1, 0.45, 0, 1.5, 0},
    {"silver", {0.97F, 0.96F, 0.92F, 1}, 1, 0.15, 0, 1.5, 0},
    {"gold", {1.0F, 0.77F, 0.34F, 1}, 1, 0.18, 0, 1.5, 0},
    {"rubber", {0.03F, 0.03F, 0.03F, 1}, 0, 0.85, 0, 1.5, 0},
    {"gummi", {0.03F, 0.03F, 0.03F, 1}, 0, 0.85, 0, 1.5, 0},
    {"leather", {0.06F, 0.04F, 0.03F, 1}, 0, 0.7, 0, 1.5, 0},
    {"silicone", {0.5F, 0.5F, 0.5F, 1}, 0, 0.7, 0, 1.41, 0},
    {"ceramic", {0.85F, 0.85F, 0.82F, 1}, 0, 0.15, 0, 1.6, 0},
    {"keramik", {0.85F, 0.85F, 0.82F, 1}, 0, 0.15, 0, 1.6, 0},
    {"wood", {0.4F, 0.23F, 0.11F, 1}, 0, 0.65, 0, 1.5, 0},
    {"holz", {0.4F, 0.23F, 0.11F, 1}, 0, 0.65, 0, 1.5, 0},
    {"nylon", {0.8F, 0.79F, 0.74F, 1}, 0, 0.5, 0, 1.53, 0},
    {"plastic", {0.4F, 0.4F, 0.4F, 1}, 0, 0.4, 0, 1.5, 0},
    {"kunststoff", {0.4F, 0.4F, 0.4F, 1}, 0, 0.4, 0, 1.5, 0},
};

std::string lowered(std::string_view text) {
    std::string out(text);
    std::transform(out.begin(), out.end(), out.begin(), [](unsigned char letter) {
        return static_cast<char>(letter < 128 ? std::tolower(letter) : letter);
    });
    return out;
}

} // namespace

const SubstanceFinish* finishOf(std::string_view name) {
    const std::string wanted = lowered(name);
    const auto* const found =
        std::find_if(std::begin(finishes), std::end(finishes), [&](const SubstanceFinish& finish) {
            return wanted.find(finish.word) != std::string::npos;
        });
    return found == std::end(finishes) ? nullptr : found;
}

} // namespace qor::import
