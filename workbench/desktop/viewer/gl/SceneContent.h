#pragma once

#include "platform/vis/Qor3DReps.h"
#include "workbench/desktop/viewer/gl/GlMath.h"

#include <vector>

namespace qor::desktop {

/// Where an instance of a mesh stands, as the graphics card reads it.
struct Instance {
    Float4 rows[3]; ///< of its matrix, relative to the scene's origin
    float highlight;
};

/// All instances of one mesh in one material.
struct InstanceGroup {
    const QorMesh* mesh;
    const QorGraphicMaterial* material; ///< null for none
    std::vector<Instance> instances;
    Qor3DBoundingBox box; ///< in model space
};

struct LineVertex {
    Float3 position; ///< relative to the scene's origin
    QorColor color;
};

/// Lines of one look, as pairs of vertices.
struct LineGroup {
    float thickness; ///< device-independent pixels
    bool dashed;
    std::vector<LineVertex> vertices;
};

/// What a viewpoint shows, put together for drawing: hidden things are left out, and what is shown
/// often is one group. Points to the representations' own meshes and materials.
struct SceneContent {
    QorMathPoint origin; ///< near the product
    Qor3DBoundingBox box;
    std::vector<InstanceGroup> groups;
    std::vector<LineGroup> lines;
    std::vector<const QorRsc3DGroundRep*> grounds;
};

[[nodiscard]] SceneContent collectScene(const Qor3DBagRep& root, QorColor highlightColor);

} // namespace qor::desktop
