#pragma once

#include "workbench/engine/core/Assembly.h"
#include "workbench/engine/core/Light.h"
#include "workbench/engine/core/Material.h"

#include <string>
#include <vector>

namespace qor::engine {

/// Light from infinitely far around. Rays that leave the scene see it; the camera only if there is
/// no background.
struct Environment {
    Color radiance;     ///< constant, or factor of the picture
    PicturePtr picture; ///< latitude and longitude; its top row looks along `up`
    Vec3 up{0.0F, 0.0F, 1.0F};
    float rotationRad = 0.0F; ///< around up
    /// Without small bright spots: surfaces find it by directions of their own, or in the
    /// interpolation cache, as they find a constant one. Else a picture is sampled like a light.
    bool smooth = false;
    /// 0..1, of a smooth or constant one: what surfaces scatter of it. They mirror all of it, so a
    /// room can be bright in mirrors and leave the light to the lamps.
    float diffuseShare = 1.0F;

    bool isBlack() const { return !(maxComponent(radiance) > 0.0F); }
};

/// What the camera sees where there is nothing.
struct Background {
    enum class Kind {
        environment, ///< the environment itself
        gradient,    ///< from top to bottom of the picture
        picture,     ///< a picture behind the whole picture
    };

    Kind kind = Kind::environment;
    Color top;
    Color bottom;
    PicturePtr picture;
    bool stretch = true; ///< false: keeps its proportions, covers everything, centred
};

/// A square floor that catches shadows. It is not seen from below and holds back no light that
/// passes upwards.
struct Ground {
    bool visible = false;
    Vec3 origin;                   ///< its middle
    Vec3 normal{0.0F, 0.0F, 1.0F}; ///< upwards; any length but zero
    float size = 1.0F;             ///< side; > 0
    Color color{0.8F, 0.8F, 0.8F}; ///< albedo
    float transparency = 0.0F;     ///< 0..1; 1 shows only shadows and reflections on the background
    float reflectivity = 0.0F;     ///< 0..1; mirrors objects
    /// 0..1 of half its side: from here on it fades with the distance from its middle, shadows and
    /// all, until nothing of it is left at the border. 1: it ends at its edges.
    float fadeFrom = 1.0F;
};

/// Everything that shines or can be seen. Meshes, pictures and the assembly are shared and
/// immutable, so a copy is cheap and a snapshot.
struct Scene {
    AssemblyPtr assembly; ///< may be null: no objects
    std::vector<Material> materials;
    std::vector<Light> lights;
    Environment environment;
    Color ambient; ///< constant light from nowhere, on every surface, without shadows
    Background background;
    Ground ground;
};

/// Fails with invalidInput and a message that names the offending light, material or value.
Result<Done> validate(const Scene& scene);
/// The same for one light, which the message calls \p name.
Result<Done> validate(const Light& light, const std::string& name);

} // namespace qor::engine
