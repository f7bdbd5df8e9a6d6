#include "workbench/engine/qorrender/View.h"

#include "workbench/document/product/ProductQuery.h"
#include "workbench/engine/qorrender/Failure.h"

#include <algorithm>
#include <cmath>

namespace qor::render {

namespace {

using engine::Camera;
using engine::Projection;
using engine::Vec3;

constexpr float defaultFovRad = 30.0F * engine::pi / 180.0F;
constexpr float margin = 1.06F;

Vec3 vectorOf(const std::array<double, 3>& v) {
    return {static_cast<float>(v[0]), static_cast<float>(v[1]), static_cast<float>(v[2])};
}

struct Extent {
    Vec3 centre;
    std::array<Vec3, 8> corners{}; ///< from the centre
    float radius = 1.0F;
};

Extent extentOf(const document::Product& product) {
    const auto box = document::boundingBox(product);
    if (!box)
        throw Failure("there is nothing to see: the product has no shape");
    const Vec3 low = vectorOf(box->low);
    const Vec3 high = vectorOf(box->high);
    Extent extent;
    extent.centre = (low + high) * 0.5F;
    const Vec3 half = (high - low) * 0.5F;
    for (unsigned i = 0; i < extent.corners.size(); ++i)
        extent.corners[i] = {(i & 1U) != 0 ? half.x : -half.x, (i & 2U) != 0 ? half.y : -half.y,
                             (i & 4U) != 0 ? half.z : -half.z};
    extent.radius = std::max(length(half), 1e-6F);
    return extent;
}

Vec3 turned(const document::Transform& transform, const document::Vector3& v) {
    document::Transform turn = transform;
    turn[3] = turn[7] = turn[11] = 0;
    return vectorOf(document::transformPoint(turn, v));
}

Camera
ownCamera(const document::Product& product, const document::Camera& from, const Extent& extent) {
    const document::Transform world =
        from.node == document::none
            ? document::identityTransform
            : document::worldTransforms(product)[static_cast<std::size_t>(from.node)];
    Camera camera;
    camera.eye = vectorOf(document::transformPoint(world, from.position));
    const Vec3 sight = normalize(turned(world, from.direction));
    const float ahead = dot(extent.centre - camera.eye, sight);
    camera.target = camera.eye + sight * std::max(ahead, extent.radius * 0.01F);
    camera.up = turned(world, from.up);
    camera.projection = from.perspective ? Projection::perspective : Projection::parallel;
    camera.fovRad = static_cast<float>(from.fieldOfView);
    camera.viewHeight = static_cast<float>(from.viewHeightMm);
    camera.nearDistance = static_cast<float>(from.nearMm);
    return camera;
}

/// How far, at least, the eye must be from the centre, and how high a parallel picture must be, to
/// see all corners.
struct Fit {
    float distance = 0.0F;
    float height = 0.0F;
};

Fit fitOf(const Extent& extent, const Vec3& towards, const Vec3& up, float fovRad, float aspect) {
    const Vec3 right = normalize(cross(up, towards));
    const Vec3 above = cross(towards, right);
    const float slope = std::tan(fovRad / 2);
    Fit fit;
    for (const Vec3& corner : extent.corners) {
        const float half =
            std::max(std::abs(dot(corner, above)), std::abs(dot(corner, right)) / aspect);
        fit.distance = std::max(fit.distance, dot(corner, towards) + half * margin / slope);
        fit.height = std::max(fit.height, 2 * half * margin);
    }
    fit.distance = std::max(fit.distance, extent.radius * 1e-3F);
    fit.height = std::max(fit.height, extent.radius * 1e-3F);
    return fit;
}

Vec3 upFor(const Vec3& sight, const std::optional<ViewRequest::Numbers>& wanted) {
    if (wanted)
        return vectorOf(*wanted);
    const bool steep = std::abs(normalize(sight).z) > 0.999F;
    return steep ? Vec3{0.0F, 1.0F, 0.0F} : Vec3{0.0F, 0.0F, 1.0F};
}

Camera fittedCamera(const Extent& extent, const ViewRequest& request, float aspect) {
    Camera camera;
    camera.fovRad = defaultFovRad;
    if (request.fovDeg)
        camera.fovRad = static_cast<float>(*request.fovDeg * engine::pi / 180);
    camera.target = request.target ? vectorOf(*request.target) : extent.centre;
    const Vec3 isometric{1.0F, -1.0F, 1.0F};
    const Vec3 towards =
        normalize(request.eye ? vectorOf(*request.eye) - camera.target : isometric);
    camera.up = upFor(towards, request.up);
    const Fit fit = fitOf(extent, towards, camera.up, camera.fovRad, aspect);
    camera.eye = request.eye ? vectorOf(*request.eye)
                             : camera.target + towards * std::max(fit.distance, 2 * extent.radius);
    if (!request.eye &&
        request.projection.value_or(Projection::perspective) == Projection::perspective)
        camera.eye = camera.target + towards * fit.distance;
    camera.viewHeight = fit.height;
    return camera;
}

/// What the command line says replaces what the file's camera says, one by one.
void override(Camera& camera, const ViewRequest& request) {
    const float distance = length(camera.target - camera.eye);
    if (request.projection == Projection::parallel && camera.projection == Projection::perspective)
        camera.viewHeight = 2 * distance * std::tan(camera.fovRad / 2);
    if (request.eye)
        camera.eye = vectorOf(*request.eye);
    if (request.target)
        camera.target = vectorOf(*request.target);
    if (request.up)
        camera.up = vectorOf(*request.up);
    else if (request.eye || request.target)
        camera.up = upFor(camera.target - camera.eye, request.up);
    if (request.fovDeg)
        camera.fovRad = static_cast<float>(*request.fovDeg * engine::pi / 180);
}

} // namespace

Camera makeCamera(const document::Product& product, const ViewRequest& request, double aspect) {
    const Extent extent = extentOf(product);
    Camera camera;
    if (product.cameras.empty()) {
        camera = fittedCamera(extent, request, static_cast<float>(aspect));
    } else {
        camera = ownCamera(product, product.cameras.front(), extent);
        override(camera, request);
    }
    if (request.viewHeightMm) {
        camera.viewHeight = static_cast<float>(*request.viewHeightMm);
        camera.projection = Projection::parallel;
    }
    if (request.projection)
        camera.projection = *request.projection;
    return camera;
}

} // namespace qor::render
