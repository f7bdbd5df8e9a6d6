#pragma once

#include "workbench/desktop/viewer/gl/GlProgram.h"
#include "workbench/desktop/viewer/gl/Lighting.h"
#include "workbench/desktop/viewer/gl/SceneBuffers.h"
#include "workbench/desktop/viewer/gl/TextureCache.h"
#include "workbench/desktop/viewer/gl/ViewerLook.h"

namespace qor::desktop {

/// Draws surfaces, edges and lines of scenes, a draw call a batch, into the framebuffer that is
/// bound. Colours come out premultiplied.
class SurfacePainter {
public:
    explicit SurfacePainter(Gl& gl);

    /// From where a scene is seen, by which light.
    struct View {
        const Camera& camera;
        const Lighting& lighting;
        const ViewerLook& look;
        Float4 clip{}; ///< a plane; with GL_CLIP_DISTANCE0 on, what lies behind it is left out
    };

    void drawSolid(const SceneBuffers& scene, const View& view);
    /// What shines through, without hiding what is behind it.
    void drawClear(const SceneBuffers& scene, const View& view);
    void drawEdges(const SceneBuffers& scene, const View& view);
    void drawLines(const SceneBuffers& scene, const View& view);
    /// Depths alone, of what is not clear.
    void drawDepths(const SceneBuffers& scene, const Matrix4& viewProjection);

private:
    void drawSurfaces(const SceneBuffers& scene, const View& view, bool clear);
    void begin(GlProgram& program, const SceneBuffers& scene, const View& view) const;
    void drawTriangles(const Batch& batch) const;
    void setLineWidth(float deviceIndependent, const ViewerLook& look) const;

    Gl& gl_;
    GlProgram plain_;
    GlProgram textured_;
    GlProgram edges_;
    GlProgram lines_;
    GlProgram depths_;
    Float2 lineWidths_{1.0F, 1.0F}; ///< the narrowest and the widest that can be drawn
};

} // namespace qor::desktop
