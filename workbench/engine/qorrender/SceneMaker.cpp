#include "workbench/engine/qorrender/SceneMaker.h"

#include "workbench/document/product/ProductQuery.h"
#include "workbench/engine/qorrender/Failure.h"
#include "workbench/engine/qorrender/MaterialTable.h"

#include <algorithm>
#include <limits>

namespace qor::render {

namespace {

/// A mesh for the engine, and a group for each of its slots, whose material the slot shows.
struct MadeMesh {
    engine::MeshPtr mesh;
    std::vector<document::MeshGroup> slots;
};

template <typename Vector>
std::vector<Vector> triples(const std::vector<float>& values) {
    std::vector<Vector> vectors;
    vectors.reserve(values.size() / 3);
    for (std::size_t i = 0; i + 2 < values.size(); i += 3)
        vectors.push_back({values[i], values[i + 1], values[i + 2]});
    return vectors;
}

std::vector<engine::Vec2> pairs(const std::vector<float>& values) {
    std::vector<engine::Vec2> vectors;
    vectors.reserve(values.size() / 2);
    for (std::size_t i = 0; i + 1 < values.size(); i += 2)
        vectors.push_back({values[i], values[i + 1]});
    return vectors;
}

/// The slot for \p group: groups of one material share theirs.
std::uint16_t slotOf(std::vector<document::MeshGroup>& slots, const document::MeshGroup& group) {
    for (std::size_t i = 0; i < slots.size(); ++i)
        if (slots[i].material == group.material)
            return static_cast<std::uint16_t>(i);
    if (slots.size() >= std::numeric_limits<std::uint16_t>::max())
        throw Failure("a mesh has more materials than can be rendered");
    slots.push_back(group);
    return static_cast<std::uint16_t>(slots.size() - 1);
}

MadeMesh makeMesh(const document::Mesh& from) {
    MadeMesh made;
    engine::MeshData data;
    data.positions = triples<engine::Vec3>(from.positions);
    data.normals = triples<engine::Vec3>(from.normals);
    data.textureCoordinates = pairs(from.uv0);
    data.triangles.reserve(from.triangleCount());
    for (std::size_t i = 0; i + 2 < from.indices.size(); i += 3)
        data.triangles.push_back({from.indices[i], from.indices[i + 1], from.indices[i + 2]});
    data.slots.assign(data.triangles.size(), 0);
    for (const document::MeshGroup& group : from.groups)
        std::fill_n(data.slots.begin() + group.firstIndex / 3, group.indexCount / 3,
                    slotOf(made.slots, group));
    if (made.slots.empty())
        made.slots.emplace_back();
    auto mesh = engine::Mesh::create(std::move(data));
    if (!mesh)
        throw Failure("mesh \"" + from.name + "\": " + mesh.error().message);
    made.mesh = mesh.value();
    return made;
}

engine::Transform transformOf(const document::Transform& from) {
    const auto column = [&from](std::size_t i) {
        return engine::Vec3{static_cast<float>(from[i]), static_cast<float>(from[4 + i]),
                            static_cast<float>(from[8 + i])};
    };
    return {column(0), column(1), column(2), column(3)};
}

class Instances {
public:
    explicit Instances(const document::Product& product)
        : product_(product)
        , transforms_(document::worldTransforms(product))
        , meshes_(product.meshes.size()) {}

    std::vector<engine::Instance> make(Progress& progress) {
        std::vector<bool> visible(product_.nodes.size());
        std::vector<engine::Instance> instances;
        for (std::size_t i = 0; i < product_.nodes.size(); ++i) {
            const document::Node& node = product_.nodes[i];
            visible[i] = node.visible && (node.parent == document::none ||
                                          visible[static_cast<std::size_t>(node.parent)]);
            if (visible[i] && meshOf(node) != document::none)
                add(i, instances, progress);
        }
        return instances;
    }

private:
    std::int32_t meshOf(const document::Node& node) const {
        return node.part == document::none
                   ? document::none
                   : product_.parts[static_cast<std::size_t>(node.part)].mesh;
    }

    void add(std::size_t node, std::vector<engine::Instance>& instances, Progress& progress) {
        const engine::Transform transform = transformOf(transforms_[node]);
        if (!transform.inverse()) {
            progress.warn("\"" + product_.nodes[node].name + "\" is squeezed flat and left out");
            return;
        }
        const auto mesh = static_cast<std::size_t>(meshOf(product_.nodes[node]));
        if (!meshes_[mesh].mesh)
            meshes_[mesh] = makeMesh(product_.meshes[mesh]);
        engine::Instance instance{meshes_[mesh].mesh, transform, {}};
        for (const document::MeshGroup& slot : meshes_[mesh].slots)
            instance.materials.push_back(materialOf(node, slot));
        instances.push_back(std::move(instance));
    }

    std::uint32_t materialOf(std::size_t node, const document::MeshGroup& slot) const {
        const std::int32_t material =
            document::effectiveMaterial(product_, static_cast<std::int32_t>(node), slot);
        return static_cast<std::uint32_t>(material == document::none
                                              ? product_.materials.size()
                                              : static_cast<std::size_t>(material));
    }

    const document::Product& product_;
    std::vector<document::Transform> transforms_;
    std::vector<MadeMesh> meshes_;
};

} // namespace

engine::Scene makeScene(const document::Product& product, Progress& progress) {
    auto assembly = engine::Assembly::create(Instances(product).make(progress));
    if (!assembly)
        throw Failure(assembly.error().message);
    engine::Scene scene;
    scene.assembly = assembly.value();
    scene.materials = makeMaterials(product);
    return scene;
}

} // namespace qor::render
