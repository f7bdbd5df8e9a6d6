#pragma once

#include "workbench/document/product/Product.h"

#include <cmath>
#include <cstdint>

namespace qor::document::testing {

/// A square of 2 * \p steps * \p steps triangles in the xy plane, \p sizeMm wide, with all
/// per-vertex arrays.
inline Mesh gridMesh(std::uint32_t steps, double sizeMm) {
    Mesh mesh;
    mesh.name = "grid";
    for (std::uint32_t y = 0; y <= steps; ++y)
        for (std::uint32_t x = 0; x <= steps; ++x) {
            const float u = static_cast<float>(x) / static_cast<float>(steps);
            const float v = static_cast<float>(y) / static_cast<float>(steps);
            mesh.positions.insert(mesh.positions.end(), {u * static_cast<float>(sizeMm),
                                                         v * static_cast<float>(sizeMm), 0.F});
            mesh.normals.insert(mesh.normals.end(), {0.F, 0.F, 1.F});
            mesh.uv0.insert(mesh.uv0.end(), {u, v});
            mesh.uv1.insert(mesh.uv1.end(), {v, u});
            mesh.colors.insert(mesh.colors.end(), {static_cast<std::uint8_t>(x), 2, 3, 255});
        }
    const auto at = [steps](std::uint32_t x, std::uint32_t y) {
        return y * (steps + 1) + x;
    };
    for (std::uint32_t y = 0; y < steps; ++y)
        for (std::uint32_t x = 0; x < steps; ++x)
            mesh.indices.insert(mesh.indices.end(), {at(x, y), at(x + 1, y), at(x + 1, y + 1),
                                                     at(x, y), at(x + 1, y + 1), at(x, y + 1)});
    mesh.edges = {0, steps};
    mesh.groups = {{0, static_cast<std::uint32_t>(mesh.indices.size()), none}};
    return mesh;
}

/// A small product in which no field has its default value.
inline Product sampleProduct() {
    Product product;
    product.name = "Geh\xc3\xa4use";
    product.sourceFile = "housing.step";
    product.unit = {"inch", 25.4};
    product.textures.push_back({"wood", 2, 1, {1, 2, 3, 4, 5, 6, 7, 8}});
    Material& paint = product.materials.emplace_back();
    paint.name = "paint";
    paint.baseColor = {0.1, 0.2, 0.3, 0.4};
    paint.metallic = 0.25;
    paint.roughness = 0.75;
    paint.transmission = 0.125;
    paint.ior = 1.33;
    paint.emission = {1, 2, 3};
    paint.normalScale = 0.9;
    paint.occlusionStrength = 0.8;
    paint.clearcoat = 0.7;
    paint.clearcoatRoughness = 0.6;
    paint.clearcoatNormalScale = 0.55;
    paint.thicknessMm = 3;
    paint.attenuationDistanceMm = 4;
    paint.attenuationColor = {0.4, 0.5, 0.6};
    paint.alphaMode = AlphaMode::Mask;
    paint.alphaCutoff = 0.35;
    paint.doubleSided = false;
    paint.unlit = true;
    paint.texture(TextureSlot::ClearcoatNormal) = TextureUse{
        0, 1, {0.1, 0.2}, {2, 3}, 0.5, TextureWrap::ClampToEdge, TextureWrap::MirroredRepeat};
    product.meshes.push_back(gridMesh(3, 30));
    product.meshes[0].groups = {{0, 6, 0}, {6, 48, none}};
    product.parts = {{"assembly", none, none}, {"plate", 0, 0}};
    product.nodes = {{"root", none, 0, none, identityTransform, true},
                     {"plate:1", 0, 1, none, identityTransform, true},
                     {"plate:2", 0, 1, 0, {1, 0, 0, 100, 0, 0, -1, 0, 0, 1, 0, 5}, false}};
    product.cameras.push_back(
        {"eye", 1, {1, 2, 3}, {0, 0, -1}, {0, 1, 0}, false, 0.5, 77, 1.5, 0.25, 900});
    product.lights.push_back({"lamp",
                              LightKind::Spot,
                              2,
                              {1, 2, 3},
                              {0, 0, -1},
                              {0.5, 0.6, 0.7},
                              11,
                              12,
                              0.1,
                              0.2,
                              0.53});
    product.animations.push_back(
        {"turn",
         {{1, TrackTarget::Rotation, TrackInterpolation::Step, {0, 1}, {0, 0, 0, 1, 0, 0, 1, 0}}}});
    product.environment = {0.1, 0.2, 0.3};
    product.work = {0, 3, 8, true};
    return product;
}

} // namespace qor::document::testing
