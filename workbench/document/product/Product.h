#pragma once

#include "workbench/document/product/Material.h"
#include "workbench/document/product/Mesh.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace qor::document {

/// Rows of an affine 3x4 matrix, row-major; the fourth column is a translation in millimetres.
using Transform = std::array<double, 12>;
using Vector3 = std::array<double, 3>;

inline constexpr Transform identityTransform{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0};

/// A tree deeper than this is refused, so that walking it by recursion is safe.
inline constexpr int maximumTreeDepth = 1000;

/// What nodes are instances of: a shape with one mesh, or an assembly (no mesh of its own).
struct Part {
    std::string name;
    std::int32_t mesh = none;
    std::int32_t material = none; ///< for groups that name none

    bool operator==(const Part&) const = default;
};

/// An occurrence in the product tree. A parent stands before its children in Product::nodes.
struct Node {
    std::string name; ///< of the instance; may be that of the part
    std::int32_t parent = none;
    std::int32_t part = none;     ///< two nodes of one part are instances of the same thing
    std::int32_t material = none; ///< of this instance, before the part's
    Transform transform = identityTransform; ///< into the parent's axes
    bool visible = true;

    bool operator==(const Node&) const = default;
};

struct Camera {
    std::string name;
    std::int32_t node =
        none; ///< position, direction and up are in its axes; `none`: in the world's
    Vector3 position{0, 0, 0};
    Vector3 direction{0, 1, 0}; ///< unit length, along the view
    Vector3 up{0, 0, 1};        ///< unit length
    bool perspective = true;
    double fieldOfView = 0.8;  ///< full vertical angle in radians, if perspective
    double viewHeightMm = 100; ///< full height, if parallel
    double aspect = 0;         ///< width by height; 0: that of the output
    double nearMm = 0;
    double farMm = 0; ///< 0: none

    bool operator==(const Camera&) const = default;
};

enum class LightKind : std::uint8_t { Directional, Point, Spot };

/// A punctual light. Directional: intensity times colour is the irradiance of a surface that faces
/// it. Point and spot: power a steradian, for distances in metres; at d mm a facing surface gets
/// intensity*1e6/d^2.
struct Light {
    std::string name;
    LightKind kind = LightKind::Directional;
    std::int32_t node = none;
    Vector3 position{0, 0, 0};
    Vector3 direction{0, 1, 0}; ///< unit length, the way the light goes
    std::array<double, 3> color{1, 1, 1};
    double intensity = 1;
    double rangeMm = 0;   ///< 0: unlimited
    double innerCone = 0; ///< half angle in radians, spot only
    double outerCone = 0; ///< half angle in radians, spot only
    double angleDeg = 0;  ///< full angle of a directional light's disc; 0: hard shadows

    bool operator==(const Light&) const = default;
};

enum class TrackTarget : std::uint8_t { Translation, Rotation, Scale };
enum class TrackInterpolation : std::uint8_t { Linear, Step };

/// Keys of one property of a node. A node that is animated has a track for each of the three
/// properties (a single key where it does not move); its transform is translation * rotation *
/// scale.
struct Track {
    std::int32_t node = none;
    TrackTarget target = TrackTarget::Translation;
    TrackInterpolation interpolation = TrackInterpolation::Linear;
    std::vector<float> times; ///< seconds, ascending
    std::vector<float>
        values; ///< a key: x, y, z (mm or factors), or the unit quaternion x, y, z, w

    bool operator==(const Track&) const = default;
};

struct Animation {
    std::string name;
    std::vector<Track> tracks;

    bool operator==(const Animation&) const = default;
};

/// The length unit of the file that the product came from. Everything here is in millimetres
/// whatever it is.
struct SourceUnit {
    std::string name = "mm";
    double millimetres = 1;

    bool operator==(const SourceUnit&) const = default;
};

/// How much work a model asks a renderer for; what is unset is up to the renderer.
struct RenderWork {
    std::optional<int> diffuseBounces; ///< 0: direct light only
    std::optional<int> glossyBounces;
    std::optional<int> transmissionBounces;
    std::optional<bool> caustics;

    bool operator==(const RenderWork&) const = default;
};

/// A product model: millimetres, right-handed, z up.
struct Product {
    std::string name;
    std::string sourceFile; ///< name of the model file, without its folder
    SourceUnit unit;
    std::vector<Node> nodes; ///< several roots are allowed
    std::vector<Part> parts;
    std::vector<Mesh> meshes;
    std::vector<Material> materials;
    std::vector<Texture> textures;
    std::vector<Camera> cameras;
    std::vector<Light> lights;
    std::vector<Animation> animations;
    std::optional<std::array<double, 3>> environment; ///< constant radiance of the surroundings
    RenderWork work;

    bool operator==(const Product&) const = default;
};

} // namespace qor::document
