#pragma once

#include "platform/vis/QorBoundingBox.h"
#include "workbench/desktop/viewer/gl/GlMath.h"

class Qor3DViewpoint;

namespace qor::desktop {

/// A viewpoint as the shaders take it. Places are relative to an origin near the product, so that
/// single precision is enough far from the world's.
struct Camera {
    Matrix4 viewProjection{};
    Float4 eye{};            ///< w 1: a place; w 0: the direction towards it
    Float3 right{};          ///< of the screen
    Float3 back{};           ///< towards the eye
    float pixelsByMm = 1.0F; ///< at depth 1, or at every depth of a parallel projection
    Float2 halfSize{};       ///< of the viewport, pixels
};

/// \p viewpoint in a viewport of \p width by \p height device pixels, with the depths fitted to
/// what is in \p content.
[[nodiscard]] Camera cameraOf(const Qor3DViewpoint& viewpoint,
                              const QorMathPoint& origin,
                              const Qor3DBoundingBox& content,
                              double width,
                              double height);

} // namespace qor::desktop
