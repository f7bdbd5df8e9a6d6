#include "workbench/document/product/ProductCheck.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <span>

namespace qor::document {

namespace {

using Fault = std::optional<std::string>;

/// True if none of \p values is infinite or not a number. Works on the bits, so that it becomes
/// vector instructions.
template <typename Range>
bool allFinite(const Range& values) {
    using Value = std::decay_t<decltype(values[0])>;
    using Bits = std::conditional_t<sizeof(Value) == 4, std::uint32_t, std::uint64_t>;
    const Bits exponent = std::bit_cast<Bits>(std::numeric_limits<Value>::infinity());
    Bits bad = 0;
    for (const Value value : values)
        bad |= static_cast<Bits>((std::bit_cast<Bits>(value) & exponent) == exponent);
    return bad == 0;
}

bool refersTo(std::int32_t index, std::size_t count) {
    return index == none || (index >= 0 && static_cast<std::size_t>(index) < count);
}

std::string at(const char* what, std::size_t index, const std::string& problem) {
    return std::string(what) + " " + std::to_string(index) + ": " + problem;
}

bool fits(std::size_t length, std::size_t perVertex, std::size_t vertices) {
    return length == 0 || length == perVertex * vertices;
}

bool inRange(std::span<const std::uint32_t> indices, std::size_t vertices) {
    std::uint32_t highest = 0;
    for (const std::uint32_t index : indices)
        highest = std::max(highest, index);
    return indices.empty() || highest < vertices;
}

Fault findGroupFault(const Mesh& mesh) {
    std::uint64_t next = 0;
    for (const MeshGroup& group : mesh.groups) {
        if (group.firstIndex != next || group.indexCount % 3 != 0)
            return "its groups do not follow one another";
        next += group.indexCount;
    }
    if (next != mesh.indices.size())
        return "its groups do not cover its triangles";
    return std::nullopt;
}

Fault findNodeFault(const Product& product) {
    std::vector<int> depth(product.nodes.size(), 1);
    for (std::size_t i = 0; i < product.nodes.size(); ++i) {
        const Node& node = product.nodes[i];
        if (node.parent != none && (node.parent < 0 || static_cast<std::size_t>(node.parent) >= i))
            return at("node", i, "its parent does not stand before it");
        if (node.parent != none)
            depth[i] = depth[node.parent] + 1;
        if (depth[i] > maximumTreeDepth)
            return at("node", i,
                      "the tree is deeper than " + std::to_string(maximumTreeDepth) + " levels");
        if (!refersTo(node.part, product.parts.size()))
            return at("node", i, "it names a part that is not there");
        if (!refersTo(node.material, product.materials.size()))
            return at("node", i, "it names a material that is not there");
        if (!allFinite(node.transform))
            return at("node", i, "its transform is not finite");
    }
    return std::nullopt;
}

Fault findPartFault(const Product& product) {
    for (std::size_t i = 0; i < product.parts.size(); ++i) {
        const Part& part = product.parts[i];
        if (!refersTo(part.mesh, product.meshes.size()))
            return at("part", i, "it names a mesh that is not there");
        if (!refersTo(part.material, product.materials.size()))
            return at("part", i, "it names a material that is not there");
    }
    return std::nullopt;
}

Fault findMeshFaults(const Product& product) {
    for (std::size_t i = 0; i < product.meshes.size(); ++i) {
        if (Fault fault = findMeshFault(product.meshes[i]))
            return at("mesh", i, *fault);
        for (const MeshGroup& group : product.meshes[i].groups)
            if (!refersTo(group.material, product.materials.size()))
                return at("mesh", i, "it names a material that is not there");
    }
    return std::nullopt;
}

bool materialIsFinite(const Material& m) {
    const std::array<double, 13> single{m.metallic,
                                        m.roughness,
                                        m.transmission,
                                        m.ior,
                                        m.normalScale,
                                        m.occlusionStrength,
                                        m.clearcoat,
                                        m.clearcoatRoughness,
                                        m.clearcoatNormalScale,
                                        m.thicknessMm,
                                        m.attenuationDistanceMm,
                                        m.alphaCutoff,
                                        0};
    return allFinite(single) && allFinite(m.baseColor) && allFinite(m.emission) &&
           allFinite(m.attenuationColor);
}

bool useIsSound(const TextureUse& use, std::size_t textures) {
    return use.texture != none && refersTo(use.texture, textures) && use.uvSet >= 0 &&
           use.uvSet <= 1 && allFinite(use.offset) && allFinite(use.scale) &&
           std::isfinite(use.rotation);
}

Fault findMaterialFault(const Product& product) {
    for (std::size_t i = 0; i < product.materials.size(); ++i) {
        const Material& material = product.materials[i];
        if (!materialIsFinite(material))
            return at("material", i, "a number of it is not finite");
        for (const auto& use : material.textures)
            if (use && !useIsSound(*use, product.textures.size()))
                return at("material", i, "one of its textures is not usable");
    }
    for (std::size_t i = 0; i < product.textures.size(); ++i) {
        const Texture& texture = product.textures[i];
        if (texture.pixels.size() != std::uint64_t{4} * texture.width * texture.height)
            return at("texture", i, "its pixels do not fill its size");
    }
    return std::nullopt;
}

Fault findViewFault(const Product& product) {
    for (std::size_t i = 0; i < product.cameras.size(); ++i) {
        const Camera& c = product.cameras[i];
        const std::array<double, 5> single{c.fieldOfView, c.viewHeightMm, c.aspect, c.nearMm,
                                           c.farMm};
        if (!refersTo(c.node, product.nodes.size()) || !allFinite(single) ||
            !allFinite(c.position) || !allFinite(c.direction) || !allFinite(c.up))
            return at("camera", i, "a number of it is out of range");
    }
    for (std::size_t i = 0; i < product.lights.size(); ++i) {
        const Light& l = product.lights[i];
        const std::array<double, 5> single{l.intensity, l.rangeMm, l.innerCone, l.outerCone,
                                           l.angleDeg};
        if (!refersTo(l.node, product.nodes.size()) || !allFinite(single) ||
            !allFinite(l.position) || !allFinite(l.direction) || !allFinite(l.color))
            return at("light", i, "a number of it is out of range");
    }
    if (product.environment && !allFinite(*product.environment))
        return "the environment's radiance is not finite";
    if (!(product.unit.millimetres > 0) || !std::isfinite(product.unit.millimetres))
        return "the length unit is not a positive number of millimetres";
    return std::nullopt;
}

bool trackIsSound(const Track& track, std::size_t nodes) {
    const std::size_t width = track.target == TrackTarget::Rotation ? 4 : 3;
    return track.node != none && refersTo(track.node, nodes) &&
           track.values.size() == width * track.times.size() && allFinite(track.times) &&
           allFinite(track.values) && std::is_sorted(track.times.begin(), track.times.end());
}

Fault findAnimationFault(const Product& product) {
    for (std::size_t i = 0; i < product.animations.size(); ++i)
        for (const Track& track : product.animations[i].tracks)
            if (!trackIsSound(track, product.nodes.size()))
                return at("animation", i, "one of its tracks is not usable");
    return std::nullopt;
}

} // namespace

Fault findMeshFault(const Mesh& mesh) {
    const std::size_t vertices = mesh.vertexCount();
    if (mesh.positions.size() % 3 != 0 || mesh.indices.size() % 3 != 0 ||
        mesh.edges.size() % 2 != 0)
        return "an array of it ends in the middle of an element";
    if (vertices > std::numeric_limits<std::uint32_t>::max() ||
        mesh.indices.size() > std::numeric_limits<std::uint32_t>::max())
        return "it is too large";
    if (!fits(mesh.normals.size(), 3, vertices) || !fits(mesh.uv0.size(), 2, vertices) ||
        !fits(mesh.uv1.size(), 2, vertices) || !fits(mesh.colors.size(), 4, vertices))
        return "its arrays do not have one entry for each vertex";
    if (!inRange(mesh.indices, vertices) || !inRange(mesh.edges, vertices))
        return "it names a vertex that is not there";
    if (!allFinite(mesh.positions) || !allFinite(mesh.normals) || !allFinite(mesh.uv0) ||
        !allFinite(mesh.uv1))
        return "a coordinate is not finite";
    return findGroupFault(mesh);
}

Fault findFault(const Product& product) {
    for (const auto find : {findNodeFault, findPartFault, findMeshFaults, findMaterialFault,
                            findViewFault, findAnimationFault})
        if (Fault fault = find(product))
            return fault;
    return std::nullopt;
}

} // namespace qor::document
