#pragma once

#include "workbench/document/product/Product.h"

#include <Quantity_ColorRGBA.hxx>

#include <array>
#include <map>

namespace qor::import {

/// Makes one material for each distinct colour of a B-rep file.
class ColorMaterials {
public:
    /// \p product gets the materials and must outlive this object.
    explicit ColorMaterials(document::Product& product) : product_(product) {}

    [[nodiscard]] std::int32_t indexOf(const Quantity_ColorRGBA& color);

private:
    document::Product& product_;
    std::map<std::array<float, 4>, std::int32_t> known_;
};

} // namespace qor::import
