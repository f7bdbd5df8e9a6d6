#include "workbench/import/shape/ColorMaterials.h"

#include <TCollection_AsciiString.hxx>

namespace qor::import {

std::int32_t ColorMaterials::indexOf(const Quantity_ColorRGBA& color) {
    const Quantity_Color& rgb = color.GetRGB();
    const std::array<float, 4> key{static_cast<float>(rgb.Red()), static_cast<float>(rgb.Green()),
                                   static_cast<float>(rgb.Blue()), color.Alpha()};
    const auto [known, isNew] =
        known_.try_emplace(key, static_cast<std::int32_t>(product_.materials.size()));
    if (!isNew)
        return known->second;
    document::Material& material = product_.materials.emplace_back();
    material.name = Quantity_ColorRGBA::ColorToHex(color, color.Alpha() < 1).ToCString();
    // Open CASCADE keeps colours linear, as materials do.
    material.baseColor = {key[0], key[1], key[2], key[3]};
    if (key[3] < 1)
        material.alphaMode = document::AlphaMode::Blend;
    return known->second;
}

} // namespace qor::import
