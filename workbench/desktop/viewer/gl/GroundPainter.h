#pragma once

#include "workbench/desktop/viewer/gl/GroundMirror.h"

#include <QRect>

class QorRsc3DGroundRep;

namespace qor::desktop {

/// Draws a ground with the shadow that the product throws on it: that of the first light, if that
/// is far away, and the darkness under what stands close to it. Both lie in textures that are drawn
/// again only when product, light or ground have changed, not for a camera.
/// Method: shadow maps, Williams 1978; filtered as in Reeves et al. 1987.
class GroundPainter {
public:
    GroundPainter(Gl& gl, SurfacePainter& surfaces);

    /// What is drawn of a ground: as in renders it reaches farther than the ground itself, for the
    /// shadows of low lights, and fades on the way.
    [[nodiscard]] static Qor3DBoundingBox boxOf(const QorRsc3DGroundRep& ground);

    /// Draws the shadows if they need it, into framebuffers of its own; the caller binds his
    /// afterwards. \p change is a number that changes with the scene.
    void prepare(const QorRsc3DGroundRep& ground,
                 const SceneBuffers& scene,
                 const Lighting& lighting,
                 std::uint64_t change);

    /// Draws what the ground mirrors, if it mirrors anything, into a framebuffer of its own. After
    /// `prepare`, for every camera.
    void prepareMirror(const Qor3DViewpoint& viewpoint,
                       const QRect& viewport,
                       const SceneBuffers& scene,
                       const SurfacePainter::View& view);

    void leaveOutMirror() { hasMirror_ = false; }

    /// Draws the ground that was prepared, after all that is solid.
    void draw(const SceneBuffers& scene, const SurfacePainter::View& view);

private:
    struct Target {
        GlTexture texture;
        GlFramebuffer framebuffer;
    };

    struct Plane {
        QorMathPoint origin;
        QorMathTransformation frame; ///< the third axis upwards, relative to the scene's origin
        double halfSize = 0.0;
        float transparency = 0.0F;
        float reflectivity = 0.0F;
    };

    [[nodiscard]] Target makeDepthTarget(int size) const;
    [[nodiscard]] Target makeGreyTarget(int size) const;
    void bindTarget(const Target& target, int size, bool depth) const;
    void drawShadow(const SceneBuffers& scene, const QorMathVector& direction);
    void drawContact(const SceneBuffers& scene);
    void blur(const Target& source, const Target& target, const Float2& direction, bool depth);

    Gl& gl_;
    SurfacePainter& surfaces_;
    GlProgram ground_;
    GlProgram blur_;
    GlVertexArray nothing_; ///< the vertices come from their numbers
    Target shadow_;
    Target contactDepth_;
    Target contactBlurred_;
    Target contact_;
    Plane plane_;
    Matrix4 shadowMatrix_{};
    Matrix4 contactMatrix_{};
    bool hasShadow_ = false;
    std::unique_ptr<GroundMirror> mirror_;
    bool hasMirror_ = false;
    Float2 corner_{};
    std::vector<double> drawnFor_;
};

} // namespace qor::desktop
