#include "workbench/engine/adapter/MeshTranslation.h"

namespace qor::adapter {

namespace {

std::vector<engine::Vec3> triples(const std::vector<float>& values) {
    std::vector<engine::Vec3> vectors;
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

std::vector<std::array<std::uint8_t, 4>> quadruples(const std::vector<std::uint8_t>& values) {
    std::vector<std::array<std::uint8_t, 4>> colors;
    colors.reserve(values.size() / 4);
    for (std::size_t i = 0; i + 3 < values.size(); i += 4)
        colors.push_back({values[i], values[i + 1], values[i + 2], values[i + 3]});
    return colors;
}

} // namespace

engine::Result<engine::MeshPtr> translateMesh(const QorMesh::Data& from) {
    engine::MeshData data;
    data.positions = triples(from.positions);
    data.normals = triples(from.normals);
    data.textureCoordinates = pairs(from.textureUv);
    data.secondTextureCoordinates = pairs(from.textureUv2);
    data.colors = quadruples(from.colors);
    data.triangles.reserve(from.indices.size() / 3);
    for (std::size_t i = 0; i + 2 < from.indices.size(); i += 3)
        data.triangles.push_back({from.indices[i], from.indices[i + 1], from.indices[i + 2]});
    auto mesh = engine::Mesh::create(std::move(data));
    if (!mesh)
        return mesh.error();
    return engine::MeshPtr(mesh.value());
}

} // namespace qor::adapter
