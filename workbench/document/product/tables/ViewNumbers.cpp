#include "workbench/document/product/tables/ViewNumbers.h"

namespace qor::document::tables {

namespace {

// Visits every number of a camera or light in the file's order; const or not, as the caller's
// object is.
template <typename Vector, typename Visit>
void visitVector(Vector& vector, const Visit& visit) {
    for (auto& number : vector)
        visit(number);
}

template <typename Visit>
void visitNumbers(Camera& camera, const Visit& visit) {
    visitVector(camera.position, visit);
    visitVector(camera.direction, visit);
    visitVector(camera.up, visit);
    for (double* number :
         {&camera.fieldOfView, &camera.viewHeightMm, &camera.aspect, &camera.nearMm, &camera.farMm})
        visit(*number);
}

template <typename Visit>
void visitNumbers(Light& light, const Visit& visit) {
    visitVector(light.position, visit);
    visitVector(light.direction, visit);
    visitVector(light.color, visit);
    for (double* number :
         {&light.intensity, &light.rangeMm, &light.innerCone, &light.outerCone, &light.angleDeg})
        visit(*number);
}

template <typename View>
ViewNumbers collect(View view) {
    ViewNumbers numbers{};
    auto next = numbers.begin();
    visitNumbers(view, [&next](double number) { *next++ = number; });
    return numbers;
}

template <typename View>
void distribute(View& view, const ViewNumbers& numbers) {
    auto next = numbers.begin();
    visitNumbers(view, [&next](double& number) { number = *next++; });
}

} // namespace

ViewNumbers numbersOf(const Camera& camera) {
    return collect(camera);
}

ViewNumbers numbersOf(const Light& light) {
    return collect(light);
}

void setNumbers(Camera& camera, const ViewNumbers& numbers) {
    distribute(camera, numbers);
}

void setNumbers(Light& light, const ViewNumbers& numbers) {
    distribute(light, numbers);
}

} // namespace qor::document::tables
