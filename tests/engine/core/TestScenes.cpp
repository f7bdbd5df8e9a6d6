#include "tests/engine/core/TestScenes.h"

#include <cstdlib>
#include <iostream>

namespace qor::engine::testing {

namespace {

MeshPtr meshOf(MeshData data) {
    auto mesh = Mesh::create(std::move(data));
    if (!mesh) {
        std::cerr << mesh.error().message << '\n';
        std::abort();
    }
    return std::move(mesh).value();
}

} // namespace

MeshPtr sphere(float radius, int segments, bool smooth) {
    MeshData data;
    const int rings = segments / 2;
    for (int r = 0; r <= rings; ++r)
        for (int s = 0; s <= segments; ++s) {
            const float theta = pi * static_cast<float>(r) / static_cast<float>(rings);
            const float phi =
                2.0F * pi * static_cast<float>(s % segments) / static_cast<float>(segments);
            const Vec3 n{std::sin(theta) * std::cos(phi), std::sin(theta) * std::sin(phi),
                         std::cos(theta)};
            data.positions.push_back(n * radius);
            if (smooth)
                data.normals.push_back(n);
            data.textureCoordinates.push_back({static_cast<float>(s) / static_cast<float>(segments),
                                               static_cast<float>(r) / static_cast<float>(rings)});
        }
    const auto at = [&](int r, int s) {
        return static_cast<std::uint32_t>(r * (segments + 1) + s);
    };
    for (int r = 0; r < rings; ++r)
        for (int s = 0; s < segments; ++s) {
            if (r > 0)
                data.triangles.push_back({at(r, s), at(r + 1, s), at(r, s + 1)});
            if (r + 1 < rings)
                data.triangles.push_back({at(r, s + 1), at(r + 1, s), at(r + 1, s + 1)});
        }
    return meshOf(std::move(data));
}

MeshPtr quad(const Vec3& corner, const Vec3& u, const Vec3& v) {
    MeshData data;
    data.positions = {corner, corner + u, corner + u + v, corner + v};
    data.textureCoordinates = {{0, 0}, {1, 0}, {1, 1}, {0, 1}};
    data.triangles = {{0, 1, 2}, {0, 2, 3}};
    return meshOf(std::move(data));
}

MeshPtr box(const Vec3& lower, const Vec3& upper) {
    MeshData data;
    for (unsigned i = 0; i < 8; ++i)
        data.positions.push_back({(i & 1U) != 0 ? upper.x : lower.x,
                                  (i & 2U) != 0 ? upper.y : lower.y,
                                  (i & 4U) != 0 ? upper.z : lower.z});
    data.triangles = {{0, 2, 3}, {0, 3, 1}, {4, 5, 7}, {4, 7, 6}, {0, 1, 5}, {0, 5, 4},
                      {2, 6, 7}, {2, 7, 3}, {0, 4, 6}, {0, 6, 2}, {1, 3, 7}, {1, 7, 5}};
    return meshOf(std::move(data));
}

Material diffuse(const Color& albedo) {
    Material m;
    m.baseColor = albedo;
    m.specular = 0.0F;
    return m;
}

Material mirror(const Color& reflectance) {
    Material m;
    m.baseColor = reflectance;
    m.metallic = 1.0F;
    m.roughness = 0.0F;
    return m;
}

Material glass(float ior) {
    Material m;
    m.baseColor = {1.0F, 1.0F, 1.0F};
    m.roughness = 0.0F;
    m.transmission = 1.0F;
    m.ior = ior;
    return m;
}

AssemblyPtr assemblyOf(const std::vector<MeshPtr>& meshes) {
    std::vector<Instance> instances;
    for (std::uint32_t i = 0; i < meshes.size(); ++i)
        instances.push_back({meshes[i], {}, {i}});
    auto assembly = Assembly::create(std::move(instances));
    if (!assembly)
        std::abort();
    return std::move(assembly).value();
}

Scene sceneOf(const std::vector<MeshPtr>& meshes, const std::vector<Material>& materials) {
    Scene scene;
    scene.assembly = assemblyOf(meshes);
    scene.materials = materials;
    return scene;
}

Environment constant(float radiance) {
    Environment e;
    e.radiance = {radiance, radiance, radiance};
    return e;
}

Camera lookFrom(const Vec3& eye, float fovDeg) {
    Camera camera;
    camera.eye = eye;
    camera.up = std::abs(eye.x) + std::abs(eye.y) > 0.0F ? Vec3{0, 0, 1} : Vec3{0, 1, 0};
    camera.fovRad = fovDeg * pi / 180.0F;
    return camera;
}

RenderOptions plainOptions(int size, int samples) {
    RenderOptions options;
    options.width = options.height = size;
    options.samples.minimum = options.samples.maximum = samples;
    options.progressive = false;
    return options;
}

Image rendered(const Scene& scene, const Camera& camera, const RenderOptions& options) {
    auto image = renderImage(scene, camera, options);
    if (!image) {
        std::cerr << image.error().message << '\n';
        std::abort();
    }
    return std::move(image).value();
}

double meanOf(const Image& image, int x0, int y0, int x1, int y1, int channel) {
    double sum = 0.0;
    for (int y = y0; y < y1; ++y)
        for (int x = x0; x < x1; ++x)
            sum += image.pixel(x, y)[channel];
    return sum / ((x1 - x0) * (y1 - y0));
}

void goTheLongWay(Scene& scene) {
    scene.materials.push_back(glass(1.5F));
}

double relativeError(const Image& image, const Image& reference) {
    double sum = 0.0;
    for (std::size_t i = 0; i < image.rgba.size(); i += 4) {
        const double l = luminance({image.rgba[i], image.rgba[i + 1], image.rgba[i + 2]});
        const double r =
            luminance({reference.rgba[i], reference.rgba[i + 1], reference.rgba[i + 2]});
        sum += (l - r) * (l - r) / (r * r + 1e-3);
    }
    return sum * 4.0 / static_cast<double>(image.rgba.size());
}

} // namespace qor::engine::testing
