#include "platform/scene/QorRscMaterial.h"
#include "workbench/document/SceneObjects.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace qor::document {

namespace {

constexpr double degrees = 180.0 / std::numbers::pi;
constexpr double plainDistanceMm = 1000.0;
constexpr double leastFieldOfView = 1.0; // what cameras of the scene take
constexpr double mostFieldOfView = 170.0;

QorMathVector vectorOf(const Vector3& from) {
    return {from[0], from[1], from[2]};
}

QorMathTransformation axesOf(const ProductReps& product, std::int32_t node) {
    if (node == none)
        return {};
    return product.worldTransform(*product.nodes()[static_cast<std::size_t>(node)]);
}

/// How far before the eye the target lies: where the product is, if that is ahead.
double
targetDistance(const Qor3DBoundingBox& box, const QorMathPoint& eye, const QorMathVector& sight) {
    const double ahead = box.IsEmpty() ? 0.0 : (box.Center() - eye) * sight;
    return ahead > 1.0 ? ahead : plainDistanceMm;
}

QorView
viewOf(const Camera& camera, const QorMathTransformation& axes, const Qor3DBoundingBox& box) {
    QorView view;
    const QorMathVector sight =
        axes.ApplyToVector(vectorOf(camera.direction)).NormalizedOr({0.0, 1.0, 0.0});
    view.eye = axes.Apply(vectorOf(camera.position));
    const double distance = targetDistance(box, view.eye, sight);
    view.target = view.eye + sight * distance;
    view.up = axes.ApplyToVector(vectorOf(camera.up)).NormalizedOr({0.0, 0.0, 1.0});
    view.projection = camera.perspective ? Qor3DViewpoint::Projection::Perspective
                                         : Qor3DViewpoint::Projection::Parallel;
    const double angle = camera.perspective ? camera.fieldOfView
                                            : 2.0 * std::atan(0.5 * camera.viewHeightMm / distance);
    view.fieldOfView = std::clamp(angle * degrees, leastFieldOfView, mostFieldOfView);
    return view;
}

void addCamera(QorRscContainer& scene,
               const Camera& camera,
               const QorMathTransformation& axes,
               const Qor3DBoundingBox& box) {
    const QorRscObject_var object = scene.CreateObject("camera", camera.name);
    QorQuery<QorIRscCamera>(object)->SetView(viewOf(camera, axes, box));
}

/// A colour with parts of 0..1 and what it is multiplied with.
struct ScaledColor {
    QorRscColor color;
    double factor = 1.0;
};

ScaledColor scaled(const std::array<double, 3>& color) {
    const double largest = std::max({color[0], color[1], color[2], 1.0});
    return {{std::max(0.0, color[0] / largest), std::max(0.0, color[1] / largest),
             std::max(0.0, color[2] / largest)},
            largest};
}

void addLight(QorRscContainer& scene, const Light& light, const QorMathTransformation& axes) {
    constexpr std::array types{"directional", "point", "spot"};
    const QorRscObject_var object = scene.CreateObject("light", light.name);
    const auto made = QorQuery<QorIRscLight>(object);
    const ScaledColor color = scaled(light.color);
    made->SetType(types[static_cast<std::size_t>(light.kind)]);
    made->SetPosition(axes.Apply(vectorOf(light.position)));
    made->SetDirection(
        axes.ApplyToVector(vectorOf(light.direction)).NormalizedOr({0.0, 0.0, -1.0}));
    made->SetColor(color.color);
    made->SetIntensity(std::max(0.0, light.intensity) * color.factor);
    made->SetRange(std::max(0.0, light.rangeMm));
    made->SetAngle(std::clamp(light.angleDeg, 0.0, 180.0));
    made->SetInnerAngle(std::clamp(2.0 * light.innerCone * degrees, 0.0, 360.0));
    made->SetOuterAngle(std::clamp(2.0 * light.outerCone * degrees, 0.0, 360.0));
    made->SetActive(true);
}

void addEnvironment(QorRscContainer& scene, const std::array<double, 3>& radiance) {
    const double largest = std::max({radiance[0], radiance[1], radiance[2], 0.0});
    const double divisor = largest > 0.0 ? largest : 1.0;
    const auto made = QorQuery<QorIRscEnvironment>(scene.CreateObject("environment"));
    made->SetColor({std::max(0.0, radiance[0] / divisor), std::max(0.0, radiance[1] / divisor),
                    std::max(0.0, radiance[2] / divisor)});
    made->SetIntensity(largest);
    made->SetActive(true);
}

} // namespace

void addProductObjects(QorRscContainer& scene,
                       const ProductReps& product,
                       std::size_t firstMaterial,
                       std::size_t firstCamera,
                       std::size_t firstLight) {
    for (std::size_t i = firstMaterial; i < product.materials().size(); ++i)
        scene.AddObject(QorMake<QorRscMaterial>(product.materials()[i].Get()).Get());
    const Product& facts = product.facts();
    const Qor3DBoundingBox box =
        firstCamera < facts.cameras.size() ? product.worldBox() : Qor3DBoundingBox();
    for (std::size_t i = firstCamera; i < facts.cameras.size(); ++i)
        addCamera(scene, facts.cameras[i], axesOf(product, facts.cameras[i].node), box);
    for (std::size_t i = firstLight; i < facts.lights.size(); ++i)
        addLight(scene, facts.lights[i], axesOf(product, facts.lights[i].node));
    if (facts.environment && scene.ListObjects("environment").Size() == 0)
        addEnvironment(scene, *facts.environment);
}

} // namespace qor::document
