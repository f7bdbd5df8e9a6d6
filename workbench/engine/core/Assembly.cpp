#include "workbench/engine/core/Assembly.h"

#include "workbench/engine/core/Embree.h"
#include "workbench/engine/core/Parallel.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <mutex>
#include <new>
#include <string>

namespace qor::engine {

namespace {

std::atomic<std::uint64_t> _lastIdentity{0};

Result<Done> check(const Instance& instance, std::size_t index) {
    const std::string place = "instance " + std::to_string(index) + ": ";
    if (!instance.mesh)
        return Error{ErrorCode::invalidInput, place + "no mesh"};
    if (instance.materials.empty())
        return Error{ErrorCode::invalidInput, place + "no material"};
    if (!instance.transform.inverse())
        return Error{ErrorCode::invalidInput, place + "singular transform, determinant " +
                                                  std::to_string(instance.transform.determinant())};
    return Done{};
}

/// Each mesh once, the largest first, so that no processor ends with one.
std::vector<const Mesh*> distinctMeshes(const std::vector<Instance>& instances) {
    std::vector<const Mesh*> meshes;
    meshes.reserve(instances.size());
    for (const Instance& instance : instances)
        meshes.push_back(instance.mesh.get());
    std::sort(meshes.begin(), meshes.end(), [](const Mesh* a, const Mesh* b) {
        const std::size_t sizeA = a->data().triangles.size();
        const std::size_t sizeB = b->data().triangles.size();
        return sizeA != sizeB ? sizeA > sizeB : a->identity() < b->identity();
    });
    meshes.erase(std::unique(meshes.begin(), meshes.end()), meshes.end());
    return meshes;
}

} // namespace

struct Assembly::Lazy {
    std::mutex mutex;
    std::atomic<const AssemblyStructure*> ready{nullptr};
    std::unique_ptr<const AssemblyStructure> structure;
};

Result<AssemblyPtr> Assembly::create(std::vector<Instance> instances) {
    for (std::size_t i = 0; i < instances.size(); ++i) {
        const Result<Done> checked = check(instances[i], i);
        if (!checked)
            return checked.error();
    }
    return AssemblyPtr(new Assembly(std::move(instances)));
}

Assembly::Assembly(std::vector<Instance> instances)
    : instances_(std::move(instances))
    , identity_(++_lastIdentity)
    , lazy_(std::make_unique<Lazy>()) {}

Assembly::~Assembly() = default;

std::size_t Assembly::triangleCount() const {
    std::size_t count = 0;
    for (const Instance& instance : instances_)
        count += instance.mesh->data().triangles.size();
    return count;
}

Result<Done> Assembly::prepare() const {
    if (lazy_->ready.load(std::memory_order_acquire) != nullptr)
        return Done{};
    const std::scoped_lock lock(lazy_->mutex);
    if (lazy_->structure)
        return Done{};
    try {
        const std::vector<const Mesh*> meshes = distinctMeshes(instances_);
        // Isolated: a thread that waits here for a structure must not take up other work that wants
        // the lock.
        isolated([&] {
            forEachIndex(meshes.size(),
                         [&](std::size_t i) { static_cast<void>(meshes[i]->structure()); });
            lazy_->structure = std::make_unique<AssemblyStructure>(instances_);
        });
    } catch (const std::bad_alloc&) {
        return Error{ErrorCode::outOfMemory, "not enough memory for the structures of " +
                                                 std::to_string(triangleCount()) + " triangles"};
    } catch (const std::exception& failure) {
        return Error{ErrorCode::internal, failure.what()};
    }
    lazy_->ready.store(lazy_->structure.get(), std::memory_order_release);
    return Done{};
}

const AssemblyStructure& Assembly::structure() const {
    return *lazy_->ready.load(std::memory_order_acquire);
}

} // namespace qor::engine
