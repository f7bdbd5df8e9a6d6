#pragma once

#include "platform/text/QorString.h"

#include <array>

/// A quick-render scene: lights, background and ground under which a product is shown. A new record
/// is all zero; the settings and the catalog put their own defaults in. Owned by the scene manager.
struct QorRdgScene {
    int index = 0;        ///< -1 for the custom scene, else the number in the catalog, from 0
    int lightCount = 0;   ///< 0, 1 or 2
    float ambient = 0.0F; ///< grey level of the global ambient light
    float diffuse = 0.0F; ///< factor on each light's colour
    float specular = 0.0F;
    int shadow = 0;                    ///< softness of shadows, 0 (hard) to 10
    std::array<float, 3> color1{};     ///< red, green, blue in 0..1
    std::array<float, 3> direction1{}; ///< in which the light shines; of any length
    std::array<float, 3> color2{};
    std::array<float, 3> direction2{};
    int backgroundOn = 0;
    QorString backgroundImage; ///< a bare file name or a full path
    QorUnicodeString title;    ///< empty for the custom scene
    int backgroundStretch = 0; ///< 1: fills the viewer, 0: with its own proportions
    int groundOn = 0;
    float groundTransparency = 0.0F; ///< 0..1
    float groundReflectivity = 0.0F;

    bool operator==(const QorRdgScene&) const = default;
};
