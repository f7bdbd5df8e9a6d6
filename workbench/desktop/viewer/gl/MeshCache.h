#pragma once

#include "platform/vis/QorMesh.h"
#include "workbench/desktop/viewer/gl/GlObjects.h"

#include <cstdint>
#include <memory>
#include <unordered_map>

namespace qor::desktop {

/// One mesh in the memory of the graphics card: its vertices in one buffer, one attribute after
/// another, and its triangles and then its edges in a second.
struct GpuMesh {
    GlBuffer vertices;
    GlBuffer indices;
    GLsizei triangleIndices = 0;
    GLsizei edgeIndices = 0;
    std::size_t edgeOffset = 0; ///< of the first edge in `indices`, bytes
    std::size_t normals = 0;    ///< offsets in `vertices`, bytes; 0: none
    std::size_t uv0 = 0;
    std::size_t uv1 = 0;
    std::size_t colors = 0;
    float edgeSpacing = 0.0F; ///< mean distance of the edges, millimetres
};

/// The meshes that are drawn, by their content: each is uploaded once, straight from its own
/// memory, however many instances, viewpoints and windows show it, and goes with the last who draws
/// it. One cache serves all contexts that share their objects; one of them is current.
class MeshCache {
public:
    [[nodiscard]] std::shared_ptr<const GpuMesh> get(const QorMesh& mesh);

    [[nodiscard]] std::size_t uploads() const { return uploads_; }

private:
    void upload(const QorMesh& mesh, GpuMesh& gpu);

    std::unordered_map<std::uint64_t, std::weak_ptr<const GpuMesh>> meshes_;
    std::size_t uploads_ = 0;
};

} // namespace qor::desktop
