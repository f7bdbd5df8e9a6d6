#pragma once

#include "platform/component/QorBaseUnknown.h"
#include "platform/text/QorString.h"

#include <cstdint>

/// A colour, 0..255 a channel; alpha 255 is opaque.
struct QorColor {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
    std::uint8_t alpha = 255;

    bool operator==(const QorColor&) const = default;
};

/// How lines, points and texts of a representation look.
struct QorGraphicAttributeSet {
    QorColor color;
    float thickness = 1.0F; ///< of lines, in device-independent pixels
    float pointSize = 5.0F; ///< side of a point mark, in device-independent pixels
    bool dashed = false;

    bool operator==(const QorGraphicAttributeSet&) const = default;
};

/// The look of a surface in the viewer's shading: colours 0..1, shininess 0..128. Counted by its
/// own references, as materials of viewers and representations are shared.
class QorGraphicMaterial : public QorBaseUnknown {
    QorDeclareClass(QorGraphicMaterial)

    QorGraphicMaterial() = default;

    void AddReference() { AddRef(); }

    void SubReference() { Release(); }

    /// Gives the maker's reference back.
    void Destroy() { Release(); }

    QorString name; ///< for people; may be empty
    float baseColor[4] = {0.8F, 0.8F, 0.8F, 1.0F};
    float metallic = 0.0F;
    float roughness = 0.5F;
    float transmission = 0.0F;
    float emission[3] = {0.0F, 0.0F, 0.0F};

protected:
    ~QorGraphicMaterial() override = default;
};
