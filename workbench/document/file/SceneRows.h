#pragma once

#include "workbench/document/product/Mesh.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace qor::document {

/// What an attribute of a scene object holds; the numbers stand in files.
enum class SceneType : std::uint8_t {
    Integer,
    Real,
    Boolean,
    Text,
    Color,
    Point,
    Reference,
    References
};

/// An object that an attribute refers to: one of the scene, or a node of the product.
struct SceneReference {
    enum class Target : std::uint8_t { Nothing, Object, Node };

    Target target = Target::Nothing;
    std::int32_t index = none; ///< of SceneRows, or of Product::nodes

    bool operator==(const SceneReference&) const = default;
};

/// The value of one attribute. Only the member that the type names is used.
struct SceneAttribute {
    std::string name;
    SceneType type = SceneType::Integer;
    std::int64_t integer = 0;               ///< Integer, Boolean
    std::array<double, 3> numbers{0, 0, 0}; ///< Real: the first; Color, Point: all
    std::string text;
    std::vector<SceneReference> references; ///< Reference: one

    bool operator==(const SceneAttribute&) const = default;
};

/// An object of the scene (a shooting, a light, a camera …) as it lies in a document file.
struct SceneRow {
    std::string kind;
    std::string name;
    std::int32_t material = none; ///< of the kind "material": index into Product::materials
    std::vector<SceneAttribute> attributes;

    bool operator==(const SceneRow&) const = default;
};

/// In the order of their making; references count from 0.
using SceneRows = std::vector<SceneRow>;

} // namespace qor::document
