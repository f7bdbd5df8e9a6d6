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

using StructurePtr = std::shared_ptr<const AssemblyStructure>;

/// A flat structure takes about 100 bytes a triangle. It may be so large, or twice as large as the
/// meshes that it is made of would be by themselves.
constexpr std::size_t mostFlatTriangles = 2'500'000;
constexpr std::size_t mostFlatGrowth = 2;

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

Layout layoutOf(const std::vector<Instance>& instances) {
    std::size_t all = 0;
    for (const Instance& instance : instances)
        all += instance.mesh->data().triangles.size();
    std::size_t distinct = 0;
    for (const Mesh* mesh : distinctMeshes(instances))
        distinct += mesh->data().triangles.size();
    return all <= std::max(mostFlatTriangles, mostFlatGrowth * distinct) ? Layout::flat
                                                                         : Layout::instanced;
}

StructurePtr build(const std::vector<Instance>& instances) {
    const Layout layout = layoutOf(instances);
    if (layout == Layout::instanced) {
        const std::vector<const Mesh*> meshes = distinctMeshes(instances);
        forEachIndex(meshes.size(),
                     [&](std::size_t i) { static_cast<void>(meshes[i]->structure()); });
    }
    return std::make_shared<AssemblyStructure>(instances, layout);
}

/// What a structure is made from: materials are none of its business.
struct Place {
    std::uint64_t mesh = 0; ///< identity
    Transform transform;

    friend bool operator==(const Place&, const Place&) = default;
};

/// Structures in use. An assembly that differs in its materials alone gets the same one.
class KnownStructures {
public:
    StructurePtr find(const std::vector<Place>& places) {
        const std::scoped_lock lock(mutex_);
        for (const Known& one : known_)
            if (one.places == places)
                if (StructurePtr structure = one.structure.lock())
                    return structure;
        return {};
    }

    void keep(std::vector<Place> places, const StructurePtr& structure) {
        const std::scoped_lock lock(mutex_);
        std::erase_if(known_, [](const Known& one) { return one.structure.expired(); });
        known_.push_back({std::move(places), structure});
    }

private:
    struct Known {
        std::vector<Place> places;
        std::weak_ptr<const AssemblyStructure> structure;
    };

    std::mutex mutex_;
    std::vector<Known> known_;
};

StructurePtr sharedStructure(const std::vector<Instance>& instances) {
    static KnownStructures known;
    std::vector<Place> places;
    places.reserve(instances.size());
    for (const Instance& instance : instances)
        places.push_back({instance.mesh->identity(), instance.transform});
    StructurePtr structure = known.find(places);
    if (!structure) {
        structure = build(instances);
        known.keep(std::move(places), structure);
    }
    return structure;
}

} // namespace

struct Assembly::Lazy {
    std::mutex mutex;
    std::atomic<const AssemblyStructure*> ready{nullptr};
    StructurePtr structure;
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
        // Isolated: a thread that waits here for a structure must not take up other work that wants
        // the lock.
        isolated([&] { lazy_->structure = sharedStructure(instances_); });
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
