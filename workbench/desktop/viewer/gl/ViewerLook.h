#pragma once

#include "platform/vis/QorGraphicAttributeSet.h"
#include "workbench/desktop/viewer/gl/GlMath.h"

namespace qor::desktop {

struct Colors;

/// What a viewer's content does not decide: colours of the theme, and the scale of the screen.
/// Colours are sRGB-coded, 0..1.
struct ViewerLook {
    Float3 backdropTop{};
    Float3 backdropBottom{};
    Float3 highlight{};     ///< tints what is highlighted
    Float3 highlightEdge{}; ///< its edges
    Float4 edge{};          ///< with alpha
    Float4 edgeOnDark{};    ///< on surfaces that a dark line would be lost on
    float ground = 0.6F;    ///< how much of the light a ground throws back
    bool edges = true;
    float pixelRatio = 1.0F;

    /// The highlight's colour as lines of representations have it.
    [[nodiscard]] QorColor highlightColor() const;

    bool operator==(const ViewerLook&) const = default;

    [[nodiscard]] static ViewerLook of(const Colors& colors);
};

/// What an sRGB-coded colour is as light.
[[nodiscard]] Float3 linearOf(const Float3& coded);

} // namespace qor::desktop
