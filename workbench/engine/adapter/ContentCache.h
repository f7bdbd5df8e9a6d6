#pragma once

#include "workbench/engine/adapter/SceneRecipe.h"

#include <deque>
#include <map>
#include <mutex>

namespace qor::adapter {

/// The engine's meshes, pictures and assemblies for what the library shows, made once and kept from
/// one render to the next for as long as the library keeps what they were made from. All functions
/// may be called from any thread.
class ContentCache {
public:
    /// The scene of \p recipe; what is not there yet is made, which takes as long as that takes.
    /// Structures are not built: Assembly::prepare and renders do that, once an assembly.
    engine::Result<engine::Scene> makeScene(const SceneRecipe& recipe);

    /// Lets go of whatever belongs to meshes and pictures that are gone. Every makeScene does it
    /// too.
    void sweep();

    /// Meshes, pictures and assemblies made since the cache was: a render of things known adds
    /// none.
    std::uint64_t madeCount() const;

private:
    /// What was made from shared arrays, as long as those live.
    template <typename Source, typename Made>
    struct Entry {
        std::weak_ptr<const Source> source;
        Made made;
    };

    struct Placement {
        std::uint64_t mesh = 0;
        engine::Transform transform;
        std::uint32_t material = 0;

        friend bool operator==(const Placement&, const Placement&) = default;
    };

    struct KnownAssembly {
        std::vector<Placement> placements;
        engine::AssemblyPtr assembly;
    };

    engine::Result<engine::MeshPtr> meshOf(const InstanceRecipe& instance);
    engine::Result<engine::PicturePtr> pictureOf(const PictureRecipe& recipe);
    engine::Result<engine::AssemblyPtr> assemblyOf(const SceneRecipe& recipe);
    engine::Result<engine::AssemblyPtr> makeAssembly(const SceneRecipe& recipe);
    engine::Result<engine::Material> materialOf(const MaterialRecipe& recipe);
    void sweepLocked();

    mutable std::mutex mutex_; ///< guards all
    std::map<std::uint64_t, Entry<QorMesh::Data, engine::MeshPtr>> meshes_;
    std::map<PictureRecipe::Key, Entry<QorPixelImage::Pixels, engine::PicturePtr>> pictures_;
    std::deque<KnownAssembly> assemblies_; ///< the newest first
    std::uint64_t made_ = 0;
};

} // namespace qor::adapter
