#include "workbench/document/ProductJoin.h"

#include <algorithm>
#include <iterator>

namespace qor::document {

namespace {

template <typename T>
std::int32_t countOf(const std::vector<T>& values) {
    return static_cast<std::int32_t>(values.size());
}

template <typename T>
void moveBehind(std::vector<T>& to, std::vector<T>& from) {
    std::move(from.begin(), from.end(), std::back_inserter(to));
    from.clear();
}

void shiftNodes(Product& product, const ProductShift& by) {
    for (Node& node : product.nodes) {
        node.parent = shifted(node.parent, by.nodes);
        node.part = shifted(node.part, by.parts);
        node.material = shifted(node.material, by.materials);
    }
    for (Camera& camera : product.cameras)
        camera.node = shifted(camera.node, by.nodes);
    for (Light& light : product.lights)
        light.node = shifted(light.node, by.nodes);
    for (Animation& animation : product.animations)
        for (Track& track : animation.tracks)
            track.node = shifted(track.node, by.nodes);
}

void shiftShapes(Product& product, const ProductShift& by) {
    for (Part& part : product.parts) {
        part.mesh = shifted(part.mesh, by.meshes);
        part.material = shifted(part.material, by.materials);
    }
    for (Mesh& mesh : product.meshes)
        for (MeshGroup& group : mesh.groups)
            group.material = shifted(group.material, by.materials);
    for (Material& material : product.materials)
        for (auto& use : material.textures)
            if (use)
                use->texture = shifted(use->texture, by.textures);
}

bool isRoot(const Node& node) {
    return node.parent == none;
}

template <typename T>
bool isAny(const T& /*thing*/) {
    return true;
}

/// Renames those of \p added that count and have a name of \p there, or of one before them.
template <typename T, typename Counts>
void keepUnique(const std::vector<T>& there, std::vector<T>& added, const Counts& counts) {
    UniqueNames names;
    for (const T& thing : there)
        if (counts(thing))
            names.reserve(thing.name);
    for (T& thing : added)
        if (counts(thing))
            thing.name = names.take(thing.name);
}

void keepNamesUnique(const Product& product, Product& added) {
    keepUnique(product.nodes, added.nodes, isRoot);
    keepUnique(product.cameras, added.cameras, isAny<Camera>);
    keepUnique(product.lights, added.lights, isAny<Light>);
    keepUnique(product.materials, added.materials, isAny<Material>);
    keepUnique(product.animations, added.animations, isAny<Animation>);
}

void joinSettings(Product& product, const Product& added) {
    if (product.nodes.empty()) {
        product.name = added.name;
        product.sourceFile = added.sourceFile;
        product.unit = added.unit;
        product.work = added.work;
    }
    if (!product.environment)
        product.environment = added.environment;
}

} // namespace

ProductShift joinFacts(Product& product, Product added) {
    const ProductShift shift{.nodes = countOf(product.nodes),
                             .parts = countOf(product.parts),
                             .meshes = countOf(product.meshes),
                             .materials = countOf(product.materials),
                             .textures = countOf(product.textures)};
    joinSettings(product, added);
    keepNamesUnique(product, added);
    shiftNodes(added, shift);
    shiftShapes(added, shift);
    moveBehind(product.nodes, added.nodes);
    moveBehind(product.parts, added.parts);
    moveBehind(product.meshes, added.meshes);
    moveBehind(product.materials, added.materials);
    moveBehind(product.textures, added.textures);
    moveBehind(product.cameras, added.cameras);
    moveBehind(product.lights, added.lights);
    moveBehind(product.animations, added.animations);
    return shift;
}

std::string UniqueNames::take(const std::string& name) {
    if (name.empty() || taken_.insert(name).second)
        return name;
    int& number = lastNumber_.try_emplace(name, 1).first->second;
    std::string numbered;
    do
        numbered = name + "." + std::to_string(++number);
    while (!taken_.insert(numbered).second);
    return numbered;
}

} // namespace qor::document
