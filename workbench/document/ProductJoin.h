#pragma once

#include "workbench/document/product/Product.h"

#include <map>
#include <set>
#include <string>

namespace qor::document {

/// By how much the indices of a product grow that is put behind another one.
struct ProductShift {
    std::int32_t nodes = 0;
    std::int32_t parts = 0;
    std::int32_t meshes = 0;
    std::int32_t materials = 0;
    std::int32_t textures = 0;
};

/// \p index moved by \p by; `none` stays.
[[nodiscard]] inline std::int32_t shifted(std::int32_t index, std::int32_t by) {
    return index == none ? none : index + by;
}

/// Puts \p added behind what \p product holds. Names of root nodes, cameras, lights, materials and
/// animations that are taken get a number (UniqueNames). Unit, name, source, environment and work
/// stay those of \p product unless it was empty or had none.
ProductShift joinFacts(Product& product, Product added);

/// Gives names that nobody has yet: "gear", "gear.2", "gear.3". An empty name stays empty.
class UniqueNames {
public:
    void reserve(const std::string& name) { taken_.insert(name); }

    /// \p name itself if it is free; from now on it is not.
    [[nodiscard]] std::string take(const std::string& name);

private:
    std::set<std::string> taken_;
    std::map<std::string, int> lastNumber_; ///< given for a name, so that none is tried twice
};

} // namespace qor::document
