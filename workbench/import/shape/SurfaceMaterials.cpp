#include "workbench/import/shape/SurfaceMaterials.h"

#include "workbench/import/shape/SubstanceFinish.h"

#include <TCollection_AsciiString.hxx>

namespace qor::import {

namespace {

std::array<float, 4> channelsOf(const Quantity_ColorRGBA& color) {
    // Open CASCADE keeps colours linear, as materials do.
    const Quantity_Color& rgb = color.GetRGB();
    return {static_cast<float>(rgb.Red()), static_cast<float>(rgb.Green()),
            static_cast<float>(rgb.Blue()), color.Alpha()};
}

std::string hexOf(const Quantity_ColorRGBA& color) {
    return Quantity_ColorRGBA::ColorToHex(color, color.Alpha() < 1).ToCString();
}

void apply(const SubstanceFinish& finish, document::Material& material) {
    material.metallic = finish.metallic;
    material.roughness = finish.roughness;
    material.transmission = finish.transmission;
    material.ior = finish.ior;
    material.clearcoat = finish.clearcoat;
    if (finish.transmission > 0) {
        // The colour's transparency tells a viewer without refraction what a transmission says
        // better.
        material.thicknessMm = 1;
        material.baseColor[3] = 1;
    }
}

} // namespace

std::int32_t SurfaceMaterials::indexOf(const std::optional<Quantity_ColorRGBA>& color,
                                       const std::string& substance) {
    const SubstanceFinish* finish = finishOf(substance);
    if (!color && finish == nullptr)
        return document::none;
    const std::array<float, 4> base = color ? channelsOf(*color) : finish->color;
    const auto [known, isNew] =
        known_.try_emplace({base, substance}, static_cast<std::int32_t>(product_.materials.size()));
    if (!isNew)
        return known->second;
    document::Material& material = product_.materials.emplace_back();
    material.name = substance.empty() ? hexOf(*color) : substance;
    material.baseColor = {base[0], base[1], base[2], base[3]};
    if (finish != nullptr)
        apply(*finish, material);
    if (material.baseColor[3] < 1)
        material.alphaMode = document::AlphaMode::Blend;
    return known->second;
}

} // namespace qor::import
