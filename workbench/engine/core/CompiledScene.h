#pragma once

#include "workbench/engine/core/Camera.h"
#include "workbench/engine/core/Embree.h"
#include "workbench/engine/core/EnvironmentMap.h"
#include "workbench/engine/core/LightSampler.h"
#include "workbench/engine/core/RenderOptions.h"
#include "workbench/engine/core/Scene.h"

#include <array>
#include <memory>
#include <vector>

namespace qor::engine {

/// An instance as shading needs it: no pointer to follow twice.
struct CompiledInstance {
    const MeshData* mesh = nullptr;
    Transform transform;
    NormalTransform normals;
    std::uint32_t firstMaterial = 0; ///< in CompiledScene::materialOf
    std::uint32_t lastSlot = 0;
    float precision = 0.0F; ///< how far a hit point may be off
    bool flat = false;      ///< without normals of its own
    bool colored = false;   ///< with colours of its own
};

/// A material with what is asked of it for every ray.
struct CompiledMaterial {
    Material material;
    Color absorption{}; ///< of light inside, per length
    bool textured = false;
    bool varied = false; ///< textured, or under corners' colours: not the same everywhere
    bool inPackets =
        false; ///< packets shade it: opaque, without a coat, and it does not shine by itself
    /// What packets read of it: base colour, metallic, roughness, index, specular.
    std::array<float, 8> packet{};
    bool transparent = false; ///< lets some light straight through
    bool emissive = false;
    bool emissionSampled =
        false; ///< shines the same everywhere, so that points on it can be chosen as lights
};

/// A scene, prepared for one render: flat tables, distributions, and the options that change what
/// it looks like (textures and the like) already applied. Immutable; used by all workers at once.
class CompiledScene {
public:
    /// Builds what is missing; takes as long as that does. Fails as Assembly::prepare does.
    static Result<std::shared_ptr<const CompiledScene>> create(Scene scene,
                                                               const RenderOptions& options);

    CompiledScene(const CompiledScene&) = delete;
    CompiledScene(CompiledScene&&) = delete;
    CompiledScene& operator=(const CompiledScene&) = delete;
    CompiledScene& operator=(CompiledScene&&) = delete;
    ~CompiledScene() = default;

    const Scene& scene() const { return scene_; }

    const EnvironmentMap& environment() const { return environment_; }

    const LightSampler& lights() const { return *lights_; }

    bool hasObjects() const { return structure_ != nullptr; }

    const AssemblyStructure& structure() const { return *structure_; }

    const CompiledInstance& instance(unsigned index) const { return instances_[index]; }

    const CompiledMaterial& material(std::uint32_t index) const { return materials_[index]; }

    /// Index of the material of a triangle.
    std::uint32_t materialOf(const CompiledInstance& instance, unsigned triangle) const {
        const std::uint32_t slot =
            instance.mesh->slots.empty() ? 0U : std::uint32_t{instance.mesh->slots[triangle]};
        return materialOf_[instance.firstMaterial + std::min(slot, instance.lastSlot)];
    }

    /// Whether any material lets shadow rays through.
    bool hasTransparency() const { return transparent_; }

    /// Constant light of every surface: the scene's ambient light times the option's factor.
    const Color& ambient() const { return ambient_; }

    /// Half the diagonal of the box around everything, ground included; at least a little.
    float radius() const { return radius_; }

    const Vec3& centre() const { return centre_; }

    std::size_t memory() const;

private:
    CompiledScene(Scene scene, const RenderOptions& options);
    void compileMaterials(const RenderOptions& options);
    void compileInstances();
    void takeCornerColors(const CompiledInstance& instance, std::size_t slots);
    void measure();
    std::vector<EmissiveTriangle> emissiveTriangles() const;

    Scene scene_;
    EnvironmentMap environment_;
    std::vector<CompiledMaterial> materials_;
    std::vector<CompiledInstance> instances_;
    std::vector<std::uint32_t> materialOf_;
    std::unique_ptr<LightSampler> lights_;
    const AssemblyStructure* structure_ = nullptr;
    Color ambient_;
    Vec3 centre_;
    float radius_ = 1.0F;
    bool transparent_ = false;
};

using CompiledScenePtr = std::shared_ptr<const CompiledScene>;

} // namespace qor::engine
