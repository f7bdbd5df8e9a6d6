#include "workbench/engine/core/CompiledScene.h"

#include "workbench/engine/core/GlassAlbedo.h"
#include "workbench/engine/core/Microfacet.h"

#include <limits>
#include <set>

namespace qor::engine {

namespace {

/// What a material's inside absorbs: its colour is what is left after a distance (Beer's law).
Color absorptionOf(const Material& m) {
    if (m.thinWalled || !(m.attenuationDistance > 0.0F))
        return {};
    const auto one = [&](float left) {
        constexpr float darkest = 1e-6F;
        return -std::log(std::max(left, darkest)) / m.attenuationDistance;
    };
    return {one(m.attenuationColor.x), one(m.attenuationColor.y), one(m.attenuationColor.z)};
}

/// Whether it is more than matt.
bool reflects(const Material& m) {
    return m.metallic > 0.0F || m.specular > 0.0F || m.clearcoat > 0.0F || m.transmission > 0.0F;
}

CompiledMaterial compile(const Material& source, const RenderOptions& options) {
    CompiledMaterial result{source};
    Material& m = result.material;
    forEachTexture(m, [&](Texture& texture) {
        if (!options.textures)
            texture.picture = nullptr;
        result.textured = result.textured || texture.picture;
    });
    result.absorption = absorptionOf(m);
    result.emissive = maxComponent(m.emission) > 0.0F;
    result.emissionSampled = result.emissive && !m.emissionTexture.picture;
    const bool cutOut =
        m.alphaMode != AlphaMode::opaque &&
        (m.opacity < 1.0F || (m.baseTexture.picture && !m.baseTexture.picture->isOpaque()));
    result.transparent = cutOut || m.transmission > 0.0F;
    result.varied = result.textured;
    result.inPackets = !result.emissive && !result.transparent && !(m.clearcoat > 0.0F);
    result.packet = {m.baseColor.x, m.baseColor.y, m.baseColor.z, m.metallic,
                     m.roughness,   m.ior,         m.specular};
    return result;
}

float largest(const Vec3& v) {
    return std::max({std::abs(v.x), std::abs(v.y), std::abs(v.z)});
}

/// A bound for the rounding of a point of \p mesh carried by \p t, with room for the way through
/// the inverse.
float precisionOf(const Mesh& mesh, const Transform& t) {
    const Vec3 reach{std::max(std::abs(mesh.lower().x), std::abs(mesh.upper().x)),
                     std::max(std::abs(mesh.lower().y), std::abs(mesh.upper().y)),
                     std::max(std::abs(mesh.lower().z), std::abs(mesh.upper().z))};
    const float sum = largest(t.x) * reach.x + largest(t.y) * reach.y + largest(t.z) * reach.z +
                      largest(t.origin);
    return sum * 8.0F * std::numeric_limits<float>::epsilon();
}

struct Box {
    Vec3 lower{std::numeric_limits<float>::max(), std::numeric_limits<float>::max(),
               std::numeric_limits<float>::max()};
    Vec3 upper = -lower;

    void add(const Vec3& p) {
        lower = {std::min(lower.x, p.x), std::min(lower.y, p.y), std::min(lower.z, p.z)};
        upper = {std::max(upper.x, p.x), std::max(upper.y, p.y), std::max(upper.z, p.z)};
    }

    bool isEmpty() const { return lower.x > upper.x; }
};

void addInstance(Box& box, const Instance& instance) {
    const Vec3& low = instance.mesh->lower();
    const Vec3& high = instance.mesh->upper();
    if (low.x > high.x)
        return;
    for (unsigned corner = 0; corner < 8; ++corner)
        box.add(instance.transform.point({(corner & 1U) != 0 ? high.x : low.x,
                                          (corner & 2U) != 0 ? high.y : low.y,
                                          (corner & 4U) != 0 ? high.z : low.z}));
}

} // namespace

Result<CompiledScenePtr> CompiledScene::create(Scene scene, const RenderOptions& options) {
    // Tables belong to preparation, not to the first tile.
    if (std::any_of(scene.materials.begin(), scene.materials.end(), reflects))
        static_cast<void>(albedoTable());
    for (const Material& m : scene.materials)
        if (m.transmission > 0.0F && m.roughness > 0.0F && !m.thinWalled)
            for (const float eta : {m.ior, 1.0F / m.ior})
                static_cast<void>(glassAlbedo(1.0F, 1.0F, eta));
    if (scene.assembly && !scene.assembly->instances().empty()) {
        const Result<Done> prepared = scene.assembly->prepare();
        if (!prepared)
            return prepared.error();
    }
    return CompiledScenePtr(new CompiledScene(std::move(scene), options));
}

CompiledScene::CompiledScene(Scene scene, const RenderOptions& options)
    : scene_(std::move(scene))
    , environment_(scene_.environment)
    , ambient_(scene_.ambient * options.ambientFactor) {
    compileMaterials(options);
    compileInstances();
    measure();
    std::vector<Light> lights = scene_.lights;
    if (!options.shadows)
        for (Light& light : lights)
            std::visit([](auto& l) { l.castsShadows = false; }, light);
    lights_ = std::make_unique<LightSampler>(lights, emissiveTriangles(), environment_);
}

void CompiledScene::compileMaterials(const RenderOptions& options) {
    materials_.reserve(scene_.materials.size());
    for (const Material& material : scene_.materials) {
        materials_.push_back(compile(material, options));
        transparent_ = transparent_ || materials_.back().transparent;
    }
}

void CompiledScene::compileInstances() {
    if (!scene_.assembly || scene_.assembly->instances().empty())
        return;
    structure_ = &scene_.assembly->structure();
    for (const Instance& source : scene_.assembly->instances()) {
        CompiledInstance& target = instances_.emplace_back();
        target.mesh = &source.mesh->data();
        target.transform = source.transform;
        target.normals = NormalTransform(source.transform);
        target.firstMaterial = static_cast<std::uint32_t>(materialOf_.size());
        target.lastSlot = static_cast<std::uint32_t>(source.materials.size()) - 1;
        target.precision = precisionOf(*source.mesh, source.transform);
        target.flat = source.mesh->data().normals.empty();
        target.colored = !source.mesh->data().colors.empty();
        materialOf_.insert(materialOf_.end(), source.materials.begin(), source.materials.end());
        if (target.colored)
            takeCornerColors(target, source.materials.size());
    }
}

/// Materials under a mesh's own colours are not the same everywhere.
void CompiledScene::takeCornerColors(const CompiledInstance& instance, std::size_t slots) {
    const auto& colors = instance.mesh->colors;
    const bool seeThrough =
        std::any_of(colors.begin(), colors.end(), [](const auto& c) { return c[3] != 255; });
    for (std::size_t slot = 0; slot < slots; ++slot) {
        CompiledMaterial& material = materials_[materialOf_[instance.firstMaterial + slot]];
        material.varied = true;
        material.transparent = material.transparent ||
                               (seeThrough && material.material.alphaMode != AlphaMode::opaque);
        transparent_ = transparent_ || material.transparent;
    }
}

void CompiledScene::measure() {
    Box box;
    if (scene_.assembly)
        for (const Instance& instance : scene_.assembly->instances())
            addInstance(box, instance);
    if (box.isEmpty() && scene_.ground.visible) {
        const float half = scene_.ground.size * 0.5F;
        box.add(scene_.ground.origin - Vec3{half, half, half});
        box.add(scene_.ground.origin + Vec3{half, half, half});
    }
    if (box.isEmpty())
        return;
    centre_ = (box.lower + box.upper) * 0.5F;
    radius_ = std::max(0.5F * length(box.upper - box.lower), 1e-20F);
}

std::vector<EmissiveTriangle> CompiledScene::emissiveTriangles() const {
    std::vector<EmissiveTriangle> result;
    const bool any = std::any_of(materials_.begin(), materials_.end(),
                                 [](const CompiledMaterial& m) { return m.emissionSampled; });
    if (!any)
        return result;
    for (const CompiledInstance& instance : instances_) {
        const MeshData& mesh = *instance.mesh;
        for (unsigned i = 0; i < mesh.triangles.size(); ++i) {
            const CompiledMaterial& material = materials_[materialOf(instance, i)];
            if (!material.emissionSampled)
                continue;
            const auto& corners = mesh.triangles[i];
            const Vec3 a = instance.transform.point(mesh.positions[corners[0]]);
            const Vec3 b = instance.transform.point(mesh.positions[corners[1]]);
            const Vec3 c = instance.transform.point(mesh.positions[corners[2]]);
            if (length(cross(b - a, c - a)) > 0.0F)
                result.push_back({a, b - a, c - a, material.material.emission});
        }
    }
    return result;
}

std::size_t CompiledScene::memory() const {
    std::set<const void*> seen;
    std::size_t bytes = instances_.size() * (sizeof(CompiledInstance) + sizeof(Instance));
    if (scene_.assembly)
        for (const Instance& instance : scene_.assembly->instances())
            if (seen.insert(instance.mesh.get()).second)
                bytes += instance.mesh->memory();
    const auto addPicture = [&](const PicturePtr& picture) {
        if (picture && seen.insert(picture.get()).second)
            bytes += picture->memory();
    };
    for (const Material& m : scene_.materials)
        forEachTexture(m, [&](const Texture& texture) { addPicture(texture.picture); });
    addPicture(scene_.environment.picture);
    addPicture(scene_.background.picture);
    return bytes;
}

} // namespace qor::engine
