#pragma once

#include "workbench/engine/core/Camera.h"
#include "workbench/engine/core/Scene.h"

#include <memory>
#include <optional>

namespace qor::engine {

class CompiledScene;
class CameraRays;

/// What is seen at one place of a picture. Textures and vertex colours are in its numbers.
struct Sight {
    unsigned instance = 0; ///< of the assembly
    float distance = 0.0F;
    Vec3 position;
    Vec3 facet;  ///< normal of the triangle; both normals are of length 1, towards the eye
    Vec3 normal; ///< to shade with
    Vec3 back;   ///< to the eye, of length 1
    Color baseColor;
    float opacity = 1.0F; ///< share of the surface that is there
    float metallic = 0.0F;
    float roughness = 0.5F;
    float ior = 1.5F;
    float specular = 1.0F;
    float transmission = 0.0F;
    float clearcoat = 0.0F;
    float clearcoatRoughness = 0.0F;
    float occlusion = 1.0F;
    Color emission;
};

/// Looks into a scene along the rays of a camera without rendering it: for pictures that are shaded
/// in another way. Immutable; any number of threads may use one.
class Probe {
public:
    /// Builds what is missing, as a render would. Fails as Render::start and the render itself do.
    static Result<Probe> create(Scene scene, const Camera& camera, int width, int height);

    ~Probe();
    Probe(Probe&& other) noexcept;
    Probe& operator=(Probe&& other) noexcept;
    Probe(const Probe&) = delete;
    Probe& operator=(const Probe&) = delete;

    /// The first surface beyond \p from on the ray through (\p x, \p y), in pixels from the top
    /// left corner; nothing when there is none.
    std::optional<Sight> look(float x, float y, float from = 0.0F) const;

    /// Where the ray crosses the plane through \p origin with \p normal; nothing when it does not,
    /// or not ahead.
    std::optional<Vec3>
    crossing(float x, float y, const Vec3& origin, const Vec3& normal, float& distance) const;

    /// Whether something lies on the way from \p position along \p direction.
    bool isCovered(const Vec3& position, const Vec3& direction) const;

private:
    Probe(std::shared_ptr<const CompiledScene> scene, const Camera& camera, int width, int height);

    std::shared_ptr<const CompiledScene> scene_;
    std::unique_ptr<const CameraRays> rays_;
};

} // namespace qor::engine
