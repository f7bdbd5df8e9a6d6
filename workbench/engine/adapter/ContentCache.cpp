#include "workbench/engine/adapter/ContentCache.h"

#include "workbench/engine/adapter/MeshTranslation.h"

#include <algorithm>

namespace qor::adapter {

namespace {

/// A viewer, its neighbour, a material preview, and one to come back to.
constexpr std::size_t mostAssemblies = 4;

template <typename Entries>
bool dropDead(Entries& entries) {
    return std::erase_if(entries, [](const auto& one) { return one.second.source.expired(); }) > 0;
}

} // namespace

engine::Result<engine::Scene> ContentCache::makeScene(const SceneRecipe& recipe) {
    const std::scoped_lock lock(mutex_);
    sweepLocked();
    engine::Scene scene = recipe.scene;
    for (const MaterialRecipe& from : recipe.materials) {
        auto material = materialOf(from);
        if (!material)
            return material.error();
        scene.materials.push_back(std::move(material).value());
    }
    auto assembly = assemblyOf(recipe);
    if (!assembly)
        return assembly.error();
    scene.assembly = std::move(assembly).value();
    if (recipe.background) {
        auto picture = pictureOf(recipe.background);
        if (!picture)
            return picture.error();
        scene.background.picture = std::move(picture).value();
        scene.background.kind = engine::Background::Kind::picture;
    }
    return scene;
}

engine::Result<engine::Material> ContentCache::materialOf(const MaterialRecipe& recipe) {
    engine::Material material = recipe.material;
    for (const MaterialRecipe::Slot& slot : recipe.slots) {
        auto picture = pictureOf(slot.picture);
        if (!picture)
            return picture.error();
        (material.*slot.texture).picture = std::move(picture).value();
    }
    return material;
}

engine::Result<engine::MeshPtr> ContentCache::meshOf(const InstanceRecipe& instance) {
    const auto known = meshes_.find(instance.meshId);
    if (known != meshes_.end())
        return known->second.made;
    auto mesh = translateMesh(*instance.mesh);
    if (!mesh)
        return mesh.error();
    ++made_;
    meshes_[instance.meshId] = {instance.mesh, mesh.value()};
    return mesh.value();
}

engine::Result<engine::PicturePtr> ContentCache::pictureOf(const PictureRecipe& recipe) {
    const auto known = pictures_.find(recipe.key);
    if (known != pictures_.end())
        return known->second.made;
    auto picture = makePicture(recipe);
    if (!picture)
        return picture.error();
    ++made_;
    pictures_[recipe.key] = {recipe.pixels, picture.value()};
    return picture.value();
}

engine::Result<engine::AssemblyPtr> ContentCache::assemblyOf(const SceneRecipe& recipe) {
    std::vector<Placement> placements;
    placements.reserve(recipe.instances.size());
    for (const InstanceRecipe& instance : recipe.instances)
        placements.push_back({instance.meshId, instance.transform, instance.material});
    const auto known =
        std::find_if(assemblies_.begin(), assemblies_.end(),
                     [&](const KnownAssembly& one) { return one.placements == placements; });
    if (known != assemblies_.end()) {
        std::rotate(assemblies_.begin(), known, known + 1);
        return assemblies_.front().assembly;
    }
    auto assembly = makeAssembly(recipe);
    if (!assembly)
        return assembly;
    ++made_;
    assemblies_.push_front({std::move(placements), assembly.value()});
    if (assemblies_.size() > mostAssemblies)
        assemblies_.pop_back();
    return assembly;
}

engine::Result<engine::AssemblyPtr> ContentCache::makeAssembly(const SceneRecipe& recipe) {
    std::vector<engine::Instance> instances;
    instances.reserve(recipe.instances.size());
    for (const InstanceRecipe& from : recipe.instances) {
        auto mesh = meshOf(from);
        if (!mesh)
            return mesh.error();
        instances.push_back({std::move(mesh).value(), from.transform, {from.material}});
    }
    return engine::Assembly::create(std::move(instances));
}

void ContentCache::sweep() {
    const std::scoped_lock lock(mutex_);
    sweepLocked();
}

void ContentCache::sweepLocked() {
    dropDead(pictures_);
    if (!dropDead(meshes_))
        return;
    std::erase_if(assemblies_, [this](const KnownAssembly& one) {
        return std::any_of(
            one.placements.begin(), one.placements.end(),
            [this](const Placement& placement) { return !meshes_.contains(placement.mesh); });
    });
}

std::uint64_t ContentCache::madeCount() const {
    const std::scoped_lock lock(mutex_);
    return made_;
}

} // namespace qor::adapter
