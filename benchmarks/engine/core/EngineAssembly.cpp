#include "benchmarks/engine/core/EngineAssembly.h"

#include <cstdlib>

namespace qor::engine::benchmarks {

namespace {

MeshPtr meshOf(MeshData data) {
    auto mesh = Mesh::create(std::move(data));
    if (!mesh)
        std::abort();
    return std::move(mesh).value();
}

struct Corner {
    float radius;
    float height;
};

/// A part on a lathe: each piece of \p outline turned around z with edges of its own, \p segments
/// around, \p rings rows of faces in all. Radii may be modulated like the teeth of a gear.
MeshPtr turned(const std::vector<Corner>& outline, int segments, int rings, float teeth) {
    MeshData data;
    const auto pieces = static_cast<int>(outline.size()) - 1;
    const int rows = std::max(1, rings / pieces);
    for (int piece = 0; piece < pieces; ++piece) {
        const Corner& low = outline[static_cast<std::size_t>(piece)];
        const Corner& high = outline[static_cast<std::size_t>(piece) + 1];
        const auto at = [&](float t, float phi) {
            const float wave =
                teeth > 0.0F ? 1.0F + 0.06F * std::tanh(4.0F * std::sin(teeth * phi)) : 1.0F;
            const float r = (low.radius * (1.0F - t) + high.radius * t) * wave;
            return Vec3{r * std::cos(phi), r * std::sin(phi),
                        low.height * (1.0F - t) + high.height * t};
        };
        const auto first = static_cast<std::uint32_t>(data.positions.size());
        for (int row = 0; row <= rows; ++row)
            for (int s = 0; s < segments; ++s) {
                const float t = static_cast<float>(row) / static_cast<float>(rows);
                const float phi = 2.0F * pi * static_cast<float>(s) / static_cast<float>(segments);
                const Vec3 p = at(t, phi);
                data.positions.push_back(p);
                data.normals.push_back(normalize(
                    cross(at(t, phi + 1e-3F) - at(t, phi - 1e-3F), at(1, phi) - at(0, phi))));
            }
        const auto index = [&](int row, int s) {
            return first + static_cast<std::uint32_t>(row * segments + s % segments);
        };
        for (int row = 0; row < rows; ++row)
            for (int s = 0; s < segments; ++s) {
                data.triangles.push_back({index(row, s), index(row, s + 1), index(row + 1, s + 1)});
                data.triangles.push_back({index(row, s), index(row + 1, s + 1), index(row + 1, s)});
            }
    }
    return meshOf(std::move(data));
}

MeshPtr block(const Vec3& lower, const Vec3& upper) {
    MeshData data;
    for (unsigned i = 0; i < 8; ++i)
        data.positions.push_back({(i & 1U) != 0 ? upper.x : lower.x,
                                  (i & 2U) != 0 ? upper.y : lower.y,
                                  (i & 4U) != 0 ? upper.z : lower.z});
    data.triangles = {{0, 2, 3}, {0, 3, 1}, {4, 5, 7}, {4, 7, 6}, {0, 1, 5}, {0, 5, 4},
                      {2, 6, 7}, {2, 7, 3}, {0, 4, 6}, {0, 6, 2}, {1, 3, 7}, {1, 7, 5}};
    return meshOf(std::move(data));
}

MeshPtr quad(const Vec3& corner, const Vec3& u, const Vec3& v) {
    MeshData data;
    data.positions = {corner, corner + u, corner + u + v, corner + v};
    data.triangles = {{0, 1, 2}, {0, 2, 3}};
    return meshOf(std::move(data));
}

Material matt(const Color& albedo) {
    Material m;
    m.baseColor = albedo;
    m.specular = 0.0F;
    return m;
}

AssemblyPtr assemblyOf(std::vector<Instance> instances) {
    auto assembly = Assembly::create(std::move(instances));
    if (!assembly)
        std::abort();
    return std::move(assembly).value();
}

const std::vector<std::vector<Corner>>& outlines() {
    static const std::vector<std::vector<Corner>> all = {
        {{0.02F, 0},
         {0.4F, 0},
         {0.45F, 0.05F},
         {0.45F, 0.6F},
         {0.2F, 0.7F},
         {0.2F, 1.2F},
         {0.02F, 1.25F}},
        {{0.02F, 0},
         {0.48F, 0},
         {0.48F, 0.2F},
         {0.15F, 0.25F},
         {0.15F, 0.9F},
         {0.3F, 1.0F},
         {0.02F, 1.0F}},
        {{0.1F, 0}, {0.42F, 0.02F}, {0.42F, 0.3F}, {0.25F, 0.35F}, {0.25F, 0.5F}, {0.1F, 0.5F}},
        {{0.02F, 0}, {0.3F, 0.1F}, {0.45F, 0.4F}, {0.3F, 0.8F}, {0.1F, 0.95F}, {0.02F, 1.0F}},
    };
    return all;
}

} // namespace

Scene assemblyScene(std::size_t triangles) {
    constexpr int side = 16;
    constexpr int kinds = 12;
    const double perPart = static_cast<double>(triangles) / (side * side);
    const int rings = std::max(6, static_cast<int>(std::sqrt(perPart / 6.0)));
    const int segments = std::max(8, static_cast<int>(perPart / (2.0 * rings)));
    std::vector<MeshPtr> parts;
    for (int kind = 0; kind < kinds; ++kind)
        parts.push_back(turned(outlines()[static_cast<std::size_t>(kind) % outlines().size()],
                               segments, rings,
                               kind % 3 == 1 ? static_cast<float>(8 + kind) : 0.0F));
    Scene scene;
    for (int i = 0; i < 6; ++i)
        scene.materials.push_back(matt(
            {0.35F + 0.1F * static_cast<float>(i), 0.6F, 0.85F - 0.1F * static_cast<float>(i)}));
    std::vector<Instance> instances;
    for (int y = 0; y < side; ++y)
        for (int x = 0; x < side; ++x) {
            const int n = y * side + x;
            const Vec3 place{static_cast<float>(x) - 0.5F * side + 0.5F,
                             static_cast<float>(y) - 0.5F * side + 0.5F, 0.0F};
            Transform t = Transform::translation(place) *
                          Transform::rotation({0, 0, 1}, static_cast<float>(n) * 0.7F) *
                          Transform::scaling({1, 1, 0.6F + 0.1F * static_cast<float>(n % 7)});
            instances.push_back({parts[static_cast<std::size_t>(n * 7 % kinds)],
                                 t,
                                 {static_cast<std::uint32_t>(n % 6)}});
        }
    constexpr float half = 0.5F * side + 0.5F;
    instances.push_back({block({-half, -half, -0.3F}, {half, half, -0.001F}), {}, {0}});
    scene.assembly = assemblyOf(std::move(instances));
    scene.lights = {DirectionalLight{{-0.4F, 0.5F, -0.8F}, {2, 2, 2}, 0, true},
                    DirectionalLight{{0.7F, 0.2F, -0.6F}, {1, 1, 1}, 0, true}};
    return scene;
}

Camera assemblyCamera() {
    Camera camera;
    camera.eye = {11.0F, -15.0F, 10.0F};
    camera.target = {0.0F, -0.5F, 0.3F};
    camera.up = {0, 0, 1};
    camera.fovRad = 0.62F;
    return camera;
}

Scene cornellBox() {
    Scene scene;
    scene.materials = {matt({0.73F, 0.73F, 0.73F}), matt({0.63F, 0.06F, 0.05F}),
                       matt({0.14F, 0.45F, 0.09F}), matt({0, 0, 0})};
    scene.materials[3].emission = {15, 15, 15};
    const std::vector<std::pair<MeshPtr, std::uint32_t>> parts = {
        {quad({-1, -1, -1}, {2, 0, 0}, {0, 2, 0}), 0},
        {quad({-1, -1, 1}, {0, 2, 0}, {2, 0, 0}), 0},
        {quad({-1, 1, -1}, {2, 0, 0}, {0, 0, 2}), 0},
        {quad({-1, -1, -1}, {0, 2, 0}, {0, 0, 2}), 1},
        {quad({1, -1, -1}, {0, 0, 2}, {0, 2, 0}), 2},
        {quad({-0.25F, -0.2F, 0.998F}, {0, 0.4F, 0}, {0.5F, 0, 0}), 3},
        {block({-0.3F, -0.3F, -1.0F}, {0.3F, 0.3F, -0.4F}), 0},
        {block({-0.3F, -0.3F, -1.0F}, {0.3F, 0.3F, 0.2F}), 0},
    };
    std::vector<Instance> instances;
    for (const auto& [mesh, material] : parts)
        instances.push_back({mesh, {}, {material}});
    instances[6].transform =
        Transform::translation({0.35F, -0.35F, 0}) * Transform::rotation({0, 0, 1}, -0.3F);
    instances[7].transform =
        Transform::translation({-0.35F, 0.3F, 0}) * Transform::rotation({0, 0, 1}, 0.35F);
    scene.assembly = assemblyOf(std::move(instances));
    return scene;
}

Camera cornellCamera() {
    Camera camera;
    camera.eye = {0, -3.9F, 0};
    camera.target = {0, 0, 0};
    camera.up = {0, 0, 1};
    camera.fovRad = 0.686F;
    return camera;
}

} // namespace qor::engine::benchmarks
