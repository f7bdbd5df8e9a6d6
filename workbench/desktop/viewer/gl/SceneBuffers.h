#pragma once

#include "workbench/desktop/viewer/gl/MeshCache.h"
#include "workbench/desktop/viewer/gl/SceneContent.h"
#include "workbench/desktop/viewer/gl/Surface.h"

namespace qor::desktop {

/// One draw call: a mesh in a material, as often as it stands in the scene.
struct Batch {
    std::shared_ptr<const GpuMesh> mesh;
    Surface surface;
    GlVertexArray array;
    GLsizei instances;
    Qor3DBoundingBox box;
};

struct LineBatch {
    float thickness;
    bool dashed;
    GlVertexArray array;
    GlBuffer vertices;
    GLsizei count;
};

/// A scene in the memory of the graphics card: one buffer with all instances, and what to draw from
/// it. Built when the representations or their materials have changed, never for a camera. The
/// meshes are the cache's.
class SceneBuffers {
public:
    explicit SceneBuffers(Gl& gl) : gl_(gl) {}

    /// Builds anew if \p root or a material in it has changed since the last time; whether it did.
    bool update(const Qor3DBagRep& root,
                MeshCache& meshes,
                TextureCache& textures,
                QorColor highlightColor);

    /// In the order in which drawing them changes the least: solid ones by their look, then clear
    /// ones.
    [[nodiscard]] const std::vector<Batch>& batches() const { return batches_; }

    [[nodiscard]] const std::vector<LineBatch>& lines() const { return lines_; }

    [[nodiscard]] const QorMathPoint& origin() const { return origin_; }

    [[nodiscard]] const Qor3DBoundingBox& box() const { return box_; }

    /// Of the product tree; null for none. Lives as long as the representations stay as they are.
    [[nodiscard]] const QorRsc3DGroundRep* ground() const { return ground_; }

    [[nodiscard]] std::size_t builds() const { return builds_; }

private:
    struct KnownMaterial {
        const QorGraphicMaterial* material; ///< the representations hold it
        std::uint64_t contentId;
    };

    [[nodiscard]] bool isUpToDate(const Qor3DBagRep& root, QorColor highlightColor) const;
    void build(const SceneContent& content, MeshCache& meshes, TextureCache& textures);
    void uploadInstances(const SceneContent& content);
    [[nodiscard]] Batch makeBatch(const InstanceGroup& group,
                                  std::shared_ptr<const GpuMesh> mesh,
                                  TextureCache& textures,
                                  std::size_t firstInstance);
    void bindMesh(const GpuMesh& mesh);
    void bindInstances(std::size_t firstInstance);
    [[nodiscard]] LineBatch makeLines(const LineGroup& group);

    Gl& gl_;
    std::vector<Batch> batches_;
    std::vector<LineBatch> lines_;
    GlBuffer instances_;
    std::vector<KnownMaterial> materials_;
    QorMathPoint origin_;
    Qor3DBoundingBox box_;
    const QorRsc3DGroundRep* ground_ = nullptr;
    std::uint64_t revision_ = 0;
    QorColor highlightColor_;
    std::size_t builds_ = 0;
};

} // namespace qor::desktop
