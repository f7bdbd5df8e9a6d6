#pragma once

#include "workbench/document/product/Product.h"

#include <Quantity_ColorRGBA.hxx>

#include <array>
#include <map>
#include <optional>
#include <string>
#include <utility>

namespace qor::import {

/// Makes one material for each distinct pair of a colour and a substance of a B-rep file.
class SurfaceMaterials {
public:
    /// \p product gets the materials and must outlive this object.
    explicit SurfaceMaterials(document::Product& product) : product_(product) {}

    /// \p substance is what the file calls the part's material, UTF-8; empty when it does not say.
    /// Without a colour the substance's own is taken; `none` when that is not known either.
    [[nodiscard]] std::int32_t indexOf(const std::optional<Quantity_ColorRGBA>& color,
                                       const std::string& substance);

private:
    using Key = std::pair<std::array<float, 4>, std::string>;

    document::Product& product_;
    std::map<Key, std::int32_t> known_;
};

} // namespace qor::import
