#include "workbench/engine/core/Camera.h"

#include <string>

namespace qor::engine {

Result<Done> validate(const Camera& camera) {
    const auto refuse = [](const std::string& why) {
        return Error{ErrorCode::invalidInput, "camera: " + why};
    };
    if (!isFinite(camera.eye) || !isFinite(camera.target) || !isFinite(camera.up))
        return refuse("a coordinate is not finite");
    const Vec3 sight = camera.target - camera.eye;
    if (!(length(sight) > 0.0F))
        return refuse("eye and target are the same point");
    if (!(length(cross(normalize(sight), normalize(camera.up))) > 1e-6F))
        return refuse("up lies along the sight");
    if (camera.projection == Projection::perspective &&
        !(camera.fovRad > 0.0F && camera.fovRad < pi))
        return refuse("field of view " + std::to_string(camera.fovRad) + " rad");
    if (camera.projection == Projection::parallel &&
        !(camera.viewHeight > 0.0F && std::isfinite(camera.viewHeight)))
        return refuse("view height " + std::to_string(camera.viewHeight));
    if (!(camera.nearDistance >= 0.0F && std::isfinite(camera.nearDistance)))
        return refuse("near distance " + std::to_string(camera.nearDistance));
    return Done{};
}

} // namespace qor::engine
