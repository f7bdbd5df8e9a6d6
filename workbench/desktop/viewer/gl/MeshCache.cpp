#include "workbench/desktop/viewer/gl/MeshCache.h"

#include <cmath>

namespace qor::desktop {

namespace {

template <class Value>
GLsizeiptr bytesOf(const std::vector<Value>& values) {
    return static_cast<GLsizeiptr>(values.size() * sizeof(Value));
}

/// Puts \p values behind what is in the buffer already and gives their offset; 0 for none.
template <class Value>
std::size_t append(Gl& gl, GLenum target, const std::vector<Value>& values, GLsizeiptr& end) {
    if (values.empty())
        return 0;
    const GLsizeiptr begin = end;
    gl.glBufferSubData(target, begin, bytesOf(values), values.data());
    end += bytesOf(values);
    return static_cast<std::size_t>(begin);
}

float spacingOf(const QorMesh& mesh) {
    const double edges = 0.5 * static_cast<double>(mesh.GetData().edges.size());
    const double size = mesh.GetBoundingBox().Extent().Norm();
    return edges > 0.0 ? static_cast<float>(size / std::sqrt(edges)) : 0.0F;
}

} // namespace

std::shared_ptr<const GpuMesh> MeshCache::get(const QorMesh& mesh) {
    const auto found = meshes_.find(mesh.GetContentId());
    if (found != meshes_.end())
        if (auto known = found->second.lock())
            return known;
    std::erase_if(meshes_, [](const auto& one) { return one.second.expired(); });
    auto gpu = std::make_shared<GpuMesh>();
    upload(mesh, *gpu);
    meshes_[mesh.GetContentId()] = gpu;
    return gpu;
}

void MeshCache::upload(const QorMesh& mesh, GpuMesh& gpu) {
    const QorMesh::Data& data = mesh.GetData();
    Gl& gl = currentGl();
    ++uploads_;
    gpu.vertices = GlBuffer(gl);
    gpu.indices = GlBuffer(gl);
    gl.glBindVertexArray(0); // the index buffer below is nobody's yet
    gl.glBindBuffer(GL_ARRAY_BUFFER, gpu.vertices.name());
    gl.glBufferData(GL_ARRAY_BUFFER,
                    bytesOf(data.positions) + bytesOf(data.normals) + bytesOf(data.textureUv) +
                        bytesOf(data.textureUv2) + bytesOf(data.colors),
                    nullptr, GL_STATIC_DRAW);
    GLsizeiptr end = 0;
    append(gl, GL_ARRAY_BUFFER, data.positions, end);
    gpu.normals = append(gl, GL_ARRAY_BUFFER, data.normals, end);
    gpu.uv0 = append(gl, GL_ARRAY_BUFFER, data.textureUv, end);
    gpu.uv1 = append(gl, GL_ARRAY_BUFFER, data.textureUv2, end);
    gpu.colors = append(gl, GL_ARRAY_BUFFER, data.colors, end);

    gl.glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, gpu.indices.name());
    gl.glBufferData(GL_ELEMENT_ARRAY_BUFFER, bytesOf(data.indices) + bytesOf(data.edges), nullptr,
                    GL_STATIC_DRAW);
    end = 0;
    append(gl, GL_ELEMENT_ARRAY_BUFFER, data.indices, end);
    gpu.edgeOffset = static_cast<std::size_t>(end);
    append(gl, GL_ELEMENT_ARRAY_BUFFER, data.edges, end);
    gpu.triangleIndices = static_cast<GLsizei>(data.indices.size());
    gpu.edgeIndices = static_cast<GLsizei>(data.edges.size());
    gpu.edgeSpacing = spacingOf(mesh);
    gl.glFlush(); // for the other contexts
}

} // namespace qor::desktop
