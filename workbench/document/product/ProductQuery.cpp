#include "workbench/document/product/ProductQuery.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace qor::document {

namespace {

Box emptyBox() {
    constexpr double inf = std::numeric_limits<double>::infinity();
    return {{inf, inf, inf}, {-inf, -inf, -inf}};
}

void extend(Box& box, const Vector3& point) {
    for (std::size_t axis = 0; axis < 3; ++axis) {
        box.low[axis] = std::min(box.low[axis], point[axis]);
        box.high[axis] = std::max(box.high[axis], point[axis]);
    }
}

const Mesh* meshOf(const Product& product, const Node& node) {
    if (node.part == none || product.parts[node.part].mesh == none)
        return nullptr;
    return &product.meshes[product.parts[node.part].mesh];
}

} // namespace

Transform combine(const Transform& outer, const Transform& inner) {
    Transform out{};
    for (std::size_t row = 0; row < 3; ++row)
        for (std::size_t column = 0; column < 4; ++column) {
            double sum = column == 3 ? outer[row * 4 + 3] : 0;
            for (std::size_t k = 0; k < 3; ++k)
                sum += outer[row * 4 + k] * inner[k * 4 + column];
            out[row * 4 + column] = sum;
        }
    return out;
}

Vector3 transformPoint(const Transform& m, const Vector3& p) {
    return {m[0] * p[0] + m[1] * p[1] + m[2] * p[2] + m[3],
            m[4] * p[0] + m[5] * p[1] + m[6] * p[2] + m[7],
            m[8] * p[0] + m[9] * p[1] + m[10] * p[2] + m[11]};
}

std::vector<Transform> worldTransforms(const Product& product) {
    std::vector<Transform> world;
    world.reserve(product.nodes.size());
    for (const Node& node : product.nodes)
        world.push_back(node.parent == none ? node.transform
                                            : combine(world[node.parent], node.transform));
    return world;
}

std::int32_t effectiveMaterial(const Product& product, std::int32_t node, const MeshGroup& group) {
    if (group.material != none)
        return group.material;
    for (; node != none; node = product.nodes[node].parent) {
        const Node& at = product.nodes[node];
        if (at.material != none)
            return at.material;
        if (at.part != none && product.parts[at.part].material != none)
            return product.parts[at.part].material;
    }
    return none;
}

std::optional<Box> boundingBox(const Product& product) {
    const std::vector<Transform> world = worldTransforms(product);
    Box box = emptyBox();
    for (std::size_t i = 0; i < product.nodes.size(); ++i) {
        const Mesh* mesh = meshOf(product, product.nodes[i]);
        if (mesh == nullptr)
            continue;
        for (std::size_t v = 0; v + 2 < mesh->positions.size(); v += 3)
            extend(box, transformPoint(world[i], {mesh->positions[v], mesh->positions[v + 1],
                                                  mesh->positions[v + 2]}));
    }
    if (box.low[0] > box.high[0])
        return std::nullopt;
    return box;
}

std::uint64_t instancedTriangleCount(const Product& product) {
    std::uint64_t count = 0;
    for (const Node& node : product.nodes)
        if (const Mesh* mesh = meshOf(product, node))
            count += mesh->triangleCount();
    return count;
}

} // namespace qor::document
