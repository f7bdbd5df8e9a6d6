#pragma once

#include "workbench/engine/core/Mesh.h"
#include "workbench/engine/core/Transform.h"

#include <cstdint>
#include <vector>

namespace qor::engine {

class AssemblyStructure;

/// One appearance of a mesh.
struct Instance {
    MeshPtr mesh;
    Transform transform;
    std::vector<std::uint32_t>
        materials; ///< material of the scene for each slot; the last one serves further slots
};

/// All instances of a scene, with their ray tracing structure. It never changes; keep it from one
/// render to the next, then nothing is built again. All functions may be called from any thread.
class Assembly {
public:
    /// Fails with invalidInput on a missing mesh, no material index, or a transform that is
    /// singular or not finite.
    static Result<std::shared_ptr<const Assembly>> create(std::vector<Instance> instances);

    ~Assembly();
    Assembly(const Assembly&) = delete;
    Assembly(Assembly&&) = delete;
    Assembly& operator=(const Assembly&) = delete;
    Assembly& operator=(Assembly&&) = delete;

    /// Different for every assembly made by this process.
    std::uint64_t identity() const { return identity_; }

    const std::vector<Instance>& instances() const { return instances_; }

    std::size_t triangleCount() const;

    /// Builds all structures now, on all processors: to be called by a worker in idle time after
    /// loading. A render of an assembly that was not prepared does it first. Fails with
    /// outOfMemory; may then be tried again.
    Result<Done> prepare() const;

    /// The structure; only after prepare() succeeded.
    const AssemblyStructure& structure() const;

private:
    explicit Assembly(std::vector<Instance> instances);

    std::vector<Instance> instances_;
    std::uint64_t identity_;
    struct Lazy;
    std::unique_ptr<Lazy> lazy_;
};

using AssemblyPtr = std::shared_ptr<const Assembly>;

} // namespace qor::engine
