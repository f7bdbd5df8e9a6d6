#include "workbench/desktop/viewer/gl/SceneBuffers.h"

#include "workbench/desktop/viewer/gl/TextureCache.h"

#include <algorithm>
#include <utility>

namespace qor::desktop {

namespace {

/// Numbers of the vertex attributes in the shaders.
enum Attribute : GLuint { Position, Normal, Uv0, Uv1, Color, FirstRow, Highlight = FirstRow + 3 };

const void* at(std::size_t offset) {
    return reinterpret_cast<const void*>(offset); // NOLINT: OpenGL's way of passing an offset
}

void floats(Gl& gl, GLuint attribute, GLint count, std::size_t stride, std::size_t offset) {
    gl.glEnableVertexAttribArray(attribute);
    gl.glVertexAttribPointer(attribute, count, GL_FLOAT, GL_FALSE, static_cast<GLsizei>(stride),
                             at(offset));
}

void bytes(Gl& gl, GLuint attribute, std::size_t stride, std::size_t offset) {
    gl.glEnableVertexAttribArray(attribute);
    gl.glVertexAttribPointer(attribute, 4, GL_UNSIGNED_BYTE, GL_TRUE, static_cast<GLsizei>(stride),
                             at(offset));
}

} // namespace

bool SceneBuffers::isUpToDate(const Qor3DBagRep& root, QorColor highlightColor) const {
    return builds_ != 0 && revision_ == root.GetRevision() && highlightColor_ == highlightColor &&
           std::all_of(materials_.begin(), materials_.end(), [](const KnownMaterial& known) {
               return known.material->GetContentId() == known.contentId;
           });
}

bool SceneBuffers::update(const Qor3DBagRep& root,
                          MeshCache& meshes,
                          TextureCache& textures,
                          QorColor highlightColor) {
    if (isUpToDate(root, highlightColor))
        return false;
    revision_ = root.GetRevision();
    highlightColor_ = highlightColor;
    ++builds_;
    build(collectScene(root, highlightColor), meshes, textures);
    return true;
}

void SceneBuffers::build(const SceneContent& content, MeshCache& meshes, TextureCache& textures) {
    // What was drawn before keeps its meshes and textures until what is drawn now has taken them.
    const std::vector<Batch> before = std::exchange(batches_, {});
    lines_.clear();
    materials_.clear();
    origin_ = content.origin;
    box_ = content.box;
    ground_ = content.grounds.empty() ? nullptr : content.grounds.front();
    uploadInstances(content);
    std::size_t first = 0;
    for (const InstanceGroup& group : content.groups) {
        batches_.push_back(makeBatch(group, meshes.get(*group.mesh), textures, first));
        first += group.instances.size();
        if (group.material != nullptr)
            materials_.push_back({group.material, group.material->GetContentId()});
    }
    for (const LineGroup& group : content.lines)
        lines_.push_back(makeLines(group));
    gl_.glBindVertexArray(0);
    std::stable_sort(batches_.begin(), batches_.end(), [](const Batch& one, const Batch& other) {
        return one.surface.isClear() < other.surface.isClear();
    });
}

void SceneBuffers::uploadInstances(const SceneContent& content) {
    std::size_t count = 0;
    for (const InstanceGroup& group : content.groups)
        count += group.instances.size();
    instances_ = GlBuffer(gl_);
    gl_.glBindBuffer(GL_ARRAY_BUFFER, instances_.name());
    gl_.glBufferData(GL_ARRAY_BUFFER, static_cast<GLsizeiptr>(count * sizeof(Instance)), nullptr,
                     GL_STATIC_DRAW);
    GLintptr end = 0;
    for (const InstanceGroup& group : content.groups) {
        const auto size = static_cast<GLsizeiptr>(group.instances.size() * sizeof(Instance));
        gl_.glBufferSubData(GL_ARRAY_BUFFER, end, size, group.instances.data());
        end += size;
    }
}

Batch SceneBuffers::makeBatch(const InstanceGroup& group,
                              std::shared_ptr<const GpuMesh> mesh,
                              TextureCache& textures,
                              std::size_t firstInstance) {
    Batch batch{std::move(mesh), Surface(group.material, textures), GlVertexArray(gl_),
                static_cast<GLsizei>(group.instances.size()), group.box};
    gl_.glBindVertexArray(batch.array.name());
    bindMesh(*batch.mesh);
    bindInstances(firstInstance);
    return batch;
}

void SceneBuffers::bindMesh(const GpuMesh& mesh) {
    gl_.glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, mesh.indices.name());
    gl_.glBindBuffer(GL_ARRAY_BUFFER, mesh.vertices.name());
    floats(gl_, Position, 3, 0, 0);
    if (mesh.normals != 0)
        floats(gl_, Normal, 3, 0, mesh.normals);
    if (mesh.uv0 != 0)
        floats(gl_, Uv0, 2, 0, mesh.uv0);
    if (mesh.uv1 != 0)
        floats(gl_, Uv1, 2, 0, mesh.uv1);
    if (mesh.colors != 0)
        bytes(gl_, Color, 0, mesh.colors);
}

void SceneBuffers::bindInstances(std::size_t firstInstance) {
    const std::size_t begin = firstInstance * sizeof(Instance);
    gl_.glBindBuffer(GL_ARRAY_BUFFER, instances_.name());
    for (GLuint row = 0; row < 3; ++row) {
        floats(gl_, FirstRow + row, 4, sizeof(Instance), begin + row * sizeof(Float4));
        gl_.glVertexAttribDivisor(FirstRow + row, 1);
    }
    floats(gl_, Highlight, 1, sizeof(Instance), begin + offsetof(Instance, highlight));
    gl_.glVertexAttribDivisor(Highlight, 1);
}

LineBatch SceneBuffers::makeLines(const LineGroup& group) {
    LineBatch batch{group.thickness, group.dashed, GlVertexArray(gl_), GlBuffer(gl_),
                    static_cast<GLsizei>(group.vertices.size())};
    gl_.glBindVertexArray(batch.array.name());
    gl_.glBindBuffer(GL_ARRAY_BUFFER, batch.vertices.name());
    gl_.glBufferData(GL_ARRAY_BUFFER,
                     static_cast<GLsizeiptr>(group.vertices.size() * sizeof(LineVertex)),
                     group.vertices.data(), GL_STATIC_DRAW);
    floats(gl_, Position, 3, sizeof(LineVertex), offsetof(LineVertex, position));
    bytes(gl_, Color, sizeof(LineVertex), offsetof(LineVertex, color));
    return batch;
}

} // namespace qor::desktop
